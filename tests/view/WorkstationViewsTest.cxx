#include "zvEditBar.h"
#include "zvImageViewerWidget.h"
#include "zvLabelAtlas.h"
#include "zvMainWindow.h"
#include "zvSlicePanel.h"
#include "zvToolSet.h"
#include "zvTurnPanel.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"
#include "zvVolumeView.h"
#include "zvVoxelText.h"
#include "zvWindowPanel.h"

#include "zvDice.h"
#include "zvIndexedVolume.h"
#include "zvPicture.h"
#include "zvQtTest.h"
#include "zvQuietTest.h"
#include "zvTemporaryFolder.h"
#include "zvWindows.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QWindow>

#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCommand.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkMath.h"
#include "vtkRenderer.h"

#include <cmath>
#include <functional>
#include <memory>
#include <vector>

namespace
{
using zvtest::OpenPhantomWindow;
using zvtest::WaitFor;

constexpr double Tolerance = 1.0e-6; // millimetres

// Unequal along the three axes, so that no two can be taken for each other.
constexpr std::array<int, 3> Dimensions{ { 40, 50, 30 } };
constexpr std::array<double, 3> Spacing{ { 2.0, 1.5, 3.0 } };
constexpr std::array<double, 3> Origin{ { -30.0, 10.0, 5.0 } };

constexpr int LineAxes[3][2] = { { 1, 2 }, { 2, 0 }, { 0, 1 } }; // of each view's two lines

using Vector = std::array<double, 3>;

std::size_t At(int index)
{
  return static_cast<std::size_t>(index);
}

double Dot(const Vector& one, const Vector& other)
{
  return vtkMath::Dot(one.data(), other.data());
}

double DegreesBetween(const Vector& one, const Vector& other)
{
  return vtkMath::DegreesFromRadians(vtkMath::AngleBetweenVectors(one.data(), other.data()));
}

std::string HeaderOf(const char* type)
{
  return std::string("ObjectType = Image\nNDims = 3\nDimSize = 40 50 30\nElementType = ") + type +
    "\nBinaryData = True\nElementSpacing = 2 1.5 3\nOffset = -30 10 5\n"
    "TransformMatrix = 1 0 0 0 1 0 0 0 1\nElementDataFile = LOCAL\n";
}
}

class WorkstationViews : public zvtest::QuietTest
{
protected:
  WorkstationViews()
    : Hands{ { zvViewHand(this->Slice(0)), zvViewHand(this->Slice(1)),
        zvViewHand(this->Slice(2)) } }
    , Hand3D(this->Window.GetView())
  {
    this->Window.resize(1400, 900);
    QObject::connect(&this->Window, &zvMainWindow::shown, [this] { ++this->Shown; });
  }

  void SetUp() override
  {
    this->Window.show();
    ASSERT_TRUE(WaitFor([this] { return this->Window.windowHandle()->isExposed(); }));
    const auto voxels = zvtest::MakeIndexedVolume(Dimensions);
    this->Window.Open(QString::fromStdString(
      this->Folder.Write("head.mha", HeaderOf("MET_SHORT") + zvtest::BytesOf(voxels))));
    ASSERT_TRUE(WaitFor([this] { return this->Shown == 1; }));
    QCoreApplication::processEvents();
  }

  // Waits for the end of the load. \return whether there are labels now.
  bool OpenMask(const QString& path)
  {
    bool isOpened = false, isRefused = false;
    QObject context;
    QObject::connect(
      &this->Window, &zvMainWindow::maskOpened, &context, [&isOpened] { isOpened = true; });
    QObject::connect(
      &this->Window, &zvMainWindow::refused, &context, [&isRefused] { isRefused = true; });
    this->Window.OpenMask(path);
    return WaitFor([&] { return isOpened || isRefused; }) && isOpened;
  }

  QAction* Tool(const char* id) { return this->Window.GetTools()->GetAction(id); }
  zvViewGrid* Views() { return this->Window.GetViews(); }
  zvVolumeView* View3D() { return this->Window.GetView(); }
  zvSliceView* Slice(int axis) { return this->Window.GetViews()->GetSliceView(axis); }
  zvImageViewerWidget* Viewer(int axis) { return this->Slice(axis)->GetViewer(); }
  zvViewHand& Hand(int axis) { return this->Hands[At(axis)]; }
  vtkImageData* Image() { return this->View3D()->GetVolume().Image; }
  zvtest::Picture PictureOf(int axis) { return zvtest::Picture(this->Slice(axis)->renderWindow()); }
  zvtest::Picture Picture3D() { return zvtest::Picture(this->View3D()->renderWindow()); }

  Vector Cross(int view)
  {
    Vector cross;
    this->Viewer(view)->GetRotationCenter(cross.data());
    return cross;
  }
  Vector Normal(int view)
  {
    Vector normal;
    this->Viewer(view)->GetNormal(normal.data());
    return normal;
  }
  int SliceIndex(int axis) { return this->Viewer(axis)->GetSliceIndex(); }
  int SliderValue(int axis) { return this->Window.GetSlicePanel()->GetRow(axis)->GetSlice(); }
  std::array<int, 3> Slices()
  {
    return { { this->SliceIndex(0), this->SliceIndex(1), this->SliceIndex(2) } };
  }
  Vector Center(const std::array<int, 3>& voxel)
  {
    Vector center;
    for (std::size_t a = 0; a < 3; ++a)
    {
      center[a] = Origin[a] + voxel[a] * Spacing[a];
    }
    return center;
  }
  // Where a voxel of the present slice is seen.
  QPoint Seen(int view, std::array<int, 3> voxel)
  {
    voxel[At(view)] = this->SliceIndex(view);
    return this->Hand(view).At(this->Center(voxel));
  }

  // All views show the same three planes, which meet in one point.
  void ExpectLinked(const std::string& when)
  {
    SCOPED_TRACE(when);
    const Vector& cross = this->Views()->GetLink()->GetCross();
    for (int view = 0; view < 3; ++view)
    {
      const Vector own = this->Cross(view);
      Vector plane;
      this->Viewer(view)->GetCenter(plane.data());
      EXPECT_NEAR(Dot(this->Normal(view), plane), Dot(this->Normal(view), cross), 1.0e-4)
        << "the plane of view " << view << " does not go through the cross";
      for (std::size_t a = 0; a < 3; ++a)
      {
        EXPECT_NEAR(own[a], cross[a], Tolerance) << "view " << view;
      }
      const Vector other = this->Normal((view + 1) % 3);
      EXPECT_NEAR(Dot(this->Normal(view), other), 0.0, 1.0e-9);
    }
  }

