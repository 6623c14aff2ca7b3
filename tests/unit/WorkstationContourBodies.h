#ifndef WorkstationContourBodies_h
#define WorkstationContourBodies_h

#include "zvContour.h"
#include "zvContourForces.h"
#include "zvContourPlane.h"

#include "zvVolumes.h"

#include "vtkImageData.h"

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

/// Bodies in volumes for the tests of contours.
namespace contourtest
{
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t Count = 100;

inline std::size_t At(int index)
{
  return static_cast<std::size_t>(index);
}

// Whether a point of the world is inside something.
using Body = std::function<bool(const std::array<double, 3>&)>;

inline Body Ellipsoid(const std::array<double, 3>& centre, const std::array<double, 3>& halfAxes)
{
  return [=](const std::array<double, 3>& world)
  {
    double sum = 0.0;
    for (std::size_t a = 0; a < 3; ++a)
    {
      sum += std::pow((world[a] - centre[a]) / halfAxes[a], 2);
    }
    return sum <= 1.0;
  };
}

inline vtkSmartPointer<vtkImageData> MakeBody(
  const zvtest::VolumeOptions& options, const Body& body, double inside, double outside)
{
  return zvtest::MakeVolume(options,
    [&](int i, int j, int k, int)
    {
      const int index[3] = { i, j, k };
      std::array<double, 3> world;
      for (std::size_t a = 0; a < 3; ++a)
      {
        world[a] = options.Origin[a] + index[a] * options.Spacing[a];
      }
      return body(world) ? inside : outside;
    });
}

// Of unequal sides and spacings: a cuboid of about 100 x 90 x 96 mm.
inline zvtest::VolumeOptions Anisotropic(int scalarType = VTK_SHORT)
{
  zvtest::VolumeOptions options;
  options.Dimensions = { { 100, 60, 40 } };
  options.Spacing = { { 1.0, 1.5, 2.4 } };
  options.Origin = { { -20.0, 30.0, 5.0 } };
  options.ScalarType = scalarType;
  return options;
}

constexpr std::array<double, 3> Middle{ { 30.0, 75.0, 53.0 } };
constexpr std::array<double, 3> HalfAxes{ { 36.0, 30.0, 32.0 } };

inline vtkSmartPointer<vtkImageData> MakeEllipsoid(int scalarType = VTK_SHORT)
{
  return MakeBody(Anisotropic(scalarType), Ellipsoid(Middle, HalfAxes), 300.0, 100.0);
}

// The slice across an axis that lies nearest to the middle of the ellipsoid.
inline zvContourPlane MiddlePlane(vtkImageData* volume, int axis)
{
  const double place = (Middle[At(axis)] - volume->GetOrigin()[axis]) / volume->GetSpacing()[axis];
  return zvContourPlane(volume, axis, static_cast<int>(std::lround(place)));
}

inline std::shared_ptr<const zvContourForces> ForcesOf(
  vtkImageData* volume, const zvContourPlane& plane, const zvForceParameters& parameters = {})
{
  return std::make_shared<const zvContourForces>(
    zvContourForces::CutSlice(volume, plane), parameters);
}

// How well the voxels of a slice in a contour and those in a body agree, 0 to 1.
inline double DiceOf(const zvContour& contour, vtkImageData* volume, const zvContourPlane& plane,
  const std::function<bool(int, int, int)>& isInBody)
{
  int index[3];
  index[plane.GetAxis()] = plane.GetSlice();
  const int first = plane.GetFirstAxis(), second = plane.GetSecondAxis();
  const int* size = volume->GetDimensions();
  double ours = 0.0, theirs = 0.0, both = 0.0;
  for (index[second] = 0; index[second] < size[second]; ++index[second])
  {
    for (index[first] = 0; index[first] < size[first]; ++index[first])
    {
      double world[3];
      for (int a = 0; a < 3; ++a)
      {
        world[a] = volume->GetOrigin()[a] + index[a] * volume->GetSpacing()[a];
      }
      const bool isOurs = zvContourMath::Contains(contour, plane.FromWorld(world));
      const bool isTheirs = isInBody(index[0], index[1], index[2]);
      ours += isOurs ? 1.0 : 0.0;
      theirs += isTheirs ? 1.0 : 0.0;
      both += isOurs && isTheirs ? 1.0 : 0.0;
    }
  }
  return ours + theirs > 0.0 ? 2.0 * both / (ours + theirs) : 0.0;
}

inline zvContour Reversed(const zvContour& contour)
{
  return zvContour(contour.rbegin(), contour.rend());
}
}

#endif
