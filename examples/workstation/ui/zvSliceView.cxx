#include "zvSliceView.h"

#include "zvLabelAtlas.h"
#include "zvSliceMarks.h"
#include "zvVolumeView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include "vtkCamera.h"
#include "vtkCommand.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkInteractorStyleUser.h"
#include "vtkMath.h"
#include "vtkPlaneSource.h"
#include "vtkPolyData.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr int UnitsPerNotch = 120;
constexpr int SlicesPerPage = 10;
constexpr double Margin = 1.14; // around the slice, for the letters

// How each slice is seen: the eye on which side of the plane, and which axis is up.
struct Look
{
  const char* Name;
  const char* Convention;
  double Side;
  int UpAxis;
  double Color[3]; // of the line that marks the plane elsewhere
};

constexpr Look Looks[3] = {
  { QT_TRANSLATE_NOOP("zvSliceView", "Sagittal"),
    QT_TRANSLATE_NOOP("zvSliceView", "seen from the patient's left"), 1.0, 2, { 1.0, 0.35, 0.35 } },
  { QT_TRANSLATE_NOOP("zvSliceView", "Coronal"),
    QT_TRANSLATE_NOOP("zvSliceView", "seen from the front: the patient's right is on the left"),
    -1.0, 2, { 0.3, 0.9, 0.45 } },
  { QT_TRANSLATE_NOOP("zvSliceView", "Axial"),
    QT_TRANSLATE_NOOP("zvSliceView", "seen from the feet: the patient's right is on the left"),
    -1.0, 1, { 0.45, 0.62, 1.0 } },
};

const Look& LookOf(int axis)
{
  return Looks[axis];
}

struct HandMarks
{
  zvSliceView::Hand Hand;
  zvSliceMarks::Tool Tool;
};

constexpr HandMarks MarkHands[] = {
  { zvSliceView::Hand::Ruler, zvSliceMarks::Tool::Ruler },
  { zvSliceView::Hand::Area, zvSliceMarks::Tool::Area },
  { zvSliceView::Hand::Lasso, zvSliceMarks::Tool::Lasso },
  { zvSliceView::Hand::Note, zvSliceMarks::Tool::Note },
};

zvSliceMarks::Tool ToolOf(zvSliceView::Hand hand)
{
  const auto found = std::find_if(std::begin(MarkHands), std::end(MarkHands),
    [hand](const HandMarks& one) { return one.Hand == hand; });
  return found == std::end(MarkHands) ? zvSliceMarks::Tool::None : found->Tool;
}
}

zvSliceView::zvSliceView(int axis, std::shared_ptr<zvRenderGroup> group)
  : Axis(axis)
  , Group(std::move(group))
  , Outlines(this->Renderer)
  , Viewer(vtkSmartPointer<zvMarkedViewer>::New())
  , Marks(std::make_unique<zvSliceMarks>(this->Viewer, this->Renderer, this, this->GetName(),
      [this](const QPoint& position) { this->ClickAt(position); }))
{
  this->setVTKMoveMode(true);
  this->setMinimumSize(160, 120);
  this->setToolTip(QString("%1, %2").arg(this->GetName(), this->GetConvention()));
  this->Renderer->SetBackground(0.0, 0.0, 0.0);
  this->Renderer->GetActiveCamera()->ParallelProjectionOn();
  this->renderWindow()->AddRenderer(this->Renderer);
  this->interactor()->SetInteractorStyle(vtkNew<vtkInteractorStyleUser>());
  this->Letters.AddTo(this->Renderer);
  this->Letters.SetSidesVisible(false);
  this->Viewer->SetInteractor(this->interactor());
  this->Viewer->SetCurrentRenderer(this->Renderer);
  this->Viewer->AddObserver(vtkCommand::WindowLevelEvent, this, &zvSliceView::HandleWindowLevel);
  this->Group->Add(this);
  // These come after the toolkit has had the event.
  connect(this, &zvQVTKWidget::mouseEvent, this, &zvSliceView::HandleMouse);
  connect(this, &zvQVTKWidget::mouseWheelEvent, this, &zvSliceView::HandleWheel);
  connect(this, &zvQVTKWidget::keyEvent, this, &zvSliceView::HandleKey);
}

