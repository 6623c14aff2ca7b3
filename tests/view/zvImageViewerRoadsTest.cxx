// The roads of a click from the mouse to the picture: real Qt events into a Qt view, through the
// interactor to the slice view and its tools, and what is seen at the end.

#include "zvAreaWidget.h"
#include "zvImageViewerWidget.h"
#include "zvLassoWidget.h"
#include "zvOpenViewer.h"
#include "zvQVTKWidget.h"
#include "zvQtTest.h"
#include "zvRulerWidget.h"
#include "zvTestKit.h"
#include "zvTextNoteWidget.h"

#include "vtkActor.h"
#include "vtkCamera.h"
#include "vtkCollection.h"
#include "vtkFollower.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkImageData.h"
#include "vtkImageReslice.h"
#include "vtkInteractorObserver.h"
#include "vtkInteractorStyleUser.h"
#include "vtkLineSource.h"
#include "vtkLookupTable.h"
#include "vtkNew.h"
#include "vtkPlaneSource.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"
#include "vtkVectorText.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace
{
using Log = std::vector<std::string>;
using zvtest::Color;
using zvtest::Display;
using zvtest::World;

constexpr int StateStart = 0;
constexpr int StateCursoring = 1;
constexpr int StateWindowLevelling = 2;
constexpr int StatePushing = 3;
constexpr int StateRotating = 5;

const Color Red{ 255, 0, 0 };
const Color Green{ 0, 255, 0 };

template <typename Tool>
Tool* Last(vtkCollection* tools)
{
  return Tool::SafeDownCast(tools->GetItemAsObject(tools->GetNumberOfItems() - 1));
}

// What a prop of a view is made of, seen from outside.
template <typename Source>
std::vector<std::pair<vtkActor*, Source*>> ShownBy(vtkRenderer* renderer)
{
  std::vector<std::pair<vtkActor*, Source*>> shown;
  vtkPropCollection* props = renderer->GetViewProps();
  for (int i = 0; i < props->GetNumberOfItems(); ++i)
  {
    auto* actor = vtkActor::SafeDownCast(props->GetItemAsObject(i));
    vtkMapper* mapper = actor ? actor->GetMapper() : nullptr;
    if (mapper && mapper->GetNumberOfInputConnections(0) > 0)
    {
      if (auto* source = Source::SafeDownCast(mapper->GetInputAlgorithm(0, 0)))
      {
        shown.emplace_back(actor, source);
      }
    }
  }
  return shown;
}

// A Qt view on a slice of a volume of 20 unit voxels an edge: 100 on the left, 300 on the right,
// shown from black at 0 to white at 1000. The slice lies at z = 19, the cross at (9.5, 9.5).
class Roads : public zvtest::QuietTest
{
protected:
  void SetUp() override
  {
    this->View.resize(400, 400);
    this->View.renderWindow()->AddRenderer(this->Renderer);
    this->View.interactor()->SetInteractorStyle(vtkNew<vtkInteractorStyleUser>());
    this->View.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&this->View));
    auto* window = vtkGenericOpenGLRenderWindow::SafeDownCast(this->View.renderWindow());
    ASSERT_TRUE(QTest::qWaitFor([window] { return window->GetReadyForRendering(); }));

    zvtest::VolumeOptions options;
    options.Dimensions = { { 20, 20, 20 } };
    this->Volume =
      zvtest::MakeVolume(options, [](int i, int, int, int) { return i < 10 ? 100.0 : 300.0; });
    this->Viewer->SetInteractor(this->View.interactor());
    this->Viewer->SetInput(this->Volume);
    this->Viewer->SetWindowLevel(1000.0, 500.0, 0);
    this->Viewer->SetPlaneOrientation(2);
    this->Viewer->UpdatePlane();
    this->Viewer->SetEnabled(1);
    vtkCamera* camera = this->Renderer->GetActiveCamera();
    camera->ParallelProjectionOn();
    camera->SetFocalPoint(9.5, 9.5, 19.0);
    camera->SetPosition(9.5, 9.5, 100.0);
    camera->SetViewUp(0.0, 1.0, 0.0);
    camera->SetParallelScale(11.0);
    this->Renderer->ResetCameraClippingRange();
    this->View.interactor()->Render();
    this->Listen();
    this->View.setVTKMoveMode(true);
  }

  void TearDown() override
  {
    this->Viewer = nullptr;
    EXPECT_EQ(this->Renderer->GetViewProps()->GetNumberOfItems(), 0);
    QuietTest::TearDown();
  }

  // What happens, in its order: at the interactor, in the slice view, in Qt.
  void Listen()
  {
    const auto note = [this](const char* who)
    {
      return [this, who](const zvtest::RecordedEvent& event)
      { this->Happened.push_back(who + event.Name); };
    };
    this->Events.Watch(this->View.interactor(),
      { vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
        vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
        vtkCommand::MouseMoveEvent },
      note("interactor: "), 10.0f);
    this->Events.Watch(this->Viewer,
      { vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
        vtkCommand::MouseMoveEvent, vtkCommand::StartInteractionEvent,
        vtkCommand::EndInteractionEvent, vtkCommand::StartWindowLevelEvent,
        vtkCommand::WindowLevelEvent, vtkCommand::EndWindowLevelEvent },
      note("viewer: "));
    this->Renders.Watch(this->View.interactor(), { vtkCommand::RenderEvent });
    QObject::connect(&this->View, &zvQVTKWidget::mouseEvent,
      [this](QMouseEvent*) { this->Happened.emplace_back("Qt: mouseEvent"); });
  }

  // What happened since the last call.
  Log Take() { return std::exchange(this->Happened, {}); }
  int TakeRenders()
  {
    const auto count = static_cast<int>(this->Renders.Events().size());
    this->Renders.Clear();
    return count;
  }

  Display At(double x, double y) const
  {
    double display[3];
    vtkInteractorObserver::ComputeWorldToDisplay(this->Renderer, x, y, 19.0, display);
    return { { static_cast<int>(std::lround(display[0])),
      static_cast<int>(std::lround(display[1])) } };
  }

  void Send(QEvent::Type type, double x, double y, Qt::MouseButton button,
    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    const Display at = this->At(x, y);
    const QPoint place(at[0], this->View.height() - 1 - at[1]);
    if (type == QEvent::MouseButtonPress)
    {
      this->Held = button;
    }
    else if (type == QEvent::MouseButtonRelease)
    {
      this->Held = Qt::NoButton;
    }
    QMouseEvent event(
      type, place, type == QEvent::MouseMove ? Qt::NoButton : button, this->Held, modifiers);
    QApplication::sendEvent(&this->View, &event);
  }
  void Press(double x, double y, Qt::MouseButton button = Qt::LeftButton,
    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    this->Send(QEvent::MouseButtonPress, x, y, button, modifiers);
  }
  void Move(double x, double y, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    this->Send(QEvent::MouseMove, x, y, Qt::NoButton, modifiers);
  }
  void Release(double x, double y, Qt::MouseButton button = Qt::LeftButton,
    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    this->Send(QEvent::MouseButtonRelease, x, y, button, modifiers);
  }
  void Click(double x, double y)
  {
    this->Move(x, y);
    this->Press(x, y);
    this->Release(x, y);
  }

  // What is on the screen, without another render; written where somebody wants to look at it.
  zvtest::Picture Look(const std::string& name = "")
  {
    zvtest::Picture picture(this->View.renderWindow());
    if (const char* folder = std::getenv("ZV_ROADS_PICTURES"); folder && !name.empty())
    {
      picture.WritePng(std::string(folder) + "/" + name + ".png");
    }
    return picture;
  }

  // A thin line may lie between two rows of pixels, and is dimmer then.
  bool IsSeen(const zvtest::Picture& picture, const Color& color, double x, double y) const
  {
    return picture.HasNear(color, this->At(x, y), 2, 110);
  }

  // How bright the slice is here.
  int BrightnessAt(const zvtest::Picture& picture, double x, double y) const
  {
    return picture.At(this->At(x, y)).Red;
  }

  // How bright a voxel value is shown.
  int BrightnessOf(double value) const
  {
    return this->Viewer->GetLookupTable()->MapValue(value)[0];
  }

  ::testing::AssertionResult CrossIs(int first, int second)
  {
    int index[2];
    this->Viewer->GetCrossIndex(index);
    return index[0] == first && index[1] == second
      ? ::testing::AssertionSuccess()
      : ::testing::AssertionFailure() << "the cross is at " << index[0] << ", " << index[1];
  }

  ::testing::AssertionResult ClickedIs(const World& expected)
  {
    const double* at = this->Viewer->GetPointClicked();
    return std::abs(at[0] - expected[0]) < 0.1 && std::abs(at[1] - expected[1]) < 0.1 &&
        std::abs(at[2] - expected[2]) < 0.1
      ? ::testing::AssertionSuccess()
      : ::testing::AssertionFailure()
        << "(" << at[0] << ", " << at[1] << ", " << at[2] << ") was clicked";
  }

  zvQVTKWidget View;
  vtkNew<vtkRenderer> Renderer;
  vtkSmartPointer<vtkImageData> Volume;
  vtkSmartPointer<OpenViewer> Viewer = vtkSmartPointer<OpenViewer>::Take(OpenViewer::New());
  Log Happened;
  zvtest::EventRecorder Events;
  zvtest::EventRecorder Renders;
  Qt::MouseButton Held = Qt::NoButton;
};

