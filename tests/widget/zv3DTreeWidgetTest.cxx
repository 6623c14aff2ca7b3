#include "zv3DTreeWidget.h"

#include "zv3DTreeFixture.h"

#include "vtkCamera.h"
#include "vtkCellArray.h"
#include "vtkDoubleArray.h"
#include "vtkIdList.h"
#include "vtkMapper.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkPlaneSource.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPropCollection.h"
#include "vtkVersion.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::OpenTree;
using zvtest::ThreeD;
using zvtest::View;
using zvtest::World;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
class ReplacedTree : public zv3DTreeWidget
{
public:
  static ReplacedTree* New() { return new ReplacedTree; }
  vtkTypeMacro(ReplacedTree, zv3DTreeWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zv3DTreeWidget"; }

private:
  static vtkObject* Make() { return ReplacedTree::New(); }
  Factory()
  {
    this->RegisterOverride("zv3DTreeWidget", "ReplacedTree", "for the test", 1, &Factory::Make);
  }
};

class TreeWidget : public zvtest::TreeInFourViews
{
protected:
  void ExpectWarning(const std::string& message)
  {
    this->ExpectGenericWarning("zv3DTreeWidget", message);
  }

  // Points and lines as a host reads them from a file.
  static vtkSmartPointer<vtkPolyData> MakeData(
    const std::vector<World>& positions, const Segments& segments)
  {
    vtkNew<vtkPoints> points;
    for (const World& position : positions)
    {
      points->InsertNextPoint(position.data());
    }
    vtkNew<vtkCellArray> lines;
    for (const auto& segment : segments)
    {
      lines->InsertNextCell({ segment.first, segment.second });
    }
    auto data = vtkSmartPointer<vtkPolyData>::New();
    data->SetPoints(points);
    data->SetLines(lines);
    return data;
  }

  static std::vector<World> PositionsOf(vtkPolyData* data)
  {
    std::vector<World> positions(data->GetNumberOfPoints());
    for (std::size_t id = 0; id < positions.size(); ++id)
    {
      data->GetPoint(static_cast<vtkIdType>(id), positions[id].data());
    }
    return positions;
  }

  // What must not change in an operation that is refused.
  struct Snapshot
  {
    int State;
    int Point;
    int Line;
    int Enabled;
    std::vector<World> Points;
    Segments Lines;
    World Sphere;
    World Start;
    World End;
    std::string Label;
    std::array<std::string, 5> Where;
    bool operator==(const Snapshot& o) const
    {
      return this->State == o.State && this->Point == o.Point && this->Line == o.Line &&
        this->Enabled == o.Enabled && this->Points == o.Points && this->Lines == o.Lines &&
        this->Sphere == o.Sphere && this->Start == o.Start && this->End == o.End &&
        this->Label == o.Label && this->Where == o.Where;
    }
  };
  Snapshot Take()
  {
    return { this->Tree->State, this->Tree->CurrentPoint, this->Tree->CurrentLine,
      this->Tree->GetEnabled(), PositionsOf(this->Tree->TreePoints), this->SegmentsOfTree(),
      this->Sphere(), this->LineStart(), this->LineEnd(), this->Label(), this->WhereAll() };
  }

  double From[3] = { 0, 0, 0 };
  double To[3] = { 1, 0, 0 };
};
}

// ---- What it is, and how it starts

