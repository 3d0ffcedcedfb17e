#pragma once
// A status bar of panels. Panels count from 1. Owned by its parent. Interface thread.
//
// Automatic panels show CAPS, INS, the time and the date as they are; NUM and SCRL stay dim, as no portable way tells
// their state. A panel can be clicked, or reached with Tab and pressed with Space or Return.
// Reading a panel that is not there gives "", writing it does nothing.

#include <QList>
#include <QTimer>
#include <QWidget>

class QHBoxLayout;
class StatusPanel;

enum StatusPanelStyle
{
    sbrText = 0,
    sbrCaps,
    sbrNum,
    sbrIns,
    sbrScrl,
    sbrTime,
    sbrDate
};

class StatusBar : public QWidget
{
    Q_OBJECT
public:
    explicit StatusBar(QWidget *parent = nullptr);

    // Gives the panel's number. Spring panels share the free room; others are as wide as told, or as their text needs.
    int AddPanel(StatusPanelStyle style = sbrText, bool spring = false, int minWidthTwips = 0);
    int Count() const { return int(m_panels.size()); }
    QString PanelText(int panel) const; // the full text, also where it shows elided
    void SetPanelText(int panel, const QString &text);
    bool PanelEnabled(int panel) const;                   // false: dim
    void SetPanelToolTip(int panel, const QString &text); // without one the tooltip is the text
    QRect PanelRect(int panel) const;                     // pixels in the bar

    void AddWidget(QWidget *widget); // at the right end, for example a Stop button; taken over

    void SetOverwrite(bool on); // the INS panel: lit while typing inserts

signals:
    void PanelClick(int panel);

protected:
    bool eventFilter(QObject *object, QEvent *event) override; // watches the Caps Lock key

private:
    void UpdateAutomatic();
    StatusPanel *Panel(int panel) const;

    QList<StatusPanel *> m_panels;
    QHBoxLayout *m_layout;
    QTimer m_clock;
    bool m_caps = false, m_overwrite = false;
};
