#pragma once
// What the two windows that move data have in common: a free window with a grid, a tolerance, a progress bar and two
// buttons, which does one piece of work at a time. It deletes itself when it closes.
//
// While it works, its boxes are off; Escape and cmdCancel stop the work at once ("Canceling..."), and the window stays.
// Closed meanwhile, it stops the work and goes when that has ended. Interface thread; nothing raises.

#include "ado/Connection.h"
#include <QDialog>
#include <QList>
#include <QPointer>
#include <functional>
#include <memory>

class FlexGrid;
class ProgressBar;
class QBoxLayout;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class Work;

class MovementForm : public QDialog
{
    Q_OBJECT
public:
    MovementForm(const QString &title, QWidget *parent);
    ~MovementForm() override;

    bool IsRunning() const { return m_runs; }
    void Stop(); // what runs; nothing when nothing does
    void reject() override;

    QLineEdit *txtErrorCount = nullptr;
    FlexGrid *mfg = nullptr;
    ProgressBar *PB = nullptr;
    QLabel *lblProgress = nullptr; // what the work says of itself
    QPushButton *cmdNext = nullptr, *cmdCancel = nullptr;

protected:
    struct Job
    {
        ADODB::ConnectionPtr On;                        // null: the work is on no connection
        ADODB::ConnectionPtr Other;                     // a second one that the work uses, or null
        QString Words;                                  // what others who wait for On are told
        std::function<QString()> Says;                  // asked again and again, on the interface thread
        std::function<void(ProgressBar &)> Shows;       // likewise; null: no bar
        std::function<void(const Job &, Work &)> Works; // the work itself, on a thread of its own
        std::function<bool()> GoOn() const;             // for the body: false once it was stopped

        std::shared_ptr<Work> Piece; // while it runs
    };
    // Runs it beside the living windows. False when the window has gone meanwhile, or is to go: then nothing more is
    // to be done. What the body raises is told by `why`.
    bool RunJob(Job job, QString *why = nullptr);
    // A short reading, with input held back but for Escape. False when it failed, was given up or the window has gone.
    bool Read(const ADODB::ConnectionPtr &connection, const QString &status, const std::function<void()> &body,
              QString *why = nullptr);

    // The parts of the window, from top to bottom: the boxes of the derived window, the tolerance, the grid, the rest.
    QGridLayout *Boxes() const { return m_boxes; }
    QLineEdit *AddBox(int row, const char *name, const QString &caption, QPushButton **picker = nullptr,
                      const char *pickerName = nullptr, const QString &pickerSays = {});
    void Finish(const QString &next); // once the boxes are in

    void closeEvent(QCloseEvent *event) override;
    virtual void BoxesChanged() {} // what is on, after a work too

private:
    void ShowRunning(bool runs);
    QGridLayout *m_boxes = nullptr;
    bool m_runs = false, m_stopping = false, m_closing = false;
    std::shared_ptr<Work> m_work;
    std::function<void()> m_stopOther;
    QPointer<QWidget> m_focus; // before the work
    QList<QPointer<QWidget>> m_off;
};

// A text as it is, for a window that reads its text as RTF.
QString AsPlainRtf(const QString &text);
