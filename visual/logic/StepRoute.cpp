#include "visual/logic/StepRoute.h"

namespace {

constexpr double kNear = 500;

StepLines Bent(double x1, double y1, double middle, double x2, double y2)
{
    return {QLineF(x1, y1, middle, y1), QLineF(middle, y1, middle, y2), QLineF(middle, y2, x2, y2)};
}

} // namespace

StepLines StepRoute(double X1, double Y1, double X2, double Y2)
{
    const double gap = X2 - X1;
    return Bent(X1, Y1, gap < kNear ? X1 : gap / 2 + X1, X2, Y2);
}

StepLines OneLargeStep(double ScaleWidth, double ScaleHeight)
{
    const double half = ScaleWidth / 2;
    return Bent(0, 0, half < kNear ? 1 : half, ScaleWidth, ScaleHeight);
}

void Draw(DrawSurface &surface, const StepLines &lines, qint32 Color)
{
    for (const QLineF &line : lines)
        surface.Line(line.x1(), line.y1(), line.x2(), line.y2(), Color);
}
