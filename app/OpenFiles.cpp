// Files that come from outside: the command line and what is dropped on the window.

#include "app/CommandLine.h"
#include "app/SideBar.h"
#include "app/WindowTable.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include "frame/QueryFile.h"
#include <QDragEnterEvent>
#include <QMimeData>
#include <QScopeGuard>
#include <QTimer>
#include <QUrl>

static bool ReadOrTell(const QString &path, QString &text, QWidget *parent)
{
    QString why;
    if (ReadQueryFile(path, text, why))
        return true;
    if (!why.isEmpty()) // else the user gave it up
        MsgBox(path + QStringLiteral("\r\n") + why, mbExclamation, QStringLiteral("Open"), parent);
    return false;
}

ChildWindow *mdiMother::ProcessCommandLine(const QString &commandLine)
{
    ChildWindow *window = nullptr;
    ++m_opening;
    const auto done = qScopeGuard([this] {
        if (--m_opening == 0)
            QTimer::singleShot(0, this, &mdiMother::Activate);
    });
    Attempt([&] {
        const auto exists = [](const QString &name) { return !FileOfLine(name).isEmpty(); };
        const auto parts = ParseCommandLine(commandLine, exists);
        if (!parts || !parts->FileExists)
            return; // the switch "R" is known, and does nothing
        const QString name = GetConnection(true);
        if (name.isEmpty())
            return;
        // A file that cannot be read is told, and the connection that was picked opens all the same.
        if (ExplorerBarItem *entry = ConnectionEntryByText(*eb, name)) {
            QString text;
            ReadOrTell(FileOfLine(parts->File), text, this);
            window = ConnectTo(entry, text);
        }
    });
    return window;
}

// Without a window of its own, because an Analyzer is open already, the first file's text is dropped and the others
// have nowhere to go. That is meant: nothing that the user has on the screen changes.
void mdiMother::DropFiles(const QStringList &files)
{
    if (files.isEmpty())
        return;
    if (QString text; !ReadOrTell(files.front(), text, this))
        return; // nobody is asked for a connection for what cannot be opened
    const QPointer<ChildWindow> window = ProcessCommandLine(QuotedPath(files.front()));
    for (qsizetype i = 1; i < files.size() && window; ++i)
        Attempt([&] {
            QString text;
            if (!ReadOrTell(files[i], text, this) || !window)
                return;
            const QString former = TextOf(window);
            SetTextOf(window, former.isEmpty() ? text : former + QStringLiteral("\r\n\r\n") + text);
        });
}

static QStringList LocalFiles(const QMimeData *data)
{
    QStringList files;
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    return files;
}

// The giver keeps his files, though he may propose to move them: a file manager deletes what was taken so.
static bool TakeCopies(QDropEvent *event)
{
    if (LocalFiles(event->mimeData()).isEmpty())
        return false;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    return true;
}

void mdiMother::dragEnterEvent(QDragEnterEvent *event)
{
    TakeCopies(event);
}

void mdiMother::dragMoveEvent(QDragMoveEvent *event)
{
    TakeCopies(event);
}

void mdiMother::dropEvent(QDropEvent *event)
{
    const QStringList files = LocalFiles(event->mimeData());
    if (!TakeCopies(event))
        return;
    // Behind the drop: the program that the files come from must not wait for our dialogs.
    QMetaObject::invokeMethod(
        this, [this, files] { DropFiles(files); }, Qt::QueuedConnection);
}
