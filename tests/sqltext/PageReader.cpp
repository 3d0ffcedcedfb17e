#include "PageReader.h"

#include <QHash>
#include <QSet>
#include <QVariant>
#include <stdexcept>

namespace {

struct Token
{
    enum Kind
    {
        Name,
        Number,
        Text,
        Sign,
        End
    } kind = End;
    QString text;
};

struct Fault : std::runtime_error
{
    explicit Fault(const QString &what) : std::runtime_error(what.toStdString()) {}
};

QList<Token> Tokens(const QString &line)
{
    QList<Token> tokens;
    for (qsizetype at = 0; at < line.size();) {
        const QChar c = line[at];
        const qsizetype from = at;
        if (c == u' ' || c == u'\t') {
            ++at;
        } else if (c == u'\'') {
            break;
        } else if (c == u'"') {
            QString text;
            for (++at;; ++at) {
                if (at >= line.size())
                    throw Fault(QStringLiteral("a string is not closed"));
                if (line[at] != u'"')
                    text += line[at];
                else if (line.mid(at + 1, 1) == QLatin1String("\""))
                    text += line[at++];
                else
                    break;
            }
            ++at;
            tokens += {Token::Text, text};
        } else if (c.isLetter() && c.unicode() < 128) {
            while (at < line.size() && line[at].unicode() < 128 && (line[at].isLetterOrNumber() || line[at] == u'_'))
                ++at;
            tokens += {Token::Name, line.mid(from, at - from).toLower()};
        } else if (c.isDigit()) {
            while (at < line.size() && line[at].isDigit())
                ++at;
            tokens += {Token::Number, line.mid(from, at - from)};
        } else if (QStringLiteral("&=().,-").contains(c)) {
            tokens += {Token::Sign, QString(c)};
            ++at;
        } else {
            throw Fault(QStringLiteral("a stray ") + c);
        }
    }
    return tokens;
}

// An object is a list of one text, its kind.
QVariant Object(const QString &kind)
{
    return QStringList(kind);
}

QString KindOf(const QVariant &value)
{
    return value.typeId() == QMetaType::QStringList ? value.toStringList().value(0) : QString();
}

class Machine
{
public:
    Machine(const QStringList &fields, const QList<QStringList> &rows) : m_fields(fields), m_rows(rows) {}

    void Run(const QStringList &lines)
    {
        for (const QString &line : lines)
            m_lines += Tokens(line);
        Match();
        for (m_line = 0; m_line < m_lines.size(); ++m_line) {
            m_at = 0;
            if (Peek().kind == Token::End)
                continue;
            Statement();
            if (Peek().kind != Token::End)
                throw Fault(QStringLiteral("more than a statement"));
        }
        for (const QString &name : {QStringLiteral("conn"), QStringLiteral("rsdata")})
            if (m_values.value(name) != Object(QStringLiteral("nothing")))
                throw Fault(name + QStringLiteral(" is not released"));
    }
    qsizetype Line() const { return m_line; }
    PageRun result;

private:
    static bool Is(const QList<Token> &line, std::initializer_list<const char *> words)
    {
        qsizetype at = 0;
        for (const char *word : words)
            if (at >= line.size() || line[at++].text != QLatin1String(word))
                return false;
        return true;
    }

    // Which line ends, or goes on with, the block that another opens.
    void Match()
    {
        QList<qsizetype> open;
        const auto close = [&](qsizetype line, std::initializer_list<const char *> openers) {
            if (open.isEmpty())
                throw Fault(QStringLiteral("a block ends that never began"));
            bool fits = false;
            for (const char *opener : openers)
                fits = fits || Is(m_lines[open.last()], {opener});
            if (!fits)
                throw Fault(QStringLiteral("blocks overlap"));
            m_other[open.last()] = line;
            m_other[line] = open.takeLast();
        };
        for (m_line = 0; m_line < m_lines.size(); ++m_line) {
            const QList<Token> &line = m_lines[m_line];
            if (Is(line, {"if"}) || Is(line, {"for"}) || Is(line, {"do"})) {
                open += m_line;
            } else if (Is(line, {"else"})) {
                close(m_line, {"if"});
                open += m_line;
            } else if (Is(line, {"end", "if"})) {
                close(m_line, {"if", "else"});
            } else if (Is(line, {"next"})) {
                close(m_line, {"for"});
            } else if (Is(line, {"loop"})) {
                close(m_line, {"do"});
            }
        }
        if (!open.isEmpty())
            throw Fault(QStringLiteral("a block never ends"));
    }

