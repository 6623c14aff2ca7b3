#include "zvSliceMarks.h"

#include "zvAreaWidget.h"
#include "zvLassoWidget.h"
#include "zvMarkedViewer.h"
#include "zvRulerWidget.h"
#include "zvScreenPlace.h"
#include "zvTextNoteWidget.h"
#include "zvUtils.h"

#include <QColor>

#include "vtkActorCollection.h"
#include "vtkCamera.h"
#include "vtkFollower.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double Lift = 1.0;        // millimetres in front of the slice, as the viewer lifts rulers
constexpr int ClickReach = 4;       // pixels that the mouse may move in a click
constexpr int FreehandStep = 14;    // pixels between two points of a drag
constexpr int LeastPoints = 3;      // of a contour
constexpr double RulerSize = 0.017; // of crosses and letters, as a part of the view's diagonal
constexpr double AreaSize = 0.010;

// Behind the other marks: a note follows the middle button from wherever it is pressed.
constexpr float NotePriority = 0.4f;

struct KindName
{
  zvSliceMarks::Kind Kind;
  const char* Name;
  const char* Unit;
};

constexpr KindName KindNames[] = {
  { zvSliceMarks::Kind::Ruler, QT_TRANSLATE_NOOP("zvSliceMarks", "Ruler"), "mm" },
  { zvSliceMarks::Kind::Area, QT_TRANSLATE_NOOP("zvSliceMarks", "Area"), "mm^2" },
  { zvSliceMarks::Kind::Lasso, QT_TRANSLATE_NOOP("zvSliceMarks", "Lasso"), "mm^2" },
  { zvSliceMarks::Kind::Note, QT_TRANSLATE_NOOP("zvSliceMarks", "Note"), "" },
};

using Vector = zvSliceMarks::Vector;

struct Ends
{
  Vector First, Second;
};

Ends EndsOf(zvRulerWidget* ruler)
{
  vtkNew<vtkPolyData> line;
  ruler->GetPolyData(line);
  Ends ends;
  line->GetPoint(0, ends.First.data());
  line->GetPoint(line->GetNumberOfPoints() - 1, ends.Second.data());
  return ends;
}

double LengthOf(zvRulerWidget* ruler)
{
  const Ends ends = EndsOf(ruler);
  return std::sqrt(vtkMath::Distance2BetweenPoints(ends.First.data(), ends.Second.data()));
}

double AreaOf(zvLassoWidget* lasso)
{
  if (!lasso->IsClosed())
  {
    return 0.0;
  }
  vtkNew<vtkPolyData> line;
  lasso->GetPolyData(line);
  return zvUtils::CalculateArea(line);
}

bool IsFar(const QPoint& one, const QPoint& other, int reach)
{
  return (one - other).manhattanLength() > reach;
}
}

zvSliceMarks::zvSliceMarks(zvMarkedViewer* viewer, vtkRenderer* renderer, const QWidget* view,
  const QString& viewName, std::function<void(const QPoint&)> click)
  : Viewer(viewer)
  , Renderer(renderer)
  , View(view)
  , ViewName(viewName)
  , Click(std::move(click))
{
}

zvSliceMarks::~zvSliceMarks() = default;

//------------------------------------------------------------------------------
void zvSliceMarks::SetTool(Tool tool)
{
  this->DropUnfinished();
  this->ActiveTool = tool;
  this->Viewer->ResetMode();
  this->SetModes();
}

// Those of the marks' tools alone: another tool may have set one of its own.
void zvSliceMarks::SetModes()
{
  this->Viewer->SetAddLassoMode(this->ActiveTool == Tool::Lasso);
  this->Viewer->SetAddText(this->ActiveTool == Tool::Note);
  if (this->ActiveTool == Tool::Area)
  {
    this->Viewer->SetCurrentArea(nullptr);
    this->Viewer->EnableAreaWidget();
  }
}

// What was begun and cannot be measured yet.
void zvSliceMarks::DropUnfinished()
{
  this->Viewer->StopWaiting();
  this->Viewer->Remove(this->FindOpenContour());
  this->FreehandPoints = 0;
  if (const vtkSmartPointer<zvRulerWidget> ruler = this->Drawn.Get())
  {
    this->Drawn = nullptr;
    this->IsFollowing = false;
    for (const Mark& mark : this->Marks)
    {
      if (mark.Widget == ruler)
      {
        this->Remove(mark.Id);
        break;
      }
    }
  }
  this->Render();
}

