#include "samples/Demo.h"

namespace kelvane::sample {

namespace {

using test::AnimRef;
using test::BlankRef;
using test::BodyItem;
using test::EntrySpec;
using test::EventRef;
using test::ImageRef;
using test::ModelRef;
using test::PageRef;
using test::PairOf;
using test::TextRef;

// entryClass of the objects of a page.
enum ObjectClass : std::uint8_t {
  kPage = 1,
  kPlane = 2,
  kButton = 3,
  kXmenu = 4,
  kScroll = 8,
  kMitem = 10,
  kText = 13,
  kModel = 14,
  kGroup = 18,
  kEdit = 21,
  kClock = 22,
  kIlist = 23,
  kIitem = 24,
  kIcon = 25,
};

using Position = std::array<float, rco::kPositionWords>;

// Place and size in pixels around the screen's middle; white, at its own size.
Position Place(float x, float y, float width, float height, float alpha = 1) {
  return {x, y, 1, 1, 1, 1, alpha, width, height, 0, 1, 1, 1};
}

constexpr int kUnseen = 0;
constexpr int kFocusable = 0x11;
constexpr int kCentred = 0x401000;

// A page's own words: flags, what happens when it opens, closes and is left, and what it moves with.
std::vector<BodyItem> PageBody(const char* onOpen, const char* onCancel, const char* openAnimation) {
  return {0x111, EventRef(onOpen), EventRef(onCancel), BlankRef(), AnimRef(openAnimation), -1};
}

EntrySpec MenuItem(const char* label, const char* text, const char* image, const char* event) {
  return {.label = label,
          .entryClass = kMitem,
          .body = {TextRef(text), ImageRef(image), EventRef(event), BlankRef(), kFocusable}};
}

EntrySpec ListItem(const char* label, const char* text, const char* value) {
  return {.label = label, .entryClass = kIitem, .body = {kFocusable, TextRef(text), TextRef(value), BlankRef()}};
}

EntrySpec Button(const char* label, float x, const char* text, const char* image, const char* event) {
  return {
      .label = label,
      .entryClass = kButton,
      .position = Place(x, -76, 120, 28),
      .body = {kFocusable, ImageRef(image), TextRef(text), EventRef(event), AnimRef("anim_blink"), BlankRef(), 0.5F}};
}

EntrySpec MainPage() {
  EntrySpec menu = {.label = "menu_main",
                    .entryClass = kXmenu,
                    .position = Place(-150, 20, 300, 64),
                    .body = {6, kFocusable, PageRef("item_settings", test::kRefPage7), EventRef("native:/OnMove"),
                             AnimRef("anim_slide_left"), AnimRef("anim_slide_right"), 72.0F},
                    .children = {
                        MenuItem("item_settings", "msg_settings", "tex_icon_settings", "native:/OnSettings"),
                        MenuItem("item_photo", "msg_photo", "tex_icon_photo", "native:/OnPhoto"),
                        MenuItem("item_music", "msg_music", "tex_icon_music", "native:/OnMusic"),
                        MenuItem("item_video", "msg_video", "tex_icon_video", "native:/OnVideo"),
                        MenuItem("item_game", "msg_game", "tex_icon_game", "native:/OnGame"),
                        MenuItem("item_network", "msg_network", "tex_icon_network", "native:/OnNetwork"),
                    }};
  return {.label = "page_main",
          .entryClass = kPage,
          .body = PageBody("native:/OnStart", "native:/OnQuit", "anim_page_open"),
          .children = {
              {.label = "plane_bg",
               .entryClass = kPlane,
               .position = Place(0, 0, 480, 272),
               .body = {kCentred, ImageRef("tex_bg_wave"), BlankRef(), kUnseen}},
              {.label = "model_logo",
               .entryClass = kModel,
               .position = Place(160, 60, 80, 80, 0.8F),
               .body = {ModelRef("model_ring"), AnimRef("anim_spin"), 30.0F}},
              {.label = "text_title",
               .entryClass = kText,
               .position = Place(-200, 110, 240, 24),
               .body = {kCentred, TextRef("msg_settings"), PairOf(0x40C, 0x12), 18.0F, 0x3F}},
              std::move(menu),
              {.label = "icon_battery",
               .entryClass = kIcon,
               .position = Place(210, 120, 48, 24),
               .body = {ImageRef("tex_battery_full"), BlankRef(), kUnseen}},
              {.label = "clock_now",
               .entryClass = kClock,
               .position = Place(150, 120, 64, 24),
               .body = {TextRef("msg_format_24h"), ImageRef("tex_clock_face"), 1.0F}},
          }};
}

EntrySpec SettingsPage() {
  EntrySpec list = {
      .label = "list_settings",
      .entryClass = kIlist,
      .position = Place(-20, 10, 400, 160),
      .body = {4, PageRef("scroll_settings"), ImageRef("tex_arrow_right"), EventRef("native:/OnMove"), 36.0F},
      .children = {
          ListItem("row_language", "msg_language", "msg_lang_en"),
          ListItem("row_date", "msg_date_time", "msg_format_ymd"),
          ListItem("row_zone", "msg_time_zone", "msg_zone_p9"),
          ListItem("row_power", "msg_power_save", "msg_automatic"),
      }};
  EntrySpec group = {.label = "group_body",
                     .entryClass = kGroup,
                     .position = Place(0, 0, 480, 200),
                     .body = {2, AnimRef("anim_zoom_in"), AnimRef("anim_zoom_out"), BlankRef()},
                     .children = {std::move(list),
                                  {.label = "scroll_settings",
                                   .entryClass = kScroll,
                                   .position = Place(220, 10, 8, 160),
                                   .body = {ImageRef("tex_white"), PairOf(0x405, 0), 1}}}};
  return {.label = "page_settings",
          .entryClass = kPage,
          .body = PageBody("native:/OnSettings", "native:/OnBack", "anim_page_open"),
          .children = {std::move(group), Button("button_back", -160, "msg_back", "tex_button_o", "native:/OnBack")}};
}

EntrySpec DialogPage() {
  return {.label = "page_dialog",
          .entryClass = kPage,
          .body = PageBody("native:/OnDialog", "native:/OnNo", "anim_fade_in"),
          .children = {
              {.label = "plane_dialog",
               .entryClass = kPlane,
               .position = Place(0, 0, 256, 128, 0.9F),
               .body = {kCentred, ImageRef("tex_dialog"), AnimRef("anim_fade_in"), kUnseen}},
              {.label = "text_message",
               .entryClass = kText,
               .position = Place(0, 20, 220, 60),
               .body = {kCentred, TextRef("msg_confirm_delete"), BlankRef(), 16.0F, 0x3F}},
              Button("button_yes", -64, "msg_yes", "tex_button_x", "native:/OnYes"),
              Button("button_no", 64, "msg_no", "tex_button_o", "native:/OnNo"),
              {.label = "edit_password",
               .entryClass = kEdit,
               .position = Place(0, -20, 180, 22),
               .body = {TextRef("msg_password"), EventRef("native:/OnPassword"), 16, kFocusable}},
          }};
}

EntrySpec LoadingPage() {
  return {
      .label = "page_loading",
      .entryClass = kPage,
      .body = PageBody("native:/OnLoad", "native:/OnQuit", "anim_fade_in"),
      .children = {{.label = "icon_spinner",
                    .entryClass = kIcon,
                    .position = Place(0, 0, 48, 48),
                    .body = {ImageRef("tex_spinner"), AnimRef("anim_spin"), PageRef("page_main", test::kRefPage7)}}}};
}

// Firmware tools leave pointers in any order, with unused ones between them.
std::vector<int> MixedPointers(int pages) {
  constexpr int kStride = 7;
  std::vector<int> order;
  order.reserve(static_cast<std::size_t>(pages) + 1);
  for (int i = 0; i < pages; ++i) {
    order.push_back(i * kStride % pages);
  }
  order.insert(order.begin() + pages / 3, -1);
  return order;
}

}  // namespace

void AddDemoEvents(test::RcoBuilder& builder) {
  for (const char* event : {"native:/OnStart", "native:/OnQuit", "native:/OnMove", "native:/OnSettings",
                            "native:/OnPhoto", "native:/OnMusic", "native:/OnVideo", "native:/OnGame",
                            "native:/OnNetwork", "native:/OnBack", "native:/OnDialog", "native:/OnYes", "native:/OnNo",
                            "native:/OnPassword", "native:/OnLoad", "native:/OnAnimationEnd"}) {
    builder.AddEvent(event);
  }
}

void AddDemoPages(test::RcoBuilder& builder) {
  constexpr int kEntries = 30;
  for (EntrySpec page : {MainPage(), SettingsPage(), DialogPage(), LoadingPage()}) {
    builder.AddPage(std::move(page));
  }
  builder.SetPointers(test::RcoTable::kPage, MixedPointers(kEntries));
}

}  // namespace kelvane::sample
