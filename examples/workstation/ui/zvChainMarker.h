#ifndef zvChainMarker_h
#define zvChainMarker_h

#include "zvMarkNumbers.h"
#include "zvMarker.h"

#include "vtkSmartPointer.h"

class vtkObject;
class zv3DRulerWidget;

/// The 3D ruler, a chain of points: a line of the list for the length of the whole, and one for
/// each segment. With the control key a click on a segment puts a point there. It is hidden as a
/// whole; removing a segment removes the point that it ends in.
class zvChainMarker : public zvMarker
{
  Q_OBJECT

public:
  explicit zvChainMarker(zvViewGrid* views);
  ~zvChainMarker() override;

  zv3DRulerWidget* GetWidget() const;

  void Measure(double bounds[6]) override;
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
  double GetSegmentLength(int end) const;
  int FindInserted(const Vector& point) const;
  void HandleMoved(vtkObject*, unsigned long, void*);

  vtkSmartPointer<zv3DRulerWidget> Chain;
  zvMarkNumbers Numbers; // of the points; that of the first one stands for the whole chain
};

#endif
