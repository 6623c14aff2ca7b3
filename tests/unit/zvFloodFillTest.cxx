#include "zvFloodFill.h"

#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkSmartPointer.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <random>
#include <string>
#include <vector>

namespace
{
using Voxel = std::array<double, 3>;

// The fill as it is defined: a recursion through the image's own accessors.
struct PlainRecursion
{
  zvFloodFill::Slice Slice;
  int Value = 0;
  int OldValue = 0;
  std::vector<Voxel> Filled;
  std::vector<char> Seen; // ends the recursion where a value cannot be held

  void Visit(int x, int y)
  {
    if (x < 0 || x >= this->Slice.Width || y < 0 || y >= this->Slice.Height)
    {
      return;
    }
    int ijk[3];
    ijk[this->Slice.XAxis] = x;
    ijk[this->Slice.YAxis] = y;
    ijk[this->Slice.NormalAxis] = this->Slice.Index;
    const int* extent = this->Slice.Image->GetExtent();
    for (int axis = 0; axis < 3; ++axis)
    {
      if (ijk[axis] < extent[2 * axis] || ijk[axis] > extent[2 * axis + 1])
      {
        return;
      }
    }
    const double old = this->Slice.Image->GetScalarComponentAsDouble(ijk[0], ijk[1], ijk[2], 0);
    char& seen = this->Seen[static_cast<std::size_t>(y) * this->Slice.Width + x];
    if (seen || old == static_cast<double>(this->Value))
    {
      return;
    }
    seen = 1;
    this->OldValue = static_cast<int>(old);
    this->Slice.Image->SetScalarComponentFromDouble(ijk[0], ijk[1], ijk[2], 0, this->Value);
    Voxel point;
    point[this->Slice.XAxis] = x;
    point[this->Slice.YAxis] = y;
    point[this->Slice.NormalAxis] = this->Slice.RecordedIndex;
    this->Filled.push_back(point);
    this->Visit(x + 1, y);
    this->Visit(x - 1, y);
    this->Visit(x, y + 1);
    this->Visit(x, y - 1);
  }

  void Run(int x, int y)
  {
    this->Seen.assign(static_cast<std::size_t>(std::max(0, this->Slice.Width)) *
        static_cast<std::size_t>(std::max(0, this->Slice.Height)),
      0);
    this->Visit(x, y);
  }
};

vtkSmartPointer<vtkImageData> MakeImage(const std::array<int, 6>& extent, int type, int components)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetExtent(const_cast<int*>(extent.data()));
  image->AllocateScalars(type, components);
  return image;
}

vtkSmartPointer<vtkImageData> CopyOf(vtkImageData* image)
{
  auto copy = vtkSmartPointer<vtkImageData>::New();
  copy->DeepCopy(image);
  return copy;
}

vtkNew<vtkPoints> MakeRecord()
{
  vtkNew<vtkPoints> record;
  record->SetDataTypeToDouble();
  return record;
}

std::vector<Voxel> ListOf(vtkPoints* record)
{
  std::vector<Voxel> list(record->GetNumberOfPoints());
  for (std::size_t i = 0; i < list.size(); ++i)
  {
    record->GetPoint(static_cast<vtkIdType>(i), list[i].data());
  }
  return list;
}

std::vector<double> ScalarsOf(vtkImageData* image)
{
  vtkDataArray* scalars = image->GetPointData()->GetScalars();
  std::vector<double> values;
  for (vtkIdType t = 0; t < scalars->GetNumberOfTuples(); ++t)
  {
    for (int c = 0; c < scalars->GetNumberOfComponents(); ++c)
    {
      values.push_back(scalars->GetComponent(t, c));
    }
  }
  return values;
}

zvFloodFill::Slice MakeSlice(vtkImageData* image, int orientation, int index, int width, int height)
{
  constexpr int axes[3][2] = { { 1, 2 }, { 0, 2 }, { 0, 1 } };
  zvFloodFill::Slice slice;
  slice.Image = image;
  slice.XAxis = axes[orientation][0];
  slice.YAxis = axes[orientation][1];
  slice.NormalAxis = orientation;
  slice.Index = index;
  slice.Width = width;
  slice.Height = height;
  slice.RecordedIndex = index + 0.25;
  return slice;
}

struct RandomCase
{
  std::mt19937 Dice;
  explicit RandomCase(unsigned seed)
    : Dice(seed)
  {
  }
  int Roll(int low, int high) { return std::uniform_int_distribution<int>(low, high)(this->Dice); }
};

