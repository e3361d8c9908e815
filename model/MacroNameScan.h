#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

// The name of a macro from the bytes of its file, without building the tree: listing a folder needs the name
// and the certainty that the file parses, nothing else. Speaks only when the file is of the plain form that
// this program and the panel write, of which the parser is sure to make the same; nothing for every other
// file, which must then be parsed. As UTF-8. Thread-safe.
[[nodiscard]] std::optional<std::string> scanMacroName(std::string_view bytes);

// The same for every file, by the parser where the scan says nothing; empty for a file without a name or that
// does not parse.
[[nodiscard]] std::string macroNameIn(std::string_view bytes);

}  // namespace tessaly