zvSliceView::~zvSliceView()
{
  this->Marks.reset();
  // The viewer may outlive the view by a reference of somebody else.
  this->Viewer->RemoveObservers(vtkCommand::WindowLevelEvent);
  this->Viewer->SetEnabled(0);
  this->Viewer->SetInteractor(nullptr);
}

QString zvSliceView::GetName() const
{
  return tr(LookOf(this->Axis).Name);
}

QString zvSliceView::GetConvention() const
{
  return tr(LookOf(this->Axis).Convention);
}

// Whatever an event changes, here or in the other views, it is rendered once at the end.
bool zvSliceView::event(QEvent* event)
{
  const zvOneRender render(this->Group, event);
  return this->zvQVTKWidget::event(event);
}

void zvSliceView::ShowVolume(const zvVolume& volume)
{
  this->Volume = volume;
  this->Drag.End();
  this->SetMask(nullptr, this->MaskOpacity);
  this->Viewer->SetInput(volume.Image);
  this->Viewer->SetPlaneOrientation(this->Axis);
  this->Viewer->UpdatePlane();
  this->Viewer->SetCurrentRenderer(this->Renderer);
  this->Viewer->SetEnabled(1);
  this->Letters.SetSidesVisible(volume.IsOrientationKnown);
  this->ResetCamera();
}

void zvSliceView::Follow(const zvPlanePlace& place, const Vector& up, int count)
{
  if (!this->HasVolume())
  {
    return;
  }
  this->Place = place;
  this->Up = up;
  this->PlaceCamera();
  const QString title = place.IsUpright ? tr("%1   %2 / %3") : tr("%1, oblique   %2 / %3");
  this->Letters.SetTitle(title.arg(this->GetName()).arg(place.Slice).arg(count - 1).toStdString(),
    LookOf(this->Axis).Color);
  this->RefreshMask();
  this->Marks->Follow(place);
}

// Square to the plane, the volume's middle in the middle of the view or as far beside it as the
// picture has been moved.
void zvSliceView::PlaceCamera()
{
  vtkImageData* image = this->Volume.Image;
  const Vector& normal = this->Place.GetNormal();
  double focus[3], cut[3], position[3], direction[3], right[3];
  image->GetCenter(focus);
  this->Viewer->GetCenter(cut);
  const double away = vtkMath::Dot(cut, normal.data()) - vtkMath::Dot(focus, normal.data());
  const double length = image->GetLength();
  for (int i = 0; i < 3; ++i)
  {
    direction[i] = -LookOf(this->Axis).Side * normal[static_cast<std::size_t>(i)];
  }
  vtkMath::Cross(direction, this->Up.data(), right);
  for (int i = 0; i < 3; ++i)
  {
    const auto at = static_cast<std::size_t>(i);
    focus[i] += away * normal[at] + this->Shift[0] * right[i] + this->Shift[1] * this->Up[at];
    position[i] = focus[i] - 1.5 * length * direction[i];
  }
  vtkCamera* camera = this->Renderer->GetActiveCamera();
  camera->SetFocalPoint(focus);
  camera->SetPosition(position);
  camera->SetViewUp(this->Up.data());
  camera->SetClippingRange(0.5 * length, 2.5 * length);
  this->Letters.Point(right, this->Up.data());
}

void zvSliceView::ResetCamera()
{
  this->Nearness = 1.0;
  this->Shift = { { 0.0, 0.0 } };
  if (this->HasVolume())
  {
    this->PlaceCamera();
  }
  this->FitScale();
}

// As large as the window allows. By the volume's own sides, also for an oblique plane: its cut
// grows and shrinks as it turns, and the picture should not.
void zvSliceView::FitScale()
{
  if (!this->HasVolume())
  {
    return;
  }
  const double* bounds = this->Volume.Image->GetBounds();
  const int up = LookOf(this->Axis).UpAxis;
  const int across = 3 - up - this->Axis;
  const double height = bounds[2 * up + 1] - bounds[2 * up];
  const double width = bounds[2 * across + 1] - bounds[2 * across];
  const double ratio =
    static_cast<double>(std::max(this->width(), 1)) / std::max(this->height(), 1);
  const double half = 0.5 * Margin * std::max({ height, width / ratio, 1.0e-3 });
  this->Renderer->GetActiveCamera()->SetParallelScale(half / this->Nearness);
  this->Marks->Resize();
}

