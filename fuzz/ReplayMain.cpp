// Runs a fuzz target over every file of the folders that it is given: FUZZ FOLDER...
#include <cstdio>
#include <exception>
#include <filesystem>

#include "FuzzTarget.h"
#include "common/Files.h"

int main(int argc, char** argv) {
  int count = 0;
  try {
    for (int i = 1; i < argc; ++i) {
      for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
        if (entry.is_regular_file()) {
          std::fprintf(stderr, "%s\n", entry.path().c_str());
          const kelvane::Bytes input = kelvane::ReadWholeFile(entry.path());
          LLVMFuzzerTestOneInput(input.data(), input.size());
          ++count;
        }
      }
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
  std::fprintf(stderr, "%d inputs\n", count);
  return count > 0 ? 0 : 1;  // a corpus of nothing proves nothing
}