  // Besides, while the planes stand along the axes.
  void ExpectUprightAt(const std::array<int, 3>& voxel, const std::string& when)
  {
    this->ExpectLinked(when);
    SCOPED_TRACE(when);
    EXPECT_EQ(this->Slices(), voxel);
    for (int view = 0; view < 3; ++view)
    {
      EXPECT_EQ(this->View3D()->GetSlice(view), voxel[At(view)]);
      EXPECT_EQ(this->SliderValue(view), voxel[At(view)]);
      int index[2];
      this->Viewer(view)->GetCrossIndex(index);
      EXPECT_EQ(index[0], voxel[At(LineAxes[view][0])]) << "view " << view;
      EXPECT_EQ(index[1], voxel[At(LineAxes[view][1])]) << "view " << view;
      for (std::size_t a = 0; a < 3; ++a)
      {
        EXPECT_NEAR(this->Cross(view)[a], this->Center(voxel)[a], Tolerance);
      }
    }
  }

  // A labelled block beside the volume; voxels 10 to 19, 20 to 29, 10 to 14 hold 7, one voxel 9.
  std::string WriteLabels()
  {
    vtkNew<vtkImageData> labels;
    labels->SetDimensions(Dimensions[0], Dimensions[1], Dimensions[2]);
    labels->AllocateScalars(VTK_UNSIGNED_CHAR, 1);
    std::string bytes(static_cast<std::size_t>(labels->GetNumberOfPoints()), '\0');
    const auto at = [](int i, int j, int k)
    { return static_cast<std::size_t>((k * Dimensions[1] + j) * Dimensions[0] + i); };
    for (int k = 10; k < 15; ++k)
    {
      for (int j = 20; j < 30; ++j)
      {
        for (int i = 10; i < 20; ++i)
        {
          bytes[at(i, j, k)] = 7;
        }
      }
    }
    bytes[at(30, 40, 14)] = 9;
    this->Folder.Write("labels.mha.txt", "7 Block_L 7000\n");
    return this->Folder.Write("labels.mha", HeaderOf("MET_UCHAR") + bytes);
  }
  // Where grey has turned to red, by the mask or a line: letters and titles have other colours.
  int CountRed(int view, const zvtest::Region& region)
  {
    const zvtest::Picture picture = this->PictureOf(view);
    int count = 0;
    for (int x = std::max(region.Low[0], 0); x <= std::min(region.High[0], picture.Width() - 1);
         ++x)
    {
      for (int y = std::max(region.Low[1], 0); y <= std::min(region.High[1], picture.Height() - 1);
           ++y)
      {
        const zvtest::Color color = picture.At({ { x, y } });
        count += color.Red > color.Green + 10 && std::abs(color.Green - color.Blue) < 3;
      }
    }
    return count;
  }
  int CountRed(int view) { return this->CountRed(view, { { { 0, 0 } }, { { 5000, 5000 } } }); }
  // Between two voxels.
  int CountRed(int view, const std::array<int, 3>& from, const std::array<int, 3>& to)
  {
    const QPoint one = this->Seen(view, from), other = this->Seen(view, to);
    const int top = this->Slice(view)->height() - 1;
    return this->CountRed(view,
      { { { std::min(one.x(), other.x()), top - std::max(one.y(), other.y()) } },
        { { std::max(one.x(), other.x()), top - std::min(one.y(), other.y()) } } });
  }
  // In the labelled block and beside the lines.
  int CountRedBlock(int view)
  {
    return this->CountRed(view, { { 11, 26, 10 } }, { { 17, 29, 13 } });
  }

  zvMainWindow Window;
  std::array<zvViewHand, 3> Hands;
  zvViewHand Hand3D;
  zvtest::TemporaryFolder Folder;
  int Shown = 0;
};

TEST_F(WorkstationViews, BeginInTheMiddleWithOneCross)
{
  this->ExpectUprightAt({ { 19, 24, 14 } }, "after opening");
  EXPECT_EQ(this->Views()->GetMaximised(), nullptr);
}

TEST_F(WorkstationViews, ADraggedCrossTakesTheOthersWithItAtEveryMove)
{
  const std::array<std::array<int, 3>, 4> way = { { { { 25, 30, 18 } }, { { 8, 41, 5 } },
    { { 33, 12, 25 } }, { { 20, 20, 10 } } } };
  for (int view = 0; view < 3; ++view)
  {
    std::array<int, 3> now = this->Slices();
    this->Hand(view).Press(Qt::LeftButton, this->Seen(view, { { 12, 17, 9 } }));
    now = { { 12, 17, 9 } };
    now[At(view)] = this->SliceIndex(view);
    this->ExpectUprightAt(now, "pressed in view " + std::to_string(view));
    for (const auto& voxel : way)
    {
      this->Hand(view).MoveTo(this->Seen(view, voxel));
      const int own = now[At(view)];
      now = voxel;
      now[At(view)] = own;
      this->ExpectUprightAt(now, "dragged in view " + std::to_string(view));
    }
    this->Hand(view).Release();
    this->ExpectUprightAt(now, "released in view " + std::to_string(view));
    this->Hand(view).MoveTo(this->Seen(view, { { 5, 5, 5 } }));
    this->ExpectUprightAt(now, "let go in view " + std::to_string(view));
  }
}

TEST_F(WorkstationViews, ADragBeyondTheVolumeStopsAtItsLastVoxels)
{
  this->Hand(2).Drag(Qt::LeftButton, this->Seen(2, { { 12, 17, 0 } }), QPoint(-200, -300));
  this->ExpectUprightAt({ { 0, 0, 14 } }, "upper left");
  this->Hand(2).Drag(Qt::LeftButton, this->Seen(2, { { 12, 17, 0 } }), QPoint(3000, 3000));
  this->ExpectUprightAt({ { 39, 49, 14 } }, "lower right");
}

TEST_F(WorkstationViews, ADraggedCrossShowsOtherSlices)
{
  const zvtest::Picture sagittal = this->PictureOf(0), coronal = this->PictureOf(1);
  const zvtest::Picture planes = this->Picture3D();
  this->Hand(2).Drag(
    Qt::LeftButton, this->Seen(2, { { 12, 17, 0 } }), this->Seen(2, { { 30, 40, 0 } }));
  EXPECT_GT(this->PictureOf(0).CountDifferent(sagittal), 500);
  EXPECT_GT(this->PictureOf(1).CountDifferent(coronal), 500);
  EXPECT_GT(this->Picture3D().CountDifferent(planes), 500);
}

