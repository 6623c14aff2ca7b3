#ifndef zvSeedMarker_h
#define zvSeedMarker_h

#include "zvMarkNumbers.h"
#include "zvMarker.h"

#include "vtkSmartPointer.h"

class vtkObject;
class zvSeedWidget;

/// Seed points: a line of the list for each, with its position in millimetres. They are hidden all
/// together.
class zvSeedMarker : public zvMarker
{
  Q_OBJECT

public:
  explicit zvSeedMarker(zvViewGrid* views);
  ~zvSeedMarker() override;

  zvSeedWidget* GetWidget() const;

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
  void HandleMoved(vtkObject*, unsigned long, void*);

  vtkSmartPointer<zvSeedWidget> Seeds;
  zvMarkNumbers Numbers; // as the widget counts its seeds
};

#endif
