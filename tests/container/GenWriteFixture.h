// A file with every table, for replacements.
#pragma once

#include "EngineFixture.h"

namespace kelvane::test {

// What differs from file to file.
struct Screen {
  Bytes bg = Filled(21, 1);    // a GIM, record 0
  Bytes icon = Filled(40, 2);  // a PNG, record 1
  Bytes last = Filled(18, 3);  // a GIM, record 2
  Bytes left = Filled(32, 4);  // record 3, stereo
  std::optional<Bytes> right = Filled(17, 5);
  Bytes mono = Filled(16, 6);   // record 4
  Bytes left2 = Filled(15, 7);  // record 5, stereo
  Bytes right2 = Filled(24, 8);
  Bytes model = Filled(9, 9);     // record 6
  Bytes model2 = Filled(12, 10);  // record 7
  std::uint16_t bgCompression = 1;
  std::uint16_t modelCompression = 1;
  std::uint16_t model2Compression = 1;
  std::int32_t bgUnpacked = 400;
  std::int32_t soundEntryLength = 0;
};

inline BuiltRco Build(const Screen& s) {
  RcoBuilder b;
  b.AddImage({.label = "bg", .compression = s.bgCompression, .data = s.bg, .unpackedSize = s.bgUnpacked});
  b.AddImage({.label = "icon", .format = 0, .data = s.icon});
  b.AddImage({.label = "last", .compression = 1, .data = s.last, .unpackedSize = 300});
  b.AddVag({.label = "v1", .channel1 = s.left, .channel2 = s.right, .entryLength = s.soundEntryLength});
  b.AddVag({.label = "v2", .channel1 = s.mono, .monoChannel2Offset = 77});
  b.AddVag({.label = "v3", .channel1 = s.left2, .channel2 = s.right2});
  b.AddGmo({.label = "m1", .compression = s.modelCompression, .data = s.model, .unpackedSize = 99});
  b.AddGmo({.label = "m2", .compression = s.model2Compression, .data = s.model2, .unpackedSize = 98});
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "msg", .strings = {u"はい", u"Yes"}});
  b.AddPage({.label = "page", .body = {0x111, ImageRef("bg")}});
  b.AddAnimation({.label = "anim", .body = {7}});
  b.AddEvent("event:/go");
  return b.Build();
}

// A sound of two channels as it is stored.
inline Bytes Stereo(Bytes left, const Bytes& right) {
  left.resize((left.size() + 3) / 4 * 4);
  Append(left, right);
  return left;
}

class GenWriteFixture : public EngineFixture {
 protected:
  bool Replace(int index, const Bytes& data) {
    return ReplaceGenRscData(folder.Write("new.dat", data), Int16(index), Context());
  }

  void SetSound(int channels, const Bytes& left, const Bytes& right) {
    mod.vagChannels = Int16(channels);
    mod.vagSize1 = static_cast<std::int32_t>(left.size());
    mod.vagSize2 = static_cast<std::int32_t>(right.size());
  }
};

}  // namespace kelvane::test
