#include "support/RcoWriter.h"

#include <bit>
#include <stdexcept>

#include "support/RcoResolve.h"

namespace kelvane::test {

namespace {

// entryTable of each table's root and entries, and its header field, by RcoTable.
struct TableFields {
  std::uint8_t code;
  std::int32_t rootField;
  std::int32_t pointersField;
};
constexpr std::array<TableFields, kRcoTables> kTables = {{
    {3, rco::hdrTextRoot, rco::hdrTextPtrs},
    {rco::kTableImage, rco::hdrImageRoot, rco::hdrImagePtrs},
    {rco::kTableVag, rco::hdrVagRoot, rco::hdrVagPtrs},
    {rco::kTableGmo, rco::hdrGmoRoot, rco::hdrGmoPtrs},
    {rco::kTablePage, rco::hdrPageRoot, rco::hdrPagePtrs},
    {9, rco::hdrAnimRoot, rco::hdrAnimPtrs},
}};
constexpr std::uint8_t kMainTableCode = 1;
constexpr std::uint8_t kGeneralClass = 1;
constexpr std::uint8_t kLanguageClass = 1;
// The tables in the order of their roots.
constexpr std::array<RcoTable, kRcoTables> kRootOrder = {RcoTable::kImage, RcoTable::kGmo,  RcoTable::kVag,
                                                         RcoTable::kText,  RcoTable::kPage, RcoTable::kAnim};

std::uint8_t TableCode(RcoTable table) {
  return kTables[static_cast<std::size_t>(table)].code;
}

std::int32_t CountOf(std::size_t count) {
  return static_cast<std::int32_t>(count);
}

// The fields of an entry's head that differ from entry to entry.
struct HeadFields {
  std::uint8_t entryClass = 0;
  std::uint8_t table = 0;
  std::int32_t label = -1;
  std::int32_t size = 0;
  std::int32_t children = 0;
  std::int32_t next = 0;
  std::int32_t previous = 0;
  std::int32_t parent = 0;
};

// Writes the plain form into a zero-filled file.
class Writer {
 public:
  Writer(const RcoDescription& description, const RcoLayout& layout)
      : description_(description), layout_(layout), bytes_(static_cast<std::size_t>(layout.fileSize)) {}

  Bytes Write() {
    WriteHeader();
    WriteRoots();
    WriteGeneral(RcoTable::kImage, description_.images, layout_.images);
    WriteGeneral(RcoTable::kGmo, description_.gmos, layout_.gmos);
    WriteGeneral(RcoTable::kVag, description_.vags, layout_.vags);
    WriteLanguages();
    WriteEntries(RcoTable::kPage, description_.pages, layout_.pages);
    WriteEntries(RcoTable::kAnim, description_.animations, layout_.animEntries);
    WritePointers();
    WriteTextData();
    WriteLabels();
    WriteEvents();
    WriteTrailing();
    return std::move(bytes_);
  }

 private:
  void Put8(std::int32_t offset, std::uint8_t value) { At(bytes_, offset) = value; }
  void Put16(std::int32_t offset, std::uint16_t value) { WriteU16(bytes_, offset, value); }
  void Put32(std::int32_t offset, std::int32_t value) { WriteI32(bytes_, offset, value); }
  void PutText(std::int32_t offset, const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      Put8(offset + CountOf(i), static_cast<std::uint8_t>(text[i]));
    }
  }

  void PutRegion(std::int32_t field, const RcoRegion& region) {
    Put32(field, region.offset > 0 ? region.offset : description_.options.absentOffset);
    Put32(field + 4, region.length);
  }

