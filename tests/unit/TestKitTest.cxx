#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCubeSource.h"
#include "vtkImageData.h"
#include "vtkMatrix3x3.h"
#include "vtkNew.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkWeakPointer.h"

#include <gtest/gtest-spi.h>

#include <iostream>
#include <stdexcept>

namespace
{
class TestKit : public zvtest::QuietTest
{
};

// Puts a plain red cube of the given box into a view.
void AddRedCube(zvtest::Scene& scene, const std::array<double, 6>& box, int viewport = 0)
{
  vtkNew<vtkCubeSource> cube;
  cube->SetBounds(box.data());
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(cube->GetOutputPort());
  vtkNew<vtkActor> actor;
  actor->SetMapper(mapper);
  actor->GetProperty()->SetLighting(false);
  actor->GetProperty()->SetColor(1.0, 0.0, 0.0);
  actor->GetProperty()->SetAmbient(0.0);
  scene.Renderer(viewport)->AddActor(actor);
}

const zvtest::Color Red{ 255, 0, 0 };
const zvtest::Color Black{ 0, 0, 0 };

// A test inside a test: opens the fixture's protected parts.
class InnerTest : public zvtest::QuietTest
{
public:
  void TestBody() override {}
  using zvtest::QuietTest::ExpectGenericWarning;
  using zvtest::QuietTest::ExpectNoMessage;
  using zvtest::QuietTest::ExpectPlainWarning;
  using zvtest::QuietTest::ExpectVtkError;
  using zvtest::QuietTest::TearDown;
};
}

TEST_F(TestKit, AMessageNobodyClaimedFailsTheTest)
{
  EXPECT_NONFATAL_FAILURE(
    {
      InnerTest inner;
      vtkGenericWarningMacro("stray");
      inner.TearDown();
    },
    "a VTK message during the test that nobody claimed");
}

TEST_F(TestKit, AMessageOfTheFixturesMembersFailsTheTestToo)
{
  EXPECT_NONFATAL_FAILURE(
    {
      InnerTest inner;
      inner.TearDown();
      vtkGenericWarningMacro("stray");
    },
    "a VTK message while the fixture's members went that nobody claimed");
}

TEST_F(TestKit, AnOutputNobodyClaimedFailsTheTest)
{
  EXPECT_NONFATAL_FAILURE(
    {
      InnerTest inner;
      std::cout << "stray";
      inner.TearDown();
    },
    "a standard output during the test that nobody claimed:\nstray");
}

TEST_F(TestKit, AClaimedMessageIsComparedWhole)
{
  InnerTest inner;
  vtkNew<vtkObject> object;
  vtkErrorWithObjectMacro(object.Get(), "went wrong");
  inner.ExpectVtkError(__FILE__, "vtkObject", object, "went wrong");
  vtkGenericWarningMacro("watch out");
  inner.ExpectGenericWarning(__FILE__, "watch out");
  inner.ExpectNoMessage();
}

TEST_F(TestKit, AnotherMessageThanExpectedFails)
{
  InnerTest inner;
  EXPECT_NONFATAL_FAILURE(
    {
      vtkGenericWarningMacro("watch out!");
      inner.ExpectGenericWarning(__FILE__, "watch out");
    },
    "and should be");
  EXPECT_NONFATAL_FAILURE(inner.ExpectGenericWarning(__FILE__, "x"), "should be");
  EXPECT_NONFATAL_FAILURE(
    {
      vtkGenericWarningMacro("watch out");
      inner.ExpectNoMessage();
    },
    "an unexpected VTK message");
}