TEST_F(WorkstationViews, ATurnedLineTiltsThePlanesOfBothLines)
{
  for (int view = 0; view < 3; ++view)
  {
    this->Views()->ResetAll();
    const Vector cross = this->Cross(view);
    const int along = LineAxes[view][0], across = LineAxes[view][1];
    const std::array<Vector, 3> before = { { this->Normal(0), this->Normal(1), this->Normal(2) } };
    // Far out on the line that marks the plane of the second axis, and 15 degrees on from there.
    Vector from = cross, to = cross;
    from[At(along)] += 22.0;
    to[At(along)] += 22.0 * std::cos(vtkMath::RadiansFromDegrees(15.0));
    to[At(across)] += 22.0 * std::sin(vtkMath::RadiansFromDegrees(15.0));
    this->Hand(view).Drag(Qt::LeftButton, this->Hand(view).At(from), this->Hand(view).At(to), 30);
    this->ExpectLinked("turned in view " + std::to_string(view));
    EXPECT_LT(DegreesBetween(this->Normal(view), before[At(view)]), 1.0e-6);
    for (int axis : LineAxes[view])
    {
      EXPECT_NEAR(DegreesBetween(this->Normal(axis), before[At(axis)]), 15.0, 1.5);
      EXPECT_EQ(this->Viewer(axis)->GetPlaneOrientation(), 3);
      // The 3D view counts the places of a tilted plane.
      EXPECT_NE(this->View3D()->GetSliceCount(axis), Dimensions[At(axis)]);
      EXPECT_EQ(this->Viewer(axis)->GetImageResolutionFactor(), 1);
    }
    EXPECT_EQ(this->View3D()->GetSliceCount(view), Dimensions[At(view)]);
    for (std::size_t a = 0; a < 3; ++a)
    {
      EXPECT_NEAR(this->Cross(view)[a], cross[a], Tolerance);
    }
  }
}

TEST_F(WorkstationViews, ThePictureStaysWhereItsOwnLineIsTurnedAndTheOthersKeepTheirUp)
{
  vtkCamera* own = this->Slice(0)->GetRenderer()->GetActiveCamera();
  Vector up, position;
  own->GetViewUp(up.data());
  own->GetPosition(position.data());
  const Vector cross = this->Cross(0);
  const QPoint from = this->Hand(0).At({ { cross[0], cross[1] - 20.0, cross[2] } });
  this->Hand(0).Drag(Qt::LeftButton, from, from + QPoint(10, -60), 20);
  Vector now;
  own->GetViewUp(now.data());
  EXPECT_LT(DegreesBetween(up, now), 1.0e-6);
  own->GetPosition(now.data());
  EXPECT_LT(std::sqrt(vtkMath::Distance2BetweenPoints(position.data(), now.data())), 1.0e-3);
  // The two others look along their planes' new normals, up where the line goes now.
  for (int view = 1; view < 3; ++view)
  {
    Vector direction;
    this->Slice(view)->GetRenderer()->GetActiveCamera()->GetDirectionOfProjection(direction.data());
    EXPECT_NEAR(Dot(direction, this->Normal(view)), 1.0, 1.0e-9) << "seen from the low side";
    Vector viewUp;
    this->Slice(view)->GetRenderer()->GetActiveCamera()->GetViewUp(viewUp.data());
    const double sign = view == 1 ? 1.0 : -1.0;
    EXPECT_NEAR(sign * Dot(viewUp, this->Normal(3 - view)), 1.0, 1.0e-9);
  }
}

TEST_F(WorkstationViews, StayLinkedThroughRandomUse)
{
  zvtest::Dice dice(11);
  const auto place = [&dice](zvViewHand& hand)
  { return hand.Part(dice.Real(-0.9, 0.9), dice.Real(-0.9, 0.9)); };
  for (int round = 0; round < 60; ++round)
  {
    const int view = dice.Int(0, 2);
    zvViewHand& hand = this->Hand(view);
    switch (dice.Int(0, 5))
    {
      case 0:
        hand.Turn(dice.Int(-4, 4), place(hand));
        break;
      case 1:
        hand.Type(dice.Int(0, 1) == 0 ? Qt::Key_PageUp : Qt::Key_PageDown);
        break;
      case 2:
      {
        // On a line, wherever it is now: between the cross and a place beside it along the line.
        const Vector cross = this->Cross(view);
        const Vector line = this->Normal(LineAxes[view][dice.Int(0, 1)]);
        Vector from;
        for (std::size_t a = 0; a < 3; ++a)
        {
          from[a] = cross[a] + dice.Real(5.0, 20.0) * line[a];
        }
        const QPoint start = hand.At(from);
        hand.Drag(Qt::LeftButton, start, start + QPoint(dice.Int(-30, 30), dice.Int(-30, 30)), 6);
        break;
      }
      case 3:
        this->Window.GetTurnPanel()->GetSlider(dice.Int(0, 2))->setValue(dice.Int(-40, 40));
        break;
      default:
        hand.Drag(Qt::LeftButton, place(hand), place(hand), 5);
        break;
    }
    this->ExpectLinked("round " + std::to_string(round));
    if (this->HasFailure())
    {
      return;
    }
  }
  this->Views()->Straighten();
  std::array<int, 3> slices = this->Slices();
  this->ExpectUprightAt(slices, "straightened");
}

TEST_F(WorkstationViews, TheWheelAndTheKeysStepSlices)
{
  const QPoint middle(100, 100);
  std::array<int, 3> now{ { 19, 24, 14 } };
  for (int view = 0; view < 3; ++view)
  {
    int& slice = now[At(view)];
    const auto expect = [&](int steps, const char* what)
    {
      slice = std::min(std::max(slice + steps, 0), Dimensions[At(view)] - 1);
      this->ExpectUprightAt(now, what);
    };
    this->Hand(view).Turn(1, middle);
    expect(1, "wheel");
    this->Hand(view).Turn(-3, middle);
    expect(-3, "wheel back");
    this->Hand(view).Type(Qt::Key_Up);
    expect(1, "up");
    this->Hand(view).Type(Qt::Key_Right);
    expect(1, "right");
    this->Hand(view).Type(Qt::Key_Down);
    expect(-1, "down");
    this->Hand(view).Type(Qt::Key_Left);
    expect(-1, "left");
    this->Hand(view).Type(Qt::Key_PageUp);
    expect(10, "page up");
    this->Hand(view).Type(Qt::Key_PageDown);
    expect(-10, "page down");
    this->Hand(view).Type(Qt::Key_End);
    expect(1000, "end");
    this->Hand(view).Turn(1, middle);
    expect(0, "beyond the end");
    this->Hand(view).Type(Qt::Key_Home);
    expect(-1000, "home");
    this->Hand(view).Type(Qt::Key_Down);
    expect(0, "before the first");
    this->Hand(view).Type(Qt::Key_A);
    expect(0, "another key");
  }
}

