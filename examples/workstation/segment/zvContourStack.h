#ifndef zvContourStack_h
#define zvContourStack_h

#include "zvContour.h"

#include "vtkSmartPointer.h"

#include <map>

class vtkImageData;
class vtkPolyData;

/// The contours of a volume's slices across one axis, at most one a slice.
class zvContourStack
{
public:
  explicit zvContourStack(int axis = 2)
    : Axis(axis)
  {
  }

  int GetAxis() const { return this->Axis; }
  bool IsEmpty() const { return this->Contours.empty(); }
  int GetCount() const { return static_cast<int>(this->Contours.size()); }
  /// By the indices of the slices.
  const std::map<int, zvContour>& GetContours() const { return this->Contours; }

  /// The contour of a slice, null if it has none.
  const zvContour* Find(int slice) const;
  /// An empty contour takes away the one that is there.
  void Set(int slice, const zvContour& contour);
  void Clear() { this->Contours.clear(); }

  /// All contours as rings of two-point lines in the world.
  vtkSmartPointer<vtkPolyData> ToPolyData(vtkImageData* volume) const;

  /// What the contours enclose, as a mask on the grid of the volume: unsigned char, 0 where a
  /// voxel's centre lies within the contour of its slice, 1 elsewhere. Null without a contour.
  vtkSmartPointer<vtkImageData> MakeMask(vtkImageData* volume) const;

private:
  int Axis;
  std::map<int, zvContour> Contours;
};

#endif
