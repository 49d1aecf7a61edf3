#include "support/RcoResolve.h"

#include <stdexcept>

namespace kelvane::test {

namespace {

std::int32_t CountOf(std::size_t count) {
  return static_cast<std::int32_t>(count);
}

[[noreturn]] void FailFor(const char* kind, const RcoTarget& target) {
  const std::string name =
      std::holds_alternative<int>(target) ? std::to_string(std::get<int>(target)) : std::get<std::string>(target);
  throw std::invalid_argument(std::string("the file holds no ") + kind + " " + name);
}

// The number of what a target names among `count` things; `isNamed` tells whether thing i bears a name.
template <class IsNamed>
std::size_t Find(const char* kind, const RcoTarget& target, std::size_t count, const IsNamed& isNamed) {
  if (const int* index = std::get_if<int>(&target)) {
    if (*index >= 0 && *index < CountOf(count)) {
      return static_cast<std::size_t>(*index);
    }
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      if (isNamed(i, std::get<std::string>(target))) {
        return i;
      }
    }
  }
  FailFor(kind, target);
}

template <class Spec>
std::size_t FindLabel(const char* kind, const RcoTarget& target, const std::vector<Spec>& specs) {
  return Find(kind, target, specs.size(),
              [&](std::size_t i, const std::string& name) { return specs[i].label == name; });
}

std::size_t FindEvent(const RcoTarget& target, const std::vector<std::string>& events) {
  return Find("event", target, events.size(),
              [&](std::size_t i, const std::string& name) { return events[i] == name; });
}

std::size_t FindPage(const RcoTarget& target, const std::vector<EntrySpec>& pages) {
  const std::vector<FlatEntry> flat = Flatten(pages);
  return Find("page", target, flat.size(),
              [&](std::size_t i, const std::string& name) { return flat[i].spec->label == name; });
}

std::int32_t AnimationPosition(const RcoLayout& layout, std::size_t animation) {
  return layout.animEntries[static_cast<std::size_t>(layout.animations[animation])].entry;
}

template <class Place>
std::vector<std::int32_t> EntriesOf(const std::vector<Place>& places) {
  std::vector<std::int32_t> positions;
  positions.reserve(places.size());
  for (const Place& place : places) {
    positions.push_back(place.entry);
  }
  return positions;
}

}  // namespace

std::int32_t ValueOf(const RcoDescription& description, const RcoLayout& layout, const Reference& reference) {
  const RcoTarget& target = reference.target;
  switch (reference.type) {
    case kRefEvent:
      return layout.events[FindEvent(target, description.events)];
    case kRefText:
      return CountOf(FindLabel("text", target, description.texts));
    case kRefImage:
      return layout.images[FindLabel("image", target, description.images)].entry;
    case kRefModel:
      return layout.gmos[FindLabel("model", target, description.gmos)].entry;
    case kRefAnim:
      return AnimationPosition(layout, FindLabel("animation", target, description.animations));
    case kRefPage7:
    case kRefPage9:
      return layout.pages[FindPage(target, description.pages)].entry;
    default:
      throw std::invalid_argument("a reference of that type has no target");
  }
}

std::vector<std::int32_t> EntryPositions(const RcoLayout& layout, RcoTable table) {
  std::vector<std::int32_t> positions;
  switch (table) {
    case RcoTable::kText:
      for (const LanguagePlace& language : layout.languages) {
        for (const TextPlace& text : language.texts) {
          positions.push_back(text.record);
        }
      }
      break;
    case RcoTable::kImage:
      return EntriesOf(layout.images);
    case RcoTable::kVag:
      return EntriesOf(layout.vags);
    case RcoTable::kGmo:
      return EntriesOf(layout.gmos);
    case RcoTable::kPage:
      return EntriesOf(layout.pages);
    case RcoTable::kAnim:
      positions.reserve(layout.animations.size());
      for (std::size_t i = 0; i < layout.animations.size(); ++i) {
        positions.push_back(AnimationPosition(layout, i));
      }
      break;
  }
  return positions;
}

}  // namespace kelvane::test
