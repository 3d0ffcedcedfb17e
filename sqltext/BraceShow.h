#pragma once
// The show of the bracket pairs: which text a timer loads at each tick and when it ticks again. Window-free and without
// a clock; the window owns the timer, does what each step says, and keeps colouring out while it writes.
//
// The pairs light up one after another, a broken one stays longer. One tick behind the last pair shows the plain text,
// the tick after that restores the text and ends the show.

#include "sqltext/clsBraceStacker.h"

#include <optional>
#include <utility>

// The marks that can be shown. The numbers are those that commands hand to a window's Parse.
enum class BracketKind
{
    Round = 0,
    Square = 1,
    Curly = 2,
    SingleQuote = 3,
    DoubleQuote = 4
};
BracketKind BracketKindOf(int number);                      // any other number: round
std::pair<QString, QString> BracketMarks(BracketKind kind); // the opening and the closing one

class BraceShow
{
public:
    static constexpr int FirstInterval = 10; // ms, at rest and up to the first tick
    static constexpr int PairInterval = 500;
    static constexpr int BrokenInterval = 1500;

    struct Step
    {
        QString rtf;                       // to load
        std::optional<qsizetype> selStart; // to assign before loading, a position in RTF; the control clips it
        int interval = FirstInterval;      // ms
        bool running = false;              // false: disable the timer
    };

    // The text that has to be loaded before a new show begins: the original of a show that still runs. Otherwise the
    // emphasis of that show would be taken for the user's own.
    std::optional<QString> Interrupt();
    // Begins a show of one kind of mark over the control's RTF. The timer is to be enabled.
    void Parse(const QString &rtf, BracketKind kind);
    Step Tick();
    bool Running() const { return m_running; }

private:
    clsBraceStacker m_Brace;
    qsizetype m_counter = 0;
    bool m_running = false;
};
