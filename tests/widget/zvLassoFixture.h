#ifndef zvLassoFixture_h
#define zvLassoFixture_h

#include "zvLassoWidget.h"

#include "zvCurveFixture.h"

#include "vtkSphereSource.h"

namespace zvtest
{
/// The lasso with its protected fields open to a test.
class OpenLasso : public zvLassoWidget
{
public:
  static OpenLasso* New() { return new OpenLasso; }

  using zvLassoWidget::Centroid;
  using zvLassoWidget::ClosedHandleProperty;
  using zvLassoWidget::CreateDefaultProperties;
  using zvLassoWidget::CurrentHandle;
  using zvLassoWidget::CurrentHandleIndex;
  using zvLassoWidget::CurveGrabbed;
  using zvLassoWidget::DebugMode;
  using zvLassoWidget::EventCallbackCommand;
  using zvLassoWidget::Handle;
  using zvLassoWidget::HandleGeometry;
  using zvLassoWidget::HandlePicker;
  using zvLassoWidget::HandleProperty;
  using zvLassoWidget::HandleSize;
  using zvLassoWidget::InitialBounds;
  using zvLassoWidget::InitialLength;
  using zvLassoWidget::LastPickPosition;
  using zvLassoWidget::LineActor;
  using zvLassoWidget::LinePicker;
  using zvLassoWidget::LineProperty;
  using zvLassoWidget::ParametricFunctionSource;
  using zvLassoWidget::PlaceFactor;
  using zvLassoWidget::SelectedHandleProperty;
  using zvLassoWidget::SelectedLineProperty;
  using zvLassoWidget::SizeHandles;
  using zvLassoWidget::ValidPick;
};

class LassoTest : public CurveTest<zvLassoWidget, OpenLasso>
{
protected:
  /// Whether all handles have this property.
  bool AllHandlesHave(vtkProperty* property)
  {
    for (const auto& handle : this->Curve->Handle)
    {
      if (handle->GetProperty() != property)
      {
        return false;
      }
    }
    return true;
  }

  double RadiusOf(int handle) { return this->Curve->HandleGeometry[handle]->GetRadius(); }
};
}

#endif
