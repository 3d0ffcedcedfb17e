#include "frame/RememberedSize.h"
#include "controls/Twips.h"
#include "frame/Settings.h"
#include "lang/Text.h"
#include <QEvent>
#include <QMargins>
#include <QScreen>
#include <QStringList>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace {

constexpr QMargins kFrame(8, 36, 8, 8); // what the desktop puts around a window; it tells only once the window shows

QString Key(const QWidget *window)
{
    return QStringLiteral("Size_") + QString::fromLatin1(window->metaObject()->className());
}

QSize Stored(const QWidget *window)
{
    const QStringList parts = lang::Split(GetSetting(Key(window)), QStringLiteral(","));
    const double width = lang::Val(parts.value(0)), height = lang::Val(parts.value(1));
    if (!std::isfinite(width) || !std::isfinite(height) || width < 1500 || height < 1000 || width > 1e6 || height > 1e6)
        return {};
    QSize size(ToPixels(std::lround(width)), ToPixels(std::lround(height)));
    if (const QScreen *screen = window->screen())
        size = size.boundedTo(screen->availableSize());
    return size.expandedTo(window->minimumSizeHint());
}

class SizeKeeper : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::Show && !event->spontaneous()) {
            if (const QSize size = Stored(window); size.isValid())
                window->resize(size);
            m_shown = window->size();
        } else if (event->type() == QEvent::Hide && !event->spontaneous()) {
            const bool normal = !window->isMaximized() && !window->isMinimized() && !window->isFullScreen();
            if (normal && m_shown.isValid() && window->size() != m_shown)
                SaveSetting(Key(window),
                            QStringLiteral("%1,%2").arg(ToTwips(window->width())).arg(ToTwips(window->height())));
        }
        return false;
    }

private:
    QSize m_shown;
};

} // namespace

QRect WholeOnScreen(const QSize &window, const QRect &owner, const QRect &screen, const QMargins &frame)
{
    const QRect room = screen.marginsRemoved(frame);
    QRect place(QPoint(), window.boundedTo(room.size()));
    place.moveCenter(owner.center());
    place.moveLeft(std::clamp(place.left(), room.left(), room.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), room.top(), room.bottom() + 1 - place.height()));
    return place;
}

void PlaceWhole(QWidget *window, const QWidget *owner)
{
    const QScreen *const screen = owner->screen();
    if (!screen)
        return;
    const QSize stored = Stored(window), size = stored.isValid() ? stored : window->size();
    const QRect whole = WholeOnScreen(size, owner->geometry(), screen->availableGeometry(), kFrame);
    window->resize(whole.size());
    window->move(whole.topLeft() - QPoint(kFrame.left(), kFrame.top())); // of the frame
}

void RememberSize(QWidget *window)
{
    window->installEventFilter(new SizeKeeper(window));
}
