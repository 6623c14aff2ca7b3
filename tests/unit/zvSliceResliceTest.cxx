// The quick reslice promises the bytes of the stock class. Every test draws many set-ups from a
// fixed seed, runs both classes and compares their outputs.
#include "zvSliceReslice.h"
#include "zvDice.h"
#include "zvImageBytes.h"
#include "zvSliceSampling.h"
#include "zvTestKit.h"

#include <vtkCallbackCommand.h>
#include <vtkCommand.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkImageReslice.h>
#include <vtkImageStencilData.h>
#include <vtkMatrix4x4.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkTransform.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace
{
using zvtest::Dice;
using zvtest::HaveSameBytes;

class SliceReslice : public zvtest::QuietTest
{
};

/// Once with the loops that the processor at hand is given, once with those that any can run.
class SliceResliceLoops
  : public SliceReslice
  , public ::testing::WithParamInterface<bool>
{
protected:
  SliceResliceLoops() { zvSliceReslice::AllowWideLoops(this->GetParam()); }
  ~SliceResliceLoops() override { zvSliceReslice::AllowWideLoops(true); }
};

/// Everything that decides a slice.
struct SliceCase
{
  vtkNew<vtkImageData> Volume;
  vtkNew<vtkMatrix4x4> Axes;
  double OutputSpacing[3] = { 1.0, 1.0, 1.0 };
  double OutputOrigin[3] = { 0.0, 0.0, 0.0 };
  int OutputExtent[6] = { 0, 31, 0, 31, 0, 0 };
  int Interpolation = VTK_RESLICE_LINEAR;
  double Background = 0.0;
  int NumberOfThreads = 2;
  std::function<void(vtkImageReslice*)> Special = [](vtkImageReslice*) {};

  void ApplyTo(vtkImageReslice* reslice) const
  {
    reslice->SetInputData(this->Volume);
    reslice->TransformInputSamplingOff();
    reslice->SetResliceAxes(this->Axes);
    reslice->SetOutputSpacing(this->OutputSpacing);
    reslice->SetOutputOrigin(this->OutputOrigin);
    reslice->SetOutputExtent(this->OutputExtent);
    reslice->SetInterpolationMode(this->Interpolation);
    reslice->SetBackgroundLevel(this->Background);
    reslice->SetNumberOfThreads(this->NumberOfThreads);
    this->Special(reslice);
  }
};

template <typename T>
void FillScalars(vtkImageData* image, Dice& dice)
{
  const vtkIdType count = image->GetNumberOfPoints() * image->GetNumberOfScalarComponents();
  T* const values = static_cast<T*>(image->GetScalarPointer());
  const bool extremes = dice.Chance(0.2);
  const int low = std::is_signed<T>::value ? -32768 : 0;
  const int high = sizeof(T) == 1 ? 255 : 32767;
  for (vtkIdType i = 0; i < count; ++i)
  {
    values[i] = static_cast<T>(extremes ? (dice.Chance(0.5) ? low : high) : dice.Int(low, high));
  }
}

void DrawVolume(SliceCase& slice, Dice& dice, int type, int components = 1)
{
  vtkImageData* const volume = slice.Volume;
  int extent[6];
  for (int axis = 0; axis < 3; ++axis)
  {
    const int start =
      dice.Chance(0.9) ? dice.Int(-20, 20) : dice.Pick<int>({ -90000000, -3000, 2500 });
    extent[2 * axis] = dice.Chance(0.5) ? 0 : start;
    extent[2 * axis + 1] = extent[2 * axis] + dice.Pick<int>({ 0, 1, 2, 5, 9, 16, 23, 70 });
  }
  volume->SetExtent(extent);
  const std::vector<double> spacings{ 1.0, 1.0, 0.5, 2.5, 0.7, 0.9765625, -1.0, -0.3 };
  volume->SetSpacing(dice.Pick(spacings), dice.Pick(spacings), dice.Pick(spacings));
  const std::vector<double> origins{ 0.0, 0.0, -12.5, 7.3, 100.25, -0.5 };
  volume->SetOrigin(dice.Pick(origins), dice.Pick(origins), dice.Pick(origins));
  volume->AllocateScalars(type, components);
  switch (type)
  {
    case VTK_UNSIGNED_CHAR:
      return FillScalars<unsigned char>(volume, dice);
    case VTK_SHORT:
      return FillScalars<short>(volume, dice);
    case VTK_UNSIGNED_SHORT:
      return FillScalars<unsigned short>(volume, dice);
    case VTK_INT:
      return FillScalars<int>(volume, dice);
    default:
      return FillScalars<float>(volume, dice);
  }
}

/// Put the origin of the slice somewhere in or near the volume, often on a voxel or halfway.
void DrawOrigin(SliceCase& slice, Dice& dice)
{
  int extent[6];
  slice.Volume->GetExtent(extent);
  for (int axis = 0; axis < 3; ++axis)
  {
    const double from = extent[2 * axis] - 1.0;
    const double to = extent[2 * axis + 1] + 1.0;
    double index = dice.Real(from, to);
    if (dice.Chance(0.6))
    {
      index = std::round(index * 2.0) / 2.0 + dice.Pick<double>({ 0.0, 0.0, 0.25, 1e-6, -7e-6 });
    }
    slice.Axes->SetElement(
      axis, 3, slice.Volume->GetOrigin()[axis] + index * slice.Volume->GetSpacing()[axis]);
  }
}

/// Right, up and normal of the slice run along axes of the volume, either way.
void DrawAlignedAxes(SliceCase& slice, Dice& dice)
{
  std::vector<int> order{ 0, 1, 2 };
  for (int i = 2; i > 0; --i)
  {
    std::swap(order[i], order[dice.Int(0, i)]);
  }
  slice.Axes->Zero();
  slice.Axes->SetElement(3, 3, 1.0);
  for (int column = 0; column < 3; ++column)
  {
    slice.Axes->SetElement(order[column], column, dice.Chance(0.7) ? 1.0 : -1.0);
  }
  DrawOrigin(slice, dice);
}

void DrawObliqueAxes(SliceCase& slice, Dice& dice)
{
  vtkNew<vtkTransform> turn;
  const std::vector<double> angles{ 45.0, 30.0, 90.0, 1e-4, dice.Real(-180.0, 180.0) };
  turn->RotateX(dice.Chance(0.7) ? dice.Pick(angles) : 0.0);
  turn->RotateY(dice.Chance(0.7) ? dice.Pick(angles) : 0.0);
  turn->RotateZ(dice.Chance(0.7) ? dice.Pick(angles) : dice.Real(-180.0, 180.0));
  slice.Axes->DeepCopy(turn->GetMatrix());
  if (dice.Chance(0.1))
  {
    slice.Axes->SetElement(dice.Int(0, 2), dice.Int(0, 1), dice.Real(-1.0, 1.0));
  }
  DrawOrigin(slice, dice);
}

void DrawOutput(SliceCase& slice, Dice& dice)
{
  const std::vector<double> spacings{ 1.0, 0.5, 0.7, 2.0, 0.9765625, 1.00001, 1.000002, 0.999997,
    0.25, 511.0 / 512.0, 3.7, dice.Real(0.05, 3.0) };
  slice.OutputSpacing[0] = dice.Pick(spacings);
  slice.OutputSpacing[1] = dice.Pick(spacings);
  const int depth = dice.Chance(0.8) ? 0 : dice.Int(-3, 3);
  const int left = dice.Chance(0.5) ? 0 : dice.Int(-20, 10);
  const int bottom = dice.Chance(0.5) ? 0 : dice.Int(-20, 10);
  const std::vector<int> sizes{ 1, 2, 7, 16, 31, 32, 64, 150 };
  const int extent[6] = { left, left + dice.Pick(sizes) - 1, bottom, bottom + dice.Pick(sizes) - 1,
    depth, depth };
  std::copy_n(extent, 6, slice.OutputExtent);
  if (dice.Chance(0.3))
  {
    slice.OutputOrigin[0] = dice.Real(-5.0, 5.0);
    slice.OutputOrigin[1] = dice.Pick<double>({ 0.5, -0.25, 3.0 });
    slice.OutputOrigin[2] = dice.Pick<double>({ 0.0, 0.5, 1.3 });
  }
  slice.Background = dice.Pick<double>({ 0.0, 0.0, -1000.0, 77.0, 0.5, -1.5, 40000.0, -1e9 });
  slice.NumberOfThreads = dice.Pick<int>({ 1, 2, 5 });
}

void DescribeTo(std::ostream& os, const SliceCase& slice)
{
  slice.Volume->PrintSelf(os, vtkIndent(2));
  slice.Axes->PrintSelf(os, vtkIndent(2));
  os << "output spacing " << slice.OutputSpacing[0] << ", " << slice.OutputSpacing[1] << " extent "
     << slice.OutputExtent[0] << " " << slice.OutputExtent[1] << " " << slice.OutputExtent[2] << " "
     << slice.OutputExtent[3] << " " << slice.OutputExtent[4] << " background " << slice.Background
     << " interpolation " << slice.Interpolation << "\n";
}

testing::AssertionResult BothAgreeOn(const SliceCase& slice)
{
  vtkNew<vtkImageReslice> stock;
  vtkNew<zvSliceReslice> quick;
  slice.ApplyTo(stock);
  slice.ApplyTo(quick);
  stock->Update();
  quick->Update();
  testing::AssertionResult same = HaveSameBytes(stock->GetOutput(), quick->GetOutput());
  if (!same)
  {
    std::ostringstream description;
    DescribeTo(description, slice);
    same << "\n" << description.str();
  }
  return same;
}

using Draw = std::function<void(SliceCase&, Dice&)>;

/// Draw and compare until one differs.
void CompareMany(int count, unsigned int seed, const Draw& draw)
{
  for (int i = 0; i < count; ++i)
  {
    Dice dice(seed + i);
    SliceCase slice;
    draw(slice, dice);
    ASSERT_TRUE(BothAgreeOn(slice)) << "with seed " << seed + i;
  }
}

int DrawQuickType(Dice& dice)
{
  return dice.Chance(0.6) ? VTK_SHORT : VTK_UNSIGNED_CHAR;
}

void DrawAligned(SliceCase& slice, Dice& dice)
{
  DrawVolume(slice, dice, DrawQuickType(dice));
  DrawAlignedAxes(slice, dice);
  DrawOutput(slice, dice);
}

void DrawOblique(SliceCase& slice, Dice& dice)
{
  DrawVolume(slice, dice, DrawQuickType(dice));
  DrawObliqueAxes(slice, dice);
  DrawOutput(slice, dice);
}

void DrawAny(SliceCase& slice, Dice& dice)
{
  dice.Chance(0.5) ? DrawAligned(slice, dice) : DrawOblique(slice, dice);
  slice.Interpolation = dice.Pick<int>({ VTK_RESLICE_NEAREST, VTK_RESLICE_LINEAR });
}
}

