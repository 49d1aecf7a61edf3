#include <gtest/gtest.h>
#include <new>
#include <vector>

#include "common/Statements.h"
#include "support/ScriptedPrompts.h"

namespace kelvane {
namespace {

using test::ScriptedPrompts;

TEST(Statements, WithoutAFailureNothingIsAsked) {
  ScriptedPrompts prompts;
  std::vector<int> ran;
  EXPECT_TRUE(RunStatements(
      prompts,
      [&](Statements& run) {
        run([&] { ran.push_back(1); });
        run([&] { ran.push_back(2); });
      },
      [] { FAIL(); }));
  EXPECT_EQ(ran, (std::vector{1, 2}));
}

TEST(Statements, YesGoesOnWithTheNextStatement) {
  ScriptedPrompts prompts;
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::Yes);
  std::vector<int> ran;
  EXPECT_TRUE(RunStatements(
      prompts,
      [&](Statements& run) {
        run([&] {
          ran.push_back(1);
          throw RuntimeFailure(FailureCode::Overflow);
        });
        run([&] { ran.push_back(2); });
      },
      [] { FAIL(); }));
  EXPECT_EQ(ran, (std::vector{1, 2}));
}

TEST(Statements, NoClosesAndLeavesTheProcedure) {
  ScriptedPrompts prompts;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  std::vector<int> ran;
  bool closed = false;
  EXPECT_FALSE(RunStatements(
      prompts,
      [&](Statements& run) {
        run([&] { throw RuntimeFailure(FailureCode::SubscriptOutOfRange); });
        run([&] { ran.push_back(2); });
      },
      [&] { closed = true; }));
  EXPECT_TRUE(ran.empty());
  EXPECT_TRUE(closed);
}

TEST(Statements, TellsWhetherAnyFailed) {
  ScriptedPrompts prompts;
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::Yes);
  std::vector<bool> failed;
  EXPECT_TRUE(RunStatements(
      prompts,
      [&](Statements& run) {
        failed.push_back(run.Failed());
        run([] {});
        failed.push_back(run.Failed());
        run([] { throw RuntimeFailure(FailureCode::Overflow); });
        run([] {});
        failed.push_back(run.Failed());
      },
      [] { FAIL(); }));
  EXPECT_EQ(failed, (std::vector{false, false, true}));
}

TEST(Statements, TheQuestionHasItsExactWordsAndNoAsDefault) {
  const Message question = UnknownFailureMessage(RuntimeFailure(FailureCode::FileNotFound));
  EXPECT_EQ(question.text, "发生了未知错误！\nFile not found (Code: 53)\n\n继续");
  EXPECT_EQ(question.icon, Icon::Critical);
  EXPECT_EQ(question.buttons, Buttons::YesNo);
  EXPECT_EQ(question.defaultAnswer, Answer::No);
}

TEST(Statements, LackOfMemoryCountsAsFailure7) {
  ScriptedPrompts prompts;
  prompts.ExpectUnknownFailure(FailureCode::OutOfMemory, Answer::Yes);
  EXPECT_TRUE(RunStatements(
      prompts, [](Statements& run) { run([] { throw std::bad_alloc(); }); }, [] { FAIL(); }));
}

TEST(RuntimeFailure, HasTheWordsOfItsCode) {
  const std::vector<std::pair<int, const char*>> table = {{5, "Invalid procedure call or argument"},
                                                          {6, "Overflow"},
                                                          {7, "Out of memory"},
                                                          {9, "Subscript out of range"},
                                                          {11, "Division by zero"},
                                                          {13, "Type mismatch"},
                                                          {52, "Bad file name or number"},
                                                          {53, "File not found"},
                                                          {57, "Device I/O error"},
                                                          {61, "Disk full"},
                                                          {70, "Permission denied"},
                                                          {75, "Path/File access error"},
                                                          {76, "Path not found"},
                                                          {93, "Invalid pattern string"}};
  for (const auto& [number, words] : table) {
    const RuntimeFailure failure(static_cast<FailureCode>(number));
    EXPECT_EQ(failure.Number(), number);
    EXPECT_EQ(failure.Description(), words);
  }
}

}  // namespace
}  // namespace kelvane
