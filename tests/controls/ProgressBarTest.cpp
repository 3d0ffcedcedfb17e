// The progress bar: values as large as a file, and what is painted of them.
#include "controls/ProgressBar.h"
#include "controls/Skin.h"
#include <QImage>
#include <QPixmap>
#include <gtest/gtest.h>

namespace {

QColor InkAt(ProgressBar &bar, int x)
{
    return bar.grab().toImage().pixelColor(x, bar.height() / 2);
}

} // namespace

TEST(ProgressBar, FillsAsFarAsItHasCome)
{
    ProgressBar bar;
    bar.resize(204, bar.height()); // 200 within the frame
    EXPECT_EQ(bar.Filled().width(), 0) << "no length, nothing done";
    bar.SetValue(5);
    EXPECT_EQ(bar.Value(), 0);
    bar.SetMax(qint64(8) << 30); // a file past what an int counts
    bar.SetValue(qint64(4) << 30);
    EXPECT_EQ(bar.Filled().width(), 100);
    EXPECT_EQ(bar.value(), bar.maximum() / 2) << "what a screen reader is told";
    EXPECT_EQ(InkAt(bar, 50), SkinColour(SkinRole::Selection));
    EXPECT_EQ(InkAt(bar, 150), SkinColour(SkinRole::List));
    bar.SetValue(qint64(9) << 30);
    EXPECT_EQ(bar.Filled().width(), 200) << "never past its end";
    bar.SetValue(-1);
    EXPECT_EQ(bar.Value(), 0);
    bar.SetMax(10);
    EXPECT_EQ(bar.Value(), 0);
    EXPECT_FALSE(bar.accessibleName().isEmpty());
}

TEST(ProgressBar, RunsFromTheRightWhereTextDoes)
{
    ProgressBar bar;
    bar.setLayoutDirection(Qt::RightToLeft);
    bar.resize(204, bar.height());
    bar.SetMax(4);
    bar.SetValue(1);
    EXPECT_EQ(bar.Filled().right(), 201);
    EXPECT_EQ(bar.Filled().width(), 50);
}