TEST_F(TestKit, LineAndAddressAreParsedStrictly)
{
  const char* speaker = "Warning: In src/widgets/zvX, line ";
  const auto is = [&](const std::string& rest)
  { return bool(zvtest::IsPlainWarning(speaker + rest, "zvX", nullptr, "text")); };
  EXPECT_TRUE(is("12\n (0x1f0): text\n\n"));
  EXPECT_FALSE(is("012\n (0x1f0): text\n\n"));
  EXPECT_FALSE(is("\n (0x1f0): text\n\n"));
  EXPECT_FALSE(is("12\n (0): text\n\n"));
  EXPECT_FALSE(is("12\n (0x): text\n\n"));
  EXPECT_FALSE(is("12\n (0x1f0): text\n"));
  EXPECT_FALSE(is("12\n (0x1f0): text\n\n\n"));
  EXPECT_FALSE(is("12\n (0x1f0): texts\n\n"));
  EXPECT_FALSE(zvtest::IsPlainWarning(
    std::string(speaker) + "12\n (0x1f0): text\n\n", "zvX", speaker, "text"));
}

TEST_F(TestKit, EachFormOfMessageHasItsMatcher)
{
  EXPECT_TRUE(
    zvtest::IsTrace("Info: In src/widgets/zvX, line 7\n (0xab):   >> \"zvX::F(void)\"\n\n", "zvX",
      nullptr, "zvX::F(void)"));
  EXPECT_TRUE(zvtest::IsPlainError(
    "Error: In src/widgets/zvX, line 7\n (0xab): bad\n\n", "zvX", nullptr, "bad"));
  EXPECT_TRUE(zvtest::IsVtkError(
    "ERROR: In src/widgets/zvX, line 7\nvtkY (0xab): bad\n\n", "zvX", "vtkY", nullptr, "bad"));
  EXPECT_TRUE(zvtest::IsVtkWarning(
    "Warning: In src/widgets/zvX, line 7\nvtkY (0xab): odd\n\n", "zvX", "vtkY", nullptr, "odd"));
  EXPECT_TRUE(zvtest::IsGenericWarning(
    "Generic Warning: In src/companions/zvU, line 7\nodd\n\n", "src/companions/zvU", "odd"));
  EXPECT_FALSE(zvtest::IsVtkError(
    "ERROR: In src/widgets/zvX, line 7\nvtkZ (0xab): bad\n\n", "zvX", "vtkY", nullptr, "bad"));
}

TEST_F(TestKit, EveryVoxelTellsItsIndexInEveryScalarType)
{
  for (int type : zvtest::AllScalarTypes())
  {
    SCOPED_TRACE(zvtest::ScalarTypeName(type));
    auto volume = zvtest::MakeIndexVolume(zvtest::VolumeOfType(type));
    ASSERT_EQ(volume->GetScalarType(), type);
    for (int k = 0; k < 3; ++k)
    {
      for (int j = 0; j < 4; ++j)
      {
        for (int i = 0; i < 5; ++i)
        {
          const double value = volume->GetScalarComponentAsDouble(i, j, k, 0);
          EXPECT_EQ(zvtest::IndexOfValue(volume, value), (zvtest::Index{ { i, j, k } }));
          EXPECT_EQ(zvtest::IndexValue(volume, { { i, j, k } }), value);
        }
      }
    }
  }
}

TEST_F(TestKit, AnIntVolumeIsReadByTheEye)
{
  auto volume = zvtest::MakeIndexVolume(zvtest::UnequalVolume());
  EXPECT_EQ(volume->GetScalarComponentAsDouble(7, 5, 3, 0), 30507.0);
}

TEST_F(TestKit, AShiftedVolumeTellsAbsoluteIndices)
{
  auto volume = zvtest::MakeIndexVolume(zvtest::ShiftedExtentVolume());
  const double value = volume->GetScalarComponentAsDouble(4, 0, 13, 0);
  EXPECT_EQ(value, 20201.0);
  EXPECT_EQ(zvtest::IndexOfValue(volume, value), (zvtest::Index{ { 4, 0, 13 } }));
  EXPECT_EQ(zvtest::CenterOfVoxel(volume, { { 4, 0, 13 } }),
    (zvtest::World{ { -2.0 + 4 * 0.5, 4.5, 10.0 + 13 * 3.0 } }));
}

