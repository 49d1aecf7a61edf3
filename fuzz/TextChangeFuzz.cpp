// A built file and a row of changes of its texts: after each one the file is the one that is built with these texts,
// and the records in memory are those of the file.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "FuzzFile.h"
#include "FuzzTarget.h"
#include "Script.h"
#include "container/RcoFormat.h"
#include "support/RcoBuilder.h"
#include "text/TextEdit.h"
#include "text/TextScan.h"

namespace kelvane {
namespace {

using fuzz::Require;
using fuzz::Script;

// Texts of a file by text, then by language.
using Texts = std::vector<std::vector<test::TextString>>;

test::BuiltRco BuildFile(const Texts& texts, std::uint8_t regions, std::int32_t textDataLength) {
  test::RcoBuilder b;
  const std::size_t languages = texts.front().size();
  if ((regions & 1) != 0) {
    b.AddImage({.label = "image", .format = 0, .data = {1, 2, 3, 4, 5}});
  }
  if ((regions & 2) != 0) {
    b.AddVag({.label = "sound", .channel1 = {6, 7, 8}});
  }
  if ((regions & 4) != 0) {
    b.AddGmo({.label = "model", .data = {9}});
  }
  if ((regions & 8) != 0) {
    b.AddEvent("native:/event");
  }
  if ((regions & 16) != 0) {
    b.AddPage({.label = "page", .body = {0x111, 0}});
  }
  for (std::size_t i = 0; i < languages; ++i) {
    b.AddLanguage(0x10000U + static_cast<std::uint32_t>(i));
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    b.AddText({.label = "t" + std::to_string(i), .strings = texts[i]});
  }
  if (textDataLength != 0) {
    b.Options().headerLongs[rco::hdrTextDataLength] = textDataLength;
  }
  return b.Build();
}

std::u16string NextText(Script& script) {
  std::u16string text(script.Next() % 24U, u'a');
  for (char16_t& unit : text) {
    const std::uint8_t byte = script.Next();
    unit = byte == 0 ? u'\n' : static_cast<char16_t>(byte == u'\r' ? u'r' : byte * 0x0101U);
  }
  return text;
}

// At least one text in at least two languages; some have no string.
Texts FirstTexts(Script& script) {
  const std::size_t languages = 2 + script.Next() % 4U;
  Texts texts(1 + script.Next() % 6U);
  for (auto& strings : texts) {
    for (std::size_t i = 0; i < languages; ++i) {
      strings.push_back(script.Next() % 5U == 0 ? test::NoText() : test::TextString(NextText(script)));
    }
  }
  return texts;
}

void Scan(RcoFile& file, RcoDocument& document) {
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
  file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
  ScanTextRsc(file, document);
}

void CheckInStep(RcoFile& file, const RcoDocument& document) {
  RcoDocument again;
  Scan(file, again);
  Require(again.textRsc == document.textRsc, "the records in memory are those of the file");
  Require(again.langPos == document.langPos, "the languages stay where they are");
  Require(again.labelBase == document.labelBase, "the labels in memory are where the file has them");
  Require(again.dataAreas == document.dataAreas, "the data areas in memory are those of the file");
  Require(again.lstText.Lines() == document.lstText.Lines(), "the names stay");
}

void Run(ByteView input) {
  Script script(input);
  const std::uint8_t regions = script.Next();
  Texts texts = FirstTexts(script);
  const test::BuiltRco built = BuildFile(texts, regions, 0);
  const std::int32_t textDataLength = built.layout.textData.length;
  if (textDataLength == 0) {
    return;  // a file without text data isn't scanned
  }

  fuzz::FuzzFile holder(built.bytes);
  RcoFile& file = holder.File();
  RcoDocument document;
  Scan(file, document);
  while (!script.AtEnd()) {
    const std::size_t item = script.Next() % texts.size();
    const std::size_t lang = script.Next() % texts[item].size();
    const std::u16string text = NextText(script);
    texts[item][lang] = text;
    document.labelBase += ChangeText(file, document, static_cast<int>(lang), static_cast<int>(item), text);
    Require(file.Image() == BuildFile(texts, regions, textDataLength).bytes, "the file is the one with these texts");
    CheckInStep(file, document);
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::Run({data, size});
  return 0;
}
