#ifndef zvBoxMarker_h
#define zvBoxMarker_h

#include "zvMarker.h"

#include "vtkNew.h"
#include "vtkSmartPointer.h"

class vtkActor;
class vtkObject;
class vtkPolyData;
class vtkPolyDataMapper;
class zvBoxWidget;

/// A box along the axes: its faces and its middle are dragged in the 3D view, its edges are seen in
/// all views; one line of the list, its bounds. Choosing the tool makes it, half as large as the
/// volume. There is one at a time.
class zvBoxMarker : public zvMarker
{
  Q_OBJECT

public:
  explicit zvBoxMarker(zvViewGrid* views);
  ~zvBoxMarker() override;

  zvBoxWidget* GetWidget() const; // null before the tool is chosen

  Clicks GetClicks() const override { return Clicks::None; }
  void Begin() override;
  int GetPointCount() const override { return 0; }
  Vector GetPoint(int) const override { return {}; }
  void RemovePoint(int) override {}

  std::vector<zvMeasurement> Read() const override;
  void SetHidden(int id, bool hidden) override;
  void Remove(int id) override;
  void RemoveAll() override;

protected:
  void Enter(vtkRenderer* renderer) override;
  Vector GetPlace(int id) const override;

private:
  std::array<double, 6> GetBounds() const;
  void FollowBox();
  void ShowEdges(bool shown);
  void HandleMoved(vtkObject*, unsigned long, void*);

  vtkSmartPointer<zvBoxWidget> Box;
  vtkNew<vtkPolyData> Edges;
  vtkNew<vtkPolyDataMapper> Mapper;
  vtkNew<vtkActor> Actor; // in the slice views
  int Id = 0;
};

#endif
