#ifndef zvOpenViewer_h
#define zvOpenViewer_h

#include "zvImageViewerWidget.h"

/// A viewer that shows its inside.
class OpenViewer : public zvImageViewerWidget
{
public:
  static OpenViewer* New()
  {
    auto* viewer = new OpenViewer;
    viewer->InitializeObjectBase();
    return viewer;
  }

  using zvImageViewerWidget::AddAreaMode;
  using zvImageViewerWidget::AddLassoMode;
  using zvImageViewerWidget::AddRulerMode;
  using zvImageViewerWidget::AddText;
  using zvImageViewerWidget::AreaWidgets;
  using zvImageViewerWidget::AxisColors;
  using zvImageViewerWidget::Bounds;
  using zvImageViewerWidget::BoundsCube;
  using zvImageViewerWidget::BoxCutter;
  using zvImageViewerWidget::BoxOutlineActor;
  using zvImageViewerWidget::ColorMap;
  using zvImageViewerWidget::CrossIndex;
  using zvImageViewerWidget::CurrentAreaWidget;
  using zvImageViewerWidget::CurrentCursorPosition;
  using zvImageViewerWidget::CurrentImageValue;
  using zvImageViewerWidget::CurrentLassoWidget;
  using zvImageViewerWidget::CurrentLevel;
  using zvImageViewerWidget::CurrentRenderer;
  using zvImageViewerWidget::CurrentRulerWidget;
  using zvImageViewerWidget::CurrentTextNoteWidget;
  using zvImageViewerWidget::CurrentWindow;
  using zvImageViewerWidget::CursorActor;
  using zvImageViewerWidget::CutPlane;
  using zvImageViewerWidget::Degree;
  using zvImageViewerWidget::Dimensions;
  using zvImageViewerWidget::Enabled;
  using zvImageViewerWidget::EventCallbackCommand;
  using zvImageViewerWidget::FilledPoints;
  using zvImageViewerWidget::FillMode;
  using zvImageViewerWidget::FillOldValue;
  using zvImageViewerWidget::FillValue;
  using zvImageViewerWidget::FirstAxis;
  using zvImageViewerWidget::ImageData;
  using zvImageViewerWidget::ImageMask;
  using zvImageViewerWidget::ImageResolutionFactor;
  using zvImageViewerWidget::InitialLevel;
  using zvImageViewerWidget::InitialWindow;
  using zvImageViewerWidget::Interaction;
  using zvImageViewerWidget::LassoCount;
  using zvImageViewerWidget::LassoWidgets;
  using zvImageViewerWidget::LastDegree;
  using zvImageViewerWidget::LastPickPosition;
  using zvImageViewerWidget::LastUpdateMTime;
  using zvImageViewerWidget::LeftButtonHeld;
  using zvImageViewerWidget::LineNormal1;
  using zvImageViewerWidget::LineNormal2;
  using zvImageViewerWidget::LookupTable;
  using zvImageViewerWidget::MarginActor;
  using zvImageViewerWidget::MarginPolyData;
  using zvImageViewerWidget::MaskActor;
  using zvImageViewerWidget::MaskColorMap;
  using zvImageViewerWidget::MaskLookupTable;
  using zvImageViewerWidget::MaskReslice;
  using zvImageViewerWidget::MaskTexture;
  using zvImageViewerWidget::ModeResetMarker;
  using zvImageViewerWidget::NumberOfSlices;
  using zvImageViewerWidget::OpacityMask;
  using zvImageViewerWidget::OriginalLevel;
  using zvImageViewerWidget::OriginalWindow;
  using zvImageViewerWidget::PaintMode;
  using zvImageViewerWidget::PickPointBoundMode;
  using zvImageViewerWidget::PickPointModeA;
  using zvImageViewerWidget::PickPointModeB;
  using zvImageViewerWidget::PickPointModeC;
  using zvImageViewerWidget::PickPointModeD;
  using zvImageViewerWidget::PlaneOrientation;
  using zvImageViewerWidget::PlaneOutlineActor;
  using zvImageViewerWidget::PlaneOutlinePolyData;
  using zvImageViewerWidget::PlanePicker;
  using zvImageViewerWidget::PlaneProperty;
  using zvImageViewerWidget::PlaneSource;
  using zvImageViewerWidget::PointClicked;
  using zvImageViewerWidget::QuickApply;
  using zvImageViewerWidget::Reslice;
  using zvImageViewerWidget::ResliceAxes;
  using zvImageViewerWidget::ResliceInterpolate;
  using zvImageViewerWidget::RightButtonAction;
  using zvImageViewerWidget::RotateAxis;
  using zvImageViewerWidget::RotationCenter;
  using zvImageViewerWidget::RulerWidgets;
  using zvImageViewerWidget::SecondAxis;
  using zvImageViewerWidget::SelectedPlaneProperty;
  using zvImageViewerWidget::SliceLine1Actor;
  using zvImageViewerWidget::SliceLine1Mapper;
  using zvImageViewerWidget::SliceLine1Picker;
  using zvImageViewerWidget::SliceLine1Property;
  using zvImageViewerWidget::SliceLine1Source;
  using zvImageViewerWidget::SliceLine2Actor;
  using zvImageViewerWidget::SliceLine2Mapper;
  using zvImageViewerWidget::SliceLine2Picker;
  using zvImageViewerWidget::SliceLine2Property;
  using zvImageViewerWidget::SliceLine2Source;
  using zvImageViewerWidget::SlicesMovement;
  using zvImageViewerWidget::StartWindowLevelPositionX;
  using zvImageViewerWidget::StartWindowLevelPositionY;
  using zvImageViewerWidget::State;
  using zvImageViewerWidget::TextActor;
  using zvImageViewerWidget::TextBuff;
  using zvImageViewerWidget::TextNoteWidgets;
  using zvImageViewerWidget::Texture;
  using zvImageViewerWidget::TexturePlaneActor;
  using zvImageViewerWidget::TexturePlaneProperty;
  using zvImageViewerWidget::TextureVisibility;
  using zvImageViewerWidget::Transform;
  using zvImageViewerWidget::UseContinuousCursor;
  using zvImageViewerWidget::UserControlledLookupTable;
  using zvImageViewerWidget::ViewOrientation;

  using zvImageViewerWidget::StartWindowLevel;
  using zvImageViewerWidget::StopWindowLevel;

protected:
  OpenViewer() = default;
  ~OpenViewer() override = default;
};

#endif
