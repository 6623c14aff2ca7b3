#include "zvDicomFolder.h"

#include "zvFileFacts.h"
#include "zvLoadFailure.h"
#include "zvLoadProgress.h"
#include "zvReaderSteps.h"
#include "zvSliceGaps.h"

#include "vtkDICOMDirectory.h"
#include "vtkDICOMItem.h"
#include "vtkDICOMMetaData.h"
#include "vtkDICOMReader.h"
#include "vtkDICOMValue.h"
#include "vtkIntArray.h"
#include "vtkNew.h"
#include "vtkStringArray.h"

#include <array>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace
{
constexpr double ScanningShare = 0.2; // of a load's progress
constexpr int FoldersDeep = 5;        // patient, study, series, and some to spare

std::string Counted(int count, const std::string& noun)
{
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// One that has the file, or else the one with the most files; -1 if there is none.
int ChooseSeries(vtkDICOMDirectory* directory, const std::string& file)
{
  int chosen = -1;
  vtkIdType most = 0;
  for (int series = 0; series < directory->GetNumberOfSeries(); ++series)
  {
    vtkStringArray* names = directory->GetFileNamesForSeries(series);
    for (vtkIdType i = 0; !file.empty() && i < names->GetNumberOfValues(); ++i)
    {
      std::error_code error;
      if (fs::equivalent(names->GetValue(i).c_str(), file, error))
      {
        return series;
      }
    }
    if (names->GetNumberOfValues() > most)
    {
      most = names->GetNumberOfValues();
      chosen = series;
    }
  }
  return chosen;
}

std::string NameOfSeries(vtkDICOMDirectory* directory, int series)
{
  const std::string name = directory->GetSeriesRecord(series).Get(DC::SeriesDescription).AsString();
  return name.empty() ? "series " + std::to_string(series + 1) : name;
}

std::string NoticeOfOtherSeries(vtkDICOMDirectory* directory, int chosen)
{
  std::string notice = "The folder holds " + std::to_string(directory->GetNumberOfSeries()) +
    " series; shown is \"" + NameOfSeries(directory, chosen) + "\" with " +
    Counted(
      static_cast<int>(directory->GetFileNamesForSeries(chosen)->GetNumberOfValues()), "file") +
    ". Not shown: ";
  const char* separator = "";
  for (int series = 0; series < directory->GetNumberOfSeries(); ++series)
  {
    if (series != chosen)
    {
      notice += separator + ("\"" + NameOfSeries(directory, series) + "\"");
      separator = ", ";
    }
  }
  return notice + ".";
}

// Find the series and the files of a folder.
void Scan(vtkDICOMDirectory* directory, const std::string& folder,
  zvMessageTrap::Listener& messages, zvLoadProgress& progress, zvRawVolume& volume)
{
  directory->SetDirectoryName(folder.c_str());
  directory->SetScanDepth(FoldersDeep);
  progress.Run(directory, 0.0, ScanningShare);
  const auto said = messages.GetMessages();
  if (directory->GetNumberOfSeries() == 0)
  {
    throw zvLoadRefusal("there is no DICOM image in it");
  }
  if (!said.empty())
  {
    volume.Notices.push_back(
      "Left out what cannot be understood: " + said.front().substr(0, said.front().find('\n')));
  }
  messages.Clear();
}

// Of several stacks or times the first one is read.
void NoticeParts(vtkDICOMReader* reader, zvRawVolume& volume)
{
  const int stacks = static_cast<int>(reader->GetStackIDs()->GetNumberOfValues());
  if (stacks > 1)
  {
    volume.Notices.push_back(
      "The series holds " + Counted(stacks, "stack") + " of slices; shown is the first.");
  }
  if (reader->GetTimeDimension() > 1)
  {
    volume.Notices.push_back("The series holds " + std::to_string(reader->GetTimeDimension()) +
      " times; shown is the first.");
  }
}

std::array<double, 3> RequireVolume(vtkDICOMReader* reader)
{
  const int* extent = reader->GetDataExtent();
  const std::array<double, 3> dimensions = { extent[1] - extent[0] + 1.0,
    extent[3] - extent[2] + 1.0, extent[5] - extent[4] + 1.0 };
  zvReaderSteps::RequireOneValueEach(reader->GetNumberOfScalarComponents());
  zvFileFacts::RequireReasonableSize(
    dimensions, vtkDataArray::GetDataTypeSize(reader->GetDataScalarType()));
  return dimensions;
}

// Where the slices of the volume lie along its third axis, in millimetres.
std::vector<double> SlicePositions(vtkDICOMReader* reader)
{
  std::vector<double> positions;
  vtkIntArray* files = reader->GetFileIndexArray();
  vtkIntArray* frames = reader->GetFrameIndexArray();
  for (vtkIdType slice = 0; slice < files->GetNumberOfTuples(); ++slice)
  {
    const auto value = reader->GetMetaData()->Get(static_cast<int>(files->GetComponent(slice, 0)),
      static_cast<int>(frames->GetComponent(slice, 0)), DC::ImagePositionPatient);
    if (value.GetNumberOfValues() != 3)
    {
      return {};
    }
    double along = 0.0;
    for (int a = 0; a < 3; ++a)
    {
      along += value.GetDouble(a) * reader->GetPatientMatrix()->GetElement(a, 2);
    }
    positions.push_back(along);
  }
  return positions;
}

// The reader's matrix leads from voxels in steps of their size to LPS.
void PlaceVoxels(vtkDICOMReader* reader, zvRawVolume& volume)
{
  const double* spacing = reader->GetOutput()->GetSpacing();
  for (int row = 0; row < 3; ++row)
  {
    for (int column = 0; column < 4; ++column)
    {
      volume.IndexToPatient->SetElement(row, column,
        reader->GetPatientMatrix()->GetElement(row, column) * (column < 3 ? spacing[column] : 1.0));
    }
  }
  const std::vector<double> positions = SlicePositions(reader);
  volume.IsOrientationKnown = !positions.empty();
  const std::string gaps = zvSliceGaps::Describe(positions);
  if (!gaps.empty())
  {
    volume.Notices.push_back(gaps);
  }
}

void ReadSeries(vtkStringArray* files, zvMessageTrap::Listener& messages, zvLoadProgress& progress,
  zvRawVolume& volume)
{
  vtkNew<vtkDICOMReader> reader;
  reader->SetFileNames(files);
  reader->SetMemoryRowOrderToFileNative();
  reader->SetDesiredTimeIndex(0);
  reader->UpdateInformation();
  const auto said = messages.GetMessages();
  if (!said.empty())
  {
    throw zvLoadRefusal("it cannot be read: " + said.front().substr(0, said.front().find('\n')));
  }
  const std::array<double, 3> dimensions = RequireVolume(reader);
  NoticeParts(reader, volume);
  zvReaderSteps::ReadVoxels(reader, dimensions, messages, progress, volume);
  PlaceVoxels(reader, volume);
  volume.Modality = reader->GetMetaData()->Get(DC::Modality).AsString();
}
}

bool zvDicomFolder::HasMagic(const std::string& path)
{
  constexpr std::size_t preamble = 128;
  const std::string start = zvFileFacts::FirstBytes(path, preamble + 4);
  return start.size() == preamble + 4 && start.compare(preamble, 4, "DICM") == 0;
}

zvRawVolume zvDicomFolder::Read(const std::string& path, zvLoadProgress& progress)
{
  zvMessageTrap::Listener messages;
  zvRawVolume volume;
  const bool isFolder = fs::is_directory(path);
  const fs::path parent = fs::path(path).parent_path();
  const std::string folder = isFolder ? path : parent.empty() ? "." : parent.string();
  vtkNew<vtkDICOMDirectory> directory;
  Scan(directory, folder, messages, progress, volume);
  const int series = ChooseSeries(directory, isFolder ? std::string() : path);
  volume.Name = NameOfSeries(directory, series);
  if (directory->GetNumberOfSeries() > 1)
  {
    volume.Notices.push_back(NoticeOfOtherSeries(directory, series));
  }
  ReadSeries(directory->GetFileNamesForSeries(series), messages, progress, volume);
  return volume;
}
