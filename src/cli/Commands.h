// The commands, by what they are for. Each function adds its subcommands to the parser; the chosen one leaves its
// action.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

#include "cli/Session.h"

namespace kelvane::cli {

// What the chosen command does. A refusal that a message has told of needs no result.
using Action = std::function<void(Session&)>;

// list, info, text langs|list|get|dump, pages, anims, entry, choices, areas, preview
void AddListCommands(CLI::App& app, Action& action);
void AddTextCommands(CLI::App& app, Action& action);
void AddPageCommands(CLI::App& app, Action& action);
// extract, extract-all, replace, replace-all, add, plain
void AddResourceCommands(CLI::App& app, Action& action);
// deflate, inflate, gim to-bmp|from-bmp|colours, image
void AddStepCommands(CLI::App& app, Action& action);

}  // namespace kelvane::cli
