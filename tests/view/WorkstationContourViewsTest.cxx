#include "zvContourPanel.h"
#include "zvContourTool.h"
#include "zvContourView.h"
#include "zvEditBar.h"
#include "zvImageViewerWidget.h"
#include "zvMainWindow.h"
#include "zvSnakeWidget.h"
#include "zvToolSet.h"
#include "zvTurnPanel.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"
#include "zvVolumeSnakeWidget.h"
#include "zvVolumeView.h"

#include "zvIndexedVolume.h"
#include "zvPicture.h"
#include "zvQtTest.h"
#include "zvQuietTest.h"
#include "zvTemporaryFolder.h"
#include "zvVolumes.h"
#include "zvWindows.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QWindow>
#include <QtTest>

#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkImageData.h"
#include "vtkMath.h"
#include "vtkPolyData.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>

namespace
{
using zvtest::OpenPhantomWindow;
using zvtest::WaitFor;

// Unequal along the three axes, so that no two can be taken for each other.
constexpr std::array<int, 3> Dimensions{ { 60, 50, 24 } };
constexpr std::array<double, 3> Spacing{ { 1.5, 2.0, 4.0 } };
constexpr std::array<double, 3> Origin{ { -30.0, 10.0, 5.0 } };
constexpr std::array<double, 3> Middle{ { 14.0, 60.0, 53.0 } };
constexpr std::array<double, 3> HalfAxes{ { 30.0, 36.0, 34.0 } };
constexpr std::array<int, 3> MiddleSlices{ { 29, 25, 12 } };

const char* const Header =
  "ObjectType = Image\nNDims = 3\nDimSize = 60 50 24\nElementType = MET_SHORT\n"
  "BinaryData = True\nElementSpacing = 1.5 2 4\nOffset = -30 10 5\n"
  "TransformMatrix = 1 0 0 0 1 0 0 0 1\nElementDataFile = LOCAL\n";

double GetDistanceFromMiddle(const std::array<double, 3>& world)
{
  double sum = 0.0;
  for (std::size_t a = 0; a < 3; ++a)
  {
    sum += std::pow((world[a] - Middle[a]) / HalfAxes[a], 2);
  }
  return std::sqrt(sum);
}

// An ellipsoid of 300 in 100, with a little of a pattern.
vtkSmartPointer<vtkImageData> MakeVoxels()
{
  zvtest::VolumeOptions options;
  options.Dimensions = Dimensions;
  return zvtest::MakeVolume(options,
    [](int i, int j, int k, int)
    {
      const std::array<double, 3> world{ { Origin[0] + i * Spacing[0], Origin[1] + j * Spacing[1],
        Origin[2] + k * Spacing[2] } };
      const int value = GetDistanceFromMiddle(world) <= 1.0 ? 300 : 100;
      return value + (7 * i + 5 * j + 3 * k) % 11;
    });
}

}

class WorkstationContourViews : public zvtest::QuietTest
{
protected:
  WorkstationContourViews()
    : Hands{ { zvViewHand(this->Slice(0)), zvViewHand(this->Slice(1)),
        zvViewHand(this->Slice(2)) } }
  {
    this->Window.resize(1000, 720);
    this->Window.SetTellsRefusals(false);
    QObject::connect(&this->Window, &zvMainWindow::shown, [this] { ++this->ShownCount; });
    QObject::connect(this->Tool(), &zvContourTool::ended, [this] { ++this->EndCount; });
  }

  void SetUp() override
  {
    this->Window.show();
    ASSERT_TRUE(WaitFor([this] { return this->Window.windowHandle()->isExposed(); }));
    this->OpenVolume();
    this->Window.GetTools()->Choose("contour");
    QCoreApplication::processEvents();
  }

  void OpenVolume()
  {
    const int before = this->ShownCount;
    this->Window.Open(QString::fromStdString(
      this->Folder.Write("head.mha", Header + zvtest::BytesOf(MakeVoxels()))));
    ASSERT_TRUE(WaitFor([&] { return this->ShownCount > before; }));
    for (int axis = 0; axis < 3; ++axis)
    {
      this->Window.GetViews()->GoTo(axis, MiddleSlices[static_cast<std::size_t>(axis)]);
    }
  }

  zvContourTool* Tool() { return this->Window.GetContourTool(); }
  zvContourPanel* Panel() { return this->Window.GetContourPanel(); }
  zvContourView* Contour(int axis) { return this->Tool()->GetContourView(axis); }
  zvSliceView* Slice(int axis) { return this->Window.GetViews()->GetSliceView(axis); }
  zvImageViewerWidget* Viewer(int axis) { return this->Slice(axis)->GetViewer(); }
  zvViewHand& Hand(int axis) { return this->Hands[static_cast<std::size_t>(axis)]; }
  vtkImageData* Image() { return this->Window.GetView()->GetVolume().Image; }
  zvtest::Picture PictureOf(int axis) { return zvtest::Picture(this->Slice(axis)->renderWindow()); }
  zvtest::Picture Picture3D() { return zvtest::Picture(this->Window.GetView()->renderWindow()); }

