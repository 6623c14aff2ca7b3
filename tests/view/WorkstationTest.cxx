#include "zvArguments.h"
#include "zvContourStations.h"
#include "zvImage3DPlanes.h"
#include "zvLoadBar.h"
#include "zvMainWindow.h"
#include "zvNoticeBar.h"
#include "zvSlicePanel.h"
#include "zvTurnPanel.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"
#include "zvVolumeView.h"
#include "zvVoxelText.h"
#include "zvWindowLevelDrag.h"
#include "zvWindowPanel.h"

#include "zvIndexedVolume.h"
#include "zvPicture.h"
#include "zvQtTest.h"
#include "zvQuietTest.h"
#include "zvTemporaryFolder.h"
#include "zvWindows.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QImage>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QWindow>

#include "vtkCamera.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkMath.h"
#include "vtkRenderer.h"

#include <cmath>
#include <functional>

namespace
{
using zvtest::Patience;
using zvtest::WaitFor;

constexpr int Side = 48; // of the phantom that most tests look at

}

class Workstation : public zvtest::QuietTest
{
protected:
  Workstation()
    : Hand(this->Window.GetView())
  {
    this->Window.resize(1400, 900);
    QObject::connect(&this->Window, &zvMainWindow::shown, [this] { ++this->Shown; });
    QObject::connect(&this->Window, &zvMainWindow::cancelled, [this] { ++this->Cancelled; });
    QObject::connect(&this->Window, &zvMainWindow::refused,
      [this](const QString& path, const QString& reason)
      {
        this->RefusedPath = path;
        this->Reason = reason;
      });
  }

  void SetUp() override
  {
    this->Window.show();
    ASSERT_TRUE(WaitFor([this] { return this->Window.windowHandle()->isExposed(); }));
    this->Window.OpenPhantom(Side);
    ASSERT_TRUE(this->WaitForVolume(1));
  }

  bool WaitForVolume(int count)
  {
    return WaitFor([this, count] { return this->Shown == count; });
  }

  zvVolumeView* View() { return this->Window.GetView(); }
  QSlider* Slider(int axis)
  {
    return this->Window.GetSlicePanel()->GetRow(axis)->findChild<QSlider*>();
  }
  QSpinBox* Number(int axis)
  {
    return this->Window.GetSlicePanel()->GetRow(axis)->findChild<QSpinBox*>();
  }
  std::array<int, 3> Slices()
  {
    return { { this->View()->GetSlice(0), this->View()->GetSlice(1), this->View()->GetSlice(2) } };
  }
  std::array<int, 3> Sliders()
  {
    return { { this->Slider(0)->value(), this->Slider(1)->value(), this->Slider(2)->value() } };
  }
  zvtest::Picture Picture() { return zvtest::Picture(this->View()->renderWindow()); }
  std::array<double, 3> CameraPosition()
  {
    std::array<double, 3> position;
    this->View()->GetRenderer()->GetActiveCamera()->GetPosition(position.data());
    return position;
  }
  double CameraDistance() { return this->View()->GetRenderer()->GetActiveCamera()->GetDistance(); }
  QPoint Corner() { return QPoint(12, 12); } // beside every plane

  // A volume of indexed voxels as a MetaImage file with some lines of header.
  std::string WriteVolume(const std::string& name, const std::string& fields)
  {
    const auto voxels = zvtest::MakeIndexedVolume({ { 20, 20, 20 } });
    return this->Folder.Write(name,
      "ObjectType = Image\nNDims = 3\nDimSize = 20 20 20\nElementType = MET_SHORT\n"
      "BinaryData = True\n" +
        fields + "ElementDataFile = LOCAL\n" + zvtest::BytesOf(voxels));
  }

  zvMainWindow Window;
  zvViewHand Hand;
  zvtest::TemporaryFolder Folder;
  int Shown = 0;
  int Cancelled = 0;
  QString RefusedPath;
  QString Reason;
};

