#pragma once
// The databases that rows are moved between, each with a place of its own for the length of a test, and what a user
// does to the windows.

#include "ado/Connection.h"
#include "ado/Error.h"
#include "ado/Recordset.h"
#include "controls/FlexGrid.h"
#include "data/frmTextOutput.h"
#include "data/modMain.h"
#include "movement/FieldPopup.h"
#include "movement/MovementForm.h"
#include "session/Pump.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ShellDouble.h"
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

struct Database
{
    const char *name, *variable; // null: SQLite
};
inline std::ostream &operator<<(std::ostream &out, const Database &database)
{
    return out << database.name;
}
inline constexpr Database kSqlite{"SQLite", nullptr}, kPostgres{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES"},
    kMariaDb{"MariaDB", "BRINDLEWICK_TEST_MARIADB"};

// A connection to a schema, database or file that goes with this object.
class Place
{
public:
    Place(const Database &database, const QString &name)
        : m_isPostgres(database.variable && qstrcmp(database.name, "PostgreSQL") == 0)
    {
        const QString text =
            database.variable
                ? qEnvironmentVariable(database.variable)
                : QStringLiteral("Driver=SQLite;Create=Yes;Database=%1/%2.sqlite").arg(m_folder.path(), name);
        if (text.isEmpty())
            return;
        Connection = ADODB::Connection::Create();
        Connection->Open(text);
        if (!database.variable)
            return;
        m_name = QStringLiteral("%1_%2").arg(name).arg(QCoreApplication::applicationPid());
        Run(QStringLiteral("CREATE SCHEMA ") + m_name);
        Run((m_isPostgres ? QStringLiteral("SET search_path TO ") : QStringLiteral("USE ")) + m_name);
    }
    ~Place()
    {
        if (m_name.isEmpty())
            return;
        try {
            Run(QStringLiteral("DROP SCHEMA ") + m_name + (m_isPostgres ? QStringLiteral(" CASCADE") : QString()));
        } catch (const ADODB::Error &error) {
            ADD_FAILURE() << error.what();
        }
    }
    ADODB::RecordsetPtr Run(const QString &sql) const { return Connection->Execute(sql); }
    QStringList Rows(const QString &sql) const // a line a row, cells parted by "|", "null" for nothing
    {
        const ADODB::RecordsetPtr rows = Run(sql);
        QStringList lines;
        for (qint64 row = 0; row < rows->RowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < rows->ColumnCount(); ++column)
                cells += rows->CellIsNull(row, column) ? QStringLiteral("null") : rows->CellText(row, column);
            lines += cells.join(u'|');
        }
        return lines;
    }
    qint64 Count(const QString &table) const
    {
        return Rows(QStringLiteral("SELECT COUNT(*) FROM ") + table).value(0).toLongLong();
    }
    ADODB::ConnectionPtr Connection; // null where there is no such server

private:
    QTemporaryDir m_folder;
    QString m_name;
    bool m_isPostgres;
};

struct MovementTest
{
    QTemporaryDir folder;
    ShellDouble shell;
    DialogDouble dialogs;

    MovementTest() { InstallWaitHandler(); }
    ~MovementTest()
    {
        gConn.reset();
        RemoveWaitHandler();
    }
    QString Write(const QByteArray &bytes, const QString &name = QStringLiteral("flat.csv")) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return file.fileName();
    }
    // The last box, with what stood above it.
    QString Box(qsizetype index) const
    {
        return index < dialogs.Boxes.size() ? dialogs.Boxes[index].Title + u'/' + dialogs.Boxes[index].Text : QString();
    }
    // The log's window that came up behind the last box.
    QString Log() const
    {
        auto *output = dynamic_cast<frmTextOutput *>(shell.Child(QStringLiteral("frmTextOutput")));
        return output ? output->PlainText() : QString();
    }
};

inline void ClickOn(QPushButton *button)
{
    ASSERT_TRUE(button->isEnabled()) << button->objectName().toStdString();
    QTest::mouseClick(button, Qt::LeftButton);
}
inline void ClickEntry(QMenu *menu, QAction *entry)
{
    ASSERT_TRUE(menu->isVisible());
    ASSERT_TRUE(menu->actions().contains(entry));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
}
// A right click on the column, and a left one on the field.
inline void MapByMouse(const MovementForm &window, FieldPopup *popup, int column, const QString &field)
{
    const QRect cell = window.mfg->CellRect(0, column);
    ASSERT_FALSE(cell.isEmpty()) << column;
    QTest::mouseClick(window.mfg->viewport(), Qt::RightButton, {}, cell.center());
    const qsizetype index = popup->Fields().indexOf(field);
    ASSERT_GE(index, 0) << field.toStdString();
    ClickEntry(popup, popup->mnuField[index]);
}
inline QStringList RowOf(const FlexGrid *grid, qint64 row)
{
    QStringList cells;
    for (int column = 0; column < grid->Cols(); ++column)
        cells += grid->TextMatrix(row, column);
    return cells;
}