vtk3DWidget* zvSliceMarks::FindOpenContour() const
{
  for (const auto& area : this->Viewer->GetAreas())
  {
    if (!area->GetClosed())
    {
      return area;
    }
  }
  for (const auto& lasso : this->Viewer->GetLassos())
  {
    if (!lasso->GetClosed())
    {
      return lasso;
    }
  }
  return nullptr;
}

bool zvSliceMarks::IsDrawing() const
{
  return this->Drawn || this->FindOpenContour() != nullptr;
}

// The viewer takes a click for the current tool of a kind: that has to be the one that is drawn,
// and a ruler that was used before must not keep the areas from being found.
void zvSliceMarks::BeforePress()
{
  this->Clicked = this->FindUnderPointer();
  const Mark* clicked = this->Find(this->Clicked);
  this->Viewer->SetCurrentRuler(nullptr);
  this->Viewer->SetCurrentArea(zvAreaWidget::SafeDownCast(this->FindOpenContour()));
  if (this->ActiveTool == Tool::Ruler && !this->Drawn && clicked == nullptr)
  {
    this->Viewer->AddRulerWidget(nullptr);
  }
  // Outside its mode the viewer passes lassos over.
  const bool isLasso = clicked != nullptr && clicked->MarkKind == Kind::Lasso;
  this->Viewer->SetAddLassoMode(
    this->ActiveTool == Tool::Lasso || (isLasso && this->ActiveTool != Tool::Area));
}

void zvSliceMarks::AfterPress(const QPoint& position)
{
  this->Viewer->SetAddLassoMode(this->ActiveTool == Tool::Lasso);
  if (this->ActiveTool == Tool::Ruler && !this->Drawn && this->Viewer->GetCurrentRuler() &&
    this->Clicked == 0)
  {
    this->BeginRuler();
  }
  if (!this->IsSending)
  {
    this->Pressed = position;
    this->FreehandPoints = 0;
  }
  for (const auto& lasso : this->Viewer->GetLassos())
  {
    if (lasso->GetClosed() && lasso->GetState() != zvLassoWidget::Locked && this->Clicked == 0)
    {
      this->FinishLasso(lasso);
    }
  }
  const Mark* clicked = this->Find(this->Clicked);
  this->Dragged = clicked != nullptr ? zvTextNoteWidget::SafeDownCast(clicked->Widget) : nullptr;
  this->NotePoint = this->GetPointOnSlice();
  this->Adopt();
  emit changed();
}

// The press has placed both ends; it goes on as a drag of the second one. That lies a little nearer
// to the eye meanwhile, so that it is the one that is caught.
void zvSliceMarks::BeginRuler()
{
  const vtkSmartPointer<zvRulerWidget> ruler = this->Viewer->GetCurrentRuler();
  if (this->Viewer->IsRulerWaiting())
  {
    this->Viewer->StopWaiting(); // the press was beside the slice
    return;
  }
  constexpr double nearer = 1.0e-3; // millimetres
  Vector end = EndsOf(ruler).Second, direction;
  this->Renderer->GetActiveCamera()->GetDirectionOfProjection(direction.data());
  for (std::size_t i = 0; i < 3; ++i)
  {
    end[i] -= nearer * direction[i];
  }
  ruler->SetPoint2(end[0], end[1], end[2]);
  ruler->SetHandleSize(RulerSize);
  this->Viewer->EnableRulerWidget();
  this->BrightenLabels();
  ruler->OnLeftButtonDown();
  this->Drawn = ruler;
}

// A ruler's figures are as red as its line, which is hard to read on grey; they get the colour of
// an area's. The view is the only way to them.
void zvSliceMarks::BrightenLabels()
{
  vtkActorCollection* actors = this->Renderer->GetActors();
  vtkCollectionSimpleIterator position;
  actors->InitTraversal(position);
  while (vtkActor* actor = actors->GetNextActor(position))
  {
    const bool isLabel = vtkFollower::SafeDownCast(actor) != nullptr;
    double color[3];
    actor->GetProperty()->GetColor(color);
    if (isLabel && color[0] == 1.0 && color[1] == 0.0 && color[2] == 0.0)
    {
      actor->GetProperty()->SetColor(1.0, 1.0, 0.0);
    }
  }
}

