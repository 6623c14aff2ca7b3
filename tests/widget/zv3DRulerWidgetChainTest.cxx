// The chain of the 3D ruler: adding, inserting, removing, selecting and moving points, the label.
#include "zv3DRulerFixture.h"

#include "vtkMapper.h"
#include "vtkNew.h"
#include "vtkPropCollection.h"

#include <gmock/gmock.h>

#include <algorithm>
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
class Ruler3DChain : public zvtest::Ruler3D
{
protected:
  /// Select a segment as a press on it does.
  void SelectSegment(int index) { this->Widget->CurrentLine = this->Widget->HighlightLine(index); }

  void Insert(const World& position)
  {
    World x = position;
    this->Widget->InsertHandleOnLine(x.data());
  }
};

const char* const NothingSelected =
  "In file zv3DRulerWidget at method RemovePointSelected() >> No 3D Ruler selected to delete!";
}

// ---- Adding

TEST_F(Ruler3DChain, TheFirstPointMakesNoSegmentAndNoLabel)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Add({ { 1, 2, 3 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_THAT(this->Where(), ElementsAre("XYZ3", "label "));
  EXPECT_EQ(this->Looks(), "*");
  EXPECT_EQ(this->PositionOf(0), (World{ { 1, 2, 3 } }));
  EXPECT_EQ(this->Widget->CurrentPoint, 0);
  EXPECT_EQ(this->Widget->CurrentLine, -1);
  EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(0));
  EXPECT_EQ(this->Label(), " ");
}

TEST_F(Ruler3DChain, TheSecondMakesASegmentAndShowsItsLength)
{
  this->Add({ { -6, -4, 1 } });
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Add({ { -3, 0, 1 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_THAT(this->Where(), ElementsAre("XYZ3", "XYZ3", "XYZ3", "label XYZ3"));
  EXPECT_EQ(this->Looks(), "o=*");
  this->ExpectChain(2);
  EXPECT_EQ(this->Label(), "      5.00 mm");
  this->ExpectLabelAt({ { -3, 0, 1 } });
  EXPECT_EQ(this->Widget->TextActor->GetCamera(), this->Renderer(Z)->GetActiveCamera());
  EXPECT_EQ(this->Widget->CurrentPoint, 1);
  EXPECT_EQ(this->Widget->CurrentLine, 0);
  EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(1));
}

TEST_F(Ruler3DChain, EachFurtherPointMakesOneSegmentMore)
{
  this->AddThree();
  this->ExpectChain(3);
  EXPECT_THAT(this->Where(), ElementsAre("XYZ3", "XYZ3", "XYZ3", "XYZ3", "XYZ3", "label XYZ3"));
  EXPECT_EQ(this->Looks(), "o-o=*");
  EXPECT_EQ(this->Label(), "     13.00 mm");
  this->ExpectLabelAt({ { 9, 5, 1 } });
  EXPECT_THAT(this->CountProps(), Each(6)); // 3 points, 2 segments, 1 label
  EXPECT_EQ(this->Widget->PointPicker->GetPickList()->GetNumberOfItems(), 3);
  EXPECT_EQ(this->Widget->LinePicker->GetPickList()->GetNumberOfItems(), 2);
}

TEST_F(Ruler3DChain, APointIsOneSphereInAllViews)
{
  this->Add({ { 1, 2, 3 } });
  EXPECT_EQ(this->Sphere(0)->GetThetaResolution(), 20);
  EXPECT_EQ(this->Sphere(0)->GetPhiResolution(), 20);
  EXPECT_GT(this->Sphere(0)->GetRadius(), 0.02); // sized for the view
  double bounds[6];
  this->PointActor(0)->GetBounds(bounds);
  EXPECT_NEAR((bounds[4] + bounds[5]) / 2, 3, 1e-5);
}

TEST_F(Ruler3DChain, TheNumberBesideThePositionIsIgnoredAndTheStateStartsAnew)
{
  double x[3] = { 1, 2, 3 };
  for (int number : { 5, -1, 0 })
  {
    this->Widget->SetState(zv3DRulerWidget::Outside);
    this->Widget->AddHandle(x, number);
    EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Start);
  }
  this->ExpectChain(3);
  EXPECT_EQ(this->Label(), "      0.00 mm");
}

TEST_F(Ruler3DChain, FromTheSecondPointOnTheCurrentViewMustBeThere)
{
  this->Widget->SetCurrentRenderer(nullptr);
  this->Add({ { 1, 2, 3 } });
  this->ExpectChain(1);
  this->Widget->SetState(zv3DRulerWidget::Outside);
  this->Add({ { 4, 5, 6 } });
  this->ExpectGenericWarning("zv3DRulerWidget", "set CurrentRenderer before adding a point...");
  this->ExpectChain(1);
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Outside);
}

// ---- Who is in which view

namespace
{
struct WhereRow
{
  const char* Name;
  std::function<void(zvtest::Open3DRuler*)> Operation;
  std::vector<std::string> Where; // points, segments, label
};

std::vector<WhereRow> MakeWhereRows()
{
  using Open = zvtest::Open3DRuler;
  static double x[3] = { 1, 1, 1 };
  const std::vector<std::string> all = { "XYZ3", "XYZ3", "XYZ3", "XYZ3", "XYZ3", "label XYZ3" };
  const std::vector<std::string> twoPoints = { "XYZ3", "XYZ3", "XYZ3", "label XYZ3" };
  const std::vector<std::string> fourPoints = { "XYZ3", "XYZ3", "XYZ3", "XYZ3", "XYZ3", "XYZ3",
    "XYZ3", "label XYZ3" };
  const std::vector<std::string> hidden = { "", "", "", "", "", "label XYZ3" };
  const std::vector<std::string> noLabel = { "XYZ3", "XYZ3", "XYZ3", "XYZ3", "XYZ3", "label " };
  return {
    { "AddHandle", [](Open* w) { w->AddHandle(x, 0); }, fourPoints },
    { "InsertHandleOnLine", [](Open* w) { w->InsertHandleOnLine(x); }, fourPoints },
    { "RemovePointSelected", [](Open* w) { w->RemovePointSelected(); }, twoPoints },
    { "RemoveFirst",
      [](Open* w)
      {
        w->SetCurrentActorIndex(0);
        w->RemovePointSelected();
      },
      twoPoints },
    { "Clear", [](Open* w) { w->Clear(); }, { "label " } },
    { "SetEnabled0", [](Open* w) { w->SetEnabled(0); }, hidden },
    { "SetEnabled0And1",
      [](Open* w)
      {
        w->SetEnabled(0);
        w->SetEnabled(1);
      },
      all },
    { "HighlightHandle", [](Open* w) { w->HighlightHandle(0); }, all },
    { "HighlightLine", [](Open* w) { w->HighlightLine(0); }, all },
    { "SetCurrentActorIndex", [](Open* w) { w->SetCurrentActorIndex(0); }, all },
    { "SetCurrentActorIndexTooLarge", [](Open* w) { w->SetCurrentActorIndex(3); }, noLabel },
    { "SetTextToActorPosition", [](Open* w) { w->SetTextToActorPosition(1); }, all },
    { "SetTextToActorPositionNegative", [](Open* w) { w->SetTextToActorPosition(-1); }, noLabel },
    { "MovePoint", [](Open* w) { w->MovePoint(x, x); }, all },
    { "SetHandlePosition", [](Open* w) { w->SetHandlePosition(0, 1, 2, 3); }, all },
    { "PlaceWidget", [](Open* w) { w->PlaceWidget(0, 1, 0, 1, 0, 1); }, all },
    { "SizeHandles", [](Open* w) { w->SizeHandles(); }, all },
    { "OnLeftButtonDown", [](Open* w) { w->OnLeftButtonDown(); }, all },
    { "OnMiddleButtonDown", [](Open* w) { w->OnMiddleButtonDown(); }, all },
    { "OnRightButtonUp", [](Open* w) { w->OnRightButtonUp(); }, all },
    { "OnMouseWheelForward", [](Open* w) { w->OnMouseWheelForward(); }, all },
    { "IsClicked", [](Open* w) { w->IsClicked(); }, all },
  };
}
}

TEST_F(Ruler3DChain, EveryOperationLeavesEveryPropInItsViews)
{
  for (const WhereRow& row : MakeWhereRows())
  {
    SCOPED_TRACE(row.Name);
    this->MakeWidget();
    this->Widget->SetEnabled(1);
    this->AddThree();
    row.Operation(this->Widget);
    EXPECT_THAT(this->Where(), ElementsAreArray(row.Where));
    const int present = static_cast<int>(std::count_if(row.Where.begin(), row.Where.end(),
      [](const std::string& where) { return where.find("XYZ3") != std::string::npos; }));
    EXPECT_THAT(this->CountProps(), Each(present)); // and nobody else
  }
}

// ---- The label

TEST_F(Ruler3DChain, TheLabelTellsTheSegmentThatEndsInThePoint)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetTextToActorPosition(1);
  EXPECT_EQ(this->Label(), "      5.00 mm");
  this->ExpectLabelAt({ { -3, 0, 1 } });
  EXPECT_EQ(this->Looks(), "o-*=o"); // the segment's look is left to others
  EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(1));
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
  EXPECT_EQ(this->Widget->CurrentLine, 1);
  this->Widget->SetTextToActorPosition(2);
  EXPECT_EQ(this->Label(), "     13.00 mm");
  this->ExpectLabelAt({ { 9, 5, 1 } });
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(Ruler3DChain, TheLabelOfPointZeroTellsSegmentZeroAndHighlightsItByDesign)
{
  this->AddThree();
  this->Widget->SetTextToActorPosition(0);
  EXPECT_EQ(this->Label(), "      5.00 mm");
  this->ExpectLabelAt({ { -3, 0, 1 } }); // at the end of the segment, not at the point
  EXPECT_EQ(this->Looks(), "*=o-o");
  EXPECT_EQ(this->Widget->CurrentLine, 1);
  EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(0));
}

