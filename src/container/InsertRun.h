// What all inserts share: the open file, the handler around the steps, and the pointers that they add.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/Int16.h"
#include "container/FileBracket.h"
#include "container/Inserts.h"

namespace kelvane {

// Failure 6 where it doesn't fit: what a file holds may be as low as -2^31.
inline std::int32_t Difference(std::int32_t a, std::int32_t b) {
  return CheckedInt32(std::int64_t{a} - b);
}

// Puts pointers at a place of a pointer table. Something must lie behind it: failure 9.
void InsertPointers(RcoFile& file, std::int64_t position, const std::vector<std::int32_t>& pointers);

// The open file of an insert, and the document as it was before its steps.
class InsertedFile {
 public:
  explicit InsertedFile(RcoDocument& document) : document_(document), before_(document) {}

  [[nodiscard]] RcoFile& File() { return file_; }

  // Where the file couldn't be opened, or can't be written, it stays the old one, and so do the records: the next
  // change works by them.
  void Close();

 private:
  void PutBack();

  RcoFile file_;
  RcoDocument& document_;
  std::optional<RcoDocument> before_;  // until the file is closed
};

// The handler around an insert: the steps of `splice` run on one open file, and giving up closes it with what was
// changed. Then the file is written and opened anew, and line `selected` of lst chosen, if there is one to choose.
template <class Splice>
void RunInsert(const WriteContext& context, const AfterInsert& after, std::optional<Int16> selected, Splice&& splice) {
  InsertedFile inserted(context.document);
  RunStatements(
      context.prompts,
      [&](Statements& run) {
        run([&] { BackupOnce(context.mod, context.watch); });
        run([&] { inserted.File().Open(context.mod.cCurFile); });
        splice(run, inserted.File());
        run([&] { inserted.Close(); });
        run([&] { RecordFileDate(context.mod, context.watch); });
        run([&] { RecordFileDate(context.mod, context.watch); });
        run([&] { after.reopen(); });
        if (selected) {
          run([&] { after.selectLine(*selected); });
        }
      },
      [&] { inserted.Close(); });
}

}  // namespace kelvane