// Back to one depth.
void zvSliceMarks::FinishRuler()
{
  const vtkSmartPointer<zvRulerWidget> ruler = this->Drawn.Get();
  this->Drawn = nullptr;
  const Ends ends = EndsOf(ruler);
  Vector end = ends.Second, direction, way;
  this->Renderer->GetActiveCamera()->GetDirectionOfProjection(direction.data());
  vtkMath::Subtract(ends.First.data(), ends.Second.data(), way.data());
  const double depth = vtkMath::Dot(way.data(), direction.data());
  for (std::size_t i = 0; i < 3; ++i)
  {
    end[i] += depth * direction[i];
  }
  ruler->SetPoint2(end[0], end[1], end[2]);
  this->Render();
}

// The viewer finds a lasso closed once it has been drawn so, which may be after the press.
void zvSliceMarks::FinishLasso(zvLassoWidget* lasso)
{
  this->Renderer->GetRenderWindow()->Render();
  lasso->SetHandleVisibility(0);
  lasso->SetState(zvLassoWidget::Locked);
  this->Viewer->SetCurrentLasso(nullptr);
  this->Render();
}

void zvSliceMarks::AfterMove(const QPoint& position, bool isHeld)
{
  if (!isHeld && !this->Drawn)
  {
    return;
  }
  if (this->Dragged && isHeld)
  {
    this->MoveNote();
  }
  const bool isFreehand = this->ActiveTool == Tool::Lasso && isHeld && this->Clicked == 0 &&
    this->FindOpenContour() != nullptr;
  if (isFreehand && IsFar(position, this->Pressed, FreehandStep))
  {
    ++this->FreehandPoints;
    this->Pressed = position;
    this->SendClick(position);
  }
  emit changed();
}

void zvSliceMarks::AfterRelease(const QPoint& position)
{
  if (this->IsSending)
  {
    return;
  }
  const bool isClick = !IsFar(position, this->Pressed, ClickReach);
  if (this->Drawn)
  {
    this->ReleaseRuler();
  }
  if (this->FreehandPoints >= LeastPoints)
  {
    this->FreehandPoints = 0;
    this->Close();
  }
  this->SettleContours();
  this->Dragged = nullptr;
  emit changed();
  if (this->ActiveTool == Tool::Note && isClick)
  {
    const Mark* clicked = this->Find(this->Clicked);
    if (clicked == nullptr && this->IsOverSlice())
    {
      emit noteWanted();
    }
    else if (clicked != nullptr && clicked->MarkKind == Kind::Note)
    {
      emit editWanted(this->Clicked);
    }
  }
}

// A drag is done. After a click the end follows the mouse until the next one.
void zvSliceMarks::ReleaseRuler()
{
  const bool hasLength = this->GetScreenLength(this->Drawn) > ClickReach;
  if (hasLength)
  {
    this->FinishRuler();
  }
  else if (!this->IsFollowing)
  {
    this->IsFollowing = true;
    this->Drawn->OnLeftButtonDown();
    return;
  }
  else
  {
    this->DropUnfinished();
  }
  this->IsFollowing = false;
}

// Contours are measured as they were drawn last, so what was dragged is drawn first.
void zvSliceMarks::SettleContours()
{
  const Mark* clicked = this->Find(this->Clicked);
  if (clicked == nullptr || (clicked->MarkKind != Kind::Area && clicked->MarkKind != Kind::Lasso))
  {
    return;
  }
  this->Renderer->GetRenderWindow()->Render();
  if (auto* area = zvAreaWidget::SafeDownCast(clicked->Widget))
  {
    area->CalculateArea();
  }
  if (auto* lasso = zvLassoWidget::SafeDownCast(clicked->Widget))
  {
    lasso->SetHandleVisibility(0);
    lasso->SetState(zvLassoWidget::Locked);
  }
  this->Render();
}

void zvSliceMarks::SendClick(const QPoint& position)
{
  this->IsSending = true;
  this->Click(position);
  this->IsSending = false;
}

