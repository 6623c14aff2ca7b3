#ifndef zvContourPlane_h
#define zvContourPlane_h

#include "zvContour.h"

#include "vtkSmartPointer.h"

class vtkImageData;
class vtkPolyData;

/// One slice of a volume, and how contours in it lie in the world. The first axis of a contour is
/// the lower one of the two that span the slice: y for a slice across x, otherwise x.
class zvContourPlane
{
public:
  zvContourPlane() = default;
  /// \param volume  for its origin and spacing; not kept.
  /// \param axis  0, 1 or 2: the slice lies across it. \param slice  an index of the volume's
  /// extent.
  zvContourPlane(vtkImageData* volume, int axis, int slice);

  int GetAxis() const { return this->Axis; }
  int GetSlice() const { return this->Slice; }
  /// The world's axes of a contour's two coordinates.
  int GetFirstAxis() const { return this->Axis == 0 ? 1 : 0; }
  int GetSecondAxis() const { return this->Axis == 2 ? 1 : 2; }
  /// Where the slice lies along its axis, millimetres.
  double GetPosition() const { return this->Position; }

  std::array<double, 3> ToWorld(const zvContourPoint& point) const;
  /// A point beside the slice is taken as the one of the slice that is nearest.
  zvContourPoint FromWorld(const double world[3]) const;

  /// A ring of two-point line cells, in the order of the contour.
  /// \param lift  millimetres along the axis, off the slice.
  vtkSmartPointer<vtkPolyData> ToPolyData(const zvContour& contour, double lift = 0.0) const;

  /// The contour that the two-point lines of a ring make, counter-clockwise. Empty if they make
  /// none: null, fewer than three points, a place that is not finite, lines that do not lead round
  /// once.
  zvContour FromPolyData(vtkPolyData* ring) const;

private:
  int Axis = 2;
  int Slice = 0;
  double Position = 0.0;
};

#endif