TEST_F(Ruler3DChain, TheLabelOfASinglePointZeroIsNotTouched)
{
  this->Add({ { 1, 2, 3 } });
  this->Renderer(X)->AddActor(this->Widget->TextActor);
  this->Widget->SetTextToActorPosition(0);
  EXPECT_EQ(this->Label(), " ");
  EXPECT_EQ(this->WhereIs(this->Widget->TextActor), "X");
}

TEST_F(Ruler3DChain, WithoutItsSegmentTheLabelIsTakenOut)
{
  for (int index : { 3, -1, 99 })
  {
    this->MakeViews();
    this->MakeWidget();
    this->AddThree();
    const std::string label = this->Label();
    this->Widget->SetTextToActorPosition(index);
    EXPECT_EQ(this->WhereIs(this->Widget->TextActor), "") << index;
    EXPECT_EQ(this->Label(), label);
    EXPECT_EQ(this->Looks(), "o-o=*");
  }
}

TEST_F(Ruler3DChain, TheLabelIsAsLargeAsHandlesInSinglePrecision)
{
  this->AddThree();
  // The whole size of handles, of which spheres are 0.7.
  const double size = this->Sphere(0)->GetRadius() / 0.7;
  this->Widget->SetTextToActorPosition(2);
  const double* scale = this->Widget->TextActor->GetScale();
  EXPECT_EQ(scale[0], static_cast<double>(static_cast<float>(size)));
  EXPECT_EQ(scale[0], scale[1]);
  EXPECT_EQ(scale[0], scale[2]);
  this->Renderer(Z)->GetActiveCamera()->Zoom(2.0);
  this->Widget->SizeHandles();
  EXPECT_EQ(this->Widget->TextActor->GetScale()[0], scale[0]); // until it is refreshed
  this->Widget->SetTextToActorPosition(2);
  EXPECT_NEAR(this->Widget->TextActor->GetScale()[0], size / 2, 1e-5);
}

