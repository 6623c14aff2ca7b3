#include "zvLoadProgress.h"
#include "zvMessageTrap.h"
#include "zvVolumeReader.h"

#include "zvIndexedVolume.h"
#include "zvQuietTest.h"
#include "zvTemporaryFolder.h"

#include "vtkDICOMCTGenerator.h"
#include "vtkDICOMMRGenerator.h"
#include "vtkDICOMMetaData.h"
#include "vtkDICOMWriter.h"
#include "vtkMath.h"
#include "vtkNIFTIImageHeader.h"
#include "vtkNIFTIImageWriter.h"
#include "vtkNew.h"
#include "vtkTransform.h"

#include <cstdint>
#include <cstring>
#include <iostream>
#include <thread>
#include <unistd.h>

namespace
{
constexpr std::array<int, 3> Dimensions = { { 5, 4, 3 } };

// A NIfTI-1 header of 348 bytes and four of padding, put together field by field.
class NiftiHeader
{
public:
  NiftiHeader()
    : Bytes(352, '\0')
  {
    this->Put<std::int32_t>(0, 348);
    this->SetDimensions({ 3, 5, 4, 3, 1, 1, 1, 1 });
    this->SetType(4, 16);
    this->SetSizes({ 1.0f, 1.0f, 1.0f, 1.0f });
    this->Put<float>(108, 352.0f);
    this->Bytes.replace(344, 3, "n+1");
  }

  template <class T>
  void Put(std::size_t at, T value)
  {
    std::memcpy(&this->Bytes[at], &value, sizeof(T));
  }
  void SetDimensions(const std::vector<std::int16_t>& values)
  {
    for (std::size_t i = 0; i < values.size(); ++i)
    {
      this->Put(40 + 2 * i, values[i]);
    }
  }
  void SetType(std::int16_t type, std::int16_t bits)
  {
    this->Put(70, type);
    this->Put(72, bits);
  }
  // The factor of the Q matrix and the voxel sizes.
  void SetSizes(const std::vector<float>& values)
  {
    for (std::size_t i = 0; i < values.size(); ++i)
    {
      this->Put(76 + 4 * i, values[i]);
    }
  }
  void SetSlope(float slope, float intercept)
  {
    this->Put(112, slope);
    this->Put(116, intercept);
  }
  void SetUnits(char units) { this->Put(123, units); }
  // b, c, d of the quaternion and the offsets.
  void SetQ(const std::vector<float>& values)
  {
    this->Put<std::int16_t>(252, 1);
    for (std::size_t i = 0; i < values.size(); ++i)
    {
      this->Put(256 + 4 * i, values[i]);
    }
  }
  // Three rows of four.
  void SetS(const std::vector<float>& values)
  {
    this->Put<std::int16_t>(254, 1);
    for (std::size_t i = 0; i < values.size(); ++i)
    {
      this->Put(280 + 4 * i, values[i]);
    }
  }

  std::string Bytes;
};

// A gzip file of one stored block, and the checksum that it ends with.
std::uint32_t Checksum(const std::string& bytes)
{
  std::uint32_t sum = 0xFFFFFFFFu;
  for (const unsigned char byte : bytes)
  {
    sum ^= byte;
    for (int bit = 0; bit < 8; ++bit)
    {
      sum = (sum >> 1) ^ ((sum & 1u) ? 0xEDB88320u : 0u);
    }
  }
  return ~sum;
}

std::string Gzipped(const std::string& bytes)
{
  const auto little = [](std::uint32_t value, int count)
  {
    std::string text;
    for (int i = 0; i < count; ++i)
    {
      text.push_back(static_cast<char>(value >> (8 * i) & 0xFFu));
    }
    return text;
  };
  const auto length = static_cast<std::uint32_t>(bytes.size());
  return std::string("\x1f\x8b\x08\0\0\0\0\0\0\x03\x01", 11) + little(length, 2) +
    little(~length, 2) + bytes + little(Checksum(bytes), 4) + little(length, 4);
}
}

class WorkstationFiles : public zvtest::QuietTest
{
protected:
  WorkstationFiles()
    : Voxels(zvtest::MakeIndexedVolume(Dimensions))
    , Bytes(zvtest::BytesOf(this->Voxels))
  {
    this->Console = std::cerr.rdbuf(this->Spilled.rdbuf());
  }
  ~WorkstationFiles() override { std::cerr.rdbuf(this->Console); }

  void TearDown() override
  {
    EXPECT_EQ(this->Spilled.str(), "") << "spilled to the console";
    QuietTest::TearDown();
  }

  zvVolume Load(const std::string& path)
  {
    zvLoadProgress progress;
    const zvLoadResult result = zvVolumeReader::Read(path, progress);
    EXPECT_EQ(result.Ending, zvLoadResult::Outcome::Loaded) << result.Reason;
    return result.Volume;
  }

