// A built file with some of its words overwritten, and a row of changes of the words of its entries: each ends well or
// in a told failure, and of the file only that word or that position block changes, to what was answered.
#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "EditAnswers.h"
#include "FuzzFile.h"
#include "FuzzTarget.h"
#include "Script.h"
#include "common/Files.h"
#include "container/GenScan.h"
#include "container/RcoFormat.h"
#include "pages/EntryDisplay.h"
#include "pages/EntryEdit.h"
#include "pages/EntryScan.h"
#include "support/RcoSeeds.h"
#include "text/TextScan.h"

namespace kelvane {
namespace {

using fuzz::Require;
using fuzz::Script;
using fuzz::Succeeds;

// Longer lists and bodies are for the other targets.
constexpr int kLines = 256;
constexpr std::int32_t kWords = 512;
// Writing behind this fills the disk with zeros.
constexpr std::int64_t kFarBehind = 4096;

class NoWatch : public Watch {
 public:
  void Start() override { running_ = true; }
  void Stop() override { running_ = false; }
  [[nodiscard]] bool Running() const { return running_; }

 private:
  bool running_ = true;
};

std::int32_t NextWord(Script& script) {
  constexpr std::array<std::int32_t, 16> kWild = {
      0, 1, -1, 2, 0xFFFF, 0x7FFFFFFF, -0x7FFFFFFF - 1, 40, 44, 92, 0x3F800000, 0x7FC00000, 300, 32767, 32768, -44};
  const std::uint8_t choice = script.Next();
  if (choice < 0x40) {
    return kWild[choice % kWild.size()];
  }
  if (choice < 0x80) {
    return rco::kRefFirst + choice % 16;
  }
  const std::uint16_t low = script.NextU16();
  return static_cast<std::int32_t>(low | std::uint32_t{script.NextU16()} << 16);
}

Bytes BuildFile(Script& script) {
  static const Bytes built = test::SmallRcoOfEverything().Build().bytes;
  Bytes bytes = built;
  for (int left = script.Next() % 8; left > 0; --left) {
    const std::size_t place = script.NextU16() % (bytes.size() / 4) * 4;
    WriteI32(bytes, static_cast<std::int64_t>(place), NextWord(script));
  }
  return bytes;
}

// A file on disk, and the document of it.
class OpenFile {
 public:
  explicit OpenFile(const Bytes& bytes) : bytes_(bytes) {
    static const fuzz::TempFile scratch;
    mod.cCurFile = scratch.Path();
    mod.cNoUpdatBak = true;  // the backup's bracket has its own tests
    WriteWholeFile(mod.cCurFile, bytes);
    RcoFile file(mod.cCurFile);
    document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
    file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
    Succeeds([&] { ScanGenRsc(file, document); });
    Succeeds([&] { ScanTextRsc(file, document); });
    for (const bool isPageTable : {true, false}) {
      const std::int32_t end = file.ReadI32At(isPageTable ? rco::hdrAnimRoot : rco::hdrTextPtrs);
      file.Seek(isPageTable ? rco::hdrPagePtrs : rco::hdrAnimPtrs);
      Succeeds([&] { ScanEntryTable(file, end, document, isPageTable, false); });
    }
  }

  // What the file must hold now: as before but for those words, or as before where nothing was written.
  void Expect(std::int64_t position, std::span<const std::int32_t> words) {
    if (!words.empty()) {
      const std::int64_t end = position + static_cast<std::int64_t>(words.size()) * 4;
      bytes_.resize(std::max(bytes_.size(), static_cast<std::size_t>(end)));
    }
    for (const std::int32_t word : words) {
      WriteI32(bytes_, position, word);
      position += 4;
    }
    Require(ReadWholeFile(mod.cCurFile) == bytes_, "only the words of the change are written");
  }

  [[nodiscard]] std::int32_t Word(std::int64_t position) const {
    return position + 4 <= static_cast<std::int64_t>(bytes_.size()) ? ReadI32(bytes_, position) : 0;
  }
  // Whether an entry's words lie where this target changes them.
  [[nodiscard]] bool Reaches(const EntryRec& record) const {
    return record.recSize <= rco::kEntryHeadSize + kWords * 4 &&
           record.recPos <= static_cast<std::int64_t>(bytes_.size()) + kFarBehind;
  }

  Mod mod;
  RcoDocument document;

