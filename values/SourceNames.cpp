#include "values/SourceNames.h"

#include <array>
#include <bitset>
#include <optional>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

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

using ClassicSources = std::vector<ClassicSource>;
using SourceTable = std::array<std::string, 256>;

void addRow(ClassicSources& rows, int number, std::string name) {
  rows.push_back({static_cast<std::uint8_t>(number), std::move(name)});
}

// The buses of PP, the mix effects 1 to 3 and "Meh" (bank 4, without C and D).
void addBank(ClassicSources& rows, const char* bankName, int bank) {
  const auto add = [&](int number, const char* bus) { addRow(rows, number, format("%s %s", bankName, bus)); };
  add(160 + bank, "A");
  add(208 + bank, "B");
  if (bank < 4) {
    add(192 + 2 * bank, "C");
    add(193 + 2 * bank, "D");
  }
  add(176 + bank, "Preview1");
  add(216 + bank, "Preview2");
}

ClassicSources classicRows() {
  ClassicSources rows;
  for (int i = 1; i <= kInputs; ++i) addRow(rows, i, format("Input %02d", i));
  for (int i = 0; i < kDpmChannels; ++i) addRow(rows, 129 + 2 * i, format("eDpm Chan%d Fill", i + 1));
  for (int i = 0; i < kDpmChannels; ++i) addRow(rows, 130 + 2 * i, format("eDpm Chan%d Key", i + 1));
  for (int i = 0; i < kRamChannels; ++i)
    addRow(rows, kFirstRamSource + i, format("RamRecorder Chan%d", i + 1));
  for (int i = 0; i < 3; ++i) addRow(rows, 144 + i, format("Color Bgnd %d", i + 1));
  addRow(rows, 153, "Color Test");
  addRow(rows, 0, "Black");
  addRow(rows, 240, "White");
  int bank = 0;
  for (const char* bankName : {"PP", "Me1", "Me2", "Me3", "Meh"}) addBank(rows, bankName, bank++);
  // Counted from 00, one below the inputs: deliberate, the panel's keys are labelled so.
  for (int i = 0; i < kVirtualInputs; ++i)
    addRow(rows, kFirstVirtualInput + i, format("Virtual Input %02d", i));
  return rows;
}

SourceTable namesByNumber() {
  SourceTable names;
  names.fill("unknown input");
  for (const ClassicSource& row : classicSources()) names[row.number] = row.name;
  return names;
}

// The number of an input's panel name when a byte holds it.
std::optional<std::uint8_t> byteNumber(std::string_view panelName) {
  return exactNumber<std::uint8_t>(inputNumberText(panelName));
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

const std::vector<ClassicSource>& classicSources() {
  static const ClassicSources kRows = classicRows();
  return kRows;
}

const std::string& sourceName(std::uint8_t number) {
  static const SourceTable kNames = namesByNumber();
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

std::vector<ClassicSource> classicInputs(const std::vector<PanelSource>& inputs) {
  std::vector<ClassicSource> rows;
  std::bitset<256> listed;
  for (const PanelSource& input : inputs) {
    const auto number = byteNumber(input.panelName);
    if (!number) continue;
    rows.push_back({*number, input.displayName});
    listed.set(*number);
  }
  for (const ClassicSource& source : classicSources())
    if (!listed.test(source.number)) rows.push_back(source);
  return rows;
}

std::string inputNumberText(std::string_view panelName) {
  if (!panelName.starts_with(kInputPrefix)) return {};
  return std::string(panelName.substr(kInputPrefix.size()));
}

}  // namespace tessaly
