#pragma once
// A real main window in a folder of its own, with the desktop's dialogs and the Analyzer replaced by ones that note
// what happens to them.

#include "app/StartUp.h"
#include "app/WindowTable.h"
#include "app/mdiMother.h"
#include "controls/ExplorerBar.h"
#include "data/clsConns.h"
#include "data/modMain.h"
#include "frame/AppPath.h"
#include "frame/ChildWindow.h"
#include "frame/QueryWindow.h"
#include "frame/Settings.h"
#include "session/Status.h"
#include "sqltext/Keywords.h"
#include "tests/support/DialogDouble.h"
#include <QPointer>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

// A child that answers every name and writes down what it was asked.
class FakeChild : public ChildWindow, public QueryWindow
{
public:
    FakeChild(QString form, QStringList *log) : m_form(std::move(form)), m_log(log)
    {
        setObjectName(m_form);
        SetCaption(QStringLiteral("SQL Analyzer"));
    }
    QString ConnName, Body, Inserted, Filter;
    clsMenuSettings Can;
    ChildNames Names;
    std::function<void()> OnSave;
    QString StatusSeen; // while the last name was called

    QString FormName() const override { return m_form; }
    clsMenuSettings MenuSettings() const override { return Can; }
    ChildNames Answers() const override { return Names; }
    void OpenFor(const QString &connectionName) override { ConnName = connectionName; }
    QString Text() const override { return Body; }
    bool SetText(const QString &text) override { return Body = text, true; }
    void SetFileFilter(const QString &filter) override { Filter = filter; }
    void Activated() override { Note(QStringLiteral("Activated")); }
    void Deactivated() override { Note(QStringLiteral("Deactivated")); }
    void Unload() override { Note(QStringLiteral("Unload")); }
    void mnuCopy() override { Note(QStringLiteral("mnuCopy")); }
    void mnuCut() override { Note(QStringLiteral("mnuCut")); }
    void mnuPaste() override { Note(QStringLiteral("mnuPaste")); }
    void mnuUndo() override { Note(QStringLiteral("mnuUndo")); }
    void mnuSelectAll() override { Note(QStringLiteral("mnuSelectAll")); }
    void mnuFind() override { Note(QStringLiteral("mnuFind")); }
    void mnuReplace() override { Note(QStringLiteral("mnuReplace")); }
    void mnuOpen() override { Note(QStringLiteral("mnuOpen")); }
    void mnuSave() override
    {
        Note(QStringLiteral("mnuSave"));
        if (OnSave)
            OnSave();
    }
    void mnuPrint() override { Note(QStringLiteral("mnuPrint")); }
    void SnapShot() override { Note(QStringLiteral("SnapShot")); }
    void mnuChart() override { Note(QStringLiteral("mnuChart")); }
    void ChangeTitle() override { Note(QStringLiteral("ChangeTitle")); }
    void ChangeFootNote() override { Note(QStringLiteral("ChangeFootNote")); }
    void ChangeChartType(int type) override { Note(QStringLiteral("ChangeChartType %1").arg(type)); }
    void Parse(int kind) override { Note(QStringLiteral("Parse %1").arg(kind)); }
    void mnuClearLog() override { Note(QStringLiteral("mnuClearLog")); }
    void mnuMax_Click() override { Note(QStringLiteral("mnuMax_Click")); }
    void mnuMin_Click() override { Note(QStringLiteral("mnuMin_Click")); }
    void mnuAvg_Click() override { Note(QStringLiteral("mnuAvg_Click")); }
    void mnuSum_Click() override { Note(QStringLiteral("mnuSum_Click")); }
    void mnuFitColumns() override { Note(QStringLiteral("mnuFitColumns")); }
    void mnuAddTable() override { Note(QStringLiteral("mnuAddTable")); }
    void ToolBar(const QString &key) override { Note(QStringLiteral("ToolBar ") + key); }
    void DynaMenuItemClick(const QString &key, const QString &text) override
    {
        Note(QStringLiteral("Dyna ") + key + QLatin1Char('/') + text);
    }
    void SaveState() override { Note(QStringLiteral("SaveState")); }
    void InsertString(const QString &text) override { Inserted += text; }
    void RefreshForm(const QString &name) override { Note(QStringLiteral("RefreshForm ") + name); }

private:
    void Note(const QString &what)
    {
        StatusSeen = LastStatus();
        *m_log << m_form + QLatin1Char(' ') + what;
    }
    QString m_form;
    QStringList *m_log;
};

class ShellTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Folder.isValid());
        SetAppPath(Folder.path());
        SetSettingsFile(Folder.filePath(QStringLiteral("settings.ini")));
        gConns().Clear();
        gConn.reset();
        MadeInstead()[QStringLiteral("frmSQL")] = [this] {
            auto *child = new FakeChild(QStringLiteral("frmSQL"), &Log);
            child->Tag = QStringLiteral("1");
            Analyzer = child;
            return child;
        };
    }
    void TearDown() override
    {
        Window.reset();
        MadeInstead().clear();
        gConns().Clear();
        gConn.reset();
        gKeywordSet = KeywordSet();
        SetAppPath(QString());
        SetSettingsFile(QString());
    }

    // A start as the program's, without the lock of the one instance. In the test mode no waiting window comes up.
    void Start(const QString &commandLine = QStringLiteral("TestMode"), bool show = false)
    {
        Window = std::make_unique<mdiMother>();
        StartUp start(*Window, commandLine);
        if (show)
            start.Show = [this] {
                Window->show();
                (void)QTest::qWaitForWindowExposed(Window.get());
            };
        ASSERT_TRUE(start.Run());
    }

    // A SQLite file with one small table; its connection string.
    QString Database(const QString &name = QStringLiteral("a.sqlite"))
    {
        const QString text = QStringLiteral("Driver=SQLite;Database=") + Folder.filePath(name);
        auto connection = ADODB::Connection::Create();
        connection->Open(text + QStringLiteral(";Create=Yes"));
        connection->Execute(QStringLiteral("create table if not exists t(a integer)"));
        connection->Close();
        return text;
    }
    FakeChild *Child(const QString &form, const QString &tag = {})
    {
        auto *child = new FakeChild(form, &Log);
        child->Tag = tag;
        Window->AddChild(child);
        child->ShowChild();
        return child;
    }
    ExplorerBarItem *Entry(const QString &text)
    {
        ExplorerBarItems &items = Window->eb->Bar(QStringLiteral("CONN"))->Items();
        for (int i = 1; i <= items.Count(); ++i)
            if (items.Item(i)->Text() == text)
                return items.Item(i);
        return nullptr;
    }

    QTemporaryDir Folder;
    DialogDouble Dialogs;
    QStringList Log;
    QPointer<FakeChild> Analyzer; // the one made last
    std::unique_ptr<mdiMother> Window;
};
