// The chain: its points and segments, what is selected of them, and the label.
#include "zv3DRulerWidget.h"

#include "zvCollections.h"
#include "zvFourViews.h"
#include "zvInstanceManager.h"
#include "zvLengthLabel.h"
#include "zvMarkerParts.h"
#include "zvMessages.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkFollower.h"
#include "vtkImageData.h"
#include "vtkLineSource.h"
#include "vtkMath.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSphereSource.h"
#include "vtkVectorText.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace
{
double DistanceBetween(const double p1[3], const double p2[3])
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(p1, p2));
}

// The collection itself does not insert behind the last item.
void InsertBehind(vtkCollection* collection, int after, vtkObject* item)
{
  if (after == collection->GetNumberOfItems() - 1)
  {
    collection->AddItem(item);
  }
  else
  {
    collection->InsertItem(after, item);
  }
}

void RemoveFromList(vtkCellPicker* picker, vtkCollection* actors)
{
  zvCollections::ForEach<vtkActor>(
    actors, [picker](vtkActor* actor, int) { picker->DeletePickList(actor); });
}
}

void zv3DRulerWidget::AddHandle(double* x, int)
{
  zvTraceMacro("zv3DRulerWidget::AddHandle(double x[3])");
  const int last = this->GetNumberOfPoints() - 1;
  if (!this->HasViews("adding a point") || (last >= 0 && !this->HasCurrentView("adding a point")))
  {
    return;
  }
  if (!x)
  {
    vtkGenericWarningMacro("give the point a position...");
    return;
  }
  this->State = Start;
  const vtkSmartPointer<vtkActor> point = this->InsertPoint(last, x);
  this->AddToViews(point);
  this->PointPicker->AddPickList(point);
  if (last >= 0)
  {
    const vtkSmartPointer<vtkActor> segment =
      this->InsertSegment(last - 1, this->PointAt(last)->GetCenter(), x);
    this->SetTextToActorPosition(last + 1);
    this->AddToViews(segment);
    this->ShowLabel();
    this->LinePicker->AddPickList(segment);
    this->CurrentLine = this->HighlightLine(segment);
  }
  this->CurrentPoint = this->HighlightHandle(point);
  this->SizeHandles();
  this->RenderViews();
}

void zv3DRulerWidget::InsertHandleOnLine(double* coord)
{
  // Deliberate: hosts that read traces know this text.
  zvTraceMacro("zvLassoWidget::InsertHandleOnLine(double coord[3])");
  const int split = this->CurrentLine;
  vtkLineSource* const before = this->SegmentAt(split);
  if (!this->HasViews("inserting a point") || !this->HasCurrentView("inserting a point"))
  {
    return;
  }
  if (!before)
  {
    vtkGenericWarningMacro("there is no segment of index " << split << "...");
    return;
  }
  if (!coord)
  {
    vtkGenericWarningMacro("give the point a position...");
    return;
  }
  const vtkSmartPointer<vtkActor> point = this->InsertPoint(split, coord);
  before->SetPoint1(this->PointAt(split)->GetCenter());
  before->SetPoint2(coord);
  const vtkSmartPointer<vtkActor> segment =
    this->InsertSegment(split, coord, this->PointAt(split + 2)->GetCenter());
  this->PointPicker->AddPickList(point);
  this->CurrentPoint = this->HighlightHandle(point);
  this->AddToViews(point);
  this->LinePicker->AddPickList(segment);
  this->AddToViews(segment);
  this->SetTextToActorPosition(split + 1);
  this->ShowLabel();
  this->SizeHandles();
  this->RenderViews();
}

void zv3DRulerWidget::RemovePointSelected()
{
  zvTraceMacro("zv3DRulerWidget::RemovePointSelected()");
  const int index = zvCollections::IndexOf(this->HandleActors, this->CurrentHandle);
  if (!this->CurrentHandle)
  {
    zvPlainErrorMacro("In file zv3DRulerWidget at method RemovePointSelected() >> "
                      "No 3D Ruler selected to delete!");
  }
  else if (index >= 0)
  {
    this->CurrentPoint = index;
    const int dropped = this->BypassPoint(index);
    if (dropped >= 0)
    {
      if (this->GetNumberOfPoints() == 2)
      {
        this->RemoveFromViews(this->TextActor);
      }
      this->EraseSegment(dropped);
    }
    this->ErasePoint(index);
    this->CurrentLine = this->HighlightLine(this->CurrentPoint - 2);
  }
  this->RenderViews();
}

