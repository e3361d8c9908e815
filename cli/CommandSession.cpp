#include "cli/CommandSession.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"

namespace tessaly {

void StreamMessages::show(const std::string& text, MessageIcon) {
  ++count_;
  stream_ << outputText(text) << '\n';
}

bool StreamMessages::ask(const std::string& text, MessageIcon icon) {
  show(text, icon);
  return false;
}

CommandSession::CommandSession(SiteRoot root, std::ostream& out, std::ostream& errors)
    : root_(std::move(root)),
      out_(out),
      errors_(errors),
      messages_(errors),
      decodingLists_(root_),
      history_(root_, limits()) {}

MacroHistory::Limits CommandSession::limits() {
  MacroHistory::Limits limits;
  limits.patience = kPatience;
  return limits;
}

const FunctionDictionary& CommandSession::dictionary() {
  if (!dictionary_) {
    dictionary_ = std::make_unique<FunctionDictionary>();
    loadFunctionDictionary(root_, *dictionary_, [this](const std::string& text) {
      dictionaryWhole_ = false;
      errors_ << outputText(text) << '\n';
    });
  }
  return *dictionary_;
}

std::string CommandSession::target(const std::string& file, MacroChange change) {
  std::string path = sitePathOf(file);
  const FileChange& begun = changes_.emplace_back(history_.begin(path, change));
  if (begun.locked) return path;
  messages_.show(path + ' ' + begun.locked.failure().text, MessageIcon::kExclamation);
  return {};
}

void CommandSession::line(std::string_view bytes) { out_ << outputText(bytes) << '\n'; }

void CommandSession::field(std::string_view name, std::string_view bytes) {
  out_ << name << ':';
  if (!bytes.empty()) out_ << ' ' << outputText(bytes);
  out_ << '\n';
}

int CommandSession::failed(const std::string& reason) {
  if (messages_.count() == 0) errors_ << outputText(reason) << '\n';
  return kExitFailed;
}

int CommandSession::wrongUsage(const std::string& reason) {
  errors_ << outputText(reason) << '\n';
  return kExitWrongUsage;
}

std::string sitePathOf(const std::string& file) {
  const bool drive =
      file.size() >= 2 && file[1] == ':' && std::isalpha(static_cast<unsigned char>(file[0])) != 0;
  if (drive || file.empty() || file.front() == '/') return file;
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(file, error);
  const std::filesystem::path plain = std::filesystem::weakly_canonical(whole, error);
  return error ? whole.string() : plain.string();
}

std::string outputText(std::string_view bytes) {
  std::string text = displayUtf8(bytes);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return text;
}

}  // namespace tessaly
