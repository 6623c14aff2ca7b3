#ifndef zvPatientGrid_h
#define zvPatientGrid_h

#include "zvVolume.h"

class zvLoadProgress;
class vtkMatrix4x4;

/// Brings volumes upright: to a grid along the axes of the patient's frame, which the widgets need.
namespace zvPatientGrid
{
/// An axis counts as straight if its direction cosines are within this of 0 and of 1 or -1, which
/// is what headers with four to six digits and single-precision quaternions leave of a straight
/// one. A volume that leans less is drawn as if it stood straight about its centre: at 250 mm from
/// there that moves a voxel by a quarter of a millimetre at most.
constexpr double StraightnessTolerance = 1.0e-3;

/// How the axes of a grid run through the patient.
struct Axes
{
  /// For each patient axis (x, y, z) the voxel axis (0, 1, 2) that runs along it, whether it runs
  /// backwards, and the length of a step in millimetres.
  int From[3];
  bool IsFlipped[3];
  double Spacing[3];
};

/// \param indexToPatient  from voxel indices to millimetres.
/// \param axes  filled if the answer is true.
/// \return whether every voxel axis runs along an axis of the patient's frame.
bool FindStraightAxes(vtkMatrix4x4* indexToPatient, Axes& axes);

/// Bring a volume upright. Where its axes are straight they are permuted and flipped, and every
/// voxel keeps its value and its place. Otherwise it is resampled by linear interpolation: one step
/// along a new axis never goes further than one voxel of the old grid, the new grid holds the whole
/// old one, what lies outside the old one becomes the volume's lowest value, and a notice says so.
/// \param raw  one value a voxel. Whole numbers of 64 bits, which VTK cannot sample, become double.
/// \throws zvLoadRefusal if the matrix is singular or not finite, or the new grid would not fit
/// into memory. \throws zvLoadCancelled Fills the part of the progress between the two fractions.
zvVolume Straighten(const zvRawVolume& raw, zvLoadProgress& progress, double from, double to);
}

#endif
