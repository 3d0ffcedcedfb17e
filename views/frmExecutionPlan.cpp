#include "views/frmExecutionPlan.h"

#include "controls/Attempt.h"
#include "controls/FlexGrid.h"
#include "controls/RedrawLock.h"
#include "controls/Skin.h"
#include "controls/Splitter.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "controls/Twips.h"
#include "views/logic/FamilyPlan.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

namespace {

constexpr int kBorder = 100;   // twips: how near the bar may come to the window's edges
constexpr int kBar = 60;       // its width
constexpr int kHighlight = 15; // of the skin's colours

constexpr const char *kAdvice[] = {"1) Your database suppports this feature.", "2) Your SQL statement is valid.",
                                   "3) This feature supprts your database."};

} // namespace

frmExecutionPlan::frmExecutionPlan(QWidget *parent) : ChildWindow(parent)
{
    SetCaption(QStringLiteral("Execution Plan"));
    TV = new TreeView(this);
    TV->setObjectName(QStringLiteral("TV"));
    TV->setAccessibleName(QStringLiteral("Plan"));
    TV->AddSchemaImages();
    mfg = new FlexGrid(this);
    mfg->setObjectName(QStringLiteral("mfg"));
    mfg->setAccessibleName(QStringLiteral("Plan rows"));
    picSplit = new Splitter(this, spltVertical);
    picSplit->setObjectName(QStringLiteral("picSplit"));
    picSplit->SetBorder(1, kBorder);
    picSplit->SetBorder(3, kBorder);
    SB = new StatusBar(this);
    SB->setObjectName(QStringLiteral("SB"));
    SB->AddPanel(sbrText, true); // the whole text that was explained
    resize(760, 420);
    setFocusProxy(TV);
    connect(picSplit, &Splitter::Moving, this, [this] { LayOut(); });
    connect(picSplit, &Splitter::Moved, this, [this] { LayOut(); });
    ApplySkin(this);
    picSplit->SetPosition(ToTwips(width()) / 2);
    LayOut();
    DisplayError();
}

void frmExecutionPlan::DisplayError()
{
    TV->Nodes().Clear();
    const int image = TV->ImageIndex(QStringLiteral("R"));
    Node *const root = TV->Nodes().Add(nullptr, tvwLast, {},
                                       QStringLiteral("Execution plan could not be displayed please verify:"), image);
    for (const char *const line : kAdvice)
        TV->Nodes().Add(root, tvwChild, {}, QLatin1String(line), image);
    root->SetExpanded(true);
    ColourTree();
}

template <class Reader> void frmExecutionPlan::Explain(const ADODB::RecordsetPtr &Rec, bool &Result, const Reader &read)
{
    Result = false;
    PlanNodes nodes;
    ADODB::RecordsetPtr rows = Rec;
    if (!Attempt([&] { rows = read(nodes); }))
        rows = Rec;
    Attempt([&] { ShowNodes(nodes); });
    ExplainAsIs(rows, Result);
}

void frmExecutionPlan::ExplainSQLServer(const ADODB::RecordsetPtr &Rec, bool &Result)
{
    Explain(Rec, Result, [&](PlanNodes &nodes) {
        ReadServerPlan(*Rec, nodes);
        return Rec;
    });
}

void frmExecutionPlan::ExplainOracle(const ADODB::RecordsetPtr &Rec, bool &Result)
{
    Explain(Rec, Result, [&](PlanNodes &nodes) {
        ReadOraclePlan(*Rec, nodes);
        return Rec;
    });
}

void frmExecutionPlan::ExplainFamily(const ADODB::Family &family, const ADODB::RecordsetPtr &Rec, bool &Result)
{
    Explain(Rec, Result, [&](PlanNodes &nodes) { return ReadFamilyPlan(family, Rec, nodes); });
}

void frmExecutionPlan::ExplainAsIs(const ADODB::RecordsetPtr &Rec, bool &Result)
{
    Result = Attempt([&] {
        mfg->SetDataSource(Rec);
        AutoSize(mfg);
    });
}

void frmExecutionPlan::ShowNodes(const PlanNodes &nodes)
{
    const RedrawLock lock(TV);
    TV->Nodes().Clear();
    for (const PlanNode &each : nodes.All()) {
        Node *const above = each.Parent.isEmpty() ? nullptr : TV->Nodes().Item(each.Parent);
        Node *const node = TV->Nodes().Add(above, above ? tvwChild : tvwLast, each.Key, each.Text);
        node->SetTag(each.Highlight ? QStringLiteral("scan") : QString());
        node->SetBold(each.Costliest);
        node->SetToolTip(each.Text);
    }
    for (const PlanNode &each : nodes.All())
        if (each.Expanded)
            TV->Nodes().Item(each.Key)->SetExpanded(true);
    ColourTree();
}

// The ground is the skin's; a whole table that is read stands out.
void frmExecutionPlan::ColourTree()
{
    for (int number = 1; number <= TV->Nodes().Count(); ++number) {
        Node *const node = TV->Nodes().Item(number);
        node->SetForeColor(node->Tag().isEmpty() ? SkinColour(SkinRole::ListText) : SkinColour(kHighlight));
    }
}

void frmExecutionPlan::mnuCopy()
{
    QString text;
    if (mfg->hasFocus()) {
        text = mfg->Clip();
    } else {
        for (int number = 1; number <= TV->Nodes().Count(); ++number) {
            const Node *const node = TV->Nodes().Item(number);
            text += QString(node->Depth() * 2, QLatin1Char(' ')) + node->Text() + QLatin1String("\r\n");
        }
    }
    QGuiApplication::clipboard()->setText(text);
}

void frmExecutionPlan::resizeEvent(QResizeEvent *event)
{
    ChildWindow::resizeEvent(event);
    picSplit->SetPosition(picSplit->Position()); // within the new edges
    LayOut();
}

void frmExecutionPlan::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        CloseChild();
    else
        ChildWindow::keyPressEvent(event);
}

void frmExecutionPlan::LayOut()
{
    const int bar = ToPixels(kBar), left = ToPixels(picSplit->Position());
    const int status = SB->sizeHint().height(), above = std::max(height() - status, 0);
    TV->setGeometry(0, 0, std::max(left, 0), above);
    picSplit->setGeometry(left, 0, bar, above);
    mfg->setGeometry(left + bar, 0, std::max(width() - left - bar, 0), above);
    SB->setGeometry(0, above, width(), status);
}
