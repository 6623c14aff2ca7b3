#include "zvRulerWidget.h"

#include "zvEvents.h"
#include "zvLengthLabel.h"
#include "zvMessages.h"
#include "zvPointWidget.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkCursor3D.h"
#include "vtkFollower.h"
#include "vtkLineSource.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSphereSource.h"
#include "vtkVectorText.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double HandleTolerance = 0.02; // of the window's diagonal
constexpr double LineTolerance = 0.005;
constexpr double CrossHotSpot = 0.5;
constexpr double CrossBounds = 0.1; // of the placed diagonal
constexpr int LineSegments = 5;
constexpr int SphereThetaSteps = 16;
constexpr int SpherePhiSteps = 8;

constexpr char NoBounds[] = "give bounds to place the ruler in...";
constexpr char NoPosition[] = "give the ruler a position...";
constexpr char NoMotion[] = "give both ends of the motion before scaling the ruler...";

double DistanceBetween(const double* a, const double* b)
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(a, b));
}

// The crosses see the events that the ruler passes on. The right button is to reach the host, and
// is not to end a drag that the ruler goes on with.
class Cross : public zvPointWidget
{
public:
  void OnRightButtonDown() override {}
  void OnRightButtonUp() override {}
};

vtkSmartPointer<zvPointWidget> MakeCross()
{
  auto cross = vtkSmartPointer<zvPointWidget>::Take(new Cross);
  vtkCursor3D* cursor = cross->GetCursor3D();
  cursor->AllOff();
  cursor->AxesOn();
  cursor->TranslationModeOn(); // otherwise a cross cannot be set outside its first bounds
  cross->SetHotSpotSize(CrossHotSpot);
  // A key that toggled each cross by itself would part them from their ruler.
  cross->KeyPressActivationOff();
  return cross;
}

// An interactor that dies leaves the crosses and the ruler in any order.
void HideCross(zvPointWidget* cross)
{
  if (cross->GetInteractor())
  {
    cross->SetEnabled(0);
  }
}

template <typename Callback>
vtkSmartPointer<Callback> Connect(zvRulerWidget* ruler, zvPointWidget* cross)
{
  auto callback = vtkSmartPointer<Callback>::Take(new Callback);
  callback->Ruler = ruler;
  callback->PointWidget = cross;
  cross->AddObserver(vtkCommand::InteractionEvent, callback, 0.0f);
  return callback;
}

void Disconnect(zvRulerCallback* callback)
{
  callback->PointWidget->RemoveObserver(callback);
  callback->Ruler = nullptr;
  callback->PointWidget = nullptr;
}
}

vtkObjectFactoryNewMacro(zvRulerWidget);

vtkObject* vtkInstantiatorzvRulerWidgetNew()
{
  return zvRulerWidget::New();
}

bool zvRulerCallback::ReadPosition(double position[3]) const
{
  if (!this->Ruler || !this->PointWidget)
  {
    return false;
  }
  this->PointWidget->GetCursor3D()->GetFocalPoint(position);
  return true;
}

void zvPWCallback::Execute(
  vtkObject* vtkNotUsed(caller), unsigned long vtkNotUsed(event), void* vtkNotUsed(calldata))
{
  double x[3];
  if (this->ReadPosition(x))
  {
    this->Ruler->SetLinePosition(x);
  }
}

void zvPW1Callback::Execute(
  vtkObject* vtkNotUsed(caller), unsigned long vtkNotUsed(event), void* vtkNotUsed(calldata))
{
  double x[3];
  if (this->ReadPosition(x))
  {
    this->Ruler->SetPoint1(x[0], x[1], x[2]);
  }
}

void zvPW2Callback::Execute(
  vtkObject* vtkNotUsed(caller), unsigned long vtkNotUsed(event), void* vtkNotUsed(calldata))
{
  double x[3];
  if (this->ReadPosition(x))
  {
    this->Ruler->SetPoint2(x[0], x[1], x[2]);
  }
}

