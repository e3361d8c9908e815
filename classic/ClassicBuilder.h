#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "classic/ClassicAction.h"
#include "classic/ClassicCommand.h"
#include "classic/ClassicGroups.h"
#include "classic/ClassicParameter.h"
#include "classic/DecodingList.h"
#include "values/Timecode.h"

namespace tessaly {

namespace classic_text {

inline constexpr const char* kUnderConstruction = "Current Command: under construction . . .";
inline constexpr const char* kFromScratch = "current command: under construction . . .";
inline constexpr const char* kNoSelection = "No selection until now...";
inline constexpr const char* kReadyToInsert = "READY TO INSERT";
inline constexpr const char* kReadyToModify = "READY TO MODIFY";
inline constexpr const char* kTooLong = "Current Command: too long to be stored";
inline constexpr const char* kChangeParameter = "Change Parameter to";
inline constexpr const char* kWrongKeyword = "wrong keyword index...";

}  // namespace classic_text

// The rules of the classic command editor: five lists from left to right, main group, subgroup, function,
// action type and parameters, of which each choice clears what stands to its right and fills the next. The
// dialog shows the rows and hands on the choices; it needs no rule of its own. Rows are counted from 0 over
// everything that a list shows, separators included. A choice that is not allowed returns false and changes
// nothing.
//
// One thread. The decoding lists must outlive the builder.
class ClassicBuilder {
 public:
  enum class Mode : std::uint8_t { kCreate, kModify };
  enum class List : std::uint8_t { kMainGroup, kSubgroup, kFunction, kActionType, kParameters };

  struct Row {
    std::string text;
    bool separator = false;  // shown, but cannot be chosen
  };

  // Commands with more parameter bytes than this have no text form that can be read back.
  static constexpr std::size_t kMostParameterBytes = 27;

  // An empty command in create mode. `commandSelected` tells that the caller has a place for "insert at
  // selected command".
  ClassicBuilder(DecodingLists& lists, bool commandSelected);
  // Modify mode with a command loaded, all five lists chosen.
  ClassicBuilder(DecodingLists& lists, const ClassicCommand& command);

  // Forgets the command and all choices ("start from scratch").
  void startFromScratch();

  // In modify mode with a whole command at hand, a main group or subgroup only replaces the device and
  // command code: the keyword, the action and the parameters are kept, and the function is looked up again.
  bool chooseGroup(std::size_t row);
  bool chooseSubgroup(std::size_t row);
  // A row beyond the list leaves "wrong keyword index..." among the parameters and returns false.
  bool chooseFunction(std::size_t row);
  // Refused while the command is complete; choosing a function again opens the list.
  bool chooseAction(std::size_t row);
  // The list heads "Change Parameter to" until a value is set or another choice is made. False for a row that
  // takes no value: a step, a notice, an unknown type.
  bool chooseParameter(std::size_t row);

  // One value for a parameter row, by the way of entry that `parameterRange` tells. False for a value out of
  // range, a row of another kind, or a text for which the command has no room. The value that is shown
  // already
  // (`currentNumber` and so on) leaves the bytes as they are, whatever they are: only a change is written.
  bool setNumber(std::size_t row, std::int64_t number);
  bool setTimecode(std::size_t row, const Timecode& timecode);
  // 0 to 255; without a hold it stays as it was, also when the command has none.
  bool setInput(std::size_t row, int number, std::optional<bool> hold = std::nullopt);
  bool setText(std::size_t row, std::string_view text);

  [[nodiscard]] Mode mode() const { return original_ ? Mode::kModify : Mode::kCreate; }
  [[nodiscard]] const std::vector<Row>& groupRows() const { return groupRows_; }
  [[nodiscard]] std::vector<Row> subgroupRows() const;
  [[nodiscard]] std::vector<Row> functionRows() const;
  [[nodiscard]] std::array<std::string, kActionRows> actionTexts() const;  // empty texts without a function
  [[nodiscard]] std::vector<std::string> parameterRows() const;

