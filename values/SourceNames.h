#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

struct ClassicSource {
  std::uint8_t number;
  std::string name;
};

// The classic sources in the order in which they are offered, each number once.
[[nodiscard]] const std::vector<ClassicSource>& classicSources();

// Name of a classic source number: "Input 07", "PP A", "unknown input".
[[nodiscard]] const std::string& sourceName(std::uint8_t number);

struct PanelSource {
  std::string displayName;
  std::string panelName;
  std::string function;  // "SOURCE.SET" in category 7, else empty
};

// Sources of a category (0 mix effects .. 9 machines and iDpm); empty for a number without a list.
[[nodiscard]] const std::vector<PanelSource>& panelSources(int category);
inline constexpr int kSourceCategories = 10;

// The source list of "Select Input": family "INPUT_5" in stored order; without it every enumerated family
// whose name contains "INPUT", in table order, each panel name once. Rows whose panel name does not begin
// with "INPUT" are left out.
[[nodiscard]] std::vector<PanelSource> inputSources(const FunctionDictionary& dictionary);

// What a classic command can name: of `inputs` those with a number that fits its byte, under their display
// names, then the classic sources that they leave out.
[[nodiscard]] std::vector<ClassicSource> classicInputs(const std::vector<PanelSource>& inputs);

// "5" for "INPUT5"; empty when the name does not begin with "INPUT".
[[nodiscard]] std::string inputNumberText(std::string_view panelName);

}  // namespace tessaly
