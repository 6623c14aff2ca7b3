#include "zvImageViewerFixture.h"

#include "vtkImagePlaneWidget.h"
#include "vtkImageShiftScale.h"
#include "vtkObjectFactory.h"
#include "vtkPlaneCollection.h"
#include "vtkPropCollection.h"
#include "vtkTrivialProducer.h"
#include "vtkVersion.h"
#include "vtkWeakPointer.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <type_traits>
#include <utility>

using zvtest::World;

// ---- what a new viewer is ----

using ImageViewerNew = ImageViewerTest;

TEST_F(ImageViewerNew, KnowsItsClass)
{
  auto viewer = vtkSmartPointer<zvImageViewerWidget>::New();
  EXPECT_STREQ(viewer->GetClassName(), "zvImageViewerWidget");
  EXPECT_TRUE(viewer->IsA("vtkImagePlaneWidget"));
  EXPECT_EQ(viewer->GetReferenceCount(), 1);
  auto another = vtkSmartPointer<vtkObjectBase>::Take(viewer->NewInstance());
  EXPECT_STREQ(another->GetClassName(), "zvImageViewerWidget");
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvImageViewerWidgetNew());
  EXPECT_STREQ(made->GetClassName(), "zvImageViewerWidget");
}

namespace
{
class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvImageViewerWidget"; }

private:
  static vtkObject* Make() { return OpenViewer::New(); }
  Factory()
  {
    this->RegisterOverride("zvImageViewerWidget", "OpenViewer", "for the test", 1, &Factory::Make);
  }
};
}

TEST_F(ImageViewerNew, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvImageViewerWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvImageViewerWidget> plain;
  EXPECT_NE(dynamic_cast<OpenViewer*>(replaced.Get()), nullptr);
  EXPECT_EQ(dynamic_cast<OpenViewer*>(plain.Get()), nullptr);
}

TEST_F(ImageViewerNew, HasItsStartValues)
{
  OpenViewer* v = this->Viewer;
  for (const vtkWeakPointerBase* current :
    std::initializer_list<const vtkWeakPointerBase*>{ &v->CurrentRulerWidget, &v->CurrentAreaWidget,
      &v->CurrentLassoWidget, &v->CurrentTextNoteWidget })
  {
    EXPECT_EQ(current->GetPointer(), nullptr);
  }
  for (vtkCollection* tools : { v->RulerWidgets.Get(), v->AreaWidgets.Get(), v->LassoWidgets.Get(),
         v->TextNoteWidgets.Get() })
  {
    EXPECT_EQ(tools->GetNumberOfItems(), 0);
  }
  for (bool flag : { v->AddRulerMode, v->AddAreaMode, v->AddLassoMode, v->AddText, v->QuickApply,
         v->PickPointModeA, v->PickPointModeB, v->PickPointModeC, v->PickPointModeD,
         v->PickPointBoundMode, v->PaintMode, v->FillMode, v->LeftButtonHeld })
  {
    EXPECT_FALSE(flag);
  }
  EXPECT_TRUE(v->ModeResetMarker);
  EXPECT_TRUE(IsPoint(v->RotationCenter, { { 0, 0, 0 } }, 0));
  EXPECT_EQ(v->NumberOfSlices, 0);
  EXPECT_EQ(v->LassoCount, 0);
  EXPECT_TRUE(this->CrossIndexIs(0, 0));
  EXPECT_EQ(v->GetViewOrientation(), 2);
  EXPECT_EQ(v->FirstAxis, 0);
  EXPECT_EQ(v->SecondAxis, 1);
  EXPECT_EQ(v->GetImageResolutionFactor(), 1);
  EXPECT_EQ(v->FillValue, 0);
  EXPECT_EQ(v->FilledPoints->GetNumberOfPoints(), 0);
  EXPECT_EQ(v->FilledPoints->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(v->ImageMask.GetPointer(), nullptr);
  EXPECT_EQ(v->MaskActor.GetPointer(), nullptr);
  EXPECT_EQ(v->OpacityMask, 0.3);
  EXPECT_EQ(v->GetState(), 0);
}

TEST_F(ImageViewerNew, StartsTheFieldsThatASetterFillsWithSomethingHarmless)
{
  OpenViewer* v = this->Viewer;
  EXPECT_TRUE(IsPoint(v->GetPointClicked(), { { 0, 0, 0 } }, 0));
  EXPECT_TRUE(IsPoint(v->LineNormal1, { { 0, 0, 0 } }, 0));
  EXPECT_TRUE(IsPoint(v->LineNormal2, { { 0, 0, 0 } }, 0));
  double degree[3] = { 1, 1, 1 };
  v->GetDegree(degree);
  EXPECT_TRUE(IsPoint(degree, { { 0, 0, 0 } }, 0));
  EXPECT_EQ(v->GetLastDegree(), 0.0);
  EXPECT_TRUE(this->MovementIs(0, 0));
  EXPECT_EQ(v->Dimensions[0], 0);
  EXPECT_EQ(v->Dimensions[1], 0);
  EXPECT_EQ(v->LastUpdateMTime, 0u);
  EXPECT_EQ(v->FillOldValue, 0);
  EXPECT_TRUE(std::all_of(v->Bounds, v->Bounds + 6, [](double b) { return b == 0.0; }));
}

TEST_F(ImageViewerNew, BuildsTwoLinesAndTheirPickers)
{
  OpenViewer* v = this->Viewer;
  struct Row
  {
    vtkLineSource* Source;
    vtkPolyDataMapper* Mapper;
    vtkActor* Actor;
    vtkCellPicker* Picker;
    vtkProperty* Property;
  };
  const Row rows[] = { { v->SliceLine1Source, v->SliceLine1Mapper, v->SliceLine1Actor,
                         v->SliceLine1Picker, v->SliceLine1Property },
    { v->SliceLine2Source, v->SliceLine2Mapper, v->SliceLine2Actor, v->SliceLine2Picker,
      v->SliceLine2Property } };
  for (const Row& row : rows)
  {
    EXPECT_EQ(row.Source->GetResolution(), 1);
    EXPECT_EQ(row.Mapper->GetInputAlgorithm(), row.Source);
    EXPECT_EQ(row.Actor->GetMapper(), row.Mapper);
    EXPECT_EQ(row.Picker->GetTolerance(), 0.005);
    EXPECT_EQ(row.Picker->GetPickFromList(), 1);
    ASSERT_EQ(row.Picker->GetPickList()->GetNumberOfItems(), 1);
    EXPECT_EQ(row.Picker->GetPickList()->GetItemAsObject(0), row.Actor);
    EXPECT_TRUE(IsPoint(row.Property->GetColor(), { { 1, 1, 1 } }, 0));
  }
}

TEST_F(ImageViewerNew, ItsPropertiesAreNotLit)
{
  for (vtkProperty* property : { this->Viewer->GetPlaneProperty(),
         this->Viewer->GetSelectedPlaneProperty(), this->Viewer->GetCursorProperty(),
         this->Viewer->GetMarginProperty(), this->Viewer->GetTexturePlaneProperty() })
  {
    EXPECT_EQ(property->GetAmbient(), 1.0);
    EXPECT_EQ(property->GetDiffuse(), 0.0);
  }
}

TEST_F(ImageViewerNew, ColoursTheAxesRedGreenAndBlue)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    for (int component = 0; component < 3; ++component)
    {
      EXPECT_EQ(this->Viewer->AxisColors[axis][component], axis == component ? 1.0 : 0.0);
    }
  }
}

TEST_F(ImageViewerNew, TwoSettersMarkItModifiedOnlyWhenTheValueChanges)
{
  const auto modifies = [this](const std::function<void()>& change)
  {
    const auto before = this->Viewer->GetMTime();
    change();
    return this->Viewer->GetMTime() != before;
  };
  EXPECT_FALSE(modifies([this] { this->Viewer->SetQuickApply(false); }));
  EXPECT_TRUE(modifies([this] { this->Viewer->SetQuickApply(true); }));
  EXPECT_FALSE(modifies([this] { this->Viewer->SetQuickApply(true); }));
  EXPECT_TRUE(this->Viewer->GetQuickApply());
  EXPECT_FALSE(modifies([this] { this->Viewer->SetImageResolutionFactor(1); }));
  EXPECT_TRUE(modifies([this] { this->Viewer->SetImageResolutionFactor(4); }));
  EXPECT_FALSE(modifies([this] { this->Viewer->SetImageResolutionFactor(4); }));
  EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 4);
}

