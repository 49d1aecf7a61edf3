// The one exception for run-time failures, with the codes and words that users see in message boxes.
#pragma once

#include <exception>
#include <string>

namespace kelvane {

// The numbers that a failure shows behind its description.
enum class FailureCode : int {
  InvalidCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  BadFileNumber = 52,
  FileNotFound = 53,
  DeviceIoError = 57,
  DiskFull = 61,
  PermissionDenied = 70,
  PathAccessError = 75,
  PathNotFound = 76,
  InvalidPattern = 93,
};

class RuntimeFailure : public std::exception {
 public:
  // With the description that belongs to the code.
  explicit RuntimeFailure(FailureCode code);
  RuntimeFailure(FailureCode code, std::string description);

  [[nodiscard]] FailureCode Code() const noexcept { return code_; }
  [[nodiscard]] int Number() const noexcept { return static_cast<int>(code_); }
  [[nodiscard]] const std::string& Description() const noexcept { return description_; }
  [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
  FailureCode code_;
  std::string description_;
};

// The exception in flight as a RuntimeFailure: std::bad_alloc and std::length_error count as 7, a
// std::filesystem::filesystem_error as the code of its system error. Call it inside a catch block only. An exception
// that is no run-time failure is thrown on.
[[nodiscard]] RuntimeFailure CurrentFailure();

// The failure for an errno value of a file operation: 53, 57, 61, 70, 75 or 76.
[[nodiscard]] RuntimeFailure FailureFromErrno(int error);

}  // namespace kelvane
