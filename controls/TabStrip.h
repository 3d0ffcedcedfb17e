#pragma once
// A row of tabs without pages: the window shows the control that belongs to the selected one.
// Tabs count from 1. Owned by its parent. Interface thread; indices out of range raise ControlError 35600.

#include <QTabBar>

class TabStrip : public QTabBar
{
    Q_OBJECT
public:
    explicit TabStrip(QWidget *parent = nullptr);

    int AddTab(const QString &text, const QString &key = {}); // gives its number; the first one becomes selected
    int Count() const { return count(); }
    QString Text(int tab) const;
    void SetText(int tab, const QString &text);
    QString Key(int tab) const;

    int Selected() const; // 0 when there is no tab
    void Select(int tab); // raises Click, as a click of the user does

signals:
    void Click(int tab);

private:
    int Checked(int tab) const; // as Qt counts
};
