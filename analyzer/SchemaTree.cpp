#include "analyzer/SchemaTree.h"

#include "analyzer/NodeHistory.h"
#include "analyzer/QueryText.h"
#include "analyzer/frmGetSQLStructure.h"
#include "controls/Attempt.h"
#include "controls/RedrawLock.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "data/SchemaLoader.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "sqltext/modSQLMaipulation.h"
#include <QTimer>
#include <utility>

namespace {

struct RootRow
{
    const char *key; // and text
    const char *objectType;
    const char *image;
};
constexpr RootRow kRoots[] = {
    {"Tables", "TABLE", "T"},
    {"Views", "VIEW", "V"},
    {"Procedures", "PROCEDURE", "P"},
    {"Functions", "FUNCTION", "N"},
};

// Does it stand for a table or a view?
bool IsTable(const Node *node)
{
    if (node->Depth() != 1)
        return false;
    const QString root = node->Parent()->Key();
    return root == QLatin1String("Tables") || root == QLatin1String("Views");
}

bool CanBePicked(const Node *node)
{
    return node && !node->Key().isEmpty() && node->Depth() > 0;
}

} // namespace

SchemaTree::SchemaTree(QWidget *window, QueryText &text, NodeHistory &history)
    : m_window(window), m_text(text), m_history(history), m_tree(new TreeView(window))
{
    m_tree->setObjectName(QStringLiteral("TV"));
    m_tree->setAccessibleName(QStringLiteral("Structure of the database"));
    m_tree->AddSchemaImages();
    m_tree->setDragDropMode(QAbstractItemView::DragOnly);
    connect(m_tree, &TreeView::NodeDblClick, this, &SchemaTree::Take);
    // A drop has moved the caret to its place. It must end before a dialog can take the mouse.
    connect(text.Editor(), &RichTextBox::nodeDropped, this, [this](const QByteArray &key) {
        QTimer::singleShot(0, this, [this, key = QString::fromUtf8(key)] { Drop(key); });
    });
}

// A field or a procedure stands for its name, a table or a view for a statement of the kind that the user picks.
bool SchemaTree::Compose(Node *node, QString &text)
{
    const QPointer<SchemaTree> self(this);
    const ADODB::ConnectionPtr connection = gConn;
    const ADODB::ObjectName object = ObjectOf(node);
    const bool table = IsTable(node);
    if (!connection || (!table && node->Depth() != 1)) {
        text = u' ' + (connection && !IsHarmless(object.Name) ? HarmlessName(connection, object.Name) : object.Name) +
               u' ';
        return !table;
    }
    frmGetSQLStructure ask(m_window);
    if (table) {
        ask.ShowModal();
        if (ask.Cancelled || !self)
            return false;
    }
    QString name;
    if (!Attempt([&] { name = OfferedName(connection, object); }) || !self)
        return false;
    if (name.isEmpty()) {
        ::SetStatus(NotOffered(object.Name));
        return false;
    }
    text = u' ' + name + u' ';
    if (!table)
        return true;
    QStringList kept;
    const QString fields = GetFieldList(connection, object, QStringLiteral(", "), &kept);
    text = FormatStatementKeeping(SkeletonOf(ask.Options(), name, fields), kept << name);
    return self;
}

// The dialog and the server let events through meanwhile, so the place is where the caret then is, and the node is
// looked for once more.
void SchemaTree::Drop(const QString &nodeKey)
{
    Node *node = m_tree->Nodes().Find(nodeKey);
    if (!CanBePicked(node))
        return;
    const bool table = IsTable(node);
    QString text;
    if (!Compose(node, text))
        return;
    if (const Node *picked = m_tree->Nodes().Find(nodeKey))
        m_history.Pick(nodeKey, picked->Text());
    const EditText edit = m_text.Edited();
    m_text.Bulk(table ? PlaceStatement(edit.text, edit.selStart, text) : InsertString(edit, text));
    m_text.Editor()->ensureCursorVisible();
    m_text.Editor()->setFocus(); // the user goes on with what was dropped
}

void SchemaTree::Take(Node *node)
{
    if (!CanBePicked(node))
        return;
    const QString key = node->Key();
    QString text;
    if (!Compose(node, text))
        return;
    if (const Node *picked = m_tree->Nodes().Find(key))
        m_history.Pick(key, picked->Text());
    m_text.Bulk(InsertString(m_text.Edited(), text));
}

void SchemaTree::Fill()
{
    const QPointer<SchemaTree> self(this);
    const RedrawLock lock(m_tree);
    m_tree->Nodes().Clear();
    // What was picked in another database is none of this one's.
    const QString source = gConn ? gConn->ConnectionString() : QString();
    if (std::exchange(m_source, source) != source)
        m_history.Forget();
    const int folder = m_tree->ImageIndex(QStringLiteral("C"));
    const int field = m_tree->ImageIndex(QStringLiteral("F"));
    bool stopped = false;
    for (const RootRow &row : kRoots) {
        Node *root = nullptr;
        Attempt([&] {
            const QString name = QString::fromLatin1(row.key);
            root = m_tree->Nodes().Add(nullptr, tvwLast, name, name, folder, folder);
        });
        const int image = m_tree->ImageIndex(QString::fromLatin1(row.image));
        if (root && !stopped)
            stopped = !LoadStructure(m_tree, root, QString::fromLatin1(row.objectType), image, image, field);
        if (!self || m_stopped)
            return;
    }
}

void SchemaTree::Stop()
{
    m_stopped = true;
}

QStringList SchemaTree::OpenNames()
{
    QStringList names;
    for (const char *key : {"Tables", "Views"}) {
        Node *root = m_tree->Nodes().Find(QString::fromLatin1(key));
        if (!root)
            continue;
        for (int number = 1; number <= root->Children(); ++number)
            names += lang::UCase(root->Child(number)->Text());
        root->SetExpanded(true);
    }
    return names;
}

void SchemaTree::Reveal(const QString &nodeKey)
{
    Node *node = m_tree->Nodes().Find(nodeKey);
    if (!node)
        return;
    m_tree->SetSelectedItem(node);
    node->EnsureVisible();
    node->SetExpanded(true);
}