TEST_F(Ruler3DChain, TheLabelStandsBeforeItsPointInTheCurrentView)
{
  this->AddThree();
  for (zvtest::View view : zvtest::AllViews)
  {
    this->Widget->SetCurrentRender(this->Renderer(view));
    this->Widget->SetTextToActorPosition(2);
    this->ExpectLabelAt({ { 9, 5, 1 } });
  }
  const double* position = this->Widget->TextActor->GetPosition();
  EXPECT_NE(position[0], 9); // the 3D view looks obliquely
}

namespace
{
struct LengthRow
{
  const char* Name;
  World To;
  const char* Text;
};
const LengthRow LengthRows[] = { { "None", { { 0, 0, 0 } }, "      0.00 mm" },
  { "Rounded", { { 0.126, 0, 0 } }, "      0.13 mm" },
  { "Oblique", { { 1, 1, 1 } }, "      1.73 mm" },
  { "Long", { { 1234567.891, 0, 0 } }, "1234567.89 mm" },
  { "WiderThanTheColumns", { { 0, 98765432101.5, 0 } }, "98765432101.50 mm" } };
}

TEST_F(Ruler3DChain, LengthsHaveTwoDecimalsInTenColumns)
{
  for (const LengthRow& row : LengthRows)
  {
    this->MakeWidget();
    this->Add({ { 0, 0, 0 } });
    this->Add(row.To);
    EXPECT_EQ(this->Label(), row.Text) << row.Name;
  }
}

TEST_F(Ruler3DChain, AHugeLengthIsCutAtTheEndOfTheBuffer)
{
  this->Add({ { 0, 0, 0 } });
  this->Add({ { 1e120, 0, 0 } });
  EXPECT_EQ(this->Label().size(), 99u);
}

TEST_F(Ruler3DChain, TheLabelByPropTellsThatPointsSegmentAndHighlightsNothing)
{
  this->AddThree();
  this->Widget->SetTextToActorPosition(this->PointActor(1));
  EXPECT_EQ(this->Label(), "      5.00 mm");
  this->ExpectLabelAt({ { -3, 0, 1 } });
  EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(1));
  EXPECT_EQ(this->Looks(), "o-o=*");
  this->Widget->SetTextToActorPosition(this->PointActor(2));
  EXPECT_EQ(this->Label(), "     13.00 mm");
  this->Widget->SetTextToActorPosition(this->PointActor(0));
  EXPECT_EQ(this->Label(), "      5.00 mm");
}

TEST_F(Ruler3DChain, TheLabelByAPropThatIsNoPointStays)
{
  this->AddThree();
  vtkNew<vtkActor> stranger;
  this->Widget->SetTextToActorPosition(stranger);
  EXPECT_EQ(this->Widget->CurrentHandle, stranger.Get());
  EXPECT_EQ(this->Label(), "     13.00 mm");
  this->Widget->SetTextToActorPosition(static_cast<vtkProp*>(nullptr));
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->WhereIs(this->Widget->TextActor), "XYZ3");
}

