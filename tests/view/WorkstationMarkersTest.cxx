// The markers of four views as tools of the workstation, by real events of mouse and keys.
#include "zv3DRulerWidget.h"
#include "zv3DTreeWidget.h"
#include "zvBoxMarker.h"
#include "zvBoxWidget.h"
#include "zvChainMarker.h"
#include "zvImageViewerWidget.h"
#include "zvMainWindow.h"
#include "zvMarkerTools.h"
#include "zvMeasurementList.h"
#include "zvNormalMarker.h"
#include "zvPlacedNormal.h"
#include "zvSeedMarker.h"
#include "zvSeedWidget.h"
#include "zvToolSet.h"
#include "zvTreeMarker.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"
#include "zvVolumeView.h"

#include "zvPicture.h"
#include "zvQtTest.h"
#include "zvQuietTest.h"
#include "zvWindows.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QWindow>

#include "vtkActorCollection.h"
#include "vtkFollower.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkImageData.h"
#include "vtkMapper.h"
#include "vtkMath.h"
#include "vtkRenderer.h"
#include "vtkVectorText.h"

#include <cmath>
#include <functional>
#include <memory>

namespace
{
using zvtest::OpenPhantomWindow;
using zvtest::WaitFor;

constexpr int PhantomSide = 64;

using Vector = std::array<double, 3>;

const zvtest::Color SelectedSeed{ 0, 220, 220 };
const zvtest::Color Segment{ 255, 255, 0 };
const zvtest::Color Selected{ 0, 255, 51 }; // segment
const zvtest::Color Edge{ 255, 191, 51 };

double Distance(const Vector& a, const Vector& b)
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(a.data(), b.data()));
}
}

class WorkstationMarkers : public zvtest::QuietTest
{
protected:
  WorkstationMarkers()
    : Hands{ { zvViewHand(this->Slice(0)), zvViewHand(this->Slice(1)),
        zvViewHand(this->Slice(2)) } }
  {
    this->Window.resize(1400, 900);
    QObject::connect(&this->Window, &zvMainWindow::shown, [this] { ++this->Shown; });
  }

  void SetUp() override
  {
    this->Window.show();
    ASSERT_TRUE(WaitFor([this] { return this->Window.windowHandle()->isExposed(); }));
    this->Window.OpenPhantom(PhantomSide);
    ASSERT_TRUE(WaitFor([this] { return this->Shown == 1; }));
    QCoreApplication::processEvents();
  }

  zvSliceView* Slice(int axis) { return this->Window.GetViews()->GetSliceView(axis); }
  zvViewHand& Hand(int axis) { return this->Hands[static_cast<std::size_t>(axis)]; }
  zvMarkerTools* Markers() { return this->Window.GetMarkers(); }
  zvMeasurementList* List() { return this->Window.GetMeasurements(); }
  void Choose(const char* tool) { this->Window.GetTools()->GetAction(tool)->trigger(); }

  /// A point of the present slice of a view, at parts of the way from the middle to the faces.
  Vector OnSlice(int axis, double right, double up)
  {
    vtkImageData* image = this->Window.GetView()->GetVolume().Image;
    Vector point;
    image->GetCenter(point.data());
    const double* bounds = image->GetBounds();
    const int across = axis == 0 ? 1 : 0;
    const int along = axis == 2 ? 1 : 2;
    point[static_cast<std::size_t>(across)] +=
      0.5 * right * (bounds[2 * across + 1] - bounds[2 * across]);
    point[static_cast<std::size_t>(along)] +=
      0.5 * up * (bounds[2 * along + 1] - bounds[2 * along]);
    Vector place;
    this->Slice(axis)->GetViewer()->GetCenter(place.data());
    point[static_cast<std::size_t>(axis)] = place[static_cast<std::size_t>(axis)];
    return point;
  }

  void ClickOn(int axis, const Vector& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    const QPoint place = this->Hand(axis).At(point);
    this->Hand(axis).MoveTo(place);
    this->Hand(axis).Click(Qt::LeftButton, place, modifiers);
  }

  void DragOn(int axis, const Vector& from, const Vector& to)
  {
    zvViewHand& hand = this->Hand(axis);
    hand.MoveTo(hand.At(from));
    hand.Drag(Qt::LeftButton, hand.At(from), hand.At(to));
  }

