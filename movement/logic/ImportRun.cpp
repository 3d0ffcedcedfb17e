#include "movement/logic/ImportRun.h"
#include "ado/Error.h"
#include "lang/Text.h"
#include "movement/logic/FieldSplit.h"
#include "movement/logic/LineReader.h"

namespace {

const QString tooManyFields = QStringLiteral("Application-defined or object-defined error");

} // namespace

qint64 ToleranceOf(const QString &text)
{
    return lang::CLng(lang::Val(text));
}

bool ExceedsTolerance(qint64 errors, qint64 tolerance)
{
    return tolerance != -1 && errors > tolerance;
}

ImportRun::Ending ImportRun::Lines(LineReader &reader, const std::function<bool()> &goOn)
{
    const QByteArray delimiter = m_plan.Delimiter.toUtf8();
    std::vector<QByteArrayView> fields;
    QByteArrayView line;
    for (;;) {
        if (!goOn())
            return Ending::Stopped;
        if (!reader.Next(line))
            return Ending::Finished;
        if (IsBlankLine(line))
            continue;
        if (m_number > 1 && m_plan.FirstIsNames) {
            SplitFields(line, delimiter, fields);
            if (int(fields.size()) > m_plan.Columns) {
                ++m_tooMany; // told, but not counted among the errors
                Note(tooManyFields);
            } else if (!Row(fields)) {
                return Ending::Exceeded;
            }
        }
        ++m_number;
    }
}

// Each step stands alone: a field that is refused does not keep the row from being added without it.
bool ImportRun::Row(const std::vector<QByteArrayView> &fields)
{
    bool whole = true;
    if (!Step([this] { m_target.AddNew(); }))
        return false;
    const bool added = !m_failed;
    for (size_t i = 0; i < fields.size() && i < m_plan.FieldOf.size(); ++i) {
        const int field = m_plan.FieldOf[i];
        if (field < 0 || !added)
            continue;
        if (!Step([&] { m_target.SetField(field, StripQuotes(fields[i])); }, m_plan.FieldNames.value(field)))
            return false;
        whole = whole && !m_failed;
    }
    if (!added)
        return true; // there is no row to set or to keep
    if (!Step([this] { m_target.Update(); }))
        return false;
    if (!m_failed) {
        ++m_rows;
        m_incomplete += whole ? 0 : 1;
    }
    return true;
}

bool ImportRun::Step(const std::function<void()> &step, const QString &field)
{
    m_failed = false;
    try {
        step();
    } catch (const ADODB::Error &error) {
        m_failed = true;
        return !Fails(field.isEmpty() ? error.Description : QStringLiteral("[%1] %2").arg(field, error.Description));
    }
    return true;
}

bool ImportRun::Fails(const QString &why)
{
    if (ExceedsTolerance(++m_errors, m_plan.Tolerance)) {
        m_lastStraw = Entry(why); // the log is of what was passed over
        return true;
    }
    Note(why);
    return false;
}

void ImportRun::Note(const QString &why)
{
    if (m_plan.Tolerance != 0)
        m_log.Add(Entry(why), why);
}

QString ImportRun::Entry(const QString &why) const
{
    return QStringLiteral("\r\nRecord %1)").arg(m_number) + why;
}
