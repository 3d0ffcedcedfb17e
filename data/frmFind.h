#pragma once
// "Find": the one search dialog. It collects what to look for and which action was asked for, and searches nothing
// itself. Made fresh for each showing: the lists' newest entry, the two check boxes and the place come from the
// settings.
//
// Usage: frmFind find; find.EnableReplace(true); find.SetCriteria(selection); find.ShowModal(); if (!find.Cancelled)
// ...

#include "frame/ModalForm.h"
#include "sqltext/FindText.h"
#include <QString>

class QCheckBox;
class QComboBox;
class QPushButton;

class frmFind : public ModalForm
{
    Q_OBJECT
public:
    explicit frmFind(QWidget *parent = nullptr);
    ~frmFind() override;

    bool ExactMatch = false;
    bool CaseSensitive = false;
    QString Criteria;
    QString OptionText;
    QString ReplaceWith; // "" after Find Next
    bool DoReplace = false;
    bool DoReplaceAll = false;

    void EnableReplace(bool Enabled); // off at first; switching it off clears the text to replace with
    void SetCriteria(const QString &text);

    QComboBox *cmbCri = nullptr, *cmbReplace = nullptr, *cmbOpt = nullptr;
    QCheckBox *chkCase = nullptr, *chkExact = nullptr;
    QPushButton *cmdFind = nullptr, *cmdReplace = nullptr, *cmdReplaceAll = nullptr, *cmdCancel = nullptr;

protected:
    void showEvent(QShowEvent *event) override; // the stored place, else the middle of the screen
    void done(int result) override;             // by whatever way it goes, its place is kept

private:
    void Take(bool replace, bool all);
    void SaveLists() const;
};

// Shows a fresh one and gives what the user chose; `replacing`: with what a replacement needs. An empty `criteria`
// leaves the newest entry.
FindAnswer AskFind(QWidget *parent, bool replacing, const QString &criteria);
