// How the windows look as a whole: titles and their buttons, the colours every control got, texts that have room.
#include "app/WorkArea.h"
#include "controls/CommandBar.h"
#include "controls/Skin.h"
#include "tests/app/EveryWindow.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/ReadText.h"
#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <QToolButton>

namespace {

constexpr double s_ordinary = 4.5, s_shape = 3.0; // text; what is told by its shape

class Look : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
    }
    static QMdiSubWindow *Frame(const ChildWindow *child)
    {
        return qobject_cast<QMdiSubWindow *>(child->parentWidget());
    }
};

TEST_F(Look, TitlesOfTheActiveAndOfTheOtherChildren)
{
    FakeChild *back = Child(QStringLiteral("frmGrid")), *front = Child(QStringLiteral("frmTree"));
    for (FakeChild *child : {back, front}) {
        QMdiSubWindow *frame = Frame(child);
        frame->setGeometry(20, 20, 400, 200);
        child->SetCaption(QStringLiteral("Mm Mm Mm"));
    }
    QImage titles[2];
    for (const bool active : {false, true}) {
        QMdiSubWindow *frame = Frame(active ? front : back);
        const QImage picture = PictureOf(*frame);
        const int height = frame->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, frame);
        EXPECT_GE(ReadText(picture, QRect(130, 6, 140, height - 8)).Ratio, s_ordinary) << active;
        QStyleOptionTitleBar bar;
        bar.initFrom(frame);
        bar.rect = QRect(0, 0, frame->width(), height);
        bar.titleBarFlags = frame->windowFlags();
        for (const auto button :
             {QStyle::SC_TitleBarMinButton, QStyle::SC_TitleBarMaxButton, QStyle::SC_TitleBarCloseButton}) {
            const QRect rect = frame->style()->subControlRect(QStyle::CC_TitleBar, &bar, button, frame);
            ASSERT_FALSE(rect.isEmpty());
            EXPECT_GE(ReadText(picture, rect.adjusted(3, 3, -3, -3)).Ratio, s_shape) << active << button;
        }
        titles[active] = picture.copy(0, 0, picture.width(), height * 2);
    }
    EXPECT_NE(titles[0], titles[1]); // the active one is told
}

TEST_F(Look, TheButtonsOfAMaximisedChildInTheMenuBar)
{
    Frame(Child(QStringLiteral("frmGrid")))->showMaximized();
    QWidget *corner = Window->menuBar()->cornerWidget(Qt::TopRightCorner);
    ASSERT_TRUE(corner);
    ASSERT_TRUE(corner->isVisible());
    const QImage picture = PictureOf(*Window->menuBar());
    const int each = corner->width() / 3;
    for (int button = 0; button < 3; ++button) {
        const QRect rect(corner->x() + button * each + 4, corner->y() + 4, each - 8, corner->height() - 8);
        EXPECT_GE(ReadText(picture, rect).Ratio, s_shape) << button;
    }
}

// In a narrow window the bars have a mark behind which the rest is.
TEST_F(Look, TheMarksOfBarsThatAreTooNarrow)
{
    Child(QStringLiteral("frmSQL"));
    Window->resize(480, 400);
    QCoreApplication::processEvents();
    int looked = 0;
    for (QToolButton *mark : Window->findChildren<QToolButton *>(QStringLiteral("qt_toolbar_ext_button")))
        if (mark->isVisible()) {
            EXPECT_GE(ReadText(PictureOf(*mark), mark->rect()).Ratio, s_shape)
                << mark->parentWidget()->metaObject()->className() << mark->width() << 'x' << mark->height()
                << mark->isEnabled() << mark->icon().actualSize(QSize(64, 64)).width();
            ++looked;
        }
    EXPECT_GE(looked, 2); // the menu bar and a toolbar
}

