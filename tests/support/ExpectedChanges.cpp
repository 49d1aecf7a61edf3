#include "support/ExpectedChanges.h"

#include <algorithm>

#include "container/RcoFormat.h"

namespace kelvane::test {

namespace {

std::int32_t SizeOf(const Bytes& bytes) {
  return static_cast<std::int32_t>(bytes.size());
}

std::int32_t Padded(std::int32_t length) {
  return (length + 3) / 4 * 4;
}

void Add(Bytes& bytes, std::int32_t field, std::int32_t delta) {
  WriteI32(bytes, field, ReadI32(bytes, field) + delta);
}

// Where the data of resource `n` begin in their area.
std::int32_t DataOffset(const std::vector<WalkedResource>& resources, std::size_t n) {
  std::int32_t offset = 0;
  for (std::size_t i = 0; i < n; ++i) {
    offset += Padded(SizeOf(resources[i].data));
  }
  return offset;
}

// How far item `n` of a table stands behind item `from`.
template <class Item>
std::int32_t Distance(const std::vector<Item>& items, std::size_t from, std::size_t n) {
  std::int32_t distance = 0;
  for (std::size_t i = from; i < n; ++i) {
    distance += SizeOf(items[i].entry);
  }
  return distance;
}

bool IsGimOrModel(std::size_t kind, const WalkedResource& resource) {
  return kind == kModels || (kind == kImages && ReadI16(resource.entry, rco::bodyFormat) == rco::kFormatGim);
}

Bytes NewHead(std::uint8_t entryClass, std::uint8_t table, std::int32_t length, std::int32_t parent) {
  Bytes head(rco::kEntryHeadSize);
  head[rco::entryClass] = entryClass;
  head[rco::entryTable] = table;
  WriteI32(head, rco::entryHeadSize, rco::kEntryHeadSize);
  WriteI32(head, rco::entryNext, length);
  WriteI32(head, rco::entryPrev, length);
  WriteI32(head, rco::entryParent, parent);
  return head;
}

WalkedResource NewResource(const RcoContents& before, std::size_t kind, std::size_t n, const std::string& label,
                           const Bytes& data, std::int32_t extra) {
  constexpr std::array<std::uint8_t, 3> kTables = {rco::kTableImage, rco::kTableVag, rco::kTableGmo};
  const std::vector<WalkedResource>& resources = before.resources[kind];
  const std::int32_t length = rco::kEntryHeadSize + (kind == kSounds ? rco::kVagBodySize : rco::kGeneralBodySize);
  WalkedResource resource{
      label, NewHead(1, kTables[kind], length, rco::kEntryHeadSize + Distance(resources, 0, n)), data, {}};
  resource.entry.resize(static_cast<std::size_t>(length));
  WriteI32(resource.entry, rco::bodyDataSize, SizeOf(data));
  if (kind != kSounds) {
    WriteI16(resource.entry, rco::bodyFormat, kind == kImages ? rco::kFormatGim : 0);
    WriteI16(resource.entry, rco::bodyCompression, rco::kCompressionZlib);
    WriteI32(resource.entry, rco::bodyUnpackedSize, extra);
    return resource;
  }
  WriteI16(resource.entry, rco::bodyFormat, 1);
  WriteI16(resource.entry, rco::bodyChannels, extra > 0 ? 2 : 1);
  WriteI32(resource.entry, rco::bodyChannel1Size, SizeOf(data) - extra);
  WriteI32(resource.entry, rco::bodyChannel2Size, extra);
  resource.channels = {0};
  if (extra > 0) {
    resource.channels.push_back(-extra);  // as far in front of the data as it should stand behind their start
  } else {
    WriteI32(resource.entry, rco::bodyChannel2Offset, DataOffset(resources, n));
  }
  return resource;
}

// Pointers to what stands behind the place follow it. `first` is the first entry that does.
void MoveTargets(std::vector<int>& pointers, std::size_t first) {
  for (int& pointer : pointers) {
    pointer += pointer >= static_cast<int>(first) ? 1 : 0;
  }
}

// The pointers to text records aren't resolved: those that look like positions behind the place move.
void MoveTextPointers(RcoContents& contents, std::int32_t threshold, std::int32_t delta) {
  for (std::int32_t& pointer : contents.textPointers) {
    pointer += pointer >= threshold ? delta : 0;
  }
}

// The distance to the next root, which isn't there behind the last one. It grows there too.
void GrowLastRoot(RcoContents& contents, RcoTable table, std::int32_t delta) {
  constexpr std::array<RcoTable, kRcoTables> kOrder = {RcoTable::kImage, RcoTable::kGmo,  RcoTable::kVag,
                                                       RcoTable::kText,  RcoTable::kPage, RcoTable::kAnim};
  const auto isThere = [&](RcoTable other) { return !contents.roots[static_cast<std::size_t>(other)].empty(); };
  if (std::none_of(std::find(kOrder.begin(), kOrder.end(), table) + 1, kOrder.end(), isThere)) {
    Add(contents.roots[static_cast<std::size_t>(table)], rco::entryNext, delta);
  }
}

void InsertLabel(RcoContents& contents, std::int32_t place, const std::string& label) {
  Bytes bytes(label.begin(), label.end());
  bytes.resize(bytes.size() / 4 * 4 + 4);
  contents.labelArea.insert(contents.labelArea.begin() + place, bytes.begin(), bytes.end());
}

template <class Item>
void InsertAt(std::vector<Item>& items, std::size_t n, Item item) {
  items.insert(items.begin() + static_cast<std::ptrdiff_t>(n), std::move(item));
}

}  // namespace

RcoContents WithData(const RcoContents& before, std::size_t kind, std::size_t n, const Bytes& data, bool compressed,
                     std::int32_t unpackedSize, const Channels& channels) {
  RcoContents after = before;
  WalkedResource& resource = after.resources[kind][n];
  Bytes& entry = resource.entry;
  resource.data = data;
  WriteI32(entry, rco::bodyDataSize, SizeOf(data));
  if (IsGimOrModel(kind, resource)) {
    WriteI16(entry, rco::bodyCompression,
             static_cast<std::int16_t>(compressed ? rco::kCompressionZlib : rco::kCompressionNone));
  }
  const bool isLast = n + 1 == after.resources[kind].size();
  if (kind != kSounds && SizeOf(entry) > rco::kShortEntrySize && !isLast) {
    WriteI32(entry, rco::bodyUnpackedSize, unpackedSize);
  }
  if (kind == kSounds) {
    if (resource.channels.size() == 2 && !channels.stereo) {
      // What was the second channel's place stays as a number.
      WriteI32(entry, rco::bodyChannel2Offset, DataOffset(after.resources[kind], n) + resource.channels[1]);
    }
    WriteI16(entry, rco::bodyChannels, channels.stereo ? 2 : 1);
    WriteI32(entry, rco::bodyChannel1Size, channels.size1);
    WriteI32(entry, rco::bodyChannel2Size, channels.stereo ? channels.size2 : 0);
    resource.channels = {0};
    if (channels.stereo) {
      WriteI32(entry, rco::bodyChannel2Offset, 0);
      resource.channels.push_back(Padded(channels.size1));
    }
  }
  return after;
}

RcoContents WithString(const RcoContents& before, std::size_t text, std::size_t language, std::u16string_view string) {
  RcoContents after = before;
  Bytes& stored = after.texts[text].strings[language];
  stored.clear();
  for (const char16_t unit : string) {
    stored.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    stored.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  stored.resize(stored.size() + (stored.size() % 4 == 0 ? 4 : 2));
  return after;
}

RcoContents WithResource(const WalkedRco& before, std::size_t kind, std::size_t n, const std::string& label,
                         const Bytes& data, std::int32_t extra) {
  constexpr std::array<RcoTable, 3> kTables = {RcoTable::kImage, RcoTable::kVag, RcoTable::kGmo};
  const auto table = static_cast<std::size_t>(kTables[kind]);
  RcoContents after = before.contents;
  std::vector<WalkedResource>& resources = after.resources[kind];
  WalkedResource resource = NewResource(after, kind, n, label, data, extra);
  const std::int32_t length = SizeOf(resource.entry);

  if (IsGimOrModel(kind, resources[n - 1])) {
    WriteI16(resources[n - 1].entry, rco::bodyCompression, rco::kCompressionZlib);
  }
  for (std::size_t i = n + 1; i < resources.size(); ++i) {
    Add(resources[i].entry, rco::entryParent, length);
  }
  InsertAt(resources, n, std::move(resource));
  GrowLastRoot(after, kTables[kind], length);
  Add(after.roots[table], rco::entryChildren, 1);
  // The pointer to the entry at the place comes to point to the new one, which gets another.
  MoveTargets(after.pointers[table], n + 1);
  after.pointers[table].push_back(static_cast<int>(n));
  MoveTextPointers(after, before.resources[kind][n].entry + rco::entryLabel, length);
  InsertLabel(after, before.resources[kind][n].label, label);
  return after;
}

RcoContents WithText(const WalkedRco& before, std::size_t n, const std::string& label) {
  RcoContents after = before.contents;
  const auto texts = static_cast<std::int32_t>(after.texts.size());
  std::int32_t number = 0;
  for (Bytes& language : after.languages) {
    Add(language, rco::entryNext, rco::kTextRecSize);
    Add(language, rco::langTextCount, 1);
    // 4 bytes less than what a language takes.
    const std::int32_t distance = texts * rco::kTextRecSize + rco::langTextCount + rco::kTextRecSize;
    after.textPointers.push_back(before.textRoot + rco::kEntryHeadSize + distance * ++number);
  }
  GrowLastRoot(after, RcoTable::kText, rco::kTextRecSize * number);
  InsertAt(after.texts, n, {label, std::vector<Bytes>(after.languages.size())});
  InsertLabel(after, before.texts[n].label, label);
  return after;
}

RcoContents WithPage(const WalkedRco& before, std::size_t n, const std::string& label, std::uint8_t entryClass,
                     const Bytes& body) {
  constexpr auto kTable = static_cast<std::size_t>(RcoTable::kPage);
  RcoContents after = before.contents;
  std::vector<WalkedEntry>& pages = after.pages;
  const int depth = pages[n].depth;
  const std::size_t resources = after.resources[0].size() + after.resources[1].size() + after.resources[2].size();
  const std::int32_t length = rco::kEntryHeadSize + SizeOf(body);

  // Siblings up to the next page of another depth, and up to the number of resources.
  for (std::size_t i = n + 1; i < resources && pages[i].depth == depth; ++i) {
    Add(pages[i].entry, rco::entryParent, length);
  }
  std::size_t parent = 0;
  if (depth == 0) {
    Add(after.roots[kTable], rco::entryChildren, 1);
  } else {
    for (parent = n - 1; pages[parent].depth >= depth;) {
      --parent;
    }
    Add(pages[parent].entry, rco::entryChildren, 1);
    const std::int32_t next = ReadI32(pages[parent].entry, rco::entryNext);
    Add(pages[parent].entry, rco::entryNext, next == 0 || next == -1 ? 0 : length);
  }
  Bytes entry = NewHead(entryClass, rco::kTablePage, length, Distance(pages, parent, n));
  WriteI32(entry, rco::entrySize, length);
  Append(entry, body);
  InsertAt(pages, n, {label, depth, entry});
  MoveTargets(after.pointers[kTable], n);
  after.pointers[kTable].push_back(static_cast<int>(n));
  MoveTextPointers(after, before.pages[n].entry, length);
  InsertLabel(after, before.pages[n].label, label);
  return after;
}

}  // namespace kelvane::test
