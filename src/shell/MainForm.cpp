#include "shell/MainForm.h"

#include <QFrame>
#include <QKeyEvent>

#include "editor/Settings.h"
#include "shell/AnimTab.h"
#include "shell/Controls.h"
#include "shell/FormLayout.h"
#include "shell/GeneralTab.h"
#include "shell/PageTab.h"
#include "shell/TextTab.h"
#include "shell/frmOpt.h"
#include "shell/frmOther.h"

namespace kelvane {

MainForm::MainForm(const std::filesystem::path& executable, Prompts* prompts)
    : executable_(executable),
      prompts_(this),
      watch_(this),
      progress_(new QtProgress(this)),
      picPreview_(new PictureBox("picPreview", this)),
      preview_(new frmPreview(this)),
      editor_(executable.parent_path(), {.prompts = prompts != nullptr ? *prompts : prompts_,
                                         .watch = watch_,
                                         .progress = *progress_,
                                         .picPreview = picPreview_,
                                         .frmPreview = preview_,
                                         .pictures = &pictures_}),
      runner_(editor_, this),
      drop_(this) {
  setObjectName("frm");
  AddFrame();
  AddPages();
  AcceptDrops();
  const QList<QWidget*> controls = findChildren<QWidget*>();
  for (QWidget* control : controls) {
    if (!control->objectName().isEmpty()) {
      controls_.insert(control->objectName(), control);
    }
  }
  SetTabOrder();
  LimitSize();
  resize(PixelsOf(kStartFormWidth), PixelsOf(kStartFormHeight));
  connect(&watch_, &QTimer::timeout, &runner_, &EditorRunner::Tick);
  connect(&runner_, &EditorRunner::Ran, this, &MainForm::Refresh);
  Refresh();
}

void MainForm::AddFrame() {
  QPushButton* open = AddButton(this, "cmdOpen", "   打开RCO文件", Drawing::Open);
  connect(open, &QPushButton::clicked, this, [this] { runner_.Run([](Editor& editor) { editor.cmdOpen(); }); });
  QPushButton* options = AddButton(this, "cmdOpt", " 设      置 ", Drawing::Options);
  connect(options, &QPushButton::clicked, this,
          [this] { frmOpt(this, editor_.State(), SettingsPath(editor_.State(), executable_)).exec(); });
  AddButton(this, "cmdUtil", "    Tools...", Drawing::Tools);
  QPushButton* other = AddButton(this, "cmdOther", "   Random Info...", Drawing::RandomInfo);
  connect(other, &QPushButton::clicked, this, [this] {
    runner_.Run([this](Editor& editor) {
      const std::optional<RandomInfo> info = editor.cmdOther();
      if (info) {
        frmOther(this, *info).exec();
      }
    });
  });
  QLabel* website = AddLabel(this, "lblWebsite", "Kelvane Editor " KELVANE_VERSION);
  website->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  QPalette quiet = website->palette();
  quiet.setColor(QPalette::WindowText, quiet.color(QPalette::PlaceholderText));
  website->setPalette(quiet);

  auto* border = new QFrame(this);
  border->setObjectName("shpBorder");
  border->setFrameStyle(QFrame::Box | QFrame::Plain);
  QPalette line = border->palette();
  line.setColor(QPalette::WindowText, line.color(QPalette::Mid));
  border->setPalette(line);
}

void MainForm::AddPages() {
  pages_ = {new GeneralTab(this, runner_, picPreview_, preview_), new TextTab(this, runner_),
            new PageTab(this, runner_), new AnimTab(this, runner_)};
  for (int i = 0; i < kTabCount; ++i) {
    const auto at = static_cast<std::size_t>(i);
    pages_[at]->setVisible(false);
    connect(pages_[at], &TabPage::WantsDefault, this, &MainForm::SetDefaultButton);
    headers_[at] = new TabHeader(IconOfTab(i), CaptionOfTab(i), this);
    headers_[at]->setObjectName(IndexedName("picTabSel", i));
    connect(headers_[at], &TabHeader::Clicked, this, [this, i] { ClickTab(i); });
    connect(headers_[at], &TabHeader::KeyPressed, this, [this, i](TabKey key) {
      const int reached = TabKeyDown(
          key, i, kTabCount, [this](int index) { return headers_[static_cast<std::size_t>(index)]->isEnabled(); });
      headers_[static_cast<std::size_t>(reached)]->setFocus(Qt::TabFocusReason);
      ClickTab(reached);
    });
  }
}

void MainForm::AcceptDrops() {
  drop_.Add(this);
  for (TabPage* page : pages_) {
    drop_.Add(page);
    drop_.Add(page->List());
  }
  connect(&drop_, &FileDrop::Dropped, this, [this](const std::vector<std::filesystem::path>& files) {
    runner_.Run([&files](Editor& editor) { editor.DropFiles(files); });
  });
}

// The row of buttons, the headers, then each page: its list first, then its controls as they lie.
void MainForm::SetTabOrder() {
  QWidget* last = controls_.value("cmdOpen");
  const auto next = [&last](QWidget* control) {
    setTabOrder(last, control);
    last = control;
  };
  for (const char* name : {"cmdOpt", "cmdUtil", "cmdOther"}) {
    next(controls_.value(name));
  }
  for (TabHeader* header : headers_) {
    next(header);
  }
  for (TabPage* page : pages_) {
    next(page->List());
    const QList<QWidget*> controls = page->findChildren<QWidget*>();
    for (QWidget* control : controls) {
      if (!control->objectName().isEmpty() && (control->focusPolicy() & Qt::TabFocus) != 0) {
        next(control);
      }
    }
  }
}

void MainForm::Load(const std::string& commandLine) {
  ReadSettings(SettingsPath(editor_.State(), executable_), editor_.State());
  ClickTab(0);
  runner_.Run([&commandLine](Editor& editor) { editor.TakeCommandLine(commandLine); });
  ShowExpert();
}

void MainForm::ShowExpert() {
  const bool expert = editor_.State().cExpert;
  controls_.value("cmdOther")->setVisible(expert);
  for (TabPage* page : pages_) {
    page->ShowExpert(expert);
  }
}

void MainForm::Refresh() {
  const RcoDocument& document = editor_.Document();
  // The toolkit would take "[*]" for a mark of its own.
  setWindowTitle(QString::fromStdString(document.caption).replace("[*]", "[*][*]"));
  progress_->hide();
  for (TabPage* page : pages_) {
    page->Refresh(document);
  }
  LayOut();
}

void MainForm::LayOut() {
  const bool positionShown = editor_.Document().entries.picPagePosVisible;
  // A desktop that disregards the smallest size cuts the form off; it doesn't squeeze it.
  const QSize form = size().expandedTo(minimumSize()) * kTwipsPerPixel;
  for (const auto& [name, place] : LayOutForm(form.width(), form.height(), positionShown, editor_.State().cExpert)) {
    controls_.value(QString::fromStdString(name))
        ->setGeometry(PixelsOf(place.left), PixelsOf(place.top), PixelsOf(place.width), PixelsOf(place.height));
  }
}

void MainForm::resizeEvent(QResizeEvent* /*event*/) {
  if (!isMinimized()) {
    LayOut();
  }
}

void MainForm::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange) {
    LimitSize();
  }
  QWidget::changeEvent(event);
}

