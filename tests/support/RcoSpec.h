// What an RCO file is to hold, described by value. RcoBuilder collects these and writes the file.
//
// Every member has a default, so that a description names only what matters: ImageSpec{.label = "bg", .data = bytes}.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "common/Bytes.h"
#include "container/RcoFormat.h"

namespace kelvane::test {

// The six tables, in the order of their pointer tables and of their labels.
enum class RcoTable { kText, kImage, kVag, kGmo, kPage, kAnim };
inline constexpr std::size_t kRcoTables = 6;

// A name in Latin-1 bytes. None: the entry's label field is -1 and the label area holds nothing for it.
using RcoLabel = std::optional<std::string>;

// An image or a model (whose format is 0).
struct ImageSpec {
  RcoLabel label = {};
  std::uint16_t format = rco::kFormatGim;
  std::uint16_t compression = rco::kCompressionNone;
  Bytes data = {};  // as stored: deflate it yourself (DeflateWrapped) where compression says so
  std::optional<std::int32_t> unpackedSize = {};
  // Bytes, at least 52. 0: 56 with an unpacked size, else 52. An entry shorter than 56 bytes drops its unpacked size, a
  // longer one has zeros behind it.
  std::int32_t entryLength = 0;
};

struct GmoSpec {
  RcoLabel label = {};
  std::uint16_t format = 0;
  std::uint16_t compression = rco::kCompressionNone;
  Bytes data = {};
  std::optional<std::int32_t> unpackedSize = {};
  std::int32_t entryLength = 0;
};

struct VagSpec {
  RcoLabel label = {};
  std::uint16_t format = 1;
  Bytes channel1 = {};
  std::optional<Bytes> channel2 = {};          // given: a stereo sound
  std::optional<std::uint16_t> channels = {};  // what E+42 says; none: 1 or 2 by channel2
  std::int32_t monoChannel2Offset = 0;         // what E+64 says in a mono entry
  std::int32_t entryLength = 0;                // at least 52; 0: 68. A shorter one drops the fields beyond its end.
};

// One stored string: UTF-16 code units, the way it ends in the file, or no string at all.
struct TextString {
  enum class Storage {
    kPadded,  // 2 or 4 NUL bytes behind it, up to a multiple of 4; an empty one takes 4 bytes
    kRaw,     // the units and nothing else: bring your own NULs
    kNone,    // textLength 0
  };

  TextString(const char16_t* text) : units(text) {}
  TextString(std::u16string text) : units(std::move(text)) {}
  TextString(std::u16string text, Storage how) : units(std::move(text)), storage(how) {}

  std::u16string units;
  Storage storage = Storage::kPadded;
};

inline TextString RawText(std::u16string units) {
  return {std::move(units), TextString::Storage::kRaw};
}
inline TextString NoText() {
  return {{}, TextString::Storage::kNone};
}

// A text in all languages, in the order of the languages; a language without a string here has none (textLength 0).
struct TextSpec {
  RcoLabel label = {};
  std::vector<TextString> strings = {};
};

struct LanguageSpec {
  std::uint32_t code = 0;
  // How many records more (zeros) or fewer than there are texts this language has.
  int extraRecords = 0;
};

// Whom a reference pair names: by label (of an event: by its string), or by index. Pages are numbered in file order
// (parents in front of their children), animations by their place at the top level.
using RcoTarget = std::variant<int, std::string>;

struct Reference {
  std::uint32_t type = 0;
  RcoTarget target = {};
};

inline constexpr std::uint32_t kRefEvent = 0x400;
inline constexpr std::uint32_t kRefText = 0x401;
inline constexpr std::uint32_t kRefImage = 0x402;
inline constexpr std::uint32_t kRefModel = 0x403;
inline constexpr std::uint32_t kRefPage7 = 0x407;
inline constexpr std::uint32_t kRefAnim = 0x408;
inline constexpr std::uint32_t kRefPage9 = 0x409;
inline constexpr std::uint32_t kRefBlank = 0xFFFF;

// One or two words of an entry's body: a plain word, a float, or a reference pair, resolved when the file is built.
class BodyItem {
 public:
  BodyItem(int word) : content_(Words{static_cast<std::uint32_t>(word)}) {}
  BodyItem(std::uint32_t word) : content_(Words{word}) {}
  BodyItem(float value);
  BodyItem(Reference reference) : content_(std::move(reference)) {}
  BodyItem(std::uint32_t first, std::uint32_t second) : content_(Words{first, second}) {}

