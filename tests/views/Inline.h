// The table editor over each database, with a second connection beside it that does what another user would.
#pragma once

#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "controls/CellEditor.h"
#include "controls/DataGrid.h"
#include "controls/FlexGrid.h"
#include "controls/StatusBar.h"
#include "data/modMain.h"
#include "session/Pump.h"
#include "session/PumpUntil.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ShellDouble.h"
#include "views/frmInline.h"
#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

struct InlineDatabase
{
    const char *name, *variable;
};
inline std::ostream &operator<<(std::ostream &out, const InlineDatabase &database)
{
    return out << database.name;
}

struct Inline : testing::TestWithParam<InlineDatabase>
{
    QTemporaryDir folder;
    ShellDouble shell;
    DialogDouble dialogs;
    QPointer<frmInline> holder;
    ADODB::ConnectionPtr other; // another user's
    QString string;

    bool IsPostgres() const { return qstrcmp(GetParam().name, "PostgreSQL") == 0; }
    bool IsMariaDb() const { return qstrcmp(GetParam().name, "MariaDB") == 0; }
    bool IsSqlite() const { return !GetParam().variable; }

    void SetUp() override
    {
        InstallWaitHandler();
        const char *const variable = GetParam().variable;
        string = variable ? qEnvironmentVariable(variable)
                          : QStringLiteral("Driver=SQLite;Create=Yes;Database=%1/i.sqlite").arg(folder.path());
        if (string.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << variable;
            GTEST_SKIP() << variable;
        }
        if (variable) {
            m_place = QStringLiteral("inline_%1").arg(QCoreApplication::applicationPid());
            const ADODB::ConnectionPtr first = Connect();
            first->Execute(QStringLiteral("DROP SCHEMA IF EXISTS %1%2").arg(m_place, IsPostgres() ? " CASCADE" : ""));
            first->Execute(QStringLiteral("CREATE SCHEMA ") + m_place);
        }
        gConn = Connect();
        Use(gConn);
        other = Connect();
        Use(other);
        const QString text = IsMariaDb() ? QStringLiteral("LONGTEXT CHARACTER SET utf8mb4") : QStringLiteral("TEXT");
        Do(gConn, QStringLiteral("CREATE TABLE town(id INTEGER PRIMARY KEY, name VARCHAR(20) NOT NULL UNIQUE)"));
        Do(gConn, QStringLiteral("CREATE TABLE t(id INTEGER PRIMARY KEY, name VARCHAR(20) NOT NULL, amount INTEGER, "
                                 "day DATE, exact DECIMAL(38,10), note %1, townid INTEGER, "
                                 "CONSTRAINT to_town FOREIGN KEY(townid) REFERENCES town(id))")
                      .arg(text));
        if (IsSqlite())
            Do(gConn, QStringLiteral("PRAGMA foreign_keys = ON"));
        Do(gConn, QStringLiteral("INSERT INTO town VALUES (1, 'Ulm'), (2, 'Bonn')"));
        Do(gConn, QStringLiteral("INSERT INTO t(id, name, amount, note, townid) VALUES (1, 'one', 10, 'a', 1), "
                                 "(2, 'two', 20, '', 2), (3, 'three', NULL, NULL, NULL)"));
        holder = new frmInline;
        Shell::Current().AddChild(holder);
        holder->show();
        holder->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(holder));
    }
    void TearDown() override
    {
        delete holder.data();
        if (other && !m_place.isEmpty())
            other->Execute(QStringLiteral("DROP SCHEMA %1%2").arg(m_place, IsPostgres() ? " CASCADE" : ""));
        other.reset();
        gConn.reset();
        RemoveWaitHandler();
    }

    ADODB::ConnectionPtr Connect() const
    {
        const ADODB::ConnectionPtr connection = ADODB::Connection::Create();
        connection->Open(string);
        return connection;
    }
    void Use(const ADODB::ConnectionPtr &connection) const
    {
        if (!m_place.isEmpty())
            connection->Execute((IsPostgres() ? QStringLiteral("SET search_path TO ") : QStringLiteral("USE ")) +
                                m_place);
    }
    static void Do(const ADODB::ConnectionPtr &connection, const QString &sql) { connection->Execute(sql); }
    // What another connection sees: the cells of all rows.
    QString Seen(const QString &sql) const
    {
        const ADODB::RecordsetPtr rows = other->Execute(sql);
        QStringList lines;
        for (qint64 row = 0; row < rows->RowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < rows->ColumnCount(); ++column)
                cells += rows->CellIsNull(row, column) ? QStringLiteral("~") : rows->CellText(row, column);
            lines += cells.join(u',');
        }
        return lines.join(u' ');
    }

    frmInline &Window() { return *holder; }
    DataGrid &Grid() { return *holder->dg; }
    void Open(const QString &table = QStringLiteral("t"))
    {
        Window().SetSource(table);
        ASSERT_TRUE(Window().Rows()) << dialogs.LastText().toStdString();
        Grid().setFocus();
    }
    qint64 RowOf(int id) // a server gives the rows in any order
    {
        qint64 row = 0;
        while (row < Grid().Rows() && Grid().DataSource()->CellText(row, 0) != QString::number(id))
            ++row;
        return row;
    }
    // By click and keys.
    void Enter(qint64 row, int column, const QString &text)
    {
        Grid().EnsureVisible(row, column);
        QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, Grid().CellRect(row, column).center());
        QTest::keyClick(&Grid(), Qt::Key_F2);
        ASSERT_TRUE(Grid().IsEditing()) << Window().SB->PanelText(1).toStdString();
        QTest::keyClicks(Grid().Editor(), text);
        QTest::keyClick(Grid().Editor(), Qt::Key_Return);
    }
    void Delete(qint64 row)
    {
        const QRect cell = Grid().CellRect(row, 0);
        QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, QPoint(5, cell.center().y()));
        QTest::keyClick(&Grid(), Qt::Key_Delete);
    }
    QString Refused(qint64 line, int column) { return Window().mfgRefused->TextMatrix(line, column); }
    qint64 RefusedRows() { return Window().mfgRefused->isHidden() ? 0 : Window().mfgRefused->Rows() - 1; }

private:
    QString m_place;
};

inline const auto kInlineDatabases =
    testing::Values(InlineDatabase{"SQLite", nullptr}, InlineDatabase{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES"},
                    InlineDatabase{"MariaDB", "BRINDLEWICK_TEST_MARIADB"});
inline std::string InlineName(const testing::TestParamInfo<InlineDatabase> &info)
{
    return info.param.name;
}
