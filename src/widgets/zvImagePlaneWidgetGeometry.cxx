// Where the plane stands: its points, slices, pushes and turns.

#include "zvImagePlaneWidget.h"

#include "zvImageGrid.h"
#include "zvObliqueSlices.h"
#include "zvPlaneMargins.h"
#include "zvPlaneSource.h"
#include "zvReslicePlane.h"
#include "zvSliceCross.h"

#include "vtkImageData.h"
#include "vtkImageReslice.h"
#include "vtkMath.h"
#include "vtkPlane.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkTransform.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{
constexpr int Oblique = 3;

// The points are told as well, as mappers look at nothing else.
void TellPointsMoved(vtkPolyData* polyData)
{
  polyData->GetPoints()->GetData()->Modified();
  polyData->GetPoints()->Modified();
  polyData->Modified();
}
}

//------------------------------------------------------------------------------
// Points and what is drawn around them

vtkPolyDataAlgorithm* zvImagePlaneWidget::GetPolyDataAlgorithm()
{
  return this->PlaneSource;
}

void zvImagePlaneWidget::GetPolyData(vtkPolyData* pd)
{
  if (pd)
  {
    pd->ShallowCopy(this->PlaneSource->GetOutput());
  }
}

void zvImagePlaneWidget::SetOrigin(double x, double y, double z)
{
  this->PlaneSource->SetOrigin(x, y, z);
  this->Modified();
}

void zvImagePlaneWidget::SetOrigin(double xyz[3])
{
  this->PlaneSource->SetOrigin(xyz);
  this->Modified();
}

double* zvImagePlaneWidget::GetOrigin()
{
  return this->PlaneSource->GetOrigin();
}

void zvImagePlaneWidget::GetOrigin(double xyz[3])
{
  this->PlaneSource->GetOrigin(xyz);
}

void zvImagePlaneWidget::SetPoint1(double x, double y, double z)
{
  this->PlaneSource->SetPoint1(x, y, z);
  this->Modified();
}

void zvImagePlaneWidget::SetPoint1(double xyz[3])
{
  this->PlaneSource->SetPoint1(xyz);
  this->Modified();
}

double* zvImagePlaneWidget::GetPoint1()
{
  return this->PlaneSource->GetPoint1();
}

void zvImagePlaneWidget::GetPoint1(double xyz[3])
{
  this->PlaneSource->GetPoint1(xyz);
}

void zvImagePlaneWidget::SetPoint2(double x, double y, double z)
{
  this->PlaneSource->SetPoint2(x, y, z);
  this->Modified();
}

void zvImagePlaneWidget::SetPoint2(double xyz[3])
{
  this->PlaneSource->SetPoint2(xyz);
  this->Modified();
}

double* zvImagePlaneWidget::GetPoint2()
{
  return this->PlaneSource->GetPoint2();
}

void zvImagePlaneWidget::GetPoint2(double xyz[3])
{
  this->PlaneSource->GetPoint2(xyz);
}

double* zvImagePlaneWidget::GetCenter()
{
  return this->PlaneSource->GetCenter();
}

void zvImagePlaneWidget::GetCenter(double xyz[3])
{
  this->PlaneSource->GetCenter(xyz);
}

double* zvImagePlaneWidget::GetNormal()
{
  return this->PlaneSource->GetNormal();
}

void zvImagePlaneWidget::GetNormal(double xyz[3])
{
  this->PlaneSource->GetNormal(xyz);
}

void zvImagePlaneWidget::GetVector1(double v1[3])
{
  vtkMath::Subtract(this->PlaneSource->GetPoint1(), this->PlaneSource->GetOrigin(), v1);
}

void zvImagePlaneWidget::GetVector2(double v2[3])
{
  vtkMath::Subtract(this->PlaneSource->GetPoint2(), this->PlaneSource->GetOrigin(), v2);
}

void zvImagePlaneWidget::BuildRepresentation()
{
  this->PlaneSource->Update();
  const zvReslicePlane::Corners plane = zvReslicePlane::ReadCorners(this->PlaneSource.Get());
  double opposite[3];
  for (int i = 0; i < 3; ++i)
  {
    opposite[i] =
      plane.Origin[i] + (plane.Point1[i] - plane.Origin[i]) + (plane.Point2[i] - plane.Origin[i]);
  }
  vtkPoints* points = this->PlaneOutlinePolyData->GetPoints();
  points->SetPoint(0, plane.Origin);
  points->SetPoint(1, plane.Point1);
  points->SetPoint(2, opposite);
  points->SetPoint(3, plane.Point2);
  TellPointsMoved(this->PlaneOutlinePolyData);
}