TEST_F(Ruler3DChain, WithoutACurrentViewTheLabelStays)
{
  this->AddThree();
  this->Widget->SetCurrentRenderer(nullptr);
  const char* const message = "set CurrentRenderer before placing the label...";
  this->Widget->SetTextToActorPosition(1);
  this->ExpectGenericWarning("zv3DRulerWidget", message);
  this->Widget->SetTextToActorPosition(0);
  this->ExpectGenericWarning("zv3DRulerWidget", message);
  this->Widget->SetTextToActorPosition(this->PointActor(1));
  this->ExpectGenericWarning("zv3DRulerWidget", message);
  EXPECT_EQ(this->Label(), "     13.00 mm");
  EXPECT_EQ(this->Looks(), "o-o=*");
}

TEST_F(Ruler3DChain, UpdatingTheScaleDoesNothingByDesign)
{
  this->AddThree();
  this->Widget->TextActor->SetScale(3.0);
  this->Widget->UpdateScaleLabel();
  EXPECT_EQ(this->Widget->TextActor->GetScale()[0], 3.0);
}

// ---- Inserting

TEST_F(Ruler3DChain, InsertsAPointOnTheSelectedSegment)
{
  this->AddThree();
  this->SelectSegment(0);
  vtkActor* const split = this->SegmentActor(0);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Insert({ { -3, -4, 1 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  this->ExpectChain(4);
  EXPECT_EQ(this->PositionOf(1), (World{ { -3, -4, 1 } }));
  EXPECT_EQ(this->PositionOf(2), (World{ { -3, 0, 1 } }));
  EXPECT_EQ(this->SegmentActor(0), split);
  EXPECT_EQ(this->Looks(), "o=*-o-o");
  EXPECT_THAT(this->Where(), Each(::testing::EndsWith("XYZ3")));
  EXPECT_THAT(this->CountProps(), Each(8));
  EXPECT_EQ(this->Widget->CurrentPoint, 1);
  EXPECT_EQ(this->Widget->CurrentLine, 0); // stays
  EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(1));
  EXPECT_EQ(this->Label(), "      3.00 mm");
  this->ExpectLabelAt({ { -3, -4, 1 } });
  EXPECT_EQ(this->Widget->PointPicker->GetPickList()->GetNumberOfItems(), 4);
  EXPECT_EQ(this->Widget->LinePicker->GetPickList()->GetNumberOfItems(), 3);
}

TEST_F(Ruler3DChain, InsertsOnTheLastSegment)
{
  this->AddThree(); // segment 1 is selected
  this->Insert({ { 0, 0, 5 } });
  this->ExpectChain(4);
  EXPECT_EQ(this->PositionOf(2), (World{ { 0, 0, 5 } }));
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
  EXPECT_EQ(this->Widget->CurrentLine, 1);
  EXPECT_EQ(this->Label(), "      5.00 mm");
}

TEST_F(Ruler3DChain, InsertsAgainAndAgainOnTheSameSegment)
{
  this->AddThree();
  this->SelectSegment(0);
  for (int count = 4; count < 8; ++count)
  {
    this->Insert({ { 1.0 * count, 0, 0 } });
    this->ExpectChain(count);
    EXPECT_EQ(this->PositionOf(1), (World{ { 1.0 * count, 0, 0 } }));
  }
}

TEST_F(Ruler3DChain, ASegmentWhoseSphereWasSetFollowsWhenItIsSplit)
{
  this->AddThree();
  this->SelectSegment(0);
  this->Widget->SetHandlePosition(0, -7, -7, -7);
  this->Insert({ { 0, 0, 0 } });
  this->ExpectChain(4);
}

TEST_F(Ruler3DChain, InsertionBringsTheLabelBack)
{
  this->AddThree();
  this->Widget->SetTextToActorPosition(99); // takes it out
  this->Insert({ { 0, 0, 0 } });
  EXPECT_EQ(this->WhereIs(this->Widget->TextActor), "XYZ3");
}

TEST_F(Ruler3DChain, WithoutASegmentAPositionOrAViewNothingIsInserted)
{
  this->AddThree();
  const std::string before = this->Widget->GetStringCoordinate();
  for (int index : { -1, 2, 99 })
  {
    this->Widget->CurrentLine = index;
    this->Insert({ { 0, 0, 0 } });
    this->ExpectGenericWarning(
      "zv3DRulerWidget", "there is no segment of index " + std::to_string(index) + "...");
  }
  this->Widget->CurrentLine = 1;
  this->Widget->InsertHandleOnLine(nullptr);
  this->ExpectGenericWarning("zv3DRulerWidget", "give the point a position...");
  this->Widget->SetCurrentRenderer(nullptr);
  this->Insert({ { 0, 0, 0 } });
  this->ExpectGenericWarning("zv3DRulerWidget", "set CurrentRenderer before inserting a point...");
  this->In(Y).DropInteractor();
  this->Insert({ { 0, 0, 0 } });
  this->ExpectGenericWarning("zv3DRulerWidget", "set InteractorY before inserting a point...");
  this->ExpectChain(3);
  EXPECT_EQ(this->Widget->GetStringCoordinate(), before);
}

// ---- Removing

TEST_F(Ruler3DChain, RemovingAnInnerPointKeepsTheChainJoined)
{
  this->AddThree();
  this->Add({ { 9, 5, 7 } });
  vtkSmartPointer<vtkActor> point = this->PointActor(1);
  vtkSmartPointer<vtkActor> segment = this->SegmentActor(1);
  this->Widget->SetCurrentActorIndex(1);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->RemovePointSelected();
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  this->ExpectChain(3);
  EXPECT_EQ(this->PositionOf(1), (World{ { 9, 5, 1 } }));
  EXPECT_EQ(this->WhereIs(point), "");
  EXPECT_EQ(this->WhereIs(segment), "");
  EXPECT_EQ(point->GetReferenceCount(), 1);
  EXPECT_EQ(segment->GetReferenceCount(), 1);
  EXPECT_EQ(this->Widget->CurrentPoint, 1); // stays
  EXPECT_EQ(this->Widget->CurrentLine, -1); // there is none two before it
  EXPECT_EQ(this->Looks(), "o-o-o");
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->WhereIs(this->Widget->TextActor), "XYZ3");
}

TEST_F(Ruler3DChain, RemovingTheFirstPointShortensTheChain)
{
  this->AddThree();
  vtkSmartPointer<vtkActor> segment = this->SegmentActor(0);
  this->Widget->SetCurrentActorIndex(0);
  this->Widget->RemovePointSelected();
  this->ExpectChain(2);
  EXPECT_EQ(this->PositionOf(0), (World{ { -3, 0, 1 } }));
  EXPECT_EQ(this->WhereIs(segment), "");
  EXPECT_EQ(this->Widget->CurrentPoint, 0);
  EXPECT_EQ(this->Widget->CurrentLine, -1);
}

TEST_F(Ruler3DChain, RemovingTheLastPointShortensTheChainAndSelectsTheSegmentBefore)
{
  this->AddThree();
  vtkSmartPointer<vtkActor> segment = this->SegmentActor(1);
  this->Widget->RemovePointSelected();
  this->ExpectChain(2);
  EXPECT_EQ(this->WhereIs(segment), "");
  EXPECT_EQ(this->Widget->CurrentPoint, 2); // of nobody by now
  EXPECT_EQ(this->Widget->CurrentLine, 0);
  EXPECT_EQ(this->Looks(), "o=o");
  EXPECT_EQ(this->Widget->CurrentHandle, this->SegmentActor(0));
}

TEST_F(Ruler3DChain, RemovingOneOfTwoPointsRemovesTheLabelToo)
{
  for (int index : { 0, 1 })
  {
    this->MakeViews();
    this->MakeWidget();
    this->Add({ { 0, 0, 0 } });
    this->Add({ { 3, 0, 0 } });
    this->Widget->SetCurrentActorIndex(index);
    this->Widget->RemovePointSelected();
    this->ExpectChain(1);
    EXPECT_THAT(this->Where(), ElementsAre("XYZ3", "label "));
    EXPECT_THAT(this->CountProps(), Each(1));
    this->Add({ { 0, 4, 0 } }); // and it comes back
    EXPECT_THAT(this->Where(), ElementsAre("XYZ3", "XYZ3", "XYZ3", "label XYZ3"));
  }
}

TEST_F(Ruler3DChain, RemovingTheOnlyPointLeavesAnEmptyChain)
{
  this->Add({ { 0, 0, 0 } });
  this->Widget->RemovePointSelected();
  this->ExpectChain(0);
  EXPECT_THAT(this->CountProps(), Each(0));
  EXPECT_EQ(this->Widget->CurrentPoint, 0);
  EXPECT_EQ(this->Widget->CurrentLine, -1);
  EXPECT_EQ(this->Widget->PointPicker->GetPickList()->GetNumberOfItems(), 0);
}

TEST_F(Ruler3DChain, RemovingWhileASegmentIsSelectedOnlyRenders)
{
  this->AddThree();
  this->SelectSegment(0);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->RemovePointSelected();
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  this->ExpectChain(3);
  EXPECT_EQ(this->Widget->CurrentHandle, this->SegmentActor(0));
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
}

TEST_F(Ruler3DChain, RemovingWithoutASelectionSaysSoAndRenders)
{
  this->AddThree();
  this->Widget->HighlightHandle(-1);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->RemovePointSelected();
  this->ExpectPlainError("zv3DRulerWidget", this->Widget, NothingSelected);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  this->ExpectChain(3);
  vtkObject::GlobalWarningDisplayOff(); // Deliberate: it cannot be silenced
  this->Widget->RemovePointSelected();
  vtkObject::GlobalWarningDisplayOn();
  this->ExpectPlainError("zv3DRulerWidget", this->Widget, NothingSelected);
}

TEST_F(Ruler3DChain, RemovesEveryPointFromEitherEnd)
{
  for (bool first : { true, false })
  {
    this->AddThree();
    for (int left = 2; left >= 0; --left)
    {
      this->Widget->SetCurrentActorIndex(first ? 0 : left);
      this->Widget->RemovePointSelected();
      this->ExpectChain(left);
    }
    EXPECT_THAT(this->CountProps(), Each(0));
  }
}

// ---- Selecting

TEST_F(Ruler3DChain, HighlightsPointsByPropAndByIndex)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  EXPECT_EQ(this->Widget->HighlightHandle(this->PointActor(0)), 0);
  EXPECT_EQ(this->Looks(), "*-o=o");
  EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(0));
  EXPECT_EQ(this->Widget->HighlightHandle(1), 1);
  EXPECT_EQ(this->Looks(), "o-*=o");
  EXPECT_EQ(this->Widget->CurrentPoint, 2); // not written
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(Ruler3DChain, HighlightsSegmentsByPropAndByIndex)
{
  this->AddThree();
  EXPECT_EQ(this->Widget->HighlightLine(this->SegmentActor(0)), 0);
  EXPECT_EQ(this->Looks(), "o=o-*");
  EXPECT_EQ(this->Widget->CurrentHandle, this->SegmentActor(0));
  EXPECT_EQ(this->Widget->HighlightLine(1), 1);
  EXPECT_EQ(this->Looks(), "o-o=*");
  EXPECT_EQ(this->Widget->CurrentHandle, this->SegmentActor(1));
  EXPECT_EQ(this->Widget->CurrentLine, 1);
}

