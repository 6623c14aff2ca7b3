#include "zvSnakeWidget.h"

#include "zvContourRing.h"
#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvEvents.h"
#include "zvFourViews.h"
#include "zvInstanceManager.h"
#include "zvLengthLabel.h"
#include "zvMessages.h"
#include "zvNumbers.h"
#include "zvObservedSubjects.h"
#include "zvPick.h"
#include "zvPolyDataActor.h"
#include "zvRawView.h"
#include "zvUtils.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkFollower.h"
#include "vtkImageData.h"
#include "vtkMapper.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkPicker.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkVectorText.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double PickTolerance = 0.0005; // of the window's diagonal
constexpr double GradientColor[3] = { 0.0, 0.0, 255.0 };
constexpr double FirstLabelScale = 1.7; // of a letter, in sizes of a handle
constexpr double LabelScale = 1.5;
constexpr double LabelDepth = 0.5;        // below the ring, in millimetres
constexpr double MotionDepth = 0.0;       // display depth of drags: that of the near plane
constexpr double SmallestRadius = 1000.0; // how many fit into the image's smaller side
constexpr int MovesRing = 2;              // the value of MotionMode

bool GetImageBounds(double bounds[6])
{
  return zvFourViews::GetBounds(zvInstanceManager::Instance()->GetCurrentOutput(), bounds);
}
}

vtkObjectFactoryNewMacro(zvSnakeWidget);

vtkObject* vtkInstantiatorzvSnakeWidgetNew()
{
  return zvSnakeWidget::New();
}

zvSnakeWidget::zvSnakeWidget()
  : RawView(std::make_unique<zvRawView>(this,
      zvRawView::Fields{
        this->CurrentRenderer, this->Interactor, this->CharObserverTag, this->DeleteObserverTag }))
{
  this->Interaction = true;
  this->EventCallbackCommand->SetCallback(zvSnakeWidget::ProcessEvents);
  std::fill_n(this->LastPickPosition, 3, 0.0); // the depth at which the label is sized
  std::fill_n(this->InitialBounds, 6, 0.0);    // a snake is never placed
  this->InitialLength = 1.0;
  this->SnakePicker->SetTolerance(PickTolerance);
  this->SnakePicker->AddPickList(this->SnakeActor);
  this->SnakePicker->PickFromListOn();
  zvLengthLabel::Build(this->AreaText, this->AreaActor);
  this->AreaActor->GetProperty()->SetColor(this->Color);
  zvLengthLabel::SetSize(this->AreaActor, this->vtk3DWidget::SizeHandles(1.0) * FirstLabelScale);
}

zvSnakeWidget::~zvSnakeWidget()
{
  zvTraceMacro("zvSnakeWidget::~zvSnakeWidget()");
  if (this->Interactor)
  {
    this->zvSnakeWidget::SetEnabled(0);
  }
  zvObservedSubjects::Release(this->Observed, this->EventCallbackCommand);
  this->LeaveViews(); // the label is shown by a widget that is not enabled, too
}

void zvSnakeWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  zvTraceMacro("zvSnakeWidget::PrintSelf(ostream& os, vtkIndent indent)");
  // Deliberate: without the lines of zvWidgets.
  this->vtk3DWidget::PrintSelf(os, indent);
}

void zvSnakeWidget::CollectRevisions(ostream& os)
{
  os << "zvSnakeWidget $Revision: 1.2 $\n";
}

void zvSnakeWidget::SetEnabled(int enabling)
{
  zvTraceMacro("void zvSnakeWidget::SetEnabled(int enabling)");
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

void zvSnakeWidget::PlaceWidget(double vtkNotUsed(bounds)[6])
{
  zvTraceMacro("void zvSnakeWidget::PlaceWidget(double bds[6])");
}

void zvSnakeWidget::PlaceWidget()
{
  this->PlaceWidget(0.0, 0.0, 0.0, 0.0, 0.0, 0.0);
}

void zvSnakeWidget::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  double bounds[6] = { xmin, xmax, ymin, ymax, zmin, zmax };
  this->PlaceWidget(bounds);
}

