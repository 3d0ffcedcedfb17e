#pragma once
// What the editor control holds beside Qt's document: the whole text in one piece with CR LF line ends, and
// the colour, bold and italic stretches of each line. Both are kept in step with every edit, so that reading the text
// costs nothing and a key press touches one line.
//
// Positions are zero-based; in the text CR LF counts as two. Lines count from 0, columns within a line from 0, a line
// has no line end. Interface thread; nothing raises.

#include "sqltext/Rtf.h"
#include <QString>
#include <vector>

struct EditorStyle
{
    int colour = 0; // index in the colour table; 0 is the default text
    bool bold = false;
    bool italic = false;

    bool operator==(const EditorStyle &) const = default;
    bool IsPlain() const { return *this == EditorStyle{}; }
};

struct EditorRun
{
    int start = 0; // column
    int length = 0;
    EditorStyle style;

    bool operator==(const EditorRun &) const = default;
};

class EditorText
{
public:
    using Runs = std::vector<EditorRun>; // ascending, without overlap; plain stretches are left out

    EditorText();

    const QString &Text() const { return m_text; }
    int LineCount() const { return int(m_lines.size()); }
    const Runs &Line(int line) const { return m_lines[size_t(line)].runs; }
    bool HasColour(int colour) const;

    // Everything anew, without styles. The text has CR LF line ends only.
    void Reset(const QString &text);

    // Everything anew with the runs of a document whose text that is, on any thread. A colour that is not in its table
    // is the default one. No line is drawn with its formats yet.
    void Reset(const QString &text, const RtfDocument &document);

    // `removed` characters at `position` give way to `added`, which gets one style. `line` and `column` say where
    // `position` is.
    void Replace(qsizetype position, qsizetype removed, const QString &added, int line, int column, EditorStyle style);

    void SetLine(int line, Runs runs);
    // The rest of the line, which is `lineLength` long, keeps its runs. False when nothing looks different.
    bool SetPart(int line, int column, int length, int lineLength, const Runs &runs);
    EditorStyle StyleAt(int line, int column) const; // of the character behind `column`

    // Do the formats that this line is drawn with lag behind its runs? And: may the line have formats at all?
    bool IsStale(int line) const { return m_lines[size_t(line)].stale; }
    bool MayHaveFormats(int line) const { return m_lines[size_t(line)].formatted; }
    void SuspectFormats(int line) { m_lines[size_t(line)].formatted = true; }
    void SetStale(int line) { m_lines[size_t(line)].stale = true; }
    void SetFormatted(int line, bool formatted)
    {
        m_lines[size_t(line)].formatted = formatted, m_lines[size_t(line)].stale = false;
    }

    // CR, LF, CR LF and Qt's own paragraph marks all become CR LF. A text that is clean comes back shared.
    static QString Normalised(const QString &text);

private:
    void Count(const Runs &runs, int by);

    struct LineRuns
    {
        Runs runs;
        bool formatted = false;
        bool stale = false;
    };
    QString m_text;
    std::vector<LineRuns> m_lines;
    std::vector<int> m_colours; // runs of each colour
};
