#include "movement/MovementForm.h"

#include "ado/Claim.h"
#include "ado/Error.h"
#include "controls/Attempt.h"
#include "controls/FlexGrid.h"
#include "controls/ProgressBar.h"
#include "controls/Skin.h"
#include "controls/WaitCursor.h"
#include "frame/RememberedSize.h"
#include "lang/Text.h"
#include "session/Status.h"
#include "session/Work.h"
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace {

constexpr int kShowEveryMs = 100; // how often the bar moves

const QString kStopping = QStringLiteral("Canceling...");

} // namespace

QString AsPlainRtf(const QString &text)
{
    QString plain = text;
    for (const char *mark : {"\\", "{", "}"}) // the backslash first, or its own marks would be doubled
        plain = lang::Replace(plain, QLatin1String(mark), QLatin1String("\\") + QLatin1String(mark));
    return plain;
}

MovementForm::MovementForm(const QString &title, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(title);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMinMaxButtonsHint, true);
    setAttribute(Qt::WA_DeleteOnClose);
    auto *column = new QVBoxLayout(this);
    m_boxes = new QGridLayout;
    m_boxes->setColumnStretch(1, 1);
    column->addLayout(m_boxes);
}

MovementForm::~MovementForm()
{
    if (m_work)
        m_work->Cancel();
}

QLineEdit *MovementForm::AddBox(int row, const char *name, const QString &caption, QPushButton **picker,
                                const char *pickerName, const QString &pickerSays)
{
    auto *box = new QLineEdit(this);
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(lang::Trim(lang::Replace(caption, QStringLiteral("&"), QString())));
    auto *label = new QLabel(caption, this);
    label->setBuddy(box);
    m_boxes->addWidget(label, row, 0);
    m_boxes->addWidget(box, row, 1);
    if (picker) {
        *picker = new QPushButton(QStringLiteral("..."), this);
        (*picker)->setObjectName(QLatin1String(pickerName));
        (*picker)->setAccessibleName(pickerSays);
        (*picker)->setToolTip(pickerSays);
        (*picker)->setAutoDefault(false);
        m_boxes->addWidget(*picker, row, 2);
    }
    return box;
}

void MovementForm::Finish(const QString &next)
{
    auto *column = static_cast<QVBoxLayout *>(layout());
    auto *tolerance = new QHBoxLayout;
    txtErrorCount = new QLineEdit(QStringLiteral("0"), this);
    txtErrorCount->setObjectName(QStringLiteral("txtErrorCount"));
    txtErrorCount->setAccessibleName(QStringLiteral("Error Tolerance"));
    txtErrorCount->setFixedWidth(70);
    auto *ahead = new QLabel(QStringLiteral("Error Tolerance "), this);
    ahead->setBuddy(txtErrorCount);
    tolerance->addWidget(ahead);
    tolerance->addWidget(txtErrorCount);
    tolerance->addWidget(new QLabel(QStringLiteral("[use -1 to resume after all errors]"), this));
    tolerance->addStretch(1);
    column->addLayout(tolerance);

    mfg = new FlexGrid(this);
    mfg->setObjectName(QStringLiteral("mfg"));
    mfg->setAccessibleName(QStringLiteral("Mapping"));
    column->addWidget(mfg, 1);

    PB = new ProgressBar(this);
    PB->setObjectName(QStringLiteral("PB"));
    PB->hide();
    column->addWidget(PB);
    lblProgress = new QLabel(this);
    lblProgress->setObjectName(QStringLiteral("lblProgress"));
    lblProgress->setTextFormat(Qt::PlainText);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(lblProgress, 1);
    const auto add = [&](QPushButton *&button, const char *name, const QString &caption) {
        button = new QPushButton(caption, this);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        buttons->addWidget(button);
    };
    add(cmdNext, "cmdNext", next);
    add(cmdCancel, "cmdCancel", QStringLiteral("&Cancel"));
    column->addLayout(buttons);
    connect(cmdCancel, &QPushButton::clicked, this, &MovementForm::reject);
    resize(760, 520);
    RememberSize(this);
    ApplySkin(this);
}

