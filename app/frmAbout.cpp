#include "app/frmAbout.h"
#include "ado/DriverList.h"
#include "controls/Icons.h"
#include "controls/ListView.h"
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

static const int s_shownDrivers = 5; // rows of the list without scrolling

QStringList frmAbout::Drivers()
{
    QStringList lines;
    for (const ADODB::DriverEntry &entry : ADODB::DriverEntries())
        lines += entry.About();
    return lines;
}

frmAbout::frmAbout(QWidget *parent) : ModalForm(QStringLiteral("About Us"), parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    auto *picture = new QLabel(this);
    picture->setPixmap(AppIcon().pixmap(QSize(64, 64), devicePixelRatioF()));
    auto *name = new QLabel(QStringLiteral("Brindlewick"), this);
    name->setObjectName(QStringLiteral("lblName"));
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    name->setFont(large);
    auto *rest = new QLabel(QStringLiteral("Version %1\nA native desktop database client\n\nQt %2\n"
                                           "Licensed under the GNU General Public License, version 3 or later")
                                .arg(QStringLiteral(BRINDLEWICK_VERSION), QString::fromLatin1(qVersion())),
                            this);
    rest->setObjectName(QStringLiteral("lblVersion"));
    rest->setTextFormat(Qt::PlainText);
    auto *drivers = new ListView(this);
    drivers->setObjectName(QStringLiteral("lvDrivers"));
    drivers->setAccessibleName(QStringLiteral("Database drivers"));
    drivers->AddColumn(QStringLiteral("Database drivers"));
    drivers->header()->setStretchLastSection(true);
    for (const QString &driver : Drivers())
        drivers->AddItem(driver);
    drivers->setFixedHeight(drivers->header()->sizeHint().height() +
                            s_shownDrivers * drivers->verticalHeader()->defaultSectionSize());
    auto *ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { Finish(); });
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 14);
    for (QLabel *label : {picture, name, rest}) {
        label->setAlignment(Qt::AlignHCenter);
        column->addWidget(label);
    }
    column->addSpacing(8);
    column->addWidget(drivers);
    column->addSpacing(8);
    column->addWidget(ok, 0, Qt::AlignRight);
    ok->setFocus();
}
