#include "support/RcoLayout.h"

namespace kelvane::test {

namespace {

constexpr std::int32_t kWordSize = 4;

std::int32_t SizeOf(const Bytes& bytes) {
  return static_cast<std::int32_t>(bytes.size());
}

// A label takes its bytes and at least one NUL, up to a multiple of 4.
std::int32_t LabelLength(const std::string& label) {
  return RoundUpTo4(static_cast<std::int32_t>(label.size()) + 1);
}

template <class Spec>
std::int32_t GeneralEntryLength(const Spec& spec) {
  if (spec.entryLength != 0) {
    return spec.entryLength;
  }
  return rco::kShortEntrySize + (spec.unpackedSize ? kWordSize : 0);
}

std::int32_t EntryLength(const ImageSpec& spec) {
  return GeneralEntryLength(spec);
}
std::int32_t EntryLength(const GmoSpec& spec) {
  return GeneralEntryLength(spec);
}
std::int32_t EntryLength(const VagSpec& spec) {
  return spec.entryLength != 0 ? spec.entryLength : rco::kEntryHeadSize + rco::kVagBodySize;
}

std::int32_t EntryLength(const EntrySpec& spec) {
  std::int32_t words = spec.position ? rco::kPositionWords : 0;
  for (const BodyItem& item : spec.body) {
    words += item.WordCount();
  }
  return rco::kEntryHeadSize + words * kWordSize;
}

// Builds up a layout region by region, in the order of the file.
class LayoutMaker {
 public:
  explicit LayoutMaker(const RcoDescription& description) : description_(description) {}

  RcoLayout Make() {
    layout_.roots.fill(-1);
    LayTables();
    LayPointers();
    LayTextData();
    LayLabels();
    LayEvents();
    layout_.headEnd = position_ = RoundUpTo4(position_);
    LayDataArea(description_.images, layout_.images, layout_.imageData);
    LayDataArea(description_.vags, layout_.vags, layout_.vagData);
    LayDataArea(description_.gmos, layout_.gmos, layout_.gmoData);
    layout_.fileSize = Take(SizeOf(description_.options.trailing)) + SizeOf(description_.options.trailing);
    return std::move(layout_);
  }

 private:
  // Hands out the next `length` bytes of the file.
  std::int32_t Take(std::int32_t length) {
    const std::int32_t start = position_;
    position_ += length;
    return start;
  }

  // Lays the table's root if it has entries or is wanted without.
  void LayRoot(RcoTable table, bool hasEntries) {
    if (hasEntries || description_.emptyTables.contains(table)) {
      layout_.roots[static_cast<std::size_t>(table)] = Take(rco::kEntryHeadSize);
    }
  }

  template <class Spec>
  void LayGeneral(RcoTable table, const std::vector<Spec>& specs, std::vector<GeneralPlace>& places) {
    LayRoot(table, !specs.empty());
    for (const Spec& spec : specs) {
      GeneralPlace place;
      place.length = EntryLength(spec);
      place.entry = Take(place.length);
      places.push_back(place);
    }
  }

  void LayLanguages() {
    LayRoot(RcoTable::kText, !description_.languages.empty());
    for (const LanguageSpec& language : description_.languages) {
      LanguagePlace place;
      place.entry = Take(rco::langRecords);
      const int records = static_cast<int>(description_.texts.size()) + language.extraRecords;
      for (int i = 0; i < records; ++i) {
        TextPlace text;
        text.record = Take(rco::kTextRecSize);
        place.texts.push_back(text);
      }
      place.length = position_ - place.entry;
      layout_.languages.push_back(place);
    }
  }

  void LayEntries(RcoTable table, const std::vector<EntrySpec>& specs, std::vector<EntryPlace>& places) {
    LayRoot(table, !specs.empty());
    for (const FlatEntry& flat : Flatten(specs)) {
      EntryPlace place;
      place.length = EntryLength(*flat.spec);
      place.entry = Take(place.length);
      place.depth = flat.depth;
      place.parent = flat.parent;
      place.previous = flat.previous;
      place.next = flat.next;
      places.push_back(place);
    }
  }

  void LayTables() {
    position_ = rco::kHeaderSize;
    if (description_.options.mainHead) {
      layout_.mainHead = Take(rco::kEntryHeadSize);
    }
    LayGeneral(RcoTable::kImage, description_.images, layout_.images);
    LayGeneral(RcoTable::kGmo, description_.gmos, layout_.gmos);
    LayGeneral(RcoTable::kVag, description_.vags, layout_.vags);
    LayLanguages();
    LayEntries(RcoTable::kPage, description_.pages, layout_.pages);
    LayEntries(RcoTable::kAnim, description_.animations, layout_.animEntries);
    for (std::size_t i = 0; i < layout_.animEntries.size(); ++i) {
      if (layout_.animEntries[i].depth == 0) {
        layout_.animations.push_back(static_cast<int>(i));
      }
    }
    layout_.tablesEnd = position_;
  }

  void LayPointers() {
    std::size_t textRecords = 0;
    for (const LanguagePlace& language : layout_.languages) {
      textRecords += language.texts.size();
    }
    const std::array<std::size_t, kRcoTables> counts = {
        textRecords,          description_.images.size(), description_.vags.size(), description_.gmos.size(),
        layout_.pages.size(), layout_.animations.size()};
    for (std::size_t table = 0; table < kRcoTables; ++table) {
      const auto order = description_.pointerOrders.find(static_cast<RcoTable>(table));
      const std::size_t count = order == description_.pointerOrders.end() ? counts[table] : order->second.size();
      if (count > 0) {
        const std::int32_t length = static_cast<std::int32_t>(count) * kWordSize;
        layout_.pointers[table] = {Take(length), length};
      }
    }
  }