  QString Cell(int row, zvMeasurementList::Column column)
  {
    return this->List()->data(this->List()->index(row, column), Qt::DisplayRole).toString();
  }
  QStringList Kinds()
  {
    QStringList kinds;
    for (int row = 0; row < this->List()->rowCount(); ++row)
    {
      kinds += this->Cell(row, zvMeasurementList::KindColumn);
    }
    return kinds;
  }
  /// The numbers of a line's value, whatever unit comes behind.
  std::vector<double> Numbers(int row)
  {
    std::vector<double> numbers;
    const QStringList words = this->Cell(row, zvMeasurementList::ValueColumn).split(' ');
    for (const QString& word : words)
    {
      bool isNumber = false;
      const double number = word.toDouble(&isNumber);
      if (isNumber)
      {
        numbers.push_back(number);
      }
    }
    return numbers;
  }
  void ExpectPoint(const std::vector<double>& numbers, const Vector& point, double tolerance)
  {
    ASSERT_EQ(numbers.size(), 3u);
    for (std::size_t a = 0; a < 3; ++a)
    {
      EXPECT_NEAR(numbers[a], point[a], tolerance) << "axis " << a;
    }
  }
  /// How many pixels of a slice view's next picture have a saturated colour.
  int Count(int axis, const zvtest::Color& color)
  {
    this->Slice(axis)->renderWindow()->Render();
    return zvtest::Picture(this->Slice(axis)->renderWindow()).Count(color, 60);
  }

  zvMainWindow Window;
  int Shown = 0;
  std::array<zvViewHand, 3> Hands;
};

TEST_F(WorkstationMarkers, ASeedIsPlacedByAClickAndListedWithItsPosition)
{
  this->Choose("seed");
  const Vector point = this->OnSlice(2, 0.3, -0.2); // before the planes of all views
  this->ClickOn(2, point);
  ASSERT_EQ(this->Kinds(), QStringList{ "Seed" });
  EXPECT_EQ(this->Cell(0, zvMeasurementList::NameColumn), "Seed 1");
  this->ExpectPoint(this->Numbers(0), point, 1.5);
  EXPECT_EQ(this->Markers()->GetSeeds()->GetWidget()->GetEnabled(), 1);
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_GT(this->Count(axis, SelectedSeed), 10) << axis;
  }
  this->Window.GetView()->renderWindow()->Render();
  EXPECT_GT(zvtest::Picture(this->Window.GetView()->renderWindow()).Count(SelectedSeed, 60), 5);
}

TEST_F(WorkstationMarkers, PlacingLeavesTheCrossAlone)
{
  const std::array<double, 3> cross = this->Window.GetViews()->GetLink()->GetCross();
  double height = -0.5; // apart, or a click would take hold of another tool's mark
  for (const char* tool : { "seed", "chain", "tree", "normal" })
  {
    this->Choose(tool);
    this->ClickOn(2, this->OnSlice(2, 0.4, height));
    this->ClickOn(2, this->OnSlice(2, -0.4, height));
    height += 0.22;
    EXPECT_EQ(this->Window.GetViews()->GetLink()->GetCross(), cross) << tool;
  }
  EXPECT_EQ(this->List()->rowCount(), 2 + 2 + 2 + 1);
  this->Window.GetTools()->Leave();
  this->ClickOn(2, this->OnSlice(2, 0.5, -0.4));
  EXPECT_NE(this->Window.GetViews()->GetLink()->GetCross(), cross);
}

TEST_F(WorkstationMarkers, AClickBesideTheSlicePlacesNothing)
{
  this->Choose("seed");
  this->ClickOn(2, this->OnSlice(2, 1.08, 0.0));
  EXPECT_EQ(this->List()->rowCount(), 0);
}

TEST_F(WorkstationMarkers, ASeedFollowsADragAndSoDoesItsLine)
{
  this->Choose("seed");
  const Vector from = this->OnSlice(2, 0.3, 0.2);
  const Vector to = this->OnSlice(2, -0.3, 0.4);
  this->ClickOn(2, from);
  this->DragOn(2, from, to);
  ASSERT_EQ(this->List()->rowCount(), 1);
  this->ExpectPoint(this->Numbers(0), to, 2.0);
}

