#pragma once
// The types that NEW may name in a SHAPE command. Any thread.

#include "ado/Types.h"
#include <QStringView>
#include <optional>

namespace ADODB {

// "adVarChar" and the like, in any case; nothing for another word.
std::optional<DataTypeEnum> ShapeTypeOf(QStringView word);

} // namespace ADODB
