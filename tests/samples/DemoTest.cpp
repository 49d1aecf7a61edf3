// What the sample file holds, read from its bytes by the offsets of the format alone.
#include <algorithm>
#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>
#include <zlib.h>

#include "common/Bytes.h"
#include "container/RcoFormat.h"
#include "samples/Demo.h"

namespace kelvane {
namespace {

class Demo : public testing::Test {
 protected:
  static const Bytes& File() {
    static const Bytes kFile = [] {
      std::ifstream file(KELVANE_DEMO_FILE, std::ios::binary);
      return Bytes(std::istreambuf_iterator<char>(file), {});
    }();
    return kFile;
  }

  static std::int32_t Long(std::int32_t offset) { return ReadI32(File(), offset); }
  static int Short(std::int32_t offset) { return ReadU16(File(), offset); }

  static std::string StringAt(std::int32_t offset) {
    std::string text;
    for (; At(File(), offset) != 0; ++offset) {
      text.push_back(static_cast<char>(At(File(), offset)));
    }
    return text;
  }

  static std::string LabelOf(std::int32_t entry) {
    return StringAt(Long(rco::hdrLabelOffset) + Long(entry + rco::entryLabel));
  }

  // The entries of a general table, by the distances between them.
  static std::vector<std::int32_t> Entries(std::int32_t rootField) {
    const std::int32_t root = Long(rootField);
    std::vector<std::int32_t> entries;
    std::int32_t entry = root + rco::kEntryHeadSize;
    for (std::int32_t i = 0; i < Long(root + rco::entryChildren); ++i) {
      entries.push_back(entry);
      entry += Long(entry + rco::entryNext);
    }
    return entries;
  }

  static Bytes Stored(std::int32_t offset, std::int32_t size) {
    const ByteView view = ByteView(File()).subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(size));
    return {view.begin(), view.end()};
  }

  // An image's or model's bytes as they were before they were deflated.
  static Bytes Unpacked(std::int32_t entry, std::int32_t areaField) {
    Bytes data = Stored(Long(areaField) + Long(entry + rco::bodyDataOffset), Long(entry + rco::bodyDataSize));
    if (Short(entry + rco::bodyCompression) == rco::kCompressionNone) {
      return data;
    }
    EXPECT_EQ(ReadU16(data, 0), 0xDA78);
    Bytes out(1 << 20);
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, -15), Z_OK);
    stream.next_in = data.data() + 2;
    stream.avail_in = static_cast<uInt>(data.size() - 2);
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END) << LabelOf(entry);
    out.resize(stream.total_out);
    inflateEnd(&stream);
    return out;
  }

  static std::u16string Text(int language, int text) {
    const std::int32_t record = RecordOf(language, text);
    std::u16string units;
    for (std::int32_t at = 0; at < Long(record + 4); at += 2) {
      units.push_back(static_cast<char16_t>(Short(Long(rco::hdrTextDataOffset) + Long(record + 8) + at)));
    }
    return units;
  }

  static std::int32_t RecordOf(int language, int text) {
    constexpr std::int32_t kLanguageLength = 48 + 120 * 12;
    return Long(rco::hdrTextRoot) + 40 + language * kLanguageLength + 48 + text * 12;
  }

  static std::vector<std::int32_t> Pointers(std::int32_t field) {
    std::vector<std::int32_t> pointers;
    for (std::int32_t at = 0; at < Long(field + 4); at += 4) {
      pointers.push_back(Long(Long(field) + at));
    }
    return pointers;
  }
};

TEST_F(Demo, IsAPlainFileAsItWasBuilt) {
  ASSERT_GT(File().size(), 200000U);
  EXPECT_EQ(Long(rco::hdrMagic), rco::kMagic);
  EXPECT_EQ(Long(rco::hdrVersion), 113);
  EXPECT_TRUE(File() == sample::BuildDemo().bytes);
}

