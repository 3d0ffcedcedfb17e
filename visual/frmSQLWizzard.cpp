#include "visual/frmSQLWizzard.h"

#include "ado/ObjectName.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/FlexGridEditor.h"
#include "controls/RichTextBox.h"
#include "controls/Skin.h"
#include "controls/Splitter.h"
#include "controls/Twips.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "sqltext/EditAssist.h"
#include "sqltext/IntColorAll.h"
#include "visual/DropList.h"
#include "visual/frmJoin.h"
#include "visual/ucTableMap.h"
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace {

constexpr int kMargin = 100; // twips that the bar keeps from either edge
constexpr int kBarHeight = 6, kTextHeight = 96;
constexpr int kMapOf = 55;        // of a hundred, at first
constexpr int kGroupWidth = 1500; // twips of the column "Group By"
constexpr int kRightButton = 2;

} // namespace

frmSQLWizzard::frmSQLWizzard(QWidget *parent) : ModalForm(QStringLiteral("SQL Wizzard"), parent)
{
    m_textTimer = new QTimer(this);
    m_textTimer->setSingleShot(true);
    m_textTimer->setInterval(0);
    connect(m_textTimer, &QTimer::timeout, this, [this] { Attempt([&] { ShowText(); }); });
    m_area = new QWidget(this);
    m_area->installEventFilter(this);
    TableMap = new ucTableMap(m_area);
    TableMap->setObjectName(QStringLiteral("TableMap"));
    AskWithJoinDialog(*TableMap);
    picSplit = new Splitter(m_area, spltHorizontal);
    picSplit->setObjectName(QStringLiteral("picSplit"));
    picSplit->SetBorder(2, kMargin);
    picSplit->SetBorder(4, kMargin);
    BuildGrid();

    txtSQL = new RichTextBox(this);
    txtSQL->setObjectName(QStringLiteral("txtSQL"));
    txtSQL->setAccessibleName(QStringLiteral("The statement as joins"));
    txtSQL->setReadOnly(true);
    txtSQL->setTabChangesFocus(true);
    txtSQL->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    txtSQL->setFixedHeight(kTextHeight);
    lblHint = new QLabel(QStringLiteral("The right button on the map, or its Menu key, adds tables."), this);
    lblHint->setObjectName(QStringLiteral("lblHint"));
    const auto button = [this](const char *name, const QString &caption) {
        auto *made = new QPushButton(caption, this);
        made->setObjectName(QLatin1String(name));
        made->setAutoDefault(false); // Return belongs to the cells
        return made;
    };
    cmdApply = button("cmdApply", QStringLiteral("&Apply"));
    cmdJoins = button("cmdJoins", QStringLiteral("Apply as &Joins"));
    cmdCancel = button("cmdCancel", QStringLiteral("&Cancel"));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(lblHint, 1);
    for (QPushButton *one : {cmdApply, cmdJoins, cmdCancel})
        buttons->addWidget(one);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_area, 1);
    column->addWidget(txtSQL);
    column->addLayout(buttons);
    resize(900, 680);
    column->activate();
    picSplit->SetPosition(ToTwips(m_area->height() * kMapOf / 100));
    LayOut();
    SetupGrid();
    TableMap->setFocus();

    BuildMenu();
    ConnectMap();
    ConnectEditors();
    ShowRows();
    mfgFields->Select(1, wcTable, 1, wcTable);
    for (const auto signal : {&Splitter::Moving, &Splitter::Moved})
        connect(picSplit, signal, this, [this] { Attempt([&] { LayOut(); }); });
    connect(cmdApply, &QPushButton::clicked, this, [this] { Attempt([&] { Apply(false); }); });
    connect(cmdJoins, &QPushButton::clicked, this, [this] { Attempt([&] { Apply(true); }); });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmSQLWizzard::~frmSQLWizzard()
{
    m_area->removeEventFilter(this);
    delete m_area; // what it holds speaks to this window
}

