// The tables that menus, bars and toolbars are built from, walked both ways.
#include "analyzer/frmSQL.h"
#include "app/Commands.h"
#include "app/MenuTable.h"
#include "app/SchemaCommands.h"
#include "app/SchemaTable.h"
#include "app/SideBarTable.h"
#include "app/ToolbarTable.h"
#include "controls/Icons.h"
#include <QSet>
#include <QStringList>
#include <gtest/gtest.h>

namespace {

QStringList Captions(const char *parent)
{
    QStringList captions;
    for (const MenuRow &row : MenuTable())
        if (!std::strcmp(row.Parent, parent) && row.Route != MenuRoute::Separator)
            captions << QString::fromLatin1(row.Caption);
    return captions;
}

// Does the Analyzer act on this button or menu item today?
bool Leads(const char *key)
{
    const QString name = QString::fromLatin1(key);
    return frmSQL::KnowsButton(name) &&
           !frmSQL::ButtonsOfLater().contains(name.startsWith(QLatin1String("SQL")) ? name.mid(3) : name);
}

TEST(ToolbarTable, AButtonIsOnExactlyWhenTheAnalyzerActsOnIt)
{
    for (const ButtonRow &row : SQLToolbar()) {
        if (row.Kind != ButtonKind::Separator) {
            EXPECT_EQ(row.Later, !Leads(row.Key)) << row.Key;
        }
    }
    for (const DropDownRow &row : DropDowns())
        EXPECT_EQ(row.Later, !Leads(row.Key)) << row.Key;
}

TEST(MenuTable, EveryRowLeadsSomewhere)
{
    QSet<QString> names;
    for (const MenuRow &row : MenuTable()) {
        SCOPED_TRACE(row.Name);
        if (*row.Parent && std::strcmp(row.Parent, "popup")) {
            const MenuRow *parent = FindMenuRow(row.Parent);
            ASSERT_TRUE(parent);
            EXPECT_EQ(parent->Route, MenuRoute::Group);
            EXPECT_LT(parent, &row); // built before its items
        }
        if (row.Route == MenuRoute::Separator)
            continue;
        EXPECT_FALSE(names.contains(QString::fromLatin1(row.Name)));
        names << QString::fromLatin1(row.Name);
        EXPECT_TRUE(*row.Caption);
        switch (row.Route) {
        case MenuRoute::Main:
            EXPECT_TRUE(FindMainOperation(row.Operation));
            break;
        case MenuRoute::Child:
            EXPECT_TRUE(FindChildOperation(row.Operation));
            break;
        case MenuRoute::Parse:
            EXPECT_GE(std::atoi(row.Operation), 0);
            EXPECT_LE(std::atoi(row.Operation), 4);
            break;
        case MenuRoute::Schema:
            EXPECT_STREQ(row.Operation, row.Name);
            EXPECT_TRUE(SchemaCommands::Knows(row.Operation));
            break;
        case MenuRoute::Tool:
            EXPECT_TRUE(Leads(row.Operation));
            break;
        default:
            EXPECT_FALSE(*row.Operation);
        }
    }
}

TEST(MenuTable, EverySchemaCommandHasARow)
{
    for (const SchemaRow &row : SchemaTable()) {
        if (!std::strcmp(row.Menu, "mnuTables")) { // has no item
            EXPECT_FALSE(FindMenuRow(row.Menu));
            continue;
        }
        const MenuRow *item = FindMenuRow(row.Menu);
        ASSERT_TRUE(item) << row.Menu;
        EXPECT_EQ(item->Route, MenuRoute::Schema);
    }
    for (const char *name :
         {"mnuTableList", "mnuViews", "mnuTableIndex", "mnuViewBrowesData", "mnuClearTable", "mnuDropTable",
          "mnuDropView", "mnuAddTable", "mnuAddView", "mnuEditTable", "mnuDDL", "mnuStructureTree"}) {
        ASSERT_TRUE(FindMenuRow(name)) << name;
        EXPECT_EQ(FindMenuRow(name)->Route, MenuRoute::Schema) << name;
    }
}

TEST(MenuTable, EveryLiveButtonHasARow)
{
    // The check buttons hold a state and have no command; the parser button opens the popup.
    const QSet<QString> without = {QStringLiteral("SQLMulti"), QStringLiteral("SQLSplit"), QStringLiteral("SQLParser")};
    for (const ButtonRow &button : SQLToolbar()) {
        if (button.Later || button.Kind == ButtonKind::Separator || without.contains(QString::fromLatin1(button.Key)))
            continue;
        bool found = false;
        for (const MenuRow &row : MenuTable())
            found = found || (row.Route == MenuRoute::Tool && !std::strcmp(row.Operation, button.Key));
        EXPECT_TRUE(found) << button.Key;
    }
}

TEST(MenuTable, EveryOperationOfTheMainWindowIsReached)
{
    const QList<const char *> names = {"mnuConn",
                                       "mnuSQL",
                                       "mnuViewCS",
                                       "mnuDeleteConn",
                                       "mnuGenCS",
                                       "mnuMask",
                                       "mnuInsert",
                                       "mnuASP",
                                       "mnuExit",
                                       "mnuAboutUS",
                                       "mnuShowHelp",
                                       "mnuFileAssociation",
                                       "mnuTileHorizantally",
                                       "mnuTileVertically",
                                       "mnuCascade",
                                       "mnuArrangeIcons"};
    for (const char *name : names) {
        const MenuRow *row = FindMenuRow(name);
        ASSERT_TRUE(row) << name;
        EXPECT_EQ(row->Route, MenuRoute::Main);
        EXPECT_STREQ(row->Operation, name);
    }
    // And no row leads to another one.
    for (const MenuRow &row : MenuTable()) {
        if (row.Route != MenuRoute::Main)
            continue;
        EXPECT_TRUE(std::any_of(names.begin(), names.end(), [&](const char *name) {
            return !std::strcmp(name, row.Operation);
        })) << row.Operation;
    }
}

TEST(MenuTable, CaptionsStandInTheirOrder)
{
    EXPECT_EQ(Captions(""), QStringList({"File", "Edit", "Tables", "Views", "Procedures", "Database", "Diagram",
                                         "Chart", "Scripts", "Query", "Window", "Help"}));
    EXPECT_EQ(Captions("mnuFile"),
              QStringList({"New Connection", "Open", "Save", "Snapshot", "Print", "Import", "Export", "Compare",
                           "SQL Analyzer", "View Connectin String", "Delete Connection", "Exit"}));
    EXPECT_EQ(Captions("mnuImportMain"), QStringList({"Import From Flat File", "Import From Table"}));
    EXPECT_EQ(Captions("mnuExport"), QStringList({"Export to Flat File", "Export to Table"}));
    EXPECT_EQ(Captions("mnuCompare"), QStringList({"Database Structure", "Database Data"}));
    EXPECT_EQ(Captions("mnuEdit"), QStringList({"Copy", "Cut", "Paste", "Undo", "Select All", "Find", "Replace"}));
    EXPECT_EQ(Captions("mnuDiagram"), QStringList({"Database Diagram", "Add Table", "Add Linked Tables",
                                                   "Add All Tables", "Remove Table", "Clear Diagram"}));
    EXPECT_EQ(Captions("mnuChart2D"), QStringList({"Area", "Bar", "Combination", "Line", "Pie", "Step", "XY"}));
    EXPECT_EQ(Captions("mnuChart3D"), QStringList({"Area", "Bar", "Combination", "Line", "Step"}));
    ASSERT_TRUE(FindMenuRow("mnuChart3DComination")); // its name is spelt so, its caption is not
    EXPECT_STREQ(FindMenuRow("mnuChart3DComination")->Caption, "Combination");
    EXPECT_TRUE(FindMenuRow("mnuChart2DCombination"));
    EXPECT_EQ(Captions("mnuScripts"),
              QStringList({"Mask Script", "Insert Script", "Generate Connectin String", "Generate ASP"}));
    EXPECT_EQ(Captions("mnuWindow"), QStringList({"Tile Horizantally", "Tile Vertically", "Cascade", "Arrange Icons"}));
    EXPECT_EQ(Captions("mnuHelp"), QStringList({"About Us", "Contents", "File Association "}));
    EXPECT_EQ(Captions("popup"), QStringList({"HirachyMenu", "ParseMenu"}));
    EXPECT_EQ(Captions("mnuStats"), QStringList({"Find Max", "Find Min", "Get Average", "Get Sum", "Chart Results",
                                                 "Generate ASP", "Clear Log", "Save", "Fit Columns"}));
    EXPECT_EQ(Captions("mnuParseMenu"), QStringList({"Parse (Parenthesis)", "Parse [Bracket]", "Parse {Curly Bracket}",
                                                     "Parse 'Single Quote'", "Parse \"Double Quote\""}));
}

TEST(MenuTable, TheSchemaItemsAreTheseFourteen)
{
    QStringList names;
    for (const MenuRow &row : MenuTable())
        if (row.NeedsSchema)
            names << QString::fromLatin1(row.Name);
    names.sort();
    QStringList wanted({"mnuMask", "mnuDBTables", "mnuView", "mnuProcedureGrp", "mnuDatabaseGrp", "mnuInsert", "mnuSQL",
                        "mnuDiagram", "mnuChartMain", "mnuImport", "mnuExport", "mnuASP", "nmuImportTableData",
                        "mnuImportMain"});
    wanted.sort();
    EXPECT_EQ(names, wanted);
}

TEST(MenuTable, OddRoutesThatAreMeant)
{
    EXPECT_STREQ(FindMenuRow("mnuCut")->Operation, "mnuCopy");
    EXPECT_STREQ(FindMenuRow("mnuReplace")->Operation, "mnuFind");
    EXPECT_STREQ(FindMenuRow("mnuStatsSave")->Operation, "mnuSave");
    EXPECT_STREQ(FindMenuRow("mnuExportFlatFile")->Operation, "mnuSave");
    EXPECT_STREQ(FindMenuRow("mnuOpen")->Status, "Opening...");
    EXPECT_STREQ(FindMenuRow("mnuSave")->Status, "Saving...");
    EXPECT_STREQ(FindMenuRow("mnuExportFlatFile")->Status, "Exporting...");
}

TEST(SideBarTable, RowsStandInTheirOrderAndReachTheirItems)
{
    QStringList rows;
    for (const SideBarRow &row : SideBarTable()) {
        rows << QStringLiteral("%1|%2|%3|%4")
                    .arg(QLatin1String(row.Key), QLatin1String(row.Text), QLatin1String(row.Tooltip),
                         QLatin1String(row.Menu));
        EXPECT_TRUE(FindMenuRow(row.Menu)) << row.Menu;
        EXPECT_EQ(FindSideBarRow(row.Key), &row);
        EXPECT_TRUE(HasToolIcon(QLatin1String("MTB") + QLatin1String(row.Key))) << row.Key;
    }
    EXPECT_EQ(rows, QStringList({"CONN|New Connection|Create New Database Connection|mnuConn",
                                 "RUN|SQL Analyzer|Open SQL Analyzer|mnuSQL", "OPEN|Open|Open|mnuOpen",
                                 "SAVE|Save|Save|mnuSave", "PRINT|Print|Print|mnuPrint", "FIND|Find|Search|mnuFind",
                                 "HELP|Help|Help|mnuShowHelp"}));
}

TEST(ToolbarTable, TooltipsAreTheseAndTheChecksAreThree)
{
    const auto tips = [](std::span<const ButtonRow> rows) {
        QStringList texts;
        for (const ButtonRow &row : rows)
            if (row.Kind != ButtonKind::Separator)
                texts << QString::fromLatin1(row.Tooltip);
        return texts;
    };
    EXPECT_EQ(tips(SQLToolbar()),
              QStringList({"Run", "Run Transaction", "Wizzard", "Show Execution Plan", "Check Syntax", "Parser",
                           "Break Text", "Text to Code", "Block Indent", "Remove Indent", "Block Comment",
                           "Remove Comment", "Upper Case", "Lower Case", "Multiple Output windows",
                           "Split window workarea between code and results", "Refresh"}));
    EXPECT_EQ(tips(DiagramToolbar()),
              QStringList({"Add Table", "Add Linked", "Add All Tables", "Remove Table", "Clear All Tables",
                           "Bring To Front", "Send To Back", "Black and White"}));
    QStringList checks;
    for (const auto &rows : {SQLToolbar(), DiagramToolbar()})
        for (const ButtonRow &row : rows)
            if (row.Kind == ButtonKind::Check)
                checks << QString::fromLatin1(row.Key);
    EXPECT_EQ(checks, QStringList({"SQLMulti", "SQLSplit", "DTBB&W"}));
}

TEST(ToolbarTable, KeysStandInTheirOrderAndHaveImages)
{
    QStringList sql, diagram;
    for (const ButtonRow &row : SQLToolbar())
        sql << QString::fromLatin1(row.Key);
    for (const ButtonRow &row : DiagramToolbar())
        diagram << QString::fromLatin1(row.Key);
    EXPECT_EQ(sql, QStringList({"SQLS",     "SQLS0",     "SQLRun",    "SQLTrans",   "SQLWiz",   "SQLExplain",
                                "SQLS1",    "SQLSyntax", "SQLParser", "SQLBrake",   "SQLVBS",   "SQLS2",
                                "SQLTabIn", "SQLTabOut", "SQLCommIn", "SQLCommOut", "SQLUCase", "SQLLCase",
                                "SQLS3",    "SQLMulti",  "SQLSplit",  "SQLRefresh"}));
    EXPECT_EQ(diagram, QStringList({"DTBS", "DTBS0", "DTBTable", "DTBLinked", "DTBAll", "DTBS2", "DTBRemove",
                                    "DTBClear", "DTBS3", "DTBB2F", "DTBS2B", "DTBS4", "DTBB&W"}));
    for (const auto &rows : {SQLToolbar(), DiagramToolbar()})
        for (const ButtonRow &row : rows) {
            EXPECT_EQ(row.Kind == ButtonKind::Separator, !*row.Tooltip) << row.Key;
            if (row.Kind != ButtonKind::Separator) {
                EXPECT_TRUE(HasToolIcon(QString::fromLatin1(row.Key))) << row.Key;
            }
        }
}

} // namespace