zvRulerWidget::zvRulerWidget()
{
  this->EventCallbackCommand->SetCallback(zvRulerWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  std::fill_n(this->LastPickPosition, 3, 0.0);

  this->BuildLineAndHandles();
  this->CreateDefaultProperties();
  this->BuildPointWidgets();

  this->PlaceFactor = 1.0;
  double bounds[6] = { -0.5, 0.5, -0.5, 0.5, -0.5, 0.5 };
  this->zvRulerWidget::PlaceWidget(bounds);

  zvLengthLabel::Build(this->ScaleText, this->ScaleFollower);
  this->ScaleFollower->GetProperty()->SetColor(1.0, 0.0, 0.0);
  zvLengthLabel::SetSize(this->ScaleFollower, this->GetCrossSize());
}

zvRulerWidget::~zvRulerWidget()
{
  if (this->Interactor)
  {
    this->zvRulerWidget::SetEnabled(0);
  }
  Disconnect(this->PWCallback);
  Disconnect(this->PW1Callback);
  Disconnect(this->PW2Callback);
}

void zvRulerWidget::CollectRevisions(ostream& os)
{
  os << "zvRulerWidget $Revision:$\n";
}

void zvRulerWidget::SetEnabled(int enabling)
{
  if (!this->Interactor)
  {
    vtkErrorMacro("The interactor must be set prior to enabling/disabling widget");
    return;
  }
  // An observer may release the widget. In the destructor there is nothing to hold any more.
  const vtkSmartPointer<zvRulerWidget> self = this->GetReferenceCount() > 0 ? this : nullptr;
  if (enabling && !this->Enabled)
  {
    this->SetCurrentRenderer(zvViewLookup::Choose(this->CurrentRenderer, this->Interactor));
    if (!this->CurrentRenderer)
    {
      return;
    }
    this->Show();
  }
  else if (!enabling && this->Enabled)
  {
    this->Hide();
  }
  else
  {
    return;
  }
  zvViewLookup::Render(this->Interactor);
}

void zvRulerWidget::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  // An observer may release the widget or change its interactor, too.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->Interactor && this->Enabled && interactor != this->Interactor)
  {
    this->SetEnabled(0);
  }
  this->vtk3DWidget::SetInteractor(interactor);
}

void zvRulerWidget::PlaceWidget(double bounds[6])
{
  if (!zvRequireMacro(bounds, NoBounds))
  {
    return;
  }
  double placed[6];
  double center[3];
  this->AdjustBounds(bounds, placed, center);
  if (this->Align != None)
  {
    double end1[3] = { center[0], center[1], center[2] };
    double end2[3] = { center[0], center[1], center[2] };
    end1[this->Align] = placed[2 * this->Align];
    end2[this->Align] = placed[2 * this->Align + 1];
    this->LineSource->SetPoint1(end1);
    this->LineSource->SetPoint2(end2);
  }
  this->LineSource->Update();
  this->MoveCrossesToEnds();
  std::copy_n(placed, 6, this->InitialBounds);
  const double low[3] = { placed[0], placed[2], placed[4] };
  const double high[3] = { placed[1], placed[3], placed[5] };
  this->InitialLength = DistanceBetween(low, high);
  this->BuildRepresentation();
  this->SizeHandles();
}

void zvRulerWidget::PlaceWidget()
{
  this->Superclass::PlaceWidget();
}

void zvRulerWidget::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->Superclass::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

void zvRulerWidget::SizeHandles()
{
  const double radius = this->GetCrossSize();
  for (const auto& geometry : this->HandleGeometry)
  {
    geometry->SetRadius(radius);
  }
}

void zvRulerWidget::SetAlign(int align)
{
  const int clamped = std::max(this->GetAlignMinValue(), std::min(align, this->GetAlignMaxValue()));
  if (clamped != this->Align)
  {
    this->Align = clamped;
    this->Modified();
  }
}

int zvRulerWidget::GetAlignMinValue()
{
  return XAxis;
}

int zvRulerWidget::GetAlignMaxValue()
{
  return None;
}

int zvRulerWidget::GetAlign()
{
  return this->Align;
}

void zvRulerWidget::SetClampToBounds(int clamp)
{
  if (clamp != this->ClampToBounds)
  {
    this->ClampToBounds = clamp;
    this->Modified();
  }
}

int zvRulerWidget::GetClampToBounds()
{
  return this->ClampToBounds;
}

void zvRulerWidget::ClampToBoundsOn()
{
  this->SetClampToBounds(1);
}

void zvRulerWidget::ClampToBoundsOff()
{
  this->SetClampToBounds(0);
}

vtkProperty* zvRulerWidget::GetHandleProperty()
{
  return this->HandleProperty;
}

vtkProperty* zvRulerWidget::GetSelectedHandleProperty()
{
  return this->SelectedHandleProperty;
}

vtkProperty* zvRulerWidget::GetLineProperty()
{
  return this->LineProperty;
}

vtkProperty* zvRulerWidget::GetSelectedLineProperty()
{
  return this->SelectedLineProperty;
}

