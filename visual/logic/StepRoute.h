#pragma once
// The connector of three segments: across, down, across. Pure; lengths in the surface's units.

#include "visual/logic/DrawSurface.h"

#include <QLineF>

#include <array>

using StepLines = std::array<QLineF, 3>;

// From the first end to the second one, which is not left of it. Ends nearer than 500 drop at once, others bend in the
// middle.
StepLines StepRoute(double X1, double Y1, double X2, double Y2);
// The same shape over a whole surface, from corner to corner; the bend of a surface under 1000 wide lies at 1.
StepLines OneLargeStep(double ScaleWidth, double ScaleHeight);

void Draw(DrawSurface &surface, const StepLines &lines, qint32 Color);
