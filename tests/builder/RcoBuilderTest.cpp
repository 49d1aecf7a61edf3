#include <gtest/gtest.h>
#include <stdexcept>

#include "builder/HandBytes.h"
#include "support/RcoBuilder.h"
#include "support/RcoSeeds.h"

namespace kelvane::test {
namespace {

TEST(RcoBuilder, AFileOfNothingIsAHeaderAndTheMainHead) {
  const BuiltRco built = RcoBuilder().Build();
  ExpectSameFile(built.bytes, Joined({Header({}), Words({0x0100, kNo, 40, 0, 0, 0, 0, 0, 0, 0})}));
}

TEST(RcoBuilder, ImagesOfBothLengths) {
  RcoBuilder b;
  EXPECT_EQ(b.AddImage({.label = "bg", .format = 0, .data = {1, 2, 3, 4, 5}}), 0);
  EXPECT_EQ(b.AddImage({.compression = 1, .data = {6, 7, 8}, .unpackedSize = 0x1234}), 1);
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes,
                 Joined({Header({{36, 204}, {64, 360}, {68, 4}, {88, 352}, {92, 8}, {128, 364}, {132, 12}}),
                         Words({0x0100, kNo, 40, 0, 1, 0, 0, 0, 0, 0}),                              // 164
                         Words({0x0400, kNo, 40, 0, 2, 0, 0, 40, 0, 0}),                             // 204
                         Words({0x0401, 0, 40, 0, 0, 52, 0, 40, 0, 0, 0x00000000, 5, 0}),            // 244
                         Words({0x0401, kNo, 40, 0, 0, 0, 52, 92, 0, 0, 0x00010005, 3, 8, 0x1234}),  // 296
                         Words({244, 296}),                                                          // 352
                         {'b', 'g', 0, 0},                                                           // 360
                         {1, 2, 3, 4, 5, 0, 0, 0, 6, 7, 8, 0}}));                                    // 364
  EXPECT_EQ(built.layout.images[1].entry, 296);
  EXPECT_EQ(built.layout.images[1].data, 372);
  EXPECT_EQ(built.layout.images[1].label, -1);
  EXPECT_EQ(built.layout.imageData.End(), 376);
}

TEST(RcoBuilder, AnEntryCanBeLongerOrShorterThanItsFields) {
  RcoBuilder b;
  b.AddImage({.data = {1}, .unpackedSize = 0x55, .entryLength = 52});
  b.AddImage({.data = {2}, .unpackedSize = 0x66, .entryLength = 60});
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes, Joined({Header({{36, 204}, {64, 364}, {88, 356}, {92, 8}, {128, 364}, {132, 8}}),
                                      Words({0x0100, kNo, 40, 0, 1, 0, 0, 0, 0, 0}),
                                      Words({0x0400, kNo, 40, 0, 2, 0, 0, 40, 0, 0}),
                                      Words({0x0401, kNo, 40, 0, 0, 52, 0, 40, 0, 0, 5, 1, 0}),
                                      Words({0x0401, kNo, 40, 0, 0, 0, 52, 92, 0, 0, 5, 1, 4, 0x66, 0}),
                                      Words({244, 296}),
                                      {1, 0, 0, 0, 2, 0, 0, 0}}));
}

