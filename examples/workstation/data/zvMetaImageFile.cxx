#include "zvMetaImageFile.h"

#include "zvFileFacts.h"
#include "zvLoadFailure.h"
#include "zvReaderSteps.h"
#include "zvTextHeader.h"

#include "vtkMetaImageReader.h"
#include "vtkNew.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <map>

namespace
{
double BytesPerValue(const std::string& type)
{
  static const std::map<std::string, double> sizes = { { "MET_CHAR", 1 }, { "MET_UCHAR", 1 },
    { "MET_SHORT", 2 }, { "MET_USHORT", 2 }, { "MET_INT", 4 }, { "MET_UINT", 4 }, { "MET_LONG", 4 },
    { "MET_ULONG", 4 }, { "MET_LONG_LONG", 8 }, { "MET_ULONG_LONG", 8 }, { "MET_FLOAT", 4 },
    { "MET_DOUBLE", 8 } };
  const auto size = sizes.find(type);
  if (size == sizes.end())
  {
    throw zvLoadRefusal("its voxels are of an unknown type (" + type + ")");
  }
  return size->second;
}

bool IsTrue(const std::string& value)
{
  return !value.empty() && (value[0] == 'T' || value[0] == 't' || value[0] == '1');
}

// The bytes of voxels at hand; a list or a pattern of files is left to the reader.
double BytesAtHand(const zvTextHeader& header, const std::string& path)
{
  const std::string data = header.Get({ "elementdatafile" });
  if (data == "LOCAL" || data == "Local" || data == "local")
  {
    return static_cast<double>(zvFileFacts::SizeOf(path)) - static_cast<double>(header.GetLength());
  }
  if (data.empty() || data.compare(0, 4, "LIST") == 0 || data.find('%') != std::string::npos)
  {
    return 1.0e300;
  }
  const std::filesystem::path file = std::filesystem::path(path).parent_path() / data;
  if (!std::filesystem::exists(file))
  {
    throw zvLoadRefusal("its file of voxels, " + data + ", is not there");
  }
  return static_cast<double>(zvFileFacts::SizeOf(file.string()));
}

std::array<double, 3> RequireVolume(const zvTextHeader& header, const std::string& path)
{
  const std::vector<double> count = header.GetNumbers({ "ndims" });
  const std::vector<double> sizes = header.GetNumbers({ "dimsize" });
  if (count.size() != 1)
  {
    throw zvLoadRefusal("it is not a MetaImage");
  }
  zvReaderSteps::RequireThreeDimensions(count[0]);
  if (sizes.size() != 3)
  {
    throw zvLoadRefusal("its dimensions make no sense");
  }
  const std::vector<double> channels = header.GetNumbers({ "elementnumberofchannels" });
  zvReaderSteps::RequireOneValueEach(channels.empty() ? 1.0 : channels[0]);
  const double bytesPerVoxel = BytesPerValue(header.Get({ "elementtype" }));
  zvFileFacts::RequireReasonableSize({ sizes[0], sizes[1], sizes[2] }, bytesPerVoxel);
  zvFileFacts::RequireEnoughBytes(sizes[0] * sizes[1] * sizes[2] * bytesPerVoxel,
    BytesAtHand(header, path), IsTrue(header.Get({ "compresseddata" })));
  return { sizes[0], sizes[1], sizes[2] };
}

// The numbers of a field, or those that hold where the field is missing.
template <std::size_t Count>
std::array<double, Count> NumbersOr(const zvTextHeader& header,
  const std::vector<std::string>& names, const std::array<double, Count>& otherwise)
{
  const std::vector<double> numbers = header.GetNumbers(names);
  if (numbers.empty())
  {
    return otherwise;
  }
  if (numbers.size() != Count)
  {
    throw zvLoadRefusal("its header has " + std::to_string(numbers.size()) + " numbers for " +
      names.front() + ", not " + std::to_string(Count));
  }
  std::array<double, Count> result;
  std::copy(numbers.begin(), numbers.end(), result.begin());
  return result;
}

void PlaceVoxels(const zvTextHeader& header, zvRawVolume& volume)
{
  const std::vector<std::string> matrix = { "transformmatrix", "rotation", "orientation" };
  volume.IsOrientationKnown = header.Has(matrix);
  zvReaderSteps::Place(volume,
    NumbersOr<9>(header, matrix, { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0 }),
    NumbersOr<3>(header, { "elementspacing", "elementsize" }, { 1.0, 1.0, 1.0 }),
    NumbersOr<3>(header, { "offset", "position", "origin" }, { 0.0, 0.0, 0.0 }));
}
}

bool zvMetaImageFile::HasName(const std::string& path)
{
  return zvFileFacts::EndsWith(path, ".mha") || zvFileFacts::EndsWith(path, ".mhd");
}

zvRawVolume zvMetaImageFile::Read(const std::string& path, zvLoadProgress& progress)
{
  zvMessageTrap::Listener messages;
  const zvTextHeader header(path, '=', "elementdatafile");
  const std::array<double, 3> dimensions = RequireVolume(header, path);
  zvRawVolume volume;
  volume.Name = zvFileFacts::NameOf(path);
  PlaceVoxels(header, volume);
  vtkNew<vtkMetaImageReader> reader;
  // The reader itself reports success on what it cannot read.
  const bool canRead = reader->CanReadFile(path.c_str()) != 0;
  messages.Clear();
  if (!canRead)
  {
    throw zvLoadRefusal("it cannot be read: its header is not understood");
  }
  reader->SetFileName(path.c_str());
  zvReaderSteps::ReadVoxels(reader, dimensions, messages, progress, volume);
  return volume;
}
