// The user's hand on seeds, in four windows, and what is seen there.
#include "zvSeedFixture.h"

#include "vtkCamera.h"
#include "vtkNew.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <functional>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::Display;
using zvtest::ThreeD;
using zvtest::World;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
const zvtest::Color Black{ 0, 0, 0 };
const zvtest::Color Red{ 255, 0, 0 };
const zvtest::Color Cyan{ 0, 255, 255 };

// Three seeds in the image, enabled.
class SeedWidgetMouse : public zvtest::Seeds
{
protected:
  explicit SeedWidgetMouse(int size = 200)
    : Seeds(size)
  {
    this->Widget->SetEnabled(1);
    this->AddThree();
    this->Widget->OnRightButtonUp(); // the first was sized before there was a view to measure
  }

  /// The pixel in which a seed is seen.
  Display At(zvtest::View view, int seed) { return this->In(view).At(this->PositionOf(seed)); }

  void ExpectNear(const World& actual, const World& expected, double tolerance = 1e-6)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(actual[axis], expected[axis], tolerance) << axis;
    }
  }

  /// Whether a sphere is seen to shine in a colour at a pixel.
  bool Shows(zvtest::View view, const Display& at, const zvtest::Color& color)
  {
    return this->In(view).Look().HasNear(color, at, 2, 60);
  }

  static constexpr Display Beside{ { 3, 3 } };
};

constexpr Display SeedWidgetMouse::Beside;
}

// ---- Pressing

TEST_F(SeedWidgetMouse, APressOnASeedTakesItInEverySliceView)
{
  for (zvtest::View view : { X, Y, Z })
  {
    this->Widget->SetCurrentRender(this->Renderer(view));
    for (int seed : { 0, 1, 2 })
    {
      zvtest::EventRecorder recorder;
      this->Record(recorder);
      zvtest::Mouse mouse = this->PointerIn(view);
      mouse.Press(zvtest::Left, this->At(view, seed));
      EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Moving);
      EXPECT_EQ(this->Widget->CurrentActorIndex, seed);
      EXPECT_EQ(this->Widget->CurrentHandle, this->SliceActor(seed));
      EXPECT_EQ(this->Looks()[seed], '*');
      // The press itself is aborted: nobody behind sees it, nor is it answered twice.
      EXPECT_THAT(
        this->NamesOf(recorder), ElementsAre("StartInteractionEvent", "X", "Y", "Z", "3"));
      EXPECT_FALSE(recorder.Events().front().HasData);
      recorder.Clear();
      mouse.Release(zvtest::Left);
      EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Start);
      EXPECT_THAT(this->NamesOf(recorder), ElementsAre("EndInteractionEvent", "X", "Y", "Z", "3"));
      EXPECT_FALSE(recorder.Events().front().HasData);
    }
  }
}

TEST_F(SeedWidgetMouse, APressTakesTheDepthOfTheSeedForTheDrag)
{
  this->PointerIn(Z).Press(zvtest::Left, this->At(Z, 1));
  double picked[3];
  this->Widget->HandlePicker->GetPickPosition(picked);
  EXPECT_THAT(this->Widget->LastPickPosition, ElementsAre(picked[0], picked[1], picked[2]));
  this->ExpectNear({ { picked[0], picked[1], picked[2] } }, { { 0, 5, 1 } }, 0.5);
  EXPECT_EQ(this->Widget->ValidPick, 1);
}

TEST_F(SeedWidgetMouse, APressInThe3DViewNeverTakesASeed)
{
  this->Widget->SetEnabled(0);
  this->Widget->SetCurrentRender(this->Renderer(ThreeD));
  this->Widget->SetEnabled(1);
  this->Widget->SetCurrentActorIndex(0);
  for (int seed : { 0, 1, 2 })
  {
    ASSERT_TRUE(this->Shows(ThreeD, this->At(ThreeD, seed), seed == 0 ? Cyan : Red));
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Widget, zvtest::WidgetEvents);
    zvtest::Mouse mouse = this->PointerIn(ThreeD);
    mouse.Drag(zvtest::Left, this->At(ThreeD, seed), { { 100, 100 } });
    EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside);
    EXPECT_EQ(this->Widget->IsClicked(), 0);
    EXPECT_EQ(this->Looks(), "*..");
    EXPECT_THAT(recorder.Names(), IsEmpty());
  }
  EXPECT_EQ(this->PositionOf(1), (World{ { 0, 5, 1 } }));
}

