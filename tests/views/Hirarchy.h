// The result window over a SQLite file, for its tests.
#pragma once

#include "ado/Connection.h"
#include "controls/FlexGrid.h"
#include "data/modMain.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ShellDouble.h"
#include "views/frmHirarchy.h"
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

// Counts to n on the server, which takes long enough to watch.
inline QString Counting(qint64 n)
{
    return QStringLiteral("with recursive c(i) as (select 1 union all select i+1 from c where i<%1) select i from c")
        .arg(n);
}

struct Hirarchy : testing::Test
{
    QTemporaryDir folder;
    ShellDouble shell;
    DialogDouble dialogs;
    ADODB::ConnectionPtr connection;
    QPointer<frmHirarchy> holder{new frmHirarchy}; // a closed child deletes itself
    frmHirarchy &window = *holder;

    void SetUp() override
    {
        connection = ADODB::Connection::Create();
        connection->Open(QStringLiteral("Driver=SQLite;Create=Yes;Database=") +
                         folder.filePath(QStringLiteral("t.sqlite")));
        connection->Execute(QStringLiteral("create table t(id integer, name text, amount double)"));
        connection->Execute(QStringLiteral("insert into t values (1,'Anna, \"A\"',1.5),(2,null,-3),(3,'Björn',1.5)"));
        gConn = connection;
        window.KillOnError = false;
    }
    void TearDown() override
    {
        delete holder.data();
        gConn.reset();
    }

    bool Run(const QString &sql, const QString &title = QStringLiteral("SQL Result: c"))
    {
        window.ShowRec(sql, connection, title);
        return QTest::qWaitFor([&] { return !window.IsRunning() && window.Caption() == title; }, 20000);
    }
    QStringList Log() const
    {
        QStringList lines;
        for (qint64 row = 1; row < window.mfgMessge->Rows(); ++row)
            lines << window.mfgMessge->TextMatrix(row, 3);
        return lines;
    }
    QByteArray Bytes(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
};
