#ifndef zvReslicePlane_h
#define zvReslicePlane_h

class vtkImageReslice;
class vtkLinearTransform;
class vtkMatrix4x4;
class vtkTransform;

/// The arithmetic of a plane through an image: where it is placed, how it is turned, enlarged and
/// resized, and how a reslice samples the image through it.
///
/// Points and lengths are world millimetres.
namespace zvReslicePlane
{
/// A plane by its origin and the ends of its two axes.
struct Corners
{
  double Origin[3];
  double Point1[3];
  double Point2[3];
};

/// The axis along which a plane of an orientation has its normal: 0 and 2 stand for themselves,
/// every other value, also one out of range, for 1.
int NormalAxis(int orientation);

///@{
/// The world axes along which the first and second axis of such a plane run: they follow the normal
/// in the order x, y, z, x.
int FirstAxis(int normalAxis);
int SecondAxis(int normalAxis);
///@}

/// The three points of a plane source.
template <typename Source>
Corners ReadCorners(Source* source)
{
  Corners plane;
  source->GetOrigin(plane.Origin);
  source->GetPoint1(plane.Point1);
  source->GetPoint2(plane.Point2);
  return plane;
}

/// Give a plane source three points: the origin first, then the other two.
template <typename Source>
void WriteCorners(Corners plane, Source* source)
{
  source->SetOrigin(plane.Origin);
  source->SetPoint1(plane.Point1);
  source->SetPoint2(plane.Point2);
}

/// A plane across the box from \a starts to \a stops, at \a position on the normal axis.
Corners Across(int normalAxis, const double starts[3], const double stops[3], double position);

/// Whether the plane through an image of this extent is enlarged before it turns. That of a larger
/// one, with an upper end of 1000 or more, is not, so that the slice stays affordable.
bool MayBeEnlarged(const int extent[6]);

/// A plane of twice \a halfWidth around \a center, each point at its place along the normal axis.
Corners Enlarged(
  const Corners& plane, int normalAxis, const double center[3], const double halfWidth[3]);

/// A plane resized about its centre from \a from to \a to voxel steps along its two axes, whose
/// spacing is \a spacing. Half the difference goes to each side, as whole steps and then as whole
/// millimetres, so a small change moves nothing.
Corners Resized(const Corners& plane, const int from[2], const int to[2], const double spacing[2]);

/// Make \a transform a turn by \a degrees about an axis through a centre.
void SetTurn(const double center[3], double degrees, const double axis[3], vtkTransform* transform);

/// The three points through a transform.
Corners Turned(const Corners& plane, vtkLinearTransform* transform);

/// Make \a axes the matrix from a plane's own coordinates to the world's: the unit axes as columns,
/// and the origin taken through them. The matrix is marked modified in any case.
void SetResliceAxes(const double axis1[3], const double axis2[3], const double normal[3],
  const double origin[3], vtkMatrix4x4* axes);

/// How a plane is sampled along one of its axes.
struct Sampling
{
  double Voxels;  ///< how many voxels the plane measures
  int Extent;     ///< samples, a power of two of at least that; 0 if there would be too many
  double Spacing; ///< millimetres from sample to sample
};

/// The sampling of a plane of \a size millimetres along \a unitAxis through an image of \a spacing.
/// More than 1073741823 voxels, or no number of them, are too many.
Sampling SampleAlong(const double unitAxis[3], double size, const double spacing[3]);

/// Let \a reslice make so many samples along both axes, or every \a factor-th (1 and above) of
/// them.
void SetOutput(const Sampling& x, const Sampling& y, int factor, vtkImageReslice* reslice);
}

#endif
