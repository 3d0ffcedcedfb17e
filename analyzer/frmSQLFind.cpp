// Find and replace, over the text or over the tree, whichever had the focus last.
#include "analyzer/frmSQL.h"

#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "data/frmFind.h"
#include "sqltext/EditAssist.h"
#include "sqltext/FindText.h"

namespace {

FindAnswer Ask(QWidget *parent, bool replacing, const QString &criteria)
{
    frmFind find(parent);
    find.EnableReplace(replacing);
    if (!criteria.isEmpty())
        find.SetCriteria(criteria);
    find.ShowModal();
    FindAnswer answer;
    answer.cancelled = find.Cancelled;
    answer.criteria = find.Criteria;
    answer.exactMatch = find.ExactMatch;
    answer.caseSensitive = find.CaseSensitive;
    answer.replaceWith = find.ReplaceWith;
    answer.doReplace = find.DoReplace;
    answer.doReplaceAll = find.DoReplaceAll;
    return answer;
}

void SayNoMatch(QWidget *parent)
{
    MsgBox(QStringLiteral("No match has been found."), mbInformation, QStringLiteral("Find"), parent);
}

} // namespace

void frmSQL::mnuFind()
{
    EndBracketShow();
    if (m_TreeHasFocus)
        TreeSearch();
    else
        TextSearch();
}

void frmSQL::mnuReplace()
{
    mnuFind();
}

// The window may be closed while the dialog is up; the search then answers itself with "cancelled". Only the first
// showing offers the selection: at a hit the criteria that found it stands there, wildcards and all.
void frmSQL::TextSearch()
{
    const QPointer<frmSQL> self(this);
    const auto ask = [&](const FindHit &hit) {
        if (!self)
            return FindAnswer{};
        if (!hit.first) {
            txtSQL->SetSelStart(hit.selStart);
            txtSQL->SetSelLength(hit.selLength);
        }
        return Ask(this, true, hit.first ? txtSQL->SelText() : QString());
    };
    const auto replace = [&](const FindEdit &edit) {
        txtSQL->SetSelStart(edit.start);
        txtSQL->SetSelLength(edit.length);
        txtSQL->SetSelText(edit.with);
        return txtSQL->Text();
    };
    const FindResult result = FindInText(txtSQL->Text(), txtSQL->SelStart(), txtSQL->SelLength(), ask, replace);
    if (!self)
        return;
    if (result.replacedAll)
        BulkEdit({result.text, result.selStart, result.selLength});
    txtSQL->SetSelStart(result.selStart);
    txtSQL->SetSelLength(result.selLength);
    txtSQL->setFocus();
    if (result.message)
        SayNoMatch(this);
}

void frmSQL::TreeSearch()
{
    const QPointer<frmSQL> self(this);
    QStringList nodes;
    for (int i = 1; i <= TV->Nodes().Count(); ++i)
        nodes += TV->Nodes().Item(i)->Text();
    const auto select = [&](int index) {
        if (index < 1 || index > TV->Nodes().Count())
            return;
        Node *node = TV->Nodes().Item(index);
        TV->SetSelectedItem(node);
        node->EnsureVisible();
    };
    const Node *selected = TV->SelectedItem();
    const TreeFindResult result = FindInTree(nodes, selected ? selected->Index() : 0, [&](int hit) {
        if (!self)
            return FindAnswer{};
        select(hit);
        return Ask(this, false, QString());
    });
    if (!self)
        return;
    select(result.selected);
    if (result.message)
        SayNoMatch(this);
}
