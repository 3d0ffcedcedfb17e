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

// One run of the procedure. It has one error handler for all: the description is kept and the next statement runs. The
// events that are let through may take away the entry, so it is looked up again by its key each time.
class mdiMother::Connecting
{
public:
    Connecting(mdiMother &window, const ExplorerBarItem &entry)
        : m_window(window), m_key(entry.Key()), m_name(entry.Text()), m_former(window.m_currentCS)
    {
    }
    ~Connecting() { delete m_waiting; }

    void ShowWaiting();
    void HideWaiting() { delete m_waiting; }
    void ShowConnecting();
    void TakeConnectionString();
    bool Open(); // false: not opened, or the program ended meanwhile
    void TellFailure();
    ChildWindow *ShowConnected(const QString &sqlText); // the Analyzer that was opened for it, if one was

private:
    template <class Statement> void Try(Statement &&statement)
    {
        QString why;
        if (!Attempt(statement, &why))
            m_kept = why;
    }
    void SetIcon(int icon)
    {
        if (ExplorerBarItem *item = ConnectionEntry(*m_window.eb, m_key))
            item->SetIcon(icon);
    }
    bool TellChildren(); // true when an Analyzer was among them
    ChildWindow *OpenFirstAnalyzer(const QString &sqlText);

    mdiMother &m_window;
    const QString m_key, m_name, m_former;
    QString m_kept; // the last error's description
    QPointer<frmAni> m_waiting;
};

void mdiMother::Connecting::ShowWaiting()
{
    if (m_window.m_testMode)
        return;
    Try([&] {
        m_waiting = new frmAni(&m_window);
        m_waiting->SetCaption(QStringLiteral("Connecting..."));
        m_waiting->show();
    });
}

void mdiMother::Connecting::ShowConnecting()
{
    const clsConn *conn = gConns().Item(m_name);
    m_window.menus->SetTag(QStringLiteral("mnuViewCS"), m_name);
    if (!conn)
        MsgBox(QStringLiteral("Brindlewick core files seem to be out of sync. Please restart the program to fix this "
                              "error."),
               mbCritical, QStringLiteral("Sync"), &m_window);
    m_window.SetHourglass(true);
    Try([&] {
        ExplorerBarItems &entries = m_window.eb->Bar(QString::fromLatin1(BarConnections))->Items();
        for (int i = 1; i <= entries.Count(); ++i)
            entries.Item(i)->SetIcon(IconNotConnected);
    });
    SetIcon(IconConnecting);
    QCoreApplication::processEvents(); // so that the icons show
}

void mdiMother::Connecting::TakeConnectionString()
{
    if (const clsConn *conn = gConns().Item(m_name)) // the events may have deleted it
        m_window.m_currentCS = conn->ConnectionString;
    else
        m_kept = QLatin1String(s_noObject); // the former string stays, and that connection is opened again
}

bool mdiMother::Connecting::Open()
{
    bool opened = false;
    Try([&] { opened = OpenConnection(m_window.m_currentCS); });
    if (!opened && !m_window.m_ended && LastOpenErrorNumber() == ADODB::adErrFileNotFound) {
        delete m_waiting; // it would cover the question
        const QString making = AskToCreate(m_window.m_currentCS, LastOpenError(), &m_window);
        if (!making.isEmpty() && !m_window.m_ended)
            Try([&] { opened = OpenConnection(making); });
    }
    return opened && !m_window.m_ended;
}

void mdiMother::Connecting::TellFailure()
{
    if (!LastOpenError().isEmpty())
        m_kept = LastOpenError();
    delete m_waiting; // it stays on top, and would cover the message
    MsgBox(m_kept + QStringLiteral("\r\nFaild to connect."), mbExclamation, QStringLiteral("Connection"), &m_window);
    m_window.m_currentCS = m_former;
    ::SetStatus(m_name);
    SetIcon(IconNotConnected);
}

bool mdiMother::Connecting::TellChildren()
{
    bool analyzerMet = false;
    QList<QPointer<ChildWindow>> open;
    for (ChildWindow *child : m_window.Children())
        open << child;
    for (const QPointer<ChildWindow> &child : open) {
        if (!child || child->Tag != QLatin1String("1"))
            continue;
        analyzerMet = analyzerMet || child->FormName() == QLatin1String("frmSQL");
        Try([&] { child->SaveState(); });
        if (child)
            Try([&] { child->RefreshForm(m_name); });
    }
    return analyzerMet;
}

ChildWindow *mdiMother::Connecting::OpenFirstAnalyzer(const QString &sqlText)
{
    QPointer<ChildWindow> analyzer;
    Try([&] { analyzer = OpenAnalyzer(m_name); });
    if (analyzer)
        Try([&] { analyzer->ShowChild(); });
    if (analyzer && !sqlText.isEmpty())
        Try([&] { SetTextOf(analyzer, sqlText); });
    if (analyzer)
        analyzer->SetCaption(QStringLiteral("SQL Analyzer: [") + m_name + QLatin1Char(']'));
    return analyzer;
}

ChildWindow *mdiMother::Connecting::ShowConnected(const QString &sqlText)
{
    SetIcon(IconConnected);
    return TellChildren() || m_window.m_ended ? nullptr : OpenFirstAnalyzer(sqlText);
}

ChildWindow *mdiMother::ConnectTo(ExplorerBarItem *entry, const QString &sqlText)
{
    if (!entry || m_connecting || m_ended)
        return nullptr;
    m_connecting = true;
    const auto done = qScopeGuard([this] { m_connecting = false; });
    Connecting connecting(*this, *entry); // before anything is asked: the entry may be gone afterwards
    if (!MayLeave(this) || m_ended)
        return nullptr;
    connecting.ShowWaiting();
    connecting.ShowConnecting();
    connecting.TakeConnectionString();
    const bool opened = connecting.Open();
    if (m_ended)
        return nullptr; // closed meanwhile: nothing is left to tell
    ChildWindow *window = nullptr;
    if (opened)
        window = connecting.ShowConnected(sqlText);
    else
        connecting.TellFailure();
    connecting.HideWaiting();
    ::SetStatus(QStringLiteral("Done."));
    SetHourglass(false);
    return window;
}