TEST_F(WorkstationViews, TheVoxelUnderAMouseThatRestsIsToldAnew)
{
  const QPoint place = this->Seen(2, { { 15, 20, 0 } });
  this->Slice(2)->setAttribute(Qt::WA_UnderMouse);
  this->Hand(2).MoveTo(place);
  const QString first = this->Window.GetStatusText();
  ASSERT_TRUE(first.contains("Voxel 15 20 14 ")) << first.toStdString();
  this->Hand(2).Turn(1, place);
  const QString second = this->Window.GetStatusText();
  EXPECT_TRUE(second.contains("Voxel 15 20 15 ")) << second.toStdString();
  EXPECT_NE(first.section("value", 1), second.section("value", 1));
  this->Hand(2).Type(Qt::Key_Down);
  EXPECT_EQ(this->Window.GetStatusText(), first);
  this->Window.GetEditBar()->GetValueBox()->setValue(777);
  this->Tool("fill")->setChecked(true);
  this->Hand(2).Click(Qt::LeftButton, place);
  EXPECT_TRUE(this->Window.GetStatusText().contains("value 777"));
  this->Window.GetEditBar()->GetUndoAction()->trigger();
  EXPECT_EQ(this->Window.GetStatusText(), first);
  // In another view the mouse is over another slice.
  this->Slice(2)->setAttribute(Qt::WA_UnderMouse, false);
  this->Hand(2).Type(Qt::Key_Up);
  EXPECT_EQ(this->Window.GetStatusText(), first);
}

TEST_F(WorkstationViews, ATiltedPlaneIsSteppedToBothEndsAndBack)
{
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(30);
  const double start = Dot(this->Normal(2), this->Cross(2));
  this->Hand(2).Type(Qt::Key_End);
  this->ExpectLinked("end");
  const double high = Dot(this->Normal(2), this->Cross(2));
  this->Hand(2).Type(Qt::Key_Home);
  this->ExpectLinked("home");
  const double low = Dot(this->Normal(2), this->Cross(2));
  EXPECT_GT(high, start + 30.0);
  EXPECT_LT(low, start - 30.0);
  EXPECT_NEAR(std::remainder(high - low, Spacing[2]), 0.0, 1.0e-6);
  EXPECT_NEAR(std::remainder(start - low, Spacing[2]), 0.0, 1.0e-6);
}

TEST_F(WorkstationViews, ATiltedPlaneReachesTheFarCorners)
{
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(35);
  this->Window.GetTurnPanel()->GetSlider(1)->setValue(20);
  for (int axis = 0; axis < 3; ++axis)
  {
    const Vector normal = this->Normal(axis);
    double reach = 0.0, middle = 0.0;
    for (std::size_t a = 0; a < 3; ++a)
    {
      const double half = 0.5 * (Dimensions[a] - 1) * Spacing[a];
      reach += std::fabs(normal[a]) * half;
      middle += normal[a] * (Origin[a] + half);
    }
    const auto offset = [&] { return Dot(normal, this->Cross(axis)) - middle; };
    const double start = offset();
    this->Hand(axis).Type(Qt::Key_End);
    this->ExpectLinked("end");
    EXPECT_GT(offset(), reach - Spacing[At(axis)]) << "the last slice before the corner";
    EXPECT_LE(offset(), reach + 1.0e-6);
    EXPECT_EQ(this->View3D()->GetSlice(axis), this->SliceIndex(axis));
    EXPECT_EQ(this->SliderValue(axis), this->SliceIndex(axis)) << "the slider shows it too";
    this->Hand(axis).Turn(1, QPoint(100, 100));
    EXPECT_LE(offset(), reach + 1.0e-6) << "no slice beyond";
    this->Hand(axis).Type(Qt::Key_Home);
    this->ExpectLinked("home");
    EXPECT_LT(offset(), -reach + Spacing[At(axis)]);
    EXPECT_GE(offset(), -reach - 1.0e-6);
    const int back = static_cast<int>(std::lround((start - offset()) / Spacing[At(axis)]));
    this->Hand(axis).Turn(back, QPoint(100, 100));
    EXPECT_NEAR(offset(), start, 1.0e-6) << "and back to where it was";
  }
}

TEST_F(WorkstationViews, APlaneAtAFarCornerIsNotTurnedOutOfTheVolume)
{
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(40);
  this->Window.GetTurnPanel()->GetSlider(1)->setValue(30);
  this->Hand(2).Type(Qt::Key_End);
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(-40);
  this->ExpectLinked("turned");
  const Vector cross = this->Cross(2);
  for (std::size_t a = 0; a < 3; ++a)
  {
    EXPECT_GE(cross[a], Origin[a] - Tolerance);
    EXPECT_LE(cross[a], Origin[a] + (Dimensions[a] - 1) * Spacing[a] + Tolerance);
  }
}

TEST_F(WorkstationViews, TheTiltedPlanesOf3DAreThoseOfTheViewers)
{
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(30);
  this->Window.GetTurnPanel()->GetSlider(2)->setValue(-15);
  this->Hand(2).Turn(3, QPoint(100, 100));
  this->Hand(0).Turn(-2, QPoint(100, 100));
  for (int axis = 0; axis < 3; ++axis)
  {
    // Both count the steps back along the normal.
    EXPECT_EQ(this->View3D()->GetSlice(axis), this->SliceIndex(axis));
    EXPECT_EQ(this->SliderValue(axis), this->SliceIndex(axis));
  }
}

TEST_F(WorkstationViews, ASliderMovesItsSliceAndTheOthersCross)
{
  this->Window.GetSlicePanel()->GetRow(0)->findChild<QSlider*>()->setValue(7);
  this->ExpectUprightAt({ { 7, 24, 14 } }, "x");
  this->Window.GetSlicePanel()->GetRow(1)->findChild<QSlider*>()->setValue(44);
  this->Window.GetSlicePanel()->GetRow(2)->findChild<QSpinBox*>()->setValue(2);
  this->ExpectUprightAt({ { 7, 44, 2 } }, "all");
}

TEST_F(WorkstationViews, APlaneDraggedIn3DTakesItsSliceWithIt)
{
  const QPoint from = this->Hand3D.At(this->Hand3D.OnAxialPlane(0.4, -0.3));
  this->Hand3D.Press(Qt::LeftButton, from);
  this->Hand3D.MoveTo(from + QPoint(0, -20));
  this->Hand3D.MoveTo(from + QPoint(0, -40));
  const int slice = this->View3D()->GetSlice(2);
  EXPECT_GT(slice, 14);
  this->ExpectUprightAt({ { 19, 24, slice } }, "in mid-drag");
  this->Hand3D.Release();
  this->ExpectUprightAt({ { 19, 24, this->View3D()->GetSlice(2) } }, "released");
}

