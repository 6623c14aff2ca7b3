#include "zvTour.h"

#include "zvContourStations.h"
#include "zvEditBar.h"
#include "zvImageViewerWidget.h"
#include "zvMainWindow.h"
#include "zvMarkerTour.h"
#include "zvMeasureTour.h"
#include "zvMeasurementList.h"
#include "zvToolSet.h"
#include "zvTurnPanel.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"
#include "zvVolumeView.h"
#include "zvWindowPanel.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QPixmap>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>

#include "vtkImageData.h"

#include <cmath>
#include <iostream>

namespace
{
constexpr int MillisecondsToSettle = 150; // for exposures and repaints that are under way

void Settle()
{
  QEventLoop loop;
  QTimer::singleShot(MillisecondsToSettle, &loop, &QEventLoop::quit);
  loop.exec();
}
}

zvTour::zvTour(zvMainWindow& window, const QString& folder)
  : Window(window)
  , Folder(folder)
{
}

int zvTour::Run(const QString& path)
{
  if (!QDir().mkpath(this->Folder))
  {
    this->Fail(this->Folder, "the folder cannot be made");
    return EXIT_FAILURE;
  }
  this->Window.SetTellsRefusals(false);
  this->Window.show();
  Settle();
  // Without a volume and without the example there is the built-in head alone.
  const bool hasVolume = !path.isEmpty() || !zvVolumeReader::FindExampleVolume().empty();
  const QString prefix = path.isEmpty() ? "mri" : "volume";
  if (hasVolume && !(this->ShowVolume(path) && this->VisitAll(prefix)))
  {
    return EXIT_FAILURE;
  }
  this->ShowPhantom();
  return this->VisitAll("phantom") ? EXIT_SUCCESS : EXIT_FAILURE;
}

bool zvTour::ShowVolume(const QString& path)
{
  QEventLoop loop;
  bool isShown = false;
  QObject::connect(&this->Window, &zvMainWindow::shown, &loop,
    [&]
    {
      isShown = true;
      loop.quit();
    });
  QObject::connect(&this->Window, &zvMainWindow::refused, &loop,
    [&](const QString& file, const QString& reason)
    {
      this->Fail(file, reason);
      loop.quit();
    });
  QObject::connect(&this->Window, &zvMainWindow::cancelled, &loop, &QEventLoop::quit);
  if (path.isEmpty())
  {
    this->Window.OpenExample();
  }
  else
  {
    this->Window.Open(path);
  }
  loop.exec();
  return isShown;
}

void zvTour::ShowPhantom()
{
  QEventLoop loop;
  QObject::connect(&this->Window, &zvMainWindow::shown, &loop, &QEventLoop::quit);
  this->Window.OpenPhantom();
  loop.exec();
}

bool zvTour::VisitAll(const QString& prefix)
{
  struct Station
  {
    const char* Name;
    void (zvTour::*Visit)();
  };
  const Station stations[] = { { "at-rest", nullptr }, { "slice-dragged", &zvTour::DragSlice },
    { "voxel-read", &zvTour::ReadVoxel }, { "window-level", &zvTour::DragWindowLevel },
    { "oblique", &zvTour::TurnPlanes }, { "cross-dragged", &zvTour::DragCross },
    { "line-turned", &zvTour::TurnLine }, { "rulers", &zvTour::DrawRulers },
    { "contours", &zvTour::DrawContours }, { "notes", &zvTour::WriteNotes },
    { "list", &zvTour::UseList }, { "help", &zvTour::ShowHelp }, { "mask", &zvTour::ShowMask },
    { "markers", &zvTour::PlaceMarkers }, { "normal-and-box", &zvTour::PlaceNormalAndBox },
    { "filled", &zvTour::PaintAndFill } };
  const bool hasMask = this->Window.GetEditBar()->GetMaskAction()->isEnabled();
  for (const Station& station : stations)
  {
    if (station.Visit == &zvTour::ShowMask && !hasMask)
    {
      continue;
    }
    // While the voxels are as they were loaded.
    if (station.Visit == &zvTour::PaintAndFill && !this->VisitContour(prefix))
    {
      return false;
    }
    if (station.Visit != nullptr)
    {
      (this->*station.Visit)();
    }
    Settle();
    if (!this->Write(prefix + "-" + station.Name))
    {
      return false;
    }
  }
  return true;
}

