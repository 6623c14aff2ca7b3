#ifndef zvImagePlaneFixture_h
#define zvImagePlaneFixture_h

#include "zvImagePlaneWidget.h"
#include "zvPlaneSource.h"
#include "zvTestKit.h"

#include "vtkAbstractPropPicker.h"
#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkCubeSource.h"
#include "vtkCutter.h"
#include "vtkImageData.h"
#include "vtkImageMapToColors.h"
#include "vtkImageReslice.h"
#include "vtkLookupTable.h"
#include "vtkMatrix4x4.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkTextActor.h"
#include "vtkTexture.h"
#include "vtkTransform.h"

#include <cmath>
#include <memory>

/// An image plane that shows its inside, and tells when it is gone.
class OpenImagePlane : public zvImagePlaneWidget
{
public:
  OpenImagePlane() = default;
  ~OpenImagePlane() override
  {
    if (this->Gone)
    {
      *this->Gone = true;
    }
  }
  bool* Gone = nullptr;

  using zvImagePlaneWidget::BoundsCube;
  using zvImagePlaneWidget::Clicked;
  using zvImagePlaneWidget::ColorMap;
  using zvImagePlaneWidget::CurrentCursorPosition;
  using zvImagePlaneWidget::CurrentImageValue;
  using zvImagePlaneWidget::CurrentLevel;
  using zvImagePlaneWidget::CurrentRenderer;
  using zvImagePlaneWidget::CurrentWindow;
  using zvImagePlaneWidget::CursorActor;
  using zvImagePlaneWidget::CursorPolyData;
  using zvImagePlaneWidget::CursorProperty;
  using zvImagePlaneWidget::CutActor;
  using zvImagePlaneWidget::CutPlane;
  using zvImagePlaneWidget::Cutter;
  using zvImagePlaneWidget::Degree;
  using zvImagePlaneWidget::Dimensions;
  using zvImagePlaneWidget::DisplayText;
  using zvImagePlaneWidget::Enabled;
  using zvImagePlaneWidget::EventCallbackCommand;
  using zvImagePlaneWidget::ImageData;
  using zvImagePlaneWidget::InitialLength;
  using zvImagePlaneWidget::InitialLevel;
  using zvImagePlaneWidget::InitialWindow;
  using zvImagePlaneWidget::Interaction;
  using zvImagePlaneWidget::LastButtonPressed;
  using zvImagePlaneWidget::LastPickPosition;
  using zvImagePlaneWidget::LastPointClicked;
  using zvImagePlaneWidget::LeftButtonAction;
  using zvImagePlaneWidget::LeftButtonAutoModifier;
  using zvImagePlaneWidget::LookupTable;
  using zvImagePlaneWidget::MarginActor;
  using zvImagePlaneWidget::MarginPolyData;
  using zvImagePlaneWidget::MarginProperty;
  using zvImagePlaneWidget::MarginSelectMode;
  using zvImagePlaneWidget::MarginSizeX;
  using zvImagePlaneWidget::MarginSizeY;
  using zvImagePlaneWidget::MiddleButtonAction;
  using zvImagePlaneWidget::MiddleButtonAutoModifier;
  using zvImagePlaneWidget::NumberOfSlices;
  using zvImagePlaneWidget::ObliqueSliceIndex;
  using zvImagePlaneWidget::OriginalLevel;
  using zvImagePlaneWidget::OriginalWindow;
  using zvImagePlaneWidget::PlaneOrientation;
  using zvImagePlaneWidget::PlaneOutlineActor;
  using zvImagePlaneWidget::PlaneOutlinePolyData;
  using zvImagePlaneWidget::PlanePicker;
  using zvImagePlaneWidget::PlaneProperty;
  using zvImagePlaneWidget::PlaneSource;
  using zvImagePlaneWidget::PointClicked;
  using zvImagePlaneWidget::RadiusVector;
  using zvImagePlaneWidget::Reslice;
  using zvImagePlaneWidget::ResliceAxes;
  using zvImagePlaneWidget::ResliceInterpolate;
  using zvImagePlaneWidget::RestrictPlaneToVolume;
  using zvImagePlaneWidget::RightButtonAction;
  using zvImagePlaneWidget::RightButtonAutoModifier;
  using zvImagePlaneWidget::RotateAxis;
  using zvImagePlaneWidget::RotationCenter;
  using zvImagePlaneWidget::SelectedPlaneProperty;
  using zvImagePlaneWidget::SliceAxis;
  using zvImagePlaneWidget::StartWindowLevelPositionX;
  using zvImagePlaneWidget::StartWindowLevelPositionY;
  using zvImagePlaneWidget::State;
  using zvImagePlaneWidget::TextActor;
  using zvImagePlaneWidget::TextBuff;
  using zvImagePlaneWidget::Texture;
  using zvImagePlaneWidget::TextureInterpolate;
  using zvImagePlaneWidget::TexturePlaneActor;
  using zvImagePlaneWidget::TexturePlaneProperty;
  using zvImagePlaneWidget::TextureVisibility;
  using zvImagePlaneWidget::Transform;
  using zvImagePlaneWidget::UseContinuousCursor;
  using zvImagePlaneWidget::UserControlledLookupTable;