TEST_F(ImageViewerNew, PlainSettersStoreAndDoNothingElse)
{
  const auto before = this->Viewer->GetMTime();
  OpenViewer* v = this->Viewer;
  struct Row
  {
    void (zvImageViewerWidget::*Set)(bool);
    bool (zvImageViewerWidget::*Get)();
  };
  const std::vector<Row> rows = { { &zvImageViewerWidget::SetAddLassoMode,
                                    &zvImageViewerWidget::GetAddLassoMode },
    { &zvImageViewerWidget::SetPickPointModeA, &zvImageViewerWidget::GetPickPointModeA },
    { &zvImageViewerWidget::SetPickPointModeB, &zvImageViewerWidget::GetPickPointModeB },
    { &zvImageViewerWidget::SetPickPointModeC, &zvImageViewerWidget::GetPickPointModeC },
    { &zvImageViewerWidget::SetPickPointModeD, &zvImageViewerWidget::GetPickPointModeD },
    { &zvImageViewerWidget::SetPickPointBoundMode, &zvImageViewerWidget::GetPickPointBoundMode },
    { &zvImageViewerWidget::SetPaintMode, &zvImageViewerWidget::GetPaintMode },
    { &zvImageViewerWidget::SetFillMode, &zvImageViewerWidget::GetFillMode },
    { &zvImageViewerWidget::SetModeResetMarker, &zvImageViewerWidget::GetModeResetMarker } };
  std::vector<bool> expected;
  for (const Row& row : rows)
  {
    expected.push_back((v->*row.Get)());
  }
  for (std::size_t changed = 0; changed < expected.size(); ++changed)
  {
    expected[changed] = !expected[changed];
    (v->*rows[changed].Set)(expected[changed]);
    std::vector<bool> actual;
    for (const Row& row : rows)
    {
      actual.push_back((v->*row.Get)());
    }
    EXPECT_EQ(actual, expected) << changed;
  }
  v->SetFillValue(7);
  EXPECT_EQ(v->GetFillValue(), 7);
  v->SetNumberOfSlices(12);
  EXPECT_EQ(v->GetNumberOfSlices(), 12);
  double center[3] = { 1, 2, 3 };
  v->SetRotationCenter(center);
  double read[3];
  v->GetRotationCenter(read);
  EXPECT_TRUE(IsPoint(read, { { 1, 2, 3 } }, 0));
  v->RotateAxis[0] = 4;
  v->RotateAxis[1] = 5;
  v->RotateAxis[2] = 6;
  v->GetRotateAxis(read);
  EXPECT_TRUE(IsPoint(read, { { 4, 5, 6 } }, 0));
  EXPECT_EQ(v->GetMTime(), before);
}

TEST_F(ImageViewerNew, SixOperationsHideThoseOfTheStockWidget)
{
  using Widget = zvImageViewerWidget;
  static_assert(
    std::is_same_v<decltype(&Widget::SetPlaneOrientation), void (Widget::*)(int)>, "hides");
  static_assert(std::is_same_v<decltype(&Widget::UpdatePlane), void (Widget::*)()>, "hides");
  static_assert(
    std::is_same_v<decltype(&Widget::UpdateCursor), void (Widget::*)(int, int)>, "hides");
  static_assert(std::is_same_v<decltype(&Widget::GetSliceIndex), int (Widget::*)()>, "hides");
  static_assert(std::is_same_v<decltype(&Widget::SetSliceIndex), void (Widget::*)(int)>, "hides");
  static_assert(std::is_same_v<decltype(static_cast<void (Widget::*)(double, double*, double*)>(
                                 &Widget::Rotate)),
                  void (Widget::*)(double, double*, double*)>,
    "hides");

  // Through the base, the stock operation runs: it places the plane at the near side, and the
  // viewer's own fields stay.
  this->Place(zvtest::UnequalVolume(), 2);
  vtkImagePlaneWidget* base = this->Viewer;
  base->SetPlaneOrientation(0);
  EXPECT_EQ(this->Viewer->PlaneOrientation, 0);
  EXPECT_EQ(this->Viewer->ViewOrientation, 2);
  EXPECT_EQ(this->Viewer->FirstAxis, 0);
  EXPECT_LT(this->Viewer->PlaneSource->GetOrigin()[0], -1.5);
  EXPECT_TRUE(this->CrossIndexIs(3, 2));
}

TEST_F(ImageViewerNew, MakesEverythingWithoutAnImageHarmless)
{
  OpenViewer* v = this->Viewer;
  double axis[3] = { 0, 0, 1 };
  double center[3] = { 1, 2, 3 };
  int steps[2] = { 1, 1 };
  v->UpdatePlane();
  v->UpdatePlacement();
  v->Rotate(30.0, axis, center);
  v->Rotate(1, 1, axis, center, axis);
  EXPECT_EQ(v->GetSliceIndex(), 0);
  v->SetSliceIndex(3);
  v->PushCross(2);
  v->SetDimensions(4, 4);
  v->UpdateCursor(5, 5);
  v->AdjustCross(5, 5);
  v->SetSliceCross(1, 1);
  v->SetCrossIndex(steps);
  v->SetCrossResolution(steps);
  v->SetLinesEnabled(0);
  v->SetLinesEnabled(1);
  v->floodFill(0, 0, 1);
  v->UndoFill();
  v->SetOpacityMask(0.5);
  v->SetEnableImageMask(1);
  v->SetImageMask(nullptr);
  EXPECT_EQ(v->ImageData, nullptr);
  EXPECT_EQ(v->FilledPoints->GetNumberOfPoints(), 0);
  for (double c : { this->Plane().Origin[0], this->Plane().Point1[0], this->Plane().Point2[1] })
  {
    EXPECT_TRUE(std::isfinite(c));
  }
}

// ---- input ----

using ImageViewerInput = ImageViewerTest;

TEST_F(ImageViewerInput, GivesWindowAndLevelOfTheScalarRange)
{
  this->SetVolume(this->Cube(5)); // 0 .. 4 + 30 * 4 + 900 * 4
  EXPECT_EQ(this->Viewer->OriginalWindow, 3724.0);
  EXPECT_EQ(this->Viewer->OriginalLevel, 1862.0);
  EXPECT_EQ(this->Viewer->GetWindow(), 3724.0);
  EXPECT_EQ(this->Viewer->GetLevel(), 1862.0);
  EXPECT_EQ(this->Viewer->LookupTable->GetTableRange()[0], 0.0);
  EXPECT_EQ(this->Viewer->LookupTable->GetTableRange()[1], 3724.0);
}

TEST_F(ImageViewerInput, KeepsTinyWindowsAndLevelsFromZero)
{
  const double tiny = 0.001;
  struct Row
  {
    double Value;
    double Level;
  };
  for (const Row& row : { Row{ 0.0, tiny }, Row{ -0.0002, -tiny }, Row{ 0.0002, tiny },
         Row{ -5.0, -5.0 }, Row{ 0.001953125, 0.001953125 } })
  {
    zvtest::VolumeOptions options;
    options.ScalarType = VTK_DOUBLE;
    this->Viewer->SetInput(zvtest::MakeConstantVolume(row.Value, options));
    EXPECT_EQ(this->Viewer->OriginalWindow, tiny);
    EXPECT_EQ(this->Viewer->OriginalLevel, row.Level);
    EXPECT_EQ(this->Viewer->CurrentWindow, tiny);
    EXPECT_EQ(this->Viewer->CurrentLevel, row.Level);
  }
}

TEST_F(ImageViewerInput, LeavesATableOfTheUserAlone)
{
  this->Viewer->UserControlledLookupTableOn();
  this->Viewer->LookupTable->SetTableRange(3.0, 8.0);
  this->SetVolume(this->Cube(5));
  EXPECT_EQ(this->Viewer->LookupTable->GetTableRange()[0], 3.0);
  EXPECT_EQ(this->Viewer->LookupTable->GetTableRange()[1], 8.0);
  EXPECT_EQ(this->Viewer->OriginalWindow, 3724.0);
}

TEST_F(ImageViewerInput, AppliesBothInterpolations)
{
  this->Viewer->SetResliceInterpolate(VTK_NEAREST_RESLICE);
  this->Viewer->Reslice->SetInterpolationModeToCubic();
  this->Viewer->TextureInterpolateOff();
  this->Viewer->Texture->SetInterpolate(1);
  this->SetVolume(this->Cube(5));
  EXPECT_EQ(this->Viewer->GetResliceInterpolate(), VTK_NEAREST_RESLICE);
  EXPECT_EQ(this->Viewer->Reslice->GetInterpolationMode(), VTK_RESLICE_NEAREST);
  EXPECT_EQ(this->Viewer->Texture->GetInterpolate(), 0);
}

TEST_F(ImageViewerInput, DrivesResliceColoursAndTexture)
{
  this->SetVolume(this->Cube(5));
  OpenViewer* v = this->Viewer;
  EXPECT_EQ(v->ImageData, this->Volume);
  EXPECT_EQ(v->GetInput(), this->Volume);
  EXPECT_EQ(v->Reslice->GetInput(), this->Volume);
  EXPECT_EQ(v->ColorMap->GetInputAlgorithm(), v->Reslice);
  EXPECT_EQ(v->Texture->GetInputAlgorithm(), v->ColorMap);
  EXPECT_EQ(v->TexturePlaneActor->GetTexture(), v->Texture);
  EXPECT_EQ(v->GetResliceOutput(), v->Reslice->GetOutput());
}

TEST_F(ImageViewerInput, TakesTheBoundsOfTheImage)
{
  this->SetVolume(zvtest::ShiftedExtentVolume());
  const double* bounds = this->Volume->GetBounds();
  EXPECT_TRUE(std::equal(bounds, bounds + 6, this->Viewer->Bounds));
  double cube[6];
  this->Viewer->BoundsCube->Update();
  this->Viewer->BoundsCube->GetOutput()->GetBounds(cube);
  for (int i = 0; i < 6; ++i)
  {
    EXPECT_NEAR(cube[i], bounds[i], 1e-12);
  }
  EXPECT_EQ(this->Viewer->BoxCutter->GetInputAlgorithm(), this->Viewer->BoundsCube.Get());
  EXPECT_EQ(this->Viewer->BoxCutter->GetCutFunction(), this->Viewer->CutPlane.Get());
  EXPECT_EQ(
    this->Viewer->BoxOutlineActor->GetMapper()->GetInputAlgorithm(), this->Viewer->BoxCutter.Get());
}

