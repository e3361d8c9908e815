#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <QTimer>

#include "model/CommandLine.h"
#include "model/MacroCommand.h"
#include "widgets/ListRows.h"
#include "widgets/RowMark.h"

namespace tessaly {

// The commands of a macro and how their lines are made. A line depends on nothing but what is given here, so
// that it can be made at any time.
struct ShownLines {
  std::shared_ptr<const MacroCommands> commands;
  std::vector<bool> updated;  // a mark a command; none where there are fewer
  LineOptions options;
  std::function<std::string(const MacroCommand& command, const LineOptions& options, bool updated)> line;
};

// What a command is marked with, and why; UTF-8, one line a finding.
struct CommandMark {
  RowMark mark = RowMark::kNone;
  std::string text;
};

// Of the stripe beside a command (kRowStripeRole); invalid for a destination that is not known.
[[nodiscard]] QVariant destinationColour(std::string_view destination);

// The lines of the commands that a pane shows, each with its position as its number. Those of a macro are
// made when they are first needed, and what nobody looks at little by little while the program has nothing
// else to do: a long macro is there at once. `of` tells one macro from another: other commands of the same
// one are the same list (ListRows). GUI thread.
class CommandListModel : public ListRows {
  Q_OBJECT

 public:
  explicit CommandListModel(QObject* parent = nullptr);

  void showMacro(const std::string& of, ShownLines lines);
  // Lines that are made already, such as a key file's.
  void showLines(const std::string& of, std::vector<std::string> lines);
  // One line in place of commands, which takes no input.
  void showNotice(const std::string& of, const std::string& text);
  void clear();

  // By the position of the command; they stay until others are given.
  void setMarks(std::map<int, CommandMark> marks);
  // Whether each command has a stripe of the colour of its destination, which its tool tip names. Off at
  // first.
  void showDestinations(bool on);
  [[nodiscard]] bool showsDestinations() const { return destinations_; }

  [[nodiscard]] const ListRow* row(int index) const override;
  // A mark as a role of its own, and its text for the tool tip and for screen readers.
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  // They can be dragged, too.
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;

 signals:
  void marked();

 private:
  void show(const std::string& of, std::size_t count, const std::function<void()>& fill);
  void makeLine(std::size_t row) const;
  void makeLinesMeanwhile();
  [[nodiscard]] const MacroCommand* striped(int row) const;
  [[nodiscard]] QString about(int row) const;

  std::map<int, CommandMark> marks_;
  std::string of_;
  ShownLines lines_;
  mutable std::vector<ListRow> rows_;
  mutable std::vector<bool> made_;         // a flag a row
  std::size_t nextLine_ = 0;               // lines before it are made
  std::vector<ColumnCells> shownColumns_;  // as the view knows them
  bool destinations_ = false;
  QTimer meanwhile_;
};

}  // namespace tessaly
