#pragma once
// The sample database: a trading company, made afresh with the same bytes each time (for one version of the SQLite
// library, which writes its own version number into the file).
//
// It holds what a client must show rightly: names with a blank and with quotes, nulls beside empty texts, whole numbers
// past 2^53, exact decimals, dates, times with fractions, seven scripts and emoji, bytes, keys that refer to their own
// table.

#include <string>

struct SampleSize
{
    int customers = 900;
    int products = 160;
    int orders = 41500; // about 2.4 lines each
};

// Makes the file anew; an existing one is replaced only when the new one is whole. Gives "" or what went wrong, in
// SQLite's words.
std::string MakeSample(const std::string &path, const SampleSize &size = {});
