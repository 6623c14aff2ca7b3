// The cross of the slice view: two lines that are dragged, stepped, turned and fitted to the plane.

#include "zvImageViewerWidget.h"

#include "zvBoxCut.h"
#include "zvImageGrid.h"
#include "zvOutlineCut.h"
#include "zvPick.h"
#include "zvReslicePlane.h"
#include "zvSliceCross.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCellPicker.h"
#include "vtkCubeSource.h"
#include "vtkCutter.h"
#include "vtkImageData.h"
#include "vtkImageReslice.h"
#include "vtkLine.h"
#include "vtkLineSource.h"
#include "vtkMath.h"
#include "vtkPlane.h"
#include "vtkPlaneSource.h"
#include "vtkPolyData.h"
#include "vtkRenderer.h"
#include "vtkTransform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace
{
void LineEnds(vtkLineSource* line, double p1[3], double p2[3])
{
  line->GetPoint1(p1);
  line->GetPoint2(p2);
}

void UnitAlong(vtkLineSource* line, double unit[3])
{
  double p1[3], p2[3];
  LineEnds(line, p1, p2);
  vtkMath::Subtract(p2, p1, unit);
  vtkMath::Normalize(unit);
}

void MoveLine(vtkLineSource* line, const double delta[3])
{
  double p1[3], p2[3];
  LineEnds(line, p1, p2);
  vtkMath::Add(p1, delta, p1);
  vtkMath::Add(p2, delta, p2);
  line->SetPoint1(p1);
  line->SetPoint2(p2);
}

void TurnLine(vtkLineSource* line, vtkTransform* transform, double direction[3])
{
  double p1[3], p2[3];
  LineEnds(line, p1, p2);
  transform->TransformPoint(p1, p1);
  transform->TransformPoint(p2, p2);
  line->SetPoint1(p1);
  line->SetPoint2(p2);
  vtkMath::Subtract(p2, p1, direction);
  vtkMath::Normalize(direction);
}

// Lay a line along an edge of the plane, at a coordinate on the axis on which it moves.
void LayLine(vtkLineSource* line, const double from[3], const double to[3], int axis, double at)
{
  double p1[3], p2[3];
  std::copy(from, from + 3, p1);
  std::copy(to, to + 3, p2);
  p1[axis] = p2[axis] = at;
  line->SetPoint1(p1);
  line->SetPoint2(p2);
}

// Lay a line along an edge of the plane, moved into the plane.
void LayLine(vtkLineSource* line, const double from[3], const double to[3], const double shift[3])
{
  double p1[3], p2[3];
  vtkMath::Add(from, shift, p1);
  vtkMath::Add(to, shift, p2);
  line->SetPoint1(p1);
  line->SetPoint2(p2);
}

// Take the ends of a line from two points of a cut, if the cut has any.
void FitLine(const std::vector<std::array<double, 3>>& cut, vtkLineSource* line, std::size_t first,
  std::size_t second)
{
  if (cut.size() >= 2)
  {
    line->SetPoint1(cut[first].data());
    line->SetPoint2(cut[second].data());
  }
}

// The foot of a point on the line from an origin along an axis.
void FootOn(const double q[3], const double origin[3], const double axis[3], double foot[3])
{
  const double along = zvSliceCross::FootParameter(q, origin, axis);
  for (int i = 0; i < 3; ++i)
  {
    foot[i] = origin[i] + along * axis[i];
  }
}

// The parameters at which the carriers of two segments come closest; 0 for parallel ones.
void SolveCrossing(const double p1[3], const double p2[3], const double a1[3], const double a2[3],
  double& t, double& u)
{
  double d1[3], d2[3], c[3];
  vtkMath::Subtract(p2, p1, d1);
  vtkMath::Subtract(a2, a1, d2);
  vtkMath::Subtract(a1, p1, c);
  double row0[2] = { vtkMath::Dot(d1, d1), -vtkMath::Dot(d1, d2) };
  double row1[2] = { -vtkMath::Dot(d1, d2), vtkMath::Dot(d2, d2) };
  double* rows[2] = { row0, row1 };
  double right[2] = { vtkMath::Dot(d1, c), -vtkMath::Dot(d2, c) };
  const bool isSolved = vtkMath::SolveLinearSystem(rows, right, 2) != 0;
  t = isSolved ? right[0] : 0.0;
  u = isSolved ? right[1] : 0.0;
}

double Distance(const double a[3], const double b[3])
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(a, b));
}
}

void zvImageViewerWidget::UpdateCursor(int X, int Y)
{
  if (!this->TakeUpdatedInput())
  {
    return;
  }
  const bool isOnPlane =
    zvPick::Hits(this->PlanePicker, X, Y, this->CurrentRenderer, this->TexturePlaneActor);
  this->CurrentImageValue = VTK_DOUBLE_MAX;
  this->CursorActor->SetVisibility(isOnPlane);
  if (isOnPlane)
  {
    double position[3];
    this->PlanePicker->GetPickPosition(position);
    this->UseContinuousCursor = 0;
    this->UpdateDiscreteCursor(position);
  }
}

