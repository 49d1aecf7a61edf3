#include "support/RcoSeeds.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "support/GimBuilder.h"

namespace kelvane::test {

namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();
// The first values beyond what 16 bits hold.
constexpr std::int32_t kAbove16Bits = 32768;

void AddAll(std::vector<RcoSeed>& seeds, std::vector<RcoSeed> more) {
  std::move(more.begin(), more.end(), std::back_inserter(seeds));
}

Bytes SmallGim() {
  return BuildRgbaGim(4, 2, std::vector<std::uint32_t>(8, Rgba(0x20, 0x40, 0x60, 0x80)), false);
}

void AddGeneral(RcoBuilder& b) {
  const Bytes gim = SmallGim();
  const auto unpacked = static_cast<std::int32_t>(gim.size());
  b.AddImage({.label = "tex_packed", .compression = 1, .data = DeflateWrapped(gim), .unpackedSize = unpacked});
  b.AddImage({.label = "tex_plain", .data = gim});
  b.AddImage({.label = "tex_png", .format = 0, .data = {0x89, 'P', 'N', 'G', 1}});
  b.AddImage({.label = "tex_unknown", .format = 9, .compression = 2, .data = {1, 2, 3}, .unpackedSize = 7});
  b.AddImage({.data = {}});
  b.AddVag({.label = "snd_mono", .channel1 = {'V', 'A', 'G', 'p', 1}});
  b.AddVag({.label = "snd_stereo", .channel1 = {1, 2, 3}, .channel2 = Bytes{4, 5, 6, 7, 8}});
  b.AddGmo({.label = "model", .data = {'O', 'M', 'G', '.'}});
}

void AddTexts(RcoBuilder& b) {
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddLanguage(0x2000C);
  b.AddText({.label = "msg_a", .strings = {u"\u8A2D\u5B9A", u"Settings", u""}});
  b.AddText({.label = "msg_b", .strings = {u"a\nb", NoText(), RawText(u"raw")}});
}

void AddTrees(RcoBuilder& b) {
  b.AddEvent("native:/OnOpen");
  b.AddEvent("native:/OnClose");
  b.AddPage({.label = "page_a",
             .body = {0x111, EventRef(1), TextRef(0), BlankRef(), AnimRef(0)},
             .children = {{.label = "icon",
                           .entryClass = 25,
                           .position = {{1, 2, 1, 1, 1, 1, 1, 48, 48, 0, 1, 1, 1}},
                           .body = {ImageRef(0), ModelRef(0), PageRef("page_b"), PairOf(0x40C, 3), 0.1F}},
                          {.entryClass = 18,
                           .body = {7},
                           .children = {{.entryClass = 10, .body = {PageRef(0, kRefPage7)}, .statesSize = false}}}}});
  b.AddPage({.label = "page_b", .statesSize = false});
  b.AddAnimation(
      {.label = "anim_a",
       .body = {3},
       .children = {{.entryClass = 2, .body = {1.0F, 2.0F}},
                    {.entryClass = 4, .body = {3.0F}, .statesSize = false},
                    {.entryClass = 7, .body = {4.0F}, .children = {{.entryClass = 8, .body = {EventRef(0)}}}}}});
  b.AddAnimation({.label = "anim_b", .body = {0}});
}

Bytes Patched(Bytes bytes, std::int32_t offset, std::int32_t value) {
  WriteI32(bytes, offset, value);
  return bytes;
}

Bytes Cut(const Bytes& bytes, std::int32_t length) {
  return {bytes.begin(), bytes.begin() + length};
}

RcoSeed Alone(const char* name, void (*add)(RcoBuilder&)) {
  RcoBuilder b;
  add(b);
  return {name, b.Build().bytes};
}

// Pages nested so deep that depth counters run out.
RcoSeed DeepPages() {
  EntrySpec page = {.label = "deepest"};
  for (int depth = 0; depth < 9; ++depth) {
    page = {.body = {depth}, .children = {page}};
  }
  RcoBuilder b;
  b.AddPage(page);
  return {"pages_ten_levels_deep", b.Build().bytes};
}

// The deflated form around a block of any bytes and any stated lengths.
Bytes PackedAround(const Bytes& block, std::int32_t packedLength, std::int32_t unpackedLength) {
  Bytes bytes = Cut(SmallRcoOfEverything().Build().bytes, rco::kHeaderSize);
  bytes.resize(rco::kPackedBlockAt);
  WriteI32(bytes, rco::hdrVersion, rco::kVersionDeflated);
  WriteI32(bytes, rco::kPackedLengthAt, packedLength);
  WriteI32(bytes, rco::kUnpackedLengthAt, unpackedLength);
  Append(bytes, block);
  Append(bytes, Bytes(16, 0xEE));
  return bytes;
}

// A number of the file, by where it stands.
struct Field {
  std::string name;
  std::int32_t offset;
};

std::vector<Field> HeaderFields() {
  std::vector<Field> fields;
  for (std::int32_t offset = rco::hdrTextRoot; offset < rco::hdrGmoData + 8; offset += 4) {
    fields.push_back({"header_" + std::to_string(offset), offset});
  }
  return fields;
}

std::vector<Field> EntryFields(const RcoLayout& layout) {
  const std::int32_t image = layout.images[0].entry;
  const std::int32_t sound = layout.vags[1].entry;
  const std::int32_t language = layout.languages[0].entry;
  const std::int32_t page = layout.pages[0].entry;
  const std::int32_t operation = layout.animEntries[1].entry;
  std::vector<Field> fields;
  for (std::size_t table = 0; table < kRcoTables; ++table) {
    fields.push_back({"count_" + std::to_string(table), layout.roots[table] + rco::entryChildren});
  }
  const std::vector<Field> others = {
      {"image_label", image + rco::entryLabel},
      {"image_next", image + rco::entryNext},
      {"image_size", image + rco::bodyDataSize},
      {"image_offset", image + rco::bodyDataOffset},
      {"image_unpacked", image + rco::bodyUnpackedSize},
      {"sound_channel1_size", sound + rco::bodyChannel1Size},
      {"sound_channel2_offset", sound + rco::bodyChannel2Offset},
      {"language_next", language + rco::entryNext},
      {"text_label", language + rco::langRecords},
      {"text_length", language + rco::langRecords + 4},
      {"text_offset", language + rco::langRecords + 8},
      {"page_label", page + rco::entryLabel},
      {"page_size", page + rco::entrySize},
      {"page_children", page + rco::entryChildren},
      {"page_reference", page + rco::kEntryHeadSize + 8},
      {"operation_size", operation + rco::entrySize},
      {"operation_children", operation + rco::entryChildren},
      {"operation_next", operation + rco::entryNext},
      {"page_pointer", layout.Pointers(RcoTable::kPage).offset},
      {"anim_pointer", layout.Pointers(RcoTable::kAnim).offset},
  };
  fields.insert(fields.end(), others.begin(), others.end());
  return fields;
}

}  // namespace