TEST_F(Workstation, OpensAVolumeWithItsPlanesInTheMiddle)
{
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 23, 23, 23 } }));
  EXPECT_EQ(this->Sliders(), this->Slices());
  EXPECT_EQ(this->Slider(0)->maximum(), Side - 1);
  EXPECT_EQ(this->Number(2)->value(), 23);
  EXPECT_EQ(this->Window.windowTitle(), "Head phantom - Workstation");
  EXPECT_EQ(this->Window.GetStatusText(), zvVoxelText::Hint());
  EXPECT_FALSE(this->Window.GetLoadBar()->isVisible());
  EXPECT_FALSE(this->Window.GetNoticeBar()->isVisible());
}

TEST_F(Workstation, DrawsEveryPlanesEdgeInItsColour)
{
  const zvtest::Picture picture = this->Picture();
  EXPECT_GT(picture.Count({ 255, 0, 0 }, 40), 100);
  EXPECT_GT(picture.Count({ 0, 255, 0 }, 40), 100);
  EXPECT_GT(picture.Count({ 0, 0, 255 }, 40), 100);
}

TEST_F(Workstation, ASliderMovesItsOwnPlane)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    const zvtest::Picture before = this->Picture();
    auto expected = this->Slices();
    expected[static_cast<std::size_t>(axis)] = 10 + axis;
    this->Slider(axis)->setValue(10 + axis);
    EXPECT_EQ(this->Slices(), expected);
    EXPECT_EQ(this->Number(axis)->value(), 10 + axis);
    EXPECT_GT(this->Picture().CountDifferent(before), 500);
  }
}

TEST_F(Workstation, ANumberMovesItsPlaneAndSlider)
{
  this->Number(1)->setValue(40);
  EXPECT_EQ(this->View()->GetSlice(1), 40);
  EXPECT_EQ(this->Slider(1)->value(), 40);
}

TEST_F(Workstation, ADragMovesThePlaneAndTheSliderFollowsDuringIt)
{
  std::array<double, 3> point = this->Hand.OnAxialPlane(0.4, -0.3);
  const QPoint from = this->Hand.At(point);
  point[2] += 12.0; // at least one slice a millimetre
  const QPoint to = this->Hand.At(point);
  this->Hand.Press(Qt::LeftButton, from);
  this->Hand.MoveTo((from + to) / 2);
  const int halfway = this->View()->GetSlice(2);
  EXPECT_GT(halfway, 23);
  EXPECT_EQ(this->Slider(2)->value(), halfway);
  this->Hand.MoveTo(to);
  EXPECT_GT(this->View()->GetSlice(2), halfway);
  EXPECT_EQ(this->Sliders(), this->Slices());
  this->Hand.Release();
  EXPECT_EQ(this->View()->GetSlice(0), 23);
  EXPECT_EQ(this->View()->GetSlice(1), 23);
  const auto after = this->Slices();
  this->Hand.MoveTo(from);
  EXPECT_EQ(this->Slices(), after) << "the plane was not let go";
}

TEST_F(Workstation, AShiftClickReadsTheVoxelUnderTheMouse)
{
  auto point = this->Hand.OnAxialPlane(0.3, -0.25);
  this->Hand.Click(Qt::LeftButton, this->Hand.At(point), Qt::ShiftModifier);
  vtkImageData* image = this->View()->GetVolume().Image;
  zvVoxel found;
  int near = 0;
  // The mouse is exact to a pixel, which may be the next voxel.
  const vtkIdType id = image->FindPoint(point.data());
  const int centre[3] = { static_cast<int>(id % Side), static_cast<int>(id / Side % Side), 23 };
  for (int i = centre[0] - 1; i <= centre[0] + 1; ++i)
  {
    for (int j = centre[1] - 1; j <= centre[1] + 1; ++j)
    {
      const int index[3] = { i, j, centre[2] };
      image->GetPoint(image->ComputePointId(const_cast<int*>(index)), found.Position.data());
      found.Index = { { i, j, centre[2] } };
      found.Value = image->GetScalarComponentAsDouble(i, j, centre[2], 0);
      near += this->Window.GetStatusText() == zvVoxelText::Describe(found, true) ? 1 : 0;
    }
  }
  EXPECT_EQ(near, 1) << this->Window.GetStatusText().toStdString();
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 23, 23, 23 } })) << "a plane has moved";
}

