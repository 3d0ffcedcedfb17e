#include "views/logic/ChartScale.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kLargest = 1e300; // the difference of two such numbers is a number still
constexpr double kSmallest = 1e-290;

// 1, 2 or 5 times a power of ten, at least the number.
double RoundStep(double raw)
{
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double times : {1.0, 2.0, 5.0, 10.0})
        if (times * power >= raw * (1 - 1e-9))
            return times * power;
    return 10 * power;
}

} // namespace

ChartScale ChartScale::Around(double least, double most, int marks, bool logarithmic)
{
    ChartScale scale;
    marks = std::clamp(marks, 1, 50);
    if (logarithmic) {
        scale.m_logarithmic = true;
        least = std::clamp(least, kSmallest, kLargest);
        most = std::clamp(most, least, kLargest);
        int low = int(std::floor(std::log10(least))), high = int(std::ceil(std::log10(most)));
        high = std::max(high, low + 1);
        const int every = std::max(1, (high - low + marks - 1) / marks);
        for (int power = low; power <= high; power += every) {
            scale.m_marks.push_back(std::pow(10.0, power));
            if (high == low + 1 && power == low) // one power alone says little
                for (const double times : {2.0, 5.0})
                    scale.m_marks.push_back(times * scale.m_marks.front());
        }
        scale.m_least = std::pow(10.0, low);
        scale.m_most = std::pow(10.0, high);
        return scale;
    }
    least = std::clamp(least, -kLargest, kLargest);
    most = std::clamp(most, -kLargest, kLargest);
    if (most < least)
        std::swap(least, most);
    // So near to each other that no mark lies between them.
    const double size = std::max(std::abs(least), std::abs(most));
    if (most - least <= size * 1e-12 || most - least < kSmallest) {
        const double room = std::max(size * 1e-6, size > 0 && size < 1 ? kSmallest : size > 0 ? size * 0.1 : 1.0);
        least = least > 0 || size == 0 ? least : least - room;
        most = most + room;
    }
    const double step = RoundStep((most - least) / marks);
    const double first = std::floor(least / step + 1e-9), last = std::ceil(most / step - 1e-9);
    scale.m_least = first * step;
    scale.m_most = last * step;
    const int count = int(std::min(last - first, 200.0));
    for (int mark = 0; mark <= count; ++mark)
        scale.m_marks.push_back((first + mark) * step);
    return scale;
}

void ChartScale::Lay(double fromPixel, double toPixel)
{
    m_from = fromPixel;
    m_to = toPixel;
    m_lower = m_logarithmic ? std::log10(m_least) : m_least;
    const double upper = m_logarithmic ? std::log10(m_most) : m_most;
    m_factor = (m_to - m_from) / (upper - m_lower);
}

double ChartScale::At(double value) const
{
    const double clipped = std::clamp(value, m_least, m_most);
    return m_from + ((m_logarithmic ? std::log10(clipped) : clipped) - m_lower) * m_factor;
}

double ChartScale::ValueAt(double pixel) const
{
    const double value = m_lower + (pixel - m_from) / m_factor;
    return m_logarithmic ? std::pow(10.0, value) : value;
}

double ChartScale::Base() const
{
    return std::clamp(0.0, m_least, m_most);
}
