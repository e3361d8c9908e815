#include "editors/MultipleCommandsModel.h"

#include <utility>

#include <QFont>

#include "widgets/DialogText.h"

namespace tessaly {

MultipleCommandsModel::MultipleCommandsModel(const FunctionDictionary& dictionary,
                                             DecodingLists& decodingLists, int workplace)
    : commands_(dictionary, workplace), context_{dictionary, decodingLists} {}

void MultipleCommandsModel::add(const DestinationNames& destination) {
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

void MultipleCommandsModel::setDestination(Destination destination) { commands_.setDestination(destination); }

void MultipleCommandsModel::refresh() {
  if (commands_.size() > 0) emit dataChanged(index(0), index(commands_.size() - 1));
}

void MultipleCommandsModel::complete(int row, CommandDraft draft, int workplace) {
  commands_.complete(row, std::move(draft), workplace);
  refresh();
}

void MultipleCommandsModel::setOptions(const LineOptions& options) {
  options_ = options;
  refresh();
}

MacroCommand MultipleCommandsModel::command(int row) const {
  const ListedCommand& listed = commands_.at(row);
  MacroCommand command;
  command.fid = listed.draft.fid;
  command.workplace = std::to_string(listed.workplace);
  for (const CommandDraft::Parameter& parameter : listed.draft.parameters) {
    command.parameters.emplace_back();
    command.parameters.back().name = parameter.name;
    command.parameters.back().value = parameter.value;
  }
  return command;
}

int MultipleCommandsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : commands_.size();
}

QVariant MultipleCommandsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= commands_.size()) return {};
  const ListedCommand& listed = commands_.at(index.row());
  if (role == Qt::DisplayRole) return line(index.row());
  if (role == Qt::ToolTipRole)
    return listed.actsAtOnce() ? tr("%1\nacts at once when the macro is run").arg(line(index.row()))
                               : line(index.row());
  if (role == Qt::FontRole && listed.missing()) {
    QFont font;
    font.setItalic(true);
    return font;
  }
  return {};
}

QString MultipleCommandsModel::line(int row) const {
  MacroCommand shownCommand = command(row);
  // In words a parameter without a value would read as zero; the raw form shows that it is empty.
  if (!options_.raw)
    std::erase_if(shownCommand.parameters, [](const auto& parameter) { return parameter.value.empty(); });
  const QString text = shown(commandLine(shownCommand, options_, context_));
  return commands_.at(row).actsAtOnce() ? QStringLiteral("! ") + text : text;
}

}  // namespace tessaly