void zv3DRulerWidget::Clear()
{
  zvTraceMacro("zv3DRulerWidget::Clear(void)");
  if (this->Interactor)
  {
    if (!this->CurrentRenderer)
    {
      this->SetCurrentRenderer(zvViewLookup::Choose(nullptr, this->Interactor));
    }
    if (this->CurrentRenderer)
    {
      this->RemoveChainFromViews();
      RemoveFromList(this->PointPicker, this->HandleActors);
      RemoveFromList(this->LinePicker, this->LineActors);
      this->CurrentHandle = nullptr;
      this->RemoveFromViews(this->TextActor);
    }
  }
  // Deliberate: the observers stay on the interactors, and so do the selected indices.
  this->Enabled = 0;
  this->HandleSources->RemoveAllItems();
  this->HandleActors->RemoveAllItems();
  this->LineSources->RemoveAllItems();
  this->LineActors->RemoveAllItems();
  this->RenderViews();
}

void zv3DRulerWidget::SetHandlePosition(int handle, double x, double y, double z)
{
  zvTraceMacro("zv3DRulerWidget::SetHandlePosition(int handle, double x, double y, double z)");
  if (handle < 0)
  {
    vtkErrorMacro("zv3DRulerWidget: handle index out of range.");
    return;
  }
  if (!this->HasPoint(handle))
  {
    return;
  }
  // Deliberate: the segments do not follow.
  vtkSphereSource* const sphere = this->PointAt(handle);
  sphere->SetCenter(x, y, z);
  sphere->Update();
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
}

void zv3DRulerWidget::SetHandlePosition(int handle, double xyz[3])
{
  zvTraceMacro("zv3DRulerWidget::SetHandlePosition(int handle, double xyz[3])");
  if (!xyz)
  {
    vtkGenericWarningMacro("give the point a position...");
    return;
  }
  this->SetHandlePosition(handle, xyz[0], xyz[1], xyz[2]);
}

void zv3DRulerWidget::GetHandlePosition(int handle, double xyz[3])
{
  zvTraceMacro("zv3DRulerWidget::GetHandlePosition(int handle, double xyz[3])");
  if (!xyz)
  {
    vtkGenericWarningMacro("give room for the position of the point...");
    return;
  }
  if (const double* center = this->GetHandlePosition(handle))
  {
    std::copy_n(center, 3, xyz);
  }
}

double* zv3DRulerWidget::GetHandlePosition(int handle)
{
  zvTraceMacro("zv3DRulerWidget::GetHandlePosition(int handle)");
  if (handle < 0)
  {
    vtkErrorMacro("zv3DRulerWidget: handle index out of range.");
    return nullptr;
  }
  return this->HasPoint(handle) ? this->PointAt(handle)->GetCenter() : nullptr;
}

int zv3DRulerWidget::HighlightHandle(vtkProp* prop)
{
  zvTraceMacro("zv3DRulerWidget::HighlightHandle(vtkProp *prop)");
  this->CurrentHandle = prop;
  return this->HighlightPointAt(zvCollections::IndexOf(this->HandleActors, prop));
}

int zv3DRulerWidget::HighlightHandle(int index)
{
  zvTraceMacro("zv3DRulerWidget::HighlightHandle(int index)");
  this->CurrentHandle = zvCollections::ItemAt<vtkActor>(this->HandleActors, index);
  return this->HighlightPointAt(this->CurrentHandle ? index : -1);
}

int zv3DRulerWidget::HighlightLine(vtkProp* prop)
{
  zvTraceMacro("zv3DRulerWidget::HighlightLine(vtkProp *prop)");
  this->CurrentHandle = prop;
  return this->HighlightSegmentAt(zvCollections::IndexOf(this->LineActors, prop));
}

int zv3DRulerWidget::HighlightLine(int index)
{
  zvTraceMacro("zv3DRulerWidget::HighlightLine(int index)");
  this->CurrentHandle = zvCollections::ItemAt<vtkActor>(this->LineActors, index);
  return this->HighlightSegmentAt(this->CurrentHandle ? index : -1);
}

