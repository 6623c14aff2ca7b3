// What a host does with the seeds: adding, erasing, selecting, moving and placing them.
#include "zvSeedFixture.h"

#include "vtkCamera.h"
#include "vtkNew.h"
#include "vtkPropCollection.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using zvtest::ThreeD;
using zvtest::World;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
class SeedWidgetSeeds : public zvtest::Seeds
{
};

const char* const NoSeedSelected =
  "In file zvSeedWidget at method EraseHandle() >> No seed selected to delete!";
}

// ---- Adding

TEST_F(SeedWidgetSeeds, AnAddedSeedIsInAllViewsSelectedAndRendered)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Add({ { 1, 2, 3 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3"));
  EXPECT_EQ(this->Looks(), "*");
  EXPECT_EQ(this->PositionOf(0), (World{ { 1, 2, 3 } }));
  EXPECT_EQ(this->Widget->CurrentActorIndex, 0);
  EXPECT_EQ(this->Widget->CurrentHandle, this->SliceActor(0));
  this->Add({ { 4, 5, 6 } });
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3", "XYZ 3"));
  EXPECT_EQ(this->Looks(), ".*");
  EXPECT_EQ(this->Widget->CurrentActorIndex, 1);
  EXPECT_THAT(this->CountProps(), Each(2));
}

TEST_F(SeedWidgetSeeds, ASeedIsTwoSpheresAndTwoActorsInFourViews)
{
  this->Add({ { 1, 2, 3 } });
  EXPECT_NE(this->SliceSource(0), this->Source3D(0));
  EXPECT_NE(this->SliceActor(0), this->Actor3D(0));
  EXPECT_NE(this->SliceActor(0)->GetMapper(), this->Actor3D(0)->GetMapper());
  for (vtkSphereSource* sphere : { this->SliceSource(0), this->Source3D(0) })
  {
    EXPECT_EQ(sphere->GetThetaResolution(), 20);
    EXPECT_EQ(sphere->GetPhiResolution(), 20);
    EXPECT_NEAR(sphere->GetRadius(), 0.01 * 0.7 * std::sqrt(3.0), 1e-12); // nothing was picked yet
  }
  ASSERT_EQ(this->Widget->HandlePicker->GetPickList()->GetNumberOfItems(), 1);
  EXPECT_EQ(this->Widget->HandlePicker->GetPickList()->GetLastProp(), this->SliceActor(0));
}

TEST_F(SeedWidgetSeeds, TheNumberBesideThePositionIsIgnored)
{
  double x[3] = { 1, 2, 3 };
  for (int number : { 5, -1, 0 })
  {
    this->Widget->AddHandle(x, number);
  }
  EXPECT_EQ(this->Count(), 3);
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
}

TEST_F(SeedWidgetSeeds, AddingEndsWhateverStateThereWas)
{
  for (int state : { 1, 4, 9 })
  {
    this->Widget->SetState(state);
    this->Add({ { 0, 0, 0 } });
    EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Start);
  }
}

TEST_F(SeedWidgetSeeds, ASeedMayBeAddedOutsideTheImageAndAtNoNumber)
{
  this->Add({ { 500, -500, 0 } });
  this->Add({ { std::nan(""), 0, 0 } });
  this->Add({ { 1, 2, 3 } });
  EXPECT_EQ(this->PositionOf(0), (World{ { 500, -500, 0 } }));
  EXPECT_EQ(this->Looks(), "..*");
  this->Widget->SetEnabled(1);
  this->PointerIn(Z).Press(zvtest::Left, this->In(Z).At({ { 1, 2, 3 } }));
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
}

// ---- Who is in which view

namespace
{
struct WhereRow
{
  const char* Name;
  std::function<void(zvtest::OpenSeeds*)> Operation;
  std::vector<std::string> Where; // both actors of each seed
};

std::vector<WhereRow> MakeWhereRows()
{
  using Open = zvtest::OpenSeeds;
  static double x[3] = { 1, 1, 1 };
  const std::vector<std::string> all(3, "XYZ 3");
  return {
    { "AddHandle", [](Open* w) { w->AddHandle(x, 0); }, std::vector<std::string>(4, "XYZ 3") },
    { "EraseHandle", [](Open* w) { w->EraseHandle(); }, std::vector<std::string>(2, "XYZ 3") },
    { "Clear", [](Open* w) { w->Clear(); }, {} },
    { "SetEnabled0", [](Open* w) { w->SetEnabled(0); }, std::vector<std::string>(3, " ") },
    { "SetEnabled0And1",
      [](Open* w)
      {
        w->SetEnabled(0);
        w->SetEnabled(1);
      },
      all },
    { "HighlightHandle", [](Open* w) { w->HighlightHandle(0); }, all },
    { "HighlightNothing", [](Open* w) { w->HighlightHandle(nullptr); }, all },
    { "SetCurrentActorIndex", [](Open* w) { w->SetCurrentActorIndex(0); }, all },
    { "SetCurrentActorIndexTooLarge", [](Open* w) { w->SetCurrentActorIndex(3); }, all },
    { "MovePoint", [](Open* w) { w->MovePoint(x, x); }, all },
    { "SetHandlePosition", [](Open* w) { w->SetHandlePosition(0, 1, 2, 3); }, all },
    { "PlaceWidget", [](Open* w) { w->PlaceWidget(0, 1, 0, 1, 0, 1); }, all },
    { "SizeHandles", [](Open* w) { w->SizeHandles(); }, all },
    { "OnLeftButtonDown", [](Open* w) { w->OnLeftButtonDown(); }, all },
    { "OnRightButtonUp", [](Open* w) { w->OnRightButtonUp(); }, all },
    { "OnMouseWheelForward", [](Open* w) { w->OnMouseWheelForward(); }, all },
    { "IsClicked", [](Open* w) { w->IsClicked(); }, all },
  };
}
}

TEST_F(SeedWidgetSeeds, EveryOperationLeavesEveryActorInItsViews)
{
  for (const WhereRow& row : MakeWhereRows())
  {
    SCOPED_TRACE(row.Name);
    this->MakeWidget();
    this->Widget->SetEnabled(1);
    this->AddThree();
    row.Operation(this->Widget);
    EXPECT_THAT(this->Where(), ElementsAreArray(row.Where));
    const bool isShown = row.Where.empty() || row.Where.front() != " ";
    const int present = isShown ? static_cast<int>(row.Where.size()) : 0;
    EXPECT_THAT(this->CountProps(), Each(present)); // and nobody else
  }
}

// ---- Erasing

TEST_F(SeedWidgetSeeds, ErasesTheSelectedSeedAndTheOnesBehindMoveDown)
{
  this->AddThree();
  this->Widget->SetCurrentActorIndex(1);
  vtkSmartPointer<vtkActor> sliceActor = this->SliceActor(1);
  vtkSmartPointer<vtkActor> actor3D = this->Actor3D(1);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->EraseHandle();
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_EQ(this->WhereIs(sliceActor), "");
  EXPECT_EQ(this->WhereIs(actor3D), "");
  EXPECT_FALSE(this->Widget->HandlePicker->GetPickList()->IsItemPresent(sliceActor));
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3", "XYZ 3"));
  EXPECT_EQ(this->Looks(), "..");
  EXPECT_EQ(this->PositionOf(0), (World{ { -6, -4, -5 } }));
  EXPECT_EQ(this->PositionOf(1), (World{ { 5, 0, 6 } }));
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Widget->CurrentActorIndex, 1); // Deliberate: another seed's by now
  EXPECT_EQ(sliceActor->GetReferenceCount(), 1);
  EXPECT_EQ(actor3D->GetReferenceCount(), 1);
  for (vtkCollection* collection :
    { this->Widget->HandleActors.Get(), this->Widget->HandleSources.Get(),
      this->Widget->HandleActors3D.Get(), this->Widget->HandleSources3D.Get() })
  {
    EXPECT_EQ(collection->GetNumberOfItems(), 2);
  }
}

