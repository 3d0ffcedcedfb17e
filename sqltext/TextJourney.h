#pragma once
// Every state of a text since it was opened, in order, with one position: where a window goes when its undo has nothing
// else left. Only the differences are kept, up to a number of bytes; past it the oldest states go. Of a difference only
// the side away from the position is kept, since the other one stands in the text. Window-free; one thread at a time;
// nothing raises.
//
// Positions are zero-based UTF-16 units. The text itself stays with its owner, who hands it in: it has to be the one of
// the position. A text of another length is left alone; a change of one begins anew.
//
// An edit that is made somewhere behind the newest state takes nothing away: the state that it began from is added once
// more, so that going back leads to it first and then to what had been taken back.

#include <QString>

#include <deque>
#include <optional>
#include <vector>

class TextJourney
{
public:
    static constexpr qsizetype Limit = qsizetype(64) << 20; // bytes

    explicit TextJourney(qsizetype limit = Limit) : m_limit(limit) {}

    // Part of a step: `length` characters at `start` of the text `before` give way to `now`.
    void Change(const QString &before, qsizetype start, qsizetype length, const QString &now);
    // Ends the step: the text as it stands is a state. Without a change nothing happens.
    void Seal();

    // A state that the position moved to, and the stretch of it that differs from the text that was handed in.
    struct State
    {
        QString text;
        qsizetype start = 0;
        qsizetype length = 0;
    };
    // The nearest state before or after the position whose text is another; nothing when there is none.
    std::optional<State> Back(const QString &present);
    std::optional<State> Forward(const QString &present);
    // Moves to the newest state with that text in front of the position, or, where there is none, behind it. False when
    // it is not kept: then the position stays.
    bool GoTo(const QString &present, const QString &wanted);

    void Clear(); // the text as it stands is the only state
    qsizetype Steps() const { return qsizetype(m_steps.size()); }
    qsizetype Position() const { return m_position; } // how many steps lead to it from the oldest state
    qsizetype Bytes() const { return m_bytes; }       // what the steps hold

private:
    // On the way from the position: `length` characters at `start` give way to `text`.
    struct Edit
    {
        qsizetype start, length;
        QString text;
    };
    struct Step
    {
        std::vector<Edit> edits; // in the order in which they were made
        qsizetype Bytes() const;
    };
    class Walk;

    void Add(Step step);
    void KeepLimit();
    std::optional<State> Go(const QString &present, bool back);
    void MoveTo(const QString &present, qsizetype position);

    qsizetype m_limit;
    std::deque<Step> m_steps; // between the states, oldest first
    Step m_open;
    qsizetype m_position = 0;
    qsizetype m_bytes = 0;
    qsizetype m_size = 0; // of the text at the position
};
