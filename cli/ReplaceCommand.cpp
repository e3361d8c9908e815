#include "cli/ReplaceCommand.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "cli/BatchRows.h"
#include "cli/Commands.h"
#include "cli/FindingOutput.h"
#include "cli/PanelShelves.h"
#include "cli/PrintJson.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/MacroFiles.h"
#include "review/RetargetedMacro.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;  // of what --json prints (docs/replace.schema.json)

// "007 - Name" on a panel.
std::string shownPlace(const RetargetedMacro& macro) {
  if (!BatchPlaces::onPanel(macro.place)) return outputName(macro.place.file);
  return macro.place.number + " - " + outputName(macro.macro.name().value_or(""));
}

// The macros that a rule is about, each once however often its path was given.
class Replacing {
 public:
  Replacing(CommandSession& session, MacroRetarget& retarget) : session_(session), retarget_(retarget) {}

  void look(const std::string& word) {
    const std::string path = sitePathOf(word);
    if (!isFolder(session_.root(), path)) return lookAt(path);
    for (const MacroFolder& folder : macroFoldersUnder(session_.root(), path))
      for (const std::string& file : folder.files)
        if (!isKeyFile(file)) lookAt(file);
  }

  // Those with these numbers, or all that are there.
  void lookAt(MacroShelf& shelf, const std::set<int>& numbers) {
    for (const int value : numbers)
      if (const auto number = MacroNumber::of(value)) lookAt(shelf, *number, false);
    if (!numbers.empty()) return;
    const auto held = shelf.list();
    if (!held) return trouble(shelf.title() + ':', held.failure());
    for (const MacroShelf::Held& macro : *held) lookAt(shelf, macro.number, macro.name.empty());
  }

  // All or none; the reason is told when it is none.
  void write(const std::string& title) {
    std::vector<BatchItem> items = this->items();
    if (items.empty()) return;
    BatchPlaces places(session_.root(), session_.history());
    MacroBatch batch(places, title, MacroChange::kEdit, MacroBatch::Mode::kAllOrNone, std::move(items));
    const auto replaced = replacedBy(batch);
    if (!replaced) {
      session_.warn(replaced.failure().text);
      whole_ = false;
      return;
    }
    written_ = !replaced->failed;
    tellRows(batch, replaced->failed);
  }

  // Each macro for itself; prints what became of it unless that is to be asked for. An exit code.
  int write(const std::string& title, PanelShelves& panel, bool quiet) {
    std::vector<BatchItem> items = this->items();
    if (items.empty()) return kExitFailed;
    BatchPlaces places(session_.root(), session_.history(),
                       [&panel](const MacroPlace& to) { return panel.shelf(to.workplace); });
    MacroBatch batch(places, title, MacroChange::kEdit, MacroBatch::Mode::kAsManyAsGo, std::move(items));
    const auto take = [this](std::size_t index, const std::string& state) {
      results_[changed_[index]->place.number] = state;
    };
    const int code = runBatch(
        session_, batch, "replaced", [this](std::size_t index) { return shownPlace(*changed_[index]); },
        quiet ? take : std::function<void(std::size_t, const std::string&)>());
    written_ = code == kExitDone;
    return code;
  }

  [[nodiscard]] bool whole() const { return whole_; }  // nothing went wrong so far
  [[nodiscard]] bool written() const { return written_; }
  [[nodiscard]] std::size_t possible() const {
    std::size_t count = 0;
    for (const RetargetedMacro& macro : macros_) count += macro.tickedCount();
    return count;
  }
  [[nodiscard]] std::size_t impossible() const {
    std::size_t count = 0;
    for (const RetargetedMacro& macro : macros_) count += macro.proposals.size();
    return count - possible();
  }
  [[nodiscard]] const std::vector<RetargetedMacro>& macros() const { return macros_; }
  // What became of it on a panel; empty when nothing was to be written.
  [[nodiscard]] std::string resultOf(const RetargetedMacro& macro) const {
    const auto known = results_.find(macro.place.number);
    return known == results_.end() ? std::string() : known->second;
  }

