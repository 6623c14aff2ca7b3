#ifndef zvImageBytes_h
#define zvImageBytes_h

#include <vtkImageData.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace zvtest
{
/// Success if two images have the same extent, spacing, origin, scalar type and bytes.
inline testing::AssertionResult HaveSameBytes(vtkImageData* expected, vtkImageData* actual)
{
  if (!std::equal(expected->GetExtent(), expected->GetExtent() + 6, actual->GetExtent()) ||
    !std::equal(expected->GetSpacing(), expected->GetSpacing() + 3, actual->GetSpacing()) ||
    !std::equal(expected->GetOrigin(), expected->GetOrigin() + 3, actual->GetOrigin()) ||
    expected->GetScalarType() != actual->GetScalarType() ||
    expected->GetNumberOfScalarComponents() != actual->GetNumberOfScalarComponents())
  {
    return testing::AssertionFailure() << "the images differ in shape or type";
  }
  const auto* const first = static_cast<unsigned char*>(expected->GetScalarPointer());
  const auto* const second = static_cast<unsigned char*>(actual->GetScalarPointer());
  const vtkIdType bytesPerPixel =
    expected->GetScalarSize() * expected->GetNumberOfScalarComponents();
  const auto* const end = first + expected->GetNumberOfPoints() * bytesPerPixel;
  const auto difference = std::mismatch(first, end, second);
  if (difference.first == end)
  {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure()
    << "the first difference is at pixel " << (difference.first - first) / bytesPerPixel;
}
}

#endif
