#pragma once
// "SQL Wizzard": composes a SELECT from a map of tables above and a grid of fields below. It runs nothing and changes
// nothing; who shows it takes the text.
//
//     frmSQLWizzard form(window);
//     form.TableMap->AddTable("Orders"); // if there is a first table
//     form.ShowModal();
//     if (!form.Cancelled) ... form.SQLText ...
//
// "Apply" gives the joins as conditions of WHERE, "Apply as Joins" in FROM; the text of the latter is shown as it
// grows. What the rows do is WizardRows', what they say WizardStatement's and JoinedStatement's. Interface thread;
// nothing is raised.

#include "frame/ModalForm.h"
#include "visual/logic/JoinedStatement.h"

class DropList;
class FlexGrid;
class FlexGridEditor;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QTimer;
class RichTextBox;
class Splitter;
class ucTableMap;

class frmSQLWizzard : public ModalForm
{
    Q_OBJECT
public:
    explicit frmSQLWizzard(QWidget *parent = nullptr);
    ~frmSQLWizzard() override;

    QString SQLText; // the result, unless Cancelled

    const WizardRows &Rows() const { return m_rows; }
    WizardResult JoinedText() const; // what "Apply as Joins" would give

    ucTableMap *TableMap = nullptr;
    Splitter *picSplit = nullptr;
    FlexGrid *mfgFields = nullptr;
    FlexGridEditor *Editors = nullptr;
    QComboBox *cmbTables = nullptr, *cmbGroupBy = nullptr, *cmbOrderBy = nullptr;
    DropList *cmbFields = nullptr;
    QLineEdit *txtAlias = nullptr, *txtCriteria = nullptr;
    QCheckBox *chkShow = nullptr;
    RichTextBox *txtSQL = nullptr;
    QLabel *lblHint = nullptr;
    QPushButton *cmdApply = nullptr, *cmdJoins = nullptr, *cmdCancel = nullptr;
    QMenu *mnuTableView = nullptr;

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // The window.
    void BuildGrid();
    void BuildMenu();
    void LayOut();
    void SetupGrid(); // widths
    void ShowMenu(QWidget *over, const QPoint &at);
    QAction *MenuItem(const char *name) const;
    void Apply(bool joins);
    void ShowText();
    void TextSoon();

    // The grid and its editors.
    void ConnectEditors();
    void ShowRows(); // the grid as the rows are
    void SetEditRow(qint64 row);
    void FillEditor(QWidget *editor, qint64 row, int col);
    void TakeEditor(QWidget *editor, qint64 row, int col);
    void TakeField(int row, const QString &field);
    void Write(int row, int col, const QString &text);
    void ReadFieldList();
    void FollowCheck(const QString &table, const QString &field);
    void ConnectMap();
    void DropField();
    void DeleteRow();
    void InsertRow();
    void SetGroupMode(bool on);

    WizardRows m_rows;
    QString m_text; // what txtSQL was given
    int m_editRow = 0;
    bool m_filling = false; // an editor takes the cell's text
    bool m_shown = false;
    QWidget *m_area = nullptr; // holds map, bar and grid
    QTimer *m_textTimer = nullptr;
};
