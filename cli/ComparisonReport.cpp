#include "cli/ComparisonReport.h"

#include <map>
#include <nlohmann/json.hpp>

#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/DiskShelf.h"

namespace tessaly {
namespace {

using State = WorkplaceRow::State;

// A comparison on its way out.
class Report {
 public:
  Report(CommandSession& session, ComparedSides sides, bool json)
      : session_(session), sides_(sides), json_(json) {}

  void add(const WorkplaceRow& row) {
    ++counts_[row.state];
    if (row.state == State::kSame) return;
    if (json_) {
      rows_.push_back({{"number", row.number.text()},
                       {"state", stateName(row.state)},
                       {sides_.left, displayUtf8(row.left)},
                       {sides_.right, displayUtf8(row.right)},
                       {"reason", displayUtf8(row.trouble)}});
      return;
    }
    std::string line = row.number.text() + '\t' + stateName(row.state) + '\t' + outputName(row.left) + '\t' +
                       outputName(row.right);
    if (!row.trouble.empty()) line += '\t' + outputName(row.trouble);
    session_.line(line);
  }

  int end() {
    const int same = counts_[State::kSame];
    int all = 0;
    for (const auto& [state, count] : counts_) all += count;
    if (json_) {
      printJson(session_, {{"same", same == all}, {"sameCount", same}, {"rows", rows_}});
    } else if (same != all) {
      session_.line("#\tsame: " + std::to_string(same) + ", not the same: " + std::to_string(all - same));
    }
    if (counts_[State::kUnreadable] > 0) return kExitTrouble;
    return same == all ? kExitDone : kExitDifferent;
  }

 private:
  [[nodiscard]] std::string stateName(State state) const {
    switch (state) {
      case State::kSame:
        return "same";
      case State::kRenamed:
        return "renamed";
      case State::kDifferent:
        return "different";
      case State::kOnlyLeft:
        return std::string("only-") + sides_.left;
      case State::kOnlyRight:
        return std::string("only-") + sides_.right;
      case State::kUnreadable:
        return "unreadable";
    }
    return {};
  }

  CommandSession& session_;
  ComparedSides sides_;
  bool json_;
  std::map<State, int> counts_;
  nlohmann::ordered_json rows_ = nlohmann::ordered_json::array();
};

}  // namespace

int printComparison(CommandSession& session, MacroShelf& left, MacroShelf& right, ComparedSides sides,
                    bool json) {
  Report report(session, sides, json);
  WorkplaceComparison comparison(left, right);
  const Outcome compared = comparison.run([&](const WorkplaceRow& row, std::size_t) { report.add(row); });
  if (compared) return report.end();
  static_cast<void>(session.failed(compared.failure().text));
  return kExitTrouble;
}

int runCompare(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  const std::string a = sitePathOf(arguments[0]), b = sitePathOf(arguments[1]);
  for (const std::string& folder : {a, b}) {
    if (isFolder(session.root(), folder)) continue;
    static_cast<void>(session.failed(folder + " is no folder"));
    return kExitTrouble;
  }
  DiskShelf left(session.root(), session.history(), a), right(session.root(), session.history(), b);
  return printComparison(session, left, right, {"a", "b"}, json);
}

}  // namespace tessaly
