// The bar of the long commands.
#include <QProgressBar>
#include <QTimer>
#include <gtest/gtest.h>

#include "shell/WindowFixture.h"

namespace kelvane::test {
namespace {

// Takes note of what a progress bar shows at each of its paintings.
class Paintings : public QObject {
 public:
  explicit Paintings(QProgressBar* bar) : bar_(bar) { bar->installEventFilter(this); }

  [[nodiscard]] const std::vector<std::pair<int, int>>& Shown() const { return shown_; }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    const std::pair now(bar_->value(), bar_->maximum());
    if (event->type() == QEvent::Paint && (shown_.empty() || shown_.back() != now)) {
      shown_.push_back(now);
    }
    return false;
  }

 private:
  QProgressBar* bar_;
  std::vector<std::pair<int, int>> shown_;
};

class ProgressTest : public WindowFixture {
 protected:
  ProgressTest() {
    for (const char* label : {"a", "b", "c", "d"}) {
      builder.AddVag({.label = label, .channel1 = Bytes(64)});
    }
    path = folder.Write("sounds.rco", builder.Build().bytes);
  }

  RcoBuilder builder;
  std::filesystem::path path;
};

TEST_F(ProgressTest, BothAllCommandsPaintTheirProgressAndLetNoEventIn) {
  Start(path.string());
  auto* bar = Find<QProgressBar>("barProgress");
  EXPECT_FALSE(bar->isVisible());
  int others = 0;
  QTimer other;
  other.callOnTimeout([&others] { ++others; });
  other.start(0);
  for (const char* button : {"cmdExtractAll", "cmdReplaceAll"}) {
    SCOPED_TRACE(button);
    const Paintings paintings(bar);
    prompts.ExpectFolder("选择输出目录", folder.Path());
    prompts.ExpectTell("完成", Icon::Information);
    Find<QPushButton>(button)->click();
    EXPECT_EQ(others, 0);
    EXPECT_EQ(paintings.Shown(), (std::vector<std::pair<int, int>>{{0, 4}, {1, 4}, {2, 4}, {3, 4}, {4, 4}}));
    EXPECT_FALSE(bar->isVisible());
  }
}

}  // namespace
}  // namespace kelvane::test
