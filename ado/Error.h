#pragma once
// What every failing operation of the data access layer raises.

#include "ado/Errors.h"
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <exception>

namespace ADODB {

class Error : public std::exception
{
public:
    Error() = default;
    // In the words of a driver, or of somebody above this layer.
    Error(int number, QString description, QString sqlState = {}, int nativeError = 0);
    // In this layer's own words; what it is about stands for %1, %2 ... of the text.
    explicit Error(Fault name, const QStringList &about = {});

    Fault Name = Fault::OfDriver;
    int Number = 0;      // one of ErrorValue, or the driver's HRESULT-like number
    QString Description; // the driver's or server's own words, every diagnostic record joined by line ends
    QString SQLState;    // five characters, or empty when the driver gives none
    int NativeError = 0; // the server's own number

    const char *what() const noexcept override; // Description as UTF-8

    // True when the server refused the user: number 0x80040E4D.
    bool IsLoginFailure() const;

private:
    mutable QByteArray m_what;
};

} // namespace ADODB
