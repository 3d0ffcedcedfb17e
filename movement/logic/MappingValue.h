#pragma once
// What a mapping text of the transfer window means, and the texts that its popup writes. Pure; any thread.

#include <QString>
#include <QStringList>
#include <optional>

struct MappingValue
{
    enum KindEnum
    {
        Null,     // store null
        Text,     // the constant String
        Number,   // the constant Double, exactly the number that String reads as
        Unmapped, // the field is left alone
        Field     // the source field named String
    } Kind = Unmapped;
    QString String;
    double Double = 0;
};

// The forms are tried in the order of the enumeration, so a field called NULL or 2000 cannot be named.
MappingValue MappingOf(const QString &text);

// "'" + answer + "'" with apostrophes doubled; nothing for an empty answer.
std::optional<QString> StringConstant(const QString &answer);

// A number's mapping text. `Ask` is the number to offer when the answer is none: the caller asks, and takes it or
// stops.
struct NumericConstant
{
    std::optional<QString> Value; // nothing for an empty answer
    bool Ask = false;
};
NumericConstant NumericOf(const QString &answer);

// For each destination field the source field of exactly its name, or "".
QStringList FirstFill(const QStringList &destination, const QStringList &source);

// What a preview cell shows of a constant: the text without its apostrophes, "NULL", the number; nothing for a field.
std::optional<QString> ConstantShown(const QString &mapping);