TEST_F(Look, EveryControlOfEveryWindowGotColoursThatCanBeRead)
{
    int looked = 0;
    const auto pair = [&](const QPalette &palette, QPalette::ColorGroup group, QPalette::ColorRole text,
                          const QColor &ground, const char *where, const QWidget *control) {
        EXPECT_GE(Contrast(palette.color(group, text), ground), s_ordinary)
            << where << ": " << control->metaObject()->className() << ' ' << qPrintable(control->objectName())
            << " role " << text;
        ++looked;
    };
    const auto walk = [&](QWidget *window, const char *where) {
        QList<QWidget *> all = window->findChildren<QWidget *>();
        all.prepend(window);
        for (QWidget *control : all) {
            control->ensurePolished(); // as when it shows
            const QWidget *ground = control;
            while (ground->parentWidget() && ground != window && !ground->autoFillBackground())
                ground = ground->parentWidget();
            // The frames of these take the window's colour; their text stands on what is below them.
            const bool framed = qobject_cast<const QLineEdit *>(control) || qobject_cast<const QCheckBox *>(control) ||
                                qobject_cast<const QRadioButton *>(control);
            if (framed)
                ground = control->parentWidget();
            const QPalette palette = control->palette();
            for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
                pair(palette, group, QPalette::Text, palette.color(group, QPalette::Base), where, control);
                pair(palette, group, QPalette::ButtonText, palette.color(group, QPalette::Button), where, control);
                pair(palette, group, QPalette::HighlightedText, palette.color(group, QPalette::Highlight), where,
                     control);
                pair(palette, group, QPalette::ToolTipText, palette.color(group, QPalette::ToolTipBase), where,
                     control);
                pair(palette, group, QPalette::PlaceholderText, palette.color(group, QPalette::Base), where, control);
                if (!framed)
                    pair(palette, group, QPalette::WindowText, ground->palette().color(group, QPalette::Window), where,
                         control);
            }
        }
    };
    walk(Window.get(), "mdiMother");
    for (const AnyWindow &row : EveryWindow()) {
        std::unique_ptr<QWidget> window(row.Make());
        window->show();
        walk(window.get(), row.Name);
        window->hide();
    }
    EXPECT_GT(looked, 1000);
}

// With the desktop's letters and with letters half as large again.
TEST_F(Look, EveryTextHasTheRoomItNeeds)
{
    const QFont font = QApplication::font();
    int looked = 0;
    for (const double scale : {1.0, 1.5}) {
        QFont larger = font;
        larger.setPointSizeF(font.pointSizeF() * scale);
        QApplication::setFont(larger);
        for (const AnyWindow &row : EveryWindow()) {
            std::unique_ptr<QWidget> window(row.Make());
            window->show();
            (void)QTest::qWaitForWindowExposed(window.get());
            for (const QWidget *control : window->findChildren<QWidget *>()) {
                if (!control->isVisible() || qobject_cast<const QComboBox *>(control->parentWidget()))
                    continue;
                const auto *label = qobject_cast<const QLabel *>(control);
                const bool text = (label && !label->text().isEmpty()) ||
                                  (qobject_cast<const QAbstractButton *>(control) &&
                                   !static_cast<const QAbstractButton *>(control)->text().isEmpty()) ||
                                  qobject_cast<const QComboBox *>(control) || qobject_cast<const QLineEdit *>(control);
                if (!text)
                    continue;
                ++looked;
                const QSize needed = control->minimumSizeHint();
                const int height = label && label->wordWrap() ? label->heightForWidth(label->width()) : needed.height();
                EXPECT_GE(control->width(), label && label->wordWrap() ? 0 : needed.width())
                    << row.Name << ' ' << qPrintable(control->objectName()) << " at " << scale;
                EXPECT_GE(control->height(), height)
                    << row.Name << ' ' << qPrintable(control->objectName()) << " at " << scale;
            }
        }
    }
    QApplication::setFont(font);
    EXPECT_GT(looked, 80);
}

TEST_F(Look, AMaximisedChildIsUsableOnASmallScreen)
{
    Window->resize(1024, 768);
    QCoreApplication::processEvents();
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    Frame(child)->showMaximized();
    QCoreApplication::processEvents();
    EXPECT_GE(child->width(), 780);
    EXPECT_GE(child->height(), 560);
    EXPECT_EQ(child->visibleRegion().boundingRect().size(), child->size()); // all of it is in sight
    // Both toolbars whole, and each menu of the bar.
    for (const QString &toolbar : {QStringLiteral("MainTB"), QStringLiteral("SQL")})
        for (const QString &key : Window->cb->ButtonKeys(toolbar))
            if (Window->cb->Kind(key) != cbrSeparator) {
                EXPECT_TRUE(Window->cb->rect().contains(Window->cb->ButtonRect(key))) << qPrintable(key);
                EXPECT_FALSE(Window->cb->ButtonRect(key).isEmpty()) << qPrintable(key);
            }
    QMenuBar *bar = Window->menuBar();
    for (QAction *action : bar->actions())
        EXPECT_LE(bar->actionGeometry(action).right(), bar->cornerWidget(Qt::TopRightCorner)->x());
}

} // namespace
