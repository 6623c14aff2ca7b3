#include "zvImagePlaneFixture.h"

#include "vtkCellArray.h"
#include "vtkDataArray.h"
#include "vtkIdList.h"
#include "vtkImageShiftScale.h"
#include "vtkMapper.h"
#include "vtkMatrix3x3.h"
#include "vtkPlaneCollection.h"
#include "vtkPoints.h"
#include "vtkPolyDataAlgorithm.h"
#include "vtkPolyDataMapper.h"
#include "vtkSphereSource.h"
#include "vtkTextProperty.h"
#include "vtkTrivialProducer.h"

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace
{
class ImagePlanePipeline : public ImagePlaneTest
{
protected:
  // A double volume of these two values only.
  void SetRange(double low, double high)
  {
    zvtest::VolumeOptions options = this->Cube(3);
    options.ScalarType = VTK_DOUBLE;
    this->Volume =
      zvtest::MakeVolume(options, [=](int i, int, int, int) { return i == 0 ? low : high; });
    this->Widget->SetInput(this->Volume);
  }

  void ExpectTableRange(double low, double high)
  {
    EXPECT_NEAR(this->Widget->LookupTable->GetTableRange()[0], low, 1e-12);
    EXPECT_NEAR(this->Widget->LookupTable->GetTableRange()[1], high, 1e-12);
  }

  // The value that the table gives to a fraction of its entries, 0 to 1.
  double TableGrey(int entry) { return this->Widget->LookupTable->GetTableValue(entry)[0]; }

  vtkImageData* UpdatedReslice()
  {
    this->Widget->Reslice->Update();
    return this->Widget->Reslice->GetOutput();
  }

  void ExpectResliceGeometry(const std::array<int, 2>& size, const std::array<double, 2>& spacing)
  {
    int extent[6];
    this->Widget->Reslice->GetOutputExtent(extent);
    EXPECT_EQ(extent[0], 0);
    EXPECT_EQ(extent[1], size[0] - 1);
    EXPECT_EQ(extent[2], 0);
    EXPECT_EQ(extent[3], size[1] - 1);
    EXPECT_EQ(extent[4], 0);
    EXPECT_EQ(extent[5], 0);
    EXPECT_TRUE(IsPoint(this->Widget->Reslice->GetOutputSpacing(), spacing[0], spacing[1], 1.0));
    EXPECT_TRUE(IsPoint(this->Widget->Reslice->GetOutputOrigin(), 0, 0, 0));
  }

  // The four columns of the reslice axes.
  void ExpectAxes(const zvtest::World& x, const zvtest::World& y, const zvtest::World& z,
    const zvtest::World& origin)
  {
    const zvtest::World* columns[4] = { &x, &y, &z, &origin };
    for (int column = 0; column < 4; ++column)
    {
      for (int row = 0; row < 3; ++row)
      {
        EXPECT_NEAR(
          this->Widget->ResliceAxes->GetElement(row, column), (*columns[column])[row], 1e-9)
          << "row " << row << ", column " << column;
      }
      EXPECT_EQ(this->Widget->ResliceAxes->GetElement(3, column), column == 3 ? 1.0 : 0.0);
    }
  }
};

using Getter = int (OpenImagePlane::*)();
using Setter = void (OpenImagePlane::*)(int);
}

// ---- defaults ----

TEST_F(ImagePlanePipeline, ItReportsTheNameOfItsBaseByDesign)
{
  EXPECT_STREQ(this->Widget->GetClassName(), "vtkPolyDataSourceWidget");
  EXPECT_EQ(this->Widget->IsA("vtkPolyDataSourceWidget"), 1);
  EXPECT_EQ(this->Widget->IsA("vtk3DWidget"), 1);
  EXPECT_EQ(this->Widget->IsA("zvImagePlaneWidget"), 0);
}

TEST_F(ImagePlanePipeline, FlagsHaveTheirDefaults)
{
  OpenImagePlane* w = this->Widget.get();
  EXPECT_EQ(w->TextureVisibility, 1);
  EXPECT_EQ(w->LeftButtonAction, 0);
  EXPECT_EQ(w->MiddleButtonAction, 1);
  EXPECT_EQ(w->RightButtonAction, 2);
  EXPECT_EQ(w->LeftButtonAutoModifier, 0);
  EXPECT_EQ(w->MiddleButtonAutoModifier, 0);
  EXPECT_EQ(w->RightButtonAutoModifier, 0);
  EXPECT_EQ(w->LastButtonPressed, 0);
  EXPECT_EQ(w->State, 0);
  EXPECT_EQ(w->Interaction, 1);
  EXPECT_EQ(w->PlaneOrientation, 0);
  EXPECT_EQ(w->RestrictPlaneToVolume, 1);
  EXPECT_EQ(w->ResliceInterpolate, 1);
  EXPECT_EQ(w->TextureInterpolate, 1);
  EXPECT_EQ(w->UserControlledLookupTable, 0);
  EXPECT_EQ(w->DisplayText, 0);
  EXPECT_EQ(w->UseContinuousCursor, 0);
  EXPECT_EQ(w->MarginSelectMode, 8);
  EXPECT_EQ(w->Dimensions[0], 0);
  EXPECT_EQ(w->Dimensions[1], 0);
  EXPECT_EQ(w->Clicked, 0);
  EXPECT_EQ(w->NumberOfSlices, 0);
  EXPECT_EQ(w->SliceAxis, 2);
  EXPECT_EQ(w->ObliqueSliceIndex, 0);
  EXPECT_EQ(w->GetEnabled(), 0);
}

TEST_F(ImagePlanePipeline, NumbersHaveTheirDefaults)
{
  OpenImagePlane* w = this->Widget.get();
  EXPECT_EQ(w->OriginalWindow, 1.0);
  EXPECT_EQ(w->OriginalLevel, 0.5);
  EXPECT_EQ(w->CurrentWindow, 1.0);
  EXPECT_EQ(w->CurrentLevel, 0.5);
  EXPECT_EQ(w->CurrentImageValue, 1e299);
  EXPECT_EQ(w->GetCurrentImageValue(), 1e299);
  EXPECT_EQ(w->MarginSizeX, 0.1);
  EXPECT_EQ(w->MarginSizeY, 0.1);
  EXPECT_TRUE(IsPoint(w->CurrentCursorPosition, 0, 0, 0, 0.0));
  EXPECT_TRUE(IsPoint(w->LastPointClicked, 0, 0, 0, 0.0));
  EXPECT_TRUE(IsPoint(w->PointClicked, 0, 0, 0, 0.0));
  EXPECT_TRUE(IsPoint(w->Degree, 0, 0, 0, 0.0));
  EXPECT_TRUE(IsPoint(w->RotationCenter, 0, 0, 0, 0.0));
  EXPECT_EQ(w->GetPlaceFactor(), 1.0);
  EXPECT_STREQ(w->TextBuff, "NA");
}

TEST_F(ImagePlanePipeline, PartsAreThereFromTheStart)
{
  OpenImagePlane* w = this->Widget.get();
  zvPlaneSource* plane = w->PlaneSource;
  ASSERT_NE(plane, nullptr);
  EXPECT_EQ(plane->GetXResolution(), 1);
  EXPECT_EQ(plane->GetYResolution(), 1);
  EXPECT_EQ(w->GetPolyDataAlgorithm(), plane);
  vtkAbstractPropPicker* picker = w->PlanePicker;
  ASSERT_NE(vtkCellPicker::SafeDownCast(picker), nullptr);
  EXPECT_EQ(vtkCellPicker::SafeDownCast(picker)->GetTolerance(), 0.005);
  EXPECT_EQ(w->ImageData, nullptr);
  vtkImageReslice* reslice = w->Reslice;
  ASSERT_NE(reslice, nullptr);
  EXPECT_EQ(reslice->GetTransformInputSampling(), 0);
  vtkObject* const others[] = { w->ResliceAxes, w->Transform, w->TexturePlaneActor, w->ColorMap,
    w->Texture, w->LookupTable, w->CursorPolyData, w->CursorActor, w->TextActor, w->MarginPolyData,
    w->MarginActor, w->CutPlane, w->Cutter, w->BoundsCube, w->CutActor, w->PlaneOutlinePolyData,
    w->PlaneOutlineActor };
  for (vtkObject* part : others)
  {
    EXPECT_NE(part, nullptr);
  }
}

TEST_F(ImagePlanePipeline, TheTableIsAGreyRamp)
{
  vtkLookupTable* table = this->Widget->GetLookupTable();
  EXPECT_EQ(table->GetNumberOfTableValues(), 256);
  EXPECT_EQ(table->GetHueRange()[0], 0.0);
  EXPECT_EQ(table->GetHueRange()[1], 0.0);
  EXPECT_EQ(table->GetSaturationRange()[0], 0.0);
  EXPECT_EQ(table->GetSaturationRange()[1], 0.0);
  EXPECT_EQ(table->GetValueRange()[0], 0.0);
  EXPECT_EQ(table->GetValueRange()[1], 1.0);
  EXPECT_EQ(table->GetAlphaRange()[0], 1.0);
  EXPECT_EQ(table->GetAlphaRange()[1], 1.0);
  for (int entry : { 0, 100, 255 })
  {
    const double* color = table->GetTableValue(entry);
    // The ramp of the toolkit's table is an S, half a cosine.
    EXPECT_NEAR(color[0], 0.5 - 0.5 * std::cos(std::acos(-1.0) * entry / 255.0), 0.003);
    EXPECT_EQ(color[0], color[1]);
    EXPECT_EQ(color[0], color[2]);
    EXPECT_EQ(color[3], 1.0);
  }
}

