// Writes the seeds of a fuzz target into a folder of their own: SEEDS FOLDER.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "Seeds.h"
#include "common/Files.h"
#include "common/Numbers.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    int number = 0;
    for (const kelvane::Bytes& seed : kelvane::fuzz::Seeds()) {
      kelvane::WriteWholeFile(folder / kelvane::PadLeft(std::to_string(number++), 4, '0'), seed);
    }
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s: %s\n", argv[1], failure.what());
    return 1;
  }
}