TEST_F(SeedWidgetSeeds, ErasingAgainSaysThatNothingIsSelectedAndRenders)
{
  this->AddThree();
  this->Widget->EraseHandle();
  this->ExpectNoMessage();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  for (int i = 0; i < 2; ++i)
  {
    this->Widget->EraseHandle();
    this->ExpectPlainError("zvSeedWidget", this->Widget, NoSeedSelected);
  }
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3", "X", "Y", "Z", "3"));
  EXPECT_EQ(this->Count(), 2);
}

TEST_F(SeedWidgetSeeds, ThatNothingIsSelectedCannotBeSilenced)
{
  vtkObject::GlobalWarningDisplayOff();
  this->Widget->EraseHandle();
  vtkObject::GlobalWarningDisplayOn();
  this->ExpectPlainError("zvSeedWidget", this->Widget, NoSeedSelected);
}

TEST_F(SeedWidgetSeeds, ErasesEverySeedFromEitherEnd)
{
  this->AddThree();
  this->Widget->EraseHandle(); // the last
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3", "XYZ 3"));
  this->Widget->SetCurrentActorIndex(0);
  this->Widget->EraseHandle();
  EXPECT_EQ(this->PositionOf(0), (World{ { 0, 5, 1 } }));
  this->Widget->SetCurrentActorIndex(0);
  this->Widget->EraseHandle();
  EXPECT_EQ(this->Count(), 0);
  EXPECT_THAT(this->CountProps(), Each(0));
  EXPECT_EQ(this->Widget->HandlePicker->GetPickList()->GetNumberOfItems(), 0);
}

