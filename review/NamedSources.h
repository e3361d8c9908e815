#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

using SourceNumbers = std::unordered_set<std::string>;  // as macros hold them, without zeros in front

// Those of one text, which may be the name of one number here and of another one there.
struct NamedSources {
  SourceNumbers panel, classic;  // in commands of functions, in classic ones
};

// The numbers that a text in capital letters stands for: a number itself, else all sources whose whole name
// it is, or its pattern with "*" fits: the inputs of the site for commands of functions; for classic ones the
// classic sources, and the inputs of the site under a name that no classic source has.
[[nodiscard]] NamedSources sourcesNamed(std::string_view text, const FunctionDictionary& dictionary);

}  // namespace tessaly
