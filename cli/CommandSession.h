#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "classic/DecodingList.h"
#include "dictionary/FunctionDictionary.h"
#include "model/MacroHistory.h"
#include "platform/SiteAccess.h"

namespace tessaly {

// Exit codes of the program.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;      // the reason is on the error stream
inline constexpr int kExitWrongUsage = 2;  // so is the usage

// Prints what the model reports, one line each; nobody can be asked, so every question is answered with no.
class StreamMessages : public Messages {
 public:
  explicit StreamMessages(std::ostream& stream) : stream_(stream) {}
  void show(const std::string& text, MessageIcon icon = MessageIcon::kExclamation) override;
  [[nodiscard]] bool ask(const std::string& text, MessageIcon icon = MessageIcon::kQuestion) override;
  [[nodiscard]] std::size_t count() const { return count_; }

 private:
  std::ostream& stream_;
  std::size_t count_ = 0;
};

// One run of the program: the site, where output goes, and what is loaded on first use. One thread.
class CommandSession {
 public:
  CommandSession(SiteRoot root, std::ostream& out, std::ostream& errors);

  [[nodiscard]] const SiteRoot& root() const { return root_; }
  [[nodiscard]] SiteAccess site() { return {root_, messages_}; }
  [[nodiscard]] DecodingLists& decodingLists() { return decodingLists_; }
  // Where a macro goes before a command overwrites or deletes it.
  [[nodiscard]] MacroHistory& history() { return history_; }
  // The site path of a FILE that the command is about to overwrite, whose content is kept first. It is this
  // program's alone from then on; an empty path, and a word, when another program does not let it go.
  [[nodiscard]] std::string target(const std::string& file, MacroChange change);

  // Read on first use; files that cannot be parsed are then named on the error stream.
  [[nodiscard]] const FunctionDictionary& dictionary();
  // False when a file could not be parsed.
  [[nodiscard]] bool dictionaryWhole() const { return dictionaryWhole_; }

  // One line of output, as UTF-8; line breaks inside become blanks, so that a row stays a line.
  void line(std::string_view bytes);
  // "name: text", or "name:" without a text.
  void field(std::string_view name, std::string_view bytes);
  [[nodiscard]] std::ostream& out() { return out_; }

  // Prints `reason`, unless the model has reported one; kExitFailed.
  int failed(const std::string& reason);
  // Prints `reason`; kExitWrongUsage. The command table adds the usage.
  int wrongUsage(const std::string& reason);

 private:
  static constexpr std::chrono::seconds kPatience{30};  // with other programs
  static MacroHistory::Limits limits();

  SiteRoot root_;
  std::ostream& out_;
  std::ostream& errors_;
  StreamMessages messages_;
  DecodingLists decodingLists_;
  MacroHistory history_;
  std::vector<FileChange> changes_;
  std::unique_ptr<FunctionDictionary> dictionary_;
  bool dictionaryWhole_ = true;
};

// A file given as a host path or, with a drive letter, as a site path: what the model is to be called with.
[[nodiscard]] std::string sitePathOf(const std::string& file);

// What a line of output shows for bytes of unknown origin.
[[nodiscard]] std::string outputText(std::string_view bytes);

}  // namespace tessaly
