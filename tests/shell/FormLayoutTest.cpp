#include <gtest/gtest.h>

#include "shell/FormLayout.h"

namespace kelvane {
namespace {

// One line of the table of sizes: a control, what of it is told, and its value in each of three forms.
struct Told {
  const char* control;
  int TwipRect::*property;
  int smallest;  // 7815 by 7020
  int start;     // 9600 by 8010
  int odd;       // 10007 by 9001: columns of 5572.2 and 3714.8 twips
};

constexpr auto kLeft = &TwipRect::left;
constexpr auto kTop = &TwipRect::top;
constexpr auto kWidth = &TwipRect::width;
constexpr auto kHeight = &TwipRect::height;

const Told kTable[] = {
    {"shpBorder", kWidth, 7365, 9150, 9557},
    {"shpBorder", kHeight, 5565, 6555, 7546},
    {"lblWebsite", kLeft, 5490, 7275, 7682},
    {"lblWebsite", kTop, 6390, 7380, 8371},
    {"picTab(0)", kWidth, 7125, 8910, 9317},
    {"picTab(0)", kHeight, 5205, 6195, 7186},
    {"picTab(1)", kWidth, 7125, 8910, 9317},
    {"picTab(1)", kHeight, 5205, 6195, 7186},
    {"picTab(2)", kWidth, 7125, 8910, 9317},
    {"picTab(2)", kHeight, 5205, 6195, 7186},
    {"picTab(3)", kWidth, 7125, 8910, 9317},
    {"picTab(3)", kHeight, 5205, 6195, 7186},
    {"lst", kWidth, 5085, 6870, 7277},
    {"lst", kHeight, 5380, 6370, 7361},
    {"lstText", kHeight, 5380, 6370, 7361},
    {"lstPage", kHeight, 5380, 6370, 7361},
    {"lstAnim", kHeight, 5380, 6370, 7361},
    {"lstPageData", kHeight, 4555, 5545, 6536},
    {"lstPageData", kTop, 60, 60, 60},
    {"lstAnimData", kHeight, 4555, 5545, 6536},
    {"cmdPageChange", kTop, 4740, 5730, 6721},
    {"cmdAnimChange", kTop, 4740, 5730, 6721},
    {"picGenContainer", kLeft, 5190, 6975, 7382},
    {"lstPage", kWidth, 4137, 5208, 5452},
    {"lstAnim", kWidth, 4137, 5208, 5452},
    {"lstText", kWidth, 4137, 5208, 5452},
    {"lstPageData", kLeft, 4257, 5328, 5572},
    {"lstAnimData", kLeft, 4257, 5328, 5572},
    {"picPagePos", kLeft, 4257, 5328, 5572},
    {"picTextContainer", kLeft, 4257, 5328, 5572},
    {"lstPageData", kWidth, 2838, 3552, 3715},
    {"lstAnimData", kWidth, 2838, 3552, 3715},
    {"txt", kWidth, 2838, 3552, 3715},
    {"picTextContainer", kWidth, 2838, 3552, 3715},
    {"cmdPageChange", kLeft, 4377, 5448, 5692},
    {"cmdAnimChange", kLeft, 4377, 5448, 5692},
    {"cboTextLang", kWidth, 1998, 2712, 2875},
};

TEST(FormLayout, FollowsTheTableOfSizes) {
  const auto smallest = LayOutForm(7815, 7020, false, true);
  const auto start = LayOutForm(9600, 8010, false, true);
  const auto odd = LayOutForm(10007, 9001, false, true);
  for (const Told& told : kTable) {
    SCOPED_TRACE(told.control);
    EXPECT_EQ(smallest.at(told.control).*told.property, told.smallest);
    EXPECT_EQ(start.at(told.control).*told.property, told.start);
    EXPECT_EQ(odd.at(told.control).*told.property, told.odd);
  }
}

TEST(FormLayout, ListOfPageWordsIsShorterBy2890ExactlyWhileThePositionBlockShows) {
  const auto without = LayOutForm(9600, 8010, false, true);
  auto with = LayOutForm(9600, 8010, true, true);
  EXPECT_EQ(with.at("lstPageData"), (TwipRect{5328, 3060, 3552, 2655}));
  with["lstPageData"] = without.at("lstPageData");
  EXPECT_EQ(with, without);
}

TEST(FormLayout, ControlsOfExpertModeLeaveNoHoles) {
  const auto expert = LayOutForm(9600, 8010, false, true);
  auto plain = LayOutForm(9600, 8010, false, false);
  for (const char* name : {"cmdExtract", "cmdReplace", "cmdExtractAll", "cmdReplaceAll", "cmdGenRscAdd"}) {
    EXPECT_EQ(plain.at(name).top, expert.at(name).top - 540) << name << ", by two lines";
    plain[name] = expert.at(name);
  }
  for (const char* name : {"lblGenOffsetEntry", "lblGenOffsetData", "lblGenOffsetEntryDes", "lblGenOffsetDataDes"}) {
    plain[name] = expert.at(name);  // not to be seen
  }
  EXPECT_EQ(plain.at("cmdTextSearch").width, plain.at("cmdTextExport").width);
  plain["cmdTextSearch"] = expert.at("cmdTextSearch");
  EXPECT_EQ(plain, expert) << "all others stay";
}

TEST(FormLayout, PositionBlockEndsAboveTheListOfWords) {
  const auto places = LayOutForm(7815, 7020, true, true);
  const TwipRect block = places.at("picPagePos");
  EXPECT_LE(block.top + block.height, places.at("lstPageData").top);
}

TEST(FormLayout, ListsStayInsideTheFrame) {
  for (const int height : {7020, 8010, 15000}) {
    const auto places = LayOutForm(9600, height, false, true);
    const TwipRect frame = places.at("shpBorder");
    for (const char* name : {"lst", "lstText", "lstPage", "lstAnim"}) {
      const TwipRect list = places.at(name);
      EXPECT_GT(list.top, frame.top);
      EXPECT_LT(list.top + list.height, frame.top + frame.height);
      EXPECT_GT(list.left, frame.left);
    }
  }
}

// Where a control ends on the right, in pixels.
int RightEnd(const TwipRect& place) {
  return PixelsOf(place.left) + PixelsOf(place.width);
}

TEST(FormLayout, ColumnsEndWhereTheirControlsEnd) {
  for (const int width : {7815, 9600, 10007, 11111}) {
    const auto places = LayOutForm(width, 8010, true, true);
    for (const char* name : {"cmdReplace", "cmdReplaceAll", "cmdGenRscAdd"}) {
      EXPECT_EQ(RightEnd(places.at(name)), RightEnd(places.at("picPreview"))) << name << " " << width;
    }
    for (const char* name : {"cmdTextReset", "cmdTextRscAdd", "cmdTextExport", "cmdTextImport"}) {
      EXPECT_EQ(RightEnd(places.at(name)), RightEnd(places.at("txt"))) << name << " " << width;
    }
    for (const char* name : {"txtPageOpt(1)", "txtPageOpt(2)", "txtPageOpt(11)", "cmdPagePosChange"}) {
      EXPECT_EQ(RightEnd(places.at(name)), PixelsOf(places.at("lstPageData").width)) << name << " " << width;
    }
    EXPECT_EQ(places.at("cmdExtract").width, places.at("cmdReplace").width);
    EXPECT_EQ(places.at("cmdTextChange").width, places.at("cmdTextReset").width);
  }
}

TEST(FormLayout, PixelsAreFifteenTwips) {
  EXPECT_EQ(PixelsOf(7815), 521);
  EXPECT_EQ(PixelsOf(7020), 468);
  EXPECT_EQ(PixelsOf(1640), 109);
  EXPECT_EQ(PixelsOf(2890), 193);
}

}  // namespace
}  // namespace kelvane
