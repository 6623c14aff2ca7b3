#ifndef zvBoxCut_h
#define zvBoxCut_h

class vtkCubeSource;
class vtkCutter;
class vtkImplicitFunction;

/// The cut of a plane through the box of a volume: an image widget outlines it and keeps its plane
/// centred on it.
namespace zvBoxCut
{
/// Let \a cutter cut the box \a bounds (xmin, xmax, ymin, ymax, zmin, zmax), which \a cube makes,
/// with \a plane. Both stay the caller's.
void Connect(
  const double bounds[6], vtkCubeSource* cube, vtkImplicitFunction* plane, vtkCutter* cutter);

/// Let \a cutter keep its points in a locator for few of them. Clearing the buckets of the default
/// one would take four times as long as the cut of a box or of an outline, at every step of a
/// slice.
void ExpectFewPoints(vtkCutter* cutter);

/// Bring the cut up to date. \return whether it has points; false for a cutter without input.
bool Update(vtkCutter* cutter);

/// Bring the cut up to date and take the mean of its points. \return false, with \a mean untouched,
/// if it has none.
bool Mean(vtkCutter* cutter, double mean[3]);
}

#endif
