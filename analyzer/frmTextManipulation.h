#pragma once
// A generated text in a plain editor that can save it. A free window with a menu of its own, no child of the work area.
//
// It deletes itself when it closes. Escape closes it as long as nothing has been typed that no file holds.
// Interface thread; nothing raises: a file that cannot be written is told, and the text stays.

#include <QMainWindow>
#include <QString>

class QAction;
class RichTextBox;

class frmTextManipulation : public QMainWindow
{
    Q_OBJECT
public:
    explicit frmTextManipulation(QWidget *parent = nullptr);

    void SetText(const QString &text);  // any kind of line end
    bool SaveFile(const QString &path); // the text as it is, UTF-8; false when it failed
    void Save();                        // to the file of the last time; asks for one when there is none
    void SaveAs();
    void Find(); // from hit to hit, starting behind the caret

    RichTextBox *etb = nullptr;
    QAction *mnuSave = nullptr, *mnuSaveAS = nullptr, *mnuFind = nullptr, *mnuExit = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString m_fileName; // "" before the first save
    QString m_safe;     // the text as it was given or saved last
};