TEST_F(SeedWidgetMouse, AMissLeavesTheSelectionAndMovesNothing)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, Beside);
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside);
  mouse.MoveTo(this->At(Z, 1));
  mouse.MoveTo({ { 150, 150 } });
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside); // until the next hit
  EXPECT_EQ(this->Looks(), "..*");
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
  EXPECT_EQ(this->Widget->CurrentHandle, this->SliceActor(2));
  EXPECT_EQ(this->PositionOf(1), (World{ { 0, 5, 1 } }));
  // Nothing is told or rendered, and others see all of it.
  EXPECT_THAT(recorder.Names(),
    ElementsAre(
      "LeftButtonPressEvent", "MouseMoveEvent", "MouseMoveEvent", "LeftButtonReleaseEvent"));
  mouse.Press(zvtest::Left, this->At(Z, 1));
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Moving);
}

TEST_F(SeedWidgetMouse, APressOutsideTheViewportIsAMiss)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  zvtest::Scene scene(options);
  const double bounds[6] = { -12, 12, -12, 12, -12, 12 };
  scene.LookAlong(2, 0);
  scene.ResetCamera(bounds, 0);
  scene.Render();
  this->Widget->SetEnabled(0);
  this->Widget->SetRendererZ(scene.Renderer(0));
  this->Widget->SetCurrentRender(scene.Renderer(0));
  this->Widget->SetEnabled(1);
  zvtest::Mouse mouse(scene);
  mouse.Press(zvtest::Left, scene.At({ { 0, 5, 1 } }));
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Moving);
  mouse.Press(zvtest::Left, { { 300, 200 } });
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside);
  this->Widget->SetEnabled(0);
}

TEST_F(SeedWidgetMouse, APressWithoutACurrentViewIsAMiss)
{
  this->Widget->SetCurrentRenderer(nullptr);
  this->PointerIn(Z).Press(zvtest::Left, this->At(Z, 1));
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside);
  EXPECT_EQ(this->Looks(), "..*");
}

TEST_F(SeedWidgetMouse, APressInAnotherViewIsReadInTheCurrentOneByDesign)
{
  const Display at = this->At(Z, 1);
  this->Interactor(Z)->SetEventInformation(at[0], at[1]);
  this->PointerIn(X).Press(zvtest::Left, Beside);
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Moving);
  EXPECT_EQ(this->Widget->CurrentActorIndex, 1);
}

TEST_F(SeedWidgetMouse, TheNearerSeedIsTaken)
{
  this->Add({ { 0, 5, -6 } });
  this->Add({ { 0, 5, 8 } });
  this->PointerIn(Z).Press(zvtest::Left, this->At(Z, 1));
  EXPECT_EQ(this->Widget->CurrentActorIndex, 4);
}

TEST_F(SeedWidgetMouse, ErasedAndHiddenSeedsAreNotHit)
{
  const Display at = this->At(Z, 2);
  this->Widget->EraseHandle();
  this->PointerIn(Z).Press(zvtest::Left, at);
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside);
  this->Widget->SetEnabled(0);
  const Display hidden = this->At(Z, 1);
  this->Interactor(Z)->SetEventInformation(hidden[0], hidden[1]);
  EXPECT_EQ(this->Widget->IsClicked(), 0);
  this->Widget->OnLeftButtonDown();
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside);
}

// ---- Asking

TEST_F(SeedWidgetMouse, IsClickedOnAnySeedOnceOneWasSelected)
{
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget, zvtest::WidgetEvents);
  for (int seed : { 0, 1, 2 })
  {
    this->PointerIn(Z).MoveTo(this->At(Z, seed));
    EXPECT_EQ(this->Widget->IsClicked(), 1) << seed;
  }
  this->PointerIn(Z).MoveTo(Beside);
  EXPECT_EQ(this->Widget->IsClicked(), 0);
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
  EXPECT_EQ(this->Looks(), "..*");
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->PointerIn(Z).MoveTo(this->At(Z, 1));
  this->Widget->CurrentActorIndex = -1;
  EXPECT_EQ(this->Widget->IsClicked(), 0);
}

