// Files with texts of all kinds.
#include "Seeds.h"
#include "support/RcoBuilder.h"

namespace kelvane::fuzz {

namespace {

using namespace test;

RcoBuilder WithLanguages(int count) {
  RcoBuilder b;
  b.AddImage({.label = "image", .format = 0, .data = {1, 2, 3, 4, 5}});
  for (int i = 0; i < count; ++i) {
    b.AddLanguage(0x10000U + static_cast<std::uint32_t>(i));
  }
  return b;
}

}  // namespace

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  {
    RcoBuilder b = WithLanguages(3);
    b.AddText({.label = "msg_yes", .strings = {u"はい", u"Yes", u"Oui"}});
    b.AddText({.label = "msg_none", .strings = {NoText(), RawText(u"no end"), u""}});
    b.AddText({.label = "msg_lines", .strings = {u"a\nb", RawText(std::u16string(4, u'\0')), u"\xD83D\xDE00"}});
    b.AddPage({.label = "page", .body = {TextRef(0), 0}});
    b.AddEvent("native:/event");
    seeds.push_back(b.Build().bytes);
    b.Options().lastLanguageStatesNext = true;
    seeds.push_back(b.Build().bytes);
  }
  {
    RcoBuilder b = WithLanguages(12);
    for (int i = 0; i < 20; ++i) {
      b.AddText({.label = std::string(static_cast<std::size_t>(i) * 14, 'x'),
                 .strings = std::vector<TextString>(12, std::u16string(static_cast<std::size_t>(i), u'y'))});
    }
    seeds.push_back(b.Build().bytes);
  }
  {
    RcoBuilder b = WithLanguages(1);
    b.AddText({.label = "alone", .strings = {u"alone"}});
    seeds.push_back(b.Build().bytes);
    b.Options().lastLanguageStatesNext = true;
    seeds.push_back(b.Build().bytes);
  }
  {
    RcoBuilder b = WithLanguages(2);
    b.AddLanguage(0x2000C, 2);
    b.AddLanguage(0x10003);
    b.AddText({.label = "odd", .strings = {u"a", u"b", u"c", u"d"}});
    seeds.push_back(b.Build().bytes);
  }
  return seeds;
}

}  // namespace kelvane::fuzz
