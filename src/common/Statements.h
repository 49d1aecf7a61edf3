// The handler "发生了未知错误！ ... 继续": a procedure's statements run one by one; when one fails the user is asked,
// and Yes goes on with the next statement.
#pragma once

#include "common/Prompts.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

// The question of the handler, critical, with No as its default.
[[nodiscard]] Message UnknownFailureMessage(const RuntimeFailure& failure);

// Thrown by a Statements when the user answered No. Caught by RunStatements only.
struct Abandoned {};

class Statements {
 public:
  explicit Statements(Prompts& prompts) : prompts_(prompts) {}

  // Runs one statement. If it fails the user is asked: on Yes this returns, on No it leaves the procedure.
  template <class Statement>
  void operator()(Statement&& statement) {
    try {
      statement();
    } catch (const Abandoned&) {
      throw;
    } catch (...) {
      failed_ = true;
      AskAboutCurrentFailure();
    }
  }

  // Whether any statement has failed so far, whatever was answered.
  [[nodiscard]] bool Failed() const { return failed_; }

 private:
  void AskAboutCurrentFailure();

  Prompts& prompts_;
  bool failed_ = false;
};

// Runs `body(run)`, whose statements go through `run(...)`. Answers false if the user gave up with No; `close` then
// closes what the procedure had opened.
template <class Body, class Close>
bool RunStatements(Prompts& prompts, Body&& body, Close&& close) {
  Statements run(prompts);
  try {
    body(run);
    return true;
  } catch (const Abandoned&) {
    close();
    return false;
  }
}

}  // namespace kelvane
