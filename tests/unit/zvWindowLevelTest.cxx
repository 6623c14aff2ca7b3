#include "zvWindowLevel.h"

#include "zvTestKit.h"

#include "vtkDoubleArray.h"
#include "vtkImageData.h"
#include "vtkLookupTable.h"
#include "vtkNew.h"
#include "vtkPointData.h"

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace
{
using zvWindowLevel::Values;

const double Infinity = std::numeric_limits<double>::infinity();

void ExpectOriginal(double low, double high, double window, double level)
{
  const double range[2] = { low, high };
  const Values values = zvWindowLevel::FromRange(range);
  EXPECT_DOUBLE_EQ(values.Window, window);
  EXPECT_DOUBLE_EQ(values.Level, level);
}

std::array<double, 2> RangeOf(const std::vector<double>& voxels)
{
  vtkNew<vtkImageData> image;
  image->SetDimensions(static_cast<int>(voxels.size()), 1, 1);
  image->AllocateScalars(VTK_DOUBLE, 1);
  for (std::size_t i = 0; i < voxels.size(); ++i)
  {
    image->SetScalarComponentFromDouble(static_cast<int>(i), 0, 0, 0, voxels[i]);
  }
  std::array<double, 2> range;
  zvWindowLevel::GetRange(image, range.data());
  return range;
}

std::vector<std::array<unsigned char, 4>> ColorsOf(vtkLookupTable* table)
{
  std::vector<std::array<unsigned char, 4>> colors(table->GetNumberOfTableValues());
  for (std::size_t i = 0; i < colors.size(); ++i)
  {
    std::copy_n(table->GetPointer(static_cast<vtkIdType>(i)), 4, colors[i].begin());
  }
  return colors;
}
}

class WindowLevel : public zvtest::QuietTest
{
};

TEST_F(WindowLevel, TheRangeOfAnImageGivesWindowAndLevel)
{
  ExpectOriginal(0.0, 100.0, 100.0, 50.0);
  ExpectOriginal(-1000.0, 200.0, 1200.0, -400.0);
}

TEST_F(WindowLevel, NeitherComesCloserToZeroThanAThousandth)
{
  ExpectOriginal(5.0, 5.0, 0.001, 5.0);
  ExpectOriginal(-0.0002, 0.0002, 0.001, 0.001);
  ExpectOriginal(-0.0006, 0.0002, 0.001, -0.001);
  ExpectOriginal(1.0, 0.9995, -0.001, 0.99975);
}

TEST_F(WindowLevel, TheRangeIsThatOfTheFiniteValues)
{
  EXPECT_EQ(RangeOf({ 3.0, -1.0, 2.0 }), (std::array<double, 2>{ { -1.0, 3.0 } }));
  EXPECT_EQ(RangeOf({ 3.0, Infinity, 2.0 }), (std::array<double, 2>{ { 2.0, 3.0 } }));
  EXPECT_EQ(RangeOf({ 3.0, std::nan(""), 2.0 }), (std::array<double, 2>{ { 2.0, 3.0 } }));
}

TEST_F(WindowLevel, AnImageWithoutValuesHasTheRangeZeroToOne)
{
  const std::array<double, 2> unit = { { 0.0, 1.0 } };
  EXPECT_EQ(RangeOf({ std::nan(""), std::nan("") }), unit);
  vtkNew<vtkImageData> image;
  std::array<double, 2> range;
  zvWindowLevel::GetRange(image, range.data());
  EXPECT_EQ(range, unit);
  vtkNew<vtkDoubleArray> noValues;
  image->GetPointData()->SetScalars(noValues);
  zvWindowLevel::GetRange(image, range.data());
  EXPECT_EQ(range, unit);
}

TEST_F(WindowLevel, AnImageIsAdoptedWithOrWithoutATable)
{
  vtkSmartPointer<vtkImageData> image = zvtest::MakeConstantVolume(7.0);
  image->SetScalarComponentFromDouble(0, 0, 0, 0, 3.0);
  image->GetPointData()->GetScalars()->Modified();
  vtkNew<vtkLookupTable> table;
  const Values own = zvWindowLevel::Adopt(image, table);
  EXPECT_EQ(own.Window, 4.0);
  EXPECT_EQ(own.Level, 5.0);
  EXPECT_EQ(table->GetTableRange()[0], 3.0);
  EXPECT_EQ(table->GetTableRange()[1], 7.0);
  EXPECT_GT(table->GetNumberOfTableValues(), 0);
  const Values others = zvWindowLevel::Adopt(image, nullptr);
  EXPECT_EQ(others.Window, 4.0);
  EXPECT_EQ(others.Level, 5.0);
}

