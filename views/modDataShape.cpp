#include "views/modDataShape.h"

#include "ado/Error.h"
#include "data/ProbeSQL.h"
#include "lang/Text.h"
#include "sqltext/Statements.h"
#include "sqltext/clsDStreamBuffer.h"
#include "sqltext/modSQLMaipulation.h"
#include "visual/frmJoin.h"

int gShapeDepth = 0;
QHash<QString, QString> gShapeNames;

namespace {

constexpr int kInvalidCall = 5, kTypeMismatch = 13;
constexpr int kNamedLevels = 3;

const QString &CrLf()
{
    static const QString text = QStringLiteral("\r\n");
    return text;
}

class JoinDialog : public ShapeJoin
{
public:
    void LoadFields(const QString &statement, const QString &title, int index) override
    {
        m_form.LoadFields(statement, title, index);
    }
    void FindMatch() override { m_form.FindMatch(); }
    std::optional<std::pair<QString, QString>> Ask() override
    {
        m_form.ShowModal();
        if (m_form.Cancelled)
            return {};
        return std::pair(m_form.Field1, m_form.Field2);
    }

private:
    frmJoin m_form;
};

QString Token(int level)
{
    return QStringLiteral("`~DS%1~`").arg(level);
}

// The suffix of a declared type. Types that take a size stand bare: their fields' sizes are those of the values of one
// table, not of a declaration.
QString SizeOf(const ADODB::Field &field)
{
    const int type = int(field.Type());
    if (IsSizedType(type))
        return {};
    if (!HasPrecisionType(type))
        return QStringLiteral("(%1)").arg(field.DefinedSize());
    return QStringLiteral("(%1,%2)").arg(field.Precision()).arg(field.NumericScale());
}

QString DeclaredFields(const QString &statement)
{
    if (IsAlteringSQL(statement))
        return QStringLiteral("Critical Error");
    const ADODB::RecordsetPtr probed = CurrentShapeAsks().Probe(QStringLiteral("SELECT TEMP.* From (") + statement +
                                                                QStringLiteral(") TEMP WHERE 1=0"));
    if (!probed)
        return QStringLiteral("SQL ERROR");
    QString fields;
    for (int i = 0; i < probed->Fields().Count(); ++i) {
        const ADODB::Field &field = probed->Fields()[i];
        if (!fields.isEmpty())
            fields += QString(gShapeDepth - 1, u'\t') + QStringLiteral(", ");
        fields += QStringLiteral("New ad") + GetTypeName(int(field.Type()), false) + SizeOf(field) +
                  QStringLiteral(" as ") + field.Name() + CrLf();
    }
    return fields;
}

} // namespace

ShapeAsks &CurrentShapeAsks()
{
    static ShapeAsks asks{[] { return std::make_unique<JoinDialog>(); },
                          [](const QString &sql) { return ProbeSQL(sql); }};
    return asks;
}

QString GetShapeName(int Level)
{
    static constexpr const char *names[kNamedLevels] = {"MotherShp", "ChildShp", "GrandChildShp"};
    if (Level > kNamedLevels) // a longer name was meant to come, and never does
        throw ADODB::Error(kTypeMismatch, QStringLiteral("Type mismatch"));
    return QString::fromLatin1(names[qMax(Level, 1) - 1]);
}

std::pair<QString, QString> SplitFirstStatement(const QString &SQLText)
{
    const QString blankLine = CrLf() + CrLf();
    QString cleaned = clsDStreamBuffer::CleanDuplicates(SQLText, blankLine);
    cleaned = lang::Replace(cleaned, CrLf() + u' ' + CrLf(), blankLine);
    const qsizetype pos = cleaned.indexOf(blankLine) + 1;
    if (pos < 1 || pos >= SQLText.size() + 2)
        return {SQLText, QString()};
    return {SQLText.left(pos), lang::Mid(SQLText, pos + 2)};
}

QString BuildDataShape(const QString &SQLText)
{
    if (SQLText.isEmpty())
        return {};
    qsizetype last = -1;
    const QStringList statements = SplitStatements(SQLText, last);
    if (last == 0)
        return SQLText;
    if (last < 0) // there is no statement of the first key
        throw ADODB::Error(kInvalidCall, QStringLiteral("Invalid procedure call or argument"));
    QString shape = QStringLiteral("SHAPE {") + statements[0] + u'}';
    for (int i = 1; i <= last; ++i) {
        const std::unique_ptr<ShapeJoin> join = CurrentShapeAsks().NewJoin();
        join->LoadFields(statements[i - 1], GetShapeName(i), 0);
        join->LoadFields(statements[i], GetShapeName(i + 1), 1);
        join->FindMatch();
        const auto chosen = join->Ask();
        if (!chosen)
            return {};
        shape += QStringLiteral(" APPEND ({") + statements[i] + QStringLiteral("} RELATE ") + chosen->first +
                 QStringLiteral(" TO ") + chosen->second + u')';
    }
    return shape;
}

QString BuildDummyLevel(const QString &SQLText)
{
    ++gShapeDepth;
    const auto [head, rest] = SplitFirstStatement(SQLText);
    const QString fields = DeclaredFields(head);
    const QString name = GetShapeName(gShapeDepth);
    gShapeNames.insert(QStringLiteral("K%1").arg(gShapeDepth - 1), name);
    const int depth = gShapeDepth;
    QString composed;
    if (depth == 1) {
        composed = QStringLiteral("SHAPE APPEND  ") + fields + QStringLiteral(", ") + BuildDummyLevel(rest);
    } else {
        composed = QString(depth - 2, u'\t') + QStringLiteral("((SHAPE APPEND  ") + fields;
        if (!rest.isEmpty())
            composed += QStringLiteral(", ") + BuildDummyLevel(rest);
        composed += QStringLiteral(") RELATE  ") + Token(depth - 1) + QStringLiteral(" TO ") + Token(depth) +
                    QStringLiteral(" ) as ") + name;
    }
    --gShapeDepth;
    return composed;
}

QString BuildDummyShape(const QString &SQLText)
{
    if (SQLText.isEmpty())
        return {};
    qsizetype last = -1;
    const QStringList statements = SplitStatements(SQLText, last);
    gShapeNames.clear();
    if (last == 0)
        return SQLText;
    QString shape = BuildDummyLevel(SQLText);
    for (int i = 0; i < last; ++i) {
        const std::unique_ptr<ShapeJoin> join = CurrentShapeAsks().NewJoin();
        join->LoadFields(statements[i], gShapeNames.value(QStringLiteral("K%1").arg(i)), 0);
        join->LoadFields(statements[i + 1], gShapeNames.value(QStringLiteral("K%1").arg(i + 1)), 1);
        join->FindMatch();
        const auto chosen = join->Ask();
        if (!chosen)
            return {};
        // The right column counts in the last dialog alone: between them the next one's left column stands on both
        // sides of its level.
        shape = lang::Replace(shape, Token(i + 1), chosen->first);
        if (i == last - 1)
            shape = lang::Replace(shape, Token(i + 2), chosen->second);
    }
    return shape;
}
