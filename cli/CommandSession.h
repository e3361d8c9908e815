#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "classic/DecodingList.h"
#include "cli/FileOperand.h"
#include "dictionary/FunctionDictionary.h"
#include "model/MacroHistory.h"
#include "platform/SiteAccess.h"
#include "review/BatchPlaces.h"

namespace tessaly {

// Exit codes of the program.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;      // the reason is on the error stream, or the answer is no
inline constexpr int kExitWrongUsage = 2;  // so is the usage
inline constexpr int kExitUnknown = 3;     // something was sent to a panel, and what it holds now is unknown
// Those of a comparison.
inline constexpr int kExitDifferent = 1;
inline constexpr int kExitTrouble = 2;  // one of the two cannot be read; the reason is on the error stream

// Prints what the model reports, one line each; nobody can be asked, so every question is answered with no.
class StreamMessages : public Messages {
 public:
  explicit StreamMessages(std::ostream& stream) : stream_(stream) {}
  void show(const std::string& text, MessageIcon icon = MessageIcon::kExclamation) override;
  [[nodiscard]] bool ask(const std::string& text, MessageIcon icon = MessageIcon::kQuestion) override;
  [[nodiscard]] std::size_t count() const { return count_; }  // of what the model has reported

  // What is printed calls this path `name` from now on.
  void call(const std::string& path, const std::string& name) { names_.emplace_back(path, name); }
  void print(std::string text);

 private:
  std::ostream& stream_;
  std::size_t count_ = 0;
  std::vector<std::pair<std::string, std::string>> names_;
};

// One run of the program: the site, where output goes, and what is loaded on first use. One thread.
class CommandSession {
 public:
  using Work = std::function<Outcome(const std::string& path)>;

  CommandSession(SiteRoot root, const ProgramStreams& streams);

  [[nodiscard]] const SiteRoot& root() const { return root_; }
  [[nodiscard]] SiteAccess site() { return {root_, messages_, beforeChange_}; }
  // In what is printed the path is called `name` from now on.
  void call(const std::string& path, const std::string& name) { messages_.call(path, name); }
  [[nodiscard]] DecodingLists& decodingLists() { return decodingLists_; }
  // Where a macro goes before a command overwrites or deletes it.
  [[nodiscard]] MacroHistory& history() { return history_; }

  // Ends or undoes the batches that a program has not lived to end, as far as their places are within reach;
  // says so on the error stream, a line each.
  void recoverBatches(const BatchPlaces::PanelShelves& panels = {});
  // What then waits for a panel, in words.
  [[nodiscard]] const std::vector<std::string>& waitingBatches() const { return waitingBatches_; }

  // Runs `work` on a FILE that is only read.
  int readFrom(const std::string& word, const std::function<int(const FileOperand& file)>& work);
  // Runs `work` on a FILE that it changes or writes, and that nobody else changes meanwhile; one that another
  // program does not let go is a failure. What the file holds is kept before, unless `check` refuses, or what
  // `work` changes by way of `site` stays as it is; the text of a failure is printed. A stream takes what
  // `work` has done only when it succeeded.
  int writeTo(const std::string& word, FileUse use, MacroChange change, const Work& work,
              const Work& check = {});

  // Read on first use; files that cannot be parsed are then named on the error stream.
  [[nodiscard]] const FunctionDictionary& dictionary();
  // False when a file could not be parsed.
  [[nodiscard]] bool dictionaryWhole() const { return dictionaryWhole_; }

  // One line of output, as UTF-8.
  void line(std::string_view bytes);
  // "name: text", or "name:" without a text.
  void field(std::string_view name, std::string_view bytes);
  [[nodiscard]] std::ostream& out() { return streams_.out; }
  [[nodiscard]] const ProgramStreams& streams() const { return streams_; }

  // A line on the error stream about work that is done, but not as it should be: the exit code tells.
  void warn(const std::string& text);
  // Prints `reason`, unless the model has reported one; kExitFailed.
  int failed(const std::string& reason);
  // Prints `reason`; kExitWrongUsage. The command table adds the usage.
  int wrongUsage(const std::string& reason);
  [[nodiscard]] bool usageIsWrong() const { return usageIsWrong_; }

 private:
  static constexpr std::chrono::seconds kPatience{30};  // with other programs
  static MacroHistory::Limits limits();

  int cannotOpen(const std::string& word, const Failure& failure);

  SiteRoot root_;
  ProgramStreams streams_;
  StreamMessages messages_;
  DecodingLists decodingLists_;
  MacroHistory history_;
  std::function<void()> beforeChange_;  // of the work under way
  std::unique_ptr<FunctionDictionary> dictionary_;
  std::vector<std::string> waitingBatches_;
  bool dictionaryWhole_ = true;
  bool warned_ = false;
  bool usageIsWrong_ = false;
};

// What a line of output shows for bytes of unknown origin: UTF-8, a line break as a blank, so that a row
// stays a line, and whatever else would steer a terminal or turn the line around spelled out ("\x1b",
// "\u202e"). A tab stays: it parts the columns.
[[nodiscard]] std::string outputText(std::string_view bytes);

// As outputText for one name in a line, where a tab and a line break are no part of the line either ("\t",
// "\n").
[[nodiscard]] std::string outputName(std::string_view bytes);

}  // namespace tessaly
