#ifndef zvVolume_h
#define zvVolume_h

#include "vtkImageData.h"
#include "vtkMatrix4x4.h"
#include "vtkSmartPointer.h"

#include <string>
#include <vector>

/// A volume as the views take it: upright in the patient's frame.
///
/// The frame is LPS, in millimetres: x runs to the patient's Left, y to the back (Posterior), z to
/// the head (Superior). So voxel (0, 0, 0) is the rightmost, frontmost and lowest one, and the side
/// of a larger i is always the patient's left.
struct zvVolume
{
  /// One value a voxel, identity direction, extents from 0, positive spacing.
  vtkSmartPointer<vtkImageData> Image;
  /// What to call it in a title: a file's or a series' name.
  std::string Name;
  /// The modality by its DICOM code ("CT", "MR"), empty where the file does not say.
  std::string Modality;
  /// False where the file does not say how the patient lies: then the letters L, R, A, P, S, I
  /// must not be shown.
  bool IsOrientationKnown = false;
  /// What the user has to know of it, one sentence each: that it was resampled, that slices miss.
  std::vector<std::string> Notices;
  /// The file or folder that it was read from, empty for the built-in head.
  std::string File{};
};

/// A volume as it comes out of a file: voxels in the order of the file, and where they belong.
struct zvRawVolume
{
  /// Extents from 0. Origin, spacing and direction are ignored.
  vtkSmartPointer<vtkImageData> Voxels;
  /// From voxel indices (i, j, k, 1) to millimetres in LPS.
  vtkSmartPointer<vtkMatrix4x4> IndexToPatient = vtkSmartPointer<vtkMatrix4x4>::New();
  /// As in zvVolume.
  std::string Name;
  std::string Modality;
  bool IsOrientationKnown = false;
  std::vector<std::string> Notices;
};

/// The letter of the side that an axis (0, 1, 2) of the patient's frame runs to (positive) or comes
/// from: L, R, P, A, S or I.
inline const char* zvSideLetter(int axis, bool positive)
{
  static const char* const letters[3][2] = { { "R", "L" }, { "A", "P" }, { "I", "S" } };
  return letters[axis][positive ? 1 : 0];
}

#endif
