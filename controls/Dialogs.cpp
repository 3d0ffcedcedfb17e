#include "controls/Dialogs.h"
#include "lang/Text.h"
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <array>

namespace {

struct ButtonRow
{
    int flag;
    std::array<int, 3> answers; // 0: no button
    int escape;                 // what the closed box counts as
};
constexpr ButtonRow kButtonRows[] = {
    {mbOKOnly, {mbOK, 0, 0}, mbOK},
    {mbOKCancel, {mbOK, mbCancel, 0}, mbCancel},
    {mbAbortRetryIgnore, {mbAbort, mbRetry, mbIgnore}, mbAbort},
    {mbYesNoCancel, {mbYes, mbNo, mbCancel}, mbCancel},
    {mbYesNo, {mbYes, mbNo, 0}, mbNo},
    {mbRetryCancel, {mbRetry, mbCancel, 0}, mbCancel},
};

struct AnswerRow
{
    int answer;
    QMessageBox::StandardButton button;
};
constexpr AnswerRow kAnswerRows[] = {
    {mbOK, QMessageBox::Ok},       {mbCancel, QMessageBox::Cancel}, {mbAbort, QMessageBox::Abort},
    {mbRetry, QMessageBox::Retry}, {mbIgnore, QMessageBox::Ignore}, {mbYes, QMessageBox::Yes},
    {mbNo, QMessageBox::No},
};

QMessageBox::Icon IconOf(int icon)
{
    switch (icon) {
    case mbCritical:
        return QMessageBox::Critical;
    case mbQuestion:
        return QMessageBox::Question;
    case mbExclamation:
        return QMessageBox::Warning;
    case mbInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

const QString kProgramName = QStringLiteral("Brindlewick");

QWidget *ParentOr(QWidget *parent)
{
    return parent ? parent->window() : QApplication::activeWindow();
}

DialogService *installedService = nullptr;

} // namespace

DialogService::~DialogService()
{
    if (installedService == this)
        installedService = nullptr;
}

DialogService &DialogService::Current()
{
    static DialogService real;
    return installedService ? *installedService : real;
}

DialogService *DialogService::Install(DialogService *service)
{
    DialogService *const former = installedService;
    installedService = service;
    return former;
}

int DialogService::MsgBox(const MsgBoxRequest &request, QWidget *parent)
{
    QMessageBox box(IconOf(request.Icon), request.Title, request.Text, QMessageBox::NoButton, ParentOr(parent));
    box.setTextFormat(Qt::PlainText); // names and servers' words may look like markup
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    const ButtonRow *row = kButtonRows;
    for (const ButtonRow &candidate : kButtonRows)
        if (candidate.flag == request.Buttons)
            row = &candidate;
    bool first = true;
    for (const AnswerRow &answer : kAnswerRows) {
        if (std::find(row->answers.begin(), row->answers.end(), answer.answer) == row->answers.end())
            continue;
        QPushButton *const button = box.addButton(answer.button);
        if (answer.answer == row->answers.front())
            box.setDefaultButton(button);
        if (answer.answer == row->escape)
            box.setEscapeButton(button);
        first = false;
    }
    if (first)
        box.addButton(QMessageBox::Ok);
    box.exec();
    const QMessageBox::StandardButton clicked = box.standardButton(box.clickedButton());
    for (const AnswerRow &answer : kAnswerRows)
        if (answer.button == clicked)
            return answer.answer;
    return row->escape;
}

bool DialogService::InputBox(const InputBoxRequest &request, QString &text, QWidget *parent)
{
    bool accepted = false;
    text = QInputDialog::getText(ParentOr(parent), request.Title, request.Prompt, QLineEdit::Normal, request.Default,
                                 &accepted);
    if (!accepted)
        text.clear();
    return accepted;
}

QString DialogService::FileDialog(const FileDialogRequest &request, QWidget *parent)
{
    QFileDialog dialog(ParentOr(parent), request.Title);
    dialog.setAcceptMode(request.Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile); // of a file that is not there the callers speak, in their own words
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QString filter = ToolkitFilter(request.Filter);
    if (!filter.isEmpty())
        dialog.setNameFilters(filter.split(QStringLiteral(";;")));
    const QFileInfo proposed(request.FileName);
    if (!request.FileName.isEmpty()) {
        if (proposed.isDir()) {
            dialog.setDirectory(request.FileName);
        } else {
            dialog.setDirectory(proposed.absolutePath());
            dialog.selectFile(proposed.fileName());
        }
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString chosen = dialog.selectedFiles().constFirst();
    return request.Save || !QFileInfo::exists(chosen) ? WithDefaultExtension(chosen, request.DefaultExt) : chosen;
}

bool DialogService::PrintDialog(QPrinter &printer, QWidget *parent)
{
    QPrintDialog dialog(&printer, ParentOr(parent));
    return dialog.exec() == QDialog::Accepted;
}

int MsgBox(const QString &text, int flags, const QString &title, QWidget *parent)
{
    return DialogService::Current().MsgBox(
        {text, flags & mbButtonMask, flags & mbIconMask, title.isEmpty() ? kProgramName : title}, parent);
}

QString InputBox(const QString &prompt, const QString &title, const QString &preset, bool *accepted, QWidget *parent)
{
    QString text;
    const bool ok =
        DialogService::Current().InputBox({prompt, title.isEmpty() ? kProgramName : title, preset}, text, parent);
    if (accepted)
        *accepted = ok;
    return ok ? text : QString();
}

QString OpenFileDialog(const QString &title, const QString &filter, const QString &defaultExt, const QString &fileName,
                       QWidget *parent)
{
    return DialogService::Current().FileDialog({title, filter, defaultExt, fileName, false}, parent);
}

QString SaveFileDialog(const QString &title, const QString &filter, const QString &defaultExt, const QString &fileName,
                       QWidget *parent)
{
    return DialogService::Current().FileDialog({title, filter, defaultExt, fileName, true}, parent);
}

bool PrintDialog(QPrinter &printer, QWidget *parent)
{
    return DialogService::Current().PrintDialog(printer, parent);
}

QString ToolkitFilter(const QString &filter)
{
    const QStringList parts = lang::Split(filter, QStringLiteral("|"));
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = lang::Replace(lang::Trim(parts[i + 1]), QStringLiteral(";"), QStringLiteral(" "));
        out << lang::Trim(parts[i]) + QStringLiteral(" (") + patterns + QLatin1Char(')');
    }
    return out.join(QStringLiteral(";;"));
}

QString WithDefaultExtension(const QString &fileName, const QString &defaultExt)
{
    if (fileName.isEmpty() || defaultExt.isEmpty() || !QFileInfo(fileName).suffix().isEmpty())
        return fileName;
    return fileName + QLatin1Char('.') + defaultExt;
}
