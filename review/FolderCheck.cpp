#include "review/FolderCheck.h"

#include <algorithm>
#include <utility>

#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using enum CheckRule;

constexpr std::string_view kKeyEnd = ".upk";

Finding finding(CheckRule rule, Said wrong, std::string meant = {}) {
  return {
      .rule = rule, .severity = infoOf(rule).severity, .wrong = std::move(wrong), .meant = std::move(meant)};
}

bool isDigits(std::string_view text, std::size_t count) {
  return text.size() == count &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// "macro007.mac", "key03.upk", whatever the case.
bool hasPlainName(std::string_view file, bool key) {
  const std::string_view begin = key ? "key" : "macro";
  constexpr std::size_t kEnd = 4;
  return equalNoCase(file.substr(0, begin.size()), begin) && file.size() > begin.size() + kEnd &&
         isDigits(file.substr(begin.size(), file.size() - begin.size() - kEnd), key ? 2 : 3);
}

CheckedFile unreadable(const std::string& path, const Failure& why, const MacroCheck& check) {
  if (check.off().contains(kUnreadable)) return {path, {}, {}};
  return {path, {}, {finding(kUnreadable, {Saying::kPlain, {why.text}})}, {}, why};
}

CheckedFile checkMacro(const std::string& path, const Expected<Macro>& macro, MacroCheck& check) {
  if (!macro) return unreadable(path, macro.failure(), check);
  return {path, macro->name().value_or(""), check.check(*macro), macro->check()};
}

}  // namespace

CheckedFile checkFile(const SiteRoot& root, const std::string& path, MacroCheck& check) {
  return checkBytes(path, readFile(root, path), check);
}

CheckedFile checkBytes(const std::string& path, Expected<std::string> bytes, MacroCheck& check) {
  if (!bytes) return unreadable(path, bytes.failure(), check);
  if (!endsWithNoCase(path, kKeyEnd)) return checkMacro(path, Macro::read(*std::move(bytes)), check);
  KeyFile keys;
  keys.parse(*bytes);
  return {path, keys.name(), check.check(keys)};
}

CheckedFile FolderCheck::next(const std::string& path, Expected<std::string> bytes) {
  CheckedFile checked = checkBytes(path, std::move(bytes), check_);
  const bool key = endsWithNoCase(path, kKeyEnd);
  const std::string file(fileNameOf(path));
  Findings own;
  if (!hasPlainName(file, key) && !check_.off().contains(kFileName))
    own.push_back(finding(kFileName, {Saying::kNoNumberedName}, key ? "key07.upk" : "macro007.mac"));
  if (!key && !checked.name.empty()) {
    const auto [first, fresh] = names_.emplace(checked.name, file);
    if (!fresh && !check_.off().contains(kNameTwice))
      own.push_back(finding(kNameTwice, {Saying::kSameName, {first->second}}));
  }
  checked.findings.insert(checked.findings.begin(), own.begin(), own.end());
  return checked;
}

void checkFolder(const SiteRoot& root, const MacroFolder& folder, MacroCheck& check,
                 const std::function<void(CheckedFile)>& take) {
  FolderCheck files(check);
  for (const std::string& path : folder.files) take(files.next(path, readFile(root, path)));
}

}  // namespace tessaly