TEST_F(ImageViewerInput, ClipsPlaneAndLinesAtTheBox)
{
  this->SetVolume(zvtest::ShiftedExtentVolume());
  const double* bounds = this->Volume->GetBounds();
  const double slack = 2e-6 * this->Volume->GetLength();
  for (vtkActor* actor : { this->Viewer->TexturePlaneActor, this->Viewer->SliceLine1Actor.Get(),
         this->Viewer->SliceLine2Actor.Get() })
  {
    vtkPlaneCollection* planes = actor->GetMapper()->GetClippingPlanes();
    ASSERT_NE(planes, nullptr);
    ASSERT_EQ(planes->GetNumberOfItems(), 6);
    for (int i = 0; i < 6; ++i)
    {
      vtkPlane* plane = planes->GetItem(i);
      World normal{ { 0, 0, 0 } };
      normal[i / 2] = i % 2 ? -1.0 : 1.0;
      EXPECT_TRUE(IsPoint(plane->GetNormal(), normal)) << i;
      // At the box or, for the sake of what lies exactly on it, a little outside.
      const double outside = (bounds[i] - plane->GetOrigin()[i / 2]) * normal[i / 2];
      EXPECT_GE(outside, -1e-9) << i;
      EXPECT_LE(outside, slack) << i;
    }
  }
}

TEST_F(ImageViewerInput, DoesNotPlaceThePlane)
{
  this->Place(zvtest::UnequalVolume(), 0);
  const PlanePoints before = this->Plane();
  this->SetVolume(zvtest::ShiftedExtentVolume());
  EXPECT_TRUE(this->PlaneIs(before, 0));
  EXPECT_EQ(this->Viewer->NumberOfSlices, 8);
}

TEST_F(ImageViewerInput, NeedsNoOwner)
{
  this->SetVolume(this->Cube(5));
  vtkWeakPointer<vtkImageData> image = this->Volume.GetPointer();
  this->Volume = nullptr;
  this->Viewer->SetPlaneOrientation(2);
  this->Refresh();
  EXPECT_NE(image.GetPointer(), nullptr) << "the image is kept while it is the input";
  this->Viewer->SetInput(nullptr);
  EXPECT_EQ(image.GetPointer(), nullptr);
}

TEST_F(ImageViewerInput, LeavesTheImageToItsOwner)
{
  this->SetVolume(this->Cube(5));
  this->Refresh();
  this->Viewer = nullptr;
  EXPECT_EQ(this->Volume->GetReferenceCount(), 1);
}

TEST_F(ImageViewerInput, NullDetaches)
{
  for (bool byPort : { false, true })
  {
    this->Place(this->Cube(5), 2);
    this->Refresh();
    if (byPort)
    {
      this->Viewer->SetInputConnection(nullptr);
    }
    else
    {
      this->Viewer->SetInput(nullptr);
    }
    EXPECT_EQ(this->Viewer->ImageData, nullptr);
    EXPECT_EQ(this->Viewer->Reslice->GetInput(), nullptr);
    this->Refresh();
    EXPECT_EQ(this->Viewer->GetSliceIndex(), 0);
    EXPECT_EQ(this->Volume->GetReferenceCount(), 1);
  }
}

TEST_F(ImageViewerInput, WhatIsNoImageDetaches)
{
  this->Place(this->Cube(5), 2);
  vtkNew<vtkPolyData> mesh;
  this->Viewer->SetInput(mesh);
  EXPECT_EQ(this->Viewer->ImageData, nullptr);
  EXPECT_EQ(this->Viewer->Reslice->GetInput(), nullptr);
  this->Place(this->Cube(5), 2);
  vtkNew<vtkCubeSource> source;
  this->Viewer->SetInputConnection(source->GetOutputPort());
  EXPECT_EQ(this->Viewer->ImageData, nullptr);
  EXPECT_EQ(this->Viewer->Reslice->GetInput(), nullptr);
}

TEST_F(ImageViewerInput, AFilterIsBroughtUpToDateAndDrivesTheSlice)
{
  auto volume = zvtest::MakeIndexVolume(this->Cube(5));
  vtkNew<vtkImageShiftScale> filter;
  filter->SetInputData(volume);
  filter->SetShift(100.0);
  this->Viewer->SetInputConnection(filter->GetOutputPort());
  EXPECT_EQ(this->Viewer->ImageData, filter->GetOutput());
  EXPECT_EQ(this->Viewer->OriginalLevel, 1962.0);
  EXPECT_EQ(this->Viewer->Reslice->GetInputAlgorithm(), filter);
  this->Viewer->SetPlaneOrientation(2);
  this->Refresh();
  this->Viewer->Reslice->Update();
  // The plane is at the far side: slice 4, voxel (0, 0).
  EXPECT_EQ(
    this->Viewer->Reslice->GetOutput()->GetScalarComponentAsDouble(0, 0, 0, 0), 3600.0 + 100.0);
  filter->SetShift(200.0);
  this->Refresh();
  this->Viewer->Reslice->Update();
  EXPECT_EQ(
    this->Viewer->Reslice->GetOutput()->GetScalarComponentAsDouble(0, 0, 0, 0), 3600.0 + 200.0);
}

TEST_F(ImageViewerInput, AnotherImageReplacesTheFirst)
{
  this->Place(this->Cube(5), 2);
  this->Refresh();
  auto first = this->Volume;
  this->Place(zvtest::UnequalVolume(), 1);
  this->Refresh();
  EXPECT_EQ(first->GetReferenceCount(), 1);
  EXPECT_EQ(this->Viewer->Reslice->GetInput(), this->Volume);
  EXPECT_EQ(this->Viewer->Bounds[4], 10.0);
}

namespace
{
const char* const TurnedImageText =
  "The image's direction matrix is not the identity, so the image is not shown. Reorient it first: "
  "permute and flip its axes exactly, or resample it.";
}

TEST_F(ImageViewerInput, ATurnedImageIsRefusedWithAnError)
{
  this->Place(this->Cube(5), 2);
  this->SetVolume(zvtest::TurnedVolume());
  this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, TurnedImageText);
  EXPECT_EQ(this->Viewer->ImageData, nullptr);
  EXPECT_EQ(this->Viewer->Reslice->GetInput(), nullptr);
  EXPECT_EQ(this->Volume->GetReferenceCount(), 1);
}

TEST_F(ImageViewerInput, ATurnedImageOfAFilterIsRefusedWithAnError)
{
  auto volume = zvtest::MakeIndexVolume(zvtest::TurnedVolume());
  vtkNew<vtkTrivialProducer> filter;
  filter->SetOutput(volume);
  this->Viewer->SetInputConnection(filter->GetOutputPort());
  this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, TurnedImageText);
  EXPECT_EQ(this->Viewer->ImageData, nullptr);
}

TEST_F(ImageViewerInput, AnImageTurnedAfterwardsIsRefusedAtTheNextUpdate)
{
  this->Place(this->Cube(5), 2);
  this->Refresh();
  this->Volume->SetDirectionMatrix(0, -1, 0, 1, 0, 0, 0, 0, 1);
  this->Refresh();
  this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, TurnedImageText);
  EXPECT_EQ(this->Viewer->ImageData, nullptr);
  EXPECT_EQ(this->Viewer->TexturePlaneActor->GetVisibility(), 0);
}

TEST_F(ImageViewerInput, TheStockPlacementOfItIsHarmless)
{
  double bounds[6] = { 0, 4, 0, 4, 0, 4 };
  this->Viewer->PlaceWidget(bounds);
  this->Place(this->Cube(5), 1);
  this->Viewer->PlaceWidget(bounds);
  this->Viewer->PlaceWidget();
  this->Refresh();
  EXPECT_EQ(this->Viewer->LastUpdateMTime, this->Viewer->GetMTime());
}

// ---- orientation ----

namespace
{
// What an orientation asks of a volume, written down row by row.
struct Placement
{
  int Slices;
  PlanePoints Plane;
  LineEnds Line1;
  LineEnds Line2;
  int Steps[2];
  World Normal1;
  World Normal2;
  World CutNormal;
  int FirstAxis;
  int SecondAxis;
};

Placement PlacementOf(int i, vtkImageData* volume)
{
  const int* e = volume->GetExtent();
  World low;
  World high;
  for (int a = 0; a < 3; ++a)
  {
    const double first = volume->GetOrigin()[a] + volume->GetSpacing()[a] * e[2 * a];
    const double last = volume->GetOrigin()[a] + volume->GetSpacing()[a] * e[2 * a + 1];
    low[a] = std::min(first, last);
    high[a] = std::max(first, last);
  }
  const double xl = low[0], yl = low[1], zl = low[2];
  const double xh = high[0], yh = high[1], zh = high[2];
  const double xm = (xl + xh) / 2, ym = (yl + yh) / 2, zm = (zl + zh) / 2;
  const double* B = volume->GetBounds();
  const int x = e[1] - e[0], y = e[3] - e[2], z = e[5] - e[4];
  const World X{ { 1, 0, 0 } }, Y{ { 0, 1, 0 } }, Z{ { 0, 0, 1 } };
  switch (i)
  {
    case 2:
      return { z + 1, { { { xl, yl, B[5] } }, { { xh, yl, B[5] } }, { { xl, yh, B[5] } } },
        { { { xm, yl, B[5] } }, { { xm, yh, B[5] } } },
        { { { xl, ym, B[5] } }, { { xh, ym, B[5] } } }, { x, y }, X, Y, Z, 0, 1 };
    case 0:
      return { x + 1, { { { B[1], yl, zl } }, { { B[1], yh, zl } }, { { B[1], yl, zh } } },
        { { { B[1], ym, zl } }, { { B[1], ym, zh } } },
        { { { B[1], yl, zm } }, { { B[1], yh, zm } } }, { y, z }, Y, Z, X, 1, 2 };
    default:
      return { y + 1, { { { xl, B[3], zl } }, { { xl, B[3], zh } }, { { xh, B[3], zl } } },
        { { { xl, B[3], zm } }, { { xh, B[3], zm } } },
        { { { xm, B[3], zl } }, { { xm, B[3], zh } } }, { z, x }, Z, X, Y, 2, 0 };
  }
}

// Volumes with something particular about each axis.
std::vector<zvtest::VolumeOptions> ParticularVolumes()
{
  zvtest::VolumeOptions shiftedAndNegative = zvtest::ShiftedExtentVolume();
  shiftedAndNegative.Spacing = { { -0.5, 1.25, -3.0 } };
  return { zvtest::UnequalVolume(), zvtest::NegativeSpacingVolume({ 0 }),
    zvtest::NegativeSpacingVolume({ 1 }), zvtest::NegativeSpacingVolume({ 2 }),
    zvtest::NegativeSpacingVolume({ 0, 1, 2 }), zvtest::ShiftedExtentVolume(), shiftedAndNegative };
}
}

