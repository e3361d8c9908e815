#pragma once

#include <string>

#include "classic/ClassicCommand.h"
#include "classic/DecodingList.h"
#include "dictionary/FunctionDictionary.h"
#include "model/MacroCommand.h"

// The one line of text that shows a command (docs/command-line.md): UTF-8, of texts that are UTF-8.
namespace tessaly {

struct LineOptions {
  bool showDestination = false;
  bool raw = false;
  bool tabs = false;  // a tab instead of " ==> " as the separator
};

// What the lines are made with; both may change nothing.
struct LineContext {
  const FunctionDictionary& dictionary;
  DecodingLists& decodingLists;
};

// A command of a macro file. `updated` appends the separator and "updated".
[[nodiscard]] std::string commandLine(const MacroCommand& command, const LineOptions& options,
                                      const LineContext& context, bool updated = false);

// A command of a key file.
[[nodiscard]] std::string keyCommandLine(const ClassicCommand& command, const LineOptions& options,
                                         const LineContext& context);

// What a line shows for one value of a function: "50.0%", "Off", "Input 05"; of a whole number the number
// alone. The stored value where the dictionary knows nothing else.
[[nodiscard]] std::string shownValue(const FunctionRecord& function, std::string_view parameter,
                                     std::string_view stored, const FunctionDictionary& dictionary);

// "Mainframe1 - " for "QMF1", "Panel/Workplace2 - " for "PANEL", else the destination and " - ".
[[nodiscard]] std::string destinationLabel(std::string_view destination, std::string_view workplace);

}  // namespace tessaly
