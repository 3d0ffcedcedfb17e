// The grid of the wizard: its cells, the editors over them, and what both say to the map.

#include "visual/frmSQLWizzard.h"

#include "controls/Attempt.h"
#include "controls/FlexGrid.h"
#include "controls/FlexGridEditor.h"
#include "data/ServerName.h"
#include "visual/DropList.h"
#include "visual/JoinFields.h"
#include "visual/ucTableMap.h"
#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>

namespace {

constexpr int kKeyUp = 38, kKeyDown = 40;
constexpr int kRowHeight = 330; // twips: room for an editor

QStringList Texts(const auto &texts)
{
    QStringList list;
    for (const char16_t *text : texts)
        list << QString::fromUtf16(text);
    return list;
}

} // namespace

void frmSQLWizzard::BuildGrid()
{
    mfgFields = new FlexGrid(m_area);
    mfgFields->setObjectName(QStringLiteral("mfgFields"));
    mfgFields->setAccessibleName(QStringLiteral("Fields"));
    mfgFields->SetCols(wcCount);
    mfgFields->SetFixedRows(1);
    mfgFields->SetFixedCols(0);
    mfgFields->SetFormatString(QString::fromUtf16(kWizardHeader));
    Editors = new FlexGridEditor(mfgFields);
    const auto make = [this](auto *editor, const char *name, const QString &spoken,
                             std::initializer_list<int> columns) {
        editor->setObjectName(QLatin1String(name));
        editor->setAccessibleName(spoken);
        for (int column : columns)
            Editors->SetEditor(column, editor);
        return editor;
    };
    cmbTables = make(new QComboBox, "cmbTables", QStringLiteral("Table"), {wcTable});
    cmbFields = make(new DropList, "cmbFields", QStringLiteral("Field"), {wcField});
    txtAlias = make(new QLineEdit, "txtAlias", QStringLiteral("Alias"), {wcAlias});
    chkShow = make(new QCheckBox, "chkShow", QStringLiteral("Show"), {wcShow});
    cmbGroupBy = make(new QComboBox, "cmbGroupBy", QStringLiteral("Group By"), {wcGroupBy});
    cmbOrderBy = make(new QComboBox, "cmbOrderBy", QStringLiteral("Order By"), {wcOrderBy});
    txtCriteria = make(new QLineEdit, "txtCriteria", QStringLiteral("Criteria"), {wcCriteria, wcOr1, wcOr2, wcOr3});
    cmbFields->setEditable(true); // an expression is typed
    cmbFields->setInsertPolicy(QComboBox::NoInsert);
    cmbFields->setCompleter(nullptr);
    cmbGroupBy->addItems(Texts(kWizardGroupings));
    cmbOrderBy->addItems(Texts(kWizardOrders));
    cmbOrderBy->addItem(QString()); // takes an order away
    chkShow->setAutoFillBackground(true);
    for (QComboBox *list : std::initializer_list<QComboBox *>{cmbTables, cmbFields, cmbGroupBy, cmbOrderBy})
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
}