TEST_F(WorkstationViews, AreSeenTheRadiologicalWay)
{
  using Texts = std::array<std::string, 4>; // right, left, up, down
  EXPECT_EQ(this->Slice(0)->GetLetters().GetTexts(), (Texts{ { "P", "A", "S", "I" } }));
  EXPECT_EQ(this->Slice(1)->GetLetters().GetTexts(), (Texts{ { "L", "R", "S", "I" } }));
  EXPECT_EQ(this->Slice(2)->GetLetters().GetTexts(), (Texts{ { "L", "R", "A", "P" } }));
  // A larger i lies to the patient's left, a larger j to the back, a larger k to the head.
  const QPoint front = this->Seen(2, { { 10, 10, 0 } }), back = this->Seen(2, { { 30, 40, 0 } });
  EXPECT_LT(front.x(), back.x());
  EXPECT_LT(front.y(), back.y());
  const QPoint feet = this->Seen(1, { { 10, 0, 5 } }), head = this->Seen(1, { { 30, 0, 25 } });
  EXPECT_LT(feet.x(), head.x());
  EXPECT_GT(feet.y(), head.y());
  const QPoint nose = this->Seen(0, { { 0, 10, 5 } }), neck = this->Seen(0, { { 0, 40, 25 } });
  EXPECT_LT(nose.x(), neck.x());
  EXPECT_GT(nose.y(), neck.y());
}

TEST_F(WorkstationViews, LettersFollowATilt)
{
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(30);
  EXPECT_EQ(this->Slice(2)->GetLetters().GetTexts()[2], "AI");
  EXPECT_EQ(this->Slice(2)->GetLetters().GetTexts()[3], "PS");
  EXPECT_EQ(this->Slice(2)->GetLetters().GetTexts()[0], "L");
  this->Views()->Straighten();
  EXPECT_EQ(this->Slice(2)->GetLetters().GetTexts()[2], "A");
}

TEST_F(WorkstationViews, TheWholeSliceFitsIntoEachViewAfterAResizeToo)
{
  for (const QSize& size : { QSize(1400, 900), QSize(900, 1000) })
  {
    this->Window.resize(size);
    QCoreApplication::processEvents();
    for (int view = 0; view < 3; ++view)
    {
      const QPoint low = this->Seen(view, { { 0, 0, 0 } });
      const QPoint high =
        this->Seen(view, { { Dimensions[0] - 1, Dimensions[1] - 1, Dimensions[2] - 1 } });
      EXPECT_TRUE(this->Slice(view)->rect().contains(low)) << view;
      EXPECT_TRUE(this->Slice(view)->rect().contains(high)) << view;
      const double width = std::abs(high.x() - low.x()), height = std::abs(high.y() - low.y());
      EXPECT_GT(
        std::max(width / this->Slice(view)->width(), height / this->Slice(view)->height()), 0.8);
    }
  }
}

TEST_F(WorkstationViews, APictureIsDrawnWithTheScaleOfItsNewSize)
{
  this->Window.resize(900, 1000);
  QCoreApplication::processEvents();
  std::array<double, 3> drawn{};
  for (std::size_t view = 0; view < 3; ++view)
  {
    vtkRenderer* renderer = this->Slice(static_cast<int>(view))->GetRenderer();
    vtkNew<vtkCallbackCommand> note;
    note->SetClientData(&drawn[view]);
    note->SetCallback(
      [](vtkObject* caller, unsigned long, void* scale, void*)
      {
        *static_cast<double*>(scale) =
          static_cast<vtkRenderer*>(caller)->GetActiveCamera()->GetParallelScale();
      });
    renderer->AddObserver(vtkCommand::EndEvent, note);
  }
  this->Window.resize(1600, 1000);
  QCoreApplication::processEvents();
  for (std::size_t view = 0; view < 3; ++view)
  {
    vtkRenderer* renderer = this->Slice(static_cast<int>(view))->GetRenderer();
    renderer->RemoveObservers(vtkCommand::EndEvent);
    EXPECT_EQ(drawn[view], renderer->GetActiveCamera()->GetParallelScale()) << view;
  }
}

TEST_F(WorkstationViews, ADoubleClickFillsTheWindowWithAViewAndBack)
{
  const int width = this->Slice(1)->width();
  this->Hand(1).DoubleClick(this->Hand(1).Part(0.1, 0.1));
  QCoreApplication::processEvents();
  EXPECT_EQ(this->Views()->GetMaximised(), this->Slice(1));
  EXPECT_GT(this->Slice(1)->width(), 1.8 * width);
  EXPECT_FALSE(this->Slice(0)->isVisible());
  EXPECT_FALSE(this->View3D()->isVisible());
  // What happens meanwhile is seen afterwards.
  this->Hand(1).Drag(
    Qt::LeftButton, this->Seen(1, { { 12, 0, 9 } }), this->Seen(1, { { 30, 0, 20 } }));
  this->ExpectUprightAt({ { 30, this->SliceIndex(1), 20 } }, "maximised");
  this->Hand(1).DoubleClick(this->Hand(1).Part(0.1, 0.1));
  QCoreApplication::processEvents();
  EXPECT_EQ(this->Views()->GetMaximised(), nullptr);
  EXPECT_NEAR(this->Slice(1)->width(), width, 2);
  for (zvQVTKWidget* view : this->Views()->GetViews())
  {
    EXPECT_TRUE(view->isVisible());
  }
  this->Hand3D.DoubleClick(QPoint(12, 12));
  EXPECT_EQ(this->Views()->GetMaximised(), this->View3D());
  this->Hand3D.DoubleClick(QPoint(12, 12));
  EXPECT_EQ(this->Views()->GetMaximised(), nullptr);
}

TEST_F(WorkstationViews, ResetViewBringsBackTheActiveViewAlone)
{
  vtkCamera* axial = this->Slice(2)->GetRenderer()->GetActiveCamera();
  vtkCamera* coronal = this->Slice(1)->GetRenderer()->GetActiveCamera();
  const double scale = axial->GetParallelScale(), other = coronal->GetParallelScale();
  this->Hand(1).Turn(2, QPoint(100, 100), Qt::ControlModifier);
  this->Hand(2).Turn(3, QPoint(100, 100), Qt::ControlModifier);
  EXPECT_NEAR(axial->GetParallelScale(), scale / std::pow(1.1, 3), 1.0e-6);
  this->ExpectUprightAt({ { 19, 24, 14 } }, "zoomed");
  EXPECT_EQ(this->Views()->GetActiveView(), this->Slice(2));
  EXPECT_TRUE(this->Slice(2)->GetActived());
  EXPECT_FALSE(this->Slice(1)->GetActived());
  this->Views()->ResetActiveView();
  EXPECT_NEAR(axial->GetParallelScale(), scale, 1.0e-6);
  EXPECT_NEAR(coronal->GetParallelScale(), other / std::pow(1.1, 2), 1.0e-6);
}

TEST_F(WorkstationViews, PlanesOrthogonalKeepsTheCrossAndResetAllCentersIt)
{
  this->Hand(2).Drag(
    Qt::LeftButton, this->Seen(2, { { 12, 17, 0 } }), this->Seen(2, { { 30, 40, 0 } }));
  this->Window.GetTurnPanel()->GetSlider(1)->setValue(25);
  this->Window.GetTurnPanel()->findChild<QPushButton*>()->click();
  this->ExpectUprightAt({ { 30, 40, 14 } }, "orthogonal");
  this->Views()->ResetAll();
  this->ExpectUprightAt({ { 19, 24, 14 } }, "reset");
}

