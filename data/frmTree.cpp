#include "data/frmTree.h"
#include "controls/Icons.h"
#include "controls/Skin.h"
#include "controls/TreeView.h"
#include "data/SchemaLoader.h"
#include "data/modListView.h"
#include "frame/SaveDialog.h"
#include <QTimer>
#include <QVBoxLayout>

frmTree::frmTree(QWidget *parent) : ChildWindow(parent)
{
    Tag = QStringLiteral("1");
    SetCaption(QStringLiteral("Tree"));
    tvTree = new TreeView(this);
    tvTree->setObjectName(QStringLiteral("tvTree"));
    tvTree->setAccessibleName(QStringLiteral("Structure"));
    tvTree->AddImage(QStringLiteral("T"), TreeIcon(QStringLiteral("T"))); // image 1: a table
    tvTree->AddImage(QStringLiteral("S"), TreeIcon(QStringLiteral("T"))); // image 2: the same, selected
    tvTree->AddImage(QStringLiteral("F"), TreeIcon(QStringLiteral("F"))); // image 3: a field
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(tvTree);
    resize(340, 480);
    setFocusProxy(tvTree);
    ApplySkin(this);
}

void frmTree::Load()
{
    m_loaded = true;
    tvTree->Nodes().Clear();
    LoadStructure(tvTree, nullptr, QStringLiteral("TABLE"), 1, 2, 3);
}

void frmTree::showEvent(QShowEvent *event)
{
    ChildWindow::showEvent(event);
    if (m_loaded)
        return;
    m_loaded = true;
    QTimer::singleShot(0, this, &frmTree::Load); // the window shows first, then fills
}

void frmTree::RefreshForm(const QString &)
{
    Load();
}

QStringList frmTree::Lines(const QList<QPair<QString, QString>> &nodes)
{
    QStringList lines{QStringLiteral("Table,Field,")};
    for (const auto &[text, parent] : nodes)
        if (!parent.isEmpty())
            lines << parent + QLatin1Char(',') + text + QLatin1Char(',');
    return lines;
}

bool frmTree::SaveFile(const QString &Path)
{
    QList<QPair<QString, QString>> nodes;
    for (int i = 1; i <= tvTree->Nodes().Count(); ++i) {
        const Node *node = tvTree->Nodes().Item(i);
        nodes << qMakePair(node->Text(), node->Parent() ? node->Parent()->Text() : QString());
    }
    const QStringList lines = Lines(nodes);
    return WriteTextLines(this, Path, lines.size(), [&](qint64 line) { return lines[line]; });
}

void frmTree::mnuSave()
{
    const QString path = AskSavePath(this, QStringLiteral("Save CSV File"),
                                     QStringLiteral("Comma Seperated File [*.csv]|*.csv|Text File [*.txt]|*.txt"),
                                     QStringLiteral("CSV"));
    if (!path.isEmpty())
        SaveFile(path);
}