// Fill the same random slice both ways and compare all that a fill leaves behind.
void ExpectSameAsRecursion(unsigned seed, int scalarType, vtkIdType& filled)
{
  RandomCase dice(seed);
  std::array<int, 6> extent;
  const int orientation = dice.Roll(0, 2);
  for (int axis = 0; axis < 3; ++axis)
  {
    const int length = axis == orientation ? dice.Roll(1, 3) : dice.Roll(1, 90);
    extent[2 * axis] = dice.Roll(0, 4) == 0 ? dice.Roll(-3, 3) : 0;
    extent[2 * axis + 1] = extent[2 * axis] + length - 1;
  }
  const int components = dice.Roll(1, 3);
  auto image = MakeImage(extent, scalarType, components);
  const int value = dice.Roll(0, 9) == 0 ? dice.Roll(-70000, 70000) : dice.Roll(0, 3);
  const int others = dice.Roll(0, 3) == 0 ? 1 : dice.Roll(2, 12);
  vtkDataArray* scalars = image->GetPointData()->GetScalars();
  for (vtkIdType t = 0; t < scalars->GetNumberOfTuples(); ++t)
  {
    for (int c = 0; c < components; ++c)
    {
      scalars->SetComponent(t, c, dice.Roll(0, others));
    }
  }
  auto reference = CopyOf(image);

  zvFloodFill::Slice slice =
    MakeSlice(image, orientation, dice.Roll(extent[2 * orientation], extent[2 * orientation + 1]),
      dice.Roll(0, 95), dice.Roll(0, 95));
  const int x = dice.Roll(-1, 60);
  const int y = dice.Roll(-1, 60);

  PlainRecursion recursion;
  recursion.Slice = slice;
  recursion.Slice.Image = reference;
  recursion.Value = value;
  recursion.OldValue = -12345;
  recursion.Run(x, y);

  const auto record = MakeRecord();
  int oldValue = -12345;
  const zvFloodFill::Region region = zvFloodFill::Fill(slice, x, y, value, record, oldValue);

  const std::string which = "seed " + std::to_string(seed);
  ASSERT_EQ(ListOf(record), recursion.Filled) << which;
  ASSERT_EQ(oldValue, recursion.OldValue) << which;
  ASSERT_EQ(region.Count, static_cast<vtkIdType>(recursion.Filled.size())) << which;
  ASSERT_EQ(ScalarsOf(image), ScalarsOf(reference)) << which;

  filled += region.Count;
  zvFloodFill::Restore(region, image, 7);
  for (const Voxel& voxel : recursion.Filled)
  {
    int ijk[3] = { static_cast<int>(voxel[0]), static_cast<int>(voxel[1]),
      static_cast<int>(voxel[2]) };
    ijk[orientation] = slice.Index;
    reference->SetScalarComponentFromDouble(ijk[0], ijk[1], ijk[2], 0, 7);
  }
  ASSERT_EQ(ScalarsOf(image), ScalarsOf(reference)) << which << ", taken back";
}

class FloodFillOfType : public ::testing::TestWithParam<int>
{
};
}

TEST_P(FloodFillOfType, VisitsInTheOrderOfThePlainRecursion)
{
  vtkIdType filled = 0;
  for (unsigned seed = 0; seed < 400; ++seed)
  {
    ASSERT_NO_FATAL_FAILURE(ExpectSameAsRecursion(seed + 1000u * GetParam(), GetParam(), filled));
  }
  EXPECT_GT(filled, 50000) << "the slices hardly had anything to fill";
}

INSTANTIATE_TEST_SUITE_P(Every, FloodFillOfType,
  ::testing::Values(VTK_CHAR, VTK_SIGNED_CHAR, VTK_UNSIGNED_CHAR, VTK_SHORT, VTK_UNSIGNED_SHORT,
    VTK_INT, VTK_UNSIGNED_INT, VTK_LONG, VTK_UNSIGNED_LONG, VTK_LONG_LONG, VTK_UNSIGNED_LONG_LONG,
    VTK_FLOAT, VTK_DOUBLE),
  [](const auto& row)
  {
    std::string name = vtkImageScalarTypeNameMacro(row.param);
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    return name;
  });

