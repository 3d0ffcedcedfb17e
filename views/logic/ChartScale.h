#pragma once
// One axis: the numbers at its ends, where it is marked, and which pixel a value comes to. Pure values; any thread;
// nothing raises.

#include <QString>
#include <vector>

class ChartScale
{
public:
    // Round numbers around what is shown, with about so many marks. Equal or unsuitable ends are parted; numbers past
    // 1e300 count as that. Logarithmic: both ends are above zero, the marks powers of ten.
    static ChartScale Around(double least, double most, int marks, bool logarithmic = false);

    void Lay(double fromPixel, double toPixel); // where the ends come to
    double At(double value) const;              // clipped to the ends
    double ValueAt(double pixel) const;
    double Least() const { return m_least; }
    double Most() const { return m_most; }
    bool IsLogarithmic() const { return m_logarithmic; }
    const std::vector<double> &Marks() const { return m_marks; }
    double Base() const; // where bars and areas stand: 0, or the end that lies next to it

private:
    double m_least = 0, m_most = 1;
    double m_from = 0, m_to = 1;
    double m_lower = 0, m_factor = 1; // of the mapping
    bool m_logarithmic = false;
    std::vector<double> m_marks;
};