TEST_F(TreeWidget, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<zv3DTreeWidget> widget;
  EXPECT_STREQ(widget->GetClassName(), "zv3DTreeWidget");
  for (const char* name : { "zv3DTreeWidget", "vtk3DWidget", "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  EXPECT_EQ(widget->IsA("zvWidgets"), 0);
  auto other = vtkSmartPointer<zv3DTreeWidget>::Take(widget->NewInstance());
  EXPECT_STREQ(other->GetClassName(), "zv3DTreeWidget");
}

TEST_F(TreeWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zv3DTreeWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zv3DTreeWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedTree");
  EXPECT_STREQ(plain->GetClassName(), "zv3DTreeWidget");
}

TEST_F(TreeWidget, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzv3DTreeWidgetNew());
  EXPECT_STREQ(made->GetClassName(), "zv3DTreeWidget");
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TEST_F(TreeWidget, WritesOneRevision)
{
  std::ostringstream revision;
  this->Tree->CollectRevisions(revision);
  EXPECT_EQ(revision.str(), "zv3DTreeWidget $Revision: 1.2 $\n");
}

TEST_F(TreeWidget, PrintsItsFieldsBehindTheParents)
{
  this->Tree->ProjectToPlaneOn();
  this->Tree->SetProjectionPosition(2.5);
  const auto print = [this]
  {
    std::ostringstream own;
    std::ostringstream parents;
    this->Tree->PrintSelf(own, vtkIndent(2));
    this->Tree->vtk3DWidget::PrintSelf(parents, vtkIndent(2));
    EXPECT_EQ(own.str().substr(0, parents.str().size()), parents.str());
    return own.str().substr(parents.str().size());
  };
  std::ostringstream expected;
  expected << "  Handle Property: " << this->Tree->GetHandleProperty() << "\n"
           << "  Selected Handle Property: " << this->Tree->GetSelectedHandleProperty() << "\n"
           << "  Project To Plane: On\n"
           << "  Projection Normal: 0\n"
           << "  Projection Position: 2.5\n";
  EXPECT_EQ(print(), expected.str());
  this->Tree->SetHandleProperty(nullptr);
  this->Tree->SetSelectedHandleProperty(nullptr);
  this->Tree->ProjectToPlaneOff();
  EXPECT_EQ(print(),
    "  Handle Property: (none)\n  Selected Handle Property: (none)\n  Project To Plane: Off\n"
    "  Projection Normal: 0\n  Projection Position: 2.5\n");
}

TEST_F(TreeWidget, ItsNumbersOfStatesAreFixed)
{
  EXPECT_EQ(zv3DTreeWidget::Start, 0);
  EXPECT_EQ(zv3DTreeWidget::Moving, 1);
  EXPECT_EQ(zv3DTreeWidget::MovingLine, 2);
  EXPECT_EQ(zv3DTreeWidget::Outside, 5);
  EXPECT_EQ(zv3DTreeWidget::Inactive, 6);
}

TEST_F(TreeWidget, StartsEmptyWithTheseDefaults)
{
  vtkNew<OpenTree> tree;
  EXPECT_EQ(tree->State, zv3DTreeWidget::Start);
  EXPECT_FALSE(tree->DebugMode);
  EXPECT_EQ(tree->GetProjectionNormal(), 0);
  EXPECT_EQ(tree->GetProjectionPosition(), 0.0);
  EXPECT_EQ(tree->GetProjectToPlane(), 0);
  EXPECT_EQ(tree->PlaneSource, nullptr);
  EXPECT_EQ(tree->PlaceFactor, 1.0);
  EXPECT_EQ(tree->CurrentHandle, nullptr);
  EXPECT_EQ(tree->CurrentPoint, -1);
  EXPECT_EQ(tree->CurrentLine, -1);
  EXPECT_EQ(tree->GetEnabled(), 0);
  EXPECT_EQ(tree->TreePoints->GetNumberOfPoints(), 0);
  EXPECT_EQ(tree->TreeLines->GetNumberOfPoints(), 0);
  EXPECT_NE(tree->TreePoints->GetPoints(), tree->TreeLines->GetPoints());
  for (vtkRenderer* renderer :
    { tree->RendererX.Get(), tree->RendererY.Get(), tree->RendererZ.Get(), tree->Renderer3D.Get() })
  {
    EXPECT_EQ(renderer, nullptr);
  }
  for (vtkObject* interactor : { tree->InteractorX.Get(), tree->InteractorY.Get(),
         tree->InteractorZ.Get(), tree->Interactor3D.Get() })
  {
    EXPECT_EQ(interactor, nullptr);
  }
}

TEST_F(TreeWidget, ItsPickersHaveOneActorEachToHit)
{
  const std::array<std::pair<vtkCellPicker*, vtkProp*>, 2> rows = { {
    { this->Tree->PointPicker, this->Tree->PointsActor },
    { this->Tree->LinePicker, this->Tree->LinesActor },
  } };
  EXPECT_EQ(rows[0].first->GetTolerance(), 0.02);
  EXPECT_EQ(rows[1].first->GetTolerance(), 0.005);
  for (const auto& row : rows)
  {
    EXPECT_EQ(row.first->GetPickFromList(), 1);
    ASSERT_EQ(row.first->GetPickList()->GetNumberOfItems(), 1);
    EXPECT_EQ(row.first->GetPickList()->GetLastProp(), row.second);
  }
}

TEST_F(TreeWidget, ItsPropertiesHaveTheseColoursAndSizes)
{
  EXPECT_EQ(this->Tree->HandleProperty, this->Tree->GetHandleProperty());
  const double* color = this->Tree->HandleProperty->GetColor();
  EXPECT_EQ((World{ { color[0], color[1], color[2] } }), (World{ { 1, 0, 0 } }));
  EXPECT_EQ(this->Tree->HandleProperty->GetPointSize(), 5.0f);
  color = this->Tree->SelectedHandleProperty->GetColor();
  EXPECT_EQ((World{ { color[0], color[1], color[2] } }), (World{ { 0, 1, 1 } }));
  EXPECT_EQ(this->Tree->SelectedHandleProperty->GetPointSize(), 6.0f);
  color = this->Tree->LineProperty->GetColor();
  EXPECT_EQ((World{ { color[0], color[1], color[2] } }), (World{ { 1, 1, 0 } }));
  EXPECT_EQ(this->Tree->LineProperty->GetLineWidth(), 2.0f);
  color = this->Tree->SelectedLineProperty->GetColor();
  EXPECT_EQ((World{ { color[0], color[1], color[2] } }), (World{ { 0, 1, 0.2 } }));
  EXPECT_EQ(this->Tree->SelectedLineProperty->GetLineWidth(), 2.0f);
  EXPECT_EQ(this->Tree->SelectedPointActor->GetProperty(), this->Tree->SelectedHandleProperty);
  EXPECT_EQ(this->Tree->SelectedLineActor->GetProperty(), this->Tree->SelectedLineProperty);
}

TEST_F(TreeWidget, ItsSphereAndLabelHaveTheStockSize)
{
  vtkNew<vtkSphereSource> stock;
  EXPECT_EQ(this->Tree->SelectedPointSource->GetRadius(), stock->GetRadius());
  EXPECT_EQ(this->Tree->SelectedPointSource->GetThetaResolution(), stock->GetThetaResolution());
  EXPECT_EQ(this->Tree->SelectedPointSource->GetPhiResolution(), stock->GetPhiResolution());
  EXPECT_EQ(this->Label(), " ");
  EXPECT_NE(this->Tree->TextActor->GetMapper(), nullptr);
  const double* color = this->Tree->TextActor->GetProperty()->GetColor();
  EXPECT_EQ((World{ { color[0], color[1], color[2] } }), (World{ { 1, 0, 0 } }));
  const double* scale = this->Tree->TextActor->GetScale();
  EXPECT_EQ((World{ { scale[0], scale[1], scale[2] } }), (World{ { 1, 1, 1 } }));
}

TEST_F(TreeWidget, DefaultPropertiesReplaceOnlyThoseThatAreNull)
{
  vtkNew<vtkProperty> own;
  this->Tree->SetHandleProperty(own);
  this->Tree->SetSelectedHandleProperty(nullptr);
  this->Tree->CreateDefaultProperties();
  EXPECT_EQ(this->Tree->GetHandleProperty(), own);
  ASSERT_NE(this->Tree->GetSelectedHandleProperty(), nullptr);
  EXPECT_EQ(this->Tree->GetSelectedHandleProperty()->GetPointSize(), 6.0f);
}

TEST_F(TreeWidget, PlacingMovesNothing)
{
  this->ShowSquare();
  const Snapshot before = this->Take();
  double bounds[6] = { 0, 9, 0, 9, 0, 9 };
  this->Tree->PlaceWidget(bounds);
  this->Tree->PlaceWidget(0, 9, 0, 9, 0, 9);
  this->Tree->SetProp3D(this->Tree->PointsActor);
  this->Tree->PlaceWidget();
  this->Tree->SizeHandles();
  this->Tree->UpdateScaleLabel();
  this->Tree->RemovePointSelected();
  this->Tree->InsertHandleOnLine(this->From);
  this->Tree->InsertHandleOnLine(nullptr);
  EXPECT_TRUE(this->Take() == before);
  EXPECT_EQ(this->Tree->IsLine(), 0);
}

TEST_F(TreeWidget, SettersCallModifiedOnAChangeOnly)
{
  struct Row
  {
    const char* Name;
    std::function<void()> Call;
    bool Modifies;
  };
  vtkNew<vtkProperty> property;
  vtkNew<vtkPlaneSource> plane;
  const int planeReferences = plane->GetReferenceCount();
  const Row rows[] = {
    { "project on", [this] { this->Tree->ProjectToPlaneOn(); }, true },
    { "project on again", [this] { this->Tree->SetProjectToPlane(1); }, false },
    { "project off", [this] { this->Tree->ProjectToPlaneOff(); }, true },
    { "normal", [this] { this->Tree->SetProjectionNormal(2); }, false },
    { "position", [this] { this->Tree->SetProjectionPosition(3.0); }, false },
    { "plane", [this, &plane] { this->Tree->SetPlaneSource(plane); }, false },
    { "handle", [this, &property] { this->Tree->SetHandleProperty(property); }, true },
    { "handle again", [this, &property] { this->Tree->SetHandleProperty(property); }, false },
    { "selected", [this, &property] { this->Tree->SetSelectedHandleProperty(property); }, true },
    { "selected again", [this, &property] { this->Tree->SetSelectedHandleProperty(property); },
      false },
  };
  for (const Row& row : rows)
  {
    const vtkMTimeType before = this->Tree->GetMTime();
    row.Call();
    EXPECT_EQ(this->Tree->GetMTime() > before, row.Modifies) << row.Name;
  }
  EXPECT_EQ(this->Tree->GetProjectionNormal(), 0);
  EXPECT_EQ(this->Tree->GetProjectionNormalMinValue(), 0);
  EXPECT_EQ(this->Tree->GetProjectionNormalMaxValue(), 0);
  EXPECT_EQ(this->Tree->GetProjectionPosition(), 3.0);
  EXPECT_EQ(this->Tree->PlaneSource, plane.Get());
  EXPECT_EQ(plane->GetReferenceCount(), planeReferences);
  EXPECT_EQ(property->GetReferenceCount(), 3);
}

// ---- The views

TEST_F(TreeWidget, StoresViewsWithoutTakingReferences)
{
  std::array<int, 4> references;
  for (View view : zvtest::AllViews)
  {
    references[view] = this->Renderer(view)->GetReferenceCount();
  }
  vtkNew<OpenTree> tree;
  const vtkMTimeType before = tree->GetMTime();
  this->SetViews(tree.Get(), Y);
  EXPECT_EQ(tree->GetMTime(), before);
  EXPECT_EQ(tree->RendererX, this->Renderer(X));
  EXPECT_EQ(tree->RendererY, this->Renderer(Y));
  EXPECT_EQ(tree->RendererZ, this->Renderer(Z));
  EXPECT_EQ(tree->Renderer3D, this->Renderer(ThreeD));
  EXPECT_EQ(tree->InteractorX, this->Interactor(X));
  EXPECT_EQ(tree->InteractorY, this->Interactor(Y));
  EXPECT_EQ(tree->InteractorZ, this->Interactor(Z));
  EXPECT_EQ(tree->Interactor3D, this->Interactor(ThreeD));
  EXPECT_EQ(tree->GetCurrentRenderer(), this->Renderer(Y));
  EXPECT_EQ(tree->GetInteractor(), this->Interactor(Y));
  for (View view : zvtest::AllViews)
  {
    EXPECT_EQ(this->Renderer(view)->GetReferenceCount(), references[view]);
  }
}

TEST_F(TreeWidget, RefusesViewsThatAreInNoWindow)
{
  struct Row
  {
    const char* Name;
    void (zv3DTreeWidget::*Set)(vtkRenderer*);
  };
  const Row rows[] = {
    { "RendererX", &zv3DTreeWidget::SetRendererX },
    { "RendererY", &zv3DTreeWidget::SetRendererY },
    { "RendererZ", &zv3DTreeWidget::SetRendererZ },
    { "Renderer3D", &zv3DTreeWidget::SetRenderer3D },
    { "CurrentRenderer", &zv3DTreeWidget::SetCurrentRender },
  };
  vtkNew<vtkRenderer> alone;
  for (const Row& row : rows)
  {
    for (vtkRenderer* renderer : { static_cast<vtkRenderer*>(nullptr), alone.Get() })
    {
      (this->Tree->*row.Set)(renderer);
      this->ExpectWarning(
        std::string("set a renderer that is in a render window for ") + row.Name + "...");
    }
  }
  EXPECT_EQ(this->Tree->RendererX, this->Renderer(X));
  EXPECT_EQ(this->Tree->RendererY, this->Renderer(Y));
  EXPECT_EQ(this->Tree->RendererZ, this->Renderer(Z));
  EXPECT_EQ(this->Tree->Renderer3D, this->Renderer(ThreeD));
  EXPECT_EQ(this->Tree->GetCurrentRenderer(), this->Renderer(Z));
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

// ---- Enabling, clearing, and what is in which view

TEST_F(TreeWidget, WhatIsInWhichViewAfterEachOperation)
{
  struct Row
  {
    const char* Name;
    std::function<void()> Call;
    std::array<std::string, 5> Where; // lines, selected line, points, selected point, label
    int LabelVisible;
  };
  const std::string all = "XYZ3";
  const Row rows[] = {
    { "made", [] {}, { { "", "", "", "", "" } }, 1 },
    { "add the root", [this] { this->Add(Corners[0]); }, { { "", "", "", "", "" } }, 1 },
    { "add a point", [this] { this->Add(Corners[1]); }, { { "", "", "", "", all } }, 1 },
    { "enable", [this] { this->Tree->SetEnabled(1); }, { { all, all, all, all, all } }, 1 },
    { "enable again", [this] { this->Tree->SetEnabled(1); }, { { all, all, all, all, all } }, 1 },
    { "add another", [this] { this->Add(Corners[2]); }, { { all, all, all, all, all } }, 1 },
    { "select the root", [this] { this->Tree->HighlightHandle(0); }, { { all, "", all, all, "" } },
      1 },
    { "select a segment", [this] { this->Tree->HighlightLine(0); }, { { all, all, all, all, "" } },
      1 },
    { "select a point", [this] { this->Tree->HighlightHandle(1); }, { { all, all, all, all, all } },
      1 },
    { "select the root", [this] { this->Tree->HighlightHandle(0); }, { { all, "", all, all, "" } },
      1 },
    { "add below the root", [this] { this->Add(Corners[3]); }, { { all, "", all, all, all } }, 1 },
    { "deselect segments", [this] { this->Tree->HighlightLine(-1); }, { { all, "", all, "", all } },
      1 },
    { "deselect points", [this] { this->Tree->HighlightHandle(-1); }, { { all, "", all, "", "" } },
      1 },
    { "select a point", [this] { this->Tree->HighlightHandle(1); }, { { all, all, all, all, all } },
      1 },
    { "move a point", [this] { this->Tree->MovePoint(this->From, this->To); },
      { { all, all, all, all, all } }, 1 },
    { "move a segment", [this] { this->Tree->MoveLine(this->From, this->To); },
      { { all, all, all, all, all } }, 1 },
    { "no label", [this] { this->Tree->SetTextToActorPosition(0); }, { { all, all, all, all, "" } },
      1 },
    { "label", [this] { this->Tree->SetTextToActorPosition(1); }, { { all, all, all, all, all } },
      1 },
    { "disable", [this] { this->Tree->SetEnabled(0); }, { { "", "", "", "", all } }, 0 },
    { "disable again", [this] { this->Tree->SetEnabled(0); }, { { "", "", "", "", all } }, 0 },
    { "select a point", [this] { this->Tree->HighlightHandle(2); }, { { "", all, "", all, all } },
      0 },
    { "enable", [this] { this->Tree->SetEnabled(1); }, { { all, all, all, all, all } }, 1 },
    { "load over it",
      [this] {
        this->Tree->LoadTree(MakeData({ Corners[0], Corners[1] }, { { 0, 1 } }));
      },
      { { all, all, all, all, all } }, 1 },
    { "clear", [this] { this->Tree->Clear(); }, { { "", "", "", "", all } }, 0 },
    { "enable", [this] { this->Tree->SetEnabled(1); }, { { all, all, all, all, all } }, 1 },
    { "load a root", [this] { this->Tree->LoadTree(MakeData({ Corners[0] }, {})); },
      { { all, all, all, all, "" } }, 1 },
    { "disable", [this] { this->Tree->SetEnabled(0); }, { { "", "", "", "", "" } }, 0 },
  };
  for (const Row& row : rows)
  {
    row.Call();
    EXPECT_EQ(this->WhereAll(), row.Where) << row.Name;
    EXPECT_EQ(this->Tree->TextActor->GetVisibility(), row.LabelVisible) << row.Name;
  }
  this->Tree = nullptr;
  EXPECT_EQ(this->CountProps(), (std::array<int, 4>{ { 0, 0, 0, 0 } }));
}

TEST_F(TreeWidget, EnablingGivesTheActorsTheirPropertiesAndTells)
{
  vtkNew<vtkProperty> handle;
  vtkNew<vtkProperty> selected;
  this->Tree->SetHandleProperty(handle);
  this->Tree->SetSelectedHandleProperty(selected);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Tree, zvtest::WidgetEvents);
  this->WatchRenders(recorder);
  this->Tree->SetEnabled(1);
  EXPECT_EQ(this->NamesOf(recorder), (Names{ "EnableEvent", "X", "Y", "Z", "3" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_EQ(this->Tree->PointsActor->GetProperty(), handle);
  EXPECT_EQ(this->Tree->SelectedPointActor->GetProperty(), selected);
  EXPECT_EQ(this->Tree->LinesActor->GetProperty(), this->Tree->LineProperty);
  EXPECT_EQ(this->Tree->SelectedLineActor->GetProperty(), this->Tree->SelectedLineProperty);
  EXPECT_TRUE(this->Tree->IsEnabled());
  recorder.Clear();
  this->Tree->SetEnabled(1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->Tree->SetEnabled(0);
  EXPECT_EQ(this->NamesOf(recorder), (Names{ "DisableEvent", "X", "Y", "Z", "3" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_FALSE(this->Tree->IsEnabled());
  recorder.Clear();
  this->Tree->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(TreeWidget, EnablingAddsTheActorsInThisOrder)
{
  this->Tree->SetEnabled(1);
  for (View view : zvtest::AllViews)
  {
    vtkPropCollection* props = this->Renderer(view)->GetViewProps();
    ASSERT_EQ(props->GetNumberOfItems(), 4);
    const vtkObject* const order[] = { this->Tree->LinesActor, this->Tree->SelectedLineActor,
      this->Tree->PointsActor, this->Tree->SelectedPointActor };
    for (int i = 0; i < 4; ++i)
    {
      EXPECT_EQ(props->GetItemAsObject(i), order[i]) << i;
    }
  }
}

TEST_F(TreeWidget, EnablingAddsToThePickListsWhatDisablingTakesOut)
{
  const auto count = [this]
  {
    return std::make_pair(this->Tree->PointPicker->GetPickList()->GetNumberOfItems(),
      this->Tree->LinePicker->GetPickList()->GetNumberOfItems());
  };
  for (int i = 0; i < 3; ++i)
  {
    this->Tree->SetEnabled(1);
    EXPECT_EQ(count(), std::make_pair(2, 2));
    this->Tree->SetEnabled(0);
    EXPECT_EQ(count(), std::make_pair(1, 1));
  }
  for (int i = 0; i < 3; ++i)
  {
    this->Tree->Clear();
    EXPECT_EQ(count(), std::make_pair(0, 0));
    this->Tree->SetEnabled(1);
    EXPECT_EQ(count(), std::make_pair(1, 1));
    EXPECT_EQ(this->Tree->PointPicker->GetPickList()->GetLastProp(), this->Tree->PointsActor);
    EXPECT_EQ(this->Tree->LinePicker->GetPickList()->GetLastProp(), this->Tree->LinesActor);
  }
}

TEST_F(TreeWidget, WithoutAnInteractorEnablingIsSilent)
{
  vtkNew<OpenTree> tree;
  tree->SetEnabled(1);
  EXPECT_EQ(tree->GetEnabled(), 0);
  tree->SetEnabled(0);
  this->ExpectNoMessage();
}

TEST_F(TreeWidget, ClearMakesNewDataAndActorsAndLeavesTheWidgetDisabled)
{
  this->ShowSquare();
  const std::vector<vtkWeakPointer<vtkObject>> old = { this->Tree->TreePoints.Get(),
    this->Tree->TreeLines.Get(), this->Tree->PointsActor.Get(), this->Tree->LinesActor.Get(),
    this->Tree->SelectedPointActor.Get(), this->Tree->SelectedLineActor.Get(),
    this->Tree->SelectedPointSource.Get(), this->Tree->SelectedLineSource.Get() };
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Tree, zvtest::WidgetEvents);
  this->WatchRenders(recorder);
  this->Tree->Clear();
  EXPECT_EQ(
    this->NamesOf(recorder), (Names{ "DisableEvent", "X", "Y", "Z", "3", "X", "Y", "Z", "3" }));
  for (const auto& object : old)
  {
    EXPECT_EQ(object, nullptr);
  }
  EXPECT_FALSE(this->Tree->IsEnabled());
  EXPECT_EQ(this->Tree->TreePoints->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Tree->TreeLines->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Tree->CurrentPoint, 3);
  EXPECT_EQ(this->Tree->CurrentLine, 2);
  EXPECT_EQ(this->Tree->SelectedPointActor->GetProperty(), this->Tree->SelectedHandleProperty);
  recorder.Clear();
  this->Tree->Clear(); // disabled already
  EXPECT_EQ(this->NamesOf(recorder), (Names{ "X", "Y", "Z", "3" }));
}

TEST_F(TreeWidget, AfterClearPointsAreAddedUnseenUntilTheWidgetIsEnabled)
{
  this->ShowSquare();
  this->Tree->Clear();
  this->Add({ { 1, 1, 1 } });
  this->Add({ { 2, 1, 1 } });
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 } }));
  for (vtkProp* actor : { static_cast<vtkProp*>(this->Tree->PointsActor.Get()),
         static_cast<vtkProp*>(this->Tree->LinesActor.Get()) })
  {
    EXPECT_EQ(this->WhereIs(actor), "");
  }
  EXPECT_EQ(this->Tree->TextActor->GetVisibility(), 0);
  this->Tree->SetEnabled(1);
  EXPECT_EQ(this->WhereIs(this->Tree->PointsActor), "XYZ3");
  EXPECT_EQ(this->WhereIs(this->Tree->LinesActor), "XYZ3");
}

TEST_F(TreeWidget, ClearWithoutAnInteractorEmptiesNothingAndRenders)
{
  vtkNew<OpenTree> tree;
  tree->SetRendererX(this->Renderer(X));
  tree->SetRendererY(this->Renderer(Y));
  tree->SetRendererZ(this->Renderer(Z));
  tree->SetRenderer3D(this->Renderer(ThreeD));
  World position{ { 1, 1, 1 } };
  tree->AddHandle(position.data(), 0);
  zvtest::EventRecorder recorder;
  this->WatchRenders(recorder);
  tree->Clear();
  EXPECT_EQ(this->NamesOf(recorder), (Names{ "X", "Y", "Z", "3" }));
  EXPECT_EQ(tree->TreePoints->GetNumberOfPoints(), 1);
}

TEST_F(TreeWidget, ClearTakesTheRendererUnderTheLastEvent)
{
  vtkNew<OpenTree> tree;
  this->SetViews(tree.Get(), Z);
  tree->SetCurrentRenderer(nullptr);
  ASSERT_EQ(tree->GetCurrentRenderer(), nullptr);
  World position{ { 1, 1, 1 } };
  tree->AddHandle(position.data(), 0);
  tree->Clear();
  EXPECT_EQ(tree->GetCurrentRenderer(), this->Renderer(Z));
  EXPECT_EQ(tree->TreePoints->GetNumberOfPoints(), 0);
  // without one in the window nothing is emptied
  tree->AddHandle(position.data(), 0);
  tree->SetCurrentRenderer(nullptr);
  this->In(Z).Window()->RemoveRenderer(this->Renderer(Z));
  tree->Clear();
  EXPECT_EQ(tree->TreePoints->GetNumberOfPoints(), 1);
  this->In(Z).Window()->AddRenderer(this->Renderer(Z));
}

// ---- What is missing

TEST_F(TreeWidget, WithoutOneOfTheViewsOperationsSayWhichAndChangeNothing)
{
  struct Row
  {
    const char* Before;
    std::function<void()> Call;
  };
  const auto data = MakeData({ Corners[0], Corners[1] }, { { 0, 1 } });
  const Row rows[] = {
    { "enabling the widget", [this] { this->Tree->SetEnabled(1); } },
    { "adding a point",
      [this] {
        this->Add({ { 1, 1, 1 } });
      } },
    { "loading a tree", [this, data] { this->Tree->LoadTree(data); } },
    { "selecting a point", [this] { EXPECT_EQ(this->Tree->HighlightHandle(0), 0); } },
    { "selecting a point", [this] { EXPECT_EQ(this->Tree->HighlightHandle(1), 0); } },
    { "selecting a segment", [this] { EXPECT_EQ(this->Tree->HighlightLine(0), 0); } },
    { "moving a point", [this] { this->Tree->MovePoint(this->From, this->To); } },
    { "moving a segment", [this] { this->Tree->MoveLine(this->From, this->To); } },
    { "refreshing the label", [this] { this->Tree->SetTextToActorPosition(1); } },
    { "refreshing the label", [this] { this->Tree->SetTextToActorPosition(0); } },
  };
  static const char* const names[] = { "X", "Y", "Z", "3D" };
  this->GrowSquare();
  for (View view : zvtest::AllViews)
  {
    for (const char* part : { "Renderer", "Interactor" })
    {
      const bool isRenderer = part[0] == 'R';
      if (isRenderer)
      {
        vtkWeakPointer<vtkRenderer>* const views[] = { &this->Tree->RendererX,
          &this->Tree->RendererY, &this->Tree->RendererZ, &this->Tree->Renderer3D };
        *views[view] = nullptr;
      }
      else
      {
        vtkWeakPointer<vtkRenderWindowInteractor>* const views[] = { &this->Tree->InteractorX,
          &this->Tree->InteractorY, &this->Tree->InteractorZ, &this->Tree->Interactor3D };
        *views[view] = nullptr;
      }
      for (const Row& row : rows)
      {
        const Snapshot before = this->Take();
        row.Call();
        this->ExpectWarning(
          std::string("set ") + part + names[view] + " before " + row.Before + "...");
        this->ExpectNoMessage();
        EXPECT_TRUE(this->Take() == before) << row.Before << names[view];
      }
      // These take away or hand out only, and do what can be done.
      this->Tree->SetEnabled(0);
      this->Tree->HighlightHandle(-1);
      this->Tree->HighlightLine(-1);
      this->ExpectNoMessage();
      this->SetViews(this->Tree.Get());
      this->Tree->HighlightHandle(3);
    }
  }
}

TEST_F(TreeWidget, WithoutACurrentViewOperationsThatUseItSaySo)
{
  struct Row
  {
    const char* Before;
    std::function<void()> Call;
  };
  const auto data = MakeData({ Corners[0], Corners[1] }, { { 0, 1 } });
  const Row rows[] = {
    { "adding a point",
      [this] {
        this->Add({ { 1, 1, 1 } });
      } },
    { "loading a tree", [this, data] { this->Tree->LoadTree(data); } },
    { "selecting a point", [this] { EXPECT_EQ(this->Tree->HighlightHandle(1), 0); } },
    { "moving a point", [this] { this->Tree->MovePoint(this->From, this->To); } },
    { "moving a segment", [this] { this->Tree->MoveLine(this->From, this->To); } },
    { "refreshing the label", [this] { this->Tree->SetTextToActorPosition(1); } },
  };
  this->GrowSquare();
  this->Tree->SetCurrentRenderer(nullptr);
  for (const Row& row : rows)
  {
    const Snapshot before = this->Take();
    row.Call();
    this->ExpectWarning(std::string("set CurrentRenderer before ") + row.Before + "...");
    EXPECT_TRUE(this->Take() == before) << row.Before;
  }
  EXPECT_EQ(this->Tree->HighlightHandle(0), 1);
  EXPECT_EQ(this->Tree->HighlightLine(1), 1);
  EXPECT_EQ(this->Tree->IsClicked(), 0);
}

TEST_F(TreeWidget, WithoutACurrentImageNothingMoves)
{
  this->ShowSquare();
  const Snapshot before = this->Take();
  vtkNew<vtkImageData> empty;
  for (vtkImageData* image : { static_cast<vtkImageData*>(nullptr), empty.Get() })
  {
    zvInstanceManager::Instance()->SetCurrentOutput(image);
    this->Tree->MovePoint(this->From, this->To);
    this->ExpectWarning("set the current image before moving a point...");
    this->Tree->MoveLine(this->From, this->To);
    this->ExpectWarning("set the current image before moving a segment...");
  }
  EXPECT_TRUE(this->Take() == before);
}

TEST_F(TreeWidget, WithoutAPositionOrAMotionNothingChanges)
{
  this->ShowSquare();
  this->Tree->State = zv3DTreeWidget::Outside;
  const Snapshot before = this->Take();
  this->Tree->AddHandle(nullptr, 0);
  this->ExpectWarning("give the point a position...");
  for (int missing : { 0, 1 })
  {
    double* p1 = missing == 0 ? nullptr : this->From;
    double* p2 = missing == 1 ? nullptr : this->To;
    this->Tree->MovePoint(p1, p2);
    this->ExpectWarning("give both ends of the motion before moving a point...");
    this->Tree->MoveLine(p1, p2);
    this->ExpectWarning("give both ends of the motion before moving a segment...");
  }
  EXPECT_TRUE(this->Take() == before);
}

TEST_F(TreeWidget, AStaleSelectionMovesNothing)
{
  this->ShowSquare();
  for (int stale : { -1, 4, std::numeric_limits<int>::min() })
  {
    this->Tree->CurrentPoint = stale;
    this->Tree->CurrentLine = stale;
    const Snapshot before = this->Take();
    this->Tree->MovePoint(this->From, this->To);
    this->ExpectWarning("there is no point of index " + std::to_string(stale) + "...");
    this->Tree->MoveLine(this->From, this->To);
    this->ExpectWarning("there is no segment of index " + std::to_string(stale) + "...");
    EXPECT_TRUE(this->Take() == before);
  }
}