TEST_F(Demo, HasSixtyImagesOfEveryFormat) {
  const std::vector<std::int32_t> images = Entries(rco::hdrImageRoot);
  ASSERT_EQ(images.size(), 60U);
  EXPECT_EQ(images[0], 244);
  EXPECT_EQ(LabelOf(images[0]), "tex_bg_wave");
  const std::array<std::string_view, 6> magics = {"\x89PNG", "\xFF\xD8\xFF\xE0", "II*", "GIF89a", "BM", "MIG.00.1PSP"};
  std::map<int, int> formats;
  std::set<std::string> labels;
  int packed = 0;
  for (const std::int32_t entry : images) {
    const int format = Short(entry + rco::bodyFormat);
    ++formats[format];
    packed += Short(entry + rco::bodyCompression);
    labels.insert(LabelOf(entry));
    EXPECT_EQ(LabelOf(entry).substr(0, 4), "tex_");
    const Bytes data = Unpacked(entry, rco::hdrImageData);
    EXPECT_EQ(static_cast<std::int32_t>(data.size()), Long(entry + rco::bodyUnpackedSize));
    const std::string_view magic = magics.at(static_cast<std::size_t>(format));
    ASSERT_GE(data.size(), magic.size());
    EXPECT_TRUE(std::equal(magic.begin(), magic.end(), data.begin(), [](char expected, std::uint8_t actual) {
      return static_cast<std::uint8_t>(expected) == actual;
    })) << LabelOf(entry);
  }
  EXPECT_EQ(labels.size(), 60U);
  EXPECT_EQ(formats, (std::map<int, int>{{0, 3}, {1, 1}, {2, 1}, {3, 1}, {4, 3}, {5, 51}}));
  EXPECT_GT(packed, 40);
  EXPECT_LT(packed, 60);
}

TEST_F(Demo, HasGimImagesOfAllDepthsInBothOrders) {
  std::set<std::pair<int, int>> seen;
  for (const std::int32_t entry : Entries(rco::hdrImageRoot)) {
    if (Short(entry + rco::bodyFormat) != rco::kFormatGim) {
      continue;
    }
    const Bytes gim = Unpacked(entry, rco::hdrImageData);
    // The image block stands at 48, or behind the palette block that stands there.
    const std::int32_t block = ReadU16(gim, 48) == 5 ? 48 + ReadI32(gim, 52) : 48;
    ASSERT_EQ(ReadU16(gim, block), 4) << LabelOf(entry);
    seen.emplace(ReadU16(gim, block + 28), ReadU16(gim, block + 22));
    EXPECT_EQ(static_cast<std::int32_t>(gim.size()), block + ReadI32(gim, block + 4)) << LabelOf(entry);
  }
  EXPECT_EQ(seen, (std::set<std::pair<int, int>>{{4, 0}, {4, 1}, {8, 0}, {8, 1}, {32, 0}, {32, 1}}));
}

TEST_F(Demo, HasFourSoundsTwoOfThemStereo) {
  const std::vector<std::int32_t> sounds = Entries(rco::hdrVagRoot);
  ASSERT_EQ(sounds.size(), 4U);
  std::vector<int> channels;
  for (const std::int32_t entry : sounds) {
    channels.push_back(Short(entry + rco::bodyChannels));
    const std::int32_t area = Long(rco::hdrVagData);
    for (int channel = 0; channel < channels.back(); ++channel) {
      const std::int32_t size = Long(entry + rco::bodyChannel1Size + channel * 8);
      const Bytes vag = Stored(area + Long(entry + rco::bodyChannel1Offset + channel * 8), size);
      ASSERT_GE(vag.size(), 48U + 32U);
      EXPECT_EQ(Bytes(vag.begin(), vag.begin() + 4), (Bytes{'V', 'A', 'G', 'p'}));
      EXPECT_EQ((vag.size() - 48) % 16, 0U);
      // Bytes 12 to 15, big-endian: what follows the head.
      EXPECT_EQ((vag[14] << 8 | vag[15]), size - 48);
      EXPECT_EQ(vag[vag.size() - 15], 7);
    }
    EXPECT_EQ(Long(entry + rco::bodyChannel2Size) > 0, channels.back() == 2);
  }
  EXPECT_EQ(channels, (std::vector<int>{1, 1, 2, 2}));
  EXPECT_EQ(LabelOf(sounds[2]), "snd_startup");
}

