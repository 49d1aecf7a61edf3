#include "support/RcoWalk.h"

#include <algorithm>
#include <stdexcept>

#include "container/RcoFormat.h"

namespace kelvane::test {

namespace {

// Header fields by RcoTable.
constexpr std::array<std::int32_t, kRcoTables> kRootFields = {rco::hdrTextRoot, rco::hdrImageRoot, rco::hdrVagRoot,
                                                              rco::hdrGmoRoot,  rco::hdrPageRoot,  rco::hdrAnimRoot};
// The roots in the order in which they lie.
constexpr std::array<RcoTable, kRcoTables> kRootOrder = {RcoTable::kImage, RcoTable::kGmo,  RcoTable::kVag,
                                                         RcoTable::kText,  RcoTable::kPage, RcoTable::kAnim};
// The tables of images, sounds and models.
constexpr std::array<RcoTable, 3> kResourceTables = {RcoTable::kImage, RcoTable::kVag, RcoTable::kGmo};
constexpr std::size_t kSounds = 1;

void Must(bool holds, const std::string& what) {
  if (!holds) {
    throw std::logic_error("not so: " + what);
  }
}

std::int32_t Padded(std::int32_t length) {
  return (length + 3) / 4 * 4;
}

class Walk {
 public:
  explicit Walk(ByteView file) : file_(file) {}

  WalkedRco Run() {
    Must(Long(rco::hdrMagic) == rco::kMagic, "the file begins with its signature");
    FindAreas();
    WalkRoots();
    for (std::size_t kind = 0; kind < kResourceTables.size(); ++kind) {
      WalkResources(kind);
    }
    WalkTexts();
    WalkPages();
    WalkAnimations();
    WalkPointers();
    MaskHeader();
    out_.contents.labelArea = Slice(labels_, events_);
    out_.contents.eventArea = Slice(events_, firstData_);
    return std::move(out_);
  }

 private:
  [[nodiscard]] std::int32_t Long(std::int32_t at) const { return ReadI32(file_, at); }
  [[nodiscard]] std::int32_t MainHead() const { return Long(rco::kRootLongsAt); }
  [[nodiscard]] std::int32_t Size() const { return static_cast<std::int32_t>(file_.size()); }
  [[nodiscard]] std::int32_t Root(RcoTable table) const { return Long(kRootFields[static_cast<std::size_t>(table)]); }
  [[nodiscard]] Bytes Slice(std::int32_t from, std::int32_t to) const {
    Must(from >= 0 && from <= to && to <= Size(), "a region lies inside the file");
    return {file_.begin() + from, file_.begin() + to};
  }
  [[nodiscard]] std::string LabelAt(std::int32_t offset) const {
    Must(offset >= 0 && labels_ + offset < events_, "a label lies in the label area");
    const auto first = file_.begin() + labels_ + offset;
    return {first, std::find(first, file_.end(), std::uint8_t{0})};
  }

  // The data areas lie one behind the other, and with them the file ends.
  void FindAreas() {
    labels_ = Long(rco::hdrLabelOffset);
    events_ = Long(rco::hdrEventOffset);
    Must(labels_ < events_, "the events lie behind the labels");
    std::int32_t end = 0;
    for (std::size_t kind = 0; kind < 3; ++kind) {
      const std::int32_t field = rco::hdrImageData + static_cast<std::int32_t>(kind) * 8;
      if (Long(field) <= 0) {
        continue;
      }
      areas_[kind] = Long(field);
      Must(end == 0 || areas_[kind] == end, "a data area begins where the one before it ends");
      firstData_ = end == 0 ? areas_[kind] : firstData_;
      end = areas_[kind] + Long(field + 4);
    }
    if (end == 0) {
      firstData_ = end = Size();
    }
    Must(events_ <= firstData_, "the data lie behind the events");
    out_.contents.trailing = Slice(end, Size());
  }

  // Where a table ends: at the next root, or at the first pointer table.
  [[nodiscard]] std::int32_t TableEnd(RcoTable table) const {
    const auto place = std::find(kRootOrder.begin(), kRootOrder.end(), table);
    for (auto next = place + 1; next != kRootOrder.end(); ++next) {
      if (Root(*next) > 0) {
        return Root(*next);
      }
    }
    for (std::int32_t field = rco::hdrTextPtrs; field <= rco::hdrAnimPtrs; field += 8) {
      if (Long(field) > 0) {
        return Long(field);
      }
    }
    return Long(rco::hdrTextDataOffset) > 0 ? Long(rco::hdrTextDataOffset) : labels_;
  }

