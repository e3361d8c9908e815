#include <algorithm>
#include <memory>

#include "classic/ClassicBuilder.h"
#include "fuzz/Fuzzing.h"

// The classic command editor: the text of a command up to a NUL (create mode when it cannot be read), then
// choices of two bytes each, which list and which row, and for a value a text.
namespace tessaly {
namespace {

constexpr int kMostChoices = 64;

DecodingLists& lists() {
  static const SiteRoot sample{TESSALY_SAMPLE_SITE};
  static DecodingLists all(sample);
  return all;
}

void checkRows(const ClassicBuilder& builder) {
  require(!builder.chosenGroup() || *builder.chosenGroup() < builder.groupRows().size(), "a group is a row");
  const auto subgroup = builder.chosenSubgroup();
  require(!subgroup || *subgroup < builder.subgroupRows().size(), "a subgroup is a row");
  const auto function = builder.chosenFunction();
  require(!function || *function < builder.functionRows().size(), "a function is a row");
  const auto action = builder.chosenAction();
  require(!action || *action < kActionRows, "an action is a row");
  for (const auto list :
       {ClassicBuilder::List::kMainGroup, ClassicBuilder::List::kSubgroup, ClassicBuilder::List::kFunction,
        ClassicBuilder::List::kActionType, ClassicBuilder::List::kParameters}) {
    static_cast<void>(builder.heading(list));
  }
  const std::size_t parameters = builder.parameterRows().size();
  for (std::size_t row = 0; row <= parameters; ++row) {
    const auto number = builder.currentNumber(row);
    require(!number || builder.range(row).entry == ParameterEntry::kNumber, "a number stands for a number");
    require(builder.enumeration(row).size() <= 1000, "an enumeration has the rows of a list");
    static_cast<void>(builder.currentInput(row));
    static_cast<void>(builder.currentHold(row));
    static_cast<void>(builder.textRoom(row));
    static_cast<void>(builder.currentTimecode(row));
    static_cast<void>(builder.currentText(row));
  }
}

void checkCommand(const ClassicBuilder& builder) {
  require(builder.canInsertAtSelected() == builder.complete(), "a whole command can be inserted");
  static_cast<void>(builder.stateLine() + builder.path() + builder.description());
  if (!builder.complete()) return;
  const ClassicCommand& command = builder.command();
  ClassicCommand read;
  require(command.valid() && command.parameters().size() <= ClassicBuilder::kMostParameterBytes &&
              read.decodeText(command.text()) && read.text() == command.text(),
          "a whole command can be read back");
}

bool setValue(ClassicBuilder& builder, std::size_t row, FuzzInput& input) {
  const ParameterRange range = builder.range(row);
  switch (range.entry) {
    case ParameterEntry::kNumber: {
      const std::int64_t number = range.minimum + input.byte() - 1;
      const bool kept = number == builder.currentNumber(row);
      const bool set = builder.setNumber(row, number);
      require(!set || kept || (number >= range.minimum && number <= range.maximum),
              "a number in its range is taken");
      return set;
    }
    case ParameterEntry::kTimecode:
      return builder.setTimecode(row, Timecode::fromText(input.text()));
    case ParameterEntry::kInput:
      return builder.setInput(row, input.byte() * 2 - 1);
    case ParameterEntry::kClip:
    case ParameterEntry::kText:
      return builder.setText(row, input.text());
    case ParameterEntry::kNothing:
      return builder.setNumber(row, 0);
  }
  return false;
}

void choose(ClassicBuilder& builder, FuzzInput& input) {
  const std::uint8_t kind = input.byte();
  const std::size_t row = input.byte();
  const std::string command = builder.command().text(), path = builder.path();
  bool changed = true;
  switch (kind % 8) {
    case 0:
      changed = builder.chooseGroup(row);
      break;
    case 1:
      changed = builder.chooseSubgroup(row);
      break;
    case 2:
      changed = builder.chooseFunction(row) || row >= builder.functionRows().size();
      break;
    case 3:
      changed = builder.chooseAction(row);
      break;
    case 4:
      changed = builder.chooseParameter(row);
      break;
    case 7:
      if (row == 0) builder.startFromScratch();
      break;
    default:
      changed = setValue(builder, row % 16, input);
      break;
  }
  require(changed || (builder.command().text() == command && builder.path() == path),
          "a refused choice changes nothing");
}

void run(FuzzInput input) {
  ClassicCommand command;
  const bool modify = command.decodeText(input.text());
  auto builder = modify ? std::make_unique<ClassicBuilder>(lists(), command)
                        : std::make_unique<ClassicBuilder>(lists(), true);
  if (modify && builder->complete() && !command.longForm()) {
    require(builder->command().text() == command.text(), "a loaded command is shown as it is");
  }
  for (int i = 0; i < kMostChoices && !input.empty(); ++i) {
    choose(*builder, input);
    checkRows(*builder);
    if (!modify) checkCommand(*builder);
  }
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