  // Why a file is refused; empty if it is not.
  static std::string RefusalOf(const std::string& path)
  {
    zvLoadProgress progress;
    const zvLoadResult result = zvVolumeReader::Read(path, progress);
    EXPECT_EQ(result.Volume.Image, nullptr);
    return result.Ending == zvLoadResult::Outcome::Refused ? result.Reason : std::string();
  }

  // Whether a loaded volume has the indexed voxels where Expected takes them.
  ::testing::AssertionResult IsInPlace(const zvVolume& volume, double tolerance = 1.0e-4)
  {
    if (!volume.Image)
    {
      return ::testing::AssertionFailure() << "nothing was loaded";
    }
    return zvtest::HasEveryVoxelInPlace(volume.Image, Dimensions, this->Expected, tolerance);
  }

  // Three rows of four, in LPS.
  void Expect(const std::array<double, 12>& rows)
  {
    for (int i = 0; i < 12; ++i)
    {
      this->Expected->SetElement(i / 4, i % 4, rows[static_cast<std::size_t>(i)]);
    }
  }

  std::string WriteNifti(const std::string& name, const NiftiHeader& header)
  {
    return this->Folder.Write(name, header.Bytes + this->Bytes);
  }

  std::string WriteMetaImage(const std::string& name, const std::string& fields)
  {
    return this->Folder.Write(name,
      "ObjectType = Image\nNDims = 3\nDimSize = 5 4 3\nElementType = MET_SHORT\n"
      "BinaryData = True\nBinaryDataByteOrderMSB = False\n" +
        fields + "ElementDataFile = LOCAL\n" + this->Bytes);
  }

  std::string WriteNrrd(const std::string& name, const std::string& fields)
  {
    return this->Folder.Write(name,
      "NRRD0004\n# by hand\ntype: short\ndimension: 3\nsizes: 5 4 3\nendian: little\n"
      "encoding: raw\n" +
        fields + "\n" + this->Bytes);
  }

  // A series of files, one a slice, in a subfolder. Its voxels lie where Expected takes them.
  void WriteSeries(const std::string& folder, vtkImageData* voxels, vtkDICOMGenerator* generator,
    const std::string& description, const char* syntax = nullptr)
  {
    std::filesystem::create_directories(this->Folder.At(folder));
    vtkNew<vtkMatrix4x4> directions;
    double spacing[3];
    for (int a = 0; a < 3; ++a)
    {
      double column[3];
      for (int row = 0; row < 3; ++row)
      {
        column[row] = this->Expected->GetElement(row, a);
      }
      spacing[a] = vtkMath::Normalize(column);
      for (int row = 0; row < 3; ++row)
      {
        directions->SetElement(row, a, column[row]);
      }
      directions->SetElement(a, 3, this->Expected->GetElement(a, 3));
    }
    voxels->SetSpacing(spacing);
    vtkNew<vtkDICOMWriter> writer;
    writer->SetGenerator(generator);
    writer->SetPatientMatrix(directions);
    writer->SetMemoryRowOrderToFileNative();
    writer->SetSeriesDescription(description.c_str());
    writer->SetTransferSyntaxUID(syntax);
    writer->SetInputData(voxels);
    writer->SetFilePrefix(this->Folder.At(folder).c_str());
    writer->SetFilePattern("%s/slice-%04.4d.dcm");
    writer->Write();
  }

  zvtest::TemporaryFolder Folder;
  vtkSmartPointer<vtkImageData> Voxels;
  std::string Bytes;
  vtkNew<vtkMatrix4x4> Expected;

private:
  std::ostringstream Spilled;
  std::streambuf* Console;
};

// ---- NIfTI

TEST_F(WorkstationFiles, NiftiIsPlacedByItsSMatrix)
{
  NiftiHeader header;
  header.SetSizes({ 1.0f, 2.0f, 3.0f, 4.0f });
  header.SetS({ 2, 0, 0, -90, 0, 3, 0, -126, 0, 0, 4, -72 });
  header.SetQ({ 0, 0, 0, 1, 1, 1 }); // not asked where there is an S matrix
  this->Expect({ -2, 0, 0, 90, 0, -3, 0, 126, 0, 0, 4, -72 });
  const zvVolume volume = this->Load(this->WriteNifti("s.nii", header));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_TRUE(volume.IsOrientationKnown);
  EXPECT_TRUE(volume.Notices.empty());
  EXPECT_EQ(volume.Name, "s.nii");
}

