#pragma once
// An Analyzer for real: a SQLite file behind it, a side bar and a tool bar beside it, keys and mouse in front of it.

#include "ado/Connection.h"
#include "analyzer/frmSQL.h"
#include "controls/CommandBar.h"
#include "controls/ExplorerBar.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "data/clsConns.h"
#include "data/modMain.h"
#include "frame/AppPath.h"
#include "frame/Settings.h"
#include "session/Pump.h"
#include "sqltext/IntColorAll.h"
#include "sqltext/clsColorTable.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ShellDouble.h"
#include "views/frmHirarchy.h"
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>
#include <gtest/gtest.h>

// The buttons of the tool bar, in their order.
inline const QStringList sqlButtons = {
    QStringLiteral("SQLRun"),    QStringLiteral("SQLTrans"),  QStringLiteral("SQLWiz"),    QStringLiteral("SQLExplain"),
    QStringLiteral("SQLSyntax"), QStringLiteral("SQLParser"), QStringLiteral("SQLBrake"),  QStringLiteral("SQLVBS"),
    QStringLiteral("SQLTabIn"),  QStringLiteral("SQLTabOut"), QStringLiteral("SQLCommIn"), QStringLiteral("SQLCommOut"),
    QStringLiteral("SQLUCase"),  QStringLiteral("SQLLCase"),  QStringLiteral("SQLMulti"),  QStringLiteral("SQLSplit"),
    QStringLiteral("SQLRefresh")};

struct Analyzer : testing::Test
{
    QTemporaryDir folder;
    ExplorerBar side;
    CommandBar bar;
    DialogDouble dialogs;
    ShellDouble shell;
    QPointer<frmSQL> window;

    void SetUp() override
    {
        SetAppPath(folder.path());
        SetSettingsFile(folder.filePath(QStringLiteral("settings.ini")));
        InitColorTable();
        gKeywordSet = KeywordSet({QStringLiteral("SELECT"), QStringLiteral("FROM"), QStringLiteral("WHERE"),
                                  QStringLiteral("UPDATE"), QStringLiteral("SET"), QStringLiteral("INSERT")});
        InstallWaitHandler();
        shell.Side = &side;
        shell.Bar = &bar;
        bar.AddToolbar(QStringLiteral("SQL"));
        for (const QString &key : sqlButtons) {
            const bool check = key == QLatin1String("SQLMulti") || key == QLatin1String("SQLSplit");
            bar.AddButton(QStringLiteral("SQL"), key, QString(), check ? cbrCheck : cbrButton);
        }
        gConn = Connect();
        for (const char *sql : {"create table customers(id integer primary key, name text)",
                                "insert into customers values (1, 'Anna'), (2, 'Bj\xc3\xb6rn')",
                                "create table orders(id integer primary key, customer integer)",
                                "create view names as select name from customers"})
            gConn->Execute(QString::fromUtf8(sql));
        window = Make(QString());
    }
    void TearDown() override
    {
        shell.CloseAll();
        gConn.reset();
        gConns().Clear();
        RemoveWaitHandler();
        SetSettingsFile(QString());
        SetAppPath(QString());
    }

    ADODB::ConnectionPtr Connect() const
    {
        ADODB::ConnectionPtr connection = ADODB::Connection::Create();
        connection->Open(QStringLiteral("Driver=SQLite;Create=Yes;Database=") +
                         folder.filePath(QStringLiteral("t.sqlite")));
        return connection;
    }
    frmSQL *Make(const QString &name)
    {
        auto *made = new frmSQL;
        shell.AddChild(made);
        made->SetConnName(name);
        made->Load();
        made->ShowChild();
        made->Activated();
        made->txtSQL->setFocus();
        QCoreApplication::processEvents();
        return made;
    }
    qint64 Count(const QString &sql) const { return gConn->Execute(sql)->CellText(0, 0).toLongLong(); }
    QList<frmHirarchy *> Results() const
    {
        QList<frmHirarchy *> list;
        for (ChildWindow *child : shell.Children())
            if (auto *result = qobject_cast<frmHirarchy *>(child); result && !list.contains(result))
                list += result;
        return list;
    }
    void WaitForResults() const
    {
        for (frmHirarchy *result : Results())
            ASSERT_TRUE(
                QTest::qWaitFor([result = QPointer(result)] { return !result || !result->IsRunning(); }, 20000));
        QCoreApplication::processEvents();
    }
    QStringList Log() const
    {
        QStringList lines;
        if (const ExplorerBarBar *log = side.FindBar(QStringLiteral("LOG")))
            for (int i = 1; i <= log->Items().Count(); ++i)
                lines += log->Items().Item(i)->Text();
        return lines;
    }
    // The colours of a line, one digit a character, by the number in the colour table.
    std::string Colours(int line = 0) const
    {
        const QTextBlock block = window->txtSQL->document()->findBlockByNumber(line);
        std::string digits(size_t(block.length() - 1), '0');
        static const QList<QColor> table = {QColor(145, 195, 125), QColor(125, 145, 195), QColor(155, 125, 195),
                                            QColor(195, 175, 125), QColor(165, 175, 195), QColor(247, 205, 108)};
        for (const auto &range : block.layout()->formats())
            if (range.format.hasProperty(QTextFormat::ForegroundBrush))
                for (int i = range.start; i < range.start + range.length; ++i)
                    digits.at(size_t(i)) = char('0' + table.indexOf(range.format.foreground().color()));
        return digits;
    }
    // Does something on the event loop, once, in the middle of a statement.
    void WhenBusy(const std::function<void()> &act)
    {
        auto *look = new QTimer(&side);
        QObject::connect(look, &QTimer::timeout, &side, [look, act] {
            if (!gConn || !gConn->IsBusy())
                return;
            delete look;
            act();
        });
        look->start(1);
    }
    void Type(const QString &text) { QTest::keyClicks(window->txtSQL, text); }
    void Press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window->txtSQL, Qt::Key(key), modifiers);
    }
};
