#include "model/CommandLine.h"

#include <optional>

#include "model/ClassicDescription.h"
#include "model/ParameterValue.h"
#include "model/Timecode.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kSeparator = " ==> ";
constexpr std::string_view kTabSeparator = "\t";
constexpr std::string_view kDestinationEnd = " - ";
constexpr std::string_view kUpdated = "updated";
constexpr std::string_view kUnknownFunction = "??? ";
constexpr std::string_view kEmptyClassic = "empty command line, use modify to create command...";
constexpr std::string_view kRawClassicWord = "NCSCOMMAND:  ";
constexpr std::string_view kClassicWord = "Classic:  ";
constexpr std::string_view kMainframe = "QMF";  // and 1 to 4
constexpr std::string_view kPanel = "PANEL";
constexpr std::string_view kKeyDestination = "QMF1";  // keys always go to the first mainframe
constexpr std::string_view kInputFamily = "INPUT_5";
constexpr std::string_view kInputPrefix = "INPUT";
constexpr std::string_view kDegreeUnit = "[\xC2\xB0]";

std::string_view separator(const LineOptions& options) { return options.tabs ? kTabSeparator : kSeparator; }

template <typename Parameter>
const Parameter* named(const std::vector<Parameter>& parameters, std::string_view name) {
  for (const Parameter& parameter : parameters) {
    if (parameter.name == name) return &parameter;
  }
  return nullptr;
}

std::string_view inputDisplayName(const FunctionDictionary& dictionary, std::string_view stored) {
  const EnumFamily* family = dictionary.enumFamily(kInputFamily);
  if (!family) return {};
  for (const SegmentAlternative& member : family->members) {
    const std::string_view text = member.fidText;
    if (text.size() == kInputPrefix.size() + stored.size() && text.ends_with(stored) &&
        text.starts_with(kInputPrefix)) {
      return member.displayText;
    }
  }
  return {};
}

std::string_view enumDescription(const EnumParameter& parameter, std::string_view stored) {
  for (const EnumValue& entry : parameter.values) {
    if (entry.value == stored) return entry.description;
  }
  return {};
}

// In a line an empty value that is converted counts as 0.
std::string_view converted(std::string_view stored) {
  return stored.empty() ? std::string_view("0") : stored;
}

std::string integerText(const IntegerParameter& parameter, const std::string& stored) {
  if (!parameter.scaled) return parameter.description + stored;
  if (parameter.min == parameter.max) return stored + '%';
  return shownInteger(parameter, converted(stored), ValueMode::kDisplay) + '%';
}

std::string floatText(const FloatParameter& parameter, bool incremental, const std::string& stored) {
  if (incremental) return shownFloat(parameter, true, converted(stored), ValueMode::kDisplay);
  if (parameter.min == parameter.max) return stored;
  std::string text = shownFloat(parameter, false, converted(stored), ValueMode::kDisplay);
  switch (parameter.unit) {
    case FloatUnit::kNone:
      break;
    case FloatUnit::kPercent:
      text += '%';
      break;
    case FloatUnit::kDegree:
      text += kDegreeUnit;
      break;
  }
  return text;
}

// Nothing when the function has no parameter of that name.
std::optional<std::string> shownParameter(const FunctionRecord& function, bool incremental,
                                          const MacroParameter& parameter,
                                          const FunctionDictionary& dictionary) {
  const FunctionTemplate& definition = function.definition();
  const std::string& stored = parameter.value;
  if (named(definition.inputs, parameter.name)) return std::string(inputDisplayName(dictionary, stored));
  if (const EnumParameter* found = named(definition.enums, parameter.name)) {
    return std::string(" ").append(enumDescription(*found, stored));
  }
  if (const IntegerParameter* found = named(definition.integers, parameter.name)) {
    return integerText(*found, stored);
  }
  if (const FloatParameter* found = named(definition.floats, parameter.name)) {
    return floatText(*found, incremental, stored);
  }
  if (named(definition.timecodes, parameter.name)) return Timecode::fromStored(stored).display();
  return std::nullopt;
}

std::string descriptiveText(const MacroCommand& command, const LineOptions& options,
                            const FunctionDictionary& dictionary) {
  const std::optional<FunctionRecord> function = dictionary.find(command.functionName());
  if (!function) return std::string(kUnknownFunction).append(command.functionName());
  std::string line = function->description();
  const bool incremental = function->incremental();
  for (const MacroParameter& parameter : command.parameters) {
    if (const auto text = shownParameter(*function, incremental, parameter, dictionary)) {
      line.append(separator(options)).append(*text);
    }
  }
  return line;
}

std::string rawText(const MacroCommand& command) {
  std::string line = replaceAll(std::string(command.functionName()), ".", " - ");
  std::string_view before = " Parameter: ";
  for (const MacroParameter& parameter : command.parameters) {
    line.append(before).append(parameter.name).append(": \"").append(parameter.value).append("\"");
    before = ",  ";
  }
  return line;
}

std::string shownDestination(std::string_view destination, std::string_view workplace,
                             const LineOptions& options) {
  if (!options.showDestination) return {};
  if (options.raw) return std::string(destination).append(kDestinationEnd);
  return destinationLabel(destination, workplace);
}

std::string classicText(const ClassicCommand& command, const LineOptions& options, DecodingLists& lists) {
  if (!command.valid()) return std::string(kEmptyClassic);
  return options.raw ? command.text() : describeClassic(command, lists);
}

// The one place that puts a classic line together. A macro file's line repeats the destination before the
// word even when it is not shown; a key's line does not.
enum class ClassicHolder { kMacroFile, kKeyFile };

std::string frameClassic(ClassicHolder holder, std::string_view destination, std::string_view workplace,
                         std::string_view text, const LineOptions& options) {
  std::string line = shownDestination(destination, workplace, options);
  if (holder == ClassicHolder::kMacroFile) line += destination;
  return line.append(options.raw ? kRawClassicWord : kClassicWord).append(text);
}

}  // namespace

std::string commandLine(const MacroCommand& command, const LineOptions& options, const LineContext& context,
                        bool updated) {
  std::string line;
  if (command.classic()) {
    ClassicCommand decoded;
    if (!command.parameters.empty()) decoded.decodeText(command.parameters.front().value);
    line = frameClassic(ClassicHolder::kMacroFile, command.destination(), command.workplace,
                        classicText(decoded, options, context.decodingLists), options);
  } else {
    line = shownDestination(command.destination(), command.workplace, options) +
           (options.raw ? rawText(command) : descriptiveText(command, options, context.dictionary));
  }
  if (updated) line.append(separator(options)).append(kUpdated);
  return line;
}

std::string keyCommandLine(const ClassicCommand& command, const LineOptions& options,
                           const LineContext& context) {
  const std::string text = replaceAll(classicText(command, options, context.decodingLists), "|", "-");
  return frameClassic(ClassicHolder::kKeyFile, kKeyDestination, {}, text, options);
}

std::string destinationLabel(std::string_view destination, std::string_view workplace) {
  if (destination.size() == kMainframe.size() + 1 && destination.starts_with(kMainframe) &&
      destination.back() >= '1' && destination.back() <= '4') {
    return std::string("Mainframe").append(1, destination.back()).append(kDestinationEnd);
  }
  if (destination == kPanel) return std::string("Panel/Workplace").append(workplace).append(kDestinationEnd);
  return std::string(destination).append(kDestinationEnd);
}

}  // namespace tessaly