void zvSliceView::resizeEvent(QResizeEvent* event)
{
  this->zvQVTKWidget::resizeEvent(event);
  this->interactor()->EnableRenderOff(); // by the marks, one by one
  this->FitScale();
  this->interactor()->EnableRenderOn();
  // The toolkit has drawn the new size before the scale was fitted to it.
  this->interactor()->Render();
}

void zvSliceView::SetHand(Hand hand)
{
  this->LeftHand = hand;
  this->Marks->SetTool(ToolOf(hand));
  this->Viewer->SetPaintMode(hand == Hand::Paint);
  this->Viewer->SetFillMode(hand == Hand::Fill);
  if (this->HasVolume())
  {
    // A press on a line would turn it instead.
    this->Viewer->SetLinesEnabled(hand == Hand::Cross);
  }
}

void zvSliceView::TakeBackFill()
{
  this->Viewer->TakeBackFill();
  this->TellVoxelAgain();
}

void zvSliceView::SetWindowLevel(const zvWindowValues& value)
{
  this->Value = value;
  this->Viewer->SetWindowLevel(value.Window, value.Level, 0);
  this->interactor()->Render();
}

void zvSliceView::SetMask(vtkImageData* mask, double opacity)
{
  this->Mask = mask;
  this->MaskOpacity = opacity;
  this->MaskPlane.fill(VTK_DOUBLE_MAX);
  this->Viewer->SetOpacityMask(opacity);
  this->Viewer->SetImageMask(nullptr);
  this->RefreshMask();
}

void zvSliceView::SetMaskOpacity(double opacity)
{
  this->MaskOpacity = opacity;
  this->Viewer->SetOpacityMask(opacity);
}

// The viewer keeps the mask as it was cut when it was given, so it is given anew wherever the
// plane or its resolution has changed.
void zvSliceView::RefreshMask()
{
  if (!this->Mask || !this->HasVolume())
  {
    return;
  }
  std::array<double, 10> plane;
  this->Viewer->GetOrigin(plane.data());
  this->Viewer->GetPoint1(plane.data() + 3);
  this->Viewer->GetPoint2(plane.data() + 6);
  plane[9] = this->Viewer->GetImageResolutionFactor();
  if (plane == this->MaskPlane)
  {
    return;
  }
  this->MaskPlane = plane;
  if (this->Viewer->GetPlaneOrientation() == 3)
  {
    this->Viewer->SetImageMask(this->Mask);
    return;
  }
  const double place =
    (plane[static_cast<std::size_t>(this->Axis)] - this->Mask->GetOrigin()[this->Axis]) /
    this->Mask->GetSpacing()[this->Axis];
  const auto layer =
    zvLabelAtlas::CutLayer(this->Mask, this->Axis, static_cast<int>(std::lround(place)));
  this->Viewer->SetImageMask(layer);
}

//------------------------------------------------------------------------------
void zvSliceView::mouseDoubleClickEvent(QMouseEvent* event)
{
  const bool isLeft = event->button() == Qt::LeftButton && this->HasVolume();
  if (isLeft && this->Marks->Close())
  {
    return;
  }
  if (isLeft && this->LeftHand == Hand::Fill)
  {
    return; // the second fill would find nothing to write, and could not be taken back
  }
  if (isLeft && this->LeftHand == Hand::Cross)
  {
    this->PutPointer(event->pos());
    if (!this->Marks->Edit(this->Marks->FindUnderPointer()))
    {
      emit maximised();
    }
    return;
  }
  this->zvQVTKWidget::mouseDoubleClickEvent(event);
}

void zvSliceView::mousePressEvent(QMouseEvent* event)
{
  if (!this->HasVolume())
  {
    this->zvQVTKWidget::mousePressEvent(event);
    return;
  }
  this->PutPointer(event->pos());
  if (event->button() == Qt::LeftButton)
  {
    this->PressLeft(event);
    return;
  }
  if (event->button() == Qt::MiddleButton &&
    ((event->modifiers() & Qt::ShiftModifier) ||
      (this->LeftHand != Hand::Contour && !this->Marks->IsMovedByMiddle())))
  {
    this->IsMovingPicture = true;
    this->PictureGrip = event->pos();
    return;
  }
  this->zvQVTKWidget::mousePressEvent(event);
}

