#ifndef zvQtTest_h
#define zvQtTest_h

#include "QVTKOpenGLNativeWidget.h"

#include <QApplication>
#include <QSurfaceFormat>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <link.h>

#include <string>
#include <vector>

/// What a test of Qt views needs around it. Such a test has a main of its own:
///
/// int main(int argc, char** argv)
/// {
///   return zvtest::RunQtTests(argc, argv);
/// }
namespace zvtest
{
/// Keep every shared object that is loaded now until the process ends. The graphics driver is
/// unloaded with the application's connection to the display, and what it had allocated would then
/// look like leaks of nobody, which cannot be told by name.
inline void KeepSharedObjects()
{
  std::vector<std::string> names;
  ::dl_iterate_phdr(
    [](dl_phdr_info* info, std::size_t, void* list)
    {
      static_cast<std::vector<std::string>*>(list)->emplace_back(info->dlpi_name);
      return 0;
    },
    &names);
  for (const std::string& name : names)
  {
    if (!name.empty())
    {
      ::dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    }
  }
}

/// Run all tests in an application whose windows the toolkit can draw into.
inline int RunQtTests(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication application(argc, argv);
  ::testing::InitGoogleMock(&argc, argv);
  const int result = RUN_ALL_TESTS();
  KeepSharedObjects();
  return result;
}
}

#endif
