#pragma once
// The joins that a worked case gives, with the layers' numbers as they stand there.

#include "tests/visual/CaseRunners.h"
#include "visual/logic/MapJoins.h"

inline MapJoins JoinsOf(const QJsonObject &args)
{
    MapJoins joins;
    for (const QJsonValue &row : args[u"joins"].toArray()) {
        MapJoin join;
        join.Table1 = row[u"Table1"].toString();
        join.Field1 = row[u"Field1"].toString();
        join.Operator = row[u"Operator"].toString();
        join.Table2 = row[u"Table2"].toString();
        join.Field2 = row[u"Field2"].toString();
        joins.Add(join);
    }
    return joins;
}
