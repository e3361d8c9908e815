#include <algorithm>
#include <set>
#include <utility>

#include "cli/BatchRows.h"
#include "cli/Commands.h"
#include "cli/FindingOutput.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/MacroFiles.h"
#include "review/RetargetedMacro.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;  // of what --json prints (docs/replace.schema.json)

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

  // All or none; the reason is told when it is none.
  void write(const std::string& title) {
    std::vector<BatchItem> items;
    for (const RetargetedMacro& macro : macros_) {
      if (macro.tickedCount() == 0) continue;
      auto item = macro.item();
      if (!item) return trouble(macro.place.file, item.failure());
      items.push_back(*std::move(item));
    }
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

 private:
  void trouble(const std::string& path, const Failure& failure) {
    session_.warn(path + ' ' + failure.text);
    whole_ = false;
  }

  void lookAt(const std::string& path) {
    if (!seen_.insert(session_.root().resolve(path).string()).second) return;
    if (isKeyFile(path))
      return trouble(path, {Failure::Kind::kNoMacro, "is a key file: only macros are changed"});
    auto macro = readMacro(session_.root(), path);
    if (!macro) return trouble(path, macro.failure());
    RetargetProposals proposals = retarget_.propose(*macro);
    if (proposals.empty()) return;
    macros_.emplace_back(MacroPlace{path, {}, 0, {}}, *std::move(macro), std::move(proposals));
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
  std::set<std::string> seen_;
  bool whole_ = true, written_ = false;
};

void printProposal(CommandSession& session, const std::string& path, const RetargetProposal& proposal) {
  const std::string begin = outputName(path) + '\t' + std::to_string(proposal.command) + '\t';
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

void printText(CommandSession& session, const Replacing& replacing) {
  for (const RetargetedMacro& macro : replacing.macros())
    for (const RetargetProposal& proposal : macro.proposals)
      printProposal(session, macro.place.file, proposal);
  session.line("#\tcommands: " + std::to_string(replacing.possible()) + ", that cannot be changed: " +
               std::to_string(replacing.impossible()) + ", written: " + (replacing.written() ? "yes" : "no"));
}

void printJson(CommandSession& session, const Replacing& replacing, const RetargetRule& rule) {
  Json macros = Json::array();
  for (const RetargetedMacro& macro : replacing.macros()) {
    Json commands = Json::array();
    for (const RetargetProposal& proposal : macro.proposals) commands.push_back(jsonOf(proposal));
    macros.push_back({{"path", displayUtf8(macro.place.file)},
                      {"name", displayUtf8(macro.macro.name().value_or(""))},
                      {"commands", std::move(commands)}});
  }
  session.out() << Json{{"schema", kSchema},
                        {"rule", rule.text()},
                        {"possible", replacing.possible()},
                        {"impossible", replacing.impossible()},
                        {"written", replacing.written()},
                        {"macros", std::move(macros)}}
                       .dump(2)
                << '\n';
}

}  // namespace

int runReplace(CommandSession& session, Arguments& arguments) {
  constexpr std::size_t kMostPaths = 100'000;
  const bool json = arguments.flag("--json"), dryRun = arguments.flag("--dry-run");
  if (!arguments.complete(2, kMostPaths)) return session.wrongUsage(arguments.problem());
  const auto rule = RetargetRule::parse(arguments[0]);
  if (!rule) return session.wrongUsage(rule.failure().text);
  auto retarget = MacroRetarget::make(*rule, checkContextOf(session));
  if (!retarget) return session.wrongUsage(retarget.failure().text);
  for (std::size_t i = 1; i < arguments.size(); ++i)
    if (arguments[i] == "-") return session.wrongUsage("a stream cannot be replaced in");
  Replacing replacing(session, *retarget);
  for (std::size_t i = 1; i < arguments.size(); ++i) replacing.look(arguments[i]);
  const bool known = replacing.whole() && session.dictionaryWhole();
  if (known && !dryRun) replacing.write("replace " + rule->text());
  json ? printJson(session, replacing, *rule) : printText(session, replacing);
  const bool done = known && replacing.whole() && replacing.impossible() == 0 && replacing.possible() > 0;
  return done ? kExitDone : kExitFailed;
}

}  // namespace tessaly
