#pragma once
// "Login": asks for user and password when a server refused them. Stays on top of all windows. The password is used for
// this attempt only and stored nowhere.

#include "frame/ModalForm.h"
#include <QString>

class QLineEdit;
class QPushButton;

class frmLogin : public ModalForm
{
    Q_OBJECT
public:
    explicit frmLogin(QWidget *parent = nullptr);

    QString UserName; // after OK
    QString Password;

    QLineEdit *txtUserName = nullptr;
    QLineEdit *txtPassword = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