  // What the main head and each root say of the next root; the first root follows the header or the main head.
  void WalkRoots() {
    const std::int32_t mainHead = MainHead();
    std::int32_t begin = mainHead > 0 ? mainHead + rco::kEntryHeadSize : rco::kHeaderSize;
    for (const RcoTable table : kRootOrder) {
      const std::int32_t root = Root(table);
      if (root <= 0) {
        continue;
      }
      Must(root == begin, "a root follows the table before it");
      begin = TableEnd(table);
      Must(mainHead <= 0 || Long(root + rco::entryParent) == root - mainHead, "a root knows the way to the main head");
      Bytes head = Slice(root, root + rco::kEntryHeadSize);
      WriteI32(head, rco::entryParent, 0);
      if (NextRoot(table) > 0) {
        Must(Long(root + rco::entryNext) == begin - root, "a root knows the way to the next one");
        WriteI32(head, rco::entryNext, 0);
      }
      out_.contents.roots[static_cast<std::size_t>(table)] = head;
    }
    out_.textRoot = Root(RcoTable::kText);
  }

  // 0 where there is none.
  [[nodiscard]] std::int32_t NextRoot(RcoTable table) const {
    const auto place = std::find(kRootOrder.begin(), kRootOrder.end(), table);
    const auto next = std::find_if(place + 1, kRootOrder.end(), [this](RcoTable other) { return Root(other) > 0; });
    return next == kRootOrder.end() ? 0 : Root(*next);
  }

  void WalkResources(std::size_t kind) {
    const RcoTable table = kResourceTables[kind];
    const std::int32_t root = Root(table);
    if (root <= 0) {
      return;
    }
    std::int32_t at = root + rco::kEntryHeadSize;
    std::int32_t dataOffset = 0;
    const std::int32_t count = Long(root + rco::entryChildren);
    for (std::int32_t i = 0; i < count; ++i) {
      const std::int32_t next = Long(at + rco::entryNext);
      Must((next == 0) == (i == count - 1), "only the last entry has no next one");
      const std::int32_t end = next == 0 ? TableEnd(table) : at + next;
      Must(end - at == rco::kShortEntrySize || end - at == rco::kEntryHeadSize + rco::kGeneralBodySize ||
               end - at == rco::kEntryHeadSize + rco::kVagBodySize,
           "an entry ends where the next one begins");
      Must(Long(at + rco::bodyDataOffset) == dataOffset, "data begin where those before them end");
      WalkedResource resource = Resource(kind, at, end);
      dataOffset += Padded(Long(at + rco::bodyDataSize));
      out_.resources[kind].push_back({at, Long(at + rco::entryLabel)});
      out_.contents.resources[kind].push_back(std::move(resource));
      at = end;
    }
    Must(count == 0 || dataOffset == Long(rco::hdrImageData + static_cast<std::int32_t>(kind) * 8 + 4),
         "a data area is as long as its data");
  }

  WalkedResource Resource(std::size_t kind, std::int32_t at, std::int32_t end) const {
    const std::int32_t dataOffset = Long(at + rco::bodyDataOffset);
    const std::int32_t data = areas_[kind] + dataOffset;
    const std::int32_t size = Long(at + rco::bodyDataSize);
    WalkedResource resource;
    resource.label = LabelAt(Long(at + rco::entryLabel));
    resource.data = Slice(data, data + size);
    const Bytes padding = Slice(data + size, data + Padded(size));
    Must(std::count(padding.begin(), padding.end(), 0) == static_cast<std::ptrdiff_t>(padding.size()),
         "data are padded with zeros");
    resource.entry = Slice(at, end);
    WriteI32(resource.entry, rco::entryLabel, 0);
    WriteI32(resource.entry, rco::bodyDataOffset, 0);
    if (kind == kSounds) {
      const int channels = ReadI16(file_, at + rco::bodyChannels);
      for (const std::int32_t field : {rco::bodyChannel1Offset, rco::bodyChannel2Offset}) {
        if (field == rco::bodyChannel1Offset || channels == 2) {
          resource.channels.push_back(Long(at + field) - dataOffset);
          WriteI32(resource.entry, field, 0);
        }
      }
    }
    return resource;
  }