TEST_F(SeedWidgetSeeds, ErasingAfterHighlightingAStrangerOnlyDropsTheSelection)
{
  this->AddThree();
  vtkNew<vtkActor> stranger;
  this->Widget->HighlightHandle(stranger);
  EXPECT_EQ(this->Widget->CurrentHandle, stranger.Get());
  this->Widget->EraseHandle();
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Count(), 3);
}

TEST_F(SeedWidgetSeeds, AStrangerThatDiesIsForgotten)
{
  this->AddThree();
  {
    vtkNew<vtkActor> stranger;
    this->Widget->HighlightHandle(stranger);
  }
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  this->Widget->EraseHandle();
  this->ExpectPlainError("zvSeedWidget", this->Widget, NoSeedSelected);
}

// ---- Clearing

TEST_F(SeedWidgetSeeds, ClearTakesAllSeedsOutAndLeavesTheSelection)
{
  this->AddThree();
  vtkSmartPointer<vtkActor> selected = this->SliceActor(2);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->Clear();
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_THAT(this->CountProps(), Each(0));
  for (vtkCollection* collection :
    { this->Widget->HandleActors.Get(), this->Widget->HandleSources.Get(),
      this->Widget->HandleActors3D.Get(), this->Widget->HandleSources3D.Get() })
  {
    EXPECT_EQ(collection->GetNumberOfItems(), 0);
  }
  EXPECT_EQ(this->Widget->CurrentHandle, selected.GetPointer());
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
  EXPECT_EQ(this->Widget->HandlePicker->GetPickList()->GetNumberOfItems(), 3);
}

TEST_F(SeedWidgetSeeds, AfterClearAStaleIndexFindsNothing)
{
  this->AddThree();
  this->Widget->SetEnabled(1);
  this->PointerIn(Z).MoveTo(this->In(Z).At({ { 5, 0, 6 } }));
  EXPECT_EQ(this->Widget->IsClicked(), 1);
  this->Widget->Clear();
  EXPECT_EQ(this->Widget->IsClicked(), 0);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetCurrentActorIndex(1);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Widget->CurrentActorIndex, -1);
}

