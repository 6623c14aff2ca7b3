#ifndef zvCurveKinds_h
#define zvCurveKinds_h

#include "zvAreaWidget.h"
#include "zvLassoWidget.h"
#include "zvSplineWidget.h"

#include "zvCurveFixture.h"
#include "zvLassoFixture.h"

/// The tests of what the widgets that draw a curve have in common run on each of these.
namespace zvtest
{
/// What differs between them, by class.
template <class Widget>
struct CurveKind;

template <>
struct CurveKind<zvSplineWidget>
{
  using Opened = Open<zvSplineWidget>;
  static constexpr char Name[] = "zvSplineWidget";
  static constexpr char File[] = "zvSplineWidget";
  static constexpr char EnablingFile[] = "zvSplineWidget";
  static constexpr char IndexError[] = "zvSplineWidget: handle index out of range.";
  static constexpr auto Instantiate = &vtkInstantiatorzvSplineWidgetNew;
  static std::vector<const char*> Ancestors() { return { "zvWidgets" }; }
  static constexpr bool IsDrawnByPresses = true;
  static constexpr bool CanBeLocked = false;
  static constexpr int RendersPerTurnOfTheWheel = 1;
};

/// Most of what it says is said by its base.
template <>
struct CurveKind<zvAreaWidget>
{
  using Opened = Open<zvAreaWidget>;
  static constexpr char Name[] = "zvAreaWidget";
  static constexpr char File[] = "zvSplineWidget";
  static constexpr char EnablingFile[] = "zvAreaWidget";
  static constexpr char IndexError[] = "zvSplineWidget: handle index out of range.";
  static constexpr auto Instantiate = &vtkInstantiatorzvAreaWidgetNew;
  static std::vector<const char*> Ancestors() { return { "zvSplineWidget", "zvWidgets" }; }
  static constexpr bool IsDrawnByPresses = false; // its host adds the handles
  static constexpr bool CanBeLocked = false;
  static constexpr int RendersPerTurnOfTheWheel = 2; // it observes each event twice
};

template <>
struct CurveKind<zvLassoWidget>
{
  using Opened = OpenLasso;
  static constexpr char Name[] = "zvLassoWidget";
  static constexpr char File[] = "zvLassoWidget";
  static constexpr char EnablingFile[] = "zvLassoWidget";
  static constexpr char IndexError[] = "zvLassoWidget: handle index out of range.";
  static constexpr auto Instantiate = &vtkInstantiatorzvLassoWidgetNew;
  static std::vector<const char*> Ancestors() { return {}; }
  static constexpr bool IsDrawnByPresses = true;
  static constexpr bool CanBeLocked = true;
  static constexpr int RendersPerTurnOfTheWheel = 1;
};

template <class Widget>
class CurveWidgetTest : public CurveTest<Widget, typename CurveKind<Widget>::Opened>
{
protected:
  using Kind = CurveKind<Widget>;
  static constexpr char IndexWarning[] = "Spline handle index out of range.";
  static constexpr char PlaneWarning[] = "Set the plane source for oblique projections...";
  static constexpr char InteractorError[] =
    "The interactor must be set prior to enabling/disabling widget";
};

using AllCurves = ::testing::Types<zvSplineWidget, zvAreaWidget, zvLassoWidget>;
using CurvesDrawnByPresses = ::testing::Types<zvSplineWidget, zvLassoWidget>;
}

#endif
