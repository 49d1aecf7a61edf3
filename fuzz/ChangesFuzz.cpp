// A file made by the input and a row of changes of all sorts, checked after each one. A check that fails ends the
// process.
#include "FuzzTarget.h"
#include "common/Bytes.h"
#include "support/ChangeSequence.h"
#include "support/FastFolder.h"

namespace kelvane {
namespace {

// So many changes that an input decides about; behind its end all choices are 0.
constexpr int kMostSteps = 40;

void Run(ByteView input) {
  static const test::FastFolder folder;
  std::size_t position = 0;
  const auto next = [&] { return position < input.size() ? input[position++] : std::uint8_t{0}; };
  test::ChangeSequence sequence(folder.Path(), [&](std::uint32_t limit) {
    std::uint32_t value = next();
    for (std::uint32_t more = limit; more > 256; more /= 256) {
      value = value * 256 + next();
    }
    return value % limit;
  });
  for (int step = 0; step < kMostSteps && position < input.size() && !sequence.IsDone(); ++step) {
    sequence.Step();
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::Run({data, size});
  return 0;
}