TEST(RcoBuilder, ModelsAndSoundsOfOneAndTwoChannels) {
  RcoBuilder b;
  b.AddVag({.label = "beep", .channel1 = {1, 2, 3}});
  b.AddVag({.label = "st", .channel1 = {4, 5, 6, 7, 8}, .channel2 = Bytes{9, 10}});
  b.AddGmo({.label = "m", .data = {'O', 'M', 'G', '.', 1}});
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes,
                 Joined({Header({{28, 296},
                                 {32, 204},
                                 {64, 484},
                                 {68, 16},
                                 {96, 472},
                                 {100, 8},
                                 {104, 480},
                                 {108, 4},
                                 {136, 500},
                                 {140, 16},
                                 {144, 516},
                                 {148, 8}}),
                         Words({0x0100, kNo, 40, 0, 2, 0, 0, 0, 0, 0}),                                   // 164
                         Words({0x0500, kNo, 40, 0, 1, 92, 0, 40, 0, 0}),                                 // 204
                         Words({0x0501, 12, 40, 0, 0, 0, 0, 40, 0, 0, 0, 5, 0}),                          // 244
                         Words({0x0600, kNo, 40, 0, 2, 0, 92, 132, 0, 0}),                                // 296
                         Words({0x0601, 0, 40, 0, 0, 68, 0, 40, 0, 0, 0x00010001, 3, 0, 3, 0, 0, 0}),     // 336
                         Words({0x0601, 8, 40, 0, 0, 0, 68, 108, 0, 0, 0x00020001, 10, 4, 5, 4, 2, 12}),  // 404
                         Words({336, 404, 244}),                                                          // 472
                         {'b', 'e', 'e', 'p', 0, 0, 0, 0, 's', 't', 0, 0, 'm', 0, 0, 0},                  // 484
                         {1, 2, 3, 0, 4, 5, 6, 7, 8, 0, 0, 0, 9, 10, 0, 0},                               // 500
                         {'O', 'M', 'G', '.', 1, 0, 0, 0}}));                                             // 516
  EXPECT_EQ(built.layout.vags[1].dataSize, 10);
  EXPECT_EQ(built.layout.vags[1].channel2Offset, 12);
}

TEST(RcoBuilder, AShortSoundEntryHasNoChannelFields) {
  RcoBuilder b;
  b.AddVag({.channel1 = {1}, .channels = 3, .entryLength = 52});
  b.AddVag({.channel1 = {2}, .monoChannel2Offset = 0x77});
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes, Joined({Header({{28, 204}, {64, 372}, {96, 364}, {100, 8}, {136, 372}, {140, 8}}),
                                      Words({0x0100, kNo, 40, 0, 1, 0, 0, 0, 0, 0}),
                                      Words({0x0600, kNo, 40, 0, 2, 0, 0, 40, 0, 0}),
                                      Words({0x0601, kNo, 40, 0, 0, 52, 0, 40, 0, 0, 0x00030001, 1, 0}),
                                      Words({0x0601, kNo, 40, 0, 0, 0, 52, 92, 0, 0, 0x00010001, 1, 4, 1, 4, 0, 0x77}),
                                      Words({244, 296}),
                                      {1, 0, 0, 0, 2, 0, 0, 0}}));
}

TEST(RcoBuilder, TextsInTwoLanguages) {
  RcoBuilder b;
  b.AddLanguage(0x10000);
  b.AddLanguage(0x1000B);
  b.AddText({.label = "a", .strings = {u"Hi", u"\u4F60"}});
  b.AddText({.strings = {u"", NoText()}});
  b.AddText({.label = "cc", .strings = {RawText(u"Z")}});
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes, Joined({Header({{24, 204}, {56, 436}, {60, 18}, {64, 454}, {68, 8}, {80, 412}, {84, 24}}),
                                      Words({0x0100, kNo, 40, 0, 1, 0, 0, 0, 0, 0}),                 // 164
                                      Words({0x0300, kNo, 40, 0, 2, 0, 0, 40, 0, 0}),                // 204
                                      Words({0x0301, kNo, 40, 0, 0, 84, 0, 40, 0, 0, 0x10000, 3}),   // 244
                                      Words({0, 8, 0, kNo, 4, 8, 4, 2, 12}),                         // 292
                                      Words({0x0301, kNo, 40, 0, 0, 0, 84, 124, 0, 0, 0x1000B, 3}),  // 328
                                      Words({0, 4, 14, kNo, 0, 18, 4, 0, 18}),                       // 376
                                      Words({292, 304, 316, 376, 388, 400}),                         // 412
                                      {'H', 0, 'i', 0, 0, 0, 0, 0, 0, 0, 0, 0, 'Z', 0},              // 436
                                      {0x60, 0x4F, 0, 0},                                            // 450
                                      {'a', 0, 0, 0, 'c', 'c', 0, 0},                                // 454
                                      {0, 0}}));  // up to a multiple of 4
  EXPECT_EQ(built.layout.languages[1].texts[0].offset, 14);
}

