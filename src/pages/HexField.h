// The text box of frmEditVal: 8 characters that are typed over, with a cursor that always stands on one of them.
#pragma once

#include <string>

namespace kelvane {

class HexField {
 public:
  static constexpr int kLength = 8;
  // The keys that move the cursor or are swallowed. The box takes none of them any further.
  enum class Key { Left, Right, Delete, Home, End, Up, Down };

  [[nodiscard]] const std::u16string& Text() const { return text_; }
  // The character that the cursor stands on, from 0 to 7; the box shows it as its selection of one character.
  [[nodiscard]] int Cursor() const { return cursor_; }

  // What the box holds after a change, a focus, a mouse action or the release of a key, wherever it came from, and
  // where its selection begins. A text that isn't 8 characters long becomes "00000000"; a cursor at the end moves to
  // the last character.
  void Repair(std::u16string text, int selectionStart);
  // A typed character. Digits, ':' and the letters A to F, small ones too, replace the character at the cursor, which
  // moves on; Backspace (8) acts as Left; all else is cancelled. A ':' ends the number there when it is read.
  void KeyPress(int code);
  void KeyDown(Key key);

 private:
  std::u16string text_ = std::u16string(kLength, u'0');
  int cursor_ = 0;
};

}  // namespace kelvane