  void WriteHeader() {
    Put32(rco::hdrMagic, rco::kMagic);
    Put32(rco::hdrVersion, description_.options.version);
    if (layout_.mainHead > 0) {
      Put32(rco::kRootLongsAt, layout_.mainHead);
    }
    for (std::size_t table = 0; table < kRcoTables; ++table) {
      const std::int32_t root = layout_.roots[table];
      Put32(kTables[table].rootField, root > 0 ? root : description_.options.absentOffset);
      PutRegion(kTables[table].pointersField, layout_.pointers[table]);
    }
    PutRegion(rco::hdrTextDataOffset, layout_.textData);
    PutRegion(rco::hdrLabelOffset, layout_.labels);
    PutRegion(rco::hdrEventOffset, layout_.eventArea);
    PutRegion(rco::hdrImageData, layout_.imageData);
    PutRegion(rco::hdrVagData, layout_.vagData);
    PutRegion(rco::hdrGmoData, layout_.gmoData);
    for (const auto& [offset, value] : description_.options.headerLongs) {
      Put32(offset, value);
    }
  }

  void WriteHead(std::int32_t entry, const HeadFields& fields) {
    Put8(entry + rco::entryClass, fields.entryClass);
    Put8(entry + rco::entryTable, fields.table);
    Put32(entry + rco::entryLabel, fields.label);
    Put32(entry + rco::entryHeadSize, rco::kEntryHeadSize);
    Put32(entry + rco::entrySize, fields.size);
    Put32(entry + rco::entryChildren, fields.children);
    Put32(entry + rco::entryNext, fields.next);
    Put32(entry + rco::entryPrev, fields.previous);
    Put32(entry + rco::entryParent, fields.parent);
  }

  [[nodiscard]] std::int32_t ChildrenOfRoot(RcoTable table) const {
    switch (table) {
      case RcoTable::kText:
        return CountOf(layout_.languages.size());
      case RcoTable::kImage:
        return CountOf(layout_.images.size());
      case RcoTable::kVag:
        return CountOf(layout_.vags.size());
      case RcoTable::kGmo:
        return CountOf(layout_.gmos.size());
      case RcoTable::kPage:
        return CountOf(description_.pages.size());
      case RcoTable::kAnim:
        break;
    }
    return CountOf(description_.animations.size());
  }

  // The roots are siblings, children of the main head.
  void WriteRoots() {
    std::vector<RcoTable> present;
    for (const RcoTable table : kRootOrder) {
      if (layout_.Root(table) > 0) {
        present.push_back(table);
      }
    }
    if (layout_.mainHead > 0) {
      WriteHead(layout_.mainHead, {.table = kMainTableCode, .children = CountOf(present.size())});
    }
    for (std::size_t i = 0; i < present.size(); ++i) {
      const RcoTable table = present[i];
      const std::int32_t root = layout_.Root(table);
      const bool statesSize = table == RcoTable::kPage || table == RcoTable::kAnim;
      WriteHead(root, {.table = TableCode(table),
                       .size = statesSize ? rco::kEntryHeadSize : 0,
                       .children = ChildrenOfRoot(table),
                       .next = i + 1 < present.size() ? layout_.Root(present[i + 1]) - root : 0,
                       .previous = i > 0 ? root - layout_.Root(present[i - 1]) : 0,
                       .parent = layout_.mainHead > 0 ? root - layout_.mainHead : 0});
    }
  }

  // Writes a field of an entry unless the entry ends before it.
  void PutField(const GeneralPlace& place, std::int32_t field, std::int32_t value) {
    if (field + 4 <= place.length) {
      Put32(place.entry + field, value);
    }
  }

  template <class Spec>
  void WriteBodyTail(const Spec& spec, const GeneralPlace& place) {
    Put16(place.entry + rco::bodyCompression, spec.compression);
    if (spec.unpackedSize) {
      PutField(place, rco::bodyUnpackedSize, *spec.unpackedSize);
    }
    CopyInto(bytes_, place.data, spec.data);
  }

