// A built file opened as a document, with the ports that tests look at.
#pragma once

#include <filesystem>

#include "common/Mod.h"
#include "container/RcoDocument.h"
#include "support/RcoBuilder.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane::test {

struct OpenedRco {
  OpenedRco();

  // Writes what the builder holds as the open file and scans its resources.
  void Open();

  TempFolder program;  // cAppPath
  TempFolder home;     // the open file's folder
  TempFolder out;      // where exports go
  RcoBuilder builder;
  BuiltRco built;
  Mod mod;
  RcoDocument document;
  ScriptedPrompts prompts;
};

// The general resources of the file at `path`.
[[nodiscard]] RcoDocument ScannedResources(const std::filesystem::path& path);

// `count` bytes without an order, other ones for each seed; no byte is "M" or "O".
[[nodiscard]] Bytes SomeBytes(std::size_t count, std::uint32_t seed = 1);

}  // namespace kelvane::test
