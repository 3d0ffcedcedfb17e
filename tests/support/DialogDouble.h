#pragma once
// Stands in for the desktop's dialogs while it lives: notes what would have been asked and gives prepared answers.
//
//     DialogDouble dialogs;
//     dialogs.Answers << mbNo;
//     window.mnuSave();
//     EXPECT_EQ(dialogs.Boxes.last().Title, "Save");
//
// Answers are used up in order; where none is left a message box gets its first button, every other dialog is
// cancelled.

#include "controls/Dialogs.h"
#include <QList>
#include <QStringList>
#include <functional>

class DialogDouble : public DialogService
{
public:
    DialogDouble() : m_former(Install(this)) {}
    ~DialogDouble() override { Install(m_former); }

    QList<int> Answers; // of message boxes
    QStringList Inputs; // of input boxes
    QStringList Files;  // of file dialogs; "" cancels
    bool PrintAnswer = false;
    std::function<int(const MsgBoxRequest &)> OnBox; // when set, answers instead of Answers

    QList<MsgBoxRequest> Boxes;
    QList<InputBoxRequest> InputBoxes;
    QList<FileDialogRequest> FileDialogs;
    int PrintDialogs = 0;

    int MsgBox(const MsgBoxRequest &request, QWidget *) override
    {
        Boxes << request;
        if (OnBox)
            return OnBox(request);
        if (!Answers.isEmpty())
            return Answers.takeFirst();
        switch (request.Buttons) {
        case mbAbortRetryIgnore:
            return mbAbort;
        case mbYesNoCancel:
        case mbYesNo:
            return mbYes;
        case mbRetryCancel:
            return mbRetry;
        default:
            return mbOK;
        }
    }
    bool InputBox(const InputBoxRequest &request, QString &text, QWidget *) override
    {
        InputBoxes << request;
        if (Inputs.isEmpty())
            return false;
        text = Inputs.takeFirst();
        return true;
    }
    QString FileDialog(const FileDialogRequest &request, QWidget *) override
    {
        FileDialogs << request;
        return Files.isEmpty() ? QString() : Files.takeFirst();
    }
    bool PrintDialog(QPrinter &, QWidget *) override
    {
        ++PrintDialogs;
        return PrintAnswer;
    }

    QString LastText() const { return Boxes.isEmpty() ? QString() : Boxes.last().Text; }
    QString LastTitle() const { return Boxes.isEmpty() ? QString() : Boxes.last().Title; }

private:
    DialogService *m_former;
};
