#pragma once
// The errors of this layer: one list of name, number, SQLSTATE and text. The rows stand in Errors.cpp.
//
// Whoever raises one names it, `throw Error(Fault::ObjectClosed)`; whoever asks what has failed compares a name: the
// fault's (Error::Name) or its number's (Error::Number with an ErrorValue). No text stands twice, and nobody reads one.
// What a driver or a server says keeps its own words and is Fault::OfDriver.

#include <QStringView>
#include <span>

namespace ADODB {

// Numbers that callers test for.
enum ErrorValue : int
{
    adErrFileNotFound = 53,
    adErrInvalidArgument = 3001,
    adErrNoCurrentRecord = 3021,
    adErrFeatureNotAvailable = 3251,
    adErrItemNotFound = 3265,
    adErrObjectInCollection = 3367,
    adErrDataConversion = 3421,
    adErrObjectClosed = 3704,
    adErrObjectOpen = 3705,
    adErrProviderNotFound = 3706,
    adErrOperationCancelled = 3712,
    adErrProviderFailed = static_cast<int>(0x80004005),
    adErrOutOfMemory = static_cast<int>(0x8007000E),
    adErrRowConflict = static_cast<int>(0x80040E38),
    adErrLoginFailed = static_cast<int>(0x80040E4D),
    adErrNoTransaction = static_cast<int>(0x8004D00E),
    adErrNestedTransaction = static_cast<int>(0x8004D013),
};

enum class Fault
{
    OfDriver, // not from this list: the words are somebody else's
    ObjectClosed,
    TurnNotBegun,
    ObjectOpen,
    ConnectionRuns, // another statement; %1 is its text
    NoCurrentRecord,
    ItemNotFound,
    ItemExists,
    InvalidArgument,
    NoFields,
    NoSuchRow, // %1 is its number, from 1
    NotCapable,
    ReadOnly,
    WrongValue,
    RowConflict, // somebody else was faster
    TooManyRows,
    NoKey,
    NoBaseTable,
    SeveralStatements,
    NulCharacter,
    NoValues,
    LongerValue, // %1 is the column
    Cancelled,
    NoMemory,
    ResultTooLarge,
    NoEnvironment,
    NestedTransaction,
    TypedTransaction, // a statement that somebody typed has begun one
    NoTransaction,
    DriverMissing,   // %1 is the driver
    ProviderMissing, // %1 is the provider
    FileMissing,     // %1 is its path
    NoFileNamed,
    BadShape, // %1 is the line, %2 the column, %3 why
};

struct FaultRow
{
    Fault Name;
    ErrorValue Number;
    const char *SqlState; // five characters, or ""
    const char *Text;
};

std::span<const FaultRow> FaultRows();
const FaultRow &RowOf(Fault fault); // not of OfDriver

// States of the standard by which servers tell what has become of a transaction.
namespace SqlState {
inline constexpr QStringView kGivenUp = u"40001";           // rolled back, to break a deadlock
inline constexpr QStringView kFailedTransaction = u"25P02"; // it has failed, and waits for its end
} // namespace SqlState

} // namespace ADODB
