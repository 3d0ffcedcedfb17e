// Hierarchies over every driver: the rows of a SHAPE against the same statements run plainly and matched by two loops.
#include "ado/ConnectionString.h"
#include "tests/ado/Conformance.h"
#include "tests/ado/ShapeDouble.h"

#include <random>

using namespace ADODB;

namespace conformance {

TEST_P(Conformance, AShapeGivesTheRowsOfItsStatementsMatched)
{
    Run(Utf("CREATE TABLE par (id INTEGER, name VARCHAR(20), rate NUMERIC(12,2))"));
    Run(Utf("CREATE TABLE kid (pid NUMERIC(12,1), n INTEGER, amount NUMERIC(12,2))"));
    std::mt19937 dice(7);
    m_connection->BeginTrans();
    for (int i = 0; i < 40; ++i)
        Run(QStringLiteral("INSERT INTO par VALUES (%1, 'n%2', %3.50)")
                .arg(i % 7 == 0 ? QStringLiteral("NULL") : QString::number(int(dice() % 25)))
                .arg(i)
                .arg(i));
    for (int i = 0; i < 120; ++i)
        Run(QStringLiteral("INSERT INTO kid VALUES (%1, %2, %3.25)")
                .arg(i % 11 == 0 ? QStringLiteral("NULL") : QString::number(int(dice() % 25)) + QStringLiteral(".0"))
                .arg(i)
                .arg(i));
    m_connection->CommitTrans();
    const QString place = m_place.isEmpty() ? QString() : m_place + u'.';
    const QString parents = QStringLiteral("SELECT id, name, rate FROM %1par ORDER BY name").arg(place);
    const QString children = QStringLiteral("SELECT pid, n, amount FROM %1kid ORDER BY n").arg(place);

    const RecordsetPtr par = m_connection->Execute(parents), kid = m_connection->Execute(children);
    QStringList wanted;
    for (qint64 p = 0; p < par->RowCount(); ++p) {
        QStringList below;
        double sum = 0;
        for (qint64 c = 0; c < kid->RowCount(); ++c)
            if (!par->CellIsNull(p, 0) && !kid->CellIsNull(c, 0) &&
                par->CellValue(p, 0).ToDouble() == kid->CellValue(c, 0).ToDouble()) {
                below += kid->CellText(c, 1);
                sum += kid->CellValue(c, 2).ToDouble();
            }
        wanted += par->CellText(p, 1) + u'(' + below.join(u',') + u')' + QString::number(sum);
    }

    const ConnectionPtr shape = Connection::Create();
    shape->Open(GetShapeConnectionString(m_string));
    const RecordsetPtr rows =
        shape->Execute(QStringLiteral("SHAPE {%1} APPEND ({%2} RELATE id TO pid) AS kids, SUM(kids.amount) AS total")
                           .arg(parents, children));
    QStringList told;
    for (qint64 p = 0; p < rows->RowCount(); ++p) {
        const Value value = rows->CellValue(p, 3);
        const RecordsetPtr chapter = *value.As<Chapter>();
        QStringList below;
        for (qint64 c = 0; c < chapter->RowCount(); ++c)
            below += chapter->CellText(c, 1);
        told +=
            rows->CellText(p, 1) + u'(' + below.join(u',') + u')' + QString::number(rows->CellValue(p, 4).ToDouble());
    }
    EXPECT_EQ(told.join(u' ').toStdString(), wanted.join(u' ').toStdString());

    const Error error = ErrorFrom([&] {
        shape->Execute(
            QStringLiteral("SHAPE {%1} APPEND ({SELECT nothing FROM nowhere} RELATE id TO pid)").arg(parents));
    });
    EXPECT_TRUE(error.Description.contains(u"nowhere") || error.Description.contains(u"nothing"))
        << error.Description.toStdString();
    EXPECT_EQ(shape->Execute(parents)->RowCount(), 40); // usable still
}

} // namespace conformance
