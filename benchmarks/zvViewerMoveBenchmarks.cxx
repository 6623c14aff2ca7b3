// A move of the mouse over a slice view full of tools, with no button held. The view renders once
// for each ruler, as its behaviour asks; beside it stand as many frames of the same scene, which is
// what that must not cost more than, and its parts.
#include "zvBenchmarkVolumes.h"
#include "zvSliceViews.h"

#include "zvAreaWidget.h"
#include "zvImageViewerWidget.h"
#include "zvRulerWidget.h"

#include "vtkCommand.h"
#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkSmartPointer.h"

#include <benchmark/benchmark.h>

#include <string>

namespace
{
constexpr int Size = 512; // voxels along an edge of the slice
constexpr int Slices = 16;
constexpr int Count = 20; // of each kind of tool

/// A viewer to which tools can be given where they are wanted.
class ToolViewer : public zvImageViewerWidget
{
public:
  static ToolViewer* New()
  {
    auto* viewer = new ToolViewer;
    viewer->InitializeObjectBase();
    return viewer;
  }

  void AddRulerAt(const double end1[3], const double end2[3])
  {
    this->AddRulerWidget(nullptr);
    this->AddRulerMode = false;
    this->EnableRulerWidget();
    this->CurrentRulerWidget->SetPoint1(end1[0], end1[1], end1[2]);
    this->CurrentRulerWidget->SetPoint2(end2[0], end2[1], end2[2]);
  }

  void AddAreaAt(vtkPoints* corners)
  {
    this->AddAreaWidget(nullptr);
    this->AddAreaMode = false;
    this->CurrentAreaWidget->InitializeHandles(corners);
    this->CurrentAreaWidget->ClosedOn();
    this->CurrentAreaWidget->SetEnabled(1);
  }
};

class MoveScene
{
public:
  MoveScene(int rulers, int contours)
    : Image(zvBenchmarkVolumes::GetScan(Size, Size, Slices))
    , Window(this->Image, zvCut{ 2, true })
    , Viewer(vtkSmartPointer<ToolViewer>::Take(ToolViewer::New()))
  {
    this->Viewer->SetInteractor(this->Window.GetInteractor());
    this->Viewer->SetCurrentRenderer(this->Window.GetRenderer());
    this->Viewer->SetInput(this->Image);
    this->Viewer->SetPlaneOrientation(2);
    this->Viewer->UpdatePlane();
    this->Viewer->SetEnabled(1);
    for (int i = 0; i < rulers; ++i)
    {
      double end1[3];
      double end2[3];
      this->GetPlace(i, 0.05, end1);
      this->GetPlace(i, 0.4, end2);
      this->Viewer->AddRulerAt(end1, end2);
    }
    for (int i = 0; i < contours; ++i)
    {
      vtkNew<vtkPoints> corners;
      for (const double across : { 0.55, 0.7, 0.85 })
      {
        double corner[3];
        this->GetPlace(i, across, corner);
        corner[1] += across == 0.7 ? 8.0 : 0.0;
        corners->InsertNextPoint(corner);
      }
      this->Viewer->AddAreaAt(corners);
    }
    this->Move();
  }

  /// One move to the other of two places of the slice.
  void Move()
  {
    vtkRenderWindowInteractor* interactor = this->Window.GetInteractor();
    this->There = !this->There;
    interactor->SetEventInformation(this->There ? 250 : 270, this->There ? 260 : 240);
    interactor->InvokeEvent(vtkCommand::MouseMoveEvent);
    this->Window.Finish();
  }

  /// As many frames as a move makes.
  void RenderForEachRuler(int rulers)
  {
    for (int i = 0; i < rulers; ++i)
    {
      this->Window.GetInteractor()->Render();
    }
    this->Window.Finish();
  }

  ToolViewer* GetViewer() { return this->Viewer; }

private:
  // The place of a tool, one above the other, at a fraction of the way across the slice.
  void GetPlace(int tool, double across, double place[3])
  {
    const double* bounds = this->Image->GetBounds();
    place[0] = bounds[0] + across * (bounds[1] - bounds[0]);
    place[1] = bounds[2] + (tool + 0.5) / Count * (bounds[3] - bounds[2]);
    place[2] = bounds[5] + 1.0;
  }

  vtkImageData* Image;
  zvBenchmarkWindow Window;
  vtkSmartPointer<ToolViewer> Viewer;
  bool There = false;
};

void MoveOver(benchmark::State& state, int rulers, int contours, bool tracks)
{
  MoveScene scene(rulers, contours);
  scene.GetViewer()->SetQuickApply(!tracks);
  for (auto _ : state)
  {
    scene.Move();
  }
}

void RenderOnly(benchmark::State& state, int rulers, int contours)
{
  MoveScene scene(rulers, contours);
  for (auto _ : state)
  {
    scene.RenderForEachRuler(rulers);
  }
}

template <typename Run>
void Register(const std::string& name, Run run)
{
  benchmark::RegisterBenchmark(name.c_str(), run)->UseRealTime()->Unit(benchmark::kMillisecond);
}

bool RegisterAll()
{
  const std::string work = "viewer_move_idle";
  const std::string size = std::to_string(Size);
  Register("plain/" + work + "/a_frame_for_each_ruler/" + size,
    [](benchmark::State& state) { RenderOnly(state, Count, Count); });
  Register("zv/" + work + "/zvImageViewerWidget/" + size,
    [](benchmark::State& state) { MoveOver(state, Count, Count, true); });
  Register("zv/" + work + "_untracked/zvImageViewerWidget/" + size,
    [](benchmark::State& state) { MoveOver(state, Count, Count, false); });
  Register("zv/" + work + "_contours_only/zvImageViewerWidget/" + size,
    [](benchmark::State& state) { MoveOver(state, 0, Count, true); });
  Register("zv/" + work + "_no_tools/zvImageViewerWidget/" + size,
    [](benchmark::State& state) { MoveOver(state, 0, 0, true); });
  return true;
}

const bool Registered = RegisterAll();
}