TEST_F(WorkstationMarkers, WithTheCrossToolASeedIsMovedAndTheCrossIsNot)
{
  this->Choose("seed");
  const Vector from = this->OnSlice(1, 0.3, 0.2);
  const Vector to = this->OnSlice(1, 0.1, -0.4);
  this->ClickOn(1, from);
  this->Window.GetTools()->Leave();
  const std::array<double, 3> cross = this->Window.GetViews()->GetLink()->GetCross();
  this->DragOn(1, from, to);
  this->ExpectPoint(this->Numbers(0), to, 2.0);
  EXPECT_EQ(this->Window.GetViews()->GetLink()->GetCross(), cross);
}

TEST_F(WorkstationMarkers, DeleteRemovesTheSeedUnderTheMouse)
{
  this->Choose("seed");
  const Vector first = this->OnSlice(2, 0.3, 0.2);
  const Vector second = this->OnSlice(2, -0.3, 0.2);
  this->ClickOn(2, first);
  this->ClickOn(2, second);
  this->Hand(2).MoveTo(this->Hand(2).At(first));
  EXPECT_TRUE(this->List()->RemoveUnderMouse());
  ASSERT_EQ(this->List()->rowCount(), 1);
  EXPECT_EQ(this->Cell(0, zvMeasurementList::NameColumn), "Seed 2");
  this->ExpectPoint(this->Numbers(0), second, 1.5);
  this->Hand(2).MoveTo(this->Hand(2).At(this->OnSlice(2, 0.0, -0.5)));
  EXPECT_FALSE(this->List()->RemoveUnderMouse());
}

TEST_F(WorkstationMarkers, AHiddenPointIsNotDeletedByTheMouse)
{
  const Vector point = this->OnSlice(2, 0.3, 0.2);
  for (const char* tool : { "seed", "chain", "tree" })
  {
    this->Choose(tool);
    this->ClickOn(2, point);
    this->Window.GetTools()->Leave();
    this->List()->SetHidden(0, true);
    this->Hand(2).MoveTo(this->Hand(2).At(point));
    EXPECT_FALSE(this->List()->RemoveUnderMouse()) << tool;
    EXPECT_EQ(this->List()->rowCount(), 1) << tool;
    this->List()->SetHidden(0, false);
    EXPECT_TRUE(this->List()->RemoveUnderMouse()) << tool;
    EXPECT_EQ(this->List()->rowCount(), 0) << tool;
  }
}

TEST_F(WorkstationMarkers, WhatIsHiddenStaysSoWhenAPartOfItIsRemoved)
{
  for (const char* tool : { "seed", "chain", "tree" })
  {
    this->Choose(tool);
    for (const double right : { -0.4, 0.0, 0.4 })
    {
      this->ClickOn(2, this->OnSlice(2, right, 0.3));
    }
    this->Window.GetTools()->Leave();
    this->List()->SetHidden(0, true);
    const int bare = this->Count(2, Segment) + this->Count(2, Selected);
    this->List()->Remove(2);
    ASSERT_EQ(this->List()->rowCount(), 2) << tool;
    EXPECT_TRUE(this->List()->IsHidden(0)) << tool;
    EXPECT_TRUE(this->List()->IsHidden(1)) << tool;
    EXPECT_EQ(this->Count(2, Segment) + this->Count(2, Selected), bare) << tool;
    this->List()->SetHidden(1, false);
    EXPECT_FALSE(this->List()->IsHidden(0)) << tool;
    this->List()->RemoveAll();
  }
}

TEST_F(WorkstationMarkers, DeleteAllWithAToolInHandLeavesItReady)
{
  const std::array<double, 3> cross = this->Window.GetViews()->GetLink()->GetCross();
  for (const char* tool : { "seed", "chain", "tree", "normal" })
  {
    this->Choose(tool);
    this->ClickOn(2, this->OnSlice(2, 0.4, 0.3));
    this->ClickOn(2, this->OnSlice(2, -0.4, 0.3));
    this->List()->RemoveAll();
    EXPECT_EQ(this->List()->rowCount(), 0) << tool;
    EXPECT_TRUE(this->Window.GetTools()->IsActive(tool));
    this->ClickOn(2, this->OnSlice(2, 0.5, -0.4));
    this->ClickOn(2, this->OnSlice(2, -0.5, -0.4));
    EXPECT_GT(this->List()->rowCount(), 0) << tool;
    EXPECT_EQ(this->Window.GetViews()->GetLink()->GetCross(), cross) << tool;
    this->List()->RemoveAll();
  }
}

