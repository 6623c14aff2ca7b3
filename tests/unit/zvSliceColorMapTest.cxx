// The quick colour map promises the bytes of the stock class. Every test draws many images and
// tables from a fixed seed, runs both classes and compares their outputs.
#include "zvSliceColorMap.h"
#include "zvDice.h"
#include "zvImageBytes.h"
#include "zvTestKit.h"

#include <vtkCallbackCommand.h>
#include <vtkCommand.h>
#include <vtkImageData.h>
#include <vtkImageMapToColors.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace
{
using zvtest::Dice;
using zvtest::HaveSameBytes;

class SliceColorMap : public zvtest::QuietTest
{
};

struct ColorCase
{
  vtkNew<vtkImageData> Image;
  vtkNew<vtkLookupTable> Table;
  int NumberOfThreads = 2;
  bool PassAlpha = true;
  int OutputFormat = VTK_RGBA;
  int ActiveComponent = 0;

  void ApplyTo(vtkImageMapToColors* map) const
  {
    map->SetInputData(this->Image);
    map->SetLookupTable(this->Table);
    map->SetPassAlphaToOutput(this->PassAlpha);
    map->SetOutputFormat(this->OutputFormat);
    map->SetActiveComponent(this->ActiveComponent);
    map->SetNumberOfThreads(this->NumberOfThreads);
  }
};

template <typename T>
void FillScalars(vtkImageData* image, int low, int high, Dice& dice)
{
  T* const values = static_cast<T*>(image->GetScalarPointer());
  const vtkIdType count = image->GetNumberOfPoints() * image->GetNumberOfScalarComponents();
  for (vtkIdType i = 0; i < count; ++i)
  {
    values[i] = static_cast<T>(dice.Int(low, high));
  }
}

void DrawImage(ColorCase& colors, Dice& dice, int type, int components = 1)
{
  const int left = dice.Chance(0.5) ? 0 : dice.Int(-30, 30);
  const int bottom = dice.Chance(0.5) ? 0 : dice.Int(-30, 30);
  const std::vector<int> sizes{ 1, 3, 16, 31, 64 };
  colors.Image->SetExtent(
    left, left + dice.Pick(sizes) - 1, bottom, bottom + dice.Pick(sizes) - 1, 0, dice.Int(0, 1));
  colors.Image->AllocateScalars(type, components);
  const int width = dice.Pick<int>({ 0, 5, 60, 255, 2000, 65535 });
  switch (type)
  {
    case VTK_SHORT:
    {
      const int low = dice.Int(-32768, 32767 - width);
      return FillScalars<short>(colors.Image, low, low + width, dice);
    }
    case VTK_UNSIGNED_CHAR:
    {
      const int low = dice.Int(0, 255 - std::min(width, 255));
      return FillScalars<unsigned char>(colors.Image, low, low + std::min(width, 255), dice);
    }
    case VTK_UNSIGNED_SHORT:
      return FillScalars<unsigned short>(colors.Image, 0, width, dice);
    default:
      return FillScalars<float>(colors.Image, -width, width, dice);
  }
}

void DrawTableRange(ColorCase& colors, Dice& dice)
{
  double range[2];
  colors.Image->GetScalarRange(range);
  const double width = range[1] - range[0];
  const std::vector<double> ends{ range[0], range[0] + 0.25 * width, range[0] - 1.0, range[0] + 0.5,
    0.0, -700.25, dice.Real(-40000.0, 40000.0) };
  const double low = dice.Pick(ends);
  const std::vector<double> widths{ width, 0.0, 1.0, 0.3, 0.5 * width, 3.0 * width, 1e-9 };
  colors.Table->SetTableRange(low, low + dice.Pick(widths));
}

void DrawTable(ColorCase& colors, Dice& dice)
{
  vtkLookupTable* const table = colors.Table;
  table->SetNumberOfColors(dice.Pick<int>({ 1, 2, 3, 17, 256, 256, 1000 }));
  table->SetHueRange(dice.Real(0.0, 1.0), dice.Real(0.0, 1.0));
  table->SetSaturationRange(dice.Chance(0.5) ? 0.0 : 1.0, dice.Real(0.0, 1.0));
  table->SetAlphaRange(dice.Real(0.0, 1.0), dice.Chance(0.5) ? 1.0 : dice.Real(0.0, 1.0));
  table->SetRamp(dice.Int(0, 2));
  DrawTableRange(colors, dice);
  // A logarithmic scale over zero or below would complain.
  const bool positive = table->GetTableRange()[0] > 0.0;
  table->SetScale(positive && dice.Chance(0.5) ? VTK_SCALE_LOG10 : VTK_SCALE_LINEAR);
  table->Build();
  if (dice.Chance(0.3))
  {
    table->SetTableValue(0, 0.1, 0.2, 0.3, dice.Real(0.0, 1.0));
  }
  table->SetAlpha(dice.Chance(0.8) ? 1.0 : dice.Real(0.0, 1.0));
  table->SetUseBelowRangeColor(dice.Chance(0.3));
  table->SetBelowRangeColor(0.9, 0.1, 0.5, dice.Real(0.0, 1.0));
  table->SetUseAboveRangeColor(dice.Chance(0.3));
  table->SetAboveRangeColor(0.2, 0.8, 0.4, dice.Real(0.0, 1.0));
  table->SetNanColor(0.3, 0.6, 0.9, dice.Real(0.0, 1.0));
}

void DrawCase(ColorCase& colors, Dice& dice, int type, int components = 1)
{
  DrawImage(colors, dice, type, components);
  DrawTable(colors, dice);
  colors.NumberOfThreads = dice.Pick<int>({ 1, 2, 4 });
  colors.PassAlpha = dice.Chance(0.8);
}

testing::AssertionResult BothAgreeOn(const ColorCase& colors)
{
  vtkNew<vtkImageMapToColors> stock;
  vtkNew<zvSliceColorMap> quick;
  colors.ApplyTo(stock);
  colors.ApplyTo(quick);
  stock->Update();
  quick->Update();
  return HaveSameBytes(stock->GetOutput(), quick->GetOutput());
}

void CompareMany(int count, unsigned int seed, const std::function<void(ColorCase&, Dice&)>& draw)
{
  for (int i = 0; i < count; ++i)
  {
    Dice dice(seed + i);
    ColorCase colors;
    draw(colors, dice);
    ASSERT_TRUE(BothAgreeOn(colors)) << "with seed " << seed + i;
  }
}

/// A grey table and an image of 64 x 64 with 64 values, which goes through the list of colours.
void MakePlainCase(ColorCase& colors)
{
  colors.Image->SetDimensions(64, 64, 1);
  colors.Image->AllocateScalars(VTK_SHORT, 1);
  Dice dice(7);
  FillScalars<short>(colors.Image, -20, 43, dice);
  colors.Table->SetHueRange(0.0, 0.0);
  colors.Table->SetSaturationRange(0.0, 0.0);
  colors.Table->SetValueRange(0.0, 1.0);
  colors.Table->SetTableRange(-10.0, 30.0);
  colors.Table->Build();
}
}

