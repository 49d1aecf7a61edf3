#include <gtest/gtest.h>

#include "pages/HexField.h"

namespace kelvane {
namespace {

using Key = HexField::Key;

HexField FieldWith(std::u16string text, int cursor) {
  HexField field;
  field.Repair(std::move(text), cursor);
  return field;
}

TEST(HexField, ATextThatIsNot8CharactersLongBecomesZeros) {
  EXPECT_EQ(FieldWith(u"0000001F", 0).Text(), u"0000001F");
  EXPECT_EQ(FieldWith(u"1234567", 0).Text(), u"00000000");
  EXPECT_EQ(FieldWith(u"123456789", 0).Text(), u"00000000");
  EXPECT_EQ(FieldWith(u"", 0).Text(), u"00000000");
  EXPECT_EQ(FieldWith(u"zzzzzzzz", 0).Text(), u"zzzzzzzz");  // pasted: only the length is looked at
}

TEST(HexField, ACursorAtTheEndMovesToTheLastCharacter) {
  EXPECT_EQ(FieldWith(u"12345678", 8).Cursor(), 7);
  EXPECT_EQ(FieldWith(u"12345678", 7).Cursor(), 7);
  EXPECT_EQ(FieldWith(u"12345678", 3).Cursor(), 3);
}

TEST(HexField, DigitsAndLettersReplaceTheCharacterAtTheCursorWhichMovesOn) {
  HexField field = FieldWith(u"00000000", 2);
  field.KeyPress('7');
  field.KeyPress('F');
  EXPECT_EQ(field.Text(), u"007F0000");
  EXPECT_EQ(field.Cursor(), 4);
}

TEST(HexField, ACharacterTypedOnTheLastPlaceLeavesTheCursorThere) {
  HexField field = FieldWith(u"00000000", 7);
  field.KeyPress('1');
  field.KeyPress('2');
  EXPECT_EQ(field.Text(), u"00000002");
  EXPECT_EQ(field.Cursor(), 7);
}

TEST(HexField, ALowerCaseLetterIsTurnedIntoUpperCase) {
  HexField field = FieldWith(u"00000000", 0);
  field.KeyPress('a');
  field.KeyPress('f');
  EXPECT_EQ(field.Text(), u"AF000000");
}

TEST(HexField, AColonPasses) {
  HexField field = FieldWith(u"00000000", 0);
  field.KeyPress(':');
  EXPECT_EQ(field.Text(), u":0000000");
}

TEST(HexField, AllElseIsCancelled) {
  HexField field = FieldWith(u"12345678", 4);
  constexpr int kCodes[] = {22, 23, 24, 9, 13, ' ', '/', ';', '@', 'G', 'g', 'z', '-', '.', 0xE9, 0x4E00};
  for (const int code : kCodes) {
    field.KeyPress(code);
    EXPECT_EQ(field.Text(), u"12345678") << code;
    EXPECT_EQ(field.Cursor(), 4) << code;
  }
}

TEST(HexField, BackspaceActsAsLeft) {
  HexField field = FieldWith(u"12345678", 1);
  field.KeyPress(8);
  EXPECT_EQ(field.Cursor(), 0);
  field.KeyPress(8);
  EXPECT_EQ(field.Cursor(), 0);
  EXPECT_EQ(field.Text(), u"12345678");
}

struct KeyCase {
  Key key;
  int from;
  int to;
};

TEST(HexField, KeysMoveTheCursorAndNeverChangeTheText) {
  const KeyCase kCases[] = {{Key::Left, 3, 2},   {Key::Left, 0, 0},   {Key::Right, 3, 4}, {Key::Right, 7, 7},
                            {Key::Delete, 3, 4}, {Key::Delete, 7, 7}, {Key::Home, 5, 0},  {Key::Home, 0, 0},
                            {Key::End, 5, 7},    {Key::End, 7, 7},    {Key::Up, 3, 3},    {Key::Down, 3, 3}};
  for (const KeyCase& test : kCases) {
    HexField field = FieldWith(u"12345678", test.from);
    field.KeyDown(test.key);
    EXPECT_EQ(field.Cursor(), test.to);
    EXPECT_EQ(field.Text(), u"12345678");
  }
}

TEST(HexField, OfAllCodesOnlyThoseOfDigitsColonAndAToFPass) {
  const std::u16string typed = u"0123456789:ABCDEFabcdef";
  const std::u16string shown = u"0123456789:ABCDEFABCDEF";
  for (int code = 0; code < 0x180; ++code) {
    const std::size_t place = typed.find(static_cast<char16_t>(code));
    const bool passes = code != 0 && place != std::u16string::npos;
    HexField field = FieldWith(u"12345678", 4);
    field.KeyPress(code);
    std::u16string expected = u"12345678";
    if (passes) {
      expected[4] = shown[place];
    }
    EXPECT_EQ(field.Text(), expected) << code;
    EXPECT_EQ(field.Cursor(), passes ? 5 : code == 8 ? 3 : 4) << code;
  }
}

}  // namespace
}  // namespace kelvane