// The way that a user closes a contour: a click on its first point.
bool zvSliceMarks::Close()
{
  vtk3DWidget* contour = this->FindOpenContour();
  double first[3];
  int count = 0;
  if (auto* area = zvAreaWidget::SafeDownCast(contour))
  {
    count = area->GetNumberOfHandles();
    area->GetHandlePosition(0, first);
  }
  else if (auto* lasso = zvLassoWidget::SafeDownCast(contour))
  {
    count = lasso->GetNumberOfHandles();
    lasso->GetHandlePosition(0, first);
  }
  if (count < LeastPoints)
  {
    return false;
  }
  this->SendClick(this->ToView(first));
  return this->FindOpenContour() == nullptr;
}

//------------------------------------------------------------------------------
// Marks that the viewer has made since the last look.
void zvSliceMarks::Adopt()
{
  for (const auto& ruler : this->Viewer->GetRulers())
  {
    if (ruler->GetEnabled())
    {
      this->Adopt(Kind::Ruler, ruler);
    }
  }
  for (const auto& area : this->Viewer->GetAreas())
  {
    area->SetHandleSize(AreaSize);
    if (area->GetClosed())
    {
      this->Adopt(Kind::Area, area);
    }
  }
  for (const auto& lasso : this->Viewer->GetLassos())
  {
    if (lasso->GetClosed())
    {
      this->Adopt(Kind::Lasso, lasso);
    }
  }
  for (const auto& note : this->Viewer->GetNotes())
  {
    this->Adopt(Kind::Note, note);
  }
}

void zvSliceMarks::Adopt(Kind kind, vtk3DWidget* widget)
{
  const bool isKnown = std::any_of(this->Marks.begin(), this->Marks.end(),
    [widget](const Mark& mark) { return mark.Widget == widget; });
  if (!isKnown)
  {
    this->Marks.push_back({ ++this->LastId, kind, widget, this->Place, false, true });
    this->Size(this->Marks.back());
  }
}

void zvSliceMarks::Follow(const zvPlanePlace& place)
{
  if (!place.IsSameSlice(this->Place) && this->IsDrawing())
  {
    this->DropUnfinished();
  }
  this->Place = place;
  this->ShowWhereDue();
}

void zvSliceMarks::ShowWhereDue()
{
  for (Mark& mark : this->Marks)
  {
    this->Show(mark, !mark.IsHidden && mark.Place.IsSameSlice(this->Place));
  }
}

void zvSliceMarks::Show(Mark& mark, bool shown)
{
  if (mark.IsShown == shown)
  {
    return;
  }
  mark.IsShown = shown;
  if (shown)
  {
    mark.Widget->SetCurrentRenderer(this->Renderer);
    if (auto* note = zvTextNoteWidget::SafeDownCast(mark.Widget))
    {
      note->AddObservers();
    }
  }
  mark.Widget->SetEnabled(shown ? 1 : 0);
  if (auto* lasso = zvLassoWidget::SafeDownCast(mark.Widget))
  {
    lasso->SetHandleVisibility(0);
    lasso->SetState(zvLassoWidget::Locked);
  }
  if (shown)
  {
    this->Size(mark);
  }
}

void zvSliceMarks::Resize()
{
  for (const Mark& mark : this->Marks)
  {
    if (mark.IsShown)
    {
      this->Size(mark);
    }
  }
}

void zvSliceMarks::Size(const Mark& mark)
{
  if (auto* ruler = zvRulerWidget::SafeDownCast(mark.Widget))
  {
    ruler->OnMouseWheelForward();
  }
  else if (auto* area = zvAreaWidget::SafeDownCast(mark.Widget))
  {
    area->OnMouseWheelForward();
  }
  else if (auto* lasso = zvLassoWidget::SafeDownCast(mark.Widget))
  {
    lasso->OnMouseWheelForward();
  }
}

//------------------------------------------------------------------------------
int zvSliceMarks::FindUnderPointer() const
{
  const auto found = std::find_if(this->Marks.rbegin(), this->Marks.rend(),
    [](const Mark& mark) { return IsUnderPointer(mark); });
  return found == this->Marks.rend() ? 0 : found->Id;
}

bool zvSliceMarks::IsUnderPointer(const Mark& mark)
{
  if (!mark.IsShown)
  {
    return false;
  }
  switch (mark.MarkKind)
  {
    case Kind::Ruler:
      return zvRulerWidget::SafeDownCast(mark.Widget)->IsClicked();
    case Kind::Area:
      return zvAreaWidget::SafeDownCast(mark.Widget)->IsClicked() != 0;
    case Kind::Lasso:
      return zvLassoWidget::SafeDownCast(mark.Widget)->IsClicked() != 0;
    default:
      return zvTextNoteWidget::SafeDownCast(mark.Widget)->IsClicked() != 0;
  }
}

