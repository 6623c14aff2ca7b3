// Steps of a slice and of window and level of the slice viewer, beside three stock ways of showing
// a slice, and what its coarser samples save during a drag.
//
// "oblique" is a plane of the size of the volume's face. "turned" is what a rotation in the viewer
// leaves: a plane of twice that size, which the peers are given too where they can take it.
#include "zvBenchmarkVolumes.h"
#include "zvImageViewerWidget.h"
#include "zvSliceViews.h"

#include <vtkCamera.h>
#include <vtkImageActor.h>
#include <vtkImageData.h>
#include <vtkImageMapToColors.h>
#include <vtkImagePlaneWidget.h>
#include <vtkImageProperty.h>
#include <vtkImageSlice.h>
#include <vtkImageSliceMapper.h>
#include <vtkNew.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>
#include <vtkResliceCursor.h>
#include <vtkResliceImageViewer.h>
#include <vtkSmartPointer.h>
#include <vtkTransform.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

namespace
{
enum class Way
{
  XAligned,
  ZAligned,
  Oblique,
  Turned
};

struct Cut
{
  const char* Name;
  Way How;
  bool Linear;
};

struct Volume
{
  const char* Name;
  std::array<int, 3> Size;

  vtkImageData* Get() const
  {
    return zvBenchmarkVolumes::GetScan(this->Size[0], this->Size[1], this->Size[2]);
  }
};

using Maker = std::unique_ptr<zvSliceView> (*)(vtkImageData*, const Cut&);

struct Side
{
  const char* Name;
  const char* Class;
  Maker Make;
  bool TellsColors; // whether there is a coloured slice to be asked for without a frame
  bool IsOblique;   // whether it shows other slices than those along the grid
};

const Volume Volumes[] = {
  { "256", { 256, 256, 256 } },
  { "300", { 300, 300, 300 } },
  { "512", { 512, 512, 200 } },
};

const Cut Cuts[] = {
  { "x_linear", Way::XAligned, true },
  { "z_linear", Way::ZAligned, true },
  { "z_nearest", Way::ZAligned, false },
  { "oblique_linear", Way::Oblique, true },
  { "oblique_nearest", Way::Oblique, false },
  { "turned_linear", Way::Turned, true },
};

bool IsAligned(const Cut& cut)
{
  return cut.How == Way::XAligned || cut.How == Way::ZAligned;
}

int GetNormal(const Cut& cut)
{
  return cut.How == Way::XAligned ? 0 : 2;
}

zvCut ToSliceCut(const Cut& cut)
{
  return { IsAligned(cut) ? GetNormal(cut) : 3, cut.Linear };
}

double GetObliqueFraction(vtkImageData* volume, int slice)
{
  return 0.25 + 0.5 * slice / volume->GetDimensions()[2];
}

void SetPlane(vtkImagePlaneWidget* widget, const double* origin, const double* p1, const double* p2)
{
  widget->SetOrigin(origin[0], origin[1], origin[2]);
  widget->SetPoint1(p1[0], p1[1], p1[2]);
  widget->SetPoint2(p2[0], p2[1], p2[2]);
}

/// What the viewer and its stock base have in common: shown, updated and levelled alike.
template <typename Widget>
class PlaneView : public zvSliceView
{
public:
  ~PlaneView() override { this->Plane->SetInteractor(nullptr); }

  void Show(zvBenchmarkWindow& window) override
  {
    this->Window = &window;
    this->Plane->SetInteractor(window.GetInteractor());
    this->Plane->SetCurrentRenderer(window.GetRenderer());
    this->Plane->SetEnabled(1);
  }

  void UpdateColors() override { this->Plane->GetColorMap()->Update(); }

  void DrawWindowLevel(double window, double level) override
  {
    this->Plane->SetWindowLevel(window, level); // renders, as the widget is enabled
    this->Window->Finish();
  }

  void UpdateAgain() override { this->Plane->UpdatePlacement(); }

protected:
  PlaneView() = default;

