#include "common/RuntimeFailure.h"

#include <cerrno>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <utility>

namespace kelvane {

namespace {

const char* DescriptionOf(FailureCode code) {
  switch (code) {
    case FailureCode::InvalidCall:
      return "Invalid procedure call or argument";
    case FailureCode::Overflow:
      return "Overflow";
    case FailureCode::OutOfMemory:
      return "Out of memory";
    case FailureCode::SubscriptOutOfRange:
      return "Subscript out of range";
    case FailureCode::DivisionByZero:
      return "Division by zero";
    case FailureCode::TypeMismatch:
      return "Type mismatch";
    case FailureCode::BadFileNumber:
      return "Bad file name or number";
    case FailureCode::FileNotFound:
      return "File not found";
    case FailureCode::DeviceIoError:
      return "Device I/O error";
    case FailureCode::DiskFull:
      return "Disk full";
    case FailureCode::PermissionDenied:
      return "Permission denied";
    case FailureCode::PathAccessError:
      return "Path/File access error";
    case FailureCode::PathNotFound:
      return "Path not found";
    case FailureCode::InvalidPattern:
      return "Invalid pattern string";
  }
  return "Device I/O error";
}

}  // namespace

RuntimeFailure::RuntimeFailure(FailureCode code) : code_(code), description_(DescriptionOf(code)) {}

RuntimeFailure::RuntimeFailure(FailureCode code, std::string description)
    : code_(code), description_(std::move(description)) {}

RuntimeFailure CurrentFailure() {
  try {
    throw;
  } catch (const RuntimeFailure& failure) {
    return failure;
  } catch (const std::bad_alloc&) {
    return RuntimeFailure(FailureCode::OutOfMemory);
  } catch (const std::length_error&) {
    return RuntimeFailure(FailureCode::OutOfMemory);
  } catch (const std::filesystem::filesystem_error& error) {
    return FailureFromErrno(error.code().value());
  }
}

RuntimeFailure FailureFromErrno(int error) {
  switch (error) {
    case ENOENT:
      return RuntimeFailure(FailureCode::FileNotFound);
    case ENOTDIR:
      return RuntimeFailure(FailureCode::PathNotFound);
    case EACCES:
    case EPERM:
    case EROFS:
      return RuntimeFailure(FailureCode::PermissionDenied);
    case EISDIR:
    case ENAMETOOLONG:
    case ELOOP:
    case EEXIST:
      return RuntimeFailure(FailureCode::PathAccessError);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return RuntimeFailure(FailureCode::DiskFull);
    case ENOMEM:
      return RuntimeFailure(FailureCode::OutOfMemory);
    default:
      return RuntimeFailure(FailureCode::DeviceIoError);
  }
}

}  // namespace kelvane
