#pragma once
// "Go on at the next statement": runs one statement and swallows what it raises. Any thread.
//
//     Attempt([&] { tree->Nodes().Add(...); });
//     QString why;
//     if (!Attempt([&] { connection->Open(text); }, &why)) ...
//
// Write one Attempt for each statement that may fail, so that a reader sees what is skipped.

#include <QString>
#include <exception>
#include <utility>

// The words of the exception that is being handled: an ADODB::Error's or ControlError's description, else what().
QString DescribeCurrentException();

// True when the statement ran to its end. Otherwise `description`, when given, gets the words; it is emptied on
// success.
template <class Statement> bool Attempt(Statement &&statement, QString *description = nullptr) noexcept
{
    try {
        std::forward<Statement>(statement)();
        if (description)
            description->clear();
        return true;
    } catch (...) {
        if (description)
            *description = DescribeCurrentException();
        return false;
    }
}
