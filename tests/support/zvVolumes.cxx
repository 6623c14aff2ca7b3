#include "zvVolumes.h"

#include "vtkDataArray.h"
#include "vtkImageData.h"
#include "vtkPointData.h"

#include <cmath>
#include <stdexcept>

namespace
{
struct Mapping
{
  int Base;
  int ComponentStep;
};

Mapping MappingOf(int scalarType)
{
  switch (scalarType)
  {
    case VTK_CHAR:
    case VTK_SIGNED_CHAR:
      return { 5, 1 };
    case VTK_UNSIGNED_CHAR:
      return { 6, 1 };
    case VTK_SHORT:
    case VTK_UNSIGNED_SHORT:
      return { 30, 1 };
    default:
      return { 100, 1000000 };
  }
}

double Encode(int scalarType, const zvtest::Index& step, int component)
{
  const Mapping mapping = MappingOf(scalarType);
  return step[0] + mapping.Base * (step[1] + mapping.Base * step[2]) +
    static_cast<double>(mapping.ComponentStep) * component;
}

vtkSmartPointer<vtkImageData> Allocate(const zvtest::VolumeOptions& options)
{
  auto volume = vtkSmartPointer<vtkImageData>::New();
  int extent[6];
  for (int axis = 0; axis < 3; ++axis)
  {
    if (options.Dimensions[axis] < 1)
    {
      throw std::invalid_argument("a volume has at least one voxel along each axis");
    }
    extent[2 * axis] = options.First[axis];
    extent[2 * axis + 1] = options.First[axis] + options.Dimensions[axis] - 1;
  }
  volume->SetExtent(extent);
  volume->SetSpacing(options.Spacing.data());
  volume->SetOrigin(options.Origin.data());
  volume->SetDirectionMatrix(options.Direction.data());
  volume->AllocateScalars(options.ScalarType, options.Components);
  return volume;
}
}

namespace zvtest
{
vtkSmartPointer<vtkImageData> MakeIndexVolume(const VolumeOptions& options)
{
  for (int dimension : options.Dimensions)
  {
    if (dimension > MappingOf(options.ScalarType).Base)
    {
      throw std::invalid_argument("the scalar type cannot tell the index of so many voxels");
    }
  }
  return MakeVolume(options,
    [&options](int i, int j, int k, int component)
    {
      const Index step{ { i - options.First[0], j - options.First[1], k - options.First[2] } };
      return Encode(options.ScalarType, step, component);
    });
}

vtkSmartPointer<vtkImageData> MakeVolume(
  const VolumeOptions& options, const std::function<double(int, int, int, int)>& value)
{
  vtkSmartPointer<vtkImageData> volume = Allocate(options);
  vtkDataArray* scalars = volume->GetPointData()->GetScalars();
  vtkIdType tuple = 0;
  for (int k = 0; k < options.Dimensions[2]; ++k)
  {
    for (int j = 0; j < options.Dimensions[1]; ++j)
    {
      for (int i = 0; i < options.Dimensions[0]; ++i, ++tuple)
      {
        for (int component = 0; component < options.Components; ++component)
        {
          scalars->SetComponent(tuple, component,
            value(options.First[0] + i, options.First[1] + j, options.First[2] + k, component));
        }
      }
    }
  }
  return volume;
}

vtkSmartPointer<vtkImageData> MakeConstantVolume(double value, const VolumeOptions& options)
{
  return MakeVolume(options, [value](int, int, int, int) { return value; });
}

double IndexValue(vtkImageData* volume, const Index& index, int component)
{
  const int* extent = volume->GetExtent();
  const Index step{ { index[0] - extent[0], index[1] - extent[2], index[2] - extent[4] } };
  return Encode(volume->GetScalarType(), step, component);
}

Index IndexOfValue(vtkImageData* volume, double value)
{
  const int base = MappingOf(volume->GetScalarType()).Base;
  const int* extent = volume->GetExtent();
  const int code = static_cast<int>(std::lround(value));
  return { { extent[0] + code % base, extent[2] + code / base % base,
    extent[4] + code / (base * base) } };
}

World CenterOfVoxel(vtkImageData* volume, const Index& index)
{
  World center;
  for (int axis = 0; axis < 3; ++axis)
  {
    center[axis] = volume->GetOrigin()[axis] + index[axis] * volume->GetSpacing()[axis];
  }
  return center;
}

VolumeOptions UnequalVolume()
{
  VolumeOptions options;
  options.Dimensions = { { 8, 6, 4 } };
  options.Spacing = { { 0.5, 1.25, 3.0 } };
  options.Origin = { { -2.0, 4.5, 10.0 } };
  options.ScalarType = VTK_INT;
  return options;
}

VolumeOptions NegativeSpacingVolume(const std::vector<int>& axes)
{
  VolumeOptions options = UnequalVolume();
  for (int axis : axes)
  {
    options.Spacing[axis] = -options.Spacing[axis];
  }
  return options;
}

VolumeOptions ShiftedExtentVolume()
{
  VolumeOptions options = UnequalVolume();
  options.First = { { 3, -2, 11 } };
  return options;
}

VolumeOptions OneVoxelThickVolume(int axis)
{
  VolumeOptions options = UnequalVolume();
  options.Dimensions[axis] = 1;
  return options;
}

VolumeOptions VolumeOfType(int scalarType)
{
  VolumeOptions options;
  options.Dimensions = { { 5, 4, 3 } };
  options.ScalarType = scalarType;
  return options;
}

VolumeOptions MultiComponentVolume(int components)
{
  VolumeOptions options = UnequalVolume();
  options.Components = components;
  return options;
}

VolumeOptions TurnedVolume()
{
  VolumeOptions options = UnequalVolume();
  options.Direction = { { 0, -1, 0, 1, 0, 0, 0, 0, 1 } };
  return options;
}

const std::vector<int>& AllScalarTypes()
{
  static const std::vector<int> types = { VTK_CHAR, VTK_SIGNED_CHAR, VTK_UNSIGNED_CHAR, VTK_SHORT,
    VTK_UNSIGNED_SHORT, VTK_INT, VTK_UNSIGNED_INT, VTK_LONG, VTK_UNSIGNED_LONG, VTK_LONG_LONG,
    VTK_UNSIGNED_LONG_LONG, VTK_FLOAT, VTK_DOUBLE };
  return types;
}

const char* ScalarTypeName(int scalarType)
{
  switch (scalarType)
  {
    case VTK_CHAR:
      return "Char";
    case VTK_SIGNED_CHAR:
      return "SignedChar";
    case VTK_UNSIGNED_CHAR:
      return "UnsignedChar";
    case VTK_SHORT:
      return "Short";
    case VTK_UNSIGNED_SHORT:
      return "UnsignedShort";
    case VTK_INT:
      return "Int";
    case VTK_UNSIGNED_INT:
      return "UnsignedInt";
    case VTK_LONG:
      return "Long";
    case VTK_UNSIGNED_LONG:
      return "UnsignedLong";
    case VTK_LONG_LONG:
      return "LongLong";
    case VTK_UNSIGNED_LONG_LONG:
      return "UnsignedLongLong";
    case VTK_FLOAT:
      return "Float";
    case VTK_DOUBLE:
      return "Double";
    default:
      return "Other";
  }
}
}
