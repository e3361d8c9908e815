#include "dictionary/InterfaceFile.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <optional>
#include <utility>
#include <variant>

#include "platform/FolderEntries.h"
#include "platform/Text.h"
#include "platform/XmlFile.h"

namespace tessaly {
namespace {

// Names of the file format.
constexpr std::string_view kName = "name";
constexpr std::string_view kDescription = "description";
constexpr std::string_view kSid = "sid";
constexpr std::string_view kUse = "use";
constexpr std::string_view kOptional = "optional";
constexpr std::string_view kMin = "min";
constexpr std::string_view kMax = "max";
constexpr std::string_view kMinDisplay = "minDisp";
constexpr std::string_view kMaxDisplay = "maxDisp";
constexpr std::string_view kFidSegment = "fidseg";
constexpr std::string_view kDisplayName = "displayname";

constexpr double kLargestFloatLimit = 1e15;

// Calls handle(name, value) for every attribute in the order of the element. The value is the handle's.
template <typename Handle>
void forAttributes(const XmlDocument& document, const TiXmlElement& element, Handle handle) {
  for (auto attribute = element.FirstAttribute(); attribute != nullptr; attribute = attribute->Next()) {
    std::string value = document.text(attribute->ValueStr());
    handle(std::string_view(attribute->NameTStr()), value);
  }
}

template <typename Handle>
void forChildren(const TiXmlElement& element, Handle handle) {
  for (auto child = element.FirstChildElement(); child != nullptr; child = child->NextSiblingElement()) {
    handle(*child, std::string_view(child->ValueStr()));
  }
}

// The element's first attribute when that is its name, as the listing elements require.
const TiXmlAttribute* leadingName(const TiXmlElement& element) {
  const TiXmlAttribute* first = element.FirstAttribute();
  return first != nullptr && first->NameTStr() == kName ? first : nullptr;
}

// What every kind of parameter has.
template <typename Parameter>
void readCommon(std::string_view name, std::string& value, Parameter& parameter) {
  if (name == kName) {
    parameter.name = std::move(value);
  } else if (name == kDescription) {
    parameter.description = std::move(value);
  } else if (name == kSid) {
    parameter.sid = std::move(value);
  } else if (name == kUse) {
    parameter.optional = value == kOptional;
  }
}

template <typename Parameter, typename Convert>
void readLimit(std::string_view name, const std::string& value, Parameter& parameter, Convert convert) {
  if (name == kMin) {
    parameter.min = convert(value);
  } else if (name == kMax) {
    parameter.max = convert(value);
  } else if (name == kMinDisplay) {
    parameter.minDisplay = convert(value);
  } else if (name == kMaxDisplay) {
    parameter.maxDisplay = convert(value);
  }
}

EnumParameter readEnumParameter(const XmlDocument& document, const TiXmlElement& element) {
  EnumParameter parameter;
  forAttributes(document, element,
                [&](std::string_view name, std::string& value) { readCommon(name, value, parameter); });
  std::size_t count = 0;
  forChildren(element, [&](const TiXmlElement&, std::string_view kind) { count += kind == "enum"; });
  parameter.values.reserve(count);
  forChildren(element, [&](const TiXmlElement& child, std::string_view kind) {
    if (kind != "enum") return;
    EnumValue& entry = parameter.values.emplace_back();
    forAttributes(document, child, [&](std::string_view name, std::string& value) {
      if (name == "value")
        entry.value = std::move(value);
      else if (name == kDescription)
        entry.description = std::move(value);
    });
  });
  return parameter;
}

IntegerParameter readIntegerParameter(const XmlDocument& document, const TiXmlElement& element) {
  IntegerParameter parameter;
  forAttributes(document, element, [&](std::string_view name, std::string& value) {
    readCommon(name, value, parameter);
    if (name == "scaler") parameter.scaled = value == "yes";
    readLimit(name, value, parameter, parseInt);
  });
  return parameter;
}

FloatUnit unitOf(std::string_view type) {
  if (type == "percent") return FloatUnit::kPercent;
  return type == "degree" ? FloatUnit::kDegree : FloatUnit::kNone;
}

// Kept so small that every conversion between limits comes to a number that can be written.
double floatLimit(std::string_view text) {
  const double limit = parseDouble(text);
  return std::isnan(limit) ? 0 : std::clamp(limit, -kLargestFloatLimit, kLargestFloatLimit);
}

FloatParameter readFloatParameter(const XmlDocument& document, const TiXmlElement& element) {
  FloatParameter parameter;
  forAttributes(document, element, [&](std::string_view name, std::string& value) {
    readCommon(name, value, parameter);
    if (name == "type") parameter.unit = unitOf(value);
    readLimit(name, value, parameter, floatLimit);
  });
  return parameter;
}

template <typename Parameter>
Parameter readPlainParameter(const XmlDocument& document, const TiXmlElement& element) {
  Parameter parameter;
  forAttributes(document, element,
                [&](std::string_view name, std::string& value) { readCommon(name, value, parameter); });
  return parameter;
}

FunctionTemplate readFunction(const XmlDocument& document, const TiXmlElement& element,
                              FunctionSource source) {
  FunctionTemplate read;
  read.source = source;
  forAttributes(document, element, [&](std::string_view name, std::string& value) {
    if (name == kName)
      read.name = std::move(value);
    else if (name == kSid)
      read.sid = std::move(value);
    else if (name == "group")
      read.group = std::move(value);
    else if (name == kDescription)
      read.description = std::move(value);
    else if (name == "long_desc")
      read.longDescription = std::move(value);
  });
  forChildren(element, [&](const TiXmlElement& child, std::string_view kind) {
    if (kind == "enum_parameter") read.enums.push_back(readEnumParameter(document, child));
    if (kind == "int_parameter") read.integers.push_back(readIntegerParameter(document, child));
    if (kind == "float_parameter") read.floats.push_back(readFloatParameter(document, child));
    if (kind == "input_parameter") read.inputs.push_back(readPlainParameter<InputParameter>(document, child));
    if (kind == "timecode_parameter")
      read.timecodes.push_back(readPlainParameter<TimecodeParameter>(document, child));
  });
  return read;
}

IndexedFamily readIndexedFamily(const XmlDocument& document, const TiXmlElement& element) {
  IndexedFamily family;
  forAttributes(document, element, [&](std::string_view name, std::string& value) {
    if (name == kName)
      family.name = std::move(value);
    else if (name == kFidSegment)
      family.fidseg = std::move(value);
    else if (name == kDisplayName)
      family.displayname = std::move(value);
    else if (name == kMin)
      family.min = parseInt(value);
    else if (name == kMax)
      family.max = parseInt(value);
    else if (name == "offset")
      family.offset = parseInt(value);
  });
  return family;
}

std::optional<EnumFamily> readEnumFamily(const XmlDocument& document, const TiXmlElement& element) {
  const TiXmlAttribute* familyName = leadingName(element);
  if (familyName == nullptr) return std::nullopt;
  EnumFamily family;
  family.name = document.text(familyName->ValueStr());
  forChildren(element, [&](const TiXmlElement& child, std::string_view) {
    SegmentAlternative& member = family.members.emplace_back();
    forAttributes(document, child, [&](std::string_view name, std::string& value) {
      if (name == kFidSegment)
        member.fidText = std::move(value);
      else if (name == kDisplayName)
        member.displayText = std::move(value);
    });
  });
  family.members.shrink_to_fit();
  return family;
}

AliasEntry readAlias(const XmlDocument& document, const TiXmlElement& element) {
  AliasEntry entry;
  forAttributes(document, element, [&](std::string_view name, std::string& value) {
    if (name == "segm") entry.segment = std::move(value);
    // Both fill the one description; the later in the element wins.
    else if (name == "descrShort" || name == "descrLong")
      entry.description = std::move(value);
    else if (name == "search2")
      entry.search2 = std::move(value);
  });
  entry.upperDescription = toUpperAscii(entry.description);
  return entry;
}

// One of the things that a file gives to the dictionary.
using Entry = std::variant<IndexedFamily, EnumFamily, AliasEntry, FunctionTemplate>;

// Everything the dictionary takes from the file, in the order of the file.
std::deque<Entry> readEntries(const XmlDocument& document, const TiXmlElement& content,
                              FunctionSource source) {
  std::deque<Entry> entries;
  forChildren(content, [&](const TiXmlElement& element, std::string_view kind) {
    if (kind == "fid") {
      entries.push_back(readFunction(document, element, source));
    } else if (kind == "alias") {
      if (leadingName(element) == nullptr) return;
      forChildren(element, [&](const TiXmlElement& child, std::string_view) {
        entries.push_back(readAlias(document, child));
      });
    } else if (kind == "fidsegment_enum") {
      if (auto family = readEnumFamily(document, element)) entries.push_back(std::move(*family));
    } else if (kind == "fidsegment_indexed") {
      entries.push_back(readIndexedFamily(document, element));
    }
  });
  return entries;
}

}  // namespace

bool readInterfaceFile(const SiteRoot& root, std::string_view path, FunctionSource source,
                       FunctionDictionary& dictionary, const ReportProblem& report) {
  XmlDocument document;
  if (!loadXml(root, path, document)) {
    report("Cannot parse file: " + std::string(path));
    return false;
  }
  const TiXmlElement* content = document.FirstChildElement("mfd");
  if (content == nullptr) return true;
  std::deque<Entry> entries = readEntries(document, *content, source);
  // The tree is several times the file; freed first, its memory serves the expansion.
  document.Clear();
  for (Entry& entry : entries) {
    std::visit([&dictionary](auto& read) { dictionary.add(std::move(read)); }, entry);
  }
  return true;
}

std::uint64_t interfaceBytes(const SiteRoot& root) {
  return stampAt(root.resolve(kOlderFamilyInterface)).size + stampAt(root.resolve(kPanelInterface)).size;
}

void loadFunctionDictionary(const SiteRoot& root, FunctionDictionary& dictionary,
                            const ReportProblem& report) {
  // Each file reports its own failure; the other one is read all the same.
  static_cast<void>(
      readInterfaceFile(root, kOlderFamilyInterface, FunctionSource::kOlderFamily, dictionary, report));
  static_cast<void>(readInterfaceFile(root, kPanelInterface, FunctionSource::kPanel, dictionary, report));
  dictionary.finish();
  if (const std::size_t count = dictionary.leftOutCount(); count > 0)
    report(format("Functions that go beyond the dictionary's bounds are left out: %zu of %zu descriptions.",
                  count, dictionary.templateCount()));
}

}  // namespace tessaly