TEST(RcoBuilder, LanguagesCanDisagreeAboutTheirRecords) {
  RcoBuilder b;
  b.Options().lastLanguageStatesNext = true;
  b.AddLanguage(0x10001, 1);
  b.AddLanguage(0x2000C, -1);
  b.AddText({.strings = {u"A", u"B"}});
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes, Joined({Header({{24, 204}, {56, 372}, {60, 4}, {64, 376}, {80, 364}, {84, 8}}),
                                      Words({0x0100, kNo, 40, 0, 1, 0, 0, 0, 0, 0}),                  // 164
                                      Words({0x0300, kNo, 40, 0, 2, 0, 0, 40, 0, 0}),                 // 204
                                      Words({0x0301, kNo, 40, 0, 0, 72, 0, 40, 0, 0, 0x10001, 2}),    // 244
                                      Words({kNo, 4, 0, 0, 0, 0}),                                    // 292
                                      Words({0x0301, kNo, 40, 0, 0, 48, 72, 112, 0, 0, 0x2000C, 0}),  // 316
                                      Words({292, 304}),                                              // 364
                                      {'A', 0, 0, 0}}));                                              // 372
}

TEST(RcoBuilder, APageTreeWithReferencesAndEvents) {
  RcoBuilder b;
  b.AddEvent("go");
  b.AddEvent("open");
  b.AddPage({.label = "a",
             .body = {0x111, EventRef("open")},
             .children = {{.entryClass = 0x19,
                           .position = {{1.0F, 0.5F, -2.0F, 480.0F, 0, 0, 0, 0, 0, 0, 0, 0, 1.0F}},
                           .body = {PageRef("b")}},
                          {.label = "c", .entryClass = 0x0C, .statesSize = false}}});
  b.AddPage({.label = "b", .body = {BlankRef(), PageRef(2, kRefPage7), PairOf(0x40C, 0x12), 1.5F}});
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes,
                 Joined({Header({{48, 204}, {64, 520}, {68, 12}, {72, 532}, {76, 12}, {112, 504}, {116, 16}}),
                         Words({0x0100, kNo, 40, 0, 1, 0, 0, 0, 0, 0}),                     // 164
                         Words({0x0800, kNo, 40, 40, 2, 0, 0, 40, 0, 0}),                   // 204
                         Words({0x0801, 0, 40, 52, 2, 192, 0, 40, 0, 0, 0x111, 0x400, 4}),  // 244
                         Words({0x0819, kNo, 40, 100, 0, 100, 0, 52, 0, 0}),                // 296
                         Words({0x3F800000, 0x3F000000, 0xC0000000, 0x43F00000, 0, 0, 0, 0, 0, 0, 0, 0, 0x3F800000}),
                         Words({0x409, 436}),
                         Words({0x080C, 4, 40, 0, 0, 0, 100, 152, 0, 0}),   // 396
                         Words({0x0801, 8, 40, 68, 0, 0, 192, 232, 0, 0}),  // 436
                         Words({0xFFFF, kNo, 0x407, 396, 0x40C, 0x12, 0x3FC00000}),
                         Words({244, 296, 396, 436}),                          // 504
                         {'a', 0, 0, 0, 'c', 0, 0, 0, 'b', 0, 0, 0},           // 520
                         {'g', 'o', 0, 0, 'o', 'p', 'e', 'n', 0, 0, 0, 0}}));  // 532
  EXPECT_EQ(built.layout.pages[2].depth, 1);
  EXPECT_EQ(built.layout.pages[2].parent, 0);
  EXPECT_EQ(built.layout.events[1], 4);
}

