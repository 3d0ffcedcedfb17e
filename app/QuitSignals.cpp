#include "app/QuitSignals.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "frame/Settings.h"
#include <QGuiApplication>
#include <QSocketNotifier>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int g_ends[2] = {-1, -1}; // a handler may do little more than write a byte

void Arrive(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(g_ends[0], &byte, 1);
}

constexpr int s_signals[] = {SIGTERM, SIGHUP};

} // namespace

QuitSignals::QuitSignals(mdiMother &window)
{
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &window,
        [&window] {
            Attempt([&] { window.SaveAll(); });
            SyncSettings();
        },
        Qt::DirectConnection);
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, g_ends) != 0)
        return;
    m_arrived = new QSocketNotifier(g_ends[1], QSocketNotifier::Read, this);
    connect(m_arrived, &QSocketNotifier::activated, &window, [&window] {
        char byte = 0;
        while (::read(g_ends[1], &byte, 1) > 0) {
        }
        Attempt([&] { window.mnuExit(); });
    });
    struct sigaction action = {};
    action.sa_handler = Arrive;
    action.sa_flags = SA_RESTART;
    for (const int signal : s_signals)
        ::sigaction(signal, &action, nullptr);
}

QuitSignals::~QuitSignals()
{
    if (!m_arrived)
        return;
    for (const int signal : s_signals)
        std::signal(signal, SIG_DFL);
    delete m_arrived;
    ::close(g_ends[0]);
    ::close(g_ends[1]);
}
