#pragma once
// "New Connection": asks for a name and a connection string. See ModalForm for how it is used.

#include "frame/ModalForm.h"
#include <QString>

class QLineEdit;
class QPushButton;

class frmNewConnection : public ModalForm
{
    Q_OBJECT
public:
    explicit frmNewConnection(QWidget *parent = nullptr);

    QString ConnName; // after OK
    QString ConnString;

    QLineEdit *txtName = nullptr; // the caller fills both boxes and selects the name before it shows the dialog
    QLineEdit *txtCS = nullptr;
    QPushButton *cmdOK = nullptr; // enabled only while both boxes hold more than blanks
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdGetCS = nullptr; // "...": PromptConnectionString

private:
    void TestInput();
};