const Log PressReachesTheView{ "interactor: LeftButtonPressEvent", "viewer: LeftButtonPressEvent",
  "viewer: StartInteractionEvent", "Qt: mouseEvent" };
const Log PressEndsInTheView{ "interactor: LeftButtonPressEvent", "Qt: mouseEvent" };
const Log MoveReachesTheView{ "interactor: MouseMoveEvent", "viewer: MouseMoveEvent",
  "Qt: mouseEvent" };
const Log ReleaseReachesTheView{ "interactor: LeftButtonReleaseEvent",
  "viewer: LeftButtonReleaseEvent", "Qt: mouseEvent" };
}

//------------------------------------------------------------------------------

TEST_F(Roads, FromAPressToTheLabelOfARuler)
{
  // The host asks for a ruler; the left button stays in Qt until the host lets it through.
  this->View.setVTKMoveMode(false);
  this->Viewer->AddLassoWidget(nullptr);
  this->Viewer->AddRulerWidget(nullptr);
  ASSERT_EQ(this->Viewer->RulerWidgets->GetNumberOfItems(), 1);
  auto* ruler = Last<zvRulerWidget>(this->Viewer->RulerWidgets);
  EXPECT_TRUE(this->Viewer->AddRulerMode);
  this->Press(4.0, 15.0);
  this->Release(4.0, 15.0);
  EXPECT_EQ(this->Take(), (Log{ "Qt: mouseEvent", "Qt: mouseEvent" }));
  EXPECT_TRUE(this->Viewer->AddRulerMode);

  // Let through, it goes to the toolkit first and to the host then.
  this->View.setVTKMoveMode(true);
  this->TakeRenders();
  this->Press(4.0, 15.0);
  EXPECT_EQ(this->Take(), PressEndsInTheView);
  EXPECT_EQ(this->TakeRenders(), 1);

  // The press places both ends one millimetre before the slice and lets the mode go.
  EXPECT_TRUE(this->Viewer->LeftButtonHeld);
  EXPECT_FALSE(this->Viewer->AddRulerMode);
  EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
  EXPECT_TRUE(this->ClickedIs({ { 4.0, 15.0, 20.0 } }));
  vtkNew<vtkPolyData> line;
  ruler->GetPolyData(line);
  double bounds[6];
  line->GetBounds(bounds);
  EXPECT_NEAR(bounds[0], 4.0, 0.1);
  EXPECT_EQ(bounds[0], bounds[1]);
  EXPECT_EQ(bounds[2], bounds[3]);
  EXPECT_NEAR(bounds[4], 20.0, 1e-6);
  EXPECT_EQ(bounds[4], bounds[5]);
  EXPECT_TRUE(this->CrossIs(9, 9));
  EXPECT_EQ(ruler->GetEnabled(), 0);
  this->Release(4.0, 15.0);
  EXPECT_EQ(this->Take(), ReleaseReachesTheView);

  // From now on the ruler takes part in the events.
  this->Viewer->EnableRulerWidget();
  EXPECT_EQ(ruler->GetInteractor(), this->View.interactor());
  EXPECT_EQ(ruler->GetEnabled(), 1);
  EXPECT_EQ(Last<zvLassoWidget>(this->Viewer->LassoWidgets)->GetState(), zvLassoWidget::Locked);

  // A press on an end drags it; the view moves nothing of its own.
  zvtest::EventRecorder told;
  told.Watch(ruler,
    { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
      vtkCommand::EndInteractionEvent });
  this->Press(4.0, 15.0);
  EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
  this->Take();
  this->TakeRenders();
  this->Move(10.0, 15.0);
  EXPECT_EQ(this->Take(), MoveReachesTheView);
  EXPECT_EQ(this->TakeRenders(), 3) << "the label, the view, the ruler's own drag";
  this->Move(14.0, 15.0);
  this->Release(14.0, 15.0);
  EXPECT_EQ(told.Names(),
    (Log{
      "StartInteractionEvent", "InteractionEvent", "InteractionEvent", "EndInteractionEvent" }));
  EXPECT_EQ(this->Viewer->GetState(), StateStart);
  EXPECT_TRUE(this->CrossIs(9, 9));

  // Its length is seen in millimetres beside its second end, and the line from end to end.
  ruler->GetPolyData(line);
  line->GetBounds(bounds);
  const double length = bounds[1] - bounds[0];
  EXPECT_NEAR(length, 10.0, 0.2);
  const auto labels = ShownBy<vtkVectorText>(this->Renderer);
  ASSERT_EQ(labels.size(), 1u);
  char expected[100];
  std::snprintf(expected, sizeof(expected), "%10.2lf mm", length);
  EXPECT_STREQ(labels[0].second->GetText(), expected);
  const zvtest::Picture picture = this->Look("ruler");
  EXPECT_TRUE(this->IsSeen(picture, Red, 6.0, 15.0));
  EXPECT_TRUE(this->IsSeen(picture, Red, 12.0, 15.0));
  EXPECT_FALSE(this->IsSeen(picture, Red, 12.0, 13.0));
  const double* place = labels[0].first->GetPosition();
  const double* box = labels[0].first->GetBounds();
  EXPECT_NEAR(std::abs(place[0] - 9.0), 5.0, 0.2) << "one of the ends";
  const zvtest::Region label{ this->At(box[0], box[2]), this->At(box[1], box[3]) };
  EXPECT_GT(picture.Count(Red, label, 60), 10) << "the letters";
}

