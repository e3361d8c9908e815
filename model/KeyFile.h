#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "classic/ClassicCommand.h"
#include "platform/SiteRoot.h"
#include "values/Destination.h"

namespace tessaly {

inline constexpr Destination kKeyDestination = Destination::mainframe(1);  // of every key

// A key file (".upk"): a six-line header, then one classic command a line (docs/key-file-format.md).
class KeyFile {
 public:
  static constexpr int kMostCommands = 5000;

  // Replaces the content. A file that cannot be opened is taken as the default header of `index` (name
  // "MK%02d" of index + 1), which gives one empty command.
  void load(const SiteRoot& root, std::string_view path, int index);
  void parse(std::string_view bytes);

  [[nodiscard]] const std::string& name() const { return name_; }                         // UTF-8
  [[nodiscard]] int lastIndex() const { return static_cast<int>(commands_.size()) - 1; }  // -1 when empty
  [[nodiscard]] const std::vector<ClassicCommand>& commands() const { return commands_; }
  // Which commands a macro made of this file does not hold as their lines tell them, in ascending order:
  // those of 28 and more parameter bytes, and lines that are no command, as without their final blank. Once
  // they are saved nothing reads them back.
  [[nodiscard]] std::vector<int> unreadable() const;
  // Of each command, as the file has it; none for the empty one that stands for no line.
  struct Line {
    int number;  // from 1 on
    std::string text;
  };
  [[nodiscard]] const std::vector<Line>& lines() const { return lines_; }

 private:
  // A new empty command, or null at the bound.
  [[nodiscard]] ClassicCommand* append();

  std::string name_;
  std::vector<ClassicCommand> commands_;
  std::vector<Line> lines_;
};

// The two-digit number of "key03.upk", 0 when there is none.
[[nodiscard]] int keyFileIndex(std::string_view path);

}  // namespace tessaly