void frmSQLWizzard::ConnectEditors()
{
    Editors->KeyMove = [this](int direction, qint64 row) {
        return qint64(m_rows.KeyMove(direction > 0 ? kKeyDown : kKeyUp, int(row)));
    };
    Editors->TakeDrops(ucTableMap::FieldMimeType());
    connect(Editors, &FlexGridEditor::Dropped, this, [this] { Attempt([&] { DropField(); }); });
    connect(Editors, &FlexGridEditor::Entered, this, &frmSQLWizzard::SetEditRow);
    connect(Editors, &FlexGridEditor::Pressed, this, [this](qint64 row, Qt::MouseButton button, const QPoint &at) {
        SetEditRow(row);
        if (button != Qt::RightButton)
            return;
        MenuItem("mnuDelete")->setEnabled(true);
        MenuItem("mnuInsert")->setEnabled(true);
        MenuItem("mnuRemoveTable")->setEnabled(TableMap->CurrentTable() != 0);
        ShowMenu(mfgFields->viewport(), at);
    });
    connect(Editors, &FlexGridEditor::Opening, this,
            [this](QWidget *editor, qint64 row, int col) { Attempt([&] { FillEditor(editor, row, col); }); });
    connect(Editors, &FlexGridEditor::Closing, this,
            [this](QWidget *editor, qint64 row, int col) { Attempt([&] { TakeEditor(editor, row, col); }); });

    const auto chosen = [this](QComboBox *list, auto take) {
        connect(list, &QComboBox::activated, this, [this, list, take] {
            Attempt([&] {
                if (Editors->Current() == list)
                    take(int(Editors->Row()), list->currentText());
            });
        });
    };
    chosen(cmbTables, [this](int row, const QString &text) { Write(row, wcTable, text); });
    chosen(cmbGroupBy, [this](int row, const QString &text) { Write(row, wcGroupBy, text); });
    chosen(cmbOrderBy, [this](int row, const QString &text) { Write(row, wcOrderBy, text); });
    chosen(cmbFields, [this](int row, const QString &text) { TakeField(row, text); });
    connect(cmbFields, &DropList::Opening, this, [this] { Attempt([&] { ReadFieldList(); }); });
    connect(cmbFields, &QComboBox::editTextChanged, this, [this](const QString &text) {
        if (!m_filling && text.isEmpty() && Editors->Current() == cmbFields)
            Attempt([&] { TakeField(int(Editors->Row()), {}); });
    });
    connect(txtAlias, &QLineEdit::textEdited, this,
            [this](const QString &text) { Attempt([&] { Write(int(Editors->Row()), wcAlias, text); }); });
    connect(txtCriteria, &QLineEdit::textEdited, this, [this](const QString &text) {
        Attempt([&] { Write(int(Editors->Row()), Editors->Col(), CriteriaCell(text)); });
    });
    connect(chkShow, &QCheckBox::clicked, this, [this](bool on) {
        Attempt([&] {
            const int row = int(Editors->Row());
            const bool stays = m_rows.SetShown(row, on);
            TableMap->SetItemCheck(m_rows.TextMatrix(row, wcTable), m_rows.TextMatrix(row, wcField), stays);
            ShowRows();
        });
    });
}

void frmSQLWizzard::ShowRows()
{
    mfgFields->SetRows(m_rows.Count() + 1);
    for (int row = 1; row <= m_rows.Count(); ++row) {
        mfgFields->SetRowHeight(row, kRowHeight);
        for (int col = 0; col < wcCount; ++col)
            if (mfgFields->TextMatrix(row, col) != m_rows.TextMatrix(row, col))
                mfgFields->SetTextMatrix(row, col, m_rows.TextMatrix(row, col));
    }
    TextSoon();
}

void frmSQLWizzard::SetEditRow(qint64 row)
{
    if (row >= 1 && row <= m_rows.Count())
        m_editRow = int(row);
}

void frmSQLWizzard::FillEditor(QWidget *editor, qint64 row, int col)
{
    const QScopedValueRollback<bool> filling(m_filling, true);
    const QString text = m_rows.TextMatrix(int(row), col);
    if (editor == chkShow)
        chkShow->setChecked(text == u"Y");
    else if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setText(text);
    else if (auto *list = qobject_cast<QComboBox *>(editor)) {
        if (list == cmbFields)
            list->clear(); // another table's
        list->setCurrentIndex(list->findText(text));
        if (list->isEditable())
            list->setEditText(text);
    }
    if (auto *line = editor == cmbFields ? cmbFields->lineEdit() : qobject_cast<QLineEdit *>(editor))
        line->selectAll();
}

