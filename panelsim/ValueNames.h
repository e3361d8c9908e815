#pragma once

#include <string>
#include <vector>

#include "dictionary/FunctionDictionary.h"

// What is typed for a value of a simulated panel.
namespace tessaly {

// Names of values that may have been meant, five at the most: those that go on where the name ends, then
// those that are a few letters away, the closest first. Looks at the whole dictionary.
[[nodiscard]] std::vector<std::string> nearNames(const FunctionDictionary& dictionary,
                                                 const std::string& name);

// Why the function that sets the value cannot hold it in any of its parameters, as what it could hold; empty
// when it can, or no function sets it.
[[nodiscard]] std::string cannotHold(const FunctionDictionary& dictionary, const std::string& name,
                                     const std::string& value);

}  // namespace tessaly