bool zvTour::VisitContour(const QString& prefix)
{
  this->Tidy();
  this->Window.GetEditBar()->GetMaskAction()->setChecked(false);
  this->Window.GetMeasurements()->RemoveAll();
  for (const zvContourStations::Station& station : zvContourStations::GetAll())
  {
    station.Visit(this->Window);
    Settle();
    if (!this->Write(prefix + "-" + station.Name))
    {
      return false;
    }
  }
  zvContourStations::Tidy(this->Window);
  return true;
}

void zvTour::DragSlice()
{
  zvViewHand hand(this->Window.GetView());
  std::array<double, 3> point = hand.OnAxialPlane(0.4, -0.3);
  const QPoint from = hand.At(point);
  const double* bounds = this->Window.GetView()->GetVolume().Image->GetBounds();
  point[2] += 0.15 * (bounds[5] - bounds[4]);
  hand.Drag(Qt::LeftButton, from, hand.At(point), 12);
}

void zvTour::ReadVoxel()
{
  zvViewHand hand(this->Window.GetView());
  const auto connection = QObject::connect(this->Window.GetView(), &zvVolumeView::voxelRead,
    [this](const zvVoxel& voxel) { this->Tissue = voxel.Value; });
  hand.Click(Qt::LeftButton, hand.At(hand.OnAxialPlane(0.3, -0.25)), Qt::ShiftModifier);
  QObject::disconnect(connection);
}

// To a window around the tissue that has just been read.
void zvTour::DragWindowLevel()
{
  zvVolumeView* view = this->Window.GetView();
  const zvWindowValues value = view->GetWindowLevel();
  const double* range = view->GetVolume().Image->GetScalarRange();
  const double right = (this->Tissue - value.Window) / (range[1] - range[0]);
  const double down = (value.Level - 0.8 * this->Tissue) / (range[1] - range[0]);
  const QPoint way(static_cast<int>(std::lround(right * view->width())),
    static_cast<int>(std::lround(down * view->height())));
  // The drag may leave the view, as a user's may.
  const QPoint middle = view->rect().center();
  zvViewHand(view).Drag(Qt::RightButton, middle, middle + way, 6);
}

void zvTour::TurnPlanes()
{
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(25);
  this->Window.GetTurnPanel()->GetSlider(2)->setValue(-20);
  // And the camera a little, by the middle button.
  zvViewHand hand(this->Window.GetView());
  const QPoint middle = this->Window.GetView()->rect().center();
  hand.Drag(Qt::MiddleButton, middle, middle + QPoint(60, 20), 6);
}

void zvTour::DrawRulers()
{
  this->Tidy();
  zvMeasureTour::DrawRulers(this->Window);
}

void zvTour::DrawContours()
{
  zvMeasureTour::DrawContours(this->Window);
}

void zvTour::WriteNotes()
{
  zvMeasureTour::WriteNotes(this->Window);
}

void zvTour::UseList()
{
  zvMeasureTour::UseList(this->Window);
}

void zvTour::ShowHelp()
{
  zvMeasureTour::ShowHelp(this->Window);
}

// What the stations before have changed goes back, so that each shows one thing.
void zvTour::Tidy()
{
  zvMeasureTour::Remove(this->Window);
  this->Window.GetTurnPanel()->ShowStraight();
  this->Window.GetViews()->ResetAll();
  QComboBox* presets = this->Window.GetWindowPanel()->GetPresetBox();
  presets->setCurrentIndex(0);
  emit presets->activated(0);
}

void zvTour::DragCross()
{
  this->Tidy();
  zvSliceView* view = this->Window.GetViews()->GetSliceView(2);
  zvViewHand hand(view);
  hand.MoveTo(hand.Part(0.2, 0.3));
  hand.Drag(Qt::LeftButton, hand.Part(0.2, 0.3), hand.Part(0.24, -0.2), 8);
}

