// Who owns the tools of a slice view, and what becomes of view and tools when they are deleted or
// unhooked in the middle of something.

#include "zvImageViewerMouseFixture.h"

#include "vtkWeakPointer.h"

#include <functional>

using zvtest::Left;
using zvtest::Middle;
using zvtest::Right;
using zvtest::Shift;

namespace
{
// A view with one tool of each kind, drawn, attached and all apart from each other.
class ImageViewerTools : public ImageViewerMouse
{
protected:
  ImageViewerTools()
  {
    this->Scene.Window()->SetSize(200, 200);
    this->LookAlongNormal(2);
    this->AddTools();
  }

  void AddTools()
  {
    OpenViewer* v = this->Viewer;
    v->AddRulerWidget(nullptr);
    v->AddRulerMode = false;
    v->EnableRulerWidget();
    v->CurrentRulerWidget->SetPoint1(RulerEnd[0], RulerEnd[1], 20.0);
    v->CurrentRulerWidget->SetPoint2(15.0, 2.0, 20.0);
    v->AddAreaWidget(nullptr);
    v->AddAreaMode = false;
    v->CurrentAreaWidget->InitializeHandles(this->Corners(AreaCorner));
    v->CurrentAreaWidget->SetClosed(1);
    v->CurrentAreaWidget->SetEnabled(1);
    v->AddLassoWidget(nullptr);
    v->CurrentLassoWidget->InitializeHandles(this->Corners(LassoCorner));
    v->CurrentLassoWidget->SetClosed(1);
    v->CurrentLassoWidget->SetEnabled(1);
    double color[3] = { 0.0, 1.0, 0.0 };
    v->CurrentTextNoteWidget = nullptr;
    v->AddTextNoteWidget("note", 2, color, 1.5);
    v->CurrentTextNoteWidget->SetLocation(NotePlace[0] - 1.0, NotePlace[1] - 0.5, 20.0);
    this->Scene.Render();
  }

  vtkSmartPointer<vtkPoints> Corners(const double first[2])
  {
    auto points = vtkSmartPointer<vtkPoints>::New();
    points->InsertNextPoint(first[0], first[1], 20.0);
    points->InsertNextPoint(first[0] + 3.0, first[1], 20.0);
    points->InsertNextPoint(first[0], first[1] + 3.0, 20.0);
    return points;
  }

  // Another view with its tools, in the same window, after the last is gone.
  void StartAgain()
  {
    this->Scene.Window()->RemoveRenderer(this->Scene.Renderer()); // or it would be there twice
    this->Scene.Window()->AddRenderer(this->Scene.Renderer());
    this->Viewer = vtkSmartPointer<OpenViewer>::Take(OpenViewer::New());
    this->Show(this->Cube(20), 2);
    this->AddTools();
  }

  template <typename Tool>
  Tool* Only(vtkCollection* tools)
  {
    return Tool::SafeDownCast(tools->GetItemAsObject(0));
  }
  zvRulerWidget* TheRuler() { return this->Only<zvRulerWidget>(this->Viewer->RulerWidgets); }
  zvAreaWidget* TheArea() { return this->Only<zvAreaWidget>(this->Viewer->AreaWidgets); }
  zvLassoWidget* TheLasso() { return this->Only<zvLassoWidget>(this->Viewer->LassoWidgets); }
  zvTextNoteWidget* TheNote()
  {
    return this->Only<zvTextNoteWidget>(this->Viewer->TextNoteWidgets);
  }
  std::array<vtkInteractorObserver*, 4> AllTools()
  {
    return { { this->TheRuler(), this->TheArea(), this->TheLasso(), this->TheNote() } };
  }

  // Where each of them is grabbed.
  std::array<zvtest::Display, 4> Grips() const
  {
    return { { this->On(RulerEnd[0], RulerEnd[1]), this->On(AreaCorner[0], AreaCorner[1]),
      this->On(LassoCorner[0], LassoCorner[1]), this->On(NotePlace[0], NotePlace[1]) } };
  }

  // Everything a user does, to whatever is left.
  void UseEverything()
  {
    for (const zvtest::Display& grip : this->Grips())
    {
      this->Mouse.Drag(Left, grip, this->On(12.0, 12.0));
    }
    this->Mouse.Drag(Left, this->OffTheLines(), this->On(7.0, 7.0));
    this->Mouse.Drag(Middle, this->OffTheLines(), this->On(7.0, 7.0));
    this->Mouse.Drag(Right, this->OffTheLines(), this->On(7.0, 7.0));
    this->Mouse.WheelForward(this->OffTheLines());
    this->Scene.Render();
  }

