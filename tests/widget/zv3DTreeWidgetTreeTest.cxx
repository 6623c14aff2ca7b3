#include "zv3DTreeFixture.h"

#include "vtkCamera.h"
#include "vtkDoubleArray.h"
#include "vtkIdList.h"
#include "vtkPointData.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::OpenTree;
using zvtest::View;
using zvtest::World;

namespace
{
using TreeWidget = zvtest::TreeInFourViews;
}

// ---- Adding

TEST_F(TreeWidget, TheFirstPointIsTheRootWithoutSegmentOrLabel)
{
  this->Tree->SetEnabled(1);
  zvtest::EventRecorder recorder;
  this->WatchRenders(recorder);
  this->Add({ { 1, 2, 3 } });
  EXPECT_EQ(this->NamesOf(recorder), (Names{ "X", "Y", "Z", "3" }));
  EXPECT_EQ(this->Tree->CurrentPoint, 0);
  EXPECT_EQ(this->Tree->CurrentLine, -1);
  EXPECT_EQ(this->Tree->TreePoints->GetNumberOfVerts(), 1);
  EXPECT_THAT(this->SegmentsOfTree(), IsEmpty());
  EXPECT_EQ(this->PointAt(0), (World{ { 1, 2, 3 } }));
  EXPECT_EQ(this->Sphere(), (World{ { 1, 2, 3 } }));
  EXPECT_EQ(this->Label(), " ");
  EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "");
}

TEST_F(TreeWidget, AFurtherPointIsJoinedToTheSelectedOne)
{
  this->Tree->SetEnabled(1);
  this->Add({ { 1, 2, 3 } });
  zvtest::EventRecorder recorder;
  this->WatchRenders(recorder);
  this->Tree->State = zv3DTreeWidget::Moving;
  this->Add({ { 4, 6, 3 } });
  // the label's render, and the last one
  EXPECT_EQ(this->NamesOf(recorder), (Names{ "X", "Y", "Z", "3", "X", "Y", "Z", "3" }));
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Start);
  EXPECT_EQ(this->Tree->CurrentPoint, 1);
  EXPECT_EQ(this->Tree->CurrentLine, 0);
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 } }));
  EXPECT_EQ(this->PointAt(1), (World{ { 4, 6, 3 } }));
  EXPECT_EQ(this->Sphere(), (World{ { 4, 6, 3 } }));
  EXPECT_EQ(this->LineStart(), (World{ { 1, 2, 3 } }));
  EXPECT_EQ(this->LineEnd(), (World{ { 4, 6, 3 } }));
  EXPECT_EQ(this->Label(), "      5.00 mm");
  EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "XYZ3");
}

TEST_F(TreeWidget, PointsHaveOneSegmentLessAndAVertexEachOfTheSameNumber)
{
  this->ShowSquare();
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 }, { 1, 2 }, { 0, 3 } }));
  ASSERT_EQ(this->Tree->TreePoints->GetNumberOfCells(), 4);
  for (int id = 0; id < 4; ++id)
  {
    EXPECT_EQ(this->PointAt(id), Corners[id]);
    vtkNew<vtkIdList> ids;
    this->Tree->TreePoints->GetCellPoints(id, ids);
    EXPECT_EQ(ids->GetId(0), id);
  }
  for (int segment = 0; segment < 3; ++segment)
  {
    this->Tree->HighlightLine(segment);
    EXPECT_EQ(this->Tree->CurrentPoint, segment + 1);
    EXPECT_EQ(this->Tree->CurrentLine, segment);
    EXPECT_EQ(this->Sphere(), Corners[segment + 1]);
  }
}

TEST_F(TreeWidget, TwoPointsAddedFromTheSameOneMakeABranch)
{
  this->Add({ { 0, 0, 0 } });
  this->Add({ { 1, 0, 0 } });
  this->Add({ { 2, 0, 0 } });
  this->Tree->HighlightHandle(1);
  this->Add({ { 1, 1, 0 } });
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 }, { 1, 2 }, { 1, 3 } }));
  EXPECT_EQ(this->LineStart(), (World{ { 1, 0, 0 } }));
}

