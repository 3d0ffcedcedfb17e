#include "app/StatusPanels.h"
#include "controls/StatusBar.h"
#include <QPushButton>

QPushButton *BuildStatusPanels(StatusBar &bar)
{
    bar.AddPanel(sbrText, true);
    bar.AddPanel(sbrText, false, 1800);
    for (StatusPanelStyle style : {sbrCaps, sbrNum, sbrIns, sbrScrl, sbrTime, sbrDate})
        bar.AddPanel(style);
    auto *stop = new QPushButton(QStringLiteral("Stop"), &bar);
    stop->setObjectName(QStringLiteral("cmdStop"));
    stop->setToolTip(QStringLiteral("Cancel the statement that runs (Esc)"));
    stop->setAccessibleName(QStringLiteral("Stop the running statement"));
    stop->hide();
    bar.AddWidget(stop);
    stop->hide();
    return stop;
}
