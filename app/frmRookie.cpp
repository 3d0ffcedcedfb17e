#include "app/frmRookie.h"
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmRookie::frmRookie(QWidget *parent) : ModalForm(QStringLiteral("Add Connection"), parent)
{
    setObjectName(QStringLiteral("frmRookie"));
    auto *text = new QLabel(
        QStringLiteral(
            "Welcome to Brindlewick your comprehensive database management utility. In order to begin, you must first "
            "create a connection to at least one database. You can do this by click on the <New Connection> button "
            "located on the mid left side bar under the Tools section. A window will appear follow the instructions to "
            "setup your first connection. Once this is done your connection should appear in the top left of the "
            "sidebar under the Connections section. Click on it to connect and begin."),
        this);
    text->setObjectName(QStringLiteral("lblWelcome"));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setMinimumWidth(420);
    auto *ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { Finish(); });
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(18, 18, 18, 14);
    column->setSpacing(14);
    column->addWidget(text);
    column->addWidget(ok, 0, Qt::AlignRight);
}
