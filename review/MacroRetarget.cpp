#include "review/MacroRetarget.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "review/MacroCheck.h"
#include "review/MacroSearch.h"
#include "review/RetargetStep.h"

namespace tessaly {
namespace {

constexpr LineOptions kOptions{.showDestination = true};

SetTexts textsBetween(const MacroCommand& before, const MacroCommand& after, int number) {
  using Part = SetTexts::Part;
  SetTexts edit;
  if (before.fid != after.fid) edit.texts.push_back({number, Part::kFid, -1, after.fid});
  if (before.workplace != after.workplace)
    edit.texts.push_back({number, Part::kWorkplace, -1, after.workplace});
  for (std::size_t i = 0; i < after.parameters.size(); ++i) {
    const MacroParameter &was = before.parameters[i], &is = after.parameters[i];
    if (was.value != is.value) edit.texts.push_back({number, Part::kValue, static_cast<int>(i), is.value});
  }
  return edit;
}

void refuse(RetargetProposal& proposal, std::string reason) {
  proposal.edit.texts.clear();
  proposal.after.clear();
  proposal.reason = std::move(reason);
}

// Those of `some` that are not among `others`.
Findings beyond(const Findings& some, const Findings& others) {
  const auto keyOf = [](const Finding& finding) {
    return std::tuple(finding.command, finding.rule, finding.parameter, inEnglish(finding.wrong));
  };
  std::map<decltype(keyOf(some.front())), int> counts;
  for (const Finding& finding : others) ++counts[keyOf(finding)];
  Findings left;
  for (const Finding& finding : some)
    if (--counts[keyOf(finding)] < 0) left.push_back(finding);
  return left;
}

// The proposals that are made, by which findings are told.
class Tellers {
 public:
  Tellers(RetargetProposals& proposals, const std::vector<bool>& ticked) {
    for (std::size_t i = 0; i < proposals.size(); ++i) {
      proposals[i].made.clear();
      proposals[i].mended.clear();
      if (ticked[i] && proposals[i].possible()) made_.push_back(&proposals[i]);
    }
  }

  void tell(Findings findings, Findings RetargetProposal::*where) {
    if (made_.empty()) return;
    for (Finding& finding : findings) {
      const auto behind =
          std::upper_bound(made_.begin(), made_.end(), finding.command,
                           [](int number, const RetargetProposal* p) { return number < p->command; });
      RetargetProposal& teller = **(behind == made_.begin() ? behind : behind - 1);
      (teller.*where).push_back(std::move(finding));
    }
  }

 private:
  std::vector<RetargetProposal*> made_;
};

std::vector<bool> all(const RetargetProposals& proposals) {
  return std::vector<bool>(proposals.size(), true);
}

}  // namespace

class MacroRetarget::Work {
 public:
  Work(std::unique_ptr<RetargetStep> step, std::optional<MacroQuery> where, const CheckContext& context)
      : step_(std::move(step)), context_{context.dictionary, context.decodingLists}, check_(context) {
    if (where) search_ = std::make_unique<MacroSearch>(*std::move(where), context_);
  }

  RetargetProposals propose(const Macro& macro) {
    RetargetProposals proposals;
    int number = 0;
    for (const MacroCommand& command : macro.commands()) {
      if (auto changed = step_->change(command)) proposals.push_back(proposal(command, *changed, number));
      ++number;
    }
    if (proposals.empty()) return proposals;
    if (search_) leaveOutOthers(macro, proposals);
    settle(macro, proposals);
    judge(macro, proposals, all(proposals));
    return proposals;
  }

  void judge(const Macro& macro, RetargetProposals& proposals, const std::vector<bool>& ticked) {
    Tellers tellers(proposals, ticked);
    const SetTexts edit = editOf(proposals, ticked);
    if (edit.texts.empty()) return;
    const auto after = apply(macro, edit);
    if (!after) return;
    const Findings were = check_.check(macro), are = check_.check(*after);
    tellers.tell(beyond(are, were), &RetargetProposal::made);
    tellers.tell(beyond(were, are), &RetargetProposal::mended);
  }

 private:
  RetargetProposal proposal(const MacroCommand& command, const RetargetedCommand& changed, int number) {
    RetargetProposal made{.command = number, .before = commandLine(command, kOptions, context_)};
    if (!changed.reason.empty()) {
      made.reason = changed.reason;
    } else {
      made.edit = textsBetween(command, changed.after, number);
      made.after = commandLine(changed.after, kOptions, context_);
    }
    return made;
  }

  void leaveOutOthers(const Macro& macro, RetargetProposals& proposals) {
    std::unordered_set<int> numbers;
    for (const SearchHit& hit : search_->find(macro)) numbers.insert(hit.command);
    std::erase_if(proposals, [&](const RetargetProposal& p) { return !numbers.contains(p.command); });
  }

  // What the bytes of the macro cannot take is told now, and not when it is to be written.
  static void settle(const Macro& macro, RetargetProposals& proposals) {
    if (const auto made = apply(macro, editOf(proposals, all(proposals))); !made) {
      for (RetargetProposal& proposal : proposals)
        if (proposal.possible()) refuse(proposal, made.failure().text);
    }
  }

  std::unique_ptr<RetargetStep> step_;
  LineContext context_;
  MacroCheck check_;
  std::unique_ptr<MacroSearch> search_;
};

Expected<MacroRetarget> MacroRetarget::make(const RetargetRule& rule, const CheckContext& context) {
  const auto wrong = [](std::string text) { return Failure{Failure::Kind::kNothingTaken, std::move(text)}; };
  for (const std::string* const text : {&rule.parameter, &rule.from, &rule.to})
    if (text->find('"') != text->npos) return wrong("a rule cannot name a text with a quotation mark");
  // As it would have to be typed, so that a rule is one whoever has put it together.
  const auto typed = RetargetRule::parse(rule.text());
  if (!typed) return typed.failure();
  auto step = RetargetStep::make(rule, {context.dictionary, context.decodingLists});
  if (!step) return step.failure();
  std::optional<MacroQuery> where;
  if (!rule.where.empty()) {
    auto query = MacroQuery::parse(rule.where);
    if (!query) return query.failure();
    where = *std::move(query);
  }
  return MacroRetarget(std::make_unique<Work>(*std::move(step), std::move(where), context));
}

MacroRetarget::MacroRetarget(std::unique_ptr<Work> work) : work_(std::move(work)) {}
MacroRetarget::~MacroRetarget() = default;
MacroRetarget::MacroRetarget(MacroRetarget&&) noexcept = default;

RetargetProposals MacroRetarget::propose(const Macro& macro) { return work_->propose(macro); }

void MacroRetarget::judge(const Macro& macro, RetargetProposals& proposals, const std::vector<bool>& ticked) {
  work_->judge(macro, proposals, ticked);
}

SetTexts MacroRetarget::editOf(const RetargetProposals& proposals, const std::vector<bool>& ticked) {
  SetTexts edit;
  for (std::size_t i = 0; i < proposals.size(); ++i) {
    if (!ticked[i]) continue;
    const auto& texts = proposals[i].edit.texts;
    edit.texts.insert(edit.texts.end(), texts.begin(), texts.end());
  }
  return edit;
}

}  // namespace tessaly
