#pragma once
// What the editor control holds beside the toolkit's document: the whole text in one piece with CR LF line ends, and
// the colour, bold and italic stretches of each line. Both are kept in step with every edit, so that reading the text
// costs nothing and a key press touches one line.
//
// Positions are zero-based; in the text CR LF counts as two. Lines count from 0, columns within a line from 0, a line
// has no line end. Interface thread; nothing is raised.

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
    const Runs &Line(int line) const { return m_lines[size_t(line)]; }
    bool HasColour(int colour) const;

    // Everything anew, without styles. The text has CR LF line ends only.
    void Reset(const QString &text);

    // `removed` characters at `position` give way to `added`, which gets one style. `line` and `column` say where
    // `position` is.
    void Replace(qsizetype position, qsizetype removed, const QString &added, int line, int column, EditorStyle style);

    void SetLine(int line, Runs runs);
    void SetPart(int line, int column, int length, const Runs &runs); // the rest of the line keeps its runs
    EditorStyle StyleAt(int line, int column) const;                  // of the character behind `column`

    // CR, LF, CR LF and the toolkit's own paragraph marks all become CR LF. A text that is clean comes back shared.
    static QString Normalised(const QString &text);

private:
    void Count(const Runs &runs, int by);

    QString m_text;
    std::vector<Runs> m_lines;
    std::vector<int> m_colours; // runs of each colour
};
