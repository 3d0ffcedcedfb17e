#include "controls/TreeView.h"
#include "controls/ControlError.h"
#include "controls/RowDelegate.h"
#include "controls/ucIconMaker.h"
#include <QMimeData>
#include <QPainter>
#include <algorithm>

namespace {
[[noreturn]] void RaiseNotUnique()
{
    throw ControlError(ctlErrKeyNotUnique, QStringLiteral("Key is not unique in collection"));
}
} // namespace

Node *Node::From(QTreeWidgetItem *item)
{
    return static_cast<Node *>(item);
}

TreeView *Node::Owner() const
{
    return static_cast<TreeView *>(treeWidget());
}

void Node::SetKey(const QString &key)
{
    if (key == m_key)
        return;
    QHash<QString, Node *> &keys = Owner()->Nodes().m_byKey;
    if (!key.isEmpty() && keys.contains(key))
        RaiseNotUnique();
    if (!m_key.isEmpty())
        keys.remove(m_key);
    m_key = key;
    if (!key.isEmpty())
        keys.insert(key, this);
}

void Node::SetImage(int image)
{
    m_image = image;
    const std::vector<QIcon> &images = Owner()->m_images;
    QIcon icon;
    if (image >= 1 && size_t(image) <= images.size())
        icon = images[size_t(image) - 1];
    setIcon(0, icon);
}

int Node::Index() const
{
    Owner()->Nodes().Renumber();
    return m_index;
}

void Node::SetForeColor(const QColor &color)
{
    setForeground(0, color.isValid() ? QBrush(color) : QBrush());
}

void Node::SetBold(bool on)
{
    QFont bold = font(0);
    bold.setBold(on);
    setFont(0, bold);
}

Node *Node::Parent() const
{
    return From(parent());
}

Node *Node::Root() const
{
    const Node *node = this;
    while (const Node *const above = node->Parent())
        node = above;
    return const_cast<Node *>(node);
}

Node *Node::Child(int number) const
{
    return From(child(number - 1));
}

static QTreeWidgetItem *Sibling(QTreeWidgetItem *item, int step)
{
    QTreeWidgetItem *const above = item->parent() ? item->parent() : item->treeWidget()->invisibleRootItem();
    return above->child(above->indexOfChild(item) + step);
}

Node *Node::Next() const
{
    return From(Sibling(const_cast<Node *>(this), 1));
}

Node *Node::Previous() const
{
    return From(Sibling(const_cast<Node *>(this), -1));
}

int Node::Depth() const
{
    int depth = 0;
    for (const Node *above = Parent(); above; above = above->Parent())
        ++depth;
    return depth;
}

bool Node::Selected() const
{
    return Owner()->SelectedItem() == this;
}

void Node::SetSelected(bool on)
{
    if (on)
        Owner()->SetSelectedItem(this);
    else if (Selected())
        Owner()->SetSelectedItem(nullptr);
}

void Node::EnsureVisible()
{
    for (Node *above = Parent(); above; above = above->Parent())
        above->SetExpanded(true);
    Owner()->scrollToItem(this);
}

Node *TreeNodes::Add(Node *relative, int relationship, const QString &key, const QString &text, int image,
                     int selectedImage)
{
    if (!key.isEmpty() && m_byKey.contains(key))
        RaiseNotUnique();
    Node *const node = new Node;
    node->setText(0, text);
    QTreeWidgetItem *above = m_tree->invisibleRootItem();
    int place = above->childCount();
    if (relative) {
        above = relationship == tvwChild ? static_cast<QTreeWidgetItem *>(relative)
                : relative->parent()     ? relative->parent()
                                         : above;
        place = relationship == tvwChild || relationship == tvwLast ? above->childCount()
                : relationship == tvwFirst                          ? 0
                                           : above->indexOfChild(relative) + (relationship == tvwNext ? 1 : 0);
    }
    if (image >= 1 && size_t(image) <= m_tree->m_images.size())
        node->setIcon(0, m_tree->m_images[size_t(image) - 1]);
    node->m_image = image;
    node->m_selectedImage = selectedImage > 0 ? selectedImage : image;
    above->insertChild(place, node);
    m_order.push_back(node);
    node->m_index = int(m_order.size());
    node->m_key = key;
    if (!key.isEmpty())
        m_byKey.insert(key, node);
    return node;
}

Node *TreeNodes::Item(int index) const
{
    if (index < 1 || index > Count())
        throw ControlError(ctlErrIndex, QStringLiteral("Index out of bounds"));
    return m_order[size_t(index) - 1];
}

Node *TreeNodes::Item(const QString &key) const
{
    Node *const node = Find(key);
    if (!node)
        throw ControlError(ctlErrElementNotFound, QStringLiteral("Element not found"));
    return node;
}

Node *TreeNodes::Find(const QString &key) const
{
    return key.isEmpty() ? nullptr : m_byKey.value(key);
}

