#pragma once
// A text box for a value of any size: the first part shows at once, the rest comes in pieces between events.
//
// A line of many thousand characters is kept as several blocks, since Qt lays out a block as a whole; these
// breaks are the box's own and are in no text that it gives. Lines end with LF in the texts given and taken. Interface
// thread; nothing raises.

#include "ado/CellReader.h"
#include <QBasicTimer>
#include <QPlainTextEdit>
#include <functional>
#include <optional>

class LongTextBox : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit LongTextBox(QWidget *parent = nullptr);

    void Show(ADODB::CellReader text); // in place of what is there
    void Clear();                      // and gives the memory back
    bool IsComplete() const { return m_text.AtEnd(); }
    qint64 CharactersMade() const { return m_made; } // of the text that shows, so far

    QString SelectedText() const;
    // All of the text, also what has not come yet. keepOn is asked between pieces, and false ends with nothing.
    std::optional<QString> WholeText(const std::function<bool()> &keepOn = {}) const;

signals:
    void Progress(int percent); // a long text comes; 100 once it is all there, or was cleared away

protected:
    void timerEvent(QTimerEvent *event) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    QString NextLines(qint64 most); // the next piece, with LF alone as line end
    void Append(const QString &lines);
    void Stop();
    QString Between(int from, int to) const;

    ADODB::CellReader m_text;  // what has not come yet
    bool m_heldReturn = false; // a CR ended the last piece: an LF may follow
    qint64 m_made = 0;
    QBasicTimer m_next;
};
