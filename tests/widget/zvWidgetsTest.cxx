#include "zvWidgets.h"

#include <gtest/gtest.h>

TEST(ZvWidgets, ReportsItsOwnName)
{
  zvWidgets* widget = zvWidgets::New();
  EXPECT_STREQ(widget->GetClassName(), "zvWidgets");
  widget->Delete();
}
