#include "visual/JoinFields.h"

#include "controls/Attempt.h"
#include "data/SchemaLoader.h"
#include "data/modMain.h"
#include "session/Work.h"
#include "visual/logic/JoinClause.h"
#include <QComboBox>

namespace {

QStringList FieldsOf(ADODB::Connection &connection, const QString &query)
{
    const auto empty = connection.Execute(query, nullptr, ADODB::adOneStatement);
    QStringList fields;
    if (empty && empty->State() == ADODB::adStateOpen)
        for (int i = 0; i < empty->ColumnCount(); ++i)
            fields << empty->Column(i).Name;
    return fields;
}

// Raises what the last text raised.
QStringList FirstAnswer(ADODB::Connection &connection, const QStringList &queries)
{
    for (qsizetype i = 0; i < queries.size(); ++i) {
        try {
            return FieldsOf(connection, queries[i]);
        } catch (const ADODB::Error &error) {
            if (i + 1 == queries.size() || error.Number == ADODB::adErrOperationCancelled)
                throw;
        }
    }
    return {};
}

QStringList Texts(const QComboBox *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->itemText(i);
    return texts;
}

bool Read(const QString &status, QWidget *window, const std::function<void(const ADODB::ConnectionPtr &)> &read)
{
    const ADODB::ConnectionPtr connection = gConn;
    if (!connection || connection->State() != ADODB::adStateOpen)
        return false;
    QString why; // said nowhere: an empty list tells
    return Attempt(
        [&] {
            Work::Options options;
            options.status = [&] { return status; };
            options.input = PumpInput::EscapeOnly;
            options.window = window;
            Work::On(connection, QStringLiteral("the fields of a join"))->Run(options, [&] { read(connection); });
        },
        &why);
}

} // namespace

std::optional<QStringList> ReadFields(const FieldQueries &compose, QWidget *window)
{
    QStringList fields;
    const bool read =
        Read(QStringLiteral("Reading the fields ... (Esc stops)"), window,
             [&](const ADODB::ConnectionPtr &connection) { fields = FirstAnswer(*connection, compose(connection)); });
    return read ? std::optional(fields) : std::nullopt;
}

std::vector<ADODB::ObjectName> ReadTables(QWidget *window)
{
    std::vector<ADODB::ObjectName> tables;
    Read(QStringLiteral("Reading the tables ... (Esc stops)"), window, [&](const ADODB::ConnectionPtr &connection) {
        const auto rowset = connection->OpenSchema(ADODB::adSchemaTables);
        for (rowset->SetFilter(QStringLiteral("TABLE_TYPE = 'TABLE'")); !rowset->Eof(); rowset->MoveNext())
            tables.push_back(ObjectOfRow(*rowset, connection->Family()));
    });
    return tables;
}

QString NamedStatement(const QString &inBrackets)
{
    return inBrackets + QStringLiteral(" TempTableX");
}

void ShowFields(QComboBox *list, const QStringList &names)
{
    list->addItems(names);
    list->setCurrentIndex(list->count() ? 0 : -1);
}

void ChooseMatch(QComboBox *first, QComboBox *second)
{
    if (const std::optional<FieldMatch> match = FindMatch(Texts(first), Texts(second))) {
        first->setCurrentIndex(match->First);
        second->setCurrentIndex(match->Second);
    }
}
