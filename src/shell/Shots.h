// Pictures of the window, made without a screen.
#pragma once

#include <filesystem>

namespace kelvane {

class MainForm;

// Selects the first row of every list and writes each tab as tab0.png to tab3.png into `folder`, which is made, and the
// first page with a position block as tab2-position.png; all of them at 200% too, as in tab0@2x.png. Failures: 76 where
// the folder can't be made, 75 where a picture can't be written.
void TakeShots(MainForm& form, const std::filesystem::path& folder);

}  // namespace kelvane
