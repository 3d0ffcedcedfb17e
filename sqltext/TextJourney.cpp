#include "sqltext/TextJourney.h"

#include <algorithm>
#include <utility>

namespace {

// Its own copy, no larger than need be: neither the owner's text nor the clipboard's shall live on in a step.
QString Copy(QStringView text)
{
    return text.toString();
}

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

    // One step further; false when the step does not belong to this text.
    bool Take(const Step &step, bool back)
    {
        if (!back)
            return std::all_of(step.edits.begin(), step.edits.end(),
                               [this](const Edit &edit) { return Apply(edit.start, edit.gone, edit.now); });
        return std::all_of(step.edits.rbegin(), step.edits.rend(),
                           [this](const Edit &edit) { return Apply(edit.start, edit.now, edit.gone); });
    }

    bool Moved() const { return QStringView(m_base).mid(m_from, m_to - m_from) != m_middle; }
    qsizetype Size() const { return m_base.size() - (m_to - m_from) + m_middle.size(); }
    State Result() const
    {
        const QStringView base(m_base);
        return {base.left(m_from).toString().append(m_middle).append(base.mid(m_to)), m_from, m_middle.size()};
    }
    // Leads from the text that was walked to back to the one that the walk began with.
    Step WayBack() const { return {{{m_from, m_middle, m_base.mid(m_from, m_to - m_from)}}}; }

    // Is it `wanted`, which shares `head` and `tail` characters with the text that the walk began with?
    bool Is(QStringView wanted, qsizetype head, qsizetype tail) const
    {
        return Size() == wanted.size() && m_from <= head && m_base.size() - m_to <= tail &&
               wanted.mid(m_from, m_middle.size()) == m_middle;
    }

private:
    bool Apply(qsizetype start, const QString &gone, const QString &now)
    {
        const qsizetype end = start + gone.size();
        if (start < 0 || end > Size())
            return false;
        if (!m_begun)
            m_from = m_to = start;
        m_begun = true;
        if (start < m_from) {
            m_middle.prepend(QStringView(m_base).mid(start, m_from - start));
            m_from = start;
        }
        if (const qsizetype missing = end - m_from - m_middle.size(); missing > 0) {
            m_middle += QStringView(m_base).mid(m_to, missing);
            m_to += missing;
        }
        if (QStringView(m_middle).mid(start - m_from, gone.size()) != gone)
            return false;
        m_middle.replace(start - m_from, gone.size(), now);
        return true;
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
        bytes += BytesOf(edit.gone) + BytesOf(edit.now);
    return bytes;
}

// Always the newest. A step that is past the limit by itself takes all others with it and goes as well: what lies
// behind it could not be reached without it.
void TextJourney::Add(Step step)
{
    step.edits.shrink_to_fit();
    m_bytes += step.Bytes();
    m_steps.push_back(std::move(step));
    while (m_bytes > m_limit && !m_steps.empty()) {
        m_bytes -= m_steps.front().Bytes();
        m_steps.pop_front();
    }
    m_position = Steps();
}

void TextJourney::Change(const QString &before, qsizetype start, qsizetype length, const QString &now)
{
    if (m_open.edits.empty() && m_position < Steps()) {
        Walk ahead(before);
        bool fits = true;
        for (qsizetype i = m_position; i < Steps() && fits; ++i)
            fits = ahead.Take(m_steps[size_t(i)], false);
        if (fits && ahead.Moved())
            Add(ahead.WayBack());
        else
            m_position = Steps();
    }
    m_open.edits.push_back({start, Copy(QStringView(before).mid(start, length)), Copy(now)});
}

void TextJourney::Seal()
{
    if (!m_open.edits.empty())
        Add(std::exchange(m_open, {}));
}

std::optional<TextJourney::State> TextJourney::Go(const QString &present, bool back)
{
    Seal();
    Walk walk(present);
    const qsizetype last = back ? 0 : Steps();
    for (qsizetype at = m_position; at != last;) {
        if (!walk.Take(m_steps[size_t(back ? at - 1 : at)], back))
            return {};
        at += back ? -1 : 1;
        if (walk.Moved()) {
            m_position = at;
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
    const qsizetype shorter = std::min(present.size(), wanted.size());
    const qsizetype head =
        std::mismatch(present.begin(), present.begin() + shorter, wanted.begin()).first - present.begin();
    const qsizetype tail =
        std::mismatch(present.rbegin(), present.rbegin() + shorter, wanted.rbegin()).first - present.rbegin();
    Walk before(present);
    for (qsizetype at = m_position; at > 0 && before.Take(m_steps[size_t(at - 1)], true); --at)
        if (before.Is(wanted, head, tail)) {
            m_position = at - 1;
            return true;
        }
    Walk behind(present);
    qsizetype found = -1;
    for (qsizetype at = m_position; at < Steps() && behind.Take(m_steps[size_t(at)], false); ++at)
        if (behind.Is(wanted, head, tail))
            found = at + 1;
    if (found >= 0)
        m_position = found;
    return found >= 0;
}

void TextJourney::Clear()
{
    m_steps.clear();
    m_open = {};
    m_position = 0;
    m_bytes = 0;
}
