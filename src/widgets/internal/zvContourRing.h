#ifndef zvContourRing_h
#define zvContourRing_h

#include "vtkSmartPointer.h"

#include <array>
#include <vector>

class vtkPolyData;

/// The ring with which a deformable contour begins: points on a circle, joined by line cells of two
/// points each. It is closed by its cells, no point is there twice. Hosts compare contours with
/// stored ones, so every step of the computation has its precision.
namespace zvContourRing
{
/// In which precision the angle of a point becomes its cosine and its sine.
enum class Trigonometry
{
  Double,
  Single
};

/// More points lie closer together than the single precision of their angles can tell, and would at
/// some time be more than the memory holds.
constexpr int LargestResolution = 8388608;

/// The points: \a resolution equal steps of an angle that starts at the +x side of \a center, runs
/// counter-clockwise in the plane of x and y, and adds up in single precision. The products of
/// \a radius are narrowed to single precision before the center is added, and the sums again.
/// World millimetres; none for a resolution below 1 or above
/// LargestResolution.
std::vector<std::array<float, 3>> Points(
  const double center[3], double radius, int resolution, Trigonometry trigonometry);

/// The ring of these points with the cells (0, 1), (1, 2) to (resolution - 1, 0). Null for a
/// resolution below 2, as there would be nothing to join, and above LargestResolution.
vtkSmartPointer<vtkPolyData> Make(
  const double center[3], double radius, int resolution, Trigonometry trigonometry);
}

#endif