  int PropCount() const { return this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(); }

  static constexpr double RulerEnd[2] = { 3.0, 3.0 };
  static constexpr double AreaCorner[2] = { 13.0, 13.0 };
  static constexpr double LassoCorner[2] = { 3.0, 13.0 };
  static constexpr double NotePlace[2] = { 15.0, 6.0 };
};
constexpr double ImageViewerTools::RulerEnd[2];
constexpr double ImageViewerTools::AreaCorner[2];
constexpr double ImageViewerTools::LassoCorner[2];
constexpr double ImageViewerTools::NotePlace[2];
}

//------------------------------------------------------------------------------
// Ownership

TEST_F(ImageViewerTools, EachIsHeldByTheViewAndByItsList)
{
  for (vtkInteractorObserver* tool : this->AllTools())
  {
    EXPECT_EQ(tool->GetReferenceCount(), 2) << tool->GetClassName();
    EXPECT_EQ(tool->GetInteractor(), this->Scene.Interactor()) << tool->GetClassName();
    EXPECT_EQ(tool->GetEnabled(), 1) << tool->GetClassName();
  }
}

TEST_F(ImageViewerTools, GoWithTheViewAndTakeTheirPropsAlong)
{
  std::vector<vtkWeakPointer<vtkInteractorObserver>> tools;
  for (vtkInteractorObserver* tool : this->AllTools())
  {
    tools.emplace_back(tool);
  }
  this->Release();
  for (const auto& tool : tools)
  {
    EXPECT_EQ(tool, nullptr);
  }
  EXPECT_EQ(this->PropCount(), 0);
  this->UseEverything();
}

TEST_F(ImageViewerTools, OnesThatTheHostHoldsOutliveTheViewDisabledButForTheNote)
{
  std::vector<vtkSmartPointer<vtkInteractorObserver>> tools;
  for (vtkInteractorObserver* tool : this->AllTools())
  {
    tools.emplace_back(tool);
  }
  this->Release();
  for (const auto& tool : tools)
  {
    EXPECT_EQ(tool->GetReferenceCount(), 1) << tool->GetClassName();
  }
  EXPECT_EQ(tools[0]->GetEnabled(), 0);
  EXPECT_EQ(tools[1]->GetEnabled(), 0);
  EXPECT_EQ(tools[2]->GetEnabled(), 0);
  EXPECT_EQ(tools[3]->GetEnabled(), 1) << "notes are not switched with their view";
  this->UseEverything();
  tools.clear();
  EXPECT_EQ(this->PropCount(), 0);
}

TEST_F(ImageViewerTools, SwitchWithTheViewButForTheNote)
{
  this->Viewer->SetEnabled(0);
  EXPECT_EQ(this->TheRuler()->GetEnabled(), 0);
  EXPECT_EQ(this->TheArea()->GetEnabled(), 0);
  EXPECT_EQ(this->TheLasso()->GetEnabled(), 0);
  EXPECT_EQ(this->TheNote()->GetEnabled(), 1);
  this->Viewer->SetEnabled(1);
  EXPECT_EQ(this->TheRuler()->GetEnabled(), 1);
  EXPECT_EQ(this->TheArea()->GetEnabled(), 1);
  EXPECT_EQ(this->TheLasso()->GetEnabled(), 1);
}

TEST_F(ImageViewerTools, DeletedWhileDragged)
{
  const std::function<void()> deletions[] = { [this] { this->Viewer->DeleteWidget(); },
    [this] { this->Viewer->DeleteWidget(); }, [this] { this->Viewer->DeleteWidget(); },
    [this] { this->Viewer->DeleteAllTextNoteWidgets(); } };
  for (int kind = 0; kind < 4; ++kind)
  {
    const vtkWeakPointer<vtkInteractorObserver> tool = this->AllTools()[kind];
    this->Viewer->CurrentRulerWidget = nullptr; // or contours are not asked
    this->Mouse.Press(Left, this->Grips()[kind]);
    EXPECT_EQ(this->Viewer->State, kind == 2 ? StatePushing : StateCursoring)
      << "a lasso is not asked, so its press moves the cross, too";
    this->Mouse.MoveTo(this->On(12.0, 12.0));
    deletions[kind]();
    EXPECT_EQ(tool, nullptr) << kind;
    this->Mouse.MoveTo(this->On(10.0, 11.0));
    this->Mouse.Release(Left);
    this->UseEverything();
    this->Release();
    this->StartAgain();
  }
}