  // Where the ellipsoid's middle is seen in a slice.
  QPoint Seen(int axis) { return this->Hand(axis).At(Middle); }

  void PlaceRing(int axis)
  {
    this->Hand(axis).Click(Qt::LeftButton, this->Seen(axis));
    QCoreApplication::processEvents();
  }

  bool RunToEnd()
  {
    const int before = this->EndCount;
    this->Panel()->GetStartButton()->click();
    return WaitFor([&] { return this->EndCount > before; });
  }

  zvContour ContourOf(int axis) { return this->Contour(axis)->ReadContour(); }

  // How far the points of a contour lie from the ellipsoid, in parts of its size.
  double GetDeviation(int axis)
  {
    double sum = 0.0;
    const zvContour contour = this->ContourOf(axis);
    for (const zvContourPoint& point : contour)
    {
      sum += std::abs(GetDistanceFromMiddle(this->Contour(axis)->GetPlane().ToWorld(point)) - 1.0);
    }
    return contour.empty() ? 1.0 : sum / static_cast<double>(contour.size());
  }

  void ChooseVolume() { this->Panel()->GetExtentBox()->setCurrentIndex(1); }
  int SliceOf(int axis) { return this->Viewer(axis)->GetSliceIndex(); }

  // Where grey has turned to red.
  bool IsRed(int axis, const std::array<double, 3>& world)
  {
    const QPoint seen = this->Hand(axis).At(world) + QPoint(4, 4); // beside the lines
    const zvtest::Color color =
      this->PictureOf(axis).At({ { seen.x(), this->Slice(axis)->height() - 1 - seen.y() } });
    return color.Red > color.Green + 30 && color.Red > color.Blue + 30;
  }
  int CountRed()
  {
    return (this->IsRed(0, Middle) ? 1 : 0) + (this->IsRed(1, Middle) ? 1 : 0) +
      (this->IsRed(2, Middle) ? 1 : 0);
  }

  zvtest::TemporaryFolder Folder;
  zvMainWindow Window;
  std::array<zvViewHand, 3> Hands;
  int ShownCount = 0;
  int EndCount = 0;
};

TEST_F(WorkstationContourViews, AClickPlacesARingAcrossEveryAxis)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_TRUE(this->ContourOf(axis).empty());
    this->PlaceRing(axis);
    const zvContour ring = this->ContourOf(axis);
    ASSERT_EQ(ring.size(), 100U) << axis;
    const zvContourPlane& plane = this->Contour(axis)->GetPlane();
    EXPECT_EQ(plane.GetAxis(), axis);
    EXPECT_EQ(plane.GetSlice(), MiddleSlices[static_cast<std::size_t>(axis)]);
    const zvContourPoint centre = zvContourMath::GetCentre(ring);
    const zvContourPoint middle = plane.FromWorld(Middle.data());
    EXPECT_NEAR(centre[0], middle[0], 0.6);
    EXPECT_NEAR(centre[1], middle[1], 0.6);
    for (const zvContourPoint& point : ring)
    {
      EXPECT_NEAR(std::hypot(point[0] - centre[0], point[1] - centre[1]), 15.0, 1e-3);
    }
    EXPECT_EQ(this->Tool()->GetAxis(), axis);
  }
}

TEST_F(WorkstationContourViews, AClickBesideTheSlicePlacesNone)
{
  this->Hand(2).Click(Qt::LeftButton, QPoint(3, this->Slice(2)->height() / 2));
  EXPECT_TRUE(this->ContourOf(2).empty());
  this->ChooseVolume();
  this->Hand(2).Click(Qt::LeftButton, QPoint(3, this->Slice(2)->height() / 2));
  EXPECT_TRUE(this->ContourOf(2).empty());
  EXPECT_FALSE(this->Panel()->GetStartButton()->isEnabled());
  this->PlaceRing(2);
  EXPECT_EQ(this->ContourOf(2).size(), 100U);
  EXPECT_TRUE(this->Panel()->GetStartButton()->isEnabled());
}

TEST_F(WorkstationContourViews, TheRingIsDrawnInItsSliceAndNotInOthers)
{
  const zvtest::Color green{ 0, 255, 0 };
  const int before = this->PictureOf(2).Count(green, 40);
  this->PlaceRing(2);
  EXPECT_GT(this->PictureOf(2).Count(green, 40), before + 60);
  this->Window.GetViews()->GoTo(2, 9);
  EXPECT_EQ(this->PictureOf(2).Count(green, 40), before);
  EXPECT_TRUE(this->ContourOf(2).empty());
  this->Window.GetViews()->GoTo(2, 12);
  EXPECT_GT(this->PictureOf(2).Count(green, 40), before + 60);
  EXPECT_EQ(this->ContourOf(2).size(), 100U);
}

