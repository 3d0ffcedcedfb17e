#pragma once
// A small animation that says that something runs. It costs nothing while it stands still or is hidden.
// Owned by its parent. Interface thread; nothing raises.

#include <QBasicTimer>
#include <QWidget>

class BusyIndicator : public QWidget
{
    Q_OBJECT
public:
    explicit BusyIndicator(QWidget *parent = nullptr);

    void Play(); // shows and runs
    void Stop(); // stands still and hides
    bool Playing() const { return m_timer.isActive(); }
    int Frame() const { return m_frame; } // how far the animation has come

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_timer;
    int m_frame = 0;
};
