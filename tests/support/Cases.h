#pragma once
// Reader of the worked cases in tests/cases/text.jsonl: one JSON object a line with op, args and the wanted result.
// Qt Core only. The file is read once; a line that cannot be read is a failure of every operation asked for.

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace cases {

struct Case
{
    int line = 0; // in the file, from 1
    QString op;
    QJsonObject args;
    QJsonValue want;
};

struct Report
{
    int ran = 0;
    QStringList failures; // each names its line in the file
};

std::vector<Case> Of(const QString &op);

// Objects match when every wanted key is there and matches; further keys do not matter. Arrays match element by
// element.
bool Matches(const QJsonValue &want, const QJsonValue &got);

// Runs every case of an operation.
Report Run(const QString &op, const std::function<QJsonValue(const QJsonObject &args)> &run);

} // namespace cases
