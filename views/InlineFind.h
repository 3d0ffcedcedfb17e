#pragma once
// The search of the table editor, without a window: which cells of a recordset a criteria hits, what a replacement
// makes of a value, and the same search as the text of a filter. Each value counts as its text, null as "".
//
// Belongs to the recordset's thread. The constructor raises lang::BadPattern for a criteria that is no pattern; nothing
// else raises.

#include "ado/Recordset.h"
#include "lang/Like.h"
#include <QStringList>
#include <functional>
#include <optional>

class InlineFind
{
public:
    struct Place
    {
        qint64 Row = 0;
        int Column = 0;
        bool operator==(const Place &) const = default;
    };

    InlineFind(const QString &criteria, bool exactMatch, bool caseSensitive);
    bool Hits(const QString &value) const;
    // Every place of the criteria in the value gives way, letter by letter as it is written: wildcards mean themselves.
    QString Replaced(const QString &value, const QString &with) const;
    // The first hit at `from` or behind it. keepOn is asked before each record, and false ends the search with none.
    std::optional<Place> Next(const ADODB::Recordset &rows, Place from,
                              const std::function<bool(qint64 row)> &keepOn) const;

    static Place Behind(const ADODB::Recordset &rows, Place place); // the field after this one
    static QString FilterText(const QStringList &fields, const QString &criteria, bool exactMatch, bool caseSensitive);

private:
    QString m_criteria;
    bool m_caseSensitive;
    lang::LikePattern m_pattern;
};
