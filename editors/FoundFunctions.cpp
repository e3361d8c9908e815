#include "editors/FoundFunctions.h"

#include <algorithm>

#include "widgets/DialogText.h"

namespace tessaly {

FoundFunctions::FoundFunctions(const FunctionDictionary& dictionary, QObject* parent)
    : QAbstractListModel(parent), dictionary_(dictionary) {}

void FoundFunctions::setFunctions(const FunctionFinder::Functions& functions) {
  if (functions == functions_) return;
  beginResetModel();
  functions_ = functions;
  endResetModel();
}

void FoundFunctions::setRaw(bool raw) {
  raw_ = raw;
  if (!functions_.empty()) emit dataChanged(index(0), index(rowCount() - 1), {Qt::DisplayRole});
}

FunctionRecord FoundFunctions::function(int row) const {
  return dictionary_.function(functions_[static_cast<std::size_t>(row)]);
}

int FoundFunctions::rowOf(std::size_t function) const {
  const auto found = std::find(functions_.begin(), functions_.end(), function);
  return found == functions_.end() ? -1 : static_cast<int>(found - functions_.begin());
}

int FoundFunctions::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(functions_.size());
}

QVariant FoundFunctions::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const FunctionRecord record = function(index.row());
  const bool asTip = role == Qt::ToolTipRole;
  if (role != Qt::DisplayRole && !asTip) return {};
  const std::string name = replaceAll(std::string(record.name()), ".", " - ");
  if (asTip) return shownLines(record.description() + '\n' + name);
  return shown(raw_ ? name : record.description());
}

}  // namespace tessaly
