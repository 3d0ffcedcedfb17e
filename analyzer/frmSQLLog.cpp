// The groups of the side bar that belong to the active Analyzer: the log of rows affected, and the picked nodes.
#include "analyzer/frmSQL.h"

#include "controls/Attempt.h"
#include "controls/ExplorerBar.h"
#include "controls/TreeView.h"
#include "frame/Shell.h"

namespace {

const QString logKey = QStringLiteral("LOG");
const QString historyKey = QStringLiteral("DYNA");

QPointer<const frmSQL> g_logOf; // the window whose run the log group tells of

// The bar is not painted while one lives.
class Frozen
{
public:
    Frozen() : m_bar(Shell::Current().SideBar())
    {
        if (m_bar)
            m_bar->SetRedraw(false);
    }
    ~Frozen()
    {
        if (m_bar)
            m_bar->SetRedraw(true);
    }
    Frozen(const Frozen &) = delete;
    Frozen &operator=(const Frozen &) = delete;
    ExplorerBar *operator->() const { return m_bar; }
    explicit operator bool() const { return m_bar; }

private:
    QPointer<ExplorerBar> m_bar;
};

QString HistoryEntryKey(const QString &nodeKey)
{
    return historyKey + u':' + nodeKey;
}

} // namespace

void frmSQL::ShowLog()
{
    const Frozen bar;
    if (bar && !bar->FindBar(logKey))
        Attempt([&] { bar->AddBar(logKey, QStringLiteral("Log"))->SetWraps(true); }); // the count stands at the end
    g_logOf = this;
}

// A log that has gone meanwhile, because a result window took over, takes no more lines: it is meant. Another window's
// log takes none of this one's.
void frmSQL::AddLog(const QString &text)
{
    if (g_logOf != this)
        return;
    const Frozen bar;
    ExplorerBarBar *log = bar ? bar->FindBar(logKey) : nullptr;
    if (!log)
        return;
    Attempt([&] {
        ExplorerBarItem *item = log->Items().Add(logKey + u':' + QString::number(log->Items().Count() + 1), text);
        item->SetToolTip(text);
        item->EnsureVisible();
    });
}

void frmSQL::ClearLog()
{
    const Frozen bar;
    if (bar)
        Attempt([&] { bar->RemoveBar(logKey); });
}

void frmSQL::ShowHistoryBar()
{
    const Frozen bar;
    if (!bar)
        return;
    Attempt([&] {
        bar->RemoveBar(historyKey);
        ExplorerBarBar *group = bar->AddBar(historyKey, QStringLiteral("History Bar"));
        for (const PickedNode &node : m_NodeHistory)
            group->Items().Add(HistoryEntryKey(node.key), node.text);
    });
}

void frmSQL::RemoveHistoryBar()
{
    const Frozen bar;
    if (bar)
        Attempt([&] { bar->RemoveBar(historyKey); });
}

void frmSQL::ForgetNodes()
{
    m_NodeHistory.clear();
    if (m_active)
        ShowHistoryBar();
}

// A node is listed once, however often it is picked.
void frmSQL::PickNode(Node *node)
{
    if (!node)
        return;
    for (const PickedNode &known : m_NodeHistory)
        if (known.key == node->Key())
            return;
    m_NodeHistory.append({node->Text(), node->Key()});
    const Frozen bar;
    if (ExplorerBarBar *group = bar ? bar->FindBar(historyKey) : nullptr)
        Attempt([&] { group->Items().Add(HistoryEntryKey(node->Key()), node->Text())->EnsureVisible(); });
}

void frmSQL::DynaMenuItemClick(const QString &entryKey, const QString &)
{
    for (const PickedNode &picked : m_NodeHistory) {
        if (HistoryEntryKey(picked.key) != entryKey)
            continue;
        if (Node *node = TV->Nodes().Find(picked.key)) {
            TV->SetSelectedItem(node);
            node->EnsureVisible();
            node->SetExpanded(true);
        }
        return;
    }
}
