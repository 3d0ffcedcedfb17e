#include "tests/support/Cases.h"
#include "tests/support/Places.h"

#include <QByteArrayList>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <map>

namespace cases {

namespace {

struct Loaded
{
    std::vector<Case> all;
    QStringList failures;
};

Loaded Load(const char *name)
{
    Loaded loaded;
    QFile file(places::Source() + QStringLiteral("/tests/cases/") + QString::fromLatin1(name));
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

const Loaded &File(const char *name)
{
    static std::map<QByteArray, Loaded> files;
    const auto found = files.find(name);
    return found != files.end() ? found->second : files.emplace(name, Load(name)).first->second;
}

QString Shown(const QJsonValue &value)
{
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

} // namespace

std::vector<Case> Of(const QString &op, const char *file)
{
    std::vector<Case> result;
    for (const Case &one : File(file).all) {
        if (one.op == op)
            result.push_back(one);
    }
    return result;
}

QStringList Operations(const char *file)
{
    QStringList names;
    for (const Case &one : File(file).all) {
        if (!names.contains(one.op))
            names += one.op;
    }
    return names;
}

bool Matches(const QJsonValue &want, const QJsonValue &got, double relative)
{
    if (want.isObject() && got.isObject()) {
        const QJsonObject wanted = want.toObject();
        const QJsonObject object = got.toObject();
        for (auto key = wanted.begin(); key != wanted.end(); ++key) {
            if (!object.contains(key.key()) || !Matches(key.value(), object[key.key()], relative))
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
            if (!Matches(wanted.at(i), array.at(i), relative))
                return false;
        }
        return true;
    }
    if (want.isDouble() && got.isDouble())
        return std::abs(want.toDouble() - got.toDouble()) <= relative * std::abs(want.toDouble());
    return want == got;
}

Report Run(const QString &op, const std::function<QJsonValue(const QJsonObject &args)> &run, const char *file,
           double relative)
{
    Report report{0, File(file).failures};
    for (const Case &one : Of(op, file)) {
        ++report.ran;
        const QJsonValue got = run(one.args);
        if (!Matches(one.want, got, relative))
            report.failures += QStringLiteral("%1:%2: args %3\n  want %4\n  got  %5")
                                   .arg(QString::fromLatin1(file), QString::number(one.line), Shown(one.args),
                                        Shown(one.want), Shown(got));
    }
    return report;
}

} // namespace cases
