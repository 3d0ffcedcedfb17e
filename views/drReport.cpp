#include "views/drReport.h"

#include "controls/Dialogs.h"
#include "frame/SaveDialog.h"
#include "session/Pump.h"
#include <QBoxLayout>
#include <QFile>
#include <QFileInfo>
#include <QGraphicsView>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>

drReport::drReport(ADODB::RecordsetPtr rows, QList<ReportColumn> columns, QString title, QWidget *parent)
    : ModalForm(tr("Report"), parent), m_rows(std::move(rows)), m_columns(std::move(columns)),
      m_title(std::move(title)), m_printer(std::make_unique<QPrinter>())
{
    Build();
}

drReport::~drReport() = default;

void drReport::Build()
{
    preview = new QPrintPreviewWidget(m_printer.get(), this);
    preview->setObjectName(QStringLiteral("preview"));
    preview->setAccessibleName(tr("Preview of the report"));
    for (auto *pages : preview->findChildren<QGraphicsView *>()) // which takes the keyboard
        pages->setAccessibleName(preview->accessibleName());
    connect(preview, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter *printer) { Paint(*printer, PreviewPages); });
    lblPages = new QLabel(this);
    lblPages->setObjectName(QStringLiteral("lblPages"));

    const auto button = [this](const char *name, const QString &text) {
        auto *made = new QPushButton(text, this);
        made->setObjectName(QLatin1String(name));
        return made;
    };
    cmdPrint = button("cmdPrint", tr("&Print..."));
    cmdPdf = button("cmdPdf", tr("&Save as PDF..."));
    auto *wider = button("cmdZoomIn", tr("Zoom &in"));
    auto *narrower = button("cmdZoomOut", tr("Zoom &out"));
    auto *turned = button("cmdTurn", tr("&Landscape"));
    turned->setCheckable(true);
    cmdCancel = button("cmdCancel", tr("&Close"));
    connect(wider, &QPushButton::clicked, this, [this] { preview->zoomIn(); });
    connect(narrower, &QPushButton::clicked, this, [this] { preview->zoomOut(); });
    connect(turned, &QPushButton::toggled, this, [this](bool on) {
        m_printer->setPageOrientation(on ? QPageLayout::Landscape : QPageLayout::Portrait);
        preview->updatePreview();
        ShowPages();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdPrint, &QPushButton::clicked, this, [this] {
        if (PrintDialog(*m_printer, this) && PrintTo(*m_printer))
            Finish();
    });
    connect(cmdPdf, &QPushButton::clicked, this, [this] {
        const QString path =
            AskSavePath(this, tr("Save Report"), QStringLiteral("PDF File [*.pdf]|*.pdf"), QStringLiteral("pdf"));
        if (!path.isEmpty())
            SavePdf(path);
    });

    auto *buttons = new QHBoxLayout;
    for (QPushButton *each : {cmdPrint, cmdPdf, wider, narrower, turned})
        buttons->addWidget(each);
    buttons->addStretch(1);
    buttons->addWidget(lblPages);
    buttons->addWidget(cmdCancel);
    auto *all = new QVBoxLayout(this);
    all->addLayout(buttons);
    all->addWidget(preview, 1);
    resize(820, 640);
    ShowPages();
}

void drReport::ShowPages()
{
    const qint64 pages = Pages();
    lblPages->setText(
        pages > PreviewPages
            ? tr("The first %1 of %2 pages; printing gives all.").arg(PreviewPages).arg(QLocale::c().toString(pages))
        : pages == 1 ? tr("1 page")
                     : tr("%1 pages").arg(pages));
}

ReportLayout drReport::Layout(const QPrinter &printer) const
{
    return ReportLayout(m_rows, m_columns, m_title, printer.pageRect(QPrinter::Point).size());
}

qint64 drReport::Pages() const
{
    return Layout(*m_printer).Pages();
}

bool drReport::Paint(QPrinter &printer, qint64 mostPages)
{
    const ReportLayout layout = Layout(printer);
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    painter.scale(printer.resolution() / 72.0, printer.resolution() / 72.0);
    const qint64 pages = qMin(layout.Pages(), mostPages);
    Breather breather(tr("Printing ... (Esc stops)"));
    for (qint64 page = 0; page < pages; ++page) {
        if (page > 0 && !printer.newPage())
            return false;
        layout.Paint(painter, page);
        if (!breather.Breathe()) {
            printer.abort();
            return false;
        }
    }
    return painter.end();
}

bool drReport::PrintTo(QPrinter &printer)
{
    if (Paint(printer, Pages()))
        return true;
    if (printer.printerState() != QPrinter::Aborted)
        MsgBox(tr("The report could not be printed."), mbExclamation, QStringLiteral("Print"), this);
    return false;
}

bool drReport::SavePdf(const QString &path)
{
    // Written beside the goal first: a report that fails or is stopped leaves the former file whole.
    const QString fresh = path + QStringLiteral(".part");
    QPrinter pdf;
    pdf.setOutputFormat(QPrinter::PdfFormat);
    pdf.setPageLayout(m_printer->pageLayout());
    pdf.setOutputFileName(fresh);
    pdf.setDocName(m_title.left(80));
    const bool painted = Paint(pdf, Layout(pdf).Pages());
    if (painted && QFileInfo(fresh).size() > 0) {
        QFile::remove(path);
        if (QFile::rename(fresh, path))
            return true;
    }
    QFile::remove(fresh);
    if (pdf.printerState() != QPrinter::Aborted)
        MsgBox(path + QStringLiteral("\n\n") + tr("The file cannot be written."), mbExclamation, QStringLiteral("Save"),
               this);
    return false;
}
