// A row of random changes of one file, each checked against what the file held before it.
//
// A regular change is one that does what it says: what the file holds afterwards is what it held before with that
// change, and every offset points where it must. The others are known to mix things up, such as an entry that is put in
// front of one of another kind; of them it is asked that they end, with the told failures at most, and that the file
// opens again. After such a change the row goes on as wild as that.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "common/Mod.h"
#include "container/RcoDocument.h"
#include "editor/Ports.h"
#include "support/PlainPorts.h"
#include "support/RandomPrompts.h"
#include "support/RandomRco.h"
#include "support/RcoWalk.h"

namespace kelvane {
struct AfterInsert;
struct WriteContext;
}  // namespace kelvane

namespace kelvane::test {

class ChangeSequence {
 public:
  // Writes a random file into `folder` and opens it.
  ChangeSequence(const std::filesystem::path& folder, Pick pick);

  // Makes one change. A std::logic_error where anything isn't as it must be.
  void Step();

  // How often each kind of change was made.
  [[nodiscard]] const std::map<std::string, int>& Counts() const { return counts_; }
  // Whether the row has gone on long enough without anything to compare with.
  [[nodiscard]] bool IsDone() const { return wildSteps_ >= kMostWildSteps; }

 private:
  static constexpr int kMostWildSteps = 8;

  void Replace();
  void ChangeText();
  void ChangePageWord();
  void ChangeAnimationWord();
  void ChangePosition();
  void InsertGeneral();
  void InsertText();
  void InsertPage();
  void Reopen();

  // Runs a command. In a regular change the failures that it asks about or ends with must be `failures`, if given.
  // Whether what the file holds then can be compared.
  bool Run(const std::string& name, bool regular, const std::optional<std::vector<int>>& failures,
           const std::function<void()>& command);
  // Whether a wild change left records to which a next one would make the file grow by hundreds of megabytes.
  [[nodiscard]] bool HasRecordsOutside() const;
  // Whether a change that isn't regular is to be made all the same.
  bool DaresToBeWild() { return wild_ || pick_(12) == 0; }
  // That the file holds what is expected, and the records in memory are those of the file.
  void Check(const RcoContents& expected);
  void CheckRecords();
  // That at most one word of an entry's body was changed, and nothing else.
  void CheckOneWord(std::vector<WalkedEntry> RcoContents::*table, std::size_t row);

  [[nodiscard]] Bytes Content() const;
  [[nodiscard]] WriteContext Context();
  [[nodiscard]] AfterInsert Afterwards();
  [[nodiscard]] std::size_t PickBelow(std::size_t limit) { return pick_(static_cast<std::uint32_t>(limit)); }

  std::filesystem::path path_;
  std::filesystem::path newData_;
  Pick pick_;
  RandomPrompts prompts_{pick_};
  IdleWatch watch_;
  IdleProgress progress_;
  Ports ports_{.prompts = prompts_, .watch = watch_, .progress = progress_};
  Mod mod_;
  RcoDocument document_;
  Bytes first_;  // the file before the first change
  WalkedRco now_;
  bool wild_ = false;
  int wildSteps_ = 0;
  int number_ = 0;
  std::map<std::string, int> counts_;
};

}  // namespace kelvane::test
