#pragma once
// The list of names beside the editor: it opens at the word that is being typed, and puts the chosen name in its place.
//
// It makes its list, a child of `window`, and takes the window's keys that reach the list through KeyDown. Interface
// thread; nothing raises.

#include "sqltext/QuickList.h"
#include <QObject>

class ListView;
class QKeyEvent;
class QWidget;
class QueryText;

class QuickPane : public QObject
{
    Q_OBJECT
public:
    QuickPane(QWidget *window, QueryText &text);

    ListView *List() const { return m_list; }
    void Fill(const QStringList &names); // in place of the former ones
    // With the item of the longest beginning of the word at the caret. Without one the list stands at its top, with
    // nothing selected.
    void Open();
    void Close();                   // the keyboard goes back to the editor when the list has it
    void Take();                    // the chosen name into the text; without one the list just closes
    bool KeyDown(QKeyEvent *event); // false: the key is the list's own

signals:
    void Toggled(); // the list was shown or hidden: the window lays itself out anew

private:
    QueryText &m_text;
    ListView *m_list;
    QuickNames m_names; // of the list, so that opening it reads neither list nor server
};