TEST_F(ImagePlanePipeline, TheTextureGoesThroughTheTable)
{
  OpenImagePlane* w = this->Widget.get();
  vtkImageMapToColors* colors = w->ColorMap;
  EXPECT_EQ(colors->GetLookupTable(), w->GetLookupTable());
  EXPECT_EQ(colors->GetOutputFormat(), VTK_RGBA);
  EXPECT_EQ(colors->GetPassAlphaToOutput(), 1);
  vtkTexture* texture = w->Texture;
  EXPECT_EQ(w->GetTexture(), texture);
  EXPECT_EQ(w->GetColorMap(), colors);
  EXPECT_EQ(texture->GetQuality(), VTK_TEXTURE_QUALITY_32BIT);
  EXPECT_EQ(texture->GetColorMode(), VTK_COLOR_MODE_DEFAULT);
  EXPECT_EQ(texture->GetInterpolate(), 1);
  EXPECT_EQ(texture->GetRepeat(), 0);
  EXPECT_EQ(texture->GetLookupTable(), w->GetLookupTable());
  EXPECT_EQ(w->TexturePlaneActor->GetTexture(), texture);
  EXPECT_EQ(w->TexturePlaneActor->GetPickable(), 1);
}

TEST_F(ImagePlanePipeline, TheTextIsSmallWhiteAndHidden)
{
  vtkTextActor* text = this->Widget->TextActor;
  EXPECT_STREQ(text->GetInput(), "NA");
  EXPECT_EQ(text->GetTextScaleMode(), vtkTextActor::TEXT_SCALE_MODE_NONE);
  vtkTextProperty* property = this->Widget->GetTextProperty();
  EXPECT_EQ(property, text->GetTextProperty());
  EXPECT_TRUE(IsPoint(property->GetColor(), 1, 1, 1));
  EXPECT_STREQ(property->GetFontFamilyAsString(), "Arial");
  EXPECT_EQ(property->GetFontSize(), 18);
  EXPECT_EQ(property->GetBold(), 0);
  EXPECT_EQ(property->GetItalic(), 0);
  EXPECT_EQ(property->GetShadow(), 0);
  EXPECT_EQ(property->GetJustification(), VTK_TEXT_LEFT);
  EXPECT_EQ(property->GetVerticalJustification(), VTK_TEXT_BOTTOM);
  EXPECT_EQ(text->GetPositionCoordinate()->GetCoordinateSystem(), VTK_NORMALIZED_VIEWPORT);
  EXPECT_TRUE(IsPoint(text->GetPositionCoordinate()->GetValue(), 0.01, 0.01, 0));
  EXPECT_EQ(text->GetVisibility(), 0);
}

TEST_F(ImagePlanePipeline, PropertiesHaveTheirColours)
{
  OpenImagePlane* w = this->Widget.get();
  struct Row
  {
    const char* Name;
    vtkProperty* Property;
    double Color[3];
  };
  const Row rows[] = { { "plane", w->GetPlaneProperty(), { 1, 1, 1 } },
    { "selected plane", w->GetSelectedPlaneProperty(), { 0, 1, 0 } },
    { "cursor", w->GetCursorProperty(), { 1, 0, 0 } },
    { "margin", w->GetMarginProperty(), { 0, 0, 1 } } };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    EXPECT_EQ(row.Property->GetAmbient(), 1.0);
    EXPECT_EQ(row.Property->GetDiffuse(), 0.0);
    EXPECT_TRUE(IsPoint(row.Property->GetColor(), row.Color[0], row.Color[1], row.Color[2]));
    EXPECT_EQ(row.Property->GetRepresentation(), VTK_WIREFRAME);
    EXPECT_EQ(row.Property->GetInterpolation(), VTK_FLAT);
  }
  vtkProperty* texture = w->GetTexturePlaneProperty();
  EXPECT_EQ(texture->GetAmbient(), 1.0);
  EXPECT_EQ(texture->GetDiffuse(), 0.0);
  EXPECT_EQ(texture->GetInterpolation(), VTK_FLAT);
  EXPECT_EQ(texture->GetRepresentation(), VTK_SURFACE);
  EXPECT_TRUE(IsPoint(texture->GetColor(), 1, 1, 1));
}

TEST_F(ImagePlanePipeline, OutlineMarginsAndCursorAreLines)
{
  OpenImagePlane* w = this->Widget.get();
  using Line = std::array<vtkIdType, 2>;
  struct Row
  {
    const char* Name;
    vtkPolyData* Data;
    vtkActor* Actor;
    int Points, Visible;
    std::vector<Line> Lines;
  };
  const Row rows[] = {
    { "outline", w->PlaneOutlinePolyData, w->PlaneOutlineActor, 4, 1,
      { { { 3, 2 } }, { { 0, 1 } }, { { 0, 3 } }, { { 1, 2 } } } },
    { "margins", w->MarginPolyData, w->MarginActor, 8, 0,
      { { { 0, 1 } }, { { 2, 3 } }, { { 4, 5 } }, { { 6, 7 } } } },
    { "cursor", w->CursorPolyData, w->CursorActor, 4, 0, { { { 0, 1 } }, { { 2, 3 } } } },
  };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    ASSERT_EQ(row.Data->GetNumberOfPoints(), row.Points);
    EXPECT_EQ(row.Data->GetPoints()->GetDataType(), VTK_DOUBLE);
    for (int i = 0; i < row.Points; ++i)
    {
      EXPECT_TRUE(IsPoint(row.Data->GetPoint(i), 0, 0, 0, 0.0));
    }
    std::vector<Line> lines;
    vtkNew<vtkIdList> ids;
    for (vtkIdType cell = 0; cell < row.Data->GetNumberOfLines(); ++cell)
    {
      row.Data->GetLines()->GetCellAtId(cell, ids);
      ASSERT_EQ(ids->GetNumberOfIds(), 2);
      lines.push_back({ { ids->GetId(0), ids->GetId(1) } });
    }
    EXPECT_EQ(lines, row.Lines);
    EXPECT_EQ(row.Actor->GetPickable(), 0);
    EXPECT_EQ(row.Actor->GetVisibility(), row.Visible);
    ASSERT_NE(row.Actor->GetMapper(), nullptr);
    EXPECT_EQ(row.Actor->GetMapper()->GetInputDataObject(0, 0), row.Data);
  }
  EXPECT_EQ(vtkMapper::GetResolveCoincidentTopology(), 1);
}

// ---- accessors ----

TEST_F(ImagePlanePipeline, FlagSettersStoreAndTellOnlyOfChanges)
{
  struct Row
  {
    const char* Name;
    Setter Set;
    Getter Get;
    int Default;
  };
  const Row rows[] = {
    { "RestrictPlaneToVolume", &OpenImagePlane::SetRestrictPlaneToVolume,
      &OpenImagePlane::GetRestrictPlaneToVolume, 1 },
    { "UserControlledLookupTable", &OpenImagePlane::SetUserControlledLookupTable,
      &OpenImagePlane::GetUserControlledLookupTable, 0 },
    { "TextureInterpolate", &OpenImagePlane::SetTextureInterpolate,
      &OpenImagePlane::GetTextureInterpolate, 1 },
    { "TextureVisibility", &OpenImagePlane::SetTextureVisibility,
      &OpenImagePlane::GetTextureVisibility, 1 },
    { "DisplayText", &OpenImagePlane::SetDisplayText, &OpenImagePlane::GetDisplayText, 0 },
    { "UseContinuousCursor", &OpenImagePlane::SetUseContinuousCursor,
      &OpenImagePlane::GetUseContinuousCursor, 0 },
    { "ResliceInterpolate", &OpenImagePlane::SetResliceInterpolate,
      &OpenImagePlane::GetResliceInterpolate, 1 },
  };
  OpenImagePlane* w = this->Widget.get();
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    EXPECT_EQ((w->*row.Get)(), row.Default);
    vtkMTimeType before = w->GetMTime();
    (w->*row.Set)(row.Default);
    EXPECT_EQ(w->GetMTime(), before);
    (w->*row.Set)(1 - row.Default);
    EXPECT_EQ((w->*row.Get)(), 1 - row.Default);
    EXPECT_GT(w->GetMTime(), before);
  }
}

TEST_F(ImagePlanePipeline, FlagsAreSwitchedOnAndOff)
{
  using Switch = void (OpenImagePlane::*)();
  struct Row
  {
    const char* Name;
    Switch On, Off;
    Getter Get;
  };
  const Row rows[] = {
    { "RestrictPlaneToVolume", &OpenImagePlane::RestrictPlaneToVolumeOn,
      &OpenImagePlane::RestrictPlaneToVolumeOff, &OpenImagePlane::GetRestrictPlaneToVolume },
    { "UserControlledLookupTable", &OpenImagePlane::UserControlledLookupTableOn,
      &OpenImagePlane::UserControlledLookupTableOff,
      &OpenImagePlane::GetUserControlledLookupTable },
    { "TextureInterpolate", &OpenImagePlane::TextureInterpolateOn,
      &OpenImagePlane::TextureInterpolateOff, &OpenImagePlane::GetTextureInterpolate },
    { "TextureVisibility", &OpenImagePlane::TextureVisibilityOn,
      &OpenImagePlane::TextureVisibilityOff, &OpenImagePlane::GetTextureVisibility },
    { "DisplayText", &OpenImagePlane::DisplayTextOn, &OpenImagePlane::DisplayTextOff,
      &OpenImagePlane::GetDisplayText },
    { "UseContinuousCursor", &OpenImagePlane::UseContinuousCursorOn,
      &OpenImagePlane::UseContinuousCursorOff, &OpenImagePlane::GetUseContinuousCursor },
  };
  OpenImagePlane* w = this->Widget.get();
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    (w->*row.Off)();
    EXPECT_EQ((w->*row.Get)(), 0);
    (w->*row.On)();
    EXPECT_EQ((w->*row.Get)(), 1);
    (w->*row.Off)();
    EXPECT_EQ((w->*row.Get)(), 0);
  }
}