TEST_F(ImageViewerTools, ViewDeletedWhileTheyAreDragged)
{
  for (int kind = 0; kind < 4; ++kind)
  {
    this->Mouse.Press(Left, this->Grips()[kind]);
    this->Mouse.MoveTo(this->On(12.0, 12.0));
    this->Release();
    this->Mouse.MoveTo(this->On(10.0, 11.0));
    this->Mouse.Release(Left);
    EXPECT_EQ(this->PropCount(), 0);
    this->StartAgain();
  }
}

// The host may take them out of its own hands in any order, with the current ones still set.
TEST_F(ImageViewerTools, DeletedInAnyOrder)
{
  const std::vector<std::function<void()>> deletions = { [this] { this->Viewer->DeleteWidget(); },
    [this] { this->Viewer->DeleteAllTextNoteWidgets(); },
    [this]
    {
      if (this->Viewer->GetInteractor())
      {
        this->Viewer->SetEnabled(0);
      }
    },
    [this] { this->Viewer->SetInteractor(nullptr); } };
  std::vector<int> order = { 0, 1, 2, 3 };
  do
  {
    if (this->Viewer->RulerWidgets->GetNumberOfItems() == 0)
    {
      this->StartAgain();
    }
    for (const int next : order)
    {
      deletions[next]();
    }
    this->Release();
    EXPECT_EQ(this->PropCount(), 0);
    this->Viewer = vtkSmartPointer<OpenViewer>::Take(OpenViewer::New());
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(ImageViewerTools, StaleCurrentToolsAreNone)
{
  OpenViewer* v = this->Viewer;
  this->Press(this->Grips()[3]);
  ASSERT_EQ(v->CurrentTextNoteWidget, this->TheNote());
  this->Mouse.Release(Left);
  v->DeleteAllTextNoteWidgets();
  EXPECT_EQ(v->GetCurrentSelectedText(), nullptr);
  EXPECT_EQ(v->GetCurrentTextColor(), nullptr);
  EXPECT_EQ(v->GetCurrentTextSize(), 0);
  v->DeleteCurrentTextNoteWidget();
  this->ExpectGenericWarning("zvImageViewerWidget", "there is no current text note");
  double color[3] = { 1.0, 0.0, 0.0 };
  v->AddTextNoteWidget("another", 2, color, 1.0);
  EXPECT_EQ(v->TextNoteWidgets->GetNumberOfItems(), 1);
  EXPECT_STREQ(v->GetCurrentSelectedText(), "another");

  // One that only the current pointer knew: its flag takes the press, and nothing else happens.
  v->DeleteWidget();
  v->AddRulerMode = true;
  this->Click(this->OffTheLines());
  EXPECT_FALSE(v->AddRulerMode);
  v->EnableRulerWidget();
  v->EnableAreaWidget();
  EXPECT_TRUE(v->AddAreaMode);
  v->EnableLassoWidget(true);
  this->ExpectGenericWarning("zvImageViewerWidget", "there is no current lasso");
}

TEST_F(ImageViewerTools, ATextSizeThatIsNoSmallNumberIsToldAsOne)
{
  double color[3] = { 1.0, 0.0, 0.0 };
  for (const auto& [size, told] :
    { std::pair{ 2.9, 2 }, std::pair{ 1e300, VTK_INT_MAX }, std::pair{ -1e300, VTK_INT_MIN } })
  {
    this->Viewer->AddTextNoteWidget("note", 2, color, size);
    EXPECT_EQ(this->Viewer->GetCurrentTextSize(), told);
  }
}

TEST_F(ImageViewerTools, TheContourThatIsDrawnIsEnabledOnceMoreBeforeItGoesByDesign)
{
  this->Viewer->DeleteWidget();
  this->Viewer->AddAreaWidget(nullptr);
  zvtest::EventRecorder events;
  events.Watch(
    this->Viewer->CurrentAreaWidget, { vtkCommand::EnableEvent, vtkCommand::DeleteEvent });
  this->Viewer->DeleteWidget();
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "EnableEvent", "DeleteEvent" }));
}

