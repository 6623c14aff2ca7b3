#include "zvVolumeSnakeWidget.h"

#include "zvContourRing.h"
#include "zvCurveParts.h"
#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvEvents.h"
#include "zvHandleCurve.h"
#include "zvInstanceManager.h"
#include "zvMessages.h"
#include "zvNumbers.h"
#include "zvPolyDataActor.h"
#include "zvUtils.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkImageData.h"
#include "vtkLookupTable.h"
#include "vtkMapper.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cmath>

namespace
{
using zvHandleCurve::Position;
using zvHandleCurve::Positions;

constexpr double PickTolerance = 0.05; // of the window's diagonal: contours are to be caught easily
constexpr int LineSegments = 100;
constexpr double ContourPointSize = 3.0;
constexpr double PreviousColor[3] = { 255.0, 255.0, 0.0 };
constexpr double FrozenColor[3] = { 0.0, 0.0, 255.0 };
constexpr double Blue = 0.667; // hues
constexpr double Red = 0.0;

// The values of ViewGradient that show one.
enum GradientView
{
  Live = 1,
  Frozen = 2
};

double DistanceBetween(const double* a, const double* b)
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(a, b));
}

double MeanDistance(const Positions& positions, const double center[3])
{
  double sum = 0.0;
  for (const Position& position : positions)
  {
    sum += DistanceBetween(position.data(), center);
  }
  return sum / static_cast<double>(positions.size());
}
}

vtkObjectFactoryNewMacro(zvVolumeSnakeWidget);

vtkObject* vtkInstantiatorzvVolumeSnakeWidgetNew()
{
  return zvVolumeSnakeWidget::New();
}

zvVolumeSnakeWidget::zvVolumeSnakeWidget()
  : Snake(vtkSmartPointer<vtkPolyData>::New())
  , PrevSnake(vtkSmartPointer<vtkPolyData>::New())
  , Snakes3D(vtkSmartPointer<vtkPolyData>::New())
  , Gradient(vtkSmartPointer<vtkPolyData>::New())
  , FreezeGradient(vtkSmartPointer<vtkPolyData>::New())
{
  this->Interaction = true;
  this->EventCallbackCommand->SetCallback(zvVolumeSnakeWidget::ProcessEvents);
  this->Resolution = LineSegments;
  this->ParametricFunctionSource->SetUResolution(LineSegments);
  this->HandlePicker->SetTolerance(PickTolerance);
  this->HandlePicker->PickFromListOn();
  this->HandlePicker->AddPickList(this->SnakeActor);
}

zvVolumeSnakeWidget::~zvVolumeSnakeWidget()
{
  this->LeaveViews();
  // Disabling has left these two behind; the parent knows no renderer any more.
  zvViewLookup::TakeOut(this->LineActor);
  zvViewLookup::TakeOut(this->HandleActor);
}

void zvVolumeSnakeWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
}

void zvVolumeSnakeWidget::CollectRevisions(ostream& os)
{
  this->Superclass::CollectRevisions(os);
  os << "zvVolumeSnakeWidget $Revision: 1.2 $\n";
}

