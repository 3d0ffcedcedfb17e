#include "data/frmNewConnection.h"
#include "data/modMain.h"
#include "lang/Text.h"
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

frmNewConnection::frmNewConnection(QWidget *parent) : ModalForm(QStringLiteral("New Connection"), parent)
{
    auto *lblName = new QLabel(QStringLiteral("Connection Name"), this);
    auto *lblCS = new QLabel(QStringLiteral("Connection String"), this);
    txtName = new QLineEdit(this);
    txtCS = new QLineEdit(this);
    cmdGetCS = new QPushButton(QStringLiteral("..."), this);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);

    txtName->setObjectName(QStringLiteral("txtName"));
    txtCS->setObjectName(QStringLiteral("txtCS"));
    cmdGetCS->setObjectName(QStringLiteral("cmdGetCS"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    txtName->setAccessibleName(lblName->text());
    txtCS->setAccessibleName(lblCS->text());
    cmdGetCS->setAccessibleName(QStringLiteral("Build Connection String"));
    cmdGetCS->setToolTip(QStringLiteral("Build the connection string from its parts"));
    lblName->setBuddy(txtName);
    lblCS->setBuddy(txtCS);
    cmdOK->setDefault(true);
    cmdOK->setEnabled(false);
    cmdGetCS->setAutoDefault(false);
    cmdCancel->setAutoDefault(false);

    auto *grid = new QGridLayout(this);
    grid->addWidget(lblName, 0, 0);
    grid->addWidget(txtName, 0, 1, 1, 2);
    grid->addWidget(lblCS, 1, 0);
    grid->addWidget(txtCS, 1, 1);
    grid->addWidget(cmdGetCS, 1, 2);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    grid->setRowStretch(2, 1);
    grid->addLayout(buttons, 3, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    resize(520, sizeHint().height());
    txtName->setFocus();

    connect(txtName, &QLineEdit::textChanged, this, &frmNewConnection::TestInput);
    connect(txtCS, &QLineEdit::textChanged, this, &frmNewConnection::TestInput);
    connect(cmdGetCS, &QPushButton::clicked, this, [this] {
        const QString made = PromptConnectionString();
        if (!made.isEmpty())
            txtCS->setText(made);
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        ConnName = txtName->text();
        ConnString = txtCS->text();
        Finish();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmNewConnection::TestInput()
{
    cmdOK->setEnabled(!lang::Trim(txtName->text()).isEmpty() && !lang::Trim(txtCS->text()).isEmpty());
}
