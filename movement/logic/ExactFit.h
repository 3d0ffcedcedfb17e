#pragma once
// Whether a field keeps a number as it is. What it would round is refused in words: moved rows are never rounded
// unsaid. Any thread.

#include "ado/Driver.h"
#include "ado/Value.h"
#include <functional>

// Raises adErrDataConversion where the field would round the number. `decimalsAreExact` is asked only when it matters:
// does the server keep all digits of its decimals, and not the fifteen of a double?
void RaiseIfRounded(const ADODB::Value &value, const ADODB::ColumnInfo &column,
                    const std::function<bool()> &decimalsAreExact);

// The digits of a decimal's text that count: without zeros ahead of them and behind them.
qsizetype SignificantDigits(QByteArrayView decimal);
