#include "zvLengthLabel.h"

#include "vtkActorCollection.h"
#include "vtkCamera.h"
#include "vtkFollower.h"
#include "vtkMapper.h"
#include "vtkNew.h"
#include "vtkPolyData.h"
#include "vtkRenderer.h"
#include "vtkVectorText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace
{
struct TextRow
{
  const char* Name;
  double Value;
  const char* Length;
  const char* Area;
  const char* SnakeArea;
};

class LengthLabelTexts : public ::testing::TestWithParam<TextRow>
{
};
}

TEST_P(LengthLabelTexts, AreRightAlignedInTenColumnsWithTheirUnit)
{
  const TextRow& row = GetParam();
  EXPECT_EQ(zvLengthLabel::OfLength(row.Value), row.Length);
  EXPECT_EQ(zvLengthLabel::OfArea(row.Value), row.Area);
  EXPECT_EQ(zvLengthLabel::OfSnakeArea(row.Value), row.SnakeArea);
}

INSTANTIATE_TEST_SUITE_P(LengthLabel, LengthLabelTexts,
  ::testing::Values(TextRow{ "Zero", 0.0, "      0.00 mm", "      0.00 mm^2", "    0.0000 mm" },
    TextRow{ "Rounded", 12.3456, "     12.35 mm", "     12.35 mm^2", "   12.3456 mm" },
    TextRow{ "Negative", -1.5, "     -1.50 mm", "     -1.50 mm^2", "   -1.5000 mm" },
    TextRow{
      "FillingTheColumns", 1234567.125, "1234567.12 mm", "1234567.12 mm^2", "1234567.1250 mm" },
    TextRow{ "WiderThanTheColumns", 12345678901.0, "12345678901.00 mm", "12345678901.00 mm^2",
      "12345678901.0000 mm" },
    TextRow{ "NotANumber", std::numeric_limits<double>::quiet_NaN(), "       nan mm",
      "       nan mm^2", "       nan mm" },
    TextRow{ "Infinite", std::numeric_limits<double>::infinity(), "       inf mm",
      "       inf mm^2", "       inf mm" }),
  [](const auto& row) { return row.param.Name; });

TEST(LengthLabel, ATextIsCutOffAtNinetyNineCharacters)
{
  const std::string text = zvLengthLabel::OfLength(std::ldexp(1.0, 600)); // 4.15e180
  EXPECT_EQ(text.size(), 99u);
  EXPECT_EQ(text.find_first_not_of("0123456789"), std::string::npos);
  EXPECT_EQ(text.substr(0, 10), "4149515568");
}

TEST(LengthLabel, IsABlankWithoutGeometryAtFirst)
{
  vtkNew<vtkVectorText> text;
  vtkNew<vtkFollower> follower;
  zvLengthLabel::Build(text, follower);
  EXPECT_STREQ(text->GetText(), " ");
  ASSERT_NE(follower->GetMapper(), nullptr);
  EXPECT_EQ(follower->GetMapper()->GetInputAlgorithm(), text);
  text->Update();
  EXPECT_EQ(text->GetOutput()->GetNumberOfCells(), 0);
}

TEST(LengthLabel, SizeIsNarrowedToSinglePrecision)
{
  vtkNew<vtkFollower> follower;
  zvLengthLabel::SetSize(follower, 0.1);
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_EQ(follower->GetScale()[axis], static_cast<double>(0.1f));
  }
}

TEST(LengthLabel, ShownItFollowsTheCameraAndIsInTheRendererOnce)
{
  vtkNew<vtkVectorText> text;
  vtkNew<vtkFollower> follower;
  vtkNew<vtkRenderer> renderer;
  zvLengthLabel::Build(text, follower);
  zvLengthLabel::Show(follower, renderer);
  zvLengthLabel::Show(follower, renderer);
  EXPECT_EQ(follower->GetCamera(), renderer->GetActiveCamera());
  EXPECT_EQ(renderer->GetActors()->GetNumberOfItems(), 1);
  EXPECT_TRUE(renderer->HasViewProp(follower));

  vtkNew<vtkCamera> other;
  renderer->SetActiveCamera(other);
  zvLengthLabel::Show(follower, renderer);
  EXPECT_EQ(follower->GetCamera(), other);
}

TEST(LengthLabel, WithoutARendererNothingIsShown)
{
  vtkNew<vtkFollower> follower;
  zvLengthLabel::Show(follower, nullptr);
  EXPECT_EQ(follower->GetCamera(), nullptr);
}
