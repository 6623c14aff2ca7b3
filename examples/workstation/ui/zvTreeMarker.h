#ifndef zvTreeMarker_h
#define zvTreeMarker_h

#include "zvMarkNumbers.h"
#include "zvMarker.h"

#include "vtkNew.h"
#include "vtkSmartPointer.h"

class vtkObject;
class vtkPolyData;
class zv3DTreeWidget;

/// A tree of points: a line of the list for the length of the whole, and one for each segment. A
/// click on the slice grows a segment from the selected point, a click on a point selects it. It is
/// hidden as a whole; removing a segment removes all that grows from it, too.
class zvTreeMarker : public zvMarker
{
  Q_OBJECT

public:
  explicit zvTreeMarker(zvViewGrid* views);
  ~zvTreeMarker() override;

  zv3DTreeWidget* GetWidget() const;

  bool IsHeld() override;
  void Place(const Vector& point, bool isControlled) override;
  int GetPointCount() const override { return this->Numbers.GetCount(); }
  Vector GetPoint(int index) const override;
  void RemovePoint(int index) override;

  std::vector<zvMeasurement> Read() const override;
  void SetHidden(int id, bool hidden) override;
  void Remove(int id) override;
  void RemoveAll() override;

protected:
  void Enter(vtkRenderer* renderer) override;
  Vector GetPlace(int id) const override;

private:
  void Show();
  void Reload();
  void HandleMoved(vtkObject*, unsigned long, void*);
  void HandleReleased(vtkObject*, unsigned long, void*);

  vtkSmartPointer<zv3DTreeWidget> Tree;
  vtkNew<vtkPolyData> Copy; // of the widget's tree as it is now
  zvMarkNumbers Numbers;    // of the points; that of the root stands for the whole tree
};

#endif
