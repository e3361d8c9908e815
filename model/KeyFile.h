#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "classic/ClassicCommand.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// A key file (".upk"): a six-line header, then one classic command a line (docs/key-file-format.md).
class KeyFile {
 public:
  static constexpr int kMostCommands = 5000;

  // Replaces the content. A file that cannot be opened is taken as the default header of `index` (name
  // "MK%02d" of index + 1), which gives one empty command.
  void load(const SiteRoot& root, std::string_view path, int index);
  void parse(std::string_view bytes);

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] int lastIndex() const { return static_cast<int>(commands_.size()) - 1; }  // -1 when empty
  [[nodiscard]] const std::vector<ClassicCommand>& commands() const { return commands_; }
  [[nodiscard]] const ClassicCommand* command(int i) const;  // null outside 0..lastIndex

  // The lines of the file, from 1 on, whose commands nobody can read once they stand in a macro: those that
  // are no command (one that lost its last blank, say), and those of too many parameters.
  [[nodiscard]] std::vector<int> unreadableLines() const;

  // A new empty command, or null at the bound.
  [[nodiscard]] ClassicCommand* append();

 private:
  std::string name_;
  std::vector<ClassicCommand> commands_;
  std::vector<int> lines_;  // of the commands that were read from one
};

// The two-digit number of "key03.upk", 0 when there is none.
[[nodiscard]] int keyFileIndex(std::string_view path);

}  // namespace tessaly
