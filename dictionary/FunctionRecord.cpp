#include "dictionary/DictionaryStore.h"

namespace tessaly {

using Text = NamePattern::Text;

std::string_view FunctionRecord::name() const { return dictionary_->store_->nameOf(index_); }

const FunctionTemplate& FunctionRecord::definition() const {
  const auto& store = *dictionary_->store_;
  return store.templates[store.runOf(index_).expanded].definition;
}

std::string FunctionRecord::sid() const { return dictionary_->store_->chosenIn(index_).sid(); }

std::string FunctionRecord::group() const {
  const auto chosen = dictionary_->store_->chosenIn(index_);
  return chosen.increment() ? std::string() : chosen.substitute(chosen.from.definition.group, Text::kFid);
}

std::string FunctionRecord::description() const {
  const auto chosen = dictionary_->store_->chosenIn(index_);
  return chosen.substitute(chosen.from.definition.description, Text::kDisplay);
}

bool FunctionRecord::incremental() const {
  const auto chosen = dictionary_->store_->chosenIn(index_);
  const std::string& sid = chosen.from.definition.sid;
  if (sid.empty() || chosen.increment()) return true;
  return sid.front() == '$' && chosen.sid().empty();  // only a chosen text can leave it empty
}

}  // namespace tessaly