void zvSnakeWidget::AddObservers()
{
  zvTraceMacro("zvSnakeWidget::AddObservers(void)");
  if (!this->Interactor)
  {
    vtkGenericWarningMacro("set interactor before adding observers...");
    return;
  }
  zvEvents::Observe(this->Interactor, zvEvents::Handle, this->EventCallbackCommand, this->Priority);
  zvObservedSubjects::Add(this->Observed, this->Interactor);
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
}

void zvSnakeWidget::SetCurrentRender(vtkRenderer* render)
{
  zvTraceMacro("zvSnakeWidget::SetCurrentRender(vtkRenderer *render)");
  if (!this->RawView->Write(render))
  {
    vtkGenericWarningMacro("set a renderer that is in a render window...");
  }
}

vtkRenderer* zvSnakeWidget::GetCurrentRender()
{
  zvTraceMacro("zvSnakeWidget::GetCurrentRender()");
  return this->CurrentRenderer;
}

void zvSnakeWidget::SetCurrentRenderer(vtkRenderer* renderer)
{
  this->RawView->ReleaseRenderer();
  this->Superclass::SetCurrentRenderer(renderer);
}

void zvSnakeWidget::SetRenderer3D(vtkRenderer* render)
{
  zvTraceMacro("void zvSnakeWidget::SetRenderer3D(vtkRenderer *render)");
  this->Renderer3D = render;
}

vtkRenderer* zvSnakeWidget::GetRenderer3D()
{
  zvTraceMacro("vtkRenderer * zvSnakeWidget::GetRenderer3D()");
  return this->Renderer3D;
}

void zvSnakeWidget::SetCenter(double* center)
{
  zvTraceMacro("zvSnakeWidget::SetCenter(double *center)");
  if (!center)
  {
    vtkGenericWarningMacro("set a center of three values...");
    return;
  }
  std::copy_n(center, 3, this->Center);
}

double* zvSnakeWidget::GetCenter()
{
  zvTraceMacro("double * zvSnakeWidget::GetCenter()");
  return this->Center;
}

void zvSnakeWidget::SetRadius(double radius)
{
  zvTraceMacro("void zvSnakeWidget::SetRadius(double arg)");
  this->Radius = radius;
}

double zvSnakeWidget::GetRadius()
{
  zvTraceMacro("double zvSnakeWidget::GetRadius()");
  return this->Radius;
}

void zvSnakeWidget::SetResolution(int resolution)
{
  zvTraceMacro("void zvSnakeWidget::SetResolution(int arg)");
  this->Resolution = resolution;
}

int zvSnakeWidget::GetResolution()
{
  zvTraceMacro("void zvSnakeWidget::GetResolution()");
  return this->Resolution;
}

int zvSnakeWidget::GetState()
{
  zvTraceMacro("int zvSnakeWidget::GetState()");
  return this->State;
}

void zvSnakeWidget::CreateInitialSnake()
{
  zvTraceMacro("void zvSnakeWidget::CreateInitialSnake()");
  if (!this->Interaction)
  {
    return;
  }
  const auto ring = zvContourRing::Make(
    this->Center, this->Radius, this->Resolution, zvContourRing::Trigonometry::Double);
  if (!ring)
  {
    vtkGenericWarningMacro("set a resolution from 2 to 8388608 points...");
    return;
  }
  this->SetSnake(ring);
}

void zvSnakeWidget::SetSnake(vtkPolyData* snake)
{
  zvTraceMacro("zvSnakeWidget::SetSnake(vtkPolyData *snake)");
  if (!snake)
  {
    vtkGenericWarningMacro("set poly data for the contour...");
    return;
  }
  zvPolyDataActor::Copy(this->Snake, snake);
  zvPolyDataActor::SetColor(this->SnakeActor, this->Color);
  zvPolyDataActor::Draw(this->SnakeActor, this->Snake);
  this->UpdateAreaLabel();
}

vtkPolyData* zvSnakeWidget::GetSnake()
{
  zvTraceMacro("vtkPolyData *zvSnakeWidget::GetSnake()");
  return this->Snake;
}

