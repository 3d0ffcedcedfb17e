#include "views/frmChart.h"

#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/Skin.h"
#include "controls/WholeFile.h"
#include "controls/clsCaptureWindow.h"
#include "frame/SaveDialog.h"
#include "frame/Shell.h"
#include "session/Pump.h"
#include "views/GridCells.h"
#include "views/chart/Chart.h"
#include "views/frmChartSetup.h"
#include <QApplication>
#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPointer>
#include <QPrinter>
#include <QSvgGenerator>
#include <QVBoxLayout>

namespace {

constexpr double kVectorDots = 96; // of a drawing's own unit to the inch
constexpr double kPdfDots = 1200;

// Fills values beside those that are shown, since the windows paint meanwhile and this one may go.
template <typename Load> void LoadPumped(const QPointer<Chart> &chart, const Load &load)
{
    Breather breather(QStringLiteral("Charting ... (Esc stops)"));
    ChartData values = chart->Values;
    Attempt([&] { load(values, [&] { return breather.Breathe() && chart; }); });
    if (!chart)
        return;
    chart->Values = std::move(values);
    chart->ShowAllRows();
}

} // namespace

frmChart::frmChart(QWidget *parent) : ChildWindow(parent)
{
    SetCaption(QStringLiteral("Chart"));
    chart = new Chart(this);
    chart->setObjectName(QStringLiteral("Chart"));
    chart->setAccessibleName(QStringLiteral("Chart"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(chart);
    resize(720, 480);
    setFocusProxy(chart);
    ApplySkin(this);
    connect(chart, &Chart::MouseUp, this, [this](Qt::MouseButton button, const QPoint &position) {
        if (button == Qt::RightButton)
            Shell::Current().ShowMenu(QStringLiteral("mnuChartMain"), chart->mapToGlobal(position));
    });
}

void frmChart::LoadChartData(const DataSource &Source, const QString &LabelFields, const QString &DataFields)
{
    if (const auto *grid = std::get_if<const FlexGrid *>(&Source))
        LoadChartDataMFG(*grid, LabelFields, DataFields);
    else if (const auto *rows = std::get_if<ADODB::RecordsetPtr>(&Source))
        LoadChartDataRec(*rows, LabelFields, DataFields);
}

void frmChart::LoadChartDataMFG(const FlexGrid *Grid, const QString &LabelFields, const QString &DataFields)
{
    if (!Grid)
        return;
    const QPointer<const FlexGrid> grid(Grid); // events are processed meanwhile
    const GridCells cells(Grid);
    const ChartGrid source{cells.Rows(), cells.Cols(),
                           [&](qint64 row, int column) { return grid ? cells.Text(row, column) : QString(); }};
    LoadPumped(chart, [&](ChartData &values, const ChartKeepOn &keepOn) {
        FillChart(values, source, LabelFields, DataFields, [&] { return keepOn() && grid; });
    });
}

void frmChart::LoadChartDataRec(const ADODB::RecordsetPtr &Recordset, const QString &LabelFields,
                                const QString &DataFields)
{
    if (!Recordset)
        return;
    LoadPumped(chart, [&, rows = Recordset](ChartData &values, const ChartKeepOn &keepOn) {
        FillChart(values, *rows, LabelFields, DataFields, keepOn);
    });
}

void frmChart::ChangeChartType(int Type)
{
    chart->SetChartType(Type);
}

// Both texts are asked for with the same words. That is meant.
void frmChart::Ask(const QString &present, void (Chart::*set)(const QString &))
{
    const QPointer<frmChart> self(this);
    bool accepted = false;
    const QString text = InputBox(QStringLiteral("Enter the chart title you wish to display:"), QStringLiteral("Title"),
                                  present, &accepted, this);
    if (self && accepted)
        (chart->*set)(text);
}

void frmChart::ChangeTitle()
{
    Ask(chart->Title(), &Chart::SetTitle);
}

void frmChart::ChangeFootNote()
{
    Ask(chart->FootnoteText(), &Chart::SetFootnoteText);
}

void frmChart::mnuSave()
{
    const QPointer<frmChart> self(this);
    const QString path =
        AskSavePath(this, QStringLiteral("Save"), QStringLiteral("Bitmap [*.bmp]|*.bmp"), QStringLiteral("bmp"));
    if (!self || path.isEmpty())
        return;
    chart->repaint(); // the dialog is gone from it
    QString why;
    if (!clsCaptureWindow::SaveBitmap(chart->Capture(), path, why))
        MsgBox(QStringLiteral("Error: ") + why, mbExclamation, QStringLiteral("Error"), this);
}

void frmChart::SnapShot()
{
    clsCaptureWindow::ToClipboard(chart->Capture());
}

void frmChart::mnuCopy()
{
    SnapShot();
}

void frmChart::mnuPrint()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QStringLiteral("Print"));
    const QPointer<frmChart> self(this);
    if (PrintDialog(printer, this) && self)
        PrintTo(printer);
}

