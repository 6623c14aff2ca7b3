#include "zvNrrdFile.h"

#include "zvFileFacts.h"
#include "zvLoadFailure.h"
#include "zvReaderSteps.h"
#include "zvTextHeader.h"

#include "vtkNew.h"
#include "vtkNrrdReader.h"
#include "vtkObjectFactory.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

namespace
{
// VTK's reader turns the rows of left-handed spaces round. Here the header alone places the voxels,
// so they have to come as they stand in the file.
class FileOrderReader : public vtkNrrdReader
{
public:
  static FileOrderReader* New();
  vtkTypeMacro(FileOrderReader, vtkNrrdReader)

protected:
  FileOrderReader() = default;

  int RequestInformation(vtkInformation* request, vtkInformationVector** inputVector,
    vtkInformationVector* outputVector) override
  {
    const int answer = this->Superclass::RequestInformation(request, inputVector, outputVector);
    this->FileLowerLeft = 1;
    return answer;
  }
};

vtkStandardNewMacro(FileOrderReader);

// How the first two axes of a space run, against those of LPS.
struct Space
{
  const char* Name;
  const char* ShortName;
  double X;
  double Y;
};

constexpr Space Spaces[] = { { "left-posterior-superior", "LPS", 1.0, 1.0 },
  { "right-anterior-superior", "RAS", -1.0, -1.0 },
  { "left-anterior-superior", "LAS", 1.0, -1.0 } };

struct TypeSize
{
  double Bytes;
  const char* Names[5];
};

constexpr TypeSize TypeSizes[] = { { 1, { "signed char", "int8", "int8_t" } },
  { 1, { "uchar", "unsigned char", "uint8", "uint8_t" } },
  { 2, { "short", "short int", "signed short", "int16", "int16_t" } },
  { 2, { "ushort", "unsigned short", "unsigned short int", "uint16", "uint16_t" } },
  { 4, { "int", "signed int", "int32", "int32_t", "float" } },
  { 4, { "uint", "unsigned int", "uint32", "uint32_t" } },
  { 8, { "longlong", "long long", "int64", "int64_t", "double" } },
  { 8, { "ulonglong", "unsigned long long", "uint64", "uint64_t" } } };

double BytesPerValue(const std::string& type)
{
  for (const TypeSize& size : TypeSizes)
  {
    for (const char* name : size.Names)
    {
      if (name != nullptr && type == name)
      {
        return size.Bytes;
      }
    }
  }
  throw zvLoadRefusal("its voxels are of an unknown type (" + type + ")");
}

const Space* SpaceOf(const zvTextHeader& header)
{
  const std::string name = header.Get({ "space" });
  for (const Space& space : Spaces)
  {
    if (name == space.Name || name == space.ShortName)
    {
      return &space;
    }
  }
  return nullptr;
}

// The count of bytes is checked here where the voxels follow the header; with files beside it the
// reader does.
void RequireVoxels(const zvTextHeader& header, const std::string& path, double needed)
{
  const std::string encoding = header.Get({ "encoding" });
  const bool isDeflated = encoding == "gzip" || encoding == "gz";
  // The reader takes the digits of a text for bytes.
  if (encoding != "raw" && !isDeflated)
  {
    throw zvLoadRefusal("its voxels are in an encoding that is not supported (" + encoding + ")");
  }
  if (!header.Has({ "data file", "datafile" }))
  {
    const double available =
      static_cast<double>(zvFileFacts::SizeOf(path)) - static_cast<double>(header.GetLength());
    zvFileFacts::RequireEnoughBytes(needed, available, isDeflated);
  }
}

// An axis may also hold the components of a colour or a vector, or times.
void RequireAxesInSpace(const zvTextHeader& header)
{
  std::istringstream kinds(header.Get({ "kinds" }));
  for (std::string kind; kinds >> kind;)
  {
    if (kind != "domain" && kind != "space" && kind != "none" && kind != "???")
    {
      throw zvLoadRefusal("one of its axes does not run through space (" + kind + ")");
    }
  }
}

std::array<double, 3> RequireVolume(const zvTextHeader& header, const std::string& path)
{
  const std::vector<double> count = header.GetNumbers({ "dimension" });
  const std::vector<double> sizes = header.GetNumbers({ "sizes" });
  if (count.size() != 1)
  {
    throw zvLoadRefusal("it is not a NRRD image");
  }
  zvReaderSteps::RequireThreeDimensions(count[0]);
  if (sizes.size() != 3)
  {
    throw zvLoadRefusal("its dimensions make no sense");
  }
  RequireAxesInSpace(header);
  const double bytesPerVoxel = BytesPerValue(header.Get({ "type" }));
  zvFileFacts::RequireReasonableSize({ sizes[0], sizes[1], sizes[2] }, bytesPerVoxel);
  RequireVoxels(header, path, sizes[0] * sizes[1] * sizes[2] * bytesPerVoxel);
  return { sizes[0], sizes[1], sizes[2] };
}

// Steps along the voxel axes; without directions the spacings, where they are given, or 1.
std::array<double, 9> StepsOf(const zvTextHeader& header)
{
  const std::vector<double> directions = header.GetNumbers({ "space directions" });
  std::array<double, 9> steps = { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0 };
  if (directions.size() == 9)
  {
    std::copy(directions.begin(), directions.end(), steps.begin());
    return steps;
  }
  if (!directions.empty())
  {
    throw zvLoadRefusal("its space directions are not three vectors of three numbers");
  }
  const std::vector<double> spacings = header.GetNumbers({ "spacings" });
  for (std::size_t axis = 0; axis < 3 && axis < spacings.size(); ++axis)
  {
    steps[4 * axis] = std::isfinite(spacings[axis]) ? std::fabs(spacings[axis]) : 1.0;
  }
  return steps;
}

void PlaceVoxels(const zvTextHeader& header, zvRawVolume& volume)
{
  const std::vector<double> origin = header.GetNumbers({ "space origin" });
  const bool hasOrigin = origin.size() == 3;
  zvReaderSteps::Place(volume, StepsOf(header), { 1.0, 1.0, 1.0 },
    { hasOrigin ? origin[0] : 0.0, hasOrigin ? origin[1] : 0.0, hasOrigin ? origin[2] : 0.0 });
  const Space* space = SpaceOf(header);
  volume.IsOrientationKnown = space != nullptr && header.Has({ "space directions" });
  const double signs[2] = { space ? space->X : 1.0, space ? space->Y : 1.0 };
  for (int row = 0; row < 2; ++row)
  {
    for (int column = 0; column < 4; ++column)
    {
      volume.IndexToPatient->SetElement(
        row, column, signs[row] * volume.IndexToPatient->GetElement(row, column));
    }
  }
}
}

bool zvNrrdFile::HasName(const std::string& path)
{
  return zvFileFacts::EndsWith(path, ".nrrd") || zvFileFacts::EndsWith(path, ".nhdr");
}

bool zvNrrdFile::HasMagic(const std::string& path)
{
  return zvFileFacts::FirstBytes(path, 7) == "NRRD000";
}

zvRawVolume zvNrrdFile::Read(const std::string& path, zvLoadProgress& progress)
{
  zvMessageTrap::Listener messages;
  if (!HasMagic(path))
  {
    throw zvLoadRefusal("it is not a NRRD image");
  }
  const zvTextHeader header(path, ':', "");
  const std::array<double, 3> dimensions = RequireVolume(header, path);
  vtkNew<FileOrderReader> reader;
  reader->SetFileName(path.c_str());
  zvRawVolume volume;
  volume.Name = zvFileFacts::NameOf(path);
  PlaceVoxels(header, volume);
  zvReaderSteps::ReadVoxels(reader, dimensions, messages, progress, volume);
  return volume;
}