// What is written is written beside the marks: on a mark the press is the mark's.
void zvSliceView::PressLeft(QMouseEvent* event)
{
  const bool isFree = this->Marks->FindUnderPointer() == 0;
  // A fill begins at the voxel that the mouse was seen over last: that has to be this one.
  this->Viewer->SetFillMode(this->LeftHand == Hand::Fill && isFree && this->IsOverSlice());
  this->Viewer->SetPaintMode(this->LeftHand == Hand::Paint && isFree);
  if (this->Viewer->GetFillMode())
  {
    this->Viewer->KeepSlice();
  }
  this->Marks->BeforePress();
  this->zvQVTKWidget::mousePressEvent(event);
  if (this->Viewer->GetPaintMode())
  {
    // The viewer paints on moves; a click is to paint as well.
    QMouseEvent still(QEvent::MouseMove, event->pos(), event->globalPos(), Qt::NoButton,
      Qt::LeftButton, event->modifiers());
    this->zvQVTKWidget::mouseMoveEvent(&still);
  }
}

void zvSliceView::mouseMoveEvent(QMouseEvent* event)
{
  if (this->IsMovingPicture)
  {
    this->MovePicture(event->pos());
    return;
  }
  this->zvQVTKWidget::mouseMoveEvent(event);
}

void zvSliceView::mouseReleaseEvent(QMouseEvent* event)
{
  if (this->IsMovingPicture && event->button() == Qt::MiddleButton)
  {
    this->IsMovingPicture = false;
    return;
  }
  this->zvQVTKWidget::mouseReleaseEvent(event);
}

void zvSliceView::MovePicture(const QPoint& position)
{
  const QPoint way = position - this->PictureGrip;
  this->PictureGrip = position;
  const double millimetres =
    2.0 * this->Renderer->GetActiveCamera()->GetParallelScale() / std::max(this->height(), 1);
  this->Shift[0] -= way.x() * millimetres;
  this->Shift[1] += way.y() * millimetres;
  this->PlaceCamera();
  this->interactor()->Render();
}

// Tells the toolkit where the mouse is before it has the event, for what is asked of it before.
void zvSliceView::PutPointer(const QPoint& position)
{
  const double ratio = this->devicePixelRatioF();
  this->interactor()->SetEventInformationFlipY(
    static_cast<int>(position.x() * ratio), static_cast<int>(position.y() * ratio));
}

