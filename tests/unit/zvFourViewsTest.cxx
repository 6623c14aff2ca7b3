#include "zvFourViews.h"

#include "zvTestKit.h"

#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <ostream>

using ::testing::ElementsAre;
using zvtest::World;

namespace
{
constexpr double Box[6] = { -1.0, 2.0, 10.0, 20.0, -30.0, -25.0 };
constexpr double Infinity = std::numeric_limits<double>::infinity();

struct ClampRow
{
  const char* Name;
  World In;
  World Out;
};

void PrintTo(const ClampRow& row, std::ostream* os)
{
  *os << row.Name;
}

class ClampTable : public ::testing::TestWithParam<ClampRow>
{
};

const ClampRow ClampRows[] = { { "Inside", { { 0.5, 15, -27 } }, { { 0.5, 15, -27 } } },
  { "OnTheFaces", { { -1, 20, -30 } }, { { -1, 20, -30 } } },
  { "BeyondUpperX", { { 2.5, 15, -27 } }, { { 2, 15, -27 } } },
  { "BeyondLowerX", { { -1.5, 15, -27 } }, { { -1, 15, -27 } } },
  { "BeyondUpperY", { { 0, 20.5, -27 } }, { { 0, 20, -27 } } },
  { "BeyondLowerY", { { 0, 9.5, -27 } }, { { 0, 10, -27 } } },
  { "BeyondUpperZ", { { 0, 15, 0 } }, { { 0, 15, -25 } } },
  { "BeyondLowerZ", { { 0, 15, -31 } }, { { 0, 15, -30 } } },
  { "BeyondACorner", { { 9, 0, 9 } }, { { 2, 10, -25 } } },
  { "Infinite", { { Infinity, -Infinity, 0 } }, { { 2, 10, -25 } } } };
}

TEST_P(ClampTable, StopsAtTheFace)
{
  World position = GetParam().In;
  zvFourViews::Clamp(Box, position.data());
  EXPECT_EQ(position, GetParam().Out);
}

INSTANTIATE_TEST_SUITE_P(FourViews, ClampTable, ::testing::ValuesIn(ClampRows),
  [](const auto& row) { return row.param.Name; });

TEST(FourViews, BeyondTheUpperFaceComesFirstInABoxThatIsTurnedInsideOut)
{
  const double inverted[6] = { 5, -5, 5, -5, 5, -5 };
  World position = { { 0, 9, -9 } };
  zvFourViews::Clamp(inverted, position.data());
  EXPECT_THAT(position, ElementsAre(-5, -5, 5));
}

TEST(FourViews, ANumberThatIsNoneStaysWithItsAxis)
{
  World position = { { std::nan(""), 99, -27 } };
  zvFourViews::Clamp(Box, position.data());
  EXPECT_TRUE(std::isnan(position[0]));
  EXPECT_EQ(position[1], 20);
  EXPECT_EQ(position[2], -27);
}

TEST(FourViews, MovesByTheWayAndNotToItsEnd)
{
  World position = { { 0, 15, -27 } };
  const double from[3] = { 100, 200, 300 };
  const double to[3] = { 101, 198, 301 };
  zvFourViews::MoveWithin(Box, from, to, position.data());
  EXPECT_THAT(position, ElementsAre(1, 13, -26));
}

TEST(FourViews, PressedAgainstAFaceItSlidesAlong)
{
  World position = { { 2, 15, -27 } };
  const double from[3] = { 0, 0, 0 };
  const double to[3] = { 5, 1, 0 };
  zvFourViews::MoveWithin(Box, from, to, position.data());
  EXPECT_THAT(position, ElementsAre(2, 16, -27));
}

TEST(FourViews, TheBoundsAreThoseOfTheData)
{
  const auto volume = zvtest::MakeIndexVolume(zvtest::UnequalVolume());
  double bounds[6];
  ASSERT_TRUE(zvFourViews::GetBounds(volume, bounds));
  EXPECT_THAT(bounds, ElementsAre(-2, 1.5, 4.5, 10.75, 10, 19));
}

TEST(FourViews, WithoutDataOrPointsThereAreNoBounds)
{
  double bounds[6] = { 7, 7, 7, 7, 7, 7 };
  vtkNew<vtkImageData> noVoxels;
  vtkNew<vtkPolyData> noPoints;
  EXPECT_FALSE(zvFourViews::GetBounds(nullptr, bounds));
  EXPECT_FALSE(zvFourViews::GetBounds(noVoxels, bounds));
  EXPECT_FALSE(zvFourViews::GetBounds(noPoints, bounds));
  EXPECT_THAT(bounds, ElementsAre(7, 7, 7, 7, 7, 7));
}

TEST(FourViews, NamesTheFirstPartThatIsMissing)
{
  vtkNew<vtkRenderer> view;
  vtkNew<vtkRenderWindowInteractor> hand;
  const zvFourViews::Renderers views = { view, view, view, view };
  const zvFourViews::Interactors hands = { hand, hand, hand, hand };
  EXPECT_EQ(zvFourViews::FindMissing(views, hands), nullptr);
  EXPECT_STREQ(zvFourViews::FindMissing({}, {}), "RendererX");
  EXPECT_STREQ(zvFourViews::FindMissing(views, {}), "InteractorX");
  const char* const viewNames[] = { "RendererX", "RendererY", "RendererZ", "Renderer3D" };
  const char* const handNames[] = { "InteractorX", "InteractorY", "InteractorZ", "Interactor3D" };
  for (int i = 0; i < 4; ++i)
  {
    zvFourViews::Renderers someViews = views;
    someViews[i] = nullptr;
    EXPECT_STREQ(zvFourViews::FindMissing(someViews, hands), viewNames[i]);
    zvFourViews::Interactors someHands = hands;
    someHands[i] = nullptr;
    EXPECT_STREQ(zvFourViews::FindMissing(views, someHands), handNames[i]);
  }
}
