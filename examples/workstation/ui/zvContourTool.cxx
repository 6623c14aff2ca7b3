#include "zvContourTool.h"

#include "zvEditBar.h"
#include "zvIcons.h"
#include "zvImageViewerWidget.h"
#include "zvInstanceManager.h"
#include "zvToolSet.h"
#include "zvViewGrid.h"
#include "zvVolumeView.h"

#include <QAction>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QSlider>
#include <QStringList>

#include "vtkCellArray.h"
#include "vtkFloatArray.h"
#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkRenderWindowInteractor.h"

#include <algorithm>
#include <limits>

namespace
{
constexpr int Pause = 5;         // milliseconds between two ticks, for all other events
constexpr int Budget = 12;       // milliseconds of steps in a tick
constexpr int StepsPerTick = 3;  // in one slice, so that the way there is seen
constexpr int FollowDelay = 150; // milliseconds, between two slices that are shown on the way
constexpr int StackDelay = 250;  // milliseconds, between two pictures of the 3D view on the way
constexpr vtkIdType MostEdges = 6000;
constexpr double EdgeLift = 0.5;

// The points of a contour with how much of an edge each lies on.
vtkSmartPointer<vtkPolyData> MakeEdgesAt(
  const zvContour& contour, const zvContourForces& forces, const zvContourPlane& plane, double lift)
{
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> dots;
  vtkNew<vtkFloatArray> edges;
  for (const zvContourPoint& point : contour)
  {
    std::array<double, 3> world = plane.ToWorld(point);
    world[static_cast<std::size_t>(plane.GetAxis())] += lift;
    const vtkIdType id = points->InsertNextPoint(world.data());
    dots->InsertNextCell({ id });
    edges->InsertNextValue(static_cast<float>(forces.At(point).Edge));
  }
  auto dotted = vtkSmartPointer<vtkPolyData>::New();
  dotted->SetPoints(points);
  dotted->SetVerts(dots);
  dotted->GetPointData()->SetScalars(edges);
  return dotted;
}
}

zvContourTool::zvContourTool(zvViewGrid* views, zvContourPanel* panel, zvEditBar* bar)
  : Views(views)
  , Panel(panel)
  , Bar(bar)
  , Kept{ { zvContourStack(0), zvContourStack(1), zvContourStack(2) } }
  , Shown(Kept)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->Contours[static_cast<std::size_t>(axis)] = std::make_unique<zvContourView>(
      views->GetSliceView(axis), views->GetVolumeView()->GetRenderer());
  }
  this->Walk.SetInBackground(true);
  this->Timer.setInterval(Pause);
  this->Connect();
  this->ApplyRing();
}

zvContourTool::~zvContourTool() = default;

void zvContourTool::Connect()
{
  connect(&this->Timer, &QTimer::timeout, this, &zvContourTool::Tick);
  connect(this->Views->GetLink(), &zvViewLink::moved, this, &zvContourTool::FollowSlices);
  for (const auto& contour : this->Contours)
  {
    const int axis = contour->GetView()->GetAxis();
    connect(contour.get(), &zvContourView::changed, this, [this, axis] { this->TakeChange(axis); });
    connect(contour->GetView(), &zvQVTKWidget::mouseEvent, this,
      [this, axis](QMouseEvent* event)
      {
        if (this->IsActive && !this->IsRunning() && event->type() == QEvent::MouseButtonPress)
        {
          this->WorkIn(axis);
        }
      });
  }
  connect(this->Panel, &zvContourPanel::startChosen, this, &zvContourTool::Start);
  connect(this->Panel, &zvContourPanel::stepChosen, this, &zvContourTool::Step);
  connect(this->Panel, &zvContourPanel::stopChosen, this, &zvContourTool::Stop);
  connect(this->Panel, &zvContourPanel::resetChosen, this, &zvContourTool::Reset);
  connect(this->Panel, &zvContourPanel::clearChosen, this, &zvContourTool::Clear);
  connect(this->Panel, &zvContourPanel::extentChosen, this, &zvContourTool::ApplyExtent);
  connect(this->Panel, &zvContourPanel::ringChosen, this, &zvContourTool::ApplyRing);
  connect(this->Panel, &zvContourPanel::gradientChosen, this, &zvContourTool::ApplyGradient);
  connect(this->Panel, &zvContourPanel::maskChosen, this, &zvContourTool::ShowMask);
  // One mask at a time: the labels take the place of this one.
  connect(this->Bar, &zvEditBar::maskChosen, this,
    [this]
    {
      if (this->Bar->IsMaskWanted() && this->Panel->IsMaskWanted())
      {
        this->Panel->ShowMaskWanted(false);
        this->Views->SetMask(nullptr, this->Bar->GetOpacity());
      }
    });
}