 private:
  Bytes bytes_;
};

// A row of lstPageData, from the words of the body alone: where its word is, and of which type of reference; 0: a plain
// word.
struct Place {
  std::int32_t word = 0;
  std::int32_t type = 0;
  bool blank = false;
};

Place PlaceOfRow(const OpenFile& open, const EntryRec& record, int row) {
  const std::int64_t body = std::int64_t{record.recPos} + 40;
  const std::int32_t count = (record.recSize - 40) / 4;
  std::int32_t word = open.document.entries.pageDataStart.Int();
  for (;; --row) {
    Place place{.word = word};
    const std::int32_t first = open.Word(body + std::int64_t{word} * 4);
    if (word + 1 < count) {
      place.blank = first == 0xFFFF && open.Word(body + std::int64_t{word} * 4 + 4) == -1;
      if (first >= 0x400 && first <= 0x40F) {
        place.type = first;
      }
    }
    const bool pair = place.blank || place.type != 0;
    if (row == 0) {
      place.word += pair ? 1 : 0;
      return place;
    }
    word += pair ? 2 : 1;
  }
}

// Whether the row of a changed reference of that type can't be written anew.
bool FailsBehindTheWrite(std::int32_t type) {
  return type != 0 && type != 0x400 && type != 0x401 && type != 0x402;
}

// What the action failed with; 0: it didn't.
template <class Action>
int NumberOf(Action&& action) {
  try {
    action();
    return 0;
  } catch (...) {
    return CurrentFailure().Number();
  }
}

void RequireTold(int failure) {
  Require(failure == 0 || failure == 5 || failure == 6 || failure == 7 || failure == 9, "only told failures");
}

void CheckAnswer(const fuzz::EditAnswers& answers, std::int32_t type, std::int32_t written) {
  if (answers.Word().has_value()) {
    Require(written == *answers.Word(), "the word is what was answered");
  } else if (type == 0x401) {
    Require(written == answers.Row(), "a text is its number");
  } else if (type == 0x402) {
    Require(written == 244 + answers.Row() * 56, "an image is an offset of the fixed layout");
  }
}

void ChangePageWord(OpenFile& open, Script& script, NoWatch& watch) {
  RcoDocument& document = open.document;
  const EntryRec record = document.pageRecs.at(static_cast<std::size_t>(document.lstPage.Selected()));
  const Place place = PlaceOfRow(open, record, document.lstPageData.Selected());
  const std::int64_t position = std::int64_t{record.recPos} + 40 + std::int64_t{place.word} * 4;
  fuzz::EditAnswers answers(script);
  bool changed = false;
  const int failure = NumberOf([&] { changed = cmdPageChange(open.mod, document, answers, watch); });
  RequireTold(failure);
  Require(!changed || !FailsBehindTheWrite(place.type), "such a row can't be written anew");
  Require(!changed || !place.blank, "a blank pair can't be changed");
  const bool written = changed || (failure == 5 && FailsBehindTheWrite(place.type) && answers.Given());
  if (!written) {
    open.Expect(position, {});
    return;
  }
  const std::array<std::int32_t, 1> word = {RcoFile(open.mod.cCurFile).ReadI32At(position)};
  CheckAnswer(answers, place.type, word[0]);
  open.Expect(position, word);
  Require(watch.Running(), "the watcher runs again");
}

void ChangeAnimWord(OpenFile& open, Script& script, NoWatch& watch) {
  RcoDocument& document = open.document;
  const EntryRec record = document.animRecs.at(static_cast<std::size_t>(document.lstAnim.Selected()));
  const std::int64_t position = std::int64_t{record.recPos} + 40 + std::int64_t{document.lstAnimData.Selected()} * 4;
  fuzz::EditAnswers answers(script);
  bool changed = false;
  RequireTold(NumberOf([&] { changed = cmdAnimChange(open.mod, document, answers, watch); }));
  if (!changed) {
    open.Expect(position, {});
    return;
  }
  const std::array<std::int32_t, 1> word = {*answers.Word()};
  open.Expect(position, word);
}

void ChangePosition(OpenFile& open, Script& script, NoWatch& watch) {
  const EntryRec record = open.document.pageRecs.at(static_cast<std::size_t>(open.document.lstPage.Selected()));
  std::array<std::string, 13> texts;
  std::array<std::int32_t, 13> words{};
  bool beyond = false;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const fuzz::NumberText& number = fuzz::NextNumber(script);
    texts[i] = number.text;
    words[i] = number.word.value_or(0);
    beyond = beyond || !number.word.has_value();
  }
  const int failure = NumberOf([&] { cmdPagePosChange(open.mod, open.document, watch, texts); });
  RequireTold(failure);
  const bool written = failure == 0 && record.recSize >= 44;
  Require(failure != 0 || !beyond, "a number beyond the singles fails");
  open.Expect(std::int64_t{record.recPos} + 40,
              written ? std::span<const std::int32_t>(words) : std::span<const std::int32_t>());
}

// Selects a line and one of its rows; false where there is none to change.
bool Choose(OpenFile& open, Script& script, ListLines& lines, ListLines& rows, const std::vector<EntryRec>& recs,
            void (*click)(const Mod&, RcoDocument&)) {
  const int line = script.Next();
  const int row = script.Next();
  if (lines.Count() == 0 || lines.Count() > kLines || recs.empty()) {
    return false;
  }
  lines.Select(std::min(line % lines.Count(), static_cast<int>(recs.size()) - 1));
  if (!open.Reaches(recs[static_cast<std::size_t>(lines.Selected())]) ||
      !Succeeds([&] { click(open.mod, open.document); }) || rows.Count() == 0) {
    return false;
  }
  rows.Select(row % rows.Count());
  return true;
}

void ChangeOnce(OpenFile& open, Script& script, NoWatch& watch) {
  RcoDocument& document = open.document;
  const std::vector<EntryRec> pages = document.pageRecs;
  const std::vector<std::string> lines = document.lstPage.Lines();
  const std::uint8_t operation = script.Next() % 4;
  if (operation == 0) {
    if (Choose(open, script, document.lstAnim, document.lstAnimData, document.animRecs, lstAnim_Click)) {
      ChangeAnimWord(open, script, watch);
    }
  } else if (Choose(open, script, document.lstPage, document.lstPageData, document.pageRecs, lstPage_Click)) {
    operation == 1 ? ChangePosition(open, script, watch) : ChangePageWord(open, script, watch);
  }
  Require(document.pageRecs == pages && document.lstPage.Lines() == lines, "no change touches the tree");
}

void Run(ByteView input) {
  Script script(input);
  OpenFile open(BuildFile(script));
  NoWatch watch;
  for (int changes = 0; changes < 16 && !script.AtEnd(); ++changes) {
    ChangeOnce(open, script, watch);
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::Run({data, size});
  return 0;
}
