// Where the plane of the slice view stands, how the image is sampled through it, and its turns and
// steps through the volume.

#include "zvImageViewerWidget.h"

#include "zvBoxCut.h"
#include "zvImageGrid.h"
#include "zvObliqueSlices.h"
#include "zvReslicePlane.h"

#include "vtkCellPicker.h"
#include "vtkCutter.h"
#include "vtkImageData.h"
#include "vtkImageReslice.h"
#include "vtkLineSource.h"
#include "vtkMath.h"
#include "vtkMatrix4x4.h"
#include "vtkPlane.h"
#include "vtkPlaneSource.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkTransform.h"

#include <algorithm>
#include <cmath>

void zvImageViewerWidget::SetPlaneOrientation(int i)
{
  this->PlaneOrientation = i;
  this->ViewOrientation = i;
  if (!this->TakeInput())
  {
    vtkErrorMacro(<< "SetInput() before setting plane orientation.");
    return;
  }
  this->PlacePlaneAtFarBound();
  this->SliceLine1Property->SetColor(this->AxisColors[this->FirstAxis]);
  this->SliceLine2Property->SetColor(this->AxisColors[this->SecondAxis]);
  this->SliceLine1Source->SetResolution(this->Dimensions[0]);
  this->SliceLine2Source->SetResolution(this->Dimensions[1]);
  this->PlaneSource->GetCenter(this->RotationCenter);
  this->CrossIndex[0] = this->Dimensions[0] / 2;
  this->CrossIndex[1] = this->Dimensions[1] / 2;
  if (auto* picker = vtkCellPicker::SafeDownCast(this->PlanePicker))
  {
    picker->SetTolerance(0.001);
  }
  this->SlicesMovement[0] = this->SlicesMovement[1] = 0;
  this->Modified();
}

// The plane at the far bound of the volume, its lines through the middle of the voxels' centres.
void zvImageViewerWidget::PlacePlaneAtFarBound()
{
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const int normal = zvReslicePlane::NormalAxis(this->ViewOrientation);
  const int first = this->FirstAxis = zvReslicePlane::FirstAxis(normal);
  const int second = this->SecondAxis = zvReslicePlane::SecondAxis(normal);

  double low[3], high[3];
  zvImageGrid::Span(grid, low, high);
  for (int axis = 0; axis < 3; ++axis)
  {
    this->LineNormal1[axis] = axis == first ? 1.0 : 0.0;
    this->LineNormal2[axis] = axis == second ? 1.0 : 0.0;
  }
  double center[3];
  this->ImageData->GetCenter(center);
  this->CutPlane->SetOrigin(center);
  this->CutPlane->SetNormal(normal == 0, normal == 1, normal == 2);

  const zvReslicePlane::Corners plane =
    zvReslicePlane::Across(normal, low, high, this->Bounds[2 * normal + 1]);
  zvReslicePlane::WriteCorners(plane, this->PlaneSource);
  this->UpdatePlaneSource();
  this->LayLines(plane, low, high);

  this->NumberOfSlices = zvImageGrid::StepsAlong(grid.Extent, normal) + 1;
  this->Dimensions[0] = zvImageGrid::StepsAlong(grid.Extent, first);
  this->Dimensions[1] = zvImageGrid::StepsAlong(grid.Extent, second);
}

