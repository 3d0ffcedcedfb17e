#pragma once
// A whole transfer of rows from one connection into a table on another: what the window's "Next" does once its grid is
// read. Runs on a worker; raises nothing. No transaction is used: the batch is the only unit.

#include "ado/Connection.h"
#include "movement/logic/RowTarget.h"
#include <atomic>
#include <functional>
#include <vector>

struct TransferOrder
{
    bool Import = false;
    ADODB::ConnectionPtr From, To;
    std::function<QString()> Source, Target; // the statements over both tables; asked on the worker
    std::vector<TransferColumn> Columns;
    QString Tolerance; // the text of its box
};

struct TransferProgress
{
    enum Phase
    {
        Reads,
        Copies,
        Sends
    };
    std::atomic<int> At = Reads;
    std::atomic<qint64> Rows = 0, Total = 0;
};
QString ProgressText(const TransferProgress &progress);

struct TransferOutcome
{
    TransferRun::Ending Ending = TransferRun::Ending::Finished;
    qint64 Count = 0;   // what the report says
    qint64 In = 0;      // what is in the destination
    qint64 Refused = 0; // rows that are not, because they were refused
    qint64 Unsent = 0;  // rows of which nothing is known to be in
    qint64 Errors = 0;
    QString Log;
};

// `goOn` is asked again and again; false stops.
TransferOutcome RunTransfer(const TransferOrder &order, TransferProgress &progress, const std::function<bool()> &goOn);

// What the status bar says at the end.
QString StatusOf(const TransferOutcome &outcome);
