#include "shell/Application.h"

#include <QFont>
#include <QProxyStyle>

#include "shell/Failure.h"
#include "shell/Icons.h"

namespace kelvane {

namespace {

// 9 points at 96 dots to the inch. The forms are laid out in twips, so their type has a fixed size like their controls;
// the scale of the screen enlarges both.
constexpr int kFontPixels = 12;

// The system's font; what it lacks of Chinese comes from the first of these that is installed.
QFont FormFont(const QFont& system) {
  QFont font = system;
  font.setFamilies(QStringList(system.family()) << "Noto Sans CJK SC"
                                                << "WenQuanYi Micro Hei"
                                                << "WenQuanYi Zen Hei");
  font.setPixelSize(kFontPixels);
  return font;
}

// Quiet buttons: those of the toolkit's dialogs bear no icons, as those of ours don't. And message boxes whose icons
// are crisp at every scale.
class FormStyle : public QProxyStyle {
 public:
  static constexpr int kMessageIconSize = 32;

  FormStyle() : QProxyStyle("Fusion") {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
  }

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    return metric == PM_MessageBoxIconSize ? kMessageIconSize : QProxyStyle::pixelMetric(metric, option, widget);
  }

  QIcon standardIcon(StandardPixmap pixmap, const QStyleOption* option, const QWidget* widget) const override {
    switch (pixmap) {
      case SP_MessageBoxInformation:
        return DrawnIcon(Drawing::RandomInfo);
      case SP_MessageBoxWarning:
        return DrawnIcon(Drawing::Warning);
      case SP_MessageBoxCritical:
        return DrawnIcon(Drawing::Critical);
      case SP_MessageBoxQuestion:
        return DrawnIcon(Drawing::Question);
      default:
        return QProxyStyle::standardIcon(pixmap, option, widget);
    }
  }
};

}  // namespace

Application::Application(int& argumentCount, char** arguments) : QApplication(argumentCount, arguments) {
  setApplicationName("Kelvane Editor");
  auto* style = new FormStyle;
  style->setParent(this);
  setStyle(style);
  setFont(FormFont(font()));
  setWindowIcon(DrawnIcon(Drawing::Program));
}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    EndWithCurrentFailure();
    return true;
  }
}

}  // namespace kelvane
