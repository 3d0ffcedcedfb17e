#pragma once
// The report of a result: preview, printer, PDF. A modal window made for one use. Interface thread; nothing raises.
//
// The preview shows the first pages only (PreviewPages); printing and saving give all of them, with progress, and can
// be stopped.

#include "frame/ModalForm.h"
#include "views/ReportLayout.h"
#include <memory>

class QLabel;
class QPrintPreviewWidget;
class QPrinter;
class QPushButton;

class drReport : public ModalForm
{
    Q_OBJECT
public:
    static constexpr int MaxColumns = 30;
    static constexpr int PreviewPages = 200;

    drReport(ADODB::RecordsetPtr rows, QList<ReportColumn> columns, QString title, QWidget *parent = nullptr);
    ~drReport() override;

    bool PrintTo(QPrinter &printer); // all pages; false when it failed or was stopped, the user has been told
    bool SavePdf(const QString &path);
    qint64 Pages() const;

    QPrintPreviewWidget *preview = nullptr;
    QLabel *lblPages = nullptr;
    QPushButton *cmdPrint = nullptr, *cmdPdf = nullptr, *cmdCancel = nullptr;

private:
    void Build();
    void ShowPages(); // how many there are, beside the buttons
    bool Paint(QPrinter &printer, qint64 mostPages);
    ReportLayout Layout(const QPrinter &printer) const;

    ADODB::RecordsetPtr m_rows;
    QList<ReportColumn> m_columns;
    QString m_title;
    std::unique_ptr<QPrinter> m_printer;
};