  void WriteBodyTail(const VagSpec& spec, const GeneralPlace& place) {
    const bool stereo = spec.channel2.has_value();
    Put16(place.entry + rco::bodyChannels, spec.channels.value_or(stereo ? 2 : 1));
    PutField(place, rco::bodyChannel1Size, CountOf(spec.channel1.size()));
    PutField(place, rco::bodyChannel1Offset, place.dataOffset);
    PutField(place, rco::bodyChannel2Size, stereo ? CountOf(spec.channel2->size()) : 0);
    PutField(place, rco::bodyChannel2Offset, stereo ? place.channel2Offset : spec.monoChannel2Offset);
    CopyInto(bytes_, place.data, spec.channel1);
    if (stereo) {
      CopyInto(bytes_, layout_.vagData.offset + place.channel2Offset, *spec.channel2);
    }
  }

  template <class Spec>
  void WriteGeneral(RcoTable table, const std::vector<Spec>& specs, const std::vector<GeneralPlace>& places) {
    for (std::size_t i = 0; i < specs.size(); ++i) {
      const GeneralPlace& place = places[i];
      WriteHead(place.entry, {.entryClass = kGeneralClass,
                              .table = TableCode(table),
                              .label = place.label,
                              .next = i + 1 < specs.size() ? place.length : 0,
                              .previous = i > 0 ? places[i - 1].length : 0,
                              .parent = place.entry - layout_.Root(table)});
      Put16(place.entry + rco::bodyFormat, specs[i].format);
      Put32(place.entry + rco::bodyDataSize, place.dataSize);
      Put32(place.entry + rco::bodyDataOffset, place.dataOffset);
      WriteBodyTail(specs[i], place);
    }
  }

  void WriteLanguages() {
    const std::size_t count = layout_.languages.size();
    for (std::size_t i = 0; i < count; ++i) {
      const LanguagePlace& place = layout_.languages[i];
      const bool last = i + 1 == count;
      WriteHead(place.entry, {.entryClass = kLanguageClass,
                              .table = TableCode(RcoTable::kText),
                              .next = last && !description_.options.lastLanguageStatesNext ? 0 : place.length,
                              .previous = i > 0 ? layout_.languages[i - 1].length : 0,
                              .parent = place.entry - layout_.Root(RcoTable::kText)});
      WriteU32(bytes_, place.entry + rco::langCode, description_.languages[i].code);
      Put32(place.entry + rco::langTextCount, CountOf(place.texts.size()));
      for (std::size_t text = 0; text < place.texts.size() && text < description_.texts.size(); ++text) {
        const TextPlace& record = place.texts[text];
        Put32(record.record, layout_.textLabels[text]);
        Put32(record.record + 4, record.length);
        Put32(record.record + 8, record.offset);
      }
    }
  }

  [[nodiscard]] std::int32_t EntryOf(const EntryPlace& from, const std::vector<EntryPlace>& places, int index) const {
    return index < 0 ? from.entry : places[static_cast<std::size_t>(index)].entry;
  }

  void WriteEntries(RcoTable table, const std::vector<EntrySpec>& specs, const std::vector<EntryPlace>& places) {
    const std::vector<FlatEntry> flat = Flatten(specs);
    for (std::size_t i = 0; i < flat.size(); ++i) {
      const EntrySpec& spec = *flat[i].spec;
      const EntryPlace& place = places[i];
      const std::int32_t parent =
          place.parent < 0 ? layout_.Root(table) : places[static_cast<std::size_t>(place.parent)].entry;
      WriteHead(place.entry, {.entryClass = spec.entryClass,
                              .table = spec.entryTable.value_or(TableCode(table)),
                              .label = place.label,
                              .size = spec.statesSize ? place.length : 0,
                              .children = CountOf(spec.children.size()),
                              .next = EntryOf(place, places, place.next) - place.entry,
                              .previous = place.entry - EntryOf(place, places, place.previous),
                              .parent = place.entry - parent});
      WriteBody(spec, place.entry + rco::kEntryHeadSize);
    }
  }

