#include "zvMarkerTools.h"

#include "zvBoxMarker.h"
#include "zvChainMarker.h"
#include "zvIcons.h"
#include "zvInstanceManager.h"
#include "zvMeasurementList.h"
#include "zvNormalMarker.h"
#include "zvSeedMarker.h"
#include "zvToolSet.h"
#include "zvTreeMarker.h"
#include "zvViewGrid.h"
#include "zvVolumeView.h"

#include <QEvent>
#include <QMouseEvent>

#include "vtkImageData.h"
#include "vtkPlane.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <cmath>

namespace
{
zvMarker::Vector ToWorld(vtkRenderer* renderer, const int position[2], double depth)
{
  renderer->SetDisplayPoint(position[0], position[1], depth);
  renderer->DisplayToWorld();
  const double* point = renderer->GetWorldPoint();
  return { { point[0] / point[3], point[1] / point[3], point[2] / point[3] } };
}

// Where the plane is under the mouse. The viewer records that only for a press that nothing before
// it has taken, as a segment of the chain does.
zvMarker::Vector PointUnder(const zvSliceView* view)
{
  const int* position = view->GetRenderer()->GetRenderWindow()->GetInteractor()->GetEventPosition();
  const zvMarker::Vector near = ToWorld(view->GetRenderer(), position, 0.0);
  const zvMarker::Vector far = ToWorld(view->GetRenderer(), position, 1.0);
  double normal[3], center[3], share;
  view->GetViewer()->GetNormal(normal);
  view->GetViewer()->GetCenter(center);
  zvMarker::Vector point{};
  vtkPlane::IntersectWithLine(near.data(), far.data(), normal, center, share, point.data());
  return point;
}
}

zvMarkerTools::zvMarkerTools(zvViewGrid* views, zvToolSet* tools, zvMeasurementList* list)
  : Views(views)
  , Seeds(new zvSeedMarker(views))
  , Chain(new zvChainMarker(views))
  , Tree(new zvTreeMarker(views))
  , Normal(new zvNormalMarker(views))
  , Box(new zvBoxMarker(views))
  , Markers{ this->Seeds, this->Chain, this->Tree, this->Normal, this->Box }
{
  for (zvMarker* marker : this->Markers)
  {
    marker->setParent(this);
    list->AddSource(marker);
    connect(marker, &zvMarker::goToWanted, this, &zvMarkerTools::GoTo);
  }
  for (zvQVTKWidget* view : views->GetViews())
  {
    view->installEventFilter(this);
    view->setMouseTracking(true);
    if (auto* slice = qobject_cast<zvSliceView*>(view))
    {
      connect(slice, &zvQVTKWidget::mouseEvent, this,
        [this, slice](QMouseEvent* event) { this->TakePress(slice, event); });
    }
  }
  this->AddTools(tools);
}

zvMarkerTools::~zvMarkerTools() = default;

void zvMarkerTools::AddTools(zvToolSet* tools)
{
  struct Row
  {
    zvMarker* Marker;
    const char* Id;
    QString Name;
    const char* Key;
    QString ToolTip;
    QString Hint;
  };
  const Row rows[] = {
    { this->Seeds, "seed", tr("&Seeds"), "S", tr("Mark points in all views"),
      tr("click on a slice to add a seed, drag a seed to move it") },
    { this->Chain, "chain", tr("C&hain"), "Shift+D", tr("Measure along a chain of points in space"),
      tr("click to go on; Ctrl and click on a segment to put a point there; drag points") },
    { this->Tree, "tree", tr("T&ree"), "B", tr("Grow a tree of connected points"),
      tr("click to grow from the selected point; click on a point to select it, or drag it") },
    { this->Normal, "normal", tr("N&ormal"), "N", tr("Define a direction by two points"),
      tr("click where it begins and where it ends; drag its cones or its line") },
    { this->Box, "box", tr("&Box"), "X", tr("Enclose a region with a box"),
      tr("drag the handles of the box in the 3D view") },
  };
  for (const Row& row : rows)
  {
    zvTool tool;
    tool.Id = row.Id;
    tool.Group = "markers";
    tool.Name = row.Name;
    tool.ToolTip = row.ToolTip;
    tool.Hint = row.Hint;
    tool.Key = QKeySequence(row.Key);
    tool.Icon = zvIcons::Make(row.Id);
    tool.Activate = [this, marker = row.Marker] { this->Choose(marker); };
    tool.Deactivate = [this] { this->Leave(); };
    tools->Add(tool);
  }
}