TEST_F(Workstation, ASliceDragKeepsTheVoxelThatWasRead)
{
  this->Hand.Click(
    Qt::LeftButton, this->Hand.At(this->Hand.OnAxialPlane(0.3, -0.25)), Qt::ShiftModifier);
  const QString text = this->Window.GetStatusText();
  EXPECT_NE(text, zvVoxelText::Hint());
  const QPoint from = this->Hand.At(this->Hand.OnAxialPlane(0.4, -0.3));
  this->Hand.Drag(Qt::LeftButton, from, from + QPoint(0, -40));
  EXPECT_NE(this->View()->GetSlice(2), 23);
  EXPECT_EQ(this->Window.GetStatusText(), text);
}

TEST_F(Workstation, ALeftDragBesideThePlanesTurnsTheCamera)
{
  const auto before = this->CameraPosition();
  const double distance = this->CameraDistance();
  this->Hand.Drag(Qt::LeftButton, this->Corner(), this->Corner() + QPoint(80, 30));
  EXPECT_NE(this->CameraPosition(), before);
  EXPECT_NEAR(this->CameraDistance(), distance, 1.0e-6 * distance);
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 23, 23, 23 } }));
  const auto after = this->CameraPosition();
  this->Hand.MoveTo(this->Corner());
  EXPECT_EQ(this->CameraPosition(), after) << "the camera was not let go";
}

TEST_F(Workstation, AShiftClickBesideThePlanesDoesNothing)
{
  const auto before = this->CameraPosition();
  this->Hand.Drag(
    Qt::LeftButton, this->Corner(), this->Corner() + QPoint(80, 30), 4, Qt::ShiftModifier);
  EXPECT_EQ(this->CameraPosition(), before);
  EXPECT_EQ(this->Window.GetStatusText(), zvVoxelText::Hint());
}

TEST_F(Workstation, APlaneCanBeDraggedAfterTheCameraWasTurned)
{
  this->Hand.Drag(Qt::LeftButton, this->Corner(), this->Corner() + QPoint(20, 10));
  const QPoint from = this->Hand.At(this->Hand.OnAxialPlane(0.4, -0.3));
  this->Hand.Drag(Qt::LeftButton, from, from + QPoint(0, -40));
  EXPECT_GT(this->View()->GetSlice(2), 23);
}

TEST_F(Workstation, AMiddleDragTurnsTheCameraOnAPlaneToo)
{
  const QPoint middle = this->Hand.At(this->Hand.OnAxialPlane(0.4, -0.3));
  const auto before = this->CameraPosition();
  const double distance = this->CameraDistance();
  this->Hand.Drag(Qt::MiddleButton, middle, middle + QPoint(50, 20));
  EXPECT_NE(this->CameraPosition(), before);
  EXPECT_NEAR(this->CameraDistance(), distance, 1.0e-6 * distance);
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 23, 23, 23 } }));
}

TEST_F(Workstation, AMiddleDragWithShiftMovesTheCameraSideways)
{
  vtkCamera* camera = this->View()->GetRenderer()->GetActiveCamera();
  double before[3], after[3];
  camera->GetFocalPoint(before);
  const double distance = this->CameraDistance();
  this->Hand.Drag(
    Qt::MiddleButton, this->Corner(), this->Corner() + QPoint(50, 20), 4, Qt::ShiftModifier);
  camera->GetFocalPoint(after);
  EXPECT_GT(vtkMath::Distance2BetweenPoints(before, after), 1.0);
  EXPECT_NEAR(this->CameraDistance(), distance, 1.0e-6 * distance);
}