class ImageViewerOrientation : public ImageViewerTest
{
};

TEST_F(ImageViewerOrientation, PlacesPlaneLinesAndCutAtTheFarBound)
{
  int number = 0;
  for (const zvtest::VolumeOptions& options : ParticularVolumes())
  {
    for (int i : { 2, 0, 1, 3, -1, 7 })
    {
      SCOPED_TRACE(testing::Message() << "volume " << number << ", orientation " << i);
      this->Place(options, i);
      const Placement expected = PlacementOf(i, this->Volume);
      OpenViewer* v = this->Viewer;
      EXPECT_EQ(v->GetPlaneOrientation(), i);
      EXPECT_EQ(v->GetViewOrientation(), i);
      EXPECT_EQ(v->GetNumberOfSlices(), expected.Slices);
      EXPECT_TRUE(this->PlaneIs(expected.Plane));
      EXPECT_TRUE(this->LineIs(1, expected.Line1));
      EXPECT_TRUE(this->LineIs(2, expected.Line2));
      EXPECT_EQ(v->Dimensions[0], expected.Steps[0]);
      EXPECT_EQ(v->Dimensions[1], expected.Steps[1]);
      EXPECT_TRUE(IsPoint(v->LineNormal1, expected.Normal1, 0));
      EXPECT_TRUE(IsPoint(v->LineNormal2, expected.Normal2, 0));
      EXPECT_TRUE(IsPoint(v->CutPlane->GetNormal(), expected.CutNormal, 0));
      EXPECT_TRUE(IsPoint(v->CutPlane->GetOrigin(), ToWorld(this->Volume->GetCenter())));
      EXPECT_EQ(v->SliceLine1Source->GetResolution(), expected.Steps[0]);
      EXPECT_EQ(v->SliceLine2Source->GetResolution(), expected.Steps[1]);
      EXPECT_TRUE(this->CenterIs(expected.Plane.Center()));
      EXPECT_TRUE(this->CrossIndexIs(expected.Steps[0] / 2, expected.Steps[1] / 2));
      EXPECT_EQ(v->FirstAxis, expected.FirstAxis);
      EXPECT_EQ(v->SecondAxis, expected.SecondAxis);
      EXPECT_TRUE(
        IsPoint(v->SliceLine1Property->GetColor(), ToWorld(v->AxisColors[expected.FirstAxis]), 0));
      EXPECT_TRUE(
        IsPoint(v->SliceLine2Property->GetColor(), ToWorld(v->AxisColors[expected.SecondAxis]), 0));
      EXPECT_TRUE(this->MovementIs(0, 0));
      EXPECT_EQ(vtkCellPicker::SafeDownCast(v->PlanePicker)->GetTolerance(), 0.001);
    }
    ++number;
  }
}

TEST_F(ImageViewerOrientation, ColoursTheLinesByTheAxisThatTheyMark)
{
  const World red{ { 1, 0, 0 } }, green{ { 0, 1, 0 } }, blue{ { 0, 0, 1 } };
  struct Row
  {
    int Orientation;
    World Line1;
    World Line2;
  };
  this->SetVolume(zvtest::UnequalVolume());
  for (const Row& row : { Row{ 2, red, green }, Row{ 0, green, blue }, Row{ 1, blue, red } })
  {
    this->Viewer->SetPlaneOrientation(row.Orientation);
    EXPECT_TRUE(IsPoint(this->Viewer->SliceLine1Property->GetColor(), row.Line1, 0));
    EXPECT_TRUE(IsPoint(this->Viewer->SliceLine2Property->GetColor(), row.Line2, 0));
  }
}

TEST_F(ImageViewerOrientation, ForgetsTheLastStepsOfTheCross)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->SlicesMovement[0] = 3;
  this->Viewer->SlicesMovement[1] = -2;
  this->Viewer->SetPlaneOrientation(1);
  EXPECT_TRUE(this->MovementIs(0, 0));
}

TEST_F(ImageViewerOrientation, WithoutAnImageIsStoredAndIsAnError)
{
  this->Viewer->SetPlaneOrientation(1);
  this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer,
    "SetInput() before setting plane orientation.");
  EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 1);
  EXPECT_EQ(this->Viewer->GetViewOrientation(), 1);
  EXPECT_EQ(this->Viewer->ImageData, nullptr);
  EXPECT_EQ(this->Viewer->NumberOfSlices, 0);
  EXPECT_EQ(this->Viewer->FirstAxis, 0) << "the axes are those of the last placement";
}

TEST_F(ImageViewerOrientation, ShowsNothingNewUntilAnUpdate)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Refresh();
  vtkNew<vtkMatrix4x4> before;
  before->DeepCopy(this->Viewer->Reslice->GetResliceAxes());
  const auto updated = this->Viewer->LastUpdateMTime;
  const auto modified = this->Viewer->GetMTime();
  this->Viewer->SetPlaneOrientation(0);
  EXPECT_EQ(this->Viewer->LastUpdateMTime, updated);
  EXPECT_GT(this->Viewer->GetMTime(), modified);
  EXPECT_TRUE(std::equal(
    before->GetData(), before->GetData() + 16, this->Viewer->Reslice->GetResliceAxes()->GetData()));
  this->Viewer->UpdatePlane();
  EXPECT_FALSE(std::equal(
    before->GetData(), before->GetData() + 16, this->Viewer->Reslice->GetResliceAxes()->GetData()));
}

// ---- update of the plane ----

class ImageViewerUpdate : public ImageViewerTest
{
protected:
  void SetPlane(const PlanePoints& plane)
  {
    this->Viewer->PlaneSource->SetOrigin(plane.Origin[0], plane.Origin[1], plane.Origin[2]);
    this->Viewer->PlaneSource->SetPoint1(plane.Point1[0], plane.Point1[1], plane.Point1[2]);
    this->Viewer->PlaneSource->SetPoint2(plane.Point2[0], plane.Point2[1], plane.Point2[2]);
    this->Viewer->PlaneSource->Update();
  }

  // The reslice's axes are those of the plane: unit vectors as columns, then the origin.
  ::testing::AssertionResult ResliceIsAlongThePlane()
  {
    const PlanePoints plane = this->Plane();
    const World axis1 = Unit(plane.Point1 - plane.Origin);
    const World axis2 = Unit(plane.Point2 - plane.Origin);
    const World columns[4] = { axis1, axis2, Cross(axis1, axis2), plane.Origin };
    vtkMatrix4x4* axes = this->Viewer->Reslice->GetResliceAxes();
    for (int c = 0; c < 4; ++c)
    {
      const double column[3] = { axes->GetElement(0, c), axes->GetElement(1, c),
        axes->GetElement(2, c) };
      const auto result = IsPoint(column, columns[c], 1e-9);
      if (!result || axes->GetElement(3, c) != (c == 3 ? 1.0 : 0.0))
      {
        return ::testing::AssertionFailure() << result.message() << " (column " << c << ")";
      }
    }
    return ::testing::AssertionSuccess();
  }

  ::testing::AssertionResult OutputIs(int columns, int rows, double spacingX, double spacingY)
  {
    const int* extent = this->Viewer->Reslice->GetOutputExtent();
    const double* spacing = this->Viewer->Reslice->GetOutputSpacing();
    const double* origin = this->Viewer->Reslice->GetOutputOrigin();
    if (extent[0] != 0 || extent[1] != columns - 1 || extent[2] != 0 || extent[3] != rows - 1 ||
      extent[4] != 0 || extent[5] != 0)
    {
      return ::testing::AssertionFailure()
        << "the output is " << extent[1] - extent[0] + 1 << " by " << extent[3] - extent[2] + 1
        << " and should be " << columns << " by " << rows;
    }
    if (origin[0] != 0.0 || origin[1] != 0.0 || origin[2] != 0.0)
    {
      return ::testing::AssertionFailure() << "the output's origin is shifted";
    }
    return IsPoint(spacing, { { spacingX, spacingY, 1.0 } }, 1e-12);
  }
};

