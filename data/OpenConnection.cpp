#include "ado/ConnectionString.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "data/frmLogin.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "session/Pump.h"

namespace {

ADODB::Error g_lastError;

// Opens in the background. Whoever gives up leaves the object to its thread and goes on with a new closed one.
void Open(ADODB::ConnectionPtr &connection, const QString &status, const QString &text, const QString &user,
          const QString &password)
{
    const ADODB::ConnectionPtr target = connection;
    if (RunAbandonable(status, [=] { target->Open(text, user, password, -1); }))
        return;
    connection = ADODB::Connection::Create();
    connection->SetConnectionString(text);
    throw ADODB::Error(ADODB::Fault::Cancelled);
}

// Opens, and asks for user and password as long as the server refuses them.
bool OpenWithLogin(ADODB::ConnectionPtr &connection, const QString &status, const QString &text, ADODB::Error &failure)
{
    QString user, password;
    for (;;) {
        bool refused = false;
        connection->SetCursorLocation(ADODB::adUseClient);
        try {
            Open(connection, status, text, user, password);
            connection->SetCursorLocation(ADODB::adUseClient); // some providers reset it
            failure = {};
            return true;
        } catch (const ADODB::Error &error) {
            failure = error;
            refused = error.Number == ADODB::adErrLoginFailed ||
                      error.Description.contains(QLatin1String("password"), Qt::CaseInsensitive);
        } catch (...) {
            failure = ADODB::Error(ADODB::adErrProviderFailed, DescribeCurrentException());
        }
        if (!refused)
            return false;
        frmLogin login;
        if (!user.isEmpty() || !password.isEmpty())
            login.SetReason(failure.Description);
        login.ShowModal();
        if (login.Cancelled)
            return false;
        user = login.UserName;
        password = login.Password;
    }
}

} // namespace

bool OpenConnection(const QString &ConnectionString)
{
    SetStatus(QStringLiteral("Opening Connection ..."));
    Shell::Current().SetHourglass(true);
    ADODB::ConnectionPtr connection = ADODB::Connection::Create();
    gConn = connection;
    const bool opened = OpenWithLogin(connection, QStringLiteral("Opening Connection ... (Esc cancels)"),
                                      ConnectionString, g_lastError);
    gConn = connection;
    Shell::Current().SetSchemaMenuEnabled(opened);
    if (!opened) {
        SetStatus(QStringLiteral("Cannot open connection!"));
        return false;
    }
    SetStatus(QStringLiteral("Connection Opened."));
    Shell::Current().SetHourglass(false);
    return true;
}

QString LastOpenError()
{
    return g_lastError.Description;
}

int LastOpenErrorNumber()
{
    return g_lastError.Number;
}

QString AskToCreate(const QString &ConnectionString, const QString &Why, QWidget *Parent)
{
    if (MsgBox(Why + QStringLiteral("\r\nDo you want to create it?"), mbYesNo | mbQuestion,
               QStringLiteral("Connection"), Parent) != mbYes)
        return {};
    return ADODB::WithAttribute(ConnectionString, QStringLiteral("Create"), QStringLiteral("Yes"));
}

ADODB::ConnectionPtr OpenExtraConnection(const QString &ConnectionString)
{
    ADODB::ConnectionPtr connection = ADODB::Connection::Create();
    ADODB::Error failure;
    return OpenWithLogin(connection, QString(), ConnectionString, failure) ? connection : nullptr;
}