TEST_F(TreeWidget, SelectingTheRootDoesNotMakeItTheParentByDesign)
{
  this->Add({ { 0, 0, 0 } });
  this->Add({ { 1, 0, 0 } });
  this->Add({ { 2, 0, 0 } });
  EXPECT_EQ(this->Tree->HighlightHandle(0), 1);
  EXPECT_EQ(this->Tree->CurrentPoint, 2);
  EXPECT_EQ(this->Tree->CurrentLine, 1);
  EXPECT_EQ(this->Sphere(), (World{ { 0, 0, 0 } }));
  this->Add({ { 3, 0, 0 } });
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 }, { 1, 2 }, { 2, 3 } }));
}

TEST_F(TreeWidget, APositionThatTheWidgetHandedOutCanBeAdded)
{
  this->Add({ { 1, 2, 3 } });
  this->Tree->AddHandle(this->Tree->GetHandlePosition(0), 7);
  EXPECT_EQ(this->PointAt(1), (World{ { 1, 2, 3 } }));
  EXPECT_EQ(this->Label(), "      0.00 mm");
}

TEST_F(TreeWidget, AddingMarksTheDataAsChanged)
{
  this->Add({ { 0, 0, 0 } });
  vtkPolyData* points = this->Tree->TreePoints;
  vtkPolyData* lines = this->Tree->TreeLines;
  const vtkMTimeType before[4] = { points->GetMTime(), points->GetPoints()->GetMTime(),
    lines->GetMTime(), lines->GetPoints()->GetMTime() };
  this->Add({ { 1, 0, 0 } });
  EXPECT_GT(points->GetMTime(), before[0]);
  EXPECT_GT(points->GetPoints()->GetMTime(), before[1]);
  EXPECT_GT(lines->GetMTime(), before[2]);
  EXPECT_GT(lines->GetPoints()->GetMTime(), before[3]);
  EXPECT_EQ(points->GetBounds()[1], 1.0);
}

TEST_F(TreeWidget, APositionThatIsNotANumberIsKeptAndDrawsNothing)
{
  this->Tree->SetEnabled(1);
  this->Add({ { 0, 0, 0 } });
  const double nan = std::numeric_limits<double>::quiet_NaN();
  this->Add({ { nan, 0, 0 } });
  EXPECT_EQ(this->Label(), "       nan mm");
  this->Tree->HighlightHandle(1);
  this->Tree->MovePoint(this->From, this->To);
  EXPECT_EQ(this->Tree->HighlightHandle(0), 1);
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 } }));
}

TEST_F(TreeWidget, AfterDeselectingNothingCanBeAdded)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(-1);
  this->Tree->State = zv3DTreeWidget::Outside;
  for (int stale : { -1, 4, -7, std::numeric_limits<int>::max() })
  {
    this->Tree->CurrentPoint = stale;
    const Snapshot before = this->Take();
    this->Add({ { 1, 1, 1 } });
    this->ExpectWarning("there is no point of index " + std::to_string(stale) + "...");
    EXPECT_TRUE(this->Take() == before);
  }
}

// ---- The label

TEST_F(TreeWidget, TheLabelIsRightAlignedInTenColumns)
{
  struct Row
  {
    double Length;
    const char* Text;
  };
  const Row rows[] = { { 0.0, "      0.00 mm" }, { 3.0, "      3.00 mm" },
    { 0.125, "      0.12 mm" }, { 0.375, "      0.38 mm" }, { 1234567.25, "1234567.25 mm" },
    { 12345678.5, "12345678.50 mm" } };
  for (const Row& row : rows)
  {
    this->Tree->SelectedLineSource->SetPoint1(0, 0, 0);
    this->Tree->SelectedLineSource->SetPoint2(0, row.Length, 0);
    this->Tree->SetTextToActorPosition(1);
    EXPECT_EQ(this->Label(), row.Text);
  }
}

TEST_F(TreeWidget, TheLabelStandsOneMillimetreBeforeTheChildAndTurnsToTheCurrentView)
{
  this->ShowSquare();
  for (View view : zvtest::AllViews)
  {
    this->Tree->SetCurrentRender(this->Renderer(view));
    this->Tree->HighlightHandle(2);
    this->Tree->SetTextToActorPosition(2);
    vtkCamera* camera = this->Renderer(view)->GetActiveCamera();
    EXPECT_EQ(this->Tree->TextActor->GetCamera(), camera);
    World expected;
    World actual;
    for (int axis = 0; axis < 3; ++axis)
    {
      expected[axis] = Corners[2][axis] - camera->GetDirectionOfProjection()[axis];
      actual[axis] = this->Tree->TextActor->GetPosition()[axis];
    }
    ExpectNear(actual, expected, 1e-12);
  }
}

