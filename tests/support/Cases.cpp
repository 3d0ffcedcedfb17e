#include "tests/support/Cases.h"
#include "tests/support/Places.h"

#include <QByteArrayList>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace cases {

namespace {

struct Loaded
{
    std::vector<Case> all;
    QStringList failures;
};

Loaded Load()
{
    Loaded loaded;
    QFile file((places::Source() + QStringLiteral("/tests/cases/text.jsonl")));
    if (!file.open(QIODevice::ReadOnly)) {
        loaded.failures += QStringLiteral("cannot open ") + file.fileName();
        return loaded;
    }
    int line = 0;
    for (const QByteArray &text : file.readAll().split('\n')) {
        ++line;
        if (text.isEmpty())
            continue;
        const QJsonObject row = QJsonDocument::fromJson(text).object();
        if (row.contains(QStringLiteral("op")))
            loaded.all.push_back({line, row[u"op"].toString(), row[u"args"].toObject(), row[u"want"]});
        else
            loaded.failures += QStringLiteral("line %1 is no case").arg(line);
    }
    return loaded;
}

const Loaded &File()
{
    static const Loaded loaded = Load();
    return loaded;
}

QString Shown(const QJsonValue &value)
{
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

} // namespace

std::vector<Case> Of(const QString &op)
{
    std::vector<Case> result;
    for (const Case &one : File().all) {
        if (one.op == op)
            result.push_back(one);
    }
    return result;
}

bool Matches(const QJsonValue &want, const QJsonValue &got)
{
    if (want.isObject() && got.isObject()) {
        const QJsonObject wanted = want.toObject();
        const QJsonObject object = got.toObject();
        for (auto key = wanted.begin(); key != wanted.end(); ++key) {
            if (!object.contains(key.key()) || !Matches(key.value(), object[key.key()]))
                return false;
        }
        return true;
    }
    if (want.isArray() && got.isArray()) {
        const QJsonArray wanted = want.toArray();
        const QJsonArray array = got.toArray();
        if (wanted.size() != array.size())
            return false;
        for (qsizetype i = 0; i < wanted.size(); ++i) {
            if (!Matches(wanted.at(i), array.at(i)))
                return false;
        }
        return true;
    }
    if (want.isDouble() && got.isDouble())
        return want.toDouble() == got.toDouble();
    return want == got;
}

Report Run(const QString &op, const std::function<QJsonValue(const QJsonObject &args)> &run)
{
    Report report{0, File().failures};
    for (const Case &one : Of(op)) {
        ++report.ran;
        const QJsonValue got = run(one.args);
        if (!Matches(one.want, got))
            report.failures += QStringLiteral("text.jsonl:%1: args %2\n  want %3\n  got  %4")
                                   .arg(QString::number(one.line), Shown(one.args), Shown(one.want), Shown(got));
    }
    return report;
}

} // namespace cases