TEST_F(WorkstationContourViews, ADragMovesTheRingInItsPlane)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->PlaceRing(axis);
    const zvContour before = this->ContourOf(axis);
    const zvContourPlane plane = this->Contour(axis)->GetPlane();
    std::array<double, 3> aim = Middle;
    aim[static_cast<std::size_t>(plane.GetFirstAxis())] += 12.0;
    aim[static_cast<std::size_t>(plane.GetSecondAxis())] -= 9.0;
    this->Hand(axis).Drag(Qt::LeftButton, this->Seen(axis), this->Hand(axis).At(aim));
    const zvContour after = this->ContourOf(axis);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); i += 7)
    {
      EXPECT_NEAR(after[i][0] - before[i][0], 12.0, 1.2) << axis;
      EXPECT_NEAR(after[i][1] - before[i][1], -9.0, 1.2) << axis;
    }
    vtkPolyData* snake = this->Contour(axis)->GetSliceWidget()->GetSnake();
    EXPECT_NEAR(snake->GetBounds()[2 * axis], plane.GetPosition(), 1.5);
    EXPECT_NEAR(snake->GetBounds()[2 * axis + 1], plane.GetPosition(), 1.5);
  }
}

TEST_F(WorkstationContourViews, ARingCannotBeDraggedOutOfTheSlice)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->PlaceRing(axis);
    const QPoint away(this->Slice(axis)->width() - 2, 2);
    this->Hand(axis).Drag(Qt::LeftButton, this->Seen(axis), away, 30);
    const zvContourPlane plane = this->Contour(axis)->GetPlane();
    const zvContourPoint centre = zvContourMath::GetCentre(this->ContourOf(axis));
    const double* bounds = this->Image()->GetBounds();
    const int axes[2] = { plane.GetFirstAxis(), plane.GetSecondAxis() };
    for (std::size_t a = 0; a < 2; ++a)
    {
      EXPECT_GE(centre[a], bounds[2 * axes[a]] - 1e-3) << axis;
      EXPECT_LE(centre[a], bounds[2 * axes[a] + 1] + 1e-3) << axis;
    }
  }
}

TEST_F(WorkstationContourViews, AMiddleDragResizesTheRing)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->PlaceRing(axis);
    const double before = zvContourMath::GetArea(this->ContourOf(axis));
    this->Hand(axis).Drag(
      Qt::MiddleButton, this->Seen(axis), this->Seen(axis) + QPoint(0, -20), 10);
    EXPECT_GT(zvContourMath::GetArea(this->ContourOf(axis)), 1.1 * before) << axis;
    const zvContourPlane& plane = this->Contour(axis)->GetPlane();
    vtkPolyData* snake = this->Contour(axis)->GetSliceWidget()->GetSnake();
    EXPECT_NEAR(snake->GetBounds()[2 * axis], plane.GetPosition(), 1.5);
  }
}

TEST_F(WorkstationContourViews, AStartEndsAtTheOutlineAcrossEveryAxis)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->PlaceRing(axis);
    ASSERT_TRUE(this->RunToEnd());
    EXPECT_LT(this->GetDeviation(axis), 0.04) << axis;
    EXPECT_EQ(this->ContourOf(axis).size(), 100U);
    EXPECT_EQ(this->Tool()->GetKept(axis).GetCount(), 1);
    EXPECT_EQ(this->SliceOf(axis), MiddleSlices[static_cast<std::size_t>(axis)]);
    EXPECT_THAT(this->Panel()->GetMessage().toStdString(), testing::HasSubstr("mm"));
    EXPECT_EQ(this->Panel()->GetProgressBar()->value(), 1000);
    // And is seen there.
    const zvContourPlane& plane = this->Contour(axis)->GetPlane();
    const QPoint seen = this->Hand(axis).At(plane.ToWorld(this->ContourOf(axis)[30]));
    EXPECT_TRUE(this->PictureOf(axis).HasNear(
      { 0, 255, 0 }, { { seen.x(), this->Slice(axis)->height() - 1 - seen.y() } }, 2, 60))
      << axis;
  }
}

TEST_F(WorkstationContourViews, ButtonsOfferWhatIsPossible)
{
  const auto enabled = [this]
  {
    std::string which;
    const QList<QAction*> actions = this->Panel()->GetActions();
    int at = 0;
    for (QPushButton* button : { this->Panel()->GetStartButton(), this->Panel()->GetStepButton(),
           this->Panel()->GetStopButton(), this->Panel()->GetResetButton(),
           this->Panel()->GetClearButton() })
    {
      which += button->isEnabled() ? "1" : "0";
      const QAction* action = actions[at++];
      EXPECT_EQ(action->isEnabled(), button->isEnabled()) << action->text().toStdString();
      EXPECT_EQ(action->toolTip(), button->toolTip());
    }
    return which;
  };
  EXPECT_EQ(enabled(), "00001");
  this->PlaceRing(2);
  EXPECT_EQ(enabled(), "11001");
  this->Panel()->GetStartButton()->click();
  EXPECT_EQ(enabled(), "00100");
  EXPECT_FALSE(this->Panel()->GetBox("balloon")->isEnabled());
  this->Panel()->GetStopButton()->click();
  EXPECT_EQ(enabled(), "11011");
  EXPECT_TRUE(this->Panel()->GetBox("balloon")->isEnabled());
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_EQ(enabled(), "11011");
  this->Panel()->GetResetButton()->click();
  EXPECT_EQ(enabled(), "11001");
}