  vtkNew<Widget> Plane;
  zvBenchmarkWindow* Window = nullptr;
};

class ViewerView : public PlaneView<zvImageViewerWidget>
{
public:
  ViewerView(vtkImageData* volume, const Cut& cut)
    : Image(volume)
    , Shown(cut)
  {
    this->Plane->SetResliceInterpolate(cut.Linear ? 1 : 0);
    this->Plane->SetInput(volume);
    this->Plane->SetPlaneOrientation(GetNormal(cut));
    this->Plane->SetSliceIndex(volume->GetDimensions()[GetNormal(cut)] / 2);
    if (cut.How == Way::Turned)
    {
      double xAxis[3] = { 1.0, 0.0, 0.0 };
      double yAxis[3] = { 0.0, 1.0, 0.0 };
      this->Plane->Rotate(25.0, xAxis, volume->GetCenter());
      this->Plane->Rotate(17.0, yAxis, volume->GetCenter());
    }
    this->Plane->UpdatePlacement();
  }

  void GoTo(int slice) override
  {
    if (this->Shown.How != Way::Oblique)
    {
      this->Plane->SetSliceIndex(slice);
      return;
    }
    const zvObliquePlane place(this->Image, GetObliqueFraction(this->Image, slice));
    SetPlane(this->Plane, place.Origin, place.Point1, place.Point2);
    this->Plane->UpdatePlacement();
  }

  void SetFactor(int factor) { this->Plane->SetImageResolutionFactor(factor); }

  void GetCorners(double origin[3], double point1[3], double point2[3])
  {
    this->Plane->GetOrigin(origin);
    this->Plane->GetPoint1(point1);
    this->Plane->GetPoint2(point2);
  }

private:
  vtkImageData* const Image;
  const Cut Shown;
};

/// The stock widget on the planes that a rotation in the viewer leaves.
class TurnedStockView : public PlaneView<vtkImagePlaneWidget>
{
public:
  TurnedStockView(vtkImageData* volume, const Cut& cut)
    : Places(volume->GetDimensions()[2])
  {
    ViewerView guide(volume, cut);
    for (std::size_t slice = 0; slice < this->Places.size(); ++slice)
    {
      Place& place = this->Places[slice];
      guide.GoTo(static_cast<int>(slice));
      guide.GetCorners(place.Origin, place.Point1, place.Point2);
    }
    this->Plane->SetResliceInterpolate(cut.Linear ? 1 : 0);
    this->Plane->SetInputData(volume);
    this->Plane->SetPlaneOrientation(2);
    this->Plane->RestrictPlaneToVolumeOff();
  }

  void GoTo(int slice) override
  {
    const Place& place = this->Places[slice];
    SetPlane(this->Plane, place.Origin, place.Point1, place.Point2);
    this->Plane->UpdatePlacement();
  }

private:
  struct Place
  {
    double Origin[3];
    double Point1[3];
    double Point2[3];
  };
  std::vector<Place> Places;
};

/// A view that has nothing to compute before it is drawn.
class DrawnView : public zvSliceView
{
public:
  void UpdateColors() override {}
  void UpdateAgain() override {}
};

class SliceMapperView : public DrawnView
{
public:
  SliceMapperView(vtkImageData* volume, const Cut& cut)
  {
    this->Mapper->SetInputData(volume);
    this->Mapper->SetOrientation(GetNormal(cut));
    this->Slice->SetMapper(this->Mapper);
    if (cut.Linear)
    {
      this->Slice->GetProperty()->SetInterpolationTypeToLinear();
    }
    else
    {
      this->Slice->GetProperty()->SetInterpolationTypeToNearest();
    }
    this->Slice->GetProperty()->SetColorWindow(1500.0);
    this->Slice->GetProperty()->SetColorLevel(100.0);
  }

  ~SliceMapperView() override
  {
    if (this->Window)
    {
      this->Window->GetRenderer()->RemoveAllViewProps();
    }
  }

  SliceMapperView(const SliceMapperView&) = delete;
  SliceMapperView& operator=(const SliceMapperView&) = delete;

  void Show(zvBenchmarkWindow& window) override
  {
    this->Window = &window;
    window.GetRenderer()->AddViewProp(this->Slice);
  }

  void GoTo(int slice) override { this->Mapper->SetSliceNumber(slice); }

