#include "ado/Filter.h"

#include "ado/Error.h"
#include "lang/Text.h"

namespace ADODB {

enum class Operator
{
    Equal,
    Unequal,
    Less,
    Greater,
    LessOrEqual,
    GreaterOrEqual,
    Like
};

struct RowFilter::Node
{
    enum Kind
    {
        Condition,
        All,
        Any
    } kind = Condition;
    std::vector<std::unique_ptr<Node>> parts; // of All and Any
    int column = -1;
    Operator op = Operator::Equal;
    Value value;
    QByteArray utf8;      // of a text value
    bool numeric = false; // the text value reads as a number, which `number` holds
    Value number;
};

namespace {

using Node = RowFilter::Node;
using NodePtr = std::unique_ptr<Node>;

[[noreturn]] void Malformed()
{
    throw Error(Fault::InvalidArgument);
}

class FilterParser
{
public:
    FilterParser(const QString &text, const std::function<int(const QString &)> &columnOf)
        : m_text(text), m_columnOf(columnOf)
    {
    }

    NodePtr Whole()
    {
        NodePtr node = Alternatives(0);
        SkipBlanks();
        if (m_at < m_text.size())
            Malformed();
        return node;
    }

private:
    static constexpr int DeepestNesting = 100;

    NodePtr Alternatives(int depth)
    {
        NodePtr any = std::make_unique<Node>();
        any->kind = Node::Any;
        do {
            NodePtr all = std::make_unique<Node>();
            all->kind = Node::All;
            do {
                all->parts.push_back(Primary(depth));
            } while (TakeWord(u"AND"));
            any->parts.push_back(std::move(all));
        } while (TakeWord(u"OR"));
        return any;
    }

    NodePtr Primary(int depth)
    {
        SkipBlanks();
        if (depth < DeepestNesting && Take(u'(')) {
            NodePtr inner = Alternatives(depth + 1);
            if (!Take(u')'))
                Malformed();
            return inner;
        }
        NodePtr node = std::make_unique<Node>();
        const QString name = Name();
        node->op = TakeOperator();
        TakeValue(*node);
        node->column = m_columnOf(name);
        if (node->column < 0)
            throw Error(Fault::ItemNotFound);
        return node;
    }

    void SkipBlanks()
    {
        while (m_at < m_text.size() && QStringView(u" \t\r\n").contains(m_text[m_at]))
            ++m_at;
    }
    bool Take(QChar c)
    {
        SkipBlanks();
        if (m_at >= m_text.size() || m_text[m_at] != c)
            return false;
        ++m_at;
        return true;
    }
    static bool IsNameChar(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'$' || c.isSurrogate(); }
    bool TakeWord(QStringView word)
    {
        SkipBlanks();
        const qsizetype end = m_at + word.size();
        if (end > m_text.size() || QStringView(m_text).mid(m_at, word.size()).compare(word, Qt::CaseInsensitive) != 0)
            return false;
        if (end < m_text.size() && IsNameChar(m_text[end]))
            return false;
        m_at = end;
        return true;
    }
    // Everything up to the closing sign, which must be there.
    QString Enclosed(QChar close)
    {
        const qsizetype end = m_text.indexOf(close, m_at);
        if (end < 0)
            Malformed();
        const QString inner = m_text.mid(m_at, end - m_at);
        m_at = end + 1;
        return inner;
    }

    QString Name()
    {
        if (Take(u'['))
            return Enclosed(u']');
        const qsizetype from = m_at;
        while (m_at < m_text.size() && IsNameChar(m_text[m_at]))
            ++m_at;
        if (m_at == from)
            Malformed();
        return m_text.mid(from, m_at - from);
    }

    Operator TakeOperator()
    {
        static constexpr struct
        {
            QStringView sign;
            Operator op;
        } signs[] = {
            {u"<>", Operator::Unequal}, {u"<=", Operator::LessOrEqual}, {u">=", Operator::GreaterOrEqual},
            {u"=", Operator::Equal},    {u"<", Operator::Less},         {u">", Operator::Greater},
        };
        SkipBlanks();
        for (const auto &row : signs)
            if (QStringView(m_text).mid(m_at).startsWith(row.sign)) {
                m_at += row.sign.size();
                return row.op;
            }
        if (!TakeWord(u"LIKE"))
            Malformed();
        return Operator::Like;
    }

    void TakeValue(Node &node)
    {
        if (Take(u'\'')) {
            const QString text = Enclosed(u'\'');
            node.value = text;
            node.utf8 = text.toUtf8();
            const QByteArray digits = lang::Trim(text).toUtf8();
            node.numeric = IsDecimalText(digits);
            node.number = Decimal{digits};
        } else if (Take(u'#')) {
            TakeMoment(node);
        } else if (TakeWord(u"NULL")) {
            if (node.op != Operator::Equal && node.op != Operator::Unequal)
                Malformed();
        } else if (TakeWord(u"TRUE")) {
            node.value = true;
        } else if (TakeWord(u"FALSE")) {
            node.value = false;
        } else {
            TakeNumber(node);
        }
        if (node.op == Operator::Like && !node.value.As<QString>())
            Malformed();
    }