TEST_F(Ruler3DChain, HighlightingNothingTakesTheLookFromAll)
{
  this->AddThree();
  EXPECT_EQ(this->Widget->HighlightHandle(nullptr), -1);
  EXPECT_EQ(this->Looks(), "o-o=o");
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Widget->HighlightLine(nullptr), -1);
  EXPECT_EQ(this->Looks(), "o-o-o");
  vtkNew<vtkActor> stranger;
  for (int index : { -1, 3, 1000 })
  {
    this->Widget->HighlightHandle(0);
    EXPECT_EQ(this->Widget->HighlightHandle(index), -1);
    EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
    this->Widget->HighlightLine(0);
    EXPECT_EQ(this->Widget->HighlightLine(index), -1);
    EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
    EXPECT_EQ(this->Looks(), "o-o-o");
  }
  this->Widget->HighlightHandle(0);
  EXPECT_EQ(this->Widget->HighlightHandle(stranger), -1);
  EXPECT_EQ(this->Widget->CurrentHandle, stranger.Get());
  EXPECT_EQ(this->Looks(), "o-o-o");
  // A segment is no point, and the other way round.
  EXPECT_EQ(this->Widget->HighlightHandle(this->SegmentActor(0)), -1);
  EXPECT_EQ(this->Widget->HighlightLine(this->PointActor(0)), -1);
}

