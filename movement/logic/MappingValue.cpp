#include "movement/logic/MappingValue.h"
#include "lang/Text.h"

MappingValue MappingOf(const QString &text)
{
    if (text == QLatin1String("NULL"))
        return {MappingValue::Null, {}, 0};
    if (text.startsWith(QLatin1Char('\'')))
        return {MappingValue::Text, text.mid(1, qMax(qsizetype(0), text.size() - 2)), 0}; // doubled ones stay doubled
    if (lang::IsNumeric(text))
        return {MappingValue::Number, text, lang::Val(text)};
    if (text.isEmpty())
        return {};
    return {MappingValue::Field, text, 0};
}

std::optional<QString> StringConstant(const QString &answer)
{
    if (answer.isEmpty())
        return {};
    const QString quote = QStringLiteral("'");
    return quote + lang::Replace(answer, quote, QStringLiteral("''")) + quote;
}

NumericConstant NumericOf(const QString &answer)
{
    if (answer.isEmpty())
        return {};
    if (lang::IsNumeric(answer))
        return {answer, false};
    return {lang::CStr(lang::Val(answer)), true};
}

QStringList FirstFill(const QStringList &destination, const QStringList &source)
{
    QStringList mapping;
    for (const QString &field : destination)
        mapping += source.contains(field) ? field : QString();
    return mapping;
}

std::optional<QString> ConstantShown(const QString &mapping)
{
    const MappingValue value = MappingOf(mapping);
    switch (value.Kind) {
    case MappingValue::Null:
        return QStringLiteral("NULL");
    case MappingValue::Text:
    case MappingValue::Number:
        return value.String;
    default:
        return {};
    }
}