  void DrawWindowLevel(double window, double level) override
  {
    this->Slice->GetProperty()->SetColorWindow(window);
    this->Slice->GetProperty()->SetColorLevel(level);
    this->Window->Render();
  }

private:
  vtkNew<vtkImageSliceMapper> Mapper;
  vtkNew<vtkImageSlice> Slice;
  zvBenchmarkWindow* Window = nullptr;
};

/// Draws by itself when it goes to an aligned slice, so that drawing it again costs nothing new.
class StockViewerView : public DrawnView
{
public:
  StockViewerView(vtkImageData* volume, const Cut& cut)
    : Image(volume)
    , Shown(cut)
  {
  }

  void Show(zvBenchmarkWindow& window) override
  {
    this->Window = &window;
    this->Viewer->SetRenderWindow(window.GetRenderer()->GetRenderWindow());
    this->Viewer->SetRenderer(window.GetRenderer());
    this->Viewer->SetupInteractor(window.GetInteractor());
    this->Viewer->SetInputData(this->Image);
    this->Viewer->SetSliceOrientation(GetNormal(this->Shown));
    this->Viewer->SetColorWindow(1500.0);
    this->Viewer->SetColorLevel(100.0);
    this->Viewer->GetImageActor()->SetInterpolate(this->Shown.Linear);
    if (!IsAligned(this->Shown))
    {
      this->Viewer->SetResliceModeToOblique();
      this->TurnCursor();
    }
    this->Viewer->Render();
    const double* const bounds = this->Image->GetBounds();
    window.GetRenderer()->GetActiveCamera()->SetParallelScale(
      0.5 * std::max(bounds[1] - bounds[0], bounds[3] - bounds[2]));
  }

  void GoTo(int slice) override
  {
    if (IsAligned(this->Shown))
    {
      this->Viewer->SetSlice(slice);
      this->Window->Finish();
      return;
    }
    const zvObliquePlane place(this->Image, GetObliqueFraction(this->Image, slice));
    double centre[3];
    for (int axis = 0; axis < 3; ++axis)
    {
      centre[axis] = 0.5 * (place.Point1[axis] + place.Point2[axis]);
    }
    this->Viewer->GetResliceCursor()->SetCenter(centre);
    this->Viewer->Render();
    this->Window->Finish();
  }

  void DrawWindowLevel(double window, double level) override
  {
    this->Viewer->SetColorWindow(window);
    this->Viewer->SetColorLevel(level);
    this->Window->Render();
  }

private:
  void TurnCursor()
  {
    vtkNew<vtkTransform> turn;
    turn->RotateX(25.0);
    turn->RotateY(17.0);
    vtkResliceCursor* const cursor = this->Viewer->GetResliceCursor();
    cursor->SetXAxis(turn->TransformDoubleVector(1.0, 0.0, 0.0));
    cursor->SetYAxis(turn->TransformDoubleVector(0.0, 1.0, 0.0));
    cursor->SetZAxis(turn->TransformDoubleVector(0.0, 0.0, 1.0));
  }

