#pragma once
// The rows that the benches read: 1,000,000 of 8 mixed columns, about 106 MB as text.

#include "bench/Figures.h"
#include <QString>
#include <cstdio>
#include <sqlite3.h>

namespace bench {

inline const qint64 kRows = Size(1000000);

// Makes a SQLite file with the table "rows": id, name, price, amount, day, moment, note, flag. Some values are null.
inline bool MakeRows(const QString &path, qint64 rows)
{
    sqlite3 *database = nullptr;
    if (sqlite3_open(path.toUtf8().constData(), &database) != SQLITE_OK)
        return false;
    QString sql =
        QStringLiteral("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;"
                       "CREATE TABLE rows (id INTEGER PRIMARY KEY, name VARCHAR(60), price DECIMAL_TEXT(19,4),"
                       " amount DOUBLE, day DATE, moment TIMESTAMP, note TEXT, flag BOOLEAN);"
                       "WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c WHERE i < {rows})"
                       "INSERT INTO rows SELECT i, 'Customer number ' || (i * 7919 % 100003),"
                       " (i % 1000) || '.' || substr('0000' || (i * 31 % 10000), -4), i * 1.25 / 7,"
                       " date('2000-01-01', '+' || (i % 9000) || ' days'),"
                       " datetime('2000-01-01', '+' || (i * 37 % 300000000) || ' seconds') || '.' || (100 + i % 900),"
                       " CASE WHEN i % 10 = 0 THEN NULL ELSE 'A note of ordinary length about row ' || i END,"
                       " i % 2 FROM c;");
    sql.replace(QStringLiteral("{rows}"), QString::number(rows));
    const int code = sqlite3_exec(database, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(database));
    sqlite3_close(database);
    return code == SQLITE_OK;
}

} // namespace bench
