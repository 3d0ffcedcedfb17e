#include "controls/Attempt.h"
#include "ado/Error.h"
#include "controls/ControlError.h"
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstring>

static std::atomic<bool> s_tell{false};

// A tracer that is no debugger hands the signal on: it is ignored meanwhile, so that only a debugger stops at it.
static void StopInDebugger()
{
    struct sigaction ignore = {}, former = {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGTRAP, &ignore, &former);
    std::raise(SIGTRAP);
    sigaction(SIGTRAP, &former, nullptr);
}

static bool IsTraced()
{
    bool traced = false;
    if (FILE *status = std::fopen("/proc/self/status", "re")) {
        char line[256];
        while (!traced && std::fgets(line, sizeof line, status))
            traced = std::strncmp(line, "TracerPid:", 10) == 0 && std::strtol(line + 10, nullptr, 10) != 0;
        std::fclose(status);
    }
    return traced;
}

void TellPassedErrors(bool on)
{
    s_tell = on;
}

void ErrorPassedOver(const SourcePlace &place) noexcept
{
    if (!s_tell)
        return;
    if (IsTraced())
        return StopInDebugger();
    try {
        const QByteArray words = DescribeCurrentException().toLocal8Bit();
        std::fprintf(stderr, "%s:%d: %s\n", place.File, place.Line, words.constData());
    } catch (...) {
        std::fprintf(stderr, "%s:%d: an error without words\n", place.File, place.Line);
    }
}

QString DescribeCurrentException()
{
    try {
        throw;
    } catch (const ADODB::Error &error) {
        return error.Description;
    } catch (const ControlError &error) {
        return error.Description;
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return QStringLiteral("Unknown error");
    }
}