TEST_F(Ruler3DChain, HighlightingTakesThePositionOfTheLastPickByDesign)
{
  this->AddThree();
  this->Widget->SetEnabled(1);
  this->PointerIn(Z).Press(zvtest::Left, this->In(Z).At({ { -3, 0, 1 } }));
  double picked[3];
  this->Widget->PointPicker->GetPickPosition(picked);
  std::fill_n(this->Widget->LastPickPosition, 3, 0.0);
  this->Widget->ValidPick = 0;
  this->Widget->HighlightHandle(0);
  EXPECT_EQ(this->Widget->ValidPick, 1);
  EXPECT_THAT(this->Widget->LastPickPosition, ElementsAreArray(picked));
  this->Widget->LinePicker->GetPickPosition(picked);
  this->Widget->HighlightLine(0);
  EXPECT_THAT(this->Widget->LastPickPosition, ElementsAreArray(picked));
}

TEST_F(Ruler3DChain, SelectsByIndexShowsTheLengthAndRenders)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetCurrentActorIndex(1);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_EQ(this->Widget->CurrentPoint, 1);
  EXPECT_EQ(this->Widget->CurrentLine, 1);
  EXPECT_EQ(this->Label(), "      5.00 mm");
  EXPECT_EQ(this->Looks(), "o-*=o");
  recorder.Clear();
  this->Widget->SetCurrentActorIndex(7);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  EXPECT_EQ(this->Widget->CurrentPoint, -1);
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->WhereIs(this->Widget->TextActor), "");
}

TEST_F(Ruler3DChain, SelectingMinusOneIsNoWayOfDeselectingByDesign)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetCurrentActorIndex(-1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
  EXPECT_EQ(this->Looks(), "o-o=*");
}

// ---- Moving