TEST_F(WorkstationViews, EachViewRendersAtMostOnceAnEvent)
{
  std::array<int, 4> renders{};
  std::array<unsigned long, 4> tags{};
  std::array<vtkNew<vtkCallbackCommand>, 4> counters;
  const auto views = this->Views()->GetViews();
  for (std::size_t v = 0; v < views.size(); ++v)
  {
    counters[v]->SetClientData(&renders[v]);
    counters[v]->SetCallback(
      [](vtkObject*, unsigned long, void* count, void*) { ++*static_cast<int*>(count); });
    tags[v] = views[v]->renderWindow()->AddObserver(vtkCommand::StartEvent, counters[v]);
  }
  using Counts = std::array<int, 4>; // axial, sagittal, coronal, 3D
  const auto take = [&renders]
  {
    const Counts counts = renders;
    renders.fill(0);
    return counts;
  };
  const QPoint from = this->Seen(2, { { 12, 17, 0 } }), to = this->Seen(2, { { 30, 40, 0 } });
  this->Hand(2).MoveTo(from);
  EXPECT_EQ(take(), (Counts{ { 0, 0, 0, 0 } })) << "hover";
  this->Hand(2).Press(Qt::LeftButton, from);
  EXPECT_EQ(take(), (Counts{ { 1, 1, 1, 1 } })) << "press";
  this->Hand(2).MoveTo(to);
  EXPECT_EQ(take(), (Counts{ { 1, 1, 1, 1 } })) << "drag";
  this->Hand(2).Release();
  EXPECT_EQ(take()[0], 1) << "release";
  this->Hand(0).Turn(1, QPoint(50, 50));
  EXPECT_EQ(take(), (Counts{ { 1, 1, 1, 1 } })) << "wheel";
  this->Hand(0).Drag(Qt::RightButton, QPoint(50, 50), QPoint(60, 50), 1);
  EXPECT_EQ(take(), (Counts{ { 1, 1, 1, 1 } })) << "window and level";
  this->Views()->ResetAll();
  EXPECT_EQ(take(), (Counts{ { 1, 1, 1, 2 } })) << "the planes' own reset renders before it";
  for (std::size_t v = 0; v < views.size(); ++v)
  {
    views[v]->renderWindow()->RemoveObserver(tags[v]);
  }
}

TEST_F(WorkstationViews, TheVoxelUnderTheMouseIsTold)
{
  this->Hand(1).MoveTo(this->Seen(1, { { 30, 0, 20 } }));
  zvVoxel voxel;
  voxel.View = "Coronal";
  voxel.Index = { { 30, 24, 20 } };
  voxel.Position = this->Center({ { 30, 24, 20 } });
  voxel.Value = this->Image()->GetScalarComponentAsDouble(30, 24, 20, 0);
  EXPECT_EQ(this->Window.GetStatusText(), zvVoxelText::Describe(voxel, true));
  this->Hand(1).MoveTo(QPoint(2, 2));
  EXPECT_EQ(this->Window.GetStatusText(), zvVoxelText::Hint());
}

TEST_F(WorkstationViews, WindowAndLevelStayInStepWhereverTheyAreDragged)
{
  const zvWindowValues start = this->View3D()->GetWindowLevel();
  const auto expectInStep = [this]
  {
    const zvWindowValues value = this->View3D()->GetWindowLevel();
    EXPECT_NEAR(this->Window.GetWindowPanel()->GetWindowBox()->value(), value.Window, 0.051);
    for (int view = 0; view < 3; ++view)
    {
      EXPECT_NEAR(this->Viewer(view)->GetWindow(), value.Window, 1.0e-6);
      EXPECT_NEAR(this->Viewer(view)->GetLevel(), value.Level, 1.0e-6);
    }
  };
  expectInStep();
  this->Hand(0).Drag(Qt::RightButton, QPoint(150, 150), QPoint(100, 120));
  EXPECT_NE(this->View3D()->GetWindowLevel().Window, start.Window);
  expectInStep();
  const zvWindowValues second = this->View3D()->GetWindowLevel();
  const QPoint on = this->Seen(2, { { 20, 25, 0 } });
  this->Hand(2).Drag(Qt::RightButton, on, on + QPoint(40, 20), 5, Qt::ShiftModifier);
  EXPECT_NE(this->View3D()->GetWindowLevel().Window, second.Window);
  EXPECT_GT(this->View3D()->GetWindowLevel().Window, 0.0);
  expectInStep();
  QComboBox* presets = this->Window.GetWindowPanel()->GetPresetBox();
  presets->setCurrentIndex(0);
  emit presets->activated(0);
  EXPECT_EQ(this->View3D()->GetWindowLevel().Window, start.Window);
  expectInStep();
}

TEST_F(WorkstationViews, TheMaskIsRedWhereItIsLabelledAndFollowsTheSlices)
{
  const QString path = QString::fromStdString(this->WriteLabels());
  ASSERT_TRUE(this->OpenMask(path));
  EXPECT_EQ(this->CountRedBlock(2), 0) << "not asked for yet";
  this->Window.GetEditBar()->GetMaskAction()->setChecked(true);
  const int axial = this->CountRedBlock(2);
  EXPECT_GT(axial, 500);
  EXPECT_GT(this->CountRedBlock(0), 300) << "slice 19 is the last of the block";
  EXPECT_EQ(this->CountRed(2, { { 2, 2, 0 } }, { { 8, 18, 0 } }), 0) << "beside the block";
  this->Hand(2).Turn(1, QPoint(5, 5));
  EXPECT_EQ(this->CountRedBlock(2), 0) << "above the block";
  this->Hand(2).Turn(-1, QPoint(5, 5));
  EXPECT_EQ(this->CountRedBlock(2), axial);
  this->Window.GetEditBar()->GetMaskAction()->setChecked(false);
  EXPECT_EQ(this->CountRedBlock(2), 0);
}

TEST_F(WorkstationViews, OneRegionOfTheMaskCanBeShown)
{
  ASSERT_TRUE(this->OpenMask(QString::fromStdString(this->WriteLabels())));
  zvEditBar* edit = this->Window.GetEditBar();
  edit->GetMaskAction()->setChecked(true);
  const auto redVoxel = [this] { return this->CountRed(2, { { 29, 39, 0 } }, { { 31, 41, 0 } }); };
  EXPECT_GT(this->CountRedBlock(2), 500);
  EXPECT_GT(redVoxel(), 3);
  QComboBox* regions = edit->GetRegionBox();
  ASSERT_EQ(regions->count(), 3);
  EXPECT_EQ(regions->itemText(1), "Block_L");
  EXPECT_EQ(regions->itemText(2), "region 9");
  regions->setCurrentIndex(2);
  emit regions->activated(2);
  EXPECT_EQ(this->CountRedBlock(2), 0);
  EXPECT_GT(redVoxel(), 3);
  regions->setCurrentIndex(1);
  emit regions->activated(1);
  EXPECT_GT(this->CountRedBlock(2), 500);
  EXPECT_EQ(redVoxel(), 0);
}