TEST_F(Workstation, AMiddleDragWithControlAndTheWheelGoNearer)
{
  double distance = this->CameraDistance();
  this->Hand.Drag(Qt::MiddleButton, QPoint(200, 200), QPoint(200, 150), 4, Qt::ControlModifier);
  EXPECT_LT(this->CameraDistance(), 0.95 * distance);
  distance = this->CameraDistance();
  this->Hand.Turn(1, QPoint(200, 200));
  EXPECT_NEAR(this->CameraDistance(), distance / 1.1, 1.0e-6 * distance);
  this->Hand.Turn(-1, QPoint(200, 200));
  EXPECT_NEAR(this->CameraDistance(), distance, 1.0e-6 * distance);
}

TEST_F(Workstation, ARightDragChangesWindowAndLevel)
{
  const zvtest::Picture before = this->Picture();
  const zvWindowValues start = this->View()->GetWindowLevel();
  const QSize size = this->View()->size();
  this->Hand.Drag(Qt::RightButton, QPoint(200, 200), QPoint(100, 150), 5);
  const zvWindowValues value = this->View()->GetWindowLevel();
  EXPECT_NEAR(value.Window, start.Window - 1000.0 * 100.0 / size.width(), 1.0e-6);
  EXPECT_NEAR(value.Level, start.Level + 1000.0 * 50.0 / size.height(), 1.0e-6);
  EXPECT_NEAR(this->Window.GetWindowPanel()->GetWindowBox()->value(), value.Window, 0.051);
  EXPECT_NEAR(this->Window.GetWindowPanel()->GetLevelBox()->value(), value.Level, 0.051);
  EXPECT_EQ(this->Window.GetWindowPanel()->GetPresetBox()->currentIndex(), -1);
  EXPECT_GT(this->Picture().CountDifferent(before), 1000);
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 23, 23, 23 } }));
}

TEST_F(Workstation, APresetSetsWindowAndLevel)
{
  QComboBox* box = this->Window.GetWindowPanel()->GetPresetBox();
  EXPECT_EQ(box->currentText(), "1 to 99 %");
  const int full = box->findText("Full range");
  ASSERT_GE(full, 0);
  this->View()->SetWindowLevel({ 300.0, 200.0 });
  EXPECT_EQ(box->currentIndex(), -1);
  const zvtest::Picture before = this->Picture();
  box->setCurrentIndex(full);
  emit box->activated(full);
  EXPECT_EQ(this->View()->GetWindowLevel().Window, 1000.0);
  EXPECT_EQ(this->View()->GetWindowLevel().Level, 500.0);
  EXPECT_EQ(box->currentIndex(), full);
  EXPECT_EQ(this->Window.GetWindowPanel()->GetWindowBox()->value(), 1000.0);
  EXPECT_GT(this->Picture().CountDifferent(before), 1000);
}

TEST_F(Workstation, NumbersSetWindowAndLevel)
{
  this->Window.GetWindowPanel()->GetWindowBox()->setValue(250.0);
  this->Window.GetWindowPanel()->GetLevelBox()->setValue(150.0);
  EXPECT_EQ(this->View()->GetWindowLevel().Window, 250.0);
  EXPECT_EQ(this->View()->GetWindowLevel().Level, 150.0);
}

TEST_F(Workstation, TheTurnSlidersTurnThePlanesAndTheButtonTurnsThemBack)
{
  const zvtest::Picture before = this->Picture();
  const auto camera = this->CameraPosition();
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(30);
  EXPECT_GT(this->Picture().CountDifferent(before), 1000);
  // An oblique plane counts the steps that fit into the volume along its own normal.
  EXPECT_NE(this->View()->GetSliceCount(2), Side);
  EXPECT_EQ(this->Slider(2)->maximum(), this->View()->GetSliceCount(2) - 1);
  this->Window.GetTurnPanel()->findChild<QPushButton*>()->click();
  EXPECT_EQ(this->Window.GetTurnPanel()->GetSlider(0)->value(), 0);
  EXPECT_EQ(this->View()->GetSliceCount(2), Side);
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 23, 23, 23 } }));
  EXPECT_EQ(this->CameraPosition(), camera);
  EXPECT_LT(this->Picture().CountDifferent(before), 50);
}

