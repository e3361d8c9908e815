#include "values/SourceNames.h"

#include <array>
#include <string_view>
#include <unordered_set>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kInputPrefix = "INPUT";
constexpr int kInputs = 96;
constexpr int kRamChannels = 6;
constexpr int kDpmChannels = 4;
constexpr int kMachines = 32;
constexpr int kRs422Machines = 4;
constexpr int kFirstRamSource = 137;
constexpr int kFirstVirtualInput = 224;
constexpr int kVirtualInputs = 16;

using SourceTable = std::array<std::string, 256>;

// The buses of PP, the mix effects 1 to 3 and "Meh" (bank 4, without C and D).
void addBank(SourceTable& names, const char* bankName, int bank) {
  const auto name = [&](int number, const char* bus) {
    names[static_cast<std::size_t>(number)] = format("%s %s", bankName, bus);
  };
  name(160 + bank, "A");
  name(208 + bank, "B");
  if (bank < 4) {
    name(192 + 2 * bank, "C");
    name(193 + 2 * bank, "D");
  }
  name(176 + bank, "Preview1");
  name(216 + bank, "Preview2");
}

SourceTable classicSources() {
  SourceTable names;
  names.fill("unknown input");
  for (std::size_t i = 1; i <= kInputs; ++i) names[i] = format("Input %02d", static_cast<int>(i));
  for (std::size_t i = 0; i < kDpmChannels; ++i) {
    names[129 + 2 * i] = format("eDpm Chan%d Fill", static_cast<int>(i) + 1);
    names[130 + 2 * i] = format("eDpm Chan%d Key", static_cast<int>(i) + 1);
  }
  for (std::size_t i = 0; i < kRamChannels; ++i) {
    names[kFirstRamSource + i] = format("RamRecorder Chan%d", static_cast<int>(i) + 1);
  }
  for (std::size_t i = 0; i < 3; ++i) names[144 + i] = format("Color Bgnd %d", static_cast<int>(i) + 1);
  names[153] = "Color Test";
  names[0] = "Black";
  names[240] = "White";
  int bank = 0;
  for (const char* bankName : {"PP", "Me1", "Me2", "Me3", "Meh"}) addBank(names, bankName, bank++);
  // Counted from 00, one below the inputs: deliberate, the panel's keys are labelled so.
  for (std::size_t i = 0; i < kVirtualInputs; ++i) {
    names[kFirstVirtualInput + i] = format("Virtual Input %02d", static_cast<int>(i));
  }
  return names;
}

PanelSource numbered(const char* display, const char* panel, int shown, int number) {
  return {std::string(display) + std::to_string(shown), std::string(panel) + std::to_string(number), {}};
}

void addNumbered(std::vector<PanelSource>& list, const char* display, const char* panel, int count) {
  for (int i = 1; i <= count; ++i) list.push_back(numbered(display, panel, i, i));
}

void addMixEffects(std::vector<PanelSource>& list, const char* suffix) {
  int bank = 0;
  for (const char* display : {"PP", "ME 1", "ME 2", "ME 3", "ME h"}) {
    list.push_back({display, format("ME%d%s", bank++, suffix), {}});
  }
}

void addBusInputs(std::vector<PanelSource>& list, const char* display, int bank) {
  const auto add = [&](const char* bus, int number) {
    list.push_back({format("%s %s", display, bus), format("INPUT%d", number), {}});
  };
  add("A", 160 + bank);
  add("B", 208 + bank);
  if (bank < 4) {
    add("C", 192 + 2 * bank);
    add("D", 193 + 2 * bank);
  }
  add("Pvw1", 176 + bank);
  add("Pvw2", 216 + bank);
}

void addInputs(std::vector<PanelSource>& list) {
  addNumbered(list, "Input ", "INPUT", kInputs);
  for (int i = 0; i < 3; ++i) list.push_back(numbered("Color ", "INPUT", i + 1, 144 + i));
  list.push_back({"Color-Test", "INPUT153", {}});
  for (int i = 0; i < kDpmChannels; ++i) list.push_back(numbered("eDpm Fill ", "INPUT", i + 1, 129 + 2 * i));
  for (int i = 0; i < kRamChannels; ++i)
    list.push_back(numbered("RamRec ", "INPUT", i + 1, kFirstRamSource + i));
  int bank = 0;
  for (const char* display : {"PP", "ME1", "ME2", "ME3", "Me-h"}) addBusInputs(list, display, bank++);
  for (int i = 0; i < kVirtualInputs; ++i) {
    list.push_back(numbered("Virtual Inp. ", "INPUT", i, kFirstVirtualInput + i));
  }
}

void addMachines(std::vector<PanelSource>& list) {
  for (int i = 1; i <= kRs422Machines; ++i) {
    list.push_back({format("Mach. %d (rs422)", i), format("MACHINE%d", i), {}});
  }
  for (int i = 1; i <= kMachines; ++i) {
    list.push_back({format("Mach. %d (LAN)", i), format("MACHINE%d", i + kRs422Machines), {}});
  }
}

using Categories = std::array<std::vector<PanelSource>, kSourceCategories>;

Categories allCategories() {
  Categories lists;
  addMixEffects(lists[0], "");
  addInputs(lists[1]);
  addNumbered(lists[2], "Aux ", "AUX", 48);
  addNumbered(lists[3], "RamRec ", "RAMCHAN", kRamChannels);
  addMachines(lists[4]);
  addNumbered(lists[5], "eDpm Channel ", "CHANNEL", kDpmChannels);
  lists[6].push_back({"Emem", "EMEM", {}});
  addMixEffects(lists[7], "");
  addNumbered(lists[7], "RamRec ", "RAM", kRamChannels);
  addNumbered(lists[7], "eDpm Channel ", "EDPM", kDpmChannels);
  for (PanelSource& source : lists[7]) source.function = "SOURCE.SET";
  addMixEffects(lists[8], ".TRANSI");
  addNumbered(lists[9], "Machine ", "MACHINE", kMachines);
  addNumbered(lists[9], "iDpm ", "IDPM", 4);
  return lists;
}

// `seen` keeps a panel name from being listed twice; null lists every member.
void addFamily(std::vector<PanelSource>& list, const EnumFamily& family,
               std::unordered_set<std::string>* seen) {
  for (const SegmentAlternative& member : family.members) {
    if (!member.fidText.starts_with(kInputPrefix)) continue;
    if (seen != nullptr && !seen->insert(member.fidText).second) continue;
    list.push_back({member.displayText, member.fidText, {}});
  }
}

}  // namespace

const std::string& sourceName(std::uint8_t number) {
  static const SourceTable kNames = classicSources();
  return kNames[number];
}

const std::vector<PanelSource>& panelSources(int category) {
  static const Categories kCategories = allCategories();
  static const std::vector<PanelSource> kNone;
  if (category < 0 || category >= kSourceCategories) return kNone;
  return kCategories[static_cast<std::size_t>(category)];
}

std::vector<PanelSource> inputSources(const FunctionDictionary& dictionary) {
  std::vector<PanelSource> list;
  if (const EnumFamily* inputs = dictionary.enumFamily("INPUT_5")) {
    addFamily(list, *inputs, nullptr);
    return list;
  }
  std::unordered_set<std::string> seen;
  for (const auto& [name, family] : dictionary.enumFamilies()) {
    if (name.find(kInputPrefix) != std::string::npos) addFamily(list, family, &seen);
  }
  return list;
}

std::string inputNumberText(std::string_view panelName) {
  if (!panelName.starts_with(kInputPrefix)) return {};
  return std::string(panelName.substr(kInputPrefix.size()));
}

}  // namespace tessaly
