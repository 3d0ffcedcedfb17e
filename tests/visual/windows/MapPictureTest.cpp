// The painted surface against pictures that were looked at, at one and at two pixels a unit. With BRINDLEWICK_GOLDEN=1
// they are written anew, to be read in review. A few pixels may differ: fonts are smoothed in several ways.

#include "tests/support/Places.h"
#include "tests/visual/windows/MapFixture.h"
#include <QImage>

namespace {

class MapPicture : public MapTest
{
protected:
    void Build()
    {
        Show();
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(12);
        map->setFont(font);
        map->AskJoin = [](const JoinQuestion &question, QWidget *) {
            return JoinAnswer{false, question.Name1, "ID", question.Name2, "ID", "Left Join"};
        };
        const std::pair<const char *, QPoint> tables[] = {
            {"Customers", {20, 20}}, {"Orders", {240, 60}}, {"Items", {470, 30}}, {"Orders", {300, 230}}};
        for (const auto &[name, corner] : tables) {
            ASSERT_NE(map->AddTable(name), nullptr);
            PutAt(map->CurrentTable(), corner);
        }
        Drag(Item(1, 2), Item(2, 3)); // an inner join
        Drag(Item(2, 2), BlankOf(3)); // a left one
        Drag(Item(4, 2), Item(1, 2)); // its ends swapped
        Click(Check(2, 2));
        map->resize(680, 400);
        QCoreApplication::processEvents();
    }
    void Compare(const char *name, int scale)
    {
        QWidget *surface = map->Hwnd();
        QImage picture(surface->size() * scale, QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale);
        surface->render(&picture);
        const QString path =
            places::Source() + QStringLiteral("/tests/visual/windows/golden/%1-%2x.png").arg(name).arg(scale);
        if (qEnvironmentVariable("BRINDLEWICK_GOLDEN") == "1") {
            ASSERT_TRUE(picture.save(path)) << path;
            return;
        }
        const QImage golden = QImage(path).convertToFormat(QImage::Format_RGB32);
        ASSERT_FALSE(golden.isNull()) << path;
        ASSERT_EQ(golden.size(), picture.size());
        const auto far = [](QRgb a, QRgb b) {
            return qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b)) > 90;
        };
        int differ = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                differ += far(golden.pixel(x, y), picture.pixel(x, y)) ? 1 : 0;
        EXPECT_LT(differ, picture.width() * picture.height() / 500) << name << " at " << scale;
    }
};

} // namespace

TEST_F(MapPicture, IsTheOneThatWasLookedAt)
{
    Build();
    Compare("map", 1);
    Compare("map", 2);
}

TEST_F(MapPicture, IsTheOneThatWasLookedAtInGray)
{
    Build();
    map->MakeGray();
    map->AllowCheckBoxes(false);
    Compare("gray", 1);
    Compare("gray", 2);
}

TEST_F(MapPicture, ShowsALineThatIsCrossedByATable)
{
    // Lines lie below the tables: a pixel of a table belongs to the table.
    Build();
    const QPoint line = OnLine(1);
    EXPECT_EQ(map->Hwnd()->grab().toImage().pixelColor(line), QColor(Qt::black));
    PutAt(3, line - QPoint(30, 30));
    EXPECT_NE(map->Hwnd()->grab().toImage().pixelColor(line), QColor(Qt::black));
    QSignalSpy up(map.get(), &ucTableMap::MouseUp);
    Click(line);
    ASSERT_EQ(up.count(), 1);
    EXPECT_EQ(up.takeLast().at(4), true);
}
