// Reads an RCO file by following the format from its header on, and checks that every offset on the way points where it
// must: roots, entries, pointers, labels, strings and data each begin where the one before them ends.
//
// It knows the format by itself: nothing of src/ that reads or writes files takes part. What it can walk is what the
// builder writes and what changes of such a file leave: a file with labels for all but operations, with an event area,
// and with sounds whose entries have room for their channels.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "common/Bytes.h"
#include "support/RcoSpec.h"

namespace kelvane::test {

// An image, sound or model.
struct WalkedResource {
  std::string label;
  Bytes entry;                         // with zeros for what depends on places: the label, the data, the channels
  Bytes data;                          // without padding
  std::vector<std::int32_t> channels;  // of a sound: where each channel begins, from the data's start

  bool operator==(const WalkedResource&) const = default;
};

struct WalkedText {
  std::string label;
  std::vector<Bytes> strings;  // by language, with their NULs

  bool operator==(const WalkedText&) const = default;
};

// A page, animation or operation.
struct WalkedEntry {
  std::string label;  // of an operation: the number in its label field
  int depth = 0;
  Bytes entry;  // with zeros for the label

  bool operator==(const WalkedEntry&) const = default;
};

// What a file holds, without any place in it.
struct RcoContents {
  Bytes header;                         // and main head, with zeros for all offsets and for the data areas' lengths
  std::array<Bytes, kRcoTables> roots;  // with zeros for the distances to a next root and the parent
  std::array<std::vector<WalkedResource>, 3> resources;  // images, sounds, models
  std::vector<Bytes> languages;                          // the 48 bytes in front of the records
  std::vector<WalkedText> texts;
  std::vector<WalkedEntry> pages;
  std::vector<WalkedEntry> animations;
  // By RcoTable: the number of the entry that each pointer points to; of an animation counted at the top level.
  std::array<std::vector<int>, kRcoTables> pointers;
  std::vector<std::int32_t> textPointers;  // as they stand
  Bytes labelArea;
  Bytes eventArea;  // up to the first data area
  Bytes trailing;   // behind the last data area

  bool operator==(const RcoContents&) const = default;
};

struct WalkedPlace {
  std::int32_t entry = 0;  // file offset
  std::int32_t label = 0;  // relative to the label area
};

struct WalkedRco {
  RcoContents contents;
  std::array<std::vector<WalkedPlace>, 3> resources;
  std::vector<WalkedPlace> texts;  // of the first language
  std::vector<WalkedPlace> pages;
  std::vector<WalkedPlace> animations;
  std::int32_t textRoot = 0;
};

// A std::logic_error that says what isn't as it must be.
[[nodiscard]] WalkedRco WalkRco(ByteView file);

// Nothing where both are the same; else what of them differs.
[[nodiscard]] std::string Difference(const RcoContents& expected, const RcoContents& actual);

}  // namespace kelvane::test