TEST_F(Roads, FromClicksToTheLabelOfAnArea)
{
  this->Viewer->AddAreaWidget(nullptr);
  auto* area = Last<zvAreaWidget>(this->Viewer->AreaWidgets);
  for (const auto& corner :
    { std::array<double, 2>{ { 3, 12 } }, { { 3, 17 } }, { { 8, 17 } }, { { 8, 12 } } })
  {
    this->Move(corner[0], corner[1]);
    this->Take();
    this->Press(corner[0], corner[1]);
    EXPECT_EQ(this->Take(), PressEndsInTheView);
    EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
    this->Release(corner[0], corner[1]);
    EXPECT_EQ(this->Viewer->GetState(), StateStart);
  }
  EXPECT_EQ(area->GetNumberOfHandles(), 4);
  EXPECT_EQ(area->IsClosed(), 0);
  EXPECT_TRUE(ShownBy<vtkVectorText>(this->Renderer).empty());

  this->Click(3.0, 12.0); // on the first handle
  EXPECT_EQ(area->GetNumberOfHandles(), 4);
  EXPECT_EQ(area->IsClosed(), 1);
  EXPECT_EQ(area->GetEnabled(), 1);
  this->Viewer->AddAreaMode = false;
  const double closed = area->GetArea();
  EXPECT_GT(closed, 25.0);
  EXPECT_LT(closed, 45.0);
  const auto labels = ShownBy<vtkVectorText>(this->Renderer);
  ASSERT_EQ(labels.size(), 1u);
  char expected[100];
  std::snprintf(expected, sizeof(expected), "%10.2lf mm^2", closed);
  EXPECT_STREQ(labels[0].second->GetText(), expected);
  const zvtest::Picture before = this->Look("area");
  const Color yellow{ 255, 255, 0 };
  const double* box = labels[0].first->GetBounds();
  EXPECT_GT(before.Count(yellow, { this->At(box[0], box[2]), this->At(box[1], box[3]) }, 60), 10);

  // A drag of a corner makes it larger, in figures and in the picture, and leaves the cross alone.
  zvtest::EventRecorder told;
  told.Watch(area,
    { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
      vtkCommand::EndInteractionEvent });
  this->Press(3.0, 12.0);
  EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
  this->Move(2.0, 5.0);
  this->Move(1.5, 3.0);
  this->Release(1.5, 3.0);
  EXPECT_EQ(told.Names(),
    (Log{
      "StartInteractionEvent", "InteractionEvent", "InteractionEvent", "EndInteractionEvent" }));
  EXPECT_GT(area->GetArea(), closed + 5.0);
  EXPECT_TRUE(this->CrossIs(9, 9));
  double handle[3];
  area->GetHandlePosition(0, handle);
  EXPECT_NEAR(handle[0], 1.5, 0.2);
  EXPECT_NEAR(handle[1], 3.0, 0.2);
  EXPECT_GT(this->Look("area-dragged").CountDifferent(before), 50);
}

