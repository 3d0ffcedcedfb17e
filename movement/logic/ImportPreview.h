#pragma once
// What the import window shows of a file before it is imported: its columns, their headings, its first lines.
// Runs on a worker; raises LineReader::Failure. Never reads more than it is given time for.

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

struct ImportPreview
{
    struct Line
    {
        qint64 Number = 0;  // from 1; blank lines do not count
        QStringList Fields; // without their quotes
    };
    QStringList FirstLine; // the columns of the file, without their quotes
    std::vector<Line> Lines;
    bool Inconsistent = false; // a line has more fields than the first one: reading ended there
};

inline constexpr int ImportPreviewMs = 500; // how long a preview reads, of the wall clock
// What is kept of it to be shown, so that neither a long line nor many fill the memory: the lines behind are counted.
inline constexpr qsizetype ImportPreviewCells = 50'000, ImportPreviewBytes = 1'000; // of all lines; of one field

// `goOn` is asked before each line; false ends the reading.
ImportPreview ReadImportPreview(const QString &path, const QString &delimiter, const std::function<bool()> &goOn);

// The headings of the file's columns: the first line's texts, or "Col1", "Col2" and so on.
QStringList ImportHeadings(const QStringList &firstLine, bool firstIsNames);

// What the delimiter box puts in for an entry of its list ("Comma" to ","); other texts stay.
QString DelimiterOf(const QString &entry);
QStringList DelimiterEntries();