void zvRulerWidget::SetPoint1(double x, double y, double z)
{
  this->PointWidget1->GetCursor3D()->SetFocalPoint(x, y, z);
  this->LineSource->SetPoint1(x, y, z);
  this->BuildRepresentation();
}

void zvRulerWidget::SetPoint2(double x, double y, double z)
{
  this->PointWidget2->GetCursor3D()->SetFocalPoint(x, y, z);
  this->LineSource->SetPoint2(x, y, z);
  this->BuildRepresentation();
}

void zvRulerWidget::BuildRepresentation()
{
  this->HandleGeometry[0]->SetCenter(this->LineSource->GetPoint1());
  this->HandleGeometry[1]->SetCenter(this->LineSource->GetPoint2());
  if (this->LabelFollowsEnds)
  {
    this->UpdateLengthLabel();
  }
}

void zvRulerWidget::GetPolyData(vtkPolyData* pd)
{
  if (pd)
  {
    this->LineSource->Update();
    pd->ShallowCopy(this->LineSource->GetOutput());
  }
}

void zvRulerWidget::ClampPosition(double* x)
{
  if (!zvRequireMacro(x, NoPosition))
  {
    return;
  }
  for (int axis = 0; axis < 3; ++axis)
  {
    if (x[axis] < this->InitialBounds[2 * axis])
    {
      x[axis] = this->InitialBounds[2 * axis];
    }
    if (x[axis] > this->InitialBounds[2 * axis + 1])
    {
      x[axis] = this->InitialBounds[2 * axis + 1];
    }
  }
}

int zvRulerWidget::InBounds(double* x)
{
  if (!zvRequireMacro(x, NoPosition))
  {
    return 0;
  }
  for (int axis = 0; axis < 3; ++axis)
  {
    if (!(x[axis] >= this->InitialBounds[2 * axis] && x[axis] <= this->InitialBounds[2 * axis + 1]))
    {
      return 0;
    }
  }
  return 1;
}

void zvRulerWidget::UpdateScaleLabel()
{
  this->LabelScale = this->GetCrossSize();
  this->ScaleFollower->SetScale(this->LabelScale);
  this->SizeCross(this->PointWidget1, this->LineSource->GetPoint1());
  this->SizeCross(this->PointWidget2, this->LineSource->GetPoint2());
  zvViewLookup::Render(this->Interactor);
}

void zvRulerWidget::EnablePointWidget()
{
  if (!this->Interactor || !this->CurrentRenderer)
  {
    return;
  }
  double x[3];
  if (!this->CurrentHandle)
  {
    this->CurrentPointWidget = this->PointWidget;
    this->LinePicker->GetPickPosition(x);
    std::copy_n(x, 3, this->LastPosition);
  }
  else if (this->CurrentHandle == this->Handle[0].Get())
  {
    this->CurrentPointWidget = this->PointWidget1;
    this->LineSource->GetPoint1(x);
  }
  else
  {
    this->CurrentPointWidget = this->PointWidget2;
    this->LineSource->GetPoint2(x);
  }
  this->PlaceCross(this->CurrentPointWidget, x);
  this->CurrentPointWidget->GetCursor3D()->SetFocalPoint(x);
  this->ShowCross(this->CurrentPointWidget);

  this->PlaceCross(this->PointWidget1, this->LineSource->GetPoint1());
  this->PlaceCross(this->PointWidget2, this->LineSource->GetPoint2());
  this->ShowCross(this->PointWidget1);
  this->ShowCross(this->PointWidget2);
}

void zvRulerWidget::DisablePointWidget()
{
  HideCross(this->PointWidget);
  this->CurrentPointWidget = nullptr;
}

int zvRulerWidget::HighlightHandle(vtkProp* prop)
{
  if (this->CurrentHandle)
  {
    this->CurrentHandle->SetProperty(this->HandleProperty);
  }
  this->CurrentHandle = vtkActor::SafeDownCast(prop);
  if (!this->CurrentHandle)
  {
    return -1;
  }
  this->ValidPick = 1;
  this->HandlePicker->GetPickPosition(this->LastPickPosition);
  this->CurrentHandle->SetProperty(this->SelectedHandleProperty);
  return this->CurrentHandle == this->Handle[0].Get() ? 0 : 1;
}

void zvRulerWidget::HighlightHandles(int highlight)
{
  if (highlight)
  {
    this->ValidPick = 1;
    this->HandlePicker->GetPickPosition(this->LastPickPosition);
  }
  for (const auto& handle : this->Handle)
  {
    handle->SetProperty(highlight ? this->SelectedHandleProperty : this->HandleProperty);
  }
}

