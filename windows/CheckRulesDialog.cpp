#include "windows/CheckRulesDialog.h"

#include "ui_CheckRulesDialog.h"
#include "widgets/ListFinder.h"
#include "windows/FindingText.h"

namespace tessaly {

CheckRulesDialog::CheckRulesDialog(const RulesOff& off, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::CheckRulesDialog>()) {
  ui_->setupUi(this);
  new ListFinder(*ui_->rules);
  for (const CheckRuleInfo& info : checkRules()) {
    auto* row = new QTreeWidgetItem(ui_->rules, {QString::fromStdString(std::string(info.name)),
                                                 severityText(info.severity), ruleText(info.rule)});
    row->setCheckState(0, off.contains(info.rule) ? Qt::Unchecked : Qt::Checked);
    row->setIcon(1, rowMarkIcon(markOf(info.severity)));
    row->setToolTip(2, ruleText(info.rule).toHtmlEscaped());
  }
  ui_->rules->resizeColumnToContents(0);
  ui_->rules->resizeColumnToContents(1);
  ui_->rules->setCurrentItem(ui_->rules->topLevelItem(0));
  ui_->rules->setFocus();
}

CheckRulesDialog::~CheckRulesDialog() = default;

RulesOff CheckRulesDialog::off() const {
  RulesOff off;
  for (const CheckRuleInfo& info : checkRules())
    off.set(info.rule, ui_->rules->topLevelItem(static_cast<int>(info.rule))->checkState(0) == Qt::Unchecked);
  return off;
}

}  // namespace tessaly
