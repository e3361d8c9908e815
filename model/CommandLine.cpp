#include "model/CommandLine.h"

#include <optional>

#include "classic/ClassicDescription.h"
#include "model/CommandLines.h"
#include "model/KeyFile.h"
#include "platform/Text.h"
#include "values/Destination.h"
#include "values/ParameterValue.h"
#include "values/Timecode.h"

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
constexpr std::string_view kInputFamily = "INPUT_5";
constexpr std::string_view kInputPrefix = "INPUT";
constexpr std::size_t kUsualLength = 120;        // bytes
constexpr std::size_t kMostRemembered = 50'000;  // remembered by one object
// Bytes of a line; one of a damaged or hostile file may have a million parameters, and the window draws it.
constexpr std::size_t kLongestLine = 4096;
constexpr std::string_view kCutOff = "...";
constexpr std::string_view kDegreeUnit = "[\xC2\xB0]";

std::string_view separator(const LineOptions& options) { return options.tabs ? kTabSeparator : kSeparator; }

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

void appendInteger(std::string& line, const IntegerParameter& parameter, std::string_view stored) {
  if (!parameter.scaled) {
    line.append(parameter.description).append(stored);
  } else if (parameter.min == parameter.max) {
    line.append(stored).append("%");
  } else {
    line.append(shownInteger(parameter, converted(stored), ValueMode::kDisplay)).append("%");
  }
}

std::string_view unitText(FloatUnit unit) {
  switch (unit) {
    case FloatUnit::kNone:
      return {};
    case FloatUnit::kPercent:
      return "%";
    case FloatUnit::kDegree:
      return kDegreeUnit;
  }
  return {};
}

bool incremental(CommandLines::Function& function) {
  if (!function.incremental) function.incremental = function.record.incremental();
  return *function.incremental;
}

void appendFloat(std::string& line, const FloatParameter& parameter, bool incremental,
                 std::string_view stored) {
  if (incremental) {
    line += shownFloat(parameter, true, converted(stored), ValueMode::kDisplay);
  } else if (parameter.min == parameter.max) {
    line += stored;
  } else {
    line.append(shownFloat(parameter, false, converted(stored), ValueMode::kDisplay));
    line.append(unitText(parameter.unit));
  }
}

// Nothing when the function has no parameter of that name.
void appendParameter(std::string& line, const MacroParameter& parameter, CommandLines::Function& function,
                     const FunctionDictionary& dictionary, std::string_view separatorText) {
  const FunctionTemplate& definition = function.record.definition();
  const std::string& stored = parameter.value;
  if (parameterNamed(definition.inputs, parameter.name)) {
    line.append(separatorText).append(inputDisplayName(dictionary, stored));
  } else if (const EnumParameter* choice = parameterNamed(definition.enums, parameter.name)) {
    line.append(separatorText).append(" ").append(enumDescription(*choice, stored));
  } else if (const IntegerParameter* whole = parameterNamed(definition.integers, parameter.name)) {
    appendInteger(line.append(separatorText), *whole, stored);
  } else if (const FloatParameter* real = parameterNamed(definition.floats, parameter.name)) {
    appendFloat(line.append(separatorText), *real, incremental(function), stored);
  } else if (parameterNamed(definition.timecodes, parameter.name)) {
    line.append(separatorText).append(Timecode::fromStored(stored).display());
  }
}

void appendDescriptive(std::string& line, const MacroCommand& command, CommandLines::Function* function,
                       const LineOptions& options, const FunctionDictionary& dictionary) {
  if (function == nullptr) {
    line.append(kUnknownFunction).append(command.functionName());
    return;
  }
  line += function->description;
  for (const MacroParameter& parameter : command.parameters) {
    if (line.size() > kLongestLine) break;
    appendParameter(line, parameter, *function, dictionary, separator(options));
  }
}

void appendRaw(std::string& line, const MacroCommand& command) {
  line += replaceAll(std::string(command.functionName()), ".", " - ");
  std::string_view before = " Parameter: ";
  for (const MacroParameter& parameter : command.parameters) {
    if (line.size() > kLongestLine) break;
    line.append(before).append(parameter.name).append(": \"").append(parameter.value).append("\"");
    before = ",  ";
  }
}

void appendDestinationLabel(std::string& line, std::string_view destination, std::string_view workplace) {
  if (const auto known = Destination::named(destination); !known) {
    line += destination;
  } else if (known->isPanel()) {
    line.append("Panel/Workplace").append(workplace);
  } else {
    line.append("Mainframe").append(std::to_string(known->index() + 1));
  }
  line += kDestinationEnd;
}

