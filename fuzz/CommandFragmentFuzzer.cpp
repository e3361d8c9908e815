#include <numeric>
#include <vector>

#include "fuzz/Fuzzing.h"
#include "model/MacroEdit.h"
#include "platform/Text.h"

// A text that may be commands, a place, and a macro: what is taken for commands goes into the macro whole and
// comes out again, and the macro's own commands go into it always.
namespace tessaly {
namespace {

std::vector<int> numbersFrom(int first, std::size_t count) {
  std::vector<int> numbers(count);
  std::iota(numbers.begin(), numbers.end(), first);
  return numbers;
}

void checkPasted(const Macro& macro, const CommandFragment& fragment, int position, const Macro& pasted) {
  const int place = insertedAt(macro, position, InsertMode::kAtPosition);
  MacroCommands commands = pasted.commands();
  require(commands.size() == macro.commands().size() + fragment.size(), "as many as are said come in");
  const auto first = commands.begin() + place;
  commands.erase(first, first + static_cast<std::ptrdiff_t>(fragment.size()));
  require(commands == macro.commands(), "the other commands stay, in their order");
  const auto there = numbersFrom(place, fragment.size());
  if (!macro.commands().empty()) {
    const auto without = apply(pasted, RemoveCommands{there});
    require(without && without->bytes() == reprint(macro)->bytes(), "the bytes beside them stay");
  }
  const auto copied = CommandFragment::of(pasted, there);
  require(copied && copied->size() == fragment.size(), "what was pasted can be copied");
  const auto again = apply(macro, InsertFragment{*copied, position, InsertMode::kAtPosition});
  require(again && again->bytes() == pasted.bytes(), "a copy of what was pasted is pasted the same");
}

void run(FuzzInput input) {
  const auto fragment = CommandFragment::read(std::string(input.text()));
  const int position = input.byte();
  const auto macro = Macro::read(std::string(input.rest()));
  if (fragment) {
    require(fragment->size() > 0 && fragment->size() <= kMostFragmentCommands, "a fragment holds commands");
  } else {
    require(fragment.failure().kind == Failure::Kind::kNoFragment && isValidUtf8(fragment.failure().text),
            "a text that is none is refused with a reason that can be shown");
  }
  if (!macro) return;
  if (fragment) {
    const auto pasted = apply(*macro, InsertFragment{*fragment, position, InsertMode::kAtPosition});
    if (pasted) checkPasted(*macro, *fragment, position, *pasted);
  }
  const auto own = CommandFragment::of(*macro, numbersFrom(0, macro->commands().size()));
  if (!own || !reprint(*macro)) return;
  const auto doubled = apply(*macro, InsertFragment{*own, position, InsertMode::kAtPosition});
  require(doubled.has_value(), "a macro holds its own commands once more");
  checkPasted(*macro, *own, position, *doubled);
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
