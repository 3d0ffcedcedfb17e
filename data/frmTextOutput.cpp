#include "data/frmTextOutput.h"
#include "controls/RichTextBox.h"
#include "controls/Skin.h"
#include "frame/SaveDialog.h"
#include "frame/Shell.h"
#include "sqltext/clsColorTable.h"
#include <QDialog>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextDocument>
#include <QVBoxLayout>

namespace {

const auto kStart = QStringLiteral(" \\viewkind4\\uc1\\pard\\f0\\fs17 ");

} // namespace

frmTextOutput::frmTextOutput(QWidget *parent) : ChildWindow(parent)
{
    SetCaption(QStringLiteral("Text Output"));
    txtResult = new RichTextBox(this);
    txtResult->setObjectName(QStringLiteral("txtResult"));
    txtResult->setAccessibleName(QStringLiteral("Text"));
    txtResult->setReadOnly(true);
    txtResult->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtResult->installEventFilter(this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(txtResult);
    resize(560, 360);
    setFocusProxy(txtResult);
    ApplySkin(this);
}

QString frmTextOutput::GetHeader()
{
    return QStringLiteral("{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 MS Sans "
                          "Serif;}}");
}

QString frmTextOutput::Document(const QString &Text)
{
    QString body = Text;
    body.replace(QLatin1String("\r\n"), QLatin1String("\\par "));
    body.replace(QLatin1Char('\r'), QLatin1String("\\par "));
    body.replace(QLatin1Char('\n'), QLatin1String("\\par "));
    body.replace(QLatin1Char('\t'), QLatin1String("\\tab "));
    const auto plain = gColorTable.Item(QStringLiteral("D"));
    return GetHeader() + gColorTableString + kStart + (plain ? plain->Code : QString()) + body + QLatin1Char('}');
}

void frmTextOutput::SetText(const QString &Text)
{
    // The blank ahead of the start belongs to the head; the text shown, copied and saved does not begin with it.
    QString document = Document(Text);
    const qsizetype start = document.indexOf(kStart);
    if (start >= 0)
        document.remove(start, 1);
    txtResult->SetTextRTF(document);
}

QString frmTextOutput::PlainText() const
{
    return txtResult->Text();
}

void frmTextOutput::ShowModal(QWidget *parent)
{
    QDialog frame(parent ? parent : Shell::Current().MainWindow());
    frame.setWindowTitle(Caption());
    auto *column = new QVBoxLayout(&frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(this);
    frame.resize(size());
    ApplySkin(&frame);
    txtResult->setFocus();
    frame.exec(); // and takes this window with it
}

void frmTextOutput::mnuSave()
{
    const QString path = AskSavePath(this, QStringLiteral("Save File"), QStringLiteral("Text File [*.txt] |*.txt"),
                                     QStringLiteral("txt"));
    if (!path.isEmpty())
        WriteTextFile(this, path, PlainText());
}

void frmTextOutput::PrintTo(QPrinter *printer) const
{
    // On paper the text is black.
    QTextDocument paper;
    paper.setDefaultFont(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
    paper.setPlainText(PlainText());
    paper.print(printer);
}

void frmTextOutput::mnuPrint()
{
    QPrintPreviewDialog preview(this);
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, &frmTextOutput::PrintTo);
    preview.resize(720, 560);
    preview.exec();
}

bool frmTextOutput::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != txtResult || event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape)
        return ChildWindow::eventFilter(watched, event);
    if (auto *frame = qobject_cast<QDialog *>(parentWidget()))
        frame->reject();
    else
        CloseChild();
    return true;
}