  using Words = std::vector<std::uint32_t>;
  [[nodiscard]] const Words* AsWords() const { return std::get_if<Words>(&content_); }
  [[nodiscard]] const Reference* AsReference() const { return std::get_if<Reference>(&content_); }
  [[nodiscard]] std::int32_t WordCount() const;

 private:
  std::variant<Words, Reference> content_;
};

inline BodyItem EventRef(RcoTarget target) {
  return Reference{kRefEvent, std::move(target)};
}
inline BodyItem TextRef(RcoTarget target) {
  return Reference{kRefText, std::move(target)};
}
inline BodyItem ImageRef(RcoTarget target) {
  return Reference{kRefImage, std::move(target)};
}
inline BodyItem ModelRef(RcoTarget target) {
  return Reference{kRefModel, std::move(target)};
}
inline BodyItem AnimRef(RcoTarget target) {
  return Reference{kRefAnim, std::move(target)};
}
inline BodyItem PageRef(RcoTarget target, std::uint32_t type = kRefPage9) {
  return Reference{type, std::move(target)};
}
inline BodyItem BlankRef() {
  return {kRefBlank, 0xFFFFFFFFU};
}
// Any other pair: the two words as they stand.
inline BodyItem PairOf(std::uint32_t type, std::uint32_t value) {
  return {type, value};
}

// A page, an animation or an animation's operation, with everything below it.
struct EntrySpec {
  RcoLabel label = {};
  std::uint8_t entryClass = 1;
  std::optional<std::array<float, rco::kPositionWords>> position = {};  // in front of the body
  std::vector<BodyItem> body = {};
  std::vector<EntrySpec> children = {};
  bool statesSize = true;                       // false: entrySize is 0
  std::optional<std::uint8_t> entryTable = {};  // none: 8 in the page table, 9 in the animation table
};

struct RcoOptions {
  std::int32_t version = rco::kVersionPlain;
  // A 40-byte head at 164 whose children are the roots of the tables, as firmware files have it.
  bool mainHead = true;
  // What the header says as the root or offset of what is absent; its length is 0.
  std::int32_t absentOffset = -1;
  // The last language record states its own length in entryNext in place of 0.
  bool lastLanguageStatesNext = false;
  // Version 144: everything from 164 up to the data areas is deflated.
  bool deflatedHead = false;
  // Zero bytes behind the deflated block up to a multiple of 4, counted in its length.
  bool padPackedBlock = true;
  // Header longs by their offset; they win over what would stand there.
  std::map<std::int32_t, std::int32_t> headerLongs = {};
  // Bytes behind the last data area.
  Bytes trailing = {};
};

// All of a file.
struct RcoDescription {
  RcoOptions options = {};
  std::vector<ImageSpec> images = {};
  std::vector<VagSpec> vags = {};
  std::vector<GmoSpec> gmos = {};
  std::vector<LanguageSpec> languages = {};
  std::vector<TextSpec> texts = {};
  std::vector<EntrySpec> pages = {};
  std::vector<EntrySpec> animations = {};
  std::vector<std::string> events = {};
  // Tables that have a root even without entries.
  std::set<RcoTable> emptyTables = {};
  // The order of a pointer table by entry number, -1 for a zero; without one it is the order of the entries.
  std::map<RcoTable, std::vector<int>> pointerOrders = {};
};

}  // namespace kelvane::test
