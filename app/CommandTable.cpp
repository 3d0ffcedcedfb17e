#include "app/CommandTable.h"
#include "ado/Types.h"
#include "app/MainCommands.h"
#include "app/ToolbarTable.h"
#include "app/frmHelp.h"
#include <cstring>

using namespace ADODB;

#define SETTER(Signature, Change)                                                                                      \
    constexpr CommandRow CommandRow::Signature const                                                                   \
    {                                                                                                                  \
        CommandRow row = *this;                                                                                        \
        Change;                                                                                                        \
        return row;                                                                                                    \
    }
SETTER(On(Needs need), row.Need = need)
SETTER(Can(bool clsMenuSettings::*setting), row.Need = Needs::Setting; row.Setting = setting)
SETTER(Keeps(), row.KeepsState = true)
SETTER(Later(), row.IsLater = true)
SETTER(Of(const char *toolbar), row.Need = Needs::Toolbar; row.Toolbar = toolbar)
SETTER(Key(const char *shortcut), row.Shortcut = shortcut)
SETTER(ChildKey(const char *hint), row.Hint = hint)
SETTER(Says(const char *status), row.Status = status)
SETTER(Button(const char *key, const char *tip), row.ButtonKey = key; row.Tip = tip ? tip : row.Caption)
SETTER(Check(const char *key, const char *tip), row = row.Button(key, tip); row.IsCheck = true)
SETTER(Help(const char *page), row.Page = page)
SETTER(Drops(const char *button, const char *caption), row.DropsOf = button;
       row.DropCaption = caption ? caption : row.Caption)
#undef SETTER

