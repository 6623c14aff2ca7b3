#ifndef zvObliqueSlices_h
#define zvObliqueSlices_h

#include <array>

class vtkPoints;

/// The slices of a plane that stands oblique in a box: how many steps along the normal keep a
/// polygon in touch with it.
namespace zvObliqueSlices
{
/// The corners of a plane, in order around it.
using Polygon = std::array<std::array<double, 3>, 4>;

/// The first four points of \a points.
Polygon Read(vtkPoints* points);

/// Whether a step moves anything: it is finite and not zero.
bool IsStep(const double step[3]);

Polygon Moved(const Polygon& polygon, const double step[3]);

/// Whether a polygon meets the box \a bounds (xmin, xmax, ymin, ymax, zmin, zmax), its faces
/// included. A polygon with a coordinate that is not finite meets nothing.
bool Touches(const Polygon& polygon, const double bounds[6]);

/// How many times \a polygon is moved by \a step until it no longer meets the box, at least once;
/// where it stands at first is not tested. 0 for a step that moves nothing. Ends for every input:
/// after as many steps as lie between polygon and the far side of the box, and never above
/// MaximumSteps.
int StepsUntilClear(const Polygon& polygon, const double step[3], const double bounds[6]);

/// Far more slices than an image has, and few enough to be counted while the user drags: spacings
/// that differ by a factor of a million are a mistake in the image, not a reason to stand still.
constexpr int MaximumSteps = 100000;

/// The whole steps of a drag by \a distance: a step a millimetre, and one for any motion at all.
/// 0 for 0 and for what is not a number.
int StepsOfMotion(double distance);
}

#endif
