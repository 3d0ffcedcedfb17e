#include "movement/logic/LineReader.h"
#include "movement/logic/Utf8.h"
#include <QFileInfo>
#include <cstring>

namespace {

constexpr qsizetype blockSize = 1 << 20;

} // namespace

LineReader::LineReader(const QString &path) : m_file(path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        throw Failure(QStringLiteral("It is not a file.")); // a folder, or what would be read without an end
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw Failure(m_file.errorString());
    m_size = m_file.size();
    if (m_file.peek(3) == "\xEF\xBB\xBF") {
        m_file.skip(3);
        m_taken = m_handed = 3;
    }
}

// Reads one more block behind what is still there. False when all has been read.
bool LineReader::Fill()
{
    const qint64 wanted = qMin(qint64(blockSize), m_size - m_taken);
    if (wanted <= 0)
        return false;
    if (m_from > 0) {
        m_block.remove(0, m_from);
        m_seen -= m_from;
        m_from = 0;
    }
    if (m_block.size() > LineLimit)
        throw Failure(QStringLiteral("Line %1 is longer than %2 bytes.").arg(m_lines + 1).arg(LineLimit));
    const qsizetype held = m_block.size();
    m_block.resize(held + wanted);
    const qint64 got = m_file.read(m_block.data() + held, wanted);
    m_block.resize(held + qMax(qint64(0), got));
    if (got < 0)
        throw Failure(m_file.errorString());
    if (got == 0)
        throw Failure(QStringLiteral("The file became shorter while it was read."));
    m_taken += got;
    return true;
}

bool LineReader::Next(QByteArrayView &line)
{
    for (;;) {
        const char *from = m_block.constData() + m_seen;
        const auto *end = static_cast<const char *>(std::memchr(from, '\n', size_t(m_block.size() - m_seen)));
        if (end) {
            const qsizetype next = end - m_block.constData() + 1;
            qsizetype length = next - 1 - m_from;
            if (length > 0 && end[-1] == '\r')
                --length;
            line = AsUtf8(QByteArrayView(m_block.constData() + m_from, length));
            m_handed += next - m_from;
            m_from = m_seen = next;
            ++m_lines;
            return true;
        }
        m_seen = m_block.size();
        if (Fill())
            continue;
        if (m_from == m_block.size())
            return false;
        const qsizetype length = m_block.size() - m_from;
        line = AsUtf8(QByteArrayView(m_block.constData() + m_from, length));
        m_handed += length;
        m_from = m_block.size();
        ++m_lines;
        return true;
    }
}

QByteArrayView LineReader::AsUtf8(QByteArrayView line)
{
    if (!m_windows1252) {
        if (IsUtf8(line))
            return line;
        m_windows1252 = true;
    }
    if (IsAscii(line))
        return line;
    m_line = Utf8OfWindows1252(line);
    return m_line;
}
