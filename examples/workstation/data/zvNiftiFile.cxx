#include "zvNiftiFile.h"

#include "zvFileFacts.h"
#include "zvLoadFailure.h"
#include "zvLoadProgress.h"
#include "zvReaderSteps.h"

#include "vtkImageShiftScale.h"
#include "vtkNIFTIImageHeader.h"
#include "vtkNIFTIImageReader.h"
#include "vtkNew.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr const char* Endings[] = { ".nii", ".nii.gz", ".hdr", ".hdr.gz", ".img", ".img.gz" };

// Values a voxel by the header's data type, which is a number of bits for the single ones.
bool HoldsColours(int dataType)
{
  return dataType == vtkNIFTIImageHeader::TypeRGB24 || dataType == vtkNIFTIImageHeader::TypeRGBA32;
}

bool HoldsComplexNumbers(int dataType)
{
  return dataType == vtkNIFTIImageHeader::TypeComplex64 ||
    dataType == vtkNIFTIImageHeader::TypeComplex128 ||
    dataType == vtkNIFTIImageHeader::TypeComplex256;
}

void RequireScalars(vtkNIFTIImageHeader* header)
{
  const int dataType = header->GetDataType();
  if (HoldsColours(dataType) || header->GetDim(5) > 1)
  {
    zvReaderSteps::RequireOneValueEach(
      HoldsColours(dataType) ? header->GetBitPix() / 8.0 : static_cast<double>(header->GetDim(5)));
  }
  if (HoldsComplexNumbers(dataType))
  {
    zvReaderSteps::RequireOneValueEach(2);
  }
}

// Axes beyond the third may be there as long as they have no length.
int DimensionsInUse(vtkNIFTIImageHeader* header)
{
  int used = static_cast<int>(header->GetDim(0));
  while (used > 3 && used < 8 && header->GetDim(used) <= 1)
  {
    --used;
  }
  return used;
}

std::array<double, 3> RequireVolume(vtkNIFTIImageHeader* header, const std::string& path)
{
  RequireScalars(header);
  zvReaderSteps::RequireThreeDimensions(DimensionsInUse(header));
  const std::array<double, 3> dimensions = { static_cast<double>(header->GetDim(1)),
    static_cast<double>(header->GetDim(2)), static_cast<double>(header->GetDim(3)) };
  const double bytesPerVoxel = header->GetBitPix() / 8.0;
  zvFileFacts::RequireReasonableSize(dimensions, bytesPerVoxel);
  if (zvFileFacts::EndsWith(path, ".nii") || zvFileFacts::EndsWith(path, ".nii.gz"))
  {
    const bool compressed = zvFileFacts::EndsWith(path, ".gz");
    const double header348 = compressed ? 0.0 : static_cast<double>(header->GetVoxOffset());
    zvFileFacts::RequireEnoughBytes(dimensions[0] * dimensions[1] * dimensions[2] * bytesPerVoxel,
      static_cast<double>(zvFileFacts::SizeOf(path)) - header348, compressed);
  }
  return dimensions;
}

double MillimetresPerUnit(vtkNIFTIImageHeader* header)
{
  switch (header->GetXYZTUnits() & 7)
  {
    case vtkNIFTIImageHeader::UnitsMeter:
      return 1000.0;
    case vtkNIFTIImageHeader::UnitsMicron:
      return 0.001;
    default:
      return 1.0;
  }
}

// The reader's matrices lead from its voxels, in steps of the voxel size, to RAS.
void PlaceVoxels(vtkNIFTIImageReader* reader, zvRawVolume& volume)
{
  vtkMatrix4x4* placement =
    reader->GetSFormMatrix() ? reader->GetSFormMatrix() : reader->GetQFormMatrix();
  volume.IsOrientationKnown = placement != nullptr;
  if (placement)
  {
    volume.IndexToPatient->DeepCopy(placement);
    zvReaderSteps::ExchangeRasAndLps(volume.IndexToPatient);
  }
  const double* spacing = volume.Voxels->GetSpacing();
  const double unit = MillimetresPerUnit(reader->GetNIFTIHeader());
  for (int row = 0; row < 3; ++row)
  {
    for (int column = 0; column < 4; ++column)
    {
      const double step = column < 3 ? spacing[column] : 1.0;
      volume.IndexToPatient->SetElement(
        row, column, volume.IndexToPatient->GetElement(row, column) * step * unit);
    }
  }
}

// A slope of 0 means that the values are what they are.
void ScaleValues(vtkNIFTIImageReader* reader, zvRawVolume& volume)
{
  const double slope = reader->GetRescaleSlope();
  const double intercept = reader->GetRescaleIntercept();
  const bool isScaled = std::isfinite(slope) && std::isfinite(intercept) && slope != 0.0 &&
    (slope != 1.0 || intercept != 0.0);
  if (!isScaled)
  {
    return;
  }
  vtkNew<vtkImageShiftScale> scale;
  scale->SetInputData(volume.Voxels);
  scale->SetShift(intercept / slope);
  scale->SetScale(slope);
  // Four bytes hold every value of a two-byte type to seven digits.
  scale->SetOutputScalarType(volume.Voxels->GetScalarSize() <= 2 ? VTK_FLOAT : VTK_DOUBLE);
  scale->Update();
  volume.Voxels = scale->GetOutput();
}
}

bool zvNiftiFile::HasName(const std::string& path)
{
  return std::any_of(std::begin(Endings), std::end(Endings),
    [&path](const char* ending) { return zvFileFacts::EndsWith(path, ending); });
}

zvRawVolume zvNiftiFile::Read(const std::string& path, zvLoadProgress& progress)
{
  zvMessageTrap::Listener messages;
  vtkNew<vtkNIFTIImageReader> reader;
  if (!reader->CanReadFile(path.c_str()))
  {
    throw zvLoadRefusal("it is not a NIfTI image");
  }
  reader->SetFileName(path.c_str());
  reader->UpdateInformation();
  // An image of colours or of several times is told by the header, not by the reader's complaint.
  const std::array<double, 3> dimensions = RequireVolume(reader->GetNIFTIHeader(), path);
  zvRawVolume volume;
  volume.Name = zvFileFacts::NameOf(path);
  zvReaderSteps::ReadVoxels(reader, dimensions, messages, progress, volume);
  PlaceVoxels(reader, volume);
  ScaleValues(reader, volume);
  return volume;
}