TEST_F(SeedWidgetSeeds, SeedsThatWereClearedHideNoNewOnes)
{
  this->Add({ { 0, 0, 8 } });
  this->Widget->SetEnabled(1);
  this->Widget->Clear();
  this->Add({ { 0, 0, -8 } });
  this->Widget->HighlightHandle(nullptr);
  this->PointerIn(Z).Press(zvtest::Left, this->In(Z).At({ { 0, 0, -8 } }));
  EXPECT_EQ(this->Widget->CurrentHandle, this->SliceActor(0));
}

TEST_F(SeedWidgetSeeds, ClearWithoutAnInteractorLeavesTheSpheresToBeSeen)
{
  this->AddThree();
  this->Widget->SetInteractor(nullptr);
  this->Widget->Clear();
  EXPECT_EQ(this->Count(), 0);
  EXPECT_THAT(this->CountProps(), Each(3));
}

TEST_F(SeedWidgetSeeds, ClearWithoutACurrentViewTakesTheOneUnderThePointer)
{
  this->AddThree();
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->Clear();
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Renderer(Z));
  EXPECT_THAT(this->CountProps(), Each(0));
}

TEST_F(SeedWidgetSeeds, ClearWithoutAnyViewUnderThePointerLeavesTheSpheres)
{
  this->AddThree();
  zvtest::Scene empty;
  empty.DropRenderers();
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->SetInteractor(empty.Interactor());
  this->Widget->Clear();
  EXPECT_EQ(this->Count(), 0);
  EXPECT_THAT(this->CountProps(), Each(3));
}

TEST_F(SeedWidgetSeeds, AClearedWidgetTakesNewSeeds)
{
  this->AddThree();
  this->Widget->Clear();
  this->Add({ { 1, 1, 1 } });
  EXPECT_EQ(this->Looks(), "*");
  EXPECT_EQ(this->Widget->CurrentActorIndex, 0);
  EXPECT_THAT(this->CountProps(), Each(1));
}

// ---- Positions

TEST_F(SeedWidgetSeeds, ASeedIsSetAnywhereInAllViewsWithoutARender)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetHandlePosition(1, 100, -200, 300);
  EXPECT_EQ(this->PositionOf(1), (World{ { 100, -200, 300 } }));
  double xyz[3] = { 7, 8, 9 };
  this->Widget->SetHandlePosition(0, xyz);
  EXPECT_EQ(this->PositionOf(0), (World{ { 7, 8, 9 } }));
  EXPECT_EQ(this->PositionOf(2), (World{ { 5, 0, 6 } }));
  EXPECT_THAT(recorder.Names(), IsEmpty());
  double bounds[6];
  this->SliceActor(1)->GetBounds(bounds);
  EXPECT_NEAR((bounds[0] + bounds[1]) / 2, 100, 0.1);
}

TEST_F(SeedWidgetSeeds, APositionIsReadInBothForms)
{
  this->AddThree();
  double xyz[3] = { 0, 0, 0 };
  this->Widget->GetHandlePosition(1, xyz);
  EXPECT_THAT(xyz, ElementsAre(0, 5, 1));
  const double* position = this->Widget->GetHandlePosition(2);
  ASSERT_NE(position, nullptr);
  EXPECT_EQ(position[2], 6);
}

TEST_F(SeedWidgetSeeds, ThePositionIsThatOfTheSliceViews)
{
  this->AddThree();
  this->Source3D(0)->SetCenter(9, 9, 9);
  EXPECT_EQ(this->Widget->GetHandlePosition(0)[0], -6);
}

// ---- Selecting

