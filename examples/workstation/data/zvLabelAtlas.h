#ifndef zvLabelAtlas_h
#define zvLabelAtlas_h

#include "vtkImageData.h"
#include "vtkSmartPointer.h"

#include <map>
#include <string>
#include <vector>

/// A volume of labels, each voxel the number of a region or 0 for none, and the regions' names.
class zvLabelAtlas
{
public:
  /// No labels.
  zvLabelAtlas() = default;

  /// Take over the labels of an upright image (see zvVolume), and the names from the text file
  /// beside it where that exists: head.nii.gz has its names in head.nii.txt, a line a region,
  /// number and name first. Regions without a name there are called by their number.
  zvLabelAtlas(vtkImageData* labels, const std::string& path);

  /// The atlas that lies in the folder of a volume, empty if there is none.
  static std::string FindBeside(const std::string& volume);

  bool IsEmpty() const { return this->Labels == nullptr; }
  vtkImageData* GetLabels() const { return this->Labels; }

  /// The numbers that occur, in order, without 0.
  const std::vector<int>& GetNumbers() const { return this->Numbers; }
  /// The name of a number; empty for 0.
  std::string GetName(int number) const;
  /// The number at a place in the patient's frame (millimetres); 0 beside the labels.
  int GetNumberAt(const double position[3]) const;

  /// A mask as the viewer takes it, on the grid of the labels: 0 in the region of a number (in any
  /// region for AllNumbers), 1 elsewhere. Null without labels.
  vtkSmartPointer<vtkImageData> MakeMask(int number) const;
  static constexpr int AllNumbers = 0;

  /// One layer of an image of one component, across an axis: of a mask, which a viewer copies, one
  /// slice shows no more.
  static vtkSmartPointer<vtkImageData> CutLayer(vtkImageData* image, int axis, int index);

private:
  void ReadNames(const std::string& path);
  void CollectNumbers();

  vtkSmartPointer<vtkImageData> Labels; // of int scalars
  std::vector<int> Numbers;
  std::map<int, std::string> Names;
};

#endif
