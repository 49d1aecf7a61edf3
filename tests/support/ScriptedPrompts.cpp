#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

#include "common/Statements.h"

namespace kelvane::test {

ScriptedPrompts::~ScriptedPrompts() {
  EXPECT_TRUE(script_.empty()) << script_.size() << " expected question(s) never came";
}

void ScriptedPrompts::Expect(Message message, Answer answer) {
  script_.push_back(ExpectedMessage{std::move(message), answer});
}

void ScriptedPrompts::ExpectTell(std::string text, Icon icon) {
  Expect({.text = std::move(text), .icon = icon, .buttons = Buttons::Ok, .defaultAnswer = Answer::Ok}, Answer::Ok);
}

void ScriptedPrompts::ExpectUnknownFailure(FailureCode code, Answer answer) {
  const RuntimeFailure failure(code);
  Expect({.text = "发生了未知错误！\n" + failure.Description() + " (Code: " + std::to_string(failure.Number()) +
                  ")\n\n继续",
          .icon = Icon::Critical,
          .buttons = Buttons::YesNo,
          .defaultAnswer = Answer::No},
         answer);
}

void ScriptedPrompts::ExpectFileDialog(FileChoice choice, std::function<void(const FileDialog&)> check) {
  script_.push_back(ExpectedFile{std::move(choice), std::move(check)});
}

void ScriptedPrompts::ExpectFolder(std::string title, std::filesystem::path folder) {
  script_.push_back(ExpectedFolder{std::move(title), std::move(folder)});
}

void ScriptedPrompts::ExpectInput(std::string prompt, std::string defaultText, std::string answer) {
  script_.push_back(ExpectedInput{std::move(prompt), std::move(defaultText), std::move(answer)});
}

void ScriptedPrompts::ExpectEditVal(std::string text, std::optional<std::string> answer) {
  script_.push_back(ExpectedEditVal{std::move(text), std::move(answer)});
}

void ScriptedPrompts::ExpectEditList(std::vector<std::string> lines, int selected, std::optional<int> answer) {
  script_.push_back(ExpectedEditList{std::move(lines), selected, answer});
}

void ScriptedPrompts::ExpectVagReplace(bool stereo, std::vector<VagChoice> choices) {
  script_.emplace_back(ExpectedVagReplace{stereo, std::move(choices)});
}

template <class Type>
const Type* ScriptedPrompts::Next(const std::string& asked) {
  if (script_.empty() || !std::holds_alternative<Type>(script_.front())) {
    ADD_FAILURE() << "unexpected question: " << asked;
    return nullptr;
  }
  current_ = std::move(script_.front());
  script_.pop_front();
  return &std::get<Type>(current_);
}

Answer ScriptedPrompts::ShowMessage(const Message& message) {
  const auto* expected = Next<ExpectedMessage>(message.text);
  if (expected == nullptr) {
    return message.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
  }
  EXPECT_EQ(message.text, expected->message.text);
  EXPECT_EQ(message.icon, expected->message.icon);
  EXPECT_EQ(message.buttons, expected->message.buttons);
  EXPECT_EQ(message.defaultAnswer, expected->message.defaultAnswer);
  return expected->answer;
}

FileChoice ScriptedPrompts::ShowFileDialog(const FileDialog& dialog) {
  const auto* expected = Next<ExpectedFile>("file dialog " + dialog.title);
  if (expected == nullptr) {
    return {};
  }
  if (expected->check) {
    expected->check(dialog);
  }
  return expected->choice;
}

std::filesystem::path ScriptedPrompts::BrowseForFolder(const std::string& title) {
  const auto* expected = Next<ExpectedFolder>("folder dialog " + title);
  if (expected == nullptr) {
    return {};
  }
  EXPECT_EQ(title, expected->title);
  return expected->folder;
}

std::string ScriptedPrompts::AskText(const std::string& prompt, const std::string& defaultText) {
  const auto* expected = Next<ExpectedInput>("input box " + prompt);
  if (expected == nullptr) {
    return {};
  }
  EXPECT_EQ(prompt, expected->prompt);
  EXPECT_EQ(defaultText, expected->defaultText);
  return expected->answer;
}

std::optional<std::string> ScriptedPrompts::ShowEditVal(const std::string& text) {
  const auto* expected = Next<ExpectedEditVal>("hexadecimal dialog " + text);
  if (expected == nullptr) {
    return std::nullopt;
  }
  EXPECT_EQ(text, expected->text);
  return expected->answer;
}

std::optional<int> ScriptedPrompts::ShowEditList(const std::vector<std::string>& lines, int selected) {
  const auto* expected = Next<ExpectedEditList>("list dialog");
  if (expected == nullptr) {
    return std::nullopt;
  }
  EXPECT_EQ(lines, expected->lines);
  EXPECT_EQ(selected, expected->selected);
  return expected->answer;
}

void ScriptedPrompts::ShowVagReplace(bool stereo, const std::function<bool(const VagChoice&)>& accept) {
  const auto* next = Next<ExpectedVagReplace>("sound dialog");
  if (next == nullptr) {
    return;
  }
  const ExpectedVagReplace expected = *next;  // accepting may ask more
  EXPECT_EQ(stereo, expected.stereo);
  for (std::size_t i = 0; i < expected.choices.size(); ++i) {
    if (accept(expected.choices[i])) {
      EXPECT_EQ(i + 1, expected.choices.size()) << "accepted too early";
      return;
    }
  }
}

void ScriptedWatch::Start() {
  running_ = true;
  calls_.emplace_back("start");
}

void ScriptedWatch::Stop() {
  running_ = false;
  calls_.emplace_back("stop");
}

}  // namespace kelvane::test
