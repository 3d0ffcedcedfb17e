#pragma once
// The log of rows affected, a group of the side bar. There is one group for all windows; it takes lines of the window
// alone that showed it last. Without a side bar nothing happens. Interface thread; nothing raises.

#include <QString>

class RunLog
{
public:
    RunLog() = default;
    ~RunLog();
    RunLog(const RunLog &) = delete;
    RunLog &operator=(const RunLog &) = delete;

    void Show(); // the group, made when it is not there; from now on it takes this window's lines
    // A line at the end. A group that has gone meanwhile, because a result window took over, takes no more lines, and
    // the log of another window takes none of this one's: a count without its run would tell nobody anything.
    void Add(const QString &text);
    void Clear(); // the group goes, whoever's it is
};
