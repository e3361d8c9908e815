#include "editors/DraftParameters.h"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace tessaly {
namespace {

constexpr int kInputCategory = 1;  // of the panel's source names

template <typename Descriptor, typename Kind>
constexpr bool kIs = std::is_same_v<std::decay_t<Descriptor>, Kind>;

// Descriptions such as "Rate: " are made to stand before a value.
std::string withoutColon(std::string_view text) {
  const std::size_t last = text.find_last_not_of(": ");
  return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

}  // namespace

bool missing(const CommandDraft::Parameter& parameter) {
  if (!parameter.value.empty()) return false;
  switch (parameter.kind) {
    case ParameterKind::kEnum:
    case ParameterKind::kInteger:
      return !parameter.optional;
    case ParameterKind::kFloat:
    case ParameterKind::kInput:
    case ParameterKind::kTimecode:
      return true;  // optional or not: deliberate, the panel takes no command without them
  }
  return true;
}

// Calls `visitor` with the descriptor of the parameter.
template <typename Visitor>
auto DraftParameters::visit(std::size_t row, Visitor visitor) const {
  const auto& parameters = draft_.parameters;
  const ParameterKind kind = parameters[row].kind;
  const auto place = static_cast<std::size_t>(
      std::count_if(parameters.begin(), parameters.begin() + static_cast<std::ptrdiff_t>(row),
                    [kind](const auto& parameter) { return parameter.kind == kind; }));
  switch (kind) {
    case ParameterKind::kEnum:
      return visitor(definition_->enums[place]);
    case ParameterKind::kInteger:
      return visitor(definition_->integers[place]);
    case ParameterKind::kFloat:
      return visitor(definition_->floats[place]);
    case ParameterKind::kInput:
      return visitor(definition_->inputs[place]);
    case ParameterKind::kTimecode:
      break;
  }
  return visitor(definition_->timecodes[place]);
}

DraftParameters::DraftParameters(const std::vector<PanelSource>& sources)
    : sources_(sources.empty() ? panelSources(kInputCategory) : sources) {}

void DraftParameters::begin(const FunctionRecord& function, CommandDraft draft) {
  definition_ = &function.definition();
  incremental_ = function.incremental();
  draft_ = std::move(draft);
  entered_.reset();
}

void DraftParameters::setValue(std::size_t row, std::string value) {
  draft_.parameters[row].value = std::move(value);
  if (entered_ == row) entered_.reset();
}

bool DraftParameters::complete() const {
  return std::none_of(draft_.parameters.begin(), draft_.parameters.end(), missing);
}

bool DraftParameters::mayBeEmpty(std::size_t row) const {
  CommandDraft::Parameter emptied = draft_.parameters[row];
  emptied.value.clear();
  return !missing(emptied);
}

std::string DraftParameters::label(std::size_t row) const {
  const std::string& name = draft_.parameters[row].name;
  if (mode_ == ValueMode::kRaw) return name;
  const std::string text =
      withoutColon(visit(row, [](const auto& descriptor) { return descriptor.description; }));
  return text.empty() ? name : text;
}

std::string DraftParameters::shownValue(std::size_t row) const {
  const std::string& value = draft_.parameters[row].value;
  if (value.empty()) return value;
  return visit(row, [&](const auto& descriptor) -> std::string {
    using Descriptor = decltype(descriptor);
    if constexpr (kIs<Descriptor, IntegerParameter>) {
      return shownInteger(descriptor, value, mode_);
    } else if constexpr (kIs<Descriptor, FloatParameter>) {
      return shownFloat(descriptor, incremental_, value, mode_);
    } else if constexpr (kIs<Descriptor, TimecodeParameter>) {
      return shownTimecode(value, mode_);
    } else {
      for (Choice& choice : choices(row))
        if (choice.value == value) return std::move(choice.text);
      return value;
    }
  });
}

std::string DraftParameters::range(std::size_t row) const {
  return visit(row, [&](const auto& descriptor) -> std::string {
    using Descriptor = decltype(descriptor);
    if constexpr (kIs<Descriptor, IntegerParameter>) {
      return rangeText(descriptor, mode_);
    } else if constexpr (kIs<Descriptor, FloatParameter>) {
      return rangeText(descriptor, incremental_, mode_);
    } else {
      return {};
    }
  });
}

bool DraftParameters::typed(std::size_t row) const {
  const ParameterKind kind = draft_.parameters[row].kind;
  return kind != ParameterKind::kEnum && kind != ParameterKind::kInput;
}

bool DraftParameters::timecode(std::size_t row) const {
  return draft_.parameters[row].kind == ParameterKind::kTimecode;
}

std::vector<DraftParameters::Choice> DraftParameters::choices(std::size_t row) const {
  const bool raw = mode_ == ValueMode::kRaw;
  std::vector<Choice> offered;
  visit(row, [&](const auto& descriptor) {
    using Descriptor = decltype(descriptor);
    if constexpr (kIs<Descriptor, EnumParameter>) {
      for (const EnumValue& entry : descriptor.values)
        offered.push_back({raw || entry.description.empty() ? entry.value : entry.description, entry.value});
    } else if constexpr (kIs<Descriptor, InputParameter>) {
      for (const PanelSource& source : sources_) {
        const std::string number = inputNumberText(source.panelName);
        offered.push_back({raw ? number : source.displayName, number});
      }
    }
  });
  return offered;
}

FilteredEntry DraftParameters::enter(std::size_t row, std::string_view before, std::string_view text,
                                     int frameRate) {
  std::string value;
  FilteredEntry entered = visit(row, [&](const auto& descriptor) -> FilteredEntry {
    using Descriptor = decltype(descriptor);
    FilteredEntry entry;
    if constexpr (kIs<Descriptor, IntegerParameter>) {
      entry = filterInteger(descriptor, text, mode_);
      value = storedInteger(descriptor, entry.text, mode_);
    } else if constexpr (kIs<Descriptor, FloatParameter>) {
      entry = filterFloat(descriptor, incremental_, text, mode_);
      value = storedFloat(descriptor, incremental_, entry.text, mode_);
    } else if constexpr (kIs<Descriptor, TimecodeParameter>) {
      const int rate = mode_ == ValueMode::kRaw ? 0 : frameRate;
      entry = filterTimecode(text, rate);
      value = storedTimecode(entry.text, rate);
    }
    return entry;
  });
  if (entered.text != before) {
    entered_ = row;
    draft_.parameters[row].value = std::move(value);
  }
  return entered;
}

bool DraftParameters::finishEntry() {
  const auto row = std::exchange(entered_, std::nullopt);
  if (!row || !typed(*row)) return false;
  std::string& value = draft_.parameters[*row].value;
  if (value.empty() || value.find_first_of("0123456789") != std::string::npos) return false;
  value = "0";
  return true;
}

}  // namespace tessaly
