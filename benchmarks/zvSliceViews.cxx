#include "zvSliceViews.h"

#include "zvBenchmarkDisplay.h"
#include "zvImagePlaneWidget.h"
#include "zvPlainSlice.h"

#include <vtkCamera.h>
#include <vtkImageData.h>
#include <vtkImagePlaneWidget.h>
#include <vtkMath.h>
#include <vtkTransform.h>

#include <algorithm>
#include <cmath>

namespace
{
void TurnObliquely(const double vector[3], double turned[3])
{
  vtkNew<vtkTransform> turn;
  turn->RotateX(25.0);
  turn->RotateY(17.0);
  turn->TransformVector(vector, turned);
}

int GetNumberOfSlices(vtkImageData* volume, int orientation)
{
  return volume->GetDimensions()[orientation < 3 ? orientation : 2];
}

/// The place of a slice number on the way through the volume. Oblique steps keep to the middle,
/// where a plane meets most of the volume.
double GetObliqueFraction(vtkImageData* volume, int slice)
{
  return 0.25 + 0.5 * slice / GetNumberOfSlices(volume, 3);
}

/// Either of the two widgets, whose operations have the same names.
template <typename Widget>
class WidgetView : public zvSliceView
{
public:
  WidgetView(Widget* widget, vtkImageData* volume, const zvCut& cut)
    : Plane(widget)
    , Volume(volume)
    , Cut(cut)
  {
    this->Plane->SetResliceInterpolate(cut.Linear ? 1 : 0);
    this->Plane->SetInputData(volume);
    this->Plane->SetPlaneOrientation(std::min(cut.Orientation, 2));
    this->Plane->UpdatePlacement();
  }

  ~WidgetView() override
  {
    this->Plane->SetInteractor(nullptr);
    this->Plane->Delete();
  }

  WidgetView(const WidgetView&) = delete;
  WidgetView& operator=(const WidgetView&) = delete;

  void Show(zvBenchmarkWindow& window) override
  {
    this->Window = &window;
    this->Plane->SetInteractor(window.GetInteractor());
    this->Plane->SetCurrentRenderer(window.GetRenderer());
    this->Plane->SetEnabled(1);
  }

  void GoTo(int slice) override
  {
    if (this->Cut.Orientation < 3)
    {
      this->Plane->SetSliceIndex(slice);
      return;
    }
    zvObliquePlane place(this->Volume, GetObliqueFraction(this->Volume, slice));
    this->Plane->SetOrigin(place.Origin);
    this->Plane->SetPoint1(place.Point1);
    this->Plane->SetPoint2(place.Point2);
    this->Plane->UpdatePlacement();
  }

  void UpdateColors() override { this->Plane->GetColorMap()->Update(); }

  void DrawWindowLevel(double window, double level) override
  {
    this->Plane->SetWindowLevel(window, level); // renders, as the widget is enabled
    this->Window->Finish();
  }

  void UpdateAgain() override { this->UpdatePlane(this->Plane); }

private:
  static void UpdatePlane(zvImagePlaneWidget* widget) { widget->UpdatePlane(); }
  static void UpdatePlane(vtkImagePlaneWidget* widget) { widget->UpdatePlacement(); }

  Widget* const Plane; // ours, released by Delete()
  vtkImageData* const Volume;
  const zvCut Cut;
  zvBenchmarkWindow* Window = nullptr;
};

class FilterView : public zvSliceView
{
public:
  FilterView(zvPlainSlice::Filters filters, vtkImageData* volume, const zvCut& cut)
    : Slice(filters, volume, cut.Linear)
    , Volume(volume)
    , Cut(cut)
  {
  }

  ~FilterView() override
  {
    if (this->Window)
    {
      this->Window->GetRenderer()->RemoveAllViewProps();
    }
  }

  FilterView(const FilterView&) = delete;
  FilterView& operator=(const FilterView&) = delete;

  void Show(zvBenchmarkWindow& window) override
  {
    this->Window = &window;
    window.GetRenderer()->AddActor(this->Slice.GetActor());
    window.GetRenderer()->AddActor(this->Slice.GetCutActor());
  }

  void GoTo(int slice) override
  {
    if (this->Cut.Orientation < 3)
    {
      this->GoToAligned(slice);
    }
    else
    {
      const zvObliquePlane place(this->Volume, GetObliqueFraction(this->Volume, slice));
      this->Slice.SetPlane(place.Origin, place.Point1, place.Point2);
    }
    this->Slice.UpdatePlane();
  }

  void UpdateColors() override { this->Slice.GetColorMap()->Update(); }

