#pragma once
// The 1 of a made-up row, as each type of field has it. Pure; any thread.

#include "ado/Value.h"

// Text "1", True, the day after the first day that dates are counted from, one byte 01, a GUID that ends in 1. Every
// type takes what this gives for it.
ADODB::Value DummyValue(ADODB::DataTypeEnum type);
