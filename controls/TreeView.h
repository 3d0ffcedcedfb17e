#pragma once
// A tree of nodes with unique keys. Owned by its parent; the tree owns its nodes. Interface thread.
//
// Nodes count from 1 in the order in which they were added; removing one moves those behind it up. Keys compare
// exactly; an empty key is no key. Adding a key that is there raises ControlError 35602 and changes nothing; asking for
// a key or number that is not there raises 35601 or 35600.

#include <QHash>
#include <QIcon>
#include <QTreeWidget>
#include <QVariant>
#include <vector>

class TreeView;

enum TreeRelationship
{
    tvwFirst = 0,
    tvwLast = 1,
    tvwNext = 2,
    tvwPrevious = 3,
    tvwChild = 4
};

class Node : private QTreeWidgetItem
{
public:
    QString Key() const { return m_key; }
    void SetKey(const QString &key);
    QString Text() const { return text(0); }
    void SetText(const QString &value) { setText(0, value); }
    QString Tag() const { return m_tag; }
    void SetTag(const QString &value) { m_tag = value; }
    // What the caller keeps beside: neither shown nor looked at here.
    QVariant ItemData() const { return m_itemData; }
    void SetItemData(const QVariant &value) { m_itemData = value; }
    int Image() const { return m_image; } // number in the tree's image list, 0 for none
    void SetImage(int image);
    int SelectedImage() const { return m_selectedImage; }
    void SetSelectedImage(int image) { m_selectedImage = image; }
    int Index() const; // from 1
    void SetToolTip(const QString &value) { setToolTip(0, value); }
    void SetForeColor(const QColor &color);
    void SetBold(bool on);

    Node *Parent() const; // null at the root
    Node *Root() const;   // the top-level node above, or this
    int Children() const { return childCount(); }
    Node *Child(int number = 1) const; // from 1; null behind the last
    Node *Next() const;                // the next sibling or null
    Node *Previous() const;
    int Depth() const; // 0 at the root

    bool Expanded() const { return isExpanded(); }
    void SetExpanded(bool on) { setExpanded(on); }
    bool Selected() const;
    void SetSelected(bool on);
    void EnsureVisible(); // opens the nodes above and scrolls

private:
    friend class TreeView;
    friend class TreeNodes;
    Node() : QTreeWidgetItem(UserType + 1) {}
    TreeView *Owner() const;
    static Node *From(QTreeWidgetItem *item);

    QString m_key, m_tag;
    QVariant m_itemData;
    int m_image = 0, m_selectedImage = 0;
    mutable int m_index = 0;
};

class TreeNodes
{
public:
    int Count() const { return int(m_order.size()); }
    // Null `relative`: at the root's end. `image` 0: none; `selectedImage` 0: as `image`.
    Node *Add(Node *relative, int relationship, const QString &key, const QString &text, int image = 0,
              int selectedImage = 0);
    Node *Item(int index) const; // from 1
    Node *Item(const QString &key) const;
    Node *Find(const QString &key) const; // null when it is not there
    void Remove(Node *node);              // with all nodes below it
    void Remove(const QString &key) { Remove(Item(key)); }
    void Clear();

private:
    friend class TreeView;
    friend class Node;
    explicit TreeNodes(TreeView *tree) : m_tree(tree) {}
    void Renumber() const;
    TreeView *m_tree;
    std::vector<Node *> m_order;
    QHash<QString, Node *> m_byKey;
    mutable bool m_numbered = true;
};

class TreeView : public QTreeWidget
{
    Q_OBJECT
public:
    explicit TreeView(QWidget *parent = nullptr);
    ~TreeView() override;

    TreeNodes &Nodes() { return m_nodes; }
    const TreeNodes &Nodes() const { return m_nodes; }
    Node *SelectedItem() const; // null when nothing is selected
    void SetSelectedItem(Node *node);
    Node *HitTest(const QPoint &viewportPosition) const;

    int AddImage(const QString &key, const QIcon &icon); // numbers count from 1
    int ImageIndex(const QString &key) const;            // 0 when it is not there
    void AddSchemaImages(); // "C" "T" "V" "P" "N" "F" "R" "L", as the schema's trees use them

signals:
    void NodeClick(Node *node);
    void NodeDblClick(Node *node);
    void NodeSelected(Node *node); // by whatever means; null when none is
    void NodeExpand(Node *node);
    void NodeCollapse(Node *node);

protected:
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;
    QMimeData *mimeData(const QList<QTreeWidgetItem *> &items) const override; // the texts, a line each

private:
    friend class Node;
    friend class TreeNodes;
    TreeNodes m_nodes;
    std::vector<QIcon> m_images;
    QStringList m_imageKeys;
};
