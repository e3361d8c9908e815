#include "review/FolderCheck.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using enum CheckRule;

constexpr std::string_view kKeyEnd = ".upk";

Finding finding(CheckRule rule, std::string wrong, std::string right = {}) {
  return {
      .rule = rule, .severity = infoOf(rule).severity, .wrong = std::move(wrong), .right = std::move(right)};
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
  return {path, {}, {finding(kUnreadable, why.text)}};
}

CheckedFile checkKeys(const SiteRoot& root, const std::string& path, MacroCheck& check) {
  const auto bytes = readFile(root, path);
  if (!bytes) return unreadable(path, bytes.failure(), check);
  KeyFile keys;
  keys.parse(*bytes);
  return {path, keys.name(), check.check(keys)};
}

CheckedFile checkMacro(const SiteRoot& root, const std::string& path, MacroCheck& check) {
  const auto macro = readMacro(root, path);
  if (!macro) return unreadable(path, macro.failure(), check);
  return {path, macro->name().value_or(""), check.check(*macro)};
}

}  // namespace

CheckedFile checkFile(const SiteRoot& root, const std::string& path, MacroCheck& check) {
  return endsWithNoCase(path, kKeyEnd) ? checkKeys(root, path, check) : checkMacro(root, path, check);
}

void checkFolder(const SiteRoot& root, const MacroFolder& folder, MacroCheck& check,
                 const std::function<void(CheckedFile)>& take) {
  std::unordered_map<std::string, std::string> names;  // and the first file of that name
  for (const std::string& path : folder.files) {
    CheckedFile checked = checkFile(root, path, check);
    const bool key = endsWithNoCase(path, kKeyEnd);
    const std::string file(fileNameOf(path));
    Findings own;
    if (!hasPlainName(file, key) && !check.off().contains(kFileName))
      own.push_back(
          finding(kFileName, "the file is not named by its number", key ? "key07.upk" : "macro007.mac"));
    if (!key && !checked.name.empty()) {
      const auto [first, fresh] = names.emplace(checked.name, file);
      if (!fresh && !check.off().contains(kNameTwice))
        own.push_back(finding(kNameTwice, first->second + " has the same name"));
    }
    checked.findings.insert(checked.findings.begin(), own.begin(), own.end());
    take(std::move(checked));
  }
}

}  // namespace tessaly