//------------------------------------------------------------------------------
// Observers that do what they like

namespace
{
// What the view is asked to do, in one call or by one event after the other.
struct Operation
{
  const char* Name;
  std::function<void()> Run;
  std::function<void()> Prepare = [] {}; // what no observer sees
};

class ImageViewerObservers : public ImageViewerTools
{
protected:
  // Run an operation once for each thing that an observer may do, at its first and second
  // render and at the first and second event that the view or a tool invokes.
  void TryAll(const std::vector<Operation>& operations)
  {
    for (const Operation& operation : operations)
    {
      for (const Operation& action : this->Actions)
      {
        for (int at = 0; at < Moments; ++at)
        {
          SCOPED_TRACE(std::string(operation.Name) + ", while an observer " + action.Name +
            ", moment " + std::to_string(at));
          this->Try(operation, action, at);
          ASSERT_FALSE(this->HasFailure());
        }
      }
    }
  }

  void Try(const Operation& operation, const Operation& action, int at)
  {
    this->Release();
    this->StartAgain();
    operation.Prepare();
    int left = at;
    bool isDone = false;
    zvtest::EventRecorder recorder;
    const auto act = [&](const zvtest::RecordedEvent&)
    {
      if (!isDone && this->Viewer && left-- == 0)
      {
        isDone = true;
        action.Run();
      }
    };
    if (at < Renders)
    {
      recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent }, act);
    }
    else
    {
      left = at - Renders;
      recorder.Watch(this->Viewer,
        { vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
          vtkCommand::MouseMoveEvent, vtkCommand::StartInteractionEvent,
          vtkCommand::EndInteractionEvent, vtkCommand::InteractionEvent,
          vtkCommand::StartWindowLevelEvent, vtkCommand::WindowLevelEvent,
          vtkCommand::EndWindowLevelEvent, vtkCommand::EnableEvent, vtkCommand::DisableEvent },
        act);
      for (vtkInteractorObserver* tool : this->AllTools())
      {
        recorder.Watch(tool,
          { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
            vtkCommand::EndInteractionEvent, vtkCommand::EnableEvent, vtkCommand::DisableEvent },
          act);
      }
    }
    operation.Run();
    this->Release();
    EXPECT_EQ(this->PropCount(), 0);
    // One that was to be enabled when its view had lost the interactor says so, nothing else.
    for (const std::string& message : this->TakeMessages())
    {
      EXPECT_NE(message.find("The interactor must be set prior to enabling/disabling widget"),
        std::string::npos)
        << message;
    }
  }

  // A drag from here to there, as one operation.
  std::function<void()> Drag(zvtest::Button button, const zvtest::Display& from, int modifiers = 0)
  {
    return [=] { this->Mouse.Drag(button, from, this->On(7.0, 7.0), modifiers, 2); };
  }

  zvtest::Scene OtherScene;
  static constexpr int Renders = 2; // that an observer may act at
  static constexpr int Moments = 4; // these, and as many events of the view or a tool

  const std::vector<Operation> Actions = {
    { "disables the view", [this] { this->Viewer->SetEnabled(0); } },
    { "unhooks the view", [this] { this->Viewer->SetInteractor(nullptr); } },
    { "takes the image away", [this] { this->Viewer->SetInput(nullptr); } },
    { "takes the renderer away",
      [this] { this->Scene.Window()->RemoveRenderer(this->Scene.Renderer()); } },
    { "deletes the tools", [this] { this->Viewer->DeleteWidget(); } },
    { "deletes the notes", [this] { this->Viewer->DeleteAllTextNoteWidgets(); } },
    { "deletes the view", [this] { this->Release(); } },
  };
};
}

TEST_F(ImageViewerObservers, SurviveADragOfTheView)
{
  this->TryAll({
    { "the cross is dragged", this->Drag(Left, this->OffTheLines()) },
    { "a line is turned", this->Drag(Left, this->OnLine1()) },
    { "a line is dragged with Shift", this->Drag(Left, this->OnLine1(), Shift) },
    { "voxels are painted",
      [=]
      {
        this->Viewer->SetPaintMode(true);
        this->Drag(Left, this->OffTheLines())();
      } },
  });
}