// What was typed into the list of fields counts when it is left.
void frmSQLWizzard::TakeEditor(QWidget *editor, qint64 row, int col)
{
    if (editor != cmbFields || row > m_rows.Count())
        return;
    const QString typed = cmbFields->currentText();
    if (!typed.isEmpty() && typed != m_rows.TextMatrix(int(row), col))
        TakeField(int(row), typed);
}

void frmSQLWizzard::TakeField(int row, const QString &field)
{
    const QString table = m_rows.TextMatrix(row, wcTable), former = m_rows.TextMatrix(row, wcField);
    if (field.isEmpty())
        m_rows.ClearField(row);
    else
        m_rows.PickField(row, field);
    FollowCheck(table, former);
    FollowCheck(table, field);
    ShowRows();
}

// An item stays checked in its table while some row shows it: else the next click there would bring a field back that
// was taken away here, or take one away that was chosen here.
void frmSQLWizzard::FollowCheck(const QString &table, const QString &field)
{
    if (!field.isEmpty())
        TableMap->SetItemCheck(table, field, m_rows.IsShown(table, field));
}

void frmSQLWizzard::Write(int row, int col, const QString &text)
{
    const QString table = m_rows.TextMatrix(row, wcTable);
    m_rows.SetTextMatrix(row, col, text);
    if (col == wcTable) {
        FollowCheck(table, m_rows.TextMatrix(row, wcField));
        FollowCheck(text, m_rows.TextMatrix(row, wcField));
    }
    ShowRows();
}

// Beside the living windows, which take no input meanwhile. What is refused leaves the list as far as it came.
void frmSQLWizzard::ReadFieldList()
{
    const qint64 row = Editors->Row();
    if (Editors->Current() != cmbFields || row > m_rows.Count())
        return;
    const QString typed = cmbFields->currentText();
    {
        const QScopedValueRollback<bool> filling(m_filling, true);
        cmbFields->clear();
        cmbFields->setEditText(typed);
    }
    const QString real = TableMap->GetRealName(m_rows.TextMatrix(int(row), wcTable));
    const QString known = TableMap->TableCount(real) > 0 ? TableMap->StatementName(real) : QString();
    if (!WizardFieldsQuery(real))
        return;
    const QPointer<frmSQLWizzard> self(this);
    const std::optional<QStringList> names = ReadFields(
        [real, known](const ADODB::ConnectionPtr &connection) {
            const QString written = known.isEmpty() ? ServerName(connection, real) : known;
            return QStringList{WizardFieldsQuery(real, written).value_or(QString())};
        },
        this);
    if (!self || !names || Editors->Current() != cmbFields)
        return;
    const QScopedValueRollback<bool> filling(m_filling, true);
    cmbFields->addItems(*names);
    cmbFields->setCurrentIndex(cmbFields->findText(typed));
    cmbFields->setEditText(typed);
}

// The current table's item comes into the grid as if it were checked, and then it is.
void frmSQLWizzard::DropField()
{
    const MapTable *table = TableMap->lvTable(TableMap->CurrentTable());
    if (!table || table->Selected < 1 || size_t(table->Selected) > table->Items.size())
        return;
    const QString alias = table->Alias, field = table->Items[size_t(table->Selected - 1)].Text;
    Editors->HideEditors();
    m_rows.ItemChecked(alias, field, true);
    TableMap->SetItemCheck(alias, field, true);
    ShowRows();
}

void frmSQLWizzard::DeleteRow()
{
    Editors->HideEditors();
    if (m_editRow < 1 || m_editRow > m_rows.Count())
        return;
    const QString table = m_rows.TextMatrix(m_editRow, wcTable), field = m_rows.TextMatrix(m_editRow, wcField);
    m_rows.RemoveRow(m_editRow);
    FollowCheck(table, field);
    ShowRows();
}

void frmSQLWizzard::InsertRow()
{
    Editors->HideEditors();
    if (m_editRow < 1 || m_editRow > m_rows.Count())
        return;
    m_rows.InsertRow(m_editRow);
    ShowRows();
}