TEST_F(WorkstationMarkers, IdsThatAreNotKnownAreIgnored)
{
  constexpr int unknown = 99;
  const std::array<double, 3> cross = this->Window.GetViews()->GetLink()->GetCross();
  zvMarkerTools* markers = this->Markers();
  zvMarker* const all[] = { markers->GetSeeds(), markers->GetChain(), markers->GetTree(),
    markers->GetNormal(), markers->GetBox() };
  const char* const tools[] = { "seed", "chain", "tree", "normal", "box" };
  for (int i = 0; i < 5; ++i)
  {
    for (const bool isThere : { false, true })
    {
      if (isThere)
      {
        this->Choose(tools[i]);
        if (all[i]->GetClicks() != zvMarker::Clicks::None)
        {
          this->ClickOn(2, this->OnSlice(2, 0.4, 0.3));
          this->ClickOn(2, this->OnSlice(2, -0.4, 0.3));
        }
        this->Window.GetTools()->Leave();
        ASSERT_GT(this->List()->rowCount(), 0) << tools[i];
      }
      const int before = this->List()->rowCount();
      all[i]->GoTo(unknown);
      all[i]->SetHidden(unknown, true);
      all[i]->Remove(unknown);
      EXPECT_FALSE(all[i]->Edit(unknown));
      EXPECT_EQ(this->List()->rowCount(), before) << tools[i];
      EXPECT_FALSE(this->List()->IsHidden(0)) << tools[i];
      EXPECT_EQ(this->Window.GetViews()->GetLink()->GetCross(), cross) << tools[i];
    }
    this->List()->RemoveAll();
  }
}

TEST_F(WorkstationMarkers, ALabelIsOutlinedInTheViewThatItFaces)
{
  this->Choose("chain");
  this->ClickOn(1, this->OnSlice(1, -0.4, 0.3));
  this->ClickOn(1, this->OnSlice(1, 0.4, 0.3));
  // The label and its outline, all of one text.
  const auto countTexts = [this](int axis)
  {
    vtkRenderer* renderer = this->Slice(axis)->GetRenderer();
    this->Slice(axis)->renderWindow()->Render();
    int count = 0;
    vtkActorCollection* actors = renderer->GetActors();
    vtkCollectionSimpleIterator position;
    actors->InitTraversal(position);
    while (vtkActor* actor = actors->GetNextActor(position))
    {
      count += vtkFollower::SafeDownCast(actor) != nullptr && actor->GetVisibility() != 0;
    }
    return count;
  };
  EXPECT_EQ(countTexts(1), 5);
  EXPECT_EQ(countTexts(0), 1);
  EXPECT_EQ(countTexts(2), 1);
}

TEST_F(WorkstationMarkers, AChainTellsItsLengthAndThoseOfItsSegments)
{
  this->Choose("chain");
  const Vector points[] = { this->OnSlice(2, -0.4, 0.0), this->OnSlice(2, 0.0, 0.4),
    this->OnSlice(2, 0.4, 0.0) };
  for (const Vector& point : points)
  {
    this->ClickOn(2, point);
  }
  ASSERT_EQ(this->Kinds(), (QStringList{ "Chain", "Chain segment", "Chain segment" }));
  const double first = this->Numbers(1)[0];
  const double second = this->Numbers(2)[0];
  EXPECT_NEAR(first, Distance(points[0], points[1]), 2.5);
  EXPECT_NEAR(second, Distance(points[1], points[2]), 2.5);
  EXPECT_NEAR(this->Numbers(0)[0], first + second, 0.011);
  EXPECT_GT(this->Count(2, Segment), 30);
}

TEST_F(WorkstationMarkers, ControlAndAClickOnASegmentPutsAPointThere)
{
  this->Choose("chain");
  const Vector from = this->OnSlice(2, -0.4, 0.0);
  const Vector to = this->OnSlice(2, 0.4, 0.0);
  this->ClickOn(2, from);
  this->ClickOn(2, to);
  const double length = this->Numbers(0)[0];
  const Vector between = this->OnSlice(2, -0.1, 0.0);
  this->ClickOn(2, between, Qt::ControlModifier);
  ASSERT_EQ(this->List()->rowCount(), 3);
  EXPECT_NEAR(this->Numbers(0)[0], length, 1.5);
  const zvChainMarker* chain = this->Markers()->GetChain();
  ASSERT_EQ(chain->GetPointCount(), 3);
  EXPECT_LT(Distance(chain->GetPoint(1), between), 3.0);
  EXPECT_LT(Distance(chain->GetPoint(2), to), 3.0);
}