TEST_F(Ruler3DChain, AMovedPointTakesItsSegmentsAndTheLabelAlong)
{
  const char* const labels[] = { "      4.12 mm", "      7.81 mm", "     15.07 mm" };
  double p1[3] = { 100, 100, 100 };
  double p2[3] = { 101, 102, 103 };
  for (int point : { 0, 1, 2 })
  {
    this->MakeViews();
    this->MakeWidget();
    this->AddThree();
    const World before = this->PositionOf(point);
    this->Widget->SetCurrentActorIndex(point);
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Widget->MovePoint(p1, p2);
    EXPECT_EQ(this->PositionOf(point), (World{ { before[0] + 1, before[1] + 2, before[2] + 3 } }));
    this->ExpectChain(3);
    EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(point));
    EXPECT_EQ(this->Label(), labels[point]);
    this->ExpectLabelAt(this->PositionOf(std::max(point, 1)));
    EXPECT_THAT(recorder.Names(), IsEmpty());
  }
}

TEST_F(Ruler3DChain, ASinglePointMovesWithoutALabel)
{
  this->Add({ { 1, 2, 3 } });
  double p1[3] = { 0, 0, 0 };
  double p2[3] = { 1, 1, 1 };
  this->Widget->MovePoint(p1, p2);
  EXPECT_EQ(this->PositionOf(0), (World{ { 2, 3, 4 } }));
  EXPECT_EQ(this->Label(), " ");
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->MovePoint(p1, p2); // needs no view
  EXPECT_EQ(this->PositionOf(0), (World{ { 3, 4, 5 } }));
}

namespace
{
struct MoveRow
{
  const char* Name;
  World Way;
  World End; // from (9, 5, 1) in a box from -10 to 10
};
const MoveRow MoveRows[] = { { "Inside", { { -1, 2, 3 } }, { { 8, 7, 4 } } },
  { "UpperX", { { 6, 1, 0 } }, { { 10, 6, 1 } } },
  { "LowerX", { { -20, 1, 0 } }, { { -10, 6, 1 } } },
  { "UpperY", { { -1, 11, 0 } }, { { 8, 10, 1 } } },
  { "LowerY", { { -1, -16, 0 } }, { { 8, -10, 1 } } },
  { "UpperZ", { { -1, 1, 10 } }, { { 8, 6, 10 } } },
  { "LowerZ", { { -1, 1, -17 } }, { { 8, 6, -10 } } },
  { "Corner", { { 99, -99, 99 } }, { { 10, -10, 10 } } } };
}

TEST_F(Ruler3DChain, AMovedPointStopsAtTheFacesOfTheImage)
{
  for (const MoveRow& row : MoveRows)
  {
    SCOPED_TRACE(row.Name);
    this->MakeWidget();
    this->AddThree();
    World from = { { 1, 2, 3 } };
    World to = { { 1 + row.Way[0], 2 + row.Way[1], 3 + row.Way[2] } };
    this->Widget->MovePoint(from.data(), to.data());
    EXPECT_EQ(this->PositionOf(2), row.End);
    this->ExpectChain(3);
    this->ExpectLabelAt(row.End);
  }
}

TEST_F(Ruler3DChain, MovingByAStaleIndexOnlySaysSo)
{
  double p1[3] = { 0, 0, 0 };
  double p2[3] = { 1, 1, 1 };
  this->Widget->MovePoint(p1, p2);
  this->ExpectGenericWarning("zv3DRulerWidget", "there is no point of index -1...");
  this->AddThree();
  this->Widget->RemovePointSelected();
  this->Widget->MovePoint(p1, p2);
  this->ExpectGenericWarning("zv3DRulerWidget", "there is no point of index 2...");
  this->ExpectChain(2);
}

TEST_F(Ruler3DChain, WithoutACurrentViewAPointMovesAndTheLabelStays)
{
  this->AddThree();
  this->Widget->SetCurrentRenderer(nullptr);
  double p1[3] = { 0, 0, 0 };
  double p2[3] = { -1, 0, 0 };
  this->Widget->MovePoint(p1, p2);
  this->ExpectGenericWarning("zv3DRulerWidget", "set CurrentRenderer before placing the label...");
  EXPECT_EQ(this->PositionOf(2), (World{ { 8, 5, 1 } }));
  this->ExpectChain(3);
  EXPECT_EQ(this->Label(), "     13.00 mm");
}

TEST_F(Ruler3DChain, ASetPositionMovesTheSphereAloneByDesign)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetHandlePosition(1, 100, -200, 300);
  EXPECT_EQ(this->PositionOf(1), (World{ { 100, -200, 300 } }));
  double xyz[3] = { 7, 8, 9 };
  this->Widget->SetHandlePosition(2, xyz);
  this->Widget->GetHandlePosition(2, xyz);
  EXPECT_THAT(xyz, ElementsAre(7, 8, 9));
  EXPECT_THAT(std::vector<double>(this->Segment(0)->GetPoint2(), this->Segment(0)->GetPoint2() + 3),
    ElementsAre(-3, 0, 1));
  EXPECT_THAT(std::vector<double>(this->Segment(1)->GetPoint2(), this->Segment(1)->GetPoint2() + 3),
    ElementsAre(9, 5, 1));
  EXPECT_EQ(this->Label(), "     13.00 mm");
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