void zvRulerWidget::HighlightLine(int highlight)
{
  if (highlight)
  {
    this->ValidPick = 1;
    this->LinePicker->GetPickPosition(this->LastPickPosition);
  }
  this->LineActor->SetProperty(highlight ? this->SelectedLineProperty : this->LineProperty);
}

void zvRulerWidget::SetLinePosition(double* x)
{
  if (!zvRequireMacro(x, NoPosition))
  {
    return;
  }
  double motion[3];
  double end1[3];
  double end2[3];
  vtkMath::Subtract(x, this->LastPosition, motion);
  vtkMath::Add(this->LineSource->GetPoint1(), motion, end1);
  vtkMath::Add(this->LineSource->GetPoint2(), motion, end2);
  if (this->ClampToBounds && !(this->InBounds(end1) && this->InBounds(end2)))
  {
    this->PointWidget->GetCursor3D()->SetFocalPoint(this->LastPosition);
    return;
  }
  // Takes the crosses of the ends along.
  this->SetPoint1(end1[0], end1[1], end1[2]);
  this->SetPoint2(end2[0], end2[1], end2[2]);
  std::copy_n(x, 3, this->LastPosition);
}

void zvRulerWidget::Scale(double* p1, double* p2, int vtkNotUsed(X), int Y)
{
  if (!zvRequireMacro(p1 && p2, NoMotion))
  {
    return;
  }
  double end1[3];
  double end2[3];
  this->LineSource->GetPoint1(end1);
  this->LineSource->GetPoint2(end2);
  const double length = DistanceBetween(end1, end2);
  if (!this->Interactor || length <= 0.0)
  {
    return;
  }
  const double part = DistanceBetween(p1, p2) / length;
  const bool grow = Y > this->Interactor->GetLastEventPosition()[1];
  const double factor = grow ? 1.0 + part : 1.0 - part;
  for (int axis = 0; axis < 3; ++axis)
  {
    const double middle = (end1[axis] + end2[axis]) / 2.0;
    end1[axis] = (end1[axis] - middle) * factor + middle;
    end2[axis] = (end2[axis] - middle) * factor + middle;
  }
  this->LineSource->SetPoint1(end1);
  this->LineSource->SetPoint2(end2);
  this->LineSource->Update();
  this->MoveCrossesToEnds();
  this->BuildRepresentation();
}

void zvRulerWidget::AddObservers()
{
  if (this->Interactor)
  {
    zvEvents::Observe(
      this->Interactor, zvEvents::Handle, this->EventCallbackCommand, this->Priority);
  }
}

void zvRulerWidget::BuildLineAndHandles()
{
  this->LineSource->SetResolution(LineSegments);
  this->LineMapper->SetInputConnection(this->LineSource->GetOutputPort());
  this->LineActor->SetMapper(this->LineMapper);
  this->LinePicker->SetTolerance(LineTolerance);
  this->LinePicker->AddPickList(this->LineActor);
  this->LinePicker->PickFromListOn();

  for (int end = 0; end < 2; ++end)
  {
    this->HandleGeometry[end]->SetThetaResolution(SphereThetaSteps);
    this->HandleGeometry[end]->SetPhiResolution(SpherePhiSteps);
    this->HandleMapper[end]->SetInputConnection(this->HandleGeometry[end]->GetOutputPort());
    this->Handle[end]->SetMapper(this->HandleMapper[end]);
    this->HandlePicker->AddPickList(this->Handle[end]);
  }
  this->HandlePicker->SetTolerance(HandleTolerance);
  this->HandlePicker->PickFromListOn();
}

void zvRulerWidget::CreateDefaultProperties()
{
  this->HandleProperty->SetColor(1.0, 0.5, 0.0);
  this->SelectedHandleProperty->SetColor(1.0, 0.0, 0.0);
  this->LineProperty->SetRepresentationToWireframe();
  this->LineProperty->SetColor(1.0, 0.0, 0.0);
  this->LineProperty->SetLineWidth(2.0);
  this->SelectedLineProperty->SetRepresentationToWireframe();
  this->SelectedLineProperty->SetAmbient(1.0);
  this->SelectedLineProperty->SetDiffuse(0.0); // lines add both up
  this->SelectedLineProperty->SetAmbientColor(1.0, 0.0, 0.0);
  this->SelectedLineProperty->SetLineWidth(2.0);
}

void zvRulerWidget::BuildPointWidgets()
{
  this->PointWidget = MakeCross();
  this->PointWidget1 = MakeCross();
  this->PointWidget2 = MakeCross();
  this->PWCallback = Connect<zvPWCallback>(this, this->PointWidget);
  this->PW1Callback = Connect<zvPW1Callback>(this, this->PointWidget1);
  this->PW2Callback = Connect<zvPW2Callback>(this, this->PointWidget2);
}