void zvImageViewerWidget::AdjustCross(int X, int Y)
{
  if (!zvViewLookup::IsShown(this->CurrentRenderer) || !this->TakeUpdatedInput())
  {
    return;
  }
  zvPick::At(this->PlanePicker, X, Y, this->CurrentRenderer);
  double q[3];
  this->PlanePicker->GetPickPosition(q);
  this->UpdateDiscreteCursor(q); // q becomes the centre of the nearest voxel

  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  vtkNew<vtkPlane> across;
  across->SetOrigin(q);
  vtkNew<vtkCutter> cutter;
  zvBoxCut::ExpectFewPoints(cutter);
  cutter->SetInputConnection(this->BoundsCube->GetOutputPort());
  cutter->SetCutFunction(across);

  double axis[3], end[3];
  this->GetVector1(axis);
  this->PlaneSource->GetPoint1(end);
  across->SetNormal(this->LineNormal1);
  this->DragLine(0, q, axis, end, !zvBoxCut::Update(cutter), grid.Spacing[this->FirstAxis]);

  this->GetVector2(axis);
  this->PlaneSource->GetPoint2(end);
  across->SetNormal(this->LineNormal2);
  this->DragLine(1, q, axis, end, !zvBoxCut::Update(cutter), grid.Spacing[this->SecondAxis]);
}

// Move one line (0 or 1) to the foot of q on its axis, which runs from the plane's origin to end.
void zvImageViewerWidget::DragLine(int which, const double q[3], const double axis[3],
  const double end[3], bool isOffTheBox, double spacing)
{
  vtkLineSource* line = which == 0 ? this->SliceLine1Source : this->SliceLine2Source;
  double origin[3], foot[3], p1[3];
  this->PlaneSource->GetOrigin(origin);
  FootOn(q, origin, axis, foot);
  line->GetPoint1(p1);

  // Both are measured from the plane's origin, so their difference has the sign of the motion. Off
  // the box on the near side it would lose it.
  const double footDistance = Distance(origin, foot);
  const int steps = isOffTheBox && footDistance < Distance(end, foot)
    ? -this->CrossIndex[which]
    : zvSliceCross::WholeSteps(footDistance, Distance(origin, p1), spacing);
  const zvSliceCross::Move move =
    zvSliceCross::Drag(this->CrossIndex[which], steps, this->Dimensions[which]);
  this->SlicesMovement[which] = move.Steps;
  this->CrossIndex[which] = move.Index;
  this->ShiftLine(which, move.Steps * spacing);
}

// Move one line and the rotation centre by millimetres along the other line.
void zvImageViewerWidget::ShiftLine(int which, double distance)
{
  if (distance == 0.0)
  {
    return;
  }
  vtkLineSource* line = which == 0 ? this->SliceLine1Source : this->SliceLine2Source;
  vtkLineSource* other = which == 0 ? this->SliceLine2Source : this->SliceLine1Source;
  double delta[3];
  UnitAlong(other, delta);
  vtkMath::MultiplyScalar(delta, distance);
  MoveLine(line, delta);
  vtkMath::Add(this->RotationCenter, delta, this->RotationCenter);
}

