#include "sqltext/clsStringHistory.h"

#include "lang/Text.h"

#include <algorithm>

void clsStringHistory::AddChange(const QString &text, qsizetype selStart, qsizetype selLength)
{
    if (m_Current != Last)
        ++m_Current;
    else
        std::copy(m_Entries.begin() + 1, m_Entries.end(), m_Entries.begin());
    Entry &entry = m_Entries[size_t(m_Current)];
    if (!entry)
        entry = std::make_shared<clsColorCell>();
    *entry = {text, lang::CStr(qint64(selStart)), lang::CStr(qint64(selLength))};
    if (m_Current < Last)
        std::fill(m_Entries.begin() + m_Current + 1, m_Entries.end(), nullptr);
}

bool clsStringHistory::CanRedo() const
{
    return m_Current >= 0 && m_Current < Last && m_Entries[size_t(m_Current)];
}

clsStringHistory::Entry clsStringHistory::GetUndo()
{
    return CanUndo() ? m_Entries[size_t(m_Current--)] : Entry();
}

clsStringHistory::Entry clsStringHistory::GetRedo()
{
    return CanRedo() ? m_Entries[size_t(m_Current++)] : Entry();
}
