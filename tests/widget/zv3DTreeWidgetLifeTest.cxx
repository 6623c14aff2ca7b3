#include "zv3DTreeFixture.h"

#include "zvEvents.h"

#include "vtkNew.h"
#include "vtkPropCollection.h"

#include <gmock/gmock.h>

#include <functional>

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
class TreeLife : public zvtest::TreeInFourViews
{
protected:
  /// How often the widget listens to a mouse move on an interactor.
  int CountObservers(View view)
  {
    // An observer that is named twice is called twice; each call renders all four views.
    zvtest::EventRecorder recorder;
    this->WatchRenders(recorder);
    zvtest::Mouse mouse = this->PointerIn(view);
    mouse.WheelForward(Nothing);
    return static_cast<int>(recorder.Events().size()) / 4;
  }
};
}

// ---- Who listens where

TEST_F(TreeLife, TheCurrentSliceViewIsObservedTwiceAndThe3DViewOnlyIfCurrent)
{
  struct Row
  {
    View Current;
    std::array<int, 4> Counts;
  };
  const Row rows[] = { { X, { { 2, 1, 1, 0 } } }, { Y, { { 1, 2, 1, 0 } } },
    { Z, { { 1, 1, 2, 0 } } }, { ThreeD, { { 1, 1, 1, 1 } } } };
  for (const Row& row : rows)
  {
    this->MakeTree(row.Current);
    this->Tree->SetEnabled(1);
    for (View view : zvtest::AllViews)
    {
      EXPECT_EQ(this->CountObservers(view), row.Counts[view]) << row.Current << view;
      for (unsigned long event : zvEvents::Handle)
      {
        EXPECT_EQ(this->Interactor(view)->HasObserver(event, this->Tree->EventCallbackCommand) != 0,
          row.Counts[view] > 0);
      }
    }
    this->Tree->SetEnabled(0);
    for (View view : zvtest::AllViews)
    {
      EXPECT_EQ(this->CountObservers(view), 0);
    }
  }
}

TEST_F(TreeLife, AddObserversOnceMoreDoublesThem)
{
  this->Tree->SetEnabled(1);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Tree, zvtest::WidgetEvents);
  this->Tree->AddObservers();
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->CountObservers(Z), 4);
  EXPECT_EQ(this->CountObservers(Y), 2);
  this->Tree->SetEnabled(0);
  EXPECT_EQ(this->CountObservers(Z), 0);
}

TEST_F(TreeLife, WhatIsTakenIsAnsweredOnceThoughObservedTwice)
{
  this->ShowSquare(Z);
  ASSERT_EQ(this->CountObservers(Z), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Tree, zvtest::WidgetEvents);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 2));
  double before = this->PointAt(2)[0];
  zvtest::Display to = mouse.Position();
  to[0] -= 10;
  mouse.MoveTo(to);
  const World under = this->In(Z).WorldAt(to, Corners[2]);
  EXPECT_NEAR(this->PointAt(2)[0], under[0], 0.25); // once, not twice as far
  EXPECT_LT(this->PointAt(2)[0], before);
  mouse.Release(zvtest::Left);
  EXPECT_EQ(recorder.Names(),
    (Names{ "StartInteractionEvent", "InteractionEvent", "EndInteractionEvent" }));
}

TEST_F(TreeLife, ChangingTheCurrentViewMovesNoObserver)
{
  this->MakeTree(Z);
  this->Tree->SetEnabled(1);
  this->Tree->SetCurrentRender(this->Renderer(ThreeD));
  EXPECT_EQ(this->CountObservers(Z), 2);
  EXPECT_EQ(this->CountObservers(ThreeD), 0);
  this->Tree->SetEnabled(0);
  EXPECT_EQ(this->CountObservers(Z), 0);

  this->Tree->SetEnabled(1); // now the 3D view is heard
  this->Tree->SetCurrentRender(this->Renderer(Z));
  EXPECT_EQ(this->CountObservers(ThreeD), 1);
  vtkSmartPointer<vtkCommand> command = this->Tree->EventCallbackCommand;
  this->Tree = nullptr;
  for (View view : zvtest::AllViews)
  {
    EXPECT_FALSE(this->Interactor(view)->HasObserver(vtkCommand::MouseMoveEvent, command));
  }
}

TEST_F(TreeLife, AddObserversSkipsViewsThatAreNotSet)
{
  vtkNew<OpenTree> tree;
  tree->AddObservers();
  tree->SetRendererY(this->Renderer(Y));
  tree->AddObservers();
  EXPECT_TRUE(
    this->Interactor(Y)->HasObserver(vtkCommand::MouseMoveEvent, tree->EventCallbackCommand));
  this->ExpectNoMessage();
}

