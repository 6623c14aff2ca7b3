// Steps of a slice and of window and level.
//
// A step that is not drawn ends with the coloured slice, for all sides alike: that is what a frame
// would ask the pipeline for, and the stock widget computes nothing before it is asked. A step that
// is drawn ends when the picture is there.
#include "zvBenchmarkVolumes.h"
#include "zvSliceViews.h"

#include <benchmark/benchmark.h>

#include <vtkImageData.h>

#include <array>
#include <string>

namespace
{
struct Side
{
  zvSliceSide Kind;
  const char* Name;
  const char* Class;
};

struct Volume
{
  const char* Name;
  std::array<int, 3> Size;
};

struct NamedCut
{
  const char* Name;
  zvCut Cut;
};

const Side Sides[] = {
  { zvSliceSide::OurWidget, "zv", "zvImagePlaneWidget" },
  { zvSliceSide::OurFilters, "zv", "pipeline" },
  { zvSliceSide::StockWidget, "peer", "vtkImagePlaneWidget" },
  { zvSliceSide::StockFilters, "plain", "pipeline" },
};

const Volume Volumes[] = {
  { "256", { 256, 256, 256 } },
  { "300", { 300, 300, 300 } },
  { "512", { 512, 512, 200 } },
};

const NamedCut Cuts[] = {
  { "x_linear", { 0, true } },
  { "y_linear", { 1, true } },
  { "z_linear", { 2, true } },
  { "x_nearest", { 0, false } },
  { "y_nearest", { 1, false } },
  { "z_nearest", { 2, false } },
  { "oblique_linear", { 3, true } },
  { "oblique_nearest", { 3, false } },
};

/// Walks up and down the middle half of the slices, one at a time, as a wheel does.
class Walk
{
public:
  Walk(vtkImageData* volume, const zvCut& cut)
  {
    const int slices = volume->GetDimensions()[cut.Orientation < 3 ? cut.Orientation : 2];
    this->First = slices / 4;
    this->Last = 3 * slices / 4;
    this->Slice = this->First;
  }

  int Next()
  {
    if (this->Slice + this->Step < this->First || this->Slice + this->Step > this->Last)
    {
      this->Step = -this->Step;
    }
    return this->Slice += this->Step;
  }

private:
  int First;
  int Last;
  int Slice;
  int Step = 1;
};

vtkImageData* GetVolume(const Volume& volume)
{
  return zvBenchmarkVolumes::GetScan(volume.Size[0], volume.Size[1], volume.Size[2]);
}

void StepSlices(benchmark::State& state, const Side& side, const Volume& volume, const zvCut& cut)
{
  const auto view = zvMakeSliceView(side.Kind, GetVolume(volume), cut);
  Walk walk(GetVolume(volume), cut);
  view->GoTo(walk.Next());
  view->UpdateColors();
  for (auto _ : state)
  {
    view->GoTo(walk.Next());
    view->UpdateColors();
  }
}

void DrawSlices(benchmark::State& state, const Side& side, const Volume& volume, const zvCut& cut)
{
  zvBenchmarkWindow window(GetVolume(volume), cut);
  const auto view = zvMakeSliceView(side.Kind, GetVolume(volume), cut);
  Walk walk(GetVolume(volume), cut);
  view->Show(window);
  view->GoTo(walk.Next());
  window.Render();
  for (auto _ : state)
  {
    view->GoTo(walk.Next());
    window.Render();
  }
}

void DrawWindowLevels(benchmark::State& state, const Side& side, const Volume& volume)
{
  const zvCut cut{ 2, true };
  zvBenchmarkWindow window(GetVolume(volume), cut);
  const auto view = zvMakeSliceView(side.Kind, GetVolume(volume), cut);
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

void UpdateUnchanged(benchmark::State& state, const Side& side, const Volume& volume)
{
  const auto view = zvMakeSliceView(side.Kind, GetVolume(volume), { 2, true });
  view->GoTo(volume.Size[2] / 3);
  view->UpdateAgain();
  for (auto _ : state)
  {
    view->UpdateAgain();
  }
}

std::string MakeName(const Side& side, const std::string& work, const Volume& volume)
{
  return std::string(side.Name) + "/" + work + "/" + side.Class + "/" + volume.Name;
}

void RegisterCuts(const Side& side, const Volume& volume)
{
  for (const NamedCut& named : Cuts)
  {
    const std::string work = std::string("slice_step_") + named.Name;
    const zvCut cut = named.Cut;
    benchmark::RegisterBenchmark(MakeName(side, work, volume).c_str(),
      [side, volume, cut](benchmark::State& state) { StepSlices(state, side, volume, cut); })
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(MakeName(side, work + "_drawn", volume).c_str(),
      [side, volume, cut](benchmark::State& state) { DrawSlices(state, side, volume, cut); })
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
  }
}

void RegisterOthers(const Side& side, const Volume& volume)
{
  benchmark::RegisterBenchmark(MakeName(side, "window_level_drawn", volume).c_str(),
    [side, volume](benchmark::State& state) { DrawWindowLevels(state, side, volume); })
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
  if (side.Kind == zvSliceSide::OurWidget || side.Kind == zvSliceSide::StockWidget)
  {
    benchmark::RegisterBenchmark(MakeName(side, "update_unchanged", volume).c_str(),
      [side, volume](benchmark::State& state) { UpdateUnchanged(state, side, volume); })
      ->UseRealTime()
      ->Unit(benchmark::kNanosecond);
  }
}

bool RegisterAll()
{
  for (const Volume& volume : Volumes)
  {
    for (const Side& side : Sides)
    {
      RegisterCuts(side, volume);
      RegisterOthers(side, volume);
    }
  }
  return true;
}

const bool Registered = RegisterAll();
}