  void DrawWindowLevel(double window, double level) override
  {
    this->Slice.GetTable()->SetTableRange(level - 0.5 * window, level + 0.5 * window);
    this->Window->Render();
  }

  void UpdateAgain() override { this->Slice.UpdatePlane(); }

private:
  void GoToAligned(int slice)
  {
    const int normal = this->Cut.Orientation;
    const int right = normal == 0 ? 1 : 0;
    const int up = normal == 2 ? 1 : 2;
    const double* const bounds = this->Volume->GetBounds();
    double origin[3] = { bounds[0], bounds[2], bounds[4] };
    origin[normal] += slice * this->Volume->GetSpacing()[normal];
    double point1[3] = { origin[0], origin[1], origin[2] };
    double point2[3] = { origin[0], origin[1], origin[2] };
    point1[right] = bounds[2 * right + 1];
    point2[up] = bounds[2 * up + 1];
    this->Slice.SetPlane(origin, point1, point2);
  }

  zvPlainSlice Slice;
  vtkImageData* const Volume;
  const zvCut Cut;
  zvBenchmarkWindow* Window = nullptr;
};
}

//------------------------------------------------------------------------------
zvObliquePlane::zvObliquePlane(vtkImageData* volume, double fraction)
{
  const double* const bounds = volume->GetBounds();
  const double right[3] = { bounds[1] - bounds[0], 0.0, 0.0 };
  const double up[3] = { 0.0, bounds[3] - bounds[2], 0.0 };
  double turnedRight[3];
  double turnedUp[3];
  TurnObliquely(right, turnedRight);
  TurnObliquely(up, turnedUp);
  for (int axis = 0; axis < 3; ++axis)
  {
    const double along = axis == 2 ? fraction : 0.5;
    const double centre = bounds[2 * axis] + along * (bounds[2 * axis + 1] - bounds[2 * axis]);
    this->Origin[axis] = centre - 0.5 * (turnedRight[axis] + turnedUp[axis]);
    this->Point1[axis] = this->Origin[axis] + turnedRight[axis];
    this->Point2[axis] = this->Origin[axis] + turnedUp[axis];
  }
}

//------------------------------------------------------------------------------
zvBenchmarkWindow::zvBenchmarkWindow(vtkImageData* volume, const zvCut& cut)
{
  this->Window->SetDisplayId(zvGetBenchmarkDisplay());
  this->Window->SetOffScreenRendering(1);
  this->Window->SetMultiSamples(0);
  this->Window->SetSize(512, 512);
  this->Window->AddRenderer(this->Renderer);
  this->Interactor->SetRenderWindow(this->Window);
  this->Interactor->Initialize();
  const int along = std::min(cut.Orientation, 2);
  double direction[3] = { along == 0 ? 1.0 : 0.0, along == 1 ? 1.0 : 0.0, along == 2 ? 1.0 : 0.0 };
  double up[3] = { 0.0, along == 2 ? 1.0 : 0.0, along == 2 ? 0.0 : 1.0 };
  if (cut.Orientation == 3)
  {
    TurnObliquely(direction, direction);
    TurnObliquely(up, up);
  }
  double centre[3];
  volume->GetCenter(centre);
  vtkCamera* const camera = this->Renderer->GetActiveCamera();
  camera->ParallelProjectionOn();
  camera->SetFocalPoint(centre);
  camera->SetPosition(centre[0] + 1000.0 * direction[0], centre[1] + 1000.0 * direction[1],
    centre[2] + 1000.0 * direction[2]);
  camera->SetViewUp(up);
  const double* const bounds = volume->GetBounds();
  camera->SetParallelScale(0.5 * std::max(bounds[1] - bounds[0], bounds[3] - bounds[2]));
  this->Renderer->ResetCameraClippingRange(bounds);
}

//------------------------------------------------------------------------------
void zvBenchmarkWindow::Render()
{
  this->Window->Render();
  this->Window->WaitForCompletion();
}

//------------------------------------------------------------------------------
std::unique_ptr<zvSliceView> zvMakeSliceView(
  zvSliceSide side, vtkImageData* volume, const zvCut& cut)
{
  switch (side)
  {
    case zvSliceSide::StockWidget:
      return std::make_unique<WidgetView<vtkImagePlaneWidget>>(
        vtkImagePlaneWidget::New(), volume, cut);
    case zvSliceSide::OurWidget:
      return std::make_unique<WidgetView<zvImagePlaneWidget>>(new zvImagePlaneWidget, volume, cut);
    case zvSliceSide::StockFilters:
      return std::make_unique<FilterView>(zvPlainSlice::Filters::Stock, volume, cut);
    default:
      return std::make_unique<FilterView>(zvPlainSlice::Filters::Quick, volume, cut);
  }
}