  vtkImageData* const Image;
  const Cut Shown;
  vtkNew<vtkResliceImageViewer> Viewer;
  zvBenchmarkWindow* Window = nullptr;
};

template <typename View>
std::unique_ptr<zvSliceView> Make(vtkImageData* volume, const Cut& cut)
{
  return std::make_unique<View>(volume, cut);
}

std::unique_ptr<zvSliceView> MakeStockPlane(vtkImageData* volume, const Cut& cut)
{
  return cut.How == Way::Turned
    ? std::make_unique<TurnedStockView>(volume, cut)
    : zvMakeSliceView(zvSliceSide::StockWidget, volume, ToSliceCut(cut));
}

const Side Sides[] = {
  { "zv", "zvImageViewerWidget", Make<ViewerView>, true, true },
  { "peer", "vtkImagePlaneWidget", MakeStockPlane, true, true },
  { "peer", "vtkResliceImageViewer", Make<StockViewerView>, false, true },
  { "peer", "vtkImageSliceMapper", Make<SliceMapperView>, false, false },
};

//------------------------------------------------------------------------------
/// The slice at a turn of a loop that walks up and down the middle half, one slice at a time.
int GetSliceAt(int turn, const Volume& volume, const Cut& cut)
{
  const int slices = volume.Size[GetNormal(cut)];
  const int half = slices / 2;
  const int step = turn % (2 * half);
  return slices / 4 + (step < half ? step : 2 * half - step);
}

void StepSlices(benchmark::State& state, const Side& side, const Volume& volume, const Cut& cut)
{
  const auto view = side.Make(volume.Get(), cut);
  int turn = 0;
  view->GoTo(GetSliceAt(turn++, volume, cut));
  view->UpdateColors();
  for (auto _ : state)
  {
    view->GoTo(GetSliceAt(turn++, volume, cut));
    view->UpdateColors();
  }
}

/// A viewer that draws by itself is not asked to draw again.
void DrawSlices(benchmark::State& state, const Side& side, const Volume& volume, const Cut& cut)
{
  zvBenchmarkWindow window(volume.Get(), ToSliceCut(cut));
  const auto view = side.Make(volume.Get(), cut);
  const bool drawsItself = dynamic_cast<StockViewerView*>(view.get()) != nullptr;
  int turn = 0;
  view->Show(window);
  view->GoTo(GetSliceAt(turn++, volume, cut));
  window.Render();
  for (auto _ : state)
  {
    view->GoTo(GetSliceAt(turn++, volume, cut));
    if (!drawsItself)
    {
      window.Render();
    }
  }
}

void DrawWindowLevels(benchmark::State& state, const Side& side, const Volume& volume)
{
  const Cut cut{ "z_linear", Way::ZAligned, true };
  zvBenchmarkWindow window(volume.Get(), ToSliceCut(cut));
  const auto view = side.Make(volume.Get(), cut);
  view->Show(window);
  view->GoTo(volume.Size[2] / 3);
  window.Render();
  int step = 0;
  for (auto _ : state)
  {
    step = (step + 1) % 200;
    view->DrawWindowLevel(1500.0 + step, 100.0 - step);
  }
}

void UpdateInDrag(benchmark::State& state, const Volume& volume, const Cut& cut, int factor)
{
  ViewerView view(volume.Get(), cut);
  view.SetFactor(factor);
  int turn = 0;
  view.GoTo(GetSliceAt(turn++, volume, cut));
  view.UpdateColors();
  for (auto _ : state)
  {
    view.GoTo(GetSliceAt(turn++, volume, cut));
    view.UpdateColors();
  }
}

//------------------------------------------------------------------------------
template <typename Run>
void Register(const std::string& name, Run run)
{
  benchmark::RegisterBenchmark(name.c_str(), run)->UseRealTime()->Unit(benchmark::kMillisecond);
}

std::string MakeName(const Side& side, const std::string& work, const Volume& volume)
{
  return std::string(side.Name) + "/" + work + "/" + side.Class + "/" + volume.Name;
}

void RegisterSteps(const Side& side, const Volume& volume, const Cut& cut)
{
  if (!side.IsOblique && !IsAligned(cut))
  {
    return;
  }
  const std::string work = std::string("viewer_step_") + cut.Name;
  if (side.TellsColors)
  {
    Register(MakeName(side, work, volume),
      [=](benchmark::State& state) { StepSlices(state, side, volume, cut); });
  }
  Register(MakeName(side, work + "_drawn", volume),
    [=](benchmark::State& state) { DrawSlices(state, side, volume, cut); });
}

void RegisterDrag(const Volume& volume, const Cut& cut)
{
  const std::string work = std::string("viewer_drag_") + cut.Name;
  Register("zv/" + work + "/every_fourth/" + volume.Name,
    [=](benchmark::State& state) { UpdateInDrag(state, volume, cut, 4); });
  Register("plain/" + work + "/every_voxel/" + volume.Name,
    [=](benchmark::State& state) { UpdateInDrag(state, volume, cut, 1); });
}

bool RegisterAll()
{
  for (const Volume& volume : Volumes)
  {
    for (const Side& side : Sides)
    {
      for (const Cut& cut : Cuts)
      {
        RegisterSteps(side, volume, cut);
      }
      Register(MakeName(side, "viewer_window_level_drawn", volume),
        [=](benchmark::State& state) { DrawWindowLevels(state, side, volume); });
    }
    for (const Cut& cut : Cuts)
    {
      RegisterDrag(volume, cut);
    }
  }
  return true;
}

const bool Registered = RegisterAll();
}
