#ifndef zvKnotSlopes_h
#define zvKnotSlopes_h

#include <array>
#include <vector>

/// The slopes at its knots of a curve of cubics whose curvature has no jumps, so of the cardinal
/// spline of VTK. Not installed.
///
/// The times at which the curve is at its knots are rising, by more than rounding away. There are
/// at least two of them, as many as knots. The work is in proportion to their number.
namespace zvKnotSlopes
{
using Vector = std::array<double, 3>;

/// The curve starts and ends at rest: the slopes of the first and the last knot are 0.
std::vector<Vector> OfOpenCurve(const std::vector<double>& times, const std::vector<Vector>& knots);

/// The last knot is the first one again, and the curve goes on there without a jump of its slope or
/// its curvature. There are at least three knots.
std::vector<Vector> OfClosedCurve(
  const std::vector<double>& times, const std::vector<Vector>& knots);
}

#endif