TEST_F(WorkstationViews, TheOpacitySliderChangesHowMuchTheMaskCovers)
{
  ASSERT_TRUE(this->OpenMask(QString::fromStdString(this->WriteLabels())));
  zvEditBar* edit = this->Window.GetEditBar();
  edit->GetMaskAction()->setChecked(true);
  const QPoint seen = this->Seen(2, { { 15, 25, 0 } });
  const zvtest::Display at{ { seen.x(), this->Slice(2)->height() - 1 - seen.y() } };
  edit->GetOpacitySlider()->setValue(80);
  EXPECT_EQ(this->Viewer(2)->GetOpacityMask(), 0.8);
  const zvtest::Color strong = this->PictureOf(2).At(at);
  edit->GetOpacitySlider()->setValue(10);
  const zvtest::Color weak = this->PictureOf(2).At(at);
  EXPECT_GT(strong.Red - strong.Green, weak.Red - weak.Green + 20);
}

TEST_F(WorkstationViews, TheRegionUnderTheMouseIsNamed)
{
  ASSERT_TRUE(this->OpenMask(QString::fromStdString(this->WriteLabels())));
  this->Hand(2).MoveTo(this->Seen(2, { { 15, 25, 0 } }));
  EXPECT_TRUE(this->Window.GetStatusText().endsWith("     Block_L"))
    << this->Window.GetStatusText().toStdString();
  this->Hand(2).MoveTo(this->Seen(2, { { 30, 40, 0 } }));
  EXPECT_TRUE(this->Window.GetStatusText().endsWith("     region 9"));
  this->Hand(2).MoveTo(this->Seen(2, { { 5, 5, 0 } }));
  EXPECT_FALSE(this->Window.GetStatusText().contains("region"));
}

TEST_F(WorkstationViews, ATiltedSliceIsMaskedToo)
{
  ASSERT_TRUE(this->OpenMask(QString::fromStdString(this->WriteLabels())));
  this->Window.GetEditBar()->GetMaskAction()->setChecked(true);
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(20);
  EXPECT_EQ(this->Viewer(0)->GetPlaneOrientation(), 3);
  const int with = this->CountRed(0);
  this->Window.GetEditBar()->GetMaskAction()->setChecked(false);
  EXPECT_GT(with, this->CountRed(0) + 300);
}

TEST_F(WorkstationViews, AMaskThatCannotBeReadIsRefused)
{
  this->Window.SetTellsRefusals(false);
  EXPECT_FALSE(this->OpenMask("/missing.nii"));
  EXPECT_FALSE(this->Window.GetEditBar()->GetMaskAction()->isEnabled());
}

TEST_F(WorkstationViews, TheBrushWritesTheVoxelsUnderIt)
{
  zvEditBar* edit = this->Window.GetEditBar();
  edit->GetValueBox()->setValue(1234);
  this->Tool("paint")->setChecked(true);
  const zvtest::Picture coronal = this->PictureOf(1);
  this->Hand(2).MoveTo(this->Seen(2, { { 12, 24, 0 } }));
  this->Hand(2).Press(Qt::LeftButton, this->Seen(2, { { 12, 24, 0 } }));
  for (int i = 13; i < 30; ++i)
  {
    this->Hand(2).MoveTo(this->Seen(2, { { i, 24, 0 } }));
    EXPECT_EQ(this->Image()->GetScalarComponentAsDouble(i, 24, 14, 0), 1234.0) << i;
  }
  this->Hand(2).Release();
  EXPECT_NE(this->Image()->GetScalarComponentAsDouble(20, 23, 14, 0), 1234.0);
  this->ExpectUprightAt({ { 19, 24, 14 } }, "painted");
  EXPECT_GT(this->PictureOf(1).CountDifferent(coronal), 50) << "the coronal slice holds them too";
  EXPECT_EQ(
    this->Image()->GetScalarRange()[1], std::max(1234.0, this->Image()->GetScalarRange()[1]));
}

TEST_F(WorkstationViews, AFillStopsAtARingAndCanBeTakenBack)
{
  zvEditBar* edit = this->Window.GetEditBar();
  vtkImageData* image = this->Image();
  for (int i = 10; i <= 20; ++i)
  {
    for (int j = 10; j <= 20; ++j)
    {
      const bool isRing = i == 10 || i == 20 || j == 10 || j == 20;
      image->SetScalarComponentFromDouble(i, j, 14, 0, isRing ? 777.0 : 5.0);
    }
  }
  edit->GetValueBox()->setValue(777);
  this->Tool("fill")->setChecked(true);
  EXPECT_FALSE(edit->GetUndoAction()->isEnabled());
  const zvtest::Picture planes = this->Picture3D();
  this->Hand(2).Click(Qt::LeftButton, this->Seen(2, { { 15, 15, 0 } }));
  EXPECT_EQ(image->GetScalarComponentAsDouble(15, 15, 14, 0), 777.0);
  EXPECT_EQ(image->GetScalarComponentAsDouble(11, 19, 14, 0), 777.0);
  EXPECT_NE(image->GetScalarComponentAsDouble(9, 15, 14, 0), 777.0);
  EXPECT_NE(image->GetScalarComponentAsDouble(15, 15, 13, 0), 777.0);
  this->ExpectUprightAt({ { 19, 24, 14 } }, "filled");
  EXPECT_GT(this->Picture3D().CountDifferent(planes), 20) << "the planes in 3D show it";
  ASSERT_TRUE(edit->GetUndoAction()->isEnabled());
  edit->GetUndoAction()->trigger();
  EXPECT_EQ(image->GetScalarComponentAsDouble(15, 15, 14, 0), 5.0);
  EXPECT_EQ(image->GetScalarComponentAsDouble(10, 15, 14, 0), 777.0);
  EXPECT_FALSE(edit->GetUndoAction()->isEnabled());
}

