#include "zvVolumeReader.h"

#include "zvDicomFolder.h"
#include "zvFileFacts.h"
#include "zvHeadPhantom.h"
#include "zvLabelAtlas.h"
#include "zvLoadFailure.h"
#include "zvLoadProgress.h"
#include "zvMessageTrap.h"
#include "zvMetaImageFile.h"
#include "zvNiftiFile.h"
#include "zvNrrdFile.h"
#include "zvPatientGrid.h"
#include "zvReaderSteps.h"

#include <filesystem>
#include <new>

namespace fs = std::filesystem;

namespace
{
// Of the Debian package mricron-data.
constexpr const char* ExampleVolume = "/usr/share/mricron/templates/ch2.nii.gz";

zvRawVolume ReadRaw(const std::string& path, zvLoadProgress& progress)
{
  std::error_code error;
  if (fs::is_directory(path, error))
  {
    zvFileFacts::RequireReadableFolder(path);
    return zvDicomFolder::Read(path, progress);
  }
  zvFileFacts::RequireReadableFile(path);
  if (zvNiftiFile::HasName(path))
  {
    return zvNiftiFile::Read(path, progress);
  }
  if (zvMetaImageFile::HasName(path))
  {
    return zvMetaImageFile::Read(path, progress);
  }
  if (zvNrrdFile::HasName(path) || zvNrrdFile::HasMagic(path))
  {
    return zvNrrdFile::Read(path, progress);
  }
  if (zvDicomFolder::HasMagic(path))
  {
    return zvDicomFolder::Read(path, progress);
  }
  throw zvLoadRefusal("it is not a NIfTI, MetaImage, NRRD or DICOM image");
}

zvVolume ReadUpright(const std::string& path, zvLoadProgress& progress)
{
  const zvRawVolume raw = ReadRaw(path, progress);
  zvVolume volume = zvPatientGrid::Straighten(raw, progress, zvReaderSteps::ReadingShare, 1.0);
  volume.File = path;
  return volume;
}

// Run a load, which fills the result, and turn what it throws into a result.
template <class Load>
zvLoadResult Collect(Load load)
{
  zvLoadResult result;
  const auto refuse = [&result](const char* reason)
  {
    result.Ending = zvLoadResult::Outcome::Refused;
    result.Reason = reason;
  };
  try
  {
    load(result);
    result.Ending = zvLoadResult::Outcome::Loaded;
  }
  catch (const zvLoadCancelled&)
  {
    result.Ending = zvLoadResult::Outcome::Cancelled;
  }
  catch (const zvLoadRefusal& refusal)
  {
    refuse(refusal.what());
  }
  catch (const std::bad_alloc&)
  {
    refuse("there is not enough memory for it");
  }
  catch (const std::exception& exception)
  {
    refuse(exception.what());
  }
  return result;
}
}

zvLoadResult zvVolumeReader::Read(const std::string& path, zvLoadProgress& progress)
{
  const zvMessageTrap trap;
  const zvMessageTrap::Listener others; // whatever the formats do not listen to themselves
  return Collect([&](zvLoadResult& result) { result.Volume = ReadUpright(path, progress); });
}

zvLoadResult zvVolumeReader::ReadLabels(const std::string& path, zvLoadProgress& progress)
{
  const zvMessageTrap trap;
  const zvMessageTrap::Listener others;
  return Collect(
    [&](zvLoadResult& result)
    {
      result.Volume = ReadUpright(path, progress);
      result.Labels = std::make_shared<zvLabelAtlas>(result.Volume.Image, path);
    });
}

zvLoadResult zvVolumeReader::MakePhantom(int side, zvLoadProgress& progress)
{
  return Collect(
    [&](zvLoadResult& result) { result.Volume = zvHeadPhantom::Make(side, progress); });
}

std::string zvVolumeReader::FindExampleVolume()
{
  std::error_code error;
  return fs::exists(ExampleVolume, error) ? ExampleVolume : std::string();
}
