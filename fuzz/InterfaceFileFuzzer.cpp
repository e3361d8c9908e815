#include <algorithm>

#include "dictionary/InterfaceFile.h"
#include "fuzz/Fuzzing.h"
#include "model/FunctionFinder.h"
#include "model/SegmentSearch.h"
#include "values/ParameterValue.h"
#include "values/SourceNames.h"

// An interface description file and the functions that it expands to.
namespace tessaly {
namespace {

constexpr const char* kPath = "c:\\i.xml";
constexpr std::size_t kMostLookedAt = 50;  // functions

ScratchSite& site() {
  static ScratchSite one;
  return one;
}

// Numbers of five to seven digits make families of up to a million members, which only take time; longer ones
// overflow, or are refused.
bool makesLargeFamilies(std::string_view bytes) {
  std::size_t digits = 0;
  for (std::size_t i = 0; i <= bytes.size(); ++i) {
    if (i < bytes.size() && bytes[i] >= '0' && bytes[i] <= '9') {
      ++digits;
    } else {
      if (digits >= 5 && digits <= 7) return true;
      digits = 0;
    }
  }
  return false;
}

void checkParameters(const FunctionRecord& function) {
  for (const IntegerParameter& parameter : function.definition().integers) {
    for (const ValueMode mode : {ValueMode::kDisplay, ValueMode::kRaw}) {
      require(!rangeText(parameter, mode).empty(), "a range has a text");
    }
  }
  for (const FloatParameter& parameter : function.definition().floats) {
    for (const ValueMode mode : {ValueMode::kDisplay, ValueMode::kRaw}) {
      require(!rangeText(parameter, function.incremental(), mode).empty(), "a range has a text");
    }
  }
}

void checkFunction(const FunctionDictionary& dictionary, std::size_t index) {
  const FunctionRecord function = dictionary.function(index);
  const auto found = dictionary.find(function.name());
  require(found && found->name() == function.name() && found->index() <= index,
          "a function is found by its name, the first of duplicates");
  const std::string sid = function.sid();
  require(function.incremental() == sid.empty(), "without a sid a function is incremental");
  if (!sid.empty() && function.definition().sid.size() <= kLongestSid) {
    const auto bySid = dictionary.findBySid(sid);
    require(bySid && bySid->sid() == sid && bySid->index() <= index, "a function is found by its sid");
  }
  const std::size_t offset = dictionary.nameOffset(index);
  require(dictionary.allNames().substr(offset, function.name().size()) == function.name() &&
              dictionary.functionAtOffset(offset) == index,
          "names stand at their offsets");
  static_cast<void>(function.group());
  static_cast<void>(function.description());
  checkParameters(function);
}

void checkSearches(const FunctionDictionary& dictionary) {
  const std::string_view name = dictionary.name(0);
  const std::string segment(name.substr(0, name.find('.')));
  const SegmentSearch segments(dictionary);
  const auto rows = segments.find(segment);
  require(SegmentSearch::likeliest(rows, segment) < static_cast<int>(rows.size()), "the likeliest is a row");
  FunctionFinder finder(dictionary);
  FinderFilters filters;
  filters[0] = segment;
  for (const bool increments : {false, true}) {
    for (const std::uint32_t function : finder.find(filters, increments)) {
      require(segmentPosition(dictionary.name(function), segment) != std::string_view::npos,
              "a function that is found has the segment");
    }
    static_cast<void>(finder.segmentsBehind(0, filters, increments));
  }
}

void run(std::string_view bytes) {
  if (makesLargeFamilies(bytes)) return;
  site().put("c/i.xml", bytes);
  FunctionDictionary dictionary;
  int reports = 0;
  const ReportProblem report = [&reports](const std::string&) { ++reports; };
  const bool read = readInterfaceFile(site().root, kPath, FunctionSource::kPanel, dictionary, report);
  require(reports == (read ? 0 : 1), "a failure is reported once");
  if (!read) {
    require(
        dictionary.templateCount() == 0 && dictionary.enumFamilies().empty() && dictionary.aliases().empty(),
        "a file that cannot be read adds nothing");
    return;
  }
  dictionary.finish();
  const std::size_t count = dictionary.functionCount();
  require(count <= kMostFunctions && dictionary.allNames().size() <= kMostNameBytes, "the bounds hold");
  for (std::size_t i = 0; i < std::min(count, kMostLookedAt); ++i) checkFunction(dictionary, i);
  if (count > 0) {
    checkFunction(dictionary, count - 1);
    checkSearches(dictionary);
  }
  for (const PanelSource& source : inputSources(dictionary)) {
    require(source.panelName.starts_with("INPUT"), "every source is an input");
  }
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({reinterpret_cast<const char*>(data), size});
  return 0;
}
