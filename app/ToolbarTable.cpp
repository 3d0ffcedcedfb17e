#include "app/ToolbarTable.h"

using enum ButtonKind;

// "SQLS" and "SQLS0" are two separators side by side, drawn as one; the same for the diagram's.
static constexpr ButtonRow s_sql[] = {
    {"SQLS", "", Separator, false},
    {"SQLS0", "", Separator, false},
    {"SQLRun", "Run", Push, false},
    {"SQLTrans", "Run Transaction", Push, false},
    {"SQLWiz", "Wizzard", Push, true},
    {"SQLExplain", "Show Execution Plan", Push, true},
    {"SQLS1", "", Separator, false},
    {"SQLSyntax", "Check Syntax", Push, false},
    {"SQLParser", "Parser", Push, false},
    {"SQLBrake", "Break Text", Push, false},
    {"SQLVBS", "Text to Code", Push, false},
    {"SQLS2", "", Separator, false},
    {"SQLTabIn", "Block Indent", Push, false},
    {"SQLTabOut", "Remove Indent", Push, false},
    {"SQLCommIn", "Block Comment", Push, false},
    {"SQLCommOut", "Remove Comment", Push, false},
    {"SQLUCase", "Upper Case", Push, false},
    {"SQLLCase", "Lower Case", Push, false},
    {"SQLS3", "", Separator, false},
    {"SQLMulti", "Multiple Output windows", Check, false},
    {"SQLSplit", "Split window workarea between code and results", Check, false},
    {"SQLRefresh", "Refresh", Push, false},
};

static constexpr ButtonRow s_diagram[] = {
    {"DTBS", "", Separator, false},
    {"DTBS0", "", Separator, false},
    {"DTBTable", "Add Table", Push, true},
    {"DTBLinked", "Add Linked", Push, true},
    {"DTBAll", "Add All Tables", Push, true},
    {"DTBS2", "", Separator, false},
    {"DTBRemove", "Remove Table", Push, true},
    {"DTBClear", "Clear All Tables", Push, true},
    {"DTBS3", "", Separator, false},
    {"DTBB2F", "Bring To Front", Push, true},
    {"DTBS2B", "Send To Back", Push, true},
    {"DTBS4", "", Separator, false},
    {"DTBB&W", "Black and White", Check, true},
};

static constexpr DropDownRow s_dropDowns[] = {
    {"SQLTrans", "BT", "Begin Transaction", false},
    {"SQLTrans", "CT", "Commit Transaction", false},
    {"SQLTrans", "RT", "Rollback Transaction", false},
    {"SQLParser", "Bracket", "Round Brackets", false},
    {"SQLParser", "Brace", "Square Brackets", false},
    {"SQLParser", "CBracket", "Curly Brackets", false},
    {"SQLParser", "SQuote", "Single Quotes", false},
    {"SQLParser", "Quote", "Double Quotes", false},
    {"SQLVBS", "VBSW", "Window", false},
    {"SQLVBS", "VBSC", "Clipboard", false},
};

std::span<const ButtonRow> SQLToolbar()
{
    return s_sql;
}
std::span<const ButtonRow> DiagramToolbar()
{
    return s_diagram;
}
std::span<const DropDownRow> DropDowns()
{
    return s_dropDowns;
}