// ---- Dragging

namespace
{
// What a slice view cannot change, and drags past each of its edges.
struct DragRow
{
  const char* Name;
  zvtest::View View;
  World To;
  World End; // from (0, 5, 1) in a box from -10 to 10
};
void PrintTo(const DragRow& row, std::ostream* os)
{
  *os << row.Name;
}
const DragRow DragRows[] = {
  { "InX", X, { { 0, -3, -4 } }, { { 0, -3, -4 } } },
  { "InY", Y, { { -3, 5, -4 } }, { { -3, 5, -4 } } },
  { "InZ", Z, { { -3, -4, 1 } }, { { -3, -4, 1 } } },
  { "InXPastUpperY", X, { { 0, 14, -4 } }, { { 0, 10, -4 } } },
  { "InXPastLowerY", X, { { 0, -14, -4 } }, { { 0, -10, -4 } } },
  { "InXPastUpperZ", X, { { 0, 3, 14 } }, { { 0, 3, 10 } } },
  { "InXPastLowerZ", X, { { 0, 3, -14 } }, { { 0, 3, -10 } } },
  { "InYPastUpperX", Y, { { 14, 5, -4 } }, { { 10, 5, -4 } } },
  { "InYPastLowerX", Y, { { -14, 5, -4 } }, { { -10, 5, -4 } } },
  { "InYPastUpperZ", Y, { { 3, 5, 14 } }, { { 3, 5, 10 } } },
  { "InYPastLowerZ", Y, { { 3, 5, -14 } }, { { 3, 5, -10 } } },
  { "InZPastUpperX", Z, { { 14, -4, 1 } }, { { 10, -4, 1 } } },
  { "InZPastLowerX", Z, { { -14, -4, 1 } }, { { -10, -4, 1 } } },
  { "InZPastUpperY", Z, { { 3, 14, 1 } }, { { 3, 10, 1 } } },
  { "InZPastLowerY", Z, { { 3, -14, 1 } }, { { 3, -10, 1 } } },
  { "InZPastACorner", Z, { { 14, 14, 1 } }, { { 10, 10, 1 } } },
};

class SeedWidgetDragged
  : public SeedWidgetMouse
  , public ::testing::WithParamInterface<DragRow>
{
};
}

TEST_P(SeedWidgetDragged, StaysWithThePointerAndInTheImage)
{
  const DragRow& row = this->GetParam();
  this->Widget->SetCurrentRender(this->Renderer(row.View));
  const Display from = this->At(row.View, 1);
  const Display to = this->In(row.View).At(row.To);
  this->PointerIn(row.View).Drag(zvtest::Left, from, to, zvtest::NoModifier, 4);
  this->ExpectNear(this->PositionOf(1), row.End, 0.25); // two pixels are so much
  for (int axis = 0; axis < 3; ++axis)
  {
    if (std::abs(row.End[axis]) == 10 || axis == row.View)
    {
      EXPECT_EQ(this->PositionOf(1)[axis], row.End[axis]) << axis;
    }
  }
  EXPECT_EQ(this->PositionOf(0), (World{ { -6, -4, -5 } }));
  EXPECT_EQ(this->PositionOf(2), (World{ { 5, 0, 6 } }));
}

INSTANTIATE_TEST_SUITE_P(Views, SeedWidgetDragged, ::testing::ValuesIn(DragRows),
  [](const auto& row) { return row.param.Name; });

