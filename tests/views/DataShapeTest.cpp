// The builder of hierarchies: its worked cases, with the dialog and the asking for columns played by the case.
#include "ado/Error.h"
#include "tests/support/ExpectCases.h"
#include "tests/views/Hirarchy.h"
#include "views/modDataShape.h"
#include <QJsonArray>

namespace {

// What the case says of the dialogs and of the data source, and what was asked of them.
struct Script
{
    QJsonArray Choices, Probes;
    QJsonArray Loads, Probed;
    qsizetype Shown = 0;
};

class ScriptedJoin : public ShapeJoin
{
public:
    explicit ScriptedJoin(Script &script) : m_script(script) {}
    void LoadFields(const QString &statement, const QString &title, int index) override
    {
        m_script.Loads += QJsonArray{statement, title, index};
    }
    void FindMatch() override { m_matched = true; }
    std::optional<std::pair<QString, QString>> Ask() override
    {
        EXPECT_TRUE(m_matched);
        const QJsonValue choice = m_script.Choices[m_script.Shown++];
        const QString left = choice[0].toString(), right = choice[1].toString();
        if (choice.isNull() || left.isEmpty() || right.isEmpty()) // as the dialog's OK with an empty column
            return {};
        return std::pair(left, right);
    }

private:
    Script &m_script;
    bool m_matched = false;
};

ADODB::RecordsetPtr Probed(const QJsonArray &fields)
{
    std::vector<ADODB::ColumnInfo> columns;
    std::vector<ADODB::ColumnStore> stores;
    for (const QJsonValue &field : fields) {
        ADODB::ColumnInfo column;
        column.Name = field[u"name"].toString();
        column.Type = ADODB::DataTypeEnum(field[u"type"].toInt());
        column.DefinedSize = field[u"size"].toInt();
        column.Precision = field[u"precision"].toInt();
        column.NumericScale = field[u"scale"].toInt();
        columns.push_back(column);
        stores.emplace_back(column.Type);
    }
    return ADODB::Recordset::FromColumns(std::move(columns), std::move(stores));
}

class DataShape : public testing::Test
{
protected:
    void SetUp() override
    {
        m_former = CurrentShapeAsks();
        gShapeDepth = 0;
        CurrentShapeAsks().NewJoin = [this] { return std::make_unique<ScriptedJoin>(m_script); };
        CurrentShapeAsks().Probe = [this](const QString &sql) -> ADODB::RecordsetPtr {
            m_script.Probed += sql;
            for (const QJsonValue &probe : m_script.Probes)
                if (probe[0].toString() == sql)
                    return Probed(probe[1].toArray());
            return nullptr;
        };
    }
    void TearDown() override
    {
        CurrentShapeAsks() = m_former;
        gShapeDepth = 0;
    }
    QJsonObject Built(QString (*build)(const QString &), const QString &text)
    {
        QJsonObject got;
        try {
            got[QStringLiteral("shape")] = build(text);
        } catch (const ADODB::Error &error) {
            got[QStringLiteral("error")] = error.Number;
            EXPECT_EQ(error.Description, error.Number == 13 ? "Type mismatch" : "Invalid procedure call or argument");
        }
        got[QStringLiteral("loads")] = m_script.Loads;
        return got;
    }

