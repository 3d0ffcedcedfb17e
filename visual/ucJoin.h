#pragma once
// One step in a chain of joins: what came before, a table or a statement, and how the two meet, as a fragment of a FROM
// clause. A component; no window of the program has it.
//
// The lists are read from gConn beside the living windows; what cannot be read leaves its list empty. The table box
// takes a typed text too; its fields are read when it is left, or on Return. Interface thread; nothing is raised.

#include "ado/ObjectName.h"
#include "visual/logic/JoinClause.h"
#include <QWidget>

#include <optional>
#include <vector>

class QComboBox;
class QLineEdit;

class ucJoin : public QWidget
{
    Q_OBJECT
public:
    explicit ucJoin(QWidget *parent = nullptr);

    int Step = 0; // its number in the chain, which names the aliases

    void SetPreviousTag(const QString &Text); // a table or a statement; reads its fields
    void Populate();                          // the tables of the connection; the first one is chosen
    QString GetSQL() const;

    QLineEdit *txtPrevious = nullptr;
    QComboBox *cmbTable = nullptr, *cmbJoin = nullptr, *cmbOperator = nullptr;
    QComboBox *cmbField[2] = {};

private:
    JoinClause Clause() const;
    std::optional<ADODB::ObjectName> Picked() const; // nothing for a typed text
    void ReadPrevious();
    void ReadTable(); // when the box has changed since the last time
    std::vector<ADODB::ObjectName> m_tables;
};