INSTANTIATE_TEST_SUITE_P(Loops, SliceResliceLoops, ::testing::Values(true, false),
  [](const auto& row) { return row.param ? "Widest" : "Portable"; });

TEST_P(SliceResliceLoops, AreThoseThatAreAllowed)
{
  const bool isPortable =
    zvSliceSampling::ChooseRowBlender<short>() == &zvSliceSampling::BlendRowAnywhere<short>;
  EXPECT_EQ(isPortable, !this->GetParam() || !zvSliceSampling::HasWideRegisters());
}

TEST_P(SliceResliceLoops, AlignedNearestHasTheStockBytes)
{
  CompareMany(4000, 1000,
    [](SliceCase& slice, Dice& dice)
    {
      DrawAligned(slice, dice);
      slice.Interpolation = VTK_RESLICE_NEAREST;
    });
}

TEST_P(SliceResliceLoops, AlignedLinearHasTheStockBytes)
{
  CompareMany(4000, 20000,
    [](SliceCase& slice, Dice& dice)
    {
      DrawAligned(slice, dice);
      slice.Interpolation = VTK_RESLICE_LINEAR;
    });
}

TEST_P(SliceResliceLoops, ObliqueNearestHasTheStockBytes)
{
  CompareMany(4000, 30000,
    [](SliceCase& slice, Dice& dice)
    {
      DrawOblique(slice, dice);
      slice.Interpolation = VTK_RESLICE_NEAREST;
    });
}

