// The tests of the window run inside an application, without a screen.
#include <gtest/gtest.h>

#include "shell/Application.h"

int main(int argumentCount, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argumentCount, arguments);
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  const kelvane::Application application(argumentCount, arguments);
  return RUN_ALL_TESTS();
}
