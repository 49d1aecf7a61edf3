// The tables behind the display and the changing of words, row by row: plain words, classes of pages, types of
// references.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "pages/AddPage.h"
#include "pages/EditFixture.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::Editing;
using test::kBody;
using test::NumberOf;
using test::Resource;
using test::Word;
using ::testing::ElementsAre;

// --- plain words

struct PlainWord {
  std::uint32_t word;
  const char* row;
};

// What the singles are was worked out with another language's formatting.
TEST(AddValueRow, ShowsPlainFloatsInDecimalAndAllElseInHexadecimal) {
  constexpr PlainWord kWords[] = {
      {0x00000000, "0"},
      {0x80000000, "-0"},
      {0x3F800000, "1"},
      {0x3FC00000, "1.5"},
      {0xC3700000, "-240"},
      {0x43F00000, "480"},
      {0x43880000, "272"},
      {0x3DCCCCCD, "0.1"},
      {0xBE99999A, "-0.3"},
      {0x3E4CCCCD, "0.2"},
      {0x437F0000, "255"},
      {0x3727C5AC, "0.00001"},
      {0x3A83126F, "0.001"},
      {0x3F7FFF58, "0.99999"},
      {0x4996B438, "1234567"},
      {0x4B18967F, "9999999"},
      {0x4B189680, "1E+07"},
      {0x60AD78EC, "1E+20"},
      // More than 5 decimal places, more than 7 digits.
      {0x3DFCD6DE, "0x3DFCD6DE"},
      {0x3EAAAAAB, "0x3EAAAAAB"},
      {0x40490FDB, "0x40490FDB"},
      {0x358637BD, "0x358637BD"},
      {0x4996B43C, "0x4996B43C"},
      {0x4B800000, "0x4B800000"},
      {0x7F7FFFFF, "0x7F7FFFFF"},
      // Integers, flags, what is no number.
      {0x00000001, "0x00000001"},
      {0x00000111, "0x00000111"},
      {0x0000FFFF, "0x0000FFFF"},
      {0x007FFFFF, "0x007FFFFF"},
      {0x00800000, "0x00800000"},
      {0x80000001, "0x80000001"},
      {0x7F800000, "0x7F800000"},
      {0xFF800000, "0xFF800000"},
      {0x7FC00000, "0x7FC00000"},
      {0xFFFFFFFF, "0xFFFFFFFF"},
  };
  for (const PlainWord& test : kWords) {
    ListLines list;
    AddValueRow(static_cast<std::int32_t>(test.word), list);
    EXPECT_THAT(list.Lines(), ElementsAre(test.row)) << std::hex << test.word;
  }
}

// --- classes of pages

struct PageClass {
  const char* name;  // as the list of kinds has it
  std::int32_t type;
  bool positionBlock;
};

constexpr PageClass kClasses[] = {
    {"0x901 (page)", 0x801, false},  {"0x902 (plane)", 0x802, true},         {"0x903 (button)", 0x803, true},
    {"0x904 (xmenu)", 0x804, true},  {"0x905 (list)", 0x805, false},         {"0x906 (xlist)", 0x806, true},
    {"0x907", 0x807, true},          {"0x908 (scroll)", 0x808, true},        {"0x909 (mlist)", 0x809, true},
    {"0x90A (mitem)", 0x80A, false}, {"0x90B <non-existant>", 0x80B, false}, {"0x90C (item_xlist)", 0x80C, false},
    {"0x90D (text)", 0x80D, true},   {"0x90E (model)", 0x80E, true},         {"0x90F (spin?)", 0x80F, true},
    {"0x910 (spin?)", 0x810, false}, {"0x911 (item_spin?)", 0x811, true},    {"0x912 (group)", 0x812, true},
    {"0x913 (llist)", 0x813, true},  {"0x914 (litem)", 0x814, false},        {"0x915 (edit)", 0x815, true},
    {"0x916 (clock)", 0x816, true},  {"0x917 (ilist)", 0x817, true},         {"0x918 (iitem)", 0x818, false},
    {"0x919 (icon)", 0x819, true}};

TEST_F(Editing, EveryClassShowsItsPositionBlockOrAllItsWords) {
  static_assert(std::size(kClasses) == kPageKinds.size());
  const std::vector<std::int32_t> words(15, Word(2.5F));
  for (const PageClass& test : kClasses) {
    SCOPED_TRACE(test.name);
    EXPECT_EQ(kPageKinds[static_cast<std::size_t>(test.type - 0x801)], test.name);
    document_.entries.txtPageOpt = {};
    Show(words, 0, test.type);
    EXPECT_EQ(document_.entries.picPagePosVisible, test.positionBlock);
    EXPECT_EQ(document_.entries.pageDataStart.Int(), test.positionBlock ? 13 : 0);
    EXPECT_EQ(document_.entries.txtPageOpt[12], test.positionBlock ? "2.5" : "");
    EXPECT_EQ(document_.lstPageData.Count(), test.positionBlock ? 2 : 15);
  }
}

// --- types of references