TEST_F(SeedWidgetSeeds, HighlightsByPropAndByIndex)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  EXPECT_EQ(this->Widget->HighlightHandle(this->SliceActor(0)), 0);
  EXPECT_EQ(this->Looks(), "*..");
  EXPECT_EQ(this->Widget->CurrentHandle, this->SliceActor(0));
  EXPECT_EQ(this->Widget->HighlightHandle(1), 1);
  EXPECT_EQ(this->Looks(), ".*.");
  EXPECT_EQ(this->Widget->CurrentHandle, this->SliceActor(1));
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2); // not written
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SeedWidgetSeeds, HighlightingNothingLeavesTheLooks)
{
  this->AddThree();
  EXPECT_EQ(this->Widget->HighlightHandle(nullptr), -1);
  EXPECT_EQ(this->Looks(), "..*");
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  for (int index : { -1, 3, 1000 })
  {
    this->Widget->HighlightHandle(0);
    EXPECT_EQ(this->Widget->HighlightHandle(index), -1);
    EXPECT_EQ(this->Looks(), "*..");
    EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  }
}

TEST_F(SeedWidgetSeeds, HighlightingAStrangerTakesTheLookFromAll)
{
  this->AddThree();
  vtkNew<vtkActor> stranger;
  EXPECT_EQ(this->Widget->HighlightHandle(stranger), -1);
  EXPECT_EQ(this->Looks(), "...");
  EXPECT_EQ(this->Widget->CurrentHandle, stranger.Get());
  // The actor of the 3D view stands for no seed.
  EXPECT_EQ(this->Widget->HighlightHandle(this->Actor3D(1)), -1);
  EXPECT_EQ(this->Looks(), "...");
}

TEST_F(SeedWidgetSeeds, HighlightingAStrangerWithoutSeedsKeepsItInMind)
{
  vtkNew<vtkActor> stranger;
  EXPECT_EQ(this->Widget->HighlightHandle(stranger), -1);
  EXPECT_EQ(this->Widget->CurrentHandle, stranger.Get());
}

TEST_F(SeedWidgetSeeds, HighlightingTakesThePositionOfTheLastPickByDesign)
{
  this->AddThree();
  this->Widget->SetEnabled(1);
  this->PointerIn(Z).Press(zvtest::Left, this->In(Z).At({ { 5, 0, 6 } }));
  double picked[3];
  this->Widget->HandlePicker->GetPickPosition(picked);
  EXPECT_NEAR(picked[0], 5, 0.3);
  std::fill_n(this->Widget->LastPickPosition, 3, 0.0);
  this->Widget->ValidPick = 0;
  EXPECT_EQ(this->Widget->HighlightHandle(0), 0);
  EXPECT_EQ(this->Widget->ValidPick, 1);
  EXPECT_THAT(this->Widget->LastPickPosition, ElementsAre(picked[0], picked[1], picked[2]));
}

TEST_F(SeedWidgetSeeds, SelectsByIndexAndRenders)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetCurrentActorIndex(1);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_EQ(this->Widget->CurrentActorIndex, 1);
  EXPECT_EQ(this->Looks(), ".*.");
  recorder.Clear();
  this->Widget->SetCurrentActorIndex(3);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_EQ(this->Widget->CurrentActorIndex, -1);
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Looks(), ".*.");
}

TEST_F(SeedWidgetSeeds, SelectingMinusOneIsNoWayOfDeselectingByDesign)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetCurrentActorIndex(-1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
  EXPECT_EQ(this->Widget->CurrentHandle, this->SliceActor(2));
  EXPECT_EQ(this->Looks(), "..*");
}

// ---- Moving

namespace
{
struct MoveRow
{
  const char* Name;
  World Way;
  World End; // from (5, 0, 6) in a box from -10 to 10
};
void PrintTo(const MoveRow& row, std::ostream* os)
{
  *os << row.Name;
}
const MoveRow MoveRows[] = { { "Inside", { { -1, 2, 3 } }, { { 4, 2, 9 } } },
  { "UpperX", { { 6, 1, 0 } }, { { 10, 1, 6 } } },
  { "LowerX", { { -16, 1, 0 } }, { { -10, 1, 6 } } },
  { "UpperY", { { 1, 11, 0 } }, { { 6, 10, 6 } } },
  { "LowerY", { { 1, -11, 0 } }, { { 6, -10, 6 } } },
  { "UpperZ", { { 1, 1, 5 } }, { { 6, 1, 10 } } },
  { "LowerZ", { { 1, 1, -17 } }, { { 6, 1, -10 } } },
  { "Corner", { { 99, -99, 99 } }, { { 10, -10, 10 } } } };

class SeedWidgetMoved
  : public zvtest::Seeds
  , public ::testing::WithParamInterface<MoveRow>
{
};
}