TEST_F(ImageViewerUpdate, CostsNothingUntilTheWidgetIsModified)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Viewer->UpdatePlane();
  EXPECT_EQ(this->Viewer->LastUpdateMTime, this->Viewer->GetMTime());
  this->Viewer->PlaneSource->Push(-3.0);
  const auto axesTime = this->Viewer->Reslice->GetMTime();
  this->Viewer->UpdatePlane();
  EXPECT_EQ(this->Viewer->Reslice->GetMTime(), axesTime);
  EXPECT_EQ(this->Viewer->Reslice->GetResliceAxes()->GetElement(2, 3), 19.0);
  this->Viewer->Modified();
  this->Viewer->UpdatePlane();
  EXPECT_EQ(this->Viewer->Reslice->GetResliceAxes()->GetElement(2, 3), 16.0);
  EXPECT_EQ(this->Viewer->LastUpdateMTime, this->Viewer->GetMTime());
}

TEST_F(ImageViewerUpdate, SamplesAlongThePlaneInEveryOrientation)
{
  for (const zvtest::VolumeOptions& options : ParticularVolumes())
  {
    for (int orientation : { 0, 1, 2 })
    {
      this->Place(options, orientation);
      this->Viewer->UpdatePlane();
      EXPECT_TRUE(this->ResliceIsAlongThePlane()) << orientation;
    }
  }
}

TEST_F(ImageViewerUpdate, PadsTheOutputToPowersOfTwo)
{
  this->SetVolume(zvtest::UnequalVolume()); // 7 steps of 0.5, 5 of 1.25, 3 of 3
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->UpdatePlane();
  EXPECT_TRUE(this->OutputIs(8, 8, 3.5 / 8, 6.25 / 8));
  this->Viewer->SetPlaneOrientation(0);
  this->Viewer->UpdatePlane();
  EXPECT_TRUE(this->OutputIs(8, 4, 6.25 / 8, 9.0 / 4));
  this->Viewer->SetPlaneOrientation(1);
  this->Viewer->UpdatePlane();
  EXPECT_TRUE(this->OutputIs(4, 8, 9.0 / 4, 3.5 / 8));
}

TEST_F(ImageViewerUpdate, DoesNotRoundAnExactPowerOfTwoUp)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->UpdatePlane();
  EXPECT_TRUE(this->OutputIs(4, 4, 1.0, 1.0));
  this->Place(this->Cube(2), 2);
  this->Viewer->UpdatePlane();
  EXPECT_TRUE(this->OutputIs(1, 1, 1.0, 1.0));
}

TEST_F(ImageViewerUpdate, DividesTheOutputByTheResolutionFactor)
{
  zvtest::VolumeOptions options;
  options.Dimensions = { { 513, 17, 2 } };
  this->Volume = zvtest::MakeConstantVolume(1.0, options);
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->UpdatePlane();
  EXPECT_TRUE(this->OutputIs(512, 16, 1.0, 1.0));
  this->Viewer->SetImageResolutionFactor(4);
  this->Viewer->UpdatePlane();
  EXPECT_TRUE(this->OutputIs(128, 4, 4.0, 4.0));
  this->Viewer->SetImageResolutionFactor(32); // 16 / 32 samples are none
  this->Viewer->UpdatePlane();
  EXPECT_TRUE(this->OutputIs(16, 0, 32.0, 32.0));
}

TEST_F(ImageViewerUpdate, ANonsenseResolutionFactorIsHarmless)
{
  this->Place(this->Cube(5), 2);
  for (int factor : { 0, -1, std::numeric_limits<int>::min() })
  {
    this->Viewer->SetImageResolutionFactor(factor);
    this->Refresh();
    EXPECT_EQ(this->Viewer->LastUpdateMTime, this->Viewer->GetMTime());
    const int* extent = this->Viewer->Reslice->GetOutputExtent();
    EXPECT_LE(extent[1], 3);
    this->TakeMessages();
  }
}

TEST_F(ImageViewerUpdate, SamplesByTheSpacingAlongThePlane)
{
  this->SetVolume(zvtest::UnequalVolume());
  this->Viewer->SetPlaneOrientation(2);
  // An axis at 45 degrees between x (0.5) and z (3): 3.5 / sqrt(2) millimetres a voxel.
  const double half = std::sqrt(0.5);
  this->Viewer->NumberOfSlices = 1;
  this->SetPlane(
    { { { -2, 4.5, 10 } }, { { -2 + 10 * half, 4.5, 10 + 10 * half } }, { { -2, 10.75, 10 } } });
  this->Refresh();
  // 10 / 2.4749 is 4.04 voxels, padded to 8.
  EXPECT_TRUE(this->OutputIs(8, 8, 10.0 / 8, 6.25 / 8));
  EXPECT_TRUE(this->ResliceIsAlongThePlane());
}

TEST_F(ImageViewerUpdate, TheCutFollowsThePlane)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Viewer->PlaneSource->Push(-4.0);
  this->Refresh();
  EXPECT_TRUE(IsPoint(this->Viewer->CutPlane->GetOrigin(), this->Plane().Center()));
  EXPECT_TRUE(IsPoint(this->Viewer->CutPlane->GetNormal(), { { 0, 0, 1 } }));
  EXPECT_EQ(this->Viewer->BoxCutter->GetOutput()->GetNumberOfPoints(), 4);
}

TEST_F(ImageViewerUpdate, CentresThePlaneOnItsCutThroughTheBox)
{
  this->Place(zvtest::UnequalVolume(), 2);
  const PlanePoints placed = this->Plane();
  const World shift{ { 0.7, -0.4, -3.0 } };
  this->SetPlane({ placed.Origin + shift, placed.Point1 + shift, placed.Point2 + shift });
  this->Refresh();
  const World down{ { 0, 0, -3.0 } };
  EXPECT_TRUE(this->PlaneIs({ placed.Origin + down, placed.Point1 + down, placed.Point2 + down }));
}

TEST_F(ImageViewerUpdate, ASingleSliceIsNotCentred)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Viewer->SetNumberOfSlices(1);
  const PlanePoints placed = this->Plane();
  const World shift{ { 0.75, -0.5, -3.0 } };
  const PlanePoints moved{ placed.Origin + shift, placed.Point1 + shift, placed.Point2 + shift };
  this->SetPlane(moved);
  this->Refresh();
  EXPECT_TRUE(this->PlaneIs(moved));
}

TEST_F(ImageViewerUpdate, APlaneOutsideTheBoxKeepsItsCentre)
{
  this->Place(zvtest::UnequalVolume(), 2);
  const PlanePoints placed = this->Plane();
  const World shift{ { 0.75, -0.5, 30.0 } };
  const PlanePoints moved{ placed.Origin + shift, placed.Point1 + shift, placed.Point2 + shift };
  this->SetPlane(moved);
  this->Refresh();
  EXPECT_TRUE(this->PlaneIs(moved));
  EXPECT_EQ(this->Viewer->BoxCutter->GetOutput()->GetNumberOfPoints(), 0);
}

TEST_F(ImageViewerUpdate, FitsTheLinesFromTheNearEdgeToTheFarOne)
{
  for (const zvtest::VolumeOptions& options : ParticularVolumes())
  {
    for (int orientation : { 0, 1, 2 })
    {
      this->Place(options, orientation);
      const PlanePoints plane = this->Plane();
      const World axis1 = plane.Point1 - plane.Origin;
      const World axis2 = plane.Point2 - plane.Origin;
      World center = plane.Origin + axis1 * 0.25 + axis2 * 0.625;
      this->Viewer->SetRotationCenter(center.data());
      for (vtkLineSource* line : { this->LineSource(1), this->LineSource(2) })
      {
        line->SetPoint1(100, 100, 100);
        line->SetPoint2(0, 0, 0);
      }
      this->Refresh();
      EXPECT_TRUE(
        this->LineIs(1, { plane.Origin + axis1 * 0.25, plane.Origin + axis1 * 0.25 + axis2 }));
      EXPECT_TRUE(
        this->LineIs(2, { plane.Origin + axis2 * 0.625, plane.Origin + axis2 * 0.625 + axis1 }));
    }
  }
}

TEST_F(ImageViewerUpdate, LeavesTheLinesWhereTheCentreIsOffThePlane)
{
  this->Place(zvtest::UnequalVolume(), 2);
  double center[3] = { 100, 100, 19 };
  this->Viewer->SetRotationCenter(center);
  const LineEnds line1 = this->Line(1);
  const LineEnds line2 = this->Line(2);
  this->Refresh();
  EXPECT_TRUE(this->LineIs(1, line1));
  EXPECT_TRUE(this->LineIs(2, line2));
}

TEST_F(ImageViewerUpdate, TheOutlineFollowsThePlane)
{
  this->Place(zvtest::UnequalVolume(), 1);
  this->Refresh();
  const PlanePoints plane = this->Plane();
  const World corners[4] = { plane.Origin, plane.Point1,
    plane.Point1 + (plane.Point2 - plane.Origin), plane.Point2 };
  vtkPoints* points = this->Viewer->PlaneOutlinePolyData->GetPoints();
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_TRUE(IsPoint(points->GetPoint(i), corners[i])) << i;
  }
}

TEST_F(ImageViewerUpdate, AnEmptyImageIsAnErrorAndTheUpdateGoesOn)
{
  vtkNew<vtkImageData> empty;
  this->Viewer->SetInput(empty);
  this->SetPlane({ { { 0, 0, 0 } }, { { 4, 0, 0 } }, { { 0, 2, 0 } } });
  this->TakeMessages();
  this->Refresh();
  this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer,
    "Invalid extent [0, -1, 0, -1, 0, -1]. Perhaps the input data is empty?");
  EXPECT_TRUE(this->OutputIs(4, 2, 1.0, 1.0));
  EXPECT_TRUE(this->ResliceIsAlongThePlane());
}

