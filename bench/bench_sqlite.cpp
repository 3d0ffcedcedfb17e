// The built-in driver: 1,000,000 rows from the statement to the painted grid, beside a bare loop over SQLite's own
// interface that reads every value as text, and beside the command line tool that prints them; and the memory that the
// recordset and its grid take.
#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "bench/Figures.h"
#include "bench/Rows.h"
#include "controls/FlexGrid.h"

#include <QApplication>
#include <QPixmap>
#include <QTemporaryDir>
#include <cstdlib>
#include <malloc.h>

namespace {

const char *const kStatement = "SELECT * FROM rows";

size_t BareLoop(const QByteArray &file)
{
    sqlite3 *database = nullptr;
    sqlite3_stmt *statement = nullptr;
    size_t bytes = 0;
    if (sqlite3_open(file.constData(), &database) == SQLITE_OK &&
        sqlite3_prepare_v2(database, kStatement, -1, &statement, nullptr) == SQLITE_OK) {
        const int columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW)
            for (int i = 0; i < columns; ++i)
                if (const unsigned char *text = sqlite3_column_text(statement, i))
                    bytes += text[0];
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return bytes;
}

// What the values themselves take: 8 bytes a number or moment, 1 a boolean, the bytes of texts and decimals.
qint64 BytesOfValues(const QByteArray &file)
{
    sqlite3 *database = nullptr;
    sqlite3_stmt *statement = nullptr;
    qint64 bytes = 0;
    if (sqlite3_open(file.constData(), &database) == SQLITE_OK &&
        sqlite3_prepare_v2(database,
                           "SELECT sum(8 + length(CAST(name AS BLOB)) + length(price) + 8 + 4 + 8 + "
                           "coalesce(length(CAST(note AS BLOB)), 0) + 1) FROM rows",
                           -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        bytes = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return bytes;
}

qint64 HeapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return qint64(heap.uordblks + heap.hblkhd);
}

} // namespace

int main(int argc, char **argv)
{
    using namespace ADODB;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    FlexGrid grid;
    grid.resize(900, 600);
    grid.show();
    grid.grab(); // fonts and the like are loaded before anything is counted
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("rows.db"));
    const QByteArray file = path.toUtf8();
    if (!bench::MakeRows(path, bench::kRows))
        return 2;
    const ConnectionPtr connection = Connection::Create();
    connection->Open(QStringLiteral("Driver=SQLite;Database=") + path);

    const qint64 before = HeapInUse();
    RecordsetPtr rows = connection->Execute(QString::fromLatin1(kStatement));
    grid.SetDataSource(rows);
    grid.grab();
    const double held = double(HeapInUse() - before);
    if (rows->RecordCount() != bench::kRows)
        return 2;
    std::fprintf(stderr, "  %.1f MB in the heap, %.1f MB by its own count, %.1f MB of values\n", held / 1e6,
                 double(rows->BytesHeld()) / 1e6, double(BytesOfValues(file)) / 1e6);
    bench::Figure("memory_vs_values", held / double(BytesOfValues(file)), 1.5);

    const auto ours = [&] {
        grid.SetDataSource(nullptr);
        rows.reset();
        rows = connection->Execute(QString::fromLatin1(kStatement));
        grid.SetDataSource(rows);
        grid.grab();
    };
    bench::Figure("sqlite_1M_vs_bare_loop", bench::Ratio(5, ours, [&] { BareLoop(file); }), 1.3);
    const QByteArray tool = "sqlite3 -csv '" + file + "' '" + kStatement + "' > /dev/null";
    int code = 0;
    const double ratio = bench::Ratio(3, ours, [&] { code |= std::system(tool.constData()); });
    if (code != 0)
        return 2; // no tool to compare with
    bench::Figure("sqlite_1M_vs_sqlite3_csv", ratio, 1);
    return 0;
}