void zvImagePlaneWidget::UpdateMargins()
{
  const auto lines = zvPlaneMargins::Lines(
    zvReslicePlane::ReadCorners(this->PlaneSource.Get()), this->MarginSizeX, this->MarginSizeY);
  for (std::size_t i = 0; i < lines.size(); ++i)
  {
    this->MarginPolyData->GetPoints()->SetPoint(static_cast<vtkIdType>(i), lines[i].data());
  }
  TellPointsMoved(this->MarginPolyData);
}

void zvImagePlaneWidget::PlaceCursor(const double q[3])
{
  const zvReslicePlane::Corners plane = zvReslicePlane::ReadCorners(this->PlaneSource.Get());
  double vector1[3];
  double vector2[3];
  this->GetVector1(vector1);
  this->GetVector2(vector2);
  const double along1 = zvSliceCross::FootParameter(q, plane.Origin, vector1);
  const double along2 = zvSliceCross::FootParameter(q, plane.Origin, vector2);
  double ends[4][3];
  for (int i = 0; i < 3; ++i)
  {
    ends[0][i] = plane.Origin[i] + along2 * vector2[i];
    ends[1][i] = plane.Point1[i] + along2 * vector2[i];
    ends[2][i] = plane.Origin[i] + along1 * vector1[i];
    ends[3][i] = plane.Point2[i] + along1 * vector1[i];
  }
  for (vtkIdType i = 0; i < 4; ++i)
  {
    this->CursorPolyData->GetPoints()->SetPoint(i, ends[i]);
  }
  TellPointsMoved(this->CursorPolyData);
}

//------------------------------------------------------------------------------
// Placing

void zvImagePlaneWidget::PlaceWidget(double bounds[6])
{
  double box[6];
  double center[3];
  this->AdjustBounds(bounds, box, center);
  // Deliberate: the axes of a plane across y are the other way round than SetPlaneOrientation's.
  const int normal =
    this->PlaneOrientation == 1 || this->PlaneOrientation == 2 ? this->PlaneOrientation : 0;
  const int first = normal == 0 ? 1 : 0;
  const int second = normal == 2 ? 1 : 2;
  zvReslicePlane::Corners plane;
  for (double* point : { plane.Origin, plane.Point1, plane.Point2 })
  {
    point[normal] = center[normal];
    point[first] = box[2 * first];
    point[second] = box[2 * second];
  }
  plane.Point1[first] = box[2 * first + 1];
  plane.Point2[second] = box[2 * second + 1];
  zvReslicePlane::WriteCorners(plane, this->PlaneSource.Get());

  const double lower[3] = { box[0], box[2], box[4] };
  const double upper[3] = { box[1], box[3], box[5] };
  this->InitialLength = std::sqrt(vtkMath::Distance2BetweenPoints(lower, upper));
  this->UpdatePlane();
  this->BuildRepresentation();
  this->SizeHandles();
}

void zvImagePlaneWidget::PlaceWidget()
{
  this->vtk3DWidget::PlaceWidget();
}

void zvImagePlaneWidget::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->vtk3DWidget::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

