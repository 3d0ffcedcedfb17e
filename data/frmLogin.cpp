#include "data/frmLogin.h"
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

frmLogin::frmLogin(QWidget *parent) : ModalForm(QStringLiteral("Login"), parent)
{
    setWindowFlag(Qt::WindowStaysOnTopHint);
    auto *lblUser = new QLabel(QStringLiteral("&User Name:"), this);
    auto *lblPassword = new QLabel(QStringLiteral("&Password:"), this);
    txtUserName = new QLineEdit(this);
    txtPassword = new QLineEdit(this);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);

    txtUserName->setObjectName(QStringLiteral("txtUserName"));
    txtPassword->setObjectName(QStringLiteral("txtPassword"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    txtUserName->setAccessibleName(QStringLiteral("User Name"));
    txtPassword->setAccessibleName(QStringLiteral("Password"));
    txtPassword->setEchoMode(QLineEdit::Password);
    lblUser->setBuddy(txtUserName);
    lblPassword->setBuddy(txtPassword);
    cmdOK->setDefault(true);
    cmdCancel->setAutoDefault(false);

    auto *grid = new QGridLayout(this);
    grid->addWidget(lblUser, 0, 0);
    grid->addWidget(txtUserName, 0, 1);
    grid->addWidget(lblPassword, 1, 0);
    grid->addWidget(txtPassword, 1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    lblReason = new QLabel(this);
    lblReason->setObjectName(QStringLiteral("lblReason"));
    lblReason->setAccessibleName(QStringLiteral("Reason"));
    lblReason->setWordWrap(true);
    lblReason->setTextFormat(Qt::PlainText);
    lblReason->hide();
    grid->addWidget(lblReason, 2, 0, 1, 2);
    grid->setRowStretch(3, 1);
    grid->addLayout(buttons, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    resize(360, sizeHint().height());
    txtUserName->setFocus();

    connect(cmdOK, &QPushButton::clicked, this, [this] {
        UserName = txtUserName->text();
        Password = txtPassword->text();
        Finish();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmLogin::SetReason(const QString &text)
{
    lblReason->setText(text);
    lblReason->setVisible(!text.isEmpty());
    if (!text.isEmpty())
        resize(width(), layout()->totalHeightForWidth(width()));
}