TEST_F(WorkstationFiles, NiftiWithPermutedAxesIsPlacedByItsSMatrix)
{
  NiftiHeader header;
  header.SetSizes({ 1.0f, 1.5f, 2.0f, 3.0f });
  header.SetS({ 0, 0, 3, 10, -1.5f, 0, 0, 20, 0, 2, 0, 30 });
  this->Expect({ 0, 0, -3, -10, 1.5, 0, 0, -20, 0, 2, 0, 30 });
  EXPECT_TRUE(this->IsInPlace(this->Load(this->WriteNifti("s.nii", header))));
}

TEST_F(WorkstationFiles, NiftiIsPlacedByItsQMatrixWhereThereIsNoOther)
{
  NiftiHeader header;
  header.SetSizes({ 1.0f, 2.0f, 3.0f, 4.0f });
  header.SetQ({ 0, 0, 1, 7, 8, 9 }); // half a turn about z
  this->Expect({ 2, 0, 0, -7, 0, 3, 0, -8, 0, 0, 4, 9 });
  const zvVolume volume = this->Load(this->WriteNifti("q.nii", header));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_TRUE(volume.IsOrientationKnown);
}

TEST_F(WorkstationFiles, NiftiWithAMirroredQMatrixKeepsEverySide)
{
  NiftiHeader header;
  header.SetSizes({ -1.0f, 2.0f, 3.0f, 4.0f });
  header.SetQ({ 0, 0, 0, 7, 8, 9 });
  this->Expect({ -2, 0, 0, -7, 0, -3, 0, -8, 0, 0, -4, 9 });
  EXPECT_TRUE(this->IsInPlace(this->Load(this->WriteNifti("q.nii", header))));
}

TEST_F(WorkstationFiles, NiftiWithAMirroredSMatrixKeepsEverySide)
{
  NiftiHeader header;
  header.SetSizes({ -1.0f, 2.0f, 3.0f, 4.0f });
  header.SetS({ -2, 0, 0, 90, 0, 3, 0, -126, 0, 0, 4, -72 });
  this->Expect({ 2, 0, 0, -90, 0, -3, 0, 126, 0, 0, 4, -72 });
  EXPECT_TRUE(this->IsInPlace(this->Load(this->WriteNifti("s.nii", header))));
}

TEST_F(WorkstationFiles, NiftiWithAQuaternionOfSinglePrecisionIsNotResampled)
{
  NiftiHeader header;
  header.SetSizes({ 1.0f, 1.0f, 1.0f, 1.0f });
  header.SetQ({ 0.70710677f, 0.0f, 0.0f, 0, 0, 0 }); // a quarter turn about x
  this->Expect({ -1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0 });
  const zvVolume volume = this->Load(this->WriteNifti("q.nii", header));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_TRUE(volume.Notices.empty());
}

TEST_F(WorkstationFiles, ObliqueNiftiIsResampledWithANotice)
{
  NiftiHeader header;
  const auto c = static_cast<float>(std::cos(0.3)), s = static_cast<float>(std::sin(0.3));
  header.SetS({ c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0 });
  const zvVolume volume = this->Load(this->WriteNifti("s.nii", header));
  ASSERT_EQ(volume.Notices.size(), 1u);
  EXPECT_EQ(volume.Notices.front().substr(0, 31), "The slices lean by 17.2 degrees");
}

TEST_F(WorkstationFiles, NiftiWithoutAMatrixHasAnUnknownOrientation)
{
  NiftiHeader header;
  header.SetSizes({ 1.0f, 2.0f, 3.0f, 4.0f });
  this->Expect({ 2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0 });
  const zvVolume volume = this->Load(this->WriteNifti("none.nii", header));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_FALSE(volume.IsOrientationKnown);
}

TEST_F(WorkstationFiles, NiftiInOtherUnitsComesInMillimetres)
{
  NiftiHeader header;
  header.SetSizes({ 1.0f, 0.002f, 0.003f, 0.004f });
  header.SetS({ 0.002f, 0, 0, -0.09f, 0, 0.003f, 0, 0, 0, 0, 0.004f, 0 });
  header.SetUnits(1); // metres
  this->Expect({ -2, 0, 0, 90, 0, -3, 0, 0, 0, 0, 4, 0 });
  EXPECT_TRUE(this->IsInPlace(this->Load(this->WriteNifti("m.nii", header))));
  header.SetSizes({ 1.0f, 2000.0f, 3000.0f, 4000.0f });
  header.SetS({ 2000, 0, 0, -90000, 0, 3000, 0, 0, 0, 0, 4000, 0 });
  header.SetUnits(3); // micrometres
  EXPECT_TRUE(this->IsInPlace(this->Load(this->WriteNifti("um.nii", header))));
}