void zvImageViewerWidget::SetSliceCross(int dx, int dy)
{
  if (!this->TakeInput())
  {
    return;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const zvSliceCross::Move first =
    zvSliceCross::Shift(this->CrossIndex[0], dx, this->Dimensions[0]);
  const zvSliceCross::Move second =
    zvSliceCross::Shift(this->CrossIndex[1], dy, this->Dimensions[1]);
  this->CrossIndex[0] = first.Index;
  this->CrossIndex[1] = second.Index;
  this->ShiftLine(0, first.Steps * grid.Spacing[this->FirstAxis]);
  this->ShiftLine(1, second.Steps * grid.Spacing[this->SecondAxis]);
}

void zvImageViewerWidget::PushCross(int n)
{
  if (!this->TakeInput())
  {
    return;
  }
  double delta[3];
  this->PlaneSource->GetNormal(delta);
  vtkMath::MultiplyScalar(delta, n * this->SliceStep(zvImageGrid::Read(this->Reslice).Spacing));
  MoveLine(this->SliceLine1Source, delta);
  MoveLine(this->SliceLine2Source, delta);
  vtkMath::Add(this->RotationCenter, delta, this->RotationCenter);
}

// The lines along the edges of an upright plane, through the middle between its bounds.
void zvImageViewerWidget::LayLines(
  const zvReslicePlane::Corners& plane, const double low[3], const double high[3])
{
  const int first = this->FirstAxis;
  const int second = this->SecondAxis;
  LayLine(
    this->SliceLine1Source, plane.Origin, plane.Point2, first, 0.5 * (low[first] + high[first]));
  LayLine(
    this->SliceLine2Source, plane.Origin, plane.Point1, second, 0.5 * (low[second] + high[second]));
}

// The ends of the lines follow the plane's outline. Deliberate: the two lines take the points of
// their cuts in opposite order, so that both run the way of the plane's axes.
void zvImageViewerWidget::FitLines()
{
  vtkPolyData* outline = this->PlaneOutlinePolyData;
  FitLine(zvOutlineCut::FindPoints(outline, this->RotationCenter, this->LineNormal1),
    this->SliceLine1Source, 1, 0);
  FitLine(zvOutlineCut::FindPoints(outline, this->RotationCenter, this->LineNormal2),
    this->SliceLine2Source, 0, 1);
}

// Each line is square to the other, so it runs along the direction in which the other moves.
void zvImageViewerWidget::TurnLines()
{
  TurnLine(this->SliceLine1Source, this->Transform, this->LineNormal2);
  TurnLine(this->SliceLine2Source, this->Transform, this->LineNormal1);
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::GetSlicesMovement(int movement[2])
{
  std::copy_n(this->SlicesMovement, 2, movement);
}

void zvImageViewerWidget::GetCrossIndex(int index[2])
{
  std::copy_n(this->CrossIndex, 2, index);
}

void zvImageViewerWidget::SetCrossIndex(int index[2])
{
  std::copy_n(index, 2, this->CrossIndex);
  double origin[3], point1[3], point2[3], axis1[3], axis2[3];
  this->PlaneSource->GetOrigin(origin);
  this->PlaneSource->GetPoint1(point1);
  this->PlaneSource->GetPoint2(point2);
  this->GetVector1(axis1);
  this->GetVector2(axis2);
  const double a = zvSliceCross::FootParameter(this->RotationCenter, origin, axis1);
  const double b = zvSliceCross::FootParameter(this->RotationCenter, origin, axis2);
  vtkMath::MultiplyScalar(axis1, a);
  vtkMath::MultiplyScalar(axis2, b);
  LayLine(this->SliceLine2Source, origin, point1, axis2);
  LayLine(this->SliceLine1Source, origin, point2, axis1);
}

void zvImageViewerWidget::SetCrossResolution(int resolution[2])
{
  this->SliceLine1Source->SetResolution(resolution[0]);
  this->SliceLine2Source->SetResolution(resolution[1]);
}

void zvImageViewerWidget::SetLinesEnabled(int enabled)
{
  this->SetLineEnabled(
    enabled, this->SliceLine1Actor, this->SliceLine1Property, this->SliceLine1Picker);
  this->SetLineEnabled(
    enabled, this->SliceLine2Actor, this->SliceLine2Property, this->SliceLine2Picker);
  zvViewLookup::Render(this->Interactor);
}

void zvImageViewerWidget::SetLineEnabled(
  int enabled, vtkActor* actor, vtkProperty* property, vtkCellPicker* picker)
{
  // A line that is in the list twice would stay in it when hidden.
  picker->DeletePickList(actor);
  if (enabled)
  {
    this->ShowActor(actor, property);
    picker->AddPickList(actor);
    picker->PickFromListOn();
  }
  else if (this->CurrentRenderer)
  {
    this->CurrentRenderer->RemoveViewProp(actor);
  }
}

//------------------------------------------------------------------------------
int zvImageViewerWidget::Intersection(double p1[3], double p2[3], double a1[3], double a2[3],
  double x[3], double& tol, double& t, double& u)
{
  SolveCrossing(p1, p2, a1, a2, t, u);
  if (t >= 0.0 && t <= 1.0 && u >= 0.0 && u <= 1.0)
  {
    for (int i = 0; i < 3; ++i)
    {
      x[i] = p1[i] + t * (p2[i] - p1[i]);
    }
    return 1;
  }
  // Deliberate: a tolerance beyond 0 to 1 is asked first, and then an end of the second segment
  // counts instead of one of the first.
  double along = 0.0;
  double distance2 = 0.0;
  if (tol < 0.0 || tol > 1.0)
  {
    distance2 = vtkLine::DistanceToLine(tol < 0.0 ? a1 : a2, p1, p2, along, x);
    tol = tol < 0.0 ? 0.0 : 1.0;
  }
  else if (t < 0.0 || t > 1.0)
  {
    distance2 = vtkLine::DistanceToLine(t < 0.0 ? p1 : p2, a1, a2, along, x);
  }
  else
  {
    return 0;
  }
  return distance2 <= tol * tol ? 1 : 0;
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::SetRotationCenter(double center[3])
{
  std::copy_n(center, 3, this->RotationCenter);
}

void zvImageViewerWidget::GetRotationCenter(double center[3])
{
  std::copy_n(this->RotationCenter, 3, center);
}

void zvImageViewerWidget::GetRotateAxis(double axis[3])
{
  std::copy_n(this->RotateAxis, 3, axis);
}

void zvImageViewerWidget::GetDegree(double degree[3])
{
  std::copy_n(this->Degree, 3, degree);
}