void frmSQLWizzard::LayOut()
{
    const int width = m_area->width(), height = m_area->height();
    const int bar = std::clamp(ToPixels(picSplit->Within(picSplit->Position())), 0, std::max(0, height - kBarHeight));
    TableMap->setGeometry(0, 0, width, bar);
    picSplit->setGeometry(0, bar, width, kBarHeight);
    mfgFields->setGeometry(0, bar + kBarHeight, width, std::max(0, height - bar - kBarHeight));
}

void frmSQLWizzard::SetupGrid()
{
    const int width = ToTwips(mfgFields->viewport()->width());
    for (int col : {int(wcTable), int(wcField), int(wcOrderBy), int(wcCriteria), int(wcOr1), int(wcOr2), int(wcOr3)})
        mfgFields->SetColWidth(col, width / 10);
    mfgFields->SetColWidth(wcAlias, width / 12);
    mfgFields->SetColWidth(wcGroupBy, m_rows.GroupMode ? kGroupWidth : 0);
    mfgFields->SetColWidth(wcType, 0);
    mfgFields->SetColAlignment(wcShow, flexAlignCenter);
}

void frmSQLWizzard::showEvent(QShowEvent *event)
{
    if (!m_shown) { // it may come up in another size than it was made in
        m_shown = true;
        layout()->activate();
        picSplit->SetPosition(ToTwips(m_area->height() * kMapOf / 100));
        LayOut();
        SetupGrid();
    }
    ModalForm::showEvent(event);
}

bool frmSQLWizzard::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_area && event->type() == QEvent::Resize)
        Attempt([&] { LayOut(); });
    return ModalForm::eventFilter(watched, event);
}

void frmSQLWizzard::keyPressEvent(QKeyEvent *event)
{
    auto *const focus = qobject_cast<QPushButton *>(focusWidget());
    if (event->key() == Qt::Key_F5)
        MenuItem("mnuApply")->trigger();
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && focus)
        focus->click();
    else
        ModalForm::keyPressEvent(event);
}

QAction *frmSQLWizzard::MenuItem(const char *name) const
{
    return mnuTableView->findChild<QAction *>(QLatin1String(name));
}

void frmSQLWizzard::BuildMenu()
{
    mnuTableView = new QMenu(this);
    mnuTableView->setObjectName(QStringLiteral("mnuTableView"));
    const auto add = [this](const char *name, const QString &caption, std::function<void()> run) {
        QAction *action = mnuTableView->addAction(caption);
        action->setObjectName(QLatin1String(name));
        connect(action, &QAction::triggered, this, [run] { Attempt(run); });
        return action;
    };
    add("mnuAddTable", QStringLiteral("Add Table"), [this] { TableMap->AddNewTable(); });
    add("mnuRemoveTable", QStringLiteral("Remove Table"), [this] { TableMap->UnloadTable(); });
    QAction *group = add("mnuGroup", QStringLiteral("Group By"), [] {});
    add("mnuDelete", QStringLiteral("Delete"), [this] { DeleteRow(); });
    add("mnuInsert", QStringLiteral("Insert"), [this] { InsertRow(); });
    add("mnuApply", QStringLiteral("Apply"), [this] { Apply(false); })->setShortcut(QKeySequence(Qt::Key_F5));
    MenuItem("mnuApply")->setShortcutContext(Qt::WidgetShortcut); // shown; the window's own key runs it
    group->setCheckable(true);
    connect(group, &QAction::toggled, this, [this](bool on) { Attempt([&] { SetGroupMode(on); }); });
    ApplySkin(mnuTableView);
}

void frmSQLWizzard::ShowMenu(QWidget *over, const QPoint &at)
{
    mnuTableView->popup(over->mapToGlobal(at));
}