TEST_F(SeedWidgetMouse, EachMoveOfADragTellsAndRenders)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->At(Z, 1));
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  mouse.MoveTo({ { 90, 120 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("InteractionEvent", "X", "Y", "Z", "3"));
  EXPECT_FALSE(recorder.Events().front().HasData);
  recorder.Clear();
  mouse.MoveTo({ { 80, 110 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("InteractionEvent", "X", "Y", "Z", "3"));
}

TEST_F(SeedWidgetMouse, ADragInThreeDimensionsFollowsTheCamera)
{
  this->Renderer(Z)->GetActiveCamera()->Elevation(30);
  this->Renderer(Z)->GetActiveCamera()->ParallelProjectionOff();
  this->In(Z).ResetCamera();
  this->In(Z).Render();
  const Display from = this->At(Z, 1);
  const Display to = { { from[0] + 20, from[1] - 10 } };
  this->PointerIn(Z).Drag(zvtest::Left, from, to);
  const Display now = this->At(Z, 1);
  EXPECT_NEAR(now[0], to[0], 1);
  EXPECT_NEAR(now[1], to[1], 1);
  EXPECT_NE(this->PositionOf(1)[2], 1.0);
}

TEST_F(SeedWidgetMouse, TheReleaseSizesTheSpheresAndKeepsTheSelection)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->At(Z, 0));
  this->SliceSource(2)->SetRadius(5);
  this->Source3D(1)->SetRadius(5);
  mouse.Release(zvtest::Left);
  EXPECT_LT(this->SliceSource(2)->GetRadius(), 1);
  EXPECT_EQ(this->Source3D(1)->GetRadius(), this->SliceSource(2)->GetRadius());
  EXPECT_EQ(this->Looks(), "*..");
  EXPECT_EQ(this->Widget->CurrentActorIndex, 0);
}

TEST_F(SeedWidgetMouse, AMoveWithoutAPressMovesNothing)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.MoveTo(this->At(Z, 1));
  mouse.MoveTo({ { 90, 120 } });
  mouse.Release(zvtest::Left);
  EXPECT_THAT(
    recorder.Names(), ElementsAre("MouseMoveEvent", "MouseMoveEvent", "LeftButtonReleaseEvent"));
  EXPECT_EQ(this->PositionOf(1), (World{ { 0, 5, 1 } }));
}

TEST_F(SeedWidgetMouse, AStateOfTheHostsOwnTellsOfADragThatMovesNothing)
{
  this->Widget->SetState(7);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.MoveTo({ { 90, 120 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("InteractionEvent", "X", "Y", "Z", "3"));
  EXPECT_EQ(this->PositionOf(2), (World{ { 5, 0, 6 } }));
  recorder.Clear();
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Start);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("EndInteractionEvent", "X", "Y", "Z", "3"));
}

TEST_F(SeedWidgetMouse, ADragWhoseSeedWasErasedMovesNothing)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->At(Z, 1));
  this->Widget->EraseHandle();
  mouse.MoveTo({ { 90, 120 } });
  this->ExpectNoMessage();
  EXPECT_EQ(this->PositionOf(1), (World{ { 5, 0, 6 } }));
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Looks(), "..");
}

TEST_F(SeedWidgetMouse, ADragWhoseSeedsWereClearedOnlySaysSo)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->At(Z, 1));
  this->Widget->Clear();
  mouse.MoveTo({ { 90, 120 } });
  this->ExpectGenericWarning("zvSeedWidget", "there is no seed of index 1...");
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Start);
}

TEST_F(SeedWidgetMouse, ADragWithoutACurrentImageOnlySaysSo)
{
  zvInstanceManager::Instance()->SetCurrentOutput(nullptr);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->At(Z, 1));
  mouse.MoveTo({ { 90, 120 } });
  this->ExpectGenericWarning("zvSeedWidget", "set the current image before moving a seed...");
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->PositionOf(1), (World{ { 0, 5, 1 } }));
}

TEST_F(SeedWidgetMouse, AMoveAsksForTheProjectionIfThatIsOn)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  this->Widget->ProjectToPlaneOn();
  mouse.Press(zvtest::Left, this->At(Z, 1));
  this->Widget->DebugMode = true;
  mouse.MoveTo({ { 90, 120 } });
  this->Widget->DebugMode = false;
  this->ExpectTraces("zvSeedWidget", this->Widget,
    { "zvSeedWidget::MovePoint(double *p1, double *p2)", "zvSeedWidget::ProjectPointsToPlane()",
      "zvSeedWidget::ProjectPointsToOrthoPlane()" });
}

