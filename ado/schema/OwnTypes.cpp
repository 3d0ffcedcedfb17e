// The types of a family whose catalogue lists none.
#include "ado/family/CatalogueParts.h"
#include "ado/family/Family.h"
#include "ado/schema/OwnRows.h"
#include "ado/schema/TypeNames.h"

namespace ADODB {

void WriteTypes(const Family &family, RowsetWriter &writer, const QStringList &restrictions)
{
    using enum TypeRow::Trait;
    for (const TypeRow &row : family.Catalogue.Types) {
        const QString name = QString::fromLatin1(row.Name);
        const auto has = [&](unsigned trait) { return (row.Traits & trait) != 0; };
        writer.Put(u"TYPE_NAME", Value(name));
        writer.Put(u"LOCAL_TYPE_NAME", Value(name));
        writer.Put(u"DATA_TYPE", Value(int(ReadTypeName(family, name).Type)));
        if (row.Size > 0)
            writer.Put(u"COLUMN_SIZE", Value(row.Size));
        if (has(Quoted)) {
            writer.Put(u"LITERAL_PREFIX", Value(QStringLiteral("'")));
            writer.Put(u"LITERAL_SUFFIX", Value(QStringLiteral("'")));
        }
        if (has(Scaled)) {
            writer.Put(u"CREATE_PARAMS", Value(QStringLiteral("precision,scale")));
            writer.Put(u"MINIMUM_SCALE", Value(0));
            writer.Put(u"MAXIMUM_SCALE", Value(row.Scale));
        } else if (has(Sized)) {
            writer.Put(u"CREATE_PARAMS", Value(QStringLiteral("length")));
        }
        writer.Put(u"IS_NULLABLE", Value(true));
        writer.Put(u"CASE_SENSITIVE", Value(has(Quoted) && !has(Caseless)));
        writer.Put(u"SEARCHABLE", Value(has(Quoted) ? 4 : 3)); // 4: by LIKE too
        if (has(Number))
            writer.Put(u"UNSIGNED_ATTRIBUTE", Value(has(Unsigned)));
        writer.Put(u"FIXED_PREC_SCALE", Value(has(Money)));
        writer.Put(u"AUTO_UNIQUE_VALUE", Value(has(Counts)));
        writer.Put(u"IS_LONG", Value(has(Long)));
        writer.Put(u"BEST_MATCH", Value(has(Best)));
        writer.Put(u"IS_FIXEDLENGTH", Value(has(Fixed)));
        writer.EndRow(restrictions);
    }
}

} // namespace ADODB
