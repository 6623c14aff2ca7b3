#ifndef zvContour_h
#define zvContour_h

#include <array>
#include <cstddef>
#include <vector>

/// A point of a slice, in millimetres.
using zvContourPoint = std::array<double, 2>;

/// A closed contour: its points in drawing order, the first not repeated.
using zvContour = std::vector<zvContourPoint>;

/// Measures and repairs of contours. All of them survive any number of points, also none.
namespace zvContourMath
{
/// A circle, counter-clockwise from its first axis' side.
zvContour MakeRing(const zvContourPoint& center, double radius, std::size_t count);

/// mm^2, positive if counter-clockwise; 0 with fewer than three points.
double GetArea(const zvContour& contour);

/// The length of the way round.
double GetLength(const zvContour& contour);

/// The mean of the points, (0, 0) without one.
zvContourPoint GetCentre(const zvContour& contour);

/// Whether all coordinates are finite numbers.
bool IsFinite(const zvContour& contour);

/// So many points at equal distances along the contour, the first one where it was. Empty if the
/// contour has no length.
zvContour Resample(const zvContour& contour, std::size_t count);

/// The mean distance of the points of one contour from the line of another; 0 if one is empty.
double GetMeanDistance(const zvContour& contour, const zvContour& line);

/// Cut off the loops by which a counter-clockwise contour crosses itself, so that its main part is
/// left. Takes away nothing from one that does not cross itself.
/// \return how many were cut off.
int CutLoops(zvContour& contour);

/// Whether a point lies within the contour, by the even-odd rule.
bool Contains(const zvContour& contour, const zvContourPoint& point);
}

#endif
