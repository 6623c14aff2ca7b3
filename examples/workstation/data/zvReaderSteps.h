#ifndef zvReaderSteps_h
#define zvReaderSteps_h

#include "zvMessageTrap.h"
#include "zvVolume.h"

#include <array>

class vtkImageReader2;
class zvLoadProgress;

/// What the readers of the single file formats have in common.
namespace zvReaderSteps
{
/// The part of a load's progress that reading takes; straightening takes the rest.
constexpr double ReadingShare = 0.8;

/// Run a reader whose file has been set and move its voxels, one value each as the header has been
/// found to say, into the volume.
/// \throws zvLoadRefusal with the reader's own words if it said anything or failed, and if it has
/// not as many values as the dimensions have voxels. \throws zvLoadCancelled
void ReadVoxels(vtkImageReader2* reader, const std::array<double, 3>& dimensions,
  zvMessageTrap::Listener& messages, zvLoadProgress& progress, zvRawVolume& volume);

/// \throws zvLoadRefusal unless there is exactly one value a voxel.
void RequireOneValueEach(double components);

/// \throws zvLoadRefusal unless a header's number of dimensions is three.
void RequireThreeDimensions(double dimensions);

/// Fill a volume's matrix.
/// \param directions  nine numbers: the direction of the first voxel axis, of the second, the
/// third. \param spacing  millimetres along each voxel axis. \param origin  millimetres, where
/// voxel (0, 0, 0) lies.
void Place(zvRawVolume& volume, const std::array<double, 9>& directions,
  const std::array<double, 3>& spacing, const std::array<double, 3>& origin);

/// Turn a matrix that leads to RAS into one that leads to LPS, or back.
void ExchangeRasAndLps(vtkMatrix4x4* matrix);
}

#endif