void zv3DRulerWidget::SetCurrentActorIndex(int index)
{
  zvTraceMacro("zv3DRulerWidget::SetCurrentActorIndex(int index)");
  if (index == -1)
  {
    return;
  }
  this->CurrentPoint = this->HighlightHandle(index);
  this->SetTextToActorPosition(index);
  this->RenderViews();
}

void zv3DRulerWidget::SetTextToActorPosition(int index)
{
  zvTraceMacro("zv3DRulerWidget::SetTextToActorPosition(vtkProp *prop)");
  vtkLineSource* const segment = this->SegmentAt(index != 0 ? index - 1 : 0);
  if (!segment)
  {
    if (index != 0)
    {
      this->RemoveFromViews(this->TextActor);
    }
    return;
  }
  if (!this->HasCurrentView("placing the label"))
  {
    return;
  }
  if (index != 0)
  {
    this->HighlightHandle(index - 1);
  }
  else
  {
    this->HighlightLine(0); // Deliberate: CurrentLine does not follow
  }
  this->WriteLabel(segment);
  this->HighlightHandle(index);
}

void zv3DRulerWidget::SetTextToActorPosition(vtkProp* prop)
{
  zvTraceMacro("zv3DRulerWidget::SetTextToActorPosition(vtkProp *prop)");
  this->CurrentHandle = prop;
  const int index = zvCollections::IndexOf(this->HandleActors, prop);
  vtkLineSource* const segment = index < 0 ? nullptr : this->SegmentAt(std::max(index - 1, 0));
  if (segment && this->HasCurrentView("placing the label"))
  {
    this->WriteLabel(segment);
  }
}

// Deliberately empty: the label is sized when it is refreshed.
void zv3DRulerWidget::UpdateScaleLabel() {}

std::string zv3DRulerWidget::GetStringCoordinate()
{
  zvTraceMacro("zv3DRulerWidget::GetStringCoordinate()");
  std::ostringstream text;
  text << std::fixed << std::setprecision(2) << " ";
  const double* previous = nullptr;
  double total = 0.0;
  zvCollections::ForEach<vtkSphereSource>(this->HandleSources,
    [&text, &previous, &total](vtkSphereSource* sphere, int)
    {
      const double* const center = sphere->GetCenter();
      const double distance = previous ? DistanceBetween(previous, center) : 0.0;
      total += distance;
      text << center[0] << " " << center[1] << " " << center[2] << " " << distance << " " << total
           << " ";
      previous = center;
    });
  text << this->CurrentPoint;
  return text.str();
}

void zv3DRulerWidget::MovePoint(double* p1, double* p2)
{
  zvTraceMacro("zv3DRulerWidget::MovePoint(double *p1, double *p2)");
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before moving a point...");
    return;
  }
  if (!this->HasPoint(this->CurrentPoint))
  {
    return;
  }
  double bounds[6];
  if (!zvFourViews::GetBounds(zvInstanceManager::Instance()->GetCurrentOutput(), bounds))
  {
    vtkGenericWarningMacro("set the current image before moving a point...");
    return;
  }
  vtkSphereSource* const sphere = this->PointAt(this->CurrentPoint);
  double center[3];
  sphere->GetCenter(center);
  zvFourViews::MoveWithin(bounds, p1, p2, center);
  sphere->SetCenter(center);
  if (vtkLineSource* const before = this->SegmentAt(this->CurrentPoint - 1))
  {
    before->SetPoint2(center);
    before->Update();
  }
  if (vtkLineSource* const after = this->SegmentAt(this->CurrentPoint))
  {
    after->SetPoint1(center);
    after->Update();
  }
  if (this->GetNumberOfPoints() > 1)
  {
    this->SetTextToActorPosition(this->CurrentPoint);
  }
  sphere->Update();
}

void zv3DRulerWidget::RemoveChainFromViews()
{
  for (vtkCollection* actors : { this->HandleActors.Get(), this->LineActors.Get() })
  {
    for (const auto& actor : zvCollections::ItemsOf<vtkActor>(actors))
    {
      this->RemoveFromViews(actor);
    }
  }
}

void zv3DRulerWidget::ShowLabel()
{
  this->TextActor->SetCamera(this->CurrentRenderer->GetActiveCamera());
  this->AddToViews(this->TextActor);
}