TEST_P(SliceResliceLoops, ObliqueLinearHasTheStockBytes)
{
  CompareMany(4000, 40000,
    [](SliceCase& slice, Dice& dice)
    {
      DrawOblique(slice, dice);
      slice.Interpolation = VTK_RESLICE_LINEAR;
    });
}

TEST_F(SliceReslice, AnythingElseHasTheStockBytes)
{
  const std::vector<std::function<void(vtkImageReslice*)>> specials{
    [](vtkImageReslice* reslice) { reslice->BorderOff(); },
    [](vtkImageReslice* reslice) { reslice->SetBorderThickness(1.5); },
    [](vtkImageReslice* reslice) { reslice->WrapOn(); },
    [](vtkImageReslice* reslice) { reslice->MirrorOn(); },
    [](vtkImageReslice* reslice) { reslice->OptimizationOff(); },
    [](vtkImageReslice* reslice) { reslice->SetSlabNumberOfSlices(3); },
    [](vtkImageReslice* reslice) { reslice->SetScalarShift(11.0); },
    [](vtkImageReslice* reslice) { reslice->SetScalarScale(0.3); },
    [](vtkImageReslice* reslice) { reslice->SetOutputScalarType(VTK_DOUBLE); },
    [](vtkImageReslice* reslice) { reslice->GenerateStencilOutputOn(); },
    [](vtkImageReslice* reslice) { reslice->TransformInputSamplingOn(); },
    [](vtkImageReslice* reslice) { reslice->AutoCropOutputOn(); },
    [](vtkImageReslice* reslice) { reslice->SetOutputExtent(0, 9, 0, 9, -2, 2); },
    [](vtkImageReslice* reslice) { reslice->SetOutputExtentToDefault(); },
    [](vtkImageReslice* reslice) { reslice->SetOutputDimensionality(2); },
    [](vtkImageReslice* reslice) { reslice->SetResliceAxes(nullptr); },
    [](vtkImageReslice* reslice) { reslice->GetResliceAxes()->SetElement(3, 1, 0.01); },
    [](vtkImageReslice* reslice) { reslice->SetOutputSpacing(1e-7, 1.0, 1.0); },
    [](vtkImageReslice* reslice) { reslice->SetOutputOrigin(1e7, 0.0, 0.0); },
  };
  CompareMany(6000, 50000,
    [&specials](SliceCase& slice, Dice& dice)
    {
      DrawAny(slice, dice);
      slice.Special = dice.Pick(specials);
    });
}

