#include "analyzer/BracketShow.h"

#include <QTimer>
#include <utility>

BracketShow::BracketShow(std::function<void(const QString &rtf)> load)
    : m_load(std::move(load)), m_timer(new QTimer(this))
{
    m_timer->setInterval(BraceShow::FirstInterval);
    connect(m_timer, &QTimer::timeout, this, &BracketShow::Tick);
}

void BracketShow::Begin(const QString &rtf, BracketKind kind)
{
    m_Brace.Parse(rtf, kind);
    m_timer->start();
}

void BracketShow::Tick()
{
    const BraceShow::Step step = m_Brace.Tick();
    m_timer->setInterval(step.interval);
    if (!step.running)
        m_timer->stop();
    m_load(step.rtf);
}

void BracketShow::End()
{
    const std::optional<QString> original = m_Brace.Interrupt();
    if (!original)
        return;
    m_timer->stop();
    m_timer->setInterval(BraceShow::FirstInterval);
    m_load(*original);
}