void zvRulerWidget::Show()
{
  this->Enabled = 1;
  HideCross(this->PointWidget1); // one still shown, by an observer while it is being hidden,
  HideCross(this->PointWidget2); // would be asked before the ruler
  this->AddObservers();
  this->CurrentRenderer->AddActor(this->LineActor);
  this->LineActor->SetProperty(this->LineProperty);
  for (zvPointWidget* cross :
    { this->PointWidget.Get(), this->PointWidget1.Get(), this->PointWidget2.Get() })
  {
    cross->SetPriority(this->Priority); // a higher one would take the press from the ruler
    cross->SetInteractor(this->Interactor);
    cross->SetCurrentRenderer(this->CurrentRenderer);
  }
  this->ShowCross(this->PointWidget1);
  this->ShowCross(this->PointWidget2);
  if (!this->Enabled)
  {
    return; // an observer of the crosses' renders thought otherwise
  }
  zvLengthLabel::Show(this->ScaleFollower, this->CurrentRenderer);
  this->BuildRepresentation();
  this->SizeHandles();
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
}

// Hiding a cross renders, and an observer of that or of the event may enable the widget again: what
// it then shows stays.
void zvRulerWidget::Hide()
{
  this->Enabled = 0;
  this->State = Start; // the release would not arrive any more
  this->Interactor->RemoveObserver(this->EventCallbackCommand);
  zvViewLookup::TakeOut(this->LineActor); // the current renderer may have been taken away
  HideCross(this->PointWidget1);
  if (!this->Enabled)
  {
    HideCross(this->PointWidget2);
  }
  if (this->Enabled)
  {
    return;
  }
  zvViewLookup::TakeOut(this->ScaleFollower);
  zvViewLookup::TakeOut(this->Handle[0]);
  zvViewLookup::TakeOut(this->Handle[1]);
  if (this->CurrentPointWidget)
  {
    HideCross(this->CurrentPointWidget);
  }
  this->CurrentHandle = nullptr;
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  if (!this->Enabled)
  {
    this->SetCurrentRenderer(nullptr);
  }
}

// The radius of a cross, of an end's sphere and the height of the label, in world millimetres.
double zvRulerWidget::GetCrossSize()
{
  if (this->CurrentRenderer && !zvViewLookup::IsShown(this->CurrentRenderer))
  {
    return this->HandleSize * this->InitialLength; // no window to measure any more
  }
  return this->vtk3DWidget::SizeHandles(1.0);
}

void zvRulerWidget::SizeCross(zvPointWidget* cross, const double position[3])
{
  const double reach = CrossBounds * this->InitialLength;
  cross->SetPlaceFactor(this->GetCrossSize());
  cross->PlaceWidget(position[0] - reach, position[0] + reach, position[1] - reach,
    position[1] + reach, position[2] - reach, position[2] + reach);
}

void zvRulerWidget::PlaceCross(zvPointWidget* cross, const double position[3])
{
  cross->SetInteractor(this->Interactor);
  cross->GetCursor3D()->TranslationModeOff();
  cross->GetCursor3D()->Update();
  this->SizeCross(cross, position);
  cross->GetCursor3D()->TranslationModeOn();
  cross->GetCursor3D()->Update();
}

// Showing renders, and an observer of that may disable the widget.
void zvRulerWidget::ShowCross(zvPointWidget* cross)
{
  if (this->Enabled && this->CurrentRenderer)
  {
    cross->SetCurrentRenderer(this->CurrentRenderer);
    cross->SetEnabled(1);
  }
}

void zvRulerWidget::MoveCrossesToEnds()
{
  this->PointWidget1->GetCursor3D()->SetFocalPoint(this->LineSource->GetPoint1());
  this->PointWidget2->GetCursor3D()->SetFocalPoint(this->LineSource->GetPoint2());
}

void zvRulerWidget::UpdateLengthLabel()
{
  const double* end1 = this->LineSource->GetPoint1();
  const double* end2 = this->LineSource->GetPoint2();
  this->ScaleText->SetText(zvLengthLabel::OfLength(DistanceBetween(end1, end2)).c_str());
  zvLengthLabel::SetSize(this->ScaleFollower, this->GetCrossSize());
  this->ScaleFollower->SetPosition(end2[0], end2[1], end2[2]);
  zvLengthLabel::Show(this->ScaleFollower, this->CurrentRenderer);
}