TEST_F(WindowLevel, ADragAcrossTheViewChangesAValueByFourTimesItself)
{
  const Values dragged = zvWindowLevel::Dragged({ 100.0, 50.0 }, 1.0, 0.5);
  EXPECT_DOUBLE_EQ(dragged.Window, 500.0);
  EXPECT_DOUBLE_EQ(dragged.Level, 150.0);
}

TEST_F(WindowLevel, RightAndUpAddToNegativeValuesToo)
{
  const Values dragged = zvWindowLevel::Dragged({ -100.0, -50.0 }, 0.1, 0.1);
  EXPECT_DOUBLE_EQ(dragged.Window, -60.0);
  EXPECT_DOUBLE_EQ(dragged.Level, -30.0);
}

TEST_F(WindowLevel, SmallValuesMoveAsIfTheyWereAHundredth)
{
  const Values dragged = zvWindowLevel::Dragged({ 0.004, -0.004 }, 1.0, 1.0);
  EXPECT_DOUBLE_EQ(dragged.Window, 0.044);
  EXPECT_DOUBLE_EQ(dragged.Level, 0.036);
}

TEST_F(WindowLevel, ADragKeepsAHundredthFromZero)
{
  EXPECT_DOUBLE_EQ(zvWindowLevel::Dragged({ 0.004, 0.0 }, 0.0, 0.0).Window, 0.01);
  EXPECT_DOUBLE_EQ(zvWindowLevel::Dragged({ -0.004, 0.0 }, 0.0, 0.0).Window, -0.01);
  EXPECT_DOUBLE_EQ(zvWindowLevel::Dragged({ 100.0, 0.0 }, -0.25, 0.0).Window, 0.01);
  EXPECT_DOUBLE_EQ(zvWindowLevel::Dragged({ 1.0, 0.0 }, 0.0, 0.0).Level, 0.01);
}

TEST_F(WindowLevel, OnlyStrictSignsAreOpposite)
{
  EXPECT_TRUE(zvWindowLevel::HaveOppositeSigns(-1.0, 0.5));
  EXPECT_TRUE(zvWindowLevel::HaveOppositeSigns(1.0, -0.5));
  EXPECT_FALSE(zvWindowLevel::HaveOppositeSigns(1.0, 0.5));
  EXPECT_FALSE(zvWindowLevel::HaveOppositeSigns(0.0, -0.5));
  EXPECT_FALSE(zvWindowLevel::HaveOppositeSigns(-1.0, 0.0));
}

TEST_F(WindowLevel, ATableGetsTheRangeAroundTheLevel)
{
  vtkNew<vtkLookupTable> table;
  zvWindowLevel::SetTableRange({ 100.0, 30.0 }, table);
  EXPECT_EQ(table->GetTableRange()[0], -20.0);
  EXPECT_EQ(table->GetTableRange()[1], 80.0);
  zvWindowLevel::SetTableRange({ -10.0, 0.0 }, table);
  EXPECT_EQ(table->GetTableRange()[0], -5.0);
  EXPECT_EQ(table->GetTableRange()[1], 5.0);
}

TEST_F(WindowLevel, ARangeThatIsNoneLeavesTheTableAlone)
{
  vtkNew<vtkLookupTable> table;
  zvWindowLevel::SetTableRange({ 100.0, 30.0 }, table);
  for (const Values& values : { Values{ std::nan(""), 0.0 }, Values{ 1.0, std::nan("") },
         Values{ Infinity, 0.0 }, Values{ 1.0, -Infinity }, Values{ 1.7e308, 1.7e308 } })
  {
    zvWindowLevel::SetTableRange(values, table);
    EXPECT_EQ(table->GetTableRange()[0], -20.0);
    EXPECT_EQ(table->GetTableRange()[1], 80.0);
  }
  EXPECT_TRUE(zvWindowLevel::AreFinite({ 1.0, 0.0 }));
  EXPECT_FALSE(zvWindowLevel::AreFinite({ Infinity, 0.0 }));
  EXPECT_FALSE(zvWindowLevel::AreFinite({ 1.0, std::nan("") }));
}

TEST_F(WindowLevel, AReversedTableKeepsItsColoursWhenItIsBuilt)
{
  for (const int size : { 1, 2, 5, 256 })
  {
    SCOPED_TRACE(size);
    vtkNew<vtkLookupTable> table;
    table->SetNumberOfTableValues(size);
    table->SetAlphaRange(0.2, 1.0);
    table->Build();
    auto colors = ColorsOf(table);
    const vtkMTimeType before = table->GetMTime();
    zvWindowLevel::Reverse(table);
    EXPECT_GT(table->GetMTime(), before);
    table->Build();
    std::reverse(colors.begin(), colors.end());
    EXPECT_EQ(ColorsOf(table), colors);
  }
}
