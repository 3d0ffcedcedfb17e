#pragma once
// The rows that an import or a transfer adds to a table: a recordset in which they wait, typed as the table's columns
// are, until Send hands them to the server in one batch. One thread at a time, which is a worker; raises ADODB::Error.

#include "ado/Recordset.h"
#include "movement/logic/ImportRun.h"
#include "movement/logic/TransferRun.h"
#include <QHash>
#include <functional>
#include <optional>

class RowTarget : public ImportTarget, public TransferTarget
{
public:
    // Which row of the file or of the source is being added; asked at each Update.
    std::function<qint64()> NumberOf;

    // `source`: a statement over the table. What it reads is passed over: rows are only added.
    void Open(const ADODB::ConnectionPtr &connection, const QString &source);
    bool IsOpen() const { return m_rows != nullptr; }
    void SetNames(const QStringList &names) { m_names = names; } // of the fields that SetField takes by number

    void AddNew() override;
    void SetField(int field, QByteArrayView utf8) override; // by SetNames
    void SetField(const QString &field, const ADODB::Value &value) override;
    void Update() override;
    void CancelUpdate() override;

    struct Refusal
    {
        qint64 Number = 0; // as NumberOf said
        QString Why;       // the driver's words
    };
    // What has become of the rows.
    struct Outcome
    {
        std::optional<ADODB::Error> Why; // what the batch raised
        std::vector<Refusal> Refused;
        qint64 In = 0;
        qint64 Unsent = 0; // neither in nor refused: the batch has not come so far, or nobody knows
    };
    Outcome Send();
    void CancelBatch(); // what has not gone in is given up

private:
    bool DecimalsAreExact();

    ADODB::RecordsetPtr m_rows;
    qint64 m_first = 0; // rows that were there before
    QStringList m_names;
    QHash<QString, int> m_columns; // by the names that were asked for
    std::optional<bool> m_exact;   // does the server keep all digits of a decimal?
    std::vector<qint64> m_numbers; // of the rows that were added, in order
};

// The column of a recordset by its name: letter by letter, else without regard to case. Raises adErrItemNotFound.
int ColumnNamed(const ADODB::Recordset &rows, const QString &name);