TEST_F(ImageViewerUpdate, APlaneTooFineIsAnErrorAndSamplesNothing)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Viewer->NumberOfSlices = 1;
  this->SetPlane({ { { 0, 0, 0 } }, { { 1.0e9, 0, 0 } }, { { 0, 5, 0 } } });
  this->Refresh();
  this->ExpectVtkError(
    "zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, "Invalid X extent: 2e+09");
  EXPECT_EQ(this->Viewer->Reslice->GetOutputExtent()[1], -1);
  EXPECT_EQ(this->Viewer->Reslice->GetOutputExtent()[3], 3);
  this->SetPlane({ { { 0, 0, 0 } }, { { 1.0, 0, 0 } }, { { 0, 2.0e9, 0 } } });
  this->Refresh();
  this->ExpectVtkError(
    "zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, "Invalid Y extent: 1.6e+09");
  EXPECT_EQ(this->Viewer->Reslice->GetOutputExtent()[1], 1);
  EXPECT_EQ(this->Viewer->Reslice->GetOutputExtent()[3], -1);
}

TEST_F(ImageViewerUpdate, AThinVolumeSeenEdgeOnHasNoWidthAndSaysSo)
{
  this->Place(zvtest::OneVoxelThickVolume(0), 2);
  this->Viewer->UpdatePlane();
  this->ExpectVtkError(
    "zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, "Invalid X extent: 2.14748e+09");
  EXPECT_EQ(this->Viewer->Reslice->GetOutputExtent()[1], -1);
  EXPECT_EQ(this->Viewer->Reslice->GetOutputSpacing()[0], 1.0);
  this->Viewer->SetImageResolutionFactor(4);
  this->Viewer->UpdatePlane();
  this->ExpectVtkError(
    "zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, "Invalid X extent: 2.14748e+09");
  EXPECT_EQ(this->Viewer->Reslice->GetOutputSpacing()[0], 4.0);
}

TEST_F(ImageViewerUpdate, PlacementUpdatesEverything)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Viewer->UpdatePlane();
  this->Viewer->PlaneSource->Push(-6.0);
  const auto before = this->Viewer->GetMTime();
  this->Viewer->UpdatePlacement();
  EXPECT_GT(this->Viewer->GetMTime(), before);
  EXPECT_EQ(this->Viewer->LastUpdateMTime, this->Viewer->GetMTime());
  EXPECT_EQ(this->Viewer->Reslice->GetResliceAxes()->GetElement(2, 3), 13.0);
  EXPECT_TRUE(IsPoint(this->Viewer->CutPlane->GetOrigin(), this->Plane().Center()));
}

TEST_F(ImageViewerUpdate, EverySampleIsTheVoxelUnderIt)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->SetResliceInterpolate(VTK_NEAREST_RESLICE);
  this->Refresh();
  this->Viewer->SetSliceIndex(2);
  this->Viewer->Reslice->Update();
  vtkImageData* output = this->Viewer->Reslice->GetOutput();
  for (int j = 0; j < 4; ++j)
  {
    for (int i = 0; i < 4; ++i)
    {
      EXPECT_EQ(output->GetScalarComponentAsDouble(i, j, 0, 0),
        zvtest::IndexValue(this->Volume, { { i, j, 2 } }));
    }
  }
}

// ---- rotation ----

class ImageViewerRotation : public ImageViewerTest
{
protected:
  // The plane that a first rotation starts from.
  PlanePoints Enlarged(int orientation)
  {
    const PlanePoints p = this->Plane();
    const double* C = this->Volume->GetCenter();
    const double* S = this->Volume->GetSpacing();
    const int* E = this->Volume->GetExtent();
    const double x = E[1] * S[0], y = E[3] * S[1], z = E[5] * S[2];
    switch (orientation)
    {
      case 2:
        return { { { C[0] - x, C[1] - y, p.Origin[2] } }, { { C[0] + x, C[1] - y, p.Point1[2] } },
          { { C[0] - x, C[1] + y, p.Point2[2] } } };
      case 0:
        return { { { p.Origin[0], C[1] - y, C[2] - z } }, { { p.Point1[0], C[1] + y, C[2] - z } },
          { { p.Point2[0], C[1] - y, C[2] + z } } };
      default:
        return { { { C[0] - x, p.Origin[1], C[2] - z } }, { { C[0] - x, p.Point1[1], C[2] + z } },
          { { C[0] + x, p.Point2[1], C[2] - z } } };
    }
  }

  // The centre of the corners of the plane's cut through the box, from the box's twelve edges.
  World CenterOfCut()
  {
    const PlanePoints plane = this->Plane();
    const World normal = Unit(Cross(plane.Point1 - plane.Origin, plane.Point2 - plane.Origin));
    const double* b = this->Volume->GetBounds();
    World sum{ { 0, 0, 0 } };
    int count = 0;
    for (int axis = 0; axis < 3; ++axis)
    {
      for (int corner = 0; corner < 4; ++corner)
      {
        const int u = (axis + 1) % 3;
        const int w = (axis + 2) % 3;
        World from;
        from[axis] = b[2 * axis];
        from[u] = b[2 * u + corner % 2];
        from[w] = b[2 * w + corner / 2];
        World to = from;
        to[axis] = b[2 * axis + 1];
        const double d0 = Dot(normal, from - plane.Origin);
        const double d1 = Dot(normal, to - plane.Origin);
        if ((d0 < 0) != (d1 < 0))
        {
          sum = sum + from + (to - from) * (d0 / (d0 - d1));
          ++count;
        }
      }
    }
    return sum * (1.0 / count);
  }

  void Turn(double angle, World axis, World center)
  {
    this->Viewer->Rotate(angle, axis.data(), center.data());
  }

  World Normal() const { return ToWorld(this->Viewer->PlaneSource->GetNormal()); }
};

TEST_F(ImageViewerRotation, EnlargesThePlaneOnceAndTurnsIt)
{
  const World axis{ { 0.3, -0.5, 0.8 } };
  for (const zvtest::VolumeOptions& options : ParticularVolumes())
  {
    for (int orientation : { 0, 1, 2 })
    {
      SCOPED_TRACE(orientation);
      this->Place(options, orientation);
      this->Viewer->UpdatePlane();
      this->Viewer->SetNumberOfSlices(1); // so that the plane stays where it is turned to
      const World center = ToWorld(this->Volume->GetCenter()) + World{ { 0.2, -0.3, 0.4 } };
      PlanePoints expected = Turned(this->Enlarged(orientation), 17.0, axis, center);
      LineEnds line1 = this->Line(1);
      LineEnds line2 = this->Line(2);
      this->Turn(17.0, axis, center);
      EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 3);
      EXPECT_EQ(this->Viewer->GetViewOrientation(), orientation);
      EXPECT_TRUE(this->CenterIs(center));
      EXPECT_TRUE(this->PlaneIs(expected));
      line1 = { Turned(line1.Point1, 17.0, axis, center),
        Turned(line1.Point2, 17.0, axis, center) };
      line2 = { Turned(line2.Point1, 17.0, axis, center),
        Turned(line2.Point2, 17.0, axis, center) };
      EXPECT_TRUE(IsPoint(this->Viewer->LineNormal2, Unit(line1.Point2 - line1.Point1)));
      EXPECT_TRUE(IsPoint(this->Viewer->LineNormal1, Unit(line2.Point2 - line2.Point1)));

      // The second time it is only turned.
      expected = Turned(expected, -40.0, axis, center);
      this->Turn(-40.0, axis, center);
      EXPECT_TRUE(this->PlaneIs(expected));
    }
  }
}

TEST_F(ImageViewerRotation, CentresAnObliquePlaneOnItsCut)
{
  zvtest::Dice dice(7);
  for (int orientation : { 0, 1, 2 })
  {
    for (int n = 0; n < 20; ++n)
    {
      this->Place(zvtest::UnequalVolume(), orientation);
      this->Viewer->UpdatePlane();
      this->Viewer->SetSliceIndex(1);
      World normal = this->Normal();
      const World axis{ { dice.Real(-1, 1), dice.Real(-1, 1), dice.Real(-1, 1) } };
      const double angle = dice.Real(5, 60);
      const World center = ToWorld(this->Volume->GetCenter());
      this->Turn(angle, axis, center);
      normal = Turned(normal, angle, axis, { { 0, 0, 0 } });
      EXPECT_TRUE(IsPoint(this->Normal().data(), normal));
      EXPECT_TRUE(IsPoint(this->Plane().Center().data(), this->CenterOfCut()));
    }
  }
}

TEST_F(ImageViewerRotation, FitsTheLinesToAnObliquePlane)
{
  zvtest::Dice dice(8);
  for (int orientation : { 0, 1, 2 })
  {
    this->Place(zvtest::UnequalVolume(), orientation);
    this->Viewer->UpdatePlane();
    this->Viewer->SetSliceIndex(1);
    for (int n = 0; n < 20; ++n)
    {
      const World axis{ { dice.Real(-1, 1), dice.Real(-1, 1), dice.Real(-1, 1) } };
      this->Turn(dice.Real(-20, 20), axis, ToWorld(this->Viewer->RotationCenter));
      EXPECT_TRUE(this->LinesSpanThePlane()) << orientation << ", " << n;
    }
  }
}

