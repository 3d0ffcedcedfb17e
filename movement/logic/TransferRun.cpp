#include "movement/logic/TransferRun.h"
#include "ado/Error.h"
#include "lang/Text.h"
#include <QDateTime>

bool StopsTransfer(qint64 errors, const QString &tolerance)
{
    const double limit = lang::Val(tolerance);
    return limit > 0 && limit < double(errors);
}

TransferReport ReportOf(bool import, qint64 count)
{
    const QString records =
        QStringLiteral("%1 record%2 have been ").arg(count).arg(count == 1 ? QString() : QStringLiteral("s"));
    if (import)
        return {QStringLiteral("Import"), QStringLiteral("Import Complate. ") + records + QStringLiteral("imported.")};
    return {QStringLiteral("Export"), QStringLiteral("Export Complate.") + records + QStringLiteral("exported.")};
}

TransferRun::TransferRun(std::vector<TransferColumn> columns, QString tolerance, TransferSource &source,
                         TransferTarget &target)
    : m_tolerance(std::move(tolerance)), m_source(source), m_target(target)
{
    for (TransferColumn &column : columns) {
        MappingValue value = MappingOf(column.Mapping);
        if (value.Kind != MappingValue::Unmapped)
            m_columns.push_back({std::move(column.Field), std::move(value)});
    }
}

bool TransferRun::MapsNothing() const
{
    return m_columns.empty();
}

TransferRun::Ending TransferRun::Rows(const std::function<bool()> &goOn)
{
    if (MapsNothing())
        return Ending::Finished;
    while (!m_source.AtEnd()) {
        if (!goOn())
            return Ending::Stopped;
        ++m_row;
        if (!Row())
            return Ending::TooManyErrors;
    }
    return Ending::Finished;
}

bool TransferRun::Row()
{
    if (!Step([this] {
            m_target.AddNew();
            m_adding = true;
        }))
        return false;
    for (const Mapped &column : m_columns) {
        if (!m_adding)
            break;
        const bool goesOn = Step([&] {
            switch (column.value.Kind) {
            case MappingValue::Null:
                m_target.SetField(column.field, ADODB::Value());
                break;
            case MappingValue::Text:
                m_target.SetField(column.field, ADODB::Value(column.value.String));
                break;
            case MappingValue::Number:
                m_target.SetField(column.field, ADODB::Value(column.value.Double));
                break;
            default:
                m_target.SetField(column.field, m_source.Value(column.value.String));
            }
        });
        if (!goesOn)
            return false;
    }
    if (m_adding && !Step([this] {
            m_target.Update();
            ++m_added;
            m_adding = false;
        }))
        return false;
    ++m_count;
    const qint64 before = m_errors;
    return Step([this] { m_source.MoveNext(); }) && m_errors == before; // a source that cannot move on has ended
}

bool TransferRun::Step(const std::function<void()> &step)
{
    try {
        step();
    } catch (const ADODB::Error &error) {
        if (!Handle(error.Number, error.Description, QStringLiteral(" (row %1)").arg(m_row)))
            return false;
        if (m_adding) {
            m_adding = false;
            try {
                m_target.CancelUpdate();
            } catch (const ADODB::Error &) {
                // There is no row left to give up.
            }
        }
    }
    return true;
}

bool TransferRun::Failed(int number, const QString &description)
{
    return Handle(number, description, QString());
}

bool TransferRun::Handle(int number, const QString &description, const QString &place)
{
    ++m_errors;
    m_log.Add(QStringLiteral("\r\n\r\nError [%1] - %2\r\n")
                      .arg(lang::CDate(QDateTime::currentDateTime()), QString::number(number)) +
                  description + place,
              description);
    return !StopsTransfer(m_errors, m_tolerance);
}