TEST_F(ImagePlanePipeline, ButtonSettersClampToTheirValues)
{
  struct Row
  {
    const char* Name;
    Setter Set;
    Getter Get, Min, Max;
  };
  const Row rows[] = {
    { "LeftButtonAction", &OpenImagePlane::SetLeftButtonAction,
      &OpenImagePlane::GetLeftButtonAction, &OpenImagePlane::GetLeftButtonActionMinValue,
      &OpenImagePlane::GetLeftButtonActionMaxValue },
    { "MiddleButtonAction", &OpenImagePlane::SetMiddleButtonAction,
      &OpenImagePlane::GetMiddleButtonAction, &OpenImagePlane::GetMiddleButtonActionMinValue,
      &OpenImagePlane::GetMiddleButtonActionMaxValue },
    { "RightButtonAction", &OpenImagePlane::SetRightButtonAction,
      &OpenImagePlane::GetRightButtonAction, &OpenImagePlane::GetRightButtonActionMinValue,
      &OpenImagePlane::GetRightButtonActionMaxValue },
    { "LeftButtonAutoModifier", &OpenImagePlane::SetLeftButtonAutoModifier,
      &OpenImagePlane::GetLeftButtonAutoModifier,
      &OpenImagePlane::GetLeftButtonAutoModifierMinValue,
      &OpenImagePlane::GetLeftButtonAutoModifierMaxValue },
    { "MiddleButtonAutoModifier", &OpenImagePlane::SetMiddleButtonAutoModifier,
      &OpenImagePlane::GetMiddleButtonAutoModifier,
      &OpenImagePlane::GetMiddleButtonAutoModifierMinValue,
      &OpenImagePlane::GetMiddleButtonAutoModifierMaxValue },
    { "RightButtonAutoModifier", &OpenImagePlane::SetRightButtonAutoModifier,
      &OpenImagePlane::GetRightButtonAutoModifier,
      &OpenImagePlane::GetRightButtonAutoModifierMinValue,
      &OpenImagePlane::GetRightButtonAutoModifierMaxValue },
  };
  OpenImagePlane* w = this->Widget.get();
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    EXPECT_EQ((w->*row.Min)(), 0);
    EXPECT_EQ((w->*row.Max)(), 2);
    (w->*row.Set)(5);
    EXPECT_EQ((w->*row.Get)(), 2);
    const vtkMTimeType before = w->GetMTime();
    (w->*row.Set)(3);
    EXPECT_EQ(w->GetMTime(), before) << "it is 2 already";
    (w->*row.Set)(1);
    EXPECT_EQ((w->*row.Get)(), 1);
    EXPECT_GT(w->GetMTime(), before);
    (w->*row.Set)(-1);
    EXPECT_EQ((w->*row.Get)(), 0);
  }
}

TEST_F(ImagePlanePipeline, MarginSizesAreFractionsUpToAHalf)
{
  OpenImagePlane* w = this->Widget.get();
  EXPECT_EQ(w->GetMarginSizeXMinValue(), 0.0);
  EXPECT_EQ(w->GetMarginSizeXMaxValue(), 0.5);
  EXPECT_EQ(w->GetMarginSizeYMinValue(), 0.0);
  EXPECT_EQ(w->GetMarginSizeYMaxValue(), 0.5);
  w->SetMarginSizeX(0.7);
  w->SetMarginSizeY(-0.2);
  EXPECT_EQ(w->GetMarginSizeX(), 0.5);
  EXPECT_EQ(w->GetMarginSizeY(), 0.0);
  const vtkMTimeType before = w->GetMTime();
  w->SetMarginSizeX(0.6);
  EXPECT_EQ(w->GetMTime(), before);
  w->SetMarginSizeY(0.25);
  EXPECT_EQ(w->GetMarginSizeY(), 0.25);
  EXPECT_GT(w->GetMTime(), before);
}

TEST_F(ImagePlanePipeline, PropertySettersHoldAReference)
{
  using SetProperty = void (OpenImagePlane::*)(vtkProperty*);
  using GetProperty = vtkProperty* (OpenImagePlane::*)();
  struct Row
  {
    const char* Name;
    SetProperty Set;
    GetProperty Get;
  };
  const Row rows[] = {
    { "plane", &OpenImagePlane::SetPlaneProperty, &OpenImagePlane::GetPlaneProperty },
    { "selected", &OpenImagePlane::SetSelectedPlaneProperty,
      &OpenImagePlane::GetSelectedPlaneProperty },
    { "cursor", &OpenImagePlane::SetCursorProperty, &OpenImagePlane::GetCursorProperty },
    { "margin", &OpenImagePlane::SetMarginProperty, &OpenImagePlane::GetMarginProperty },
    { "texture", &OpenImagePlane::SetTexturePlaneProperty,
      &OpenImagePlane::GetTexturePlaneProperty },
  };
  OpenImagePlane* w = this->Widget.get();
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    vtkNew<vtkProperty> mine;
    vtkMTimeType before = w->GetMTime();
    (w->*row.Set)(mine);
    EXPECT_EQ((w->*row.Get)(), mine.Get());
    EXPECT_EQ(mine->GetReferenceCount(), 2);
    EXPECT_GT(w->GetMTime(), before);
    before = w->GetMTime();
    (w->*row.Set)(mine);
    EXPECT_EQ(w->GetMTime(), before);
    EXPECT_EQ(mine->GetReferenceCount(), 2);
    (w->*row.Set)(nullptr);
    EXPECT_EQ((w->*row.Get)(), nullptr);
    EXPECT_EQ(mine->GetReferenceCount(), 1);
    EXPECT_GT(w->GetMTime(), before);
  }
}

TEST_F(ImagePlanePipeline, APropertySurvivesItsWidget)
{
  vtkNew<vtkProperty> mine;
  this->Widget->SetPlaneProperty(mine);
  this->Widget->SetTexturePlaneProperty(mine);
  this->Widget.reset();
  EXPECT_EQ(mine->GetReferenceCount(), 1);
}

TEST_F(ImagePlanePipeline, TheColorMapCanBeReplaced)
{
  vtkNew<vtkImageMapToColors> mine;
  const vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->SetColorMap(mine);
  EXPECT_EQ(this->Widget->GetColorMap(), mine.Get());
  EXPECT_EQ(mine->GetReferenceCount(), 2);
  EXPECT_GT(this->Widget->GetMTime(), before);
  this->Widget.reset();
  EXPECT_EQ(mine->GetReferenceCount(), 1);
}

TEST_F(ImagePlanePipeline, PlanePointsPassThroughToThePlane)
{
  OpenImagePlane* w = this->Widget.get();
  using ByNumbers = void (OpenImagePlane::*)(double, double, double);
  using ByArray = void (OpenImagePlane::*)(double*);
  using Read = double* (OpenImagePlane::*)();
  using Copy = void (OpenImagePlane::*)(double*);
  struct Row
  {
    const char* Name;
    ByNumbers SetNumbers;
    ByArray SetArray;
    Read Get;
    Copy GetCopy;
  };
  const Row rows[] = { { "origin", &OpenImagePlane::SetOrigin, &OpenImagePlane::SetOrigin,
                         &OpenImagePlane::GetOrigin, &OpenImagePlane::GetOrigin },
    { "point 1", &OpenImagePlane::SetPoint1, &OpenImagePlane::SetPoint1, &OpenImagePlane::GetPoint1,
      &OpenImagePlane::GetPoint1 },
    { "point 2", &OpenImagePlane::SetPoint2, &OpenImagePlane::SetPoint2, &OpenImagePlane::GetPoint2,
      &OpenImagePlane::GetPoint2 } };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    vtkMTimeType before = w->GetMTime();
    (w->*row.SetNumbers)(11, 12, 13);
    EXPECT_GT(w->GetMTime(), before);
    EXPECT_TRUE(IsPoint((w->*row.Get)(), 11, 12, 13));
    before = w->GetMTime();
    double point[3] = { 4, 5, 6 };
    (w->*row.SetArray)(point);
    EXPECT_GT(w->GetMTime(), before);
    double copy[3];
    (w->*row.GetCopy)(copy);
    EXPECT_TRUE(IsPoint(copy, 4, 5, 6));
  }
}

TEST_F(ImagePlanePipeline, CentreNormalAndAxesAreThoseOfThePlane)
{
  OpenImagePlane* w = this->Widget.get();
  w->SetOrigin(1, 2, 3);
  w->SetPoint1(5, 2, 3);
  w->SetPoint2(1, 8, 3);
  double copy[3];
  EXPECT_TRUE(IsPoint(w->GetCenter(), 3, 5, 3));
  w->GetCenter(copy);
  EXPECT_TRUE(IsPoint(copy, 3, 5, 3));
  EXPECT_TRUE(IsPoint(w->GetNormal(), 0, 0, 1));
  w->GetNormal(copy);
  EXPECT_TRUE(IsPoint(copy, 0, 0, 1));
  w->GetVector1(copy);
  EXPECT_TRUE(IsPoint(copy, 4, 0, 0));
  w->GetVector2(copy);
  EXPECT_TRUE(IsPoint(copy, 0, 6, 0));
}

TEST_F(ImagePlanePipeline, ThePlaneIsHandedOutAsPolyData)
{
  this->Place(this->Cube(5), 2);
  this->Widget->UpdatePlacement();
  vtkNew<vtkPolyData> data;
  this->Widget->GetPolyData(data);
  EXPECT_EQ(data->GetNumberOfPoints(), 4);
  EXPECT_EQ(data->GetNumberOfCells(), 1);
  EXPECT_EQ(data->GetBounds()[4], 4.0);
  EXPECT_EQ(data->GetBounds()[1], 4.0);
}

TEST_F(ImagePlanePipeline, TheTextPropertyIsThatOfTheText)
{
  vtkNew<vtkTextProperty> mine;
  this->Widget->SetTextProperty(mine);
  EXPECT_EQ(this->Widget->GetTextProperty(), mine.Get());
  EXPECT_EQ(this->Widget->TextActor->GetTextProperty(), mine.Get());
}

