// brindlewick-store: puts a connection into the store of the program, for scripts.
//
//     brindlewick-store add NAME STRING [EXTRA]
//
// A connection of that name, in whatever case, stays as it is. Status 0: it is there; 1: the store cannot be written;
// 2: wrong arguments.

#include "app/UserFolders.h"
#include "data/ConnectionStore.h"
#include "data/clsConns.h"
#include "frame/AppPath.h"
#include "lang/Text.h"
#include <QCoreApplication>
#include <QStringList>
#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Brindlewick"));
    UseHomeFromEnvironment();

    const QStringList arguments = app.arguments();
    const qsizetype count = arguments.size();
    if ((count != 4 && count != 5) || arguments[1] != QLatin1String("add") || lang::Trim(arguments[2]).isEmpty() ||
        lang::Trim(arguments[3]).isEmpty()) {
        std::fprintf(stderr, "Usage: brindlewick-store add NAME STRING [EXTRA]\n");
        return 2;
    }
    const QString file = AppFile(QStringLiteral("es.dat"));
    ConnectionStore store(file);
    clsConns conns;
    store.Load(conns);
    if (conns.Item(arguments[2]))
        return 0;
    conns.Add(arguments[3], arguments[2], arguments.value(4));
    if (store.Save(conns))
        return 0;
    std::fprintf(stderr, "brindlewick-store: cannot write %s\n", qPrintable(file));
    return 1;
}
