#include "model/Macro.h"

#include <algorithm>
#include <new>
#include <utility>

#include "model/MacroTree.h"
#include "model/Unread.h"
#include "platform/XmlFile.h"

namespace tessaly {
namespace {

Failure noMemory() { return {Failure::Kind::kNoMemory, "there is not enough memory for the macro"}; }

bool takesValue(const MacroCommand& command) {
  return std::any_of(command.parameters.begin(), command.parameters.end(),
                     [](const MacroParameter& parameter) { return parameter.hasValue; });
}

}  // namespace

Macro Macro::take(XmlDocument& document, std::shared_ptr<const std::string> bytes) {
  auto content = std::make_shared<Content>();
  content->check = contentCheck(*bytes);
  content->bytes = std::move(bytes);
  content->kept = document.kept();
  const TiXmlElement* const named = namedMacro(document);
  if (named) content->name = macroNameOf(document, *named);
  if (TiXmlElement* const data = macroData(document)) {
    content->hasData = true;
    content->commands = takeCommands(document, *data, content->unread);
  }
  appendUnread(document, document, content->unread, named);
  return Macro(std::move(content));
}

Expected<Macro> Macro::read(std::string bytes) {
  try {
    return read(std::make_shared<const std::string>(std::move(bytes)));
  } catch (const std::bad_alloc&) {
    return noMemory();
  }
}

Expected<Macro> Macro::read(std::shared_ptr<const std::string> bytes) {
  try {
    XmlDocument document;
    if (const Outcome parsed = parseXml(*bytes, document); !parsed) return parsed.failure();
    return take(document, std::move(bytes));
  } catch (const std::bad_alloc&) {
    return noMemory();
  }
}

Expected<Macro> Macro::print(XmlDocument& document) {
  try {
    auto bytes = printXml(document);
    if (!bytes) return bytes.failure();
    return take(document, std::make_shared<const std::string>(*std::move(bytes)));
  } catch (const std::bad_alloc&) {
    return noMemory();
  }
}

int Macro::takerOfValue(int number) const {
  const auto& all = commands();
  if (number < 0 || static_cast<std::size_t>(number) >= all.size()) return -1;
  const auto found = std::find_if(all.begin() + number, all.end(), takesValue);
  return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

}  // namespace tessaly
