#include "zv3DTreeWidget.h"

#include "zv3DTreeFixture.h"

#include "vtkMapper.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkPlaneSource.h"
#include "vtkPoints.h"
#include "vtkPropCollection.h"
#include "vtkVersion.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>
#include <sstream>

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

using TreeWidget = zvtest::TreeInFourViews;
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
