// New entries in the open file.
//
// Each insert patches the old layout, splices the new bytes in, adds a pointer at the end of its pointer table, and
// opens the file again. All steps run under the handler that asks and goes on; a failure half way that is answered with
// No leaves the file as far as it was changed by then, and the .bak is the way back.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "container/GenWrite.h"

namespace kelvane {

// What follows an insert lies with the floors above.
struct AfterInsert {
  // Opens the file anew, so that records and lines are rebuilt from it.
  std::function<void()> reopen;
  // Selects a line of lst; failure 5 for a line that isn't there.
  std::function<void(Int16)> selectLine;
};

struct NewGenRsc {
  Int16 position;                  // the new entry stands in front of that record, its data in front of that one's
  std::filesystem::path dataFile;  // the data in their final stored form
  std::string label;
  Int16 kind;              // 1 image, 2 VAG, 3 GMO
  std::int32_t extra = 0;  // image and GMO: the unpacked size; VAG: bytes of the second channel, 0 for mono
};

// A new image is entered as a GIM with compression 1, whatever the settings say. The last position can't be inserted
// at: the failure (9) comes after the labels and offsets have been changed.
void InsertGenRsc(const NewGenRsc& resource, const WriteContext& context, const AfterInsert& after);

// An empty text at `index` in every language; textCount or more appends.
void InsertTextRsc(Int16 index, const std::string& label, const WriteContext& context, const AfterInsert& after);

struct NewPageRsc {
  Int16 index;                     // place in pageRecs
  std::vector<std::int32_t> body;  // the words behind the head
  std::string label;
  std::uint8_t entryClass = 0;
  Int16 depth;  // 0 for a child of the root
};

// Without words the insert fails (9) after the label has been put in.
void InsertPageRsc(const NewPageRsc& page, const WriteContext& context, const AfterInsert& after);

}  // namespace kelvane
