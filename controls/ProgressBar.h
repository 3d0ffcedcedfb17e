#pragma once
// How far something has come, painted as the skin paints. Values are as large as a file: a bar of no length (a maximum
// of 0) is empty. Owned by its parent. Interface thread; nothing raises.

#include <QProgressBar>

class ProgressBar : public QProgressBar
{
    Q_OBJECT
public:
    explicit ProgressBar(QWidget *parent = nullptr);

    qint64 Value() const { return m_value; }
    void SetValue(qint64 value); // kept within 0 and the maximum
    qint64 Max() const { return m_max; }
    void SetMax(qint64 max); // the value goes back to 0
    QRect Filled() const;    // pixels, within the frame

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    qint64 m_value = 0, m_max = 0;
};