void zvSliceView::ClickAt(const QPoint& position)
{
  const QPoint global = this->mapToGlobal(position);
  QMouseEvent press(
    QEvent::MouseButtonPress, position, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  this->mousePressEvent(&press);
  QMouseEvent release(
    QEvent::MouseButtonRelease, position, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
  this->mouseReleaseEvent(&release);
}

bool zvSliceView::IsOverSlice()
{
  const int* position = this->interactor()->GetEventPosition();
  this->Viewer->UpdateCursor(position[0], position[1]);
  return this->Viewer->GetCurrentImageValue() != VTK_DOUBLE_MAX;
}

void zvSliceView::HandleMouse(QMouseEvent* event)
{
  if (!this->HasVolume())
  {
    return;
  }
  this->DragWindowLevel(event);
  emit used();
  this->TellMarks(event);
  this->TellWrites(event);
  this->TellVoxel();
}

void zvSliceView::TellMarks(QMouseEvent* event)
{
  switch (event->type())
  {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      if (event->button() == Qt::LeftButton)
      {
        this->Marks->AfterPress(event->pos());
      }
      break;
    case QEvent::MouseMove:
      this->Marks->AfterMove(event->pos(), event->buttons() != Qt::NoButton);
      break;
    case QEvent::MouseButtonRelease:
      this->Marks->AfterRelease(event->pos());
      break;
    default:
      break;
  }
}

// Without Shift the right button stays out of the toolkit, so it is the program's.
void zvSliceView::DragWindowLevel(QMouseEvent* event)
{
  const bool isRight = event->button() == Qt::RightButton;
  switch (event->type())
  {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      if (isRight && !(event->modifiers() & Qt::ShiftModifier))
      {
        const double* range = this->Volume.Image->GetScalarRange();
        this->Drag.Begin(event->pos(), this->Value, std::max(range[1] - range[0], 1.0e-3));
      }
      break;
    case QEvent::MouseMove:
      if (this->Drag.IsRunning())
      {
        emit windowLevelDragged(this->Drag.MoveTo(event->pos(), this->size()));
      }
      break;
    case QEvent::MouseButtonRelease:
      if (isRight)
      {
        this->Drag.End();
      }
      break;
    default:
      break;
  }
}

void zvSliceView::HandleWindowLevel(vtkObject*, unsigned long, void* windowLevel)
{
  const double* value = static_cast<const double*>(windowLevel);
  emit windowLevelDragged({ value[0], value[1] });
}

void zvSliceView::TellWrites(QMouseEvent* event)
{
  const bool isPress =
    event->button() == Qt::LeftButton && event->type() != QEvent::MouseButtonRelease;
  if (isPress && this->Viewer->HasFill())
  {
    emit voxelsWritten(true);
  }
  const bool isStroke =
    event->type() == QEvent::MouseMove && (event->buttons() & Qt::LeftButton) != 0;
  if (this->Viewer->GetPaintMode() && isStroke)
  {
    emit voxelsWritten(false);
  }
}

void zvSliceView::TellVoxel()
{
  if (this->Viewer->GetCurrentImageValue() == VTK_DOUBLE_MAX)
  {
    emit nothingSeen();
    return;
  }
  zvVoxel voxel;
  voxel.View = this->GetName();
  const double* cursor = this->Viewer->GetCurrentCursorPosition();
  vtkImageData* image = this->Volume.Image;
  for (std::size_t a = 0; a < 3; ++a)
  {
    voxel.Index[a] = static_cast<int>(std::lround(cursor[a]));
    voxel.Position[a] = image->GetOrigin()[a] + voxel.Index[a] * image->GetSpacing()[a];
  }
  voxel.Value =
    image->GetScalarComponentAsDouble(voxel.Index[0], voxel.Index[1], voxel.Index[2], 0);
  emit voxelSeen(voxel);
}

// The mouse rests, but there is another voxel under it, or another value in it.
void zvSliceView::TellVoxelAgain()
{
  if (this->underMouse())
  {
    this->IsOverSlice();
    this->TellVoxel();
  }
}

void zvSliceView::HandleWheel(QWheelEvent* event)
{
  const int units = event->angleDelta().y();
  if (event->modifiers() & Qt::ControlModifier)
  {
    this->Zoom(units);
    return;
  }
  // Wheels that turn smoothly send parts of a notch.
  this->WheelUnits += units;
  const int notches = this->WheelUnits / UnitsPerNotch;
  this->WheelUnits -= notches * UnitsPerNotch;
  if (notches != 0)
  {
    emit stepped(this->Axis, notches);
    this->TellVoxelAgain();
  }
}

void zvSliceView::Zoom(int units)
{
  constexpr double perNotch = 1.1, furthest = 0.25, nearest = 40.0;
  const double nearer =
    this->Nearness * std::pow(perNotch, static_cast<double>(units) / UnitsPerNotch);
  this->Nearness = std::min(std::max(nearer, furthest), nearest);
  this->FitScale();
  this->interactor()->Render();
}

void zvSliceView::HandleKey(QKeyEvent* event)
{
  struct Key
  {
    int Code;
    int Steps;
  };
  constexpr int all = 1 << 20; // further than any volume reaches
  constexpr Key keys[] = { { Qt::Key_Up, 1 }, { Qt::Key_Right, 1 }, { Qt::Key_Down, -1 },
    { Qt::Key_Left, -1 }, { Qt::Key_PageUp, SlicesPerPage }, { Qt::Key_PageDown, -SlicesPerPage },
    { Qt::Key_Home, -all }, { Qt::Key_End, all } };
  for (const Key& key : keys)
  {
    if (event->key() == key.Code)
    {
      event->accept();
      emit stepped(this->Axis, key.Steps);
      this->TellVoxelAgain();
      return;
    }
  }
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && this->Marks->Close())
  {
    event->accept();
    return;
  }
  event->ignore();
}
