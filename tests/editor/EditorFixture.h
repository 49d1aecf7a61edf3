// An editor in a folder of its own, with scripted ports and small files made by hand.
#pragma once

#include <gtest/gtest.h>

#include "common/Bytes.h"
#include "container/RcoFormat.h"
#include "editor/Editor.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane::test {

// A plain file of 276 bytes with one image entry, "[GIM] ab": image root at 164, its entry at 204, the label area at
// 256, 12 bytes of image data at 264, and nothing else.
inline Bytes SmallRco(std::int32_t version = 113) {
  Bytes file(276);
  WriteI32(file, rco::hdrMagic, rco::kMagic);
  WriteI32(file, rco::hdrVersion, version);
  WriteI32(file, rco::hdrImageRoot, 164);
  WriteI32(file, rco::hdrTextRoot, -1);
  WriteI32(file, rco::hdrLabelOffset, 256);
  WriteI32(file, rco::hdrImageData, 264);
  WriteI32(file, rco::hdrImageData + 4, 12);
  WriteI32(file, 164 + rco::entryChildren, 1);
  WriteI16(file, 204 + rco::bodyFormat, 5);
  WriteI32(file, 204 + rco::bodyDataSize, 12);
  CopyInto(file, 256, Bytes{'a', 'b'});
  CopyInto(file, 264, Bytes{'M', 'I', 'G', '.', 1, 2, 3, 4, 5, 6, 7, 8});
  return file;
}

class EditorFixture : public ::testing::Test {
 protected:
  EditorFixture() { std::filesystem::create_directory(folder / "program"); }

  TempFolder folder;
  ScriptedPrompts prompts;
  ScriptedWatch watch;
  ScriptedProgress progress;
  Editor editor{folder / "program", Ports{.prompts = prompts, .watch = watch, .progress = progress}};
};

}  // namespace kelvane::test