TEST_F(ImagePlanePipeline, ClickedIsSetByTheHost)
{
  this->Widget->SetClicked(1);
  EXPECT_EQ(this->Widget->GetClicked(), 1);
}

TEST_F(ImagePlanePipeline, CursorPositionIsRead)
{
  this->Widget->CurrentCursorPosition[1] = 4.0;
  double copy[3];
  this->Widget->GetCurrentCursorPosition(copy);
  EXPECT_TRUE(IsPoint(copy, 0, 4, 0));
  EXPECT_TRUE(IsPoint(this->Widget->GetCurrentCursorPosition(), 0, 4, 0));
}

// ---- picker ----

TEST_F(ImagePlanePipeline, APickerPicksOnlyTheTexturePlane)
{
  vtkNew<vtkCellPicker> mine;
  this->Widget->SetPicker(mine);
  vtkAbstractPropPicker* picker = this->Widget->PlanePicker;
  EXPECT_EQ(picker, mine.Get());
  EXPECT_EQ(mine->GetReferenceCount(), 2);
  EXPECT_EQ(mine->GetPickFromList(), 1);
  EXPECT_EQ(mine->GetPickList()->GetNumberOfItems(), 1);
  EXPECT_NE(mine->GetPickList()->IsItemPresent(this->Widget->TexturePlaneActor), 0);
  this->Widget->SetPicker(mine);
  EXPECT_EQ(mine->GetPickList()->GetNumberOfItems(), 1);
  EXPECT_EQ(mine->GetReferenceCount(), 2);
}

TEST_F(ImagePlanePipeline, WithoutAPickerANewOneIsMade)
{
  vtkNew<vtkCellPicker> mine;
  this->Widget->SetPicker(mine);
  this->Widget->SetPicker(nullptr);
  EXPECT_EQ(mine->GetReferenceCount(), 1);
  vtkAbstractPropPicker* picker = this->Widget->PlanePicker;
  vtkCellPicker* made = vtkCellPicker::SafeDownCast(picker);
  ASSERT_NE(made, nullptr);
  EXPECT_NE(made, mine.Get());
  EXPECT_EQ(made->GetTolerance(), 0.005);
  EXPECT_EQ(made->GetReferenceCount(), 1);
  EXPECT_EQ(made->GetPickFromList(), 1);
  EXPECT_NE(made->GetPickList()->IsItemPresent(this->Widget->TexturePlaneActor), 0);
}

// ---- table, window and level ----

TEST_F(ImagePlanePipeline, InputGivesWindowAndLevel)
{
  this->SetRange(-100.0, 300.0);
  EXPECT_EQ(this->Widget->OriginalWindow, 400.0);
  EXPECT_EQ(this->Widget->OriginalLevel, 100.0);
  double values[2];
  this->Widget->GetWindowLevel(values);
  EXPECT_EQ(values[0], 400.0);
  EXPECT_EQ(values[1], 100.0);
  this->ExpectTableRange(-100.0, 300.0);
}

TEST_F(ImagePlanePipeline, TinyWindowsAndLevelsAreKeptFromZero)
{
  struct Row
  {
    double Low, High, Window, Level;
  };
  const Row rows[] = { { 5, 5, 0.001, 5 }, { -0.0002, 0.0002, 0.001, 0.001 },
    { -0.0008, 0.0002, 0.001, -0.001 }, { 0, 0, 0.001, 0.001 }, { -1, 1, 2, 0.001 },
    { -0.001, 0.002, 0.003, 0.001 }, { -7, -7, 0.001, -7 } };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(::testing::Message() << row.Low << " to " << row.High);
    this->SetRange(row.Low, row.High);
    EXPECT_NEAR(this->Widget->OriginalWindow, row.Window, 1e-12);
    EXPECT_NEAR(this->Widget->OriginalLevel, row.Level, 1e-12);
    EXPECT_NEAR(this->Widget->CurrentWindow, row.Window, 1e-12);
    this->ExpectTableRange(row.Level - 0.5 * row.Window, row.Level + 0.5 * row.Window);
  }
}

TEST_F(ImagePlanePipeline, WindowAndLevelSetTheTablesRange)
{
  this->SetRange(0.0, 100.0);
  this->Widget->SetWindowLevel(40.0, 30.0);
  this->ExpectTableRange(10.0, 50.0);
  EXPECT_EQ(this->Widget->CurrentWindow, 40.0);
  EXPECT_EQ(this->Widget->CurrentLevel, 30.0);
  EXPECT_EQ(this->Widget->OriginalWindow, 100.0);
}

TEST_F(ImagePlanePipeline, ANegativeWindowInvertsTheTableOnce)
{
  const double first = this->TableGrey(0), last = this->TableGrey(255);
  this->Widget->SetWindowLevel(-1.0, 0.5);
  EXPECT_EQ(this->TableGrey(0), last);
  EXPECT_EQ(this->TableGrey(255), first);
  this->ExpectTableRange(0.0, 1.0);
  const vtkMTimeType before = this->Widget->LookupTable->GetMTime();
  this->Widget->SetWindowLevel(-1.0, 0.5);
  EXPECT_EQ(this->TableGrey(0), last);
  EXPECT_EQ(this->Widget->LookupTable->GetMTime(), before);
  this->Widget->SetWindowLevel(-3.0, 0.5);
  EXPECT_EQ(this->TableGrey(0), last);
  this->ExpectTableRange(-1.0, 2.0);
  this->Widget->SetWindowLevel(0.0, 0.5);
  EXPECT_EQ(this->TableGrey(0), last) << "zero has no sign";
  this->Widget->SetWindowLevel(2.0, 0.5);
  EXPECT_EQ(this->TableGrey(0), last) << "nor has zero to anything";
}

TEST_F(ImagePlanePipeline, APositiveWindowAfterANegativeOneInvertsBack)
{
  const double first = this->TableGrey(0);
  this->Widget->SetWindowLevel(-1.0, 0.5);
  this->Widget->SetWindowLevel(2.0, 0.5);
  EXPECT_EQ(this->TableGrey(0), first);
}

TEST_F(ImagePlanePipeline, CopyingWindowAndLevelTouchesNothingElse)
{
  this->SetRange(0.0, 100.0);
  const vtkMTimeType before = this->Widget->LookupTable->GetMTime();
  this->Widget->SetWindowLevel(-40.0, 30.0, 1);
  EXPECT_EQ(this->Widget->CurrentWindow, -40.0);
  EXPECT_EQ(this->Widget->CurrentLevel, 30.0);
  EXPECT_EQ(this->Widget->LookupTable->GetMTime(), before);
  this->ExpectTableRange(0.0, 100.0);
}

TEST_F(ImagePlanePipeline, InvertingReversesEveryEntryAndStays)
{
  vtkNew<vtkLookupTable> table;
  table->SetNumberOfTableValues(3);
  table->Build();
  table->SetTableValue(0, 1.0, 0.0, 0.0, 0.2);
  table->SetTableValue(1, 0.0, 1.0, 0.0, 0.4);
  table->SetTableValue(2, 0.0, 0.0, 1.0, 0.6);
  this->Widget->SetLookupTable(table);
  const vtkMTimeType before = table->GetMTime();
  this->Widget->InvertTable();
  EXPECT_GT(table->GetMTime(), before);
  table->Build();
  EXPECT_TRUE(IsPoint(table->GetTableValue(0), 0, 0, 1));
  EXPECT_NEAR(table->GetTableValue(0)[3], 0.6, 1e-9);
  EXPECT_TRUE(IsPoint(table->GetTableValue(1), 0, 1, 0));
  EXPECT_TRUE(IsPoint(table->GetTableValue(2), 1, 0, 0));
  EXPECT_NEAR(table->GetTableValue(2)[3], 0.2, 1e-9);
}

TEST_F(ImagePlanePipeline, AUserControlledTableIsLeftAlone)
{
  vtkNew<vtkLookupTable> table;
  table->SetTableRange(3.0, 4.0);
  table->Build();
  this->Widget->UserControlledLookupTableOn();
  this->Widget->SetLookupTable(table);
  this->SetRange(0.0, 100.0);
  const double first = this->TableGrey(0);
  this->Widget->SetWindowLevel(-40.0, 30.0);
  EXPECT_EQ(this->Widget->CurrentWindow, -40.0);
  EXPECT_EQ(this->Widget->CurrentLevel, 30.0);
  EXPECT_EQ(this->Widget->OriginalWindow, 100.0);
  EXPECT_EQ(this->TableGrey(0), first);
  this->ExpectTableRange(3.0, 4.0);
}

TEST_F(ImagePlanePipeline, ANewTableTakesTheImagesRange)
{
  this->SetRange(0.0, 100.0);
  this->Widget->SetWindowLevel(40.0, 30.0);
  vtkNew<vtkLookupTable> table;
  this->Widget->SetLookupTable(table);
  EXPECT_EQ(this->Widget->GetLookupTable(), table.Get());
  EXPECT_EQ(this->Widget->ColorMap->GetLookupTable(), table.Get());
  EXPECT_EQ(this->Widget->Texture->GetLookupTable(), table.Get());
  this->ExpectTableRange(0.0, 100.0);
  EXPECT_EQ(this->Widget->CurrentWindow, 100.0);
  EXPECT_EQ(this->Widget->CurrentLevel, 50.0);
}

TEST_F(ImagePlanePipeline, TheSameTableAgainResetsTheRange)
{
  this->SetRange(0.0, 100.0);
  this->Widget->SetWindowLevel(40.0, 30.0);
  this->Widget->SetLookupTable(this->Widget->GetLookupTable());
  this->ExpectTableRange(0.0, 100.0);
  EXPECT_EQ(this->Widget->CurrentWindow, 100.0);
}

