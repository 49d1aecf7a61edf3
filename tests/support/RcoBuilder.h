// Writes RCO files from a short description, for tests, benches, fuzz seeds and the sample file.
//
//   RcoBuilder b;
//   b.AddImage({.label = "bg", .compression = 1, .data = DeflateWrapped(gim), .unpackedSize = 4816});
//   b.AddLanguage(0x10001);
//   b.AddText({.label = "msg_ok", .strings = {u"OK"}});
//   b.AddPage({.label = "page_main", .body = {0x111, ImageRef("bg"), TextRef("msg_ok"), BlankRef()}});
//   const BuiltRco built = b.Build();
//   built.bytes, built.layout.images[0].data, ...
//
// The regions lie in the order of the format: header, main head, the tables of images, models, sounds, texts, pages and
// animations, the pointer tables of texts, images, sounds, models, pages and animations, text data, labels, events,
// then the data of images, sounds and models. Where nothing of a table was added, it is absent. A text's pointers, one
// for each language and text, point to its records. It knows the format by itself: nothing of src/ that reads or writes
// files takes part.
#pragma once

#include "support/Deflate.h"
#include "support/RcoLayout.h"
#include "support/RcoSpec.h"

namespace kelvane::test {

struct BuiltRco {
  Bytes bytes;
  RcoLayout layout;
};

class RcoBuilder {
 public:
  // Each returns the number of what was added, counted within its kind from 0. Pages and animations count at their top
  // level alone.
  int AddImage(ImageSpec spec);
  int AddVag(VagSpec spec);
  int AddGmo(GmoSpec spec);
  int AddLanguage(std::uint32_t code, int extraRecords = 0);
  int AddText(TextSpec spec);
  int AddPage(EntrySpec spec);
  int AddAnimation(EntrySpec spec);
  int AddEvent(std::string event);
  // A root without entries.
  void AddEmptyTable(RcoTable table);
  // Writes the table's pointers in this order of entry numbers (pages: file order; animations: top level; texts:
  // language by language), -1 for a zero.
  void SetPointers(RcoTable table, std::vector<int> order);

  [[nodiscard]] RcoOptions& Options() { return description_.options; }
  [[nodiscard]] const RcoDescription& Description() const { return description_; }

  // Failures: std::invalid_argument for a reference or pointer to what isn't there, or for an entry length below 52.
  [[nodiscard]] BuiltRco Build() const;

 private:
  RcoDescription description_;
};

}  // namespace kelvane::test