TEST_F(TreeWidget, TheLabelAsksOnlyWhetherTheIndexIsZero)
{
  this->ShowSquare();
  zvtest::EventRecorder recorder;
  this->WatchRenders(recorder);
  for (int index : { 1, -1, 99, -99 })
  {
    this->Tree->TextActor->SetScale(5.0);
    this->Tree->TextSource->SetText("stale");
    this->Tree->SetTextToActorPosition(index);
    EXPECT_EQ(this->Label(), "     14.87 mm");
    EXPECT_EQ(this->Tree->TextActor->GetScale()[1], 1.0);
    EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "XYZ3");
  }
  this->Tree->SetTextToActorPosition(0);
  EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "");
  EXPECT_EQ(this->NamesOf(recorder).size(), 20u);
}

// ---- Loading and saving

TEST_F(TreeWidget, LoadsATreeAndSelectsItsLastPoint)
{
  this->Tree->SetEnabled(1);
  this->Tree->State = zv3DTreeWidget::Inactive;
  auto data =
    MakeData({ { { 1, 0, 0 } }, { { 4, 4, 0 } }, { { 1, 0, 7 } } }, { { 0, 1 }, { 0, 2 } });
  zvtest::EventRecorder recorder;
  this->WatchRenders(recorder);
  this->Tree->LoadTree(data);
  EXPECT_EQ(this->NamesOf(recorder), (Names{ "X", "Y", "Z", "3", "X", "Y", "Z", "3" }));
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Start);
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 }, { 0, 2 } }));
  EXPECT_EQ(this->Tree->TreePoints->GetNumberOfVerts(), 3);
  EXPECT_EQ(this->PointAt(1), (World{ { 4, 4, 0 } }));
  EXPECT_EQ(this->Tree->CurrentPoint, 2);
  EXPECT_EQ(this->Tree->CurrentLine, 1);
  EXPECT_EQ(this->LineStart(), (World{ { 1, 0, 0 } }));
  EXPECT_EQ(this->LineEnd(), (World{ { 1, 0, 7 } }));
  EXPECT_EQ(this->Sphere(), (World{ { 1, 0, 7 } }));
  this->Add({ { 0, 0, 0 } });
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 }, { 0, 2 }, { 2, 3 } }));
}

TEST_F(TreeWidget, TheLabelOfALoadedTreeIsThatOfTheSelectionBeforeByDesign)
{
  this->Tree->SetEnabled(1);
  this->Add({ { 0, 0, 0 } });
  this->Add({ { 6, 0, 0 } });
  World before;
  this->Tree->TextActor->GetPosition(before.data());
  this->Tree->Clear();
  this->Tree->SetEnabled(1);
  auto data = MakeData({ { { 1, 0, 0 } }, { { 4, 4, 0 } } }, { { 0, 1 } });
  this->Tree->LoadTree(data);
  EXPECT_EQ(this->Label(), "      1.00 mm"); // that of a line source that was just made
  this->Tree->Clear();
  this->Tree->SetEnabled(1);
  this->Tree->LoadTree(data);
  this->Tree->LoadTree(data);
  EXPECT_EQ(this->Label(), "      5.00 mm");
  EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "XYZ3");
}

TEST_F(TreeWidget, ALoadedTreeIsACopy)
{
  auto data = MakeData({ { { 1, 0, 0 } }, { { 4, 4, 0 } } }, { { 0, 1 } });
  this->Tree->LoadTree(data);
  this->Tree->MovePoint(this->From, this->To);
  this->Add({ { 0, 0, 0 } });
  EXPECT_EQ(this->PointAt(1), (World{ { 5, 4, 0 } }));
  EXPECT_EQ(PositionsOf(data), (std::vector<World>{ { { 1, 0, 0 } }, { { 4, 4, 0 } } }));
  EXPECT_EQ(SegmentsOf(data), (Segments{ { 0, 1 } }));
  this->Tree->Clear();
  this->Tree->LoadTree(data);
  EXPECT_EQ(this->PointAt(1), (World{ { 4, 4, 0 } }));
}

