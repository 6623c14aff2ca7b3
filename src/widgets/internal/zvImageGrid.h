#ifndef zvImageGrid_h
#define zvImageGrid_h

#include <string>

class vtkAlgorithm;
class vtkImageData;

/// Where the voxels of an image lie.
namespace zvImageGrid
{
/// What a pipeline promises of its image before it has made it.
struct Grid
{
  int Extent[6] = { 0, -1, 0, -1, 0, -1 }; ///< whole extent, voxel indices
  double Origin[3] = { 0.0, 0.0, 0.0 };    ///< of voxel (0, 0, 0), world millimetres
  double Spacing[3] = { 1.0, 1.0, 1.0 };   ///< millimetres, may be negative
  bool IdentityDirection = true;           ///< whether the image's axes are those of the world
};

/// The grid of the image on the first input of \a consumer, after its producer has updated its
/// information. A consumer without a connection gives an empty grid.
Grid Read(vtkAlgorithm* consumer);

/// The box between the centres of the first and the last voxels, world millimetres: \a low is not
/// above \a high, whatever the sign of the spacing.
void Span(const Grid& grid, double low[3], double high[3]);

/// Whether the axes of \a image are those of the world, exactly.
bool HasIdentityDirection(vtkImageData* image);

/// What a widget says when it refuses an image whose axes are not those of the world. \a what is
/// refused ("image"), \a consequence follows from it ("the image is not shown").
std::string DirectionText(const std::string& what, const std::string& consequence);

/// Whether an extent has no voxels, and what a widget says then.
bool IsEmpty(const int extent[6]);
std::string EmptyExtentText(const int extent[6]);

/// How many steps it is from the first to the last voxel along an axis of an extent: one less than
/// there are voxels. Extents that reach further than an int counts end at its limits, with room for
/// one more.
int StepsAlong(const int extent[6], int axis);

/// Whether \a image has scalars for at least one voxel; without them it cannot be drawn.
bool HasVoxels(vtkImageData* image);

/// The index nearest to \a coordinate on an axis, halves away from zero. 0 where the spacing is 0
/// or a value is not a number; never beyond what an int holds.
int NearestIndex(double coordinate, double origin, double spacing);
}

#endif
