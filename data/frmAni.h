#pragma once
// "Status": the waiting window of a connect, on top of all windows, not modal, with a busy indicator.

#include <QWidget>

class QTimer;

class frmAni : public QWidget
{
    Q_OBJECT
public:
    explicit frmAni(QWidget *parent = nullptr);
    void SetCaption(const QString &caption) { setWindowTitle(caption); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QTimer *m_tick;
    int m_phase = 0;
};