  void WriteBody(const EntrySpec& spec, std::int32_t position) {
    const auto put = [&](std::uint32_t word) {
      WriteU32(bytes_, position, word);
      position += 4;
    };
    if (spec.position) {
      for (const float value : *spec.position) {
        put(std::bit_cast<std::uint32_t>(value));
      }
    }
    for (const BodyItem& item : spec.body) {
      if (const BodyItem::Words* words = item.AsWords()) {
        for (const std::uint32_t word : *words) {
          put(word);
        }
      } else {
        put(item.AsReference()->type);
        put(static_cast<std::uint32_t>(ValueOf(description_, layout_, *item.AsReference())));
      }
    }
  }

  void WritePointers() {
    for (const RcoTable table : kRootOrder) {
      std::vector<std::int32_t> pointers = EntryPositions(layout_, table);
      if (const auto order = description_.pointerOrders.find(table); order != description_.pointerOrders.end()) {
        const std::vector<std::int32_t> positions = std::move(pointers);
        pointers.clear();
        for (const int entry : order->second) {
          if (entry >= CountOf(positions.size())) {
            throw std::invalid_argument("a pointer table names entry " + std::to_string(entry));
          }
          pointers.push_back(entry < 0 ? 0 : positions[static_cast<std::size_t>(entry)]);
        }
      }
      std::int32_t position = layout_.Pointers(table).offset;
      for (const std::int32_t pointer : pointers) {
        Put32(position, pointer);
        position += 4;
      }
    }
  }

  void WriteTextData() {
    for (std::size_t language = 0; language < layout_.languages.size(); ++language) {
      const std::vector<TextPlace>& places = layout_.languages[language].texts;
      for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].length == 0) {
          continue;
        }
        std::int32_t position = layout_.textData.offset + places[i].offset;
        for (const char16_t unit : description_.texts[i].strings[language].units) {
          Put16(position, unit);
          position += 2;
        }
      }
    }
  }

  void PutLabel(std::int32_t offset, const RcoLabel& label) {
    if (label) {
      PutText(layout_.labels.offset + offset, *label);
    }
  }

  template <class Spec>
  void WriteLabelsOf(const std::vector<Spec>& specs, const std::vector<GeneralPlace>& places) {
    for (std::size_t i = 0; i < specs.size(); ++i) {
      PutLabel(places[i].label, specs[i].label);
    }
  }

  void WriteLabelsOf(const std::vector<EntrySpec>& specs, const std::vector<EntryPlace>& places) {
    const std::vector<FlatEntry> flat = Flatten(specs);
    for (std::size_t i = 0; i < flat.size(); ++i) {
      PutLabel(places[i].label, flat[i].spec->label);
    }
  }

  void WriteLabels() {
    for (std::size_t i = 0; i < description_.texts.size(); ++i) {
      PutLabel(layout_.textLabels[i], description_.texts[i].label);
    }
    WriteLabelsOf(description_.images, layout_.images);
    WriteLabelsOf(description_.vags, layout_.vags);
    WriteLabelsOf(description_.gmos, layout_.gmos);
    WriteLabelsOf(description_.pages, layout_.pages);
    WriteLabelsOf(description_.animations, layout_.animEntries);
  }

  void WriteEvents() {
    for (std::size_t i = 0; i < description_.events.size(); ++i) {
      PutText(layout_.eventArea.offset + layout_.events[i], description_.events[i]);
    }
  }

  void WriteTrailing() {
    const Bytes& trailing = description_.options.trailing;
    CopyInto(bytes_, layout_.fileSize - CountOf(trailing.size()), trailing);
  }

  const RcoDescription& description_;
  const RcoLayout& layout_;
  Bytes bytes_;
};

}  // namespace

Bytes WriteRco(const RcoDescription& description, const RcoLayout& layout) {
  return Writer(description, layout).Write();
}

}  // namespace kelvane::test
