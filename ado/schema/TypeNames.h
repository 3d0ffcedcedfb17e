#pragma once
// What a column's declared type, as a catalogue spells it ("varchar(20)", "numeric(38,10)", "bigint(20) unsigned"), is
// as a data type with its lengths. Spelling is looked at without regard to case.

#include "ado/Driver.h"

namespace ADODB {

struct DeclaredType
{
    DataTypeEnum Type = adVarWChar;
    qint64 Length = -1;    // characters or bytes; -1 where there is none
    qint64 Precision = -1; // digits of numbers
    qint64 Scale = -1;
};

DeclaredType ReadTypeName(const Family &family, const QString &name);

} // namespace ADODB
