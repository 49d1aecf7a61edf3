// The inserts of ChangeSequence.
#include <algorithm>

#include "common/Files.h"
#include "container/Inserts.h"
#include "support/ChangeSequence.h"
#include "support/ExpectedChanges.h"

namespace kelvane::test {

namespace {

// The kinds' counts in the order of the sections of labels: texts, images, sounds, models, pages, animations.
std::array<std::size_t, 6> SectionCounts(const RcoContents& contents) {
  const auto top = std::count_if(contents.animations.begin(), contents.animations.end(),
                                 [](const WalkedEntry& entry) { return entry.depth == 0; });
  return {contents.texts.size(),        contents.resources[0].size(), contents.resources[1].size(),
          contents.resources[2].size(), contents.pages.size(),        static_cast<std::size_t>(top)};
}

Bytes WordBytes(const std::vector<std::int32_t>& words) {
  Bytes bytes(words.size() * 4);
  for (std::size_t i = 0; i < words.size(); ++i) {
    WriteI32(bytes, static_cast<std::int64_t>(i) * 4, words[i]);
  }
  return bytes;
}

}  // namespace

void ChangeSequence::InsertGeneral() {
  if (document_.genRsc.empty()) {
    return;
  }
  const std::size_t position = PickBelow(document_.genRsc.size() + 1);
  const GenRsc& at = document_.genRsc[std::min(position, document_.genRsc.size() - 1)];
  const auto ownKind = static_cast<std::size_t>(at.rscKind.Int() - 1);
  // Of a kind that the file has: fields of a root that isn't there would make a file of hundreds of megabytes.
  const GenRsc& other = document_.genRsc[PickBelow(document_.genRsc.size())];
  const std::size_t kind = pick_(8) == 0 ? static_cast<std::size_t>(other.rscKind.Int() - 1) : ownKind;
  std::size_t n = position;
  for (std::size_t before = 0; before < ownKind; ++before) {
    n -= std::min(n, now_.contents.resources[before].size());
  }
  // Neither the first of its kind nor the last of all, and no label's place that the next section's count overrules.
  const bool regular =
      kind == ownKind && n > 0 && position + 1 < document_.genRsc.size() && SectionCounts(now_.contents)[kind + 2] != n;
  if (!regular && !DaresToBeWild()) {
    return;
  }
  const Bytes data = RandomBytes(pick_, 60);
  const std::string label = "new" + std::to_string(pick_(100000));
  const std::int32_t extra = kind == kSounds ? static_cast<std::int32_t>(PickBelow(data.size()) * pick_(2))
                                             : static_cast<std::int32_t>(pick_(1000));
  WriteWholeFile(newData_, data);
  const bool compared = Run("insert of a resource", regular, std::vector<int>{}, [&] {
    InsertGenRsc({.position = static_cast<std::int64_t>(position),
                  .dataFile = newData_,
                  .label = label,
                  .kind = static_cast<std::int64_t>(kind + 1),
                  .extra = extra},
                 Context(), Afterwards());
  });
  if (compared) {
    Check(WithResource(now_, kind, n, label, data, extra));
  }
}

void ChangeSequence::InsertText() {
  const std::size_t index = PickBelow(static_cast<std::size_t>(document_.lstText.Count()) + 2);
  const auto counts = SectionCounts(now_.contents);
  const bool regular = index < counts[0] && index != counts[1];
  if (!regular && !DaresToBeWild()) {
    return;
  }
  const std::string label = "msg" + std::to_string(pick_(100000));
  const bool compared = Run("insert of a text", regular, std::vector<int>{}, [&] {
    InsertTextRsc(Int16(static_cast<std::int64_t>(index)), label, Context(), Afterwards());
  });
  if (compared) {
    Check(WithText(now_, index, label));
  }
}

void ChangeSequence::InsertPage() {
  const std::size_t pages = document_.pageRecs.size();
  const std::size_t index = PickBelow(pages + 1);
  const int ownDepth = index < pages ? document_.pageRecs[index].recDepth : 0;
  const int depth = pick_(8) == 0 ? static_cast<int>(pick_(4)) : ownDepth;
  // The walk over the siblings goes on to the number of resources and must not leave the pages.
  std::size_t behind = index + 1;
  while (behind < pages && document_.pageRecs[behind].recDepth == depth) {
    ++behind;
  }
  const bool regular = index + 1 < pages && depth == ownDepth && index != SectionCounts(now_.contents)[5] &&
                       (behind < pages || document_.genRsc.size() <= pages);
  if (!regular && !DaresToBeWild()) {
    return;
  }
  std::vector<std::int32_t> body(1 + pick_(5));
  for (std::int32_t& word : body) {
    word = static_cast<std::int32_t>(pick_(0x700));
  }
  const std::string label = "page_new" + std::to_string(pick_(100000));
  // The line of lst that is selected in the end may not be there.
  const std::vector<int> failures(static_cast<int>(index) < document_.lst.Count() ? 0 : 1, 5);
  const bool compared = Run("insert of a page", regular, failures, [&] {
    InsertPageRsc({.index = static_cast<std::int64_t>(index),
                   .body = body,
                   .label = label,
                   .entryClass = 10,
                   .depth = static_cast<std::int64_t>(depth)},
                  Context(), Afterwards());
  });
  if (compared) {
    Check(WithPage(now_, index, label, 10, WordBytes(body)));
  }
}

}  // namespace kelvane::test
