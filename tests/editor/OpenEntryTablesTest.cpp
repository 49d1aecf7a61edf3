#include <gmock/gmock.h>

#include "editor/EditorFixture.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// SmallRco with, behind it, a page root at 276, the page entry "ab" at 316, an animation root at 400, the animation
// "ab" at 440, the page pointer at 600 and the animation pointer at 604. No entry tells its length.
class OpenEntryTables : public test::EditorFixture {
 protected:
  OpenEntryTables() {
    file_.resize(608);
    Put(rco::hdrPageRoot, 276);
    Put(rco::hdrAnimRoot, 400);
    Put(rco::hdrPagePtrs, 600);
    Put(rco::hdrPagePtrs + 4, 4);
    Put(rco::hdrAnimPtrs, 604);
    Put(rco::hdrAnimPtrs + 4, 4);
    Put(316, 0x801);
    Put(440, 0x901);
    Put(600, 316);
    Put(604, 440);
  }

  void Put(std::int64_t offset, std::int32_t value) { WriteI32(file_, offset, value); }
  void Open() { editor.OpenRcoFile(folder.Write("f.rco", file_)); }
  const RcoDocument& Document() { return editor.Document(); }

  Bytes file_ = test::SmallRco();
};

TEST_F(OpenEntryTables, BothTablesAreRead) {
  Open();
  EXPECT_THAT(Document().lstPage.Lines(), ElementsAre("ab @ 0x13C"));
  EXPECT_THAT(Document().lstAnim.Lines(), ElementsAre("ab @ 0x1B8"));
  EXPECT_EQ(Document().pageCount, Int16(1));
  EXPECT_EQ(Document().animCount, Int16(1));
}

TEST_F(OpenEntryTables, PagesEndAtTheAnimationRootAndAnimationsAtTheFirstPointerTable) {
  Open();
  EXPECT_EQ(Document().pageRecs[0].recSize, 400 - 316);
  EXPECT_EQ(Document().animRecs[0].recSize, 600 - 440);
}

TEST_F(OpenEntryTables, TheFirstPointerTableIsTheFirstInTheHeaderThatIsThere) {
  Put(rco::hdrTextPtrs, 0);
  Put(rco::hdrImagePtrs, -1);
  Put(rco::hdrVagPtrs, 592);
  Put(rco::hdrGmoPtrs, 500);
  Open();
  EXPECT_EQ(Document().animRecs[0].recSize, 592 - 440);
}

TEST_F(OpenEntryTables, WithoutAnAnimationRootPagesEndAtTheFirstPointerTable) {
  Put(rco::hdrAnimRoot, 0);
  Open();
  EXPECT_EQ(Document().pageRecs[0].recSize, 600 - 316);
  EXPECT_THAT(Document().lstAnim.Lines(), IsEmpty());
}

TEST_F(OpenEntryTables, ARootOfZeroOrLessIsAnAbsentTable) {
  Put(rco::hdrPageRoot, -1);
  Put(rco::hdrAnimRoot, 0);
  Open();
  EXPECT_THAT(Document().lstPage.Lines(), IsEmpty());
  EXPECT_THAT(Document().lstAnim.Lines(), IsEmpty());
}

TEST_F(OpenEntryTables, ExpertModeShowsTheTypes) {
  editor.State().cExpert = true;
  Open();
  EXPECT_THAT(Document().lstPage.Lines(), ElementsAre("ab @ 0x13C [0x801]"));
  EXPECT_THAT(Document().lstAnim.Lines(), ElementsAre("ab @ 0x1B8 [0x901]"));
}

TEST_F(OpenEntryTables, OpeningAgainListsEverythingOnce) {
  Open();
  Open();
  EXPECT_EQ(Document().lstPage.Count(), 1);
  EXPECT_EQ(Document().lstAnim.Count(), 1);
}

TEST_F(OpenEntryTables, AFailingPageTableAnsweredYesGoesOnWithTheAnimations) {
  Put(600, -4);
  prompts.ExpectUnknownFailure(FailureCode::InvalidCall, Answer::Yes);
  Open();
  EXPECT_THAT(Document().lstPage.Lines(), IsEmpty());
  EXPECT_EQ(Document().pageCount, Int16(1));
  EXPECT_THAT(Document().lstAnim.Lines(), ElementsAre("ab @ 0x1B8"));
  EXPECT_EQ(editor.State().cCurFile, folder / "f.rco");
}

TEST_F(OpenEntryTables, AFailingPageTableAnsweredNoKeepsWhatWasFilled) {
  Put(rco::hdrPagePtrs + 4, -4);
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  Open();
  EXPECT_THAT(Document().lst.Lines(), ElementsAre("[GIM] ab"));
  EXPECT_THAT(Document().lstAnim.Lines(), IsEmpty());
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(OpenEntryTables, PagesDeeperThan7LevelsAreAskedAboutAndYesGoesOn) {
  file_.resize(640);
  Put(rco::hdrPagePtrs, 608);
  Put(rco::hdrPagePtrs + 4, 32);
  for (std::int64_t pointer = 608; pointer < 640; pointer += 4) {
    Put(pointer, 316);  // one entry, again and again, each the child of the one before
  }
  Put(316 + rco::entryChildren, 1);
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::Yes);
  Open();
  EXPECT_EQ(Document().lstPage.Count(), 8);
  EXPECT_EQ(Document().lstPage.Text(7), std::string(21, ' ') + "ab @ 0x13C");
  EXPECT_THAT(Document().lstAnim.Lines(), ElementsAre("ab @ 0x1B8"));
}

TEST_F(OpenEntryTables, ATableOf32768PagesIsAskedAboutAndYesGoesOn) {
  constexpr std::int32_t kBytes = 32768 * 4;
  file_.resize(608 + kBytes);
  Put(rco::hdrPagePtrs, 608);
  Put(rco::hdrPagePtrs + 4, kBytes);
  for (std::int64_t pointer = 608; pointer < 608 + kBytes; pointer += 4) {
    Put(pointer, 316);
  }
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::Yes);
  Open();
  EXPECT_THAT(Document().lstPage.Lines(), IsEmpty());
  EXPECT_THAT(Document().lstAnim.Lines(), ElementsAre("ab @ 0x1B8"));
}

TEST_F(OpenEntryTables, AWildAnimationIsAskedAboutAndAfterNoTheNextFileOpensAsEver) {
  Put(440 + rco::entrySize, 40);
  Put(440 + rco::entryChildren, 0x7FFFFFFF);  // read from zeros, each in the place of the one before
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  Open();
  EXPECT_EQ(Document().lstAnim.Count(), 4096);
  EXPECT_TRUE(editor.State().cCurFile.empty());

  file_ = test::SmallRco();
  Open();
  EXPECT_THAT(Document().lst.Lines(), ElementsAre("[GIM] ab"));
  EXPECT_THAT(Document().lstAnim.Lines(), IsEmpty());
  EXPECT_EQ(editor.State().cCurFile, folder / "f.rco");
}

}  // namespace
}  // namespace kelvane
