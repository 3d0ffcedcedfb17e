#include "analyzer/NodeHistory.h"

#include "analyzer/SideBarFreeze.h"
#include "controls/Attempt.h"

namespace {

const QString kHistoryKey = QStringLiteral("DYNA");

QString EntryKey(const QString &nodeKey)
{
    return kHistoryKey + u':' + nodeKey;
}

} // namespace

void NodeHistory::Show()
{
    m_shown = true;
    const SideBarFreeze bar;
    if (!bar)
        return;
    Attempt([&] {
        bar->RemoveBar(kHistoryKey);
        ExplorerBarBar *group = bar->AddBar(kHistoryKey, QStringLiteral("History Bar"));
        for (const PickedNode &node : m_NodeHistory)
            group->Items().Add(EntryKey(node.key), node.text);
    });
}

void NodeHistory::Hide()
{
    m_shown = false;
    const SideBarFreeze bar;
    if (bar)
        Attempt([&] { bar->RemoveBar(kHistoryKey); });
}

void NodeHistory::Forget()
{
    m_NodeHistory.clear();
    if (m_shown)
        Show();
}

void NodeHistory::Pick(const QString &nodeKey, const QString &text)
{
    for (const PickedNode &known : m_NodeHistory)
        if (known.key == nodeKey)
            return;
    m_NodeHistory.append({text, nodeKey});
    const SideBarFreeze bar;
    if (ExplorerBarBar *group = bar ? bar->FindBar(kHistoryKey) : nullptr)
        Attempt([&] { group->Items().Add(EntryKey(nodeKey), text)->EnsureVisible(); });
}

QString NodeHistory::NodeOf(const QString &entryKey) const
{
    for (const PickedNode &picked : m_NodeHistory)
        if (EntryKey(picked.key) == entryKey)
            return picked.key;
    return {};
}
