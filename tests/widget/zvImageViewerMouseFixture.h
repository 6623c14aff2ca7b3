#ifndef zvImageViewerMouseFixture_h
#define zvImageViewerMouseFixture_h

#include "zvImageViewerFixture.h"

#include "zvAreaWidget.h"
#include "zvLassoWidget.h"
#include "zvRulerWidget.h"
#include "zvTextNoteWidget.h"

#include "vtkCamera.h"
#include "vtkPoints.h"

#include <string>
#include <vector>

/// The states of the base class that a slice view uses.
enum ViewState
{
  StateStart = 0,
  StateCursoring = 1,
  StateWindowLevelling = 2,
  StatePushing = 3,
  StateRotating = 5,
  StateOutside = 8
};

/// A cube of 20 unit voxels, seen along z; the slice lies at z = 19, the cross at (9.5, 9.5).
class ImageViewerMouse : public ImageViewerViewTest
{
protected:
  ImageViewerMouse() { this->Show(this->Cube(20), 2); }

  /// The pixel of a place on the slice, and one on a line and off both.
  zvtest::Display On(double x, double y) const { return this->Mouse.At({ { x, y, 19.0 } }); }
  zvtest::Display OffTheLines() const { return this->On(4.0, 15.0); }
  zvtest::Display OnLine1() const { return this->On(9.5, 15.0); }
  zvtest::Display Beside() const { return { { 3, 3 } }; }

  void Press(const zvtest::Display& at, int modifiers = zvtest::NoModifier)
  {
    this->Mouse.Press(zvtest::Left, at, modifiers);
  }
  void Click(const zvtest::Display& at, int modifiers = zvtest::NoModifier)
  {
    this->Mouse.Press(zvtest::Left, at, modifiers);
    this->Mouse.Release(zvtest::Left, at, modifiers);
  }
  void Watch(zvtest::EventRecorder& events)
  {
    events.Watch(this->Viewer,
      { vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
        vtkCommand::MouseMoveEvent, vtkCommand::WindowLevelEvent, vtkCommand::StartInteractionEvent,
        vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent });
  }
  zvRulerWidget* Ruler() { return this->Viewer->CurrentRulerWidget; }

  /// A ruler across the slice, shown and attached.
  zvRulerWidget* PlaceRuler()
  {
    this->Viewer->AddRulerWidget(nullptr);
    this->Click(this->OffTheLines());
    this->Viewer->EnableRulerWidget();
    zvRulerWidget* ruler = this->Ruler();
    ruler->SetPoint1(3.0, 3.0, 20.0);
    ruler->SetPoint2(15.0, 3.0, 20.0);
    this->Scene.Render();
    return ruler;
  }

  /// A closed area contour with these corners.
  zvAreaWidget* DrawArea(const std::vector<zvtest::World>& corners)
  {
    this->Viewer->AddAreaWidget(nullptr);
    const vtkSmartPointer<zvAreaWidget> area = this->Viewer->CurrentAreaWidget.Get();
    for (const zvtest::World& corner : corners)
    {
      this->Click(this->On(corner[0], corner[1]));
    }
    this->Click(this->On(corners[0][0], corners[0][1]));
    this->Viewer->AddAreaMode = false;
    return area;
  }
};

#endif
