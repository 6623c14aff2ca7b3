// Curves through handles: a motion of one handle with the line sampled again, the same drawn, and a
// handle added to a long contour with its pick but without its frame.
#include "zvAreaWidget.h"
#include "zvBenchmarkView.h"
#include "zvLassoWidget.h"
#include "zvSplineWidget.h"

#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkParametricFunctionSource.h"
#include "vtkParametricSpline.h"
#include "vtkPoints.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkSmartPointer.h"
#include "vtkSplineWidget.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

namespace
{
constexpr int Resolution = 500;

/// A wavy ring of handles of about 100 mm.
vtkSmartPointer<vtkPoints> MakeRing(int count)
{
  auto points = vtkSmartPointer<vtkPoints>::New();
  points->SetDataTypeToDouble();
  for (int i = 0; i < count; ++i)
  {
    const double angle = 2.0 * vtkMath::Pi() * i / count;
    const double radius = 50.0 + 5.0 * std::sin(7.0 * angle);
    points->InsertNextPoint(radius * std::cos(angle), radius * std::sin(angle), 0.0);
  }
  return points;
}

/// Where the handle goes at a turn of the loop: never twice to the same place in a row.
double Wobble(int turn)
{
  return 50.0 + 0.01 * (turn % 100);
}

class SampledSpline : public zvSplineWidget
{
public:
  static SampledSpline* New() { return new SampledSpline; }
  void Sample() { this->ParametricFunctionSource->Update(); }
};

void MoveOurs(benchmark::State& state, int count)
{
  vtkNew<SampledSpline> widget;
  widget->InitializeHandles(MakeRing(count));
  widget->ClosedOn();
  int turn = 0;
  for (auto _ : state)
  {
    widget->SetHandlePosition(count / 2, Wobble(++turn), 0.0, 0.0);
    widget->Sample();
  }
}

void MovePeer(benchmark::State& state, int count)
{
  auto points = MakeRing(count);
  vtkNew<vtkParametricSpline> spline;
  spline->SetPoints(points);
  spline->ClosedOn();
  vtkNew<vtkParametricFunctionSource> source;
  source->SetParametricFunction(spline);
  source->SetScalarModeToNone();
  source->GenerateTextureCoordinatesOff();
  source->SetUResolution(Resolution);
  int turn = 0;
  for (auto _ : state)
  {
    points->SetPoint(count / 2, Wobble(++turn), 0.0, 0.0);
    spline->Modified();
    source->Update();
  }
}

template <class Widget>
void MoveDrawn(benchmark::State& state, int count)
{
  zvBenchmarkView view;
  vtkNew<Widget> widget;
  widget->SetInteractor(view.Interactor);
  widget->InitializeHandles(MakeRing(count));
  widget->ClosedOn();
  widget->SetResolution(Resolution);
  widget->SetEnabled(1);
  int turn = 0;
  for (auto _ : state)
  {
    widget->SetHandlePosition(count / 2, Wobble(++turn), 0.0, 0.0);
    view.Interactor->Render();
  }
}

/// A click that adds a handle to a contour that was made by clicks, its pick included, in a view
/// that does not draw.
template <class Widget>
void AddOurs(benchmark::State& state, int count)
{
  zvBenchmarkView view;
  view.Interactor->SetEventPosition(150, 150); // in the ring: no bounding box spares the pick
  view.Interactor->EnableRenderOff();
  vtkNew<Widget> widget;
  widget->SetInteractor(view.Interactor);
  auto ring = MakeRing(count);
  double handle[3];
  for (int i = 0; i < count; ++i)
  {
    ring->GetPoint(i, handle);
    widget->AddHandle(handle);
  }
  double added[3] = { 0.0, 0.0, 0.0 };
  for (auto _ : state)
  {
    widget->AddHandle(added);
    state.PauseTiming();
    widget->InitializeHandles(ring);
    state.ResumeTiming();
  }
  widget->SetInteractor(nullptr);
}

/// The stock widget takes a longer list instead.
void AddPeer(benchmark::State& state, int count)
{
  zvBenchmarkView view;
  view.Interactor->EnableRenderOff();
  vtkNew<vtkSplineWidget> widget;
  widget->SetInteractor(view.Interactor);
  widget->SetResolution(1000); // not below the number of handles
  auto ring = MakeRing(count);
  auto longer = MakeRing(count);
  longer->InsertNextPoint(0.0, 0.0, 0.0);
  widget->InitializeHandles(ring);
  widget->SetEnabled(1);
  for (auto _ : state)
  {
    widget->InitializeHandles(longer);
    state.PauseTiming();
    widget->InitializeHandles(ring);
    state.ResumeTiming();
  }
  widget->SetInteractor(nullptr);
}

using Run = void (*)(benchmark::State&, int);

struct Work
{
  const char* Name;
  Run Do;
  int Handles;
};

const Work Works[] = {
  { "zv/move_handle/zvSplineWidget", MoveOurs, 10 },
  { "zv/move_handle/zvSplineWidget", MoveOurs, 100 },
  { "zv/move_handle/zvSplineWidget", MoveOurs, 500 },
  { "peer/move_handle/vtkParametricSpline", MovePeer, 10 },
  { "peer/move_handle/vtkParametricSpline", MovePeer, 100 },
  { "peer/move_handle/vtkParametricSpline", MovePeer, 500 },
  { "zv/move_handle_drawn/zvSplineWidget", MoveDrawn<zvSplineWidget>, 100 },
  { "peer/move_handle_drawn/vtkSplineWidget", MoveDrawn<vtkSplineWidget>, 100 },
  { "zv/add_handle/zvAreaWidget", AddOurs<zvAreaWidget>, 500 },
  { "zv/add_handle/zvLassoWidget", AddOurs<zvLassoWidget>, 500 },
  { "peer/add_handle/vtkSplineWidget", AddPeer, 500 },
};

bool RegisterAll()
{
  for (const Work& work : Works)
  {
    const std::string name =
      std::string(work.Name) + "/" + std::to_string(work.Handles) + "_handles";
    benchmark::RegisterBenchmark(
      name.c_str(), [work](benchmark::State& state) { work.Do(state, work.Handles); })
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
  }
  return true;
}

const bool Registered = RegisterAll();
}
