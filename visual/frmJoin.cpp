#include "visual/frmJoin.h"

#include "data/ServerName.h"
#include "lang/Text.h"
#include "visual/JoinFields.h"
#include "visual/logic/JoinClause.h"
#include "visual/ucTableMap.h"
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

namespace {

constexpr int kFieldLetters = 18; // a longer name does not widen the dialog

void ChooseText(QComboBox *list, const QString &text)
{
    const int at = list->findText(text);
    if (at >= 0)
        list->setCurrentIndex(at);
}

} // namespace

frmJoin::frmJoin(QWidget *parent) : ModalForm(QStringLiteral("Join"), parent)
{
    auto *grid = new QGridLayout(this);
    const auto place = [&](auto *control, const char *name, const QString &spoken, int row, int column) {
        control->setObjectName(QLatin1String(name));
        control->setAccessibleName(spoken);
        grid->addWidget(control, row, column);
        return control;
    };
    const auto label = [&](const char *text, QWidget *buddy, int row) {
        auto *made = new QLabel(QLatin1String(text), this);
        made->setBuddy(buddy);
        grid->addWidget(made, row, 0);
    };
    const auto shown = [this] { // it is the map's name for the table
        auto *box = new QLineEdit(this);
        box->setReadOnly(true);
        return box;
    };
    const auto fields = [this] {
        auto *list = new QComboBox(this);
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(kFieldLetters);
        return list;
    };
    txtTable1 = place(shown(), "txtTable1", QStringLiteral("Left table"), 0, 1);
    txtTable2 = place(shown(), "txtTable2", QStringLiteral("Right table"), 0, 2);
    cmbField[0] = place(fields(), "cmbField0", QStringLiteral("Field of the left table"), 1, 1);
    cmbField[1] = place(fields(), "cmbField1", QStringLiteral("Field of the right table"), 1, 2);
    cmbOperator = place(new QComboBox(this), "cmbOperator", QStringLiteral("Operator"), 2, 1);
    cmbJoin = place(new QComboBox(this), "cmbJoin", QStringLiteral("Join Type"), 3, 1);
    label("&Table", txtTable1, 0);
    label("&Field", cmbField[0], 1);
    label("&Operator", cmbOperator, 2);
    label("&Join Type", cmbJoin, 3);
    cmbOperator->addItem(QStringLiteral("="));
    cmbJoin->addItems({QStringLiteral("Inner Join"), QStringLiteral("Left Join"), QStringLiteral("Right Join")});

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
    grid->setRowStretch(4, 1);
    grid->addLayout(buttons, 5, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
    resize(480, sizeHint().height());
    cmbField[0]->setFocus();

    connect(cmdOK, &QPushButton::clicked, this, &frmJoin::Take);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmJoin::LoadFields(const QString &Table, const QString &Name, int Index, const QString &Written)
{
    const int side = Index ? 1 : 0;
    cmbField[side]->clear();
    if (lang::Trim(Table).isEmpty())
        return;
    (side ? txtTable2 : txtTable1)->setText(Name);
    const auto compose = [&](const ADODB::ConnectionPtr &connection) {
        const QString written = Written.isEmpty() ? ServerName(connection, Table) : Written;
        QStringList queries = {JoinFieldsQuery(Table, written).value_or(QString())};
        if (written != Table && written.startsWith(u'(')) // a statement
            queries << JoinFieldsQuery(Table, NamedStatement(written)).value_or(QString());
        return queries;
    };
    const QPointer<frmJoin> self(this);
    const std::optional<QStringList> names = ReadFields(compose, parentWidget());
    if (!self || !names)
        return;
    ShowFields(cmbField[side], *names);
}

void frmJoin::FindMatch()
{
    ChooseMatch(cmbField[0], cmbField[1]);
}

void frmJoin::Choose(const QString &field1, const QString &field2, const QString &joinType)
{
    ChooseText(cmbField[0], field1);
    ChooseText(cmbField[1], field2);
    ChooseText(cmbJoin, joinType);
}

void frmJoin::Take()
{
    Table1 = txtTable1->text();
    Table2 = txtTable2->text();
    Field1 = cmbField[0]->currentText();
    Field2 = cmbField[1]->currentText();
    JoinType = cmbJoin->currentText();
    if (IsJoinCancelled(Field1, Field2))
        reject();
    else
        Finish();
}

void AskWithJoinDialog(ucTableMap &map)
{
    map.AskJoin = [&map](const JoinQuestion &question, QWidget *parent) -> JoinAnswer {
        // Only the map knows which table of a schema is meant. It is asked first: it may go while fields are read.
        const auto written = [&map](const QString &table) {
            return map.TableCount(table) > 0 ? map.StatementName(table) : QString();
        };
        const QString written1 = written(question.Table1), written2 = written(question.Table2);
        const QPointer<QWidget> owner(parent);
        frmJoin form(parent);
        form.LoadFields(question.Table1, question.Name1, 0, written1);
        form.LoadFields(question.Table2, question.Name2, 1, written2);
        if (parent && !owner)
            return {};
        if (question.FindMatch)
            form.FindMatch();
        else
            form.Choose(question.Field1, question.Field2, question.Operator);
        form.ShowModal();
        if (form.Cancelled)
            return {};
        return {false, form.Table1, form.Field1, form.Table2, form.Field2, form.JoinType};
    };
}
