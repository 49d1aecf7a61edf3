#include "shell/frmVAGReplace.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>

#include "common/Encoding.h"
#include "editor/DroppedFile.h"
#include "shell/Controls.h"
#include "shell/Failure.h"
#include "shell/FileBox.h"
#include "shell/FileDrop.h"

namespace kelvane {

namespace {

const FileDialog kBrowse{.title = "选择一个VAG声音", .filters = {{"VAG文件(*.vag)", "*.vag"}}};

// The first of the files that are dropped on the box goes into it.
void TakeDrops(QLineEdit* box, Prompts& prompts) {
  auto* drop = new FileDrop(box);
  drop->Add(box);
  QObject::connect(drop, &FileDrop::Dropped, box,
                   Guarded([box, &prompts](const std::vector<std::filesystem::path>& files) {
                     const std::filesystem::path file = DroppedFile(files, prompts);
                     if (!file.empty()) {
                       box->setText(QString::fromStdString(PathToUtf8(file)));
                     }
                   }));
}

}  // namespace

frmVAGReplace::frmVAGReplace(QWidget* owner, bool stereo, Prompts& prompts, const Accept& accept)
    : Dialog(owner, "frmVAGReplace", "Kelvane Editor - Replace VAG") {
  auto* current = new QHBoxLayout;
  current->addWidget(AddLabel(this, "lblChannelsDes", "The current sound is"));
  current->addWidget(AddLabel(this, "lblChannels", stereo ? "立体声" : "单声道"), 1);
  Rows()->addLayout(current, Rows()->rowCount(), 0, 1, 3);
  QCheckBox* useStereo = AddCheckBox(this, "chkStereo", "Use &stereo sound");
  AddRow(useStereo);
  const FileBox left = AddFileBox(this, "txtLFile", "cmdLFileBrowse", kBrowse, prompts);
  AddField("lblLFileDes", "&Left Channel:", left.box, left.browse);
  const FileBox right = AddFileBox(this, "txtRFile", "cmdRFileBrowse", kBrowse, prompts);
  AddField("lblRFileDes", "&Right Channel:", right.box, right.browse);
  TakeDrops(left.box, prompts);
  TakeDrops(right.box, prompts);
  AddOkAndCancel([left, right, useStereo, accept] {
    return accept({.left = PathOf(*left.box), .right = PathOf(*right.box), .stereo = useStereo->isChecked()});
  });

  auto* rightLabel = findChild<QLabel*>("lblRFileDes");
  const auto enableRight = [rightLabel, right](bool enabled) {
    for (QWidget* control :
         {static_cast<QWidget*>(rightLabel), static_cast<QWidget*>(right.box), static_cast<QWidget*>(right.browse)}) {
      control->setEnabled(enabled);
    }
  };
  connect(useStereo, &QCheckBox::toggled, this, enableRight);
  useStereo->setChecked(stereo);
  enableRight(stereo);
}

}  // namespace kelvane
