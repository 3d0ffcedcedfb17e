#pragma once
// Reads a generated server page back as VBScript and runs it over rows that the test gives: what it would open, ask and
// write. Knows the part of the language that such a page needs and finds fault with everything else: strings that do
// not close, blocks that do not match, names that nobody declared, constants that are written.

#include <QList>
#include <QString>
#include <QStringList>

struct PageRun
{
    QString connection; // what Open got
    QString statement;  // what Execute got
    QString output;     // all that was written
    QStringList faults;
};

PageRun RunPage(const QString &page, const QStringList &fields, const QList<QStringList> &rows);