void zvImagePlaneWidget::SetPlaneOrientation(int i)
{
  this->PlaneOrientation = i;
  this->SliceAxis = i;
  if (!this->TakeImage())
  {
    vtkErrorMacro("SetInput() before setting plane orientation.");
    return;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  double starts[3];
  double stops[3];
  zvImageGrid::Span(grid, starts, stops);
  this->CutPlane->SetOrigin(this->ImageData->GetCenter());
  const int normal = zvReslicePlane::NormalAxis(i);
  const int first = zvReslicePlane::FirstAxis(normal);
  const int second = zvReslicePlane::SecondAxis(normal);
  const double farBound = this->ImageData->GetBounds()[2 * normal + 1];
  zvReslicePlane::WriteCorners(
    zvReslicePlane::Across(normal, starts, stops, farBound), this->PlaneSource.Get());
  this->CutPlane->SetNormal(normal == 0, normal == 1, normal == 2);
  this->Dimensions[0] = zvImageGrid::StepsAlong(grid.Extent, first);
  this->Dimensions[1] = zvImageGrid::StepsAlong(grid.Extent, second);
  this->PlaneSource->GetCenter(this->RotationCenter);
  this->UpdatePlane();
  this->BuildRepresentation();
  this->Modified();
  this->UpdateNumberOfSlices();
}

void zvImagePlaneWidget::SetDimensions(int x, int y)
{
  if (!this->ImageData)
  {
    return;
  }
  const int to[2] = { x, y };
  double steps[2] = { 0.0, 0.0 };
  if (this->SliceAxis >= 0 && this->SliceAxis <= 2)
  {
    const double* spacing = this->ImageData->GetSpacing();
    steps[0] = spacing[zvReslicePlane::FirstAxis(this->SliceAxis)];
    steps[1] = spacing[zvReslicePlane::SecondAxis(this->SliceAxis)];
  }
  zvReslicePlane::WriteCorners(
    zvReslicePlane::Resized(
      zvReslicePlane::ReadCorners(this->PlaneSource.Get()), this->Dimensions, to, steps),
    this->PlaneSource.Get());
  std::copy_n(to, 2, this->Dimensions);
  this->Modified();
  this->UpdatePlacement();
}

void zvImagePlaneWidget::SetDimensions(int* xy)
{
  this->SetDimensions(xy[0], xy[1]);
}

void zvImagePlaneWidget::SetRotationCenter(double* center)
{
  std::copy_n(center, 3, this->RotationCenter);
}

void zvImagePlaneWidget::GetRotationCenter(double* center)
{
  std::copy_n(this->RotationCenter, 3, center);
}

void zvImagePlaneWidget::GetDegree(double* degree)
{
  std::copy_n(this->Degree, 3, degree);
}

//------------------------------------------------------------------------------
// Slices

double zvImagePlaneWidget::GetStepLength()
{
  // An orientation out of range is placed across y, so a step is one of y.
  return zvImageGrid::Read(this->Reslice).Spacing[zvReslicePlane::NormalAxis(this->SliceAxis)];
}

void zvImagePlaneWidget::GetStep(double length, double step[3])
{
  this->PlaneSource->GetNormal(step);
  vtkMath::MultiplyScalar(step, length);
}

int zvImagePlaneWidget::GetSliceIndex()
{
  if (!this->TakeImage())
  {
    return 0;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const double* bounds = this->ImageData->GetBounds();
  if (this->PlaneOrientation >= 0 && this->PlaneOrientation < Oblique)
  {
    const int axis = this->PlaneOrientation;
    const double position = this->PlaneSource->GetOrigin()[axis];
    if (position > bounds[2 * axis + 1])
    {
      this->PlaneSource->Push(bounds[2 * axis + 1] - position);
    }
    else if (position < bounds[2 * axis])
    {
      this->PlaneSource->Push(bounds[2 * axis] - position);
    }
    // Deliberate: counted from where the plane stood before, so that the caller sees it was
    // outside.
    return zvImageGrid::NearestIndex(position, bounds[2 * axis], grid.Spacing[axis]);
  }
  const auto polygon = zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints());
  if (!zvObliqueSlices::Touches(polygon, bounds))
  {
    return this->ObliqueSliceIndex;
  }
  double step[3];
  this->GetStep(-this->GetStepLength(), step);
  this->ObliqueSliceIndex = 1 + zvObliqueSlices::StepsUntilClear(polygon, step, bounds);
  return this->ObliqueSliceIndex;
}

void zvImagePlaneWidget::SetSliceIndex(int index)
{
  if (!this->TakeImage())
  {
    return;
  }
  const int last = this->NumberOfSlices - 1;
  const int current = std::max(std::min(this->GetSliceIndex(), last), 0);
  index = std::max(std::min(index, last), 0);
  this->ObliqueSliceIndex = index;
  if (index == current)
  {
    return;
  }
  const double distance = (index - current) * this->GetStepLength();
  double delta[3];
  this->GetStep(distance, delta);
  this->PlaneSource->Push(distance);
  vtkMath::Add(this->RotationCenter, delta, this->RotationCenter);
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
  this->BuildRepresentation();
}

double zvImagePlaneWidget::GetSlicePosition()
{
  if (this->PlaneOrientation < 0 || this->PlaneOrientation >= Oblique)
  {
    vtkGenericWarningMacro("only works for ortho planes: set plane orientation first");
    return 0.0;
  }
  return this->PlaneSource->GetOrigin()[this->PlaneOrientation];
}

void zvImagePlaneWidget::SetSlicePosition(double position)
{
  if (this->PlaneOrientation < 0 || this->PlaneOrientation >= Oblique)
  {
    vtkGenericWarningMacro("only works for ortho planes: set plane orientation first");
    return;
  }
  this->PlaneSource->Push(position - this->PlaneSource->GetOrigin()[this->PlaneOrientation]);
  this->UpdatePlane();
  this->BuildRepresentation();
  this->Modified();
}

void zvImagePlaneWidget::UpdateNumberOfSlices()
{
  if (!this->ImageData || !this->Reslice)
  {
    return;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const int axis = this->PlaneOrientation;
  if (axis >= 0 && axis < Oblique)
  {
    this->NumberOfSlices = zvImageGrid::StepsAlong(grid.Extent, axis) + 1;
    return;
  }
  const double* bounds = this->ImageData->GetBounds();
  const auto polygon = zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints());
  if (!zvObliqueSlices::Touches(polygon, bounds))
  {
    return;
  }
  int count = 1;
  for (const double direction : { 1.0, -1.0 })
  {
    double step[3];
    this->GetStep(direction * this->GetStepLength(), step);
    // Deliberate: the place one step away is not tested, hosts have sized their sliders by that.
    count += zvObliqueSlices::StepsUntilClear(zvObliqueSlices::Moved(polygon, step), step, bounds);
  }
  this->NumberOfSlices = count;
}

//------------------------------------------------------------------------------
// Motions

void zvImagePlaneWidget::Push(int distance)
{
  this->GetSliceIndex();
  if (!this->ImageData || distance == 0)
  {
    return;
  }
  const double length = this->GetStepLength();
  double step[3];
  this->GetStep(length, step);
  const double* bounds = this->ImageData->GetBounds();
  auto polygon =
    zvObliqueSlices::Moved(zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints()), step);
  if (!zvObliqueSlices::IsStep(step) || !zvObliqueSlices::Touches(polygon, bounds))
  {
    return;
  }
  const long long steps = std::llabs(distance);
  for (long long i = std::min<long long>(steps, zvObliqueSlices::MaximumSteps); i > 0; --i)
  {
    this->PlaneSource->Push(length);
    polygon = zvObliqueSlices::Moved(polygon, step);
    if (!zvObliqueSlices::Touches(polygon, bounds))
    {
      return;
    }
  }
  // Deliberate: one step more than asked, and no Modified before the update.
  this->PlaneSource->Push(length);
  this->UpdatePlane();
  this->UpdateMargins();
  this->BuildRepresentation();
}

