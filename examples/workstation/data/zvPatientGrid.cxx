#include "zvPatientGrid.h"

#include "zvFileFacts.h"
#include "zvLoadFailure.h"
#include "zvLoadProgress.h"

#include "vtkDoubleArray.h"
#include "vtkImageReslice.h"
#include "vtkMath.h"
#include "vtkMatrix3x3.h"
#include "vtkNew.h"
#include "vtkPointData.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace
{
using Point = std::array<double, 3>;

// Where the new grid lies, in millimetres, and how the sampling finds the old voxels.
struct Grid
{
  std::array<double, 3> Dimensions;
  Point Origin;
  Point Spacing;
  vtkNew<vtkMatrix4x4> ToOldIndex; // from new voxel indices to old ones
};

Point Column(vtkMatrix4x4* matrix, int column)
{
  return { matrix->GetElement(0, column), matrix->GetElement(1, column),
    matrix->GetElement(2, column) };
}

Point Apply(vtkMatrix4x4* matrix, const Point& point)
{
  const double in[4] = { point[0], point[1], point[2], 1.0 };
  double out[4];
  matrix->MultiplyPoint(in, out);
  return { out[0], out[1], out[2] };
}

void RequireUsableMatrix(vtkMatrix4x4* matrix)
{
  double volume = 1.0;
  for (int column = 0; column < 4; ++column)
  {
    const Point step = Column(matrix, column);
    if (!std::isfinite(step[0]) || !std::isfinite(step[1]) || !std::isfinite(step[2]))
    {
      throw zvLoadRefusal("its header places the voxels nowhere: a number is not finite");
    }
    volume *= column < 3 ? vtkMath::Norm(step.data()) : 1.0;
  }
  constexpr double flattest = 1.0e-4;
  if (!(std::fabs(matrix->Determinant()) > flattest * volume))
  {
    throw zvLoadRefusal("its header gives the voxels no room: an axis is missing or two coincide");
  }
}

// The patient axis that a voxel axis runs along, -1 if none.
int StraightAxisOf(const Point& direction)
{
  int found = -1;
  for (int a = 0; a < 3; ++a)
  {
    const double size = std::fabs(direction[a]);
    if (std::fabs(size - 1.0) <= zvPatientGrid::StraightnessTolerance)
    {
      found = a;
    }
    else if (size > zvPatientGrid::StraightnessTolerance)
    {
      return -1;
    }
  }
  return found;
}

Point CentreOf(const zvRawVolume& raw)
{
  const int* dimensions = raw.Voxels->GetDimensions();
  return Apply(raw.IndexToPatient,
    { 0.5 * (dimensions[0] - 1), 0.5 * (dimensions[1] - 1), 0.5 * (dimensions[2] - 1) });
}

void FillStraightGrid(const zvRawVolume& raw, const zvPatientGrid::Axes& axes, Grid& grid)
{
  const int* dimensions = raw.Voxels->GetDimensions();
  const Point centre = CentreOf(raw);
  grid.ToOldIndex->Zero();
  grid.ToOldIndex->SetElement(3, 3, 1.0);
  for (int a = 0; a < 3; ++a)
  {
    const int old = axes.From[a];
    const int last = dimensions[old] - 1;
    grid.Dimensions[a] = dimensions[old];
    grid.Spacing[a] = axes.Spacing[a];
    grid.Origin[a] = centre[a] - 0.5 * last * axes.Spacing[a];
    grid.ToOldIndex->SetElement(old, a, axes.IsFlipped[a] ? -1.0 : 1.0);
    grid.ToOldIndex->SetElement(old, 3, axes.IsFlipped[a] ? last : 0.0);
  }
}

// The box around the eight corner voxels.
void FindBox(const zvRawVolume& raw, Point& low, Point& high)
{
  const int* dimensions = raw.Voxels->GetDimensions();
  low.fill(VTK_DOUBLE_MAX);
  high.fill(-VTK_DOUBLE_MAX);
  for (int corner = 0; corner < 8; ++corner)
  {
    const Point place = Apply(raw.IndexToPatient,
      { (corner & 1) ? dimensions[0] - 1.0 : 0.0, (corner & 2) ? dimensions[1] - 1.0 : 0.0,
        (corner & 4) ? dimensions[2] - 1.0 : 0.0 });
    for (int a = 0; a < 3; ++a)
    {
      low[a] = std::min(low[a], place[a]);
      high[a] = std::max(high[a], place[a]);
    }
  }
}

void FillResampledGrid(const zvRawVolume& raw, Grid& grid)
{
  vtkNew<vtkMatrix4x4> patientToIndex;
  vtkMatrix4x4::Invert(raw.IndexToPatient, patientToIndex);
  Point low, high;
  FindBox(raw, low, high);
  vtkNew<vtkMatrix4x4> newIndexToPatient;
  for (int a = 0; a < 3; ++a)
  {
    // A millimetre along this axis crosses so many voxels of the old grid.
    const double density = vtkMath::Norm(Column(patientToIndex, a).data());
    grid.Spacing[a] = 1.0 / density;
    grid.Origin[a] = low[a];
    // A box that ends on a voxel must not get another one by rounding.
    grid.Dimensions[a] = std::ceil((high[a] - low[a]) * density - 1.0e-6) + 1.0;
    newIndexToPatient->SetElement(a, a, grid.Spacing[a]);
    newIndexToPatient->SetElement(a, 3, grid.Origin[a]);
  }
  vtkMatrix4x4::Multiply4x4(patientToIndex, newIndexToPatient, grid.ToOldIndex);
}

// The voxels on the new grid. Both grids are given to the filter in voxel indices, so that a flip
// or a change of axes is free of rounding.
vtkSmartPointer<vtkImageData> Sample(vtkImageData* voxels, const Grid& grid, bool linear,
  zvLoadProgress& progress, double from, double to)
{
  vtkNew<vtkImageData> plain;
  plain->ShallowCopy(voxels);
  plain->SetSpacing(1.0, 1.0, 1.0);
  plain->SetOrigin(0.0, 0.0, 0.0);
  plain->GetDirectionMatrix()->Identity();

  vtkNew<vtkImageReslice> reslice;
  reslice->SetInputData(plain);
  reslice->SetResliceAxes(grid.ToOldIndex);
  reslice->SetInterpolationMode(linear ? VTK_RESLICE_LINEAR : VTK_RESLICE_NEAREST);
  reslice->SetBackgroundLevel(linear ? voxels->GetScalarRange()[0] : 0.0);
  reslice->SetOutputSpacing(1.0, 1.0, 1.0);
  reslice->SetOutputOrigin(0.0, 0.0, 0.0);
  reslice->SetOutputExtent(0, static_cast<int>(grid.Dimensions[0]) - 1, 0,
    static_cast<int>(grid.Dimensions[1]) - 1, 0, static_cast<int>(grid.Dimensions[2]) - 1);
  progress.Run(reslice, from, to);

  auto sampled = vtkSmartPointer<vtkImageData>::New();
  sampled->ShallowCopy(reslice->GetOutput());
  return sampled;
}

double LeanInDegrees(vtkMatrix4x4* indexToPatient)
{
  double straightest = 1.0;
  for (int column = 0; column < 3; ++column)
  {
    Point direction = Column(indexToPatient, column);
    vtkMath::Normalize(direction.data());
    const double cosine =
      std::max({ std::fabs(direction[0]), std::fabs(direction[1]), std::fabs(direction[2]) });
    straightest = std::min(straightest, cosine);
  }
  return vtkMath::DegreesFromRadians(std::acos(straightest));
}

std::string ResamplingNotice(vtkMatrix4x4* indexToPatient, const Grid& grid)
{
  char text[256];
  std::snprintf(text, sizeof(text),
    "The slices lean by %.3g degrees: resampled to %.0f x %.0f x %.0f voxels of %.3g x %.3g x %.3g "
    "mm along the patient's axes.",
    LeanInDegrees(indexToPatient), grid.Dimensions[0], grid.Dimensions[1], grid.Dimensions[2],
    grid.Spacing[0], grid.Spacing[1], grid.Spacing[2]);
  return text;
}

// VTK's sampling crashes on whole numbers of 64 bits; as double they are exact up to 2^53.
vtkSmartPointer<vtkImageData> WithKnownType(vtkImageData* voxels)
{
  switch (voxels->GetScalarType())
  {
    case VTK_LONG:
    case VTK_UNSIGNED_LONG:
    case VTK_LONG_LONG:
    case VTK_UNSIGNED_LONG_LONG:
      break;
    default:
      return voxels;
  }
  vtkNew<vtkDoubleArray> values;
  values->DeepCopy(voxels->GetPointData()->GetScalars());
  auto converted = vtkSmartPointer<vtkImageData>::New();
  converted->CopyStructure(voxels);
  converted->GetPointData()->SetScalars(values);
  return converted;
}

bool IsOldOrder(const zvPatientGrid::Axes& axes)
{
  for (int a = 0; a < 3; ++a)
  {
    if (axes.From[a] != a || axes.IsFlipped[a])
    {
      return false;
    }
  }
  return true;
}
}