TEST(RcoBuilder, AnimationsWithNestedOperationsAndAShuffledPointerTable) {
  RcoBuilder b;
  b.AddAnimation({.label = "in",
                  .body = {2},
                  .children = {{.entryClass = 2, .body = {1.0F}},
                               {.entryClass = 7, .body = {0.5F}, .children = {{.entryClass = 8, .body = {7}}}}}});
  b.AddAnimation({.label = "out", .statesSize = false});
  b.SetPointers(RcoTable::kAnim, {1, -1, 0});
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes, Joined({Header({{52, 204}, {64, 472}, {68, 8}, {120, 460}, {124, 12}}),
                                      Words({0x0100, kNo, 40, 0, 1, 0, 0, 0, 0, 0}),                 // 164
                                      Words({0x0900, kNo, 40, 40, 2, 0, 0, 40, 0, 0}),               // 204
                                      Words({0x0901, 0, 40, 44, 2, 176, 0, 40, 0, 0, 2}),            // 244
                                      Words({0x0902, kNo, 40, 44, 0, 44, 0, 44, 0, 0, 0x3F800000}),  // 288
                                      Words({0x0907, kNo, 40, 44, 1, 0, 44, 88, 0, 0, 0x3F000000}),  // 332
                                      Words({0x0908, kNo, 40, 44, 0, 0, 0, 44, 0, 0, 7}),            // 376
                                      Words({0x0901, 4, 40, 0, 0, 0, 176, 216, 0, 0}),               // 420
                                      Words({420, 0, 244}),                                          // 460
                                      {'i', 'n', 0, 0, 'o', 'u', 't', 0}}));                         // 472
  EXPECT_EQ(built.layout.animations, (std::vector<int>{0, 4}));
}

TEST(RcoBuilder, ReferencesByNameAndByNumber) {
  RcoBuilder b;
  b.AddImage({.label = "i0"});
  b.AddImage({.label = "i1"});
  b.AddGmo({.label = "m0"});
  b.AddLanguage(0x10001);
  b.AddText({.label = "t0", .strings = {u""}});
  b.AddText({.label = "t1", .strings = {u""}});
  b.AddEvent("e");
  b.AddPage({.body = {ImageRef("i1"), ImageRef(0), ModelRef("m0"), TextRef("t1"), TextRef(0), EventRef(0), AnimRef("x"),
                      AnimRef(0), PageRef(0)}});
  b.AddAnimation({.children = {{.entryClass = 2}}});
  b.AddAnimation({.label = "x"});
  const BuiltRco built = b.Build();
  // Images at 244 and 296, the model behind its root at 388, the language at 480 (72 long), the page at 592 (112 long),
  // animations at 744 and 824.
  const Bytes expected =
      Words({0x402, 296, 0x402, 244, 0x403, 388, 0x401, 1, 0x401, 0, 0x400, 0, 0x408, 824, 0x408, 744, 0x409, 592});
  EXPECT_EQ(Bytes(built.bytes.begin() + 632, built.bytes.begin() + 704), expected);
}

TEST(RcoBuilder, ATableCanHaveARootAndNoEntries) {
  RcoBuilder b;
  b.AddEmptyTable(RcoTable::kImage);
  b.AddEmptyTable(RcoTable::kAnim);
  const BuiltRco built = b.Build();
  ExpectSameFile(
      built.bytes,
      Joined({Header({{36, 204}, {52, 244}, {64, 284}}), Words({0x0100, kNo, 40, 0, 2, 0, 0, 0, 0, 0}),
              Words({0x0400, kNo, 40, 0, 0, 40, 0, 40, 0, 0}), Words({0x0900, kNo, 40, 40, 0, 0, 40, 80, 0, 0})}));
}

TEST(RcoBuilder, OptionsChangeTheHeaderAndWhatSurroundsTheTables) {
  RcoBuilder b;
  b.Options().version = 112;
  b.Options().mainHead = false;
  b.Options().absentOffset = 0;
  b.Options().headerLongs = {{8, 0x11223344}, {152, -2}};
  b.Options().trailing = {0xAA, 0xBB};
  b.AddImage({.data = {1}});
  const BuiltRco built = b.Build();
  ExpectSameFile(built.bytes,
                 Joined({Header({{4, 112},  {8, 0x11223344}, {16, 0},  {24, 0},  {28, 0},   {32, 0},
                                 {36, 164}, {48, 0},         {52, 0},  {56, 0},  {64, 260}, {72, 0},
                                 {80, 0},   {88, 256},       {92, 4},  {96, 0},  {104, 0},  {112, 0},
                                 {120, 0},  {128, 260},      {132, 4}, {136, 0}, {144, 0},  {152, 0xFFFFFFFE}}),
                         Words({0x0400, kNo, 40, 0, 1, 0, 0, 0, 0, 0}),
                         Words({0x0401, kNo, 40, 0, 0, 0, 0, 40, 0, 0, 5, 1, 0}),
                         Words({204}),
                         {1, 0, 0, 0},
                         {0xAA, 0xBB}}));
}

