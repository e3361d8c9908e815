#include "review/SheetReading.h"

#include <algorithm>
#include <utility>

#include "model/MacroFile.h"
#include "platform/MacroNumber.h"
#include "platform/Text.h"
#include "review/MacroEffect.h"

namespace tessaly {
namespace {

constexpr std::string_view kKeyStart = "key", kKeyEnd = ".upk", kPanel = "PANEL", kPanelName = "Panel";
constexpr std::string_view kLabelEnd = " - ";

// What stands in front of the command's line where that shows the destination.
std::string destinationText(std::string_view destination, std::string_view workplace) {
  if (destination.empty()) return {};
  std::string text = destinationLabel(destination, workplace);
  if (text.ends_with(kLabelEnd)) text.resize(text.size() - kLabelEnd.size());
  return text;
}

SheetGroup& groupOf(std::vector<SheetGroup>& groups, const std::string& destination) {
  const auto known = std::ranges::find(groups, destination, &SheetGroup::destination);
  if (known != groups.end()) return *known;
  return groups.emplace_back(SheetGroup{destination, {}});
}

// Findings about a command go there, the others stay with the macro.
void addFindings(SheetMacro& to, Findings findings) {
  for (Finding& finding : findings) {
    Findings& at =
        finding.command < 0 ? to.findings : to.commands[static_cast<std::size_t>(finding.command)].findings;
    at.push_back(std::move(finding));
  }
}

bool unreadable(const Finding& finding) { return finding.rule == CheckRule::kUnreadable; }

}  // namespace

SheetReading::SheetReading(const CheckContext& context, SheetWords words)
    : lines_{context.dictionary, context.decodingLists}, words_(std::move(words)), check_(context) {}

std::string SheetReading::numberOf(std::string_view file) {
  constexpr std::size_t kKeyDigits = 2;
  const std::string_view name = fileNameOf(file);
  if (const auto number = MacroNumber::ofFile(name)) return number->text();
  const bool key = equalNoCase(name.substr(0, kKeyStart.size()), kKeyStart) &&
                   endsWithNoCase(name, kKeyEnd) &&
                   name.size() == kKeyStart.size() + kKeyDigits + kKeyEnd.size();
  return key ? std::string(name.substr(kKeyStart.size(), kKeyDigits)) : std::string();
}

// The number tells the file where it is named by one.
std::string SheetReading::placeText(const MacroPlace& place) {
  if (place.file.empty() && place.address.empty()) return {};
  if (place.file.empty()) return format("workplace %d of ", place.workplace) + place.address.text();
  if (numberOf(place.file).empty()) return place.file;
  std::string folder = place.file.substr(0, place.file.size() - fileNameOf(place.file).size());
  if (folder.size() > 1) folder.pop_back();
  return folder;
}

void SheetReading::beginFolder() { folder_.emplace(check_); }

SheetMacro SheetReading::read(SheetMacro at, const Macro& macro) {
  SheetMacro read = withCommands(std::move(at), macro);
  addFindings(read, check_.check(macro));
  return read;
}

SheetMacro SheetReading::read(SheetMacro at, const KeyFile& keys) {
  SheetMacro read = withCommands(std::move(at), keys);
  addFindings(read, check_.check(keys));
  return read;
}

SheetMacro SheetReading::read(SheetMacro at, const std::string& file, Expected<std::string> bytes) {
  Findings findings =
      folder_ ? folder_->next(file, bytes).findings : checkBytes(file, bytes, check_).findings;
  if (bytes && endsWithNoCase(file, kKeyEnd)) {
    KeyFile keys;
    keys.parse(*bytes);
    at = withCommands(std::move(at), keys);
  } else if (!bytes) {
    at.unread = bytes.failure().text;
  } else if (const auto macro = Macro::read(*std::move(bytes)); !macro) {
    at.unread = macro.failure().text;
  } else {
    at = withCommands(std::move(at), *macro);
  }
  if (!at.unread.empty()) std::erase_if(findings, unreadable);  // told already
  addFindings(at, std::move(findings));
  return at;
}

SheetMacro SheetReading::withCommands(SheetMacro at, const Macro& macro) {
  at.name = macro.name().value_or(at.name);
  at.commands.reserve(macro.commands().size());
  for (const MacroCommand& command : macro.commands())
    at.commands.push_back(
        {destinationText(command.destination(), command.workplace), commandLine(command, {}, lines_)});
  addEffect(at, macro.commands());
  return at;
}

SheetMacro SheetReading::withCommands(SheetMacro at, const KeyFile& keys) {
  at.name = keys.name();
  const std::string destination = destinationText(kKeyDestination.name(), {});
  for (const ClassicCommand& command : keys.commands())
    at.commands.push_back({destination, keyCommandLine(command, {}, lines_)});
  if (const auto macro = keyFileMacro(keys)) addEffect(at, macro->commands());
  return at;
}

void SheetReading::addEffect(SheetMacro& to, const MacroCommands& commands) const {
  const MacroEffect effect(commands, lines_);
  for (int i = 0; i < effect.commandCount(); ++i)
    if (!effect.effect(i).why.empty() || effect.effect(i).what == CommandEffect::What::kUntold)
      to.untold.push_back(i);
  for (int i = 0; i < static_cast<int>(effect.values().size()); ++i) {
    const EffectValue& value = effect.values()[static_cast<std::size_t>(i)];
    const std::string destination =
        value.destination() == kPanel ? std::string(kPanelName) : destinationText(value.destination(), {});
    std::string shown = effect.told(i, effect.at(i, effect.commandCount()), words_.changed);
    groupOf(to.after, destination)
        .values.push_back({effect.label(i), shown.empty() ? words_.unknown : std::move(shown)});
  }
}

}  // namespace tessaly
