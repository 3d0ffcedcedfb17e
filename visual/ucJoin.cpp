#include "visual/ucJoin.h"

#include "controls/Attempt.h"
#include "controls/Twips.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "visual/JoinFields.h"
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPointer>

namespace {

const QString kChanged = QStringLiteral("1"); // the table box's Tag

} // namespace

ucJoin::ucJoin(QWidget *parent) : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    const auto place = [&](auto *control, const char *name, const QString &spoken, int row, int column) {
        control->setObjectName(QLatin1String(name));
        control->setAccessibleName(spoken);
        grid->addWidget(control, row, column);
        return control;
    };
    txtPrevious =
        place(new QLineEdit(QStringLiteral("Previous"), this), "txtPrevious", QStringLiteral("Previous"), 0, 0);
    cmbJoin = place(new QComboBox(this), "cmbJoin", QStringLiteral("Join Type"), 0, 1);
    cmbTable = place(new QComboBox(this), "cmbTable", QStringLiteral("Table"), 0, 2);
    cmbField[0] = place(new QComboBox(this), "cmbField0", QStringLiteral("Field of what came before"), 1, 0);
    cmbOperator = place(new QComboBox(this), "cmbOperator", QStringLiteral("Operator"), 1, 1);
    cmbField[1] = place(new QComboBox(this), "cmbField1", QStringLiteral("Field of the table"), 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);
    txtPrevious->setReadOnly(true); // the chain says what came before
    cmbJoin->addItems({QStringLiteral("Cross Join"), QStringLiteral("Inner Join"), QStringLiteral("Left Join"),
                       QStringLiteral("Outter Join"), QStringLiteral("Right Join")});
    cmbJoin->setCurrentText(QStringLiteral("Inner Join"));
    for (const char *comparison : {"=", "<>", "<", "<=", ">", ">="})
        cmbOperator->addItem(QLatin1String(comparison));
    cmbTable->setEditable(true);
    cmbTable->setInsertPolicy(QComboBox::NoInsert);
    cmbTable->setCompleter(nullptr); // a typed text stays as it was typed

    const auto mark = [this] { SetTag(cmbTable, kChanged); };
    connect(cmbTable, &QComboBox::editTextChanged, this, mark);
    connect(cmbTable, &QComboBox::activated, this, [this, mark] {
        mark();
        Attempt([&] { ReadTable(); });
    });
    connect(cmbTable->lineEdit(), &QLineEdit::editingFinished, this, [this] { Attempt([&] { ReadTable(); }); });
}

JoinClause ucJoin::Clause() const
{
    JoinClause clause;
    clause.Previous = txtPrevious->text();
    clause.Table = cmbTable->currentText();
    clause.Join = cmbJoin->currentText();
    clause.Field0 = cmbField[0]->currentText();
    clause.Field1 = cmbField[1]->currentText();
    clause.Operator = cmbOperator->currentText();
    clause.Step = Step;
    return clause;
}

QString ucJoin::GetSQL() const
{
    return Clause().GetSQL();
}

void ucJoin::SetPreviousTag(const QString &Text)
{
    txtPrevious->setText(Text);
    SetTag(txtPrevious, QStringLiteral("Previous (") + Text + u')');
    ReadPrevious();
}

void ucJoin::Populate()
{
    if (!IsConnected(false))
        return;
    const QPointer<ucJoin> self(this);
    std::vector<ADODB::ObjectName> tables = ReadTables(this);
    if (!self)
        return;
    m_tables = std::move(tables);
    cmbTable->clear();
    for (const ADODB::ObjectName &table : m_tables)
        cmbTable->addItem(table.Name);
    if (m_tables.empty())
        return;
    cmbTable->setCurrentIndex(0);
    SetTag(cmbTable, kChanged);
    ReadTable();
}

void ucJoin::ReadPrevious()
{
    cmbField[0]->clear();
    if (!IsConnected(false))
        return;
    const auto compose = [clause = Clause()](const ADODB::ConnectionPtr &connection) -> QStringList {
        if (clause.IsPreviousInBrackets())
            return {clause.PreviousQuery(), clause.PreviousQuery(NamedStatement(u'(' + clause.Previous + u')'))};
        return {clause.PreviousQuery(ServerName(connection, clause.Previous))};
    };
    const QPointer<ucJoin> self(this);
    const std::optional<QStringList> names = ReadFields(compose, this);
    if (!self || !names)
        return;
    ShowFields(cmbField[0], *names);
}

std::optional<ADODB::ObjectName> ucJoin::Picked() const
{
    const int at = cmbTable->currentIndex();
    if (at < 0 || size_t(at) >= m_tables.size() || cmbTable->itemText(at) != cmbTable->currentText())
        return std::nullopt;
    return m_tables[size_t(at)];
}

void ucJoin::ReadTable()
{
    if (Tag(cmbTable) != kChanged)
        return;
    SetTag(cmbTable, {});
    cmbField[1]->clear();
    if (!IsConnected(false))
        return;
    // A typed text may be a name, or a name in quotes of the server's own.
    const auto compose = [clause = Clause(), picked = Picked()](const ADODB::ConnectionPtr &connection) -> QStringList {
        if (clause.IsTableInBrackets())
            return {clause.TableQuery()};
        if (picked)
            return {clause.TableQuery(ServerName(connection, *picked))};
        return {clause.TableQuery(ServerName(connection, clause.Table)), clause.TableQuery()};
    };
    const QPointer<ucJoin> self(this);
    const std::optional<QStringList> names = ReadFields(compose, this);
    if (!self || !names)
        return;
    ShowFields(cmbField[1], *names);
    ChooseMatch(cmbField[0], cmbField[1]);
}
