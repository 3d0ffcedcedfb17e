#include "movement/logic/ImportPreview.h"
#include "movement/logic/FieldSplit.h"
#include "movement/logic/LineReader.h"

namespace {

constexpr struct
{
    const char *Entry, *Delimiter;
} delimiters[] = {{"Comma", ","}, {"Tab", "\t"}, {"Space", " "}, {"Semicolon", ";"}, {"Bar", "|"}};

// The field as it is shown: its first bytes, and no part of a character.
QString Shown(QByteArrayView field)
{
    QByteArrayView text = StripQuotes(field);
    if (text.size() > ImportPreviewBytes) {
        qsizetype end = ImportPreviewBytes;
        while (end > 0 && (uchar(text[end]) & 0xC0) == 0x80)
            --end;
        text = text.first(end);
    }
    return QString::fromUtf8(text);
}

} // namespace

ImportPreview ReadImportPreview(const QString &path, const QString &delimiter, const std::function<bool()> &goOn)
{
    ImportPreview preview;
    LineReader reader(path);
    const QByteArray cut = delimiter.toUtf8();
    std::vector<QByteArrayView> fields;
    QByteArrayView line;
    qint64 number = 0;
    qsizetype cells = 0;
    while (goOn() && reader.Next(line)) {
        if (IsBlankLine(line))
            continue;
        SplitFields(line, cut, fields);
        if (++number == 1) {
            for (QByteArrayView field : fields)
                preview.FirstLine += Shown(field);
        } else if (qsizetype(fields.size()) > preview.FirstLine.size()) {
            preview.Inconsistent = true;
            break;
        }
        if (cells > ImportPreviewCells)
            continue;
        cells += qsizetype(fields.size());
        ImportPreview::Line shown{number, {}};
        for (QByteArrayView field : fields)
            shown.Fields += Shown(field);
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