TEST_F(Workstation, TheClippingRangeStaysAtTheVolumeWhereverThePlanesReach)
{
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(25);
  this->Window.GetTurnPanel()->GetSlider(2)->setValue(-20);
  this->Hand.Drag(Qt::MiddleButton, QPoint(200, 200), QPoint(240, 210));
  vtkCamera* camera = this->View()->GetRenderer()->GetActiveCamera();
  // The ball around a cube of 256 mm with the letters, and the room that the renderer leaves before
  // and behind it.
  const double radius = 0.5 * 1.3 * 256.0 * std::sqrt(3.0);
  const double front = camera->GetDistance() - radius, back = camera->GetDistance() + radius;
  const double nearest = 0.99 * front - 0.5 * (back - front);
  EXPECT_GE(camera->GetClippingRange()[0], nearest);
  EXPECT_LE(camera->GetClippingRange()[1], 1.01 * back + 0.5 * (back - nearest));
}

TEST_F(Workstation, AnObliquePlaneFollowsItsSlider)
{
  this->Window.GetTurnPanel()->GetSlider(1)->setValue(25);
  const zvtest::Picture before = this->Picture();
  const int index = this->View()->GetSlice(2);
  this->Slider(2)->setValue(this->Slider(2)->value() - 6);
  EXPECT_LT(this->View()->GetSlice(2), index);
  EXPECT_GT(this->Picture().CountDifferent(before), 500);
}

TEST_F(Workstation, ResetAllBringsBackCameraAndPlanes)
{
  const zvtest::Picture before = this->Picture();
  this->Hand.Drag(Qt::LeftButton, this->Corner(), this->Corner() + QPoint(80, 30));
  this->Hand.Turn(3, QPoint(200, 200));
  this->Slider(0)->setValue(5);
  this->Window.GetViews()->ResetAll();
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 23, 23, 23 } }));
  EXPECT_EQ(this->Sliders(), this->Slices());
  EXPECT_LT(this->Picture().CountDifferent(before), 50);
}

TEST_F(Workstation, ARefusedFileKeepsTheVolumeAndTellsWhy)
{
  vtkImageData* image = this->View()->GetVolume().Image;
  this->Slider(1)->setValue(30);
  const QString path = QString::fromStdString(this->Folder.Write("broken.nii", "no image"));
  this->Window.Open(path);
  ASSERT_TRUE(WaitFor([this] { return !this->Reason.isEmpty(); }));
  EXPECT_EQ(this->RefusedPath, path);
  EXPECT_EQ(this->Reason, "it is not a NIfTI image");
  auto* box = this->Window.findChild<QMessageBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->isVisible());
  EXPECT_EQ(box->text(), path + " is not shown:\nit is not a NIfTI image.");
  box->close();
  EXPECT_EQ(this->View()->GetVolume().Image, image);
  EXPECT_EQ(this->View()->GetSlice(1), 30);
  EXPECT_FALSE(this->Window.GetLoadBar()->isVisible());
  EXPECT_EQ(this->Window.windowTitle(), "Head phantom - Workstation");
  EXPECT_EQ(this->Shown, 1);
}

TEST_F(Workstation, CancelStopsALoadAndKeepsTheVolume)
{
  vtkImageData* image = this->View()->GetVolume().Image;
  this->Window.OpenPhantom(400);
  EXPECT_TRUE(this->Window.GetLoadBar()->isVisible());
  this->Window.GetLoadBar()->GetCancelButton()->click();
  EXPECT_EQ(this->Cancelled, 1);
  EXPECT_FALSE(this->Window.GetLoadBar()->isVisible());
  EXPECT_EQ(this->View()->GetVolume().Image, image);
  // The next load is not disturbed by what is left of the first.
  this->Window.OpenPhantom(32);
  ASSERT_TRUE(this->WaitForVolume(2));
  EXPECT_EQ(this->View()->GetSliceCount(0), 32);
  EXPECT_EQ(this->Cancelled, 1);
}

