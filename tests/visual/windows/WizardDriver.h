#pragma once
// Drives the wizard by the events that a mouse and a keyboard make: its map, its grid, its menu, the dialogs that it
// shows.

#include "controls/FlexGrid.h"
#include "controls/FlexGridEditor.h"
#include "data/frmGetSelection.h"
#include "visual/DropList.h"
#include "visual/frmJoin.h"
#include "visual/frmSQLWizzard.h"
#include "visual/ucPathFinder.h"
#include "visual/ucTableMap.h"
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

// Does something with the next modal dialog of this class; one that is left open afterwards is closed.
template <class Form> void WithForm(QObject *context, std::function<void(Form &)> act)
{
    auto *timer = new QTimer(context);
    QObject::connect(timer, &QTimer::timeout, context, [timer, act] {
        const QPointer<Form> form = qobject_cast<Form *>(QApplication::activeModalWidget());
        if (!form || !form->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        act(*form);
        if (form && form->isVisible()) {
            ADD_FAILURE() << "a dialog was left open: " << form->windowTitle().toStdString();
            form->reject();
        }
    });
    timer->start(5);
}

class WizardDriver
{
public:
    explicit WizardDriver(frmSQLWizzard &wizard) : form(wizard), map(*wizard.TableMap) {}

    frmSQLWizzard &form;
    ucTableMap &map;

    // The map.
    void Send(QEvent::Type type, const QPoint &at, Qt::MouseButton button = Qt::LeftButton)
    {
        QWidget *surface = map.Hwnd();
        const bool move = type == QEvent::MouseMove, up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, surface->mapToGlobal(at), move ? Qt::NoButton : button,
                          up ? Qt::MouseButtons() : Qt::MouseButtons(button), {});
        QCoreApplication::sendEvent(surface, &event);
    }
    void Click(const QPoint &at, Qt::MouseButton button = Qt::LeftButton)
    {
        Send(QEvent::MouseButtonPress, at, button);
        Send(QEvent::MouseButtonRelease, at, button);
    }
    void DoubleClick(const QPoint &at)
    {
        Click(at);
        Send(QEvent::MouseButtonDblClick, at);
        Send(QEvent::MouseButtonRelease, at);
    }
    void Drag(const QPoint &from, const QPoint &to)
    {
        Send(QEvent::MouseButtonPress, from);
        Send(QEvent::MouseMove, from + QPoint(40, 0));
        Send(QEvent::MouseMove, to);
        Send(QEvent::MouseButtonRelease, to);
    }
    QPoint Item(int table, const QString &field) const
    {
        const QRect place = map.ItemRect(table, map.GetFieldIndex(table, field));
        return {place.left() + 60, place.center().y()};
    }
    QPoint Check(int table, const QString &field) const
    {
        const QRect place = map.ItemRect(table, map.GetFieldIndex(table, field));
        return {place.left() + 9, place.center().y()};
    }
    bool IsChecked(int table, const QString &field) const
    {
        return map.lvTable(table)->Items.at(size_t(map.GetFieldIndex(table, field) - 1)).Checked;
    }
    void PutAt(int table, const QPoint &corner) { Drag(map.TableRect(table).topLeft() + QPoint(20, 8), corner); }
    QPoint OnLine(int join) const // where no table covers it
    {
        const ucPathFinder *line = map.PF(join);
        return {int((line->X1 + 60) / 15), int(line->Y1 / 15)};
    }

    // Menu and dialogs. Choose returns when what the item led to has ended.
    QAction *MenuItem(const char *name) const { return form.mnuTableView->findChild<QAction *>(QLatin1String(name)); }
    void Choose(const char *name)
    {
        ASSERT_TRUE(form.mnuTableView->isVisible());
        ASSERT_TRUE(MenuItem(name)->isEnabled());
        QTest::mouseClick(form.mnuTableView, Qt::LeftButton, {},
                          form.mnuTableView->actionGeometry(MenuItem(name)).center());
    }
    QPoint Ground() const { return {map.Hwnd()->width() - 5, map.Hwnd()->height() - 5}; }
    // By the menu of the map; the table's corner goes to x, 20.
    void AddTable(const QString &name, int x)
    {
        WithForm<frmGetSelection>(&form, [name](frmGetSelection &picker) {
            picker.SelectText(name);
            QTest::mouseClick(picker.cmdOK, Qt::LeftButton);
        });
        const size_t before = map.Tables().Numbers().size();
        Click(Ground(), Qt::RightButton);
        Choose("mnuAddTable");
        ASSERT_EQ(map.Tables().Numbers().size(), before + 1) << name.toStdString();
        PutAt(map.CurrentTable(), {x, 20});
    }

    // The grid. Col is hidden without grouping.
    void Cell(int row, int col, Qt::MouseButton button = Qt::LeftButton)
    {
        form.mfgFields->EnsureVisible(row, col);
        QTest::mouseClick(form.mfgFields->viewport(), button, {}, form.mfgFields->CellRect(row, col).center());
    }
    QString Text(int row, int col) const { return form.mfgFields->TextMatrix(row, col); }
    QString RowText(int row) const
    {
        QStringList cells;
        for (int col = 0; col < wcType; ++col)
            cells << Text(row, col);
        return cells.join(u'|');
    }
    QWidget *Focus() const { return form.focusWidget() ? form.focusWidget() : &form; }
    void Type(const QString &text) { QTest::keyClicks(Focus(), text); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(Focus(), key, modifiers); }
    void MenuKey() // the event that a desktop makes of it
    {
        QWidget *focus = Focus();
        const QPoint at = focus->rect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, at, focus->mapToGlobal(at));
        QCoreApplication::sendEvent(focus, &event);
    }
    // The list of an editor: opened, and the entry chosen by keys.
    void Pick(QComboBox *list, const QString &entry)
    {
        list->showPopup();
        const int at = list->findText(entry);
        ASSERT_GE(at, 0) << entry.toStdString();
        list->view()->setCurrentIndex(list->model()->index(at, 0));
        QTest::keyClick(list->view(), Qt::Key_Return);
        EXPECT_FALSE(list->view()->isVisible());
    }
    void DropField() // what the desktop carries over the grid at the end of a drag out of the map
    {
        QWidget *grid = form.mfgFields->viewport();
        QMimeData mime;
        mime.setData(ucTableMap::FieldMimeType(), "field");
        QDragEnterEvent enter({20, 40}, Qt::CopyAction, &mime, Qt::LeftButton, {});
        QCoreApplication::sendEvent(grid, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop({20, 40}, Qt::CopyAction, &mime, Qt::LeftButton, {});
        QCoreApplication::sendEvent(grid, &drop);
        ASSERT_TRUE(drop.isAccepted());
    }
};
