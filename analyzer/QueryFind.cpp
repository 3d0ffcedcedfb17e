#include "analyzer/QueryFind.h"

#include "analyzer/QueryText.h"
#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "data/frmFind.h"
#include "sqltext/FindText.h"
#include <QPointer>

namespace {

void SayNoMatch(QWidget *parent)
{
    MsgBox(QStringLiteral("No match has been found."), mbInformation, QStringLiteral("Find"), parent);
}

} // namespace

// A search whose window has gone answers itself with "cancelled". Only the first showing offers the selection: at a hit
// the criteria that found it stands there, wildcards and all.
void FindInQuery(QWidget *window, QueryText &text)
{
    const QPointer<QueryText> self(&text);
    RichTextBox *editor = text.Editor();
    const auto ask = [&](const FindHit &hit) {
        if (!self)
            return FindAnswer{};
        if (!hit.first) {
            editor->SetSelStart(hit.selStart);
            editor->SetSelLength(hit.selLength);
        }
        return AskFind(window, true, hit.first ? editor->SelText() : QString());
    };
    const auto replace = [&](const FindEdit &edit) {
        editor->SetSelStart(edit.start);
        editor->SetSelLength(edit.length);
        editor->SetSelText(edit.with);
        return editor->Text();
    };
    const FindResult result = FindInText(editor->Text(), editor->SelStart(), editor->SelLength(), ask, replace);
    if (!self)
        return;
    if (result.replacedAll)
        text.Bulk({result.text, result.selStart, result.selLength});
    editor->SetSelStart(result.selStart);
    editor->SetSelLength(result.selLength);
    editor->setFocus();
    if (result.message)
        SayNoMatch(window);
}

void FindInSchema(QWidget *window, TreeView *tree)
{
    const QPointer<TreeView> self(tree);
    QStringList nodes;
    for (int i = 1; i <= tree->Nodes().Count(); ++i)
        nodes += tree->Nodes().Item(i)->Text();
    const auto select = [&](int index) {
        if (index < 1 || index > tree->Nodes().Count())
            return;
        Node *node = tree->Nodes().Item(index);
        tree->SetSelectedItem(node);
        node->EnsureVisible();
    };
    const Node *selected = tree->SelectedItem();
    const TreeFindResult result = FindInTree(nodes, selected ? selected->Index() : 0, [&](int hit) {
        if (!self)
            return FindAnswer{};
        select(hit);
        return AskFind(window, false, QString());
    });
    if (!self)
        return;
    select(result.selected);
    if (result.message)
        SayNoMatch(window);
}