void zvContourTool::AddTo(zvToolSet* tools)
{
  zvTool tool;
  tool.Id = "contour";
  tool.Group = "segment";
  tool.Name = tr("Acti&ve contour");
  tool.ToolTip = tr("Place a ring in a slice view and let it move to an outline");
  tool.Hint = tr("click places a ring, drag moves it, middle drag resizes it; then Start");
  tool.Key = QKeySequence("K");
  tool.Icon = zvIcons::Make(tool.Id);
  tool.Activate = [this] { this->Activate(); };
  tool.Deactivate = [this] { this->Deactivate(); };
  tools->Add(tool);
}

void zvContourTool::Activate()
{
  this->IsActive = true;
  this->Panel->show();
  this->Panel->raise();
  this->Views->SetHand(zvSliceView::Hand::Contour);
  for (const auto& contour : this->Contours)
  {
    contour->SetVisible(this->IsUpright(contour->GetView()->GetAxis()));
    contour->SetInHand(true);
  }
  this->ShowState();
}

// The contours stay to be seen, out of reach of the mouse.
void zvContourTool::Deactivate()
{
  this->Stop();
  this->IsActive = false;
  for (const auto& contour : this->Contours)
  {
    contour->SetInHand(false);
  }
  this->Views->SetHand(zvSliceView::Hand::Cross);
}

//------------------------------------------------------------------------------
vtkImageData* zvContourTool::GetImage() const
{
  return this->Views->GetVolumeView()->GetVolume().Image;
}

bool zvContourTool::IsUpright(int axis) const
{
  constexpr int oblique = 3;
  return this->Views->GetSliceView(axis)->GetViewer()->GetPlaneOrientation() != oblique;
}

int zvContourTool::GetSlice(int axis) const
{
  return this->Views->GetSliceView(axis)->GetViewer()->GetSliceIndex();
}

bool zvContourTool::IsPausedHere() const
{
  return this->Walk.IsUnderWay() && this->Walk.GetPlane().GetAxis() == this->Axis &&
    this->Walk.GetPlane().GetSlice() == this->GetSlice(this->Axis);
}

void zvContourTool::Begin()
{
  this->Timer.stop();
  this->Walk.Clear();
  this->Before = Backup();
  this->Image = this->GetImage();
  zvInstanceManager::Instance()->SetCurrentOutput(this->Image);
  for (const auto& contour : this->Contours)
  {
    const int axis = contour->GetView()->GetAxis();
    this->Kept[static_cast<std::size_t>(axis)].Clear();
    this->Shown[static_cast<std::size_t>(axis)].Clear();
    contour->Clear();
    contour->SetPlane(zvContourPlane(this->Image, axis, this->GetSlice(axis)));
    contour->SetInHand(this->IsActive);
  }
  this->Axis = 2;
  this->Panel->ShowSlices(this->Image->GetDimensions()[this->Axis], true);
  this->Panel->ShowMaskWanted(false);
  this->Panel->ShowMessage(QString());
  this->Panel->ShowProgress(0.0);
  this->ShowState();
}

void zvContourTool::FollowSlices()
{
  // While a volume is being exchanged, there is nothing to follow.
  if (this->Image == nullptr || this->Image != this->GetImage())
  {
    return;
  }
  for (int axis = 0; axis < 3; ++axis)
  {
    this->FollowSlice(axis);
  }
  this->ShowState();
}

void zvContourTool::FollowSlice(int axis)
{
  zvContourView* contour = this->GetContourView(axis);
  if (!this->IsUpright(axis))
  {
    if (axis == this->Axis && this->IsRunning())
    {
      this->Timer.stop();
      this->Panel->ShowMessage(tr("Paused, since the planes have been turned."));
    }
    contour->SetVisible(false);
    contour->SetInHand(this->IsActive);
    return;
  }
  const int slice = this->GetSlice(axis);
  if (slice != contour->GetPlane().GetSlice())
  {
    contour->SetPlane(zvContourPlane(this->Image, axis, slice));
    const zvContour* there = this->Shown[static_cast<std::size_t>(axis)].Find(slice);
    contour->ShowContour(there != nullptr ? *there : zvContour());
    contour->ShowPrevious({});
    contour->ShowEdges(vtkNew<vtkPolyData>());
    contour->ShowEdgesAtContour(vtkNew<vtkPolyData>());
    if (axis == this->Axis && this->IsPausedHere())
    {
      this->EnterSlice();
    }
  }
  const bool isThere = !this->Shown[static_cast<std::size_t>(axis)].IsEmpty();
  contour->SetVisible(this->IsActive || isThere);
}

