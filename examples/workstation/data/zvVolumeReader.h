#ifndef zvVolumeReader_h
#define zvVolumeReader_h

#include "zvVolume.h"

#include <memory>
#include <string>

class zvLabelAtlas;
class zvLoadProgress;

/// How a load ended.
struct zvLoadResult
{
  enum class Outcome
  {
    Loaded,   // Volume is there
    Refused,  // Reason says why
    Cancelled // neither
  };
  Outcome Ending = Outcome::Cancelled;
  zvVolume Volume;
  /// The volume as labels; from ReadLabels alone.
  std::shared_ptr<const zvLabelAtlas> Labels;
  /// The end of the sentence "<file>: <reason>", without a full stop.
  std::string Reason;
};

/// Reads volumes of every known format and brings them upright.
namespace zvVolumeReader
{
/// Read a file (NIfTI, MetaImage, NRRD, one DICOM file and its series) or a folder of DICOM files.
/// Works on any thread, throws nothing and prints nothing. Refused are, beside what the formats
/// refuse: what is not there, may not be read, is empty, is no image, has more or fewer than three
/// dimensions or more than one value a voxel, is cut off or would not fit into memory.
zvLoadResult Read(const std::string& path, zvLoadProgress& progress);

/// The same for a volume of labels, which are taken over with their names.
zvLoadResult ReadLabels(const std::string& path, zvLoadProgress& progress);

/// The built-in head, as a result like the others.
zvLoadResult MakePhantom(int side, zvLoadProgress& progress);

/// The example volume that the system's packages bring, empty if it is not installed.
std::string FindExampleVolume();
}

#endif
