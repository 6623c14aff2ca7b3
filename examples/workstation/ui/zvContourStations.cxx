#include "zvContourStations.h"

#include "zvContourPanel.h"
#include "zvContourTool.h"
#include "zvMainWindow.h"
#include "zvToolSet.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"
#include "zvVolumeView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QEventLoop>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include "vtkImageData.h"

namespace
{
constexpr double RadiusInBrain = 30.0; // millimetres
constexpr double RadiusRoundHead = 122.0;
constexpr int Axial = 2;
constexpr int Endless = 1 << 30;

// Until the contour has ended, or has found so many slices or made so many steps.
void WaitFor(zvMainWindow& window, int slices, int steps)
{
  zvContourTool* tool = window.GetContourTool();
  QEventLoop loop;
  QTimer timer;
  QObject::connect(tool, &zvContourTool::ended, &loop, &QEventLoop::quit);
  QObject::connect(&timer, &QTimer::timeout, &loop,
    [&]
    {
      if (tool->GetKept(Axial).GetCount() >= slices || tool->GetStepCount() >= steps)
      {
        tool->Stop();
        loop.quit();
      }
    });
  timer.start(1);
  window.GetContourPanel()->GetStartButton()->click();
  if (tool->IsRunning())
  {
    loop.exec();
  }
}

void StepAndWait(zvMainWindow& window)
{
  window.GetContourPanel()->GetStepButton()->click();
  while (window.GetContourTool()->IsRunning())
  {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

void PlaceRing(zvMainWindow& window)
{
  window.GetTools()->Choose("contour");
  zvContourPanel* panel = window.GetContourPanel();
  const bool isLoaded = !window.GetView()->GetVolume().File.empty();
  panel->GetExtentBox()->setCurrentIndex(0);
  panel->GetRadiusBox()->setValue(isLoaded ? RadiusInBrain : RadiusRoundHead);
  panel->GetBox("balloon")->setValue(isLoaded ? 1.0 : -1.0);
  zvViewHand hand(window.GetViews()->GetSliceView(Axial));
  std::array<double, 3> middle;
  window.GetView()->GetVolume().Image->GetCenter(middle.data());
  hand.Click(Qt::LeftButton, hand.At(middle));
}

void MoveOnTheWay(zvMainWindow& window)
{
  WaitFor(window, Endless, 45);
}

void MoveToTheEnd(zvMainWindow& window)
{
  WaitFor(window, Endless, Endless);
}

// Where a brain lies in a head. In the last slice a few steps, to be seen on the way.
void GoIntoVolume(zvMainWindow& window)
{
  constexpr double lowest = 0.25, highest = 0.8;
  constexpr int slices = 30, steps = 4;
  zvContourPanel* panel = window.GetContourPanel();
  panel->GetExtentBox()->setCurrentIndex(1);
  const int count = window.GetView()->GetVolume().Image->GetDimensions()[Axial];
  panel->GetFirstBox()->setValue(static_cast<int>(lowest * count));
  panel->GetLastBox()->setValue(static_cast<int>(highest * count));
  WaitFor(window, slices, Endless);
  for (int step = 0; step < steps; ++step)
  {
    StepAndWait(window);
  }
}

void GoThroughVolume(zvMainWindow& window)
{
  WaitFor(window, Endless, Endless);
}

void ShowMask(zvMainWindow& window)
{
  window.GetContourPanel()->GetMaskBox()->setChecked(true);
  window.GetTools()->Leave();
}
}

const std::vector<zvContourStations::Station>& zvContourStations::GetAll()
{
  static const std::vector<Station> stations = { { "contour-before", PlaceRing },
    { "contour-during", MoveOnTheWay }, { "contour-after", MoveToTheEnd },
    { "contour-in-volume", GoIntoVolume }, { "contour-volume", GoThroughVolume },
    { "contour-mask", ShowMask } };
  return stations;
}

void zvContourStations::Tidy(zvMainWindow& window)
{
  zvContourPanel* panel = window.GetContourPanel();
  panel->GetMaskBox()->setChecked(false);
  panel->GetClearButton()->click();
  panel->GetExtentBox()->setCurrentIndex(0);
  panel->ResetParameters();
}
