#ifndef zvListPicker_h
#define zvListPicker_h

#include "vtkCellPicker.h"

#include <map>

/// A cell picker whose list may hold a prop many times: each is tested once in a pick, the answers
/// are those of vtkCellPicker. The list of a curve's handles takes their actor once more with each
/// handle, which would make a pick among n handles test n * n cells.
class zvListPicker : public vtkCellPicker
{
public:
  static zvListPicker* New();
  vtkTypeMacro(zvListPicker, vtkCellPicker)

  zvListPicker(const zvListPicker&) = delete;
  zvListPicker& operator=(const zvListPicker&) = delete;

protected:
  zvListPicker();
  ~zvListPicker() override;

  /// A pick begins: nothing has been tested.
  void Initialize() override;

  double IntersectWithLine(const double p1[3], const double p2[3], double tol,
    vtkAssemblyPath* path, vtkProp3D* prop, vtkAbstractMapper3D* mapper) override;

private:
  /// How far along the ray each prop was hit; not owned, only compared during one pick.
  std::map<const vtkProp3D*, double> Tested;
};

#endif