 private:
  void trouble(const std::string& path, const Failure& failure) {
    session_.warn(path + ' ' + failure.text);
    whole_ = false;
  }

  // What is to be written; nothing when a macro cannot be changed, which is told.
  std::vector<BatchItem> items() {
    std::vector<BatchItem> items;
    changed_.clear();
    for (const RetargetedMacro& macro : macros_) {
      if (macro.tickedCount() == 0) continue;
      auto item = macro.item();
      if (!item) {
        trouble(placeInWords(macro.place), item.failure());
        return {};
      }
      items.push_back(*std::move(item));
      changed_.push_back(&macro);
    }
    return items;
  }

  void lookAt(const std::string& path) {
    if (!seen_.insert(session_.root().resolve(path).string()).second) return;
    if (isKeyFile(path))
      return trouble(path, {Failure::Kind::kNoMacro, "is a key file: only macros are changed"});
    propose({path, {}, 0, {}}, readMacro(session_.root(), path));
  }

  void lookAt(MacroShelf& shelf, MacroNumber number, bool mayBeNone) {
    auto bytes = shelf.read(number);
    if (mayBeNone && !bytes && bytes.failure().kind == Failure::Kind::kMissing) return;
    propose(shelf.place(number), bytes ? Macro::read(*std::move(bytes)) : Expected<Macro>(bytes.failure()));
  }

  void propose(MacroPlace place, Expected<Macro> macro) {
    if (!macro) return trouble(placeInWords(place), macro.failure());
    RetargetProposals proposals = retarget_.propose(*macro);
    if (proposals.empty()) return;
    macros_.emplace_back(std::move(place), *std::move(macro), std::move(proposals));
  }

  // Why it is none says the row that failed; beside it a file is told that could not be put back.
  void tellRows(const MacroBatch& batch, std::optional<std::size_t> failed) {
    for (std::size_t i = 0; i < batch.rows().size(); ++i) {
      const MacroBatch::Row& row = batch.rows()[i];
      if (unflushed(row)) trouble(batch.items()[i].place.file, row.why);
      const bool asBefore = row.state == MacroBatch::Row::State::kAsBefore;
      if (failed && (i == *failed || !asBefore)) trouble(batch.items()[i].place.file, row.why);
    }
  }

  CommandSession& session_;
  MacroRetarget& retarget_;
  std::vector<RetargetedMacro> macros_;
  std::vector<const RetargetedMacro*> changed_;  // in the order of the batch
  std::map<std::string, std::string> results_;   // by the numbers
  std::set<std::string> seen_;
  bool whole_ = true, written_ = false;
};

void printProposal(CommandSession& session, const std::string& place, const RetargetProposal& proposal) {
  const std::string begin = place + '\t' + std::to_string(proposal.command) + '\t';
  session.line(begin + "-\t" + proposal.before);
  if (!proposal.possible()) return session.line(begin + "!\t" + proposal.reason);
  session.line(begin + "+\t" + proposal.after);
  for (const auto& [word, findings] :
       {std::pair("makes\t", &proposal.made), std::pair("mends\t", &proposal.mended)})
    for (const Finding& finding : *findings)
      session.line(begin + word + std::to_string(finding.command) + '\t' + findingColumns(finding));
}

Json jsonOf(const RetargetProposal& proposal) {
  const auto text = [](const std::string& value) {
    return value.empty() ? Json() : Json(displayUtf8(value));
  };
  const auto list = [](const Findings& findings) {
    Json all = Json::array();
    for (const Finding& finding : findings) all.push_back(findingJson(finding));
    return all;
  };
  return {{"command", proposal.command},   {"before", displayUtf8(proposal.before)},
          {"after", text(proposal.after)}, {"reason", text(proposal.reason)},
          {"makes", list(proposal.made)},  {"mends", list(proposal.mended)}};
}

void printProposals(CommandSession& session, const Replacing& replacing) {
  for (const RetargetedMacro& macro : replacing.macros())
    for (const RetargetProposal& proposal : macro.proposals)
      printProposal(session, shownPlace(macro), proposal);
}

