// From the start of the process to the first paint of its window, beside an empty multi-document program with one
// editor. Both as whole processes, in turn.
#include "bench/Figures.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdlib>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QDir programs(QCoreApplication::applicationDirPath());
    const QTemporaryDir home; // of its own, with one connection, so that no welcome waits for an answer
    qputenv("BRINDLEWICK_HOME", home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const auto run = [&](const QString &program, const char *arguments = "") {
        const QString command = QLatin1Char('\'') + programs.filePath(program) + QStringLiteral("' ") +
                                QLatin1String(arguments) + QStringLiteral(" >/dev/null 2>&1");
        return std::system(command.toLocal8Bit().constData());
    };
    int code = run(QStringLiteral("brindlewick-store"), "add Sample 'Driver=SQLite;Database=/dev/null'");
    qputenv("BRINDLEWICK_SESSION", "first-paint");
    code |= run(QStringLiteral("Brindlewick")) | run(QStringLiteral("peer_empty_mdi")); // both are in the cache now
    const double ratio = bench::Ratio(
        11, [&] { code |= run(QStringLiteral("Brindlewick")); },
        [&] { code |= run(QStringLiteral("peer_empty_mdi")); });
    if (code != 0)
        return 2;
    bench::Figure("start_vs_empty_mdi", ratio, 1.6);
    return 0;
}
