// A file with every table, for inserts, and the fields that an insert is told to change.
#pragma once

#include "EngineFixture.h"
#include "container/Inserts.h"

namespace kelvane::test {

// Records 0 to 2 are images, 3 to 5 sounds, 6 and 7 models, or 6 to 8 with a third one. Pages: p0 with the children p1
// and p2, p3, p4. Animations: a0 with an operation, a1.
inline BuiltRco InsertScreen(bool thirdModel = false, int texts = 2) {
  RcoBuilder b;
  b.AddImage({.label = "bg", .data = Filled(21, 1), .unpackedSize = 400});
  b.AddImage({.label = "icon", .format = 0, .data = Filled(40, 2), .unpackedSize = 40});
  b.AddImage({.label = "last", .data = Filled(18, 3), .unpackedSize = 300});
  b.AddVag({.label = "v1", .channel1 = Filled(32, 4), .channel2 = Filled(17, 5)});
  b.AddVag({.label = "v2", .channel1 = Filled(16, 6), .monoChannel2Offset = 77});
  b.AddVag({.label = "v3", .channel1 = Filled(15, 7), .channel2 = Filled(24, 8)});
  b.AddGmo({.label = "m1", .data = Filled(9, 9), .unpackedSize = 99});
  b.AddGmo({.label = "m2", .data = Filled(12, 10), .unpackedSize = 98});
  if (thirdModel) {
    b.AddGmo({.label = "m3", .data = Filled(5, 11), .unpackedSize = 97});
  }
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "msg_a", .strings = {u"はい", u"Yes"}});
  b.AddText({.label = "msg_b", .strings = {u"いいえ", u"No, never"}});
  for (int i = 2; i < texts; ++i) {
    b.AddText({.label = "msg" + std::to_string(i), .strings = {u"a", u"b"}});
  }
  b.AddPage({.label = "p0", .body = {1}, .children = {{.label = "p1", .body = {2, 3}}, {.label = "p2", .body = {4}}}});
  b.AddPage({.label = "p3", .body = {5}});
  b.AddPage({.label = "p4", .body = {6, ImageRef("icon")}});
  b.AddAnimation({.label = "a0", .body = {7}, .children = {{.body = {8}}}});
  b.AddAnimation({.label = "a1", .body = {9}});
  b.AddEvent("event:/go");
  return b.Build();
}

inline const std::vector<GeneralPlace>& PlacesOf(const RcoLayout& layout, int kind) {
  return kind == 1 ? layout.images : kind == 2 ? layout.vags : layout.gmos;
}

// The bytes that a label takes: at least one NUL behind it, up to a multiple of 4.
inline Bytes LabelBytes(const std::string& label) {
  Bytes bytes(label.begin(), label.end());
  bytes.resize(bytes.size() / 4 * 4 + 4);
  return bytes;
}

// The fields that make room for a label in front of item `item` of `section` (1 text, 2 image, 3 VAG, 4 GMO, 5 page).
inline void MoveLabels(Expected& e, const RcoLayout& l, int section, std::size_t item, std::int32_t growth) {
  const auto moves = [&](int s, std::size_t i) { return s > section || (s == section && i >= item); };
  for (const LanguagePlace& language : l.languages) {
    for (std::size_t i = 0; i < language.texts.size(); ++i) {
      if (moves(1, i)) {
        e.Add(language.texts[i].record, growth);
      }
    }
  }
  for (const int kind : {1, 2, 3}) {
    const std::vector<GeneralPlace>& places = PlacesOf(l, kind);
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (moves(kind + 1, i)) {
        e.Add(places[i].entry + 4, growth);
      }
    }
  }
  for (std::size_t i = 0; i < l.pages.size(); ++i) {
    if (moves(5, i)) {
      e.Add(l.pages[i].entry + 4, growth);
    }
  }
  // As many records as there are top-level animations, whatever they are: the second one is an operation, and the
  // second animation, the third record, keeps its label.
  e.Add(l.animEntries[0].entry + 4, growth);
  e.Add(l.animEntries[1].entry + 4, growth);
  for (const int area : {72, 128, 136, 144}) {
    e.Add(area, growth);
  }
}

// The pointers of the tables from number `first` on that are `threshold` or greater.
inline void MovePointers(Expected& e, const RcoLayout& l, std::int32_t threshold, std::int32_t delta,
                         std::size_t first = 0) {
  for (std::size_t table = first; table < kRcoTables; ++table) {
    for (std::int32_t at = l.pointers[table].offset; at < l.pointers[table].End(); at += 4) {
      if (e.Long(at) >= threshold) {
        e.Add(at, delta);
      }
    }
  }
}

// A root that moves, by its field in the header.
inline void MoveRoot(Expected& e, std::int32_t field, std::int32_t delta) {
  e.Add(e.Long(field) + 28, delta);
  e.Add(field, delta);
}

class InsertFixture : public EngineFixture {
 protected:
  void SetUp() override { Open(built.bytes); }

  AfterInsert After() {
    return {.reopen =
                [this] {
                  calls.push_back("reopen");
                  document = Scanned(mod.cCurFile);
                },
            .selectLine =
                [this](Int16 row) {
                  calls.push_back("select " + std::to_string(row.Int()));
                  document.lst.Select(row.Int());
                }};
  }

  BuiltRco built = InsertScreen();
  std::vector<std::string> calls;
};

}  // namespace kelvane::test