TEST_F(ImagePlanePipeline, ATableIsHeldAndNoTableMeansTheDefaultOne)
{
  vtkNew<vtkLookupTable> table;
  this->Widget->SetLookupTable(table);
  EXPECT_GT(table->GetReferenceCount(), 1);
  this->Widget->SetLookupTable(nullptr);
  EXPECT_EQ(table->GetReferenceCount(), 1);
  ASSERT_NE(this->Widget->GetLookupTable(), nullptr);
  EXPECT_EQ(this->Widget->GetLookupTable()->GetSaturationRange()[1], 0.0);
  EXPECT_EQ(this->Widget->GetLookupTable()->GetNumberOfTableValues(), 256);
  EXPECT_EQ(this->Widget->ColorMap->GetLookupTable(), this->Widget->GetLookupTable());
}

TEST_F(ImagePlanePipeline, ATableSurvivesItsWidget)
{
  vtkNew<vtkLookupTable> table;
  this->Widget->SetLookupTable(table);
  this->Widget.reset();
  EXPECT_EQ(table->GetReferenceCount(), 1);
}

TEST_F(ImagePlanePipeline, ResliceInterpolationIsAppliedAndStoredAsGiven)
{
  this->SetVolume(this->Cube(3));
  EXPECT_EQ(this->Widget->Reslice->GetInterpolationMode(), VTK_RESLICE_LINEAR);
  this->Widget->SetResliceInterpolate(0);
  EXPECT_EQ(this->Widget->Reslice->GetInterpolationMode(), VTK_RESLICE_NEAREST);
  this->Widget->SetResliceInterpolate(7);
  EXPECT_EQ(this->Widget->Reslice->GetInterpolationMode(), VTK_RESLICE_CUBIC);
  EXPECT_EQ(this->Widget->GetResliceInterpolate(), 7);
  this->Widget->SetResliceInterpolate(1);
  EXPECT_EQ(this->Widget->Reslice->GetInterpolationMode(), VTK_RESLICE_LINEAR);
}

TEST_F(ImagePlanePipeline, ResliceInterpolationAppliesThatOfTheTexture)
{
  this->Widget->TextureInterpolateOff();
  EXPECT_EQ(this->Widget->Texture->GetInterpolate(), 1);
  this->Widget->SetResliceInterpolate(0);
  EXPECT_EQ(this->Widget->Texture->GetInterpolate(), 0);
}

TEST_F(ImagePlanePipeline, InputAppliesBothInterpolations)
{
  this->Widget->SetResliceInterpolate(2);
  this->Widget->TextureInterpolateOff();
  const vtkMTimeType before = this->Widget->GetMTime();
  this->SetVolume(this->Cube(3));
  EXPECT_EQ(this->Widget->Reslice->GetInterpolationMode(), VTK_RESLICE_CUBIC);
  EXPECT_EQ(this->Widget->GetResliceInterpolate(), 2);
  EXPECT_EQ(this->Widget->Texture->GetInterpolate(), 0);
  EXPECT_GT(this->Widget->GetMTime(), before);
}

// ---- input ----

TEST_F(ImagePlanePipeline, InputIsClippedWithHalfAUnitOfSlack)
{
  this->SetVolume(zvtest::UnequalVolume()); // -2 to 1.5, 4.5 to 10.75, 10 to 19
  struct Row
  {
    zvtest::World Point, Normal;
  };
  const Row rows[] = { { { { -2.5, 4.5, 10 } }, { { 1, 0, 0 } } },
    { { { 2, 10.75, 19 } }, { { -1, 0, 0 } } }, { { { -2, 4, 10 } }, { { 0, 1, 0 } } },
    { { { 1.5, 11.25, 19 } }, { { 0, -1, 0 } } }, { { { -2, 4.5, 9.5 } }, { { 0, 0, 1 } } },
    { { { 1.5, 10.75, 19.5 } }, { { 0, 0, -1 } } } };
  ASSERT_NE(this->Widget->TexturePlaneActor->GetMapper(), nullptr);
  vtkPlaneCollection* planes = this->Widget->TexturePlaneActor->GetMapper()->GetClippingPlanes();
  ASSERT_NE(planes, nullptr);
  ASSERT_EQ(planes->GetNumberOfItems(), 6);
  for (int i = 0; i < 6; ++i)
  {
    SCOPED_TRACE(i);
    const Row& row = rows[i];
    vtkPlane* plane = planes->GetItem(i);
    EXPECT_TRUE(IsPoint(plane->GetOrigin(), row.Point[0], row.Point[1], row.Point[2], 1e-5));
    EXPECT_TRUE(IsPoint(plane->GetNormal(), row.Normal[0], row.Normal[1], row.Normal[2]));
  }
}

TEST_F(ImagePlanePipeline, InputIsCutByItsBox)
{
  this->SetVolume(zvtest::UnequalVolume());
  vtkCutter* cutter = this->Widget->Cutter;
  EXPECT_EQ(cutter->GetCutFunction(), static_cast<vtkPlane*>(this->Widget->CutPlane));
  EXPECT_EQ(cutter->GetInputAlgorithm(), static_cast<vtkCubeSource*>(this->Widget->BoundsCube));
  this->Widget->BoundsCube->Update();
  const double* box = this->Widget->BoundsCube->GetOutput()->GetBounds();
  const double wanted[6] = { -2, 1.5, 4.5, 10.75, 10, 19 };
  for (int i = 0; i < 6; ++i)
  {
    EXPECT_NEAR(box[i], wanted[i], 1e-6);
  }
  ASSERT_NE(this->Widget->CutActor->GetMapper(), nullptr);
  EXPECT_EQ(this->Widget->CutActor->GetMapper()->GetInputAlgorithm(), cutter);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetMapper()->GetInputAlgorithm(),
    static_cast<zvPlaneSource*>(this->Widget->PlaneSource));
}

TEST_F(ImagePlanePipeline, InputDoesNotPlaceThePlane)
{
  double before[3];
  this->Widget->GetPoint1(before);
  this->SetVolume(zvtest::UnequalVolume());
  EXPECT_TRUE(IsPoint(this->Widget->GetPoint1(), before[0], before[1], before[2]));
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 0);
}

TEST_F(ImagePlanePipeline, InputDrivesResliceColoursAndTexture)
{
  this->SetVolume(this->Cube(3));
  OpenImagePlane* w = this->Widget.get();
  EXPECT_EQ(w->ImageData, this->Volume.Get());
  EXPECT_EQ(w->GetInput(), this->Volume.Get());
  EXPECT_EQ(w->Reslice->GetInput(), this->Volume.Get());
  EXPECT_EQ(w->ColorMap->GetInputAlgorithm(), static_cast<vtkImageReslice*>(w->Reslice));
  EXPECT_EQ(w->Texture->GetInputAlgorithm(), static_cast<vtkImageMapToColors*>(w->ColorMap));
  EXPECT_EQ(w->TexturePlaneActor->GetVisibility(), 1);
}

TEST_F(ImagePlanePipeline, AFilterUpstreamDrivesThePlane)
{
  zvtest::VolumeOptions options = this->Cube(5);
  options.ScalarType = VTK_DOUBLE;
  this->Volume = zvtest::MakeIndexVolume(options);
  vtkNew<vtkImageShiftScale> filter;
  filter->SetInputData(this->Volume);
  filter->SetShift(1000.0);
  this->Widget->SetInputConnection(filter->GetOutputPort());
  this->Widget->SetPlaneOrientation(2);
  EXPECT_EQ(this->Widget->ImageData, filter->GetOutput());
  EXPECT_EQ(this->Widget->OriginalLevel, 1000.0 + 0.5 * 40404.0);
  EXPECT_EQ(this->UpdatedReslice()->GetScalarComponentAsDouble(0, 0, 0, 0), 41000.0);
  filter->SetShift(5.0);
  EXPECT_EQ(this->UpdatedReslice()->GetScalarComponentAsDouble(0, 0, 0, 0), 40005.0);
}

TEST_F(ImagePlanePipeline, AFilterIsBroughtUpToDateWhenConnected)
{
  this->Volume = zvtest::MakeIndexVolume(this->Cube(5));
  vtkNew<vtkImageShiftScale> filter;
  filter->SetInputData(this->Volume);
  this->Widget->SetInputConnection(filter->GetOutputPort());
  EXPECT_EQ(filter->GetOutput()->GetDimensions()[0], 5);
  EXPECT_EQ(this->Widget->BoundsCube->GetXLength(), 4.0);
}

TEST_F(ImagePlanePipeline, ASecondInputReplacesTheFirst)
{
  this->Place(this->Cube(5), 2);
  vtkSmartPointer<vtkImageData> first = this->Volume;
  this->Place(this->Cube(9), 2);
  EXPECT_EQ(this->Widget->ImageData, this->Volume.Get());
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 9);
  EXPECT_EQ(this->Widget->BoundsCube->GetXLength(), 8.0);
  EXPECT_EQ(first->GetReferenceCount(), 1);
}

TEST_F(ImagePlanePipeline, AnImageSurvivesItsWidget)
{
  this->Place(this->Cube(5), 2);
  this->Widget.reset();
  EXPECT_EQ(this->Volume->GetReferenceCount(), 1);
}

TEST_F(ImagePlanePipeline, NoInputDetaches)
{
  this->Place(this->Cube(5), 2);
  this->Widget->SetInput(nullptr);
  EXPECT_EQ(this->Widget->ImageData, nullptr);
  EXPECT_EQ(this->Widget->Reslice->GetInput(), nullptr);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 0);
  this->SetVolume(this->Cube(5));
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 1);
  this->Widget->SetInputConnection(nullptr);
  EXPECT_EQ(this->Widget->ImageData, nullptr);
  EXPECT_EQ(this->Widget->Reslice->GetInput(), nullptr);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 0);
  EXPECT_EQ(this->Volume->GetReferenceCount(), 1);
}

