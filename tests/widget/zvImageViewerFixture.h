#ifndef zvImageViewerFixture_h
#define zvImageViewerFixture_h

#include "zvDice.h"
#include "zvImageViewerWidget.h"
#include "zvOpenViewer.h"
#include "zvTestKit.h"

#include "vtkAbstractPropPicker.h"
#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkCollection.h"
#include "vtkCubeSource.h"
#include "vtkCutter.h"
#include "vtkImageData.h"
#include "vtkImageMapToColors.h"
#include "vtkImageReslice.h"
#include "vtkLineSource.h"
#include "vtkLookupTable.h"
#include "vtkMath.h"
#include "vtkMatrix4x4.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPlaneSource.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkTextActor.h"
#include "vtkTexture.h"
#include "vtkTransform.h"

#include <array>
#include <cmath>
#include <string>
#include <vector>

/// Whether three coordinates are those of a point.
inline ::testing::AssertionResult IsPoint(
  const double* actual, const zvtest::World& expected, double tolerance = 1e-9)
{
  if (std::abs(actual[0] - expected[0]) <= tolerance &&
    std::abs(actual[1] - expected[1]) <= tolerance &&
    std::abs(actual[2] - expected[2]) <= tolerance)
  {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure()
    << "the point is (" << actual[0] << ", " << actual[1] << ", " << actual[2]
    << ") and should be (" << expected[0] << ", " << expected[1] << ", " << expected[2] << ")";
}

// Arithmetic of points, enough to write an expectation down.
inline zvtest::World ToWorld(const double* p)
{
  return { { p[0], p[1], p[2] } };
}
inline zvtest::World operator+(const zvtest::World& a, const zvtest::World& b)
{
  return { { a[0] + b[0], a[1] + b[1], a[2] + b[2] } };
}
inline zvtest::World operator-(const zvtest::World& a, const zvtest::World& b)
{
  return { { a[0] - b[0], a[1] - b[1], a[2] - b[2] } };
}
inline zvtest::World operator*(const zvtest::World& a, double factor)
{
  return { { a[0] * factor, a[1] * factor, a[2] * factor } };
}
inline double Dot(const zvtest::World& a, const zvtest::World& b)
{
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline zvtest::World Cross(const zvtest::World& a, const zvtest::World& b)
{
  return { { a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0] } };
}
inline double Length(const zvtest::World& a)
{
  return std::sqrt(Dot(a, a));
}
inline zvtest::World Unit(const zvtest::World& a)
{
  return a * (1.0 / Length(a));
}

/// A point turned by degrees about an axis through a centre (Rodrigues' formula).
inline zvtest::World Turned(const zvtest::World& point, double degrees, const zvtest::World& axis,
  const zvtest::World& center)
{
  const zvtest::World k = Unit(axis);
  const zvtest::World v = point - center;
  const double angle = degrees * std::acos(-1.0) / 180.0;
  return center + v * std::cos(angle) + Cross(k, v) * std::sin(angle) +
    k * (Dot(k, v) * (1.0 - std::cos(angle)));
}

/// A plane by its three points.
struct PlanePoints
{
  zvtest::World Origin;
  zvtest::World Point1;
  zvtest::World Point2;

  zvtest::World Center() const { return (this->Point1 + this->Point2) * 0.5; }
};

inline PlanePoints Turned(
  const PlanePoints& plane, double degrees, const zvtest::World& axis, const zvtest::World& center)
{
  return { Turned(plane.Origin, degrees, axis, center), Turned(plane.Point1, degrees, axis, center),
    Turned(plane.Point2, degrees, axis, center) };
}

/// A line by its two ends.
struct LineEnds
{
  zvtest::World Point1;
  zvtest::World Point2;
};

/// A viewer on a volume, without a view.
class ImageViewerTest : public zvtest::QuietTest
{
protected:
  ImageViewerTest()
    : Viewer(vtkSmartPointer<OpenViewer>::Take(OpenViewer::New()))
  {
  }

  /// A short cube of \a size unit voxels an edge, whose values tell their indices.
  static zvtest::VolumeOptions Cube(int size)
  {
    zvtest::VolumeOptions options;
    options.Dimensions = { { size, size, size } };
    return options;
  }

  void SetVolume(const zvtest::VolumeOptions& options)
  {
    this->Volume = zvtest::MakeIndexVolume(options);
    this->Viewer->SetInput(this->Volume);
  }

  void Place(const zvtest::VolumeOptions& options, int orientation)
  {
    this->SetVolume(options);
    this->Viewer->SetPlaneOrientation(orientation);
  }

  /// Let the plane take effect in the reslice and the lines.
  void Refresh()
  {
    this->Viewer->Modified();
    this->Viewer->UpdatePlane();
  }

  PlanePoints Plane() const
  {
    vtkPlaneSource* plane = this->Viewer->PlaneSource;
    return { ToWorld(plane->GetOrigin()), ToWorld(plane->GetPoint1()),
      ToWorld(plane->GetPoint2()) };
  }

  ::testing::AssertionResult PlaneIs(const PlanePoints& expected, double tolerance = 1e-9) const
  {
    const PlanePoints plane = this->Plane();
    auto result = IsPoint(plane.Origin.data(), expected.Origin, tolerance);
    if (!result)
    {
      return result << " (origin)";
    }
    result = IsPoint(plane.Point1.data(), expected.Point1, tolerance);
    if (!result)
    {
      return result << " (point 1)";
    }
    result = IsPoint(plane.Point2.data(), expected.Point2, tolerance);
    return result ? result : result << " (point 2)";
  }

  vtkLineSource* LineSource(int line) const
  {
    return line == 1 ? this->Viewer->SliceLine1Source : this->Viewer->SliceLine2Source;
  }

  LineEnds Line(int line) const
  {
    vtkLineSource* source = this->LineSource(line);
    return { ToWorld(source->GetPoint1()), ToWorld(source->GetPoint2()) };
  }

  ::testing::AssertionResult LineIs(
    int line, const LineEnds& expected, double tolerance = 1e-9) const
  {
    const LineEnds ends = this->Line(line);
    auto result = IsPoint(ends.Point1.data(), expected.Point1, tolerance);
    if (!result)
    {
      return result << " (point 1 of line " << line << ")";
    }
    result = IsPoint(ends.Point2.data(), expected.Point2, tolerance);
    return result ? result : result << " (point 2 of line " << line << ")";
  }

  ::testing::AssertionResult CenterIs(const zvtest::World& expected, double tolerance = 1e-9) const
  {
    return IsPoint(this->Viewer->RotationCenter, expected, tolerance) << " (rotation centre)";
  }

  ::testing::AssertionResult CrossIndexIs(int first, int second) const
  {
    int index[2] = { -1000, -1000 };
    this->Viewer->GetCrossIndex(index);
    return index[0] == first && index[1] == second ? ::testing::AssertionSuccess()
                                                   : ::testing::AssertionFailure()
        << "the cross is at " << index[0] << ", " << index[1] << " and should be at " << first
        << ", " << second;
  }

  ::testing::AssertionResult MovementIs(int first, int second) const
  {
    int steps[2] = { -1000, -1000 };
    this->Viewer->GetSlicesMovement(steps);
    return steps[0] == first && steps[1] == second ? ::testing::AssertionSuccess()
                                                   : ::testing::AssertionFailure()
        << "the steps are " << steps[0] << ", " << steps[1] << " and should be " << first << ", "
        << second;
  }

  /// Whether both lines cross at the rotation centre and reach from the near edge of the plane to
  /// the far one, line 1 along the plane's second axis and line 2 along its first.
  ::testing::AssertionResult LinesSpanThePlane(double tolerance = 1e-9) const
  {
    const PlanePoints plane = this->Plane();
    const zvtest::World axis1 = plane.Point1 - plane.Origin;
    const zvtest::World axis2 = plane.Point2 - plane.Origin;
    const zvtest::World center = ToWorld(this->Viewer->RotationCenter);
    const double a = Dot(center - plane.Origin, axis1) / Dot(axis1, axis1);
    const double b = Dot(center - plane.Origin, axis2) / Dot(axis2, axis2);
    const auto result =
      this->LineIs(1, { plane.Origin + axis1 * a, plane.Origin + axis1 * a + axis2 }, tolerance);
    if (!result)
    {
      return result;
    }
    return this->LineIs(
      2, { plane.Origin + axis2 * b, plane.Origin + axis2 * b + axis1 }, tolerance);
  }

  vtkSmartPointer<vtkImageData> Volume;
  vtkSmartPointer<OpenViewer> Viewer;
};

/// The same in a view.
class ImageViewerViewTest : public ImageViewerTest
{
protected:
  ~ImageViewerViewTest() override { this->Release(); }

  /// Place the plane, enable the viewer, look along the plane's normal.
  void Show(const zvtest::VolumeOptions& options, int orientation)
  {
    this->Place(options, orientation);
    this->ShowPlaced(orientation);
  }

  /// The same with a volume of the test's own.
  void Show(vtkImageData* volume, int orientation)
  {
    this->Volume = volume;
    this->Viewer->SetInput(volume);
    this->Viewer->SetPlaneOrientation(orientation);
    this->ShowPlaced(orientation);
  }

  void Enable()
  {
    this->Viewer->SetInteractor(this->Scene.Interactor());
    this->Viewer->SetEnabled(1);
  }

  /// From the side that the normal of each orientation points to, with the plane's second axis up.
  void LookAlongNormal(int orientation)
  {
    static const zvtest::World normals[3] = { { { 1, 0, 0 } }, { { 0, 1, 0 } }, { { 0, 0, 1 } } };
    static const zvtest::World ups[3] = { { { 0, 0, 1 } }, { { 1, 0, 0 } }, { { 0, 1, 0 } } };
    this->LookAlong(normals[orientation] * -1.0, ups[orientation]);
  }

  /// The same for a plane however turned.
  void LookAtPlane()
  {
    const PlanePoints plane = this->Plane();
    this->LookAlong(
      ToWorld(this->Viewer->PlaneSource->GetNormal()) * -1.0, plane.Point2 - plane.Origin);
  }

  /// So that every slice of the volume is in sight.
  void LookAlong(const zvtest::World& direction, const zvtest::World& up)
  {
    this->Scene.LookAlong(direction, up);
    if (this->Volume)
    {
      this->Scene.ResetCamera(this->Volume->GetBounds());
    }
  }

  /// Release the viewer before the fixture does.
  void Release() { this->Viewer = nullptr; }

  zvtest::Scene Scene;
  zvtest::Mouse Mouse{ this->Scene };

private:
  void ShowPlaced(int orientation)
  {
    this->Viewer->UpdatePlane();
    this->Enable();
    this->LookAlongNormal(orientation);
    this->Scene.Render();
  }
};

#endif
