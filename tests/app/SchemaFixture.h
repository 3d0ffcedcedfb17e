#pragma once
// The schema menus for real: the main window, its commands, pickers answered by keys.

#include "app/CommandTable.h"
#include "app/Menus.h"
#include "app/SchemaCommands.h"
#include "controls/FlexGrid.h"
#include "controls/ListView.h"
#include "controls/StatusBar.h"
#include "data/ConnectionStore.h"
#include "data/frmGetSelection.h"
#include "data/frmGrid.h"
#include "data/frmTree.h"
#include "tests/app/ShellFixture.h"
#include "views/frmHirarchy.h"
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTimer>

class SchemaMenus : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        clsConns stored; // without one the welcome would come up over a connection that takes its time
        stored.Add(QString(), QStringLiteral("Stored"), QString());
        ASSERT_TRUE(ConnectionStore(AppFile(QStringLiteral("es.dat"))).Save(stored));
        Start();
    }
    // A SQLite file with a few tables and a view.
    void OpenSample()
    {
        ASSERT_TRUE(OpenConnection(Database()));
        for (const char *sql :
             {"create table \"two words\"(\"a b\" varchar(30), n numeric(10,2), i bigint)",
              "create table \"it's\"(x integer)", "create view v as select a from t", "insert into t values (1),(2)"})
            gConn->Execute(QString::fromLatin1(sql));
    }
    void Do(const char *menu)
    {
        const CommandRow *row = FindCommand(menu);
        ASSERT_TRUE(row) << menu;
        Window->Run(*row);
    }
    // Answers the next picker with this row, or with Escape for "".
    void Pick(const QString &row)
    {
        auto *timer = new QTimer(&m_context);
        QObject::connect(timer, &QTimer::timeout, &m_context, [this, timer, row] {
            auto *picker = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget());
            if (!picker || !picker->isVisible())
                return;
            timer->deleteLater();
            timer->stop();
            const qint64 chosen = picker->lvResults->SelectedRow();
            Preselected = chosen < 0 ? QString() : picker->lvResults->Text(chosen);
            if (row.isEmpty()) {
                QTest::keyClick(picker, Qt::Key_Escape);
                return;
            }
            QTest::keyClicks(picker->txtCri, row);
            QTest::keyClick(picker->txtCri, Qt::Key_Return);
        });
        timer->start(10);
    }
    template <class Form> Form *Newest()
    {
        const QList<ChildWindow *> children = Window->Children();
        for (auto i = children.size(); i-- > 0;)
            if (auto *form = qobject_cast<Form *>(children[i]))
                return form;
        return nullptr;
    }

    QString Preselected;
    QObject m_context;
};
