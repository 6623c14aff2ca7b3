// Rulers: a motion of the mouse that drags one end of one of many, with its frame.
#include "zvBenchmarkView.h"
#include "zvRulerWidget.h"

#include "vtkCallbackCommand.h"
#include "vtkCommand.h"
#include "vtkDistanceRepresentation.h"
#include "vtkDistanceWidget.h"
#include "vtkNew.h"
#include "vtkPolyData.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace
{
constexpr int Count = 20;

using Pixel = std::array<int, 2>;

class OurRuler
{
public:
  void Show(vtkRenderWindowInteractor* interactor, double end1[3], double end2[3])
  {
    this->Widget->SetInteractor(interactor);
    this->Widget->SetPoint1(end1[0], end1[1], end1[2]);
    this->Widget->SetPoint2(end2[0], end2[1], end2[2]);
    this->Widget->SetEnabled(1);
  }

  void GetEnd(double end[3])
  {
    vtkNew<vtkPolyData> line;
    this->Widget->GetPolyData(line);
    line->GetPoint(line->GetNumberOfPoints() - 1, end);
  }

private:
  vtkNew<zvRulerWidget> Widget;
};

class StockRuler
{
public:
  void Show(vtkRenderWindowInteractor* interactor, double end1[3], double end2[3])
  {
    this->Widget->SetInteractor(interactor);
    this->Widget->CreateDefaultRepresentation();
    this->Widget->SetWidgetStateToManipulate();
    this->Widget->SetEnabled(1);
    this->Widget->GetDistanceRepresentation()->SetPoint1WorldPosition(end1);
    this->Widget->GetDistanceRepresentation()->SetPoint2WorldPosition(end2);
    interactor->Render();
  }

  void GetEnd(double end[3])
  {
    this->Widget->GetDistanceRepresentation()->GetPoint2WorldPosition(end);
  }

private:
  vtkNew<vtkDistanceWidget> Widget;
};

/// Rulers one above the other, farther apart than either kind's reach of a click. Each was dragged
/// once and so shows its length.
template <class Ruler>
class Rulers
{
public:
  Rulers()
    : All(Count)
  {
    int y = 30;
    for (Ruler& ruler : this->All)
    {
      double end1[3];
      double end2[3];
      this->GetPlace({ 80, y }, end1);
      this->GetPlace({ 220, y }, end2);
      ruler.Show(this->View.Interactor, end1, end2);
      y += 12;
    }
    for (Ruler& ruler : this->All)
    {
      this->ClickMiddle(ruler);
      const Pixel end = this->Press(ruler);
      this->MoveTo({ end[0] + 2, end[1] });
      this->View.Interactor->InvokeEvent(vtkCommand::LeftButtonReleaseEvent);
    }
    this->CountFrames->SetClientData(&this->Frames);
    this->CountFrames->SetCallback(
      [](vtkObject*, unsigned long, void* frames, void*) { ++*static_cast<int*>(frames); });
    this->View.Renderer->AddObserver(vtkCommand::EndEvent, this->CountFrames);
  }

  /// Press on the end of a ruler. \return where that is.
  Pixel Press(Ruler& ruler)
  {
    const Pixel end = this->FindEnd(ruler);
    this->PressAt(end);
    return end;
  }

  void MoveTo(const Pixel& place)
  {
    this->View.Interactor->SetEventPosition(place[0], place[1]);
    this->View.Interactor->InvokeEvent(vtkCommand::MouseMoveEvent);
    this->View.Window->WaitForCompletion();
  }

  /// Ours gives its ends the size on the screen by which they are caught at the first click.
  void ClickMiddle(Ruler& ruler)
  {
    const int x = this->View.Window->GetSize()[0] / 2;
    this->PressAt({ x, this->FindEnd(ruler)[1] });
    this->View.Interactor->InvokeEvent(vtkCommand::LeftButtonReleaseEvent);
  }

  Pixel FindEnd(Ruler& ruler)
  {
    double end[3];
    ruler.GetEnd(end);
    this->View.Renderer->SetWorldPoint(end[0], end[1], end[2], 1.0);
    this->View.Renderer->WorldToDisplay();
    const double* display = this->View.Renderer->GetDisplayPoint();
    return { static_cast<int>(std::lround(display[0])), static_cast<int>(std::lround(display[1])) };
  }

  Ruler& GetMiddleOne() { return this->All[Count / 2]; }
  int GetFrames() const { return this->Frames; }

private:
  /// The place on the slice at z = 0 that is exactly under a pixel.
  void GetPlace(const Pixel& pixel, double place[3])
  {
    vtkRenderer* renderer = this->View.Renderer;
    renderer->SetDisplayPoint(pixel[0], pixel[1], 0.5);
    renderer->DisplayToWorld();
    std::copy_n(renderer->GetWorldPoint(), 3, place);
    place[2] = 0.0;
  }

  /// As a user does: come there, then press.
  void PressAt(const Pixel& place)
  {
    this->MoveTo(place);
    this->View.Interactor->InvokeEvent(vtkCommand::LeftButtonPressEvent);
  }

  int Frames = 0; // outlives the rulers, which draw when they go
  zvBenchmarkView View;
  std::vector<Ruler> All;
  vtkNew<vtkCallbackCommand> CountFrames;
};

template <class Ruler>
void DragEnd(benchmark::State& state)
{
  Rulers<Ruler> rulers;
  Ruler& dragged = rulers.GetMiddleOne();
  const Pixel start = rulers.Press(dragged);
  const int framesBefore = rulers.GetFrames();
  int turn = 0;
  Pixel place = start;
  for (auto _ : state)
  {
    place[0] = start[0] + 1 + ++turn % 10; // never twice the same in a row
    rulers.MoveTo(place);
  }
  if (rulers.FindEnd(dragged) != place)
  {
    state.SkipWithError("the end does not follow the mouse");
  }
  if (rulers.GetFrames() - framesBefore != turn)
  {
    state.SkipWithError("a motion is not one frame");
  }
}

bool RegisterAll()
{
  const auto registerOne = [](const char* name, void (*drag)(benchmark::State&))
  { benchmark::RegisterBenchmark(name, drag)->UseRealTime()->Unit(benchmark::kMillisecond); };
  registerOne("zv/drag_end/zvRulerWidget/20_rulers", DragEnd<OurRuler>);
  registerOne("peer/drag_end/vtkDistanceWidget/20_rulers", DragEnd<StockRuler>);
  return true;
}

const bool Registered = RegisterAll();
}
