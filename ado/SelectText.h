#pragma once
// What the text of a SELECT says about where its rows come from. Pure and total; any thread. It steps over comments,
// texts, quoted names and whatever stands in parentheses; a text that it cannot follow is not plain and names nothing.

#include <QString>
#include <vector>

namespace ADODB {

struct Family;

struct SelectText
{
    struct Item
    {
        bool Star = false;
        QString Column; // of a column that is named as it is, with an alias or without; "" for any other expression
    };
    bool Plain = false;  // one table, and each row of the result is one of its rows
    QString Table;       // as it is written, with its schema and its quotes; "" when there is no plain name behind FROM
    QString Alias;       // as it is written, or ""
    qsizetype From = -1; // where the word FROM stands
    std::vector<Item> Items;
};

SelectText ReadSelect(const QString &sql, const Family &family);

} // namespace ADODB
