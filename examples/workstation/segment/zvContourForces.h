#ifndef zvContourForces_h
#define zvContourForces_h

#include "zvContour.h"
#include "zvContourPlane.h"

#include "vtkSmartPointer.h"

class vtkImageData;
class vtkImageInterpolator;
class vtkPolyData;

/// How the edges of a slice are found.
struct zvForceParameters
{
  /// Standard deviation of the smoothing before the gradient is taken, in voxels; 0 for none.
  double Smoothing = 1.0;
  /// From which part of the strongest gradient on an edge counts, above 0.
  double EdgeContrast = 0.2;
};

/// What a slice does to a contour: its smoothed values, how much of an edge there is, and the pull
/// towards the nearest edge. Made once a slice, immutable afterwards.
class zvContourForces
{
public:
  struct Sample
  {
    double Value = 0.0;        // of the smoothed slice
    double Gradient = 0.0;     // its magnitude, values per millimetre
    double Edge = 0.0;         // 0 in even tissue, near 1 on a strong edge
    zvContourPoint Pull{ {} }; // towards the edge, about 1 at one standard deviation from it
  };

  /// A slice of a volume as float values in an image of its own in the plane of the first two axes,
  /// with the contour's coordinates. The volume is only read, on the caller's thread.
  static vtkSmartPointer<vtkImageData> CutSlice(vtkImageData* volume, const zvContourPlane& plane);

  /// Take the edges of a slice. This is the part that takes its time; it may run on any thread.
  /// \param slice  from CutSlice. It is changed: voxels without a finite value take that of their
  /// neighbours.
  zvContourForces(vtkImageData* slice, const zvForceParameters& parameters);
  ~zvContourForces();
  zvContourForces(const zvContourForces&) = delete;
  void operator=(const zvContourForces&) = delete;

  /// At a point of the slice; beside it, at the nearest one.
  Sample At(const zvContourPoint& point) const;

  /// False in a slice of one value, or without any value: then nothing pulls.
  bool HasEdges() const { return this->Threshold > 0.0; }
  /// How many voxels had no finite value.
  int GetHoleCount() const { return this->HoleCount; }
  bool IsEmpty() const { return this->HoleCount == this->VoxelCount; }

  /// The slice's sides, from its first voxel's centre to its last one's.
  const zvContourPoint& GetLow() const { return this->Low; }
  const zvContourPoint& GetHigh() const { return this->High; }
  /// The smaller and the larger side of a voxel, millimetres.
  double GetFineSpacing() const { return this->FineSpacing; }
  double GetCoarseSpacing() const { return this->CoarseSpacing; }
  /// The range that nearly all of the smoothed values have, without the outermost hundredths.
  double GetContrast() const { return this->Contrast; }

  /// The crests of the gradient as points in the world, with the gradient as scalars: the strongest
  /// ones, at most so many.
  vtkSmartPointer<vtkPolyData> MakeEdgePoints(
    const zvContourPlane& plane, vtkIdType most, double lift = 0.0) const;

private:
  void ReadGrid(vtkImageData* slice);
  void FindEdges(vtkImageData* slice, const zvForceParameters& parameters);
  void MeasureEdges(vtkImageData* smooth, vtkImageData* magnitude, double edgeContrast);
  void CollectEdges(vtkImageData* smooth, vtkImageData* magnitude);

  vtkSmartPointer<vtkPolyData> Edges;                 // in the contour's coordinates
  vtkSmartPointer<vtkImageInterpolator> Interpolator; // of value, gradient and pull
  zvContourPoint Low{ {} };
  zvContourPoint High{ {} };
  zvContourPoint Spacing{ { 1.0, 1.0 } };
  double FineSpacing = 1.0;
  double CoarseSpacing = 1.0;
  double Contrast = 0.0;
  double Threshold = 0.0; // the gradient that is half an edge, 0 without edges
  int HoleCount = 0;
  int VoxelCount = 0;
};

#endif