TEST_F(WorkstationContourViews, ItsMenuAndKeysDoWhatTheButtonsDo)
{
  QApplication::setActiveWindow(&this->Window);
  const auto type = [this](Qt::Key key, Qt::KeyboardModifiers modifiers)
  {
    this->Slice(2)->setFocus();
    QTest::keyClick(this->Slice(2), key, modifiers);
  };
  QMenu* menu = nullptr;
  for (QAction* action : this->Window.menuBar()->actions())
  {
    menu = action->text() == "&Contour" ? action->menu() : menu;
  }
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->actions(), this->Panel()->GetActions());
  this->PlaceRing(2);
  const zvContour ring = this->ContourOf(2);
  type(Qt::Key_F6, Qt::NoModifier);
  ASSERT_TRUE(WaitFor([this] { return !this->Tool()->IsRunning(); }));
  EXPECT_EQ(this->Tool()->GetStepCount(), 1);
  type(Qt::Key_F5, Qt::NoModifier);
  EXPECT_TRUE(this->Tool()->IsRunning());
  type(Qt::Key_F5, Qt::ShiftModifier);
  EXPECT_FALSE(this->Tool()->IsRunning());
  type(Qt::Key_F5, Qt::ControlModifier);
  EXPECT_EQ(this->ContourOf(2), ring);
  ASSERT_TRUE(this->RunToEnd());
  type(Qt::Key_M, Qt::ShiftModifier);
  EXPECT_TRUE(this->Panel()->IsMaskWanted());
  EXPECT_TRUE(this->IsRed(2, Middle));
  type(Qt::Key_M, Qt::ShiftModifier);
  EXPECT_FALSE(this->Panel()->IsMaskWanted());
  EXPECT_FALSE(this->IsRed(2, Middle));
  type(Qt::Key_F6, Qt::ControlModifier);
  EXPECT_TRUE(this->ContourOf(2).empty());
}

TEST_F(WorkstationContourViews, AStepIsOneStep)
{
  this->PlaceRing(2);
  zvContour before = this->ContourOf(2);
  const double length = this->Panel()->GetBox("step")->value() * std::min(Spacing[0], Spacing[1]);
  for (int step = 1; step <= 3; ++step)
  {
    this->Panel()->GetStepButton()->click();
    ASSERT_TRUE(WaitFor([this] { return !this->Tool()->IsRunning(); }));
    const zvContour after = this->ContourOf(2);
    EXPECT_GT(zvContourMath::GetArea(after), zvContourMath::GetArea(before));
    EXPECT_LT(zvContourMath::GetMeanDistance(after, before), 1.001 * length);
    EXPECT_EQ(this->Tool()->GetStepCount(), step);
    before = after;
  }
  EXPECT_EQ(this->EndCount, 0);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_LT(this->GetDeviation(2), 0.04);
}

TEST_F(WorkstationContourViews, EventsAreHandledBetweenTicks)
{
  this->PlaceRing(2);
  this->ChooseVolume();
  int beats = 0, moves = 0;
  QTimer heart;
  QObject::connect(&heart, &QTimer::timeout,
    [&]
    {
      if (!this->Tool()->IsRunning())
      {
        return;
      }
      ++beats;
      // Another view is used meanwhile.
      const int slice = this->SliceOf(0);
      this->Hand(0).Type(beats % 2 != 0 ? Qt::Key_Up : Qt::Key_Down);
      moves += this->SliceOf(0) != slice ? 1 : 0;
    });
  heart.start(1);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_GE(beats, 10);
  EXPECT_EQ(moves, beats);
  EXPECT_GT(this->Tool()->GetKept(2).GetCount(), 12);
}

TEST_F(WorkstationContourViews, StopPausesAndStartGoesOn)
{
  this->PlaceRing(2);
  this->Panel()->GetStartButton()->click();
  ASSERT_TRUE(WaitFor([this] { return this->Tool()->GetStepCount() >= 9; }));
  this->Panel()->GetStopButton()->click();
  EXPECT_FALSE(this->Tool()->IsRunning());
  const zvContour paused = this->ContourOf(2);
  QCoreApplication::processEvents();
  EXPECT_EQ(this->ContourOf(2), paused);
  EXPECT_TRUE(this->Tool()->GetKept(2).IsEmpty());
  // It can be moved meanwhile, and goes on from there.
  std::array<double, 3> aim = Middle;
  aim[0] += 8.0;
  this->Hand(2).Drag(Qt::LeftButton, this->Seen(2), this->Hand(2).At(aim));
  EXPECT_NE(this->ContourOf(2), paused);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_LT(this->GetDeviation(2), 0.04);
}