void zvSnakeWidget::SetGradient(vtkPolyData* gradient)
{
  zvTraceMacro("zvSnakeWidget::SetGradient(vtkPolyData *gradient)");
  if (!gradient)
  {
    vtkGenericWarningMacro("set poly data for the gradient...");
    return;
  }
  zvPolyDataActor::Copy(this->Gradient, gradient);
  zvPolyDataActor::SetColor(this->GradientActor, GradientColor, this->GradientPointSize);
  zvPolyDataActor::Draw(this->GradientActor, this->Gradient);
  this->GradientActor->GetMapper()->ScalarVisibilityOff(); // the points may carry the gradient
}

vtkPolyData* zvSnakeWidget::GetGradient()
{
  zvTraceMacro("vtkPolyData *zvSnakeWidget::GetGradient()");
  return this->Gradient;
}

void zvSnakeWidget::SetSnakes3D(vtkPolyData* snakes)
{
  zvTraceMacro("void zvSnakeWidget::SetSnakes3D(vtkPolyData *snake)");
  if (!snakes)
  {
    vtkGenericWarningMacro("set poly data for the 3D contours...");
    return;
  }
  zvPolyDataActor::Copy(this->Snakes3D, snakes);
  zvPolyDataActor::SetColor(this->Snakes3DActor, this->Color);
  zvPolyDataActor::Draw(this->Snakes3DActor, this->Snakes3D);
}

vtkPolyData* zvSnakeWidget::GetSnakes3D()
{
  zvTraceMacro("vtkPolyData *zvSnakeWidget::GetSnakes3D()");
  return this->Snakes3D;
}

void zvSnakeWidget::SetColor(double* color)
{
  if (!color)
  {
    vtkGenericWarningMacro("set a color of three values...");
    return;
  }
  this->SetColor(color[0], color[1], color[2]);
}

void zvSnakeWidget::SetColor(double red, double green, double blue)
{
  this->Color[0] = red;
  this->Color[1] = green;
  this->Color[2] = blue;
  zvPolyDataActor::SetColor(this->SnakeActor, this->Color);
}

void zvSnakeWidget::GetColor(double* color)
{
  if (color)
  {
    std::copy_n(this->Color, 3, color);
  }
}

void zvSnakeWidget::SetGradientPointSize(double size)
{
  this->GradientPointSize = size;
}

double zvSnakeWidget::GetGradientPointSize()
{
  return this->GradientPointSize;
}

void zvSnakeWidget::ViewAreaOn()
{
  this->ViewArea = true;
  this->UpdateAreaLabel();
}

void zvSnakeWidget::ViewAreaOff()
{
  this->ViewArea = false;
  this->UpdateAreaLabel();
}

void zvSnakeWidget::CalculateArea()
{
  zvTraceMacro("void zvSnakeWidget::CalculateArea()");
  // That nothing was drawn yet is worth no warning, and this runs at each event.
  const bool isContour =
    this->Snake->GetNumberOfPoints() > 2 && this->Snake->GetNumberOfLines() > 0;
  this->Area = isContour ? zvUtils::CalculateArea(this->Snake) : 0.0;
}

void zvSnakeWidget::UpdateAreaLabel()
{
  zvTraceMacro("void zvSnakeWidget::UpdateAreaLabel()");
  this->CalculateArea();
  if (!this->ViewArea)
  {
    this->AreaText->SetText(" ");
    return;
  }
  this->AreaText->SetText(zvLengthLabel::OfSnakeArea(this->Area).c_str());
  if (zvViewLookup::IsShown(this->CurrentRenderer))
  {
    const double diagonal = zvViewLookup::DiagonalAt(this->CurrentRenderer, this->LastPickPosition);
    zvLengthLabel::SetSize(this->AreaActor, diagonal * LabelScale * this->HandleSize);
  }
  this->AreaActor->GetProperty()->SetColor(this->Color);
  this->AreaActor->SetPosition(this->Center[0], this->Center[1], this->Center[2] - LabelDepth);
  if (this->CurrentRenderer)
  {
    this->CurrentRenderer->AddViewProp(this->AreaActor);
  }
}

