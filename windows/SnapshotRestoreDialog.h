#pragma once

#include <functional>
#include <memory>

#include <QDialog>

#include "widgets/Message.h"
#include "windows/SnapshotRows.h"

namespace Ui {
class SnapshotRestoreDialog;
}

namespace tessaly {

// Shows what of a snapshot stands where it belongs, and puts back what the user ticks. GUI thread; the
// restore is used on the thread of `run`.
class SnapshotRestoreDialog : public QDialog {
  Q_OBJECT

 public:
  // Runs `work` beside the window, under a progress with `label`, and returns when it is over. `tell` is how
  // far it is, in thousandths.
  using Work = std::function<void(const std::function<void(int)>& tell)>;
  using Run = std::function<void(const QString& label, const Work& work)>;
  // Whether these rows may be put back as they are; asks the user where that is a question.
  using MayWrite = std::function<bool(const std::vector<std::size_t>& rows)>;

  // `title` says from where to where. Observes the restore, which has looked at its rows.
  SnapshotRestoreDialog(const QString& title, SnapshotRestore& restore, Run run, MayWrite mayWrite,
                        SnapshotRows::Words words, QWidget* parent = nullptr);
  ~SnapshotRestoreDialog() override;

 signals:
  // What stands at these places may be another by now.
  void written(const std::vector<tessaly::MacroPlace>& places);
  void said(const tessaly::Message& message);

 private:
  void restoreTicked();
  void showCount();
  void showOutcome(const std::vector<std::size_t>& tried, const Outcome& outcome);

  std::unique_ptr<Ui::SnapshotRestoreDialog> ui_;
  SnapshotRestore& restore_;
  Run run_;
  MayWrite mayWrite_;
  SnapshotRows::Words words_;
  SnapshotRows rows_;
  bool cancelled_ = false;  // the restore takes nothing more
};

}  // namespace tessaly
