#include "data/frmConnectionString.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "data/modMain.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

using Kind = ConnectionParts::Kind;

Kind KindOf(ADODB::ConnectionChoice::Way way)
{
    switch (way) {
    case ADODB::ConnectionChoice::BuiltIn:
        return Kind::BuiltIn;
    case ADODB::ConnectionChoice::DataSource:
        return Kind::Dsn;
    case ADODB::ConnectionChoice::Installed:
        break;
    }
    return Kind::Driver;
}

} // namespace

frmConnectionString::frmConnectionString(QWidget *parent) : ModalForm(QStringLiteral("Connection String"), parent)
{
    QGridLayout *grid = MakeParts();
    QHBoxLayout *buttons = MakeButtons();
    auto *column = new QVBoxLayout(this);
    column->addLayout(grid, 1);
    column->addWidget(lblTest);
    column->addLayout(buttons);
    resize(560, 500);

    FillSources();
    Compose();
    connect(cmbSource, &QComboBox::currentIndexChanged, this, &frmConnectionString::Compose);
    for (QLineEdit *line : {txtServer, txtPort, txtDatabase, txtUser, txtPassword, txtFurther})
        connect(line, &QLineEdit::textChanged, this, &frmConnectionString::Compose);
    connect(cmdFile, &QPushButton::clicked, this, &frmConnectionString::ChooseFile);
    connect(cmdTest, &QPushButton::clicked, this, &frmConnectionString::Test);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        ConnectionString = Written();
        Finish();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

// What the string is made of, and the string, a row each.
QGridLayout *frmConnectionString::MakeParts()
{
    auto *grid = new QGridLayout;
    int row = 0;
    const auto addLabel = [&](const QString &caption, QWidget *control, const char *name) {
        auto *label = new QLabel(caption, this);
        label->setBuddy(control);
        control->setObjectName(QLatin1String(name));
        control->setAccessibleName(QString(caption).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        grid->addWidget(label, row, 0);
    };
    const auto addLine = [&](const QString &caption, QLineEdit *&line, const char *name) {
        line = new QLineEdit(this);
        addLabel(caption, line, name);
        grid->addWidget(line, row++, 1, 1, 2);
    };
    cmbSource = new QComboBox(this);
    cmbSource->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbSource->setMinimumContentsLength(36);
    addLabel(QStringLiteral("Data &Source:"), cmbSource, "cmbSource");
    grid->addWidget(cmbSource, row++, 1, 1, 2);
    addLine(QStringLiteral("Ser&ver:"), txtServer, "txtServer");
    addLine(QStringLiteral("P&ort:"), txtPort, "txtPort");
    txtDatabase = new QLineEdit(this);
    cmdFile = new QPushButton(QStringLiteral("&File..."), this);
    cmdFile->setObjectName(QStringLiteral("cmdFile"));
    addLabel(QStringLiteral("&Database:"), txtDatabase, "txtDatabase");
    grid->addWidget(txtDatabase, row, 1);
    grid->addWidget(cmdFile, row++, 2);
    addLine(QStringLiteral("&User:"), txtUser, "txtUser");
    addLine(QStringLiteral("&Password:"), txtPassword, "txtPassword");
    txtPassword->setEchoMode(QLineEdit::Password);
    addLine(QStringLiteral("Further &Attributes:"), txtFurther, "txtFurther");
    txtFurther->setToolTip(QStringLiteral("Key=value;Key=value"));
    txtResult = new QPlainTextEdit(this);
    txtResult->setTabChangesFocus(true);
    txtResult->setMinimumHeight(64);
    addLabel(QStringLiteral("&Resulting String:"), txtResult, "txtResult");
    grid->addWidget(txtResult, row++, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(row - 1, 1);
    return grid;
}

// The row of buttons; and lblTest, the line above it that says how the test went.
QHBoxLayout *frmConnectionString::MakeButtons()
{
    lblTest = new QLabel(this);
    lblTest->setObjectName(QStringLiteral("lblTest"));
    lblTest->setAccessibleName(QStringLiteral("Test Result"));
    lblTest->setWordWrap(true);
    lblTest->setTextFormat(Qt::PlainText);
    lblTest->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblTest->setMinimumHeight(lblTest->fontMetrics().lineSpacing() * 3);
    lblTest->setAlignment(Qt::AlignTop | Qt::AlignLeft);

    cmdTest = new QPushButton(QStringLiteral("&Test"), this);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdTest->setObjectName(QStringLiteral("cmdTest"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    for (QPushButton *button : {cmdFile, cmdTest, cmdCancel})
        button->setAutoDefault(false);
    cmdOK->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdTest);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    return buttons;
}

void frmConnectionString::FillSources()
{
    for (const ADODB::DriverEntry &entry : ADODB::DriverEntries())
        for (const ADODB::ConnectionChoice &choice : entry.Choices()) {
            m_choices.push_back(choice);
            cmbSource->addItem(choice.Label);
        }
}

const ADODB::ConnectionChoice &frmConnectionString::Choice() const
{
    static const ADODB::ConnectionChoice none;
    const int index = cmbSource->currentIndex();
    return index < 0 ? none : m_choices[size_t(index)];
}

ConnectionParts frmConnectionString::Parts() const
{
    const ADODB::ConnectionChoice &choice = Choice();
    ConnectionParts parts;
    parts.kind = KindOf(choice.How);
    parts.name = choice.Name;
    parts.database = txtDatabase->text();
    parts.further = lang::Trim(txtFurther->text());
    if (choice.HasServer) {
        parts.server = lang::Trim(txtServer->text());
        parts.port = lang::Trim(txtPort->text());
    }
    if (choice.HasUser) {
        parts.user = txtUser->text();
        parts.password = txtPassword->text();
    }
    return parts;
}

void frmConnectionString::Compose()
{
    const ADODB::ConnectionChoice &choice = Choice();
    txtServer->setEnabled(choice.HasServer);
    txtPort->setEnabled(choice.HasServer);
    cmdFile->setEnabled(!choice.Files.isEmpty());
    txtUser->setEnabled(choice.HasUser);
    txtPassword->setEnabled(choice.HasUser);
    txtResult->setPlainText(Parts().ToString());
    lblTest->clear();
}

QString frmConnectionString::Written() const
{
    // A connection string is one line; a pasted one may be wrapped.
    return lang::Trim(txtResult->toPlainText().remove(QLatin1Char('\r')).remove(QLatin1Char('\n')));
}

void frmConnectionString::ChooseFile()
{
    const QString path = OpenFileDialog(QStringLiteral("Database File"), Choice().Files, {}, txtDatabase->text(), this);
    if (!path.isEmpty())
        txtDatabase->setText(path);
}

// Opens in the background. The connection of a test that went on, null when it was given up; raises what opening
// raises.
static ADODB::ConnectionPtr Opened(const QString &text)
{
    const auto connection = ADODB::Connection::Create();
    return RunAbandonable({}, [connection, text] { connection->Open(text); }) ? connection : nullptr;
}

void frmConnectionString::Test()
{
    if (m_testing)
        return;
    m_testing = true;
    cmdTest->setEnabled(false);
    const QString text = Written();
    lblTest->setText(QStringLiteral("Testing... (Esc cancels)"));
    QString why;
    ADODB::ConnectionPtr connection;
    const bool ended = Attempt(
        [&] {
            try {
                connection = Opened(text);
            } catch (const ADODB::Error &error) {
                const QString making =
                    error.Number == ADODB::adErrFileNotFound ? AskToCreate(text, error.Description, this) : QString();
                if (making.isEmpty())
                    throw;
                connection = Opened(making);
            }
        },
        &why);
    m_testing = false;
    cmdTest->setEnabled(true);
    cmdTest->setFocus();
    if (!ended) {
        lblTest->setText(why.isEmpty() ? QStringLiteral("The test failed.") : why);
        return;
    }
    if (!connection) {
        lblTest->setText(QStringLiteral("The test was given up."));
        return;
    }
    QString product;
    Attempt([&] {
        product = connection->Property(QStringLiteral("DBMS Name")).toString() + QLatin1Char(' ') +
                  connection->Property(QStringLiteral("DBMS Version")).toString();
    });
    lblTest->setText(QStringLiteral("The connection works. ") + product);
    Attempt([&] { connection->Close(); });
}

void frmConnectionString::reject()
{
    if (!m_testing)
        ModalForm::reject();
}