TEST_F(WorkstationContourViews, WhileItRunsTheMouseDoesNotMoveIt)
{
  this->PlaceRing(2);
  this->Panel()->GetStartButton()->click();
  ASSERT_TRUE(WaitFor([this] { return this->Tool()->GetStepCount() >= 3; }));
  const zvContour before = this->ContourOf(2);
  std::array<double, 3> aim = Middle;
  aim[0] += 40.0;
  this->Hand(2).Drag(Qt::LeftButton, this->Seen(2), this->Hand(2).At(aim));
  EXPECT_EQ(this->ContourOf(2), before);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_LT(this->GetDeviation(2), 0.04);
}

TEST_F(WorkstationContourViews, WhileItRunsARingInAnotherViewIsKept)
{
  this->PlaceRing(2);
  this->Panel()->GetStartButton()->click();
  this->PlaceRing(1);
  ASSERT_TRUE(this->Tool()->IsRunning());
  EXPECT_EQ(this->Tool()->GetAxis(), 2);
  const zvContour ring = this->ContourOf(1);
  ASSERT_EQ(ring.size(), 100U);
  ASSERT_TRUE(WaitFor([this] { return this->EndCount == 1; }));
  EXPECT_LT(this->GetDeviation(2), 0.04);
  const int slice = this->SliceOf(1);
  this->Window.GetViews()->GoTo(1, slice + 4);
  EXPECT_TRUE(this->ContourOf(1).empty());
  this->Window.GetViews()->GoTo(1, slice);
  EXPECT_LT(zvContourMath::GetMeanDistance(this->ContourOf(1), ring), 1e-3);
}

TEST_F(WorkstationContourViews, ResetTakesBackTheLastStart)
{
  this->PlaceRing(2);
  const zvContour ring = this->ContourOf(2);
  ASSERT_TRUE(this->RunToEnd());
  const zvContour outline = this->ContourOf(2);
  this->Panel()->GetResetButton()->click();
  EXPECT_EQ(this->ContourOf(2), ring);
  EXPECT_TRUE(this->Tool()->GetKept(2).IsEmpty());
  EXPECT_EQ(this->Panel()->GetMessage(), "As it was before.");

  ASSERT_TRUE(this->RunToEnd());
  EXPECT_EQ(this->ContourOf(2), outline); // the same once more
  this->Panel()->GetClearButton()->click();
  EXPECT_TRUE(this->ContourOf(2).empty());
  EXPECT_TRUE(this->Tool()->GetKept(2).IsEmpty());
  this->Panel()->GetResetButton()->click();
  EXPECT_EQ(this->ContourOf(2), outline);
  EXPECT_EQ(this->Tool()->GetKept(2).GetCount(), 1);
}

TEST_F(WorkstationContourViews, GoesThroughTheVolumeAcrossEveryAxis)
{
  this->ChooseVolume();
  for (int axis = 0; axis < 3; ++axis)
  {
    this->PlaceRing(axis);
    ASSERT_EQ(this->ContourOf(axis).size(), 100U);
    ASSERT_TRUE(this->RunToEnd());
    // About as many slices as the body has, all on its surface.
    const double slices =
      2.0 * HalfAxes[static_cast<std::size_t>(axis)] / Spacing[static_cast<std::size_t>(axis)];
    const zvContourStack& found = this->Tool()->GetKept(axis);
    EXPECT_GT(found.GetCount(), 0.85 * slices) << axis;
    EXPECT_LE(found.GetCount(), slices + 1.0) << axis;
    EXPECT_EQ(this->SliceOf(axis), MiddleSlices[static_cast<std::size_t>(axis)]);
    EXPECT_LT(this->GetDeviation(axis), 0.04) << axis;
    // All of them are known in their slices.
    const int other = MiddleSlices[static_cast<std::size_t>(axis)] + 3;
    this->Window.GetViews()->GoTo(axis, other);
    ASSERT_NE(found.Find(other), nullptr);
    EXPECT_LT(this->GetDeviation(axis), 0.05) << axis;
    this->Window.GetViews()->GoTo(axis, MiddleSlices[static_cast<std::size_t>(axis)]);
  }
}

TEST_F(WorkstationContourViews, TheStackIsDrawnInTheVolumeView)
{
  const zvtest::Color green{ 0, 255, 0 };
  this->ChooseVolume();
  this->PlaceRing(2);
  const int before = this->Picture3D().Count(green, 40);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_GT(this->Picture3D().Count(green, 40), before + 150);
  this->Panel()->GetClearButton()->click();
  EXPECT_NEAR(this->Picture3D().Count(green, 40), before, 20); // the planes have green edges
}