TEST_F(SliceReslice, CubicHasTheStockBytes)
{
  CompareMany(1500, 55000,
    [](SliceCase& slice, Dice& dice)
    {
      DrawAny(slice, dice);
      // The stock class does not survive two or three voxels in an extent that starts elsewhere.
      const int* const extent = slice.Volume->GetExtent();
      slice.Volume->SetExtent(
        0, extent[1] - extent[0], 0, extent[3] - extent[2], 0, extent[5] - extent[4]);
      slice.Interpolation = VTK_RESLICE_CUBIC;
    });
}

TEST_F(SliceReslice, CubicSamplesOfAThinVolumeMeetItsVoxels)
{
  for (int voxels = 1; voxels <= 4; ++voxels)
  {
    Dice dice(13);
    SliceCase slice;
    slice.Volume->SetExtent(14, 13 + voxels, -3, 9, -8, -9 + voxels);
    slice.Volume->AllocateScalars(VTK_SHORT, 1);
    FillScalars<short>(slice.Volume, dice);
    slice.Axes->SetElement(0, 3, 14.0);
    slice.Axes->SetElement(2, 3, -8.0);
    slice.Interpolation = VTK_RESLICE_CUBIC;
    vtkNew<zvSliceReslice> quick;
    slice.ApplyTo(quick);
    quick->Update();
    EXPECT_EQ(quick->GetOutput()->GetScalarComponentAsDouble(0, 4, 0, 0),
      slice.Volume->GetScalarComponentAsDouble(14, 4, -8, 0));
  }
}

TEST_F(SliceReslice, OtherScalarsHaveTheStockBytes)
{
  CompareMany(1500, 60000,
    [](SliceCase& slice, Dice& dice)
    {
      DrawAny(slice, dice);
      const int type =
        dice.Pick<int>({ VTK_SHORT, VTK_UNSIGNED_CHAR, VTK_UNSIGNED_SHORT, VTK_INT, VTK_FLOAT });
      DrawVolume(slice, dice, type, dice.Int(1, 3));
    });
}