TEST_F(Workstation, TheLastOfTwoLoadsIsShown)
{
  this->Window.OpenPhantom(300);
  this->Window.OpenPhantom(24);
  ASSERT_TRUE(this->WaitForVolume(2));
  EXPECT_EQ(this->View()->GetSliceCount(0), 24);
  EXPECT_EQ(this->Cancelled, 1);
}

TEST_F(Workstation, ANewVolumeTakesThePlaceOfTheOldOne)
{
  this->Slider(0)->setValue(5);
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(30);
  const std::string path = this->WriteVolume("small.mha", "TransformMatrix = 1 0 0 0 1 0 0 0 1\n");
  this->Window.Open(QString::fromStdString(path));
  ASSERT_TRUE(this->WaitForVolume(2));
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 9, 9, 9 } }));
  EXPECT_EQ(this->Sliders(), this->Slices());
  EXPECT_EQ(this->Slider(0)->maximum(), 19);
  EXPECT_EQ(this->Window.GetTurnPanel()->GetSlider(0)->value(), 0);
  EXPECT_EQ(this->Window.windowTitle(), "small.mha - Workstation");
  EXPECT_FALSE(this->Window.GetNoticeBar()->isVisible());
  const QPoint from = this->Hand.At(this->Hand.OnAxialPlane(0.4, -0.3));
  this->Hand.Drag(Qt::LeftButton, from, from + QPoint(0, -40));
  EXPECT_GT(this->View()->GetSlice(2), 9);
}

TEST_F(Workstation, AResampledVolumeComesWithANotice)
{
  const std::string path =
    this->WriteVolume("oblique.mha", "TransformMatrix = 0.8 0.6 0 -0.6 0.8 0 0 0 1\n");
  this->Window.Open(QString::fromStdString(path));
  ASSERT_TRUE(this->WaitForVolume(2));
  EXPECT_TRUE(this->Window.GetNoticeBar()->isVisible());
  EXPECT_EQ(this->Window.GetNoticeBar()->GetText(),
    "The slices lean by 36.9 degrees: resampled to 28 x 28 x 20 voxels of 1 x 1 x 1 mm along the "
    "patient's axes.");
  this->Window.GetNoticeBar()->findChild<QToolButton*>()->click();
  EXPECT_FALSE(this->Window.GetNoticeBar()->isVisible());
}

TEST_F(Workstation, SidesAreMarkedOnlyWhereTheyAreKnown)
{
  const zvtest::Color letters = zvtest::Color::FromUnit(1.0, 0.85, 0.4);
  EXPECT_GT(this->Picture().Count(letters, 10), 50);
  this->Window.Open(QString::fromStdString(this->WriteVolume("plain.mha", "")));
  ASSERT_TRUE(this->WaitForVolume(2));
  EXPECT_EQ(this->Picture().Count(letters, 10), 0);
  EXPECT_EQ(this->Window.GetNoticeBar()->GetText(),
    "The file does not say how the patient lies: sides are not marked.");
}

TEST_F(Workstation, OpensTheExampleOfTheSystemOrElseThePhantom)
{
  const bool isInstalled = !zvVolumeReader::FindExampleVolume().empty();
  this->Window.OpenExample();
  ASSERT_TRUE(this->WaitForVolume(2));
  EXPECT_EQ(this->View()->GetSliceCount(0), isInstalled ? 181 : 256);
  EXPECT_EQ(this->View()->GetSliceCount(1), isInstalled ? 217 : 256);
  EXPECT_TRUE(this->View()->GetVolume().IsOrientationKnown);
}

TEST_F(Workstation, MayBeClosedWhileItLoads)
{
  auto window = std::make_unique<zvMainWindow>();
  window->show();
  window->OpenPhantom(300);
  EXPECT_TRUE(window->GetLoadBar()->isVisible());
  window.reset();
  QCoreApplication::processEvents();
  ExpectNoMessage();
}

