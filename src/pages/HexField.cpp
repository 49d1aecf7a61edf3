#include "pages/HexField.h"

#include <algorithm>
#include <utility>

namespace kelvane {

namespace {

constexpr int kBackspace = 8;

bool Passes(int code) {
  return (code >= '0' && code <= ':') || (code >= 'A' && code <= 'F');
}

}  // namespace

void HexField::Repair(std::u16string text, int selectionStart) {
  text_ = std::move(text);
  if (text_.size() != kLength) {
    text_.assign(kLength, u'0');
  }
  cursor_ = std::clamp(selectionStart, 0, kLength - 1);
}

void HexField::KeyPress(int code) {
  if (code >= 'a' && code <= 'z') {
    code += 'A' - 'a';
  }
  if (code == kBackspace) {
    KeyDown(Key::Left);
  } else if (Passes(code)) {
    text_[static_cast<std::size_t>(cursor_)] = static_cast<char16_t>(code);
    Repair(std::move(text_), cursor_ + 1);
  }
}

void HexField::KeyDown(Key key) {
  switch (key) {
    case Key::Left:
      cursor_ = std::max(cursor_ - 1, 0);
      break;
    case Key::Right:
    case Key::Delete:
      cursor_ = std::min(cursor_ + 1, kLength - 1);
      break;
    case Key::Home:
      cursor_ = 0;
      break;
    case Key::End:
      cursor_ = kLength - 1;
      break;
    case Key::Up:
    case Key::Down:
      break;
  }
}

}  // namespace kelvane
