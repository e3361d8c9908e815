#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

using SourceNumbers = std::unordered_set<std::string>;  // as macros hold them, without zeros in front

// The numbers that a text in capital letters stands for: a number itself, else all sources whose whole name
// it is, or its pattern with "*" fits: the inputs of the site and the classic sources.
[[nodiscard]] SourceNumbers sourcesNamed(std::string_view text, const FunctionDictionary& dictionary);

}  // namespace tessaly
