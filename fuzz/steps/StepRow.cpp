#include "fuzz/steps/StepRow.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <random>
#include <utility>

#include "model/MacroEdit.h"
#include "model/StepsText.h"

namespace tessaly {
namespace {

const MacroPlace kPlace{"c:\\macros\\macro007.mac", {}, 0, {}};
constexpr const char* kWords[] = {"",   "0.5", "a", "\xFC", "\xE2\x80\x93", "<",   "&",
                                  "\"", " ",   "1", "key",  "\r\n\t ]",     "-->", "0"};
// Between and around the commands of a macro, where no edit may touch it.
constexpr const char* kOddities[] = {
    "",         "\n",         "\r\n  ",  "<!-- a comment -->", "<other a='1'>t</other>",
    "  \t\n\n", "text",       "<cmd/>",  "<?pi x?>",           "<![CDATA[ <cmd/> ]]>",
    "&#xFC;",   "\xFC\xDF\n", "<param/>"};
constexpr const char* kStarts[] = {"",
                                   "<?xml version=\"1.0\"?>\n",
                                   "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>",
                                   "\xEF\xBB\xBF",
                                   "\n\n",
                                   "<!-- first -->"};

// One number's worth of chance.
class Chance {
 public:
  explicit Chance(std::uint32_t number) : random_(number) {}
  std::size_t below(std::size_t bound) { return random_() % bound; }
  int number(int bound) { return static_cast<int>(below(static_cast<std::size_t>(bound))); }
  template <std::size_t Count>
  const char* oneOf(const char* const (&texts)[Count]) {
    return texts[below(Count)];
  }

 private:
  std::minstd_rand random_;
};

std::string someMacro(Chance chance) {
  std::string text =
      chance.oneOf(kStarts) + std::string("<macro name=\"") + chance.oneOf(kWords) + "\"><data>";
  for (std::size_t left = chance.below(7); left > 0; --left) {
    text += chance.oneOf(kOddities) + std::string("<cmd fid='QMF1.K") + std::to_string(chance.below(4)) +
            "' workplace=\"1\" mine='x'>" + chance.oneOf(kOddities);
    if (chance.below(3) > 0) text += "<param name=\"P\" value=\"0.25\" />";
    text += "</cmd>";
  }
  return text + chance.oneOf(kOddities) + "</data></macro>" + chance.oneOf(kOddities);
}

CommandDraft someDraft(Chance& chance) {
  return {std::string("QMF1.") + chance.oneOf(kWords), {{ParameterKind::kFloat, "P", chance.oneOf(kWords)}}};
}

std::vector<int> someNumbers(Chance& chance) {
  std::vector<int> numbers(chance.below(4));
  for (int& number : numbers) number = chance.number(8);
  return numbers;
}

SetTexts::Text someText(Chance& chance) {
  using Part = SetTexts::Part;
  constexpr Part kParts[] = {Part::kFid, Part::kWorkplace, Part::kValue};
  const Part part = kParts[chance.below(std::size(kParts))];
  return {chance.number(7), part, part == Part::kValue ? chance.number(2) : -1, chance.oneOf(kWords)};
}

MacroEdit someEdit(Chance& chance) {
  switch (chance.below(7)) {
    case 0:
      return InsertCommands{{someDraft(chance), someDraft(chance)},
                            1,
                            chance.number(8) - 1,
                            static_cast<InsertMode>(chance.number(3))};
    case 1:
      return RemoveCommands{someNumbers(chance)};
    case 2:
      return MoveCommands{someNumbers(chance), chance.number(9)};
    case 3:
      return ReplaceCommand{chance.number(8), someDraft(chance), 1};
    case 4:
      return SetValues{{{chance.number(8), chance.oneOf(kWords)}, {chance.number(8), chance.oneOf(kWords)}}};
    case 5:
      return SetTexts{{someText(chance), someText(chance)}};
    default:
      return SetMacroName{chance.oneOf(kWords)};
  }
}

// As another program, or a discard, may leave them: no macro at all.
std::string someOtherBytes(Chance& chance, std::string bytes) {
  const std::size_t at = chance.below(bytes.size() + 1);
  bytes.replace(at, chance.below(6), chance.oneOf(kWords));
  return bytes;
}

struct State {
  std::string bytes;
  std::vector<int> selectedBefore, selectedAfter;  // of the step that led here
  std::string name;
};

class Runner {
 public:
  explicit Runner(std::string bytes)
      : row_(contentCheck(bytes)), now_(bytes), model_{{std::move(bytes), {}, {}, {}}} {
    text_ = stepsText(kPlace, row_);
  }

  StepRowResult run(const StepRow& row) {
    for (std::size_t i = 1; i < row.size() && result_.broken.empty(); ++i) act(Chance(row[i]));
    if (result_.broken.empty()) backAndForth();
    return std::move(result_);
  }