TEST_F(TestKit, ComponentsAreToldApart)
{
  auto volume = zvtest::MakeIndexVolume(zvtest::MultiComponentVolume(3));
  ASSERT_EQ(volume->GetNumberOfScalarComponents(), 3);
  EXPECT_EQ(volume->GetScalarComponentAsDouble(1, 2, 3, 2), 2030201.0);
}

TEST_F(TestKit, VolumesComeInEveryShape)
{
  auto negative = zvtest::MakeIndexVolume(zvtest::NegativeSpacingVolume({ 0, 2 }));
  EXPECT_EQ(negative->GetSpacing()[0], -0.5);
  EXPECT_EQ(negative->GetSpacing()[2], -3.0);
  auto thin = zvtest::MakeIndexVolume(zvtest::OneVoxelThickVolume(1));
  EXPECT_EQ(thin->GetDimensions()[1], 1);
  auto flat = zvtest::MakeConstantVolume(42.0);
  EXPECT_EQ(flat->GetScalarRange()[0], 42.0);
  EXPECT_EQ(flat->GetScalarRange()[1], 42.0);
  auto turned = zvtest::MakeIndexVolume(zvtest::TurnedVolume());
  EXPECT_FALSE(turned->GetDirectionMatrix()->IsIdentity());
  zvtest::VolumeOptions tooLarge;
  tooLarge.Dimensions = { { 31, 2, 2 } };
  EXPECT_THROW(zvtest::MakeIndexVolume(tooLarge), std::invalid_argument);
}

TEST_F(TestKit, TheMouseReachesTheInteractor)
{
  zvtest::Scene scene;
  zvtest::Mouse mouse(scene);
  zvtest::EventRecorder recorder;
  vtkRenderWindowInteractor* interactor = scene.Interactor();
  recorder.Watch(interactor,
    { vtkCommand::MouseMoveEvent, vtkCommand::LeftButtonPressEvent,
      vtkCommand::LeftButtonReleaseEvent, vtkCommand::MiddleButtonPressEvent,
      vtkCommand::RightButtonReleaseEvent, vtkCommand::MouseWheelForwardEvent,
      vtkCommand::MouseWheelBackwardEvent, vtkCommand::CharEvent });
  mouse.Press(zvtest::Left, { { 10, 20 } }, zvtest::Shift);
  EXPECT_EQ(interactor->GetShiftKey(), 1);
  EXPECT_EQ(interactor->GetControlKey(), 0);
  mouse.MoveTo({ { 30, 40 } }, zvtest::Control);
  EXPECT_EQ(interactor->GetControlKey(), 1);
  EXPECT_EQ(interactor->GetLastEventPosition()[0], 10);
  EXPECT_EQ(interactor->GetEventPosition()[1], 40);
  mouse.Release(zvtest::Left);
  EXPECT_EQ(interactor->GetEventPosition()[0], 30);
  mouse.Press(zvtest::Middle, { { 1, 2 } });
  mouse.Release(zvtest::Right);
  mouse.WheelForward({ { 5, 5 } });
  mouse.WheelBackward({ { 5, 5 } });
  mouse.Type('r', zvtest::Shift);
  EXPECT_EQ(interactor->GetKeyCode(), 'r');
  EXPECT_EQ(recorder.Names(),
    (std::vector<std::string>{ "LeftButtonPressEvent", "MouseMoveEvent", "LeftButtonReleaseEvent",
      "MiddleButtonPressEvent", "RightButtonReleaseEvent", "MouseWheelForwardEvent",
      "MouseWheelBackwardEvent", "CharEvent" }));
}

TEST_F(TestKit, ADragMovesInSteps)
{
  zvtest::Scene scene;
  zvtest::Mouse mouse(scene);
  std::vector<zvtest::Display> positions;
  zvtest::EventRecorder recorder;
  recorder.Watch(scene.Interactor(), { vtkCommand::MouseMoveEvent },
    [&](const zvtest::RecordedEvent&)
    {
      const int* position = scene.Interactor()->GetEventPosition();
      positions.push_back({ { position[0], position[1] } });
    });
  mouse.Drag(zvtest::Left, { { 100, 100 } }, { { 110, 140 } }, zvtest::NoModifier, 2);
  EXPECT_EQ(positions, (std::vector<zvtest::Display>{ { { 105, 120 } }, { { 110, 140 } } }));
}

