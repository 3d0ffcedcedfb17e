#include "analyzer/frmGetSQLStructure.h"

#include "frame/Settings.h"
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

struct BoxRow
{
    QCheckBox *frmGetSQLStructure::*box;
    const char *name;
    const char *caption;
    const char *setting;
    bool selectOnly; // no other type of statement has the clause
};
constexpr BoxRow kBoxes[] = {
    {&frmGetSQLStructure::chkFields, "chkFields", "Name &Fields", "FieldNames", false},
    {&frmGetSQLStructure::chkGroupBy, "chkGroupBy", "&Group by", "GroupBy", true},
    {&frmGetSQLStructure::chkHaving, "chkHaving", "&Having", "Having", true},
    {&frmGetSQLStructure::chkOrderBy, "chkOrderBy", "&Order By", "OrderBy", true},
};

} // namespace

frmGetSQLStructure::frmGetSQLStructure(QWidget *parent) : ModalForm(QStringLiteral("SQL Structure"), parent)
{
    cmbType = new QComboBox(this);
    cmbType->setObjectName(QStringLiteral("cmbType"));
    cmbType->setAccessibleName(QStringLiteral("Type of statement"));
    for (const char *type : {"Select", "Insert", "Update", "Delete", "Drop", "Alter"})
        cmbType->addItem(QString::fromLatin1(type));
    auto *label = new QLabel(QStringLiteral("&Type"), this);
    label->setBuddy(cmbType);

    auto *column = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(cmbType, 1);
    column->addLayout(row);
    for (const BoxRow &each : kBoxes) {
        auto *box = new QCheckBox(QString::fromLatin1(each.caption), this);
        box->setObjectName(QString::fromLatin1(each.name));
        box->setChecked(GetSettingNumber(QString::fromLatin1(each.setting), 0) == 1);
        this->*each.box = box;
        column->addWidget(box);
    }
    column->addStretch(1);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdOK->setDefault(true);
    cmdCancel->setAutoDefault(false);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    column->addLayout(buttons);
    resize(260, sizeHint().height());
    cmbType->setFocus();

    connect(cmbType, &QComboBox::currentIndexChanged, this, &frmGetSQLStructure::OnType);
    connect(cmdOK, &QPushButton::clicked, this, &frmGetSQLStructure::Take);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmGetSQLStructure::~frmGetSQLStructure()
{
    for (const BoxRow &each : kBoxes)
        SaveSettingNumber(QString::fromLatin1(each.setting), (this->*each.box)->isChecked() ? 1 : 0);
}

void frmGetSQLStructure::OnType(int type)
{
    for (const BoxRow &each : kBoxes)
        if (each.selectOnly)
            (this->*each.box)->setEnabled(StatementKind(type) == StatementKind::Select);
}

void frmGetSQLStructure::Take()
{
    const auto chosen = [](const QCheckBox *box) { return box->isChecked() && box->isEnabled(); };
    StatementType = StatementKind(cmbType->currentIndex());
    NameFields = chosen(chkFields);
    GroupBy = chosen(chkGroupBy);
    Having = chosen(chkHaving);
    OrderBy = chosen(chkOrderBy);
    Finish();
}