TEST_F(WorkstationViews, AFillOverUnequalVoxelsIsTakenBackVoxelByVoxel)
{
  zvEditBar* edit = this->Window.GetEditBar();
  const auto voxels = [this]
  {
    const auto* first = static_cast<const short*>(this->Image()->GetScalarPointer());
    return std::vector<short>(first, first + this->Image()->GetNumberOfPoints());
  };
  edit->GetValueBox()->setValue(777);
  this->Tool("fill")->setChecked(true);
  for (const bool isTilted : { false, true })
  {
    this->Window.GetTurnPanel()->GetSlider(1)->setValue(isTilted ? 12 : 0);
    for (int axis = 0; axis < 3; ++axis)
    {
      const std::vector<short> before = voxels();
      this->Hand(axis).Click(Qt::LeftButton, this->Hand(axis).Part(0.05, 0.1));
      EXPECT_FALSE(voxels() == before) << axis;
      ASSERT_TRUE(edit->GetUndoAction()->isEnabled()) << axis;
      edit->GetUndoAction()->trigger();
      EXPECT_TRUE(voxels() == before) << axis << (isTilted ? " tilted" : "");
    }
  }
}

TEST_F(WorkstationViews, AFillBesideTheSliceWritesNothing)
{
  zvEditBar* edit = this->Window.GetEditBar();
  edit->GetValueBox()->setValue(777);
  this->Tool("fill")->setChecked(true);
  this->Hand(2).MoveTo(this->Seen(2, { { 15, 15, 0 } }));
  this->Hand(2).Click(Qt::LeftButton, QPoint(2, 2));
  EXPECT_NE(this->Image()->GetScalarComponentAsDouble(15, 15, 14, 0), 777.0);
  EXPECT_FALSE(edit->GetUndoAction()->isEnabled());
}

TEST_F(WorkstationViews, APressForgetsTheFillAsTheViewerDoes)
{
  zvEditBar* edit = this->Window.GetEditBar();
  edit->GetValueBox()->setValue(777);
  this->Tool("fill")->setChecked(true);
  this->Hand(2).Click(Qt::LeftButton, this->Seen(2, { { 15, 15, 0 } }));
  EXPECT_TRUE(edit->GetUndoAction()->isEnabled());
  this->Tool("fill")->setChecked(false);
  this->Hand(0).Click(Qt::LeftButton, this->Seen(0, { { 0, 15, 14 } }));
  EXPECT_TRUE(edit->GetUndoAction()->isEnabled()) << "another view";
  this->Hand(2).Click(Qt::LeftButton, this->Seen(2, { { 12, 12, 0 } }));
  EXPECT_FALSE(edit->GetUndoAction()->isEnabled());
}

TEST_F(WorkstationViews, PaintAndFillExcludeEachOtherAndHideTheLines)
{
  const auto red = [this] { return this->CountRed(2); };
  EXPECT_GT(red(), 50);
  this->Tool("paint")->setChecked(true);
  EXPECT_EQ(red(), 0);
  this->Tool("fill")->setChecked(true);
  EXPECT_FALSE(this->Tool("paint")->isChecked());
  EXPECT_FALSE(this->Viewer(2)->GetPaintMode());
  EXPECT_TRUE(this->Viewer(2)->GetFillMode());
  this->Tool("fill")->setChecked(false);
  EXPECT_FALSE(this->Viewer(2)->GetFillMode());
  EXPECT_GT(red(), 50);
}

TEST_F(WorkstationViews, ANewVolumeStartsAllViewsAnew)
{
  this->Tool("paint")->setChecked(true);
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(30);
  this->Window.OpenPhantom(32);
  ASSERT_TRUE(WaitFor([this] { return this->Shown == 2; }));
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 15, 15, 15 } }));
  this->ExpectLinked("the new volume");
  EXPECT_FALSE(this->Viewer(2)->GetPaintMode());
  EXPECT_EQ(this->Viewer(2)->GetPlaneOrientation(), 2);
  this->Hand(2).Turn(1, QPoint(5, 5));
  EXPECT_EQ(this->Slices(), (std::array<int, 3>{ { 15, 15, 16 } }));
}

TEST_F(WorkstationViews, AViewMayBeDeletedInMidDrag)
{
  auto window = OpenPhantomWindow(24);
  zvViewHand hand(window->GetViews()->GetSliceView(2));
  hand.Press(Qt::LeftButton, hand.Part(0.2, 0.3));
  hand.MoveTo(hand.Part(0.3, 0.2));
  window.reset();
  QCoreApplication::processEvents();
  ExpectNoMessage();
}

// ---- the parts without a window

TEST(WorkstationLetters, TheSideThatADirectionLeadsToMostComesFirst)
{
  const double left[3] = { 1.0, 0.0, 0.0 };
  EXPECT_EQ(zvEdgeLetters::Name(left), "L");
  const double low[3] = { 0.0, 0.15, -0.98 };
  EXPECT_EQ(zvEdgeLetters::Name(low), "I");
  const double between[3] = { -0.5, 0.8, 0.33 };
  EXPECT_EQ(zvEdgeLetters::Name(between), "PRS");
}

TEST(WorkstationAtlas, AMaskIsZeroInItsRegionAndALayerIsItsSlice)
{
  vtkNew<vtkImageData> labels;
  labels->SetDimensions(4, 3, 2);
  labels->SetOrigin(1.0, 2.0, 3.0);
  labels->AllocateScalars(VTK_SHORT, 1);
  auto* voxels = static_cast<short*>(labels->GetScalarPointer());
  std::fill_n(voxels, 24, static_cast<short>(0));
  voxels[0] = 5;
  voxels[23] = 3;
  const zvLabelAtlas atlas(labels, "/nowhere/labels.nii.gz");
  EXPECT_EQ(atlas.GetNumbers(), (std::vector<int>{ 3, 5 }));
  EXPECT_EQ(atlas.GetName(5), "region 5");
  EXPECT_EQ(atlas.GetName(0), "");
  const double first[3] = { 1.2, 2.0, 3.0 }, beside[3] = { -5.0, 2.0, 3.0 };
  EXPECT_EQ(atlas.GetNumberAt(first), 5);
  EXPECT_EQ(atlas.GetNumberAt(beside), 0);
  const auto all = atlas.MakeMask(zvLabelAtlas::AllNumbers), three = atlas.MakeMask(3);
  const auto at = [](vtkImageData* mask, int i, int j, int k)
  { return mask->GetScalarComponentAsDouble(i, j, k, 0); };
  EXPECT_EQ(at(all, 0, 0, 0), 0.0);
  EXPECT_EQ(at(all, 3, 2, 1), 0.0);
  EXPECT_EQ(at(all, 1, 0, 0), 1.0);
  EXPECT_EQ(at(three, 0, 0, 0), 1.0);
  EXPECT_EQ(at(three, 3, 2, 1), 0.0);
  const auto layer = zvLabelAtlas::CutLayer(all, 0, 3);
  EXPECT_EQ(layer->GetNumberOfPoints(), 6);
  EXPECT_EQ(at(layer, 3, 2, 1), 0.0);
  EXPECT_EQ(at(layer, 3, 0, 0), 1.0);
  EXPECT_EQ(zvLabelAtlas().MakeMask(1), nullptr);
  EXPECT_EQ(zvLabelAtlas::FindBeside(""), "");
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
