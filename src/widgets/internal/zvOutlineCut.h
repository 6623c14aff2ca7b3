#ifndef zvOutlineCut_h
#define zvOutlineCut_h

#include <array>
#include <vector>

class vtkPolyData;

/// The cut of a plane through a few lines, such as the outline of a slice.
namespace zvOutlineCut
{
/// The points at which the two-point lines of \a outline cross the plane through \a origin with
/// \a normal, one for each line, equal ones once.
///
/// The points and their order are those of vtkCutter, whose pipeline takes longer to start than a
/// slice takes to be sampled during a drag. Null, lines of other lengths and lines in the plane
/// give nothing.
std::vector<std::array<double, 3>> FindPoints(
  vtkPolyData* outline, const double origin[3], const double normal[3]);
}

#endif