TEST(FloodFill, OfAHugeOpenSliceEnds)
{
  auto image = MakeImage({ 0, 4096, 0, 4096, 0, 0 }, VTK_UNSIGNED_CHAR, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  const auto record = MakeRecord();
  int oldValue = 0;
  const auto region =
    zvFloodFill::Fill(MakeSlice(image, 2, 0, 4096, 4096), 2000, 2000, 5, record, oldValue);
  EXPECT_EQ(region.Count, 4096 * 4096);
  EXPECT_EQ(record->GetNumberOfPoints(), 4096 * 4096);
  EXPECT_EQ(oldValue, 1);
  EXPECT_EQ(image->GetScalarComponentAsDouble(4095, 4095, 0, 0), 5.0);
  EXPECT_EQ(image->GetScalarComponentAsDouble(4096, 4096, 0, 0), 1.0);
}

TEST(FloodFill, StopsAtVoxelsThatHoldTheValueAndOverwritesAllOthers)
{
  auto image = MakeImage({ 0, 4, 0, 0, 0, 0 }, VTK_SHORT, 1);
  const short line[5] = { 3, 8, 9, 7, 3 };
  std::copy(line, line + 5, static_cast<short*>(image->GetScalarPointer()));
  const auto record = MakeRecord();
  int oldValue = 0;
  zvFloodFill::Fill(MakeSlice(image, 2, 0, 5, 1), 2, 0, 3, record, oldValue);
  EXPECT_EQ(ScalarsOf(image), (std::vector<double>{ 3, 3, 3, 3, 3 }));
  EXPECT_EQ(ListOf(record), (std::vector<Voxel>{ { 2, 0, 0.25 }, { 3, 0, 0.25 }, { 1, 0, 0.25 } }));
  EXPECT_EQ(oldValue, 8);
}

TEST(FloodFill, OnAVoxelThatHoldsTheValueDoesNothing)
{
  auto image = MakeImage({ 0, 4, 0, 4, 0, 0 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(6);
  const auto record = MakeRecord();
  int oldValue = -1;
  const auto region = zvFloodFill::Fill(MakeSlice(image, 2, 0, 4, 4), 1, 1, 6, record, oldValue);
  EXPECT_EQ(region.Count, 0);
  EXPECT_EQ(record->GetNumberOfPoints(), 0);
  EXPECT_EQ(oldValue, -1);
}

TEST(FloodFill, WithAValueThatTheTypeCannotHoldVisitsEachVoxelOnce)
{
  auto image = MakeImage({ 0, 9, 0, 9, 0, 0 }, VTK_UNSIGNED_CHAR, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  const auto record = MakeRecord();
  int oldValue = -1;
  zvFloodFill::Fill(MakeSlice(image, 2, 0, 10, 10), 5, 5, 300, record, oldValue);
  EXPECT_EQ(record->GetNumberOfPoints(), 100);
  EXPECT_EQ(ScalarsOf(image), std::vector<double>(100, 44.0));
}

TEST(FloodFill, OfAnImageWithoutScalarsOrOfNoImageDoesNothing)
{
  vtkNew<vtkImageData> empty;
  const auto record = MakeRecord();
  int oldValue = -1;
  EXPECT_EQ(zvFloodFill::Fill(MakeSlice(empty, 2, 0, 10, 10), 5, 5, 3, record, oldValue).Count, 0);
  EXPECT_EQ(
    zvFloodFill::Fill(MakeSlice(nullptr, 2, 0, 10, 10), 5, 5, 3, record, oldValue).Count, 0);
  EXPECT_EQ(record->GetNumberOfPoints(), 0);
}

TEST(FloodFill, OfASliceOutsideTheExtentDoesNothing)
{
  auto image = MakeImage({ 0, 9, 0, 9, 0, 3 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  const auto record = MakeRecord();
  int oldValue = -1;
  EXPECT_EQ(zvFloodFill::Fill(MakeSlice(image, 2, 4, 10, 10), 5, 5, 3, record, oldValue).Count, 0);
  EXPECT_EQ(record->GetNumberOfPoints(), 0);
}

TEST(FloodFill, FromAStartFarOutsideDoesNothing)
{
  auto image = MakeImage({ 3, 9, 4, 9, 0, 0 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  const auto record = MakeRecord();
  int oldValue = -1;
  for (const int far : { INT_MIN, -1, 2, 10, INT_MAX })
  {
    EXPECT_EQ(
      zvFloodFill::Fill(MakeSlice(image, 2, 0, 10, 10), far, 5, 3, record, oldValue).Count, 0);
    EXPECT_EQ(
      zvFloodFill::Fill(MakeSlice(image, 2, 0, 10, 10), 5, far, 3, record, oldValue).Count, 0);
  }
  EXPECT_EQ(record->GetNumberOfPoints(), 0);
  EXPECT_EQ(oldValue, -1);
}

TEST(FloodFill, OfASliceWithoutSizeDoesNothing)
{
  auto image = MakeImage({ 0, 9, 0, 9, 0, 0 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  const auto record = MakeRecord();
  int oldValue = -1;
  for (const int size : { 0, -1, INT_MIN })
  {
    for (const auto& slice : { MakeSlice(image, 2, 0, size, 10), MakeSlice(image, 2, 0, 10, size) })
    {
      EXPECT_EQ(zvFloodFill::Fill(slice, 0, 0, 3, record, oldValue).Count, 0) << size;
    }
  }
  EXPECT_EQ(record->GetNumberOfPoints(), 0);
  EXPECT_EQ(ScalarsOf(image), std::vector<double>(100, 1.0));
}

TEST(FloodFill, LeavesThePriorRecordInPlace)
{
  auto image = MakeImage({ 0, 2, 0, 0, 0, 0 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  const auto record = MakeRecord();
  record->InsertNextPoint(9, 9, 9);
  int oldValue = -1;
  zvFloodFill::Fill(MakeSlice(image, 2, 0, 1, 1), 0, 0, 3, record, oldValue);
  EXPECT_EQ(ListOf(record), (std::vector<Voxel>{ { 9, 9, 9 }, { 0, 0, 0.25 } }));
}

TEST(FloodFill, IsNotTakenBackInAnImageThatHasChangedItsExtent)
{
  auto image = MakeImage({ 0, 99, 0, 99, 0, 0 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  const auto record = MakeRecord();
  int oldValue = -1;
  const auto region =
    zvFloodFill::Fill(MakeSlice(image, 2, 0, 100, 100), 5, 5, 3, record, oldValue);
  image->SetDimensions(10, 10, 1);
  image->AllocateScalars(VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(2);
  zvFloodFill::Restore(region, image, 1);
  EXPECT_EQ(ScalarsOf(image), std::vector<double>(100, 2.0));
}

TEST(FloodFill, TakesTheAxesOfASliceInEitherOrder)
{
  auto image = MakeImage({ 0, 1, 0, 2, 0, 0 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  zvFloodFill::Slice slice = MakeSlice(image, 2, 0, 3, 2);
  std::swap(slice.XAxis, slice.YAxis);
  const auto record = MakeRecord();
  int oldValue = -1;
  zvFloodFill::Fill(slice, 1, 0, 3, record, oldValue);
  EXPECT_EQ(ListOf(record),
    (std::vector<Voxel>{ { 0, 1, 0.25 }, { 0, 2, 0.25 }, { 1, 2, 0.25 }, { 1, 1, 0.25 },
      { 1, 0, 0.25 }, { 0, 0, 0.25 } }));
}

TEST(FloodFill, GivesBackTheRoomThatTheRecordDidNotNeed)
{
  auto image = MakeImage({ 0, 1999, 0, 1999, 0, 0 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(3);
  for (int x = 100; x < 150; ++x)
  {
    image->SetScalarComponentFromDouble(x, 100, 0, 0, 1);
  }
  const auto record = MakeRecord();
  int oldValue = -1;
  zvFloodFill::Fill(MakeSlice(image, 2, 0, 2000, 2000), 120, 100, 3, record, oldValue);
  EXPECT_EQ(record->GetNumberOfPoints(), 50);
  EXPECT_EQ(record->GetData()->GetSize(), 150);
}

TEST(FloodFill, WritesIntoTheRoomThatARecordHas)
{
  auto image = MakeImage({ 0, 99, 0, 99, 0, 0 }, VTK_SHORT, 1);
  image->GetPointData()->GetScalars()->Fill(1);
  const auto record = MakeRecord();
  int oldValue = -1;
  zvFloodFill::Fill(MakeSlice(image, 2, 0, 100, 100), 5, 5, 3, record, oldValue);
  const void* const room = record->GetVoidPointer(0);
  const auto first = ListOf(record);
  record->Reset();
  zvFloodFill::Fill(MakeSlice(image, 2, 0, 100, 100), 5, 5, 4, record, oldValue);
  EXPECT_EQ(record->GetVoidPointer(0), room);
  EXPECT_EQ(ListOf(record), first);
  EXPECT_EQ(oldValue, 3);
}
