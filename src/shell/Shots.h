// Pictures of the window, made without a screen.
#pragma once

#include <filesystem>

namespace kelvane {

class MainForm;

// Selects the first row of every list and writes each tab at 100% as tab0.png to tab3.png and at 200% as tab0@2x.png to
// tab3@2x.png into `folder`, which is made. Failures: 76 where the folder can't be made, 75 where a picture can't be
// written.
void TakeShots(MainForm& form, const std::filesystem::path& folder);

}  // namespace kelvane
