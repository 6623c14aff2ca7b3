#ifndef zvVolumes_h
#define zvVolumes_h

#include "vtkSmartPointer.h"
#include "vtkType.h"

#include <array>
#include <functional>
#include <vector>

class vtkImageData;

/// Synthetic volumes whose voxel value tells the voxel's own index.
namespace zvtest
{
using Index = std::array<int, 3>;
using World = std::array<double, 3>;

/// What a volume is made of; the defaults are a small short volume of unit voxels.
struct VolumeOptions
{
  Index Dimensions{ { 7, 6, 5 } };
  World Spacing{ { 1.0, 1.0, 1.0 } }; ///< may be negative
  World Origin{ { 0.0, 0.0, 0.0 } };
  Index First{ { 0, 0, 0 } }; ///< the extent's minimum
  int ScalarType = VTK_SHORT;
  int Components = 1;
  std::array<double, 9> Direction{ { 1, 0, 0, 0, 1, 0, 0, 0, 1 } }; ///< by rows
};

/// A volume in which the voxel that is i, j, k steps from the extent's minimum holds, in component
/// c, i + b*j + b*b*k + m*c, where b and m are
///   100 and 1000000  for types of 32 bits and more, float and double,
///   30 and 1         for the types of 16 bits,
///   6 and 1          for unsigned char, 5 and 1 for the signed types of 8 bits.
/// Throws std::invalid_argument if a dimension exceeds b or is below 1.
vtkSmartPointer<vtkImageData> MakeIndexVolume(const VolumeOptions& options = {});

/// A volume of the same build with component c of every voxel from \a value(i, j, k, c), which is
/// given absolute indices; no limit on the dimensions.
vtkSmartPointer<vtkImageData> MakeVolume(
  const VolumeOptions& options, const std::function<double(int, int, int, int)>& value);

/// A volume that holds \a value everywhere.
vtkSmartPointer<vtkImageData> MakeConstantVolume(double value, const VolumeOptions& options = {});

/// What an index volume holds at an absolute index.
double IndexValue(vtkImageData* volume, const Index& index, int component = 0);

/// The absolute index that a value of component 0 of an index volume tells.
Index IndexOfValue(vtkImageData* volume, double value);

/// The world position of the centre of a voxel, by origin and spacing.
World CenterOfVoxel(vtkImageData* volume, const Index& index);

// Ready-made options, to be used as they are or changed further.

/// Unequal dimensions 8, 6, 4 and spacings 0.5, 1.25, 3 and an origin off zero (-2, 4.5, 10), int.
VolumeOptions UnequalVolume();
/// The unequal volume with the spacing of the given axes (default y) negated.
VolumeOptions NegativeSpacingVolume(const std::vector<int>& axes = { 1 });
/// The unequal volume with an extent that starts at 3, -2, 11.
VolumeOptions ShiftedExtentVolume();
/// The unequal volume, one voxel thick along \a axis.
VolumeOptions OneVoxelThickVolume(int axis);
/// Dimensions 5, 4, 3 of the given type.
VolumeOptions VolumeOfType(int scalarType);
/// The unequal volume with \a components components.
VolumeOptions MultiComponentVolume(int components);
/// The unequal volume, turned by a quarter about z by its direction matrix.
VolumeOptions TurnedVolume();

/// Every scalar type that an image of voxels can have: thirteen.
const std::vector<int>& AllScalarTypes();
/// "UnsignedChar" and so on, for test names.
const char* ScalarTypeName(int scalarType);
}

#endif