// Numbers are set right when somebody asks, so that removing many nodes stays quick.
void TreeNodes::Renumber() const
{
    if (m_numbered)
        return;
    for (size_t i = 0; i < m_order.size(); ++i)
        m_order[i]->m_index = int(i) + 1;
    m_numbered = true;
}

void TreeNodes::Remove(Node *node)
{
    if (!node)
        throw ControlError(ctlErrElementNotFound, QStringLiteral("Element not found"));
    std::vector<Node *> doomed{node};
    for (size_t i = 0; i < doomed.size(); ++i) {
        for (int child = 1; child <= doomed[i]->Children(); ++child)
            doomed.push_back(doomed[i]->Child(child));
        if (!doomed[i]->m_key.isEmpty())
            m_byKey.remove(doomed[i]->m_key);
    }
    Renumber();
    for (Node *const gone : doomed)
        gone->m_index = 0;
    std::erase_if(m_order, [](const Node *candidate) { return candidate->m_index == 0; });
    m_numbered = false;
    // Taken out whole first: whoever hears of the change of the current node still meets a living one.
    QTreeWidgetItem *const item = node;
    QTreeWidgetItem *const above = item->parent() ? item->parent() : m_tree->invisibleRootItem();
    above->removeChild(item);
    delete item;
}

void TreeNodes::Clear()
{
    m_order.clear();
    m_byKey.clear();
    m_numbered = true;
    m_tree->clear();
}

TreeView::TreeView(QWidget *parent) : QTreeWidget(parent), m_nodes(this)
{
    setColumnCount(1);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new RowDelegate(this));
    setAccessibleName(QStringLiteral("Tree"));
    connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) { emit NodeClick(Node::From(item)); });
    connect(this, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem *item) { emit NodeDblClick(Node::From(item)); });
    connect(this, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem *item) { emit NodeExpand(Node::From(item)); });
    connect(this, &QTreeWidget::itemCollapsed, this,
            [this](QTreeWidgetItem *item) { emit NodeCollapse(Node::From(item)); });
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem *now, QTreeWidgetItem *before) {
        const auto show = [this](QTreeWidgetItem *item, int image) {
            if (image >= 1 && size_t(image) <= m_images.size())
                item->setIcon(0, m_images[size_t(image) - 1]);
        };
        if (before && Node::From(before)->m_index != 0)
            show(before, Node::From(before)->m_image);
        if (now)
            show(now, Node::From(now)->m_selectedImage);
        emit NodeSelected(Node::From(now));
    });
}

TreeView::~TreeView()
{
    disconnect();
}

Node *TreeView::SelectedItem() const
{
    QTreeWidgetItem *const item = currentItem();
    return item && item->isSelected() ? Node::From(item) : nullptr;
}

void TreeView::SetSelectedItem(Node *node)
{
    setCurrentItem(static_cast<QTreeWidgetItem *>(node));
    if (!node)
        clearSelection();
}

Node *TreeView::HitTest(const QPoint &viewportPosition) const
{
    return Node::From(itemAt(viewportPosition));
}

int TreeView::AddImage(const QString &key, const QIcon &icon)
{
    m_images.push_back(icon);
    m_imageKeys << key;
    return int(m_images.size());
}

int TreeView::ImageIndex(const QString &key) const
{
    return int(m_imageKeys.indexOf(key)) + 1;
}

void TreeView::AddSchemaImages()
{
    ucIconMaker icons;
    const int count = icons.MakeIcons();
    for (int image = 1; image <= count; ++image)
        AddImage(icons.Key(image), icons.Image(image));
}

QMimeData *TreeView::mimeData(const QList<QTreeWidgetItem *> &items) const
{
    QStringList texts;
    for (QTreeWidgetItem *const item : items)
        texts << item->text(0);
    auto *const mime = new QMimeData;
    mime->setText(texts.join(QStringLiteral("\r\n")));
    // The editor takes a node by its key, which says what the name stands for.
    if (const Node *node = items.isEmpty() ? nullptr : Node::From(items.front()))
        mime->setData(QStringLiteral("application/x-brindlewick-node"), node->Key().toUtf8());
    return mime;
}

// The triangle of a row that opens, in the row's own text colour: the style's would vanish on a selected row.
void TreeView::drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const
{
    if (!model()->hasChildren(index))
        return;
    const bool selected = selectionModel()->isSelected(index);
    const QPointF middle(rect.right() - indentation() / 2.0, rect.center().y() + 0.5);
    QPolygonF shape;
    if (isExpanded(index))
        shape << middle + QPointF(-4.5, -2) << middle + QPointF(4.5, -2) << middle + QPointF(0, 3.5);
    else
        shape << middle + QPointF(-2, -4.5) << middle + QPointF(-2, 4.5) << middle + QPointF(3.5, 0);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(palette().color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawPolygon(shape);
    painter->restore();
}