// The chart as it stands in the window, as wide as the page: in the page's own dots, so that letters stay sharp.
bool frmChart::PrintTo(QPrinter &printer)
{
    QPainter page;
    if (chart->size().isEmpty() || !page.begin(&printer))
        return false;
    const QRectF paper(QPointF(), printer.pageRect(QPrinter::DevicePixel).size());
    const double scale = std::min(paper.width() / chart->width(), paper.height() / chart->height());
    page.scale(scale, scale);
    chart->PaintOn(page, QSizeF(chart->size()), chart->logicalDpiY());
    return page.end();
}

bool frmChart::SaveDrawing(const QString &path, QString &why) const
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const QSizeF size(chart->size());
    if (path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive)) {
        QPdfWriter writer(&buffer);
        writer.setTitle(chart->Title());
        writer.setResolution(int(kPdfDots));
        writer.setPageSize(QPageSize(size * 72 / kVectorDots, QPageSize::Point));
        writer.setPageMargins(QMarginsF());
        QPainter painter(&writer);
        painter.scale(kPdfDots / kVectorDots, kPdfDots / kVectorDots);
        chart->PaintOn(painter, size, kVectorDots);
    } else {
        QSvgGenerator writer;
        writer.setOutputDevice(&buffer);
        writer.setTitle(chart->Title());
        writer.setResolution(int(kVectorDots));
        writer.setSize(chart->size());
        writer.setViewBox(QRectF(QPointF(), size));
        QPainter painter(&writer);
        chart->PaintOn(painter, size, kVectorDots);
    }
    return WriteWholeFile(path, buffer.data(), why);
}

void frmChart::AskDrawing()
{
    const QPointer<frmChart> self(this);
    const QString path = AskSavePath(this, QStringLiteral("Save Drawing"),
                                     QStringLiteral("Scalable Graphics [*.svg]|*.svg|Portable Document [*.pdf]|*.pdf"),
                                     QStringLiteral("svg"));
    if (!self || path.isEmpty())
        return;
    QString why;
    if (!SaveDrawing(path, why))
        MsgBox(QStringLiteral("Error: ") + why, mbExclamation, QStringLiteral("Error"), this);
}

void frmChart::ToolBar(const QString &buttonKey)
{
    static constexpr struct
    {
        const char *Key;
        void (*Run)(frmChart &form);
    } tools[] = {
        {"CHTLog", [](frmChart &form) { form.chart->SetLogarithmic(!form.chart->Logarithmic()); }},
        {"CHTEyes",
         [](frmChart &form) {
             const bool plain = form.chart->Palette() == ChartPalette::Plain;
             form.chart->SetPalette(plain ? ChartPalette::ForAllEyes : ChartPalette::Plain);
         }},
        {"CHTWhole", [](frmChart &form) { form.chart->ShowAllRows(); }},
        {"CHTDrawing", [](frmChart &form) { form.AskDrawing(); }},
    };
    for (const auto &tool : tools)
        if (buttonKey == QLatin1String(tool.Key))
            Attempt([&] { tool.Run(*this); });
}

void OpenChart(QWidget *owner, const ChartRequest &request)
{
    const QPointer<QWidget> alive(owner);
    frmChartSetup setup(owner);
    setup.SetFields(request.Fields);
    setup.SetChartTitle(QStringLiteral("Brindlewick"));
    setup.ShowModal();
    if (setup.Cancelled || (owner && !alive))
        return;
    const QPointer<frmChart> form(new frmChart);
    form->SetCaption(QStringLiteral("Chart - ") + setup.ChartTitle);
    form->chart->SetShowLegend(setup.ShowLegend);
    form->chart->SetTitle(setup.ChartTitle);
    form->chart->SetFootnoteText(setup.ShowSQL ? request.Statement : QString());
    form->ShowChild();
    form->LoadChartData(request.Source, setup.LabelFields, setup.DataFields);
}
