#include "cli/PanelUpdate.h"

#include <map>
#include <numeric>

#include "cli/CommandSession.h"
#include "model/MacroFile.h"
#include "review/ValueQuestion.h"

namespace tessaly {
namespace {

constexpr std::chrono::milliseconds kAnswer{3000};  // without a value for so long, no further one comes

// Fills the commands of one macro.
class Update {
 public:
  Update(CommandSession& session, PanelLine& line) : session_(session), line_(line) {}

  Expected<Macro> apply(const Macro& macro, const std::vector<int>& numbers) {
    survey(macro, numbers);
    for (const auto& [name, present] : values_) line_.subscribe(name);
    for (std::size_t missing = values_.size(); missing > 0;) {
      const auto value = line_.next(kAnswer);
      if (!value) break;
      const auto asked = values_.find(value->name);
      if (asked == values_.end()) continue;
      if (!asked->second) --missing;
      asked->second = value->text;
    }
    if (!line_.connected()) return Failure{Failure::Kind::kPanel, "lost the panel on the way"};
    const SetValues values = taken(macro);
    return values.values.empty() ? macro : tessaly::apply(macro, values);
  }

  void tell(bool counted) const {
    if (counted)
      session_.line(std::to_string(updated_) + " of " + std::to_string(asking_.size()) + " commands updated");
    for (const auto& [name, value] : values_)
      if (!value) session_.warn("the panel sent no value for " + outputName(name));
  }

 private:
  void survey(const Macro& macro, const std::vector<int>& numbers) {
    for (const int number : numbers) {
      const MacroCommand& command = macro.commands()[static_cast<std::size_t>(number)];
      const std::string name = valueQuestion(command, session_.dictionary()).name;
      if (name.empty()) continue;
      asking_.emplace_back(number, name);
      values_[name] = std::nullopt;
    }
  }

  SetValues taken(const Macro& macro) {
    SetValues values;
    for (const auto& [number, name] : asking_) {
      const auto& value = values_.at(name);
      if (value && macro.takerOfValue(number) >= 0) values.values.emplace_back(number, *value);
    }
    updated_ = values.values.size();
    return values;
  }

  CommandSession& session_;
  PanelLine& line_;
  std::vector<std::pair<int, std::string>> asking_;           // commands, and what they ask for
  std::map<std::string, std::optional<std::string>> values_;  // what has come, by name
  std::size_t updated_ = 0;
};

}  // namespace

int updateFromPanel(CommandSession& session, const PanelPlace& place, const std::string& file,
                    const std::vector<CommandRange>& ranges) {
  return session.writeTo(file, FileUse::kChange, MacroChange::kEdit, [&](const std::string& path) -> Outcome {
    PanelLine line(session.root(), session.history(), place);
    if (!line.open())
      return Failure{Failure::Kind::kPanel, "cannot connect to the panel at " + place.control()};
    Update update(session, line);
    Outcome done = changeMacroFile(session.site(), path, [&](const Macro& macro) -> Expected<Macro> {
      auto numbers = numbersIn(ranges, macro.commands().size());
      if (!numbers) return numbers.failure();
      if (ranges.empty()) {
        numbers->resize(macro.commands().size());
        std::iota(numbers->begin(), numbers->end(), 0);
      }
      return update.apply(macro, *numbers);
    });
    if (done.written()) update.tell(file != "-");  // else the output is the macro
    return told(kNotChanged, std::move(done));
  });
}

}  // namespace tessaly
