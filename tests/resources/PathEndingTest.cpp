#include <gtest/gtest.h>

#include "resources/PathEnding.h"

namespace kelvane {
namespace {

TEST(PathEnding, IsTheLastFourCharactersInLowerCase) {
  EXPECT_EQ(PathEnding("/a/image.PNG"), ".png");
  EXPECT_EQ(PathEnding("image.Gim"), ".gim");
  EXPECT_EQ(PathEnding("image.32bit.bmp"), ".bmp");
  EXPECT_EQ(PathEnding("图像.bmp"), ".bmp");
}

TEST(PathEnding, KnowsNothingOfExtensions) {
  EXPECT_EQ(PathEnding("image.tiff"), "tiff");
  EXPECT_EQ(PathEnding("image.gm"), "e.gm");
  EXPECT_EQ(PathEnding("/a/gim"), "/gim");
  EXPECT_EQ(PathEnding("sound"), "ound");
}

TEST(PathEnding, AShorterPathIsItsOwnEnding) {
  EXPECT_EQ(PathEnding("GIM"), "gim");
  EXPECT_EQ(PathEnding(".gim"), ".gim");
  EXPECT_EQ(PathEnding(""), "");
}

}  // namespace
}  // namespace kelvane