TEST_F(ImageViewerRotation, EnlargesAVolumeOf999StepsButNotOf1000)
{
  for (int axis : { 0, 1, 2 })
  {
    for (int last : { 999, 1000 })
    {
      zvtest::VolumeOptions options;
      options.Dimensions = { { 3, 3, 3 } };
      options.Dimensions[axis] = last + 1;
      options.ScalarType = VTK_UNSIGNED_CHAR;
      this->Volume = zvtest::MakeConstantVolume(1.0, options);
      this->Viewer->SetInput(this->Volume);
      this->Viewer->SetPlaneOrientation(2);
      this->Viewer->UpdatePlane();
      this->Viewer->SetNumberOfSlices(1);
      const PlanePoints placed = this->Plane();
      const PlanePoints enlarged = this->Enlarged(2);
      const World z{ { 0, 0, 1 } };
      const World center = placed.Center();
      this->Turn(10.0, z, center);
      EXPECT_TRUE(this->PlaneIs(Turned(last == 999 ? enlarged : placed, 10.0, z, center), 1e-9))
        << axis << ", " << last;
    }
  }
}

TEST_F(ImageViewerRotation, ADragTurnsThePlaneAboutItsNormal)
{
  for (int orientation : { 0, 1, 2 })
  {
    SCOPED_TRACE(orientation);
    this->Place(zvtest::UnequalVolume(), orientation);
    this->Viewer->UpdatePlane();
    this->Viewer->SetNumberOfSlices(1);
    const World center = ToWorld(this->Viewer->RotationCenter);
    const World normal = this->Normal();
    const World axis1 = Unit(this->Plane().Point1 - this->Plane().Origin);
    const World axis2 = Cross(normal, axis1);
    World from = center + axis1 * 2.0;
    World to = center + axis1 * 1.75 + axis2 * 0.5;
    const PlanePoints enlarged = this->Enlarged(orientation);
    const LineEnds line1 = this->Line(1);
    const LineEnds line2 = this->Line(2);

    const World v = Unit(to - center);
    const World axis = Cross(normal, v);
    const double angle = Dot(to - from, axis) / Length(to - center) * 57.29577951308232;
    World unused{ { 9, 9, 9 } };
    this->Viewer->Rotate(1, 2, from.data(), to.data(), unused.data());

    EXPECT_GT(std::abs(angle), 5.0);
    EXPECT_NEAR(this->Viewer->GetLastDegree(), angle, 1e-9);
    double read[3];
    this->Viewer->GetRotateAxis(read);
    EXPECT_TRUE(IsPoint(read, axis));
    this->Viewer->GetDegree(read);
    EXPECT_TRUE(IsPoint(read, axis * angle));
    EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 3);
    EXPECT_EQ(this->Viewer->GetViewOrientation(), orientation);
    EXPECT_TRUE(this->CenterIs(center));
    EXPECT_TRUE(this->PlaneIs(Turned(enlarged, angle, normal, center)));
    EXPECT_TRUE(IsPoint(this->Viewer->LineNormal2,
      Unit(Turned(line1.Point2, angle, normal, center) -
        Turned(line1.Point1, angle, normal, center))));
    EXPECT_TRUE(IsPoint(this->Viewer->LineNormal1,
      Unit(Turned(line2.Point2, angle, normal, center) -
        Turned(line2.Point1, angle, normal, center))));
    EXPECT_TRUE(this->LinesSpanThePlane());
  }
}

TEST_F(ImageViewerRotation, ManyDragStepsKeepTheNormalAndTheLines)
{
  this->Place(zvtest::UnequalVolume(), 1);
  this->Viewer->UpdatePlane();
  this->Viewer->SetSliceIndex(3);
  World axis{ { 1, 0.4, 0.2 } };
  this->Turn(25.0, axis, ToWorld(this->Viewer->RotationCenter));
  const World normal = this->Normal();
  const World center = ToWorld(this->Viewer->RotationCenter);
  const World axis1 = Unit(this->Plane().Point1 - this->Plane().Origin);
  double turned = 0.0;
  for (int n = 0; n < 100; ++n)
  {
    World from = Turned(center + axis1 * 3.0, 7.0 * n, normal, center);
    World to = Turned(center + axis1 * 3.0, 7.0 * (n + 1), normal, center);
    this->Viewer->Rotate(0, 0, from.data(), to.data(), to.data());
    turned += this->Viewer->GetLastDegree();
    ASSERT_TRUE(IsPoint(this->Normal().data(), normal, 1e-9)) << n;
    ASSERT_TRUE(this->LinesSpanThePlane()) << n;
  }
  const World now = Unit(this->Plane().Point1 - this->Plane().Origin);
  EXPECT_TRUE(IsPoint(now.data(), Turned(axis1, turned, normal, { { 0, 0, 0 } })));
}

TEST_F(ImageViewerRotation, ALongDragStepKeepsTheSideThatIsSeen)
{
  for (double length : { 1.7, 2.4, 3.0, -2.0, -2.9 }) // of an arm of 1: nearly half a turn
  {
    this->Place(this->Cube(9), 2);
    this->Viewer->UpdatePlane();
    this->Viewer->SetSliceIndex(4);
    const World center = ToWorld(this->Viewer->RotationCenter);
    World to = center + World{ { 1, 0, 0 } };
    World from = to - World{ { 0, length, 0 } };
    this->Viewer->Rotate(0, 0, from.data(), to.data(), to.data());
    EXPECT_NEAR(this->Viewer->GetLastDegree(), length * 180.0 / std::acos(-1.0), 1e-9);
    EXPECT_TRUE(IsPoint(this->Viewer->PlaneSource->GetNormal(), { { 0, 0, 1 } })) << length;
    EXPECT_TRUE(IsPoint(this->Viewer->PlaneSource->GetCenter(), center)) << length;
    vtkMatrix4x4* axes = this->Viewer->Reslice->GetResliceAxes();
    EXPECT_NEAR(axes->GetElement(2, 2), 1.0, 1e-9) << length;
    EXPECT_NEAR(axes->GetElement(0, 0), std::cos(length), 1e-9) << length;
  }
}

TEST_F(ImageViewerRotation, TheHostMayPassThePlanesOwnNormalAndCentre)
{
  this->Place(zvtest::UnequalVolume(), 1);
  this->Viewer->UpdatePlane();
  this->Viewer->SetNumberOfSlices(1);
  const World normal = this->Normal();
  const World center = this->Plane().Center();
  const PlanePoints expected = Turned(this->Enlarged(1), 20.0, normal, center);
  this->Viewer->Rotate(
    20.0, this->Viewer->PlaneSource->GetNormal(), this->Viewer->PlaneSource->GetCenter());
  EXPECT_TRUE(this->PlaneIs(expected));
  EXPECT_TRUE(this->CenterIs(center));
}

TEST_F(ImageViewerRotation, ADragThroughTheCentreIsHarmless)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Viewer->UpdatePlane();
  this->Viewer->SetNumberOfSlices(1);
  World center = ToWorld(this->Viewer->RotationCenter);
  World from = center + World{ { 1, 0, 0 } };
  const PlanePoints enlarged = this->Enlarged(2);
  this->Viewer->Rotate(0, 0, from.data(), center.data(), from.data());
  EXPECT_EQ(this->Viewer->GetLastDegree(), 0.0);
  EXPECT_TRUE(this->PlaneIs(enlarged));
}

TEST_F(ImageViewerRotation, TurningAboutNoAxisIsHarmless)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Viewer->UpdatePlane();
  this->Viewer->SetNumberOfSlices(1);
  const PlanePoints enlarged = this->Enlarged(2);
  this->Turn(30.0, { { 0, 0, 0 } }, ToWorld(this->Viewer->RotationCenter));
  EXPECT_TRUE(this->PlaneIs(enlarged));
  EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 3);
}

// ---- slices ----

class ImageViewerSlices : public ImageViewerRotation
{
};

TEST_F(ImageViewerSlices, AreCountedFromTheLowerBound)
{
  for (const zvtest::VolumeOptions& options :
    { zvtest::UnequalVolume(), zvtest::ShiftedExtentVolume() })
  {
    for (int orientation : { 0, 1, 2 })
    {
      this->Place(options, orientation);
      const int last = options.Dimensions[orientation] - 1;
      EXPECT_EQ(this->Viewer->GetSliceIndex(), last);
      this->Viewer->PlaneSource->Push(-options.Spacing[orientation] * last);
      EXPECT_EQ(this->Viewer->GetSliceIndex(), 0);
    }
  }
}

TEST_F(ImageViewerSlices, HaveTheSignOfTheSpacing)
{
  for (int axis : { 0, 1, 2 })
  {
    this->Place(zvtest::NegativeSpacingVolume({ axis }), axis);
    EXPECT_EQ(this->Viewer->GetSliceIndex(), -(zvtest::UnequalVolume().Dimensions[axis] - 1));
  }
}

TEST_F(ImageViewerSlices, AreRoundedHalfAwayFromZero)
{
  this->Place(this->Cube(5), 2);
  for (const auto& row :
    { std::pair<double, int>{ 2.5, 3 }, { 2.4, 2 }, { 0.5, 1 }, { 0.25, 0 }, { 3.75, 4 } })
  {
    this->Viewer->PlaneSource->Push(row.first - this->Plane().Origin[2]);
    EXPECT_EQ(this->Viewer->GetSliceIndex(), row.second) << row.first;
  }
}

