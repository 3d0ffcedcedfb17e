#include "analyzer/frmSQL.h"

#include "controls/ListView.h"
#include "controls/RedrawLock.h"
#include "controls/RichTextBox.h"
#include "controls/Skin.h"
#include "controls/Splitter.h"
#include "controls/TreeView.h"
#include "controls/Twips.h"
#include "data/clsConns.h"
#include "frame/Shell.h"
#include "session/Work.h"
#include "views/frmHirarchy.h"
#include <QHeaderView>
#include <QResizeEvent>
#include <utility>

namespace {

constexpr int splitWidth = 5; // pixels
constexpr int firstTreeWidth = 220;
constexpr int leastPart = 750; // twips that the splitter leaves to each side

} // namespace

frmSQL::frmSQL(QWidget *parent) : ChildWindow(parent)
{
    Tag = QStringLiteral("1");
    SetCaption(QStringLiteral("SQL Analyzer: "));
    txtSQL = new RichTextBox(this);
    txtSQL->setObjectName(QStringLiteral("txtSQL"));
    txtSQL->setAccessibleName(QStringLiteral("SQL"));
    picSplit = new Splitter(this, spltVertical);
    picSplit->setObjectName(QStringLiteral("picSplit"));
    picSplit->SetBorder(1, leastPart);
    picSplit->SetBorder(3, leastPart);
    BuildTree();
    TV->setAccessibleName(QStringLiteral("Structure of the database"));
    lvQuickList = new ListView(this);
    lvQuickList->setObjectName(QStringLiteral("lvQuickList"));
    lvQuickList->setAccessibleName(QStringLiteral("Names"));
    lvQuickList->AddColumn(QString());
    lvQuickList->setHeaderHidden(true);
    lvQuickList->header()->setStretchLastSection(true); // its one column is as wide as the list
    lvQuickList->hide();
    tmrParseBrackets = new QTimer(this);
    tmrParseBrackets->setInterval(BraceShow::FirstInterval);
    m_treeWidth = firstTreeWidth;
    m_clock.start();
    setFocusProxy(txtSQL);
    resize(700, 420);

    for (QWidget *widget : {static_cast<QWidget *>(txtSQL), static_cast<QWidget *>(TV),
                            static_cast<QWidget *>(picSplit), static_cast<QWidget *>(lvQuickList), txtSQL->viewport()})
        widget->installEventFilter(this);
    connect(txtSQL, &RichTextBox::changed, this, &frmSQL::OnChanged);
    connect(txtSQL, &RichTextBox::edited, this, &frmSQL::OnEdited);
    connect(txtSQL, &RichTextBox::undoRequested, this, &frmSQL::mnuUndo);
    connect(txtSQL, &RichTextBox::filesDropped, this, &frmSQL::OpenFiles);
    connect(txtSQL, &RichTextBox::contextRequested, this,
            [](const QPoint &position) { Shell::Current().ShowMenu(QStringLiteral("mnuEdit"), position); });
    connect(tmrParseBrackets, &QTimer::timeout, this, &frmSQL::TickBrackets);
    connect(lvQuickList, &ListView::DblClick, this, &frmSQL::TakeFromQuickList);
    const auto move = [this](int twips) {
        m_treeWidth = width() - ToPixels(twips) - splitWidth;
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
    const int left = std::clamp(width() - m_treeWidth - splitWidth, 0, std::max(0, width() - splitWidth));
    int textWidth = left;
    if (lvQuickList->isVisibleTo(this)) {
        textWidth = left * 70 / 100;
        lvQuickList->setGeometry(textWidth, 0, left * 30 / 100, height());
    }
    txtSQL->setGeometry(0, 0, textWidth, height());
    picSplit->setGeometry(left, 0, splitWidth, height());
    TV->setGeometry(left + splitWidth, 0, std::max(0, width() - left - splitWidth), height());
}

void frmSQL::resizeEvent(QResizeEvent *event)
{
    ChildWindow::resizeEvent(event);
    LayOut();
}

QString frmSQL::Text() const
{
    return m_coming ? EditorText::Normalised(*m_coming) : txtSQL->Text();
}

bool frmSQL::SetText(const QString &text)
{
    if (text.size() > AtOnce || m_bringing)
        return SetLongText(text, true);
    m_coming.reset();
    m_InParse = true;
    txtSQL->SetText(text);
    m_InParse = false;
    FixText(true, true, 2);
    m_journey.Seal();
    return true;
}

void frmSQL::Load()
{
    const QPointer<frmSQL> self(this);
    if (!m_ConnName.isEmpty())
        SetCaption(QStringLiteral("SQL Analyzer: [") + m_ConnName + u']');
    // From here on it is the window's text: a save while the tree is read must not put an empty one in its place.
    if (const clsConn *stored = m_ConnName.isEmpty() ? nullptr : gConns().Item(m_ConnName);
        stored && !stored->Extra.isEmpty() && !m_bringing)
        m_coming = stored->Extra;
    FillTree();
    if (!self || m_unloading)
        return;
    FillQuickList();
    const bool first = !std::exchange(m_loaded, true) && txtSQL->Text().isEmpty();
    const clsConn *conn = m_ConnName.isEmpty() ? nullptr : gConns().Item(m_ConnName);
    if (conn && conn->Extra.size() > AtOnce)
        SetLongText(conn->Extra, false); // what the store holds must not give way to an empty editor
    else if (conn && !conn->Extra.isEmpty())
        SetText(conn->Extra);
    else if (!m_bringing)
        m_coming.reset();
    if (self && first)
        m_journey.Clear(); // it begins with the text that the window was opened with
}

void frmSQL::SaveState()
{
    EndBracketShow();
    if (clsConn *conn = m_ConnName.isEmpty() ? nullptr : gConns().Item(m_ConnName))
        conn->Extra = Text();
}

// A scratch window follows the connection with its tree alone: its text belongs to no connection, and stays.
void frmSQL::RefreshForm(const QString &connectionName)
{
    SaveState();
    if (!m_ConnName.isEmpty()) {
        // A file belongs to the text. Another connection's text must not end up in it.
        const clsConn *conn = gConns().Item(connectionName);
        if (connectionName.compare(m_ConnName, Qt::CaseInsensitive) != 0 && conn && !conn->Extra.isEmpty())
            m_FileName.clear();
        m_ConnName = connectionName;
    } else if (Caption().endsWith(u']') && !connectionName.isEmpty()) {
        SetCaption(QStringLiteral("SQL Analyzer: [") + connectionName + u']'); // whoever made it named the connection
    }
    Load();
}

void frmSQL::Unload()
{
    m_unloading = true;
    if (const auto work = m_work.lock())
        work->Cancel();
    SaveState();
    RemoveHistoryBar();
}

void frmSQL::ActivateOwner()
{
    ShowChild();
    txtSQL->setFocus();
}