RcoBuilder SmallRcoOfEverything() {
  RcoBuilder b;
  AddGeneral(b);
  AddTexts(b);
  AddTrees(b);
  return b;
}

std::vector<RcoSeed> GoodRcoSeeds() {
  std::vector<RcoSeed> seeds = {{"everything", SmallRcoOfEverything().Build().bytes},
                                {"nothing", RcoBuilder().Build().bytes},
                                Alone("general_tables", AddGeneral),
                                Alone("texts", AddTexts),
                                DeepPages()};
  for (const std::int32_t version : {rco::kVersionOlder, rco::kVersionNone}) {
    RcoBuilder b = SmallRcoOfEverything();
    b.Options().version = version;
    seeds.push_back({"version_" + std::to_string(version), b.Build().bytes});
  }
  RcoBuilder empty;
  for (const RcoTable table :
       {RcoTable::kText, RcoTable::kImage, RcoTable::kVag, RcoTable::kGmo, RcoTable::kPage, RcoTable::kAnim}) {
    empty.AddEmptyTable(table);
  }
  seeds.push_back({"tables_without_entries", empty.Build().bytes});
  RcoBuilder mixed = SmallRcoOfEverything();
  mixed.SetPointers(RcoTable::kPage, {3, -1, 0, 4, -1, 2, 1, -1});
  mixed.SetPointers(RcoTable::kAnim, {-1, 1, -1, 0});
  seeds.push_back({"mixed_pointers", mixed.Build().bytes});
  RcoBuilder bare = SmallRcoOfEverything();
  bare.Options().mainHead = false;
  bare.Options().absentOffset = 0;
  bare.Options().lastLanguageStatesNext = true;
  seeds.push_back({"without_main_head", bare.Build().bytes});
  return seeds;
}

