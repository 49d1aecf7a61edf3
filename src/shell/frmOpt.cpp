#include "shell/frmOpt.h"

#include "editor/Settings.h"
#include "shell/Controls.h"

namespace kelvane {

frmOpt::frmOpt(QWidget* owner, Mod& mod, const std::filesystem::path& settings)
    : Dialog(owner, "frmOpt", "Kelvane Editor - Options") {
  AddHeading("lblPaletteBMPImprt", "4bit/8bit BMP格式输入");
  AddRow(chkFirstAlpha_ = AddCheckBox(this, "chkFirstAlpha", "把第一颜色改为透明色"));
  AddGap();
  AddHeading("Label1", "32bit BMP格式输入");
  constexpr std::array<const char*, 3> kModes = {"生成32位GIM图像前先提示我", "自动选择GIM图像位数",
                                                 "总是生成32位GIM图像"};
  for (std::size_t i = 0; i < kModes.size(); ++i) {
    opt32bitImport_[i] = new QRadioButton(kModes[i], this);
    opt32bitImport_[i]->setObjectName(IndexedName("opt32bitImport", static_cast<int>(i)));
    AddRow(opt32bitImport_[i]);
  }
  AddGap();
  AddRow(chkNoCompression_ = AddCheckBox(this, "chkNoCompression", "禁止压缩图像和模型(适用于3.7+ RCO文件)"));
  AddRow(chkNoBak_ = AddCheckBox(this, "chkNoBak", "禁止创建 .bak 备份文件"));
  AddOkAndCancel([this, &mod, settings] {
    TakeOver(mod);
    WriteSettings(settings, mod);
    return true;
  });

  chkFirstAlpha_->setChecked(mod.cFirstColTrans);
  chkNoCompression_->setChecked(mod.cNoCompression);
  chkNoBak_->setChecked(mod.cNoUpdatBak);
  opt32bitImport_.at(static_cast<std::size_t>(mod.cImpt32bitMode.Int()))->setChecked(true);
}

void frmOpt::TakeOver(Mod& mod) const {
  mod.cFirstColTrans = chkFirstAlpha_->isChecked();
  mod.cNoCompression = chkNoCompression_->isChecked();
  mod.cNoUpdatBak = chkNoBak_->isChecked();
  for (int mode = 0; mode < 3; ++mode) {
    if (opt32bitImport_[static_cast<std::size_t>(mode)]->isChecked()) {
      mod.cImpt32bitMode = mode;
    }
  }
}

}  // namespace kelvane
