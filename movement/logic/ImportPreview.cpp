#include "movement/logic/ImportPreview.h"
#include "movement/logic/FieldSplit.h"
#include "movement/logic/LineReader.h"

namespace {

constexpr struct
{
    const char *Entry, *Delimiter;
} delimiters[] = {{"Comma", ","}, {"Tab", "\t"}, {"Space", " "}, {"Semicolon", ";"}, {"Bar", "|"}};

} // namespace

ImportPreview ReadImportPreview(const QString &path, const QString &delimiter, const std::function<bool()> &goOn)
{
    ImportPreview preview;
    LineReader reader(path);
    const QByteArray cut = delimiter.toUtf8();
    std::vector<QByteArrayView> fields;
    QByteArrayView line;
    qint64 number = 0;
    while (goOn() && reader.Next(line)) {
        if (IsBlankLine(line))
            continue;
        SplitFields(line, cut, fields);
        if (++number == 1) {
            for (QByteArrayView field : fields)
                preview.FirstLine += QString::fromUtf8(StripQuotes(field));
        } else if (qsizetype(fields.size()) > preview.FirstLine.size()) {
            preview.Inconsistent = true;
            break;
        }
        ImportPreview::Line shown{number, {}};
        for (QByteArrayView field : fields)
            shown.Fields += QString::fromUtf8(StripQuotes(field));
        preview.Lines.push_back(std::move(shown));
    }
    return preview;
}

QStringList ImportHeadings(const QStringList &firstLine, bool firstIsNames)
{
    if (firstIsNames)
        return firstLine;
    QStringList headings;
    for (qsizetype i = 1; i <= firstLine.size(); ++i)
        headings += QStringLiteral("Col%1").arg(i);
    return headings;
}

QString DelimiterOf(const QString &entry)
{
    for (const auto &row : delimiters)
        if (entry == QLatin1String(row.Entry))
            return QString::fromLatin1(row.Delimiter);
    return entry;
}

QStringList DelimiterEntries()
{
    QStringList entries;
    for (const auto &row : delimiters)
        entries += QString::fromLatin1(row.Entry);
    return entries;
}