TEST_F(TestKit, TheRecorderCopiesWindowAndLevelAndOutlivesItsSubject)
{
  zvtest::EventRecorder recorder;
  {
    vtkNew<vtkObject> subject;
    recorder.WatchAll(subject);
    double values[2] = { 7.0, 8.0 };
    subject->InvokeEvent(vtkCommand::WindowLevelEvent, values);
    values[0] = 0.0;
    subject->InvokeEvent(vtkCommand::EnableEvent);
  }
  ASSERT_EQ(recorder.Count(vtkCommand::WindowLevelEvent), 1);
  EXPECT_EQ(recorder.Events()[0].Values, (std::vector<double>{ 7.0, 8.0 }));
  EXPECT_FALSE(recorder.Events()[1].HasData);
  EXPECT_EQ(recorder.Names().back(), "DeleteEvent");
}

TEST_F(TestKit, ASubjectMayOutliveItsRecorder)
{
  vtkNew<vtkObject> subject;
  int calls = 0;
  {
    zvtest::EventRecorder recorder;
    recorder.Watch(
      subject, { vtkCommand::EnableEvent }, [&](const zvtest::RecordedEvent&) { ++calls; });
    subject->InvokeEvent(vtkCommand::EnableEvent);
  }
  subject->InvokeEvent(vtkCommand::EnableEvent);
  EXPECT_EQ(calls, 1);
}

TEST_F(TestKit, ProbesSeeADrawnActorWhereItIs)
{
  zvtest::Scene scene;
  AddRedCube(scene, { { 0, 4, 0, 2, 0, 1 } });
  scene.LookAlong(2);
  const zvtest::Picture picture = scene.RenderAndLook();
  EXPECT_EQ(picture.Width(), 400);
  EXPECT_EQ(picture.Height(), 400);
  EXPECT_EQ(scene.ColorAt({ { 0.1, 0.1, 1.0 } }), Red);
  EXPECT_EQ(scene.ColorAt({ { 3.9, 1.9, 1.0 } }), Red);
  EXPECT_EQ(scene.ColorAt({ { -0.1, 1.0, 1.0 } }), Black);
  EXPECT_EQ(scene.ColorAt({ { 2.0, 2.1, 1.0 } }), Black);
  const zvtest::Display low = scene.At({ { 0, 0, 1 } }), high = scene.At({ { 4, 2, 1 } });
  const int area = (high[0] - low[0]) * (high[1] - low[1]);
  EXPECT_NEAR(picture.Count(Red), area, 0.03 * area);
  EXPECT_EQ(
    picture.Count(Red) + picture.CountOther(Red, { { { 0, 0 } }, { { 399, 399 } } }), 400 * 400);
  EXPECT_TRUE(picture.HasNear(Red, { { low[0] - 2, low[1] } }, 4));
  EXPECT_FALSE(picture.HasNear(Red, { { low[0] - 9, low[1] } }, 4));
  EXPECT_THROW(picture.At({ { 400, 0 } }), std::out_of_range);
}

TEST_F(TestKit, LookingDoesNotRender)
{
  zvtest::Scene scene;
  AddRedCube(scene, { { 0, 4, 0, 2, 0, 1 } });
  scene.LookAlong(2);
  const zvtest::Picture before = scene.RenderAndLook();
  scene.Renderer()->RemoveAllViewProps();
  EXPECT_EQ(scene.Look().CountDifferent(before), 0);
  scene.Interactor()->Render();
  EXPECT_EQ(scene.Look().Count(Red), 0);
}