TEST_F(WorkstationMarkers, RemovingAPointClosesTheChain)
{
  this->Choose("chain");
  const Vector points[] = { this->OnSlice(2, -0.4, 0.0), this->OnSlice(2, 0.0, 0.4),
    this->OnSlice(2, 0.4, 0.0) };
  for (const Vector& point : points)
  {
    this->ClickOn(2, point);
  }
  this->List()->Remove(1);
  ASSERT_EQ(this->Kinds(), (QStringList{ "Chain", "Chain segment" }));
  EXPECT_NEAR(this->Numbers(0)[0], Distance(points[0], points[2]), 2.5);
  this->List()->Remove(0);
  EXPECT_EQ(this->List()->rowCount(), 0);
  this->ClickOn(2, points[0]);
  EXPECT_EQ(this->List()->rowCount(), 1);
}

TEST_F(WorkstationMarkers, ATreeGrowsFromTheSelectedPoint)
{
  this->Choose("tree");
  const Vector root = this->OnSlice(2, -0.4, -0.4);
  const Vector fork = this->OnSlice(2, 0.0, 0.0);
  const Vector left = this->OnSlice(2, -0.3, 0.4);
  const Vector right = this->OnSlice(2, 0.4, 0.3);
  this->ClickOn(2, root);
  this->ClickOn(2, fork);
  this->ClickOn(2, left);
  this->ClickOn(2, fork); // selects it
  ASSERT_EQ(this->List()->rowCount(), 3);
  this->ClickOn(2, right);
  ASSERT_EQ(this->Kinds(), (QStringList{ "Tree", "Tree segment", "Tree segment", "Tree segment" }));
  EXPECT_NEAR(this->Numbers(3)[0], Distance(fork, right), 2.5);
  const double sum = this->Numbers(1)[0] + this->Numbers(2)[0] + this->Numbers(3)[0];
  EXPECT_NEAR(this->Numbers(0)[0], sum, 0.02);
}

TEST_F(WorkstationMarkers, RemovingASegmentCutsTheBranch)
{
  this->Choose("tree");
  const Vector fork = this->OnSlice(2, 0.0, 0.0);
  this->ClickOn(2, this->OnSlice(2, -0.4, -0.4));
  this->ClickOn(2, fork);
  this->ClickOn(2, this->OnSlice(2, -0.3, 0.4));
  this->ClickOn(2, fork);
  this->ClickOn(2, this->OnSlice(2, 0.4, 0.3));
  this->List()->Remove(2);
  EXPECT_EQ(this->List()->rowCount(), 3);
  this->List()->Remove(1); // the fork, with what is left on it
  ASSERT_EQ(this->Kinds(), QStringList{ "Tree" });
  this->ClickOn(2, this->OnSlice(2, 0.2, -0.3));
  EXPECT_EQ(this->List()->rowCount(), 2);
  this->List()->Remove(0);
  EXPECT_EQ(this->List()->rowCount(), 0);
}

TEST_F(WorkstationMarkers, ADraggedBranchIsDrawnWhereItIsAfterTheRelease)
{
  this->Choose("tree");
  const Vector end = this->OnSlice(2, 0.4, 0.2);
  const Vector moved = this->OnSlice(2, 0.1, 0.6);
  this->ClickOn(2, this->OnSlice(2, -0.4, 0.2));
  this->ClickOn(2, end);
  this->DragOn(2, end, moved);
  QCoreApplication::processEvents();
  EXPECT_NEAR(this->Numbers(1)[0], Distance(this->OnSlice(2, -0.4, 0.2), moved), 3.0);
  ASSERT_EQ(this->Markers()->GetTree()->GetPointCount(), 2);
  EXPECT_LT(Distance(this->Markers()->GetTree()->GetPoint(1), moved), 3.0);
  // It is seen there, and nothing is left where it was.
  this->Slice(2)->renderWindow()->Render();
  const zvtest::Picture picture(this->Slice(2)->renderWindow());
  const auto isSegmentAt = [this, &picture](const Vector& point)
  {
    const QPoint place = this->Hand(2).At(point);
    const zvtest::Display display{ { place.x(), this->Slice(2)->height() - 1 - place.y() } };
    return picture.HasNear(Segment, display, 3, 80) || picture.HasNear(Selected, display, 3, 80);
  };
  EXPECT_TRUE(isSegmentAt(this->OnSlice(2, -0.1, 0.44)));
  EXPECT_FALSE(isSegmentAt(this->OnSlice(2, 0.3, 0.2)));
}