TEST_F(WorkstationContourViews, OnTheWayThePreviousContourIsSeenBesideThePresentOne)
{
  this->ChooseVolume();
  this->PlaceRing(2);
  this->Panel()->GetStartButton()->click();
  ASSERT_TRUE(WaitFor([this] { return this->Tool()->GetKept(2).GetCount() >= 3; }));
  this->Panel()->GetStopButton()->click();
  ASSERT_EQ(this->EndCount, 0);
  zvVolumeSnakeWidget* widget = this->Contour(2)->GetVolumeWidget();
  const int slice = this->SliceOf(2);
  EXPECT_GT(slice, 12);
  const zvContour* previous = this->Tool()->GetKept(2).Find(slice - 1);
  ASSERT_NE(previous, nullptr);
  const zvContour shown = this->Contour(2)->GetPlane().FromPolyData(widget->GetPrevSnake());
  EXPECT_EQ(shown, *previous);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_EQ(this->SliceOf(2), 12);
  EXPECT_GT(this->Tool()->GetKept(2).GetCount(), 13);
}

TEST_F(WorkstationContourViews, SlicesOutsideTheRangeAreNotEntered)
{
  this->ChooseVolume();
  this->PlaceRing(2);
  EXPECT_EQ(this->Panel()->GetFirstBox()->value(), 0);
  EXPECT_EQ(this->Panel()->GetLastBox()->value(), 23);
  this->Panel()->GetFirstBox()->setValue(10);
  this->Panel()->GetLastBox()->setValue(14);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_EQ(this->Tool()->GetKept(2).GetCount(), 5);
  EXPECT_NE(this->Tool()->GetKept(2).Find(10), nullptr);
  EXPECT_NE(this->Tool()->GetKept(2).Find(14), nullptr);
}

TEST_F(WorkstationContourViews, EdgesAreShownAsChosen)
{
  this->PlaceRing(2);
  this->Panel()->GetStartButton()->click();
  ASSERT_TRUE(WaitFor([this] { return this->Tool()->GetStepCount() >= 3; }));
  this->Panel()->GetStopButton()->click();
  zvSnakeWidget* slice = this->Contour(2)->GetSliceWidget();
  zvVolumeSnakeWidget* volume = this->Contour(2)->GetVolumeWidget();
  const zvtest::Color blue{ 0, 0, 255 };
  EXPECT_GT(slice->GetGradient()->GetNumberOfPoints(), 50);
  EXPECT_GT(this->PictureOf(2).Count(blue, 30), 100);
  this->Panel()->GetGradientBox()->setCurrentIndex(0);
  EXPECT_EQ(slice->GetGradient()->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->PictureOf(2).Count(blue, 30), 0);

  this->ChooseVolume();
  this->Panel()->GetStepButton()->click();
  ASSERT_TRUE(WaitFor([this] { return !this->Tool()->IsRunning(); }));
  EXPECT_EQ(volume->GetViewGradient(), 0);
  EXPECT_EQ(this->PictureOf(2).Count(blue, 30), 0);
  this->Panel()->GetGradientBox()->setCurrentIndex(2);
  EXPECT_EQ(volume->GetViewGradient(), 2);
  EXPECT_GT(volume->GetFreezeGradient()->GetNumberOfPoints(), 50);
  EXPECT_GT(this->PictureOf(2).Count(blue, 30), 100);
  this->Panel()->GetGradientBox()->setCurrentIndex(1);
  EXPECT_EQ(volume->GetViewGradient(), 1);
  EXPECT_EQ(volume->GetGradient()->GetNumberOfPoints(), 100);
}

TEST_F(WorkstationContourViews, TheResultIsShownAsAMask)
{
  this->PlaceRing(2);
  this->ChooseVolume();
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_EQ(this->CountRed(), 0);
  this->Panel()->GetMaskBox()->setChecked(true);
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_TRUE(this->IsRed(axis, Middle)) << axis;
    std::array<double, 3> beside = Middle;
    const int across = this->Contour(axis)->GetPlane().GetFirstAxis();
    beside[static_cast<std::size_t>(across)] += 1.15 * HalfAxes[static_cast<std::size_t>(across)];
    EXPECT_FALSE(this->IsRed(axis, beside)) << axis;
  }
  // It follows what the contour is.
  this->Panel()->GetResetButton()->click();
  EXPECT_EQ(this->CountRed(), 0);
  EXPECT_EQ(this->Panel()->GetMessage(), "No contour has come to rest yet: there is no mask.");
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_TRUE(this->IsRed(0, Middle));
  this->Panel()->GetMaskBox()->setChecked(false);
  EXPECT_EQ(this->CountRed(), 0);
}