namespace {

constexpr CommandRow Row(const char *parent, const char *name, const char *caption, Calls route)
{
    CommandRow row;
    row.Parent = parent;
    row.Name = name;
    row.Caption = caption;
    row.Route = route;
    return row;
}
constexpr CommandRow Group(const char *parent, const char *name, const char *caption)
{
    return Row(parent, name, caption, Calls::Group);
}
constexpr CommandRow Line(const char *parent)
{
    return Row(parent, "", "", Calls::Separator);
}
constexpr CommandRow Coming(const char *parent, const char *name, const char *caption)
{
    return Row(parent, name, caption, Calls::Nothing).Later();
}
constexpr CommandRow Main(const char *parent, const char *name, const char *caption, void (*run)(mdiMother &))
{
    CommandRow row = Row(parent, name, caption, Calls::Main);
    row.Main = run;
    return row;
}
constexpr CommandRow Child(const char *parent, const char *name, const char *caption, ChildName answer, int number = 0)
{
    CommandRow row = Row(parent, name, caption, Calls::Child);
    row.Answer = answer;
    row.Number = number;
    return row;
}
constexpr CommandRow WithText(const char *parent, const char *name, const char *caption, Calls route, const char *text)
{
    CommandRow row = Row(parent, name, caption, route);
    row.Text = text;
    return row;
}
constexpr CommandRow Sql(const char *parent, const char *name, const char *caption, const char *key)
{
    return WithText(parent, name, caption, Calls::Tool, key).Of("SQL");
}
constexpr CommandRow Diagram(const char *parent, const char *name, const char *caption, const char *key)
{
    return WithText(parent, name, caption, Calls::Tool, key).Of("DTB");
}
// The chart has no toolbar; its further commands come to it as a button's would.
constexpr CommandRow ChartTool(const char *parent, const char *name, const char *caption, const char *key)
{
    return WithText(parent, name, caption, Calls::Tool, key);
}
constexpr CommandRow Opens(const char *parent, const char *name, const char *caption, const char *form)
{
    return WithText(parent, name, caption, Calls::Window, form);
}
constexpr CommandRow Schema(const char *parent, const char *name, const char *caption, void (SchemaCommands::*run)())
{
    CommandRow row = Row(parent, name, caption, Calls::Schema);
    row.Schema = run;
    return row;
}
constexpr CommandRow Rowset(const char *parent, const char *name, const char *caption, int schema, const char *title,
                            const char *filterField = "")
{
    CommandRow row = Row(parent, name, caption, Calls::Rowset);
    row.Rowset = {schema, title, filterField};
    return row;
}

constexpr CommandRow s_commandRows[] = {
    Group("", "mnuFile", "File"),
    Main("mnuFile", "mnuConn", "New Connection", NewConnection).Help("connections"),
    Child("mnuFile", "mnuOpen", "Open", ChildName::mnuOpen)
        .Key("Ctrl+O")
        .Says("Opening...")
        .Can(&clsMenuSettings::CanOpen),
    Child("mnuFile", "mnuSave", "Save", ChildName::mnuSave)
        .Key("Ctrl+S")
        .Says("Saving...")
        .Can(&clsMenuSettings::CanSave),
    Child("mnuFile", "mnuFileSnapshot", "Snapshot", ChildName::SnapShot).On(Needs::Answer),
    // Print is not among the items that are switched off first: it keeps its last state while no child is active.
    Child("mnuFile", "mnuPrint", "Print", ChildName::mnuPrint).Key("Ctrl+P").Can(&clsMenuSettings::CanPrint).Keeps(),
    Group("mnuFile", "mnuImportMain", "Import").On(Needs::Connection),
    Coming("mnuImportMain", "mnuImport", "Import From Flat File").On(Needs::Connection),
    Coming("mnuImportMain", "nmuImportTableData", "Import From Table").On(Needs::Connection),
    Group("mnuFile", "mnuExport", "Export").On(Needs::Connection),
    Child("mnuExport", "mnuExportFlatFile", "Export to Flat File", ChildName::mnuSave).Says("Exporting..."),
    Coming("mnuExport", "mnuExportTable", "Export to Table"),
    Group("mnuFile", "mnuCompare", "Compare"),
    // The two have nothing behind them in any release so far.
    Coming("mnuCompare", "mnuCompareStructure", "Database Structure"),
    Coming("mnuCompare", "mnuCompareData", "Database Data"),
    Main("mnuFile", "mnuSQL", "SQL Analyzer", OpenScratchAnalyzer).On(Needs::Connection).Help("analyzer"),
    Main("mnuFile", "mnuViewCS", "View Connectin String", ViewConnectionString).Help("connections"),
    Main("mnuFile", "mnuDeleteConn", "Delete Connection", DeleteConnection).On(Needs::Entry).Help("connections"),
    Main("mnuFile", "mnuExit", "Exit", Exit),
    Group("", "mnuEdit", "Edit").Help("analyzer"),
    Child("mnuEdit", "mnuCopy", "Copy", ChildName::mnuCopy).Key("Ctrl+C").Can(&clsMenuSettings::CanCopy),
    // Cut passes the name of Copy, and Replace that of Find: the menu's Cut only copies, and the search offers to
    // replace.
    Child("mnuEdit", "mnuCut", "Cut", ChildName::mnuCopy).ChildKey("Ctrl+X").Can(&clsMenuSettings::CanCut),
    Child("mnuEdit", "mnuPaste", "Paste", ChildName::mnuPaste).Key("Ctrl+V").Can(&clsMenuSettings::CanPaste),
    Child("mnuEdit", "mnuUndo", "Undo", ChildName::mnuUndo).Key("Ctrl+Z").Can(&clsMenuSettings::CanUndo),
    Child("mnuEdit", "mnuSelectAll", "Select All", ChildName::mnuSelectAll)
        .Key("Ctrl+A")
        .Can(&clsMenuSettings::CanSelectAll),
    Child("mnuEdit", "mnuFind", "Find", ChildName::mnuFind).Key("Ctrl+F").Can(&clsMenuSettings::CanFind),
    Child("mnuEdit", "mnuReplace", "Replace", ChildName::mnuFind).Key("Ctrl+H").Can(&clsMenuSettings::CanReplace),
    Group("", "mnuDBTables", "Tables").On(Needs::Connection).Help("schema"),
    Schema("mnuDBTables", "mnuTableList", "Full Table List", &SchemaCommands::mnuTableList),
    Schema("mnuDBTables", "mnuBrowesTable", "Browse Data", &SchemaCommands::mnuBrowesTable).Help("inline"),
    Schema("mnuDBTables", "mnuAddTable", "Create Table", &SchemaCommands::mnuAddTable),
    Schema("mnuDBTables", "mnuEditTable", "Modify Table", &SchemaCommands::mnuEditTable),
    Schema("mnuDBTables", "mnuClearTable", "Clear Table", &SchemaCommands::mnuClearTable),
    Schema("mnuDBTables", "mnuDropTable", "Drop Table", &SchemaCommands::mnuDropTable),
    Schema("mnuDBTables", "mnuTableIndex", "Index List", &SchemaCommands::mnuTableIndex),
    Schema("mnuDBTables", "mnuDDL", "Data Definition", &SchemaCommands::mnuDDL),
    Schema("mnuDBTables", "mnuTableLinks", "Table Links", &SchemaCommands::mnuTableLinks).Help("links"),
    Group("mnuDBTables", "mnuFieldsGrp", "Fields"),
    Rowset("mnuFieldsGrp", "mnuTableFields", "Field List", adSchemaColumns, "Table #TABLE# Fields", "Table_Name"),
    Rowset("mnuFieldsGrp", "mnuColumnsDomainUsage", "Domain Usage", adSchemaColumnsDomainUsage, "ColumnsDomainUsage"),
    Group("mnuDBTables", "mnuConstraintsGrp", "Constraints"),
    Rowset("mnuConstraintsGrp", "mnuTableConstraints", "Full Table Constraint List", adSchemaTableConstraints,
           "TableConstraints"),
    Rowset("mnuConstraintsGrp", "mnuCheckConstraints", "Check Constraints", adSchemaCheckConstraints,
           "CheckConstraints"),
    Rowset("mnuConstraintsGrp", "mnuConstraintColumnUsage", "Constraint Field Usage", adSchemaConstraintColumnUsage,
           "ConstraintColumnUsage"),
    Rowset("mnuConstraintsGrp", "mnuConstraintTableUsage", "Constraint Table Usage", adSchemaConstraintTableUsage,
           "ConstraintTableUsage"),
    Rowset("mnuConstraintsGrp", "mnuKeyColumnUsage", "Key Field Usage", adSchemaKeyColumnUsage, "KeyColumnUsage"),
    Rowset("mnuConstraintsGrp", "mnuTablePrimaryKeyList", "Primary Key List", adSchemaPrimaryKeys,
           "Table #TABLE# Primary Keys", "Table_Name"),
    Rowset("mnuConstraintsGrp", "mnuTableForeginKeyList", "Foregin Key List", adSchemaForeignKeys,
           "Table #TABLE# Foreign Keys", "FK_TABLE_NAME"),
    Group("mnuDBTables", "mnuPrivilegesGrp", "Privileges"),
    Rowset("mnuPrivilegesGrp", "mnuTablePrivileges", "Full Table Privileges", adSchemaTablePrivileges,
           "TablePrivileges"),
    Rowset("mnuPrivilegesGrp", "mnuColumnPrivileges", "Full Field Privileges", adSchemaColumnPrivileges,
           "ColumnPrivileges"),
    Rowset("mnuPrivilegesGrp", "mnuUsagePrivileges", "Privileges Usage", adSchemaUsagePrivileges, "UsagePrivileges"),
    Group("", "mnuView", "Views").On(Needs::Connection).Help("schema"),
    Schema("mnuView", "mnuViews", "Full View List", &SchemaCommands::mnuViews),
    Schema("mnuView", "mnuViewBrowesData", "Browes Data", &SchemaCommands::mnuViewBrowesData),
    Schema("mnuView", "mnuAddView", "Add View", &SchemaCommands::mnuAddView),
    Schema("mnuView", "mnuDropView", "Drop View", &SchemaCommands::mnuDropView),
    Rowset("mnuView", "mnuViewColumnUsage", "View Column Usage", adSchemaViewColumnUsage, "ViewColumnUsage"),
    Rowset("mnuView", "mnuViewTableUsage", "View Usage", adSchemaViewTableUsage, "ViewTableUsage"),
    Group("", "mnuProcedureGrp", "Procedures").On(Needs::Connection).Help("schema"),
    Rowset("mnuProcedureGrp", "mnuProcedures", "Full Procedure List", adSchemaProcedures, "Procedures"),
    Rowset("mnuProcedureGrp", "mnuProcedureColumns", "Procedure Fields", adSchemaProcedureColumns, "ProcedureColumns"),
    Rowset("mnuProcedureGrp", "mnuProcedureParameters", "Procedure Parameters", adSchemaProcedureParameters,
           "ProcedureParameters"),
    Group("", "mnuDatabaseGrp", "Database").On(Needs::Connection).Help("schema"),
    Opens("mnuDatabaseGrp", "mnuStructureTree", "Structure Tree", "frmTree"),
    Rowset("mnuDatabaseGrp", "mnuAsserts", "Asserts", adSchemaAsserts, "Asserts"),
    Rowset("mnuDatabaseGrp", "mnuCharacterSets", "Character Sets", adSchemaCharacterSets, "CharacterSets"),
    Rowset("mnuDatabaseGrp", "mnuCollations", "Collations", adSchemaCollations, "Collations"),
    Rowset("mnuDatabaseGrp", "mnuCubes", "Cubes", adSchemaCubes, "Cubes"),
    Rowset("mnuDatabaseGrp", "mnuDBInfoKeywords", "Keywords", adSchemaDBInfoKeywords, "DBInfoKeywords"),
    Rowset("mnuDatabaseGrp", "mnuDBInfoLiterals", "Literals", adSchemaDBInfoLiterals, "DBInfoLiterals"),
    Rowset("mnuDatabaseGrp", "mnuDimensions", "Dimensions", adSchemaDimensions, "Dimensions"),
    Rowset("mnuDatabaseGrp", "mnuHierarchies", "Hierarchies", adSchemaHierarchies, "Hierarchies"),
    Rowset("mnuDatabaseGrp", "mnuLevels", "Levels", adSchemaLevels, "Levels"),
    Rowset("mnuDatabaseGrp", "mnuMeasures", "Measures", adSchemaMeasures, "Measures"),
    Rowset("mnuDatabaseGrp", "mnuMembers", "Members", adSchemaMembers, "Members"),
    Rowset("mnuDatabaseGrp", "mnuProperties", "Properties", adSchemaProperties, "Properties"),
    Rowset("mnuDatabaseGrp", "mnuProviderTypes", "Provider Types", adSchemaProviderTypes, "ProviderTypes"),
    Rowset("mnuDatabaseGrp", "mnuSchemata", "Schemata", adSchemaSchemata, "Schemata"),
    Rowset("mnuDatabaseGrp", "mnuSQLLanguages", "SQL Languages", adSchemaSQLLanguages, "SQLLanguages"),
    Rowset("mnuDatabaseGrp", "mnuStatistics", "Statistics", adSchemaStatistics, "Statistics"),
    Rowset("mnuDatabaseGrp", "mnuTranslations", "Translations", adSchemaTranslations, "Translations"),
    Rowset("mnuDatabaseGrp", "mnuTrustees", "Trustees", adSchemaTrustees, "Trustees"),
    Group("", "mnuDiagram", "Diagram").On(Needs::Connection).Help("diagram"),
    Opens("mnuDiagram", "mnuTableDiagram", "Database Diagram", "frmDiagram"),
    Child("mnuDiagram", "mnuDiagramAddTable", "Add Table", ChildName::mnuAddTable).Of("DTB").Button("DTBTable"),
    Diagram("mnuDiagram", "mnuDiagramAddLinked", "Add Linked Tables", "DTBLinked").Button("DTBLinked", "Add Linked"),
    Diagram("mnuDiagram", "mnuDiagramAddAll", "Add All Tables", "DTBAll").Button("DTBAll"),
    Diagram("mnuDiagram", "mnuDiagramRemove", "Remove Table", "DTBRemove").Button("DTBRemove"),
    Diagram("mnuDiagram", "mnuDiagramClear", "Clear Diagram", "DTBClear").Button("DTBClear", "Clear All Tables"),
    Line("mnuDiagram"),
    Diagram("mnuDiagram", "mnuDiagramFront", "Bring To Front", "DTBB2F").Button("DTBB2F"),
    Diagram("mnuDiagram", "mnuDiagramBack", "Send To Back", "DTBS2B").Button("DTBS2B"),
    Diagram("mnuDiagram", "mnuDiagramGray", "Black and White", "DTBB&W").Check("DTBB&W"),
    Group("", "mnuChartMain", "Chart").On(Needs::Connection).Help("charts"),
    Child("mnuChartMain", "mnuNewChart", "New Chart", ChildName::mnuChart),
    Group("mnuChartMain", "mnuChartType", "Chart Type"),
    Group("mnuChartType", "mnuChart2D", "2D Chart Types"),
    // The numbers are those of the chart's own types.
    Child("mnuChart2D", "mnuChart2DArea", "Area", ChildName::ChangeChartType, 5),
    Child("mnuChart2D", "mnuChart2DBar", "Bar", ChildName::ChangeChartType, 1),
    Child("mnuChart2D", "mnuChart2DCombination", "Combination", ChildName::ChangeChartType, 9),
    Child("mnuChart2D", "mnuChart2DLine", "Line", ChildName::ChangeChartType, 3),
    Child("mnuChart2D", "mnuChart2DPie", "Pie", ChildName::ChangeChartType, 14),
    Child("mnuChart2D", "mnuChart2DStep", "Step", ChildName::ChangeChartType, 7),
    Child("mnuChart2D", "mnuChart2DXY", "XY", ChildName::ChangeChartType, 16),
    Group("mnuChartType", "mnuChart3D", "3D Chart Types"),
    Child("mnuChart3D", "mnuChart3DArea", "Area", ChildName::ChangeChartType, 4),
    Child("mnuChart3D", "mnuChart3DBar", "Bar", ChildName::ChangeChartType, 0),
    // Its name is spelt so, its caption is not.
    Child("mnuChart3D", "mnuChart3DComination", "Combination", ChildName::ChangeChartType, 8),
    Child("mnuChart3D", "mnuChart3DLine", "Line", ChildName::ChangeChartType, 2),
    Child("mnuChart3D", "mnuChart3DStep", "Step", ChildName::ChangeChartType, 6),
    Child("mnuChartMain", "mnuChartTitle", "Change Title", ChildName::ChangeTitle),
    Child("mnuChartMain", "mnuChartFootNote", "Change Foot Note", ChildName::ChangeFootNote),
    Line("mnuChartMain"),
    ChartTool("mnuChartMain", "mnuChartWhole", "Show All Rows", "CHTWhole"),
    ChartTool("mnuChartMain", "mnuChartLog", "Logarithmic Axis", "CHTLog"),
    ChartTool("mnuChartMain", "mnuChartEyes", "Colours for Every Eye", "CHTEyes"),
    ChartTool("mnuChartMain", "mnuChartDrawing", "Save as SVG or PDF", "CHTDrawing"),
    Group("", "mnuScripts", "Scripts").Help("analyzer"),
    Main("mnuScripts", "mnuMask", "Mask Script", MaskScript).On(Needs::Connection),
    Main("mnuScripts", "mnuInsert", "Insert Script", InsertScript).On(Needs::Connection),
    Main("mnuScripts", "mnuGenCS", "Generate Connectin String", GenerateConnectionString).Help("connections"),
    Main("mnuScripts", "mnuASP", "Generate ASP", GenerateASP).On(Needs::Connection),
    // What the Analyzer's toolbar and keys do, within reach of the menu bar.
    Group("", "mnuQuery", "Query").Help("analyzer"),
    Sql("mnuQuery", "mnuRun", "Run", "SQLRun").Button("SQLRun").ChildKey("F5"),
    Sql("mnuQuery", "mnuRunTrans", "Run Transaction", "SQLTrans").Button("SQLTrans"),
    Sql("mnuQuery", "mnuExplain", "Show Execution Plan", "SQLExplain").Button("SQLExplain").Help("plan"),
    Sql("mnuQuery", "mnuConnected", "Data Shape", "Connected").ChildKey("F8").Help("shapes"),
    Sql("mnuQuery", "mnuDisconnected", "Disconnected Data Shape", "Disconnected").ChildKey("F9").Help("shapes"),
    Sql("mnuQuery", "mnuBeginTrans", "Begin Transaction", "BT").Drops("SQLTrans"),
    Sql("mnuQuery", "mnuCommitTrans", "Commit Transaction", "CT").Drops("SQLTrans"),
    Sql("mnuQuery", "mnuRollbackTrans", "Rollback Transaction", "RT").Drops("SQLTrans"),
    Sql("mnuQuery", "mnuWizard", "SQL Wizard", "SQLWiz").Button("SQLWiz", "Wizzard").Help("wizard"),
    Line("mnuQuery"),
    Sql("mnuQuery", "mnuSyntax", "Check Syntax", "SQLSyntax").Button("SQLSyntax").ChildKey("F7"),
    Sql("mnuQuery", "mnuStruct", "Format SQL", "Struct").ChildKey("F2"),
    Group("mnuQuery", "mnuBrackets", "Show Pairs"),
    Sql("mnuBrackets", "mnuBracket", "Round Brackets", "Bracket").Drops("SQLParser").ChildKey("F10"),
    Sql("mnuBrackets", "mnuBrace", "Square Brackets", "Brace").Drops("SQLParser"),
    Sql("mnuBrackets", "mnuCBracket", "Curly Brackets", "CBracket").Drops("SQLParser"),
    Sql("mnuBrackets", "mnuSQuote", "Single Quotes", "SQuote").Drops("SQLParser"),
    Sql("mnuBrackets", "mnuQuote", "Double Quotes", "Quote").Drops("SQLParser"),
    Sql("mnuQuery", "mnuBrake", "Break Text", "SQLBrake").Button("SQLBrake"),
    Sql("mnuQuery", "mnuTabIn", "Block Indent", "SQLTabIn").Button("SQLTabIn"),
    Sql("mnuQuery", "mnuTabOut", "Remove Indent", "SQLTabOut").Button("SQLTabOut"),
    Sql("mnuQuery", "mnuCommIn", "Block Comment", "SQLCommIn").Button("SQLCommIn").ChildKey("F11"),
    Sql("mnuQuery", "mnuCommOut", "Remove Comment", "SQLCommOut").Button("SQLCommOut").ChildKey("F12"),
    Sql("mnuQuery", "mnuUCase", "Upper Case", "SQLUCase").Button("SQLUCase"),
    Sql("mnuQuery", "mnuLCase", "Lower Case", "SQLLCase").Button("SQLLCase"),
    Sql("mnuQuery", "mnuVBSW", "Text to Code", "SQLVBS").Button("SQLVBS"),
    Sql(NoMenu, "VBSW", "Window", "VBSW").Drops("SQLVBS"),
    Sql("mnuQuery", "mnuVBSC", "Text to Code on the Clipboard", "VBSC").Drops("SQLVBS", "Clipboard").ChildKey("F6"),
    Line("mnuQuery"),
    Sql("mnuQuery", "mnuRefresh", "Refresh", "SQLRefresh").Button("SQLRefresh"),
    Group("", "mnuWindow", "Window"),
    Main("mnuWindow", "mnuTileHorizantally", "Tile Horizantally", TileHorizontally),
    Main("mnuWindow", "mnuTileVertically", "Tile Vertically", TileVertically),
    Main("mnuWindow", "mnuCascade", "Cascade", Cascade),
    Main("mnuWindow", "mnuArrangeIcons", "Arrange Icons", ArrangeIcons),
    Group("", "mnuHelp", "Help"),
    Main("mnuHelp", "mnuAboutUS", "About Us", ShowAbout),
    Main("mnuHelp", "mnuShowHelp", "Contents", ShowHelp).ChildKey("F1"),
    Main("mnuHelp", "mnuFileAssociation", "File Association ", AssociateFiles),
    Group("popup", "mnuStats", "HirachyMenu").Help("results"),
    Child("mnuStats", "mnuMax", "Find Max", ChildName::mnuMax_Click),
    Child("mnuStats", "mnuMin", "Find Min", ChildName::mnuMin_Click),
    Child("mnuStats", "mnuAvg", "Get Average", ChildName::mnuAvg_Click),
    Child("mnuStats", "mnuSum", "Get Sum", ChildName::mnuSum_Click),
    Child("mnuStats", "mnuChart", "Chart Results", ChildName::mnuChart),
    Main("mnuStats", "mnuStatsASP", "Generate ASP", GenerateASP),
    Child("mnuStats", "mnuClearLog", "Clear Log", ChildName::mnuClearLog),
    Child("mnuStats", "mnuStatsSave", "Save", ChildName::mnuSave).Says("Saving..."),
    Child("mnuStats", "mnuFitColumns", "Fit Columns", ChildName::mnuFitColumns),
    Group("popup", "mnuParseMenu", "ParseMenu").Help("analyzer"),
    Child("mnuParseMenu", "mnuParseSubMenu0", "Parse (Parenthesis)", ChildName::Parse, 0),
    Child("mnuParseMenu", "mnuParseSubMenu1", "Parse [Bracket]", ChildName::Parse, 1),
    Child("mnuParseMenu", "mnuParseSubMenu2", "Parse {Curly Bracket}", ChildName::Parse, 2),
    Child("mnuParseMenu", "mnuParseSubMenu3", "Parse 'Single Quote'", ChildName::Parse, 3),
    Child("mnuParseMenu", "mnuParseSubMenu4", "Parse \"Double Quote\"", ChildName::Parse, 4),

    // Buttons without an item in a menu.
    WithText(NoMenu, "SQLParser", "Parser", Calls::Popup, "mnuParseMenu").Of("SQL").Button("SQLParser"),
    Sql(NoMenu, "SQLMulti", "Multiple Output windows", "SQLMulti").Check("SQLMulti"),
    Sql(NoMenu, "SQLSplit", "Split window workarea between code and results", "SQLSplit").Check("SQLSplit"),

    // A rowset of the table of schema commands to which no item leads.
    Rowset(NoMenu, "mnuTables", "Tables", adSchemaTables, "Tables"),
};

} // namespace

std::span<const CommandRow> CommandTable()
{
    return s_commandRows;
}

const CommandRow *FindCommand(const char *name)
{
    for (const CommandRow &row : s_commandRows)
        if (row.Route != Calls::Separator && !std::strcmp(row.Name, name))
            return &row;
    return nullptr;
}

QString HelpPageOf(const CommandRow &row)
{
    for (const CommandRow *each = &row; each; each = *each->Parent ? FindCommand(each->Parent) : nullptr)
        if (*each->Page)
            return QString::fromLatin1(each->Page);
    const ToolbarRow *toolbar = *row.Toolbar ? FindToolbar(row.Toolbar) : nullptr;
    return frmHelp::PageOf(toolbar ? QString::fromLatin1(toolbar->Form) : QString());
}

const CommandRow *FindButton(const char *key)
{
    for (const CommandRow &row : s_commandRows)
        if (*row.ButtonKey && !std::strcmp(row.ButtonKey, key))
            return &row;
    return nullptr;
}
