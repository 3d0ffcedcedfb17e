#pragma once
// The words that the sample's rows are put together from.

#include <array>

struct SamplePlace
{
    const char *city;
    const char *country;
};

extern const std::array<const char *, 42> kCompanyNames;
extern const std::array<const char *, 36> kPersonNames;
extern const std::array<SamplePlace, 20> kPlaces;
extern const std::array<const char *, 8> kCategoryNames;
extern const std::array<const char *, 8> kCategoryTexts;
extern const std::array<const char *, 40> kProductNames;
extern const std::array<const char *, 10> kRemarks;
