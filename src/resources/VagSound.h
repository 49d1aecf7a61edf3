// Sounds of one or two channels: a stereo sound is two VAG files, one behind the other.
#pragma once

#include <filesystem>

#include "common/Mod.h"
#include "common/Prompts.h"

namespace kelvane {

// Writes "temp.vag" in the program's folder: the left file, zeros up to a multiple of 4 bytes, the right file.
// Failures: 9 for an empty file, and those of files; what was written up to there stays.
void MergeVagChannels(const std::filesystem::path& leftPath, const std::filesystem::path& rightPath, const Mod& mod);

// cmdOK of the sound dialog: takes the shape of the sound, and the file that holds its data, over into `mod`. False if
// a file is missing; that was told, and the dialog stays. Failures: those of MergeVagChannels.
bool AcceptVagChoice(const VagChoice& choice, Mod& mod, Prompts& prompts);

// Asks for the file or files of a sound. mod.vagChannels is what the entry has; afterwards vagChannels, vagSize1,
// vagSize2 and vagPath hold the answer, vagPath being empty where it was cancelled.
void AskForVag(Mod& mod, Prompts& prompts);

}  // namespace kelvane
