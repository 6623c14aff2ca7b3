#include "zvHeadPhantom.h"

#include "zvLoadProgress.h"

#include "vtkMath.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr double CubeInMillimetres = 256.0;

// Lengths in half sides of the cube; y runs to the front here, as the head is usually given.
struct Ellipsoid
{
  double Value; // added to what is there
  double HalfAxes[3];
  double Centre[3];
  double DegreesAboutZ;
};

constexpr std::array<Ellipsoid, 10> Head = { {
  { 1000.0, { 0.6900, 0.920, 0.810 }, { 0.00, 0.0000, 0.00 }, 0.0 },
  { -800.0, { 0.6624, 0.874, 0.780 }, { 0.00, -0.0184, 0.00 }, 0.0 },
  { -200.0, { 0.1100, 0.310, 0.220 }, { 0.22, 0.0000, 0.00 }, -18.0 },
  { -200.0, { 0.1600, 0.410, 0.280 }, { -0.22, 0.0000, 0.00 }, 18.0 },
  { 100.0, { 0.2100, 0.250, 0.410 }, { 0.00, 0.3500, -0.15 }, 0.0 },
  { 100.0, { 0.0460, 0.046, 0.050 }, { 0.00, 0.1000, 0.25 }, 0.0 },
  { 100.0, { 0.0460, 0.046, 0.050 }, { 0.00, -0.1000, 0.25 }, 0.0 },
  { 100.0, { 0.0460, 0.023, 0.050 }, { -0.08, -0.6050, 0.00 }, 0.0 },
  { 100.0, { 0.0230, 0.023, 0.020 }, { 0.00, -0.6060, 0.00 }, 0.0 },
  { 100.0, { 0.0230, 0.046, 0.020 }, { 0.06, -0.6050, 0.00 }, 0.0 },
} };

// The steps of a row that lie within an ellipsoid: those with |p + t d| <= 1, where p is the place
// at x = 0 and d the way of one unit of x, both in the ellipsoid's own half axes.
bool FindCrossing(const Ellipsoid& part, double y, double z, double& from, double& to)
{
  const double angle = vtkMath::RadiansFromDegrees(part.DegreesAboutZ);
  const double c = std::cos(angle), s = std::sin(angle);
  const double dy = y - part.Centre[1], dz = z - part.Centre[2], dx = -part.Centre[0];
  const double p[3] = { (c * dx + s * dy) / part.HalfAxes[0], (c * dy - s * dx) / part.HalfAxes[1],
    dz / part.HalfAxes[2] };
  const double d[2] = { c / part.HalfAxes[0], -s / part.HalfAxes[1] };
  const double a = d[0] * d[0] + d[1] * d[1];
  const double b = p[0] * d[0] + p[1] * d[1];
  const double discriminant = b * b - a * (vtkMath::Dot(p, p) - 1.0);
  if (discriminant < 0.0)
  {
    return false;
  }
  from = (-b - std::sqrt(discriminant)) / a;
  to = (-b + std::sqrt(discriminant)) / a;
  return true;
}

// The place of a voxel's centre in half sides of the cube, -1 to 1.
double PlaceOf(int index, int side)
{
  return (2.0 * index + 1.0) / side - 1.0;
}

void FillRow(short* row, int side, double y, double z)
{
  std::fill(row, row + side, static_cast<short>(0));
  for (const Ellipsoid& part : Head)
  {
    double from, to;
    if (!FindCrossing(part, y, z, from, to))
    {
      continue;
    }
    const int first = std::max(0, static_cast<int>(std::ceil(0.5 * ((from + 1.0) * side - 1.0))));
    const int last =
      std::min(side - 1, static_cast<int>(std::floor(0.5 * ((to + 1.0) * side - 1.0))));
    for (int i = first; i <= last; ++i)
    {
      row[i] = static_cast<short>(row[i] + static_cast<short>(part.Value));
    }
  }
}
}

zvVolume zvHeadPhantom::Make(int side, zvLoadProgress& progress)
{
  zvVolume volume;
  volume.Name = "Head phantom";
  volume.IsOrientationKnown = true;
  volume.Image = vtkSmartPointer<vtkImageData>::New();
  const double spacing = CubeInMillimetres / side;
  const double origin = 0.5 * (spacing - CubeInMillimetres);
  volume.Image->SetDimensions(side, side, side);
  volume.Image->SetSpacing(spacing, spacing, spacing);
  volume.Image->SetOrigin(origin, origin, origin);
  volume.Image->AllocateScalars(VTK_SHORT, 1);
  auto* row = static_cast<short*>(volume.Image->GetScalarPointer());
  for (int k = 0; k < side; ++k)
  {
    progress.Report(static_cast<double>(k) / side);
    for (int j = 0; j < side; ++j, row += side)
    {
      // The volume's y runs to the back.
      FillRow(row, side, -PlaceOf(j, side), PlaceOf(k, side));
    }
  }
  progress.Report(1.0);
  return volume;
}
