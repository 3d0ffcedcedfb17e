#pragma once
// The rich text of the editor: a reader and a writer of the RTF subset that the program composes.
//
// Pure functions, callable from any thread. Nothing raises: any text can be read, also damaged or foreign RTF and
// text that is no RTF at all. Both walk their input once; the time grows with its length alone.
//
// Positions and lengths are zero-based and count UTF-16 units; a line end is CR LF and counts as two.

#include <QString>
#include <QStringView>
#include <vector>

// Stands in a colour table for an entry that names no colour ("automatic"): the control's own text colour is meant.
constexpr quint32 RtfAutomaticColour = 0xFFFFFFFF;

// A stretch of equal look. `colour` is the index as written behind \cf; it may lie behind the end of the table, and
// then the first entry is meant, as for 0.
struct RtfRun
{
    qsizetype start = 0;
    qsizetype length = 0;
    int colour = 0;
    bool bold = false;
    bool italic = false;

    bool SameLook(const RtfRun &other) const
    {
        return colour == other.colour && bold == other.bold && italic == other.italic;
    }
    bool operator==(const RtfRun &) const = default;
};

struct RtfDocument
{
    QString text;                 // every line end is CR LF, also when lone CR or LF were read
    std::vector<RtfRun> runs;     // cover the text without gaps, in its order, none empty, neighbours differ
    std::vector<quint32> colours; // 0xRRGGBB by index, or RtfAutomaticColour
    QString fontName = QStringLiteral("Courier New");
    int fontHalfPoints = 17;

    bool operator==(const RtfDocument &) const = default;
};

// What loading `rtf` shows. A whole document drops one final \par, which every document carries for its last line; a
// fragment, which replaces a selection, keeps it. Text that does not begin with "{\rtf" is plain text and stays whole.
// Groups that are not closed, or closed once too often, end quietly; unknown words and destinations are passed over.
// In the colour table "\;" is ";" and words are read without regard to case.
RtfDocument ReadRtf(QStringView rtf, bool fragment = false);

// The document as RTF. Line 0 is the head with the font, line 1 the colour table, line 2 the font line
// "\viewkind4\uc1\pard\f0\fs17 " directly followed by the text; each further line begins with "\par ", and a last
// "\par }" ends it. Switches end in a blank, colours keep their index, other scripts stand as they are. Gaps between
// runs take colour 0. Reading it back as a whole document gives the same document for every text, NUL and halves of
// surrogate pairs included, but that lone CR and LF come back as CR LF. A font name ends at its first ";".
QString WriteRtf(const RtfDocument &document);

// The first line and the font line that WriteRtf writes for this font; each without line end.
QString RtfHeadLine(const QString &fontName);
QString RtfFontLine(int fontHalfPoints);
