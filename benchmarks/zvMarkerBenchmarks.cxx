// Markers in four views: adding many without their frames, selecting one of many, a frame of all
// views, and the user's press on one of many.
#include "zvBenchmarkView.h"
#include "zvInstanceManager.h"
#include "zvSeedWidget.h"

#include "vtkActor.h"
#include "vtkCollection.h"
#include "vtkHandleRepresentation.h"
#include "vtkHandleWidget.h"
#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSeedRepresentation.h"
#include "vtkSeedWidget.h"
#include "vtkSmartPointer.h"
#include "vtkSphereHandleRepresentation.h"
#include "vtkSphereSource.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace
{
constexpr int Row = 32; // seeds in a row of the grid
constexpr double Distance = 3.0;

/// A grid of seeds that fills most of the view.
std::array<double, 3> PlaceOf(int seed)
{
  return { { Distance * (seed % Row) - 48.0, Distance * (seed / Row) - 48.0, 0.0 } };
}

/// Four views, each in a window of its own.
class FourViews
{
public:
  FourViews()
  {
    vtkNew<vtkImageData> image;
    image->SetDimensions(101, 101, 101);
    image->SetOrigin(-50, -50, -50);
    zvInstanceManager::Instance()->SetCurrentOutput(image);
  }
  ~FourViews() { zvInstanceManager::Instance()->SetCurrentOutput(nullptr); }
  FourViews(const FourViews&) = delete;
  FourViews& operator=(const FourViews&) = delete;

  void SetFrames(bool on)
  {
    for (zvBenchmarkView& view : this->Views)
    {
      on ? view.Interactor->EnableRenderOn() : view.Interactor->EnableRenderOff();
    }
  }

  void Render()
  {
    for (zvBenchmarkView& view : this->Views)
    {
      view.Interactor->Render();
      view.Window->WaitForCompletion();
    }
  }

  std::array<zvBenchmarkView, 4> Views; // X, Y, Z, 3D
};

class OurSeeds
{
public:
  explicit OurSeeds(FourViews& views)
  {
    this->Widget->SetRendererX(views.Views[0].Renderer);
    this->Widget->SetRendererY(views.Views[1].Renderer);
    this->Widget->SetRendererZ(views.Views[2].Renderer);
    this->Widget->Set3DRender(views.Views[3].Renderer);
    this->Widget->SetCurrentRender(views.Views[2].Renderer);
    this->Widget->SetEnabled(1);
  }

  void Add(int count)
  {
    for (int seed = 0; seed < count; ++seed)
    {
      std::array<double, 3> place = PlaceOf(seed);
      this->Widget->AddHandle(place.data(), 0);
    }
  }

  /// The first seed was sized before there was a view to measure.
  void Size() { this->Widget->SizeHandles(); }
  int Select(int seed) { return this->Widget->HighlightHandle(seed); }
  bool Has(int seed) { return this->Widget->GetHandlePosition(seed) != nullptr; }

private:
  vtkNew<zvSeedWidget> Widget;
};

/// The stock seeds in one view, spheres as well.
class StockSeeds
{
public:
  explicit StockSeeds(zvBenchmarkView& view)
    : Renderer(view.Renderer)
  {
    vtkNew<vtkSphereHandleRepresentation> handle;
    this->Representation->SetHandleRepresentation(handle);
    this->Widget->SetInteractor(view.Interactor);
    this->Widget->SetRepresentation(this->Representation);
    this->Widget->SetEnabled(1);
  }

  /// What its press beside all seeds does, without looking for a seed there.
  void Add(int count)
  {
    for (int seed = 0; seed < count; ++seed)
    {
      std::array<double, 3> place = PlaceOf(seed);
      this->Renderer->SetWorldPoint(place[0], place[1], place[2], 1.0);
      this->Renderer->WorldToDisplay();
      double display[3];
      std::copy_n(this->Renderer->GetDisplayPoint(), 3, display);
      const int added = this->Representation->CreateHandle(display);
      vtkHandleWidget* const handle = this->Widget->CreateNewHandle();
      this->Representation->SetSeedWorldPosition(added, place.data());
      handle->SetEnabled(1);
    }
  }

  void Select(int seed)
  {
    this->Representation->GetHandleRepresentation(this->Selected)->Highlight(0);
    this->Representation->GetHandleRepresentation(seed)->Highlight(1);
    this->Selected = seed;
  }

  bool Has(int seed) { return this->Representation->GetNumberOfSeeds() > seed; }

private:
  vtkRenderer* Renderer; // the view's
  vtkNew<vtkSeedRepresentation> Representation;
  vtkNew<vtkSeedWidget> Widget;
  unsigned int Selected = 0;
};

/// The same pipeline as ours of stock parts: one mapper for an actor in three windows, and walks
/// over the collections by index.
class PlainSeeds
{
public:
  PlainSeeds(FourViews& views, int count)
  {
    this->SelectedProperty->SetColor(0.0, 1.0, 1.0);
    this->Property->SetColor(1.0, 0.0, 0.0);
    for (int seed = 0; seed < count; ++seed)
    {
      const auto slice = this->MakeActor(seed);
      const auto solid = this->MakeActor(seed);
      this->Actors->AddItem(slice);
      this->Actors3D->AddItem(solid);
      for (int view = 0; view < 3; ++view)
      {
        views.Views[view].Renderer->AddActor(slice);
      }
      views.Views[3].Renderer->AddActor(solid);
    }
  }

  int Select(int seed)
  {
    int found = -1;
    for (int i = 0; i < this->Actors->GetNumberOfItems(); ++i)
    {
      ActorAt(this->Actors, i)->SetProperty(this->Property);
      ActorAt(this->Actors3D, i)->SetProperty(this->Property);
    }
    vtkActor* const selected = ActorAt(this->Actors, seed);
    for (int i = 0; i < this->Actors->GetNumberOfItems() && found < 0; ++i)
    {
      if (ActorAt(this->Actors, i) == selected)
      {
        ActorAt(this->Actors, i)->SetProperty(this->SelectedProperty);
        ActorAt(this->Actors3D, i)->SetProperty(this->SelectedProperty);
        found = i;
      }
    }
    return found;
  }

private:
  static vtkActor* ActorAt(vtkCollection* actors, int i)
  {
    return vtkActor::SafeDownCast(actors->GetItemAsObject(i));
  }

  vtkSmartPointer<vtkActor> MakeActor(int seed)
  {
    vtkNew<vtkSphereSource> sphere;
    sphere->SetCenter(PlaceOf(seed).data());
    sphere->SetRadius(1.0);
    sphere->SetThetaResolution(20);
    sphere->SetPhiResolution(20);
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputConnection(sphere->GetOutputPort());
    auto actor = vtkSmartPointer<vtkActor>::New();
    actor->SetMapper(mapper);
    actor->SetProperty(this->Property);
    return actor;
  }

  vtkNew<vtkCollection> Actors;
  vtkNew<vtkCollection> Actors3D;
  vtkNew<vtkProperty> Property;
  vtkNew<vtkProperty> SelectedProperty;
};

/// Time \a work alone; what is made for it and goes after it does not count.
template <typename Make, typename Work>
void TimeFresh(benchmark::State& state, const Make& make, const Work& work)
{
  using Clock = std::chrono::steady_clock;
  for (auto _ : state)
  {
    auto made = make();
    const Clock::time_point start = Clock::now();
    work(*made);
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
}

void AddOurs(benchmark::State& state, int count)
{
  FourViews views;
  views.SetFrames(false);
  bool isComplete = true;
  TimeFresh(
    state, [&views]() { return std::make_unique<OurSeeds>(views); },
    [count, &isComplete](OurSeeds& seeds)
    {
      seeds.Add(count);
      isComplete = isComplete && seeds.Has(count - 1);
    });
  if (!isComplete)
  {
    state.SkipWithError("seeds are missing");
  }
}

void AddStock(benchmark::State& state, int count)
{
  zvBenchmarkView view;
  view.Interactor->EnableRenderOff();
  bool isComplete = true;
  TimeFresh(
    state, [&view]() { return std::make_unique<StockSeeds>(view); },
    [count, &isComplete](StockSeeds& seeds)
    {
      seeds.Add(count);
      isComplete = isComplete && seeds.Has(count - 1);
    });
  if (!isComplete)
  {
    state.SkipWithError("seeds are missing");
  }
}

void SelectOurs(benchmark::State& state, int count)
{
  FourViews views;
  views.SetFrames(false);
  OurSeeds seeds(views);
  seeds.Add(count);
  int seed = 0;
  for (auto _ : state)
  {
    seed = (seed + 7) % count;
    if (seeds.Select(seed) != seed)
    {
      state.SkipWithError("another seed is selected");
    }
  }
}

void SelectPlain(benchmark::State& state, int count)
{
  FourViews views;
  PlainSeeds seeds(views, count);
  int seed = 0;
  for (auto _ : state)
  {
    seed = (seed + 7) % count;
    if (seeds.Select(seed) != seed)
    {
      state.SkipWithError("another seed is selected");
    }
  }
}

void SelectStock(benchmark::State& state, int count)
{
  zvBenchmarkView view;
  view.Interactor->EnableRenderOff();
  StockSeeds seeds(view);
  seeds.Add(count);
  int seed = 0;
  for (auto _ : state)
  {
    seed = (seed + 7) % count;
    seeds.Select(seed);
  }
}

/// A frame of all views. The first ones, which upload everything, do not count.
void RenderAll(benchmark::State& state, FourViews& views)
{
  views.SetFrames(true);
  views.Render();
  views.Render();
  for (auto _ : state)
  {
    views.Render();
  }
}

void RenderOurs(benchmark::State& state, int count)
{
  FourViews views;
  views.SetFrames(false);
  OurSeeds seeds(views);
  seeds.Add(count);
  seeds.Size();
  RenderAll(state, views);
}

void RenderPlain(benchmark::State& state, int count)
{
  FourViews views;
  PlainSeeds seeds(views, count);
  RenderAll(state, views);
}

void RenderStock(benchmark::State& state, int count)
{
  FourViews views;
  views.SetFrames(false);
  std::vector<std::unique_ptr<StockSeeds>> seeds;
  for (zvBenchmarkView& view : views.Views)
  {
    seeds.push_back(std::make_unique<StockSeeds>(view));
    seeds.back()->Add(count);
  }
  RenderAll(state, views);
}

/// A press and a release on a seed, with the pick and without the frames.
void PressOurs(benchmark::State& state, int count)
{
  FourViews views;
  views.SetFrames(false);
  OurSeeds seeds(views);
  seeds.Add(count);
  seeds.Size();
  zvBenchmarkView& view = views.Views[2];
  int started = 0;
  int seed = 0;
  for (auto _ : state)
  {
    seed = (seed + 7) % count;
    const std::array<double, 3> place = PlaceOf(seed);
    view.Renderer->SetWorldPoint(place[0], place[1], place[2], 1.0);
    view.Renderer->WorldToDisplay();
    const double* const display = view.Renderer->GetDisplayPoint();
    view.Interactor->SetEventInformation(
      static_cast<int>(std::lround(display[0])), static_cast<int>(std::lround(display[1])));
    view.Interactor->InvokeEvent(vtkCommand::LeftButtonPressEvent);
    view.Interactor->InvokeEvent(vtkCommand::LeftButtonReleaseEvent);
    ++started;
  }
  benchmark::DoNotOptimize(started);
}

bool RegisterAll()
{
  for (int count : { 10, 100, 1000 })
  {
    const std::string volume = "/" + std::to_string(count) + "_seeds";
    const auto add = [count, &volume](const char* name, void (*run)(benchmark::State&, int))
    {
      return benchmark::RegisterBenchmark((name + volume).c_str(), run, count)
        ->Unit(benchmark::kMillisecond);
    };
    // What takes seconds is not repeated as often as the rest.
    const int repetitions = count < 1000 ? 15 : 5;
    for (auto* adding :
      { add("zv/add_seeds/zvSeedWidget", AddOurs), add("peer/add_seeds/vtkSeedWidget", AddStock) })
    {
      adding->UseManualTime()->Repetitions(repetitions);
    }
    add("zv/select_seed/zvSeedWidget", SelectOurs)->UseRealTime();
    add("plain/select_seed/walk_by_index", SelectPlain)->UseRealTime();
    add("peer/select_seed/vtkSeedWidget", SelectStock)->UseRealTime();
    add("zv/press_seed/zvSeedWidget", PressOurs)->UseRealTime();
    for (auto* drawing : { add("zv/render_views/zvSeedWidget", RenderOurs),
           add("plain/render_views/shared_mapper", RenderPlain),
           add("peer/render_views/4_vtkSeedWidgets", RenderStock) })
    {
      drawing->UseRealTime()->Repetitions(repetitions);
    }
  }
  return true;
}

const bool Registered = RegisterAll();
}
