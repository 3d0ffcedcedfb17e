// The families that are known here. A new one is a folder and a row.
#include "ado/family/Families.h"

namespace ADODB {

std::span<const Family *const> Families()
{
    static const Family *const families[] = {&SqliteFamily(), &PostgresFamily(), &MySqlFamily(), &SqlServerFamily(),
                                             &OracleFamily()};
    return families;
}

const Family &FamilyOf(DatabaseFamily id)
{
    for (const Family *family : Families())
        if (family->Id == id)
            return *family;
    return NoFamily();
}

const Family &FamilyOfProduct(const QString &product)
{
    for (const Family *family : Families())
        for (const char *part : family->Products)
            if (product.contains(QLatin1String(part), Qt::CaseInsensitive))
                return *family;
    return NoFamily();
}

QSet<QByteArray> WordsOf(const char *text)
{
    const QList<QByteArray> words = QByteArray(text).split(' ');
    return {words.begin(), words.end()};
}

bool Family::SameName(const QString &left, const QString &right) const
{
    // Who folds names tells those in quotes apart by case.
    return left.compare(right, Names.Bare == Folding::Keeps ? Qt::CaseInsensitive : Qt::CaseSensitive) == 0;
}

QString Family::Folded(const QString &bareName) const
{
    switch (Names.Bare) {
    case Folding::Lower:
        return bareName.toLower();
    case Folding::Upper:
        return bareName.toUpper();
    case Folding::Keeps:
        break;
    }
    return bareName;
}

QString Family::LiteralOf(const QString &text) const
{
    QString inner = text;
    inner.replace(u'\'', QLatin1String("''"));
    if (Texts.DoublesBackslash)
        inner.replace(u'\\', QLatin1String("\\\\"));
    return QLatin1String(Texts.LiteralBegins) + inner + u'\'';
}

} // namespace ADODB