void zvImageViewerWidget::UpdatePlacement()
{
  this->PlaneSource->Modified();
  this->UpdatePlaneSource();
  this->Modified();
  zvBoxCut::Update(this->BoxCutter);
  this->UpdatePlane();
  this->UpdateMargins();
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::UpdatePlane()
{
  if (this->LastUpdateMTime == this->GetMTime() || !this->Reslice || !this->TakeInput())
  {
    return;
  }
  this->LastUpdateMTime = this->GetMTime();
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  if (!this->IsUpright(grid.IdentityDirection, "image", "the image is not shown"))
  {
    this->DetachInput();
    return;
  }
  if (zvImageGrid::IsEmpty(grid.Extent))
  {
    // Deliberate: the update goes on, so that the view shows nothing rather than the last slice.
    vtkErrorMacro(<< zvImageGrid::EmptyExtentText(grid.Extent));
  }
  // Taken before the plane moves: rounding may not make it a voxel wider, and so twice as fine.
  double axis1[3], axis2[3];
  this->GetVector1(axis1);
  this->GetVector2(axis2);
  this->CenterOnCut();
  this->SampleThroughPlane(axis1, axis2, grid.Spacing);
  if (this->HasWidth())
  {
    this->BuildRepresentation();
  }
  this->FitLines();
}

// The plane stays centred on its cut through the volume's box.
void zvImageViewerWidget::CenterOnCut()
{
  this->CutPlane->SetOrigin(this->PlaneSource->GetCenter());
  this->CutPlane->SetNormal(this->PlaneSource->GetNormal());
  double mean[3];
  const bool isCut = zvBoxCut::Mean(this->BoxCutter, mean);
  if (isCut && this->NumberOfSlices > 1)
  {
    this->PlaneSource->SetCenter(mean);
  }
}

void zvImageViewerWidget::SampleThroughPlane(
  double axis1[3], double axis2[3], const double spacing[3])
{
  double normal[3], origin[3];
  this->PlaneSource->GetNormal(normal);
  this->PlaneSource->GetOrigin(origin);
  const double size1 = vtkMath::Normalize(axis1);
  const double size2 = vtkMath::Normalize(axis2);

  zvReslicePlane::SetResliceAxes(axis1, axis2, normal, origin, this->ResliceAxes);
  this->Reslice->SetResliceAxes(this->ResliceAxes);

  const zvReslicePlane::Sampling x = zvReslicePlane::SampleAlong(axis1, size1, spacing);
  const zvReslicePlane::Sampling y = zvReslicePlane::SampleAlong(axis2, size2, spacing);
  if (x.Extent == 0)
  {
    vtkErrorMacro(<< "Invalid X extent: " << x.Voxels);
  }
  if (y.Extent == 0)
  {
    vtkErrorMacro(<< "Invalid Y extent: " << y.Voxels);
  }
  zvReslicePlane::SetOutput(x, y, this->ImageResolutionFactor, this->Reslice);
  this->ShowSlice(x.Extent > 0 && y.Extent > 0);
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::Rotate(double angle, double axis[3], double center[3])
{
  if (!this->TakeInput())
  {
    return;
  }
  // Copied, as a host may pass the plane's own centre and normal, which are about to change.
  const double fixedAxis[3] = { axis[0], axis[1], axis[2] };
  const double fixedCenter[3] = { center[0], center[1], center[2] };
  this->BecomeOblique();
  std::copy_n(fixedCenter, 3, this->RotationCenter);
  this->TurnPlane(angle, fixedAxis);
  this->PlaneSource->Modified();
  this->UpdatePlaneSource();
  this->TurnLines();
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
}

void zvImageViewerWidget::Rotate(
  int vtkNotUsed(X), int vtkNotUsed(Y), double p1[3], double p2[3], double vtkNotUsed(vpn)[3])
{
  if (!this->TakeInput())
  {
    return;
  }
  this->BecomeOblique();
  double normal[3], arm[3], motion[3];
  this->PlaneSource->GetNormal(normal);
  vtkMath::Subtract(p2, this->RotationCenter, arm);
  const double length = vtkMath::Normalize(arm);
  vtkMath::Cross(normal, arm, this->RotateAxis);
  vtkMath::Subtract(p2, p1, motion);
  // A motion at the centre itself has no angle.
  const double angle =
    length != 0.0 ? vtkMath::Dot(motion, this->RotateAxis) / length * 57.29577951308232 : 0.0;
  this->LastDegree = angle;
  for (int i = 0; i < 3; ++i)
  {
    this->Degree[i] = this->RotateAxis[i] * angle;
  }
  // Deliberate: about the normal. RotateAxis is the direction of the motion, which hosts read.
  this->TurnPlane(angle, normal);
  this->TurnLines();
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
}

// Before its first rotation the plane is enlarged, so that it cuts the whole volume at any angle.
void zvImageViewerWidget::BecomeOblique()
{
  if (this->PlaneOrientation != 3)
  {
    const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
    double center[3];
    this->ImageData->GetCenter(center);
    this->CutPlane->SetOrigin(center);
    if (zvReslicePlane::MayBeEnlarged(grid.Extent))
    {
      double half[3];
      for (int axis = 0; axis < 3; ++axis)
      {
        half[axis] = grid.Extent[2 * axis + 1] * grid.Spacing[axis];
      }
      zvReslicePlane::WriteCorners(
        zvReslicePlane::Enlarged(zvReslicePlane::ReadCorners(this->PlaneSource),
          zvReslicePlane::NormalAxis(this->PlaneOrientation), center, half),
        this->PlaneSource);
    }
  }
  this->PlaneOrientation = 3;
}

void zvImageViewerWidget::TurnPlane(double angle, const double axis[3])
{
  zvReslicePlane::SetTurn(this->RotationCenter, angle, axis, this->Transform);
  const zvReslicePlane::Corners turned =
    zvReslicePlane::Turned(zvReslicePlane::ReadCorners(this->PlaneSource), this->Transform);
  // The origin first: centre and normal follow the other two, and would otherwise be those of a
  // plane that is turned in part, whose normal can point the wrong way after a long step.
  zvReslicePlane::WriteCorners(turned, this->PlaneSource);
}

// A plane without width, as of a single slice seen edge on, cannot be updated.
bool zvImageViewerWidget::HasWidth()
{
  double axis1[3], axis2[3], normal[3];
  this->GetVector1(axis1);
  this->GetVector2(axis2);
  vtkMath::Cross(axis1, axis2, normal);
  return vtkMath::Norm(normal) > 0.0;
}

void zvImageViewerWidget::UpdatePlaneSource()
{
  if (this->HasWidth())
  {
    this->PlaneSource->Update();
  }
}

//------------------------------------------------------------------------------
int zvImageViewerWidget::GetSliceIndex()
{
  if (!this->Reslice || !this->TakeInput())
  {
    return 0;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  double bounds[6], origin[3];
  this->ImageData->GetBounds(bounds);
  this->PlaneSource->GetOrigin(origin);
  if (this->PlaneOrientation < 0 || this->PlaneOrientation > 2)
  {
    return this->CountObliqueIndex(grid.Spacing, bounds);
  }
  const int axis = this->PlaneOrientation;
  const double low = bounds[2 * axis];
  const double high = bounds[2 * axis + 1];
  if (origin[axis] > high)
  {
    this->PlaneSource->Push(high - origin[axis]);
  }
  else if (origin[axis] < low)
  {
    this->PlaneSource->Push(low - origin[axis]);
  }
  // Deliberate: of the place before that push, so that a host learns that the plane had left.
  return zvImageGrid::NearestIndex(origin[axis], low, grid.Spacing[axis]);
}

// How many steps back along the normal leave the volume, plus one.
int zvImageViewerWidget::CountObliqueIndex(const double spacing[3], const double bounds[6])
{
  const auto polygon = zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints());
  double step[3];
  this->PlaneSource->GetNormal(step);
  vtkMath::MultiplyScalar(step, -this->SliceStep(spacing));
  return zvObliqueSlices::Touches(polygon, bounds)
    ? 1 + zvObliqueSlices::StepsUntilClear(polygon, step, bounds)
    : 1;
}

double zvImageViewerWidget::SliceStep(const double spacing[3]) const
{
  return spacing[zvReslicePlane::NormalAxis(this->ViewOrientation)];
}

void zvImageViewerWidget::SetSliceIndex(int index)
{
  if (!this->Reslice || !this->TakeInput())
  {
    return;
  }
  // A host may have set any count; what follows does not overflow.
  const int last = std::max(this->NumberOfSlices, 1 - VTK_INT_MAX) - 1;
  index = std::max(std::min(index, last), 0);
  int current = this->GetSliceIndex();
  if (current == index)
  {
    return;
  }
  current = std::min(std::max(current, 0), last);
  const int delta = index - current;
  if (delta == 0)
  {
    return;
  }
  this->PlaneSource->Push(delta * this->SliceStep(zvImageGrid::Read(this->Reslice).Spacing));
  this->PushCross(delta);
  this->PlaneSource->Modified();
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
}

void zvImageViewerWidget::SetDimensions(int dimensions[2])
{
  this->SetDimensions(dimensions[0], dimensions[1]);
}

void zvImageViewerWidget::SetDimensions(int width, int height)
{
  if (!this->TakeInput())
  {
    return;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const int to[2] = { width, height };
  const int normal = zvReslicePlane::NormalAxis(this->ViewOrientation);
  const double spacing[2] = { grid.Spacing[zvReslicePlane::FirstAxis(normal)],
    grid.Spacing[zvReslicePlane::SecondAxis(normal)] };
  zvReslicePlane::WriteCorners(
    zvReslicePlane::Resized(
      zvReslicePlane::ReadCorners(this->PlaneSource), this->Dimensions, to, spacing),
    this->PlaneSource);
  this->Dimensions[0] = width;
  this->Dimensions[1] = height;
}