bool zvSliceMarks::IsMovedByMiddle() const
{
  return std::any_of(this->Marks.begin(), this->Marks.end(),
    [](const Mark& mark) { return mark.MarkKind != Kind::Note && IsUnderPointer(mark); });
}

const zvSliceMarks::Mark* zvSliceMarks::Find(int id) const
{
  const auto found = std::find_if(
    this->Marks.begin(), this->Marks.end(), [id](const Mark& mark) { return mark.Id == id; });
  return found == this->Marks.end() ? nullptr : &*found;
}

//------------------------------------------------------------------------------
int zvSliceMarks::AddNote(const QString& text, const QColor& color, double size)
{
  const QByteArray bytes = text.toUtf8();
  if (bytes.size() > zvTextNoteWidget::GetMaximumTextLength())
  {
    return 0;
  }
  double components[3] = { color.redF(), color.greenF(), color.blueF() };
  this->Viewer->SetCurrentNote(nullptr);
  this->Viewer->AddTextNoteWidget(
    bytes.constData(), this->Viewer->GetPlaneOrientation(), components, size);
  zvTextNoteWidget* note = this->Viewer->GetCurrentNote();
  // The viewer puts notes in front of all slices; here they belong to one.
  note->SetLocation(this->NotePoint[0], this->NotePoint[1], this->NotePoint[2]);
  note->SetEnabled(0);
  note->SetPriority(NotePriority);
  note->SetCurrentRenderer(this->Renderer);
  note->AddObservers();
  note->SetEnabled(1);
  this->Adopt();
  this->Render();
  emit changed();
  return this->LastId;
}

zvTextNoteWidget* zvSliceMarks::FindNote(int id) const
{
  const Mark* mark = this->Find(id);
  return mark == nullptr ? nullptr : zvTextNoteWidget::SafeDownCast(mark->Widget);
}

void zvSliceMarks::ChangeNote(int id, const QString& text, const QColor& color, double size)
{
  const QByteArray bytes = text.toUtf8();
  zvTextNoteWidget* note = this->FindNote(id);
  if (note == nullptr || bytes.size() > zvTextNoteWidget::GetMaximumTextLength())
  {
    return;
  }
  double components[3] = { color.redF(), color.greenF(), color.blueF() };
  this->Viewer->SetCurrentNote(note);
  this->Viewer->AddTextNoteWidget(
    bytes.constData(), this->Viewer->GetPlaneOrientation(), components, size);
  this->Render();
  emit changed();
}

QString zvSliceMarks::GetNoteText(int id) const
{
  zvTextNoteWidget* note = this->FindNote(id);
  return note == nullptr ? QString() : QString::fromUtf8(note->GetText());
}

QColor zvSliceMarks::GetNoteColor(int id) const
{
  zvTextNoteWidget* note = this->FindNote(id);
  const double* color = note == nullptr ? nullptr : note->GetColor();
  return color == nullptr ? QColor() : QColor::fromRgbF(color[0], color[1], color[2]);
}

double zvSliceMarks::GetNoteSize(int id) const
{
  zvTextNoteWidget* note = this->FindNote(id);
  return note == nullptr ? 0.0 : note->GetFontSize();
}

// A note keeps the axis of its slice in a drag; of a tilted slice it knows none.
void zvSliceMarks::MoveNote()
{
  if (this->Viewer->GetPlaneOrientation() == 3)
  {
    const Vector point = this->GetPointOnSlice();
    this->Dragged->SetLocation(point[0], point[1], point[2]);
    this->Render();
  }
}

//------------------------------------------------------------------------------
zvMeasurement zvSliceMarks::Measure(const Mark& mark) const
{
  const KindName& kind = KindNames[static_cast<std::size_t>(mark.MarkKind)];
  zvMeasurement measurement;
  measurement.Id = mark.Id;
  measurement.Kind = tr(kind.Name);
  measurement.View = this->ViewName;
  measurement.Slice = mark.Place.Describe();
  measurement.Unit = kind.Unit;
  measurement.IsHidden = mark.IsHidden;
  switch (mark.MarkKind)
  {
    case Kind::Ruler:
      measurement.Value = Number(LengthOf(zvRulerWidget::SafeDownCast(mark.Widget)));
      break;
    case Kind::Area:
      measurement.Value = Number(zvAreaWidget::SafeDownCast(mark.Widget)->GetArea());
      break;
    case Kind::Lasso:
      measurement.Value = Number(AreaOf(zvLassoWidget::SafeDownCast(mark.Widget)));
      break;
    case Kind::Note:
      measurement.Value = this->GetNoteText(mark.Id);
      break;
  }
  return measurement;
}