// ---- The other buttons

TEST_F(SeedWidgetMouse, MiddleButtonAndRightPressAreTheHosts)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Middle, this->At(Z, 1));
  mouse.Release(zvtest::Middle);
  mouse.Press(zvtest::Right, this->At(Z, 1));
  EXPECT_THAT(recorder.Names(),
    ElementsAre("MiddleButtonPressEvent", "MiddleButtonReleaseEvent", "RightButtonPressEvent"));
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Start);
  EXPECT_EQ(this->Looks(), "..*");
}

TEST_F(SeedWidgetMouse, RightReleaseAndWheelSizeAndRenderWithoutAbort)
{
  const std::vector<std::pair<unsigned long, std::string>> rows = {
    { vtkCommand::RightButtonReleaseEvent, "RightButtonReleaseEvent" },
    { vtkCommand::MouseWheelForwardEvent, "MouseWheelForwardEvent" },
    { vtkCommand::MouseWheelBackwardEvent, "MouseWheelBackwardEvent" }
  };
  for (const auto& row : rows)
  {
    this->SliceSource(1)->SetRadius(5);
    this->Source3D(1)->SetRadius(5);
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Interactor(X)->InvokeEvent(row.first, nullptr);
    EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3", row.second));
    EXPECT_LT(this->SliceSource(1)->GetRadius(), 1);
    EXPECT_LT(this->Source3D(1)->GetRadius(), 1);
  }
}

TEST_F(SeedWidgetMouse, TheWheelInTheCurrentSliceViewIsAnsweredTwiceByDesign)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->PointerIn(Z).WheelForward(Beside);
  EXPECT_THAT(this->NamesOf(recorder),
    ElementsAre("X", "Y", "Z", "3", "X", "Y", "Z", "3", "MouseWheelForwardEvent"));
}

// ---- What is seen

TEST_F(SeedWidgetMouse, EveryViewShowsTheSeedsInTheirColoursAndFollows)
{
  for (zvtest::View view : zvtest::AllViews)
  {
    EXPECT_TRUE(this->Shows(view, this->At(view, 0), Red)) << view;
    EXPECT_TRUE(this->Shows(view, this->At(view, 1), Red)) << view;
    EXPECT_TRUE(this->Shows(view, this->At(view, 2), Cyan)) << view;
  }
  std::vector<Display> before;
  for (zvtest::View view : zvtest::AllViews)
  {
    before.push_back(this->At(view, 1));
  }
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->At(Z, 1));
  mouse.MoveTo(this->In(Z).At({ { -5, 2, 1 } }));
  for (zvtest::View view : zvtest::AllViews)
  {
    EXPECT_TRUE(this->Shows(view, this->At(view, 1), Cyan)) << view;
    EXPECT_TRUE(this->Shows(view, this->At(view, 2), Red)) << view;
    if (this->At(view, 1) != before[view])
    {
      EXPECT_EQ(this->In(view).Look().CountOther(Black, zvtest::Region::Around(before[view], 1)), 0)
        << view;
    }
  }
}

TEST_F(SeedWidgetMouse, ErasedClearedAndHiddenSeedsAreSeenNoMore)
{
  const auto countSeen = [this]()
  {
    std::vector<int> seen;
    for (zvtest::View view : zvtest::AllViews)
    {
      seen.push_back(this->In(view).Look().CountOther(Black, { { { 0, 0 } }, { { 199, 199 } } }));
    }
    return seen;
  };
  const std::vector<int> all = countSeen();
  this->Widget->EraseHandle();
  const std::vector<int> fewer = countSeen();
  for (zvtest::View view : zvtest::AllViews)
  {
    EXPECT_GT(all[view], fewer[view]);
    EXPECT_GT(fewer[view], 0);
  }
  this->Widget->SetEnabled(0);
  EXPECT_THAT(countSeen(), ElementsAre(0, 0, 0, 0));
  this->Widget->SetEnabled(1);
  EXPECT_EQ(countSeen(), fewer);
  this->Widget->Clear();
  EXPECT_THAT(countSeen(), ElementsAre(0, 0, 0, 0));
}