TEST_F(TreeWidget, ALoadedTreeLeavesOtherCellsAndAttributesBehind)
{
  auto data = MakeData({ { { 1, 0, 0 } }, { { 4, 4, 0 } } }, { { 0, 1 } });
  vtkNew<vtkCellArray> vertices;
  vertices->InsertNextCell({ 0 });
  data->SetVerts(vertices);
  vtkNew<vtkDoubleArray> radius;
  radius->SetNumberOfTuples(2);
  data->GetPointData()->SetScalars(radius);
  this->Tree->SetEnabled(1);
  this->Tree->LoadTree(data);
  EXPECT_EQ(this->Tree->TreeLines->GetNumberOfCells(), 1);
  EXPECT_EQ(this->Tree->TreeLines->GetPointData()->GetScalars(), nullptr);
  this->Add({ { 0, 0, 0 } });
  EXPECT_EQ(this->Tree->TreeLines->GetNumberOfCells(), 2);
}

TEST_F(TreeWidget, LoadsASingleRootAndAnEmptyTree)
{
  this->ShowSquare();
  this->Tree->Clear();
  this->Tree->SetEnabled(1);
  this->Tree->LoadTree(MakeData({ { { 1, 2, 3 } } }, {}));
  EXPECT_EQ(this->Tree->CurrentPoint, 0);
  EXPECT_EQ(this->Tree->CurrentLine, -1);
  EXPECT_EQ(this->Sphere(), (World{ { 1, 2, 3 } }));
  EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "");
  this->Tree->MovePoint(this->From, this->To);
  EXPECT_EQ(this->PointAt(0), (World{ { 2, 2, 3 } }));

  this->Tree->Clear();
  this->Tree->SetEnabled(1);
  this->Tree->LoadTree(vtkNew<vtkPolyData>());
  EXPECT_EQ(this->Tree->CurrentPoint, -1);
  EXPECT_EQ(this->Tree->CurrentLine, -1);
  EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "");
  this->Add({ { 5, 5, 5 } });
  EXPECT_EQ(this->Tree->CurrentPoint, 0);
  EXPECT_EQ(this->PointAt(0), (World{ { 5, 5, 5 } }));
}

TEST_F(TreeWidget, LoadingOverATreeAppendsPointsByDesign)
{
  this->ShowSquare();
  auto data = MakeData({ { { 1, 0, 0 } }, { { 4, 4, 0 } } }, { { 0, 1 } });
  this->Tree->LoadTree(data);
  EXPECT_EQ(this->Tree->TreePoints->GetNumberOfPoints(), 6);
  EXPECT_EQ(this->Tree->TreePoints->GetNumberOfVerts(), 2);
  EXPECT_EQ(this->Tree->TreeLines->GetNumberOfPoints(), 2);
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 } }));
  EXPECT_EQ(this->Tree->CurrentPoint, 5);
  EXPECT_EQ(this->Tree->CurrentLine, 0);

  // What would go beyond one of the two sets of points is refused.
  const Snapshot before = this->Take();
  this->Add({ { 0, 0, 0 } });
  this->ExpectWarning("clear a tree that was loaded over another before adding a point...");
  this->Tree->MovePoint(this->From, this->To);
  this->ExpectWarning("there is no point of index 5...");
  EXPECT_EQ(this->Tree->HighlightHandle(2), 0);
  this->ExpectWarning("there is no point of index 2...");
  EXPECT_TRUE(this->Take() == before);
  EXPECT_EQ(this->Tree->HighlightHandle(1), 1);
  EXPECT_EQ(this->Sphere(), (World{ { 4, 4, 0 } }));

  vtkNew<vtkPolyData> saved;
  this->Tree->GetTree(saved);
  EXPECT_EQ(SegmentsOf(saved), (Segments{ { 0, 1 } }));
}

TEST_F(TreeWidget, ASegmentOfATreeLoadedOverAnotherMovesFromItsOwnEnds)
{
  this->ShowSquare();
  this->Tree->LoadTree(MakeData({ { { 1, 0, 0 } }, { { 4, 4, 0 } } }, { { 0, 1 } }));
  EXPECT_EQ(this->Tree->HighlightLine(0), 1);
  this->Tree->MoveLine(this->From, this->To);
  EXPECT_EQ(this->LineStart(), (World{ { 2, 0, 0 } }));
  EXPECT_EQ(this->LineEnd(), (World{ { 5, 4, 0 } }));
  EXPECT_EQ(this->Sphere(), (World{ { 5, 4, 0 } }));
  EXPECT_EQ(this->PointAt(0), (World{ { 2, 0, 0 } })); // in both sets of points
  EXPECT_EQ(this->PointAt(1), (World{ { 5, 4, 0 } }));
  EXPECT_EQ(this->Label(), "      5.00 mm");
}

