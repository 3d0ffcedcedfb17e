#include "app/Session.h"
#include "app/SideBar.h"
#include "app/WindowTable.h"
#include "app/WorkArea.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/FlexGrid.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "views/frmHirarchy.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QMessageBox>
#include <QPixmap>
#include <QTimer>
#include <cstdio>

namespace {

constexpr QSize s_size(1280, 800);
constexpr int s_patience = 60000; // ms that the rows may take

class FirstPaint : public QObject
{
public:
    using QObject::QObject;
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
        return false;
    }
};

// Looks on from a timer of its own, so that a dialog that nobody can answer is seen too.
class PlayedSession : public QObject
{
public:
    PlayedSession(mdiMother &window, QString picture)
        : QObject(&window), m_window(window), m_picture(std::move(picture))
    {
        connect(&m_look, &QTimer::timeout, this, [this] { Attempt([&] { Look(); }); });
        m_waited.start();
        m_look.start(20);
    }

    void Begin()
    {
        m_window.showNormal();
        m_window.resize(s_size);
        ExplorerBarItem *entry = ConnectionEntryByText(*m_window.eb, QStringLiteral("Sample"));
        if (!entry)
            return End(QStringLiteral("there is no stored connection \"Sample\""));
        m_window.ConnectTo(entry);
        if (m_ended || !IsConnected(false))
            return End(QStringLiteral("cannot connect: ") + LastOpenError());
        for (ChildWindow *child : m_window.Children())
            if (child->FormName() == QLatin1String("frmSQL"))
                m_analyzer = child;
        if (!m_analyzer)
            return End(QStringLiteral("no Analyzer opened"));
        if (lang::Trim(TextOf(m_analyzer)).isEmpty())
            SetTextOf(m_analyzer, QStringLiteral("SELECT * FROM customers"));
        m_window.Area->ActivateChild(m_analyzer);
        m_running = true;
        m_analyzer->ToolBar(QStringLiteral("SQLRun"));
    }

private:
    void Look()
    {
        if (const QWidget *dialog = QApplication::activeModalWidget()) {
            const auto *box = qobject_cast<const QMessageBox *>(dialog);
            return End(QStringLiteral("a dialog came up: ") + (box ? box->text() : dialog->windowTitle()));
        }
        if (m_waited.elapsed() > s_patience)
            return End(QStringLiteral("no rows came within a minute"));
        if (!m_running)
            return;
        if (LastStatus().startsWith(QLatin1String("Error: ")))
            return End(LastStatus());
        for (ChildWindow *child : m_window.Children())
            if (const qint64 rows = ResultRows(child); rows > 0) {
                m_look.stop();
                m_rows = rows;
                m_window.Command("mnuTileHorizantally");
                QTimer::singleShot(300, this, [this] { Attempt([&] { Picture(); }); }); // behind the painting
                return;
            }
    }

    void Picture()
    {
        if (!m_window.grab().save(m_picture, "PNG"))
            return End(QStringLiteral("the picture cannot be written: ") + m_picture);
        std::printf("%lld rows; picture: %s\n", static_cast<long long>(m_rows), qPrintable(m_picture));
        std::fflush(stdout);
        End(QString());
    }

    void End(const QString &failure)
    {
        if (m_ended)
            return;
        m_ended = true;
        m_look.stop();
        if (!failure.isEmpty())
            std::fprintf(stderr, "Brindlewick: the session failed: %s\n", qPrintable(failure));
        m_window.close();
        QCoreApplication::exit(failure.isEmpty() ? 0 : 1);
    }

    mdiMother &m_window;
    QString m_picture;
    QPointer<ChildWindow> m_analyzer;
    QElapsedTimer m_waited;
    QTimer m_look;
    qint64 m_rows = 0;
    bool m_running = false, m_ended = false;
};

} // namespace

qint64 ResultRows(const ChildWindow *child)
{
    const auto *result = qobject_cast<const frmHirarchy *>(child);
    return !result || result->IsRunning() || !result->mfg->DataSource() ? -1 : result->mfg->RecordCount();
}

void PlaySession(mdiMother &window, const QString &picture)
{
    auto *session = new PlayedSession(window, picture);
    QTimer::singleShot(0, session, [session] { Attempt([&] { session->Begin(); }); });
}

void EndAtFirstPaint(mdiMother &window)
{
    window.installEventFilter(new FirstPaint(&window));
}