TEST_F(ImagePlanePipeline, WhatIsNotAnImageDetaches)
{
  this->Place(this->Cube(5), 2);
  vtkNew<vtkPolyData> mesh;
  this->Widget->SetInput(mesh);
  EXPECT_EQ(this->Widget->ImageData, nullptr);
  EXPECT_EQ(this->Widget->Reslice->GetInput(), nullptr);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 0);
  this->SetVolume(this->Cube(5));
  vtkNew<vtkSphereSource> sphere;
  this->Widget->SetInputConnection(sphere->GetOutputPort());
  EXPECT_EQ(this->Widget->ImageData, nullptr);
  EXPECT_EQ(this->Widget->Reslice->GetInput(), nullptr);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 0);
}

TEST_F(ImagePlanePipeline, BeforeAnyInputTheTextureIsInvisible)
{
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 0);
  this->Widget->UpdatePlane();
  EXPECT_EQ(this->Widget->ImageData, nullptr);
}

namespace
{
const char* const TurnedText =
  "The image's direction matrix is not the identity, so the image is not shown. Reorient it first: "
  "permute and flip its axes exactly, or resample it.";
}

TEST_F(ImagePlanePipeline, ATurnedImageIsRefusedWithAnError)
{
  this->Place(this->Cube(5), 2);
  this->SetVolume(zvtest::TurnedVolume());
  this->ExpectVtkError(
    "zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(), TurnedText);
  EXPECT_EQ(this->Widget->ImageData, nullptr);
  EXPECT_EQ(this->Widget->Reslice->GetInput(), nullptr);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 0);
  EXPECT_EQ(this->Volume->GetReferenceCount(), 1);
}

TEST_F(ImagePlanePipeline, ATurnedImageOfAFilterIsRefusedWithAnError)
{
  this->Volume = zvtest::MakeIndexVolume(zvtest::TurnedVolume());
  vtkNew<vtkTrivialProducer> filter; // most others drop the direction
  filter->SetOutput(this->Volume);
  this->Widget->SetInputConnection(filter->GetOutputPort());
  this->ExpectVtkError(
    "zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(), TurnedText);
  EXPECT_EQ(this->Widget->ImageData, nullptr);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 0);
}

TEST_F(ImagePlanePipeline, AnImageTurnedAfterwardsIsRefusedAtTheNextUpdate)
{
  this->Place(this->Cube(5), 2);
  this->Volume->SetDirectionMatrix(0, -1, 0, 1, 0, 0, 0, 0, 1);
  this->Refresh();
  this->ExpectVtkError(
    "zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(), TurnedText);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetVisibility(), 0);
}

TEST_F(ImagePlanePipeline, WindowAndLevelThatAreNoNumbersAreRefused)
{
  for (double bad : { std::nan(""), HUGE_VAL, -HUGE_VAL })
  {
    this->Widget->SetWindowLevel(bad, 1.0);
    this->ExpectGenericWarning("zvImagePlaneWidget", "window and level must be finite numbers");
    this->Widget->SetWindowLevel(1.0, bad);
    this->ExpectGenericWarning("zvImagePlaneWidget", "window and level must be finite numbers");
  }
  EXPECT_EQ(this->Widget->CurrentWindow, 1.0);
  EXPECT_EQ(this->Widget->CurrentLevel, 0.5);
}

// ---- update of the plane ----

TEST_F(ImagePlanePipeline, TheResliceIsAPowerOfTwoOverThePlane)
{
  struct Row
  {
    int Orientation;
    std::array<int, 2> Size;
    std::array<double, 2> Spacing;
    zvtest::World X, Y, Z, Origin;
  };
  const zvtest::World x{ { 1, 0, 0 } }, y{ { 0, 1, 0 } }, z{ { 0, 0, 1 } };
  const Row rows[] = {
    { 2, { { 8, 8 } }, { { 3.5 / 8, 6.25 / 8 } }, x, y, z, { { -2, 4.5, 19 } } },
    { 0, { { 8, 4 } }, { { 6.25 / 8, 9.0 / 4 } }, y, z, x, { { 1.5, 4.5, 10 } } },
    { 1, { { 4, 8 } }, { { 9.0 / 4, 3.5 / 8 } }, z, x, y, { { -2, 10.75, 10 } } },
  };
  this->SetVolume(zvtest::UnequalVolume());
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Orientation);
    this->Widget->SetPlaneOrientation(row.Orientation);
    this->ExpectResliceGeometry(row.Size, row.Spacing);
    this->ExpectAxes(row.X, row.Y, row.Z, row.Origin);
    EXPECT_TRUE(
      IsPoint(this->Widget->CutPlane->GetOrigin(), this->Widget->PlaneSource->GetCenter()[0],
        this->Widget->PlaneSource->GetCenter()[1], this->Widget->PlaneSource->GetCenter()[2]));
    EXPECT_TRUE(IsPoint(this->Widget->CutPlane->GetNormal(), row.Z[0], row.Z[1], row.Z[2]));
    EXPECT_EQ(this->Widget->Reslice->GetResliceAxes(),
      static_cast<vtkMatrix4x4*>(this->Widget->ResliceAxes));
  }
}

TEST_F(ImagePlanePipeline, AnExactPowerOfTwoIsNotRoundedUp)
{
  zvtest::VolumeOptions options = this->Cube(5);
  options.Dimensions[1] = 6;
  this->Place(options, 2); // 4 by 5 steps
  this->ExpectResliceGeometry({ { 4, 8 } }, { { 1.0, 5.0 / 8 } });
}

TEST_F(ImagePlanePipeline, AnObliquePlaneIsSampledByTheSpacingAlongIt)
{
  this->Place(zvtest::UnequalVolume(), 2);
  // Along x and y by 3 and 4 fifths: |0.6 * 0.5| + |0.8 * 1.25| = 1.3 a step, 5 / 1.3 = 3.8
  this->Widget->SetOrigin(-1.0, 5.0, 14.5);
  this->Widget->SetPoint1(2.0, 9.0, 14.5);
  this->Widget->SetPoint2(-1.0, 5.0, 20.5);
  this->Widget->UpdatePlane();
  this->ExpectResliceGeometry({ { 4, 2 } }, { { 5.0 / 4, 3.0 } });
}

TEST_F(ImagePlanePipeline, NegativeSpacingCountsByItsSize)
{
  this->Place(zvtest::NegativeSpacingVolume({ 0, 1, 2 }), 2);
  this->ExpectResliceGeometry({ { 8, 8 } }, { { 3.5 / 8, 6.25 / 8 } });
}

TEST_F(ImagePlanePipeline, WithoutAChangeThePlaneIsUpdatedOnce)
{
  this->Place(this->Cube(5), 2);
  this->Refresh();
  this->Widget->Reslice->SetOutputSpacing(9, 9, 9);
  this->Widget->UpdatePlane();
  EXPECT_EQ(this->Widget->Reslice->GetOutputSpacing()[0], 9.0);
  this->Refresh();
  EXPECT_EQ(this->Widget->Reslice->GetOutputSpacing()[0], 1.0);
}

TEST_F(ImagePlanePipeline, EveryUpdateCentresThePlaneOnItsCut)
{
  this->SetVolume(this->Cube(11));
  for (int orientation : { 0, 1, 2 })
  {
    SCOPED_TRACE(orientation);
    this->Widget->SetPlaneOrientation(orientation);
    this->Widget->SetSliceIndex(4);
    double off[3] = { 7, 2, 8 };
    off[orientation] = 4;
    this->Widget->PlaneSource->SetCenter(off);
    this->Refresh();
    zvtest::World wanted{ { 5, 5, 5 } };
    wanted[orientation] = 4;
    EXPECT_TRUE(IsPoint(this->Widget->GetCenter(), wanted[0], wanted[1], wanted[2]));
  }
}

TEST_F(ImagePlanePipeline, APlaneOutsideTheBoxKeepsItsCentre)
{
  this->Place(this->Cube(11), 2);
  double off[3] = { 7, 2, 40 };
  this->Widget->PlaneSource->SetCenter(off);
  this->Refresh();
  EXPECT_TRUE(IsPoint(this->Widget->GetCenter(), 7, 2, 40));
  this->ExpectAxes({ { 1, 0, 0 } }, { { 0, 1, 0 } }, { { 0, 0, 1 } }, { { 2, -3, 40 } });
}

TEST_F(ImagePlanePipeline, AnEmptyImageIsAnError)
{
  vtkNew<vtkImageData> empty;
  this->Widget->SetInput(empty);
  this->Widget->UpdatePlane();
  this->ExpectVtkError("zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(),
    "Invalid extent [0, -1, 0, -1, 0, -1]. Perhaps the input data is empty?");
}

TEST_F(ImagePlanePipeline, AnImageEmptyAlongOneAxisIsAnErrorToo)
{
  const char* const extents[3] = { "0, -1, 0, 2, 0, 2", "0, 2, 0, -1, 0, 2", "0, 2, 0, 2, 0, -1" };
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(axis);
    int extent[6] = { 0, 2, 0, 2, 0, 2 };
    extent[2 * axis + 1] = -1;
    vtkNew<vtkImageData> empty;
    empty->SetExtent(extent);
    this->Widget->SetInput(empty);
    this->Widget->UpdatePlane();
    this->ExpectVtkError("zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(),
      std::string("Invalid extent [") + extents[axis] + "]. Perhaps the input data is empty?");
  }
}

