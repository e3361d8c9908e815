#include "editors/MultipleCommandsModel.h"

#include <QFont>

#include "widgets/DialogText.h"

namespace tessaly {

MultipleCommandsModel::MultipleCommandsModel(const FunctionDictionary& dictionary,
                                             DecodingLists& decodingLists, int workplace)
    : commands_(dictionary), context_{dictionary, decodingLists}, workplace_(std::to_string(workplace)) {}

std::string_view MultipleCommandsModel::prefix(int row) const {
  return prefixFor(commands_.at(row).function, mainframePrefix_);
}

void MultipleCommandsModel::add(const Destination& destination) {
  const std::vector<FunctionRecord> functions = commands_.functionsOf(destination);
  if (functions.empty()) return;
  const int first = commands_.size();
  beginInsertRows({}, first, first + static_cast<int>(functions.size()) - 1);
  commands_.append(functions);
  endInsertRows();
}

void MultipleCommandsModel::remove(const std::vector<int>& rising) {
  if (rising.empty()) return;
  beginResetModel();
  commands_.remove(rising);
  endResetModel();
}

bool MultipleCommandsModel::takeAnswer(std::size_t id, const std::string& value) {
  return commands_.takeAnswer(id, value);
}

void MultipleCommandsModel::refresh() {
  if (commands_.size() > 0) emit dataChanged(index(0), index(commands_.size() - 1));
}

void MultipleCommandsModel::setOptions(const LineOptions& options) {
  options_ = options;
  refresh();
}

void MultipleCommandsModel::setMainframePrefix(std::string prefix) {
  mainframePrefix_ = std::move(prefix);
  refresh();
}

int MultipleCommandsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : commands_.size();
}

QVariant MultipleCommandsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= commands_.size()) return {};
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return shown(line(index.row()));
  if (role == Qt::FontRole && commands_.at(index.row()).missing()) {
    QFont font;
    font.setItalic(true);
    return font;
  }
  return {};
}

std::string MultipleCommandsModel::line(int row) const {
  const CommandDraft draft = draftOf(commands_.at(row), prefix(row));
  MacroCommand command;
  command.fid = draft.fid;
  command.workplace = workplace_;
  for (const CommandDraft::Parameter& parameter : draft.parameters) {
    // In words a parameter without a value would read as zero; the raw form shows that it is empty.
    if (options_.raw || !parameter.value.empty())
      command.parameters.push_back({parameter.name, parameter.value});
  }
  return commandLine(command, options_, context_);
}

}  // namespace tessaly
