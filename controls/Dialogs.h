#pragma once
// The one door to message boxes, input boxes, file dialogs and the print dialog. They keep the desktop's own look.
//
// A test installs its own DialogService and reads what would have been asked. Interface thread only; nothing raises.
// Without a parent a dialog belongs to the active window. The free functions below are what the windows call.

#include <QString>

class QPrinter;
class QWidget;

// Buttons and icon of a message box, added together. The default button is the first.
enum MsgBoxFlag : int
{
    mbOKOnly = 0,
    mbOKCancel = 1,
    mbAbortRetryIgnore = 2,
    mbYesNoCancel = 3,
    mbYesNo = 4,
    mbRetryCancel = 5,
    mbButtonMask = 7,
    mbCritical = 16,
    mbQuestion = 32,
    mbExclamation = 48,
    mbInformation = 64,
    mbIconMask = 112,
};
enum MsgBoxAnswer : int
{
    mbOK = 1,
    mbCancel = 2,
    mbAbort = 3,
    mbRetry = 4,
    mbIgnore = 5,
    mbYes = 6,
    mbNo = 7,
};

struct MsgBoxRequest
{
    QString Text;
    int Buttons = mbOKOnly; // the button part of the flags
    int Icon = 0;           // mbCritical ... mbInformation, 0 for none
    QString Title;
};
struct InputBoxRequest
{
    QString Prompt, Title, Default;
};
struct FileDialogRequest
{
    QString Title;
    QString Filter;     // "Comma Seperated File [*.csv]|*.csv|Text File [*.txt]|*.txt"; pairs of text and patterns
    QString DefaultExt; // without a dot, appended to a name that has no extension; may be empty
    QString FileName;   // proposed name or folder; may be empty
    bool Save = false;
};

class DialogService
{
public:
    virtual ~DialogService();
    // The closed box counts as Cancel, as No where there is no Cancel, as OK where there is only OK.
    virtual int MsgBox(const MsgBoxRequest &request, QWidget *parent);
    // False when the user cancelled; `text` is then "".
    virtual bool InputBox(const InputBoxRequest &request, QString &text, QWidget *parent);
    // "" when the user cancelled. Never asks whether to overwrite, nor whether the file to open is there: the callers
    // ask in their own words.
    virtual QString FileDialog(const FileDialogRequest &request, QWidget *parent);
    virtual bool PrintDialog(QPrinter &printer, QWidget *parent);

    static DialogService &Current();
    static DialogService *Install(DialogService *service); // null brings the real one back; gives the former one
};

int MsgBox(const QString &text, int flags = mbOKOnly, const QString &title = {}, QWidget *parent = nullptr);
QString InputBox(const QString &prompt, const QString &title = {}, const QString &preset = {}, bool *accepted = nullptr,
                 QWidget *parent = nullptr);
QString OpenFileDialog(const QString &title, const QString &filter, const QString &defaultExt = {},
                       const QString &fileName = {}, QWidget *parent = nullptr);
QString SaveFileDialog(const QString &title, const QString &filter, const QString &defaultExt = {},
                       const QString &fileName = {}, QWidget *parent = nullptr);
bool PrintDialog(QPrinter &printer, QWidget *parent = nullptr);

// The filter in Qt's form: "Comma Seperated File [*.csv] (*.csv);;Text File [*.txt] (*.txt)".
QString ToolkitFilter(const QString &filter);
// The name with the extension appended where it has none.
QString WithDefaultExtension(const QString &fileName, const QString &defaultExt);