 private:
  void act(Chance chance) {
    switch (chance.below(12)) {
      case 6:
      case 7:
        return go("undo", at_ == 0 ? 0 : at_ - 1);
      case 8:
        return go("redo", std::min(at_ + 1, model_.size() - 1));
      case 9:
        return go("jump", chance.below(model_.size()));
      case 10:
        return save();
      case 11:
        return restart(chance);
      case 5:
        return step("other bytes", someOtherBytes(chance, now_), chance);
      default: {
        const auto macro = Macro::read(now_);
        if (!macro) return;
        const auto changed = tessaly::apply(*macro, someEdit(chance));
        if (changed) step("edit", changed->bytes(), chance);
      }
    }
  }

  void step(const char* what, const std::string& after, Chance& chance) {
    if (after == now_) return;
    const State next{after, someNumbers(chance), someNumbers(chance), chance.oneOf(kWords)};
    happen(EditStep{next.name, next.selectedBefore, next.selectedAfter, byteChange(now_, after),
                    contentCheck(after)});
    model_.resize(++at_);
    model_.push_back(next);
    now_ = after;
    ++result_.steps;
    check(what);
  }

  void go(const char* what, std::size_t to) {
    if (to == at_) return;
    const auto bytes = row_.bytesAt(to, now_);
    const std::vector<int> selected = row_.selectedAt(to);
    const std::vector<int>& wanted = to < at_ ? model_[to + 1].selectedBefore : model_[to].selectedAfter;
    if (selected != wanted) result_.broken = "the selection is that of the step";
    if (bytes != model_[to].bytes) result_.broken = "a position gives its bytes";
    happen(StepsMove{static_cast<int>(to) - static_cast<int>(at_)});
    at_ = to;
    now_ = model_[to].bytes;
    check(what);
  }

  void save() {
    saved_ = now_;
    happen(StepsSaved{contentCheck(now_)});
    check("save");
  }

  // The program begins anew, perhaps with the last record torn off, and always with what was held then.
  void restart(Chance& chance) {
    auto head = readStepsHead(text_);
    auto* found = std::get_if<StepsHead>(&head);
    const bool torn = lastRecord_ > 0 && chance.below(2) == 0;
    const std::size_t size = text_.size() - (torn ? 1 + chance.below(lastRecord_) : 0);
    auto read = found == nullptr ? std::nullopt
                                 : readSteps(std::move(*found), std::string_view(text_).substr(0, size),
                                             contentCheck(torn ? before_ : now_));
    if (!read) {
      result_.broken = torn ? "a torn record loses the last change only" : "a start finds the row";
    } else if (!torn) {
      if (stepsText(kPlace, read->row) != stepsText(kPlace, row_))
        result_.broken = "a start finds the same row";
      row_ = std::move(read->row);
      if (chance.below(2) == 0) text_ = stepsText(kPlace, row_);
      lastRecord_ = 0;
    }
    check(torn ? "torn start" : "start");
  }

  void happen(StepsChange change) {
    if (!fits(row_, change)) result_.broken = "what happens fits";
    before_ = now_;
    const std::string record = stepsRecord(change);
    lastRecord_ = record.size();
    text_ += record;
    make(row_, std::move(change));
  }

  void check(const char* what) {
    result_.done.emplace_back(what);
    if (!result_.broken.empty()) return;
    if (row_.position() != at_ || row_.size() + 1 != model_.size())
      result_.broken = "the position is the model's";
    for (std::size_t position = 0; position < model_.size() && result_.broken.empty(); ++position) {
      if (row_.savedAt(position) != (saved_ == model_[position].bytes))
        result_.broken = "the saved ones are marked";
      if (position > 0 && row_.step(position - 1).name != model_[position].name)
        result_.broken = "a step has its name";
    }
  }

  void backAndForth() {
    while (at_ > 0) go("undo", at_ - 1);
    while (at_ + 1 < model_.size()) go("redo", at_ + 1);
    go("jump", 0);
    if (result_.broken.empty() && now_ != model_.front().bytes)
      result_.broken = "undo all gives the first bytes";
  }

  EditHistory row_;
  std::string text_;            // of its file
  std::size_t lastRecord_ = 0;  // bytes of it; 0 when there is none
  std::string before_;          // the bytes before that
  std::string now_;
  std::vector<State> model_;
  std::size_t at_ = 0;
  std::optional<std::string> saved_;
  StepRowResult result_;
};

}  // namespace

StepRowResult runStepRow(const StepRow& row) {
  return Runner(someMacro(Chance(row.empty() ? 0 : row.front()))).run(row);
}

StepRow shrunk(StepRow row) {
  for (std::size_t part = row.size() / 2; part > 0;) {
    bool shorter = false;
    for (std::size_t at = 1; at + part <= row.size();) {
      StepRow without = row;
      without.erase(without.begin() + static_cast<std::ptrdiff_t>(at),
                    without.begin() + static_cast<std::ptrdiff_t>(at + part));
      if (runStepRow(without).broken.empty()) {
        ++at;
      } else {
        row = std::move(without);
        shorter = true;
      }
    }
    if (!shorter) part /= 2;
  }
  return row;
}

}  // namespace tessaly