TEST(RcoBuilder, RegionsFollowOneAnotherInTheOrderOfTheFormat) {
  const BuiltRco built = SmallRcoOfEverything().Build();
  const RcoLayout& layout = built.layout;
  // Tables: image, model, sound, text, page, animation.
  EXPECT_EQ(layout.mainHead, 164);
  EXPECT_EQ(layout.Root(RcoTable::kImage), 204);
  EXPECT_EQ(layout.Root(RcoTable::kGmo), layout.images.back().entry + layout.images.back().length);
  EXPECT_EQ(layout.Root(RcoTable::kVag), layout.gmos.back().entry + layout.gmos.back().length);
  EXPECT_EQ(layout.Root(RcoTable::kText), layout.vags.back().entry + layout.vags.back().length);
  EXPECT_EQ(layout.Root(RcoTable::kPage), layout.languages.back().entry + layout.languages.back().length);
  EXPECT_EQ(layout.Root(RcoTable::kAnim), layout.pages.back().entry + layout.pages.back().length);
  EXPECT_EQ(layout.tablesEnd, layout.animEntries.back().entry + layout.animEntries.back().length);
  // Pointers: text, image, sound, model, page, animation; then text data, labels, events.
  EXPECT_EQ(layout.Pointers(RcoTable::kText).offset, layout.tablesEnd);
  EXPECT_EQ(layout.Pointers(RcoTable::kImage).offset, layout.Pointers(RcoTable::kText).End());
  EXPECT_EQ(layout.Pointers(RcoTable::kVag).offset, layout.Pointers(RcoTable::kImage).End());
  EXPECT_EQ(layout.Pointers(RcoTable::kGmo).offset, layout.Pointers(RcoTable::kVag).End());
  EXPECT_EQ(layout.Pointers(RcoTable::kPage).offset, layout.Pointers(RcoTable::kGmo).End());
  EXPECT_EQ(layout.Pointers(RcoTable::kAnim).offset, layout.Pointers(RcoTable::kPage).End());
  EXPECT_EQ(layout.textData.offset, layout.Pointers(RcoTable::kAnim).End());
  EXPECT_EQ(layout.labels.offset, layout.textData.End());
  EXPECT_EQ(layout.eventArea.offset, layout.labels.End());
  // Data: image, sound, model, from a multiple of 4 on.
  EXPECT_LT(layout.headEnd - layout.eventArea.End(), 4);
  EXPECT_EQ(layout.headEnd % 4, 0);
  EXPECT_EQ(layout.imageData.offset, layout.headEnd);
  EXPECT_EQ(layout.vagData.offset, layout.imageData.End());
  EXPECT_EQ(layout.gmoData.offset, layout.vagData.End());
  EXPECT_EQ(layout.fileSize, layout.gmoData.End());
  EXPECT_EQ(layout.fileSize, static_cast<std::int32_t>(built.bytes.size()));
}

TEST(RcoBuilder, LabelsStandInTheOrderOfTheirOwners) {
  const BuiltRco built = SmallRcoOfEverything().Build();
  std::string labels;
  for (std::int32_t at = built.layout.labels.offset; at < built.layout.labels.End(); ++at) {
    const char character = static_cast<char>(built.bytes[static_cast<std::size_t>(at)]);
    if (character != 0) {
      labels.push_back(character);
    } else if (labels.back() != ' ') {
      labels.push_back(' ');
    }
  }
  EXPECT_EQ(labels,
            "msg_a msg_b tex_packed tex_plain tex_png tex_unknown snd_mono snd_stereo model page_a icon page_b "
            "anim_a anim_b ");
}

TEST(RcoBuilder, WhatIsNotThereCannotBeReferredTo) {
  RcoBuilder page;
  page.AddPage({.body = {ImageRef("none")}});
  EXPECT_THROW((void)page.Build(), std::invalid_argument);
  RcoBuilder pointer;
  pointer.AddImage({});
  pointer.SetPointers(RcoTable::kImage, {1});
  EXPECT_THROW((void)pointer.Build(), std::invalid_argument);
  EXPECT_THROW(RcoBuilder().AddImage({.entryLength = 48}), std::invalid_argument);
}

}  // namespace
}  // namespace kelvane::test