TEST_F(ImageViewerSlices, APlaneOutsideIsPushedBackByReadingItsIndex)
{
  for (int orientation : { 0, 1, 2 })
  {
    this->Place(this->Cube(5), orientation);
    this->Viewer->PlaneSource->Push(2.0);
    EXPECT_EQ(this->Viewer->GetSliceIndex(), 6);
    EXPECT_EQ(this->Plane().Origin[orientation], 4.0);
    EXPECT_EQ(this->Viewer->GetSliceIndex(), 4);
    this->Viewer->PlaneSource->Push(-6.5);
    EXPECT_EQ(this->Viewer->GetSliceIndex(), -3);
    EXPECT_EQ(this->Plane().Origin[orientation], 0.0);
    EXPECT_EQ(this->Viewer->GetSliceIndex(), 0);
  }
}

TEST_F(ImageViewerSlices, AreSteppedAndTakeTheCrossAlong)
{
  for (int orientation : { 0, 1, 2 })
  {
    this->Place(zvtest::ShiftedExtentVolume(), orientation);
    this->Viewer->UpdatePlane();
    const double spacing = this->Volume->GetSpacing()[orientation];
    const double low = this->Volume->GetBounds()[2 * orientation];
    for (int index : { 1, 0, 2, 3, 1 })
    {
      this->Viewer->SetSliceIndex(index);
      EXPECT_EQ(this->Viewer->GetSliceIndex(), index);
      EXPECT_NEAR(this->Plane().Origin[orientation], low + index * spacing, 1e-9);
      EXPECT_NEAR(this->Viewer->RotationCenter[orientation], low + index * spacing, 1e-9);
      for (int line : { 1, 2 })
      {
        EXPECT_NEAR(this->Line(line).Point1[orientation], low + index * spacing, 1e-9);
        EXPECT_NEAR(this->Line(line).Point2[orientation], low + index * spacing, 1e-9);
      }
      EXPECT_TRUE(this->LinesSpanThePlane());
      EXPECT_EQ(this->Viewer->LastUpdateMTime, this->Viewer->GetMTime());
      EXPECT_NEAR(this->Viewer->Reslice->GetResliceAxes()->GetElement(orientation, 3),
        low + index * spacing, 1e-9);
    }
  }
}

TEST_F(ImageViewerSlices, StopAtTheFirstAndTheLast)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->SetSliceIndex(2);
  this->Viewer->SetSliceIndex(99);
  EXPECT_EQ(this->Viewer->GetSliceIndex(), 4);
  this->Viewer->SetSliceIndex(-99);
  EXPECT_EQ(this->Viewer->GetSliceIndex(), 0);
  this->Viewer->SetNumberOfSlices(3);
  this->Viewer->SetSliceIndex(99);
  EXPECT_EQ(this->Viewer->GetSliceIndex(), 2);
}

TEST_F(ImageViewerSlices, TheSliceThatIsShownIsNotSetAgain)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->UpdatePlane();
  const auto before = this->Viewer->GetMTime();
  this->Viewer->SetSliceIndex(4);
  EXPECT_EQ(this->Viewer->GetMTime(), before);
}

TEST_F(ImageViewerSlices, AStepFromOutsideStartsAtTheNearestSlice)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->UpdatePlane();
  this->Viewer->PlaneSource->Push(3.0);
  this->Viewer->SetSliceIndex(1);
  EXPECT_EQ(this->Plane().Origin[2], 1.0);
  EXPECT_EQ(this->Viewer->RotationCenter[2], 1.0);
}

TEST_F(ImageViewerSlices, OfAnObliquePlaneAreStepsBackUntilItLeavesTheVolume)
{
  this->Place(this->Cube(9), 2);
  this->Viewer->UpdatePlane();
  this->Viewer->SetSliceIndex(4);
  this->Turn(30.0, { { 1, 0, 0 } }, { { 4, 4, 4 } });
  // Along the normal the box reaches 4 * (sin 30 + cos 30) = 5.46 back from its centre: the plane
  // touches it at 0 to 5 steps.
  EXPECT_EQ(this->Viewer->GetSliceIndex(), 7);
  const PlanePoints before = this->Plane();
  this->Viewer->SetSliceIndex(5);
  EXPECT_EQ(this->Viewer->GetSliceIndex(), 5);
  const World normal = this->Normal();
  EXPECT_NEAR(Dot(this->Plane().Origin - before.Origin, normal), -2.0, 1e-9);
  EXPECT_NEAR(
    Dot(ToWorld(this->Viewer->RotationCenter) - World{ { 4, 4, 4 } }, normal), -2.0, 1e-9);
  EXPECT_TRUE(this->LinesSpanThePlane());
}

TEST_F(ImageViewerSlices, OfAnObliquePlaneUseTheSpacingOfTheFirstOrientation)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Viewer->UpdatePlane();
  this->Viewer->SetSliceIndex(2);
  const World center = ToWorld(this->Volume->GetCenter());
  this->Viewer->SetNumberOfSlices(50);
  this->Turn(5.0, { { 0, 1, 0 } }, center);
  const PlanePoints before = this->Plane();
  const int index = this->Viewer->GetSliceIndex();
  this->Viewer->SetSliceIndex(index - 1);
  EXPECT_NEAR(Dot(this->Plane().Origin - before.Origin, this->Normal()), -3.0, 1e-9);
}

TEST_F(ImageViewerSlices, OfAnOddOrientationAreHarmless)
{
  this->Place(this->Cube(5), 7);
  this->Viewer->UpdatePlane();
  const int index = this->Viewer->GetSliceIndex();
  this->Viewer->SetSliceIndex(index > 0 ? index - 1 : 1);
  this->Viewer->PushCross(1);
  World axis{ { 0, 0, 1 } };
  this->Turn(10.0, axis, { { 2, 2, 2 } });
  this->Viewer->SetDimensions(9, 9);
  EXPECT_TRUE(std::isfinite(this->Plane().Origin[0]));
}

TEST_F(ImageViewerSlices, PushTheCrossAlongTheNormal)
{
  for (int orientation : { 0, 1, 2 })
  {
    this->Place(zvtest::NegativeSpacingVolume({ 1 }), orientation);
    this->Viewer->UpdatePlane();
    const LineEnds line1 = this->Line(1);
    const LineEnds line2 = this->Line(2);
    const World center = ToWorld(this->Viewer->RotationCenter);
    const PlanePoints plane = this->Plane();
    World by{ { 0, 0, 0 } };
    by[orientation] = -2.0 * this->Volume->GetSpacing()[orientation];
    const auto before = this->Viewer->GetMTime();
    this->Viewer->PushCross(-2);
    EXPECT_TRUE(this->LineIs(1, { line1.Point1 + by, line1.Point2 + by }));
    EXPECT_TRUE(this->LineIs(2, { line2.Point1 + by, line2.Point2 + by }));
    EXPECT_TRUE(this->CenterIs(center + by));
    EXPECT_TRUE(this->PlaneIs(plane));
    EXPECT_EQ(this->Viewer->GetMTime(), before);
  }
}

TEST_F(ImageViewerSlices, ResizingGrowsInWholeUnits)
{
  struct Row
  {
    int Change[2];
    double Grown[2]; // in orientation 2: spacings 0.5 and 1.25
  };
  for (const Row& row : { Row{ { 5, 4 }, { 1, 2 } }, Row{ { 3, 1 }, { 0, 0 } },
         Row{ { -5, -5 }, { -1, -2 } }, Row{ { 0, -3 }, { 0, -1 } } })
  {
    this->Place(zvtest::UnequalVolume(), 2);
    const PlanePoints p = this->Plane();
    const double dx = row.Grown[0], dy = row.Grown[1];
    this->Viewer->SetDimensions(7 + row.Change[0], 5 + row.Change[1]);
    EXPECT_TRUE(this->PlaneIs({ p.Origin + World{ { -dx, -dy, 0 } },
      p.Point1 + World{ { dx, -dy, 0 } }, p.Point2 + World{ { -dx, dy, 0 } } }));
    EXPECT_EQ(this->Viewer->Dimensions[0], 7 + row.Change[0]);
    EXPECT_EQ(this->Viewer->Dimensions[1], 5 + row.Change[1]);
  }
}

TEST_F(ImageViewerSlices, ResizingUsesTheSpacingsOfTheView)
{
  struct Row
  {
    int Orientation;
    World Axis1;
    World Axis2;
    double Grown[2];
  };
  const World x{ { 1, 0, 0 } }, y{ { 0, 1, 0 } }, z{ { 0, 0, 1 } };
  for (const Row& row :
    { Row{ 2, x, y, { 2, 5 } }, Row{ 0, y, z, { 5, 12 } }, Row{ 1, z, x, { 12, 2 } } })
  {
    this->Place(zvtest::UnequalVolume(), row.Orientation);
    const PlanePoints p = this->Plane();
    int to[2] = { this->Viewer->Dimensions[0] + 8, this->Viewer->Dimensions[1] + 9 };
    const World dx = row.Axis1 * row.Grown[0], dy = row.Axis2 * row.Grown[1];
    const auto before = this->Viewer->GetMTime();
    this->Viewer->SetDimensions(to);
    EXPECT_TRUE(this->PlaneIs({ p.Origin - dx - dy, p.Point1 + dx - dy, p.Point2 - dx + dy }));
    EXPECT_EQ(this->Viewer->GetMTime(), before) << "nothing else is updated";
  }
}