void zvSnakeWidget::Move(double* p1, double* p2, int vtkNotUsed(X), int vtkNotUsed(Y))
{
  zvTraceMacro("void zvSnakeWidget::Move(double *p1, double *p2, int vtkNotUsed(X), int Y)");
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before moving the snake...");
    return;
  }
  double bounds[6];
  if (!GetImageBounds(bounds))
  {
    vtkGenericWarningMacro("set the current image before moving the snake...");
    return;
  }
  double motion[3];
  vtkMath::Subtract(p2, p1, motion);
  if (!zvNumbers::AreFinite(motion))
  {
    return;
  }
  vtkMath::Add(this->Center, motion, this->Center);
  // Deliberate: z is the slice's, and the ring may stick out of the image by its radius.
  for (int axis = 0; axis < 2; ++axis)
  {
    this->Center[axis] =
      std::max(bounds[2 * axis], std::min(this->Center[axis], bounds[2 * axis + 1]));
  }
  this->CreateInitialSnake();
}

void zvSnakeWidget::Scale(double* p1, double* p2, int vtkNotUsed(X), int Y)
{
  zvTraceMacro("void zvSnakeWidget::Scale(double *p1, double *p2, int vtkNotUsed(X), int Y)");
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before scaling the snake...");
    return;
  }
  if (!this->Interactor)
  {
    vtkGenericWarningMacro("set interactor before scaling the snake...");
    return;
  }
  double bounds[6];
  if (!GetImageBounds(bounds))
  {
    vtkGenericWarningMacro("set the current image before scaling the snake...");
    return;
  }
  const double part = std::sqrt(vtkMath::Distance2BetweenPoints(p1, p2)) / this->Radius;
  const bool grow = this->Interactor->GetLastEventPosition()[1] < Y;
  const double factor = grow ? 1.0 + part : 1.0 - part;
  const double side = std::min(std::abs(bounds[0] - bounds[1]), std::abs(bounds[2] - bounds[3]));
  // The order of the arguments lets a radius that is no number end as the smallest one.
  const double radius = std::min(factor * this->Radius, 0.5 * side);
  this->SetRadius(radius > 0.0 ? radius : side / SmallestRadius);
  this->CreateInitialSnake();
}

int zvSnakeWidget::IsClicked()
{
  zvTraceMacro("zvSnakeWidget::IsClicked()");
  return this->PickSnake() ? 1 : 0;
}

void zvSnakeWidget::OnLeftButtonDown()
{
  zvTraceMacro("zvSnakeWidget::OnLeftButtonDown()");
  if (!this->Interaction)
  {
    this->UpdateAreaLabel();
    return;
  }
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor) || !this->PickSnake())
  {
    this->State = Outside;
    return;
  }
  this->State = Moving;
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this); // hosts call handlers, too
  const bool wasEnabled = this->Enabled != 0;
  this->BeginInteraction();
  this->UpdateAreaLabelAfterTelling(wasEnabled);
}

void zvSnakeWidget::OnLeftButtonUp()
{
  zvTraceMacro("zvSnakeWidget::OnLeftButtonUp()");
  this->FinishDrag();
}

void zvSnakeWidget::OnMiddleButtonDown()
{
  zvTraceMacro("zvSnakeWidget::OnMiddleButtonDown()");
  if (!this->Interaction)
  {
    this->UpdateAreaLabel();
    return;
  }
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  // Deliberate: without a pick, a ring too small to be hit can be resized.
  this->State = Scaling;
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  const bool wasEnabled = this->Enabled != 0;
  this->BeginInteraction();
  this->UpdateAreaLabelAfterTelling(wasEnabled);
}

void zvSnakeWidget::OnMiddleButtonUp()
{
  zvTraceMacro("zvSnakeWidget::OnMiddleButtonUp()");
  this->FinishDrag();
}

// Deliberately empty but for the traces: the right button is the host's, for its menu.
void zvSnakeWidget::OnRightButtonDown()
{
  zvTraceMacro("zvSnakeWidget::OnRightButtonDown()");
}

void zvSnakeWidget::OnRightButtonUp()
{
  zvTraceMacro("zvSnakeWidget::OnRightButtonUp()");
}

