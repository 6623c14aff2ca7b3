#ifndef zvWorkstationFixture_h
#define zvWorkstationFixture_h

#include "zvImageViewerWidget.h"
#include "zvMainWindow.h"
#include "zvMeasurementList.h"
#include "zvMeasurementPanel.h"
#include "zvSliceMarks.h"
#include "zvToolSet.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"
#include "zvVolumeView.h"

#include "zvIndexedVolume.h"
#include "zvPicture.h"
#include "zvQuietTest.h"
#include "zvTemporaryFolder.h"
#include "zvWindows.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QWindow>
#include <QtTest>

#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkImageData.h"
#include "vtkMath.h"
#include "vtkRenderer.h"

#include <array>
#include <cmath>
#include <functional>

namespace zvtest
{
/// The running workstation on a small volume: windows, views and hands that use them.
class WorkstationFixture : public QuietTest
{
protected:
  using Vector = std::array<double, 3>;

  // Unequal along the three axes, so that no two can be taken for each other.
  static constexpr std::array<int, 3> Dimensions{ { 40, 50, 30 } };
  static constexpr std::array<double, 3> Spacing{ { 2.0, 1.5, 3.0 } };
  static constexpr std::array<double, 3> Origin{ { -30.0, 10.0, 5.0 } };
  static constexpr std::array<const char*, 3> ViewNames{ { "Sagittal", "Coronal", "Axial" } };

  WorkstationFixture()
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
    // Keys are for the active window, and without a window manager none becomes it by itself.
    QApplication::setActiveWindow(&this->Window);
    const auto voxels = MakeIndexedVolume(Dimensions);
    this->Window.Open(QString::fromStdString(this->Folder.Write("head.mha",
      "ObjectType = Image\nNDims = 3\nDimSize = 40 50 30\nElementType = MET_SHORT\n"
      "BinaryData = True\nElementSpacing = 2 1.5 3\nOffset = -30 10 5\n"
      "TransformMatrix = 1 0 0 0 1 0 0 0 1\nElementDataFile = LOCAL\n" +
        BytesOf(voxels))));
    ASSERT_TRUE(WaitFor([this] { return this->Shown == 1; }));
    QCoreApplication::processEvents();
  }

  zvViewGrid* Views() { return this->Window.GetViews(); }
  zvVolumeView* View3D() { return this->Window.GetView(); }
  zvSliceView* Slice(int axis) { return this->Window.GetViews()->GetSliceView(axis); }
  zvSliceMarks* Marks(int axis) { return this->Slice(axis)->GetMarks(); }
  zvImageViewerWidget* Viewer(int axis) { return this->Slice(axis)->GetViewer(); }
  zvViewHand& Hand(int axis) { return this->Hands[static_cast<std::size_t>(axis)]; }
  vtkImageData* Image() { return this->View3D()->GetVolume().Image; }
  Picture PictureOf(int axis) { return Picture(this->Slice(axis)->renderWindow()); }

  zvToolSet* Tools() { return this->Window.GetTools(); }
  QAction* Tool(const char* id) { return this->Tools()->GetAction(id); }
  zvMeasurementList* List() { return this->Window.GetMeasurements(); }
  zvMeasurementPanel* Panel() { return this->Window.GetMeasurementPanel(); }

  /// Type a key as a user does whose mouse is in a view.
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int axis = 2)
  {
    this->Slice(axis)->setFocus();
    QTest::keyClick(this->Slice(axis), key, modifiers);
  }

  QString Cell(int row, int column)
  {
    return this->List()->data(this->List()->index(row, column), Qt::DisplayRole).toString();
  }
  int Rows() { return this->List()->rowCount(); }
  double Number(int row)
  {
    return this->Cell(row, zvMeasurementList::ValueColumn).section(' ', 0, 0).toDouble();
  }

  /// The world's point (millimetres) under a position of a view, at any depth.
  Vector WorldAt(int axis, const QPoint& position)
  {
    vtkRenderer* renderer = this->Slice(axis)->GetRenderer();
    const double ratio = this->Slice(axis)->devicePixelRatioF();
    double world[4];
    renderer->SetDisplayPoint(
      position.x() * ratio, (this->Slice(axis)->height() - 1 - position.y()) * ratio, 0.0);
    renderer->DisplayToWorld();
    renderer->GetWorldPoint(world);
    return { { world[0], world[1], world[2] } };
  }
  /// Millimetres between what is seen at two positions.
  double Distance(int axis, const QPoint& one, const QPoint& other)
  {
    return std::sqrt(vtkMath::Distance2BetweenPoints(
      this->WorldAt(axis, one).data(), this->WorldAt(axis, other).data()));
  }
  double MillimetresPerPixel(int axis)
  {
    return this->Distance(axis, QPoint(0, 0), QPoint(100, 0)) / 100.0;
  }
  /// Where a voxel of the present slice is seen.
  QPoint Seen(int axis, std::array<int, 3> voxel)
  {
    Vector center;
    for (std::size_t a = 0; a < 3; ++a)
    {
      const int index =
        static_cast<int>(a) == axis ? this->Viewer(axis)->GetSliceIndex() : voxel[a];
      center[a] = Origin[a] + index * Spacing[a];
    }
    return this->Hand(axis).At(center);
  }

  /// A position of a view as pictures count it.
  Display In(int axis, const QPoint& position)
  {
    return { { position.x(), this->Slice(axis)->height() - 1 - position.y() } };
  }
  /// Whether the picture of a view has a colour near a position.
  bool Has(int axis, const Color& color, const QPoint& position, int radius = 3)
  {
    return this->PictureOf(axis).HasNear(color, this->In(axis, position), radius, 40);
  }
  int CountNear(int axis, const Color& color, const QPoint& position, int radius)
  {
    return this->PictureOf(axis).Count(color, Region::Around(this->In(axis, position), radius), 40);
  }

  zvMainWindow Window;
  std::array<zvViewHand, 3> Hands;
  TemporaryFolder Folder;
  int Shown = 0;
};
}

#endif
