#pragma once
// What a run of many rows tells of those that were refused: the first ones whole, the rest counted by their reason, so
// that a file of millions of bad lines neither fills the memory nor hides a reason. One thread at a time.

#include <QHash>
#include <QString>
#include <QStringList>

class RefusalLog
{
public:
    static constexpr qint64 WholeEntries = 10'000;

    // `entry` is written as it stands; `reason` is what it is counted by once the whole ones are full.
    void Add(const QString &entry, const QString &reason);
    bool IsEmpty() const { return m_count == 0; }
    qint64 Count() const { return m_count; }
    QString Text() const; // entries, then a line for each reason of the rest

private:
    QString m_text;
    qint64 m_count = 0;
    QHash<QString, qint64> m_rest;
    QStringList m_reasons; // of the rest, in the order of their first row
};
