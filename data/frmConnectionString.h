#pragma once
// The dialog that makes a connection string: data sources and drivers of the driver manager, the built-in SQLite with a
// file chooser, server, port, database, user, password, further attributes. The resulting string is shown and may be
// edited; Test opens it in the background and says what the driver says.

#include "ado/DriverList.h"
#include "frame/ModalForm.h"
#include <QString>
#include <vector>

class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

// What the dialog's fields hold, and the string that they make. Pure; values with ";", braces or outer blanks are
// braced.
struct ConnectionParts
{
    enum class Kind
    {
        BuiltIn, // one of the program's own drivers
        Dsn,
        Driver
    };
    Kind kind = Kind::BuiltIn;
    QString name; // of the DSN or driver
    QString server, port, database, user, password, further;

    QString ToString() const;
};

class frmConnectionString : public ModalForm
{
    Q_OBJECT
public:
    explicit frmConnectionString(QWidget *parent = nullptr);

    QString ConnectionString; // after OK

    QComboBox *cmbSource = nullptr;
    QLineEdit *txtServer = nullptr, *txtPort = nullptr, *txtDatabase = nullptr;
    QLineEdit *txtUser = nullptr, *txtPassword = nullptr, *txtFurther = nullptr;
    QPushButton *cmdFile = nullptr; // file chooser, for SQLite
    QPlainTextEdit *txtResult = nullptr;
    QLabel *lblTest = nullptr; // what Test found
    QPushButton *cmdTest = nullptr, *cmdOK = nullptr, *cmdCancel = nullptr;

    void reject() override; // during a test Escape stops the test only

private:
    QGridLayout *MakeParts();
    QHBoxLayout *MakeButtons();
    void FillSources();
    void Compose();
    void ChooseFile();
    void Test();
    ConnectionParts Parts() const;
    QString Written() const; // the string as it stands in the box
    const ADODB::ConnectionChoice &Choice() const;
    std::vector<ADODB::ConnectionChoice> m_choices; // one a line of cmbSource
    bool m_testing = false;
};
