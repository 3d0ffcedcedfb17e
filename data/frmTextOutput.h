#pragma once
// "Text Output": a text, scrollable, savable, printable. Escape closes it. The text comes as RTF body text: what is not
// escaped by the caller ("\", "{", "}") works as RTF. That is meant: reports come
// with colours and headings of their own.

#include "frame/ChildWindow.h"

class QPrinter;
class RichTextBox;

class frmTextOutput : public ChildWindow
{
    Q_OBJECT
public:
    explicit frmTextOutput(QWidget *parent = nullptr);

    ChildNames Answers() const override { return AnswersOf<frmTextOutput>(); }

    static QString GetHeader();
    // The whole document that SetText gives the box: header, colour table, start, "D" colour, body.
    static QString Document(const QString &Text);
    void SetText(const QString &Text);
    QString PlainText() const;
    void ShowModal(QWidget *parent = nullptr); // the same window inside a modal dialog, deleted when it closes

    void mnuSave() override;
    void mnuPrint() override; // preview, and from there the printer
    void PrintTo(QPrinter *printer) const;

    RichTextBox *txtResult = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