  using zvImagePlaneWidget::ActivateCursor;
  using zvImagePlaneWidget::ActivateMargins;
  using zvImagePlaneWidget::ActivateText;
  using zvImagePlaneWidget::AddObservers;
  using zvImagePlaneWidget::AdjustState;
  using zvImagePlaneWidget::BuildRepresentation;
  using zvImagePlaneWidget::CreateDefaultLookupTable;
  using zvImagePlaneWidget::HighlightPlane;
  using zvImagePlaneWidget::InvertTable;
  using zvImagePlaneWidget::ManageTextDisplay;
  using zvImagePlaneWidget::OnChar;
  using zvImagePlaneWidget::OnLeftButtonDown;
  using zvImagePlaneWidget::OnLeftButtonUp;
  using zvImagePlaneWidget::OnMiddleButtonDown;
  using zvImagePlaneWidget::OnMiddleButtonUp;
  using zvImagePlaneWidget::OnMouseMove;
  using zvImagePlaneWidget::OnRightButtonDown;
  using zvImagePlaneWidget::OnRightButtonUp;
  using zvImagePlaneWidget::ProcessEvents;
  using zvImagePlaneWidget::Push;
  using zvImagePlaneWidget::Rotate;
  using zvImagePlaneWidget::Scale;
  using zvImagePlaneWidget::Spin;
  using zvImagePlaneWidget::StartCursor;
  using zvImagePlaneWidget::StartSliceMotion;
  using zvImagePlaneWidget::StartWindowLevel;
  using zvImagePlaneWidget::StopCursor;
  using zvImagePlaneWidget::StopSliceMotion;
  using zvImagePlaneWidget::StopWindowLevel;
  using zvImagePlaneWidget::Translate;
  using zvImagePlaneWidget::UpdateContinuousCursor;
  using zvImagePlaneWidget::UpdateCursor;
  using zvImagePlaneWidget::UpdateDiscreteCursor;
  using zvImagePlaneWidget::UpdateMargins;
  using zvImagePlaneWidget::UpdateNumberOfSlices;
  using zvImagePlaneWidget::UpdatePlacement;
  using zvImagePlaneWidget::UpdatePlane;
  using zvImagePlaneWidget::UpdatePointClicked;
  using zvImagePlaneWidget::WindowLevel;
};

/// Releases a widget as a host does.
struct WidgetDeleter
{
  void operator()(vtkObjectBase* widget) const { widget->Delete(); }
};
using ImagePlaneOwner = std::unique_ptr<OpenImagePlane, WidgetDeleter>;

/// Whether three coordinates are those of a point.
inline ::testing::AssertionResult IsPoint(
  const double* actual, double x, double y, double z, double tolerance = 1e-9)
{
  if (std::abs(actual[0] - x) <= tolerance && std::abs(actual[1] - y) <= tolerance &&
    std::abs(actual[2] - z) <= tolerance)
  {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure()
    << "the point is (" << actual[0] << ", " << actual[1] << ", " << actual[2]
    << ") and should be (" << x << ", " << y << ", " << z << ")";
}

/// The grey of an entry of the default table, 0 to 255: the toolkit's ramp is an S, half a cosine.
inline int ShadeOfEntry(int entry)
{
  return static_cast<int>(
    std::lround(255.0 * (0.5 - 0.5 * std::cos(std::acos(-1.0) * entry / 255.0))));
}

/// Whether a pixel is of the grey of an entry of the default table.
inline ::testing::AssertionResult ShowsEntry(const zvtest::Color& color, int entry)
{
  const zvtest::Color wanted = zvtest::Color::Grey(ShadeOfEntry(entry));
  return color.IsNear(wanted, 2)
    ? ::testing::AssertionSuccess()
    : ::testing::AssertionFailure() << "the colour is " << color << " and should be " << wanted;
}

/// A widget on a volume, without a view.
class ImagePlaneTest : public zvtest::QuietTest
{
protected:
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
    this->Widget->SetInput(this->Volume);
  }

  void Place(const zvtest::VolumeOptions& options, int orientation)
  {
    this->SetVolume(options);
    this->Widget->SetPlaneOrientation(orientation);
  }

  /// Let the plane take effect in the reslice.
  void Refresh()
  {
    this->Widget->Modified();
    this->Widget->UpdatePlane();
  }

  ::testing::AssertionResult PlaneIs(
    const zvtest::World& origin, const zvtest::World& point1, const zvtest::World& point2)
  {
    zvPlaneSource* plane = this->Widget->PlaneSource;
    auto result = IsPoint(plane->GetOrigin(), origin[0], origin[1], origin[2]);
    if (!result)
    {
      return result << " (origin)";
    }
    result = IsPoint(plane->GetPoint1(), point1[0], point1[1], point1[2]);
    if (!result)
    {
      return result << " (point 1)";
    }
    result = IsPoint(plane->GetPoint2(), point2[0], point2[1], point2[2]);
    return result ? result : result << " (point 2)";
  }

  vtkSmartPointer<vtkImageData> Volume;
  ImagePlaneOwner Widget{ new OpenImagePlane };
};

/// The same in a view.
class ImagePlaneViewTest : public ImagePlaneTest
{
protected:
  /// Place the plane, enable the widget, and look along \a axis (see Scene::LookAlong).
  void Show(const zvtest::VolumeOptions& options, int orientation, int axis)
  {
    this->Place(options, orientation);
    this->Enable();
    this->Scene.LookAlong(axis);
    this->Scene.Render();
  }

  void Enable()
  {
    this->Widget->SetInteractor(this->Scene.Interactor());
    this->Widget->SetEnabled(1);
  }

  /// Release the widget before the fixture does.
  void Release() { this->Widget.reset(); }

  zvtest::Scene Scene;
  zvtest::Mouse Mouse{ this->Scene };
};

#endif