void zvVolumeSnakeWidget::SetEnabled(int enabling)
{
  if (!this->Interactor)
  {
    vtkErrorMacro("The interactor must be set prior to enabling/disabling widget");
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (enabling && !this->Enabled)
  {
    this->Show();
  }
  else if (!enabling && this->Enabled)
  {
    this->Hide();
  }
}

void zvVolumeSnakeWidget::SetResolution(int resolution)
{
  zvTraceMacro("void zvVolumeSnakeWidget::SetResolution(int arg)");
  this->SnakeResolution = resolution;
}

int zvVolumeSnakeWidget::GetResolution()
{
  zvTraceMacro("void zvVolumeSnakeWidget::GetResolution()");
  return this->SnakeResolution;
}

void zvVolumeSnakeWidget::SetRadius(double radius)
{
  zvTraceMacro("void zvVolumeSnakeWidget::SetRadius(double arg)");
  this->Radius = radius;
}

double zvVolumeSnakeWidget::GetRadius()
{
  zvTraceMacro("double zvVolumeSnakeWidget::GetRadius()");
  return this->Radius;
}

void zvVolumeSnakeWidget::SetCenter(double* center)
{
  zvTraceMacro("zvVolumeSnakeWidget::SetCenter(double *center)");
  if (!center)
  {
    vtkGenericWarningMacro("set a center of three values...");
    return;
  }
  std::copy_n(center, 3, this->Center);
}

double* zvVolumeSnakeWidget::GetCenter()
{
  zvTraceMacro("double * zvVolumeSnakeWidget::GetCenter()");
  return this->Center;
}

void zvVolumeSnakeWidget::SetColor(double* color)
{
  if (!color)
  {
    vtkGenericWarningMacro("set a color of three values...");
    return;
  }
  this->SetColor(color[0], color[1], color[2]);
}

void zvVolumeSnakeWidget::SetColor(double red, double green, double blue)
{
  this->Color[0] = red;
  this->Color[1] = green;
  this->Color[2] = blue;
  zvPolyDataActor::SetColor(this->SnakeActor, this->Color);
}

void zvVolumeSnakeWidget::GetColor(double* color)
{
  if (color)
  {
    std::copy_n(this->Color, 3, color);
  }
}

void zvVolumeSnakeWidget::SetGradientPointSize(double size)
{
  this->GradientPointSize = size;
}

double zvVolumeSnakeWidget::GetGradientPointSize()
{
  return this->GradientPointSize;
}

void zvVolumeSnakeWidget::SetGradient(vtkPolyData* gradient)
{
  zvTraceMacro("zvVolumeSnakeWidget::SetGradient(vtkPolyData *gradient)");
  if (!gradient)
  {
    vtkGenericWarningMacro("set poly data for the gradient...");
    return;
  }
  zvPolyDataActor::Copy(this->Gradient, gradient);
  vtkNew<vtkLookupTable> table;
  table->SetHueRange(Blue, Red);
  table->Build();
  zvPolyDataActor::Draw(this->GradientActor, this->Gradient);
  this->GradientActor->GetMapper()->SetLookupTable(table);
}

vtkPolyData* zvVolumeSnakeWidget::GetGradient()
{
  zvTraceMacro("vtkPolyData *zvVolumeSnakeWidget::GetGradient()");
  return this->Gradient;
}

void zvVolumeSnakeWidget::SetFreezeGradient(vtkPolyData* gradient)
{
  zvTraceMacro("zvVolumeSnakeWidget::SetFreezeGradient(vtkPolyData *gradient)");
  if (!gradient)
  {
    vtkGenericWarningMacro("set poly data for the frozen gradient...");
    return;
  }
  zvPolyDataActor::Copy(this->FreezeGradient, gradient);
  zvPolyDataActor::SetColor(this->FreezeGradientActor, FrozenColor, this->GradientPointSize);
  zvPolyDataActor::Draw(this->FreezeGradientActor, this->FreezeGradient);
  // One colour, also for a copy of the live gradient with its scalars.
  this->FreezeGradientActor->GetMapper()->ScalarVisibilityOff();
}

vtkPolyData* zvVolumeSnakeWidget::GetFreezeGradient()
{
  zvTraceMacro("vtkPolyData *zvVolumeSnakeWidget::GetFreezeGradient()");
  return this->FreezeGradient;
}

void zvVolumeSnakeWidget::SetSnake(vtkPolyData* snake)
{
  zvTraceMacro("zvVolumeSnakeWidget::SetSnake(vtkPolyData *snake)");
  if (!snake)
  {
    vtkGenericWarningMacro("set poly data for the contour...");
    return;
  }
  zvPolyDataActor::Copy(this->Snake, snake);
  zvPolyDataActor::SetColor(this->SnakeActor, this->Color, ContourPointSize);
  zvPolyDataActor::Draw(this->SnakeActor, this->Snake);
}

vtkPolyData* zvVolumeSnakeWidget::GetSnake()
{
  zvTraceMacro("vtkPolyData *zvVolumeSnakeWidget::GetSnake()");
  return this->Snake;
}

void zvVolumeSnakeWidget::SetPrevSnake(vtkPolyData* snake)
{
  zvTraceMacro("zvVolumeSnakeWidget::SetPrevSnake(vtkPolyData *snake)");
  if (!snake)
  {
    vtkGenericWarningMacro("set poly data for the previous contour...");
    return;
  }
  zvPolyDataActor::Copy(this->PrevSnake, snake);
  zvPolyDataActor::SetColor(this->PrevSnakeActor, PreviousColor, ContourPointSize);
  zvPolyDataActor::Draw(this->PrevSnakeActor, this->PrevSnake);
}

vtkPolyData* zvVolumeSnakeWidget::GetPrevSnake()
{
  zvTraceMacro("vtkPolyData *zvVolumeSnakeWidget::GetPrevSnake()");
  return this->PrevSnake;
}

void zvVolumeSnakeWidget::SetRenderer3D(vtkRenderer* render)
{
  zvTraceMacro("void zvVolumeSnakeWidget::SetRenderer3D(vtkRenderer *render)");
  this->Renderer3D = render;
}

vtkRenderer* zvVolumeSnakeWidget::GetRenderer3D()
{
  zvTraceMacro("vtkRenderer * zvVolumeSnakeWidget::GetRenderer3D()");
  return this->Renderer3D;
}

void zvVolumeSnakeWidget::SetSnakes3D(vtkPolyData* snakes)
{
  zvTraceMacro("void zvVolumeSnakeWidget::SetSnakes3D(vtkPolyData *snake)");
  if (!snakes)
  {
    vtkGenericWarningMacro("set poly data for the 3D contours...");
    return;
  }
  zvPolyDataActor::Copy(this->Snakes3D, snakes);
  zvPolyDataActor::SetColor(this->Snakes3DActor, this->Color);
  zvPolyDataActor::Draw(this->Snakes3DActor, this->Snakes3D);
}

void zvVolumeSnakeWidget::CreateInitialSnake()
{
  zvTraceMacro("void zvVolumeSnakeWidget::CreateInitialSnake()");
  const auto ring = zvContourRing::Make(
    this->Center, this->Radius, this->SnakeResolution, zvContourRing::Trigonometry::Single);
  if (!ring)
  {
    vtkGenericWarningMacro("set a resolution from 2 to 8388608 points...");
    return;
  }
  this->SetSnake(ring);
  this->SetPrevSnake(ring);
}

void zvVolumeSnakeWidget::Reset()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->SetEnabled(0);
  for (auto* own :
    { &this->Snake, &this->PrevSnake, &this->Snakes3D, &this->Gradient, &this->FreezeGradient })
  {
    *own = vtkSmartPointer<vtkPolyData>::New();
  }
  // The actors still draw the former ones.
  this->SetSnake(this->Snake);
  this->SetPrevSnake(this->PrevSnake);
  this->SetGradient(this->Gradient);
  this->SetFreezeGradient(this->FreezeGradient);
  this->SetSnakes3D(this->Snakes3D);
}

