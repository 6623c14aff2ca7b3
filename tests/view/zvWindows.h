#ifndef zvWindows_h
#define zvWindows_h

#include "zvMainWindow.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QObject>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace zvtest
{
constexpr int Patience = 60000; // milliseconds, for slow machines and sanitizers

/// Runs the events until something holds; false if it does not in time.
inline bool WaitFor(const std::function<bool()>& holds)
{
  QElapsedTimer timer;
  timer.start();
  while (!holds())
  {
    if (timer.elapsed() > Patience)
    {
      return false;
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    // Without a loop of its own nobody else sees to what is to be deleted later.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

/// A window of its own on the built-in head, for a test that deletes it.
inline std::unique_ptr<zvMainWindow> OpenPhantomWindow(int side)
{
  auto window = std::make_unique<zvMainWindow>();
  window->show();
  bool isShown = false;
  const auto connection =
    QObject::connect(window.get(), &zvMainWindow::shown, [&isShown] { isShown = true; });
  window->OpenPhantom(side);
  EXPECT_TRUE(WaitFor([&isShown] { return isShown; }));
  QObject::disconnect(connection);
  return window;
}
}

#endif
