#include "zvViewGrid.h"

#include "zvSliceMarks.h"
#include "zvVolumeView.h"

#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "vtkDataArray.h"
#include "vtkImageData.h"
#include "vtkPointData.h"
#include "vtkRenderWindowInteractor.h"

#include <algorithm>

namespace
{
constexpr const char* FrameStyle = "QFrame#view { background:#23262c; }";
constexpr const char* ActiveFrameStyle = "QFrame#view { background:#3d6fd1; }";
}

zvViewGrid::zvViewGrid(QWidget* parent)
  : QWidget(parent)
  , VolumeView(new zvVolumeView(this->Group))
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->SliceViews[static_cast<std::size_t>(axis)] = new zvSliceView(axis, this->Group);
  }
  this->Link = std::make_unique<zvViewLink>(
    std::array<zvImageViewerWidget*, 3>{ { this->SliceViews[0]->GetViewer(),
      this->SliceViews[1]->GetViewer(), this->SliceViews[2]->GetViewer() } },
    this->VolumeView);
  connect(this->Link.get(), &zvViewLink::moved, this, &zvViewGrid::FollowPlanes);
  this->BuildLayout();
  this->ConnectSlices();
  this->ConnectVolumeView();
  this->Activate(this->VolumeView);
}

zvViewGrid::~zvViewGrid()
{
  for (zvQVTKWidget* view : this->GetViews())
  {
    view->removeEventFilter(this);
    view->disconnect(this);
  }
}

std::array<zvQVTKWidget*, 4> zvViewGrid::GetViews() const
{
  return { { this->SliceViews[2], this->SliceViews[0], this->SliceViews[1], this->VolumeView } };
}

void zvViewGrid::BuildLayout()
{
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  int place = 0;
  for (zvQVTKWidget* view : this->GetViews())
  {
    auto* frame = new QFrame;
    frame->setObjectName("view");
    auto* inside = new QVBoxLayout(frame);
    inside->setContentsMargins(1, 1, 1, 1);
    inside->addWidget(view);
    layout->addWidget(frame, place / 2, place % 2);
    layout->setRowStretch(place / 2, 1);
    layout->setColumnStretch(place % 2, 1);
    view->installEventFilter(this);
    ++place;
  }
}

void zvViewGrid::ConnectSlices()
{
  for (zvSliceView* view : this->SliceViews)
  {
    connect(view, &zvSliceView::used, this, [this, view] { this->Link->Settle(view->GetAxis()); });
    connect(view, &zvSliceView::stepped, this->Link.get(), &zvViewLink::Step);
    connect(view, &zvSliceView::maximised, this, [this, view] { this->ToggleMaximised(view); });
    connect(view->GetMarks(), &zvSliceMarks::goToWanted, this,
      [this, view](const zvPlanePlace& place) { this->GoToPlace(view, place); });
    connect(view, &zvSliceView::voxelSeen, this, &zvViewGrid::voxelSeen);
    connect(view, &zvSliceView::nothingSeen, this, &zvViewGrid::nothingSeen);
    connect(view, &zvSliceView::windowLevelDragged, this, &zvViewGrid::TakeWindowLevel);
    connect(view, &zvSliceView::voxelsWritten, this,
      [this, view](bool byFill) { this->TakeWrites(view, byFill); });
  }
}

void zvViewGrid::ConnectVolumeView()
{
  connect(this->VolumeView, &zvVolumeView::maximised, this,
    [this] { this->ToggleMaximised(this->VolumeView); });
  connect(this->VolumeView, &zvVolumeView::voxelRead, this, &zvViewGrid::voxelSeen);
  connect(this->VolumeView, &zvVolumeView::windowLevelChanged, this,
    [this]
    {
      for (zvSliceView* view : this->SliceViews)
      {
        view->SetWindowLevel(this->VolumeView->GetWindowLevel());
      }
    });
}