void zvVolumeSnakeWidget::SetViewGradient(int view)
{
  this->ViewGradient = view;
  this->ShowGradient(view);
}

int zvVolumeSnakeWidget::GetViewGradient()
{
  return this->ViewGradient;
}

void zvVolumeSnakeWidget::EnableViewGradient(bool enable)
{
  this->ShowGradient(enable ? this->ViewGradient : 0);
}

double zvVolumeSnakeWidget::GetZCoordinate()
{
  return this->ZCoordinate;
}

void zvVolumeSnakeWidget::SetZCoordinate(double z)
{
  if (z != this->ZCoordinate)
  {
    this->ZCoordinate = z;
    this->Modified();
  }
}

void zvVolumeSnakeWidget::SphereHandleVisibilityOn()
{
  this->SphereHandleVisibility = true;
}

void zvVolumeSnakeWidget::SphereHandleVisibilityOff()
{
  this->SphereHandleVisibility = false;
}

void zvVolumeSnakeWidget::AddHandle(double* pos)
{
  if (!pos)
  {
    vtkGenericWarningMacro("give the handle a position...");
    return;
  }
  // To be enabled by it may lead an observer to release the widget.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->NumberOfHandles > 1 && this->Pick(this->HandlePicker))
  {
    this->CurrentHandleIndex = this->HighlightHandle();
    if (this->CurrentHandleIndex == 0)
    {
      this->ClosedOn();
      this->Closed = 1;
      this->State = Start;
      this->SetEnabled(1);
    }
    this->CurrentHandleIndex = this->HighlightHandle();
    return;
  }
  this->AppendHandle(pos);
  this->SizeHandles();
  this->HighlightHandle();
  zvViewLookup::Render(this->Interactor);
}