// In the sagittal view the slice is tilted, and with it what the two others show.
void zvTour::TurnLine()
{
  this->Tidy();
  zvSliceView* view = this->Window.GetViews()->GetSliceView(0);
  zvViewHand hand(view);
  const double* bounds = this->Window.GetView()->GetVolume().Image->GetBounds();
  std::array<double, 3> cross;
  view->GetViewer()->GetRotationCenter(cross.data());
  // On the line of the axial plane, to the front, and from there up.
  std::array<double, 3> from = cross, to = cross;
  from[1] -= 0.3 * (bounds[3] - bounds[2]);
  to[1] = from[1] + 0.03 * (bounds[3] - bounds[2]);
  to[2] += 0.16 * (bounds[5] - bounds[4]);
  hand.MoveTo(hand.At(from));
  hand.Drag(Qt::LeftButton, hand.At(from), hand.At(to), 16);
}

void zvTour::ShowMask()
{
  this->Tidy();
  zvEditBar* edit = this->Window.GetEditBar();
  QEventLoop loop;
  QObject::connect(&this->Window, &zvMainWindow::maskOpened, &loop, &QEventLoop::quit);
  QObject::connect(&this->Window, &zvMainWindow::refused, &loop, &QEventLoop::quit);
  edit->GetMaskAction()->setChecked(true);
  loop.exec();
  edit->GetOpacitySlider()->setValue(45);
  zvViewHand hand(this->Window.GetViews()->GetSliceView(2));
  hand.MoveTo(hand.Part(-0.3, 0.1));
}

void zvTour::PlaceMarkers()
{
  this->Tidy();
  this->Window.GetEditBar()->GetMaskAction()->setChecked(false);
  zvMarkerTour::PlacePoints(this->Window);
}

void zvTour::PlaceNormalAndBox()
{
  this->Tidy();
  zvMarkerTour::PlaceNormalAndBox(this->Window);
}

// A ring is painted in the axial view and filled, in contrast to the tissue around it; then the
// cross goes there, so that the other views cut it too.
void zvTour::PaintAndFill()
{
  this->Tidy();
  zvMarkerTour::Remove(this->Window);
  zvEditBar* edit = this->Window.GetEditBar();
  edit->GetMaskAction()->setChecked(false);
  zvSliceView* view = this->Window.GetViews()->GetSliceView(2);
  zvViewHand hand(view);
  hand.MoveTo(hand.Part(0.14, 0.1));
  const zvWindowValues value = this->Window.GetView()->GetWindowLevel();
  const bool isBright = view->GetViewer()->GetCurrentImageValue() > value.Level;
  edit->GetValueBox()->setValue(
    static_cast<int>(value.Level + (isBright ? -0.35 : 0.35) * value.Window));
  this->Window.GetTools()->Choose("paint");
  constexpr int steps = 400;
  constexpr double fullCircle = 6.283185307179586;
  const auto onRing = [&hand](int step)
  {
    const double angle = fullCircle * step / steps;
    return hand.Part(0.14 + 0.12 * std::cos(angle), 0.1 + 0.16 * std::sin(angle));
  };
  hand.MoveTo(onRing(0));
  hand.Press(Qt::LeftButton, onRing(0));
  for (int step = 1; step <= steps; ++step)
  {
    hand.MoveTo(onRing(step));
  }
  hand.Release();
  this->Window.GetTools()->Choose("fill");
  hand.MoveTo(hand.Part(0.14, 0.1));
  hand.Click(Qt::LeftButton, hand.Part(0.14, 0.1));
  this->Window.GetTools()->Leave();
  hand.Click(Qt::LeftButton, hand.Part(0.14, 0.1));
}

bool zvTour::Write(const QString& name)
{
  const QString file = QDir(this->Folder).filePath(name + ".png");
  return this->Window.grab().save(file) || this->Fail(file, "the picture cannot be written");
}

bool zvTour::Fail(const QString& what, const QString& reason)
{
  std::cerr << "zv-workstation: " << what.toStdString() << ": " << reason.toStdString() << "\n";
  return false;
}