// In another view than the one that the contour moves in this may be at any time.
void zvContourTool::TakeChange(int axis)
{
  this->WorkIn(axis);
  const zvContour contour = this->GetContourView(axis)->ReadContour();
  const int slice = this->GetContourView(axis)->GetPlane().GetSlice();
  const auto at = static_cast<std::size_t>(axis);
  this->Shown[at].Set(slice, contour);
  // One that was at rest is now where the user wants it.
  if (this->Kept[at].Find(slice) != nullptr)
  {
    this->Kept[at].Set(slice, contour);
  }
  this->ShowState();
}

void zvContourTool::WorkIn(int axis)
{
  if (axis != this->Axis && !this->IsRunning())
  {
    this->Axis = axis;
    this->Panel->ShowSlices(this->Image->GetDimensions()[axis], true);
  }
  this->ShowState();
}

void zvContourTool::ApplyExtent()
{
  this->Walk.Clear();
  for (const auto& contour : this->Contours)
  {
    contour->SetInVolume(this->Panel->IsInVolume());
    contour->SetInHand(this->IsActive);
  }
  this->ShowStack(true);
  this->ShowState();
}

void zvContourTool::ApplyRing()
{
  for (const auto& contour : this->Contours)
  {
    contour->SetRing(this->Panel->GetRingRadius(), this->Panel->GetPointCount());
  }
}

void zvContourTool::ApplyGradient()
{
  for (const auto& contour : this->Contours)
  {
    contour->SetGradient(this->Panel->GetGradient());
    contour->GetView()->interactor()->Render();
  }
}

//------------------------------------------------------------------------------
void zvContourTool::Start()
{
  this->Run(-1);
}

void zvContourTool::Step()
{
  this->Run(1);
}

void zvContourTool::Run(int steps)
{
  if (this->IsRunning() || this->Image == nullptr)
  {
    return;
  }
  if (!this->IsUpright(this->Axis))
  {
    this->Panel->ShowMessage(tr("The planes are turned. Make them orthogonal first."));
    return;
  }
  if (this->IsPausedHere())
  {
    this->Walk.Resume(this->GetContour().ReadContour(), this->Panel->GetParameters());
  }
  else if (!this->BeginWalk())
  {
    return;
  }
  this->StepsLeft = steps;
  this->GetContour().SetInHand(false);
  this->Timer.start();
  this->ShowState();
}

bool zvContourTool::BeginWalk()
{
  const zvContourView& view = this->GetContour();
  const zvContour contour = view.ReadContour();
  if (contour.empty())
  {
    this->Panel->ShowMessage(tr("There is no contour in this slice. Click into it to place one."));
    return false;
  }
  this->StartSlice = view.GetPlane().GetSlice();
  this->Before = { this->Axis, this->StartSlice, this->KeptHere(), this->ShownHere() };
  const std::size_t count = view.GetResolution();
  this->Walk.Begin(this->Image, view.GetPlane(),
    contour.size() == count ? contour : zvContourMath::Resample(contour, count),
    this->Panel->GetParameters());
  return true;
}

// A little of the walk, and then its picture.
void zvContourTool::Tick()
{
  const int most = this->StepsLeft >= 0 ? this->StepsLeft
    : this->Panel->IsInVolume()         ? std::numeric_limits<int>::max()
                                        : StepsPerTick;
  QElapsedTimer clock;
  clock.start();
  zvContourWalk::Event event = zvContourWalk::Event::Moved;
  for (int steps = 0; steps < most && clock.elapsed() < Budget;)
  {
    const int slice = this->Walk.GetPlane().GetSlice();
    event = this->Walk.Step();
    if (event == zvContourWalk::Event::Waiting)
    {
      return;
    }
    this->Take(event, slice);
    if (event == zvContourWalk::Event::Ended || event == zvContourWalk::Event::Idle)
    {
      this->End();
      return;
    }
    const bool isStep = event != zvContourWalk::Event::Entered;
    steps += isStep ? 1 : 0;
    this->StepsLeft -= isStep && this->StepsLeft > 0 ? 1 : 0;
  }
  this->ShowWalk();
  if (this->StepsLeft == 0)
  {
    this->Stop();
  }
}