void zvMarkerTools::Choose(zvMarker* marker)
{
  this->Active = marker;
  for (int axis = 0; axis < 3; ++axis)
  {
    this->Views->GetSliceView(axis)->GetViewer()->SetPickPointModeA(
      marker->GetClicks() == zvMarker::Clicks::Place);
  }
  marker->Begin();
}

void zvMarkerTools::Leave()
{
  zvMarker* left = this->Active;
  this->Active = nullptr;
  for (int axis = 0; axis < 3; ++axis)
  {
    this->Views->GetSliceView(axis)->GetViewer()->SetPickPointModeA(false);
  }
  if (left != nullptr)
  {
    left->End();
  }
}

void zvMarkerTools::ShowVolume(vtkImageData* image)
{
  zvInstanceManager::Instance()->SetCurrentOutput(image);
  for (zvMarker* marker : this->Markers)
  {
    marker->Measure(image->GetBounds());
  }
}

// Before the view itself has the event, so that the press finds the markers in the right view.
bool zvMarkerTools::eventFilter(QObject* watched, QEvent* event)
{
  switch (event->type())
  {
    case QEvent::Leave:
      this->Hover(nullptr);
      break;
    case QEvent::Enter:
    case QEvent::MouseButtonPress:
      this->Hover(watched);
      break;
    case QEvent::MouseMove:
      if (static_cast<QMouseEvent*>(event)->buttons() == Qt::NoButton)
      {
        this->Hover(watched);
      }
      break;
    case QEvent::MouseButtonDblClick:
      // The second of two quick clicks would fill the window with the view.
      return this->Active != nullptr;
    default:
      break;
  }
  return this->QObject::eventFilter(watched, event);
}

void zvMarkerTools::Hover(QObject* view)
{
  auto* slice = qobject_cast<zvSliceView*>(view);
  vtkRenderer* renderer = slice != nullptr ? slice->GetRenderer()
    : view != nullptr                      ? this->Views->GetVolumeView()->GetRenderer()
                                           : nullptr;
  for (zvMarker* marker : this->Markers)
  {
    marker->Hover(renderer);
  }
}

void zvMarkerTools::TakePress(zvSliceView* view, const QMouseEvent* event)
{
  const bool isPress =
    event->type() == QEvent::MouseButtonPress && event->button() == Qt::LeftButton;
  if (!isPress || this->Active == nullptr || !view->HasVolume() ||
    this->Active->GetClicks() != zvMarker::Clicks::Place || this->Active->IsHeld())
  {
    return;
  }
  zvImageViewerWidget* viewer = view->GetViewer();
  viewer->UpdateCursor(
    view->interactor()->GetEventPosition()[0], view->interactor()->GetEventPosition()[1]);
  if (viewer->GetCurrentImageValue() == VTK_DOUBLE_MAX)
  {
    return; // beside the slice
  }
  this->Active->Place(PointUnder(view), (event->modifiers() & Qt::ControlModifier) != 0);
}

// Each plane to the slice that is nearest to the point.
void zvMarkerTools::GoTo(const zvMarker::Vector& point)
{
  vtkImageData* image = this->Views->GetVolumeView()->GetVolume().Image;
  if (image == nullptr)
  {
    return;
  }
  this->Views->Straighten();
  for (int axis = 0; axis < 3; ++axis)
  {
    const double steps = (point[static_cast<std::size_t>(axis)] - image->GetOrigin()[axis]) /
      image->GetSpacing()[axis];
    this->Views->GoTo(axis, static_cast<int>(std::lround(steps)) - image->GetExtent()[2 * axis]);
  }
}
