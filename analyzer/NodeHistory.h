#pragma once
// The History Bar: the nodes of a schema tree that the user picked, in the order of picking, as a group of the side bar
// while its window is the active one. Without a side bar the nodes are kept and nothing shows. Interface thread;
// nothing raises.

#include <QList>
#include <QString>

class NodeHistory
{
public:
    void Show(); // the group anew
    void Hide();
    void Pick(const QString &nodeKey, const QString &text); // a node is listed once, however often it is picked
    void Forget();                                          // every node
    QString NodeOf(const QString &entryKey) const; // the node behind an entry of the group; "" for a strange one

private:
    struct PickedNode
    {
        QString text, key;
    };
    QList<PickedNode> m_NodeHistory;
    bool m_shown = false;
};