bool zvViewGrid::eventFilter(QObject* watched, QEvent* event)
{
  const bool isUse = event->type() == QEvent::MouseButtonPress ||
    event->type() == QEvent::KeyPress || event->type() == QEvent::Wheel ||
    event->type() == QEvent::FocusIn;
  // A press empties the viewer's record of the fill; a fill begins a new one.
  if (watched == this->Filled && event->type() == QEvent::MouseButtonPress &&
    static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
  {
    this->ForgetFill();
  }
  if (event->type() == QEvent::MouseMove || event->type() == QEvent::Leave)
  {
    for (zvSliceView* view : this->SliceViews)
    {
      view->GetMarks()->SetHovered(view == watched && event->type() == QEvent::MouseMove);
    }
  }
  if (isUse)
  {
    this->Activate(static_cast<zvQVTKWidget*>(watched));
  }
  return this->QWidget::eventFilter(watched, event);
}

QFrame* zvViewGrid::FrameOf(zvQVTKWidget* view) const
{
  return static_cast<QFrame*>(view->parentWidget());
}

void zvViewGrid::Activate(zvQVTKWidget* view)
{
  if (this->Active == view)
  {
    return;
  }
  this->Active = view;
  for (zvQVTKWidget* one : this->GetViews())
  {
    one->SetActived(one == view);
    this->FrameOf(one)->setStyleSheet(one == view ? ActiveFrameStyle : FrameStyle);
  }
}

void zvViewGrid::ShowVolume(const zvVolume& volume, const zvWindowValues& value)
{
  const zvOneRender render(this->Group);
  this->ForgetFill();
  for (zvSliceView* view : this->SliceViews)
  {
    view->ShowVolume(volume);
  }
  this->VolumeView->ShowVolume(volume, value);
  this->Link->Start(volume.Image);
}

// Wherever planes have moved to, cameras, letters and masks follow.
void zvViewGrid::FollowPlanes()
{
  const zvOneRender render(this->Group);
  for (zvSliceView* view : this->SliceViews)
  {
    const int axis = view->GetAxis();
    view->Follow(
      this->Link->GetPlace(axis), this->Link->GetUp(axis), this->VolumeView->GetSliceCount(axis));
    view->interactor()->Render();
  }
}

void zvViewGrid::SetWindowLevel(const zvWindowValues& value)
{
  const zvOneRender render(this->Group);
  this->VolumeView->SetWindowLevel(value);
}

// The viewer's own way may go below nothing, which would turn the picture into its negative.
void zvViewGrid::TakeWindowLevel(const zvWindowValues& value)
{
  const double full = this->VolumeView->GetFullWindow();
  this->SetWindowLevel({ std::max(value.Window, 0.001 * full), value.Level });
}

void zvViewGrid::ToggleMaximised(zvQVTKWidget* view)
{
  const zvOneRender render(this->Group);
  this->Maximised = this->Maximised == nullptr ? view : nullptr;
  const auto views = this->GetViews();
  const auto found = std::find(views.begin(), views.end(), this->Maximised);
  const int place = found == views.end() ? -1 : static_cast<int>(found - views.begin());
  for (zvQVTKWidget* one : views)
  {
    this->FrameOf(one)->setVisible(place < 0 || this->Maximised == one);
  }
  // An empty row or column would keep its share.
  auto* grid = static_cast<QGridLayout*>(this->layout());
  for (int line = 0; line < 2; ++line)
  {
    grid->setRowStretch(line, place < 0 || place / 2 == line ? 1 : 0);
    grid->setColumnStretch(line, place < 0 || place % 2 == line ? 1 : 0);
  }
  this->RenderAll();
}

void zvViewGrid::ResetActiveView()
{
  const zvOneRender render(this->Group);
  if (this->Active == this->VolumeView)
  {
    this->VolumeView->ResetCamera();
    return;
  }
  static_cast<zvSliceView*>(this->Active)->ResetCamera();
  this->Active->interactor()->Render();
}

void zvViewGrid::ResetAll()
{
  const zvOneRender render(this->Group);
  this->Link->Center();
  for (zvSliceView* view : this->SliceViews)
  {
    view->ResetCamera();
  }
  this->VolumeView->ResetCamera();
  this->RenderAll();
}

// In a window that one view fills, it is that view's turn.
void zvViewGrid::GoToPlace(zvSliceView* view, const zvPlanePlace& place)
{
  const zvOneRender render(this->Group);
  if (this->Maximised != nullptr && this->Maximised != view)
  {
    this->ToggleMaximised(view);
    this->ToggleMaximised(view);
  }
  this->Activate(view);
  this->Link->GoTo(place);
}

void zvViewGrid::GoTo(int axis, int slice)
{
  const zvOneRender render(this->Group);
  this->Link->GoTo(axis, slice);
}

void zvViewGrid::Turn(int axis, double degrees)
{
  const zvOneRender render(this->Group);
  zvViewLink::Vector direction{ { 0.0, 0.0, 0.0 } };
  direction[static_cast<std::size_t>(axis)] = 1.0;
  this->Link->Turn(degrees, direction);
}

void zvViewGrid::Straighten()
{
  const zvOneRender render(this->Group);
  this->Link->Straighten();
}

void zvViewGrid::SetHand(zvSliceView::Hand hand)
{
  const zvOneRender render(this->Group);
  for (zvSliceView* view : this->SliceViews)
  {
    view->SetHand(hand);
  }
}

void zvViewGrid::SetFillValue(int value)
{
  for (zvSliceView* view : this->SliceViews)
  {
    view->GetViewer()->SetFillValue(value);
  }
}

void zvViewGrid::TakeWrites(zvSliceView* view, bool byFill)
{
  const zvOneRender render(this->Group);
  if (byFill)
  {
    this->Filled = view;
    emit fillChanged(true);
  }
  this->TellVoxelsChanged();
}

void zvViewGrid::ForgetFill()
{
  this->Filled = nullptr;
  emit fillChanged(false);
}

void zvViewGrid::UndoFill()
{
  if (this->Filled == nullptr)
  {
    return;
  }
  const zvOneRender render(this->Group);
  this->Filled->TakeBackFill();
  this->ForgetFill();
  this->TellVoxelsChanged();
}

// The viewers write into the image without a word, since its other users are the program's.
void zvViewGrid::TellVoxelsChanged()
{
  vtkImageData* image = this->VolumeView->GetVolume().Image;
  image->GetPointData()->GetScalars()->Modified();
  image->Modified();
  this->RenderAll();
}

void zvViewGrid::RenderAll()
{
  for (zvQVTKWidget* view : this->GetViews())
  {
    view->interactor()->Render();
  }
}

void zvViewGrid::SetMask(vtkImageData* mask, double opacity)
{
  const zvOneRender render(this->Group);
  for (zvSliceView* view : this->SliceViews)
  {
    view->SetMask(mask, opacity);
    view->interactor()->Render();
  }
}

void zvViewGrid::SetMaskOpacity(double opacity)
{
  const zvOneRender render(this->Group);
  for (zvSliceView* view : this->SliceViews)
  {
    view->SetMaskOpacity(opacity);
    view->interactor()->Render();
  }
}