// How a new value is asked for, and what comes after it is written.
struct ReferenceCase {
  std::int32_t type;
  bool list;          // else by number
  std::int32_t word;  // what is written
  int failure;        // behind the write; 0: the row is written anew
  const char* row;    // the row afterwards
};

// Every list holds "alpha" and "beta" alone, and the second row is taken.
class EditingTypes : public Editing {
 protected:
  EditingTypes() {
    bytes_.Text(test::kEvents, "alpha").Text(test::kEvents + 8, "beta");
    bytes_.Words(rco::hdrEventLength, {13});
    document_.textRsc = {{{0, 0, 0}, {8, 0, 0}}};
    document_.textCount = 2;
  }
  void Show(std::int32_t type, int kind) {
    document_.genRsc = {Resource(kind, 0, 0x904), Resource(kind, 8, 0xA04)};
    document_.genCount = 2;
    Editing::Show({type, 0x4321, 7}, 0);
    document_.pageRecs.push_back({8, 40, 0xB00, 0x801, 0});
    document_.pageCount = 2;
    document_.animRecs = {{16, 40, 0xC00, 0x901, 0}, {8, 40, 0xD00, 0x901, 0}};
    document_.animRecs[0].recLabel = 1;  // "lpha": a label of 0 stays out
    document_.animCount = 2;
  }
};

TEST_F(EditingTypes, EveryTypeIsAskedForWrittenAndShownInItsWay) {
  constexpr ReferenceCase kCases[] = {
      {0x400, true, 8, 0, "[event] beta"},           {0x401, true, 1, 0, "[text] beta"},
      {0x402, true, 300, 0, "[image] beta"},         {0x403, true, 0xA00, 5, "[model] alpha"},
      {0x404, false, 0x55, 5, "[0x404] 0x00004321"}, {0x405, false, 0x55, 5, "[0x405] 0x00004321"},
      {0x406, false, 0x55, 5, "[0x406] 0x00004321"}, {0x407, true, 0xB00, 5, "[page] alpha"},
      {0x408, true, 0xD00, 5, "[anim] alpha"},       {0x409, true, 0xB00, 5, "[page] alpha"},
      {0x40A, false, 0x55, 5, "[0x40A] 0x00004321"}, {0x40B, false, 0x55, 5, "[0x40B] 0x00004321"},
      {0x40C, false, 0x55, 5, "[0x40C] 0x00004321"}, {0x40D, false, 0x55, 5, "[0x40D] 0x00004321"},
      {0x40E, false, 0x55, 5, "[0x40E] 0x00004321"}, {0x40F, false, 0x55, 5, "[0x40F] 0x00004321"},
  };
  static_assert(std::size(kCases) == 16);
  for (const ReferenceCase& test : kCases) {
    SCOPED_TRACE(testing::Message() << std::hex << test.type);
    std::filesystem::remove(folder_ / "f.rco.bak");
    Show(test.type, test.type == 0x403 ? 3 : 1);
    if (test.list) {
      prompts_.ExpectEditList({test.type == 0x408 ? "lpha" : "alpha", "beta"}, -1, 1);
    } else {
      prompts_.ExpectEditVal("00004321", "00000055");
    }
    EXPECT_EQ(NumberOf([&] { ChangePage(); }), test.failure);
    // The value alone changes, and the backup and the date are there, whether the row fails or not.
    Bytes expected = bytes_.Content();
    WriteI32(expected, kBody + 4, test.word);
    EXPECT_EQ(OnDisk(), expected);
    EXPECT_EQ(ReadWholeFile(folder_ / "f.rco.bak"), bytes_.Content());
    EXPECT_EQ(mod_.cFileDate, DateOfFile(folder_ / "f.rco"));
    EXPECT_TRUE(watch_.Running());
    EXPECT_EQ(Rows().front(), test.row);
    EXPECT_EQ(SelectedRow(), test.failure == 0 ? 1 : 0);
  }
}

TEST_F(EditingTypes, EveryListOpensWithoutASelectionForAValueThatItDoesNotHave) {
  for (const std::int32_t type : {0x400, 0x401, 0x402, 0x403, 0x407, 0x408, 0x409}) {
    SCOPED_TRACE(testing::Message() << std::hex << type);
    Show(type, type == 0x403 ? 3 : 1);
    prompts_.ExpectEditList({type == 0x408 ? "lpha" : "alpha", "beta"}, -1, std::nullopt);
    ChangePage();
  }
  ExpectUntouched();
}

TEST_F(EditingTypes, OkWithoutARowIsFailure9InEveryList) {
  for (const std::int32_t type : {0x400, 0x401, 0x402, 0x403, 0x407, 0x408, 0x409}) {
    SCOPED_TRACE(testing::Message() << std::hex << type);
    Show(type, type == 0x403 ? 3 : 1);
    prompts_.ExpectEditList({type == 0x408 ? "lpha" : "alpha", "beta"}, -1, -1);
    EXPECT_EQ(NumberOf([&] { ChangePage(); }), 9);
  }
  ExpectUntouched();
}

}  // namespace
}  // namespace kelvane
