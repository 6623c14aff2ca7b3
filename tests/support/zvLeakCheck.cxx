#include "zvLeakCheck.h"

#include <gtest/gtest.h>

#if defined(__SANITIZE_ADDRESS__)
#  include <sanitizer/lsan_interface.h>
#endif

namespace
{
class LeakCheck : public ::testing::Environment
{
public:
  void TearDown() override
  {
#if defined(__SANITIZE_ADDRESS__)
    __lsan_do_leak_check();
#endif
  }
};
}

void zvtest::CheckLeaksAfterTheLastTest()
{
  ::testing::AddGlobalTestEnvironment(new LeakCheck);
}
