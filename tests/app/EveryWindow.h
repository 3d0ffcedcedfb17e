#pragma once
// One of each window class of the program, for the tests that walk them all. A window that is missing here fails
// EveryWindow.IsKnown.

#include "analyzer/frmCode.h"
#include "analyzer/frmGetSQLStructure.h"
#include "analyzer/frmSQL.h"
#include "analyzer/frmScriptMask.h"
#include "analyzer/frmTextManipulation.h"
#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "app/frmRookie.h"
#include "data/frmAni.h"
#include "data/frmConnectionString.h"
#include "data/frmFind.h"
#include "data/frmGetSelection.h"
#include "data/frmGrid.h"
#include "data/frmLogin.h"
#include "data/frmNewConnection.h"
#include "data/frmTextOutput.h"
#include "data/frmTree.h"
#include "tests/controls/MakeRecordset.h"
#include "views/drReport.h"
#include "views/frmHirarchy.h"
#include <memory>
#include <vector>

struct WindowRow
{
    const char *Name;
    QWidget *(*Make)();
};

template <typename Form> QWidget *MakeWindow()
{
    auto *form = new Form;
    form->setAttribute(Qt::WA_DeleteOnClose, false);
    return form;
}

inline const std::vector<WindowRow> &EveryWindow()
{
    static const std::vector<WindowRow> rows = {
        {"drReport", []() -> QWidget * { return new drReport(MakeRows(3), {}, QStringLiteral("SQL: select 1")); }},
        {"frmAbout", MakeWindow<frmAbout>},
        {"frmAni", MakeWindow<frmAni>},
        {"frmCode", MakeWindow<frmCode>},
        {"frmConnectionString", MakeWindow<frmConnectionString>},
        {"frmFind", MakeWindow<frmFind>},
        {"frmGetSQLStructure", MakeWindow<frmGetSQLStructure>},
        {"frmGetSelection", MakeWindow<frmGetSelection>},
        {"frmGrid", MakeWindow<frmGrid>},
        {"frmHelp", MakeWindow<frmHelp>},
        {"frmHirarchy", MakeWindow<frmHirarchy>},
        {"frmLogin", MakeWindow<frmLogin>},
        {"frmNewConnection", MakeWindow<frmNewConnection>},
        {"frmRookie", MakeWindow<frmRookie>},
        {"frmSQL", MakeWindow<frmSQL>},
        {"frmScriptMask", MakeWindow<frmScriptMask>},
        {"frmTextManipulation", MakeWindow<frmTextManipulation>},
        {"frmTextOutput", MakeWindow<frmTextOutput>},
        {"frmTree", MakeWindow<frmTree>},
    };
    return rows;
}