TEST_F(WorkstationFiles, NiftiValuesAreScaledByTheHeader)
{
  NiftiHeader header;
  header.SetSlope(0.5f, -10.0f);
  const zvVolume volume = this->Load(this->WriteNifti("scaled.nii", header));
  EXPECT_EQ(volume.Image->GetScalarType(), VTK_FLOAT);
  EXPECT_EQ(volume.Image->GetScalarComponentAsDouble(4, 3, 2, 0),
    0.5 * zvtest::IndexedValue(4, 3, 2) - 10.0);
}

TEST_F(WorkstationFiles, NiftiFromTheToolkitsOwnWriterIsReadBack)
{
  vtkNew<vtkMatrix4x4> placement;
  placement->SetElement(0, 0, 0.0);
  placement->SetElement(1, 0, 1.0);
  placement->SetElement(0, 1, -1.0);
  placement->SetElement(1, 1, 0.0);
  placement->SetElement(2, 3, 12.0);
  this->Voxels->SetSpacing(1.5, 2.5, 3.5);
  for (const char* name : { "own.nii", "own.nii.gz" })
  {
    vtkNew<vtkNIFTIImageWriter> writer;
    writer->SetFileName(this->Folder.At(name).c_str());
    writer->SetInputData(this->Voxels);
    writer->SetQFormMatrix(placement);
    writer->SetSFormMatrix(placement);
    writer->Write();
    this->Expect({ 0, 2.5, 0, 0, -1.5, 0, 0, 0, 0, 0, 3.5, 12 });
    EXPECT_TRUE(this->IsInPlace(this->Load(this->Folder.At(name))));
  }
}

TEST_F(WorkstationFiles, NiftiMayHaveFurtherDimensionsOfLengthOne)
{
  NiftiHeader header;
  header.SetDimensions({ 5, 5, 4, 3, 1, 1, 1, 1 });
  EXPECT_TRUE(this->IsInPlace(this->Load(this->WriteNifti("five.nii", header))));
}

TEST_F(WorkstationFiles, NiftiOfSeveralTimesOrColoursIsRefused)
{
  NiftiHeader header;
  header.SetDimensions({ 4, 5, 4, 1, 3, 1, 1, 1 });
  EXPECT_EQ(RefusalOf(this->WriteNifti("4d.nii", header)), "it has 4 dimensions; a volume has 3");
  header.SetDimensions({ 2, 5, 12, 1, 1, 1, 1, 1 });
  EXPECT_EQ(RefusalOf(this->WriteNifti("2d.nii", header)), "it has 2 dimensions; a volume has 3");
  header.SetDimensions({ 3, 5, 12, 1, 1, 1, 1, 1 });
  EXPECT_EQ(RefusalOf(this->WriteNifti("slice.nii", header)),
    "it is a single slice; a volume has at least two along each axis");
  header.SetDimensions({ 5, 5, 4, 1, 1, 3, 1, 1 });
  EXPECT_EQ(RefusalOf(this->WriteNifti("vector.nii", header)),
    "it has 3 values a voxel (colours or vectors); only single values can be shown");
  header.SetDimensions({ 3, 5, 4, 2, 1, 1, 1, 1 });
  header.SetType(128, 24);
  EXPECT_EQ(RefusalOf(this->WriteNifti("rgb.nii", header)),
    "it has 3 values a voxel (colours or vectors); only single values can be shown");
  header.SetType(32, 64);
  EXPECT_EQ(RefusalOf(this->WriteNifti("complex.nii", header)),
    "it has 2 values a voxel (colours or vectors); only single values can be shown");
}

TEST_F(WorkstationFiles, NiftiThatIsCutOffOrNoneIsRefused)
{
  const NiftiHeader header;
  const std::string whole = header.Bytes + this->Bytes;
  EXPECT_EQ(RefusalOf(this->Folder.Write("cut.nii", whole.substr(0, whole.size() - 1))),
    "it is cut off: its header promises more voxels than it holds");
  EXPECT_EQ(
    RefusalOf(this->Folder.Write("header.nii", whole.substr(0, 200))), "it is not a NIfTI image");
  EXPECT_EQ(RefusalOf(this->Folder.Write("junk.nii", "hello")), "it is not a NIfTI image");
  const std::string zipped = Gzipped(whole);
  EXPECT_TRUE(this->IsInPlace(this->Load(this->Folder.Write("whole.nii.gz", zipped))));
  EXPECT_EQ(RefusalOf(this->Folder.Write("cut.nii.gz", zipped.substr(0, zipped.size() - 40))),
    "it cannot be read: NIFTI file is truncated, some data is missing.");
}

