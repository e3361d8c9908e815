#include <algorithm>
#include <gmock/gmock.h>
#include <map>
#include <string_view>

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>

#include "widgets/KeyboardWay.h"
#include "widgets/QuietToolkit.h"

namespace {

// A view paints a cell anew once its model tells of a change: what changes untold stays on the screen as it
// was.
class UntoldChanges final : public QObject {
 public:
  explicit UntoldChanges(QAbstractItemModel& model) : QObject(&model), model_(model) {
    connect(&model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& from, const QModelIndex& to) {
              for (auto cell = painted_.begin(); cell != painted_.end();) {
                const QModelIndex& index = cell->first;
                const bool told = index.parent() == from.parent() && index.row() >= from.row() &&
                                  index.row() <= to.row() && index.column() >= from.column() &&
                                  index.column() <= to.column();
                cell = told ? painted_.erase(cell) : std::next(cell);
              }
            });
    const auto anew = [this] { painted_.clear(); };
    connect(&model, &QAbstractItemModel::modelReset, this, anew);
    connect(&model, &QAbstractItemModel::layoutChanged, this, anew);
    connect(&model, &QAbstractItemModel::rowsInserted, this, anew);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, anew);
  }
  // What the view paints now.
  void compare(const QModelIndex& parent = {}) {
    constexpr int kMost = 100;  // rows and columns
    for (int row = 0; row < std::min(model_.rowCount(parent), kMost); ++row)
      for (int column = 0; column < std::min(model_.columnCount(parent), kMost); ++column) {
        const QModelIndex cell = model_.index(row, column, parent);
        const QString now = cell.data().toString() + '|' + cell.data(Qt::CheckStateRole).toString();
        const QString& before = painted_.try_emplace(cell, now).first->second;
        EXPECT_EQ(before.toStdString(), now.toStdString()) << "untold: row " << row << ", column " << column;
        if (column == 0 && model_.hasChildren(cell)) compare(cell);
      }
  }

 private:
  QAbstractItemModel& model_;
  std::map<QModelIndex, QString> painted_;
};

// Every model of ours that a view shows keeps the toolkit's rules, also while it changes. The tester reads
// all of a model: in that of a file dialog it would open whatever lies on the disk.
class ModelRules final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool paints = event->type() == QEvent::Paint;
    if (!paints && event->type() != QEvent::Show) return false;
    const auto* view = qobject_cast<QAbstractItemView*>(paints ? watched->parent() : watched);
    QAbstractItemModel* model = view != nullptr ? view->model() : nullptr;
    if (model == nullptr || !std::string_view(model->metaObject()->className()).starts_with("tessaly::"))
      return false;
    if (paints) {
      for (QObject* child : model->children())
        if (auto* changes = dynamic_cast<UntoldChanges*>(child)) changes->compare();
    } else if (model->findChild<QAbstractItemModelTester*>() == nullptr) {
      new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::Fatal, model);
      // That of a rehearsal tells what comes in bursts together.
      if (!model->inherits("tessaly::RehearseModel")) new UntoldChanges(*model);
    }
    return false;
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  tessaly::quietToolkit();
  QApplication toolkit(argc, argv);
  tessaly::KeyboardWay::open();
  ModelRules rules;
  toolkit.installEventFilter(&rules);
  return RUN_ALL_TESTS();
}