void zvContourTool::Take(zvContourWalk::Event event, int slice)
{
  switch (event)
  {
    case zvContourWalk::Event::Entered:
      this->VisitSlice(false);
      break;
    case zvContourWalk::Event::Kept:
    case zvContourWalk::Event::Left:
    case zvContourWalk::Event::Ended:
      this->TakeSlice(slice);
      break;
    default:
      break;
  }
}

// A slice is done. Where nothing came of it there is again what was there before.
void zvContourTool::TakeSlice(int slice)
{
  if (const zvContour* kept = this->Walk.GetStack().Find(slice))
  {
    this->KeptHere().Set(slice, *kept);
    this->ShownHere().Set(slice, *kept);
    return;
  }
  const zvContour* before = this->Before.Shown.Find(slice);
  this->ShownHere().Set(slice, before != nullptr ? *before : zvContour());
}

// Let the view go to the walk's slice, on the way not for each.
void zvContourTool::VisitSlice(bool isDue)
{
  const int slice = this->Walk.GetPlane().GetSlice();
  if (this->GetSlice(this->Axis) == slice)
  {
    this->EnterSlice();
    return;
  }
  if (isDue || !this->Visited.isValid() || this->Visited.elapsed() > FollowDelay)
  {
    this->Views->GoTo(this->Axis, slice);
    this->Visited.start();
  }
}

// What stays as it is while the contour moves in a slice.
void zvContourTool::EnterSlice()
{
  zvContourView& view = this->GetContour();
  view.ShowPrevious(this->Walk.GetPrevious());
  if (const zvContourForces* forces = this->Walk.GetForces())
  {
    const zvContourPlane& plane = this->Walk.GetPlane();
    view.ShowEdges(forces->MakeEdgePoints(plane, MostEdges, view.GetLift(EdgeLift)));
  }
}

void zvContourTool::ShowWalk()
{
  const zvContourPlane& plane = this->Walk.GetPlane();
  zvContourView& view = this->GetContour();
  this->Panel->ShowProgress(this->Walk.GetProgress());
  this->Panel->ShowMessage(
    tr("Slice %1, step %2").arg(plane.GetSlice()).arg(this->Walk.GetStepCount()));
  this->ShowStack(false);
  if (view.GetPlane().GetSlice() != plane.GetSlice())
  {
    return;
  }
  this->ShownHere().Set(plane.GetSlice(), this->Walk.GetContour());
  view.ShowContour(this->Walk.GetContour());
  if (const zvContourForces* forces = this->Walk.GetForces())
  {
    view.ShowEdgesAtContour(
      MakeEdgesAt(this->Walk.GetContour(), *forces, plane, view.GetLift(EdgeLift)));
  }
  view.GetView()->interactor()->Render();
}

// All that rests, and what is on its way; while it is, not every time.
void zvContourTool::ShowStack(bool isDue)
{
  if (!isDue && this->Stacked.isValid() && this->Stacked.elapsed() < StackDelay)
  {
    return;
  }
  this->Stacked.start();
  zvContourStack all = this->KeptHere();
  if (this->Walk.IsUnderWay())
  {
    all.Set(this->Walk.GetPlane().GetSlice(), this->Walk.GetContour());
  }
  this->GetContour().ShowStack(all.ToPolyData(this->Image));
  this->Views->GetVolumeView()->interactor()->Render();
}

void zvContourTool::Stop()
{
  if (!this->IsRunning())
  {
    return;
  }
  this->Timer.stop();
  this->VisitSlice(true);
  this->ShowWalk();
  this->ShowStack(true);
  this->GetContour().SetInHand(this->IsActive);
  this->ShowState();
}

void zvContourTool::End()
{
  this->Timer.stop();
  this->Views->GoTo(this->Axis, this->StartSlice);
  this->ShowSlice();
  this->ShowStack(true);
  this->GetContour().SetInHand(this->IsActive);
  this->Panel->ShowProgress(this->Walk.GetProgress());
  this->Panel->ShowMessage(this->Describe());
  this->ShowMaskAgain();
  this->ShowState();
  emit ended();
}