    Script m_script;

private:
    ShapeAsks m_former;
};

TEST_F(DataShape, SplitsTheFirstStatementOff)
{
    ExpectCases(
        "split_first",
        [](const QJsonObject &args) {
            const auto [head, rest] = SplitFirstStatement(args[u"text"].toString());
            return QJsonValue(QJsonArray{head, rest});
        },
        cases::kVisual);
}

TEST_F(DataShape, NamesItsLevels)
{
    ExpectCases(
        "shape_name", [](const QJsonObject &args) { return QJsonValue(GetShapeName(args[u"level"].toInt())); },
        cases::kVisual);
    EXPECT_THROW(GetShapeName(4), ADODB::Error);
}

TEST_F(DataShape, OverItsRows)
{
    ExpectCases(
        "data_shape",
        [&](const QJsonObject &args) {
            m_script = {args[u"choices"].toArray(), {}, {}, {}, 0};
            return QJsonValue(Built(BuildDataShape, args[u"text"].toString()));
        },
        cases::kVisual);
}

// The depth of one case's texts is that of one process: an error leaves it raised for the next text.
TEST_F(DataShape, Fabricated)
{
    ExpectCases(
        "dummy_shape",
        [&](const QJsonObject &args) {
            gShapeDepth = 0;
            QJsonArray all;
            for (qsizetype i = 0; i < args[u"texts"].toArray().size(); ++i) {
                m_script = {args[u"choices"][i].toArray(), args[u"probes"].toArray(), {}, {}, 0};
                QJsonObject got = Built(BuildDummyShape, args[u"texts"][i].toString());
                got[QStringLiteral("probes")] = m_script.Probed;
                got[QStringLiteral("depth")] = gShapeDepth;
                all += got;
            }
            return QJsonValue(all);
        },
        cases::kVisual);
}

QJsonArray Below(const ADODB::RecordsetPtr &rows)
{
    QJsonArray all;
    const int last = rows->ColumnCount() - 1;
    for (qint64 row = 0; row < rows->RowCount(); ++row) {
        QJsonArray children;
        if (rows->Column(last).Type == ADODB::adChapter) {
            const ADODB::Value value = rows->CellValue(row, last);
            children = Below(*value.As<ADODB::Chapter>());
        }
        all += children;
    }
    return all;
}

TEST_F(DataShape, MadeUpRowsAreOneMoreFromRowToRow)
{
    const ADODB::ConnectionPtr connection = ADODB::Connection::Create();
    connection->Open(QStringLiteral("provider=msdatashape;data provider=none;"));
    const auto filled = [&](int levels, int seed) {
        QString shape = QStringLiteral("SHAPE APPEND NEW adInteger AS a");
        for (int level = levels; level > 1; --level)
            shape = level == levels ? QStringLiteral("SHAPE APPEND NEW adInteger AS a") : shape;
        for (int level = 1; level < levels; ++level)
            shape = QStringLiteral("SHAPE APPEND NEW adInteger AS a, ((%1) RELATE a TO a) AS c").arg(shape);
        const ADODB::RecordsetPtr rows = ADODB::Recordset::Create();
        rows->Open(shape, connection, ADODB::adOpenStatic, ADODB::adLockOptimistic, -1);
        frmHirarchy::GenerateDummyData(rows, seed);
        return Below(rows);
    };
    ExpectCases(
        "dummy_data",
        [&](const QJsonObject &args) { return QJsonValue(filled(args[u"levels"].toInt(), args[u"seed"].toInt())); },
        cases::kVisual);
    const QJsonArray one{QJsonArray()}, two{QJsonArray(), QJsonArray()};
    // Three levels: 1, 2 and 3 children, each with children of its own.
    EXPECT_EQ(filled(3, 2), QJsonArray({QJsonArray{one}, QJsonArray({one, two})}));
}

// Each type that a field may be declared with takes the made-up value; one that raised would end the rows.
TEST_F(DataShape, EveryTypeTakesTheMadeUpValue)
{
    const ADODB::ConnectionPtr connection = ADODB::Connection::Create();
    connection->Open(QStringLiteral("provider=msdatashape;data provider=none;"));
    QStringList fields;
    for (const char *type : {"adBigInt",
                             "adBinary",
                             "adBoolean",
                             "adBSTR",
                             "adChar",
                             "adCurrency",
                             "adDate",
                             "adDBDate",
                             "adDBTime",
                             "adDBTimeStamp",
                             "adDecimal",
                             "adDouble",
                             "adGUID",
                             "adInteger",
                             "adLongVarWChar",
                             "adNumeric",
                             "adSingle",
                             "adSmallInt",
                             "adTinyInt",
                             "adUnsignedBigInt",
                             "adUnsignedInt",
                             "adUnsignedSmallInt",
                             "adUnsignedTinyInt",
                             "adVarChar",
                             "adVarWChar",
                             "adVariant",
                             "adWChar"})
        fields += QStringLiteral("NEW %1 AS f%2").arg(QLatin1String(type)).arg(fields.size());
    const ADODB::RecordsetPtr rows = ADODB::Recordset::Create();
    rows->Open(QStringLiteral("SHAPE APPEND ") + fields.join(QStringLiteral(", ")), connection, ADODB::adOpenStatic,
               ADODB::adLockOptimistic, -1);
    frmHirarchy::GenerateDummyData(rows, 3);
    ASSERT_EQ(rows->RecordCount(), 3);
    QStringList texts;
    for (int column = 0; column < rows->ColumnCount(); ++column)
        texts += rows->CellText(2, column);
    EXPECT_EQ(texts.join(u' '), "1 0x01 True 1 1 1 1899-12-31 1899-12-31 00:00:00 1899-12-31 1 1 "
                                "{00000000-0000-0000-0000-000000000001} 1 1 1 1 1 1 1 1 1 1 1 1 1 1");
}

} // namespace
