#include "support/ChangeSequence.h"

#include <algorithm>
#include <bit>
#include <set>
#include <stdexcept>

#include "common/Files.h"
#include "container/FileBracket.h"
#include "container/Inserts.h"
#include "editor/OpenRcoFile.h"
#include "pages/EntryDisplay.h"
#include "pages/EntryEdit.h"
#include "support/ExpectedChanges.h"
#include "text/TextEdit.h"

namespace kelvane::test {

namespace {

// What a change of any file may fail with.
const std::set<int> kToldFailures = {5, 6, 7, 9};

void Must(bool holds, const std::string& what) {
  if (!holds) {
    throw std::logic_error("not so: " + what);
  }
}

// Records as a scan makes them: of a sound, what a scan reads at the channels' places isn't followed by the records.
std::vector<GenRsc> Comparable(std::vector<GenRsc> records) {
  for (GenRsc& record : records) {
    if (record.rscKind == Int16(rco::kKindVag)) {
      record.rscCompression = 0;
      record.unpackedSize = 0;
    }
  }
  return records;
}

}  // namespace

ChangeSequence::ChangeSequence(const std::filesystem::path& folder, Pick pick)
    : path_(folder / "screen.rco"), newData_(folder / "new.dat"), pick_(std::move(pick)) {
  RcoBuilder builder = RandomRco(pick_);
  const bool packed = pick_(6) == 0;
  if (packed) {
    builder.Options().version = rco::kVersionPlain;
    builder.Options().absentOffset = -1;  // a 0 would be moved like an area that is there
    builder.Options().trailing = {0xEE};  // something must follow the packed head
  }
  const Bytes plain = builder.Build().bytes;
  builder.Options().deflatedHead = packed;
  builder.Options().version = packed ? rco::kVersionDeflated : builder.Options().version;
  first_ = builder.Build().bytes;
  WriteWholeFile(path_, first_);
  DeleteFileQuietly(BackupPath(path_));

  mod_.cAppPath = folder / "";
  mod_.cNoUpdatBak = pick_(2) == 0;
  OpenRcoFile(path_, mod_, document_, ports_);
  Must(prompts_.TakeFailures().empty(), "a built file opens without a failure");
  Check(WalkRco(plain).contents);
}

Bytes ChangeSequence::Content() const {
  return ReadWholeFile(path_);
}

WriteContext ChangeSequence::Context() {
  return {mod_, document_, prompts_, watch_};
}

AfterInsert ChangeSequence::Afterwards() {
  return {.reopen = [this] { OpenRcoFile(mod_.cCurFile, mod_, document_, ports_); },
          .selectLine = [this](Int16 row) { document_.lst.Select(row.Int()); }};
}

void ChangeSequence::Step() {
  using Change = void (ChangeSequence::*)();
  constexpr std::array<Change, 16> kChanges = {
      &ChangeSequence::Replace,       &ChangeSequence::Replace,        &ChangeSequence::Replace,
      &ChangeSequence::ChangeText,    &ChangeSequence::ChangeText,     &ChangeSequence::ChangeText,
      &ChangeSequence::InsertGeneral, &ChangeSequence::InsertGeneral,  &ChangeSequence::InsertGeneral,
      &ChangeSequence::InsertText,    &ChangeSequence::InsertText,     &ChangeSequence::InsertPage,
      &ChangeSequence::InsertPage,    &ChangeSequence::ChangePageWord, &ChangeSequence::ChangeAnimationWord,
      &ChangeSequence::ChangePosition};
  ++number_;
  (this->*kChanges[pick_(kChanges.size())])();
  if (pick_(8) == 0) {
    Reopen();
  }
  if (FileExists(BackupPath(path_))) {
    Must(ReadWholeFile(BackupPath(path_)) == first_, "the backup is the first version");
  }
}

bool ChangeSequence::HasRecordsOutside() const {
  const std::int64_t length = FileLength(path_);
  const auto isOutside = [length](const EntryRec& record) { return record.recPos > length; };
  return std::any_of(document_.genRsc.begin(), document_.genRsc.end(),
                     [length](const GenRsc& record) { return record.entryPos > length; }) ||
         std::any_of(document_.pageRecs.begin(), document_.pageRecs.end(), isOutside) ||
         std::any_of(document_.animRecs.begin(), document_.animRecs.end(), isOutside);
}

bool ChangeSequence::Run(const std::string& name, bool regular, const std::optional<std::vector<int>>& failures,
                         const std::function<void()>& command) {
  wild_ = wild_ || !regular;
  ++counts_[name + (wild_ ? ", wild" : "")];
  std::vector<int> thrown;
  try {
    command();
  } catch (const RuntimeFailure& failure) {
    thrown.push_back(failure.Number());
  }
  std::vector<int> seen = prompts_.TakeFailures();
  seen.insert(seen.end(), thrown.begin(), thrown.end());
  if (!wild_) {
    Must(!failures || seen == *failures, name + " fails as told");
  }
  for (const int failure : seen) {
    Must(kToldFailures.contains(failure), name + " fails with " + std::to_string(failure));
  }
  if (wild_) {
    ++wildSteps_;
    OpenRcoFile(path_, mod_, document_, ports_);
    for (const int failure : prompts_.TakeFailures()) {
      Must(kToldFailures.contains(failure), "opening fails with " + std::to_string(failure));
      wildSteps_ = kMostWildSteps;
    }
    if (HasRecordsOutside()) {
      wildSteps_ = kMostWildSteps;
    }
  }
  return !wild_;
}

void ChangeSequence::Check(const RcoContents& expected) {
  now_ = WalkRco(Content());
  const std::string difference = Difference(expected, now_.contents);
  Must(difference.empty(),
       "all is as it was but for the change; step " + std::to_string(number_) + " makes a difference in " + difference);
  CheckRecords();
}

void ChangeSequence::CheckRecords() {
  Mod mod = mod_;
  RcoDocument again;
  OpenRcoFile(path_, mod, again, ports_);
  Must(prompts_.TakeFailures().empty(), "the file opens again");
  Must(Comparable(again.genRsc) == Comparable(document_.genRsc), "the records of resources are those of the file");
  Must(again.dataAreas == document_.dataAreas, "the data areas are those of the file");
  Must(again.labelBase == document_.labelBase && again.textDataBase == document_.textDataBase,
       "labels and strings are where the file has them");
  Must(again.textRsc == document_.textRsc && again.langPos == document_.langPos, "the texts are those of the file");
  Must(again.pageRecs == document_.pageRecs, "the pages are those of the file");
  Must(again.animRecs == document_.animRecs, "the animations are those of the file");
  Must(again.lst.Lines() == document_.lst.Lines() && again.lstText.Lines() == document_.lstText.Lines() &&
           again.lstPage.Lines() == document_.lstPage.Lines() && again.lstAnim.Lines() == document_.lstAnim.Lines(),
       "the lines are those of the file");
  Must(mod_.cFileDate == DateOfFile(path_), "the file's date is recorded");
}

void ChangeSequence::CheckOneWord(std::vector<WalkedEntry> RcoContents::*table, std::size_t row) {
  RcoContents expected = now_.contents;
  Bytes& entry = (expected.*table)[row].entry;
  const Bytes changed = (WalkRco(Content()).contents.*table)[row].entry;
  for (std::size_t at = rco::kEntryHeadSize; at < entry.size(); at += 4) {
    if (ReadI32(entry, static_cast<std::int64_t>(at)) != ReadI32(changed, static_cast<std::int64_t>(at))) {
      WriteI32(entry, static_cast<std::int64_t>(at), ReadI32(changed, static_cast<std::int64_t>(at)));
      break;
    }
  }
  Check(expected);
}

void ChangeSequence::Reopen() {
  OpenRcoFile(path_, mod_, document_, ports_);
  const std::vector<int> failures = prompts_.TakeFailures();
  Must(wild_ || failures.empty(), "the file opens again");
  ++counts_["opening again"];
}

void ChangeSequence::Replace() {
  if (document_.genRsc.empty()) {
    return;
  }
  const std::size_t index = PickBelow(document_.genRsc.size());
  GenRsc& record = document_.genRsc[index];
  const auto kind = static_cast<std::size_t>(record.rscKind.Int() - 1);
  Bytes data = RandomBytes(pick_, 60);
  Channels channels{.stereo = kind == kSounds && pick_(2) == 0, .size1 = static_cast<std::int32_t>(data.size())};
  if (channels.stereo) {
    data.resize((data.size() + 3) / 4 * 4);
    const Bytes right = RandomBytes(pick_, 60);
    channels.size2 = static_cast<std::int32_t>(right.size());
    Append(data, right);
  }
  WriteWholeFile(newData_, data);
  mod_.vagChannels = channels.stereo ? 2 : 1;
  mod_.vagSize1 = channels.size1;
  mod_.vagSize2 = channels.size2;
  mod_.cNoCompression = pick_(2) == 0;
  const auto unpacked = static_cast<std::int32_t>(pick_(1000));
  if (record.unpackedSize != -1) {
    record.unpackedSize = unpacked;
  }

  const bool compared = Run("replacement", true, std::vector<int>{}, [&] {
    Must(ReplaceGenRscData(newData_, Int16(static_cast<int>(index)), Context()) || wild_, "the data are replaced");
  });
  if (compared) {
    std::size_t n = index;
    for (std::size_t before = 0; before < kind; ++before) {
      n -= now_.contents.resources[before].size();
    }
    Check(WithData(now_.contents, kind, n, data, !mod_.cNoCompression, unpacked, channels));
  }
}

void ChangeSequence::ChangeText() {
  if (document_.lstText.Count() == 0 || document_.cboTextLang.Count() == 0) {
    return;
  }
  const std::size_t item = PickBelow(static_cast<std::size_t>(document_.lstText.Count()));
  const std::size_t language = PickBelow(static_cast<std::size_t>(document_.cboTextLang.Count()));
  const std::u16string text = RandomText(pick_);
  std::u16string typed;
  for (const char16_t unit : text) {
    typed += unit == u'\n' && pick_(2) == 0 ? u"\r\n" : std::u16string(1, unit);
  }
  const bool compared = Run("change of a text", true, std::vector<int>{}, [&] {
    document_.cboTextLang.Select(static_cast<int>(language));
    document_.lstText.Select(static_cast<int>(item));
    cmdTextChange(mod_, document_, watch_, typed);
  });
  if (compared) {
    Check(WithString(now_.contents, item, language, text));
  }
}

void ChangeSequence::ChangePageWord() {
  if (document_.lstPage.Count() == 0) {
    return;
  }
  const std::size_t row = PickBelow(static_cast<std::size_t>(document_.lstPage.Count()));
  // References by number end with failure 5 after the write.
  const bool compared = Run("change of a page's word", true, std::nullopt, [&] {
    document_.lstPage.Select(static_cast<int>(row));
    lstPage_Click(mod_, document_);
    if (document_.lstPageData.Count() > 0) {
      document_.lstPageData.Select(
          static_cast<int>(PickBelow(static_cast<std::size_t>(document_.lstPageData.Count()))));
      cmdPageChange(mod_, document_, prompts_, watch_);
    }
  });
  if (compared) {
    CheckOneWord(&RcoContents::pages, row);
  }
}

void ChangeSequence::ChangeAnimationWord() {
  if (document_.lstAnim.Count() == 0) {
    return;
  }
  const std::size_t row = PickBelow(static_cast<std::size_t>(document_.lstAnim.Count()));
  const bool compared = Run("change of an animation's word", true, std::vector<int>{}, [&] {
    document_.lstAnim.Select(static_cast<int>(row));
    lstAnim_Click(mod_, document_);
    if (document_.lstAnimData.Count() > 0) {
      document_.lstAnimData.Select(
          static_cast<int>(PickBelow(static_cast<std::size_t>(document_.lstAnimData.Count()))));
      cmdAnimChange(mod_, document_, prompts_, watch_);
    }
  });
  if (compared) {
    CheckOneWord(&RcoContents::animations, row);
  }
}

void ChangeSequence::ChangePosition() {
  if (document_.lstPage.Count() == 0) {
    return;
  }
  const std::size_t row = PickBelow(static_cast<std::size_t>(document_.lstPage.Count()));
  if (row >= document_.pageRecs.size() || !HasPositionBlock(document_.pageRecs[row].recType)) {
    return;
  }
  std::array<std::string, rco::kPositionWords> boxes;
  std::vector<std::int32_t> words;
  for (std::string& box : boxes) {
    const std::uint32_t number = pick_(1000);
    box = std::to_string(number) + ".5";
    words.push_back(std::bit_cast<std::int32_t>(static_cast<float>(number) + 0.5F));
  }
  const bool compared = Run("change of a position", true, std::vector<int>{}, [&] {
    document_.lstPage.Select(static_cast<int>(row));
    cmdPagePosChange(mod_, document_, watch_, boxes);
  });
  if (compared) {
    RcoContents expected = now_.contents;
    for (std::size_t i = 0; i < words.size(); ++i) {
      WriteI32(expected.pages[row].entry, rco::kEntryHeadSize + static_cast<std::int64_t>(i) * 4, words[i]);
    }
    Check(expected);
  }
}

}  // namespace kelvane::test
