#include "analyzer/RunLog.h"

#include "analyzer/SideBarFreeze.h"
#include "controls/Attempt.h"

namespace {

const QString kLogKey = QStringLiteral("LOG");

const RunLog *g_shown = nullptr; // whose lines the group takes

} // namespace

RunLog::~RunLog()
{
    if (g_shown == this)
        g_shown = nullptr;
}

void RunLog::Show()
{
    const SideBarFreeze bar;
    if (bar && !bar->FindBar(kLogKey))
        Attempt([&] { bar->AddBar(kLogKey, QStringLiteral("Log"))->SetWraps(true); }); // the count stands at the end
    g_shown = this;
}

void RunLog::Add(const QString &text)
{
    if (g_shown != this)
        return;
    const SideBarFreeze bar;
    ExplorerBarBar *log = bar ? bar->FindBar(kLogKey) : nullptr;
    if (!log)
        return;
    Attempt([&] {
        ExplorerBarItem *item = log->Items().Add(kLogKey + u':' + QString::number(log->Items().Count() + 1), text);
        item->SetToolTip(text);
        item->EnsureVisible();
    });
}

void RunLog::Clear()
{
    const SideBarFreeze bar;
    if (bar)
        Attempt([&] { bar->RemoveBar(kLogKey); });
}
