#pragma once
// A whole import of a flat file, from the transaction's begin to the batch: what the window's "Import" does once its
// boxes are read. Runs on a worker, as a part of the work on the connection; raises nothing.
//
// The transaction is committed before the rows are sent, which is meant: it guards nothing that a refused row could
// leave behind. What really is in the table is told by the outcome.

#include "ado/Connection.h"
#include "movement/logic/RowTarget.h"
#include <QStringList>
#include <atomic>
#include <functional>

struct ImportOrder
{
    ADODB::ConnectionPtr Connection;
    std::function<QString()> Source; // the statement over the table; asked on the worker
    QString File, Delimiter;
    bool FirstIsNames = false;
    QStringList Mapping; // for each column of the file the table's field, "" where it is not mapped
    QString Tolerance;   // the text of its box
};

// How far it has come; read by anybody.
struct ImportProgress
{
    enum Phase
    {
        Begins,
        Reads,
        Commits,
        Sends
    };
    std::atomic<int> At = Begins;
    std::atomic<qint64> Rows = 0, Bytes = 0, BytesTotal = 0;
};
QString ProgressText(const ImportProgress &progress);

struct ImportTalk
{
    std::function<bool()> GoOn;               // asked again and again; false stops
    std::function<bool()> WithoutTransaction; // none can be begun: go on without one?
};

struct ImportOutcome
{
    enum EndingEnum
    {
        Declined, // no transaction, and none wanted without
        NoFile,   // none is named
        Missing,  // the file that is named is not there
        Failed,   // it cannot go on; Why says so
        Exceeded, // the errors have exceeded the tolerance
        Stopped,  // by the user
        Finished
    } Ending = Failed;
    QString Why;
    bool OfFile = false;     // the failure is the file's
    bool RolledBack = false; // a transaction was open at the end, and was taken back
    qint64 In = 0;           // rows that are in the table
    qint64 Refused = 0;      // rows that are not, because they were refused
    qint64 Incomplete = 0;   // of the rows, those that go without a field that was refused
    qint64 TooLong = 0;      // lines with more fields than the file has columns
    qint64 Unsent = 0;       // rows of which nothing is known to be in
    QString Log;             // every line that was refused, with its reason
};

ImportOutcome RunImport(const ImportOrder &order, ImportProgress &progress, const ImportTalk &talk);

// What the status bar says at the end.
QString StatusOf(const ImportOutcome &outcome);