TEST_F(Workstation, AWindowWithoutAVolumeIgnoresTheMouse)
{
  zvMainWindow window;
  window.show();
  ASSERT_TRUE(WaitFor([&window] { return window.windowHandle()->isExposed(); }));
  zvViewHand hand(window.GetView());
  hand.Drag(Qt::LeftButton, QPoint(100, 100), QPoint(150, 100));
  hand.Drag(Qt::RightButton, QPoint(100, 100), QPoint(150, 100));
  hand.Turn(1, QPoint(100, 100));
  window.GetViews()->ResetAll();
  window.GetViews()->ResetActiveView();
  window.GetViews()->Straighten();
  window.GetViews()->Turn(0, 5.0);
  window.GetViews()->GoTo(0, 5);
  window.GetViews()->UndoFill();
  window.GetView()->SetSlice(0, 5);
  window.GetView()->StraightenPlanes();
  EXPECT_EQ(window.GetView()->GetSlice(0), 0);
  EXPECT_EQ(window.GetView()->GetPlanes(), nullptr);
}

// ---- the parts without a window

TEST(WorkstationTexts, AVoxelIsToldWithItsSides)
{
  zvVoxel voxel;
  voxel.Index = { { 1, 20, 300 } };
  voxel.Position = { { -12.34, 0.0, 7.0 } };
  voxel.Value = -1.5;
  EXPECT_EQ(zvVoxelText::Describe(voxel, true),
    "Voxel 1 20 300     R 12.3  P 0.0  S 7.0 mm     value -1.5");
  voxel.View = "Axial";
  voxel.Label = "Caudate_R";
  EXPECT_EQ(zvVoxelText::Describe(voxel, true),
    "Axial     Voxel 1 20 300     R 12.3  P 0.0  S 7.0 mm     value -1.5     Caudate_R");
  voxel.View.clear();
  voxel.Label.clear();
  EXPECT_EQ(
    zvVoxelText::Describe(voxel, false), "Voxel 1 20 300     -12.3  0.0  7.0 mm     value -1.5");
}

TEST(WorkstationWindowLevelDrag, AWholeViewIsWorthTheWholeRange)
{
  zvWindowLevelDrag drag;
  EXPECT_FALSE(drag.IsRunning());
  drag.Begin(QPoint(10, 10), { 100.0, 50.0 }, 1000.0);
  EXPECT_TRUE(drag.IsRunning());
  const zvWindowValues value = drag.MoveTo(QPoint(110, 60), QSize(400, 200));
  EXPECT_DOUBLE_EQ(value.Window, 350.0);
  EXPECT_DOUBLE_EQ(value.Level, -200.0);
  EXPECT_DOUBLE_EQ(drag.MoveTo(QPoint(-390, 10), QSize(400, 200)).Window, 1.0);
  drag.End();
  EXPECT_FALSE(drag.IsRunning());
}

TEST(WorkstationArguments, AreReadInAnyOrder)
{
  const zvArguments all =
    zvArguments::Parse({ "--quit-after", "250", "head.nii", "--shots", "pictures" });
  EXPECT_EQ(all.Mistake, "");
  EXPECT_EQ(all.Volume, "head.nii");
  EXPECT_EQ(all.ShotsFolder, "pictures");
  EXPECT_EQ(all.QuitAfter, 250);
  const zvArguments none = zvArguments::Parse({});
  EXPECT_EQ(none.Mistake, "");
  EXPECT_EQ(none.QuitAfter, -1);
  EXPECT_TRUE(zvArguments::Parse({ "-h" }).WantsHelp);
}

TEST(WorkstationArguments, MistakesAreTold)
{
  EXPECT_EQ(zvArguments::Parse({ "--shots" }).Mistake, "--shots needs a folder");
  EXPECT_EQ(zvArguments::Parse({ "--quit-after", "soon" }).Mistake,
    "--quit-after needs a number of milliseconds");
  EXPECT_EQ(zvArguments::Parse({ "--quit-after", "-4" }).Mistake,
    "--quit-after needs a number of milliseconds");
  EXPECT_EQ(zvArguments::Parse({ "a.nii", "b.nii" }).Mistake, "one volume at a time");
  EXPECT_EQ(zvArguments::Parse({ "--fast" }).Mistake, "unknown option --fast");
}

