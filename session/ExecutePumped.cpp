#include "session/Pump.h"
#include "session/PumpUntil.h"
#include <QString>

static constexpr qsizetype kShown = 120; // characters of a statement in the status bar

QString WaitText(const QString &sql)
{
    QString line = sql.left(kShown * 2).simplified().left(kShown);
    if (line.size() < sql.size() && line.size() == kShown)
        line += QChar(0x2026);
    return QStringLiteral("Waiting for: %1 ... (Esc cancels)").arg(line);
}

ADODB::RecordsetPtr ExecutePumped(const ADODB::ConnectionPtr &connection, const QString &sql, qint64 *affected,
                                  int options)
{
    if (!connection)
        throw ADODB::Error(ADODB::adErrObjectClosed,
                           QStringLiteral("Operation is not allowed when the object is closed."));
    // Held here, since an event may replace the caller's connection meanwhile.
    const ADODB::ConnectionPtr held = connection;
    ADODB::RecordsetPtr result;
    qint64 counted = -1;
    RunPumpedOn(
        held, WaitText(sql), [&] { result = held->Execute(sql, &counted, options); }, [&] { held->Cancel(); });
    if (affected)
        *affected = counted;
    return result;
}

void InstallWaitHandler()
{
    ADODB::SetWaitHandler(
        [](ADODB::Connection &connection, const QString &busyWith, const std::function<bool()> &ready) {
            const auto held = connection.shared_from_this();
            const auto status = [&] {
                const QString sql = held->BusyWith();
                return WaitText(sql.isEmpty() ? busyWith : sql);
            };
            PumpUntil(
                status, ready, [&] { held->Cancel(); }, PumpInput::All);
        });
}

void RemoveWaitHandler()
{
    ADODB::SetWaitHandler({});
}