TEST_F(ImageViewerObservers, SurviveADragOfATool)
{
  this->TryAll({
    { "a ruler is dragged", this->Drag(Left, this->Grips()[0]) },
    { "a contour is dragged", this->Drag(Left, this->Grips()[1]) },
    { "a lasso is dragged", this->Drag(Left, this->Grips()[2]) },
    { "a note is dragged", this->Drag(Left, this->Grips()[3]) },
    { "all are dragged with the middle button", this->Drag(Middle, this->Grips()[0]) },
    { "the wheel turns", [=] { this->Mouse.WheelForward(this->OffTheLines()); } },
  });
}

TEST_F(ImageViewerObservers, SurviveTheRightButton)
{
  for (const int rightAction : { 0, 1, 2 })
  {
    this->TryAll({ { "the right button is dragged",
      [=]
      {
        this->Viewer->SetRightButtonAction(rightAction);
        this->Drag(Right, this->OffTheLines())();
      } } });
  }
}

TEST_F(ImageViewerObservers, SurviveDrawing)
{
  this->TryAll({
    { "a ruler is placed",
      [=]
      {
        this->Viewer->AddRulerWidget(nullptr);
        this->Click(this->OffTheLines());
      } },
    { "a contour grows",
      [=]
      {
        this->Viewer->AddAreaWidget(nullptr);
        this->Click(this->OffTheLines());
      } },
    { "a lasso grows",
      [=]
      {
        this->Viewer->SetAddLassoMode(true);
        this->Click(this->OffTheLines());
      } },
    { "a point is recorded",
      [=]
      {
        this->Viewer->SetPickPointModeA(true);
        this->Click(this->OffTheLines());
      } },
  });
}

TEST_F(ImageViewerObservers, SurviveWhatTheHostAsksOfTheTools)
{
  static double color[3] = { 1.0, 1.0, 0.0 };
  this->TryAll({
    { "a note is added",
      [=]
      {
        this->Viewer->CurrentTextNoteWidget = nullptr;
        this->Viewer->AddTextNoteWidget("new", 2, color, 1.0);
      } },
    { "the current note is deleted",
      [=]
      {
        this->Viewer->CurrentTextNoteWidget = this->TheNote();
        this->Viewer->DeleteCurrentTextNoteWidget();
      } },
    { "all notes are deleted", [=] { this->Viewer->DeleteAllTextNoteWidgets(); } },
    { "all tools are deleted", [=] { this->Viewer->DeleteWidget(); } },
    { "all tools but a contour that is drawn are deleted",
      [=]
      {
        this->Viewer->AddAreaWidget(nullptr);
        this->Viewer->DeleteWidget();
      } },
    { "the current ruler is enabled in another view", [=] { this->Viewer->EnableRulerWidget(); },
      [=]
      {
        this->Viewer->CurrentRulerWidget = this->TheRuler();
        this->TheRuler()->SetInteractor(this->OtherScene.Interactor());
        this->TheRuler()->SetEnabled(1);
      } },
    { "the current lasso is unhooked",
      [=]
      {
        this->Viewer->CurrentLassoWidget = this->TheLasso();
        this->Viewer->EnableLassoWidget(false);
      } },
  });
}

TEST_F(ImageViewerObservers, SurviveWhatTheHostAsksOfTheView)
{
  vtkSmartPointer<vtkImageData> other = zvtest::MakeConstantVolume(3.0, this->Cube(12));
  this->TryAll({
    { "the view is disabled", [=] { this->Viewer->SetEnabled(0); } },
    { "the view is enabled",
      [=]
      {
        OpenViewer* viewer = this->Viewer;
        const vtkSmartPointer<OpenViewer> hold = viewer;
        viewer->SetEnabled(0);
        viewer->SetEnabled(1);
      } },
    { "another image is shown", [=] { this->Viewer->SetInput(other); } },
    { "a fill is taken back", [=] { this->Viewer->UndoFill(); } },
    { "the lines are hidden", [=] { this->Viewer->SetLinesEnabled(0); } },
    { "the view is unhooked", [=] { this->Viewer->SetInteractor(nullptr); } },
    { "window and level are set", [=] { this->Viewer->SetWindowLevel(5.0, 2.0, 0); } },
  });
}
