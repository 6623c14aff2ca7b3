#include "zvLabelAtlas.h"

#include "vtkDataArray.h"
#include "vtkPointData.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace fs = std::filesystem;

namespace
{
constexpr const char* AtlasFile = "aal.nii.gz";

// head.nii.gz and head.nii both have their names in head.nii.txt.
fs::path NamesFileOf(fs::path path)
{
  if (path.extension() == ".gz")
  {
    path.replace_extension();
  }
  return path += ".txt";
}
}

zvLabelAtlas::zvLabelAtlas(vtkImageData* labels, const std::string& path)
  : Labels(vtkSmartPointer<vtkImageData>::New())
{
  this->Labels->CopyStructure(labels);
  this->Labels->AllocateScalars(VTK_INT, 1);
  vtkDataArray* from = labels->GetPointData()->GetScalars();
  int* to = static_cast<int*>(this->Labels->GetScalarPointer());
  for (vtkIdType at = 0; at < from->GetNumberOfTuples(); ++at)
  {
    to[at] = static_cast<int>(std::lround(from->GetComponent(at, 0)));
  }
  this->CollectNumbers();
  this->ReadNames(path);
}

void zvLabelAtlas::CollectNumbers()
{
  const int* voxels = static_cast<const int*>(this->Labels->GetScalarPointer());
  std::set<int> found;
  int last = 0;
  for (vtkIdType at = 0; at < this->Labels->GetNumberOfPoints(); ++at)
  {
    // Regions are large: most voxels are like the one before.
    if (voxels[at] != last)
    {
      last = voxels[at];
      found.insert(last);
    }
  }
  found.erase(0);
  this->Numbers.assign(found.begin(), found.end());
}

void zvLabelAtlas::ReadNames(const std::string& path)
{
  std::ifstream file(NamesFileOf(path));
  std::string line;
  while (std::getline(file, line))
  {
    std::istringstream words(line);
    int number = 0;
    std::string name;
    if (words >> number >> name)
    {
      this->Names[number] = name;
    }
  }
}

std::string zvLabelAtlas::FindBeside(const std::string& volume)
{
  if (volume.empty())
  {
    return std::string();
  }
  const fs::path atlas = fs::path(volume).parent_path() / AtlasFile;
  std::error_code error;
  return fs::exists(atlas, error) ? atlas.string() : std::string();
}

std::string zvLabelAtlas::GetName(int number) const
{
  if (number == 0)
  {
    return std::string();
  }
  const auto found = this->Names.find(number);
  return found == this->Names.end() ? "region " + std::to_string(number) : found->second;
}

int zvLabelAtlas::GetNumberAt(const double position[3]) const
{
  if (this->IsEmpty())
  {
    return 0;
  }
  const vtkIdType id = this->Labels->FindPoint(position[0], position[1], position[2]);
  return id < 0 ? 0 : static_cast<const int*>(this->Labels->GetScalarPointer())[id];
}

vtkSmartPointer<vtkImageData> zvLabelAtlas::MakeMask(int number) const
{
  if (this->IsEmpty())
  {
    return nullptr;
  }
  auto mask = vtkSmartPointer<vtkImageData>::New();
  mask->CopyStructure(this->Labels);
  mask->AllocateScalars(VTK_UNSIGNED_CHAR, 1);
  const int* from = static_cast<const int*>(this->Labels->GetScalarPointer());
  auto* to = static_cast<unsigned char*>(mask->GetScalarPointer());
  std::transform(from, from + this->Labels->GetNumberOfPoints(), to,
    [number](int label)
    {
      const bool isMarked = number == AllNumbers ? label != 0 : label == number;
      return static_cast<unsigned char>(isMarked ? 0 : 1);
    });
  return mask;
}

vtkSmartPointer<vtkImageData> zvLabelAtlas::CutLayer(vtkImageData* image, int axis, int index)
{
  int extent[6];
  image->GetExtent(extent);
  extent[2 * axis] = extent[2 * axis + 1] =
    std::min(std::max(index, extent[2 * axis]), extent[2 * axis + 1]);
  auto layer = vtkSmartPointer<vtkImageData>::New();
  layer->SetOrigin(image->GetOrigin());
  layer->SetSpacing(image->GetSpacing());
  layer->SetExtent(extent);
  layer->AllocateScalars(image->GetScalarType(), 1);
  layer->CopyAndCastFrom(image, extent);
  return layer;
}