TEST_F(ImagePlanePipeline, APlaneTooFineIsAnErrorAndSamplesNothing)
{
  zvtest::VolumeOptions options = this->Cube(3);
  options.Spacing = { { 1e-9, 1.0, 1.0 } };
  this->SetVolume(options);
  this->Widget->SetOrigin(0, 0, 1);
  this->Widget->SetPoint1(2, 0, 1);
  this->Widget->SetPoint2(0, 2, 1);
  this->Widget->UpdatePlane();
  this->ExpectVtkError(
    "zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(), "Invalid X extent: 2e+09");
  int extent[6];
  this->Widget->Reslice->GetOutputExtent(extent);
  EXPECT_EQ(extent[1], -1);
  EXPECT_EQ(extent[3], 1);
  this->Widget->SetOrigin(0, 0, 1); // the update has moved it
  this->Widget->SetPoint1(0, 2, 1);
  this->Widget->SetPoint2(2, 0, 1);
  this->Widget->UpdatePlane();
  this->ExpectVtkError(
    "zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(), "Invalid Y extent: 2e+09");
  this->Widget->Reslice->GetOutputExtent(extent);
  EXPECT_EQ(extent[1], 1);
  EXPECT_EQ(extent[3], -1);
}

TEST_F(ImagePlanePipeline, ASliceSeenEdgeOnHasNoWidthAndSaysSo)
{
  this->SetVolume(zvtest::OneVoxelThickVolume(2));
  this->Widget->SetPlaneOrientation(0); // y by z, which has one voxel
  this->ExpectVtkError("zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(),
    "Invalid Y extent: 2.14748e+09");
  int extent[6];
  this->Widget->Reslice->GetOutputExtent(extent);
  EXPECT_EQ(extent[1], 7);
  EXPECT_EQ(extent[3], -1);
  EXPECT_EQ(this->Widget->Reslice->GetOutputSpacing()[1], 1.0);
}

TEST_F(ImagePlanePipeline, TheImageIsThatOfTheResliceWheneverItIsNeeded)
{
  OpenImagePlane* w = this->Widget.get();
  using Use = std::function<void()>;
  const std::pair<const char*, Use> uses[] = {
    { "UpdatePlane", [&] { this->Refresh(); } },
    { "GetSliceIndex", [&] { EXPECT_EQ(w->GetSliceIndex(), 0); } },
    { "SetSliceIndex", [&] { w->SetSliceIndex(2); } },
    { "UpdateCursor", [&] { w->UpdateCursor(1, 1); } },
  };
  for (const auto& use : uses)
  {
    SCOPED_TRACE(use.first);
    this->Place(this->Cube(5), 2);
    w->Reslice->SetInputData(nullptr);
    use.second();
    EXPECT_EQ(w->ImageData, nullptr);
    EXPECT_TRUE(this->PlaneIs({ { 0, 0, 4 } }, { { 4, 0, 4 } }, { { 0, 4, 4 } }));
  }
  this->Place(this->Cube(5), 2);
  vtkSmartPointer<vtkImageData> other = zvtest::MakeIndexVolume(this->Cube(5));
  w->Reslice->SetInputData(other);
  EXPECT_EQ(w->GetSliceIndex(), 4);
  EXPECT_EQ(w->ImageData, other.Get());
}

TEST_F(ImagePlanePipeline, TheOutlineFollowsThePlane)
{
  this->Place(this->Cube(5), 2);
  this->Widget->SetOrigin(1, 2, 3);
  this->Widget->SetPoint1(4, 2, 3);
  this->Widget->SetPoint2(1, 7, 3);
  vtkPolyData* outline = this->Widget->PlaneOutlinePolyData;
  const vtkMTimeType before = outline->GetMTime(), points = outline->GetPoints()->GetMTime();
  this->Widget->BuildRepresentation();
  EXPECT_TRUE(IsPoint(outline->GetPoint(0), 1, 2, 3));
  EXPECT_TRUE(IsPoint(outline->GetPoint(1), 4, 2, 3));
  EXPECT_TRUE(IsPoint(outline->GetPoint(2), 4, 7, 3));
  EXPECT_TRUE(IsPoint(outline->GetPoint(3), 1, 7, 3));
  EXPECT_GT(outline->GetMTime(), before);
  EXPECT_GT(outline->GetPoints()->GetMTime(), points);
}

// ---- what is sampled ----

namespace
{
bool HasSixtyFourBits(int type)
{
  return type == VTK_LONG || type == VTK_UNSIGNED_LONG || type == VTK_LONG_LONG ||
    type == VTK_UNSIGNED_LONG_LONG;
}

class ImagePlaneTypes
  : public ImagePlaneTest
  , public ::testing::WithParamInterface<int>
{
};
}

TEST_P(ImagePlaneTypes, TheSlicesVoxelsAreSampled)
{
  const int type = this->GetParam();
  this->SetVolume(zvtest::VolumeOfType(type)); // 5 by 4 by 3, unit steps
  for (int interpolation : { 0, 1, 2 })
  {
    this->Widget->SetResliceInterpolate(interpolation);
    this->Widget->SetPlaneOrientation(2);
    for (int index = 2; index >= 0; --index)
    {
      SCOPED_TRACE(::testing::Message() << "interpolation " << interpolation << " at " << index);
      this->Widget->SetSliceIndex(index);
      vtkImageData* output = this->Widget->GetResliceOutput();
      if (!HasSixtyFourBits(type)) // which the toolkit cannot sample as they are
      {
        EXPECT_EQ(output->GetScalarType(), type);
      }
      ASSERT_EQ(output->GetDimensions()[0], 4);
      ASSERT_EQ(output->GetDimensions()[1], 4);
      for (int b = 0; b < 4; ++b)
      {
        for (int a = 0; a < 4; ++a)
        {
          EXPECT_EQ(output->GetScalarComponentAsDouble(a, b, 0, 0),
            zvtest::IndexValue(this->Volume, { { a, b, index } }));
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Types, ImagePlaneTypes, ::testing::ValuesIn(zvtest::AllScalarTypes()),
  [](const ::testing::TestParamInfo<int>& type)
  { return std::string(zvtest::ScalarTypeName(type.param)); });

TEST_F(ImagePlanePipeline, EachOrientationSamplesItsOwnAxes)
{
  this->Place(zvtest::VolumeOfType(VTK_INT), 0);
  this->Widget->SetSliceIndex(3);
  vtkImageData* output = this->Widget->GetResliceOutput();
  ASSERT_EQ(output->GetDimensions()[0], 4);
  ASSERT_EQ(output->GetDimensions()[1], 2);
  for (int b = 0; b < 2; ++b)
  {
    for (int a = 0; a < 4; ++a)
    {
      EXPECT_EQ(output->GetScalarComponentAsDouble(a, b, 0, 0), 3 + 100 * a + 10000 * b);
    }
  }
  this->Widget->SetPlaneOrientation(1);
  this->Widget->SetSliceIndex(1);
  output = this->Widget->GetResliceOutput();
  ASSERT_EQ(output->GetDimensions()[0], 2);
  ASSERT_EQ(output->GetDimensions()[1], 4);
  for (int b = 0; b < 4; ++b)
  {
    for (int a = 0; a < 2; ++a)
    {
      EXPECT_EQ(output->GetScalarComponentAsDouble(a, b, 0, 0), b + 100 * 1 + 10000 * a);
    }
  }
}

TEST_F(ImagePlanePipeline, ResliceOutputIsSampledAtTheImagesSpacing)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Widget->SetSliceIndex(1);
  vtkImageData* output = this->Widget->GetResliceOutput();
  EXPECT_TRUE(IsPoint(this->Widget->Reslice->GetOutputSpacing(), 0.5, 1.25, 1.0));
  EXPECT_TRUE(IsPoint(this->Widget->Reslice->GetOutputOrigin(), 0, 0, 0));
  for (int b = 0; b < 6; ++b)
  {
    for (int a = 0; a < 8; ++a)
    {
      EXPECT_EQ(output->GetScalarComponentAsDouble(a, b, 0, 0), a + 100 * b + 10000);
    }
  }
  EXPECT_EQ(output->GetScalarComponentAsDouble(0, 7, 0, 0), 0.0) << "past the image";
  this->Widget->UpdatePlane();
  EXPECT_EQ(this->Widget->Reslice->GetOutputSpacing()[0], 0.5) << "until the next full update";
  this->Refresh();
  EXPECT_EQ(this->Widget->Reslice->GetOutputSpacing()[0], 3.5 / 8);
}

namespace
{
struct ShapeRow
{
  const char* Name;
  zvtest::VolumeOptions Options;
  double First[3]; // the steps, from the extent's minimum, at which a plane starts
  double Step[3];  // and the sign with which it goes on
};
std::ostream& operator<<(std::ostream& os, const ShapeRow& row)
{
  return os << row.Name;
}

class ImagePlaneShapes
  : public ImagePlaneTest
  , public ::testing::WithParamInterface<ShapeRow>
{
};
}

TEST_P(ImagePlaneShapes, ThePlaneSamplesWhatLiesInIt)
{
  const ShapeRow& shape = this->GetParam();
  zvtest::VolumeOptions options = shape.Options;
  options.ScalarType = VTK_DOUBLE; // so that interpolated values are exact
  this->SetVolume(options);
  const double step[3] = { 1, 100, 10000 };
  const int steps[3] = { 7, 5, 3 };
  for (int orientation = 0; orientation < 3; ++orientation)
  {
    SCOPED_TRACE(orientation);
    this->Widget->SetPlaneOrientation(orientation);
    const int u = (orientation + 1) % 3, v = (orientation + 2) % 3;
    // The plane lies at the upper bound of its own axis.
    const double across = shape.Step[orientation] > 0 ? steps[orientation] : 0;
    this->Widget->Reslice->Update();
    vtkImageData* output = this->Widget->Reslice->GetOutput();
    const int* size = output->GetDimensions();
    for (int b = 0; b < size[1]; ++b)
    {
      for (int a = 0; a < size[0]; ++a)
      {
        const double at[2] = { double(a) * steps[u] / size[0], double(b) * steps[v] / size[1] };
        const double wanted = step[orientation] * across +
          step[u] * (shape.First[u] + shape.Step[u] * at[0]) +
          step[v] * (shape.First[v] + shape.Step[v] * at[1]);
        EXPECT_NEAR(output->GetScalarComponentAsDouble(a, b, 0, 0), wanted, 1e-6) << a << ", " << b;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, ImagePlaneShapes,
  ::testing::Values(ShapeRow{ "Unequal", zvtest::UnequalVolume(), { 0, 0, 0 }, { 1, 1, 1 } },
    ShapeRow{ "ShiftedExtent", zvtest::ShiftedExtentVolume(), { 0, 0, 0 }, { 1, 1, 1 } },
    ShapeRow{ "NegativeX", zvtest::NegativeSpacingVolume({ 0 }), { 7, 0, 0 }, { -1, 1, 1 } },
    ShapeRow{ "NegativeY", zvtest::NegativeSpacingVolume({ 1 }), { 0, 5, 0 }, { 1, -1, 1 } },
    ShapeRow{ "NegativeZ", zvtest::NegativeSpacingVolume({ 2 }), { 0, 0, 3 }, { 1, 1, -1 } },
    ShapeRow{
      "NegativeAll", zvtest::NegativeSpacingVolume({ 0, 1, 2 }), { 7, 5, 3 }, { -1, -1, -1 } }),
  [](const ::testing::TestParamInfo<ShapeRow>& row) { return std::string(row.param.Name); });

TEST_F(ImagePlanePipeline, ASingleSliceIsSampled)
{
  this->Place(zvtest::OneVoxelThickVolume(2), 2);
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 1);
  vtkImageData* output = this->Widget->GetResliceOutput();
  for (int b = 0; b < 6; ++b)
  {
    for (int a = 0; a < 8; ++a)
    {
      EXPECT_EQ(output->GetScalarComponentAsDouble(a, b, 0, 0), a + 100 * b);
    }
  }
}

TEST_F(ImagePlanePipeline, EveryComponentIsSampled)
{
  this->Place(zvtest::MultiComponentVolume(3), 2);
  vtkImageData* output = this->Widget->GetResliceOutput();
  ASSERT_EQ(output->GetNumberOfScalarComponents(), 3);
  EXPECT_EQ(output->GetScalarComponentAsDouble(2, 1, 0, 2), 2030102.0);
}

TEST_F(ImagePlanePipeline, AnObliquePlaneSamplesBetweenTheVoxels)
{
  zvtest::VolumeOptions options = this->Cube(9);
  options.ScalarType = VTK_DOUBLE;
  this->Place(options, 2);
  // From the x axis up to the opposite face: a length of 10 with steps of 0.6 + 0.8.
  this->Widget->SetOrigin(0, 0, 0);
  this->Widget->SetPoint1(8, 0, 0);
  this->Widget->SetPoint2(0, 6, 8);
  this->Widget->UpdatePlane();
  vtkImageData* output = this->UpdatedReslice();
  const int* size = output->GetDimensions();
  EXPECT_EQ(size[0], 8);
  EXPECT_EQ(size[1], 8); // of 1.25 each
  for (int b = 0; b < size[1]; ++b)
  {
    for (int a = 0; a < size[0]; ++a)
    {
      EXPECT_NEAR(output->GetScalarComponentAsDouble(a, b, 0, 0), a + 10075.0 * b, 1e-6);
    }
  }
}

TEST_F(ImagePlanePipeline, NearestSamplingTakesTheVoxelItself)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Widget->SetResliceInterpolate(0);
  vtkImageData* output = this->UpdatedReslice(); // at multiples of 0.875 and 0.625 steps
  EXPECT_EQ(output->GetScalarComponentAsDouble(1, 1, 0, 0), 30101.0);
  EXPECT_EQ(output->GetScalarComponentAsDouble(3, 2, 0, 0), 30103.0);
}

TEST_F(ImagePlanePipeline, ColoursAreThoseOfTheWindow)
{
  zvtest::VolumeOptions options = this->Cube(5);
  options.ScalarType = VTK_UNSIGNED_CHAR;
  this->Volume =
    zvtest::MakeVolume(options, [](int i, int, int, int) { return i < 2 ? 50.0 : 200.0; });
  this->Widget->SetInput(this->Volume);
  this->Widget->SetPlaneOrientation(2);
  this->Widget->SetWindowLevel(255.0, 127.5);
  this->Widget->ColorMap->Update();
  vtkImageData* colors = this->Widget->ColorMap->GetOutput();
  ASSERT_EQ(colors->GetNumberOfScalarComponents(), 4);
  EXPECT_NEAR(colors->GetScalarComponentAsDouble(0, 0, 0, 0), ShadeOfEntry(50), 1.0);
  EXPECT_NEAR(colors->GetScalarComponentAsDouble(3, 0, 0, 1), ShadeOfEntry(200), 1.0);
  EXPECT_EQ(colors->GetScalarComponentAsDouble(3, 0, 0, 3), 255.0);
}

// ---- print ----

namespace
{
std::string Printed(vtkObject* object, vtkIndent indent)
{
  std::ostringstream text;
  object->PrintSelf(text, indent);
  return text.str();
}
}

TEST_F(ImagePlanePipeline, PrintsEveryField)
{
  OpenImagePlane* w = this->Widget.get();
  this->Place(zvtest::UnequalVolume(), 2);
  w->SetMarginSizeX(0.25);
  w->SetLeftButtonAction(1);
  w->SetMiddleButtonAction(2);
  w->SetRightButtonAction(0);
  w->SetLeftButtonAutoModifier(1);
  w->SetRightButtonAutoModifier(2);
  w->CurrentCursorPosition[1] = 2.5;
  vtkIndent indent(4);
  const vtkIndent next = indent.GetNextIndent();
  std::ostringstream actual, wanted;
  w->PrintSelf(actual, indent);
  w->vtk3DWidget::PrintSelf(wanted, indent);
  wanted << "    Plane Property:\n" << Printed(w->GetPlaneProperty(), next);
  wanted << "    Selected Plane Property:\n" << Printed(w->GetSelectedPlaneProperty(), next);
  wanted << "    LookupTable:\n" << Printed(w->GetLookupTable(), next);
  wanted << "    Cursor Property:\n" << Printed(w->GetCursorProperty(), next);
  wanted << "    Margin Property:\n" << Printed(w->GetMarginProperty(), next);
  wanted << "    TexturePlane Property:\n" << Printed(w->GetTexturePlaneProperty(), next);
  wanted << "    ColorMap:\n" << Printed(w->GetColorMap(), next);
  wanted << "    Origin: (-2, 4.5, 19)\n"
            "    Point 1: (1.5, 4.5, 19)\n"
            "    Point 2: (-2, 10.75, 19)\n"
            "    Current Cursor Position: (0, 2.5, 0)\n"
            "    Current Image Value: 1e+299\n"
            "    Plane Orientation: 2\n"
            "    Reslice Interpolate: 1\n"
            "    Texture Interpolate: On\n"
            "    Texture Visibility: On\n"
            "    Restrict Plane To Volume: On\n"
            "    Display Text: Off\n"
            "    Interaction: On\n"
            "    User Controlled Lookup Table: Off\n"
            "    LeftButtonAction: 1\n"
            "    MiddleButtonAction: 2\n"
            "    RightButtonAction: 0\n"
            "    LeftButtonAutoModifier: 1\n"
            "    MiddleButtonAutoModifier: 0\n"
            "    RightButtonAutoModifier: 2\n"
            "    UseContinuousCursor: Off\n"
            "    MarginSizeX: 0.25\n"
            "    MarginSizeY: 0.1\n";
  EXPECT_EQ(actual.str(), wanted.str());
}

TEST_F(ImagePlanePipeline, PrintsWhatIsMissingAndSwitched)
{
  OpenImagePlane* w = this->Widget.get();
  w->SetPlaneProperty(nullptr);
  w->SetSelectedPlaneProperty(nullptr);
  w->SetCursorProperty(nullptr);
  w->SetMarginProperty(nullptr);
  w->SetTexturePlaneProperty(nullptr);
  w->SetColorMap(nullptr);
  auto table = w->LookupTable;
  w->LookupTable = nullptr;
  w->TextureInterpolateOff();
  w->TextureVisibilityOff();
  w->RestrictPlaneToVolumeOff();
  w->DisplayTextOn();
  w->UserControlledLookupTableOn();
  w->UseContinuousCursorOn();
  w->Interaction = 0;
  w->SetOrigin(0, 0, 0);
  w->SetPoint1(1, 0, 0);
  w->SetPoint2(0, 1, 0);
  std::ostringstream actual, wanted;
  w->PrintSelf(actual, vtkIndent());
  w->LookupTable = table;
  w->vtk3DWidget::PrintSelf(wanted, vtkIndent());
  wanted << "Plane Property: (none)\n"
            "Selected Plane Property: (none)\n"
            "LookupTable: (none)\n"
            "Cursor Property: (none)\n"
            "Margin Property: (none)\n"
            "TexturePlane Property: (none)\n"
            "ColorMap: (none)\n"
            "Origin: (0, 0, 0)\n"
            "Point 1: (1, 0, 0)\n"
            "Point 2: (0, 1, 0)\n"
            "Current Cursor Position: (0, 0, 0)\n"
            "Current Image Value: 1e+299\n"
            "Plane Orientation: 0\n"
            "Reslice Interpolate: 1\n"
            "Texture Interpolate: Off\n"
            "Texture Visibility: Off\n"
            "Restrict Plane To Volume: Off\n"
            "Display Text: On\n"
            "Interaction: Off\n"
            "User Controlled Lookup Table: On\n"
            "LeftButtonAction: 0\n"
            "MiddleButtonAction: 1\n"
            "RightButtonAction: 2\n"
            "LeftButtonAutoModifier: 0\n"
            "MiddleButtonAutoModifier: 0\n"
            "RightButtonAutoModifier: 0\n"
            "UseContinuousCursor: On\n"
            "MarginSizeX: 0.1\n"
            "MarginSizeY: 0.1\n";
  EXPECT_EQ(actual.str(), wanted.str());
}