TEST_F(SliceReslice, ATransformIsFollowed)
{
  CompareMany(500, 70000,
    [](SliceCase& slice, Dice& dice)
    {
      DrawAny(slice, dice);
      const double angle = dice.Real(-90.0, 90.0);
      slice.Special = [angle](vtkImageReslice* reslice)
      {
        vtkNew<vtkTransform> turn;
        turn->RotateZ(angle);
        reslice->SetResliceTransform(turn);
      };
    });
}

TEST_F(SliceReslice, AStencilIsFollowed)
{
  CompareMany(500, 80000,
    [](SliceCase& slice, Dice& dice)
    {
      DrawAny(slice, dice);
      slice.Special = [&slice](vtkImageReslice* reslice)
      {
        vtkNew<vtkImageStencilData> stencil;
        stencil->SetExtent(slice.OutputExtent);
        stencil->AllocateExtents();
        const int row = slice.OutputExtent[2];
        stencil->InsertNextExtent(
          slice.OutputExtent[0], slice.OutputExtent[0], row, slice.OutputExtent[4]);
        reslice->SetStencilData(stencil);
      };
    });
}

TEST_P(SliceResliceLoops, ALargeSliceOnSeveralThreadsHasTheStockBytes)
{
  CompareMany(24, 90000,
    [](SliceCase& slice, Dice& dice)
    {
      slice.Volume->SetDimensions(131, 97, 83);
      slice.Volume->SetSpacing(0.7, 0.7, 1.2);
      slice.Volume->AllocateScalars(VTK_SHORT, 1);
      FillScalars<short>(slice.Volume, dice);
      dice.Chance(0.5) ? DrawAlignedAxes(slice, dice) : DrawObliqueAxes(slice, dice);
      const int extent[6] = { -40, 471, -40, 471, 0, 0 };
      std::copy_n(extent, 6, slice.OutputExtent);
      slice.OutputSpacing[0] = slice.OutputSpacing[1] = 0.23;
      slice.Interpolation = dice.Int(VTK_RESLICE_NEAREST, VTK_RESLICE_LINEAR);
      slice.NumberOfThreads = dice.Int(1, 6);
    });
}

TEST_F(SliceReslice, AnEmptyOutputExtentGivesAnEmptyOutput)
{
  Dice dice(5);
  SliceCase slice;
  DrawAligned(slice, dice);
  const int empty[6] = { 0, -1, 0, 31, 0, 0 };
  std::copy_n(empty, 6, slice.OutputExtent);
  vtkNew<zvSliceReslice> quick;
  slice.ApplyTo(quick);
  quick->Update();
  EXPECT_EQ(quick->GetOutput()->GetNumberOfPoints(), 0);
}

TEST_F(SliceReslice, AxesOfLengthZeroRepeatOneVoxel)
{
  for (const int interpolation : { VTK_RESLICE_NEAREST, VTK_RESLICE_LINEAR, VTK_RESLICE_CUBIC })
  {
    Dice dice(11);
    SliceCase slice;
    slice.Volume->SetDimensions(8, 8, 8);
    slice.Volume->AllocateScalars(VTK_SHORT, 1);
    FillScalars<short>(slice.Volume, dice);
    for (int axis = 0; axis < 3; ++axis)
    {
      slice.Axes->SetElement(axis, axis, 0.0);
      slice.Axes->SetElement(axis, 3, 4.0);
    }
    slice.Interpolation = interpolation;
    vtkNew<zvSliceReslice> quick;
    slice.ApplyTo(quick);
    quick->Update();
    const double voxel = slice.Volume->GetScalarComponentAsDouble(4, 4, 4, 0);
    EXPECT_EQ(quick->GetOutput()->GetScalarComponentAsDouble(0, 0, 0, 0), voxel);
    EXPECT_EQ(quick->GetOutput()->GetScalarComponentAsDouble(31, 17, 0, 0), voxel);
  }
}