TEST_F(Roads, FromClicksToALockedLasso)
{
  this->Viewer->SetAddLassoMode(true);
  const std::vector<std::array<double, 2>> corners = { { { 3, 12 } }, { { 3, 17 } }, { { 8, 17 } },
    { { 3, 12 } } };
  for (const auto& corner : corners)
  {
    this->Move(corner[0], corner[1]);
    this->Take();
    this->Press(corner[0], corner[1]);
    EXPECT_EQ(this->Take(), PressEndsInTheView);
    this->Release(corner[0], corner[1]);
  }
  ASSERT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), 1);
  auto* first = Last<zvLassoWidget>(this->Viewer->LassoWidgets);
  EXPECT_EQ(first->GetNumberOfHandles(), 3);
  EXPECT_EQ(first->IsClosed(), 1);
  EXPECT_EQ(first->GetState(), zvLassoWidget::Locked);
  EXPECT_EQ(this->Viewer->GetState(), StateStart);

  // The next one is green, and has its first handle where the next click is.
  this->Click(14.0, 14.0);
  this->Click(14.0, 17.0);
  this->Click(17.0, 17.0);
  ASSERT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), 2);
  EXPECT_EQ(Last<zvLassoWidget>(this->Viewer->LassoWidgets)->GetNumberOfHandles(), 3);
  EXPECT_TRUE(this->CrossIs(9, 9));
  const zvtest::Picture picture = this->Look("lasso");
  const zvtest::Region left{ this->At(0.0, 10.5), this->At(9.0, 19.0) };
  const zvtest::Region right{ this->At(10.5, 10.5), this->At(19.0, 19.0) };
  EXPECT_GT(picture.Count(Red, left, 40), 100);
  EXPECT_GT(picture.Count({ 0, 255, 102 }, right, 40), 60);
}