TEST_F(WorkstationMarkers, TwoClicksPlaceANormal)
{
  this->Choose("normal");
  const Vector from = this->OnSlice(2, -0.3, 0.0);
  const Vector to = this->OnSlice(2, 0.3, 0.0);
  this->ClickOn(2, from);
  EXPECT_EQ(this->List()->rowCount(), 0);
  this->ClickOn(2, to);
  ASSERT_EQ(this->Kinds(), QStringList{ "Normal" });
  const std::vector<double> normal = this->Numbers(0);
  ASSERT_EQ(normal.size(), 3u);
  EXPECT_NEAR(normal[0], from[0] < to[0] ? 1.0 : -1.0, 0.01);
  EXPECT_NEAR(normal[2], 0.0, 0.05);
  // A little beyond the end, where the line does not lie over the cone.
  Vector end = this->Markers()->GetNormal()->GetPoint(1);
  end[0] += 5.0 * normal[0];
  this->DragOn(2, end, this->OnSlice(2, 0.0, 0.4));
  EXPECT_GT(std::abs(this->Numbers(0)[1]), 0.5);
}

TEST_F(WorkstationMarkers, ANormalThatIsDeletedMakesRoomForAnother)
{
  this->Choose("normal");
  const Vector from = this->OnSlice(2, -0.3, 0.2), to = this->OnSlice(2, 0.3, 0.2);
  for (const char* name : { "Normal 1", "Normal 1" }) // an empty list counts anew
  {
    this->ClickOn(2, from);
    EXPECT_EQ(this->List()->rowCount(), 0);
    this->ClickOn(2, to);
    ASSERT_EQ(this->Kinds(), QStringList{ "Normal" });
    EXPECT_EQ(this->Cell(0, zvMeasurementList::NameColumn), name);
    this->Hand(2).MoveTo(this->Hand(2).At(this->Markers()->GetNormal()->GetPoint(1)));
    EXPECT_TRUE(this->List()->RemoveUnderMouse());
    EXPECT_EQ(this->List()->rowCount(), 0);
  }
  this->Window.GetTools()->Leave();
  EXPECT_EQ(this->Markers()->GetNormal()->GetWidget(), nullptr);
}

TEST_F(WorkstationMarkers, ANormalOfOnePointIsDroppedWithTheTool)
{
  this->Choose("normal");
  this->ClickOn(2, this->OnSlice(2, -0.3, 0.0));
  this->Window.GetTools()->Leave();
  EXPECT_EQ(this->List()->rowCount(), 0);
  EXPECT_EQ(this->Markers()->GetNormal()->GetWidget(), nullptr);
}

TEST_F(WorkstationMarkers, ABoxTellsItsBoundsAndFollowsADragOfAFace)
{
  this->Choose("box");
  ASSERT_EQ(this->Kinds(), QStringList{ "Box" });
  const std::vector<double> before = this->Numbers(0);
  ASSERT_EQ(before.size(), 6u);
  const double* bounds = this->Window.GetView()->GetVolume().Image->GetBounds();
  EXPECT_NEAR(before[1] - before[0], 0.5 * (bounds[1] - bounds[0]), 0.02);
  EXPECT_GT(this->Count(2, Edge), 50);
  // The handle of the face of greater x lies in the middle of that face.
  zvViewHand hand(this->Window.GetView());
  const Vector handle{ { before[1], 0.5 * (before[2] + before[3]),
    0.5 * (before[4] + before[5]) } };
  const QPoint from = hand.At(handle);
  Vector further = handle;
  further[0] += 0.1 * (bounds[1] - bounds[0]);
  hand.MoveTo(from);
  hand.Drag(Qt::LeftButton, from, hand.At(further));
  const std::vector<double> after = this->Numbers(0);
  EXPECT_GT(after[1], before[1] + 1.0);
  EXPECT_NEAR(after[0], before[0], 1.0e-6);
}