TEST_F(SliceReslice, OneAxisOfLengthZeroRepeatsALine)
{
  for (const int zeroAxis : { 0, 1 })
  {
    Dice dice(12);
    SliceCase slice;
    slice.Volume->SetDimensions(32, 32, 8);
    slice.Volume->AllocateScalars(VTK_SHORT, 1);
    FillScalars<short>(slice.Volume, dice);
    slice.Axes->SetElement(zeroAxis, zeroAxis, 0.0);
    vtkNew<zvSliceReslice> quick;
    slice.ApplyTo(quick);
    quick->Update();
    const int expected[2] = { zeroAxis == 0 ? 0 : 9, zeroAxis == 1 ? 0 : 9 };
    EXPECT_EQ(quick->GetOutput()->GetScalarComponentAsDouble(9, 9, 0, 0),
      slice.Volume->GetScalarComponentAsDouble(expected[0], expected[1], 0, 0));
  }
}

TEST_F(SliceReslice, ATouchOfTheAxesSamplesPaintedVoxelsAnew)
{
  Dice dice(6);
  SliceCase slice;
  slice.Volume->SetDimensions(8, 8, 8);
  slice.Volume->AllocateScalars(VTK_SHORT, 1);
  FillScalars<short>(slice.Volume, dice);
  slice.Axes->SetElement(2, 3, 3.0);
  vtkNew<zvSliceReslice> quick;
  slice.ApplyTo(quick);
  quick->Update();
  slice.Volume->SetScalarComponentFromDouble(2, 5, 3, 0, 1234.0);
  slice.Axes->Modified();
  quick->Update();
  EXPECT_EQ(quick->GetOutput()->GetScalarComponentAsDouble(2, 5, 0, 0), 1234.0);
}

TEST_F(SliceReslice, ASliceThatNoViewHasRoomForStaysEmpty)
{
  SliceCase slice;
  slice.Volume->SetDimensions(4, 4, 4);
  slice.Volume->AllocateScalars(VTK_SHORT, 1);
  vtkNew<zvSliceReslice> quick;
  slice.ApplyTo(quick);
  quick->SetOutputExtent(0, 131071, 0, 131071, 0, 0);
  quick->Update();
  EXPECT_EQ(quick->GetOutput()->GetNumberOfPoints(), 0);
  quick->SetOutputExtent(0, 3, 0, 3, 0, 0);
  quick->Update();
  EXPECT_EQ(quick->GetOutput()->GetNumberOfPoints(), 16);
}

TEST_F(SliceReslice, TheLargestSliceIsSixteenThousandPixelsSquare)
{
  const int largest[6] = { 0, 16383, 5, 16388, 2, 2 };
  const int larger[6] = { 0, 16384, 5, 16388, 2, 2 };
  const int empty[6] = { 0, -1, 0, 1073741823, 0, 0 };
  const int widest[6] = { -2147483647, 2147483647, 0, 0, 0, 0 };
  EXPECT_FALSE(zvSliceReslice::IsTooLarge(largest));
  EXPECT_TRUE(zvSliceReslice::IsTooLarge(larger));
  EXPECT_FALSE(zvSliceReslice::IsTooLarge(empty));
  EXPECT_TRUE(zvSliceReslice::IsTooLarge(widest));
}

TEST_F(SliceReslice, AnObserverOfProgressHearsOfRows)
{
  Dice dice(10);
  SliceCase slice;
  DrawAligned(slice, dice);
  slice.NumberOfThreads = 1;
  const auto countProgress = [&slice](vtkImageReslice* reslice)
  {
    slice.ApplyTo(reslice);
    reslice->SetOutputExtent(0, 99, 0, 99, 0, 0);
    int count = 0;
    vtkNew<vtkCallbackCommand> counter;
    counter->SetClientData(&count);
    counter->SetCallback(
      [](vtkObject*, unsigned long, void* client, void*) { ++*static_cast<int*>(client); });
    reslice->AddObserver(vtkCommand::ProgressEvent, counter);
    reslice->Update();
    return count;
  };
  vtkNew<zvSliceReslice> quick;
  vtkNew<vtkImageReslice> stock;
  const int expected = countProgress(stock);
  EXPECT_GT(expected, 2);
  EXPECT_EQ(countProgress(quick), expected);
}
