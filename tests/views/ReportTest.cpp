// The report's pages: how many, what stands in its boxes, title and headings whole.
#include "tests/controls/MakeRecordset.h"
#include "views/ReportLayout.h"
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

constexpr QSizeF kPage(540, 780);

ADODB::RecordsetPtr Rows(qint64 count)
{
    return MakeRows(count);
}

qint64 PagesOf(qint64 rows)
{
    return ReportLayout(Rows(rows), {{0, 1200, "Id"}}, "SQL: x", kPage).Pages();
}

QImage Drawn(const QString &cell, const QString &title = QStringLiteral("SQL: x"))
{
    const ReportLayout layout(MakeTexts({"a", "b"}, {{cell, QStringLiteral("end")}}),
                              {{0, 3000, "a"}, {3000, 900, "b"}}, title, kPage);
    QImage picture(540, 780, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    layout.Paint(painter, 0);
    return picture;
}

// Is any ink in these lines of pixels?
bool Inked(const QImage &picture, int from, int to)
{
    for (int y = from; y < to; ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) != Qt::white)
                return true;
    return false;
}

TEST(Report, PagesThatFillExactlyBringNoEmptyOne)
{
    const ReportLayout many(Rows(1000), {{0, 1200, "Id"}}, "SQL: x", kPage);
    const qint64 first = many.RowsOnPage(0), next = many.RowsOnPage(1);
    ASSERT_GT(first, 10);
    ASSERT_GT(next, first); // the first page has the title
    EXPECT_EQ(PagesOf(0), 1);
    EXPECT_EQ(PagesOf(1), 1);
    EXPECT_EQ(PagesOf(first - 1), 1);
    EXPECT_EQ(PagesOf(first), 1);
    EXPECT_EQ(PagesOf(first + 1), 2);
    EXPECT_EQ(PagesOf(first + next), 2);
    EXPECT_EQ(PagesOf(first + next + 1), 3);
    EXPECT_EQ(PagesOf(first + 2 * next), 3);
    qint64 rows = 0;
    for (qint64 page = 0; page < many.Pages(); ++page) {
        EXPECT_GT(many.RowsOnPage(page), 0) << page;
        rows += many.RowsOnPage(page);
    }
    EXPECT_EQ(rows, 1000);
    EXPECT_EQ(many.RowsOnPage(many.Pages()), 0);
}

TEST(Report, LineEndsAndTabsOfACellAreDrawnAsBlanks)
{
    const QImage blanks = Drawn(QStringLiteral("one two"));
    EXPECT_EQ(Drawn(QStringLiteral("one\ntwo")), blanks);
    EXPECT_EQ(Drawn(QStringLiteral("one\rtwo")), blanks);
    EXPECT_EQ(Drawn(QStringLiteral("one\ttwo")), blanks);
    EXPECT_NE(Drawn(QStringLiteral("one_two")), blanks);
}

// A third line was drawn as far as its box went, cut through its letters.
TEST(Report, ALongTitleTakesWholeLinesAndSaysThatMoreWouldFollow)
{
    const auto title = [](const QString &text) { return ReportLayout(Rows(1), {}, text, kPage).TitleLines(); };
    EXPECT_EQ(title("SQL: select 1"), QStringList({"SQL: select 1"}));
    const QString words = QStringLiteral("SQL: ") + QStringLiteral("selecting wwwwwwwwwwwwwwwwwwwwwwwww ").repeated(40);
    ASSERT_EQ(title(words).size(), 2);
    EXPECT_TRUE(title(words)[1].endsWith(QChar(0x2026)));
    EXPECT_TRUE(words.startsWith(title(words)[0]));
    EXPECT_EQ(title(QString(5000, u'W')).size(), 2); // no blank to break at
    const QString twoLines = words.left(title(words)[0].size() + 20);
    ASSERT_EQ(title(twoLines).size(), 2);
    EXPECT_EQ(title(twoLines).join(QString()), twoLines);
    const QImage picture = Drawn(QStringLiteral("x"), words);
    EXPECT_TRUE(Inked(picture, 14, 26));  // the second line
    EXPECT_FALSE(Inked(picture, 29, 39)); // and air down to the headings
}

