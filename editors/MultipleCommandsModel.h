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
  // Where the command in a row goes: "QMF1." or another prefix.
  [[nodiscard]] std::string_view prefix(int row) const;

  void add(const Destination& destination);
  void remove(const std::vector<int>& rising);
  // Rows are redrawn by refresh(), once for many answers.
  [[nodiscard]] bool takeAnswer(std::size_t id, const std::string& value);
  void refresh();

  void setOptions(const LineOptions& options);
  void setMainframePrefix(std::string prefix);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  // Commands that still lack their value are in italics.
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  [[nodiscard]] std::string line(int row) const;

  MultipleCommands commands_;
  LineContext context_;
  std::string workplace_;
  std::string mainframePrefix_;
  LineOptions options_;
};

}  // namespace tessaly
