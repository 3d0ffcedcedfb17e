// The schema's tree beside the editor, and the list of names that is made of it.
#include "analyzer/frmGetSQLStructure.h"
#include "analyzer/frmSQL.h"

#include "controls/Attempt.h"
#include "controls/ListView.h"
#include "controls/RedrawLock.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "data/SchemaLoader.h"
#include "data/ServerName.h"
#include "data/modMain.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "sqltext/EditAssist.h"
#include "sqltext/modSQLMaipulation.h"
#include <utility>

namespace {

struct RootRow
{
    const char *key; // and text
    const char *objectType;
    const char *image;
};
constexpr RootRow roots[] = {
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

} // namespace

void frmSQL::BuildTree()
{
    TV = new TreeView(this);
    TV->setObjectName(QStringLiteral("TV"));
    TV->AddSchemaImages();
    TV->setDragDropMode(QAbstractItemView::DragOnly);
    connect(TV, &TreeView::NodeDblClick, this, &frmSQL::TakeNode);
    // A drop has moved the caret to its place. It must end before a dialog can take the mouse.
    connect(txtSQL, &RichTextBox::nodeDropped, this, [this](const QByteArray &key) {
        QTimer::singleShot(0, this, [this, key = QString::fromUtf8(key)] { DropNode(key); });
    });
}

// A field or a procedure stands for its name, a table or a view for a statement of the kind that the user picks.
bool frmSQL::ComposeNode(Node *node, QString &text)
{
    const QPointer<frmSQL> self(this);
    const ADODB::ConnectionPtr connection = gConn;
    const ADODB::ObjectName object = ObjectOf(node);
    const bool table = IsTable(node);
    if (!connection || (!table && node->Depth() != 1)) {
        text = u' ' + (connection && !IsHarmless(object.Name) ? HarmlessName(connection, object.Name) : object.Name) +
               u' ';
        return !table;
    }
    frmGetSQLStructure ask(this);
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

// In at the drop point. A statement is left selected, so that its placeholders are at hand. The dialog and the server
// let events through meanwhile, so the place is where the caret then is.
void frmSQL::DropNode(const QString &key)
{
    Node *node = TV->Nodes().Find(key);
    if (!node || key.isEmpty() || node->Depth() == 0)
        return;
    const bool table = IsTable(node);
    QString text;
    if (!ComposeNode(node, text))
        return;
    PickNode(TV->Nodes().Find(key));
    if (table) {
        const EditText edit = Edited();
        BulkEdit(PlaceStatement(edit.text, edit.selStart, text));
    } else {
        InsertString(text);
    }
    txtSQL->ensureCursorVisible();
    txtSQL->setFocus(); // the user goes on with what was dropped
}

void frmSQL::TakeNode(Node *node)
{
    if (!node || node->Key().isEmpty() || node->Depth() == 0)
        return;
    const QString key = node->Key();
    QString text;
    if (!ComposeNode(node, text))
        return;
    PickNode(TV->Nodes().Find(key));
    InsertString(text);
}

// All four roots and what stands below them. Loading lets events through; a user who stops it stops all of it.
void frmSQL::FillTree()
{
    const QPointer<frmSQL> self(this);
    const RedrawLock lock(TV);
    TV->Nodes().Clear();
    // What was picked in another database is none of this one's.
    const QString source = gConn ? gConn->ConnectionString() : QString();
    if (std::exchange(m_treeSource, source) != source)
        ForgetNodes();
    const int folder = TV->ImageIndex(QStringLiteral("C"));
    const int field = TV->ImageIndex(QStringLiteral("F"));
    bool stopped = false;
    for (const RootRow &row : roots) {
        Node *root = nullptr;
        Attempt([&] {
            const QString name = QString::fromLatin1(row.key);
            root = TV->Nodes().Add(nullptr, tvwLast, name, name, folder, folder);
        });
        const int image = TV->ImageIndex(QString::fromLatin1(row.image));
        if (root && !stopped)
            stopped = !LoadStructure(TV, root, QString::fromLatin1(row.objectType), image, image, field);
        if (!self || m_unloading)
            return;
    }
}

// The names of tables and views in upper case; both roots are opened.
void frmSQL::FillQuickList()
{
    QStringList names;
    lvQuickList->Clear();
    for (const char *key : {"Tables", "Views"}) {
        Node *root = TV->Nodes().Find(QString::fromLatin1(key));
        if (!root)
            continue;
        for (int number = 1; number <= root->Children(); ++number) {
            names += lang::UCase(root->Child(number)->Text());
            lvQuickList->AddItem(names.back());
        }
        root->SetExpanded(true);
    }
    m_quickNames = QuickNames(names);
}
