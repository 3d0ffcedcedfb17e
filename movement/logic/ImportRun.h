#pragma once
// The import of a flat file, line by line, into whatever takes rows. What fails is counted and logged, or ends the run,
// by the tolerance. Runs on a worker; the questions between the phases belong to the window.
//
// The first line is never imported, and without "Use First Line as Column Names" no line is: it is meant. Line numbers
// count from 1 and pass over blank lines.

#include "movement/logic/RefusalLog.h"
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <vector>

class LineReader;

// Takes the rows. Every operation may raise ADODB::Error.
class ImportTarget
{
public:
    virtual ~ImportTarget() = default;
    virtual void AddNew() = 0;
    virtual void SetField(int field, QByteArrayView utf8) = 0; // of the row that AddNew began
    virtual void Update() = 0;
};

struct ImportPlan
{
    QString Delimiter;
    bool FirstIsNames = false;
    int Columns = 0;          // of the file
    std::vector<int> FieldOf; // for each file column the target's field, -1 where it is not mapped
    QStringList FieldNames;   // of the target, for the log
    qint64 Tolerance = 0;     // errors that are passed over; -1: all
};

// The whole number that the tolerance box holds.
qint64 ToleranceOf(const QString &text);
// Does this many errors end the import?
bool ExceedsTolerance(qint64 errors, qint64 tolerance);

class ImportRun
{
public:
    enum class Ending
    {
        Finished,
        Exceeded, // the errors have exceeded the tolerance
        Stopped   // goOn said so
    };

    ImportRun(ImportPlan plan, ImportTarget &target) : m_plan(std::move(plan)), m_target(target) {}

    // `goOn` is asked before each line. Raises LineReader::Failure.
    Ending Lines(LineReader &reader, const std::function<bool()> &goOn);

    // An error of what comes behind the lines (commit, batch): counted like those of a line. True when it ends the run.
    bool Fails(const QString &why);

    qint64 LineNumber() const { return m_number; }
    qint64 Errors() const { return m_errors; }
    qint64 RowsTaken() const { return m_rows; }            // those whose Update succeeded
    qint64 RowsIncomplete() const { return m_incomplete; } // of them, those that lack a field which was refused
    qint64 LinesTooLong() const { return m_tooMany; }      // with more fields than the file has columns
    const RefusalLog &Log() const { return m_log; }
    const QString &LastStraw() const { return m_lastStraw; } // of the error that ended the run, as the log would say it

private:
    bool Step(const std::function<void()> &step, const QString &field = {}); // false when it ends the run
    QString Entry(const QString &why) const;
    bool Row(const std::vector<QByteArrayView> &fields);
    void Note(const QString &why);

    ImportPlan m_plan;
    ImportTarget &m_target;
    RefusalLog m_log;
    QString m_lastStraw;
    qint64 m_number = 1, m_errors = 0, m_rows = 0, m_incomplete = 0, m_tooMany = 0;
    bool m_failed = false; // the last step
};
