#include "ado/schema/ViewReader.h"
#include "ado/schema/SqlWalker.h"
#include <QHash>
#include <QSet>
#include <QStringList>
#include <algorithm>
#include <initializer_list>

namespace ADODB {

namespace {

constexpr int kDeepest = 400; // brackets within brackets; no server keeps a deeper text

// What the FROM of one SELECT names: alias or plain name to the table; a derived table has no name of its own.
struct Scope
{
    int Parent = -1;
    QHash<QString, UsedName> Tables;
};

class Reader
{
public:
    Reader(const QString &database, const QString &text) : m_database(database), m_walk{text, true} {}

    std::vector<UsedName> Read()
    {
        Next();
        Query(-1);
        for (const auto &[scope, alias, column] : m_columns) {
            int at = scope;
            while (at >= 0 && !m_scopes[size_t(at)].Tables.contains(alias))
                at = m_scopes[size_t(at)].Parent;
            if (at < 0)
                continue;
            UsedName used = m_scopes[size_t(at)].Tables.value(alias);
            used.Column = column;
            if (!used.Table.isEmpty())
                m_used.push_back(used);
        }
        std::sort(m_used.begin(), m_used.end());
        m_used.erase(std::unique(m_used.begin(), m_used.end()), m_used.end());
        return std::move(m_used);
    }

private:
    struct ColumnOf
    {
        int Scope;
        QString Alias, Column;
    };

    void Next() { m_walk.StepOverBlanks(); }
    bool AtEnd() const { return m_walk.Found == SqlWalker::End; }
    bool Is(QStringView word) const { return m_walk.Is(word); }
    bool BeginsQuery() const { return Is(u"select") || Is(u"with") || Is(u"values"); }
    int NewScope(int parent)
    {
        m_scopes.push_back({parent, {}});
        return int(m_scopes.size()) - 1;
    }

    // `a`.`b`.`c`: the names of which it is made.
    QStringList Path()
    {
        QStringList path{m_walk.Name()};
        for (Next(); m_walk.IsSign(u'.'); Next()) {
            Next();
            if (!m_walk.IsName())
                break;
            path += m_walk.Name();
        }
        return path;
    }

    // A path in an expression. Alone it is a keyword, a function, or the alias of a field.
    void Expression(int scope) { Column(scope, Path()); }
    void Column(int scope, const QStringList &path)
    {
        if (m_walk.IsSign(u'(') || scope < 0)
            return;
        if (path.size() == 3)
            m_used.push_back({path[0], path[1], path[2]});
        else if (path.size() == 2)
            m_columns.push_back({scope, path[0], path[1]});
    }

    // A path where the FROM names a table.
    UsedName Table(int scope)
    {
        if (Is(u"dual")) { // stands for no table at all
            Next();
            return {};
        }
        const QStringList path = Path();
        if (m_walk.IsSign(u'(')) { // a function that gives rows
            Brackets(scope);
            return {};
        }
        UsedName table;
        if (path.size() > 1 || !m_with.contains(path[0]))
            table = {path.size() > 1 ? path[0] : m_database, path.back(), QString()};
        if (!table.Table.isEmpty())
            m_used.push_back(table);
        if (!BeginsAlias())
            m_scopes[size_t(scope)].Tables.insert(path.back(), table);
        return table;
    }

    bool BeginsAlias() const { return Is(u"as") || (m_walk.Found == SqlWalker::Quoted && m_walk.IsName()); }

    // What stands between brackets in an expression; the bracket itself is what was found last.
    void Brackets(int scope)
    {
        Next();
        if (++m_depth > kDeepest)
            m_walk.Next = m_walk.Text.size();
        if (BeginsQuery())
            Query(scope);
        while (!AtEnd() && !m_walk.IsSign(u')')) {
            if (m_walk.IsSign(u'('))
                Brackets(scope);
            else if (m_walk.IsName())
                Expression(scope);
            else
                Next();
        }
        Next();
        --m_depth;
    }

