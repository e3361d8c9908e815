#pragma once

#include <optional>
#include <string>
#include <tinyxml.h>
#include <vector>

#include "model/MacroCommand.h"
#include "model/MacroEdit.h"
#include "platform/Outcome.h"

// What a macro file's tree holds, and the changes that can be made to it. No file is touched here. Pointers
// point into the document, which outlives them.
namespace tessaly {

// The first top-level `macro` that has a name: it may be a later one than the one that holds the commands.
[[nodiscard]] TiXmlElement* namedMacro(TiXmlDocument& document);
[[nodiscard]] const char* macroNameOf(const TiXmlElement& macro);

// Stores a name given as UTF-8 in the document's encoding.
Outcome setMacroName(TiXmlDocument& document, TiXmlElement& macro, const std::string& name);

// The first `data` of the first top-level `macro`, or null.
[[nodiscard]] TiXmlElement* macroData(TiXmlDocument& document);

// One record a `cmd`, in document order. Each `cmd` is dropped from the tree once it was read: while it is
// still in the processor's cache that costs half of what it costs later, and its memory serves the
// records.
[[nodiscard]] MacroCommands takeCommands(TiXmlElement& data);

[[nodiscard]] std::vector<TiXmlElement*> commandElements(TiXmlElement& data);

// The `cmd` with that number, or null (also for a number below 0).
[[nodiscard]] TiXmlElement* commandElement(TiXmlElement& data, int number);

// The `cmd` to insert before; null to append.
[[nodiscard]] TiXmlElement* insertionPoint(TiXmlElement& data, int position, InsertMode mode);

// Builds the `cmd` of a draft and places it; behind the last child when `before` is null.
Outcome placeBefore(const TiXmlDocument& document, TiXmlElement& data, TiXmlElement* before,
                    const CommandDraft& draft, int workplace);

// Writes a value given as UTF-8 into the first parameter that has one, of this `cmd` or the first one behind
// it that has one; false when no parameter took it.
[[nodiscard]] Expected<bool> setValueFrom(const TiXmlDocument& document, TiXmlElement* command,
                                          const std::string& value);

}  // namespace tessaly