// ---- The chain as text

TEST_F(Ruler3DChain, TheTextListsPointsDistancesAndTheirSum)
{
  EXPECT_EQ(this->Widget->GetStringCoordinate(), " -1");
  this->Add({ { 0, 0, 0 } });
  EXPECT_EQ(this->Widget->GetStringCoordinate(), " 0.00 0.00 0.00 0.00 0.00 0");
  this->Add({ { 3, 0, 0 } });
  EXPECT_EQ(
    this->Widget->GetStringCoordinate(), " 0.00 0.00 0.00 0.00 0.00 3.00 0.00 0.00 3.00 3.00 1");
  this->Add({ { 3, -4.126, 0 } });
  EXPECT_EQ(this->Widget->GetStringCoordinate(),
    " 0.00 0.00 0.00 0.00 0.00 3.00 0.00 0.00 3.00 3.00 3.00 -4.13 0.00 4.13 7.13 2");
  this->Widget->SetCurrentActorIndex(1);
  EXPECT_EQ(this->Widget->GetStringCoordinate().back(), '1');
}

TEST_F(Ruler3DChain, TheTextFollowsTheSpheresNotTheSegments)
{
  this->Add({ { 0, 0, 0 } });
  this->Add({ { 3, 0, 0 } });
  this->Widget->SetHandlePosition(1, 0, 5, 0);
  EXPECT_EQ(
    this->Widget->GetStringCoordinate(), " 0.00 0.00 0.00 0.00 0.00 0.00 5.00 0.00 5.00 5.00 1");
}

// ---- Placing and sizing

TEST_F(Ruler3DChain, PlacingSpreadsTheSpheresAlone)
{
  this->AddThree();
  double bounds[6] = { -2, 2, 0, 8, 10, 20 };
  this->Widget->PlaceWidget(bounds);
  EXPECT_EQ(this->PositionOf(0), (World{ { -2, 0, 10 } }));
  EXPECT_EQ(this->PositionOf(1), (World{ { 0, 4, 15 } }));
  EXPECT_EQ(this->PositionOf(2), (World{ { 2, 8, 20 } }));
  EXPECT_EQ(this->Segment(0)->GetPoint2()[0], -3); // Deliberate: they stay
  EXPECT_EQ(this->Label(), "     13.00 mm");
  EXPECT_THAT(this->Widget->InitialBounds, ElementsAre(-2, 2, 0, 8, 10, 20));
  EXPECT_DOUBLE_EQ(this->Widget->InitialLength, std::sqrt(16.0 + 64.0 + 100.0));
  this->Widget->PlaceWidget(0, 4, 0, 4, 0, 4);
  EXPECT_EQ(this->PositionOf(2), (World{ { 4, 4, 4 } }));
  this->Widget->ProjectToPlaneOn();
  this->Widget->PlaceWidget(bounds);
  EXPECT_EQ(this->PositionOf(2), (World{ { 4, 4, 4 } }));
}

TEST_F(Ruler3DChain, ASinglePointIsPlacedNowhereByDesign)
{
  this->Add({ { 1, 2, 3 } });
  double bounds[6] = { -2, 2, 0, 8, 10, 20 };
  this->Widget->PlaceWidget(bounds);
  EXPECT_TRUE(std::isnan(this->PositionOf(0)[0]));
  this->Widget->SetEnabled(1);
  this->Add({ { 0, 0, 0 } });
  EXPECT_EQ(this->Label().substr(this->Label().size() - 6), "nan mm");
  this->PointerIn(Z).Drag(zvtest::Left, this->In(Z).At({ { 0, 0, 0 } }), { { 120, 100 } });
  EXPECT_GT(this->PositionOf(1)[0], 1);
}

TEST_F(Ruler3DChain, SpheresHaveAPartOfTheCurrentView)
{
  this->AddThree();
  const double radius = this->Sphere(0)->GetRadius();
  const double height = 2.0 * this->Renderer(Z)->GetActiveCamera()->GetParallelScale();
  EXPECT_NEAR(radius, 0.01 * 0.7 * std::sqrt(2.0) * height, 0.05 * radius);
  this->Renderer(Z)->GetActiveCamera()->Zoom(2.0);
  this->Widget->SizeHandles();
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_NEAR(this->Sphere(i)->GetRadius(), radius / 2, 1e-6);
  }
  vtkSmartPointer<vtkRenderer> kept = this->Renderer(Z);
  this->In(Z).DropRenderers(); // no window to measure
  this->Widget->SizeHandles();
  EXPECT_NEAR(this->Sphere(0)->GetRadius(), 0.01 * 0.7 * std::sqrt(3.0), 1e-12);
}