TEST_F(WorkstationMarkers, AreHiddenAndShownAgainFromTheList)
{
  const zvtest::Color colors[] = { Segment, Edge };
  const int bare[] = { this->Count(2, colors[0]), this->Count(2, colors[1]) }; // letters
  this->Choose("chain");
  this->ClickOn(2, this->OnSlice(2, -0.4, 0.1));
  this->ClickOn(2, this->OnSlice(2, 0.3, 0.1));
  this->ClickOn(2, this->OnSlice(2, 0.3, 0.3));
  this->Choose("box");
  this->Window.GetTools()->Leave();
  const int rows[] = { 0, 3 };
  for (int i = 0; i < 2; ++i)
  {
    EXPECT_GT(this->Count(2, colors[i]), bare[i] + 20) << i;
    this->List()->SetHidden(rows[i], true);
    EXPECT_TRUE(this->List()->IsHidden(rows[i])) << i;
    EXPECT_EQ(this->Count(2, colors[i]), bare[i]) << i;
    this->List()->SetHidden(rows[i], false);
    EXPECT_GT(this->Count(2, colors[i]), bare[i] + 20) << i;
  }
}

TEST_F(WorkstationMarkers, AClickOnALineBringsThePlanesToTheMark)
{
  this->Choose("seed");
  const Vector point = this->OnSlice(2, 0.3, 0.2);
  this->ClickOn(2, point);
  this->Window.GetTools()->Leave();
  this->Window.GetViews()->GoTo(2, 5);
  this->List()->GoTo(0);
  const std::array<double, 3> cross = this->Window.GetViews()->GetLink()->GetCross();
  const double voxel = this->Window.GetView()->GetVolume().Image->GetSpacing()[0];
  EXPECT_LT(Distance(cross, this->Markers()->GetSeeds()->GetPoint(0)), 2.0 * voxel);
}

TEST_F(WorkstationMarkers, EachToolHasAKeyAndOneIsActive)
{
  for (const char* tool : { "seed", "chain", "tree", "normal", "box" })
  {
    QAction* action = this->Window.GetTools()->GetAction(tool);
    ASSERT_NE(action, nullptr) << tool;
    EXPECT_FALSE(action->shortcut().isEmpty()) << tool;
    EXPECT_FALSE(action->icon().isNull()) << tool;
    action->trigger();
    EXPECT_TRUE(this->Window.GetTools()->IsActive(tool));
    int checked = 0;
    for (QAction* one : this->Window.GetTools()->GetActions())
    {
      checked += one->isChecked() ? 1 : 0;
    }
    EXPECT_EQ(checked, 1) << tool;
  }
  QStringList keys;
  for (QAction* one : this->Window.findChildren<QAction*>())
  {
    const QString key = one->shortcut().toString();
    EXPECT_TRUE(key.isEmpty() || !keys.contains(key))
      << one->text().toStdString() << ": " << key.toStdString();
    keys += key;
  }
}

TEST_F(WorkstationMarkers, GoWithTheVolume)
{
  double height = -0.5;
  for (const char* tool : { "seed", "chain", "tree", "normal" })
  {
    this->Choose(tool);
    this->ClickOn(0, this->OnSlice(0, 0.4, height));
    this->ClickOn(0, this->OnSlice(0, -0.4, height));
    height += 0.22;
  }
  this->Choose("box");
  EXPECT_EQ(this->List()->rowCount(), 2 + 2 + 2 + 1 + 1);
  this->Window.OpenPhantom(PhantomSide / 2);
  ASSERT_TRUE(WaitFor([this] { return this->Shown == 2; }));
  EXPECT_EQ(this->List()->rowCount(), 0);
  this->Choose("seed");
  this->ClickOn(2, this->OnSlice(2, 0.2, 0.2));
  EXPECT_EQ(this->Kinds(), QStringList{ "Seed" });
}

TEST_F(WorkstationMarkers, ANewVolumeInMidDragLeavesNothingBehind)
{
  for (const char* tool : { "seed", "chain", "tree", "normal" })
  {
    this->Choose(tool);
    const Vector from = this->OnSlice(2, 0.3, 0.2), to = this->OnSlice(2, -0.3, 0.2);
    this->ClickOn(2, from);
    this->ClickOn(2, to);
    zvViewHand& hand = this->Hand(2);
    hand.MoveTo(hand.At(to));
    hand.Press(Qt::LeftButton, hand.At(to));
    hand.MoveTo(hand.Part(0.1, 0.1));
    const int before = this->Shown;
    this->Window.OpenPhantom(PhantomSide);
    ASSERT_TRUE(WaitFor([&] { return this->Shown > before; }));
    hand.MoveTo(hand.Part(0.2, 0.2));
    hand.Release();
    QCoreApplication::processEvents();
    EXPECT_EQ(this->List()->rowCount(), 0) << tool;
    EXPECT_TRUE(this->Window.GetTools()->IsActive("cross")) << tool;
  }
}

