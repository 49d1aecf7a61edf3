#include "samples/Demo.h"

#include "samples/Models.h"
#include "samples/Sounds.h"
#include "samples/Texts.h"

namespace kelvane::sample {

void AddDemoSoundsAndModels(test::RcoBuilder& builder) {
  const Bytes cursor = VagFile(Synthesise({{0, 1320, 0.06F, 0.5F}}, 0.06F), "cursor");
  const Bytes decide = VagFile(Synthesise({{0, 880, 0.12F, 0.4F}, {0.05F, 1320, 0.15F, 0.4F}}, 0.2F), "decide");
  builder.AddVag({.label = "snd_cursor", .channel1 = cursor});
  builder.AddVag({.label = "snd_decide", .channel1 = decide});

  const float length = 1.1F;
  const Bytes startLeft = VagFile(Synthesise({{0, 392, 0.9F, 0.3F}, {0.3F, 587.3F, 0.8F, 0.3F}}, length), "startup_l");
  const Bytes startRight =
      VagFile(Synthesise({{0.15F, 493.9F, 0.9F, 0.3F}, {0.45F, 784, 0.6F, 0.3F}}, length), "startup_r");
  builder.AddVag({.label = "snd_startup", .channel1 = startLeft, .channel2 = startRight});
  const Bytes endLeft = VagFile(Synthesise({{0, 784, 0.5F, 0.3F}, {0.25F, 493.9F, 0.5F, 0.3F}}, 0.7F), "shutdown_l");
  const Bytes endRight =
      VagFile(Synthesise({{0.12F, 587.3F, 0.5F, 0.3F}, {0.37F, 392, 0.3F, 0.3F}}, 0.7F), "shutdown_r");
  builder.AddVag({.label = "snd_shutdown", .channel1 = endLeft, .channel2 = endRight});

  const Bytes cube = ModelFile(Cube());
  const Bytes ring = ModelFile(Torus(24, 12));
  builder.AddGmo({.label = "model_ring",
                  .compression = rco::kCompressionZlib,
                  .data = test::DeflateWrapped(ring),
                  .unpackedSize = static_cast<std::int32_t>(ring.size())});
  builder.AddGmo({.label = "model_cube", .data = cube});
}

void AddDemoTexts(test::RcoBuilder& builder) {
  for (std::size_t language = 0; language < kLanguages; ++language) {
    builder.AddLanguage(kFirstLanguageCode + static_cast<std::uint32_t>(language));
  }
  for (const std::vector<DemoText>* texts : {&MenuTexts(), &MediaTexts(), &MessageTexts()}) {
    for (const DemoText& text : *texts) {
      builder.AddText({.label = text.label, .strings = {text.words.begin(), text.words.end()}});
    }
  }
  for (const SameText& text : SameTexts()) {
    builder.AddText({.label = text.label, .strings = std::vector<test::TextString>(kLanguages, text.text)});
  }
}

test::BuiltRco BuildDemo() {
  test::RcoBuilder builder;
  AddDemoImages(builder);
  AddDemoSoundsAndModels(builder);
  AddDemoTexts(builder);
  AddDemoEvents(builder);
  AddDemoPages(builder);
  AddDemoAnimations(builder);
  return builder.Build();
}

}  // namespace kelvane::sample
