#include "ado/Errors.h"

#include <algorithm>
#include <array>

namespace ADODB {

namespace {

constexpr FaultRow kRows[] = {
    {Fault::ObjectClosed, adErrObjectClosed, "", "Operation is not allowed when the object is closed."},
    {Fault::TurnNotBegun, adErrObjectClosed, "", "The turn has not begun."},
    {Fault::ObjectOpen, adErrObjectOpen, "", "Operation is not allowed when the object is open."},
    {Fault::ConnectionRuns, adErrObjectOpen, "", "Operation cannot be performed while the connection runs: %1"},
    {Fault::NoCurrentRecord, adErrNoCurrentRecord, "",
     "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a current "
     "record."},
    {Fault::ItemNotFound, adErrItemNotFound, "",
     "Item cannot be found in the collection corresponding to the requested name or ordinal."},
    {Fault::ItemExists, adErrObjectInCollection, "", "Object is already in collection. Cannot append."},
    {Fault::InvalidArgument, adErrInvalidArgument, "",
     "Arguments are of the wrong type, are out of acceptable range, or are in conflict with one another."},
    {Fault::NoFields, adErrInvalidArgument, "", "A recordset without a source needs fields."},
    {Fault::NoSuchRow, adErrInvalidArgument, "", "There is no row %1."},
    {Fault::NotCapable, adErrFeatureNotAvailable, "",
     "Object or provider is not capable of performing requested operation."},
    {Fault::ReadOnly, adErrFeatureNotAvailable, "",
     "Current Recordset does not support updating. This may be a limitation of the provider, or of the selected "
     "locktype."},
    {Fault::WrongValue, adErrDataConversion, "22018",
     "Application uses a value of the wrong type for the current operation."},
    {Fault::RowConflict, adErrRowConflict, "",
     "Row cannot be located for updating. Some values may have been changed since it was last read."},
    {Fault::TooManyRows, adErrProviderFailed, "21000",
     "Key column information is insufficient or incorrect. Too many rows were affected by update."},
    {Fault::NoKey, adErrProviderFailed, "", "Insufficient key column information for updating or refreshing."},
    {Fault::NoBaseTable, adErrProviderFailed, "", "Insufficient base table information for updating or refreshing."},
    {Fault::SeveralStatements, adErrProviderFailed, "42000", "The text holds more than one statement."},
    {Fault::NulCharacter, adErrProviderFailed, "42000", "The statement holds a NUL character."},
    {Fault::NoValues, adErrProviderFailed, "", "The statement has parameters, and there are no values for them."},
    {Fault::LongerValue, adErrProviderFailed, "",
     "The driver gives a longer value in the column \"%1\" than it declared."},
    {Fault::Cancelled, adErrOperationCancelled, "HY008", "Operation has been cancelled by the user."},
    {Fault::NoMemory, adErrOutOfMemory, "HY001", "Not enough memory for this operation."},
    {Fault::ResultTooLarge, adErrOutOfMemory, "HY001", "The result is too large for the memory."},
    {Fault::NoEnvironment, adErrOutOfMemory, "", "The ODBC driver manager gives no environment."},
    {Fault::NestedTransaction, adErrNestedTransaction, "", "Only one transaction can be active on this session."},
    {Fault::TypedTransaction, adErrNestedTransaction, "",
     "A transaction that a statement began is still open on this connection."},
    {Fault::NoTransaction, adErrNoTransaction, "", "No transaction is active."},
    {Fault::DriverMissing, adErrProviderNotFound, "IM002", "The driver \"%1\" is not installed."},
    {Fault::ProviderMissing, adErrProviderNotFound, "", "Provider %1 is not installed."},
    {Fault::FileMissing, adErrFileNotFound, "08001", "The database file \"%1\" does not exist."},
    {Fault::NoFileNamed, adErrProviderFailed, "HY000", "The connection string names no database file."},
    {Fault::BadShape, adErrProviderFailed, "42000", "The shape command is not understood at line %1, column %2: %3."},
};

// Each row stands at the place that its name says, so that looking it up cannot fail.
constexpr bool StandInOrder()
{
    for (size_t i = 0; i < std::size(kRows); ++i)
        if (size_t(kRows[i].Name) != i + 1)
            return false;
    return std::size(kRows) == size_t(Fault::BadShape);
}
static_assert(StandInOrder());

} // namespace

std::span<const FaultRow> FaultRows()
{
    return kRows;
}

const FaultRow &RowOf(Fault fault)
{
    return kRows[size_t(fault) - 1];
}

} // namespace ADODB
