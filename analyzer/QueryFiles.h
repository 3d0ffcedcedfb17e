#pragma once
// The query files of an Analyzer: plain texts that its editor is written to and read from. The text belongs to the file
// that it was opened from or saved to last.
//
// Dialogs stand over `window`, and say what the system refuses; the text then stays. It is safe to be deleted while one
// is open. Interface thread, the disk is read on another; nothing raises.

#include <QObject>
#include <QStringList>

class QWidget;
class QueryText;

class QueryFiles : public QObject
{
    Q_OBJECT
public:
    QueryFiles(QWidget *window, QueryText &text);

    QString FileName() const { return m_FileName; } // "" until saved or opened
    void Forget() { m_FileName.clear(); }           // the text is another one now
    // As it stands, with CR LF; asked for a name only once. `filter` of the dialog: "" is that of query files.
    void Save(const QString &filter);
    void Open();
    void Append(const QStringList &files); // behind what is there, each after a blank line
    void Print();                          // with the colours

private:
    bool Read(const QString &path, QString &text);

    QWidget *m_window;
    QueryText &m_text;
    QString m_FileName;
};
