#pragma once

#include <string>
#include <vector>

#include <QAbstractListModel>

#include "editors/MultipleCommands.h"
#include "model/CommandLine.h"

namespace tessaly {

// The "Commands" list: a row a command, whose line is made when it is shown. GUI thread.
class MultipleCommandsModel : public QAbstractListModel {
  Q_OBJECT

 public:
  MultipleCommandsModel(const FunctionDictionary& dictionary, DecodingLists& decodingLists, int workplace);

  [[nodiscard]] const MultipleCommands& commands() const { return commands_; }

  void add(const DestinationNames& destination);
  void remove(const std::vector<int>& rising);
  // After these two rows are redrawn by refresh(), once for many answers.
  [[nodiscard]] bool takeAnswer(std::size_t id, const std::string& value);
  void setDestination(Destination destination);
  void refresh();
  void complete(int row, CommandDraft draft, int workplace);

  void setOptions(const LineOptions& options);

  // As it is to be inserted; parameters without a value are there, too.
  [[nodiscard]] MacroCommand command(int row) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  // Commands that are not ready are in italics, those that act at once stand behind a mark.
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  [[nodiscard]] QString line(int row) const;

  MultipleCommands commands_;
  LineContext context_;
  LineOptions options_;
};

}  // namespace tessaly