TEST_F(Roads, FromAClickToATextNoteAndItsDrag)
{
  this->Viewer->SetAddText(true);
  this->Take();
  this->Press(2.0, 14.0);
  EXPECT_EQ(this->Take(), PressEndsInTheView);
  EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
  EXPECT_TRUE(this->ClickedIs({ { 2.0, 14.0, 0.0 } })) << "at the low bound";
  this->Release(2.0, 14.0);
  this->Viewer->SetAddText(false);
  this->Viewer->GetPointClicked()[2] = 19.0; // the host brings it before the slice
  double color[3] = { 0.0, 1.0, 0.0 };
  this->Viewer->AddTextNoteWidget("NOTE", 2, color, 1.5);
  auto* note = Last<zvTextNoteWidget>(this->Viewer->TextNoteWidgets);
  const auto shown = ShownBy<vtkVectorText>(this->Renderer);
  ASSERT_EQ(shown.size(), 1u);
  const double* place = shown[0].first->GetPosition();
  EXPECT_NEAR(place[0], 3.0, 0.1);
  EXPECT_NEAR(place[1], 15.0, 0.1);
  EXPECT_EQ(place[2], 20.0);
  const zvtest::Region upper{ this->At(2.5, 14.5), this->At(8.5, 17.0) };
  const zvtest::Region lower{ this->At(2.5, 4.5), this->At(8.5, 7.0) };
  const zvtest::Picture before = this->Look("note");
  EXPECT_GT(before.Count(Green, upper, 60), 50);
  EXPECT_EQ(before.Count(Green, lower, 60), 0);

  this->Click(16.0, 16.0);
  EXPECT_EQ(this->Viewer->GetCurrentSelectedText(), nullptr);
  zvtest::EventRecorder told;
  told.Watch(note,
    { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
      vtkCommand::EndInteractionEvent });
  this->Press(4.0, 15.7);
  EXPECT_STREQ(this->Viewer->GetCurrentSelectedText(), "NOTE");
  EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
  this->Move(3.0, 5.0);
  this->Release(3.0, 5.0);
  EXPECT_EQ(
    told.Names(), (Log{ "StartInteractionEvent", "InteractionEvent", "EndInteractionEvent" }));
  const zvtest::Picture after = this->Look("note-dragged");
  EXPECT_EQ(after.Count(Green, upper, 60), 0);
  EXPECT_GT(after.Count(Green, lower, 60), 50);

  this->Viewer->DeleteCurrentTextNoteWidget();
  EXPECT_EQ(this->Viewer->TextNoteWidgets->GetNumberOfItems(), 0);
}

