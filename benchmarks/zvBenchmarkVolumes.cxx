#include "zvBenchmarkVolumes.h"

#include <vtkImageData.h>
#include <vtkSmartPointer.h>

#include <array>
#include <cmath>
#include <map>
#include <random>

namespace
{
vtkSmartPointer<vtkImageData> MakeScan(const std::array<int, 3>& size)
{
  auto scan = vtkSmartPointer<vtkImageData>::New();
  scan->SetDimensions(size.data());
  scan->SetSpacing(0.7, 0.7, 1.2);
  scan->AllocateScalars(VTK_SHORT, 1);
  std::minstd_rand noise(1);
  auto* voxel = static_cast<short*>(scan->GetScalarPointer());
  for (int k = 0; k < size[2]; ++k)
  {
    for (int j = 0; j < size[1]; ++j)
    {
      const double column = 1000.0 * std::cos(0.04 * j) * std::sin(0.1 * k);
      for (int i = 0; i < size[0]; ++i)
      {
        const double value = column * std::sin(0.05 * i) + static_cast<double>(noise() % 200);
        *voxel++ = static_cast<short>(value - 100.0);
      }
    }
  }
  return scan;
}
}

//------------------------------------------------------------------------------
vtkImageData* zvBenchmarkVolumes::GetScan(int sizeX, int sizeY, int sizeZ)
{
  static std::map<std::array<int, 3>, vtkSmartPointer<vtkImageData>> scans;
  const std::array<int, 3> size{ sizeX, sizeY, sizeZ };
  vtkSmartPointer<vtkImageData>& scan = scans[size];
  if (!scan)
  {
    scan = MakeScan(size);
  }
  return scan;
}