TEST_F(WorkstationContourViews, OneMaskAtATime)
{
  this->PlaceRing(2);
  ASSERT_TRUE(this->RunToEnd());
  this->Panel()->GetMaskBox()->setChecked(true);
  ASSERT_TRUE(this->IsRed(2, Middle));
  // Labels that lie in a corner.
  zvtest::VolumeOptions options;
  options.Dimensions = Dimensions;
  const auto labels =
    zvtest::MakeVolume(options, [](int i, int j, int, int) { return i < 8 && j < 8 ? 1.0 : 0.0; });
  bool isOpen = false;
  QObject::connect(&this->Window, &zvMainWindow::maskOpened, [&isOpen] { isOpen = true; });
  this->Window.OpenMask(
    QString::fromStdString(this->Folder.Write("labels.mha", Header + zvtest::BytesOf(labels))));
  ASSERT_TRUE(WaitFor([&isOpen] { return isOpen; }));
  QAction* action = this->Window.GetEditBar()->GetMaskAction();
  action->setChecked(true);
  EXPECT_FALSE(this->Panel()->IsMaskWanted());
  EXPECT_FALSE(this->IsRed(2, Middle));
  this->Panel()->GetMaskBox()->setChecked(true);
  EXPECT_FALSE(action->isChecked());
  EXPECT_TRUE(this->IsRed(2, Middle));
  // A region is chosen for the next time.
  QComboBox* regions = this->Window.GetEditBar()->GetRegionBox();
  regions->setCurrentIndex(1);
  emit regions->activated(1);
  EXPECT_TRUE(this->Panel()->IsMaskWanted());
  EXPECT_TRUE(this->IsRed(2, Middle));
  EXPECT_TRUE(this->Panel()->GetActions().back()->isChecked());
  action->setChecked(true);
  EXPECT_FALSE(this->Panel()->GetActions().back()->isChecked());
  EXPECT_FALSE(this->IsRed(2, Middle));
  action->setChecked(false);
  EXPECT_EQ(this->CountRed(), 0);
}

TEST_F(WorkstationContourViews, LeavingTheToolKeepsTheContourOutOfReach)
{
  this->PlaceRing(2);
  const zvContour ring = this->ContourOf(2);
  this->Panel()->GetStartButton()->click();
  EXPECT_TRUE(this->Window.GetTools()->Leave());
  EXPECT_FALSE(this->Tool()->IsRunning());
  const zvContour left = this->ContourOf(2);
  EXPECT_GT(this->PictureOf(2).Count({ 0, 255, 0 }, 40), 50);
  const QPoint from = this->Seen(2) + QPoint(10, 10); // beside the lines of the cross
  this->Hand(2).Drag(Qt::LeftButton, from, from + QPoint(14, 14));
  EXPECT_EQ(this->ContourOf(2), left);
  this->Window.GetTools()->Choose("contour");
  this->Hand(2).Drag(Qt::LeftButton, from, from + QPoint(14, 14));
  EXPECT_NE(this->ContourOf(2), left);
}

TEST_F(WorkstationContourViews, APressOnALineOfTheCrossTurnsNothing)
{
  // On the axial plane's line in the sagittal view.
  const auto drag = [this]
  {
    std::array<double, 3> from;
    this->Viewer(0)->GetRotationCenter(from.data());
    from[1] += 20.0;
    const QPoint seen = this->Hand(0).At(from);
    this->Hand(0).Drag(Qt::LeftButton, seen, seen + QPoint(0, 25));
  };
  drag();
  EXPECT_EQ(this->Viewer(2)->GetPlaneOrientation(), 2);
  this->Window.GetTools()->Leave();
  drag();
  EXPECT_EQ(this->Viewer(2)->GetPlaneOrientation(), 3);
}

TEST_F(WorkstationContourViews, ANewVolumeBeginsAnew)
{
  const int before = this->Picture3D().Count({ 0, 255, 0 }, 10);
  this->PlaceRing(2);
  this->ChooseVolume();
  this->Panel()->GetMaskBox()->setChecked(true);
  this->Panel()->GetStartButton()->click();
  ASSERT_TRUE(WaitFor([this] { return !this->Tool()->GetKept(2).IsEmpty(); }));
  this->OpenVolume();
  EXPECT_FALSE(this->Tool()->IsRunning());
  EXPECT_FALSE(this->Panel()->IsMaskWanted());
  EXPECT_TRUE(this->Tool()->GetKept(2).IsEmpty());
  EXPECT_TRUE(this->ContourOf(2).empty());
  EXPECT_NEAR(this->Picture3D().Count({ 0, 255, 0 }, 10), before, 20);
  this->Window.GetTools()->Choose("contour");
  this->PlaceRing(2);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_GT(this->Tool()->GetKept(2).GetCount(), 12);
}

