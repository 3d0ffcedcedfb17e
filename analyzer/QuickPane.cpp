#include "analyzer/QuickPane.h"

#include "analyzer/QueryText.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "sqltext/Keywords.h"
#include <QHeaderView>
#include <QKeyEvent>

QuickPane::QuickPane(QWidget *window, QueryText &text) : m_text(text), m_list(new ListView(window))
{
    m_list->setObjectName(QStringLiteral("lvQuickList"));
    m_list->setAccessibleName(QStringLiteral("Names"));
    m_list->AddColumn(QString());
    m_list->setHeaderHidden(true);
    m_list->header()->setStretchLastSection(true); // its one column is as wide as the list
    m_list->hide();
    connect(m_list, &ListView::DblClick, this, &QuickPane::Take);
}

void QuickPane::Fill(const QStringList &names)
{
    m_list->Clear();
    for (const QString &name : names)
        m_list->AddItem(name);
    m_names = QuickNames(names);
}

void QuickPane::Open()
{
    const EditText edit = m_text.Edited();
    const qsizetype found = m_names.Select(GetWordAtCaret(edit.text, edit.selStart));
    m_list->show();
    emit Toggled();
    m_list->SelectRow(found);
    if (m_list->Count() > 0)
        m_list->EnsureVisible(std::max<qsizetype>(0, found));
    m_list->setFocus();
}

void QuickPane::Close()
{
    if (m_list->isHidden())
        return;
    const bool focused = m_list->hasFocus();
    m_list->hide();
    emit Toggled();
    if (focused)
        m_text.Editor()->setFocus();
}

// Return and a delimiter take the chosen name, Escape leaves the text alone; all else is the list's.
bool QuickPane::KeyDown(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        Close();
        return true;
    }
    if (event->key() == Qt::Key_Space && event->modifiers() & Qt::ControlModifier)
        return true; // the key that opened it is still held; the list would drop its selection
    const QString typed = event->text();
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    const bool delimiter = typed.size() == 1 && plain && IsWordEnd(typed[0]);
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter && !delimiter)
        return false;
    Take();
    return true;
}

void QuickPane::Take()
{
    const qint64 row = m_list->SelectedRow();
    if (row >= 0) {
        qsizetype caret = 0;
        const EditText edit = m_text.Edited();
        const QString text = ReplaceWordAtCaret(edit.text, edit.selStart, m_list->Text(row), caret);
        m_text.Editor()->ChangeText(text);
        m_text.Editor()->SetSelStart(caret);
    }
    Close();
    m_text.Editor()->setFocus();
}