// Bold headings in columns as wide as the grid's lost their last letters beside an empty page.
TEST(Report, HeadingsShowWholeWhereThePageHasRoom)
{
    const QList<ReportColumn> narrow{{0, 300, "quantity"}, {300, 400, "unit price"}, {700, 900, "x"}};
    const auto rows = MakeTexts({"quantity", "unit price", "x"}, {});
    const ReportLayout roomy(rows, narrow, "t", kPage);
    for (int column = 0; column < 3; ++column)
        EXPECT_EQ(roomy.HeadingText(column), narrow[column].caption);
    for (int column = 1; column < 3; ++column)
        EXPECT_GE(roomy.Box(column).left(), roomy.Box(column - 1).right()); // side by side as before
    EXPECT_EQ(roomy.Scale(), 1);
    EXPECT_NEAR(roomy.Box(2).width(), 45 - 3, 0.01); // wide enough already

    const ReportLayout tight(rows, narrow, "t",
                             QSizeF(80, 780)); // no room: nothing grows, nothing is cut off at the right
    EXPECT_NE(tight.HeadingText(1), QStringLiteral("unit price"));
    EXPECT_EQ(tight.Box(2).left(), 35);
    EXPECT_EQ(tight.Scale(), 1);
    EXPECT_LT(ReportLayout(rows, narrow, "t", QSizeF(60, 780)).Scale(), 1);
}

// Whatever the page has to spare, what the headings take of it is not more.
TEST(Report, HeadingsNeverGrowPastThePage)
{
    const QList<ReportColumn> narrow{{0, 300, "quantity"}, {300, 400, "unit price"}, {700, 900, "x"}};
    const auto rows = MakeTexts({"quantity", "unit price", "x"}, {});
    int grown = 0;
    for (int width = 80; width < 200; ++width) {
        const ReportLayout layout(rows, narrow, "t", QSizeF(width, 780));
        EXPECT_EQ(layout.Scale(), 1) << width;
        EXPECT_LE(layout.Box(2).right(), width) << width;
        grown += layout.HeadingText(0) == narrow[0].caption && layout.HeadingText(1) != narrow[1].caption;
    }
    EXPECT_GT(grown, 0); // there are widths that have room for one of them alone
}

// The first page, drawn here once more by the measures: title 40, headings 22 with a line above and below, rows of 13.
TEST(Report, EveryPartStandsInItsPlace)
{
    QImage picture(540, 780, QImage::Format_RGB32);
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        painter.setPen(Qt::black);
        QFont font(QStringLiteral("Sans Serif"));
        const auto text = [&](int pixels, bool bold, const QRectF &box, const char *words, int flags) {
            font.setPixelSize(pixels);
            font.setBold(bold);
            painter.setFont(font);
            painter.drawText(box, flags | Qt::TextSingleLine, QLatin1String(words));
        };
        constexpr int kLeft = Qt::AlignLeft | Qt::AlignVCenter;
        text(11, true, QRectF(0, 0, 540, 40), "SQL: x", Qt::AlignTop);
        text(9, true, QRectF(0, 40, 147, 18), "a", kLeft);
        text(9, true, QRectF(150, 40, 42, 18), "b", kLeft);
        painter.setPen(QPen(Qt::black, 0.8));
        painter.drawLine(QPointF(0, 40), QPointF(192, 40));
        painter.drawLine(QPointF(0, 58), QPointF(192, 58));
        text(9, false, QRectF(0, 62, 147, 13), "cell", kLeft);
        text(9, false, QRectF(150, 62, 42, 13), "end", kLeft);
        text(8, false, QRectF(0, 756, 540, 24), "Report generated by Brindlewick", kLeft);
        text(8, false, QRectF(0, 756, 540, 24), "1 of 1", Qt::AlignRight | Qt::AlignVCenter);
    }
    const QImage drawn = Drawn(QStringLiteral("cell"));
    for (const QRect &part : {QRect(0, 0, 540, 36), QRect(0, 38, 540, 24), QRect(0, 62, 540, 13),
                              QRect(0, 75, 540, 680), QRect(0, 756, 540, 24)})
        EXPECT_EQ(drawn.copy(part), picture.copy(part)) << part.top();
}

TEST(Report, OfAHugeCellTheStartIsDrawn)
{
    const ReportLayout layout(MakeTexts({"a"}, {{QString(1000000, u'x')}}), {{0, 3000, "a"}}, "t", kPage);
    EXPECT_EQ(layout.CellText(0, 0).size(), 2000);
}

} // namespace
