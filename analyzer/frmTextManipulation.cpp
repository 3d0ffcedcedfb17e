#include "analyzer/frmTextManipulation.h"

#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "controls/Skin.h"
#include "data/frmFind.h"
#include "frame/RememberedSize.h"
#include "frame/SaveDialog.h"
#include "sqltext/FindText.h"
#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

frmTextManipulation::frmTextManipulation(QWidget *parent) : QMainWindow(parent)
{
    setWindowTitle(QStringLiteral("Text Manipulation"));
    setAttribute(Qt::WA_DeleteOnClose);
    etb = new RichTextBox(this);
    etb->setObjectName(QStringLiteral("etb"));
    etb->setAccessibleName(QStringLiteral("Text"));
    etb->installEventFilter(this);
    setCentralWidget(etb);
    setFocusProxy(etb);

    QMenu *menu = menuBar()->addMenu(QStringLiteral("&File"));
    const auto add = [&](QAction *&item, const char *name, const QString &caption, const QKeySequence &keys) {
        item = menu->addAction(caption);
        item->setObjectName(QString::fromLatin1(name));
        item->setShortcut(keys);
    };
    add(mnuSave, "mnuSave", QStringLiteral("&Save"), Qt::CTRL | Qt::Key_S);
    add(mnuSaveAS, "mnuSaveAS", QStringLiteral("Save &As"), Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    add(mnuFind, "mnuFind", QStringLiteral("&Find"), Qt::CTRL | Qt::Key_F);
    add(mnuExit, "mnuExit", QStringLiteral("E&xit"), {});
    connect(mnuSave, &QAction::triggered, this, &frmTextManipulation::Save);
    connect(mnuSaveAS, &QAction::triggered, this, &frmTextManipulation::SaveAs);
    connect(mnuFind, &QAction::triggered, this, &frmTextManipulation::Find);
    connect(mnuExit, &QAction::triggered, this, &QWidget::close);
    resize(720, 520);
    RememberSize(this);
    ApplySkin(this);
}

void frmTextManipulation::SetText(const QString &text)
{
    etb->SetText(text);
    m_safe = etb->Text();
}

bool frmTextManipulation::SaveFile(const QString &path)
{
    const QString text = etb->Text();
    if (!WriteTextFile(this, path, text))
        return false;
    m_fileName = path;
    m_safe = text;
    return true;
}

void frmTextManipulation::Save()
{
    if (m_fileName.isEmpty())
        SaveAs();
    else
        SaveFile(m_fileName);
}

void frmTextManipulation::SaveAs()
{
    const QPointer<frmTextManipulation> self(this);
    const QString path = AskSavePath(this, QStringLiteral("Save File"), QStringLiteral("Text File [*.txt]|*.txt"),
                                     QStringLiteral("txt"));
    if (self && !path.isEmpty())
        SaveFile(path);
}

void frmTextManipulation::Find()
{
    const QPointer<frmTextManipulation> self(this);
    const FindResult result =
        FindInText(etb->Text(), etb->SelStart(), etb->SelLength(), [&](const FindHit &hit) -> FindAnswer {
            if (!self)
                return {};
            if (!hit.first) {
                etb->SetSelStart(hit.selStart);
                etb->SetSelLength(hit.selLength);
            }
            // At a hit the criteria that found it stands there.
            return AskFind(this, false, hit.first ? etb->SelText() : QString());
        });
    if (!self)
        return;
    etb->SetSelStart(result.selStart);
    etb->SetSelLength(result.selLength);
    etb->setFocus();
    if (result.message)
        MsgBox(QStringLiteral("No match has been found."), mbInformation, QStringLiteral("Find"), this);
}

bool frmTextManipulation::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == etb && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Escape && etb->Text() == m_safe) {
            close();
            return true;
        }
        if (key->key() == Qt::Key_F3 && !key->modifiers()) {
            Find();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}
