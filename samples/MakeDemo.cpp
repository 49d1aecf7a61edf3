// Writes the sample file: MakeDemo FILE.
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>

#include "samples/Demo.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: MakeDemo FILE\n";
    return EXIT_FAILURE;
  }
  try {
    const kelvane::Bytes bytes = kelvane::sample::BuildDemo().bytes;
    std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
    for (const std::uint8_t byte : bytes) {
      file.put(static_cast<char>(byte));
    }
    file.close();
    if (!file) {
      std::cerr << "cannot write " << argv[1] << '\n';
      return EXIT_FAILURE;
    }
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