TEST_F(Demo, HasTwoModels) {
  const std::vector<std::int32_t> models = Entries(rco::hdrGmoRoot);
  ASSERT_EQ(models.size(), 2U);
  EXPECT_EQ(Short(models[0] + rco::bodyCompression), 1);
  EXPECT_EQ(Short(models[1] + rco::bodyCompression), 0);
  for (const std::int32_t entry : models) {
    const Bytes data = Unpacked(entry, rco::hdrGmoData);
    EXPECT_EQ(Bytes(data.begin(), data.begin() + 4), (Bytes{'O', 'M', 'G', '.'}));
  }
  EXPECT_EQ(LabelOf(models[1]), "model_cube");
}

TEST_F(Demo, HasAHundredAndTwentyTextsInTwelveLanguages) {
  const std::int32_t root = Long(rco::hdrTextRoot);
  ASSERT_EQ(Long(root + rco::entryChildren), 12);
  int lineFeeds = 0;
  for (int language = 0; language < 12; ++language) {
    const std::int32_t entry = RecordOf(language, 0) - rco::langRecords;
    EXPECT_EQ(Long(entry + rco::langCode), 0x10000 + language);
    EXPECT_EQ(Long(entry + rco::langTextCount), 120);
    EXPECT_EQ(Long(entry + rco::entryNext), language < 11 ? 48 + 120 * 12 : 0);
    for (int text = 0; text < 120; ++text) {
      const std::u16string units = Text(language, text);
      EXPECT_EQ(units.size() % 2, 0U);
      ASSERT_GE(units.size(), 2U);
      EXPECT_EQ(units.back(), u'\0');
      EXPECT_NE(units.front(), u'\0');
      lineFeeds += units.find(u'\n') != std::u16string::npos ? 1 : 0;
    }
  }
  EXPECT_EQ(StringAt(Long(rco::hdrLabelOffset) + Long(RecordOf(0, 0))), "msg_settings");
  EXPECT_EQ(Text(1, 0), (std::u16string(u"Settings") + u'\0' + u'\0'));
  EXPECT_EQ(Text(0, 0), (std::u16string(u"設定") + u'\0' + u'\0'));
  EXPECT_GT(lineFeeds, 60);
}

TEST_F(Demo, EveryTranslationOfAMenuIsItsLanguagesOwn) {
  // Script by language: kana in Japanese, Cyrillic in Russian, Hangul in Korean, ideographs in Chinese.
  const auto holds = [](const std::u16string& text, char16_t from, char16_t to) {
    return std::any_of(text.begin(), text.end(), [=](char16_t unit) { return unit >= from && unit <= to; });
  };
  int kana = 0;
  for (int text = 0; text < 92; ++text) {  // behind them stand the texts that are the same in all languages
    kana += holds(Text(0, text), 0x3040, 0x30FF) ? 1 : 0;
    EXPECT_TRUE(holds(Text(8, text), 0x0400, 0x04FF)) << text;
    EXPECT_TRUE(holds(Text(9, text), 0xAC00, 0xD7A3)) << text;
    EXPECT_TRUE(holds(Text(10, text), 0x4E00, 0x9FFF)) << text;
    EXPECT_TRUE(holds(Text(11, text), 0x4E00, 0x9FFF)) << text;
    EXPECT_FALSE(holds(Text(1, text), 0x0080, 0xFFFF)) << text;
  }
  EXPECT_GT(kana, 50);
}

