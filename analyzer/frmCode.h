#pragma once
// A statement as a quoted string of program code, in colours, with a choice of quote, prefix and postfix.
//
// A free window beside the main window: there is one, and it is used again while it is open. It deletes itself when it
// closes. The choices are the settings "Quote", "Prefix" and "Postfix". Interface thread; nothing raises.

#include <QDialog>
#include <QString>

class QComboBox;
class QPushButton;
class RichTextBox;

class frmCode : public QDialog
{
    Q_OBJECT
public:
    explicit frmCode(QWidget *parent = nullptr);

    void MakeVBString(const QString &text);        // shows that text as code
    static frmCode *ShowCode(const QString &text); // in the open window, else in a new one

    QComboBox *cmbQuote = nullptr, *cmbPrefix = nullptr, *cmbPostfix = nullptr;
    RichTextBox *txtCode = nullptr;
    QPushButton *cmdRun = nullptr, *cmdClipBoard = nullptr, *cmdClose = nullptr;

private:
    void StoreChoices();
    void ShowAgain();
    void Copy();

    QString m_text;
};

// The plain code of a text by the stored choices.
QString PlainCodeAsStored(const QString &text);
