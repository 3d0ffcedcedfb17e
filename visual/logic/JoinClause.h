#pragma once
// What the two editors of a join compose and choose: the queries that read field lists, the pair of equal names, the
// step of a FROM clause. Pure, any thread.

#include <QString>
#include <QStringList>

#include <optional>

// The query that fills a field list of the join dialog; nothing for a blank name. Here and below `Written` stands where
// the statement reads from, when the server would not find it by QuoteName's text.
std::optional<QString> JoinFieldsQuery(const QString &Table, const QString &Written = {});

// The first pair of equal texts, from 0, in the order of the first list; nothing when there is none.
struct FieldMatch
{
    int First = 0, Second = 0;
};
std::optional<FieldMatch> FindMatch(const QStringList &first, const QStringList &second);

// OK with an empty field list is a Cancel that says nothing.
inline bool IsJoinCancelled(const QString &Field1, const QString &Field2)
{
    return Field1.isEmpty() || Field2.isEmpty();
}

// One step in a chain of joins: what came before, a table or a statement, and how they meet.
struct JoinClause
{
    QString Previous, Table;
    QString Join; // "Cross Join", "Inner Join", "Left Join", "Outter Join", "Right Join"
    QString Field0, Field1;
    QString Operator = QStringLiteral("=");
    int Step = 0; // names the aliases

    // The fragment of the FROM clause. Statements on both sides get the same alias: that is the rule.
    QString GetSQL() const;
    QString PreviousQuery(const QString &Written = {}) const; // fills the first field list
    QString TableQuery(const QString &Written = {}) const;    // fills the second one; a statement stays as it is
    bool IsPreviousInBrackets() const;                        // in its query: any text with a blank
    bool IsTableInBrackets() const;
};
