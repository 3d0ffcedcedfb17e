#pragma once
// Which worked case is run by what: one row for each operation of visual.jsonl that is built in these rooms.

#include "tests/support/Cases.h"

#include <QJsonArray>

#include <span>
#include <vector>

struct CaseRunner
{
    const char *op;
    QJsonValue (*run)(const QJsonObject &args);
    double relative = 0; // how far numbers may lie apart
};

std::span<const CaseRunner> RouteRunners();
std::span<const CaseRunner> MapRunners();
std::span<const CaseRunner> JoinRunners();
std::span<const CaseRunner> WizardRunners();
std::span<const CaseRunner> TextRunners();
std::span<const CaseRunner> ChartRunners();

inline QString T(const QJsonObject &args, const char *key)
{
    return args[QLatin1String(key)].toString();
}
inline double D(const QJsonObject &args, const char *key)
{
    return args[QLatin1String(key)].toDouble();
}
inline int I(const QJsonObject &args, const char *key)
{
    return args[QLatin1String(key)].toInt();
}
inline bool B(const QJsonObject &args, const char *key)
{
    return args[QLatin1String(key)].toBool();
}
inline QJsonArray A(const QJsonObject &args, const char *key)
{
    return args[QLatin1String(key)].toArray();
}
inline QJsonObject O(const QJsonObject &args, const char *key)
{
    return args[QLatin1String(key)].toObject();
}
inline QStringList Texts(const QJsonArray &array)
{
    QStringList texts;
    for (const QJsonValue &one : array)
        texts += one.toString();
    return texts;
}
