#include <gtest/gtest.h>
#include <stdexcept>

#include "common/TempFiles.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::TempFolder;
using Names = std::vector<std::string>;

TEST(TempFiles, AreGoneAtTheEndOfTheScope) {
  const TempFolder folder;
  {
    const TempFiles temps({folder / "a", folder / "never made"});
    folder.Write("a", Bytes(1));
    folder.Write("b", Bytes(1));
  }
  EXPECT_EQ(folder.Names(), Names{"b"});
}

TEST(TempFiles, AreGoneWhenAFailurePassesThrough) {
  const TempFolder folder;
  const auto fail = [&] {
    const TempFiles temps({folder / "a"});
    folder.Write("a", Bytes(1));
    throw std::runtime_error("on the way");
  };
  EXPECT_THROW(fail(), std::runtime_error);
  EXPECT_EQ(folder.Names(), Names());
}

TEST(TempFiles, DismissedOnesStay) {
  const TempFolder folder;
  {
    TempFiles temps({folder / "a"});
    folder.Write("a", Bytes(1));
    temps.Dismiss();
  }
  EXPECT_EQ(folder.Names(), Names{"a"});
}

}  // namespace
}  // namespace kelvane
