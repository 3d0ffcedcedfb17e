#include "controls/Attempt.h"
#include "ado/Error.h"
#include "controls/ControlError.h"

QString DescribeCurrentException()
{
    try {
        throw;
    } catch (const ADODB::Error &error) {
        return error.Description;
    } catch (const ControlError &error) {
        return error.Description;
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return QStringLiteral("Unknown error");
    }
}