TEST_F(Roads, FromADragToPaintedVoxels)
{
  this->Viewer->SetPaintMode(true);
  this->Viewer->SetFillValue(1000);
  EXPECT_NEAR(this->BrightnessAt(this->Look(), 5.0, 15.0), this->BrightnessOf(100), 6);
  this->Move(4.0, 15.0);
  this->Take();
  this->Press(4.0, 15.0);
  EXPECT_EQ(this->Take(),
    (Log{ "interactor: LeftButtonPressEvent", "viewer: StartInteractionEvent", "Qt: mouseEvent" }));
  EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
  EXPECT_NEAR(this->BrightnessAt(this->Look(), 4.0, 15.0), this->BrightnessOf(100), 6)
    << "a press paints none";
  this->Move(5.0, 15.0);
  EXPECT_EQ(this->Take(), MoveReachesTheView);
  this->Move(6.0, 14.0);
  this->Release(6.0, 14.0);
  EXPECT_EQ(this->Take().back(), "Qt: mouseEvent");
  this->Move(12.0, 5.0); // nothing is painted without the button
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(5, 15, 19, 0), 1000.0);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(6, 14, 19, 0), 1000.0);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(4, 15, 19, 0), 100.0);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(12, 5, 19, 0), 300.0);
  EXPECT_TRUE(this->CrossIs(9, 9));
  const zvtest::Picture picture = this->Look("paint");
  EXPECT_GT(this->BrightnessAt(picture, 5.0, 15.0), 120);
  EXPECT_GT(this->BrightnessAt(picture, 6.0, 14.0), 120);
  EXPECT_NEAR(this->BrightnessAt(picture, 12.0, 5.0), this->BrightnessOf(300), 8);
}