void frmSQLWizzard::SetGroupMode(bool on)
{
    Editors->HideEditors();
    m_rows.GroupMode = on;
    mfgFields->SetColWidth(wcGroupBy, on ? kGroupWidth : 0);
    TextSoon();
}

void frmSQLWizzard::ConnectMap()
{
    m_rows.StatementName = [this](const QString &alias) { return TableMap->StatementName(alias); };
    connect(TableMap, &ucTableMap::TableAdded, this, [this](const MapTable &table) {
        cmbTables->addItem(table.Alias); // nothing takes it out again
        lblHint->clear();
        TextSoon();
    });
    connect(TableMap, &ucTableMap::TableClicked, this, [this](const MapTable &table) {
        Attempt([&] {
            Editors->HideEditors();
            m_rows.TableClicked(table.Alias, table.Items);
            ShowRows();
        });
    });
    connect(TableMap, &ucTableMap::TableRemoved, this, [this](const QString &, const QString &alias) {
        Attempt([&] {
            Editors->HideEditors();
            m_rows.TableRemoved(alias);
            ShowRows();
        });
    });
    connect(TableMap, &ucTableMap::JoinsChanged, this, &frmSQLWizzard::TextSoon);
    connect(TableMap, &ucTableMap::MouseUp, this, [this](int button, int, double x, double y, bool onTable) {
        if (button != kRightButton)
            return;
        MenuItem("mnuDelete")->setEnabled(false);
        MenuItem("mnuInsert")->setEnabled(false);
        MenuItem("mnuRemoveTable")->setEnabled(onTable);
        ShowMenu(TableMap->Hwnd(), {ToPixels(qint64(x)), ToPixels(qint64(y))});
    });
}

WizardResult frmSQLWizzard::JoinedText() const
{
    JoinedWriting writing;
    const ADODB::ConnectionPtr connection = gConn;
    for (int index : TableMap->Tables().Numbers()) {
        const MapTable &table = *TableMap->lvTable(index);
        JoinedSource source{index,
                            table.Alias,
                            TableMap->Tables().SourceName(index),
                            TableMap->StatementName(table.Alias),
                            table.Alias != table.Tag,
                            {}};
        if (source.Written.startsWith(u'(') || source.Reference.startsWith(u'(')) { // a statement has no name yet
            source.Reference = QStringLiteral("T") + QString::number(index);
            source.Named = true;
        }
        for (const MapItem &item : table.Items)
            source.Fields << item.Text;
        writing.Sources.push_back(source);
    }
    if (connection)
        writing.Field = [family = &connection->Family(),
                         quote = connection->Property(QStringLiteral("Identifier Quote")).toString()](
                            const QString &field) { return ADODB::PartName(*family, quote, field); };
    writing.As = !IsOracle();
    return ComposeJoined(m_rows, writing, TableMap->Joins().Rows());
}

void frmSQLWizzard::TextSoon()
{
    m_textTimer->start();
}

void frmSQLWizzard::ShowText()
{
    const QString text = JoinedText().SQLText;
    if (std::exchange(m_text, text) == text) // the colouring's own text may differ
        return;
    txtSQL->SetText(text);
    intColorAll(*txtSQL, QString(), 0);
}

void frmSQLWizzard::Apply(bool joins)
{
    Editors->HideEditors();
    const WizardResult result =
        joins ? JoinedText()
              : ComposeStatement(m_rows, TableMap->GetTableList(), TableMap->GetJoinStatement(IsOracle()));
    ShowRows(); // new names have come into it
    QString why = result.Message ? QString::fromUtf16(result.Message) : QString();
    for (int index : TableMap->Tables().Numbers())
        if (why.isEmpty() && !KeepsInEditor(TableMap->Tables().SourceName(index)))
            why = NotOffered(TableMap->lvTable(index)->Tag);
    if (!why.isEmpty()) {
        MsgBox(why, mbExclamation, QStringLiteral("SQL"), this);
        return;
    }
    SQLText = result.SQLText;
    Finish();
}
