#pragma once
// What the two join editors share: they read the fields of a table or statement, and the tables, from gConn beside the
// living windows, which take no input meanwhile but the Escape that gives it up, and show them in lists. What is
// refused, and a connection that is not open, give nothing and no message. Interface thread; nothing is raised.

#include "ado/ObjectName.h"
#include "ado/Recordset.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

class QComboBox;
class QWidget;

// Composes the texts to be tried, in their order; a further one is sent only when those before it were refused. Called
// on a worker, where it may ask the server and may raise.
using FieldQueries = std::function<QStringList(const ADODB::ConnectionPtr &connection)>;

// `window`: where an Escape gives up; may go meanwhile, as whoever called may: look before you use the answer.
std::optional<QStringList> ReadFields(const FieldQueries &compose, QWidget *window);

// All tables that are no views: the objects behind the names.
std::vector<ADODB::ObjectName> ReadTables(QWidget *window);

// A statement in round brackets, with the name that some servers want behind them.
QString NamedStatement(const QString &inBrackets);

void ShowFields(QComboBox *list, const QStringList &names); // behind what it shows; the first one is chosen
void ChooseMatch(QComboBox *first, QComboBox *second);      // the first pair of equal texts, if any