  void LayTextData() {
    if (description_.languages.empty()) {
      return;
    }
    layout_.textData.offset = position_;
    for (std::size_t language = 0; language < layout_.languages.size(); ++language) {
      for (std::size_t i = 0; i < layout_.languages[language].texts.size(); ++i) {
        TextPlace& place = layout_.languages[language].texts[i];
        if (i < description_.texts.size() && language < description_.texts[i].strings.size()) {
          place.length = StoredLength(description_.texts[i].strings[language]);
        }
        place.offset = Take(place.length) - layout_.textData.offset;
      }
    }
    layout_.textData.length = position_ - layout_.textData.offset;
  }

  // The relative offset of a label, which it takes room for; -1 without one.
  std::int32_t TakeLabel(const RcoLabel& label) {
    return label ? Take(LabelLength(*label)) - layout_.labels.offset : -1;
  }

  template <class Spec>
  void LayLabelsOf(const std::vector<Spec>& specs, std::vector<GeneralPlace>& places) {
    for (std::size_t i = 0; i < specs.size(); ++i) {
      places[i].label = TakeLabel(specs[i].label);
    }
  }

  void LayLabelsOf(const std::vector<EntrySpec>& specs, std::vector<EntryPlace>& places) {
    const std::vector<FlatEntry> flat = Flatten(specs);
    for (std::size_t i = 0; i < flat.size(); ++i) {
      places[i].label = TakeLabel(flat[i].spec->label);
    }
  }

  void LayLabels() {
    layout_.labels.offset = position_;
    for (const TextSpec& text : description_.texts) {
      layout_.textLabels.push_back(TakeLabel(text.label));
    }
    LayLabelsOf(description_.images, layout_.images);
    LayLabelsOf(description_.vags, layout_.vags);
    LayLabelsOf(description_.gmos, layout_.gmos);
    LayLabelsOf(description_.pages, layout_.pages);
    LayLabelsOf(description_.animations, layout_.animEntries);
    layout_.labels.length = position_ - layout_.labels.offset;
  }

  void LayEvents() {
    if (description_.events.empty()) {
      return;
    }
    layout_.eventArea.offset = position_;
    for (const std::string& event : description_.events) {
      layout_.events.push_back(Take(LabelLength(event)) - layout_.eventArea.offset);
    }
    layout_.eventArea.length = position_ - layout_.eventArea.offset;
  }

  static std::int32_t DataSize(const ImageSpec& spec, GeneralPlace& /*place*/) { return SizeOf(spec.data); }
  static std::int32_t DataSize(const GmoSpec& spec, GeneralPlace& /*place*/) { return SizeOf(spec.data); }
  static std::int32_t DataSize(const VagSpec& spec, GeneralPlace& place) {
    if (!spec.channel2) {
      return SizeOf(spec.channel1);
    }
    const std::int32_t channel2 = RoundUpTo4(SizeOf(spec.channel1));
    place.channel2Offset = place.dataOffset + channel2;
    return channel2 + SizeOf(*spec.channel2);
  }

  template <class Spec>
  void LayDataArea(const std::vector<Spec>& specs, std::vector<GeneralPlace>& places, RcoRegion& area) {
    if (specs.empty()) {
      return;
    }
    area.offset = position_;
    for (std::size_t i = 0; i < specs.size(); ++i) {
      GeneralPlace& place = places[i];
      place.dataOffset = position_ - area.offset;
      place.dataSize = DataSize(specs[i], place);
      place.paddedSize = RoundUpTo4(place.dataSize);
      place.data = Take(place.paddedSize);
    }
    area.length = position_ - area.offset;
  }

  const RcoDescription& description_;
  RcoLayout layout_;
  std::int32_t position_ = 0;
};

void FlattenInto(const std::vector<EntrySpec>& entries, int parent, int depth, std::vector<FlatEntry>& flat) {
  int previous = -1;
  for (const EntrySpec& entry : entries) {
    const int index = static_cast<int>(flat.size());
    flat.push_back({&entry, depth, parent, previous, -1});
    if (previous >= 0) {
      flat[static_cast<std::size_t>(previous)].next = index;
    }
    previous = index;
    FlattenInto(entry.children, index, depth + 1, flat);
  }
}

}  // namespace

std::int32_t RoundUpTo4(std::int32_t value) {
  return (value + rco::kAlignment - 1) / rco::kAlignment * rco::kAlignment;
}

std::int32_t StoredLength(const TextString& text) {
  const std::int32_t bytes = static_cast<std::int32_t>(text.units.size()) * 2;
  switch (text.storage) {
    case TextString::Storage::kPadded:
      return bytes + rco::kAlignment - bytes % rco::kAlignment;
    case TextString::Storage::kRaw:
      return bytes;
    case TextString::Storage::kNone:
      break;
  }
  return 0;
}

std::vector<FlatEntry> Flatten(const std::vector<EntrySpec>& entries) {
  std::vector<FlatEntry> flat;
  FlattenInto(entries, -1, 0, flat);
  return flat;
}

RcoLayout LayOut(const RcoDescription& description) {
  return LayoutMaker(description).Make();
}

}  // namespace kelvane::test