  // The language records follow one another, and so do the strings in the order of the records.
  void WalkTexts() {
    const std::int32_t root = Root(RcoTable::kText);
    if (root <= 0) {
      return;
    }
    const std::int32_t textData = Long(rco::hdrTextDataOffset);
    std::int32_t at = root + rco::kEntryHeadSize;
    std::int32_t string = 0;
    const std::int32_t count = Long(at + rco::langTextCount);
    Must(count >= 0 && count <= Size() / rco::kTextRecSize, "the file holds all texts");
    out_.contents.texts.resize(static_cast<std::size_t>(count));
    for (int language = 0; language < ReadI16(file_, root + rco::entryChildren); ++language) {
      Must(Long(at + rco::langTextCount) == count, "every language has all texts");
      out_.contents.languages.push_back(Slice(at, at + rco::langRecords));
      at += rco::langRecords;
      for (WalkedText& text : out_.contents.texts) {
        const std::string label = LabelAt(Long(at + rco::textLabel));
        Must(language == 0 || label == text.label, "a text has the same label in all languages");
        text.label = label;
        if (language == 0) {
          out_.texts.push_back({at, Long(at + rco::textLabel)});
        }
        Must(Long(at + rco::textOffset) == string, "a string begins where the one before it ends");
        string += Long(at + rco::textLength);
        text.strings.push_back(Slice(textData + Long(at + rco::textOffset), textData + string));
        at += rco::kTextRecSize;
      }
    }
    Must(at == TableEnd(RcoTable::kText), "the languages end where the next table begins");
    Must(textData + string == labels_, "the labels follow the last string");
  }

  // An entry of a page or animation table with all that stand below it.
  void WalkTree(std::int32_t& at, std::int32_t tableEnd, int depth, bool isPage, std::vector<WalkedEntry>& entries,
                std::vector<WalkedPlace>& places) {
    std::int32_t length = Long(at + rco::entrySize);
    if (length == 0) {
      // Only pages without a length of their own have a pointer for each of them.
      std::int32_t end = tableEnd;
      for (const std::int32_t pointer : Pointers(RcoTable::kPage)) {
        end = pointer > at ? std::min(end, pointer) : end;
      }
      length = end - at;
    }
    const std::int32_t label = Long(at + rco::entryLabel);
    Bytes entry = Slice(at, at + length);
    WriteI32(entry, rco::entryLabel, 0);
    entries.push_back({isPage || depth == 0 ? LabelAt(label) : std::to_string(label), depth, entry});
    places.push_back({at, label});
    const std::int32_t children = Long(at + rco::entryChildren);
    at += length;
    for (std::int32_t i = 0; i < children; ++i) {
      Must(at < tableEnd, "a table holds all children");
      WalkTree(at, tableEnd, depth + 1, isPage, entries, places);
    }
  }

  void WalkTable(RcoTable table, std::vector<WalkedEntry>& entries, std::vector<WalkedPlace>& places) {
    const std::int32_t root = Root(table);
    if (root <= 0) {
      return;
    }
    std::int32_t at = root + rco::kEntryHeadSize;
    const std::int32_t end = TableEnd(table);
    for (std::int32_t i = 0; i < Long(root + rco::entryChildren); ++i) {
      WalkTree(at, end, 0, table == RcoTable::kPage, entries, places);
    }
    Must(at == end, "a table ends with its last entry");
  }

  void WalkPages() { WalkTable(RcoTable::kPage, out_.contents.pages, out_.pages); }
  void WalkAnimations() { WalkTable(RcoTable::kAnim, out_.contents.animations, out_.animations); }

  [[nodiscard]] std::vector<std::int32_t> Pointers(RcoTable table) const {
    const std::int32_t field = rco::hdrTextPtrs + static_cast<std::int32_t>(table) * 8;
    std::vector<std::int32_t> pointers;
    for (std::int32_t i = 0; Long(field) > 0 && i < Long(field + 4) / 4; ++i) {
      pointers.push_back(Long(Long(field) + i * 4));
    }
    return pointers;
  }