void appendDestination(std::string& line, std::string_view destination, std::string_view workplace,
                       const LineOptions& options) {
  if (!options.showDestination) return;
  if (options.raw) {
    line.append(destination).append(kDestinationEnd);
  } else {
    appendDestinationLabel(line, destination, workplace);
  }
}

// No character is cut in two.
void cutOff(std::string& line) {
  if (line.size() <= kLongestLine) return;
  std::size_t end = kLongestLine;
  while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80U) --end;
  line.resize(end);
  line += kCutOff;
}

std::string classicText(const ClassicCommand& command, bool raw, DecodingLists& lists) {
  if (!command.valid()) return std::string(kEmptyClassic);
  return raw ? command.text() : describeClassic(command, lists);
}

// The one place that puts a classic line together. A macro file's line repeats the destination before the
// word even when it is not shown; a key's line does not. Only a key's raw line shows the bytes: in a macro
// the command is decoded in either form.
enum class ClassicHolder { kMacroFile, kKeyFile };

void appendClassic(std::string& line, ClassicHolder holder, std::string_view destination,
                   std::string_view workplace, std::string_view text, const LineOptions& options) {
  appendDestination(line, destination, workplace, options);
  if (holder == ClassicHolder::kMacroFile) line += destination;
  line.append(options.raw ? kRawClassicWord : kClassicWord).append(text);
}

bool namesFunction(const MacroCommand& command, const LineOptions& options) {
  return !command.classic() && !options.raw;
}

std::optional<CommandLines::Function> shownFunction(std::string_view name,
                                                    const FunctionDictionary& dictionary) {
  const auto record = dictionary.find(name);
  if (!record) return std::nullopt;
  return CommandLines::Function{*record, record->description()};
}

// Of a command that names one, its function; null where there is none.
void appendLine(std::string& line, const MacroCommand& command, CommandLines::Function* function,
                const LineOptions& options, const LineContext& context) {
  if (command.classic()) {
    ClassicCommand decoded;
    if (!command.parameters.empty()) decoded.decodeText(command.parameters.front().value);
    appendClassic(line, ClassicHolder::kMacroFile, command.destination(), command.workplace,
                  classicText(decoded, false, context.decodingLists), options);
  } else {
    appendDestination(line, command.destination(), command.workplace, options);
    if (options.raw) {
      appendRaw(line, command);
    } else {
      appendDescriptive(line, command, function, options, context.dictionary);
    }
  }
  cutOff(line);
}

}  // namespace

std::string commandLine(const MacroCommand& command, const LineOptions& options, const LineContext& context,
                        bool updated) {
  std::string line;
  line.reserve(kUsualLength);
  std::optional<CommandLines::Function> function;
  if (namesFunction(command, options)) function = shownFunction(command.functionName(), context.dictionary);
  appendLine(line, command, function ? &*function : nullptr, options, context);
  if (updated) line.append(separator(options)).append(kUpdated);
  return line;
}

const std::string& CommandLines::of(const MacroCommand& command) {
  line_.clear();
  appendLine(line_, command, namesFunction(command, options_) ? known(command.functionName()) : nullptr,
             options_, context_);
  return line_;
}

CommandLines::Function* CommandLines::known(std::string_view name) {
  if (const auto found = functions_.find(name); found != functions_.end()) return &found->second;
  auto function = shownFunction(name, context_.dictionary);
  if (!function) return nullptr;
  if (functions_.size() == kMostRemembered) functions_.clear();
  return &functions_.emplace(std::string(name), *std::move(function)).first->second;
}

std::string keyCommandLine(const ClassicCommand& command, const LineOptions& options,
                           const LineContext& context) {
  const std::string text = replaceAll(classicText(command, options.raw, context.decodingLists), "|", "-");
  std::string line;
  appendClassic(line, ClassicHolder::kKeyFile, kKeyDestination.name(), {}, text, options);
  cutOff(line);
  return line;
}

std::string shownValue(const FunctionRecord& function, std::string_view parameter, std::string_view stored,
                       const FunctionDictionary& dictionary) {
  const IntegerParameter* const whole = parameterNamed(function.definition().integers, parameter);
  if (whole && !whole->scaled) return std::string(stored);
  std::string text;
  CommandLines::Function shown{function};
  appendParameter(text, {std::string(parameter), std::string(stored)}, shown, dictionary, {});
  if (parameterNamed(function.definition().enums, parameter) && !text.empty()) text.erase(0, 1);
  return text.empty() ? std::string(stored) : text;
}

std::string destinationLabel(std::string_view destination, std::string_view workplace) {
  std::string label;
  appendDestinationLabel(label, destination, workplace);
  return label;
}

}  // namespace tessaly
