// The worked cases of the import and of the transfer.
#include "ado/Error.h"
#include "ado/Types.h"
#include "movement/logic/FieldSplit.h"
#include "movement/logic/ImportPreview.h"
#include "movement/logic/ImportRun.h"
#include "movement/logic/LineReader.h"
#include "movement/logic/TransferRun.h"
#include "tests/support/ExpectCases.h"
#include <QJsonArray>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

QString T(const QJsonObject &args, const char *key)
{
    return args[QLatin1String(key)].toString();
}

QStringList Texts(const QJsonValue &array)
{
    QStringList texts;
    for (const QJsonValue &one : array.toArray())
        texts += one.toString();
    return texts;
}

QJsonArray Json(const QStringList &texts)
{
    return QJsonArray::fromStringList(texts);
}

QString FileOf(const QTemporaryDir &folder, const QString &text)
{
    QFile file(folder.filePath(QStringLiteral("case.csv")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    return file.fileName();
}

struct Rows : ImportTarget
{
    explicit Rows(QStringList names) : Names(std::move(names)) {}
    QStringList Names;
    QJsonArray Taken;
    QJsonObject Row;
    void AddNew() override { Row = {}; }
    void SetField(int field, QByteArrayView utf8) override { Row[Names[field]] = QString::fromUtf8(utf8); }
    void Update() override { Taken += Row; }
};

QJsonValue Import(const QJsonObject &args)
{
    const QTemporaryDir folder;
    LineReader reader(FileOf(folder, T(args, "text")));
    ImportPlan plan;
    plan.Delimiter = T(args, "delimiter");
    plan.FirstIsNames = args[u"first_is_data"].toBool();
    plan.Columns = args[u"columns"].toInt();
    plan.FieldNames = Texts(args[u"mapping"]);
    for (int i = 0; i < plan.FieldNames.size(); ++i)
        plan.FieldOf.push_back(plan.FieldNames[i].isEmpty() ? -1 : i);
    plan.Tolerance = -1;
    Rows rows(plan.FieldNames);
    ImportRun run(plan, rows);
    EXPECT_EQ(run.Lines(reader, [] { return true; }), ImportRun::Ending::Finished);
    QJsonArray tooMany;
    static const QRegularExpression entry(QStringLiteral("Record (\\d+)\\)"));
    for (auto match = entry.globalMatch(run.Log().Text()); match.hasNext();)
        tooMany += match.next().captured(1).toInt();
    return QJsonObject{{QStringLiteral("rows"), rows.Taken}, {QStringLiteral("too_many"), tooMany}};
}

// Which error ends the run; 0 when none of so many does.
QJsonValue FirstThat(int errors, const std::function<bool(int)> &ends)
{
    for (int i = 1; i <= errors; ++i)
        if (ends(i))
            return i;
    return 0;
}

struct Source : TransferSource
{
    QJsonArray Rows;
    qsizetype At = 0;
    bool AtEnd() override { return At >= Rows.size(); }
    ADODB::Value Value(const QString &field) override
    {
        const QJsonValue value = Rows[At].toObject()[field];
        return value.isNull()     ? ADODB::Value()
               : value.isString() ? ADODB::Value(value.toString())
                                  : ADODB::Value(value.toDouble());
    }
    void MoveNext() override { ++At; }
};

struct Target : TransferTarget
{
    QJsonArray Rows;
    QJsonObject Row;
    void AddNew() override { Row = {}; }
    void SetField(const QString &field, const ADODB::Value &value) override
    {
        if (value.IsNull())
            Row[field] = QJsonValue();
        else if (const double *number = value.As<double>())
            Row[field] = *number;
        else
            Row[field] = value.ToText();
    }
    void Update() override { Rows += Row; }
    void CancelUpdate() override {}
};

QJsonValue Transfer(const QJsonObject &args)
{
    std::vector<TransferColumn> columns;
    const QStringList fields = Texts(args[u"destination"]), mapping = Texts(args[u"row0"]);
    for (int i = 0; i < fields.size(); ++i)
        columns.push_back({fields[i], mapping.value(i)});
    Source source;
    source.Rows = args[u"source"].toArray();
    Target target;
    TransferRun run(columns, QStringLiteral("0"), source, target);
    EXPECT_EQ(run.Rows([] { return true; }), TransferRun::Ending::Finished);
    return target.Rows;
}

QJsonValue Mapping(const QJsonObject &args)
{
    const MappingValue value = MappingOf(T(args, "value"));
    switch (value.Kind) {
    case MappingValue::Null:
        return QJsonArray{QStringLiteral("null"), QJsonValue()};
    case MappingValue::Text:
        return QJsonArray{QStringLiteral("string"), value.String};
    case MappingValue::Number:
        return QJsonArray{QStringLiteral("number"), value.Double};
    case MappingValue::Unmapped:
        return QJsonArray{QStringLiteral("unmapped"), QJsonValue()};
    case MappingValue::Field:
        return QJsonArray{QStringLiteral("field"), value.String};
    }
    return {};
}

QJsonValue Numeric(const QJsonObject &args)
{
    const NumericConstant number = NumericOf(T(args, "answer"));
    const bool kept = number.Value && (!number.Ask || args[u"yes"].toBool());
    return QJsonObject{{QStringLiteral("value"), kept ? QJsonValue(*number.Value) : QJsonValue()},
                       {QStringLiteral("asked"), number.Ask ? QJsonValue(*number.Value) : QJsonValue()}};
}

} // namespace

#define MOVEMENT_CASES(Name, op, ...)                                                                                  \
    TEST(MovementCases, Name)                                                                                          \
    {                                                                                                                  \
        ExpectCases(op, __VA_ARGS__, cases::kVisual);                                                                  \
    }

MOVEMENT_CASES(StripQuotes, "strip_quotes", [](const QJsonObject &args) { return StripQuotes(T(args, "text")); })
MOVEMENT_CASES(Headings, "import_headers", [](const QJsonObject &args) {
    const QTemporaryDir folder;
    const ImportPreview preview =
        ReadImportPreview(FileOf(folder, T(args, "line")), T(args, "delimiter"), [] { return true; });
    return QJsonValue(Json(ImportHeadings(preview.FirstLine, args[u"first_is_data"].toBool())));
})
MOVEMENT_CASES(ImportRows, "import_rows", Import)
MOVEMENT_CASES(ImportTolerance, "import_tolerance", [](const QJsonObject &args) {
    const qint64 tolerance = ToleranceOf(T(args, "tolerance"));
    return FirstThat(args[u"errors"].toInt(), [&](int count) { return ExceedsTolerance(count, tolerance); });
})
MOVEMENT_CASES(TransferTolerance, "transfer_tolerance", [](const QJsonObject &args) {
    return FirstThat(args[u"errors"].toInt(), [&](int count) { return StopsTransfer(count, T(args, "tolerance")); });
})
MOVEMENT_CASES(MapValue, "map_value", Mapping)
MOVEMENT_CASES(StringConstants, "string_constant", [](const QJsonObject &args) {
    const auto text = StringConstant(T(args, "answer"));
    return text ? QJsonValue(*text) : QJsonValue();
})
MOVEMENT_CASES(NumericConstants, "numeric_constant", Numeric)
MOVEMENT_CASES(FirstFillByName, "first_fill", [](const QJsonObject &args) {
    return QJsonValue(Json(FirstFill(Texts(args[u"destination"]), Texts(args[u"source"]))));
})
MOVEMENT_CASES(TransferredRows, "transfer", Transfer)
MOVEMENT_CASES(Report, "transfer_report", [](const QJsonObject &args) {
    const TransferReport report = ReportOf(args[u"import"].toBool(), args[u"count"].toInt());
    return QJsonValue(QJsonObject{{QStringLiteral("title"), report.Title}, {QStringLiteral("text"), report.Text}});
})
