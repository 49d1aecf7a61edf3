// The sample file: one screen of a handheld console, as full as a real one.
#pragma once

#include "support/RcoBuilder.h"

namespace kelvane::sample {

// Fills a builder with all of it.
void AddDemoImages(test::RcoBuilder& builder);
void AddDemoSoundsAndModels(test::RcoBuilder& builder);
void AddDemoTexts(test::RcoBuilder& builder);
void AddDemoEvents(test::RcoBuilder& builder);
void AddDemoPages(test::RcoBuilder& builder);
void AddDemoAnimations(test::RcoBuilder& builder);

[[nodiscard]] test::BuiltRco BuildDemo();

}  // namespace kelvane::sample