TEST_F(Demo, HasThirtyPageEntriesBehindMixedPointersWithAZeroAmongThem) {
  std::vector<std::int32_t> pointers = Pointers(rco::hdrPagePtrs);
  ASSERT_EQ(pointers.size(), 31U);
  EXPECT_EQ(std::count(pointers.begin(), pointers.end(), 0), 1);
  EXPECT_NE(pointers.back(), 0);
  EXPECT_FALSE(std::is_sorted(pointers.begin(), pointers.end()));
  std::sort(pointers.begin(), pointers.end());
  pointers.erase(pointers.begin());

  // In file order the entries follow one another from the root's head on.
  std::int32_t expected = Long(rco::hdrPageRoot) + rco::kEntryHeadSize;
  std::int32_t children = 0;
  std::set<int> classes;
  std::set<std::int32_t> references;
  for (const std::int32_t entry : pointers) {
    EXPECT_EQ(entry, expected);
    expected += Long(entry + rco::entrySize);
    children += Long(entry + rco::entryChildren);
    EXPECT_EQ(File()[static_cast<std::size_t>(entry) + 1], rco::kTablePage);
    classes.insert(File()[static_cast<std::size_t>(entry)]);
    for (std::int32_t at = entry + rco::kEntryHeadSize; at + 4 < expected; at += 4) {
      if (Long(at) >= 0x400 && Long(at) <= 0x40F) {
        references.insert(Long(at));
      }
      if (Long(at) == 0xFFFF && Long(at + 4) == -1) {
        references.insert(0xFFFF);
      }
    }
  }
  EXPECT_EQ(expected, Long(rco::hdrAnimRoot));
  EXPECT_EQ(Long(Long(rco::hdrPageRoot) + rco::entryChildren), 4);
  EXPECT_EQ(children, 26);
  EXPECT_EQ(classes, (std::set<int>{1, 2, 3, 4, 8, 10, 13, 14, 18, 21, 22, 23, 24, 25}));
  EXPECT_EQ(references,
            (std::set<std::int32_t>{0x400, 0x401, 0x402, 0x403, 0x405, 0x407, 0x408, 0x409, 0x40C, 0xFFFF}));
}

TEST_F(Demo, HasTenAnimationsWithOperationsOfEveryType) {
  const std::vector<std::int32_t> pointers = Pointers(rco::hdrAnimPtrs);
  ASSERT_EQ(pointers.size(), 10U);
  std::set<std::int32_t> types;
  for (const std::int32_t animation : pointers) {
    EXPECT_EQ(Long(animation), 0x901);
    std::int32_t operation = animation + Long(animation + rco::entrySize);
    for (std::int32_t i = 0; i < Long(animation + rco::entryChildren); ++i) {
      types.insert(Long(operation));
      operation += Long(operation + rco::entrySize);
    }
    if (Long(animation + rco::entryNext) != 0) {
      EXPECT_EQ(operation, animation + Long(animation + rco::entryNext));
    }
  }
  EXPECT_EQ(types, (std::set<std::int32_t>{0x902, 0x903, 0x904, 0x905, 0x906, 0x907, 0x908}));
  EXPECT_EQ(LabelOf(pointers[9]), "anim_spin");
}

TEST_F(Demo, HasEventStrings) {
  std::vector<std::string> events;
  const std::int32_t end = Long(rco::hdrEventOffset) + Long(rco::hdrEventLength);
  for (std::int32_t at = Long(rco::hdrEventOffset); at < end;) {
    events.push_back(StringAt(at));
    at += static_cast<std::int32_t>(events.back().size() / 4 + 1) * 4;
  }
  EXPECT_EQ(events.size(), 16U);
  EXPECT_EQ(events.front(), "native:/OnStart");
  EXPECT_EQ(events.back(), "native:/OnAnimationEnd");
}

}  // namespace
}  // namespace kelvane
