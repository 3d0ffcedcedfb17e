#pragma once
// The schema's tree beside the editor: four roots with the objects of the current connection and their fields. What is
// picked in it, by a double click or a drop into the text, goes into the text and the History Bar.
//
// It makes its view, a child of `window`. Filling and composing read the server while events come in, and these may
// close the window: it is safe to be deleted meanwhile. Interface thread; nothing raises.

#include <QObject>
#include <QPointer>
#include <QStringList>

class Node;
class NodeHistory;
class QWidget;
class QueryText;
class TreeView;

class SchemaTree : public QObject
{
    Q_OBJECT
public:
    SchemaTree(QWidget *window, QueryText &text, NodeHistory &history);

    TreeView *View() const { return m_tree; }
    // All roots and what stands below them, anew; another database's picked nodes are forgotten. A user who stops the
    // reading of one root stops all of it.
    void Fill();
    void Stop();             // the window goes: a Fill that is under way reads no further root
    QStringList OpenNames(); // of tables and views, in upper case; opens both roots
    // The node's text goes in at the caret. A statement is left selected, so that its placeholders are at hand.
    void Drop(const QString &nodeKey);
    void Take(Node *node);               // the same by a double click, with nothing selected
    void Reveal(const QString &nodeKey); // selects it, in sight and open

private:
    bool Compose(Node *node, QString &text); // asks what a table shall become; false when nothing goes into the text

    QWidget *m_window;
    QueryText &m_text;
    NodeHistory &m_history;
    TreeView *m_tree;
    QString m_source; // connection string of the tree's database
    bool m_stopped = false;
};
