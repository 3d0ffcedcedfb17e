#pragma once
// The parts of a connection string: "key=value" joined by ";", as ODBC writes them.
//
// Keys compare without regard to case and the first of two equal keys counts. A value in braces may hold ";" and "=",
// and "}}" stands for "}"; a value in double quotes (Extended Properties) likewise, with the quote doubled. The reader
// is total: every text gives some attributes, an unclosed brace or quote runs to the end, and a part without "=" is a
// key without value. Plain values; any thread.

#include <QString>
#include <vector>

namespace ADODB {

struct Attribute
{
    QString Key;   // without outer blanks
    QString Value; // without braces, quotes and outer blanks
    QString Raw;   // the whole part as it was written, without the ";"
};

std::vector<Attribute> ParseConnectionString(const QString &text);
QString AttributeValue(const std::vector<Attribute> &attributes, const QString &key); // "" when it is missing
bool HasAttribute(const std::vector<Attribute> &attributes, const QString &key);
QString BracedValue(const QString &value); // in braces when a driver would misread it bare
// The same for a password: PostgreSQL's driver decodes "%" and "+" of a bare one, and takes a braced one as it is.
QString BracedPassword(const QString &value);
// Replaces every attribute of that key, or appends one; all others stay as they were written.
QString WithAttribute(const QString &connectionString, const QString &key, const QString &value);

// What the driver gets: "Provider=MSDASQL;" and what belongs to it taken off, "Extended Properties" unwrapped, and its
// words for data source, user and password turned into the driver's. A string without a provider comes back as it is.
// Raises adErrProviderNotFound for another provider.
QString OdbcString(const QString &connectionString);

// A string for the provider of hierarchies, "Provider=MSDataShape;Data Provider=MSDASQL;...": what is left for the
// provider of its data, OdbcString's notation, once its own words are taken off.
struct ShapeRoute
{
    bool IsShape = false;
    QString DataProvider; // "MSDASQL" where none is named; "NONE" for one that needs no server
    QString DataString;   // the string itself where it is no shape's
};
ShapeRoute ShapeRouteOf(const QString &connectionString);
// The string of a shape over what this one reaches.
QString GetShapeConnectionString(const QString &connectionString);

} // namespace ADODB