void MainForm::LimitSize() {
  if (isMinimized() || isMaximized()) {
    setMinimumSize(0, 0);
  } else {
    setMinimumSize(PixelsOf(kMinimumFormWidth), PixelsOf(kMinimumFormHeight));
  }
}

void MainForm::ClickTab(int index) {
  if (index == currentTab_) {
    return;
  }
  SelectHeader(index);
  pages_[static_cast<std::size_t>(currentTab_)]->setVisible(false);
  currentTab_ = index;
  pages_[static_cast<std::size_t>(currentTab_)]->setVisible(true);
  const TabButtons buttons = ButtonsOfTab(index);
  SetDefaultButton(buttons.defaultButton);
  cancelButton_ = qobject_cast<QPushButton*>(controls_.value(buttons.cancelButton));
}

void MainForm::SelectHeader(int index) {
  for (int i = 0; i < kTabCount; ++i) {
    headers_[static_cast<std::size_t>(i)]->SetSelected(i == index);
  }
}

void MainForm::SetDefaultButton(const QString& name) {
  if (defaultButton_ != nullptr) {
    defaultButton_->setDefault(false);
  }
  defaultButton_ = qobject_cast<QPushButton*>(controls_.value(name));
  if (defaultButton_ != nullptr) {
    defaultButton_->setDefault(true);
  }
}

// Enter presses the button that has the focus, else the default button; Esc the cancel button.
void MainForm::keyPressEvent(QKeyEvent* event) {
  QPushButton* pressed = nullptr;
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    pressed = focused != nullptr ? focused : defaultButton_;
  } else if (event->key() == Qt::Key_Escape) {
    pressed = cancelButton_;
  }
  if (pressed != nullptr && pressed->isEnabled() && pressed->isVisible()) {
    pressed->click();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace kelvane