    Token Peek() const { return m_lines[m_line].value(m_at); }
    Token Take()
    {
        const Token token = Peek();
        ++m_at;
        return token;
    }
    bool TakeIf(const char *text)
    {
        const bool there = Peek().kind != Token::Text && Peek().text == QLatin1String(text);
        m_at += there ? 1 : 0;
        return there;
    }
    void Want(const char *text)
    {
        if (!TakeIf(text))
            throw Fault(QStringLiteral("no ") + QLatin1String(text) + QStringLiteral(" before ") + Peek().text);
    }
    QString Declared(const QString &name)
    {
        if (!m_names.contains(name))
            throw Fault(name + QStringLiteral(" is not declared"));
        return name;
    }
    void Assign(const QString &name, const QVariant &value)
    {
        if (m_constants.contains(Declared(name)))
            throw Fault(name + QStringLiteral(" is a constant"));
        m_values[name] = value;
    }

    void Statement()
    {
        if (TakeIf("dim")) {
            m_names += Take().text;
        } else if (TakeIf("const")) {
            const QString name = Take().text;
            Want("=");
            m_values[name] = Expression();
            m_names += name;
            m_constants += name;
        } else if (TakeIf("set")) {
            const QString name = Take().text;
            Want("=");
            const QVariant value = Expression();
            if (KindOf(value).isEmpty())
                throw Fault(QStringLiteral("Set of what is no object"));
            Assign(name, value);
        } else if (TakeIf("if")) {
            const bool so = Expression().toBool();
            Want("then");
            if (!so)
                m_line = SkipTo(m_other[m_line]);
        } else if (TakeIf("else")) {
            m_line = SkipTo(m_other[m_line]);
        } else if (TakeIf("end")) {
            Want("if");
        } else if (TakeIf("for")) {
            const QString name = Take().text;
            Want("=");
            Assign(name, Expression());
            Want("to");
            m_last[m_line] = Expression().toInt();
            if (m_values[name].toInt() > m_last[m_line])
                m_line = SkipTo(m_other[m_line]);
        } else if (TakeIf("next")) {
            const qsizetype head = m_other[m_line];
            const QString name = m_lines[head][1].text;
            m_values[name] = m_values[name].toInt() + 1;
            if (m_values[name].toInt() <= m_last[head])
                m_line = SkipTo(head);
        } else if (TakeIf("do")) {
            Want("until");
            if (Expression().toBool())
                m_line = SkipTo(m_other[m_line]);
        } else if (TakeIf("loop")) {
            m_line = m_other[m_line]; // asks again
            m_at = 0;
            Statement();
        } else {
            Call();
        }
    }
    qsizetype SkipTo(qsizetype line)
    {
        m_at = m_lines[line].size();
        return line;
    }

    // An assignment, or an operation without parentheses.
    void Call()
    {
        const QString name = Take().text;
        if (TakeIf("=")) {
            Assign(name, Expression());
            return;
        }
        Want(".");
        const QString operation = Take().text;
        if (name == QLatin1String("response") && operation == QLatin1String("write")) {
            result.output += Expression().toString();
            return;
        }
        const QString kind = KindOf(m_values.value(Declared(name)));
        if (kind == QLatin1String("ADODB.CONNECTION") && operation == QLatin1String("open")) {
            result.connection = Expression().toString();
            m_values[name] = Object(QStringLiteral("open"));
        } else if (kind == QLatin1String("rows") && operation == QLatin1String("movenext")) {
            ++m_row;
        } else {
            throw Fault(kind + QStringLiteral(" has no ") + operation);
        }
    }