TEST_F(WorkstationMarkers, TheLabelOfAChainIsThatOfASegmentThatIsLeft)
{
  const auto label = [this]
  {
    vtkActorCollection* actors = this->Slice(2)->GetRenderer()->GetActors();
    vtkCollectionSimpleIterator position;
    actors->InitTraversal(position);
    QString text;
    while (vtkActor* actor = actors->GetNextActor(position))
    {
      auto* follower = vtkFollower::SafeDownCast(actor);
      auto* source = follower == nullptr
        ? nullptr
        : vtkVectorText::SafeDownCast(follower->GetMapper()->GetInputAlgorithm());
      if (source != nullptr && text.isEmpty())
      {
        text = QString(source->GetText()).trimmed();
      }
    }
    return text;
  };
  this->Choose("chain");
  const std::array<Vector, 4> points{ { this->OnSlice(2, -0.5, -0.3), this->OnSlice(2, 0.0, 0.3),
    this->OnSlice(2, 0.4, -0.3), this->OnSlice(2, 0.6, 0.5) } };
  for (const Vector& point : points)
  {
    this->ClickOn(2, point);
  }
  EXPECT_EQ(label(), this->Cell(3, zvMeasurementList::ValueColumn));
  this->List()->Remove(1);
  EXPECT_EQ(label(), this->Cell(1, zvMeasurementList::ValueColumn)) << "it has closed the gap";
  this->List()->Remove(2);
  ASSERT_EQ(this->List()->rowCount(), 2);
  EXPECT_EQ(label(), this->Cell(1, zvMeasurementList::ValueColumn)) << "the last one";
  this->List()->Remove(1);
  EXPECT_EQ(label(), QString()) << "one point has none";
}

TEST_F(WorkstationMarkers, APointThatIsDeletedInMidDragIsGone)
{
  for (const char* tool : { "seed", "chain", "tree" })
  {
    this->Choose(tool);
    const Vector first = this->OnSlice(2, 0.3, 0.2), second = this->OnSlice(2, -0.3, 0.2);
    this->ClickOn(2, first);
    this->ClickOn(2, second);
    const QString before = this->Cell(0, zvMeasurementList::ValueColumn);
    zvViewHand& hand = this->Hand(2);
    hand.MoveTo(hand.At(second));
    hand.Press(Qt::LeftButton, hand.At(second));
    hand.MoveTo(hand.At(this->OnSlice(2, -0.2, 0.4)));
    EXPECT_TRUE(this->List()->RemoveUnderMouse()) << tool;
    EXPECT_EQ(this->List()->rowCount(), 1) << tool;
    const QString left = this->Cell(0, zvMeasurementList::ValueColumn);
    hand.MoveTo(hand.At(this->OnSlice(2, 0.1, -0.3)));
    hand.Release();
    QCoreApplication::processEvents();
    EXPECT_EQ(this->List()->rowCount(), 1) << tool;
    EXPECT_EQ(this->Cell(0, zvMeasurementList::ValueColumn), left)
      << tool << ", which was " << before.toStdString();
    this->Window.GetTools()->Leave();
    this->List()->RemoveAll();
  }
}

TEST_F(WorkstationMarkers, AWindowMayBeDeletedWithMarkersAndInMidDrag)
{
  for (const char* last : { "seed", "chain", "tree", "normal" })
  {
    auto window = OpenPhantomWindow(PhantomSide / 2);
    zvViewHand hand(window->GetViews()->GetSliceView(2));
    double height = -0.5;
    QPoint end;
    for (const char* tool : { "box", "seed", "chain", "tree", "normal" })
    {
      window->GetTools()->Choose(tool);
      for (const double right : { -0.3, 0.3 })
      {
        const QPoint place = hand.Part(right, height);
        hand.MoveTo(place);
        if (QString(tool) != "box")
        {
          hand.Click(Qt::LeftButton, place);
        }
        end = QString(tool) == last ? place : end;
      }
      height += 0.22;
    }
    ASSERT_EQ(window->GetMeasurements()->rowCount(), 1 + 2 + 2 + 2 + 1);
    hand.MoveTo(end);
    hand.Press(Qt::LeftButton, end);
    hand.MoveTo(hand.Part(0.0, 0.4));
    window.reset();
    QCoreApplication::processEvents();
    ExpectNoMessage();
  }
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