void zvImagePlaneWidget::Push(double* p1, double* p2)
{
  double motion[3];
  vtkMath::Subtract(p2, p1, motion);
  const int steps =
    zvObliqueSlices::StepsOfMotion(vtkMath::Dot(motion, this->PlaneSource->GetNormal()));
  const int index = this->GetSliceIndex();
  // Deliberate: a push that ends at a border leaves the update to the caller.
  if (this->ImageData && steps != 0 && this->PushSteps(steps, index))
  {
    this->Modified();
    this->UpdatePlane();
    this->UpdateMargins();
    this->BuildRepresentation();
  }
}

bool zvImagePlaneWidget::PushSteps(int steps, int index)
{
  const int direction = steps > 0 ? 1 : -1;
  const double length = direction * this->GetStepLength();
  double step[3];
  this->GetStep(length, step);
  const double* bounds = this->ImageData->GetBounds();
  auto polygon =
    zvObliqueSlices::Moved(zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints()), step);
  if (!zvObliqueSlices::IsStep(step) || !zvObliqueSlices::Touches(polygon, bounds))
  {
    return false;
  }
  for (int taken = 0; taken != steps; taken += direction)
  {
    const bool atEnd = direction > 0 ? index >= this->NumberOfSlices - 1 : index < 1;
    if (atEnd)
    {
      return false;
    }
    this->PlaneSource->Push(length);
    polygon = zvObliqueSlices::Moved(polygon, step);
    if (!zvObliqueSlices::Touches(polygon, bounds))
    {
      return false;
    }
    index += direction;
  }
  return true;
}

void zvImagePlaneWidget::EnlargeBeforeTurning()
{
  if (this->PlaneOrientation == Oblique || !this->ImageData)
  {
    return;
  }
  double center[3];
  this->ImageData->GetCenter(center);
  this->CutPlane->SetOrigin(center);
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  if (!zvReslicePlane::MayBeEnlarged(grid.Extent))
  {
    return;
  }
  const double half = 0.5 * this->ImageData->GetLength();
  const double halfWidth[3] = { half, half, half };
  zvReslicePlane::WriteCorners(
    zvReslicePlane::Enlarged(zvReslicePlane::ReadCorners(this->PlaneSource.Get()),
      zvReslicePlane::NormalAxis(this->PlaneOrientation), center, halfWidth),
    this->PlaneSource.Get());
}

