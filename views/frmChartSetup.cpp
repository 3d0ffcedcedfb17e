#include "views/frmChartSetup.h"

#include "controls/ListView.h"
#include "controls/Named.h"
#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kNarrower = 350; // twips that a column is narrower than its list
constexpr ChartChoice::List kLists[] = {&ChartChoice::Fields, &ChartChoice::Labels, &ChartChoice::Data};

QPushButton *MoveButton(const char *name, const char *caption, const QString &spoken, QVBoxLayout *into,
                        QWidget *parent)
{
    auto *const button = WithName(new QPushButton(QLatin1String(caption), parent), name, spoken);
    button->setToolTip(spoken);
    button->setAutoDefault(false);
    into->addWidget(button);
    return button;
}

} // namespace

frmChartSetup::frmChartSetup(QWidget *parent) : ModalForm(QStringLiteral("Chart Setup"), parent)
{
    auto *grid = new QGridLayout(this);
    lvFields = NewList("lvFields", QStringLiteral("Fields"), 0, 0, 4);
    lvLabels = NewList("lvLabels", QStringLiteral("Data Labels"), 0, 2, 1);
    lvData = NewList("lvData", QStringLiteral("Data Values"), 3, 2, 1);
    const auto arrows = [&](int row) {
        auto *column = new QVBoxLayout;
        column->addStretch(1);
        grid->addLayout(column, row, 1, Qt::AlignCenter);
        return column;
    };
    QVBoxLayout *series = arrows(1), *values = arrows(4);
    cmdAddSeries = MoveButton("cmdAddSeries", ">", QStringLiteral("Add to the data labels"), series, this);
    cmdRemoveSeries = MoveButton("cmdRemoveSeries", "<", QStringLiteral("Take from the data labels"), series, this);
    cmdAddData = MoveButton("cmdAddData", ">", QStringLiteral("Add to the data values"), values, this);
    cmdRemoveData = MoveButton("cmdRemoveData", "<", QStringLiteral("Take from the data values"), values, this);

    txtTitle = WithName(new QLineEdit(this), "txtTitle");
    auto *title = new QLabel(QStringLiteral("Title"), this);
    title->setBuddy(txtTitle);
    txtTitle->setAccessibleName(title->text());
    auto *titleRow = new QHBoxLayout;
    titleRow->addWidget(title);
    titleRow->addWidget(txtTitle, 1);
    grid->addLayout(titleRow, 5, 0, 1, 3);
    chkShowLedgend = WithName(new QCheckBox(QStringLiteral("Show Legend"), this), "chkShowLedgend");
    chkShowSQL = WithName(new QCheckBox(QStringLiteral("Show SQL Statement"), this), "chkShowSQL");
    cmdOK = WithName(new QPushButton(QStringLiteral("OK"), this), "cmdOK");
    cmdCancel = WithName(new QPushButton(QStringLiteral("&Cancel"), this), "cmdCancel");
    cmdOK->setDefault(true);
    cmdOK->setEnabled(false);
    cmdCancel->setAutoDefault(false);
    auto *last = new QHBoxLayout;
    last->addWidget(chkShowLedgend);
    last->addWidget(chkShowSQL);
    last->addStretch(1);
    last->addWidget(cmdOK);
    last->addWidget(cmdCancel);
    grid->addLayout(last, 6, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(1, 1);
    grid->setRowStretch(4, 1);
    resize(560, 420);
    QWidget *const order[] = {lvFields,      cmdAddSeries, cmdRemoveSeries, lvLabels,      cmdAddData,
                              cmdRemoveData, lvData,       txtTitle,        chkShowLedgend};
    for (size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
    lvFields->setFocus();

    const auto moves = [this](QPushButton *button, ChartChoice::List from, ChartChoice::List to) {
        connect(button, &QPushButton::clicked, this, [=, this] { Move(from, to); });
    };
    moves(cmdAddSeries, &ChartChoice::Fields, &ChartChoice::Labels);
    moves(cmdRemoveSeries, &ChartChoice::Labels, &ChartChoice::Fields);
    moves(cmdAddData, &ChartChoice::Fields, &ChartChoice::Data);
    moves(cmdRemoveData, &ChartChoice::Data, &ChartChoice::Fields);
    connect(cmdOK, &QPushButton::clicked, this, &frmChartSetup::Take);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

// A list with its label above, in a grid whose rows are those of the label and of the list.
ListView *frmChartSetup::NewList(const char *name, const QString &label, int row, int column, int rows)
{
    auto *const list = WithName(new ListView(this), name, label);
    list->AddColumn(label);
    list->setHeaderHidden(true);
    list->SetMultiSelect(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->viewport()->installEventFilter(this);
    auto *const caption = new QLabel(label, this);
    caption->setBuddy(list);
    auto *const grid = static_cast<QGridLayout *>(layout());
    grid->addWidget(caption, row, column);
    grid->addWidget(list, row + 1, column, rows, 1);
    return list;
}

void frmChartSetup::SetFields(const std::vector<ChartField> &fields)
{
    m_choice = {fields, {}, {}};
    ShowLists();
    if (!fields.empty())
        lvFields->SelectRow(0);
}

void frmChartSetup::SetChartTitle(const QString &title)
{
    txtTitle->setText(title);
}

ListView *frmChartSetup::ViewOf(ChartChoice::List list) const
{
    return list == &ChartChoice::Fields ? lvFields : list == &ChartChoice::Labels ? lvLabels : lvData;
}

ChartChoice::List frmChartSetup::ListOf(const QObject *viewport) const
{
    for (const ChartChoice::List list : kLists)
        if (ViewOf(list)->viewport() == viewport)
            return list;
    return nullptr;
}

void frmChartSetup::Move(ChartChoice::List from, ChartChoice::List to)
{
    ListView *const loser = ViewOf(from);
    const QList<qint64> rows = loser->SelectedRows();
    if (from != to && !rows.isEmpty()) {
        m_choice.Move(from, to, {rows.begin(), rows.end()});
        ShowLists();
        // What comes next is ready for the next press.
        loser->SelectRow(std::min(rows.first(), loser->Count() - 1));
    }
    cmdOK->setEnabled(m_choice.IsComplete());
    loser->setFocus();
}

void frmChartSetup::ShowLists()
{
    for (const ChartChoice::List list : kLists) {
        ListView *const view = ViewOf(list);
        const std::vector<ChartField> &fields = m_choice.*list;
        const auto shown = [&](qint64 row) { return view->Tag(row) == QString::number(fields[size_t(row)].Tag); };
        bool same = view->Count() == qint64(fields.size());
        for (qint64 row = 0; same && row < view->Count(); ++row)
            same = shown(row);
        if (same)
            continue; // its selection stays
        view->Clear();
        for (const ChartField &field : fields)
            view->AddItem(field.Text, QString::number(field.Tag));
    }
    cmdOK->setEnabled(m_choice.IsComplete());
}

void frmChartSetup::FitColumns()
{
    for (const ChartChoice::List list : kLists)
        ViewOf(list)->SetColumnWidth(0, ViewOf(list)->ListWidth() - kNarrower);
}

void frmChartSetup::resizeEvent(QResizeEvent *event)
{
    ModalForm::resizeEvent(event);
    FitColumns();
}

void frmChartSetup::showEvent(QShowEvent *event)
{
    ModalForm::showEvent(event);
    FitColumns();
}

// A press on a selected row keeps the selection, since it may begin a drag; without one, the release selects that row
// alone. What is dropped on the values or on the labels are the selected fields, wherever the drag began; on the fields
// it is what the list holds where it began.
bool frmChartSetup::eventFilter(QObject *watched, QEvent *event)
{
    const ChartChoice::List here = ListOf(watched);
    if (!here)
        return ModalForm::eventFilter(watched, event);
    ListView *const view = ViewOf(here);
    const auto *const mouse = dynamic_cast<QMouseEvent *>(event);
    if (event->type() == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton) {
        m_pressed = mouse->pos();
        m_pressedIn = view->indexAt(m_pressed).isValid() ? here : nullptr;
        m_dragged = nullptr;
        if (m_pressedIn && mouse->modifiers() == Qt::NoModifier && view->IsSelected(view->indexAt(m_pressed).row())) {
            view->setFocus();
            return true;
        }
    } else if (event->type() == QEvent::MouseMove && m_pressedIn == here && (mouse->buttons() & Qt::LeftButton)) {
        if (!m_dragged && (mouse->pos() - m_pressed).manhattanLength() >= QApplication::startDragDistance()) {
            m_dragged = here;
            view->viewport()->setCursor(Qt::DragMoveCursor);
        }
        return true; // it selects no further rows
    } else if (event->type() == QEvent::MouseButtonRelease && mouse->button() == Qt::LeftButton && m_pressedIn) {
        const ChartChoice::List dragged = std::exchange(m_dragged, nullptr);
        m_pressedIn = nullptr;
        view->viewport()->unsetCursor();
        if (!dragged) {
            if (mouse->modifiers() == Qt::NoModifier)
                view->SelectRow(view->indexAt(mouse->pos()).row());
            return ModalForm::eventFilter(watched, event);
        }
        for (const ChartChoice::List list : kLists) {
            const ListView *const target = ViewOf(list);
            if (target->rect().contains(target->mapFromGlobal(mouse->globalPosition().toPoint())))
                Move(list == &ChartChoice::Fields ? dragged : &ChartChoice::Fields, list);
        }
        return true;
    }
    return ModalForm::eventFilter(watched, event);
}

void frmChartSetup::Take()
{
    ShowLegend = chkShowLedgend->isChecked();
    ShowSQL = chkShowSQL->isChecked();
    LabelFields = ChartChoice::Tags(m_choice.Labels);
    DataFields = ChartChoice::Tags(m_choice.Data);
    ChartTitle = txtTitle->text();
    Finish();
}
