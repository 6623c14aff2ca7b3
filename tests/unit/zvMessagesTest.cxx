#include "zvMessages.h"

#include "zvQuietTest.h"

#include "vtkObject.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{
class Messages : public zvtest::QuietTest
{
protected:
  std::string AddressOf(const void* object) const
  {
    std::ostringstream text;
    text << object;
    return text.str();
  }
};

// Speaks as a widget does.
struct Speaker
{
  bool DebugMode = false;
  int Line = 0;

  void Trace()
  {
    this->Line = __LINE__ + 1;
    zvTraceMacro("void Speaker::Trace()");
  }

  bool Take(const double* position)
  {
    this->Line = __LINE__ + 1;
    return zvRequireMacro(position, "give a position...");
  }
};
}

TEST_F(Messages, ATraceNamesFileLineSpeakerAndSignature)
{
  int speaker = 0;
  zvMessages::WriteTrace("src/widgets/zvWidgets", 42, &speaker, "zvWidgets::AddObservers(void)");
  EXPECT_EQ(this->TakeOutput(),
    "Info: In src/widgets/zvWidgets, line 42\n (" + this->AddressOf(&speaker) +
      "):   >> \"zvWidgets::AddObservers(void)\"\n\n");
}

TEST_F(Messages, APlainWarningNamesFileLineAndSpeaker)
{
  int speaker = 0;
  zvMessages::WritePlain("Warning", "src/widgets/zvImage3DPlanes", 7, &speaker, "not set");
  EXPECT_EQ(this->TakeOutput(),
    "Warning: In src/widgets/zvImage3DPlanes, line 7\n (" + this->AddressOf(&speaker) +
      "): not set\n\n");
}

TEST_F(Messages, APlainErrorNamesFileLineAndSpeaker)
{
  int speaker = 0;
  zvMessages::WritePlain("Error", "src/widgets/zvSeedWidget", 7, &speaker, "not set");
  EXPECT_EQ(this->TakeOutput(),
    "Error: In src/widgets/zvSeedWidget, line 7\n (" + this->AddressOf(&speaker) +
      "): not set\n\n");
}

TEST_F(Messages, AnObjectTracesOnlyInDebugModeAndWithItsOwnLine)
{
  Speaker speaker;
  speaker.Trace();
  EXPECT_EQ(this->TakeOutput(), "");
  speaker.DebugMode = true;
  speaker.Trace();
  const std::string text = this->TakeOutput();
  EXPECT_NE(text.find(", line " + std::to_string(speaker.Line) + "\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\"void Speaker::Trace()\""), std::string::npos) << text;
}

TEST_F(Messages, WhatIsRequiredIsAskedForWhereItIsMissing)
{
  Speaker speaker;
  const double position[3] = { 0.0, 0.0, 0.0 };
  EXPECT_TRUE(speaker.Take(position));
  this->ExpectNoMessage();
  EXPECT_FALSE(speaker.Take(nullptr));
  const std::vector<std::string> messages = this->TakeMessages();
  ASSERT_EQ(messages.size(), 1u);
  const std::string end = ", line " + std::to_string(speaker.Line) + "\ngive a position...\n\n";
  ASSERT_GT(messages.front().size(), end.size());
  EXPECT_EQ(messages.front().substr(0, 20), "Generic Warning: In ");
  EXPECT_EQ(messages.front().substr(messages.front().size() - end.size()), end);
}
