#pragma once
// The lines of a flat file, read in blocks: the memory does not grow with the file, only with its longest line.
//
// A line ends at LF or CR LF; the end of the file ends the last one. The reader takes the file as long as it was when
// it was opened: what is added meanwhile is not read, and a file that became shorter is an error. Lines come as UTF-8.
// A byte order mark is dropped; from the first line on that is no UTF-8 the file counts as Windows-1252. Raises
// LineReader::Failure with the system's words. One thread at a time.

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <exception>

class LineReader
{
public:
    struct Failure : std::exception
    {
        explicit Failure(QString why) : Why(std::move(why)) {}
        const char *what() const noexcept override { return "the file cannot be read"; }
        QString Why;
    };

    static constexpr qint64 LineLimit = qint64(512) << 20; // bytes; a longer line is refused

    explicit LineReader(const QString &path); // raises when it is missing, a folder, a pipe or may not be read

    // The next line without its end, good until the next call. False at the end of the file.
    bool Next(QByteArrayView &line);

    qint64 BytesRead() const { return m_handed; } // of the lines handed out, their ends included
    qint64 BytesTotal() const { return m_size; }
    qint64 LinesRead() const { return m_lines; }

private:
    bool Fill();
    QByteArrayView AsUtf8(QByteArrayView line);

    QFile m_file;
    qint64 m_size = 0, m_taken = 0, m_handed = 0, m_lines = 0;
    QByteArray m_block; // what was read and not yet handed out begins at m_from
    qsizetype m_from = 0, m_seen = 0;
    QByteArray m_line; // of a line that had to be turned into UTF-8
    bool m_windows1252 = false;
};