TEST_F(WorkstationFiles, NiftiOfBogusSizeIsRefusedBeforeMemoryIsTaken)
{
  NiftiHeader header;
  header.SetDimensions({ 3, 32767, 32767, 32767, 1, 1, 1, 1 });
  EXPECT_EQ(RefusalOf(this->WriteNifti("huge.nii", header)),
    "it would need 7.04e+04 GB of memory, more than this computer can give");
  header.SetDimensions({ 3, 1000, 1000, 100, 1, 1, 1, 1 });
  EXPECT_EQ(RefusalOf(this->Folder.Write("big.nii.gz", Gzipped(header.Bytes + this->Bytes))),
    "it is cut off: its header promises more voxels than it holds");
  header.SetDimensions({ 3, 5, -4, 3, 1, 1, 1, 1 });
  EXPECT_EQ(RefusalOf(this->WriteNifti("negative.nii", header)), "its dimensions make no sense");
}

// ---- MetaImage

TEST_F(WorkstationFiles, MetaImageIsPlacedByItsHeader)
{
  const std::string path = this->WriteMetaImage("axes.mha",
    "TransformMatrix = 0 -1 0 0 0 1 -1 0 0\nOffset = 10 20 30\nElementSpacing = 1.5 2 3\n");
  // Each three numbers are the direction of one voxel axis.
  this->Expect({ 0, 0, -3, 10, -1.5, 0, 0, 20, 0, 2, 0, 30 });
  const zvVolume volume = this->Load(path);
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_TRUE(volume.IsOrientationKnown);
}

TEST_F(WorkstationFiles, MetaImageWithoutAMatrixHasAnUnknownOrientation)
{
  this->Expect({ 1.5, 0, 0, 10, 0, 2, 0, 20, 0, 0, 3, 30 });
  const zvVolume volume =
    this->Load(this->WriteMetaImage("plain.mha", "Position = 10 20 30\nElementSize = 1.5 2 3\n"));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_FALSE(volume.IsOrientationKnown);
}

TEST_F(WorkstationFiles, MetaImageWithItsVoxelsBesideItIsRead)
{
  this->Folder.Write("voxels.raw", this->Bytes);
  const std::string header = "ObjectType = Image\nNDims = 3\nDimSize = 5 4 3\n"
                             "ElementType = MET_SHORT\nElementDataFile = ";
  EXPECT_TRUE(this->IsInPlace(this->Load(this->Folder.Write("ok.mhd", header + "voxels.raw\n"))));
  EXPECT_EQ(RefusalOf(this->Folder.Write("lost.mhd", header + "lost.raw\n")),
    "its file of voxels, lost.raw, is not there");
}

TEST_F(WorkstationFiles, MetaImageThatCannotBeShownIsRefused)
{
  const auto write = [this](const std::string& fields)
  {
    return this->Folder.Write(
      "bad.mha", "ObjectType = Image\n" + fields + "ElementDataFile = LOCAL\n" + this->Bytes);
  };
  EXPECT_EQ(RefusalOf(write("NDims = 2\nDimSize = 5 4\nElementType = MET_SHORT\n")),
    "it has 2 dimensions; a volume has 3");
  EXPECT_EQ(RefusalOf(write("NDims = many\nDimSize = 5 4 3\nElementType = MET_SHORT\n")),
    "it has nan dimensions; a volume has 3");
  EXPECT_EQ(RefusalOf(write("NDims = 4\nDimSize = 5 4 3 1\nElementType = MET_SHORT\n")),
    "it has 4 dimensions; a volume has 3");
  EXPECT_EQ(RefusalOf(write("NDims = 3\nDimSize = 5 4 1\nElementType = MET_UCHAR\n"
                            "ElementNumberOfChannels = 3\n")),
    "it has 3 values a voxel (colours or vectors); only single values can be shown");
  EXPECT_EQ(RefusalOf(write("NDims = 3\nDimSize = 5 4 4\nElementType = MET_SHORT\n")),
    "it is cut off: its header promises more voxels than it holds");
  EXPECT_EQ(RefusalOf(write("NDims = 3\nDimSize = 99999 99999 99999\nElementType = MET_SHORT\n")),
    "it would need 2e+06 GB of memory, more than this computer can give");
  EXPECT_EQ(RefusalOf(write("NDims = 3\nDimSize = 5 4 3\nElementType = MET_SHORT\n"
                            "TransformMatrix = 1 0 0 0 1 0\n")),
    "its header has 6 numbers for transformmatrix, not 9");
  EXPECT_EQ(RefusalOf(write("NDims = 3\nDimSize = 5 4 3\nElementType = MET_OTHER\n")),
    "its voxels are of an unknown type (MET_OTHER)");
  EXPECT_EQ(RefusalOf(this->Folder.Write("junk.mha", "hello\n")), "it is not a MetaImage");
}

// ---- NRRD

