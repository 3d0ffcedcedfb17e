#pragma once
// What a control raises when it is asked for what it has not: a cell, a row or a key out of range, a key given twice.
// Callers that go on at the next statement wrap the call in Attempt.

#include <QByteArray>
#include <QString>
#include <exception>

enum ControlErrorValue : int
{
    ctlErrSubscript = 381, // row or column out of range
    ctlErrIndex = 35600,   // index of a collection out of bounds
    ctlErrElementNotFound = 35601,
    ctlErrKeyNotUnique = 35602, // a non-empty key that is there already
};

class ControlError : public std::exception
{
public:
    ControlError(int number, const QString &description)
        : Number(number), Description(description), m_what(description.toUtf8())
    {
    }

    int Number;
    QString Description;

    const char *what() const noexcept override { return m_what.constData(); }

private:
    QByteArray m_what;
};
