#include "samples/Demo.h"

namespace kelvane::sample {

namespace {

using test::EntrySpec;
using test::PageRef;

// entryClass of the operations.
enum OperationClass : std::uint8_t {
  kSetPosition = 2,
  kSetColour = 3,
  kSetRotation = 4,
  kSetScale = 5,
  kSetAlpha = 6,
  kDelay = 7,
  kTriggerEvent = 8,
};

// What an operation changes, how long it takes in milliseconds, along which curve, and what it leads to.
EntrySpec Operation(std::uint8_t operation, const char* object, float milliseconds, const std::vector<float>& values) {
  EntrySpec entry = {.entryClass = operation, .body = {PageRef(object), milliseconds, 1}};
  for (const float value : values) {
    entry.body.emplace_back(value);
  }
  return entry;
}

EntrySpec Move(const char* object, float milliseconds, float x, float y) {
  return Operation(kSetPosition, object, milliseconds, {x, y, 0});
}

EntrySpec Tint(const char* object, float milliseconds, float red, float green, float blue) {
  return Operation(kSetColour, object, milliseconds, {red, green, blue});
}

EntrySpec Turn(const char* object, float milliseconds, float degrees) {
  return Operation(kSetRotation, object, milliseconds, {0, 0, degrees});
}

EntrySpec Scale(const char* object, float milliseconds, float scale) {
  return Operation(kSetScale, object, milliseconds, {scale, scale, 1});
}

EntrySpec Fade(const char* object, float milliseconds, float alpha) {
  return Operation(kSetAlpha, object, milliseconds, {alpha});
}

EntrySpec Delay(float milliseconds) {
  return {.entryClass = kDelay, .body = {milliseconds}};
}

EntrySpec Trigger(const char* event) {
  return {.entryClass = kTriggerEvent, .body = {test::EventRef(event), 0}};
}

void Add(test::RcoBuilder& builder, const char* label, std::vector<EntrySpec> operations) {
  const int count = static_cast<int>(operations.size());
  builder.AddAnimation({.label = label, .body = {count}, .children = std::move(operations)});
}

}  // namespace

void AddDemoAnimations(test::RcoBuilder& builder) {
  Add(builder, "anim_page_open",
      {Fade("plane_bg", 0, 0), Fade("plane_bg", 300, 1), Delay(300), Trigger("native:/OnAnimationEnd")});
  Add(builder, "anim_page_close", {Fade("plane_bg", 250, 0), Delay(250), Trigger("native:/OnQuit")});
  Add(builder, "anim_fade_in", {Fade("plane_dialog", 0, 0), Fade("plane_dialog", 150, 0.9F)});
  Add(builder, "anim_fade_out", {Fade("plane_dialog", 150, 0)});
  Add(builder, "anim_slide_left", {Move("menu_main", 120, -222, 20), Delay(120), Trigger("native:/OnMove")});
  Add(builder, "anim_slide_right", {Move("menu_main", 120, -78, 20), Delay(120), Trigger("native:/OnMove")});
  Add(builder, "anim_zoom_in", {Scale("group_body", 0, 0.5F), Scale("group_body", 200, 1)});
  Add(builder, "anim_zoom_out", {Scale("group_body", 200, 0.5F), Fade("group_body", 200, 0)});
  Add(builder, "anim_blink",
      {Tint("button_yes", 80, 1, 0.8F, 0.25F), Delay(80), Tint("button_yes", 80, 1, 1, 1), Delay(80)});
  Add(builder, "anim_spin", {Turn("icon_spinner", 1000, 360), Delay(1000), Trigger("native:/OnAnimationEnd")});
}

}  // namespace kelvane::sample
