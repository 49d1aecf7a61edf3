// A page entry, shown and with a row selected, in a file of names, texts and events; and the same entry as an
// animation.
#pragma once

#include <bit>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/Files.h"
#include "container/RcoFormat.h"
#include "pages/EntryDisplay.h"
#include "pages/EntryEdit.h"
#include "pages/TableBytes.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane::test {

using Strings = std::vector<std::string>;

constexpr std::int32_t kTextRoot = 0xC0;
constexpr std::int32_t kLabels = 0x180;  // "alpha" at 0, "beta" at 8, "gamma" at 16
constexpr std::int32_t kEvents = 0x1A0;  // "first" at 0, "second" at 8, "third" at 16; 24 bytes
constexpr std::int32_t kEntry = 0x300;
constexpr std::int32_t kBody = kEntry + 40;
constexpr const char* kInputPrompt = "输入新数值";

constexpr std::int32_t Word(float value) {
  return std::bit_cast<std::int32_t>(value);
}

// The record of an image, a sound or a model (1, 2, 3).
inline GenRsc Resource(int kind, std::int32_t label, std::int32_t entryPos) {
  GenRsc record;
  record.rscKind = kind;
  record.labelOffset = label;
  record.entryPos = entryPos;
  return record;
}

class Editing : public ::testing::Test {
 protected:
  Editing() {
    bytes_.Words(rco::hdrTextRoot, {kTextRoot}).Words(rco::hdrEventOffset, {kEvents, 24});
    bytes_.Words(kTextRoot + 88, {0, 0, 0, 8, 0, 0, 16, 0, 0});
    bytes_.Text(kLabels, "alpha").Text(kLabels + 8, "beta").Text(kLabels + 16, "gamma");
    bytes_.Text(kEvents, "first").Text(kEvents + 8, "second").Text(kEvents + 16, "third").Reach(kEvents + 24);
    document_.labelBase = kLabels;
    document_.textRsc = {{{0, 0, 0}, {8, 0, 0}, {16, 0, 0}}};
    document_.textCount = 3;
  }

  // Shows a page entry of those words at kEntry, and the same as an animation, with a row selected in each list.
  void Show(const std::vector<std::int32_t>& words, int row, std::int32_t type = 0x801) {
    bytes_.Reach(kBody);
    for (std::size_t i = 0; i < words.size(); ++i) {
      bytes_.Words(kBody + static_cast<std::int32_t>(i) * 4, {words[i]});
    }
    mod_.cCurFile = folder_.Write("f.rco", bytes_.Content());
    const EntryRec record{0, 40 + static_cast<std::int32_t>(words.size()) * 4, kEntry, type, 0};
    document_.pageRecs = {record};
    document_.pageCount = 1;
    document_.animRecs = {record};
    document_.lstPage.Clear();
    document_.lstPage.Add("the page");
    document_.lstPage.Select(0);
    document_.lstAnim.Clear();
    document_.lstAnim.Add("the animation");
    document_.lstAnim.Select(0);
    lstPage_Click(mod_, document_);
    lstAnim_Click(mod_, document_);
    if (row < document_.lstPageData.Count()) {
      document_.lstPageData.Select(row);
    }
    document_.lstAnimData.Select(row);
  }

  void ChangePage() { cmdPageChange(mod_, document_, prompts_, watch_); }
  void ChangeAnim() { cmdAnimChange(mod_, document_, prompts_, watch_); }

  const Strings& Rows() { return document_.lstPageData.Lines(); }
  int SelectedRow() { return document_.lstPageData.Selected(); }
  Bytes OnDisk() const { return ReadWholeFile(folder_ / "f.rco"); }

  // The file is as it was written but for that word of the body.
  void ExpectOnlyChange(std::int32_t word, std::int32_t value) {
    Bytes expected = bytes_.Content();
    WriteI32(expected, kBody + word * 4, value);
    EXPECT_EQ(OnDisk(), expected);
    EXPECT_EQ(ReadWholeFile(folder_ / "f.rco.bak"), bytes_.Content());
    EXPECT_THAT(watch_.Calls(), ::testing::ElementsAre("stop", "start"));
    EXPECT_EQ(mod_.cFileDate, DateOfFile(folder_ / "f.rco"));
  }
  // A failure between backup and write.
  void ExpectOnlyBackedUp() {
    EXPECT_EQ(OnDisk(), bytes_.Content());
    EXPECT_EQ(ReadWholeFile(folder_ / "f.rco.bak"), bytes_.Content());
    EXPECT_THAT(watch_.Calls(), ::testing::ElementsAre("stop"));
  }
  void ExpectUntouched() {
    EXPECT_EQ(OnDisk(), bytes_.Content());
    EXPECT_THAT(folder_.Names(), ::testing::ElementsAre("f.rco"));
    EXPECT_THAT(watch_.Calls(), ::testing::IsEmpty());
  }

  TempFolder folder_;
  ScriptedPrompts prompts_;
  ScriptedWatch watch_;
  TableBytes bytes_;
  Mod mod_;
  RcoDocument document_;
};

}  // namespace kelvane::test
