#ifndef zvUtils_h
#define zvUtils_h

#include "zvFiltersExport.h"

class vtkPolyData;

/// Measures of contours. Nothing here throws, keeps or changes its arguments.
class ZVFILTERS_EXPORT zvUtils
{
public:
  /// The area enclosed by the contour that the line cells of \a polydata make, in the square of the
  /// points' unit (mm^2 for world points), never negative.
  ///
  /// The contour may lie in any plane of space, and need not be convex. Its cells may be two-point
  /// lines or polylines, in any order and each in any direction. It is closed if every line end
  /// meets another one, by sharing a point or by a point at exactly the same place, as at the end
  /// of a sampled closed curve. Of a contour that leaves its plane, the area is that of its
  /// projection along its mean normal. Where a contour crosses itself, parts that it runs round in
  /// opposite directions count against each other; separate rings, and rings that share a point
  /// only, add up.
  ///
  /// \return 0 with one of these generic warnings where there is no area:
  /// "CalculateArea: there is no contour" (null), "CalculateArea: a contour needs three points",
  /// "CalculateArea: the contour is not closed" (also if it has no lines, or if an odd number of
  /// line ends meets somewhere), "CalculateArea: a line of the contour refers to a missing point",
  /// "CalculateArea: a point of the contour is not finite".
  static double CalculateArea(vtkPolyData* polydata);

  /// Fill \a centroid, three values, with the mean of the points of \a polydata, whether cells use
  /// them or not. Without a point it is (0, 0, 0), with the generic warning
  /// "CalculateCentroid: there are no points". A null \a centroid is left alone, silently.
  static void CalculateCentroid(vtkPolyData* polydata, double* centroid);

  zvUtils() = delete;
};

#endif
