#pragma once
// Collects what the RTF reader finds: text with its look, the colour table, the font. Used by the reader alone.

#include "sqltext/Rtf.h"
#include "sqltext/RtfWords.h"

#include <optional>
#include <utility>

struct RtfLook
{
    int colour = 0;
    bool bold = false;
    bool italic = false;
    bool operator==(const RtfLook &) const = default;
};

class RtfBuilder
{
public:
    // Text that stands in a group of this kind. CR and LF in it are line ends of the text itself.
    void Put(RtfDestination destination, const RtfLook &look, QStringView text);
    // A line end; `paragraph` when it comes from \par, the one kind that a whole document drops at its end.
    void LineEnd(const RtfLook &look, bool paragraph);

    void StartColours();
    void ColourWord(QStringView word, int number);

    void DefaultFont(int id) { m_defaultFont = id; }
    void Font(RtfDestination destination, int id);
    void FontSize(RtfDestination destination, int halfPoints);

    RtfDocument Finish(bool dropLastParagraph);

private:
    void Append(const RtfLook &look, QStringView text);
    void AppendWithLineEnds(const RtfLook &look, QStringView text);
    void ColourText(QStringView text);
    void FontText(QStringView text);
    QString ChosenFont() const;

    RtfDocument m_document;
    qsizetype m_lastParagraphEnd = -1; // position behind the last \par
    bool m_afterCr = false;            // an LF that follows belongs to the CR before it

    int m_red = -1, m_green = -1, m_blue = -1; // of the entry being read, -1 when not named

    std::vector<std::pair<int, QString>> m_fonts;
    int m_defaultFont = 0;
    int m_fontEntry = 0;           // of the font table's entry being read
    std::optional<int> m_bodyFont; // the first that the text asks for
    std::optional<int> m_bodySize;
};