  [[nodiscard]] std::optional<std::size_t> chosenGroup() const { return group_; }
  [[nodiscard]] std::optional<std::size_t> chosenSubgroup() const { return subgroup_; }
  [[nodiscard]] std::optional<std::size_t> chosenFunction() const;
  [[nodiscard]] std::optional<std::size_t> chosenAction() const;

  // The entry dialog of a parameter row; kNothing for a row that takes no value.
  [[nodiscard]] ParameterRange range(std::size_t row) const;
  // Nothing when there is no value yet, or none that a number stands for; out of range when the bytes are.
  [[nodiscard]] std::optional<std::int64_t> currentNumber(std::size_t row) const;
  [[nodiscard]] bool hasValue(std::size_t row) const { return row < values_.size() && values_[row]; }
  [[nodiscard]] Timecode currentTimecode(std::size_t row) const;
  [[nodiscard]] std::optional<std::uint8_t> currentInput(std::size_t row) const;
  [[nodiscard]] bool currentHold(std::size_t row) const;  // the source hold of an input
  [[nodiscard]] std::string currentText(std::size_t row) const;
  // How many characters a text may have, with what the other parameters take, at the least, left to them.
  [[nodiscard]] std::size_t textRoom(std::size_t row) const;
  // The rows of an enumerated parameter; valid until the next choice.
  [[nodiscard]] std::span<const EnumerationRow> enumeration(std::size_t row) const;

  [[nodiscard]] std::string heading(List list) const;
  [[nodiscard]] std::string stateLine() const;
  [[nodiscard]] std::string path() const;  // "Me1 - Key2 - Select source - set by value"

  // The file that would list the functions of the chosen subgroup, when there is none that can be read.
  [[nodiscard]] std::string missingList() const;

  // What the command under construction reads as; the path as long as it has no action.
  [[nodiscard]] std::string description() const;
  [[nodiscard]] const ClassicCommand& command() const { return command_; }

  // The hint statics are shown, the action list is disabled, and a button that inserts is enabled. So is a
  // loaded command as the macro has it, whatever its bytes are.
  [[nodiscard]] bool complete() const;
  [[nodiscard]] bool canInsertAtSelected() const { return complete() && commandSelected_; }

 private:
  [[nodiscard]] static bool isSeparator(std::string_view text);
  [[nodiscard]] bool keepsRest() const;
  [[nodiscard]] const ClassicGroup* group() const;
  [[nodiscard]] std::vector<std::uint8_t> subgroupCodes() const;  // of each subgroup row
  [[nodiscard]] const KeywordEntry* entry() const;                // of the function; null without one
  [[nodiscard]] bool hasAction() const { return loaded_ || actionRow_; }
  [[nodiscard]] bool takesValue(std::size_t row) const;
  [[nodiscard]] bool isLast(std::size_t row) const;
  [[nodiscard]] List nextList() const;
  [[nodiscard]] std::size_t parameterBytes() const;
  [[nodiscard]] std::size_t bytesBeside(std::size_t row) const;
  [[nodiscard]] bool hasEveryValue() const;

  void clearFrom(List list);
  void selectSubgroup(std::uint8_t cd, std::uint8_t co);
  void moveTo(std::uint8_t cd, std::uint8_t co);
  void lookUp();
  void fillAtOnce(ActionRow row);
  bool setBytes(std::size_t row, ParameterBytes bytes);
  void rebuild();

  DecodingLists& lists_;
  const std::optional<ClassicCommand> original_;  // modify mode: the command as the macro has it
  const bool commandSelected_;
  const std::vector<Row> groupRows_;

  bool fromScratch_ = false;
  std::optional<std::size_t> group_, subgroup_;
  std::shared_ptr<const DecodingList> list_;
  std::optional<std::size_t> function_;  // a row of the list, or one that it does not have
  std::optional<ActionRow> actionRow_;
  bool loaded_ = false;  // action and bytes come from a macro; such an action may have no row
  std::vector<std::optional<ParameterBytes>> values_;
  ParameterBytes tail_;    // what a loaded command holds beyond its parameters
  bool changing_ = false;  // a parameter row was chosen
  ClassicCommand command_;
};

}  // namespace tessaly
