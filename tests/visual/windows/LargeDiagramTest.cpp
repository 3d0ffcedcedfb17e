// A diagram of a whole schema: 300 tables with keys of one and of two columns, onto themselves and in circles.

#include "tests/data/House.h"
#include "visual/JoinLayers.h"
#include "visual/frmDiagram.h"
#include "visual/ucPathFinder.h"
#include "visual/ucTableMap.h"
#include <QMouseEvent>
#include <QPrinter>
#include <QScrollBar>
#include <QSet>

namespace {

constexpr int kTables = 300;

QString Name(int table)
{
    return QStringLiteral("t%1").arg(table);
}

class LargeDiagram : public DataTest
{
protected:
    QSet<QString> keys; // a column each, as the map names its joins

    void SetUp() override
    {
        OpenSample({});
        gConn->BeginTrans();
        for (int i = 0; i < kTables; ++i) {
            QString sql = QStringLiteral("CREATE TABLE %1 (a int, b int, self int REFERENCES %1 (a), ").arg(Name(i));
            keys.insert(Key(i, "a", i, "self"));
            // A circle through all, and a key of two columns onto a table far away.
            const int next = (i + 1) % kTables, far = (i + 150) % kTables;
            sql += QStringLiteral("next int REFERENCES %1 (a), fa int, fb int, PRIMARY KEY (a, b), "
                                  "FOREIGN KEY (fa, fb) REFERENCES %2 (a, b))")
                       .arg(Name(next), Name(far));
            keys.insert(Key(next, "a", i, "next"));
            keys.insert(Key(far, "a", i, "fa"));
            keys.insert(Key(far, "b", i, "fb"));
            gConn->Execute(sql);
        }
        gConn->CommitTrans();
    }
    static QString Key(int primary, const char *column, int foreign, const char *of)
    {
        return QStringLiteral("%1.%2 %3.%4")
            .arg(Name(primary), QLatin1String(column), Name(foreign), QLatin1String(of));
    }
    static void Send(QWidget *to, QEvent::Type type, const QPoint &at)
    {
        const bool move = type == QEvent::MouseMove, up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, to->mapToGlobal(at), move ? Qt::NoButton : Qt::LeftButton,
                          up ? Qt::NoButton : Qt::LeftButton, {});
        QCoreApplication::sendEvent(to, &event);
    }
};

} // namespace

TEST_F(LargeDiagram, ShowsEveryTableAndEveryKeyOnce)
{
    auto *form = new frmDiagram;
    WithDialog([](QWidget *dialog) { Click(dialog, "cmdCancel"); });
    form->ShowChild();
    ASSERT_TRUE(Until([&] { return m_dialogs == 1 && !QApplication::activeModalWidget(); }));
    ucTableMap &map = *form->TableMap;
    form->ToolBar("DTBAll");
    ASSERT_EQ(map.Tables().Numbers().size(), size_t(kTables));
    QSet<QString> names;
    for (int index : map.Tables().Numbers())
        names.insert(map.lvTable(index)->Alias);
    EXPECT_EQ(names.size(), kTables); // no copies
    EXPECT_EQ(map.Joins().Rows().size(), size_t(keys.size()));
    QSet<QString> seen;
    for (const MapJoin &row : map.Joins().Rows()) {
        seen.insert(QStringLiteral("%1.%2 %3.%4").arg(row.Table1, row.Field1, row.Table2, row.Field2));
        EXPECT_NE(map.PF(row.Index), nullptr);
        EXPECT_EQ(map.lvTable(row.Table1Index)->Tag, row.Table1);
        EXPECT_EQ(map.lvTable(row.Table2Index)->Tag, row.Table2);
    }
    EXPECT_EQ(seen, keys);
    form->ToolBar("DTBAll"); // nothing comes twice
    EXPECT_EQ(map.Joins().Rows().size(), size_t(keys.size()));
    EXPECT_EQ(map.Tables().Numbers().size(), size_t(kTables));

    // Carried by the mouse: the lines go meanwhile and come back at its new place.
    QWidget *surface = map.Hwnd();
    const int top = map.Tables().Stack().back();
    const MapJoin join = *std::find_if(map.Joins().Rows().begin(), map.Joins().Rows().end(), [&](const MapJoin &row) {
        return row.Table1Index == top && row.Table2Index != top;
    });
    Send(surface, QEvent::MouseButtonPress, map.TableRect(top).topLeft() + QPoint(20, 8));
    Send(surface, QEvent::MouseMove, {300, 200});
    Send(surface, QEvent::MouseMove, {60, 50});
    Send(surface, QEvent::MouseButtonRelease, {60, 50});
    EXPECT_EQ(map.TableRect(top).topLeft(), QPoint(60, 50));
    const ucPathFinder *line = map.PF(join.Index);
    const MapTable &table = *map.lvTable(top);
    EXPECT_TRUE(line->X1 == table.Left || line->X1 == table.Left + table.Width || line->X2 == table.Left ||
                line->X2 == table.Left + table.Width);

    // Scrolled: every box by as much.
    map.RefreshMap();
    if (map.VScroll1->isEnabled()) {
        const double before = map.lvTable(1)->Top, last = map.lvTable(kTables)->Top;
        map.VScroll1->setValue(map.VScroll1->value() + 45);
        EXPECT_EQ(map.lvTable(1)->Top, before - 45);
        EXPECT_EQ(map.lvTable(kTables)->Top, last - 45);
    }

    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(Path("large.pdf"));
    printer.setPageOrientation(QPageLayout::Landscape);
    ASSERT_TRUE(form->PrintTo(printer));
    const QByteArray pdf = Read(Path("large.pdf"));
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_EQ(pdf.count("/Type /Page\n"), 1);
    EXPECT_TRUE(pdf.contains("/Subtype /Image"));
}