    // What stands between brackets where a table is named: a join, or a query with its alias behind the bracket.
    void TableBrackets(int scope)
    {
        Next();
        if (++m_depth > kDeepest)
            m_walk.Next = m_walk.Text.size();
        if (BeginsQuery())
            Query(scope);
        else
            From(scope, true);
        Next();
        --m_depth;
    }

    bool IsOneOf(std::initializer_list<QStringView> words) const
    {
        return std::any_of(words.begin(), words.end(), [this](QStringView word) { return Is(word); });
    }

    // The list of tables: up to what follows it in the query, or to the bracket that closes it.
    void From(int scope, bool inBrackets)
    {
        bool named = false; // has the place for a table been taken?
        UsedName last;      // by which table
        while (!AtEnd() && !m_walk.IsSign(u')')) {
            const bool isOfUnion = IsOneOf({u"union", u"except", u"intersect"});
            if (!inBrackets &&
                (isOfUnion || IsOneOf({u"where", u"group", u"having", u"order", u"limit", u"window", u"offset"})))
                return;
            if (m_walk.IsSign(u',') || isOfUnion || IsOneOf({u"join", u"straight_join"})) {
                named = false;
                Next();
            } else if (m_walk.IsSign(u'(')) {
                named ? Brackets(scope) : TableBrackets(scope);
                if (!named)
                    last = {};
                named = true;
            } else if (!named &&
                       IsOneOf({u"lateral", u"left", u"right", u"inner", u"cross", u"outer", u"natural", u"all"})) {
                Next();
            } else if (!named && m_walk.IsName()) {
                last = Table(scope);
                named = true;
            } else if (m_walk.Found == SqlWalker::Quoted && m_walk.IsName()) {
                const QStringList path = Path();
                if (path.size() == 1)
                    m_scopes[size_t(scope)].Tables.insert(path[0], last);
                else
                    Column(scope, path);
            } else if (m_walk.IsName()) {
                Expression(scope);
            } else {
                Next();
            }
        }
    }

    // The names of WITH, and their queries. These names alone stand without quotes, whatever they hold.
    void With(int parent)
    {
        do {
            Next();
            if (Is(u"recursive"))
                Next();
            const qsizetype from = m_walk.Start;
            while (!AtEnd() && !Is(u"as") && !m_walk.IsSign(u'(') && !m_walk.IsSign(u')'))
                Next();
            m_with.insert(m_walk.Text.mid(from, m_walk.Start - from).trimmed());
            if (m_walk.IsSign(u'(')) // the names of its fields
                Brackets(parent);
            if (Is(u"as"))
                Next();
            if (m_walk.IsSign(u'('))
                Brackets(parent);
        } while (m_walk.IsSign(u','));
    }

    // A query with all its parts, up to the bracket that closes it, or to the end.
    void Query(int parent)
    {
        int scope = -1;
        while (!AtEnd() && !m_walk.IsSign(u')')) {
            if (Is(u"with") && scope < 0) {
                With(parent);
            } else if (Is(u"select")) { // each part of a union has its own tables
                scope = NewScope(parent);
                Next();
            } else if (Is(u"from") && scope >= 0) {
                Next();
                From(scope, false);
            } else if (m_walk.IsSign(u'(')) {
                Brackets(scope < 0 ? parent : scope);
            } else if (m_walk.IsName()) {
                Expression(scope);
            } else {
                Next();
            }
        }
    }

    QString m_database;
    SqlWalker m_walk;
    int m_depth = 0;
    std::vector<Scope> m_scopes;
    std::vector<ColumnOf> m_columns; // found; resolved at the end, since the fields stand before their tables
    std::vector<UsedName> m_used;
    QSet<QString> m_with;
};

} // namespace

std::vector<UsedName> ReadUsage(const QString &database, const QString &viewText)
{
    return Reader(database, viewText).Read();
}

} // namespace ADODB