TEST_F(WorkstationFiles, NrrdIsPlacedByItsSpaceDirections)
{
  const std::string directions =
    "space directions: (0,0,1.5) (2,0,0) (0,-3,0)\nspace origin: (10,20,30)\n";
  this->Expect({ 0, 2, 0, 10, 0, 0, -3, 20, 1.5, 0, 0, 30 });
  EXPECT_TRUE(this->IsInPlace(
    this->Load(this->WriteNrrd("lps.nrrd", "space: left-posterior-superior\n" + directions))));
  this->Expect({ 0, -2, 0, -10, 0, 0, 3, -20, 1.5, 0, 0, 30 });
  const zvVolume ras = this->Load(this->WriteNrrd("ras.nrrd", "space: RAS\n" + directions));
  EXPECT_TRUE(this->IsInPlace(ras));
  EXPECT_TRUE(ras.IsOrientationKnown);
  this->Expect({ 0, 2, 0, 10, 0, 0, 3, -20, 1.5, 0, 0, 30 });
  EXPECT_TRUE(this->IsInPlace(
    this->Load(this->WriteNrrd("las.nrrd", "space: left-anterior-superior\n" + directions))));
}

TEST_F(WorkstationFiles, NrrdWithoutASpaceHasAnUnknownOrientation)
{
  this->Expect({ 1.5, 0, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0 });
  const zvVolume volume = this->Load(this->WriteNrrd("plain.nrrd", "spacings: 1.5 2 3\n"));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_FALSE(volume.IsOrientationKnown);
}

TEST_F(WorkstationFiles, NrrdWithALongFirstAxisInALeftHandedSpaceKeepsItsRows)
{
  constexpr std::array<int, 3> size = { { 12, 4, 3 } };
  const auto voxels = zvtest::MakeIndexedVolume(size);
  const std::string path = this->Folder.Write("las.nrrd",
    "NRRD0004\ntype: short\ndimension: 3\nsizes: 12 4 3\nendian: little\nencoding: raw\n"
    "space: LAS\nspace directions: (1,0,0) (0,1,0) (0,0,1)\nspace origin: (0,0,0)\n\n" +
      zvtest::BytesOf(voxels));
  this->Expect({ 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0 });
  EXPECT_TRUE(zvtest::HasEveryVoxelInPlace(this->Load(path).Image, size, this->Expected));
}

TEST_F(WorkstationFiles, NrrdIsKnownByItsBeginningToo)
{
  EXPECT_TRUE(this->IsInPlace(this->Load(this->WriteNrrd("volume", ""))));
}

TEST_F(WorkstationFiles, CompressedNrrdIsRead)
{
  const std::string header = "NRRD0004\ntype: short\ndimension: 3\nsizes: 5 4 3\nendian: little\n"
                             "encoding: gzip\n\n";
  const std::string zipped = Gzipped(this->Bytes);
  EXPECT_TRUE(this->IsInPlace(this->Load(this->Folder.Write("zipped.nrrd", header + zipped))));
  EXPECT_NE(RefusalOf(this->Folder.Write("cut.nrrd", header + zipped.substr(0, 60))), "");
}

TEST_F(WorkstationFiles, NrrdThatCannotBeShownIsRefused)
{
  const auto write = [this](const std::string& fields)
  {
    return this->Folder.Write(
      "bad.nrrd", "NRRD0004\n" + fields + "endian: little\nencoding: raw\n\n" + this->Bytes);
  };
  EXPECT_EQ(RefusalOf(write("type: short\ndimension: 2\nsizes: 5 4\n")),
    "it has 2 dimensions; a volume has 3");
  EXPECT_EQ(RefusalOf(write("type: short\ndimension: 4\nsizes: 2 5 3 2\n")),
    "it has 4 dimensions; a volume has 3");
  EXPECT_EQ(RefusalOf(write("type: short\ndimension: 3\nsizes: 5 4 4\n")),
    "it is cut off: its header promises more voxels than it holds");
  EXPECT_EQ(RefusalOf(write("type: block\ndimension: 3\nsizes: 5 4 3\n")),
    "its voxels are of an unknown type (block)");
  EXPECT_EQ(RefusalOf(write("type: short\ndimension: 3\nsizes: 5 4 3\n"
                            "space directions: none (1,0,0) (0,1,0)\n")),
    "its space directions are not three vectors of three numbers");
  EXPECT_EQ(RefusalOf(write("type: short\ndimension: 3\nsizes: 3 5 4\n"
                            "kinds: RGB-color domain domain\n")),
    "one of its axes does not run through space (RGB-color)");
  EXPECT_EQ(RefusalOf(this->Folder.Write("text.nrrd",
              "NRRD0004\ntype: short\ndimension: 3\nsizes: 5 4 3\nencoding: ascii\n\n1 2 3")),
    "its voxels are in an encoding that is not supported (ascii)");
  EXPECT_EQ(RefusalOf(this->Folder.Write("junk.nrrd", "hello\n")), "it is not a NRRD image");
}