TEST_P(SeedWidgetMoved, ByAWayStopsAtTheFacesOfTheImage)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  World from = { { 100, 200, 300 } };
  World to = { { 100 + this->GetParam().Way[0], 200 + this->GetParam().Way[1],
    300 + this->GetParam().Way[2] } };
  this->Widget->MovePoint(from.data(), to.data());
  EXPECT_EQ(this->PositionOf(2), this->GetParam().End);
  EXPECT_EQ(this->PositionOf(1), (World{ { 0, 5, 1 } }));
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Faces, SeedWidgetMoved, ::testing::ValuesIn(MoveRows),
  [](const auto& row) { return row.param.Name; });

TEST_F(SeedWidgetSeeds, MovingByAStaleIndexOnlySaysSo)
{
  double p1[3] = { 0, 0, 0 };
  double p2[3] = { 1, 1, 1 };
  this->Widget->MovePoint(p1, p2);
  this->ExpectGenericWarning("zvSeedWidget", "there is no seed of index -1...");
  this->AddThree();
  this->Widget->EraseHandle();
  this->Widget->MovePoint(p1, p2);
  this->ExpectGenericWarning("zvSeedWidget", "there is no seed of index 2...");
  EXPECT_EQ(this->PositionOf(1), (World{ { 0, 5, 1 } }));
}

TEST_F(SeedWidgetSeeds, AfterErasingAnIndexMayMoveTheNextSeedByDesign)
{
  this->AddThree();
  this->Widget->SetCurrentActorIndex(1);
  this->Widget->EraseHandle();
  double p1[3] = { 0, 0, 0 };
  double p2[3] = { 1, 1, 1 };
  this->Widget->MovePoint(p1, p2);
  EXPECT_EQ(this->PositionOf(1), (World{ { 6, 1, 7 } }));
}

TEST_F(SeedWidgetSeeds, AWayThatIsNoNumberIsSurvived)
{
  this->AddThree();
  double p1[3] = { 0, 0, 0 };
  double p2[3] = { std::nan(""), 1, 1 };
  this->Widget->MovePoint(p1, p2);
  this->Widget->SetEnabled(1);
  this->Widget->SetHandlePosition(2, 1, 1, 1);
  EXPECT_EQ(this->PositionOf(2), (World{ { 1, 1, 1 } }));
}

// ---- Placing and sizing

TEST_F(SeedWidgetSeeds, PlacingSpreadsTheSlicesSpheresAlongTheDiagonal)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  double bounds[6] = { -2, 2, 0, 8, 10, 20 };
  this->Widget->PlaceWidget(bounds);
  EXPECT_EQ(CenterOf(this->SliceSource(0)), (World{ { -2, 0, 10 } }));
  EXPECT_EQ(CenterOf(this->SliceSource(1)), (World{ { 0, 4, 15 } }));
  EXPECT_EQ(CenterOf(this->SliceSource(2)), (World{ { 2, 8, 20 } }));
  EXPECT_EQ(CenterOf(this->Source3D(0)), (World{ { -6, -4, -5 } })); // Deliberate: they stay
  EXPECT_EQ(CenterOf(this->Source3D(2)), (World{ { 5, 0, 6 } }));
  EXPECT_THAT(this->Widget->InitialBounds, ElementsAre(-2, 2, 0, 8, 10, 20));
  EXPECT_DOUBLE_EQ(this->Widget->InitialLength, std::sqrt(16.0 + 64.0 + 100.0));
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SeedWidgetSeeds, PlacingScalesTheBoundsByThePlaceFactor)
{
  this->AddThree();
  this->Widget->SetPlaceFactor(0.5);
  this->Widget->PlaceWidget(-2, 2, 0, 8, 10, 20);
  EXPECT_EQ(CenterOf(this->SliceSource(0)), (World{ { -1, 2, 12.5 } }));
  EXPECT_EQ(CenterOf(this->SliceSource(2)), (World{ { 1, 6, 17.5 } }));
  this->Widget->SetPlaceFactor(1.0);
  double bounds[6];
  this->SliceActor(2)->GetBounds(bounds);
  this->Widget->SetProp3D(this->SliceActor(2));
  this->Widget->PlaceWidget();
  EXPECT_THAT(this->Widget->InitialBounds, ElementsAreArray(bounds));
}

