#ifndef zvWindowPresets_h
#define zvWindowPresets_h

#include <string>
#include <vector>

class vtkImageData;
struct zvVolume;

/// Which values are drawn black and which white: those below level - window / 2 and above
/// level + window / 2.
struct zvWindowValues
{
  double Window = 1.0;
  double Level = 0.0;
};

struct zvWindowPreset
{
  std::string Name;
  zvWindowValues Value;
};

/// What to offer for a volume.
namespace zvWindowPresets
{
/// The values below which the given parts (0 to 1) of all voxels lie. Values that are not finite
/// count as none.
std::vector<double> Percentiles(vtkImageData* image, const std::vector<double>& parts);

/// Whether the values are Hounsfield units: the modality says so, or, where it is not known, there
/// is air (about -1000) beside tissue.
bool LooksLikeCt(const zvVolume& volume);

/// The presets of a volume, at most nine. The first is the one to begin with: from the 1st to the
/// 99th percentile of the voxels. Then the full range and the brain; for computed tomography the
/// usual windows of its organs, and the full range.
std::vector<zvWindowPreset> For(const zvVolume& volume);
}

#endif
