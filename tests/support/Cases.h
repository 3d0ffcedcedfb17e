#pragma once
// Reader of the worked cases in tests/cases: text.jsonl and visual.jsonl, one JSON object a line with op, args and the
// wanted result. An operation's name means what it means in its file. Qt Core only. A file is read once; a line that
// cannot be read is a failure of every operation asked for.

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

constexpr char kText[] = "text.jsonl";
constexpr char kVisual[] = "visual.jsonl";

std::vector<Case> Of(const QString &op, const char *file = kText);
QStringList Operations(const char *file); // each once, in the order in which they first come

// Objects match when every wanted key is there and matches; further keys do not matter. Arrays match element by
// element. Numbers match as doubles, within the given part of the wanted one.
bool Matches(const QJsonValue &want, const QJsonValue &got, double relative = 0);

// Runs every case of an operation.
Report Run(const QString &op, const std::function<QJsonValue(const QJsonObject &args)> &run, const char *file = kText,
           double relative = 0);

} // namespace cases
