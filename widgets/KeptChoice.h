#pragma once

#include <QEvent>
#include <QItemSelectionModel>
#include <QListView>
#include <QTreeView>

namespace tessaly {

// A view of items of which one is chosen: no click takes the choice away again, neither one beside the rows
// nor one with Ctrl, unless the view is made clearable.
template <class View>
class KeptChoice : public View {
 public:
  using View::View;
  void setClearable(bool clearable) { clearable_ = clearable; }

 protected:
  [[nodiscard]] bool clearable() const { return clearable_; }
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                     const QEvent* event) const override {
    const auto command = View::selectionCommand(index, event);
    const bool takesAway = !index.isValid() || command.testFlag(QItemSelectionModel::Deselect);
    return takesAway && !clearable_ ? QItemSelectionModel::NoUpdate : command;
  }

 private:
  bool clearable_ = false;
};

using KeptListView = KeptChoice<QListView>;
using KeptTreeView = KeptChoice<QTreeView>;

}  // namespace tessaly