TEST_F(SeedWidgetSeeds, ASingleSeedIsPlacedNowhereByDesign)
{
  this->Add({ { 1, 2, 3 } });
  double bounds[6] = { -2, 2, 0, 8, 10, 20 };
  this->Widget->PlaceWidget(bounds);
  EXPECT_TRUE(std::isnan(this->SliceSource(0)->GetCenter()[0]));
  EXPECT_EQ(CenterOf(this->Source3D(0)), (World{ { 1, 2, 3 } }));
  this->Widget->SetEnabled(1);
  this->PointerIn(Z).Drag(zvtest::Left, { { 100, 100 } }, { { 120, 100 } });
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside);
}

TEST_F(SeedWidgetSeeds, PlacingMovesNothingWhileProjectionIsOn)
{
  this->AddThree();
  this->Widget->ProjectToPlaneOn();
  double bounds[6] = { -2, 2, 0, 8, 10, 20 };
  this->Widget->PlaceWidget(bounds);
  EXPECT_EQ(this->PositionOf(0), (World{ { -6, -4, -5 } }));
  EXPECT_THAT(this->Widget->InitialBounds, ElementsAre(-2, 2, 0, 8, 10, 20));
}

TEST_F(SeedWidgetSeeds, BeforeASelectionSpheresHaveAPartOfThePlacedDiagonal)
{
  this->AddThree();
  this->Widget->ValidPick = 0;
  double bounds[6] = { 0, 30, 0, 40, 0, 0 };
  this->Widget->PlaceWidget(bounds); // sizes, too
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_DOUBLE_EQ(this->SliceSource(i)->GetRadius(), 0.01 * 0.7 * 50.0);
    EXPECT_DOUBLE_EQ(this->Source3D(i)->GetRadius(), 0.01 * 0.7 * 50.0);
  }
}

TEST_F(SeedWidgetSeeds, AfterwardsTheyHaveAPartOfTheCurrentView)
{
  this->AddThree();
  this->Widget->SizeHandles();
  const double radius = this->SliceSource(0)->GetRadius();
  // 200 pixels are seen of a camera that shows this height:
  const double height = 2.0 * this->Renderer(Z)->GetActiveCamera()->GetParallelScale();
  EXPECT_NEAR(radius, 0.01 * 0.7 * std::sqrt(2.0) * height, 0.05 * radius);
  this->Renderer(Z)->GetActiveCamera()->Zoom(2.0);
  this->Widget->SizeHandles();
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_NEAR(this->SliceSource(i)->GetRadius(), radius / 2, 1e-6);
    EXPECT_EQ(this->Source3D(i)->GetRadius(), this->SliceSource(i)->GetRadius());
  }
  this->Widget->SetCurrentRender(this->Renderer(X));
  this->Widget->SizeHandles();
  EXPECT_NEAR(this->SliceSource(0)->GetRadius(), radius, 1e-3);
}

TEST_F(SeedWidgetSeeds, ACurrentViewWithoutAWindowIsNotMeasured)
{
  this->AddThree();
  vtkSmartPointer<vtkRenderer> kept = this->Renderer(Z);
  this->In(Z).DropRenderers();
  this->Widget->SizeHandles();
  EXPECT_NEAR(this->SliceSource(0)->GetRadius(), 0.01 * 0.7 * std::sqrt(3.0), 1e-12);
}
