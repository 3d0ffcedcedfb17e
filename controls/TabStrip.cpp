#include "controls/TabStrip.h"
#include "controls/ControlError.h"

TabStrip::TabStrip(QWidget *parent) : QTabBar(parent)
{
    setExpanding(false);
    setDrawBase(true);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QTabBar::currentChanged, this, [this](int index) {
        if (index >= 0)
            emit Click(index + 1);
    });
}

int TabStrip::Checked(int tab) const
{
    if (tab < 1 || tab > count())
        throw ControlError(ctlErrIndex, QStringLiteral("Index out of bounds"));
    return tab - 1;
}

int TabStrip::AddTab(const QString &text, const QString &key)
{
    const int index = addTab(text);
    setTabData(index, key);
    return index + 1;
}

QString TabStrip::Text(int tab) const
{
    return tabText(Checked(tab));
}

void TabStrip::SetText(int tab, const QString &text)
{
    setTabText(Checked(tab), text);
}

QString TabStrip::Key(int tab) const
{
    return tabData(Checked(tab)).toString();
}

int TabStrip::Selected() const
{
    return currentIndex() + 1;
}

void TabStrip::Select(int tab)
{
    const int index = Checked(tab);
    if (index == currentIndex())
        emit Click(tab); // the window may have hidden the tab's control meanwhile
    else
        setCurrentIndex(index);
}
