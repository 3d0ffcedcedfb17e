#pragma once
// A table map on a real database, driven by the events that a mouse and a keyboard make.

#include "tests/data/House.h"
#include "visual/JoinLayers.h"
#include "visual/ucTableMap.h"
#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalSpy>

class MapTest : public DataTest
{
protected:
    void SetUp() override { OpenSample(Tables()); }
    virtual QStringList Tables() const
    {
        return {"CREATE TABLE Orders (ID int, CustomerID int)", "CREATE TABLE Items (ID int, OrderID int, Price int)",
                "CREATE TABLE Customers (CustomerID int, Name text)"};
    }
    void TearDown() override
    {
        map.reset();
        DataTest::TearDown();
    }

    std::unique_ptr<ucTableMap> map;
    // A map of 900 by 600 with these tables side by side, from (40, 40) on, 240 pixels apart.
    ucTableMap &Show(const QStringList &names = {}, bool checks = true)
    {
        map = std::make_unique<ucTableMap>();
        map->AllowCheckBoxes(checks);
        map->resize(900, 600);
        map->show();
        map->activateWindow();
        QCoreApplication::processEvents();
        int left = 40;
        for (const QString &name : names) {
            EXPECT_NE(map->AddTable(name), nullptr) << name;
            PutAt(map->CurrentTable(), {left, 40});
            left += 240;
        }
        map->setFocus();
        return *map;
    }
    // Carries a table by the mouse until its corner is there.
    void PutAt(int table, const QPoint &corner)
    {
        Send(QEvent::MouseButtonPress, Heading(table));
        Send(QEvent::MouseMove, {450, 300});
        Send(QEvent::MouseMove, corner);
        Send(QEvent::MouseButtonRelease, corner);
    }
    QPoint Heading(int table) const { return map->TableRect(table).topLeft() + QPoint(20, 8); }
    QPoint Item(int table, int item) const
    {
        const QRect place = map->ItemRect(table, item);
        return {place.left() + 60, place.center().y()};
    }
    QPoint Check(int table, int item) const
    {
        const QRect place = map->ItemRect(table, item);
        return {place.left() + 9, place.center().y()};
    }
    QPoint BlankOf(int table) const { return map->TableRect(table).bottomLeft() + QPoint(20, -6); }

    void Send(QEvent::Type type, const QPoint &at, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers keys = {})
    {
        QWidget *surface = map->Hwnd();
        const bool move = type == QEvent::MouseMove, up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, surface->mapToGlobal(at), move ? Qt::NoButton : button,
                          up ? Qt::MouseButtons() : Qt::MouseButtons(button), keys);
        QCoreApplication::sendEvent(surface, &event);
    }
    void Click(const QPoint &at, Qt::MouseButton button = Qt::LeftButton)
    {
        Send(QEvent::MouseButtonPress, at, button);
        Send(QEvent::MouseButtonRelease, at, button);
    }
    void Drag(const QPoint &from, const QPoint &to)
    {
        Send(QEvent::MouseButtonPress, from);
        Send(QEvent::MouseMove, from + QPoint(40, 0));
        Send(QEvent::MouseMove, to);
        Send(QEvent::MouseButtonRelease, to);
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(map->Hwnd(), Qt::Key(key), modifiers); }
    // A pixel of the join's own line that no table covers.
    QPoint OnLine(int join) const
    {
        const ucPathFinder *line = map->PF(join);
        return {int((line->X1 + 60) / 15), int(line->Y1 / 15)};
    }
    static QAction *Item(QMenu *menu, const char *name) { return menu->findChild<QAction *>(QLatin1String(name)); }
};
