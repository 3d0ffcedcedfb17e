#include "app/Session.h"
#include "app/AnalyzerFactory.h"
#include "app/SideBar.h"
#include "app/WorkArea.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "data/ChildWindow.h"
#include "data/modMain.h"
#include "lang/Text.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QTimer>
#include <cstdio>

namespace {

constexpr QSize s_size(1280, 800);
constexpr int s_patience = 60000; // ms that the rows may take

class Session : public QObject
{
public:
    Session(mdiMother &window, QString picture) : QObject(&window), m_window(window), m_picture(std::move(picture)) {}

    void Begin()
    {
        m_window.showNormal();
        m_window.resize(s_size);
        ExplorerBarItem *entry = ConnectionEntryByText(*m_window.eb, QStringLiteral("Sample"));
        if (!entry)
            return Fail(QStringLiteral("there is no stored connection \"Sample\""));
        m_window.ConnectTo(entry);
        if (!IsConnected(false))
            return Fail(QStringLiteral("cannot connect: ") + LastOpenError());
        for (ChildWindow *child : m_window.Children())
            if (child->FormName() == QLatin1String("frmSQL"))
                m_analyzer = child;
        if (!m_analyzer)
            return Fail(QStringLiteral("no Analyzer opened"));
        const AnalyzerFactory &factory = AnalyzerFactory::Current();
        if (lang::Trim(factory.Text(m_analyzer)).isEmpty())
            factory.SetText(m_analyzer, QStringLiteral("SELECT * FROM customers"));
        m_window.Area->ActivateChild(m_analyzer);
        m_analyzer->ToolBar(QStringLiteral("SQLRun"));
        m_waited.start();
        Look();
    }

private:
    void Look()
    {
        const AnalyzerFactory &factory = AnalyzerFactory::Current();
        for (ChildWindow *child : m_window.Children()) {
            if (const QString error = factory.ResultError(child); !error.isEmpty())
                return Fail(QStringLiteral("the statement failed: ") + error);
            if (const qint64 rows = factory.ResultRows(child); rows > 0) {
                m_rows = rows;
                m_window.mnuTileHorizantally();
                QTimer::singleShot(300, this, [this] { Attempt([&] { Picture(); }); }); // behind the painting
                return;
            }
        }
        if (m_waited.elapsed() > s_patience)
            return Fail(QStringLiteral("no rows came within a minute"));
        QTimer::singleShot(20, this, [this] { Attempt([&] { Look(); }); });
    }

    void Picture()
    {
        if (!m_window.grab().save(m_picture, "PNG"))
            return Fail(QStringLiteral("the picture cannot be written: ") + m_picture);
        std::printf("Brindlewick: %lld rows; picture: %s\n", static_cast<long long>(m_rows), qPrintable(m_picture));
        std::fflush(stdout);
        m_window.close();
        QCoreApplication::exit(0);
    }

    void Fail(const QString &why)
    {
        std::fprintf(stderr, "Brindlewick: the session failed: %s\n", qPrintable(why));
        m_window.close();
        QCoreApplication::exit(1);
    }

    mdiMother &m_window;
    QString m_picture;
    QPointer<ChildWindow> m_analyzer;
    QElapsedTimer m_waited;
    qint64 m_rows = 0;
};

} // namespace

void PlaySession(mdiMother &window, const QString &picture)
{
    auto *session = new Session(window, picture);
    QTimer::singleShot(0, session, [session] { Attempt([&] { session->Begin(); }); });
}
