#include "data/frmGetSelection.h"
#include "controls/Attempt.h"
#include "controls/ListView.h"
#include "data/modListView.h"
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

frmGetSelection::frmGetSelection(QWidget *parent) : ModalForm(QString(), parent)
{
    lblTitle = new QLabel(this);
    txtCri = new QLineEdit(this);
    lvResults = new ListView(this);
    cmdOK = new QPushButton(QStringLiteral("&OK"), this);
    cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);

    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    txtCri->setObjectName(QStringLiteral("txtCri"));
    lvResults->setObjectName(QStringLiteral("lvResults"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    txtCri->setAccessibleName(QStringLiteral("Search"));
    txtCri->setClearButtonEnabled(true);
    lblTitle->setBuddy(txtCri);
    cmdOK->setDefault(true);
    cmdCancel->setAutoDefault(false);

    auto *column = new QVBoxLayout(this);
    column->addWidget(lblTitle);
    column->addWidget(txtCri);
    column->addWidget(lvResults, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    column->addLayout(buttons);
    resize(380, 440);
    column->activate(); // so that the caller can read the list's width before the window is shown
    txtCri->setFocus();
    txtCri->installEventFilter(this);

    connect(txtCri, &QLineEdit::textChanged, this, &frmGetSelection::Seek);
    connect(cmdOK, &QPushButton::clicked, this, &frmGetSelection::TakeSelection);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(lvResults, &ListView::DblClick, this, &frmGetSelection::TakeSelection);
    connect(lvResults, &ListView::ColumnClick, this, [this](int clicked) { SortListBy(lvResults, clicked); });
}

void frmGetSelection::SetTitle(const QString &Text)
{
    setWindowTitle(Text);
    lblTitle->setText(Text);
    lvResults->setAccessibleName(Text);
}

void frmGetSelection::SpanColomns(bool Force)
{
    m_span = true;
    m_spanForced = Force;
    SpanListColumns(lvResults, Force);
}

void frmGetSelection::showEvent(QShowEvent *event)
{
    ModalForm::showEvent(event);
    QTimer::singleShot(0, this, [this] {
        if (m_span)
            SpanListColumns(lvResults, m_spanForced);
        if (const qint64 row = lvResults->SelectedRow(); row >= 0) // what was chosen before has its place now
            lvResults->EnsureVisible(row);
    });
}

void frmGetSelection::SelectText(const QString &text, const QString &tag)
{
    qint64 row = -1;
    // FindItem tells no capitals apart, so it gives the candidates.
    for (qint64 at = text.isEmpty() ? -1 : lvResults->FindItem(text, 0, false); at >= 0;
         at = at + 1 < lvResults->Count() ? lvResults->FindItem(text, at + 1, false) : -1) {
        if (lvResults->Text(at) != text)
            continue;
        if (row < 0)
            row = at;
        if (lvResults->Tag(at) == tag) {
            row = at;
            break;
        }
    }
    if (row < 0)
        return;
    lvResults->SelectRow(row);
    lvResults->EnsureVisible(row);
}

void frmGetSelection::TakeSelection()
{
    // With no selected row nothing ends: the window stays.
    const qint64 row = lvResults->SelectedRow();
    if (row < 0 || !Attempt([&] {
            Result = lvResults->Text(row);
            ResultTag = lvResults->Tag(row);
        }))
        return;
    Finish();
}

void frmGetSelection::Seek(const QString &text)
{
    const qint64 row = lvResults->FindItem(text);
    if (row < 0)
        return;
    lvResults->SelectRow(row);
    lvResults->EnsureVisible(row);
}

void frmGetSelection::Move(int key)
{
    const qint64 last = lvResults->Count() - 1;
    if (last < 0)
        return;
    const int height = std::max(1, lvResults->rowHeight(0));
    const qint64 page = std::max(1, lvResults->viewport()->height() / height - 1);
    const qint64 row = lvResults->SelectedRow();
    qint64 next = row;
    switch (key) {
    case Qt::Key_Up:
        next = row < 0 ? last : row - 1;
        break;
    case Qt::Key_Down:
        next = row + 1;
        break;
    case Qt::Key_PageUp:
        next = row - page;
        break;
    case Qt::Key_PageDown:
        next = std::max<qint64>(row, 0) + page;
        break;
    case Qt::Key_Home:
        next = 0;
        break;
    case Qt::Key_End:
        next = last;
        break;
    }
    next = std::clamp<qint64>(next, 0, last);
    lvResults->SelectRow(next);
    lvResults->EnsureVisible(next);
}

bool frmGetSelection::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtCri && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool plain = key->key() == Qt::Key_Up || key->key() == Qt::Key_Down || key->key() == Qt::Key_PageUp ||
                           key->key() == Qt::Key_PageDown;
        const bool ends = key->key() == Qt::Key_Home || key->key() == Qt::Key_End;
        if (plain || (ends && key->modifiers().testFlag(Qt::ControlModifier))) {
            Move(key->key());
            return true;
        }
    }
    return ModalForm::eventFilter(watched, event);
}