TEST_F(TestKit, TheViewerLooksAlongEachAxis)
{
  zvtest::Scene scene;
  AddRedCube(scene, { { 0, 4, 0, 2, 0, 1 } });
  const zvtest::World origin{ { 0, 0, 0 } };
  const auto shift = [&](const zvtest::World& to)
  {
    const zvtest::Display a = scene.At(origin), b = scene.At(to);
    return zvtest::Display{ { (b[0] > a[0]) - (b[0] < a[0]), (b[1] > a[1]) - (b[1] < a[1]) } };
  };
  scene.LookAlong(0);
  EXPECT_EQ(shift({ { 0, 1, 0 } }), (zvtest::Display{ { 1, 0 } }));
  EXPECT_EQ(shift({ { 0, 0, 1 } }), (zvtest::Display{ { 0, 1 } }));
  scene.LookAlong(1);
  EXPECT_EQ(shift({ { 1, 0, 0 } }), (zvtest::Display{ { 1, 0 } }));
  EXPECT_EQ(shift({ { 0, 0, 1 } }), (zvtest::Display{ { 0, 1 } }));
  scene.LookAlong(2);
  EXPECT_EQ(shift({ { 1, 0, 0 } }), (zvtest::Display{ { 1, 0 } }));
  EXPECT_EQ(shift({ { 0, 1, 0 } }), (zvtest::Display{ { 0, 1 } }));
}

TEST_F(TestKit, DisplayAndWorldAreInverse)
{
  zvtest::SceneOptions options;
  options.ParallelProjection = false;
  zvtest::Scene scene(options);
  AddRedCube(scene, { { 0, 4, 0, 2, 0, 1 } });
  scene.LookAlong(2);
  const zvtest::World point{ { 1.0, 0.5, 1.0 } };
  const zvtest::Display seen = scene.At(point);
  const zvtest::World back = scene.WorldAt(seen, point);
  EXPECT_NEAR(back[0], 1.0, 0.05);
  EXPECT_NEAR(back[1], 0.5, 0.05);
  EXPECT_NEAR(back[2], 1.0, 1e-6);
}

TEST_F(TestKit, ViewportsStandSideBySide)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  zvtest::Scene scene(options);
  AddRedCube(scene, { { 0, 2, 0, 2, 0, 2 } }, 1);
  scene.LookAlong(2, 0);
  scene.LookAlong(2, 1);
  scene.Render();
  const zvtest::Display seen = scene.At({ { 1, 1, 2 } }, 1);
  EXPECT_NEAR(seen[0], 300, 2);
  EXPECT_EQ(scene.ColorAt({ { 1, 1, 2 } }, 1), Red);
  EXPECT_EQ(scene.Look().Count(Red, { { { 0, 0 } }, { { 199, 399 } } }), 0);
  zvtest::Mouse mouse(scene, 1);
  EXPECT_EQ(mouse.At({ { 1, 1, 2 } }), seen);
}

TEST_F(TestKit, PartsOfASceneCanGoInAnyOrder)
{
  const std::vector<std::string> orders = { "irw", "iwr", "riw", "rwi", "wir", "wri" };
  for (const std::string& order : orders)
  {
    SCOPED_TRACE(order);
    zvtest::Scene scene;
    AddRedCube(scene, { { 0, 4, 0, 2, 0, 1 } });
    scene.Render();
    vtkWeakPointer<vtkObject> interactor = scene.Interactor(), window = scene.Window(),
                              renderer = scene.Renderer();
    for (char part : order)
    {
      if (part == 'i')
      {
        scene.DropInteractor();
        EXPECT_EQ(interactor, nullptr);
        EXPECT_EQ(scene.Interactor(), nullptr);
      }
      else if (part == 'r')
      {
        scene.DropRenderers();
        EXPECT_EQ(renderer, nullptr);
      }
      else
      {
        scene.DropWindow();
        EXPECT_EQ(window, nullptr);
        EXPECT_EQ(scene.Window(), nullptr);
      }
    }
  }
}
