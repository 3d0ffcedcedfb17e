// Saving and printing a result.

#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/StatusBar.h"
#include "controls/WholeFile.h"
#include "data/modMain.h"
#include "frame/SaveDialog.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include "views/GridCells.h"
#include "views/drReport.h"
#include "views/frmHirarchy.h"
#include <QSaveFile>

namespace {

// Writes line by line, so that a million rows need no second copy, and lets the windows paint meanwhile. What fails or
// is stopped leaves the former file whole.
bool WriteLines(QWidget *window, const QString &fileName, const std::function<void(const grid::LineSink &)> &write)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        MsgBox(fileName + QStringLiteral("\n\n") + file.errorString(), mbExclamation, QStringLiteral("Save"), window);
        return false;
    }
    Breather breather(QObject::tr("Saving ... (Esc stops)"));
    bool whole = true;
    QByteArray block;
    write([&](const QString &line) {
        block += line.toUtf8();
        block += "\r\n";
        if (block.size() > (1 << 20)) {
            whole = file.write(block) == block.size();
            block.clear();
        }
        return whole && breather.Breathe();
    });
    if (breather.Cancelled()) {
        file.cancelWriting();
        return false;
    }
    whole = whole && file.write(block) == block.size() && file.flush();
    const QString why = whole ? QString() : WriteFailure(file);
    whole = whole && file.commit();
    if (!whole)
        MsgBox(fileName + QStringLiteral("\n\n") + (why.isEmpty() ? file.errorString() : why), mbExclamation,
               QStringLiteral("Save"), window);
    return whole;
}

} // namespace

bool frmHirarchy::SaveFile(const QString &FileName)
{
    return WriteLines(this, FileName, [this](const grid::LineSink &line) { grid::WriteCsv(GridCells(mfg), line); });
}

bool frmHirarchy::SaveHTMLFile(const QString &FileName)
{
    return WriteLines(this, FileName, [this](const grid::LineSink &line) {
        grid::WriteHtml(GridCells(mfg), Caption(), Statement(), line);
    });
}

void frmHirarchy::mnuSave()
{
    const QString path = AskSavePath(this, QStringLiteral("Save CSV File"),
                                     QStringLiteral("Comma Seperated File [*.csv]|*.csv|HTML File [*.htm]|*.htm|"
                                                    "Text File [*.txt]|*.txt"),
                                     QStringLiteral("CSV"), mbExclamation);
    if (path.isEmpty())
        return;
    if (grid::WantsHtml(path))
        SaveHTMLFile(path);
    else
        SaveFile(path);
}

void frmHirarchy::mnuPrint()
{
    if (!IsConnected(true))
        return;
    QString trouble;
    ADODB::RecordsetPtr rows;
    const QPointer<frmHirarchy> alive(this);
    const bool ran = Attempt([&] { rows = ExecutePumped(gConn, Statement()); }, &trouble);
    if (!alive)
        return;
    if (!ran || !rows || rows->State() == ADODB::adStateClosed) {
        MsgBox(QStringLiteral("Error: ") + (ran ? tr("The statement gives no rows to print.") : trouble), mbExclamation,
               QStringLiteral("Error"), this);
        return;
    }
    QList<ReportColumn> columns;
    int left = 0;
    for (int column = 1; column < mfg->Cols() && column <= drReport::MaxColumns; ++column) {
        const int width = mfg->ColWidth(column);
        columns.append({left, width < 1 ? 2 : width, mfg->TextMatrix(0, column)});
        left += width;
    }
    drReport report(rows, columns, QStringLiteral("SQL: ") + Statement(), this);
    report.ShowModal();
}