TEST_F(Roads, FromAClickToAFilledRegionAndBack)
{
  // A wall of the value from side to side.
  for (int x = 0; x < 20; ++x)
  {
    this->Volume->SetScalarComponentFromDouble(x, 12, 19, 0, 1000.0);
  }
  this->Viewer->SetFillMode(true);
  this->Viewer->SetFillValue(1000);
  this->Move(4.0, 15.0); // the fill starts at the voxel tracked last
  this->Press(4.0, 15.0);
  EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(4, 15, 19, 0), 1000.0);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(4, 10, 19, 0), 100.0) << "beyond the wall";
  EXPECT_EQ(this->Viewer->FilledPoints->GetNumberOfPoints(), 19 * 6);
  this->Release(4.0, 15.0);
  EXPECT_TRUE(this->CrossIs(9, 9));
  const zvtest::Picture filled = this->Look("fill");
  EXPECT_GT(this->BrightnessAt(filled, 4.0, 15.0), 250);
  EXPECT_GT(this->BrightnessAt(filled, 15.0, 17.0), 250);
  EXPECT_NEAR(this->BrightnessAt(filled, 4.0, 6.0), this->BrightnessOf(100), 8);

  this->Viewer->UndoFill();
  EXPECT_NE(this->Volume->GetScalarComponentAsDouble(4, 15, 19, 0), 1000.0);
  EXPECT_LT(this->BrightnessAt(this->Look("fill-undone"), 4.0, 15.0), 100);
}

TEST_F(Roads, FromAClickToARecordedPoint)
{
  for (const auto set :
    { &zvImageViewerWidget::SetPickPointModeA, &zvImageViewerWidget::SetPickPointModeB,
      &zvImageViewerWidget::SetPickPointModeC, &zvImageViewerWidget::SetPickPointModeD })
  {
    (this->Viewer->*set)(true);
    const zvtest::Picture before = this->Look();
    this->Take();
    this->Press(4.0, 15.0);
    EXPECT_EQ(this->Take(), PressEndsInTheView);
    EXPECT_EQ(this->Viewer->GetState(), StateStart);
    EXPECT_TRUE(this->ClickedIs({ { 4.0, 15.0, 19.0 } }));
    this->Release(4.0, 15.0);
    EXPECT_EQ(this->Take(), ReleaseReachesTheView);
    EXPECT_EQ(this->Look().CountDifferent(before), 0) << "a point leaves no trace";
    (this->Viewer->*set)(false);
    this->Viewer->GetPointClicked()[0] = -1.0;
  }
  this->Viewer->SetPickPointBoundMode(true);
  this->Press(5.0, 14.0);
  EXPECT_EQ(this->Viewer->GetState(), StateCursoring);
  EXPECT_TRUE(this->ClickedIs({ { 5.0, 14.0, 0.0 } }));
  this->Release(5.0, 14.0);
  EXPECT_TRUE(this->CrossIs(9, 9));
}

TEST_F(Roads, FromADragToTheCross)
{
  const zvtest::Picture before = this->Look("cross-before");
  EXPECT_TRUE(this->IsSeen(before, Red, 9.5, 15.0));
  EXPECT_TRUE(this->IsSeen(before, Green, 15.0, 9.5));
  this->Move(4.0, 15.0);
  this->Take();
  this->Press(4.0, 15.0);
  EXPECT_EQ(this->Take(), PressReachesTheView);
  EXPECT_EQ(this->Viewer->GetState(), StatePushing);
  EXPECT_TRUE(this->CrossIs(4, 14));
  this->Move(6.0, 13.0);
  EXPECT_EQ(this->Take(), MoveReachesTheView);
  EXPECT_TRUE(this->CrossIs(5, 13));
  EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 4);
  this->Release(6.0, 13.0);
  EXPECT_EQ(this->Take(), ReleaseReachesTheView);
  EXPECT_EQ(this->Viewer->GetState(), StateStart);
  EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 1);
  const zvtest::Picture after = this->Look("cross");
  EXPECT_TRUE(this->IsSeen(after, Red, 5.5, 4.0));
  EXPECT_TRUE(this->IsSeen(after, Green, 15.0, 13.5));
  EXPECT_FALSE(this->IsSeen(after, Red, 9.5, 15.0));
  EXPECT_FALSE(this->IsSeen(after, Green, 15.0, 9.5));

  // Shift takes a line along instead of turning it.
  this->Press(5.5, 4.0, Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_EQ(this->Viewer->GetState(), StatePushing);
  EXPECT_TRUE(this->CrossIs(5, 4));
  this->Release(5.5, 4.0, Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 2);
}

