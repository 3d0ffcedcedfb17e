#pragma once
// "Go on at the next statement": runs one statement and swallows what it raises. Any thread.
//
//     Attempt([&] { tree->Nodes().Add(...); });
//     QString why;
//     if (!Attempt([&] { connection->Open(text); }, &why)) ...
//
// Write one Attempt for each statement that may fail, so that a reader sees what is skipped.
//
// In the test mode an error that nobody asks the words of does not pass unseen: with a debugger attached the program
// stops at that place, else the error output gets a line with the source file and the line of the Attempt.

#include <QString>
#include <exception>
#include <utility>

// The words of the exception that is being handled: an ADODB::Error's or ControlError's description, else what().
QString DescribeCurrentException();

// The test mode: whether errors that are passed over are told. Any thread.
void TellPassedErrors(bool on);
// Where a call stands, in a default argument. The standard's own class is not known to every reader of this tree.
struct SourcePlace
{
    const char *File;
    int Line;
    static constexpr SourcePlace Here(const char *file = __builtin_FILE(), int line = __builtin_LINE())
    {
        return {file, line};
    }
};
// Tells the exception that is being handled, in the test mode; else nothing.
void ErrorPassedOver(const SourcePlace &place) noexcept;

// True when the statement ran to its end. Otherwise `description`, when given, gets the words; it is emptied on
// success.
template <class Statement>
bool Attempt(Statement &&statement, QString *description = nullptr,
             const SourcePlace &place = SourcePlace::Here()) noexcept
{
    try {
        std::forward<Statement>(statement)();
        if (description)
            description->clear();
        return true;
    } catch (...) {
        if (description)
            *description = DescribeCurrentException();
        else
            ErrorPassedOver(place);
        return false;
    }
}
