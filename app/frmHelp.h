#pragma once
// "Help": the user's manual, which is built into the program. Not modal; one window, kept by the main window.

#include <QWidget>

class QTextBrowser;

class frmHelp : public QWidget
{
    Q_OBJECT
public:
    explicit frmHelp(QWidget *parent = nullptr);
    static QStringList Pages(); // names of the pages that are built in, "index" first

    void ShowPage(const QString &page = QStringLiteral("index"));
    QTextBrowser *txtPage = nullptr;

protected:
    void keyPressEvent(QKeyEvent *event) override; // Escape closes

private:
    void ColourLinks();
};