std::vector<RcoSeed> PackedRcoSeeds() {
  RcoBuilder b = SmallRcoOfEverything();
  b.Options().deflatedHead = true;
  const Bytes padded = b.Build().bytes;
  b.Options().padPackedBlock = false;
  const Bytes unpadded = b.Build().bytes;

  const Bytes noise = {0xFF, 0xFF, 0x13, 0x57, 0x9B, 0xDF, 0x02, 0x46};
  const Bytes short40 = DeflateWrapped(Bytes(40, 'a'));
  const auto length = static_cast<std::int32_t>(short40.size());
  const Bytes withSum = DeflateWrappedWithAdler(Bytes(40, 'a'));
  return {{"packed", padded},
          {"packed_without_padding", unpadded},
          {"packed_cut_in_block", Cut(padded, rco::kPackedBlockAt + 20)},
          {"packed_cut_in_lengths", Cut(padded, rco::kUnpackedLengthAt + 2)},
          {"packed_noise", PackedAround(noise, 8, 100)},
          {"packed_with_sum", PackedAround(withSum, static_cast<std::int32_t>(withSum.size()), 40)},
          {"packed_result_too_long", PackedAround(short40, length, 8)},
          {"packed_result_too_short", PackedAround(short40, length, 4000)},
          {"packed_length_zero", PackedAround(short40, 0, 40)},
          {"packed_length_negative", PackedAround(short40, -5, 40)},
          {"packed_length_huge", PackedAround(short40, kLargest, 40)},
          {"unpacked_length_huge", PackedAround(short40, length, kLargest)},
          {"unpacked_length_negative", PackedAround(short40, length, -1)}};
}

std::vector<RcoSeed> TruncatedRcoSeeds() {
  const BuiltRco built = SmallRcoOfEverything().Build();
  const RcoLayout& layout = built.layout;
  const std::vector<Field> places = {
      {"in_magic", 3},
      {"behind_magic", 4},
      {"behind_version", 8},
      {"in_header", 70},
      {"behind_header", rco::kHeaderSize},
      {"in_image_table", layout.images[2].entry + 30},
      {"in_sound_table", layout.vags[1].entry + 50},
      {"in_text_table", layout.languages[1].entry + 60},
      {"in_page_table", layout.pages[1].entry + 60},
      {"in_anim_table", layout.animEntries[2].entry + 10},
      {"in_pointers", layout.Pointers(RcoTable::kPage).offset + 6},
      {"in_text_data", layout.textData.offset + 5},
      {"in_labels", layout.labels.offset + 9},
      {"in_events", layout.eventArea.offset + 3},
      {"in_image_data", layout.imageData.offset + 7},
      {"in_sound_data", layout.vagData.offset + 2},
      {"before_padding", layout.fileSize - 1},
  };
  std::vector<RcoSeed> seeds = {{"no_bytes", {}}, {"one_byte", {0}}, {"zeros", Bytes(200)}};
  for (const Field& place : places) {
    seeds.push_back({"cut_" + place.name, Cut(built.bytes, place.offset)});
  }
  return seeds;
}

std::vector<RcoSeed> WildRcoSeeds() {
  const BuiltRco built = SmallRcoOfEverything().Build();
  const RcoLayout& layout = built.layout;
  std::vector<RcoSeed> seeds = {{"version_unknown", Patched(built.bytes, rco::hdrVersion, 99)},
                                {"magic_unknown", Patched(built.bytes, rco::hdrMagic, 0x46525001)}};
  std::vector<Field> fields = HeaderFields();
  for (const Field& field : EntryFields(layout)) {
    fields.push_back(field);
  }
  const auto add = [&](const char* kind, const Field& field, std::int32_t value) {
    if (ReadI32(built.bytes, field.offset) != value) {
      seeds.push_back({kind + field.name, Patched(built.bytes, field.offset, value)});
    }
  };
  for (const Field& field : fields) {
    add("huge_", field, kLargest);
    add("negative_", field, -7);
  }
  for (const Field& field : EntryFields(layout)) {
    add("smallest_", field, kSmallest);
    add("above_16_bits_", field, kAbove16Bits);
    add("one_", field, 1);
  }
  // Tables that lie over one another, and pointers to one entry only.
  seeds.push_back(
      {"pages_are_animations", Patched(built.bytes, rco::hdrPagePtrs, layout.Pointers(RcoTable::kAnim).offset)});
  seeds.push_back({"sounds_are_images", Patched(built.bytes, rco::hdrVagRoot, layout.Root(RcoTable::kImage))});
  seeds.push_back({"header_is_text_root", Patched(built.bytes, rco::hdrTextRoot, 4)});
  RcoBuilder same = SmallRcoOfEverything();
  same.SetPointers(RcoTable::kPage, {2, 2, 2, 0, 0});
  seeds.push_back({"pointers_repeat", same.Build().bytes});
  return seeds;
}

std::vector<RcoSeed> RcoSeeds() {
  std::vector<RcoSeed> seeds = GoodRcoSeeds();
  AddAll(seeds, PackedRcoSeeds());
  AddAll(seeds, TruncatedRcoSeeds());
  AddAll(seeds, WildRcoSeeds());
  return seeds;
}

}  // namespace kelvane::test