TEST_F(TreeWidget, RefusesWhatIsNoTree)
{
  this->ShowSquare();
  this->Tree->State = zv3DTreeWidget::Outside;
  const World p{ { 0, 0, 0 } };
  const std::vector<vtkSmartPointer<vtkPolyData>> refused = { nullptr, MakeData({ p, p }, {}),
    MakeData({ p, p }, { { 0, 7 } }), MakeData({ p, p }, { { -1, 1 } }),
    MakeData({ p, p, p }, { { 0, 2 }, { 0, 1 } }), MakeData({ p, p, p }, { { 2, 1 }, { 0, 2 } }) };
  for (const auto& data : refused)
  {
    const Snapshot before = this->Take();
    this->Tree->LoadTree(data);
    this->ExpectWarning(
      "give a tree to load: line i - 1 joins a point of a lower index to point i...");
    EXPECT_TRUE(this->Take() == before);
  }
}

TEST_F(TreeWidget, ASavedTreeIsReadBackToTheSameTree)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(2);
  this->Tree->MovePoint(this->From, this->To); // without marking the data as changed
  vtkNew<vtkPolyData> saved;
  this->Tree->GetTree(saved);
  const auto positions = PositionsOf(saved);
  EXPECT_EQ(positions, (std::vector<World>{ Corners[0], Corners[1], { { 6, 5, 4 } }, Corners[3] }));
  EXPECT_EQ(SegmentsOf(saved), (Segments{ { 0, 1 }, { 1, 2 }, { 0, 3 } }));
  EXPECT_EQ(saved->GetNumberOfCells(), 3);

  this->MakeTree();
  this->Tree->LoadTree(saved);
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 }, { 1, 2 }, { 0, 3 } }));
  EXPECT_EQ(PositionsOf(this->Tree->TreePoints), positions);
  vtkNew<vtkPolyData> again;
  this->Tree->GetTree(again);
  EXPECT_EQ(PositionsOf(again), positions);
  EXPECT_EQ(SegmentsOf(again), SegmentsOf(saved));
}

TEST_F(TreeWidget, ASavedTreeSharesNothingWithTheWidget)
{
  this->ShowSquare();
  vtkNew<vtkPolyData> saved;
  this->Tree->GetTree(saved);
  this->Add({ { 1, 1, 1 } });
  this->Tree->MovePoint(this->From, this->To);
  EXPECT_EQ(saved->GetNumberOfPoints(), 4);
  saved->GetPoints()->SetPoint(0, 9, 9, 9);
  EXPECT_EQ(this->PointAt(0), Corners[0]);
  this->Tree->GetTree(saved); // used again
  EXPECT_EQ(saved->GetNumberOfPoints(), 5);
  EXPECT_EQ(saved->GetNumberOfLines(), 4);
}

TEST_F(TreeWidget, SavesAnEmptyTreeAndASingleRoot)
{
  auto data = MakeData({ { { 1, 0, 0 } }, { { 4, 4, 0 } } }, { { 0, 1 } });
  this->Tree->GetTree(data);
  EXPECT_EQ(data->GetNumberOfPoints(), 0);
  EXPECT_EQ(data->GetNumberOfCells(), 0);
  this->Tree->LoadTree(data);
  EXPECT_EQ(this->Tree->CurrentPoint, -1);
  this->Add({ { 1, 2, 3 } });
  this->Tree->GetTree(data);
  EXPECT_EQ(PositionsOf(data), (std::vector<World>{ { { 1, 2, 3 } } }));
  this->Tree->Clear();
  this->Tree->LoadTree(data);
  EXPECT_EQ(this->PointAt(0), (World{ { 1, 2, 3 } }));
}

