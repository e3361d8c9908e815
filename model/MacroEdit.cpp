#include "model/MacroEdit.h"

#include <algorithm>
#include <new>

#include "model/MacroTexts.h"
#include "model/MacroTree.h"
#include "platform/XmlCopy.h"
#include "platform/XmlFile.h"

namespace tessaly {
namespace {

Failure noCommand() { return {Failure::Kind::kNoCommand, "there is no such command"}; }

Failure noMacro() { return {Failure::Kind::kNoMacro, "it holds no macro that takes commands"}; }

// Each edit on the tree of the macro.
class Editor {
 public:
  explicit Editor(XmlDocument& document) : document_(document), data_(macroData(document)) {}

  Outcome operator()(const InsertCommands& edit) const {
    if (!data_) return noMacro();
    TiXmlElement* const before = insertionPoint(*data_, edit.position, edit.mode);
    for (const CommandDraft& draft : edit.drafts) {
      if (Outcome placed = placeBefore(document_, *data_, before, draft, edit.workplace); !placed)
        return placed;
    }
    return {};
  }

  Outcome operator()(const InsertFragment& edit) const {
    if (!data_) return noMacro();
    return edit.fragment.placeInto(document_, *data_, insertionPoint(*data_, edit.position, edit.mode));
  }

  Outcome operator()(const RemoveCommands& edit) const {
    const std::vector<int> numbers = orderedNumbers(edit.numbers);
    const auto chosen = chosenCommands(data_, numbers);
    if (chosen.size() != numbers.size()) return noCommand();
    for (TiXmlElement* const command : chosen) data_->RemoveChild(command);
    return {};
  }

  Outcome operator()(const MoveCommands& edit) const {
    const std::vector<int> numbers = orderedNumbers(edit.numbers);
    const auto chosen = chosenCommands(data_, numbers);
    if (chosen.size() != numbers.size()) return noCommand();
    if (chosen.empty()) return {};
    // The place is that of the next command that stays.
    int place = std::max(0, edit.before);
    while (std::binary_search(numbers.begin(), numbers.end(), place)) ++place;
    const bool together = numbers.back() - numbers.front() + 1 == static_cast<int>(numbers.size());
    // They stand there, and no comment in front of the next command trades its place with them.
    if (together && place == numbers.back() + 1) return {};
    TiXmlElement* const before = commandElement(*data_, place);
    for (TiXmlElement* const command : chosen) {
      if (before ? !data_->InsertBeforeChild(before, *command) : !data_->InsertEndChild(*command))
        return noCommand();
      data_->RemoveChild(command);
    }
    return {};
  }

  Outcome operator()(const ReplaceCommand& edit) const {
    TiXmlElement* const old = data_ ? commandElement(*data_, edit.number) : nullptr;
    if (!old) return noCommand();
    if (Outcome placed = placeBefore(document_, *data_, old, edit.draft, edit.workplace); !placed)
      return placed;
    data_->RemoveChild(old);
    return {};
  }

  Outcome operator()(const SetValues& edit) const {
    const auto commands = data_ ? commandElements(*data_) : std::vector<TiXmlElement*>();
    bool taken = false;
    for (const auto& [number, value] : edit.values) {
      if (number < 0 || static_cast<std::size_t>(number) >= commands.size()) continue;
      Outcome set = setValueFrom(document_, commands[static_cast<std::size_t>(number)], value);
      if (!set && set.failure().kind != Failure::Kind::kNothingTaken) return set;
      taken = set.done() || taken;
    }
    if (taken) return {};
    return Failure{Failure::Kind::kNothingTaken, "no command from there on has a parameter with a value"};
  }

  Outcome operator()(const TakeCommands& edit) const {
    if (!data_) return noMacro();
    XmlDocument from;
    if (Outcome parsed = parseXml(edit.from.bytes(), from); !parsed) return parsed;
    if (!from.kept()) return from.kept();
    TiXmlElement* const source = macroData(from);
    const auto theirs = source ? commandElements(*source) : std::vector<TiXmlElement*>();
    const auto ours = commandElements(*data_);
    for (const TakeCommands::Piece& piece : edit.pieces) {
      if (Outcome taken = take(piece, ours, theirs, from); !taken) return taken;
    }
    return {};
  }

  Outcome operator()(const SetMacroName& edit) const {
    TiXmlElement* const macro = namedMacro(document_);
    if (!macro) return Failure{Failure::Kind::kNoMacro, "it holds no macro with a name"};
    return setMacroName(document_, *macro, edit.name);
  }

 private:
  using Elements = std::vector<TiXmlElement*>;

  Outcome take(const TakeCommands::Piece& piece, const Elements& ours, const Elements& theirs,
               const XmlDocument& from) const {
    const auto at = static_cast<std::size_t>(piece.at), removed = static_cast<std::size_t>(piece.removed);
    // What is below 0 is beyond them, too.
    if (at > ours.size() || removed > ours.size() - at) return noCommand();
    for (const int number : piece.taken) {
      if (number < 0 || static_cast<std::size_t>(number) >= theirs.size()) return noCommand();
      auto copy = copyFor(document_, *theirs[static_cast<std::size_t>(number)], from);
      if (!copy) return copy.failure();
      if (at == ours.size()) {
        data_->LinkEndChild(copy->release());
      } else {
        data_->InsertBeforeChild(ours[at], **copy);
      }
    }
    for (std::size_t i = 0; i < removed; ++i) data_->RemoveChild(ours[at + i]);
    return {};
  }

  XmlDocument& document_;
  TiXmlElement* data_;
};

template <typename Work>
Expected<Macro> withinMemory(const Work& work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return Failure{Failure::Kind::kNoMemory, "there is not enough memory for the macro"};
  }
}

template <typename Change>
Expected<Macro> changed(const Macro& macro, const Change& change) {
  XmlDocument document;
  if (const Outcome parsed = parseXml(macro.bytes(), document); !parsed) return parsed.failure();
  if (const Outcome done = change(document); !done) return done.failure();
  return Macro::print(document);
}

// On the tree, but for what keeps the bytes.
struct Applying {
  const Macro& macro;

  Expected<Macro> operator()(const SetTexts& edit) const { return withTexts(macro, edit); }
  template <typename Edit>
  Expected<Macro> operator()(const Edit& edit) const {
    return changed(macro, [&edit](XmlDocument& document) { return Editor(document)(edit); });
  }
};

bool sameContent(const Macro& first, const Macro& second) {
  return first.hasData() == second.hasData() && first.name() == second.name() &&
         first.unread() == second.unread() && first.commands() == second.commands();
}

}  // namespace

Expected<Macro> apply(const Macro& macro, const MacroEdit& edit) {
  auto edited = withinMemory([&] { return std::visit(Applying{macro}, edit); });
  return edited && sameContent(*edited, macro) ? macro : edited;
}

int insertedAt(const Macro& macro, int position, InsertMode mode) {
  const int count = static_cast<int>(macro.commands().size());
  switch (mode) {
    case InsertMode::kAtStart:
      return 0;
    case InsertMode::kAtPosition:
      return position >= 0 && position < count ? position : count;
    case InsertMode::kAppend:
      break;
  }
  return count;
}

Expected<Macro> reprint(const Macro& macro) {
  return withinMemory([&] { return changed(macro, [](XmlDocument&) { return Outcome(); }); });
}

}  // namespace tessaly
