#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/MacroCommand.h"
#include "model/MacroEdit.h"
#include "platform/XmlFile.h"

// What a macro file's tree holds, and the changes that can be made to it. No file is touched here. Pointers
// point into the document, which outlives them. Texts come and go as UTF-8; one that the document's encoding
// cannot hold is a Failure kTextNotHeld, and the tree is then as it was.
namespace tessaly {

// The first top-level `macro` that has a name: it may be a later one than the one that holds the commands.
[[nodiscard]] TiXmlElement* namedMacro(XmlDocument& document);
[[nodiscard]] std::string macroNameOf(const XmlDocument& document, const TiXmlElement& macro);
Outcome setMacroName(const XmlDocument& document, TiXmlElement& macro, std::string_view name);

// The first `data` of the first top-level `macro`, or null.
[[nodiscard]] TiXmlElement* macroData(XmlDocument& document);

// One record a `cmd`, in document order. Each `cmd` is dropped from the tree once it was read: while it is
// still in the processor's cache that costs half of what it costs later, and its memory serves the
// records.
[[nodiscard]] MacroCommands takeCommands(const XmlDocument& document, TiXmlElement& data);

[[nodiscard]] std::vector<TiXmlElement*> commandElements(TiXmlElement& data);

// In rising order, each once.
[[nodiscard]] std::vector<int> orderedNumbers(std::vector<int> numbers);

// The commands with these ordered numbers; none when one of them does not exist. `data` may be null.
[[nodiscard]] std::vector<TiXmlElement*> chosenCommands(TiXmlElement* data, const std::vector<int>& numbers);

// The `cmd` with that number, or null (also for a number below 0).
[[nodiscard]] TiXmlElement* commandElement(TiXmlElement& data, int number);

// The `cmd` to insert before; null to append.
[[nodiscard]] TiXmlElement* insertionPoint(TiXmlElement& data, int position, InsertMode mode);

// Builds the `cmd` of a draft and places it; behind the last child when `before` is null.
Outcome placeBefore(const XmlDocument& document, TiXmlElement& data, TiXmlElement* before,
                    const CommandDraft& draft, int workplace);

// Writes into the first parameter that has a value, of this `cmd` or the first one behind it that has one;
// kNothingTaken when there is none, and for null.
Outcome setValueFrom(const XmlDocument& document, TiXmlElement* command, std::string_view value);

}  // namespace tessaly