TEST_F(Roads, FromADragOfALineToATurnedSlice)
{
  this->Take();
  this->Press(9.5, 16.0);
  EXPECT_EQ(this->Take(), PressReachesTheView);
  EXPECT_EQ(this->Viewer->GetState(), StateRotating);
  this->Move(9.5, 16.0);
  this->Move(8.5, 16.0);
  this->Move(7.5, 16.0);
  EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 3);
  EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 4);
  EXPECT_GT(this->Viewer->GetLastDegree(), 5.0) << "the way of the motion, against the clock";
  this->Release(7.5, 16.0);
  EXPECT_EQ(this->Viewer->GetState(), StateStart);
  EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 1);
  double center[3];
  this->Viewer->GetRotationCenter(center);
  EXPECT_NEAR(center[0], 9.5, 1e-6);
  EXPECT_NEAR(center[1], 9.5, 1e-6);

  // The red line follows the pointer, about 17 degrees on, and the slice stays where it was.
  double end1[3], end2[3];
  this->Viewer->SliceLine1Source->GetPoint1(end1);
  this->Viewer->SliceLine1Source->GetPoint2(end2);
  const double slope = (end2[0] - end1[0]) / (end2[1] - end1[1]);
  EXPECT_NEAR(slope, -std::tan(std::acos(-1.0) / 180.0 * 17.0), 0.06);
  const zvtest::Picture picture = this->Look("rotation");
  EXPECT_TRUE(this->IsSeen(picture, Red, 9.5 + 5.0 * slope, 14.5));
  EXPECT_FALSE(this->IsSeen(picture, Red, 9.5, 16.0));
  EXPECT_NEAR(this->BrightnessAt(picture, 3.0, 15.0), this->BrightnessOf(100), 8);
  EXPECT_NEAR(this->BrightnessAt(picture, 16.0, 5.0), this->BrightnessOf(300), 8);
}

TEST_F(Roads, FromARightDragWithShiftToWindowAndLevel)
{
  this->View.setVTKMoveMode(false); // Shift alone lets the right button through
  this->Take();
  this->Press(4.0, 15.0, Qt::RightButton);
  EXPECT_EQ(this->Take(), Log{ "Qt: mouseEvent" });
  this->Release(4.0, 15.0, Qt::RightButton);
  this->Take();

  this->Press(4.0, 15.0, Qt::RightButton, Qt::ShiftModifier);
  EXPECT_EQ(this->Take(),
    (Log{
      "interactor: RightButtonPressEvent", "viewer: StartWindowLevelEvent", "Qt: mouseEvent" }));
  EXPECT_EQ(this->Viewer->GetState(), StateWindowLevelling);
  EXPECT_EQ(this->Viewer->GetRightButtonAction(), 2);
  const double level = this->Viewer->GetLevel();
  const Color before = this->Look().At(this->At(16.0, 15.0));
  this->Move(4.0, 11.0, Qt::ShiftModifier);
  EXPECT_EQ(this->Take(),
    (Log{ "interactor: MouseMoveEvent", "viewer: MouseMoveEvent", "viewer: WindowLevelEvent",
      "Qt: mouseEvent" }));
  EXPECT_NE(this->Viewer->GetLevel(), level);
  EXPECT_FALSE(this->Look("windowlevel").At(this->At(16.0, 15.0)).IsNear(before, 10));
  this->Release(4.0, 11.0, Qt::RightButton, Qt::ShiftModifier);
  EXPECT_EQ(this->Take(),
    (Log{
      "interactor: RightButtonReleaseEvent", "viewer: EndWindowLevelEvent", "Qt: mouseEvent" }));
  EXPECT_EQ(this->Viewer->GetState(), StateStart);
  EXPECT_TRUE(this->CrossIs(9, 9));
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