// ---- the program

namespace
{
struct Ending
{
  int Status = -1;
  std::string Errors;
};

Ending RunProgram(const QStringList& arguments, bool withDisplay = true)
{
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  // Leaks are looked for in this process, where the graphics driver is kept; a program that unloads
  // it at its end would have the driver's own reported.
  environment.insert("ASAN_OPTIONS", "detect_leaks=0");
  if (!withDisplay)
  {
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");
    environment.remove("QT_QPA_PLATFORM");
  }
  process.setProcessEnvironment(environment);
  process.start(QCoreApplication::applicationDirPath() + "/zv-workstation", arguments);
  Ending ending;
  if (process.waitForFinished(25 * Patience) && process.exitStatus() == QProcess::NormalExit)
  {
    ending.Status = process.exitCode();
  }
  ending.Errors = process.readAllStandardError().toStdString();
  return ending;
}
}

class WorkstationProgram : public ::testing::Test
{
protected:
  zvtest::TemporaryFolder Folder;
};

TEST_F(WorkstationProgram, EndsWhenItIsTold)
{
  const Ending ending = RunProgram({ "--quit-after", "500" });
  EXPECT_EQ(ending.Status, 0) << ending.Errors;
}

TEST_F(WorkstationProgram, RefusesABadFileOnATourWithOneLine)
{
  const std::string file = this->Folder.Write("empty.nrrd", "");
  const Ending ending = RunProgram(
    { QString::fromStdString(file), "--shots", QString::fromStdString(this->Folder.At("shots")) });
  EXPECT_EQ(ending.Status, 1);
  EXPECT_NE(ending.Errors.find("zv-workstation: " + file + ": it is empty\n"), std::string::npos)
    << ending.Errors;
}

TEST_F(WorkstationProgram, RefusesABadFileWithoutADisplayWithOneLine)
{
  const Ending ending = RunProgram({ "/missing.nii" }, false);
  EXPECT_EQ(ending.Status, 1);
  EXPECT_EQ(ending.Errors, "zv-workstation: /missing.nii: there is no such file or folder\n");
  EXPECT_EQ(RunProgram({}, false).Errors, "zv-workstation: there is no display\n");
}

TEST_F(WorkstationProgram, TellsItsUsageAfterAMistake)
{
  const Ending ending = RunProgram({ "--fast" });
  EXPECT_EQ(ending.Status, 2);
  EXPECT_EQ(ending.Errors,
    std::string("zv-workstation: unknown option --fast\n") + zvArguments::GetUsage());
}

TEST_F(WorkstationProgram, ATourWritesADifferentPictureOfEveryStation)
{
  const QString folder = QString::fromStdString(this->Folder.At("shots"));
  const Ending ending = RunProgram({ "--shots", folder });
  ASSERT_EQ(ending.Status, 0) << ending.Errors;
  QStringList prefixes = { "phantom" };
  if (!zvVolumeReader::FindExampleVolume().empty())
  {
    prefixes += "mri";
  }
  // Only the example has a mask.
  QStringList stations = { "at-rest", "slice-dragged", "voxel-read", "window-level", "oblique",
    "cross-dragged", "line-turned", "rulers", "contours", "notes", "list", "help", "mask",
    "markers", "normal-and-box", "filled" };
  for (const zvContourStations::Station& station : zvContourStations::GetAll())
  {
    stations += station.Name;
  }
  EXPECT_EQ(QDir(folder).entryList({ "*.png" }).size(), prefixes.size() * stations.size() - 1);
  std::vector<QImage> pictures;
  for (const QString& prefix : prefixes)
  {
    for (const QString& name : stations)
    {
      if (name == "mask" && prefix == "phantom")
      {
        continue;
      }
      const QImage picture(QDir(folder).filePath(prefix + "-" + name + ".png"));
      EXPECT_GE(picture.width(), 1000) << name.toStdString();
      for (const QImage& other : pictures)
      {
        EXPECT_NE(picture, other) << name.toStdString();
      }
      pictures.push_back(picture);
    }
  }
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
