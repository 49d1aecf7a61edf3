#include "container/RcoDocument.h"

#include <utility>

#include "common/Bytes.h"

namespace kelvane {

const std::string& ListLines::Text(int row) const {
  static const std::string kNone;
  return row >= 0 && row < Count() ? lines_[static_cast<std::size_t>(row)] : kNone;
}

void ListLines::Clear() {
  lines_.clear();
  selected_ = -1;
  ++revision_;
}

void ListLines::Add(std::string line) {
  lines_.push_back(std::move(line));
  ++revision_;
}

void ListLines::Set(int row, std::string line) {
  At(lines_, row) = std::move(line);
  ++revision_;
}

void ListLines::Select(int row) {
  if (row < -1 || row >= Count()) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  selected_ = row;
}

}  // namespace kelvane
