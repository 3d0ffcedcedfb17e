#pragma once
// The copying of rows from a source into a destination, by a mapping, with a tolerance. Runs on a worker.
//
// A tolerance of 0 and one of -1 stop nothing; one above 0 stops at the error that exceeds it. After an error the row
// that was being added is given up, and the remaining fields and the Update of that row meet none: they pass silently,
// the row is counted and the source moves on. It is meant; what really is in the destination is told apart.

#include "ado/Value.h"
#include "movement/logic/MappingValue.h"
#include "movement/logic/RefusalLog.h"
#include <QString>
#include <functional>
#include <vector>

// The two sides. Every operation may raise ADODB::Error.
class TransferSource
{
public:
    virtual ~TransferSource() = default;
    virtual bool AtEnd() = 0;
    virtual ADODB::Value Value(const QString &field) = 0; // of the current row
    virtual void MoveNext() = 0;
};
class TransferTarget
{
public:
    virtual ~TransferTarget() = default;
    virtual void AddNew() = 0;
    virtual void SetField(const QString &field, const ADODB::Value &value) = 0;
    virtual void Update() = 0;
    virtual void CancelUpdate() = 0; // gives the row up that AddNew began
};

struct TransferColumn
{
    QString Field; // of the destination
    QString Mapping;
};

// Does so many errors stop the transfer? `tolerance` is the text of its box.
bool StopsTransfer(qint64 errors, const QString &tolerance);

// The last box: title, and text with the count in the singular or the plural.
struct TransferReport
{
    QString Title, Text;
};
TransferReport ReportOf(bool import, qint64 count);

class TransferRun
{
public:
    enum class Ending
    {
        Finished,
        TooManyErrors,
        Stopped
    };

    TransferRun(std::vector<TransferColumn> columns, QString tolerance, TransferSource &source, TransferTarget &target);

    bool MapsNothing() const; // then no row is copied

    // `goOn` is asked before each row.
    Ending Rows(const std::function<bool()> &goOn);

    // An error outside the rows (opening, the batch), through the same handler. False when the tolerance is used up.
    bool Failed(int number, const QString &description);

    qint64 Count() const { return m_count; } // the rows that the report counts
    qint64 Added() const { return m_added; } // those that the destination took
    qint64 Errors() const { return m_errors; }
    qint64 RowNumber() const { return m_row; } // of the source, from 1
    const RefusalLog &Log() const { return m_log; }

private:
    bool Handle(int number, const QString &description, const QString &place);
    bool Step(const std::function<void()> &step);
    bool Row();

    struct Mapped
    {
        QString field;
        MappingValue value;
    };
    std::vector<Mapped> m_columns;
    QString m_tolerance;
    TransferSource &m_source;
    TransferTarget &m_target;
    RefusalLog m_log;
    qint64 m_count = 0, m_added = 0, m_errors = 0, m_row = 0;
    bool m_adding = false; // a row is being added
};
