#ifndef zvIndexedVolume_h
#define zvIndexedVolume_h

#include "vtkDataArray.h"
#include "vtkImageData.h"
#include "vtkMatrix3x3.h"
#include "vtkMatrix4x4.h"
#include "vtkPointData.h"
#include "vtkSmartPointer.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

/// Volumes of short values that tell their own voxel index, so that it can be seen where each voxel
/// went. Sides are 31 voxels at most.
namespace zvtest
{
inline short IndexedValue(int i, int j, int k)
{
  return static_cast<short>(i + 32 * j + 1024 * k);
}

inline std::array<int, 3> IndexOfValue(int value)
{
  return { { value % 32, value / 32 % 32, value / 1024 } };
}

inline vtkSmartPointer<vtkImageData> MakeIndexedVolume(const std::array<int, 3>& dimensions)
{
  auto volume = vtkSmartPointer<vtkImageData>::New();
  volume->SetDimensions(dimensions.data());
  volume->AllocateScalars(VTK_SHORT, 1);
  auto* voxel = static_cast<short*>(volume->GetScalarPointer());
  for (int k = 0; k < dimensions[2]; ++k)
  {
    for (int j = 0; j < dimensions[1]; ++j)
    {
      for (int i = 0; i < dimensions[0]; ++i)
      {
        *voxel++ = IndexedValue(i, j, k);
      }
    }
  }
  return volume;
}

/// Its voxels as they stand in a file.
inline std::string BytesOf(vtkImageData* volume)
{
  return std::string(static_cast<const char*>(volume->GetScalarPointer()),
    static_cast<std::size_t>(volume->GetNumberOfPoints() * volume->GetScalarSize()));
}

/// Whether a volume has all the voxels of an indexed one of so many voxels, each where the matrix
/// takes its index, to so many millimetres.
inline ::testing::AssertionResult HasEveryVoxelInPlace(vtkImageData* volume,
  const std::array<int, 3>& dimensions, vtkMatrix4x4* indexToWorld, double tolerance = 1.0e-9)
{
  const vtkIdType count = vtkIdType(dimensions[0]) * dimensions[1] * dimensions[2];
  if (volume->GetNumberOfPoints() != count)
  {
    return ::testing::AssertionFailure() << "has " << volume->GetNumberOfPoints() << " voxels";
  }
  if (!volume->GetDirectionMatrix()->IsIdentity())
  {
    return ::testing::AssertionFailure() << "has a direction";
  }
  std::vector<bool> isSeen(static_cast<std::size_t>(count), false);
  for (vtkIdType id = 0; id < count; ++id)
  {
    const double value = volume->GetPointData()->GetScalars()->GetComponent(id, 0);
    const auto index = IndexOfValue(static_cast<int>(value));
    const double in[4] = { double(index[0]), double(index[1]), double(index[2]), 1.0 };
    double expected[4];
    indexToWorld->MultiplyPoint(in, expected);
    const double* actual = volume->GetPoint(id);
    for (int a = 0; a < 3; ++a)
    {
      if (!(std::fabs(actual[a] - expected[a]) <= tolerance))
      {
        return ::testing::AssertionFailure()
          << "voxel (" << index[0] << ", " << index[1] << ", " << index[2] << ") of value " << value
          << " is at " << actual[a] << " along axis " << a << ", not at " << expected[a];
      }
    }
    const auto at =
      static_cast<std::size_t>(index[0] + dimensions[0] * (index[1] + dimensions[1] * index[2]));
    if (at >= isSeen.size() || isSeen[at])
    {
      return ::testing::AssertionFailure() << "the value " << value << " occurs twice";
    }
    isSeen[at] = true;
  }
  return ::testing::AssertionSuccess();
}
}

#endif