void zvSnakeWidget::OnMouseMove()
{
  zvTraceMacro("zvSnakeWidget::OnMouseMove()");
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  const bool wasEnabled = this->Enabled != 0;
  if (!this->Interaction || this->FollowPointer())
  {
    this->UpdateAreaLabelAfterTelling(wasEnabled);
  }
}

void zvSnakeWidget::OnMouseWheelForward()
{
  zvTraceMacro("zvSnakeWidget::OnMouseWheelForward()");
  this->UpdateAreaLabel();
}

void zvSnakeWidget::OnMouseWheelBackward()
{
  zvTraceMacro("zvSnakeWidget::OnMouseWheelBackward()");
  this->UpdateAreaLabel();
}

void zvSnakeWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvSnakeWidget> self = static_cast<zvSnakeWidget*>(clientdata);
  zvDispatch::ToHandler(self.GetPointer(), event);
}

void zvSnakeWidget::Show()
{
  vtkRenderer* renderer = zvViewLookup::Choose(this->CurrentRenderer, this->Interactor);
  if (!renderer)
  {
    return;
  }
  if (!this->Renderer3D)
  {
    vtkGenericWarningMacro("set the 3D renderer before enabling...");
    return;
  }
  if (renderer != this->CurrentRenderer)
  {
    this->SetCurrentRenderer(renderer);
  }
  this->Enabled = 1;
  this->AddObservers();
  // An observer of the first EnableEvent may have disabled the widget or closed a view.
  if (!this->Enabled)
  {
    return;
  }
  if (this->CurrentRenderer)
  {
    this->CurrentRenderer->AddActor(this->SnakeActor);
    this->CurrentRenderer->AddActor(this->GradientActor);
  }
  if (this->Renderer3D)
  {
    this->Renderer3D->AddActor(this->Snakes3DActor);
  }
  zvLengthLabel::Show(this->AreaActor, this->CurrentRenderer);
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvSnakeWidget::Hide()
{
  this->Enabled = 0;
  zvObservedSubjects::Release(this->Observed, this->EventCallbackCommand);
  this->LeaveViews();
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

// Also renderers that were set in between and hold nothing, or are not the ones set now.
void zvSnakeWidget::LeaveViews()
{
  zvViewLookup::TakeOut(this->SnakeActor);
  zvViewLookup::TakeOut(this->GradientActor);
  zvViewLookup::TakeOut(this->AreaActor);
  zvViewLookup::TakeOut(this->Snakes3DActor);
}

bool zvSnakeWidget::PickSnake()
{
  // The picker takes the origin for a hit while there is no point.
  if (!this->Interactor || this->Snake->GetNumberOfPoints() == 0)
  {
    return false;
  }
  const int* position = this->Interactor->GetEventPosition();
  return zvPick::At(this->SnakePicker, position[0], position[1], this->CurrentRenderer) != 0 &&
    this->SnakePicker->GetPath() != nullptr;
}

bool zvSnakeWidget::FollowPointer()
{
  double previous[3];
  double current[3];
  if (this->State == Start || this->State == Outside ||
    !zvDrag::GetMotionAtDepth(
      this->Interactor, this->CurrentRenderer, MotionDepth, previous, current))
  {
    return false;
  }
  const int* position = this->Interactor->GetEventPosition();
  if (this->State == Moving && this->MotionMode == MovesRing)
  {
    this->Move(previous, current, position[0], position[1]);
  }
  else if (this->State == Scaling)
  {
    this->Scale(previous, current, position[0], position[1]);
  }
  this->TellMotion();
  return true;
}

void zvSnakeWidget::FinishDrag()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  const bool wasEnabled = this->Enabled != 0;
  if (this->Interaction)
  {
    if (this->State == Start || this->State == Outside)
    {
      return;
    }
    this->State = Start;
    this->FinishInteraction();
  }
  this->UpdateAreaLabelAfterTelling(wasEnabled);
}

void zvSnakeWidget::UpdateAreaLabelAfterTelling(bool wasEnabled)
{
  if (!wasEnabled || this->Enabled)
  {
    this->UpdateAreaLabel();
  }
}