void printCounts(CommandSession& session, const Replacing& replacing) {
  session.line("#\tcommands: " + std::to_string(replacing.possible()) + ", that cannot be changed: " +
               std::to_string(replacing.impossible()) + ", written: " + (replacing.written() ? "yes" : "no"));
}

void printJson(CommandSession& session, const Replacing& replacing, const RetargetRule& rule) {
  Json macros = Json::array();
  for (const RetargetedMacro& macro : replacing.macros()) {
    Json commands = Json::array();
    for (const RetargetProposal& proposal : macro.proposals) commands.push_back(jsonOf(proposal));
    macros.push_back({{"path", displayUtf8(placeInWords(macro.place))},
                      {"name", displayUtf8(macro.macro.name().value_or(""))},
                      {"commands", std::move(commands)}});
    if (const std::string result = replacing.resultOf(macro); !result.empty())
      macros.back()["result"] = displayUtf8(result);
  }
  tessaly::printJson(session, {{"schema", kSchema},
                               {"rule", rule.text()},
                               {"possible", replacing.possible()},
                               {"impossible", replacing.impossible()},
                               {"written", replacing.written()},
                               {"macros", std::move(macros)}});
}

// Nothing after telling why.
std::optional<MacroRetarget> retargetOf(CommandSession& session, const Expected<RetargetRule>& rule) {
  if (!rule) {
    static_cast<void>(session.wrongUsage(rule.failure().text));
    return std::nullopt;
  }
  auto retarget = MacroRetarget::make(*rule, checkContextOf(session));
  if (retarget) return *std::move(retarget);
  static_cast<void>(session.wrongUsage(retarget.failure().text));
  return std::nullopt;
}

// Of what was found, and whether it could all be changed.
int exitCodeOf(const Replacing& replacing, bool known) {
  const bool done = known && replacing.whole() && replacing.impossible() == 0 && replacing.possible() > 0;
  return done ? kExitDone : kExitFailed;
}

}  // namespace

int runReplace(CommandSession& session, Arguments& arguments) {
  constexpr std::size_t kMostPaths = 100'000;
  const bool json = arguments.flag("--json"), dryRun = arguments.flag("--dry-run");
  if (!arguments.complete(2, kMostPaths)) return session.wrongUsage(arguments.problem());
  const auto rule = RetargetRule::parse(arguments[0]);
  auto retarget = retargetOf(session, rule);
  if (!retarget) return kExitWrongUsage;
  for (std::size_t i = 1; i < arguments.size(); ++i)
    if (arguments[i] == "-") return session.wrongUsage("a stream cannot be replaced in");
  Replacing replacing(session, *retarget);
  for (std::size_t i = 1; i < arguments.size(); ++i) replacing.look(arguments[i]);
  const bool known = replacing.whole() && session.dictionaryWhole();
  if (known && !dryRun) replacing.write("replace " + rule->text());
  if (json) {
    printJson(session, replacing, *rule);
  } else {
    printProposals(session, replacing);
    printCounts(session, replacing);
  }
  return exitCodeOf(replacing, known);
}

int replaceOnPanel(CommandSession& session, const PanelPlace& place, int workplace,
                   const PanelReplacement& how) {
  const auto rule = RetargetRule::parse(how.rule);
  auto retarget = retargetOf(session, rule);
  if (!retarget) return kExitWrongUsage;
  PanelShelves panel(session.root(), session.history(), place);
  MacroShelf* const shelf = panel.shelf(workplace);
  if (shelf == nullptr) return session.failed("cannot connect to the panel at " + place.control());
  Replacing replacing(session, *retarget);
  replacing.lookAt(*shelf, how.numbers);
  const bool known = replacing.whole() && session.dictionaryWhole();
  if (!how.json) printProposals(session, replacing);
  const int sent =
      known && !how.dryRun ? replacing.write("replace " + rule->text(), panel, how.json) : kExitDone;
  how.json ? printJson(session, replacing, *rule) : printCounts(session, replacing);
  return std::max(sent, exitCodeOf(replacing, known));
}

}  // namespace tessaly
