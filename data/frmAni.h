#pragma once
// "Status": the waiting window of a connect, on top of all windows, not modal, with a busy indicator.
// Made and shown by its user, who deletes it. Interface thread; nothing raises.

#include <QWidget>

class BusyIndicator;

class frmAni : public QWidget
{
    Q_OBJECT
public:
    explicit frmAni(QWidget *parent = nullptr);
    void SetCaption(const QString &caption) { setWindowTitle(caption); }

protected:
    void showEvent(QShowEvent *event) override; // the skin, and the indicator runs
    void hideEvent(QHideEvent *event) override;

private:
    BusyIndicator *m_busy;
};
