#include "zvTour.h"

#include "zvMainWindow.h"
#include "zvTurnPanel.h"
#include "zvViewHand.h"
#include "zvVolumeView.h"

#include <QDir>
#include <QEventLoop>
#include <QPixmap>
#include <QSlider>
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
    { "oblique", &zvTour::TurnPlanes } };
  for (const Station& station : stations)
  {
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
