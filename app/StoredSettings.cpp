// What the main window reads at its start and writes at its end. A step that fails is skipped.

#include "app/WindowPlace.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/ExplorerBar.h"
#include "controls/Splitter.h"
#include "controls/Twips.h"
#include "data/ConnectionStore.h"
#include "data/clsConns.h"
#include "frame/AppPath.h"
#include <cmath>

static QRectF InTwips(const QRect &pixels)
{
    return QRectF(ToTwips(pixels.x()), ToTwips(pixels.y()), ToTwips(pixels.width()), ToTwips(pixels.height()));
}

static QRect InPixels(const QRectF &twips)
{
    const auto pixels = [](double value) { return static_cast<int>(std::lround(value / TwipsPerPixel)); };
    return QRect(pixels(twips.x()), pixels(twips.y()), pixels(twips.width()), pixels(twips.height()));
}

void mdiMother::LoadSettings()
{
    ::SetStatus(QStringLiteral("Load Settings..."));
    Attempt([&] {
        bool moved = false;
        const WindowPlace stored = ReadWindowPlace(InTwips(geometry()), &moved);
        if (moved)
            setGeometry(InPixels(stored.Place));
        m_state = stored.State;
        m_split = static_cast<int>(std::lround(stored.Split));
        eb->resize(ToPixels(m_split), eb->height());
        picSplit->SetPosition(m_split);
    });
    Attempt([&] { LoadConnections(AppFile(QStringLiteral("es.dat")), gConns()); });
    ::SetStatus(QStringLiteral("Done"));
}

// The place and size written are the normal ones; those of a minimised window would hide it.
void mdiMother::SaveSettings()
{
    ::SetStatus(QStringLiteral("Saving Settings ..."));
    Attempt([&] {
        WindowPlace place;
        place.State = isMinimized() ? vbMinimized : isMaximized() || isFullScreen() ? vbMaximized : vbNormal;
        if (!m_shown)
            place.State = m_state;
        const QRect normal = place.State == vbNormal || normalGeometry().isEmpty() ? geometry() : normalGeometry();
        place.Place = InTwips(normal);
        place.Split = m_split;
        WriteWindowPlace(place);
    });
    Attempt([&] { SaveConnections(AppFile(QStringLiteral("es.dat")), gConns()); });
    ::SetStatus(QStringLiteral("Done."));
}

void mdiMother::ShowAsStored()
{
    m_shown = true;
    if (m_state == vbMinimized)
        showMinimized();
    else if (m_state == vbMaximized)
        showMaximized();
    else
        showNormal();
}
