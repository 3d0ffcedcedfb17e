#include "views/logic/DummyValue.h"

ADODB::Value DummyValue(ADODB::DataTypeEnum type)
{
    using namespace ADODB;
    constexpr Date day{1899, 12, 31};
    switch (type) {
    case adBoolean:
        return true;
    case adDate:
    case adDBTimeStamp:
        return Timestamp{day, {}};
    case adDBDate:
        return day;
    case adDBTime:
        return Time{};
    case adBinary:
        return QByteArray(1, '\x01');
    case adGUID:
        return QStringLiteral("{00000000-0000-0000-0000-000000000001}");
    default:
        return 1;
    }
}
