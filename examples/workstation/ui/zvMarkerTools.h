#ifndef zvMarkerTools_h
#define zvMarkerTools_h

#include "zvMarker.h"

#include <QObject>

#include <memory>
#include <vector>

class QMouseEvent;
class vtkImageData;
class zvBoxMarker;
class zvChainMarker;
class zvMeasurementList;
class zvNormalMarker;
class zvSeedMarker;
class zvSliceView;
class zvToolSet;
class zvTreeMarker;

/// The markers that stand in all four views, as tools: seeds, a chain, a tree, a normal and a box.
///
/// While such a tool is chosen a press on a slice is recorded by the viewer and does nothing else
/// there; after the library's markers have had the press, too, it becomes a click of the tool if
/// none of them took hold of something.
class zvMarkerTools : public QObject
{
  Q_OBJECT

public:
  /// \param views, tools, list  outlive this object.
  zvMarkerTools(zvViewGrid* views, zvToolSet* tools, zvMeasurementList* list);
  ~zvMarkerTools() override;

  /// Begin with a volume, in which drags stay.
  void ShowVolume(vtkImageData* image);

  zvSeedMarker* GetSeeds() const { return this->Seeds; }
  zvChainMarker* GetChain() const { return this->Chain; }
  zvTreeMarker* GetTree() const { return this->Tree; }
  zvNormalMarker* GetNormal() const { return this->Normal; }
  zvBoxMarker* GetBox() const { return this->Box; }

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void AddTools(zvToolSet* tools);
  void Choose(zvMarker* marker);
  void Leave();
  void Hover(QObject* view);
  void TakePress(zvSliceView* view, const QMouseEvent* event);
  void GoTo(const zvMarker::Vector& point);

  zvViewGrid* Views;
  zvSeedMarker* Seeds; // these are owned by Qt's tree of objects
  zvChainMarker* Chain;
  zvTreeMarker* Tree;
  zvNormalMarker* Normal;
  zvBoxMarker* Box;
  std::vector<zvMarker*> Markers;
  zvMarker* Active = nullptr;
};

#endif