  // The pointer tables follow the entries and one another, and the texts or labels follow them.
  void WalkPointers() {
    std::int32_t end = 0;
    for (std::int32_t field = rco::hdrTextPtrs; field <= rco::hdrAnimPtrs; field += 8) {
      if (Long(field) > 0) {
        Must(end == 0 || Long(field) == end, "a pointer table follows the one before it");
        end = Long(field) + Long(field + 4);
      }
    }
    const std::int32_t behind = Long(rco::hdrTextDataOffset) > 0 ? Long(rco::hdrTextDataOffset) : labels_;
    Must(end == 0 || end == behind, "texts or labels follow the pointer tables");
    out_.contents.textPointers = Pointers(RcoTable::kText);
    for (std::size_t kind = 0; kind < 3; ++kind) {
      ResolvePointers(kResourceTables[kind], out_.resources[kind]);
    }
    ResolvePointers(RcoTable::kPage, out_.pages);
    std::vector<WalkedPlace> top;
    for (std::size_t i = 0; i < out_.animations.size(); ++i) {
      if (out_.contents.animations[i].depth == 0) {
        top.push_back(out_.animations[i]);
      }
    }
    ResolvePointers(RcoTable::kAnim, top);
  }

  void ResolvePointers(RcoTable table, const std::vector<WalkedPlace>& places) {
    for (const std::int32_t pointer : Pointers(table)) {
      const auto place =
          std::find_if(places.begin(), places.end(), [&](const WalkedPlace& p) { return p.entry == pointer; });
      Must(place != places.end(), "a pointer points to an entry of its table");
      out_.contents.pointers[static_cast<std::size_t>(table)].push_back(static_cast<int>(place - places.begin()));
    }
  }

  void MaskHeader() {
    Bytes& header = out_.contents.header;
    header = Slice(0, MainHead() > 0 ? MainHead() + rco::kEntryHeadSize : rco::kHeaderSize);
    for (const std::int32_t field : kRootFields) {
      WriteI32(header, field, 0);
    }
    for (const std::int32_t field : {rco::hdrTextDataOffset, rco::hdrLabelOffset, rco::hdrEventOffset}) {
      WriteI32(header, field, 0);
    }
    std::fill(header.begin() + rco::hdrTextPtrs, header.begin() + rco::hdrGmoData + 8, std::uint8_t{0});
  }

  ByteView file_;
  WalkedRco out_;
  std::int32_t labels_ = 0;
  std::int32_t events_ = 0;
  std::array<std::int32_t, 3> areas_{};
  std::int32_t firstData_ = 0;
};

template <class Item>
std::string DifferenceOf(const char* what, const std::vector<Item>& expected, const std::vector<Item>& actual) {
  if (expected.size() != actual.size()) {
    return std::string("the number of ") + what;
  }
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (!(expected[i] == actual[i])) {
      return std::string(what) + " " + std::to_string(i);
    }
  }
  return {};
}

}  // namespace

WalkedRco WalkRco(ByteView file) {
  return Walk(file).Run();
}

std::string Difference(const RcoContents& expected, const RcoContents& actual) {
  std::vector<std::string> differences = {
      DifferenceOf("header byte", expected.header, actual.header),
      DifferenceOf("image", expected.resources[0], actual.resources[0]),
      DifferenceOf("sound", expected.resources[1], actual.resources[1]),
      DifferenceOf("model", expected.resources[2], actual.resources[2]),
      DifferenceOf("language", expected.languages, actual.languages),
      DifferenceOf("text", expected.texts, actual.texts),
      DifferenceOf("page", expected.pages, actual.pages),
      DifferenceOf("animation", expected.animations, actual.animations),
      DifferenceOf("text pointer", expected.textPointers, actual.textPointers),
      DifferenceOf("label byte", expected.labelArea, actual.labelArea),
      DifferenceOf("event byte", expected.eventArea, actual.eventArea),
      DifferenceOf("trailing byte", expected.trailing, actual.trailing),
  };
  for (std::size_t table = 0; table < kRcoTables; ++table) {
    differences.push_back(DifferenceOf("root byte", expected.roots[table], actual.roots[table]));
    differences.push_back(DifferenceOf("pointer", expected.pointers[table], actual.pointers[table]));
  }
  std::string all;
  for (const std::string& difference : differences) {
    all += difference.empty() ? "" : difference + "; ";
  }
  return all;
}

}  // namespace kelvane::test
