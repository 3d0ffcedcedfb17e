#include "analyzer/frmSQL.h"

#include "analyzer/NodeHistory.h"
#include "analyzer/QueryFiles.h"
#include "analyzer/QueryRunner.h"
#include "analyzer/QueryText.h"
#include "analyzer/QuickPane.h"
#include "analyzer/RunLog.h"
#include "analyzer/RunResults.h"
#include "analyzer/SchemaTree.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "controls/Skin.h"
#include "controls/Splitter.h"
#include "controls/TreeView.h"
#include "controls/Twips.h"
#include "data/clsConns.h"
#include "frame/Shell.h"
#include <QResizeEvent>
#include <utility>

namespace {

constexpr int kSplitWidth = 5; // pixels
constexpr int kFirstTreeWidth = 220;
constexpr int kLeastPart = 750; // twips that the splitter leaves to each side

} // namespace

frmSQL::frmSQL(QWidget *parent) : ChildWindow(parent), m_treeWidth(kFirstTreeWidth)
{
    Tag = QStringLiteral("1");
    SetCaption(QStringLiteral("SQL Analyzer: "));
    txtSQL = new RichTextBox(this);
    txtSQL->setObjectName(QStringLiteral("txtSQL"));
    txtSQL->setAccessibleName(QStringLiteral("SQL"));
    picSplit = new Splitter(this, spltVertical);
    picSplit->setObjectName(QStringLiteral("picSplit"));
    picSplit->SetBorder(1, kLeastPart);
    picSplit->SetBorder(3, kLeastPart);
    m_text = std::make_unique<QueryText>(txtSQL);
    tmrParseBrackets = m_text->Brackets().Timer();
    m_log = std::make_unique<RunLog>();
    m_history = std::make_unique<NodeHistory>();
    m_results = std::make_unique<RunResults>(this, this);
    m_runner = std::make_unique<QueryRunner>(this, *m_text, *m_log, *m_results);
    m_tree = std::make_unique<SchemaTree>(this, *m_text, *m_history);
    TV = m_tree->View();
    m_quick = std::make_unique<QuickPane>(this, *m_text);
    lvQuickList = m_quick->List();
    m_files = std::make_unique<QueryFiles>(this, *m_text);
    setFocusProxy(txtSQL);
    resize(700, 420);

    for (QWidget *widget : {static_cast<QWidget *>(txtSQL), static_cast<QWidget *>(TV),
                            static_cast<QWidget *>(picSplit), static_cast<QWidget *>(lvQuickList), txtSQL->viewport()})
        widget->installEventFilter(this);
    connect(txtSQL, &RichTextBox::contextRequested, this,
            [](const QPoint &position) { Shell::Current().ShowMenu(QStringLiteral("mnuEdit"), position); });
    connect(m_quick.get(), &QuickPane::Toggled, this, &frmSQL::LayOut);
    const auto move = [this](int twips) {
        m_treeWidth = width() - ToPixels(twips) - kSplitWidth;
        LayOut();
    };
    connect(picSplit, &Splitter::Moving, this, move);
    connect(picSplit, &Splitter::Moved, this, move);
    ApplySkin(this);
}

frmSQL::~frmSQL() = default;

// The tree keeps its width when the window grows.
void frmSQL::LayOut()
{
    const int left = std::clamp(width() - m_treeWidth - kSplitWidth, 0, std::max(0, width() - kSplitWidth));
    int textWidth = left;
    if (lvQuickList->isVisibleTo(this)) {
        textWidth = left * 70 / 100;
        lvQuickList->setGeometry(textWidth, 0, left * 30 / 100, height());
    }
    txtSQL->setGeometry(0, 0, textWidth, height());
    picSplit->setGeometry(left, 0, kSplitWidth, height());
    TV->setGeometry(left + kSplitWidth, 0, std::max(0, width() - left - kSplitWidth), height());
}

void frmSQL::resizeEvent(QResizeEvent *event)
{
    ChildWindow::resizeEvent(event);
    LayOut();
}

QString frmSQL::Text() const
{
    return m_text->Text();
}

bool frmSQL::SetText(const QString &text)
{
    return m_text->SetText(text);
}

QString frmSQL::RunText() const
{
    return m_text->RunText();
}

QString frmSQL::FileName() const
{
    return m_files->FileName();
}

void frmSQL::SetConnName(const QString &name)
{
    m_ConnName = name;
    m_runner->SetConnName(name);
}

void frmSQL::Load()
{
    const QPointer<frmSQL> self(this);
    if (!m_ConnName.isEmpty())
        SetCaption(QStringLiteral("SQL Analyzer: [") + m_ConnName + u']');
    // From here on it is the window's text: a save while the tree is read must not put an empty one in its place.
    if (const clsConn *stored = m_ConnName.isEmpty() ? nullptr : gConns().Item(m_ConnName))
        m_text->Promise(stored->Extra);
    m_tree->Fill();
    if (!self || m_unloading)
        return;
    m_quick->Fill(m_tree->OpenNames());
    const bool first = !std::exchange(m_loaded, true) && txtSQL->Text().isEmpty();
    const clsConn *conn = m_ConnName.isEmpty() ? nullptr : gConns().Item(m_ConnName);
    m_text->TakeStored(conn ? conn->Extra : QString());
    if (self && first)
        m_text->BeginHere(); // it begins with the text that the window was opened with
}

void frmSQL::SaveState()
{
    m_text->EndBracketShow();
    if (clsConn *conn = m_ConnName.isEmpty() ? nullptr : gConns().Item(m_ConnName))
        conn->Extra = m_text->Text();
}

// A scratch window follows the connection with its tree alone: its text belongs to no connection, and stays.
void frmSQL::RefreshForm(const QString &connectionName)
{
    SaveState();
    if (!m_ConnName.isEmpty()) {
        // A file belongs to the text. Another connection's text must not end up in it.
        const clsConn *conn = gConns().Item(connectionName);
        if (connectionName.compare(m_ConnName, Qt::CaseInsensitive) != 0 && conn && !conn->Extra.isEmpty())
            m_files->Forget();
        SetConnName(connectionName);
    } else if (Caption().endsWith(u']') && !connectionName.isEmpty()) {
        SetCaption(QStringLiteral("SQL Analyzer: [") + connectionName + u']'); // whoever made it named the connection
    }
    Load();
}

void frmSQL::Unload()
{
    m_unloading = true;
    m_tree->Stop();
    m_runner->Cancel();
    SaveState();
    m_history->Hide();
}

void frmSQL::ActivateOwner()
{
    ShowChild();
    txtSQL->setFocus();
}
