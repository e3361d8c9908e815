#include "app/StepNames.h"

#include <QCoreApplication>

namespace tessaly {

namespace {

// A visitor for each kind of edit.
class StepNames {
  Q_DECLARE_TR_FUNCTIONS(StepNames)

 public:
  QString operator()(const InsertCommands& edit) const {
    return insert(static_cast<int>(edit.drafts.size()));
  }
  QString operator()(const InsertFragment& edit) const {
    return insert(static_cast<int>(edit.fragment.size()));
  }
  QString operator()(const RemoveCommands& edit) const {
    return tr("delete %n commands", nullptr, static_cast<int>(edit.numbers.size()));
  }
  QString operator()(const MoveCommands& edit) const {
    return tr("move %n commands", nullptr, static_cast<int>(edit.numbers.size()));
  }
  QString operator()(const ReplaceCommand& edit) const {
    return tr("modify command %1").arg(edit.number + 1);
  }
  QString operator()(const SetValues& edit) const { return update(static_cast<int>(edit.values.size())); }
  QString operator()(const SetTexts& edit) const {
    return tr("change %n texts", nullptr, static_cast<int>(edit.texts.size()));
  }
  QString operator()(const SetMacroName&) const { return tr("rename the macro"); }
  QString operator()(const TakeCommands& edit) const {
    return tr("take %n differences", nullptr, static_cast<int>(edit.pieces.size()));
  }

  static QString insert(int commands) { return tr("insert %n commands", nullptr, commands); }
  static QString cut(int commands) { return tr("cut %n commands", nullptr, commands); }
  static QString paste(int commands) { return tr("paste %n commands", nullptr, commands); }
  static QString duplicate(int commands) { return tr("duplicate %n commands", nullptr, commands); }
  static QString update(int values) { return tr("update of %n values", nullptr, values); }
  static QString capture(int values) { return tr("capture of %n values", nullptr, values); }
  static QString rewrite() { return tr("write the macro anew"); }
  static QString discard() { return tr("discard changes"); }

  static QString fault(StepsFault fault) {
    switch (fault) {
      case StepsFault::kUnreadable:
        return tr("they cannot be read");
      case StepsFault::kTooLarge:
        return tr("the file is too large");
      case StepsFault::kDamaged:
        return tr("the file is damaged");
      case StepsFault::kOtherVersion:
        return tr("another version of the program has written them");
      case StepsFault::kOtherBytes:
        return tr("they do not lead to what the macro holds");
    }
    return {};
  }
  static QString with(const QString& text, const StepsTrouble& trouble) {
    return trouble.found
               ? tr("%1; the steps of an earlier run were put aside: %2").arg(text, fault(*trouble.found))
               : tr("%1; it cannot be undone after a restart").arg(text);
  }
};

}  // namespace

std::string stepName(const MacroEdit& edit) { return std::visit(StepNames(), edit).toStdString(); }

std::string insertStepName(int commands) { return StepNames::insert(commands).toStdString(); }

std::string cutStepName(int commands) { return StepNames::cut(commands).toStdString(); }

std::string pasteStepName(int commands) { return StepNames::paste(commands).toStdString(); }

std::string duplicateStepName(int commands) { return StepNames::duplicate(commands).toStdString(); }

std::string updateStepName(int values) { return StepNames::update(values).toStdString(); }

std::string captureStepName(int values) { return StepNames::capture(values).toStdString(); }

std::string rewriteStepName() { return StepNames::rewrite().toStdString(); }

QString withTrouble(const QString& text, const StepsTrouble& trouble) {
  return StepNames::with(text, trouble);
}

std::string discardStepName() { return StepNames::discard().toStdString(); }

}  // namespace tessaly