// ---- DICOM

TEST_F(WorkstationFiles, ADicomFolderIsPlacedByItsPatientMatrix)
{
  vtkNew<vtkDICOMMRGenerator> generator;
  // Sagittal slices from left to right, rows from front to back, columns down.
  this->Expect({ 0, 0, -3, 40, 1.5, 0, 0, -50, 0, -2, 0, 60 });
  this->WriteSeries("series", this->Voxels, generator, "Sagittal");
  const zvVolume volume = this->Load(this->Folder.At("series"));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_EQ(volume.Name, "Sagittal");
  EXPECT_EQ(volume.Modality, "MR");
  EXPECT_TRUE(volume.IsOrientationKnown);
  EXPECT_TRUE(volume.Notices.empty());
}

TEST_F(WorkstationFiles, ATomographyHasItsOwnUnits)
{
  vtkNew<vtkDICOMCTGenerator> generator;
  this->Expect({ 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0 });
  this->WriteSeries("series", this->Voxels, generator, "Axial");
  const zvVolume volume = this->Load(this->Folder.At("series"));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_EQ(volume.Modality, "CT");
}

TEST_F(WorkstationFiles, OfMixedSeriesTheLargestIsShownAndTheOthersNamed)
{
  vtkNew<vtkDICOMMRGenerator> generator;
  this->Expect({ 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0 });
  this->WriteSeries("all/first", zvtest::MakeIndexedVolume({ { 5, 4, 2 } }), generator, "Scout");
  vtkNew<vtkDICOMMRGenerator> another;
  this->WriteSeries("all/second", this->Voxels, another, "Brain");
  const zvVolume volume = this->Load(this->Folder.At("all"));
  EXPECT_TRUE(this->IsInPlace(volume));
  EXPECT_EQ(volume.Name, "Brain");
  ASSERT_EQ(volume.Notices.size(), 1u);
  EXPECT_EQ(volume.Notices.front(),
    "The folder holds 2 series; shown is \"Brain\" with 3 files. Not shown: \"Scout\".");
}

TEST_F(WorkstationFiles, OneDicomFileStandsForItsSeries)
{
  vtkNew<vtkDICOMMRGenerator> generator;
  this->Expect({ 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0 });
  this->WriteSeries("series", this->Voxels, generator, "Brain");
  EXPECT_TRUE(this->IsInPlace(this->Load(this->Folder.At("series/slice-0002.dcm"))));
}

TEST_F(WorkstationFiles, AMissingSliceIsToldWithItsPlace)
{
  vtkNew<vtkDICOMMRGenerator> generator;
  this->Expect({ 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0 });
  this->WriteSeries("series", zvtest::MakeIndexedVolume({ { 5, 4, 6 } }), generator, "Brain");
  std::filesystem::remove(this->Folder.At("series/slice-0003.dcm"));
  const zvVolume volume = this->Load(this->Folder.At("series"));
  ASSERT_EQ(volume.Notices.size(), 1u);
  EXPECT_EQ(volume.Notices.front(),
    "The slices are not evenly spaced: 2 mm as a rule, but 4 mm between slices 2 and 3. They are "
    "shown 2.5 mm apart, so lengths across them are not exact.");
}

TEST_F(WorkstationFiles, ABrokenFileAmongGoodOnesIsLeftOutWithANotice)
{
  vtkNew<vtkDICOMMRGenerator> generator;
  this->Expect({ 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0 });
  this->WriteSeries("series", this->Voxels, generator, "Brain");
  std::filesystem::copy(
    this->Folder.At("series/slice-0001.dcm"), this->Folder.At("series/broken.dcm"));
  std::filesystem::resize_file(this->Folder.At("series/broken.dcm"), 300);
  this->Folder.Write("series/readme.txt", "not an image");
  const zvVolume volume = this->Load(this->Folder.At("series"));
  EXPECT_TRUE(this->IsInPlace(volume));
  ASSERT_EQ(volume.Notices.size(), 1u);
  EXPECT_NE(volume.Notices.front().find("broken.dcm"), std::string::npos);
  EXPECT_EQ(volume.Notices.front().find("Left out what cannot be understood: "), 0u);
}

TEST_F(WorkstationFiles, CompressedSlicesAreRead)
{
  vtkNew<vtkDICOMMRGenerator> generator;
  this->Expect({ 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0 });
  this->WriteSeries("series", this->Voxels, generator, "Brain", "1.2.840.10008.1.2.5");
  EXPECT_TRUE(this->IsInPlace(this->Load(this->Folder.At("series"))));
}