// ---- Traces

TEST_F(TreeLife, EveryOperationWritesItsTrace)
{
  struct Row
  {
    std::function<void()> Call;
    std::vector<std::string> Signatures;
  };
  double xyz[3] = { 1, 2, 3 };
  double to[3] = { 1, 1, 1 };
  World position{ { 1, 1, 1 } };
  vtkNew<vtkPolyData> data;
  OpenTree* tree = this->Tree;
  const std::string setText = "SetTextToActorPosition(vtkProp *prop)";
  const Row rows[] = {
    { [&] { tree->SetRendererX(this->Renderer(X)); }, { "SetRendererX(vtkRenderer *render)" } },
    { [&] { tree->SetRendererY(this->Renderer(Y)); }, { "SetRendererY(vtkRenderer *render)" } },
    { [&] { tree->SetRendererZ(this->Renderer(Z)); }, { "SetRendererZ(vtkRenderer *render)" } },
    { [&] { tree->SetRenderer3D(this->Renderer(ThreeD)); },
      { "Set3DRender(vtkRenderer *render)" } },
    { [&] { tree->SetCurrentRender(this->Renderer(Z)); },
      { "SetCurrentRender(vtkRenderer *render)" } },
    { [&] { tree->SetEnabled(1); }, { "void SetEnabled(int enabling)", "AddObservers(void)" } },
    { [&] { tree->AddHandle(position.data(), 0); }, { "AddHandle(double x[3])" } },
    { [&] { tree->AddHandle(to, 0); }, { "AddHandle(double x[3])", setText } },
    { [&] { tree->GetTree(data); }, { "GetTree(vtkPolyData *tree)" } },
    { [&] { tree->LoadTree(data); }, { "LoadTree(double x[3])", setText } },
    { [&] { tree->HighlightHandle(1); }, { "HighlightHandle(int index)" } },
    { [&] { tree->HighlightLine(0); }, { "HighlightLine(int index)" } },
    { [&] { tree->MovePoint(xyz, to); }, { "MovePoint(double *p1, double *p2)", setText } },
    { [&] { tree->MoveLine(xyz, to); }, { "MovePoint(double *p1, double *p2)", setText } },
    { [&] { tree->SetTextToActorPosition(0); }, { setText } },
    { [&] { tree->IsClicked(); }, { "IsClicked()" } },
    { [&] { tree->IsLine(); }, { "IsLine()" } },
    { [&] { tree->GetState(); }, { "GetState()" } },
    { [&] { tree->SetState(0); }, { "SetState(int state)" } },
    { [&] { tree->StopInteraction(0); }, { "StopInteraction(int stop)" } },
    { [&] { tree->IsInactive(); }, { "IsInactive()" } },
    { [&] { tree->IsEnabled(); }, { "IsEnabled()" } },
    { [&] { tree->GetHandlePosition(0); }, { "GetHandlePosition(int handle)" } },
    { [&] { tree->GetHandlePosition(0, xyz); },
      { "GetHandlePosition(int handle, double xyz[3])" } },
    { [&] { tree->SetHandlePosition(0, xyz); },
      { "SetHandlePosition(int handle, double xyz[3])" } },
    { [&] { tree->SetHandlePosition(0, 1, 2, 3); },
      { "SetHandlePosition(int handle, double x, double y, double z)" } },
    { [&] { tree->SetProjectionPosition(1.0); }, { "SetProjectionPosition(double position))" } },
    { [&] { tree->SetPlaneSource(nullptr); }, { "SetPlaneSource(vtkPlaneSource *plane)" } },
    { [&] { tree->ProjectPointsToPlane(); },
      { "ProjectPointsToPlane()", "ProjectPointsToOrthoPlane()" } },
    { [&] { tree->ProjectPointsToOrthoPlane(); }, { "ProjectPointsToOrthoPlane()" } },
    { [&] { tree->ProjectToPlaneOn(); }, {} },
    { [&] { tree->SetHandlePosition(0, xyz); },
      { "SetHandlePosition(int handle, double xyz[3])", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { [&] { tree->SetHandlePosition(0, 1, 2, 3); },
      { "SetHandlePosition(int handle, double x, double y, double z)", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { [&] { tree->SetProjectionPosition(2.0); },
      { "SetProjectionPosition(double position))", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { [&] { tree->SizeHandles(); }, { "SizeHandles()" } },
    { [&] { tree->CreateDefaultProperties(); }, { "CreateDefaultProperties()" } },
    { [&] { tree->OnLeftButtonDown(); }, { "OnLeftButtonDown()" } }, // the pointer is on nothing
    { [&] { tree->OnLeftButtonUp(); }, { "OnLeftButtonUp()" } },
    { [&] { tree->OnMiddleButtonDown(); }, { "OnMiddleButtonDown()" } },
    { [&] { tree->OnMiddleButtonUp(); }, { "OnMiddleButtonUp()" } },
    { [&] { tree->OnRightButtonDown(); }, { "OnRightButtonDown()" } },
    { [&] { tree->OnRightButtonUp(); }, { "OnRightButtonUp()" } },
    { [&] { tree->OnMouseMove(); }, {} },
    { [&] { tree->OnMouseWheelForward(); }, { "OnMouseWheelForward()", "SizeHandles()" } },
    { [&] { tree->OnMouseWheelBackward(); }, { "OnMouseWheelBackward()", "SizeHandles()" } },
    { [&] { tree->PlaceWidget(xyz); }, {} },
    { [&] { tree->RemovePointSelected(); }, {} },
    { [&] { tree->InsertHandleOnLine(xyz); }, {} },
    { [&] { tree->UpdateScaleLabel(); }, {} },
    { [&] { tree->SetProjectionNormal(1); }, {} },
    { [&] { tree->GetProjectionPosition(); }, {} },
    { [&] { tree->SetHandleProperty(tree->GetHandleProperty()); }, {} },
    { [&]
      {
        std::ostringstream os;
        tree->PrintSelf(os, vtkIndent());
      },
      { "PrintSelf(ostream& os, vtkIndent indent)" } },
    { [&] { tree->Clear(); }, { "Clear(void)", "void SetEnabled(int enabling)" } },
  };
  this->PointerIn(Z).MoveTo(Nothing);
  this->Tree->DebugMode = true;
  for (const Row& row : rows)
  {
    row.Call();
    std::string output = this->TakeOutput();
    for (std::string signature : row.Signatures)
    {
      const std::size_t at = signature.rfind(' ', signature.find('('));
      const bool hasType = signature.compare(0, 5, "void ") == 0 && at == 4;
      signature.insert(hasType ? 5 : 0, "zv3DTreeWidget::");
      const std::size_t end = output.find("\n\n");
      ASSERT_NE(end, std::string::npos) << signature;
      EXPECT_TRUE(zvtest::IsTrace(output.substr(0, end + 2), "zv3DTreeWidget", tree, signature));
      output.erase(0, end + 2);
    }
    EXPECT_EQ(output, "");
  }
  this->Tree = nullptr;
  std::string last = this->TakeOutput();
  const std::size_t end = last.find("\n\n") + 2;
  EXPECT_TRUE(zvtest::IsTrace(
    last.substr(0, end), "zv3DTreeWidget", tree, "zv3DTreeWidget::~zv3DTreeWidget()"));
  EXPECT_TRUE(zvtest::IsTrace(
    last.substr(end), "zv3DTreeWidget", tree, "void zv3DTreeWidget::SetEnabled(int enabling)"));
}

// ---- Life and death

TEST_F(TreeLife, DeletedWhileEnabledLeavesNothingBehind)
{
  this->ShowSquare();
  vtkSmartPointer<vtkCommand> command = this->Tree->EventCallbackCommand;
  this->Tree = nullptr;
  EXPECT_EQ(this->CountProps(), (std::array<int, 4>{ { 0, 0, 0, 0 } }));
  for (View view : zvtest::AllViews)
  {
    for (unsigned long event : zvEvents::Handle)
    {
      EXPECT_FALSE(this->Interactor(view)->HasObserver(event, command));
    }
    this->PointerIn(view).Drag(zvtest::Left, { { 100, 100 } }, { { 110, 100 } });
  }
}

TEST_F(TreeLife, DeletedWhileDisabledTakesItsLabelAndSelectionAlong)
{
  this->ShowSquare();
  this->Tree->SetEnabled(0);
  this->Tree->HighlightHandle(2);
  EXPECT_NE(this->CountProps(), (std::array<int, 4>{ { 0, 0, 0, 0 } }));
  this->Tree = nullptr;
  EXPECT_EQ(this->CountProps(), (std::array<int, 4>{ { 0, 0, 0, 0 } }));
}

TEST_F(TreeLife, OutlivesItsViewsInAnyOrder)
{
  using Drop = void (zvtest::Scene::*)();
  for (Drop first : { &zvtest::Scene::DropRenderers, &zvtest::Scene::DropInteractor })
  {
    for (View gone : zvtest::AllViews)
    {
      zvtest::SceneOptions options;
      options.Width = options.Height = 100;
      auto scene = std::make_unique<zvtest::Scene>(options);
      this->MakeTree();
      vtkRenderer* renderer = scene->Renderer();
      void (zv3DTreeWidget::*const setters[])(vtkRenderer*) = { &zv3DTreeWidget::SetRendererX,
        &zv3DTreeWidget::SetRendererY, &zv3DTreeWidget::SetRendererZ,
        &zv3DTreeWidget::SetRenderer3D };
      (this->Tree->*setters[gone])(renderer);
      this->ShowSquare(Y);
      zvtest::Mouse mouse = this->PointerIn(Y);
      mouse.Press(zvtest::Left, this->OnPoint(Y, 1));
      ((*scene).*first)();
      scene.reset();
      const int state = this->Tree->State;
      if (gone != Y)
      {
        EXPECT_EQ(state, zv3DTreeWidget::Moving);
      }
      this->TakeMessages();
      mouse.MoveTo({ { 100, 90 } });
      const bool isMoving = this->Tree->State == zv3DTreeWidget::Moving;
      EXPECT_EQ(this->TakeMessages().size(), isMoving ? 1u : 0u); // the view that is missing
      mouse.Release(zvtest::Left);
      mouse.WheelForward(Nothing);
      mouse.Press(zvtest::Middle, Nothing);
      this->ExpectNoMessage();
      mouse.Press(zvtest::Left, this->OnPoint(Y, 1));
      // The press is left to others, so that the second observer of this view answers it, too.
      EXPECT_EQ(this->TakeMessages().size(), gone == Y ? 0u : 2u);
      EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Outside);
      this->Tree->Clear();
      EXPECT_EQ(this->Tree->TreePoints->GetNumberOfPoints(), 0);
      this->Tree->SetEnabled(0);
      this->Tree = nullptr;
      this->ExpectNoMessage();
    }
  }
}

TEST_F(TreeLife, OutlivesAllItsViews)
{
  this->ShowSquare();
  this->PointerIn(Z).Press(zvtest::Left, this->OnPoint(Z, 2));
  for (auto& scene : this->Scenes)
  {
    scene.reset();
  }
  EXPECT_EQ(this->Tree->GetInteractor(), nullptr);
  EXPECT_EQ(this->Tree->GetCurrentRenderer(), nullptr);
  this->Tree->OnMouseMove();
  this->Tree->OnLeftButtonUp();
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Start);
  this->Tree->OnLeftButtonDown();
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Outside);
  this->Tree->OnMiddleButtonDown();
  this->Tree->OnMiddleButtonUp();
  this->Tree->OnRightButtonDown();
  this->Tree->OnRightButtonUp();
  this->Tree->OnMouseWheelForward();
  this->Tree->OnMouseWheelBackward();
  EXPECT_EQ(this->Tree->IsClicked(), 0);
  this->Tree->Clear();
  this->Tree->SetEnabled(0);
  this->ExpectNoMessage();
  this->Tree = nullptr;
}

TEST_F(TreeLife, SurvivesObserversThatDisableOrClearOrReleaseIt)
{
  using Action = std::function<void()>;
  const Action actions[] = { [this] { this->Tree->SetEnabled(0); }, [this] { this->Tree->Clear(); },
    [this] { this->Tree->SetInteractor(nullptr); }, [this] { this->Tree = nullptr; } };
  for (const Action& action : actions)
  {
    for (unsigned long event :
      { vtkCommand::EnableEvent, vtkCommand::DisableEvent, vtkCommand::StartInteractionEvent,
        vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent })
    {
      this->MakeTree();
      this->GrowSquare();
      zvtest::EventRecorder recorder;
      bool isDone = false;
      recorder.Watch(this->Tree, { event },
        [&action, &isDone](const zvtest::RecordedEvent&)
        {
          if (!isDone)
          {
            isDone = true;
            action();
          }
        });
      OpenTree* tree = this->Tree;
      tree->SetEnabled(1);
      this->PointerIn(Z).Drag(zvtest::Left, this->OnPoint(Z, 2), { { 90, 90 } });
      if (this->Tree)
      {
        tree->SetEnabled(0);
      }
      EXPECT_TRUE(isDone) << vtkCommand::GetStringFromEventId(event);
      this->Tree = nullptr;
      EXPECT_EQ(this->CountProps(), (std::array<int, 4>{ { 0, 0, 0, 0 } }));
    }
  }
}

TEST_F(TreeLife, SurvivesARenderThatReleasesIt)
{
  using Action = std::function<void()>;
  double from[3] = { 0, 0, 0 };
  double to[3] = { 1, 0, 0 };
  vtkNew<vtkPolyData> data;
  this->GrowSquare();
  this->Tree->GetTree(data);
  const Action actions[] = { [this] {
                              this->Add({ { 1, 1, 1 } });
                            },
    [this, &data] { this->Tree->LoadTree(data); }, [&, this] { this->Tree->MovePoint(from, to); },
    [&, this] { this->Tree->MoveLine(from, to); }, [this] { this->Tree->Clear(); },
    [this] { this->Tree->SetTextToActorPosition(1); }, [this] { this->Tree->SetEnabled(0); } };
  for (const Action& action : actions)
  {
    this->MakeTree();
    this->ShowSquare();
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Interactor(X), { vtkCommand::RenderEvent },
      [this](const zvtest::RecordedEvent&) { this->Tree = nullptr; });
    action();
    EXPECT_EQ(this->Tree, nullptr);
    EXPECT_EQ(this->CountProps(), (std::array<int, 4>{ { 0, 0, 0, 0 } }));
  }
}

TEST_F(TreeLife, MayBeReleasedInAHandlerThatAHostCalls)
{
  struct Row
  {
    const char* Name;
    unsigned long Event;
    std::function<void(OpenTree*)> Handler;
  };
  const Row rows[] = {
    { "left press", vtkCommand::StartInteractionEvent,
      [](OpenTree* tree) { tree->OnLeftButtonDown(); } },
    { "middle press", vtkCommand::StartInteractionEvent,
      [](OpenTree* tree) { tree->OnMiddleButtonDown(); } },
    { "move", vtkCommand::InteractionEvent, [](OpenTree* tree) { tree->OnMouseMove(); } },
    { "left release", vtkCommand::EndInteractionEvent,
      [](OpenTree* tree) { tree->OnLeftButtonUp(); } },
    { "middle release", vtkCommand::EndInteractionEvent,
      [](OpenTree* tree) { tree->OnMiddleButtonUp(); } },
  };
  for (const Row& row : rows)
  {
    for (bool byRender : { false, true })
    {
      SCOPED_TRACE(row.Name);
      this->MakeTree();
      this->ShowSquare();
      this->PointerIn(Z).MoveTo(this->OnPoint(Z, 2));
      this->Tree->State = zv3DTreeWidget::Moving;
      const vtkWeakPointer<OpenTree> alive = this->Tree.Get();
      const auto release = [this](const zvtest::RecordedEvent&) { this->Tree = nullptr; };
      zvtest::EventRecorder recorder;
      byRender ? recorder.Watch(this->Interactor(X), { vtkCommand::RenderEvent }, release)
               : recorder.Watch(this->Tree, { row.Event }, release);
      row.Handler(alive);
      EXPECT_EQ(alive, nullptr);
      EXPECT_EQ(this->CountProps(), (std::array<int, 4>{ { 0, 0, 0, 0 } }));
    }
  }
}

TEST_F(TreeLife, ClearedOrDeletedItLeavesViewsThatWereReplaced)
{
  this->ShowSquare();
  zvtest::Scene other;
  this->Tree->SetRendererX(other.Renderer());
  EXPECT_EQ(this->CountProps()[X], 5);
  this->Tree->Clear();
  EXPECT_EQ(this->CountProps()[X], 1); // the label, unseen
  this->Tree = nullptr;
  EXPECT_EQ(this->CountProps()[X], 0);
}

TEST_F(TreeLife, MovesToOtherViews)
{
  this->ShowSquare();
  zvtest::Scene other;
  this->Tree->SetEnabled(0);
  this->Tree->SetRendererX(other.Renderer());
  this->Tree->SetEnabled(1);
  EXPECT_TRUE(other.Renderer()->HasViewProp(this->Tree->PointsActor));
  EXPECT_EQ(this->WhereIs(this->Tree->PointsActor), "YZ3");
  this->Tree->SetCurrentRender(other.Renderer());
  this->Tree->SetInteractor(nullptr); // disables it
  EXPECT_FALSE(this->Tree->IsEnabled());
  EXPECT_EQ(this->WhereIs(this->Tree->PointsActor), "");
  this->Tree = nullptr;
  EXPECT_EQ(other.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
}
