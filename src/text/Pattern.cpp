#include "text/Pattern.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "common/RuntimeFailure.h"

namespace kelvane {

Pattern::Pattern(std::u16string_view pattern) {
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char16_t unit = pattern[i];
    if (unit == u'*') {
      elements_.push_back(Element::AnyRun());
    } else if (unit == u'?') {
      elements_.push_back(Element::Outside({}));
    } else if (unit == u'#') {
      elements_.push_back(Element::Inside({{u'0', u'9'}}));
    } else if (unit == u'[') {
      const std::size_t end = pattern.find(u']', i);
      if (end == std::u16string_view::npos) {
        throw RuntimeFailure(FailureCode::InvalidPattern);
      }
      elements_.push_back(ReadSet(pattern.substr(i + 1, end - i - 1)));
      i = end;
    } else {
      elements_.push_back(Element::Inside({{unit, unit}}));
    }
  }
}

// `set` is what stands between the brackets.
Pattern::Element Pattern::ReadSet(std::u16string_view set) {
  const bool outside = set.starts_with(u'!');
  if (outside) {
    set.remove_prefix(1);
  }
  Ranges ranges;
  for (std::size_t i = 0; i < set.size(); ++i) {
    const char16_t first = set[i];
    const bool isRange = i + 2 < set.size() && set[i + 1] == u'-';
    const char16_t last = isRange ? set[i + 2] : first;
    if (last < first) {
      throw RuntimeFailure(FailureCode::InvalidPattern);
    }
    ranges.emplace_back(first, last);
    i += isRange ? 2U : 0U;
  }
  return outside ? Element::Outside(std::move(ranges)) : Element::Inside(std::move(ranges));
}

bool Pattern::Element::Accepts(char16_t unit) const {
  const bool inSet = std::any_of(ranges.begin(), ranges.end(),
                                 [unit](const auto& range) { return unit >= range.first && unit <= range.second; });
  return inSet != outside;
}

bool Pattern::Matches(std::u16string_view text) const {
  // Every element but a run takes one character, so that only the last run seen ever needs to be tried longer.
  std::size_t position = 0;
  std::size_t element = 0;
  std::optional<std::size_t> run;  // the last run seen
  std::size_t runEnd = 0;          // where its characters end
  while (position < text.size()) {
    if (element < elements_.size() && elements_[element].anyRun) {
      run = element++;
      runEnd = position;
    } else if (element < elements_.size() && elements_[element].Accepts(text[position])) {
      ++element;
      ++position;
    } else if (run) {
      position = ++runEnd;
      element = *run + 1;
    } else {
      return false;
    }
  }
  while (element < elements_.size() && elements_[element].anyRun) {
    ++element;
  }
  return element == elements_.size();
}

}  // namespace kelvane