void zvImagePlaneWidget::TurnPlane(const double center[3], double angle, const double axis[3])
{
  zvReslicePlane::SetTurn(center, angle, axis, this->Transform);
  zvReslicePlane::Corners turned =
    zvReslicePlane::Turned(zvReslicePlane::ReadCorners(this->PlaneSource.Get()), this->Transform);
  this->PlaneSource->SetPoint1(turned.Point1);
  this->PlaneSource->SetPoint2(turned.Point2);
  this->PlaneSource->SetOrigin(turned.Origin);
}

void zvImagePlaneWidget::Rotate(double angle, double* axis, double* center)
{
  // Copied, as a host may pass the plane's own centre and normal, which are about to change.
  const double fixedAxis[3] = { axis[0], axis[1], axis[2] };
  const double fixedCenter[3] = { center[0], center[1], center[2] };
  this->EnlargeBeforeTurning();
  this->PlaneOrientation = Oblique;
  std::copy_n(fixedCenter, 3, this->RotationCenter);
  this->TurnPlane(fixedCenter, angle, fixedAxis);
  this->PlaneSource->Modified();
  this->PlaneSource->Update();
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
  this->BuildRepresentation();
  this->UpdateNumberOfSlices();
}

void zvImagePlaneWidget::Rotate(double* p1, double* p2, double* vtkNotUsed(vpn))
{
  this->EnlargeBeforeTurning();
  this->PlaneOrientation = Oblique;
  double motion[3];
  vtkMath::Subtract(p2, p1, motion);
  const double theta = -vtkMath::Dot(motion, this->RadiusVector);
  for (int i = 0; i < 3; ++i)
  {
    // One turn is taken off, not all of them.
    const double degree = this->RotateAxis[i] * theta;
    this->Degree[i] = degree > 360.0 ? degree - 360.0 : (degree < -360.0 ? degree + 360.0 : degree);
  }
  double center[3];
  this->PlaneSource->GetCenter(center);
  this->TurnPlane(center, theta, this->RotateAxis);
  this->PlaneSource->Modified();
  this->PlaneSource->Update();
  this->Modified();
  this->UpdateNumberOfSlices();
}

void zvImagePlaneWidget::Spin(double* p1, double* p2)
{
  this->PlaneOrientation = Oblique;
  double motion[3];
  double center[3];
  double normal[3];
  double radius[3];
  double tangent[3];
  vtkMath::Subtract(p2, p1, motion);
  this->PlaneSource->GetCenter(center);
  this->PlaneSource->GetNormal(normal);
  vtkMath::Subtract(p2, center, radius);
  const double length = vtkMath::Normalize(radius);
  if (length == 0.0)
  {
    return;
  }
  vtkMath::Cross(normal, radius, tangent);
  this->TurnPlane(
    center, vtkMath::DegreesFromRadians(vtkMath::Dot(tangent, motion) / length), normal);
}

void zvImagePlaneWidget::Translate(double* p1, double* p2)
{
  double motion[3];
  vtkMath::Subtract(p2, p1, motion);
  zvReslicePlane::WriteCorners(
    zvPlaneMargins::Moved(zvReslicePlane::ReadCorners(this->PlaneSource.Get()),
      this->MarginSelectMode, motion, this->RotateAxis, this->RadiusVector),
    this->PlaneSource.Get());
}

void zvImagePlaneWidget::Scale(double* p1, double* p2, int vtkNotUsed(X), int Y)
{
  zvReslicePlane::Corners plane = zvReslicePlane::ReadCorners(this->PlaneSource.Get());
  const double diagonal = std::sqrt(vtkMath::Distance2BetweenPoints(plane.Point1, plane.Point2));
  if (diagonal == 0.0 || !this->Interactor)
  {
    return;
  }
  const double change = std::sqrt(vtkMath::Distance2BetweenPoints(p1, p2)) / diagonal;
  const bool larger = Y > this->Interactor->GetLastEventPosition()[1];
  const double factor = larger ? 1.0 + change : 1.0 - change;
  double center[3];
  this->PlaneSource->GetCenter(center);
  for (double* point : { plane.Origin, plane.Point1, plane.Point2 })
  {
    for (int i = 0; i < 3; ++i)
    {
      point[i] = center[i] + factor * (point[i] - center[i]);
    }
  }
  zvReslicePlane::WriteCorners(plane, this->PlaneSource.Get());
}