TEST_F(SliceColorMap, ShortHasTheStockBytes)
{
  CompareMany(4000, 100, [](ColorCase& colors, Dice& dice) { DrawCase(colors, dice, VTK_SHORT); });
}

TEST_F(SliceColorMap, UnsignedCharHasTheStockBytes)
{
  CompareMany(
    3000, 10000, [](ColorCase& colors, Dice& dice) { DrawCase(colors, dice, VTK_UNSIGNED_CHAR); });
}

TEST_F(SliceColorMap, OtherScalarsHaveTheStockBytes)
{
  CompareMany(1000, 20000,
    [](ColorCase& colors, Dice& dice)
    {
      DrawCase(
        colors, dice, dice.Pick<int>({ VTK_UNSIGNED_SHORT, VTK_FLOAT, VTK_SHORT }), dice.Int(1, 4));
      colors.ActiveComponent = dice.Int(0, colors.Image->GetNumberOfScalarComponents() - 1);
    });
}

TEST_F(SliceColorMap, OtherFormatsHaveTheStockBytes)
{
  CompareMany(1000, 30000,
    [](ColorCase& colors, Dice& dice)
    {
      DrawCase(colors, dice, dice.Chance(0.5) ? VTK_SHORT : VTK_UNSIGNED_CHAR);
      colors.OutputFormat =
        dice.Pick<int>({ VTK_LUMINANCE, VTK_LUMINANCE_ALPHA, VTK_RGB, VTK_RGBA });
    });
}

TEST_F(SliceColorMap, ATableOfNamedValuesHasTheStockBytes)
{
  CompareMany(300, 40000,
    [](ColorCase& colors, Dice& dice)
    {
      DrawCase(colors, dice, VTK_SHORT);
      colors.Table->IndexedLookupOn();
      colors.Table->SetAnnotation(vtkVariant(dice.Int(-5, 5)), "named");
    });
}

TEST_F(SliceColorMap, AChangedTableRangeReachesTheOutput)
{
  ColorCase colors;
  MakePlainCase(colors);
  vtkNew<zvSliceColorMap> quick;
  vtkNew<vtkImageMapToColors> stock;
  colors.ApplyTo(quick);
  colors.ApplyTo(stock);
  quick->Update();
  const auto* const bytes =
    static_cast<unsigned char*>(quick->GetOutput()->GetScalarPointer(5, 5, 0));
  const unsigned char before = bytes[0];
  colors.Table->SetTableRange(1000.0, 2000.0);
  quick->Update();
  stock->Update();
  EXPECT_NE(before, 0);
  EXPECT_TRUE(HaveSameBytes(stock->GetOutput(), quick->GetOutput()));
  EXPECT_EQ(*static_cast<unsigned char*>(quick->GetOutput()->GetScalarPointer(5, 5, 0)), 0);
}