    void TakeMoment(Node &node)
    {
        const QByteArray text = lang::Trim(Enclosed(u'#')).toUtf8();
        Date date;
        Time time;
        Timestamp moment;
        if (ReadTimestamp(text, moment))
            node.value = moment;
        else if (ReadDate(text, date))
            node.value = date;
        else if (ReadTime(text, time))
            node.value = time;
        else
            Malformed();
    }

    void TakeNumber(Node &node)
    {
        SkipBlanks();
        const qsizetype from = m_at;
        while (m_at < m_text.size() && (QStringView(u"+-.0123456789").contains(m_text[m_at])))
            ++m_at;
        const QByteArray digits = m_text.mid(from, m_at - from).toUtf8();
        if (!IsDecimalText(digits) || (m_at < m_text.size() && IsNameChar(m_text[m_at])))
            Malformed();
        node.value = Decimal{digits};
    }

    const QString &m_text;
    const std::function<int(const QString &)> &m_columnOf;
    qsizetype m_at = 0;
};

bool Met(Operator op, int order)
{
    switch (op) {
    case Operator::Equal:
        return order == 0;
    case Operator::Unequal:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::Greater:
        return order > 0;
    case Operator::LessOrEqual:
        return order <= 0;
    default:
        return order >= 0;
    }
}

// Wildcards in one walk: at a mismatch the last run takes one character more.
bool IsLike(const QString &text, const QString &pattern)
{
    qsizetype t = 0, p = 0, run = -1, resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && (pattern[p] == u'*' || pattern[p] == u'%')) {
            run = ++p;
            resume = t;
        } else if (p < pattern.size() && pattern[p].toCaseFolded() == text[t].toCaseFolded()) {
            ++p;
            ++t;
        } else if (run >= 0) {
            p = run;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && (pattern[p] == u'*' || pattern[p] == u'%'))
        ++p;
    return p == pattern.size();
}

bool IsNumber(const Value &value)
{
    return value.As<qint64>() || value.As<quint64>() || value.As<double>() || value.As<Decimal>() || value.As<bool>();
}

// A boolean compares with a number as 0 and 1, whatever sign the true of other languages has.
Value Plain(const Value &value)
{
    const bool *truth = value.As<bool>();
    return truth ? Value(qint64(*truth ? 1 : 0)) : value;
}

// How a cell stands to the value of a condition: by value where both are numbers or moments, else by text.
int OrderOf(const Node &condition, const Value &cell)
{
    const Value &wanted = condition.value;
    if (IsNumber(cell)) {
        if (cell.As<bool>() == nullptr && condition.numeric)
            return CompareValues(cell, condition.number);
        if (IsNumber(wanted)) {
            if (cell.As<bool>() && !wanted.As<bool>()) // -1 is as true as 1
                return CompareValues(qint64(cell.ToBool()), qint64(wanted.ToBool()));
            return CompareValues(Plain(cell), Plain(wanted));
        }
    }
    const QString *const text = wanted.As<QString>();
    if (!text) {
        if (IsNumber(wanted) && cell.As<QString>()) {
            const QByteArray digits = lang::Trim(cell.ToText()).toUtf8();
            if (IsDecimalText(digits))
                return CompareValues(Decimal{digits}, Plain(wanted));
            return CompareText(cell.ToText(), wanted.ToText());
        }
        return CompareValues(cell, wanted);
    }
    const QByteArray utf8 = condition.utf8;
    Date date;
    Time time;
    Timestamp moment;
    const bool cellIsMoment = cell.As<Date>() || cell.As<Time>() || cell.As<Timestamp>();
    if (cellIsMoment && ReadTimestamp(utf8, moment))
        return CompareValues(cell, moment);
    if (cellIsMoment && ReadDate(utf8, date))
        return CompareValues(cell, date);
    if (cellIsMoment && ReadTime(utf8, time))
        return CompareValues(cell, time);
    return CompareText(cell.ToText(), *text);
}

bool ConditionMatches(const Node &node, const ColumnStore &column, qint64 row)
{
    if (node.value.IsNull())
        return column.IsNull(row) == (node.op == Operator::Equal);
    if (column.IsNull(row))
        return false;
    if (node.op == Operator::Like)
        return IsLike(column.Text(row), *node.value.As<QString>());
    if (node.value.As<QString>())
        if (const QByteArrayView cell = column.Utf8(row); !cell.isNull())
            return Met(node.op, CompareUtf8(cell, node.utf8)); // the common case, without a copy
    return Met(node.op, OrderOf(node, column.At(row)));
}

bool NodeMatches(const Node &node, const std::vector<ColumnStore> &columns, qint64 row)
{
    if (node.kind == Node::Condition)
        return ConditionMatches(node, columns[size_t(node.column)], row);
    const bool all = node.kind == Node::All;
    for (const NodePtr &part : node.parts)
        if (NodeMatches(*part, columns, row) != all)
            return !all;
    return all;
}

} // namespace

RowFilter::RowFilter(const QString &text, const std::function<int(const QString &)> &columnOf)
    : m_root(FilterParser(text, columnOf).Whole())
{
}

RowFilter::~RowFilter() = default;

bool RowFilter::Matches(const std::vector<ColumnStore> &columns, qint64 row) const
{
    return NodeMatches(*m_root, columns, row);
}

} // namespace ADODB
