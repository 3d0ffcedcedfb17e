#include "app/Menus.h"
#include "app/SideBar.h"
#include "app/SideBarTable.h"
#include "app/WindowTable.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/ExplorerBar.h"
#include "data/clsConns.h"
#include "data/frmAni.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include "session/Work.h"
#include <QCoreApplication>
#include <QPointer>
#include <QScopeGuard>

// What using a missing object says.
static constexpr char s_noObject[] = "Object variable or With block variable not set";

// What goes on on the present connection: wait for it, cancel it, or stay. False to stay.
static bool MayLeave(QWidget *parent)
{
    const ADODB::ConnectionPtr present = gConn;
    if (!present || !present->HasWork())
        return true;
    const QString text =
        QStringLiteral(
            "The present connection is still at work: %1\r\n\r\nYes waits until it has ended, No cancels it, "
            "Cancel stays with the present connection.")
            .arg(present->BusyWith().simplified().left(120));
    const int answer = MsgBox(text, mbYesNoCancel | mbQuestion, QStringLiteral("Connection"), parent);
    if (answer == mbNo)
        Work::CancelAll(present);
    if (answer != mbYes)
        return answer == mbNo;
    return WaitUntilIdle(present);
}

// One error handler for the whole procedure: the description is kept and the next statement runs. The events that are
// let through may take away the entry, so it is looked up again by its key each time.
ChildWindow *mdiMother::ConnectTo(ExplorerBarItem *entry, const QString &sqlText)
{
    if (!entry || m_connecting || m_ended)
        return nullptr;
    m_connecting = true;
    const auto done = qScopeGuard([this] { m_connecting = false; });
    const QString key = entry->Key(), name = entry->Text();
    if (!MayLeave(this) || m_ended)
        return nullptr;
    QString kept;
    const auto Try = [&kept](auto &&statement) {
        QString why;
        if (!Attempt(statement, &why))
            kept = why;
    };
    const auto SetIcon = [this, &key](int icon) {
        if (ExplorerBarItem *item = ConnectionEntry(*eb, key))
            item->SetIcon(icon);
    };

    QPointer<frmAni> waiting;
    if (!m_testMode)
        Try([&] {
            waiting = new frmAni(this);
            waiting->SetCaption(QStringLiteral("Connecting..."));
            waiting->show();
        });
    const clsConn *conn = gConns().Item(name);
    menus->SetTag(QStringLiteral("mnuViewCS"), name);
    if (!conn)
        MsgBox(QStringLiteral("Brindlewick core files seem to be out of sync. Please restart the program to fix this "
                              "error."),
               mbCritical, QStringLiteral("Sync"), this);
    SetHourglass(true);
    Try([&] {
        ExplorerBarItems &entries = eb->Bar(QString::fromLatin1(BarConnections))->Items();
        for (int i = 1; i <= entries.Count(); ++i)
            entries.Item(i)->SetIcon(IconNotConnected);
    });
    SetIcon(IconConnecting);
    QCoreApplication::processEvents(); // so that the icons show

    const QString former = m_currentCS;
    conn = gConns().Item(name); // the events may have deleted it
    if (conn)
        m_currentCS = conn->ConnectionString;
    else
        kept = QLatin1String(s_noObject); // the former string stays, and that connection is opened again

    ChildWindow *window = nullptr;
    bool opened = false;
    Try([&] { opened = OpenConnection(m_currentCS); });
    if (!opened && !m_ended && LastOpenErrorNumber() == ADODB::adErrFileNotFound) {
        delete waiting; // it would cover the question
        const QString making = AskToCreate(m_currentCS, LastOpenError(), this);
        if (!making.isEmpty() && !m_ended)
            Try([&] { opened = OpenConnection(making); });
    }
    if (m_ended) {
        delete waiting;
        return nullptr; // closed meanwhile: nothing is left to tell
    }
    if (!opened) {
        if (!LastOpenError().isEmpty())
            kept = LastOpenError();
        delete waiting; // it stays on top, and would cover the message
        MsgBox(kept + QStringLiteral("\r\nFaild to connect."), mbExclamation, QStringLiteral("Connection"), this);
        m_currentCS = former;
        ::SetStatus(name);
        SetIcon(IconNotConnected);
    } else {
        SetIcon(IconConnected);
        bool analyzerMet = false;
        QList<QPointer<ChildWindow>> open;
        for (ChildWindow *child : Children())
            open << child;
        for (const QPointer<ChildWindow> &child : open) {
            if (!child || child->Tag != QLatin1String("1"))
                continue;
            analyzerMet = analyzerMet || child->FormName() == QLatin1String("frmSQL");
            Try([&] { child->SaveState(); });
            if (child)
                Try([&] { child->RefreshForm(name); });
        }
        if (!analyzerMet && !m_ended) {
            QPointer<ChildWindow> analyzer;
            Try([&] { analyzer = OpenAnalyzer(name); });
            if (analyzer)
                Try([&] { analyzer->ShowChild(); });
            if (analyzer && !sqlText.isEmpty())
                Try([&] { SetTextOf(analyzer, sqlText); });
            if (analyzer)
                analyzer->SetCaption(QStringLiteral("SQL Analyzer: [") + name + QLatin1Char(']'));
            window = analyzer;
        }
    }
    delete waiting;
    ::SetStatus(QStringLiteral("Done."));
    SetHourglass(false);
    return window;
}