TEST_F(WorkstationContourViews, InTurnedPlanesThereIsNoContour)
{
  this->PlaceRing(2);
  const zvContour ring = this->ContourOf(2);
  this->Panel()->GetStartButton()->click();
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(20);
  EXPECT_FALSE(this->Tool()->IsRunning());
  EXPECT_EQ(this->Panel()->GetMessage(), "Paused, since the planes have been turned.");
  EXPECT_FALSE(this->Contour(2)->IsVisible());
  EXPECT_FALSE(this->Contour(2)->GetSliceWidget()->GetEnabled());
  this->Tool()->Start();
  EXPECT_FALSE(this->Tool()->IsRunning());
  EXPECT_EQ(this->Panel()->GetMessage(), "The planes are turned. Make them orthogonal first.");
  const double position = this->Viewer(2)->GetCenter()[2];
  this->Panel()->GetResetButton()->click();
  EXPECT_EQ(this->Viewer(2)->GetCenter()[2], position);
  EXPECT_TRUE(this->Panel()->GetResetButton()->isEnabled()) << "later";
  EXPECT_EQ(this->Panel()->GetMessage(), "The planes are turned. Make them orthogonal first.");
  this->Window.GetViews()->Straighten();
  EXPECT_TRUE(this->Contour(2)->IsVisible());
  EXPECT_FALSE(this->ContourOf(2).empty());
  const zvContour back = this->ContourOf(2);
  this->Hand(2).Drag(Qt::LeftButton, this->Seen(2), this->Seen(2) + QPoint(12, 0));
  EXPECT_NE(this->ContourOf(2), back);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_LT(this->GetDeviation(2), 0.04);
}

TEST_F(WorkstationContourViews, OneThatVanishesIsARingAgainAndSaysSo)
{
  this->Panel()->GetBox("balloon")->setValue(-1.0);
  this->Panel()->GetBox("tissue")->setValue(0.0);
  this->PlaceRing(1);
  const zvContour ring = this->ContourOf(1);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_EQ(this->Panel()->GetMessage(), "The contour shrank to nothing.");
  EXPECT_LT(zvContourMath::GetMeanDistance(this->ContourOf(1), ring), 0.1);
  EXPECT_TRUE(this->Tool()->GetKept(1).IsEmpty());
}

TEST_F(WorkstationContourViews, AnEvenSliceIsRefused)
{
  for (int j = 0; j < Dimensions[1]; ++j)
  {
    for (int i = 0; i < Dimensions[0]; ++i)
    {
      this->Image()->SetScalarComponentFromDouble(i, j, 12, 0, 70.0);
    }
  }
  this->PlaceRing(2);
  const zvContour ring = this->ContourOf(2);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_EQ(this->Panel()->GetMessage(), "The slice is even: there is no edge to go to.");
  EXPECT_LT(zvContourMath::GetMeanDistance(this->ContourOf(2), ring), 0.1);
}

TEST_F(WorkstationContourViews, TheContourTakesTheNumberOfPointsOfTheWidget)
{
  this->PlaceRing(2);
  this->Panel()->GetPointBox()->setValue(60);
  EXPECT_EQ(this->Contour(2)->GetResolution(), 60U);
  ASSERT_TRUE(this->RunToEnd());
  EXPECT_EQ(this->ContourOf(2).size(), 60U);
  EXPECT_LT(this->GetDeviation(2), 0.04);
  this->Panel()->GetClearButton()->click();
  this->Panel()->GetRadiusBox()->setValue(7.0);
  this->PlaceRing(2);
  EXPECT_EQ(this->ContourOf(2).size(), 60U);
  EXPECT_NEAR(zvContourMath::GetLength(this->ContourOf(2)), 2.0 * vtkMath::Pi() * 7.0, 0.2);
}

TEST_F(WorkstationContourViews, AContourAtRestThatIsMovedStaysInTheMaskAsItIs)
{
  this->ChooseVolume();
  this->Panel()->GetFirstBox()->setValue(12);
  this->Panel()->GetLastBox()->setValue(12);
  this->PlaceRing(2);
  ASSERT_TRUE(this->RunToEnd());
  const zvContour outline = this->ContourOf(2);
  const std::array<double, 3> edge = this->Contour(2)->GetPlane().ToWorld(outline[0]);
  const QPoint from = this->Hand(2).At(edge);
  this->Hand(2).Drag(Qt::LeftButton, from, from + QPoint(25, 0));
  ASSERT_NE(this->ContourOf(2), outline);
  ASSERT_NE(this->Tool()->GetKept(2).Find(12), nullptr);
  EXPECT_EQ(*this->Tool()->GetKept(2).Find(12), this->ContourOf(2));
  // It has kept its shape.
  EXPECT_NEAR(zvContourMath::GetArea(this->ContourOf(2)), zvContourMath::GetArea(outline), 0.5);
}

TEST(WorkstationContour, AWindowMayCloseWhileTheContourMoves)
{
  for (const int extent : { 0, 1 })
  {
    auto window = OpenPhantomWindow(64);
    window->GetTools()->Choose("contour");
    window->GetContourPanel()->GetExtentBox()->setCurrentIndex(extent);
    zvViewHand hand(window->GetViews()->GetSliceView(2));
    hand.Click(Qt::LeftButton, hand.At({ { 0.0, 40.0, 0.0 } }));
    window->GetContourPanel()->GetStartButton()->click();
    ASSERT_TRUE(window->GetContourTool()->IsRunning());
    QCoreApplication::processEvents();
    window.reset();
    QCoreApplication::processEvents();
  }
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