std::function<bool()> MovementForm::Job::GoOn() const
{
    return [piece = Piece] { return !piece->Cancelled(); };
}

bool MovementForm::RunJob(Job job, QString *why)
{
    if (m_runs)
        return false;
    const QPointer<MovementForm> alive(this);
    QString told;
    const bool begun = Attempt(
        [&] { job.Piece = job.On ? Work::On(job.On, job.Words, ADODB::Claim::Whole) : std::make_shared<Work>(); },
        &told);
    if (!begun) {
        if (why)
            *why = told;
        return true;
    }
    std::shared_ptr<ADODB::Claim> other;
    if (job.Other && job.Other != job.On)
        other = ADODB::Claim::On(job.Other, job.Words, ADODB::Claim::Whole);
    m_work = job.Piece;
    m_stopOther = [other] {
        if (other)
            other->Cancel();
    };
    m_stopping = false;
    ShowRunning(true);
    PB->setVisible(bool(job.Shows));
    const auto show = [this, &job] {
        if (job.Shows)
            job.Shows(*PB);
        lblProgress->setText(m_stopping ? kStopping : job.Says());
    };
    show();
    QTimer clock;
    connect(&clock, &QTimer::timeout, this, show);
    clock.start(kShowEveryMs);
    {
        const WaitCursor pointer(this);
        Work::Options options;
        options.status = [=] {
            return !alive || alive->m_stopping ? kStopping : job.Says() + QStringLiteral(" (Esc cancels)");
        };
        options.stopped = [=] {
            if (alive)
                alive->Stop();
            if (other)
                other->Cancel();
        };
        options.window = this;
        const Job body = job;
        Attempt(
            [&] {
                job.Piece->Run(options, [body, other] {
                    const ADODB::Claim::Scope scope(other);
                    body.Works(body, *body.Piece);
                    if (other)
                        other->Leave();
                });
            },
            &told);
    }
    if (why)
        *why = told;
    if (!alive)
        return false;
    clock.stop();
    m_work.reset();
    m_stopOther = {};
    PB->hide();
    lblProgress->clear();
    ShowRunning(false);
    if (m_closing)
        close();
    return !m_closing;
}

bool MovementForm::Read(const ADODB::ConnectionPtr &connection, const QString &status,
                        const std::function<void()> &body, QString *why)
{
    const QPointer<MovementForm> alive(this);
    QString told;
    const WaitCursor pointer(this);
    const bool read = Attempt(
        [&] { RunPumpedOn(connection, status + QStringLiteral(" (Esc cancels)"), body, {}, PumpInput::EscapeOnly); },
        &told);
    if (why)
        *why = told;
    return read && alive;
}

// Whatever takes input is off but the button that stops; and is as it was afterwards.
void MovementForm::ShowRunning(bool runs)
{
    m_runs = runs;
    if (runs) {
        m_focus = focusWidget();
        m_off.clear();
        for (QWidget *child : findChildren<QWidget *>())
            if (child->focusPolicy() != Qt::NoFocus && child != cmdCancel && child->isEnabled() &&
                child->isVisibleTo(this) && child->window() == this)
                m_off << child;
        cmdCancel->setFocus();
        for (const auto &child : m_off)
            child->setEnabled(false);
        return;
    }
    for (const auto &child : m_off)
        if (child)
            child->setEnabled(true);
    m_off.clear();
    cmdCancel->setEnabled(true);
    if (m_focus && m_focus->isEnabled())
        m_focus->setFocus();
    BoxesChanged();
}

void MovementForm::Stop()
{
    if (!m_runs || m_stopping)
        return;
    m_stopping = true;
    lblProgress->setText(kStopping);
    SetStatus(kStopping);
    if (m_stopOther)
        m_stopOther();
    if (m_work)
        m_work->Cancel();
}

void MovementForm::reject()
{
    if (m_runs)
        Stop();
    else
        close();
}

void MovementForm::closeEvent(QCloseEvent *event)
{
    if (!m_runs) // a dialog's own way leads through reject, and back here
        return event->accept();
    m_closing = true;
    Stop();
    event->ignore(); // it goes when the work has ended
}
