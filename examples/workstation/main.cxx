// The example host: a small workstation that shows a volume in three planes.

#include "zvArguments.h"
#include "zvLoadProgress.h"
#include "zvMainWindow.h"
#include "zvTheme.h"
#include "zvTour.h"
#include "zvVolumeReader.h"

#include <QApplication>
#include <QSurfaceFormat>
#include <QTimer>

#include "QVTKOpenGLNativeWidget.h"

#include <cstdlib>
#include <iostream>

namespace
{
constexpr int UsageStatus = 2;

bool IsDisplayThere()
{
  for (const char* name : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" })
  {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0')
    {
      return true;
    }
  }
  return false;
}

// What can still be told without a window: why the volume would be refused.
int FailWithoutDisplay(const zvArguments& arguments)
{
  std::string what = "there is no display";
  if (!arguments.Volume.empty())
  {
    zvLoadProgress progress;
    const zvLoadResult result = zvVolumeReader::Read(arguments.Volume, progress);
    if (result.Ending == zvLoadResult::Outcome::Refused)
    {
      what = arguments.Volume + ": " + result.Reason;
    }
  }
  std::cerr << "zv-workstation: " << what << "\n";
  return EXIT_FAILURE;
}

int ShowWindow(const zvArguments& arguments)
{
  zvMainWindow window;
  if (arguments.QuitAfter >= 0)
  {
    QTimer::singleShot(arguments.QuitAfter, qApp, &QApplication::quit);
  }
  const QString volume = QString::fromStdString(arguments.Volume);
  if (!arguments.ShotsFolder.empty())
  {
    return zvTour(window, QString::fromStdString(arguments.ShotsFolder)).Run(volume);
  }
  window.show();
  if (volume.isEmpty())
  {
    window.OpenExample();
  }
  else
  {
    window.Open(volume);
  }
  return QApplication::exec();
}
}

int main(int argc, char** argv)
{
  const zvArguments arguments = zvArguments::Parse({ argv + 1, argv + argc });
  if (!arguments.Mistake.empty())
  {
    std::cerr << "zv-workstation: " << arguments.Mistake << "\n" << zvArguments::GetUsage();
    return UsageStatus;
  }
  if (arguments.WantsHelp)
  {
    std::cout << zvArguments::GetUsage();
    return EXIT_SUCCESS;
  }
  if (!IsDisplayThere())
  {
    return FailWithoutDisplay(arguments);
  }
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication application(argc, argv);
  zvTheme::Apply(application);
  return ShowWindow(arguments);
}