// The contour of the present slice, as it is known.
void zvContourTool::ShowSlice()
{
  zvContourView& view = this->GetContour();
  const zvContour* there = this->ShownHere().Find(view.GetPlane().GetSlice());
  view.ShowContour(there != nullptr ? *there : zvContour());
  view.GetView()->interactor()->Render();
}

QString zvContourTool::Describe() const
{
  QStringList lines;
  const zvContourStack& found = this->Walk.GetStack();
  const double* spacing = this->Image->GetSpacing();
  double area = 0.0;
  for (const auto& [slice, contour] : found.GetContours())
  {
    area += zvContourMath::GetArea(contour);
  }
  if (found.GetCount() == 1)
  {
    lines += tr("%1 mm\u00b2 after %2 steps.").arg(area, 0, 'f', 1).arg(this->Walk.GetStepCount());
  }
  else if (found.GetCount() > 1)
  {
    constexpr double cubicMillimetresPerMillilitre = 1000.0;
    const double volume = area * spacing[this->Axis] / cubicMillimetresPerMillilitre;
    lines += tr("%1 slices, %2 ml.").arg(found.GetCount()).arg(volume, 0, 'f', 1);
  }
  for (const std::string& note : this->Walk.GetNotes())
  {
    lines += QString::fromStdString(note);
  }
  return lines.join('\n');
}

void zvContourTool::Reset()
{
  if (this->IsRunning() || this->Before.Axis < 0)
  {
    return;
  }
  if (!this->IsUpright(this->Before.Axis))
  {
    this->Panel->ShowMessage(tr("The planes are turned. Make them orthogonal first."));
    return;
  }
  this->Walk.Clear();
  this->Axis = this->Before.Axis;
  this->KeptHere() = this->Before.Kept;
  this->ShownHere() = this->Before.Shown;
  this->Before.Axis = -1;
  this->Views->GoTo(this->Axis, this->Before.Slice);
  this->ShowAgain(tr("As it was before."));
}

void zvContourTool::Clear()
{
  if (this->IsRunning() || this->Image == nullptr)
  {
    return;
  }
  this->Before = { this->Axis, this->GetSlice(this->Axis), this->KeptHere(), this->ShownHere() };
  this->Walk.Clear();
  this->KeptHere().Clear();
  this->ShownHere().Clear();
  this->GetContour().Clear();
  this->GetContour().SetInHand(this->IsActive);
  this->ShowAgain(QString());
}

void zvContourTool::ShowAgain(const QString& message)
{
  this->GetContour().ShowPrevious({});
  this->ShowSlice();
  this->ShowStack(true);
  this->Panel->ShowProgress(0.0);
  this->Panel->ShowMessage(message);
  this->ShowMaskAgain();
  this->ShowState();
}

//------------------------------------------------------------------------------
void zvContourTool::ShowState()
{
  using State = zvContourPanel::State;
  State state = State::Away;
  if (this->Image != nullptr)
  {
    const int slice = this->GetContour().GetPlane().GetSlice();
    const QString name = this->GetContour().GetView()->GetName();
    const bool isThere = this->ShownHere().Find(slice) != nullptr;
    this->Panel->ShowPlace(isThere
        ? tr("%1, slice %2").arg(name).arg(slice)
        : tr("%1, slice %2: no contour yet, click to place one").arg(name).arg(slice));
    state = this->IsRunning() ? State::Running
      : this->IsPausedHere()  ? State::Paused
      : isThere               ? State::Ready
                              : State::Empty;
  }
  this->Panel->ShowState(state, this->Before.Axis >= 0);
}

void zvContourTool::ShowMaskAgain()
{
  if (this->Panel->IsMaskWanted())
  {
    this->ShowMask();
  }
}

void zvContourTool::ShowMask()
{
  if (!this->Panel->IsMaskWanted() || this->Image == nullptr)
  {
    this->Views->SetMask(nullptr, this->Bar->GetOpacity());
    return;
  }
  const auto mask = this->KeptHere().MakeMask(this->Image);
  if (mask == nullptr)
  {
    this->Panel->ShowMessage(tr("No contour has come to rest yet: there is no mask."));
  }
  this->Bar->GetMaskAction()->setChecked(false);
  this->Bar->GetOpacitySlider()->setEnabled(true);
  this->Views->SetMask(mask, this->Bar->GetOpacity());
}
