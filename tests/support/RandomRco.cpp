#include "support/RandomRco.h"

namespace kelvane::test {

namespace {

// What a file is to hold.
struct Counts {
  int images = 0;
  int sounds = 0;
  int models = 0;
  int texts = 0;
  int animations = 0;
};

int Between(const Pick& pick, int least, int most) {
  return least + static_cast<int>(pick(static_cast<std::uint32_t>(most - least + 1)));
}

std::string Label(const char* start, int number, const Pick& pick) {
  return start + std::to_string(number) + std::string(pick(6), '_');
}

void AddResources(RcoBuilder& b, const Counts& counts, const Pick& pick) {
  constexpr std::array<std::uint16_t, 3> kFormats = {rco::kFormatGim, rco::kFormatPng, rco::kFormatBmp};
  for (int i = 0; i < counts.images; ++i) {
    ImageSpec image = {.label = Label("image", i, pick), .format = kFormats[pick(3)], .data = RandomBytes(pick, 30)};
    if (pick(3) > 0) {
      image.compression = static_cast<std::uint16_t>(pick(3));
      image.unpackedSize = Between(pick, 0, 1000);
    }
    b.AddImage(image);
  }
  for (int i = 0; i < counts.sounds; ++i) {
    VagSpec sound = {.label = Label("sound", i, pick), .channel1 = RandomBytes(pick, 20)};
    if (pick(2) > 0) {
      sound.channel2 = RandomBytes(pick, 20);
    } else {
      sound.monoChannel2Offset = Between(pick, 0, 50);
    }
    b.AddVag(sound);
  }
  for (int i = 0; i < counts.models; ++i) {
    GmoSpec model = {.label = Label("model", i, pick), .data = RandomBytes(pick, 30)};
    if (pick(3) > 0) {
      model.compression = 1;
      model.unpackedSize = Between(pick, 0, 1000);
    }
    b.AddGmo(model);
  }
}

void AddTexts(RcoBuilder& b, const Counts& counts, const Pick& pick) {
  if (counts.texts == 0) {
    return;
  }
  const int languages = Between(pick, 1, 3);
  for (int i = 0; i < languages; ++i) {
    b.AddLanguage(0x10000U + static_cast<std::uint32_t>(i));
  }
  b.Options().lastLanguageStatesNext = languages == 1 || pick(2) > 0;
  for (int i = 0; i < counts.texts; ++i) {
    TextSpec text = {.label = Label("text", i, pick)};
    for (int language = 0; language < languages; ++language) {
      text.strings.push_back(i > 0 && pick(4) == 0 ? NoText() : TextString(RandomText(pick)));
    }
    b.AddText(text);
  }
}

// Words and references, with a word at the end.
std::vector<BodyItem> Body(const Counts& counts, const Pick& pick) {
  std::vector<BodyItem> body;
  for (int i = Between(pick, 0, 4); i > 0; --i) {
    switch (pick(8)) {
      case 0:
        body.push_back(EventRef(0));
        break;
      case 1:
        body.push_back(counts.texts > 0 ? TextRef(Between(pick, 0, counts.texts - 1)) : BlankRef());
        break;
      case 2:
        body.push_back(counts.images > 0 ? ImageRef(Between(pick, 0, counts.images - 1)) : BlankRef());
        break;
      case 3:
        body.push_back(counts.models > 0 ? ModelRef(Between(pick, 0, counts.models - 1)) : BlankRef());
        break;
      case 4:
        body.push_back(counts.animations > 0 ? AnimRef(Between(pick, 0, counts.animations - 1)) : PageRef(0));
        break;
      case 5:
        body.push_back(PairOf(0x40C, pick(100)));
        break;
      case 6:
        body.push_back(static_cast<float>(pick(100)) / 4);
        break;
      default:
        body.push_back(Between(pick, 0, 0x700));
        break;
    }
  }
  body.push_back(Between(pick, 0, 1000));
  return body;
}

EntrySpec Page(const Counts& counts, int& number, int depth, const Pick& pick) {
  constexpr std::array<std::uint8_t, 4> kClasses = {1, 10, 2, 25};  // the last two have a position block
  const std::uint32_t kind = pick(4);
  EntrySpec page = {.label = Label("page", number++, pick), .entryClass = kClasses[kind], .body = Body(counts, pick)};
  if (kind >= 2) {
    page.position = {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}};
  }
  page.statesSize = pick(4) > 0;
  for (std::uint32_t i = depth < 3 ? pick(3) : 0; i > 0; --i) {
    page.children.push_back(Page(counts, number, depth + 1, pick));
  }
  return page;
}

}  // namespace

Bytes RandomBytes(const Pick& pick, std::uint32_t longest) {
  Bytes bytes(1 + pick(longest));
  for (std::uint8_t& byte : bytes) {
    byte = static_cast<std::uint8_t>(pick(256));
  }
  return bytes;
}

std::u16string RandomText(const Pick& pick) {
  std::u16string text(pick(12), u'a');
  for (char16_t& unit : text) {
    unit = static_cast<char16_t>(pick(8) == 0 ? u'\n' : 0x20 + pick(0x3000));
  }
  return text;
}

RcoBuilder RandomRco(const Pick& pick) {
  constexpr std::array<std::int32_t, 3> kVersions = {rco::kVersionPlain, rco::kVersionOlder, rco::kVersionNone};
  RcoBuilder b;
  const Counts counts = {Between(pick, 0, 5), Between(pick, 0, 4), Between(pick, 0, 4), Between(pick, 0, 4),
                         Between(pick, 0, 3)};
  AddResources(b, counts, pick);
  AddTexts(b, counts, pick);
  int pages = 0;
  for (int i = Between(pick, 1, 3); i > 0; --i) {
    b.AddPage(Page(counts, pages, 0, pick));
  }
  for (int i = 0; i < counts.animations; ++i) {
    EntrySpec animation = {.label = Label("anim", i, pick), .body = {Between(pick, 0, 9)}};
    for (std::uint32_t child = i == counts.animations - 1 ? pick(3) : 0; child > 0; --child) {
      animation.children.push_back({.entryClass = static_cast<std::uint8_t>(2 + pick(7)), .body = {2.5F, 7}});
    }
    b.AddAnimation(animation);
  }
  b.AddEvent("native:/go");
  b.Options().version = kVersions[pick(3)];
  b.Options().mainHead = pick(4) > 0;
  b.Options().absentOffset = pick(2) > 0 ? -1 : 0;
  b.Options().trailing = Bytes(pick(4), 0xEE);
  return b;
}

}  // namespace kelvane::test