TEST_F(WorkstationFiles, ATruncatedSliceRefusesTheSeries)
{
  vtkNew<vtkDICOMMRGenerator> generator;
  this->Expect({ 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0 });
  this->WriteSeries("series", this->Voxels, generator, "Brain");
  const std::string file = this->Folder.At("series/slice-0002.dcm");
  std::filesystem::resize_file(file, std::filesystem::file_size(file) - 7);
  EXPECT_EQ(RefusalOf(this->Folder.At("series")).find("it cannot be read: "), 0u);
}

TEST_F(WorkstationFiles, AFolderWithoutDicomIsRefused)
{
  std::filesystem::create_directory(this->Folder.At("empty"));
  EXPECT_EQ(RefusalOf(this->Folder.At("empty")), "the folder is empty");
  this->Folder.Write("text.txt", "not an image");
  EXPECT_EQ(RefusalOf(this->Folder.At()), "there is no DICOM image in it");
}

// ---- any file

TEST_F(WorkstationFiles, WhatIsNoReadableFileIsRefused)
{
  EXPECT_EQ(RefusalOf(this->Folder.At("missing.nii")), "there is no such file or folder");
  EXPECT_EQ(RefusalOf(""), "there is no such file or folder");
  EXPECT_EQ(RefusalOf(this->Folder.Write("empty.nii", "")), "it is empty");
  EXPECT_EQ(RefusalOf(this->Folder.Write("text.txt", "hello")),
    "it is not a NIfTI, MetaImage, NRRD or DICOM image");
  EXPECT_EQ(RefusalOf("/dev/null"), "it is not a file");
}

TEST_F(WorkstationFiles, AFileWithoutPermissionIsRefused)
{
  const std::string file = this->WriteMetaImage("secret.mha", "");
  std::filesystem::permissions(file, std::filesystem::perms::none);
  std::filesystem::permissions(this->Folder.At(), std::filesystem::perms::all);
  // The superuser may read everything, so it steps down for the length of the test.
  const uid_t user = geteuid();
  constexpr uid_t nobody = 65534;
  if (user == 0)
  {
    ASSERT_EQ(seteuid(nobody), 0);
  }
  EXPECT_EQ(RefusalOf(file), "permission to read it is denied");
  if (user == 0)
  {
    ASSERT_EQ(seteuid(0), 0);
  }
}

TEST_F(WorkstationFiles, ProgressGrowsToTheEnd)
{
  std::vector<double> parts;
  zvLoadProgress progress([&parts](double part) { parts.push_back(part); });
  NiftiHeader header;
  header.SetS({ -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0 });
  const std::string path = this->WriteNifti("s.nii", header);
  ASSERT_EQ(zvVolumeReader::Read(path, progress).Ending, zvLoadResult::Outcome::Loaded);
  ASSERT_GT(parts.size(), 2u);
  EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
  EXPECT_EQ(parts.front(), 0.0);
  EXPECT_EQ(parts.back(), 1.0);
}

TEST_F(WorkstationFiles, EveryFormatCanBeCancelled)
{
  vtkNew<vtkDICOMMRGenerator> generator;
  this->WriteSeries("series", this->Voxels, generator, "Brain");
  for (const std::string& path :
    { this->WriteNifti("a.nii", NiftiHeader()), this->WriteMetaImage("a.mha", ""),
      this->WriteNrrd("a.nrrd", ""), this->Folder.At("series") })
  {
    zvLoadProgress* running = nullptr;
    zvLoadProgress progress(
      [&running](double part)
      {
        if (part > 0.1)
        {
          running->Cancel();
        }
      });
    running = &progress;
    const zvLoadResult result = zvVolumeReader::Read(path, progress);
    EXPECT_EQ(result.Ending, zvLoadResult::Outcome::Cancelled) << path;
    EXPECT_EQ(result.Volume.Image, nullptr);
  }
}

TEST_F(WorkstationFiles, MessagesOfOtherThreadsGoWhereTheyWent)
{
  // The reader's complaints are kept for the refusal, while this thread's reach the console.
  const std::string path =
    this->Folder.Write("cut.nii.gz", Gzipped(NiftiHeader().Bytes + this->Bytes).substr(0, 400));
  const zvMessageTrap trap;
  std::string reason;
  std::thread reading([&] { reason = RefusalOf(path); });
  vtkGenericWarningMacro("of this thread");
  reading.join();
  EXPECT_NE(reason, "");
  const auto said = this->TakeMessages();
  ASSERT_EQ(said.size(), 1u);
  EXPECT_NE(said.front().find("of this thread"), std::string::npos);
}