bool zvPatientGrid::FindStraightAxes(vtkMatrix4x4* indexToPatient, Axes& axes)
{
  bool isTaken[3] = { false, false, false };
  for (int column = 0; column < 3; ++column)
  {
    Point direction = Column(indexToPatient, column);
    const double length = vtkMath::Normalize(direction.data());
    const int a = StraightAxisOf(direction);
    if (a < 0 || isTaken[a])
    {
      return false;
    }
    isTaken[a] = true;
    axes.From[a] = column;
    axes.IsFlipped[a] = direction[a] < 0.0;
    axes.Spacing[a] = length;
  }
  return true;
}

zvVolume zvPatientGrid::Straighten(
  const zvRawVolume& given, zvLoadProgress& progress, double from, double to)
{
  RequireUsableMatrix(given.IndexToPatient);
  zvRawVolume raw = given;
  raw.Voxels = WithKnownType(given.Voxels);
  zvVolume volume{ nullptr, raw.Name, raw.Modality, raw.IsOrientationKnown, raw.Notices };
  Axes axes;
  Grid grid;
  if (!FindStraightAxes(raw.IndexToPatient, axes))
  {
    FillResampledGrid(raw, grid);
    zvFileFacts::RequireReasonableSize(grid.Dimensions, raw.Voxels->GetScalarSize());
    volume.Image = Sample(raw.Voxels, grid, true, progress, from, to);
    volume.Notices.push_back(ResamplingNotice(raw.IndexToPatient, grid));
  }
  else
  {
    FillStraightGrid(raw, axes, grid);
    if (IsOldOrder(axes))
    {
      volume.Image = vtkSmartPointer<vtkImageData>::New();
      volume.Image->ShallowCopy(raw.Voxels);
      volume.Image->GetDirectionMatrix()->Identity();
      progress.Report(to);
    }
    else
    {
      volume.Image = Sample(raw.Voxels, grid, false, progress, from, to);
    }
  }
  volume.Image->SetOrigin(grid.Origin.data());
  volume.Image->SetSpacing(grid.Spacing.data());
  return volume;
}