void zvVolumeSnakeWidget::Translate(double* p1, double* p2)
{
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before moving the contour...");
    return;
  }
  const Position motion = zvCurveParts::MotionBetween(p1, p2);
  if (!zvNumbers::AreFinite(motion.data()))
  {
    return;
  }
  Positions points = this->ReadMovedPoints();
  zvHandleCurve::Translate(points, motion);
  vtkMath::Add(this->Center, motion.data(), this->Center);
  this->WriteMovedPoints(points);
}

void zvVolumeSnakeWidget::Scale(double* p1, double* p2, int vtkNotUsed(X), int Y)
{
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before scaling the contour...");
    return;
  }
  if (!this->Interactor)
  {
    vtkGenericWarningMacro("set interactor before scaling the contour...");
    return;
  }
  Positions points = this->ReadMovedPoints();
  if (points.empty())
  {
    return;
  }
  Position centroid;
  zvUtils::CalculateCentroid(this->Snake, centroid.data());
  const double part = DistanceBetween(p1, p2) / MeanDistance(points, centroid.data());
  this->SetRadius(DistanceBetween(this->Center, points.front().data()));
  if (!std::isfinite(part))
  {
    return;
  }
  const bool shrink = this->Interactor->GetLastEventPosition()[1] >= Y;
  zvHandleCurve::ScaleAbout(points, centroid, shrink ? 1.0 - part : 1.0 + part);
  this->WriteMovedPoints(points);
}

void zvVolumeSnakeWidget::OnLeftButtonDown()
{
  if (!this->Interaction)
  {
    return;
  }
  this->CurveGrabbed = false;
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  const bool hit = this->Pick(this->HandlePicker);
  if (this->Snake->GetNumberOfPoints() == 0)
  {
    this->State = Start;
    this->StartContour();
    return;
  }
  if (!hit)
  {
    this->State = Outside;
    return;
  }
  this->State = Moving;
  this->BeginInteraction();
}

void zvVolumeSnakeWidget::OnMiddleButtonDown()
{
  if (!this->Interaction)
  {
    return;
  }
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (!this->Pick(this->HandlePicker))
  {
    this->State = Outside;
    this->HighlightLine(0);
    this->CurveGrabbed = false;
    return;
  }
  this->State = Scaling;
  this->BeginInteraction();
}

void zvVolumeSnakeWidget::OnRightButtonDown()
{
  if (!this->Interaction)
  {
    return;
  }
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  // Deliberate: without a pick, this button resizes from anywhere.
  this->State = Scaling;
  this->BeginInteraction();
}