TEST_F(TreeWidget, SavingNeedsDataAndNoView)
{
  this->Tree->GetTree(nullptr);
  this->ExpectWarning("give data to copy the tree to...");
  vtkNew<OpenTree> alone;
  vtkNew<vtkPolyData> saved;
  alone->GetTree(saved);
  EXPECT_EQ(saved->GetNumberOfPoints(), 0);
  zvtest::EventRecorder recorder;
  this->WatchRenders(recorder);
  this->Tree->GetTree(saved);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

// ---- Selecting

TEST_F(TreeWidget, SelectingAPointSelectsItsSegmentAndShowsBothAndTheLabel)
{
  this->ShowSquare();
  zvtest::EventRecorder recorder;
  this->WatchRenders(recorder);
  const std::string label = this->Label();
  EXPECT_EQ(this->Tree->HighlightHandle(2), 1);
  EXPECT_EQ(this->Tree->CurrentPoint, 2);
  EXPECT_EQ(this->Tree->CurrentLine, 1);
  EXPECT_EQ(this->LineStart(), Corners[1]);
  EXPECT_EQ(this->LineEnd(), Corners[2]);
  EXPECT_EQ(this->Sphere(), Corners[2]);
  EXPECT_EQ(this->Label(), label); // refreshed by SetTextToActorPosition alone
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(TreeWidget, DeselectingGivesZeroAndNoSelection)
{
  this->ShowSquare();
  EXPECT_EQ(this->Tree->HighlightHandle(-1), 0);
  EXPECT_EQ(this->Tree->CurrentPoint, -1);
  EXPECT_EQ(this->Tree->CurrentLine, -1);
  EXPECT_EQ(this->WhereAll(), (std::array<std::string, 5>{ { "XYZ3", "", "XYZ3", "", "" } }));
  this->Tree->HighlightLine(1);
  EXPECT_EQ(this->Tree->HighlightLine(-1), 0);
  EXPECT_EQ(this->Tree->CurrentPoint, -1);
  EXPECT_EQ(this->Tree->CurrentLine, -1);
}

TEST_F(TreeWidget, ANumberOutOfRangeSelectsNothing)
{
  this->ShowSquare();
  const Snapshot before = this->Take();
  for (int index : { -2, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max() })
  {
    EXPECT_EQ(this->Tree->HighlightHandle(index), 0);
    this->ExpectWarning("there is no point of index " + std::to_string(index) + "...");
  }
  for (int index : { -2, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max() })
  {
    EXPECT_EQ(this->Tree->HighlightLine(index), 0);
    this->ExpectWarning("there is no segment of index " + std::to_string(index) + "...");
  }
  EXPECT_TRUE(this->Take() == before);
  this->MakeTree();
  EXPECT_EQ(this->Tree->HighlightHandle(0), 0);
  this->ExpectWarning("there is no point of index 0...");
}

TEST_F(TreeWidget, HandlePositionsAreThoseOfTheSphere)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(1);
  for (int handle : { 0, 1, 3, 99 })
  {
    const double* position = this->Tree->GetHandlePosition(handle);
    ASSERT_NE(position, nullptr);
    EXPECT_EQ((World{ { position[0], position[1], position[2] } }), Corners[1]);
    double xyz[3] = { 7, 8, 9 };
    this->Tree->GetHandlePosition(handle, xyz); // deliberately writes nothing
    EXPECT_THAT(xyz, ElementsAre(7, 8, 9));
    const Snapshot before = this->Take();
    this->Tree->SetHandlePosition(handle, 1, 2, 3);
    this->Tree->SetHandlePosition(handle, xyz);
    this->Tree->SetHandlePosition(handle, nullptr);
    EXPECT_TRUE(this->Take() == before);
  }
}

TEST_F(TreeWidget, ANegativeHandleIsAnError)
{
  double xyz[3] = { 7, 8, 9 };
  const std::function<void()> calls[] = { [this]
    { EXPECT_EQ(this->Tree->GetHandlePosition(-1), nullptr); },
    [this, &xyz] { this->Tree->GetHandlePosition(-1, xyz); },
    [this, &xyz] { this->Tree->SetHandlePosition(-1, xyz); },
    [this] { this->Tree->SetHandlePosition(-7, 1, 2, 3); } };
  for (const auto& call : calls)
  {
    call();
    this->ExpectVtkError(
      "zv3DTreeWidget", "zv3DTreeWidget", this->Tree, "zv3DTreeWidget: handle index out of range.");
  }
  EXPECT_THAT(xyz, ElementsAre(7, 8, 9));
}
