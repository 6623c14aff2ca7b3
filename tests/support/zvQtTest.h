#ifndef zvQtTest_h
#define zvQtTest_h

#include "QVTKOpenGLNativeWidget.h"

#include <QApplication>
#include <QSurfaceFormat>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// What a test of Qt views needs around it. Such a test has a main of its own:
///
/// int main(int argc, char** argv)
/// {
///   return zvtest::RunQtTests(argc, argv);
/// }
namespace zvtest
{
/// Run all tests in an application whose windows the toolkit can draw into.
inline int RunQtTests(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication application(argc, argv);
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
}

#endif
