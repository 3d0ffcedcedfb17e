#pragma once
// "Help": the user's manual, which is built into the program. Not modal; one window, kept by the main window.
//
// On the left the pages, above them the search: what is typed leaves the pages that hold it, with their hits counted,
// shows the first hit and marks all of them; Return or F3 goes on to the next one, Shift+F3 back, from page to page.
// Escape empties the search, and closes the window when it is empty. Interface thread; nothing is raised.

#include <QList>
#include <QString>
#include <QWidget>

class ListView;
class QLineEdit;
class QTextBrowser;

class frmHelp : public QWidget
{
    Q_OBJECT
public:
    explicit frmHelp(QWidget *parent = nullptr);

    static QStringList Pages();                     // names of the pages that are built in, "index" first
    static QString Title(const QString &page);      // its heading
    static QString PageOf(const QString &formName); // the page that tells of this window; "index" for any other

    void ShowPage(const QString &page = QStringLiteral("index")); // and the window
    QString Page() const { return m_page; }
    // The places of a text in the page that is shown, without regard to case.
    QList<int> Hits(const QString &text) const;

    QLineEdit *txtSearch = nullptr;
    ListView *lvPages = nullptr; // Tag: the page's name
    QTextBrowser *txtPage = nullptr;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Load(const QString &page);
    void ListPages(); // those that hold what is searched, or all
    void Search();
    void Step(int by);
    void Mark();
    void ColourLinks();
    QString m_page;
    int m_hit = -1; // number of the hit that is shown, -1 for none
    bool m_listing = false;
};
