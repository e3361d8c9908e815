#pragma once

#include <string>
#include <string_view>
#include <vector>

// The destinations whose functions can be taken over at one press, and how they are grouped for the eye.
namespace tessaly {

// The object name by which functions are addressed, and up to two names that count as the same. An empty name
// stands for nothing.
struct DestinationNames {
  std::string name;
  std::string firstAlternative;
  std::string secondAlternative;  // no destination has one so far

  // Exact, upper and lower case told apart. A function without a group (an incremental one) belongs nowhere.
  [[nodiscard]] bool owns(std::string_view group) const;
};

struct DestinationButton {
  std::string caption;
  DestinationNames destination;
  int row = 0;
  int column = 0;
};

enum class DestinationArea {
  kMixEffects,  // one row a mix effect, as in mixEffectNames(); the groups stand side by side
  kBanks,       // numbered banks with rows of their own
};

struct DestinationGroup {
  std::string caption;
  DestinationArea area = DestinationArea::kMixEffects;
  std::vector<DestinationButton> buttons;

  [[nodiscard]] int columns() const;
};

// A button that asks for a source first.
struct InputCorrection {
  std::string_view caption;
  std::string_view title;  // of "Select Input"
  std::string_view stem;   // the destination name without the number of the source

  // `number` is the source's number text, such as "5".
  [[nodiscard]] DestinationNames forInput(std::string_view number) const;
};

// Rows of the mix effects: "PP" is ME0, "MEh" is ME4.
[[nodiscard]] const std::vector<std::string>& mixEffectNames();

// Generated once; in the order in which they are shown.
[[nodiscard]] const std::vector<DestinationGroup>& destinationGroups();
[[nodiscard]] const std::vector<InputCorrection>& inputCorrections();

}  // namespace tessaly
