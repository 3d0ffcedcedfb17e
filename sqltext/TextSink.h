#pragma once
// Collects a text from many short stretches. Holds room ahead and copies straight into it: the passes of the colouring
// append some hundred thousand times for a long text. Used by them alone.

#include <QString>
#include <QStringView>
#include <cstring>

class TextSink
{
public:
    explicit TextSink(qsizetype expected) : TextSink(QString(), expected) {}
    // Writes over a text that is no longer needed, in its room.
    TextSink(QString &&used, qsizetype expected) : m_buffer(used.isDetached() ? std::move(used) : QString())
    {
        m_buffer.resize(qMax(expected + 64, m_buffer.capacity()));
        m_room = m_buffer.data();
    }

    qsizetype Size() const { return m_size; }
    const QChar *Data() const { return m_room; }
    QStringView View(qsizetype from) const { return QStringView(m_room + from, m_size - from); }

    void Put(const QChar *text, qsizetype length)
    {
        if (m_size + length > m_buffer.size())
            Grow(length);
        std::memcpy(m_room + m_size, text, size_t(length) * sizeof(QChar));
        m_size += length;
    }
    void Put(QStringView text)
    {
        if (!text.isEmpty())
            Put(text.data(), text.size());
    }
    void Put(QChar c) { Put(&c, 1); }

    // The text; the sink is of no further use.
    QString Take()
    {
        m_buffer.truncate(m_size);
        return std::move(m_buffer);
    }

private:
    void Grow(qsizetype length)
    {
        m_buffer.resize((m_size + length) + (m_size + length) / 2);
        m_room = m_buffer.data();
    }

    QString m_buffer;
    QChar *m_room = nullptr;
    qsizetype m_size = 0;
};
