#include "movement/logic/RefusalLog.h"

namespace {

constexpr qsizetype reasonsKept = 1'000; // reasons that name a value are as many as the rows

} // namespace

void RefusalLog::Add(const QString &entry, const QString &reason)
{
    if (++m_count <= WholeEntries) {
        m_text += entry;
        return;
    }
    const QString counted =
        m_rest.contains(reason) || m_reasons.size() < reasonsKept ? reason : QStringLiteral("other reasons");
    if (++m_rest[counted] == 1)
        m_reasons += counted;
}

QString RefusalLog::Text() const
{
    QString text = m_text;
    for (const QString &reason : m_reasons)
        text += QStringLiteral("\r\n%1 more: %2").arg(m_rest.value(reason)).arg(reason);
    return text;
}
