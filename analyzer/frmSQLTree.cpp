// The schema's tree beside the editor, and the list of names that is made of it.
#include "analyzer/frmSQL.h"

#include "controls/Attempt.h"
#include "controls/ListView.h"
#include "controls/RedrawLock.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "data/SchemaLoader.h"
#include "lang/Text.h"
#include "sqltext/modSQLMaipulation.h"

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

} // namespace

void frmSQL::BuildTree()
{
    TV = new TreeView(this);
    TV->setObjectName(QStringLiteral("TV"));
    TV->AddSchemaImages();
    TV->setDragDropMode(QAbstractItemView::DragOnly);
    connect(TV, &TreeView::NodeDblClick, this, &frmSQL::TakeNode);
    // A drop has moved the caret to its place.
    connect(txtSQL, &RichTextBox::nodeDropped, this,
            [this](const QByteArray &key) { TakeNode(TV->Nodes().Find(QString::fromUtf8(key))); });
}

// A node stands for a name in the text: a field as it is, an object so that a statement can use it.
void frmSQL::TakeNode(Node *node)
{
    if (!node || node->Key().isEmpty() || node->Depth() == 0)
        return;
    PickNode(node);
    const QString name = node->Depth() == 1 ? QuoteName(node->Text()) : node->Text();
    InsertString(u' ' + name + u' ');
}

// All four roots and what stands below them. Loading lets events through.
void frmSQL::FillTree()
{
    const QPointer<frmSQL> self(this);
    const RedrawLock lock(TV);
    TV->Nodes().Clear();
    const int folder = TV->ImageIndex(QStringLiteral("C"));
    const int field = TV->ImageIndex(QStringLiteral("F"));
    for (const RootRow &row : roots) {
        Node *root = nullptr;
        Attempt([&] {
            const QString name = QString::fromLatin1(row.key);
            root = TV->Nodes().Add(nullptr, tvwLast, name, name, folder, folder);
        });
        const int image = TV->ImageIndex(QString::fromLatin1(row.image));
        if (root)
            LoadStructure(TV, root, QString::fromLatin1(row.objectType), image, image, field);
        if (!self || m_unloading)
            return;
    }
}

// The names of tables and views in upper case; both roots are opened.
void frmSQL::FillQuickList()
{
    lvQuickList->Clear();
    for (const char *key : {"Tables", "Views"}) {
        Node *root = TV->Nodes().Find(QString::fromLatin1(key));
        if (!root)
            continue;
        for (Node *node = root->Child(); node; node = node->Next())
            lvQuickList->AddItem(lang::UCase(node->Text()));
        root->SetExpanded(true);
    }
}
