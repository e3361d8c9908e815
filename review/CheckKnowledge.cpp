#include "review/CheckKnowledge.h"

#include <utility>

#include "platform/CloseName.h"

namespace tessaly {
namespace {

constexpr std::size_t kMostClassics = 20'000;
constexpr std::size_t kMostCloseNames = 200;
constexpr std::string_view kSetEnd = ".SET";

}  // namespace

CheckKnowledge::CheckKnowledge(const CheckContext& given)
    : context(given), bounds{ValueBounds::inputsOf(given.dictionary), given.frameRate} {}

void CheckKnowledge::begin() {
  const std::uint64_t lists = context.decodingLists.revision();
  if (std::exchange(lists_, lists) != lists || classics_.size() > kMostClassics) classics_.clear();
}

const CheckedFunction* CheckKnowledge::function(std::string_view name) {
  const auto known = functions_.find(name);
  if (known != functions_.end()) return &known->second;
  const auto record = context.dictionary.find(name);
  if (!record) return nullptr;
  const NumberKind numbers = numberKindOf(*record);
  const CheckedFunction function{*record, record->definition(), numbers,
                                 numbers == NumberKind::kValue && record->name().ends_with(kSetEnd)};
  return &functions_.emplace(record->name(), function).first->second;
}

const ClassicJudgement& CheckKnowledge::classic(const std::string& text) {
  const auto known = classics_.find(text);
  if (known != classics_.end()) return known->second;
  return classics_.emplace(text, judgeClassic(text, context.decodingLists, context.frameRate)).first->second;
}

std::string_view CheckKnowledge::closeFunction(std::string_view name) {
  const auto known = close_.find(std::string(name));
  if (known != close_.end()) return known->second;
  if (close_.size() == kMostCloseNames) return {};
  CloseName close(name);
  for (std::size_t i = 0; i < context.dictionary.functionCount(); ++i)
    close.offer(context.dictionary.name(i));
  return close_.emplace(name, close.found().value_or("")).first->second;
}

}  // namespace tessaly
