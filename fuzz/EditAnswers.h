// Answers to the questions for a word's new value, taken from an input, and what they must come to.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "Script.h"
#include "common/Prompts.h"

namespace kelvane::fuzz {

// A typed text, and the word of the single that it begins with; no word: it lies beyond the singles.
struct NumberText {
  const char* text;
  std::optional<std::int32_t> word;
};

inline const NumberText& NextNumber(Script& script) {
  static const std::array<NumberText, 16> kNumbers = {{{"0", 0},
                                                       {"1.5", 0x3FC00000},
                                                       {"abc", 0},
                                                       {"1e2", 0x42C80000},
                                                       {"-2", -0x40000000},
                                                       {" 480 px", 0x43F00000},
                                                       {"0.1", 0x3DCCCCCD},
                                                       {"16777217", 0x4B800000},
                                                       {"1e39", std::nullopt},
                                                       {"-1e999", std::nullopt},
                                                       {"1E-45", 1},
                                                       {"3.402823E+38", 0x7F7FFFFD},
                                                       {"NaN", 0},
                                                       {"0x10", 0},
                                                       {"&H10", 0x41800000},
                                                       {"-.25", static_cast<std::int32_t>(0xBE800000)}}};
  return kNumbers[script.Next() % kNumbers.size()];
}

class EditAnswers : public Prompts {
 public:
  explicit EditAnswers(Script& script) : script_(script) {}

  // Whether a value was answered and not a cancel.
  [[nodiscard]] bool Given() const { return word_.has_value() || row_ >= 0; }
  // The word that was answered; none after the list dialog.
  [[nodiscard]] std::optional<std::int32_t> Word() const { return word_; }
  // The row that was answered; -1: none, or another dialog.
  [[nodiscard]] int Row() const { return row_; }

  Answer ShowMessage(const Message& message) override {
    Require(message.buttons == Buttons::Ok, "nothing is asked by a message");
    return Answer::Ok;
  }

  std::string AskText(const std::string& /*prompt*/, const std::string& /*defaultText*/) override {
    if (Cancels()) {
      return {};
    }
    const NumberText& number = NextNumber(script_);
    word_ = number.word;
    return number.text;
  }

  std::optional<std::string> ShowEditVal(const std::string& text) override {
    Require(text.size() == 8, "the field starts with 8 digits");
    if (Cancels()) {
      return std::nullopt;
    }
    constexpr const char* kDigits = "0123456789ABCDEF:";
    std::string typed(8, '0');
    std::uint32_t word = 0;
    bool ended = false;
    for (char& character : typed) {
      const unsigned digit = script_.Next() % 17U;
      character = kDigits[digit];
      ended = ended || digit == 16;
      word = ended ? word : word << 4 | digit;
    }
    word_ = static_cast<std::int32_t>(word);
    return typed;
  }

  std::optional<int> ShowEditList(const std::vector<std::string>& lines, int selected) override {
    const int count = static_cast<int>(lines.size());
    Require(selected >= -1 && selected < count, "the selected row is there");
    if (Cancels()) {
      return std::nullopt;
    }
    row_ = script_.Next() % (count + 1) - 1;
    return row_;
  }

  FileChoice ShowFileDialog(const FileDialog& /*dialog*/) override { return Unexpected<FileChoice>(); }
  std::filesystem::path BrowseForFolder(const std::string& /*title*/) override {
    return Unexpected<std::filesystem::path>();
  }
  void ShowVagReplace(bool /*stereo*/, const std::function<bool(const VagChoice&)>& /*accept*/) override {
    Unexpected<int>();
  }

 private:
  bool Cancels() { return script_.Next() % 8 == 0; }
  template <class Result>
  static Result Unexpected() {
    Require(false, "no other question is asked");
    return {};
  }

  Script& script_;
  std::optional<std::int32_t> word_;
  int row_ = -1;
};

}  // namespace kelvane::fuzz