    QVariant Expression()
    {
        if (TakeIf("not"))
            return !Expression().toBool();
        QVariant value = Value();
        for (;;) {
            if (TakeIf("&"))
                value = value.toString() + Value().toString();
            else if (TakeIf("-"))
                value = value.toInt() - Value().toInt();
            else
                return value;
        }
    }
    QVariant Value()
    {
        const Token token = Take();
        if (token.kind == Token::Text)
            return token.text;
        if (token.kind == Token::Number)
            return token.text.toInt();
        if (token.kind != Token::Name)
            throw Fault(QStringLiteral("no value but ") + token.text);
        static const QHash<QString, QVariant> builtIn = {
            {QStringLiteral("vbtab"), QStringLiteral("\t")},
            {QStringLiteral("vbcrlf"), QStringLiteral("\r\n")},
            {QStringLiteral("vbcr"), QStringLiteral("\r")},
            {QStringLiteral("vblf"), QStringLiteral("\n")},
            {QStringLiteral("nothing"), Object(QStringLiteral("nothing"))}};
        if (builtIn.contains(token.text))
            return builtIn[token.text];
        if (token.text == QLatin1String("string")) {
            Want("(");
            const int count = Expression().toInt();
            Want(",");
            const QString sign = Expression().toString();
            Want(")");
            return sign.repeated(count);
        }
        if (token.text == QLatin1String("server")) {
            Want(".");
            Want("createobject");
            Want("(");
            const QString kind = Expression().toString();
            Want(")");
            return Object(kind);
        }
        return Member(m_values.value(Declared(token.text)));
    }
    // What stands behind a variable: a member, an operation with its argument, an element.
    QVariant Member(const QVariant &value)
    {
        const QString kind = KindOf(value);
        if (kind == QLatin1String("open") && TakeIf(".")) {
            Want("execute");
            Want("(");
            result.statement = Expression().toString();
            Want(")");
            return Object(QStringLiteral("rows"));
        }
        if (kind != QLatin1String("rows"))
            return value;
        if (TakeIf("(")) {
            const int field = Expression().toInt();
            Want(")");
            Want(".");
            if (field < 0 || field >= m_fields.size())
                throw Fault(QStringLiteral("no such field"));
            if (TakeIf("name"))
                return m_fields[field];
            Want("value");
            if (m_row >= m_rows.size())
                throw Fault(QStringLiteral("read behind the last row"));
            return m_rows[m_row][field];
        }
        if (!TakeIf("."))
            return value;
        if (TakeIf("eof"))
            return m_row >= m_rows.size();
        Want("fields");
        Want(".");
        Want("count");
        return int(m_fields.size());
    }

    const QStringList m_fields;
    const QList<QStringList> m_rows;
    QList<QList<Token>> m_lines;
    QHash<qsizetype, qsizetype> m_other; // of a block: from its head to its end and back
    QHash<qsizetype, int> m_last;        // of a For by its line
    QSet<QString> m_names, m_constants;
    QHash<QString, QVariant> m_values;
    qsizetype m_line = 0, m_at = 0, m_row = 0;
};

} // namespace

PageRun RunPage(const QString &page, const QStringList &fields, const QList<QStringList> &rows)
{
    Machine machine(fields, rows);
    QStringList lines = page.split(QStringLiteral("\r\n"));
    if (lines.size() < 2 || lines.takeFirst() != QLatin1String("<%") || lines.takeLast() != QLatin1String("%>"))
        machine.result.faults += QStringLiteral("no script between its marks");
    if (page.count(QStringLiteral("%>")) != 1)
        machine.result.faults += QStringLiteral("the script ends early");
    try {
        machine.Run(lines);
    } catch (const Fault &fault) {
        machine.result.faults +=
            QStringLiteral("line %1: ").arg(machine.Line() + 1) + QString::fromStdString(fault.what());
    }
    return machine.result;
}