void zv3DRulerWidget::WriteLabel(vtkLineSource* segment)
{
  double p1[3];
  double p2[3];
  segment->GetPoint1(p1);
  segment->GetPoint2(p2);
  this->TextSource->SetText(zvLengthLabel::OfLength(DistanceBetween(p1, p2)).c_str());
  zvLengthLabel::SetSize(this->TextActor, this->GetSize(zvMarkerParts::LabelSize));
  // In front of the sphere, not in it.
  double position[3];
  vtkMath::Subtract(
    p2, this->CurrentRenderer->GetActiveCamera()->GetDirectionOfProjection(), position);
  this->TextActor->SetPosition(position);
}

bool zv3DRulerWidget::HasCurrentView(const char* before)
{
  if (!this->CurrentRenderer)
  {
    vtkGenericWarningMacro("set CurrentRenderer before " << before << "...");
  }
  return this->CurrentRenderer != nullptr;
}

bool zv3DRulerWidget::HasPoint(int index)
{
  const bool isThere = index >= 0 && index < this->GetNumberOfPoints();
  if (!isThere)
  {
    vtkGenericWarningMacro("there is no point of index " << index << "...");
  }
  return isThere;
}

int zv3DRulerWidget::GetNumberOfPoints()
{
  return this->HandleSources->GetNumberOfItems();
}

vtkSphereSource* zv3DRulerWidget::PointAt(int index)
{
  return zvCollections::ItemAt<vtkSphereSource>(this->HandleSources, index);
}

vtkLineSource* zv3DRulerWidget::SegmentAt(int index)
{
  return zvCollections::ItemAt<vtkLineSource>(this->LineSources, index);
}

vtkSmartPointer<vtkActor> zv3DRulerWidget::InsertPoint(int after, const double position[3])
{
  const auto sphere = zvMarkerParts::MakeSphere(position, this->GetSize(zvMarkerParts::SphereSize));
  auto actor = zvMarkerParts::MakeActor(sphere, this->SelectedHandleProperty);
  InsertBehind(this->HandleSources, after, sphere);
  InsertBehind(this->HandleActors, after, actor);
  return actor;
}

vtkSmartPointer<vtkActor> zv3DRulerWidget::InsertSegment(
  int after, const double p1[3], const double p2[3])
{
  vtkNew<vtkLineSource> line;
  line->SetPoint1(p1[0], p1[1], p1[2]);
  line->SetPoint2(p2[0], p2[1], p2[2]);
  auto actor = zvMarkerParts::MakeActor(line, this->LineProperty);
  InsertBehind(this->LineSources, after, line);
  InsertBehind(this->LineActors, after, actor);
  return actor;
}

void zv3DRulerWidget::ErasePoint(int index)
{
  vtkProp* const actor = zvCollections::ItemAt<vtkProp>(this->HandleActors, index);
  this->RemoveFromViews(actor);
  this->PointPicker->DeletePickList(actor);
  this->HandleActors->RemoveItem(index);
  this->HandleSources->RemoveItem(index);
}

void zv3DRulerWidget::EraseSegment(int index)
{
  vtkProp* const actor = zvCollections::ItemAt<vtkProp>(this->LineActors, index);
  this->RemoveFromViews(actor);
  this->LinePicker->DeletePickList(actor);
  this->LineActors->RemoveItem(index);
  this->LineSources->RemoveItem(index);
}

int zv3DRulerWidget::BypassPoint(int index)
{
  vtkLineSource* const before = this->SegmentAt(index - 1);
  vtkLineSource* const after = this->SegmentAt(index);
  if (before && after)
  {
    before->SetPoint2(after->GetPoint2());
  }
  return after ? index : before ? index - 1 : -1;
}

// An index that is not there makes all look unselected.
int zv3DRulerWidget::HighlightPointAt(int index)
{
  if (index >= 0)
  {
    this->ValidPick = 1;
    // Deliberate: that of the last pick, also if this point was not picked.
    this->PointPicker->GetPickPosition(this->LastPickPosition);
  }
  zvMarkerParts::Highlight(
    this->HandleActors, index, this->HandleProperty, this->SelectedHandleProperty);
  return index;
}

int zv3DRulerWidget::HighlightSegmentAt(int index)
{
  if (index >= 0)
  {
    this->ValidPick = 1;
    this->LinePicker->GetPickPosition(this->LastPickPosition);
  }
  zvMarkerParts::Highlight(this->LineActors, index, this->LineProperty, this->SelectedLineProperty);
  return index;
}