void zvVolumeSnakeWidget::OnMouseMove()
{
  double previous[3];
  double current[3];
  if (!this->Interaction || this->State == Start || this->State == Outside ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current))
  {
    return;
  }
  const int* position = this->Interactor->GetEventPosition();
  switch (this->State)
  {
    case Moving:
      this->Translate(previous, current);
      break;
    case Scaling:
      this->Scale(previous, current, position[0], position[1]);
      break;
    case Spinning:
      this->Spin(previous, current, this->CurrentRenderer->GetActiveCamera()->GetViewPlaneNormal());
      break;
    default:
      break;
  }
  this->FollowMotion();
  this->TellMotion();
}

void zvVolumeSnakeWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvVolumeSnakeWidget> self = static_cast<zvVolumeSnakeWidget*>(clientdata);
  zvDispatch::ToHandler(self.GetPointer(), event);
}

void zvVolumeSnakeWidget::Show()
{
  if (!zvViewLookup::Choose(this->CurrentRenderer, this->Interactor))
  {
    return;
  }
  if (!this->Renderer3D)
  {
    vtkGenericWarningMacro("set the 3D renderer before enabling...");
    return;
  }
  this->TakePokedRenderer();
  this->Enabled = 1;
  // The second attaches the observers, once, whatever Interaction was.
  this->SetInteraction(false);
  this->SetInteraction(true);
  this->ShowActor(this->LineActor, this->LineProperty);
  if (this->SphereHandleVisibility)
  {
    this->ShowActor(this->HandleActor, this->HandleProperty);
  }
  this->CurrentRenderer->AddViewProp(this->SnakeActor);
  this->CurrentRenderer->AddViewProp(this->PrevSnakeActor);
  this->EnableViewGradient(true);
  this->Renderer3D->AddActor(this->Snakes3DActor);
  this->BuildRepresentation();
  this->SizeHandles();
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvVolumeSnakeWidget::Hide()
{
  this->Enabled = 0;
  this->RemoveObservers();
  // Deliberate: line and handles stay in the view, hosts show the spline on.
  this->LeaveViews();
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  if (!this->Enabled) // an observer may have enabled it again
  {
    this->SetCurrentRenderer(nullptr);
  }
  zvViewLookup::Render(this->Interactor);
}

// Also renderers that were set in between, or are not the ones set now.
void zvVolumeSnakeWidget::LeaveViews()
{
  for (vtkActor* actor : { this->SnakeActor.Get(), this->PrevSnakeActor.Get(),
         this->GradientActor.Get(), this->FreezeGradientActor.Get(), this->Snakes3DActor.Get() })
  {
    zvViewLookup::TakeOut(actor);
  }
}

void zvVolumeSnakeWidget::ShowGradient(int view)
{
  if (!this->CurrentRenderer)
  {
    return;
  }
  const auto show = [this](vtkActor* actor, bool on)
  { on ? this->CurrentRenderer->AddActor(actor) : this->CurrentRenderer->RemoveActor(actor); };
  show(this->FreezeGradientActor, view == Frozen);
  show(this->GradientActor, view == Live);
}

void zvVolumeSnakeWidget::StartContour()
{
  vtkImageData* image = zvInstanceManager::Instance()->GetCurrentOutput();
  if (!image)
  {
    vtkGenericWarningMacro("set the current image before starting a contour...");
    return;
  }
  double position[3];
  this->HandlePicker->GetPickPosition(position);
  this->SetCenter(position);
  double spacing[3];
  image->GetSpacing(spacing);
  this->SetRadius(spacing[0] + spacing[1]);
  this->CreateInitialSnake();
}

Positions zvVolumeSnakeWidget::ReadMovedPoints()
{
  return zvHandleCurve::Read(this->Snake->GetPoints(), this->SnakeResolution);
}

void zvVolumeSnakeWidget::WriteMovedPoints(const Positions& positions)
{
  if (!positions.empty())
  {
    zvHandleCurve::Write(positions, this->Snake->GetPoints());
  }
  this->Snake->Modified();
}
