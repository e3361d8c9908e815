#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "classic/ClassicCommand.h"
#include "classic/DecodingList.h"
#include "review/RetargetStep.h"

namespace tessaly {

// A classic command of a macro that decodes. Observes the command.
class ClassicInMacro {
 public:
  [[nodiscard]] static std::optional<ClassicInMacro> of(const MacroCommand& command);

  [[nodiscard]] const ClassicCommand& command() const { return decoded_; }
  // With other codes and as many bytes, its text otherwise as it stands; or why that cannot be.
  [[nodiscard]] RetargetedCommand with(std::uint8_t cd, std::uint8_t co,
                                       std::span<const std::uint8_t> bytes) const;

 private:
  ClassicInMacro(const MacroCommand& stored, ClassicCommand decoded)
      : stored_(&stored), decoded_(std::move(decoded)) {}

  const MacroCommand* stored_;
  ClassicCommand decoded_;
};

// A segment as rules have it: in capital letters without blanks, the mix effects by their numbers ("ME0" for
// "PP", "ME4" for "MEh").
[[nodiscard]] std::string plainSegment(std::string_view text);

// A classic command with the device and command code that the table of groups has for other segments, "ME1"
// or "ME1", "KEY2" or "KEY2"; with a reason where it has none, or the decoding list there knows the command
// not. Nothing for a command that these segments do not name. Segments are plain ones.
[[nodiscard]] std::optional<RetargetedCommand> withClassicSegments(const MacroCommand& command,
                                                                   std::span<const std::string> from,
                                                                   std::span<const std::string> to,
                                                                   DecodingLists& lists);

}  // namespace tessaly
