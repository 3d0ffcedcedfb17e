// What the main window reads at its start and writes at its end. A step that fails is skipped.

#include "app/WindowPlace.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/ExplorerBar.h"
#include "controls/Skin.h"
#include "controls/Splitter.h"
#include "controls/Twips.h"
#include "data/ConnectionStore.h"
#include "data/SaveBeside.h"
#include "data/clsConns.h"
#include "frame/AppPath.h"
#include "frame/Settings.h"
#include "session/Pump.h"
#include <QGuiApplication>
#include <QProgressDialog>
#include <QScreen>
#include <QTimer>
#include <atomic>
#include <cmath>

static constexpr int s_long = 300;          // ms of loading after which a window tells how far it has come
static constexpr int s_lockPatience = 2000; // ms that the end of the program waits for another writer of the store

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
        m_placed = QRectF();
        if (moved) {
            QList<QRect> screens;
            for (const QScreen *screen : QGuiApplication::screens())
                screens << screen->availableGeometry();
            setGeometry(BroughtBack(InPixels(stored.Place), screens));
            m_placed = stored.Place;
        }
        m_state = stored.State;
        m_split = static_cast<int>(std::lround(stored.Split));
        eb->resize(ToPixels(m_split), eb->height());
        picSplit->SetPosition(m_split);
    });
    Attempt([&] { LoadStore(); });
    ::SetStatus(QStringLiteral("Done"));
}

// Read beside the windows: a store may be of any size.
void mdiMother::LoadStore()
{
    m_store = std::make_unique<ConnectionStore>(AppFile(QStringLiteral("es.dat")));
    m_store->SetPatience(s_lockPatience, true);
    QProgressDialog progress(QStringLiteral("Load Settings..."), QString(), 0, 1000);
    progress.setWindowTitle(windowTitle());
    progress.setMinimumDuration(s_long);
    ApplySkin(&progress);
    std::atomic<int> done{0}; // in thousandths
    QTimer look;
    connect(&look, &QTimer::timeout, &progress, [&] { progress.setValue(done); });
    look.start(50);
    clsConns read;
    RunPumped(
        QString(),
        [&] { m_store->Load(read, [&](qint64 at, qint64 all) { done = int(at * 999 / qMax<qint64>(all, 1)); }); },
        [] {}, PumpInput::EscapeOnly);
    for (const auto &conn : read)
        Attempt([&] { gConns().Add(conn->ConnectionString, conn->Name, conn->Extra); });
}

void mdiMother::TellLargeTexts()
{
    const QString key = QStringLiteral("LargeTexts");
    const QStringList names = LargeTexts(gConns());
    const int told = static_cast<int>(GetSettingNumber(key, 0));
    if (names.size() == told)
        return;
    SaveSetting(key, QString::number(names.size()));
    if (names.size() > told)
        MsgBox(
            QStringLiteral("A text of more than 16 MB is kept with: ") + names.join(QStringLiteral(", ")) +
                QStringLiteral("\r\nNothing of it is lost, but each start and each end of the program takes longer."),
            mbInformation, QStringLiteral("Brindlewick"), this);
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
        // What was not moved is written as it stood: a pixel has 15 twips, and the way there and back would change it.
        place.Place = !m_placed.isNull() && InPixels(m_placed) == normal ? m_placed : InTwips(normal);
        place.Split = m_split;
        WriteWindowPlace(place);
    });
    Attempt([&] {
        if (!m_store)
            m_store = std::make_unique<ConnectionStore>(AppFile(QStringLiteral("es.dat")));
        SaveBeside(*m_store, gConns());
    });
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
