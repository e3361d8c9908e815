#include "bench/InterfaceSample.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "bench/Table.h"
#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"

namespace tessaly::bench {
namespace {

constexpr const char* kFamilies =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<mfd>\n"
    "<fidsegment_indexed name=\"me\" fidseg=\"ME\" displayname=\"ME \" min=\"0\" max=\"4\" offset=\"0\"/>\n"
    "<fidsegment_indexed name=\"layer\" fidseg=\"LAYER\" displayname=\"Layer \" min=\"0\" max=\"4\" "
    "offset=\"1\"/>\n"
    "<fidsegment_enum name=\"mode\">\n<m fidseg=\"SET\" displayname=\"set\"/>\n"
    "<m fidseg=\"INC\" displayname=\"step\"/>\n</fidsegment_enum>\n";

constexpr std::array<const char*, 8> kSubjects = {"Wipe",   "Border",  "Shadow", "Matte",
                                                  "Timing", "Clipper", "Mask",   "Position"};

std::string templateOf(std::size_t number, std::size_t bytes) {
  const char* subject = kSubjects[number % kSubjects.size()];
  const int place = static_cast<int>(number);
  std::string text = format(
      "<fid name=\"$me.$layer.%s%d.$mode\" sid=\"$me.$layer.%s%d\" group=\"$me.$layer.%s\" "
      "description=\"$me $layer %s %d $mode\" long_desc=\"Moves the %s of a layer\">\n"
      "  <float_parameter name=\"level\" description=\"level\" type=\"percent\" min=\"0\" max=\"1\" "
      "minDisp=\"0\" maxDisp=\"100\"/>\n  <enum_parameter name=\"shape\" description=\"shape\">\n",
      subject, place, subject, place, subject, subject, place, subject);
  for (int shape = 0; text.size() + 36 < bytes; ++shape) {
    text += format("    <enum value=\"%d\" description=\"shape %d of the pattern store\"/>\n", shape, shape);
  }
  return text + "  </enum_parameter>\n</fid>\n";
}

}  // namespace

std::string interfaceSample(std::size_t functions, std::size_t bytes) {
  const std::size_t templates = functions / kFunctionsPerTemplate;
  std::string text = kFamilies;
  for (std::size_t number = 0; number < templates; ++number) text += templateOf(number, bytes / templates);
  return text + "</mfd>\n";
}

SiteRoot siteWithInterface(std::size_t functions, std::size_t bytes) {
  const auto folder = scratchFolder() / format("site-%d", static_cast<int>(functions));
  if (!std::filesystem::exists(folder)) {
    std::filesystem::create_directories(folder / "c");
    std::ofstream file(folder / "c/ifc.xml", std::ios::binary);
    if (!(file << interfaceSample(functions, bytes)).flush()) {
      std::fprintf(stderr, "cannot write the sample into %s\n", folder.c_str());
      std::exit(1);
    }
  }
  return SiteRoot(folder);
}

void require(bool done) {
  if (!done) require(Failure{Failure::Kind::kDiskError, "not as it was to be"});
}

void require(const Outcome& made) {
  if (made.done()) return;
  std::fprintf(stderr, "cannot make the sample in %s: %s\n", scratchFolder().c_str(),
               made.failure().text.c_str());
  std::exit(1);
}

FunctionSample::FunctionSample() {
  require(
      readInterfaceFile(root, "c:\\ifc.xml", FunctionSource::kPanel, dictionary, [](const std::string&) {}));
}

std::string FunctionSample::command(std::size_t index, int mainframe, int tenths) const {
  return format(
      "        <cmd fid=\"QMF%d.%s\" workplace=\"1\" group=\"0\" module=\"0\" widget=\"0\">\n"
      "            <param name=\"level\" value=\"0.%d\" />\n        </cmd>\n",
      mainframe, std::string(dictionary.name(index % dictionary.functionCount())).c_str(), tenths);
}

}  // namespace tessaly::bench
