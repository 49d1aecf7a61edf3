// Writing general resources: new data of any size for one of them, and the fields that move with it.
//
// Nothing in the file tells what lies where; the writers know it from the order of the regions and from the records.
// They patch the old layout first and splice the new bytes in last.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

#include "common/Mod.h"
#include "common/Prompts.h"
#include "common/Statements.h"
#include "common/Watch.h"
#include "container/FileHead.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// Adds `delta` to the 32-bit value at `position`. With `onlyIfValid` a value of 0 or -1 stays. Failure 6.
void AddToFileLong(RcoFile& file, std::int64_t position, std::int32_t delta, bool onlyIfValid);

// Appends `bytes` from index `from` up to but not including `to` at the file's position. Failure 9 for an empty slice
// and for one that leaves `bytes`.
void WriteFileSlice(RcoFile& file, ByteView bytes, std::int64_t from, std::int64_t to);

// Writes the fields of all records into their entries: label offset, data size, data offset, and of images and models
// the unpacked size where the entry has one. Failure 9 for an entry that lies outside `head`.
void WriteGenRscFields(FileHead& head, const RcoDocument& document);

// Moves what lies behind the data of record `index`, which grow by `delta` bytes: the offsets of the later resources of
// its kind, the length of its area, the areas behind. Failures: 9 for an index without a record or an entry outside
// `head`, 6.
void ApplyDataDelta(std::int32_t delta, Int16 index, FileHead& head, RcoDocument& document);

// Whether an entry has room for the fields that only long entries have, by the low byte of the distance to its next
// sibling: that is 0 in a table's last entry, which so counts as long.
[[nodiscard]] bool IsLongEntry(const FileHead& head, const GenRsc& record);

// What the handlers of changes are handed.
struct WriteContext {
  Mod& mod;
  RcoDocument& document;
  Prompts& prompts;
  Watch& watch;
};

// One replacement after the other on a file that is read once and written once.
class GenReplacer {
 public:
  explicit GenReplacer(const WriteContext& context) : context_(context) {}
  GenReplacer(const GenReplacer&) = delete;
  GenReplacer& operator=(const GenReplacer&) = delete;

  // Puts the file `newFile`, which holds the data in their final stored form, in the place of the data of record
  // `index`; unpackedSize of the record and, for a sound, vagChannels, vagSize1 and vagSize2 are set already. True if
  // that was done; false where `newFile` is missing or empty, with nothing touched, and where a failure was answered
  // with No: file and records then are as they were before.
  bool Replace(const std::filesystem::path& newFile, Int16 index);
  // The same with the data themselves.
  bool Replace(const Bytes& data, Int16 index);

  // Writes the file and records its date. False where a failure of that was answered with No. If the file couldn't be
  // opened, or can't be written, it stays the old one, and the records are again what they were before the first
  // replacement. Does nothing where nothing was replaced.
  bool Finish();

 private:
  struct Records {
    std::vector<GenRsc> genRsc;
    std::array<std::int32_t, 6> dataAreas;
  };

  // Takes note of the records as they are in the file, before record `index` is replaced.
  void Keep(Int16 index);
  // What the file says; the record's own where it can't be read.
  [[nodiscard]] std::int32_t UnpackedSizeOfEntry(const GenRsc& record);
  void PutBack(const Records& records);
  bool ReplaceBy(const std::function<Bytes()>& readData, Int16 index);
  // Closes the file, writing it.
  void Close();
  void ReplaceData(Statements& run, FileHead& head, const std::function<Bytes()>& readData, Int16 index);

  WriteContext context_;
  RcoFile file_;
  Records first_{};          // before the first replacement
  Records before_{};         // before the last one; kept, since memory for many records is dear to get anew
  bool changed_ = false;     // something was replaced
  bool lastFailed_ = false;  // the last replacement was given up: the watcher stays stopped
};

// One replacement; the file is written and its date recorded. The result is that of GenReplacer's two steps.
bool ReplaceGenRscData(const std::filesystem::path& newFile, Int16 index, const WriteContext& context);

}  // namespace kelvane
