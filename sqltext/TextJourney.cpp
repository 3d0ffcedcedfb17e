#include "sqltext/TextJourney.h"

#include <algorithm>
#include <utility>

namespace {

qsizetype BytesOf(const QString &text)
{
    constexpr qsizetype head = 32; // of an allocation
    return text.isEmpty() ? 0 : head + text.capacity() * qsizetype(sizeof(QChar));
}

} // namespace

// A text some steps away from a given one: the stretch of the given text that is another now. Edits near each other,
// as typing makes them, cost no more than that stretch.
class TextJourney::Walk
{
public:
    explicit Walk(const QString &base) : m_base(base) {}

    // One step further. With `crossed` that becomes the same step as it is seen from behind it.
    void Take(const Step &step, bool back, Step *crossed = nullptr)
    {
        if (crossed)
            crossed->edits.resize(step.edits.size());
        for (size_t i = 0; i < step.edits.size(); ++i) {
            const size_t at = back ? step.edits.size() - 1 - i : i;
            const Edit &edit = step.edits[at];
            Include(edit.start, edit.length);
            if (crossed)
                crossed->edits[at] = {edit.start, edit.text.size(),
                                      QStringView(m_middle).mid(edit.start - m_from, edit.length).toString()};
            m_middle.replace(edit.start - m_from, edit.length, edit.text);
        }
    }

    bool Moved() const { return QStringView(m_base).mid(m_from, m_to - m_from) != m_middle; }
    qsizetype Size() const { return m_base.size() - (m_to - m_from) + m_middle.size(); }
    State Result() const
    {
        const QStringView base(m_base);
        return {base.left(m_from).toString().append(m_middle).append(base.mid(m_to)), m_from, m_middle.size()};
    }
    // Leads from the text that the walk began with to the one that it came to, for a position that is there.
    Step Back() const { return {{{m_from, m_to - m_from, m_middle}}}; }

    // Is it `wanted`, which shares `head` and `tail` characters with the text that the walk began with?
    bool Is(QStringView wanted, qsizetype head, qsizetype tail) const
    {
        return Size() == wanted.size() && m_from <= head && m_base.size() - m_to <= tail &&
               wanted.mid(m_from, m_middle.size()) == m_middle;
    }

private:
    void Include(qsizetype start, qsizetype length)
    {
        if (!std::exchange(m_begun, true))
            m_from = m_to = start;
        if (start < m_from) {
            m_middle.prepend(QStringView(m_base).mid(start, m_from - start));
            m_from = start;
        }
        if (const qsizetype missing = start + length - m_from - m_middle.size(); missing > 0) {
            m_middle += QStringView(m_base).mid(m_to, missing);
            m_to += missing;
        }
    }

    const QString m_base;
    qsizetype m_from = 0, m_to = 0; // of the given text
    QString m_middle;               // stands there now
    bool m_begun = false;
};

qsizetype TextJourney::Step::Bytes() const
{
    qsizetype bytes = qsizetype(sizeof(Step) + edits.capacity() * sizeof(Edit));
    for (const Edit &edit : edits)
        bytes += BytesOf(edit.text);
    return bytes;
}

// The oldest first. Where none is left behind the position, the farthest of those ahead of it.
void TextJourney::KeepLimit()
{
    while (m_bytes > m_limit && m_position > 0) {
        m_bytes -= m_steps.front().Bytes();
        m_steps.pop_front();
        --m_position;
    }
    while (m_bytes > m_limit && !m_steps.empty()) {
        m_bytes -= m_steps.back().Bytes();
        m_steps.pop_back();
    }
}

// Always the newest.
void TextJourney::Add(Step step)
{
    step.edits.shrink_to_fit();
    m_bytes += step.Bytes();
    m_steps.push_back(std::move(step));
    m_position = Steps();
    KeepLimit();
}

void TextJourney::MoveTo(const QString &present, qsizetype position)
{
    Walk walk(present);
    const bool back = position < m_position;
    while (m_position != position) {
        Step &step = m_steps[size_t(back ? m_position - 1 : m_position)];
        Step crossed;
        walk.Take(step, back, &crossed);
        m_bytes += crossed.Bytes() - step.Bytes();
        step = std::move(crossed);
        m_position += back ? -1 : 1;
    }
    m_size = walk.Size();
    KeepLimit();
}

void TextJourney::Change(const QString &before, qsizetype start, qsizetype length, const QString &now)
{
    if (m_open.edits.empty() && before.size() != m_size)
        Clear(); // of another text, which no step leads from
    if (m_open.edits.empty() && m_position < Steps()) {
        Walk ahead(before);
        for (qsizetype i = m_position; i < Steps(); ++i)
            ahead.Take(m_steps[size_t(i)], false);
        MoveTo(before, Steps());
        if (ahead.Moved())
            Add(ahead.Back());
    }
    // A copy of its own: neither the owner's text nor the clipboard's shall live on in a step.
    m_open.edits.push_back({start, now.size(), QStringView(before).mid(start, length).toString()});
    m_size = before.size() - m_open.edits.back().text.size() + now.size();
}

void TextJourney::Seal()
{
    if (!m_open.edits.empty())
        Add(std::exchange(m_open, {}));
}

std::optional<TextJourney::State> TextJourney::Go(const QString &present, bool back)
{
    Seal();
    if (present.size() != m_size)
        return {};
    Walk walk(present);
    const qsizetype last = back ? 0 : Steps();
    for (qsizetype at = m_position; at != last;) {
        walk.Take(m_steps[size_t(back ? at - 1 : at)], back);
        at += back ? -1 : 1;
        if (walk.Moved()) {
            MoveTo(present, at);
            return walk.Result();
        }
    }
    return {};
}

std::optional<TextJourney::State> TextJourney::Back(const QString &present)
{
    return Go(present, true);
}

std::optional<TextJourney::State> TextJourney::Forward(const QString &present)
{
    return Go(present, false);
}

bool TextJourney::GoTo(const QString &present, const QString &wanted)
{
    Seal();
    if (present.size() != m_size)
        return false;
    const qsizetype shorter = std::min(present.size(), wanted.size());
    const qsizetype head =
        std::mismatch(present.begin(), present.begin() + shorter, wanted.begin()).first - present.begin();
    const qsizetype tail =
        std::mismatch(present.rbegin(), present.rbegin() + shorter, wanted.rbegin()).first - present.rbegin();
    Walk before(present);
    for (qsizetype at = m_position; at > 0; --at) {
        before.Take(m_steps[size_t(at - 1)], true);
        if (before.Is(wanted, head, tail)) {
            MoveTo(present, at - 1);
            return true;
        }
    }
    Walk behind(present);
    qsizetype found = -1;
    for (qsizetype at = m_position; at < Steps(); ++at) {
        behind.Take(m_steps[size_t(at)], false);
        if (behind.Is(wanted, head, tail))
            found = at + 1;
    }
    if (found >= 0)
        MoveTo(present, found);
    return found >= 0;
}

void TextJourney::Clear()
{
    m_steps.clear();
    m_open = {};
    m_position = 0;
    m_bytes = 0;
    m_size = 0;
}