TEST_F(SliceColorMap, AChangedTableEntryReachesTheOutput)
{
  ColorCase colors;
  MakePlainCase(colors);
  vtkNew<zvSliceColorMap> quick;
  vtkNew<vtkImageMapToColors> stock;
  colors.ApplyTo(quick);
  colors.ApplyTo(stock);
  quick->Update();
  colors.Table->SetTableValue(0, 1.0, 0.0, 0.0, 0.5);
  quick->Update();
  stock->Update();
  EXPECT_TRUE(HaveSameBytes(stock->GetOutput(), quick->GetOutput()));
}

TEST_F(SliceColorMap, ASeriesOfSlicesAndTablesHasTheStockBytes)
{
  for (const int type : { VTK_SHORT, VTK_UNSIGNED_CHAR })
  {
    Dice dice(50000 + type);
    ColorCase colors;
    DrawCase(colors, dice, type);
    vtkNew<zvSliceColorMap> quick;
    for (int i = 0; i < 2000; ++i)
    {
      colors.Table->SetScaleToLinear(); // a new range may not suit the logarithm
      switch (dice.Int(0, 5))
      {
        case 0:
          DrawTable(colors, dice);
          break;
        case 1:
          DrawTableRange(colors, dice);
          break;
        case 2:
          // Such writing leaves no trace in the table's time.
          colors.Table->Build();
          colors.Table->GetPointer(0)[1] = static_cast<unsigned char>(dice.Int(0, 255));
          break;
        case 3:
          colors.Table->SetAlpha(dice.Real(0.0, 1.0));
          break;
        default:
          break;
      }
      DrawImage(colors, dice, type);
      colors.Image->Modified();
      colors.ApplyTo(quick);
      quick->Update();
      vtkNew<vtkImageMapToColors> stock;
      colors.ApplyTo(stock);
      stock->Update();
      ASSERT_TRUE(HaveSameBytes(stock->GetOutput(), quick->GetOutput())) << "slice " << i;
    }
  }
}

TEST_F(SliceColorMap, AnImageWithoutVoxelsHasNoColours)
{
  for (const int type : { VTK_SHORT, VTK_UNSIGNED_CHAR })
  {
    ColorCase colors;
    colors.Image->SetExtent(0, -1, 0, -1, 0, 0);
    colors.Image->AllocateScalars(type, 1);
    vtkNew<zvSliceColorMap> map;
    colors.ApplyTo(map);
    map->Update();
    EXPECT_EQ(map->GetOutput()->GetNumberOfPoints(), 0);
    // What it did not list does not stand for the colours of the next image.
    colors.Image->SetExtent(0, 9, 0, 9, 0, 0);
    colors.Image->AllocateScalars(type, 1);
    Dice dice(4);
    type == VTK_SHORT ? FillScalars<short>(colors.Image, 0, 9, dice)
                      : FillScalars<unsigned char>(colors.Image, 0, 9, dice);
    vtkNew<vtkImageMapToColors> stock;
    colors.ApplyTo(stock);
    stock->Update();
    map->Update();
    EXPECT_TRUE(HaveSameBytes(stock->GetOutput(), map->GetOutput()));
  }
}

TEST_F(SliceColorMap, WithoutATableBytesArePassedOn)
{
  ColorCase colors;
  colors.Image->SetDimensions(64, 64, 1);
  colors.Image->AllocateScalars(VTK_UNSIGNED_CHAR, 1);
  Dice dice(8);
  FillScalars<unsigned char>(colors.Image, 3, 90, dice);
  vtkNew<zvSliceColorMap> quick;
  quick->SetInputData(colors.Image);
  quick->SetOutputFormatToLuminance();
  quick->SetLookupTable(nullptr);
  quick->Update();
  EXPECT_TRUE(HaveSameBytes(colors.Image, quick->GetOutput()));
}

TEST_F(SliceColorMap, AnObserverOfProgressHearsOfRows)
{
  ColorCase colors;
  MakePlainCase(colors);
  colors.NumberOfThreads = 1;
  const auto countProgress = [&colors](vtkImageMapToColors* map)
  {
    colors.ApplyTo(map);
    int count = 0;
    vtkNew<vtkCallbackCommand> counter;
    counter->SetClientData(&count);
    counter->SetCallback(
      [](vtkObject*, unsigned long, void* client, void*) { ++*static_cast<int*>(client); });
    map->AddObserver(vtkCommand::ProgressEvent, counter);
    map->Update();
    return count;
  };
  vtkNew<zvSliceColorMap> quick;
  vtkNew<vtkImageMapToColors> stock;
  const int expected = countProgress(stock);
  EXPECT_GT(expected, 2);
  EXPECT_EQ(countProgress(quick), expected);
}
