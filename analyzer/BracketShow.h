#pragma once
// The show of the bracket pairs in an editor: sqltext/BraceShow with its timer. Each tick loads the next text, the end
// of the show loads the text as it was before it.
//
// It knows no editor: `load` writes one, and is asked with the RTF. Whoever reads or changes the editor's text ends the
// show first, since a later tick would load the text of its beginning. Interface thread; nothing raises.

#include "sqltext/BraceShow.h"
#include <QObject>
#include <functional>

class QTimer;

class BracketShow : public QObject
{
    Q_OBJECT
public:
    explicit BracketShow(std::function<void(const QString &rtf)> load);

    void Begin(const QString &rtf, BracketKind kind); // no show may be under way
    void End();                                       // nothing happens when none is
    bool Running() const { return m_Brace.Running(); }
    QTimer *Timer() const { return m_timer; }

private:
    void Tick();

    std::function<void(const QString &rtf)> m_load;
    BraceShow m_Brace;
    QTimer *m_timer;
};
