#ifndef zvNormalMarker_h
#define zvNormalMarker_h

#include "zvMarker.h"

#include "vtkSmartPointer.h"

class vtkObject;
class zvPlacedNormal;

/// A direction from point to point, with a cone at each end: one line of the list, its unit vector.
/// Two clicks on slices place it; then its cones and its line can be dragged. There is one at a
/// time: remove it to place another, with the tool still chosen if it was.
class zvNormalMarker : public zvMarker
{
  Q_OBJECT

public:
  explicit zvNormalMarker(zvViewGrid* views);
  ~zvNormalMarker() override;

  zvPlacedNormal* GetWidget() const; // null before the tool is chosen

  Clicks GetClicks() const override { return Clicks::Viewer; }
  void Measure(double bounds[6]) override;
  void Begin() override;
  /// A normal of one point is dropped.
  void End() override;
  int GetPointCount() const override;
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
  void Make();
  void HandleChanged(vtkObject*, unsigned long, void*);

  vtkSmartPointer<zvPlacedNormal> Normal;
  double ConeSize = 3.0; // millimetres
  int Id = 0;
  bool IsHidden = false;
  bool IsChosen = false; // the tool
};

#endif