std::vector<zvMeasurement> zvSliceMarks::Read() const
{
  std::vector<zvMeasurement> measurements;
  for (const Mark& mark : this->Marks)
  {
    measurements.push_back(this->Measure(mark));
  }
  return measurements;
}

void zvSliceMarks::GoTo(int id)
{
  if (const Mark* mark = this->Find(id))
  {
    emit goToWanted(mark->Place);
  }
}

void zvSliceMarks::SetHidden(int id, bool hidden)
{
  for (Mark& mark : this->Marks)
  {
    if (mark.Id == id)
    {
      mark.IsHidden = hidden;
    }
  }
  this->ShowWhereDue();
  this->Render();
  emit changed();
}

void zvSliceMarks::Remove(int id)
{
  const auto found = std::find_if(
    this->Marks.begin(), this->Marks.end(), [id](const Mark& mark) { return mark.Id == id; });
  if (found != this->Marks.end())
  {
    if (found->Widget == this->Drawn.Get()) // by its line, or by the mouse, before it was done
    {
      this->Drawn = nullptr;
      this->IsFollowing = false;
    }
    this->Viewer->Remove(found->Widget);
    this->Marks.erase(found);
    this->Render();
    emit changed();
  }
}

void zvSliceMarks::RemoveAll()
{
  this->Marks.clear();
  this->Drawn = nullptr;
  this->IsFollowing = false;
  this->Viewer->DeleteWidget();
  this->Viewer->DeleteAllTextNoteWidgets();
  this->SetModes();
  this->Render();
  emit changed();
}

bool zvSliceMarks::Edit(int id)
{
  if (this->FindNote(id) == nullptr)
  {
    return false;
  }
  emit editWanted(id);
  return true;
}

bool zvSliceMarks::RemoveUnderMouse()
{
  const int id = this->Hovered ? this->FindUnderPointer() : 0;
  if (id != 0)
  {
    this->Remove(id);
  }
  return id != 0;
}

//------------------------------------------------------------------------------
// Pixels of the screen between the ends.
double zvSliceMarks::GetScreenLength(zvRulerWidget* ruler) const
{
  const Ends ends = EndsOf(ruler);
  const QPoint way = this->ToView(ends.First.data()) - this->ToView(ends.Second.data());
  return std::hypot(way.x(), way.y());
}

// The point under the pointer, a little in front of the slice.
zvSliceMarks::Vector zvSliceMarks::GetPointOnSlice() const
{
  const int* position = this->Viewer->GetInteractor()->GetEventPosition();
  Vector direction;
  this->Renderer->GetActiveCamera()->GetDirectionOfProjection(direction.data());
  double point[4];
  this->Renderer->SetDisplayPoint(position[0], position[1], 0.0);
  this->Renderer->DisplayToWorld();
  this->Renderer->GetWorldPoint(point);
  const Vector& normal = this->Place.GetNormal();
  const double toEye = vtkMath::Dot(direction.data(), normal.data()) > 0.0 ? -Lift : Lift;
  const double away = this->Place.Offset + toEye - vtkMath::Dot(point, normal.data());
  return { { point[0] + away * normal[0], point[1] + away * normal[1],
    point[2] + away * normal[2] } };
}

QPoint zvSliceMarks::ToView(const double world[3]) const
{
  return zvScreenPlace::Of(world, this->View, this->Renderer);
}

bool zvSliceMarks::IsOverSlice() const
{
  const int* position = this->Viewer->GetInteractor()->GetEventPosition();
  this->Viewer->UpdateCursor(position[0], position[1]);
  return this->Viewer->GetCurrentImageValue() != VTK_DOUBLE_MAX;
}

void zvSliceMarks::Render()
{
  if (vtkRenderWindowInteractor* interactor = this->Viewer->GetInteractor())
  {
    interactor->Render();
  }
}
