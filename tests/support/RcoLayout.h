// Where everything of a built RCO file lies.
//
// Positions are absolute file offsets of the plain form, "relative" ones are said to be so. -1: not there. In the
// deflated form the entries, strings and pointers have these positions only once it is unpacked, and the data areas and
// what they hold lie `packed->dataShift` further on.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "support/RcoSpec.h"

namespace kelvane::test {

struct RcoRegion {
  std::int32_t offset = -1;
  std::int32_t length = 0;

  [[nodiscard]] std::int32_t End() const { return offset + length; }
};

// An image, sound or model.
struct GeneralPlace {
  std::int32_t entry = 0;
  std::int32_t length = 0;      // of the entry
  std::int32_t label = -1;      // relative to the label area
  std::int32_t data = 0;        // absolute
  std::int32_t dataOffset = 0;  // relative to the data area
  std::int32_t dataSize = 0;    // without padding
  std::int32_t paddedSize = 0;
  std::int32_t channel2Offset = 0;  // of a stereo sound: relative to the data area
};

struct TextPlace {
  std::int32_t record = 0;  // the 12-byte record
  std::int32_t offset = 0;  // of the string, relative to the text data; of no string: where the next one starts
  std::int32_t length = 0;  // padding included
};

struct LanguagePlace {
  std::int32_t entry = 0;
  std::int32_t length = 0;       // of the language record
  std::vector<TextPlace> texts;  // surplus records too
};

// A page, animation or operation. Indexes count in file order within the table.
struct EntryPlace {
  std::int32_t entry = 0;
  std::int32_t length = 0;  // of the entry alone
  std::int32_t label = -1;
  int depth = 0;
  int parent = -1;  // -1: the root
  int previous = -1;
  int next = -1;
};

struct PackedHead {
  std::int32_t packedLength = 0;  // what the file says, padding included
  std::int32_t unpackedLength = 0;
  std::int32_t dataShift = 0;  // position in the packed file minus position in the plain one
};

struct RcoLayout {
  std::int32_t mainHead = -1;
  std::array<std::int32_t, kRcoTables> roots{};  // by RcoTable
  std::int32_t tablesEnd = 0;                    // behind the last entry

  std::vector<GeneralPlace> images;
  std::vector<GeneralPlace> vags;
  std::vector<GeneralPlace> gmos;
  std::vector<LanguagePlace> languages;
  std::vector<std::int32_t> textLabels;  // by text, relative to the label area
  std::vector<EntryPlace> pages;
  std::vector<EntryPlace> animEntries;  // animations and their operations
  std::vector<int> animations;          // indexes in animEntries
  std::vector<std::int32_t> events;     // relative to the event area

  std::array<RcoRegion, kRcoTables> pointers{};  // by RcoTable
  RcoRegion textData;
  RcoRegion labels;
  RcoRegion eventArea;
  RcoRegion imageData;
  RcoRegion vagData;
  RcoRegion gmoData;
  std::int32_t headEnd = 0;  // where the data areas start, on a multiple of 4
  std::int32_t fileSize = 0;
  std::optional<PackedHead> packed;

  [[nodiscard]] std::int32_t Root(RcoTable table) const { return roots[static_cast<std::size_t>(table)]; }
  [[nodiscard]] const RcoRegion& Pointers(RcoTable table) const { return pointers[static_cast<std::size_t>(table)]; }
};

// Bytes that `text` takes in the file.
[[nodiscard]] std::int32_t StoredLength(const TextString& text);
[[nodiscard]] std::int32_t RoundUpTo4(std::int32_t value);

// The entries of a page or animation table in file order: each one in front of its children.
struct FlatEntry {
  const EntrySpec* spec = nullptr;
  int depth = 0;
  int parent = -1;
  int previous = -1;
  int next = -1;
};
[[nodiscard]] std::vector<FlatEntry> Flatten(const std::vector<EntrySpec>& entries);

// Works out the place of everything. `packed` stays empty.
[[nodiscard]] RcoLayout LayOut(const RcoDescription& description);

}  // namespace kelvane::test
