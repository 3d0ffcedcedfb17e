#include "session/PumpUntil.h"
#include "session/Work.h"
#include <QString>

static constexpr qsizetype kShown = 120; // characters of a statement in the status bar

static QString Line(const QString &sql)
{
    QString line = sql.left(kShown * 2).simplified().left(kShown);
    if (line.size() < sql.size() && line.size() == kShown)
        line += QChar(0x2026);
    return line;
}

QString WaitText(const QString &sql)
{
    return QStringLiteral("Waiting for: %1 ... (Esc cancels)").arg(Line(sql));
}

QString BehindText(const QString &sql)
{
    return QStringLiteral("Waiting for: %1 ... (Esc gives up waiting)").arg(Line(sql));
}

ADODB::RecordsetPtr ExecutePumped(const ADODB::ConnectionPtr &connection, const QString &sql, qint64 *affected,
                                  int options)
{
    ADODB::RecordsetPtr result;
    qint64 counted = -1;
    // The reference is held here: an event may replace the caller's own connection meanwhile.
    RunPumpedOn(connection, WaitText(sql), [&, held = connection] { result = held->Execute(sql, &counted, options); },
                {});
    if (affected)
        *affected = counted;
    return result;
}

void InstallWaitHandler()
{
    ADODB::SetApartHandler(
        [](const std::shared_ptr<ADODB::Claim> &claim, const QString &words, const std::function<void()> &work) {
            Work::Options options;
            options.status = [&words] { return WaitText(words); };
            options.input = PumpInput::EscapeOnly;
            std::make_shared<Work>(claim)->Run(options, work);
        });
    // For turns that are taken on this thread itself.
    ADODB::SetWaitHandler([](ADODB::Connection &connection, const QString &busyWith, const std::function<bool()> &ready,
                             const std::function<void()> &giveUp) {
        const auto held = connection.shared_from_this();
        const auto status = [&] {
            const QString sql = held->BusyWith();
            return BehindText(sql.isEmpty() ? busyWith : sql);
        };
        PumpUntil(status, ready, giveUp, PumpInput::EscapeOnly);
    });
}

void RemoveWaitHandler()
{
    ADODB::SetWaitHandler({});
    ADODB::SetApartHandler({});
}
