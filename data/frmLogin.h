#pragma once
// "Login": asks for user and password when a server refused them. Stays on top of all windows. The password is used for
// this attempt only and stored nowhere. When what was typed here has been refused, the next one says why.

#include "frame/ModalForm.h"
#include <QString>

class QLabel;
class QLineEdit;
class QPushButton;

class frmLogin : public ModalForm
{
    Q_OBJECT
public:
    explicit frmLogin(QWidget *parent = nullptr);

    QString UserName; // after OK
    QString Password;

    void SetReason(const QString &text); // "" shows none

    QLabel *lblReason = nullptr;
    QLineEdit *txtUserName = nullptr;
    QLineEdit *txtPassword = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
