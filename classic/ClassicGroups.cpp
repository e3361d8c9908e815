#include "classic/ClassicGroups.h"

#include <algorithm>

#include "platform/Text.h"

namespace tessaly {

namespace {

using Subgroups = std::vector<ClassicSubgroup>;

constexpr ClassicSubgroup kSeparator{"", kSeparatorCode, kSeparatorCode};

ClassicGroup heading(const char* text) { return {text, kSeparatorCode, {}}; }

const Subgroups& mixEffect() {
  static const Subgroups subgroups = {
      {"Crossbar", 1, 1},       {"Key", 32, 35},           {"Wipe", 16, 17},         {"Transition", 8, 8},
      {"Me-Misc", 64, 64},      {"TimeMemo", 14, 14},      {"Maskbus", 3, 3},        {"Maskstore", 48, 48},
      {"Bus Correction", 2, 2}, {"Dpm Channel", 161, 164}, {"Dpm Global", 177, 180}, {"Dpm Main", 160, 160},
  };
  return subgroups;
}

std::vector<ClassicGroup> mixEffects() {
  return {
      heading("ME's & PP -----------------"),
      {"Me1", 1, mixEffect()},
      {"Me2", 2, mixEffect()},
      {"Me3", 3, mixEffect()},
      {"PP",
       0,
       {{"Crossbar", 1, 1},
        {"Key", 32, 35},
        {"Ext-Key", 36, 38},
        {"Wipe", 16, 17},
        {"Transition", 8, 8},
        {"Me-Misc", 64, 64},
        {"TimeMemo", 14, 14},
        {"Maskstore", 48, 48},
        {"Buscorrection", 2, 2},
        {"Dpm Channel", 161, 164},
        {"Dpm Global", 177, 180},
        {"Dpm Main", 160, 160}}},
      {"Meh",
       4,
       {{"Crossbar", 1, 1},
        {"Key", 32, 35},
        {"Transition", 8, 8},
        {"Me-Misc", 64, 64},
        {"TimeMemo", 14, 14}}},
  };
}

std::vector<ClassicGroup> generalResources() {
  return {
      heading("General Resources ----"),
      {"Color Background", 18, {{"Color", 1, 3}}},
      {"DVE",
       19,
       {{"Dve", 1, 2}, kSeparator, {"DVx Chan", 16, 19}, {"DVx Global", 24, 24}, {"DVx Main", 32, 32}}},
      {"Stores", 20, {{"Videostore", 1, 1}, {"MPR1", 2, 2}, {"MPR2", 4, 4}}},
      {"Master TimeMemo", 30, {{"Default Application", 0, 0}}},
      {"Machine Control",
       29,
       {{"Media Player", 1, 4},
        {"Media Player LAN", 64, 95},
        kSeparator,
        {"RamRecorder", 16, 21},
        {"RamRecorder Common", 32, 32}}},
      {"Video input", 17, {{"Input", 1, 96}}},
  };
}

std::vector<ClassicGroup> auxBuses() {
  return {
      heading("Auxbuses ----------------"),
      {"Auxbus", 16, {{"Aux", 1, 48}, {"Ext-Aux", 145, 159}, {"Ext-AuxName", 144, 144}}},
      {"AuxBus Correction", 37, {{"AuxBus", 1, 38}}},
      {"Ext-AuxBus Setup", 28, {{"Ext-AuxBus", 1, 1}}},
  };
}

std::vector<ClassicGroup> setups() {
  return {
      heading("Setups ---------------------"),
      {"SidePanel", 32, {{"SidePanel", 1, 1}}},
      {"CP Setup",
       33,
       {{"CP Operational", 1, 1},
        {"CP MakeMemo", 2, 2},
        {"CP Enviroment", 3, 3},
        {"CP Application", 4, 4},
        {"CP Personal", 5, 5},
        {"CP Assignment", 16, 16}}},
      {"MF Setup", 34, {{"MF Enviroment", 1, 1}, {"MF Applic. Control", 2, 2}, {"MF Misc", 16, 16}}},
      {"Source Substitution", 67, {{"Substab", 1, 15}}},
      {"XBarIdent", 27, {{"XBarIdent", 1, 1}}},
      {"GPI", 21, {{"MF-Gpi", 1, 32}, {"CP-Gpi", 129, 134}}},
      {"GPO", 22, {{"MF-Gpo", 1, 128}, {"CP-Gpo", 129, 134}}},
      {"Serial Ports", 23, {{"MF-Port", 1, 15}, {"CP-Port", 33, 38}}},
      {"Tally", 24, {{"Tally overall", 0, 0}, {"Tally", 1, 4}}},
      {"Applic. Setup", 35, {{"Def. Applic.", 0, 0}, {"Applic", 1, 4}}},
  };
}

std::vector<ClassicGroup> peripherals() {
  return {
      heading("Peripheral Devices ---"),
      {"Aux CP", 25, {{"MF-AuxCp", 1, 4}, {"CP-AuxCp", 33, 42}}},
      {"SatPanel", 65, {{"RSat1", 1, 1}}},
      {"UMD", 26, {{"MF-UMD", 1, 1}, {"CP-UMD", 33, 33}}},
  };
}

std::vector<ClassicGroup> externalControls() {
  return {
      heading("External Controls ------"), {"Edit Control", 31, {{"Editor", 1, 4}}},
      {"PBus", 68, {{"MF-PBus", 1, 1}}},   {"Pallas", 66, {{"Pallas Type1", 1, 1}}},
      {"Esam", 69, {{"MF-Esam", 1, 1}}},
  };
}

std::vector<ClassicGroup> scalars() {
  return {heading("Scalar -----------"), {"Input Scalars", 74, {{"Scalar", 1, 30}}}};
}

std::vector<ClassicGroup> menu() {
  std::vector<ClassicGroup> rows;
  for (const auto& section : {mixEffects(), generalResources(), auxBuses(), setups(), peripherals(),
                              externalControls(), scalars()}) {
    rows.insert(rows.end(), section.begin(), section.end());
    rows.insert(rows.end(), 2, heading(""));
  }
  return rows;
}

}  // namespace

const std::vector<ClassicGroup>& classicGroups() {
  static const std::vector<ClassicGroup> groups = menu();
  return groups;
}

const ClassicGroup* classicGroup(std::uint8_t cd) {
  if (cd == kSeparatorCode) return nullptr;
  const auto& groups = classicGroups();
  const auto found =
      std::find_if(groups.begin(), groups.end(), [cd](const ClassicGroup& group) { return group.cd == cd; });
  return found == groups.end() ? nullptr : &*found;
}

std::string subgroupName(const ClassicGroup& group, std::uint8_t co) {
  for (const ClassicSubgroup& subgroup : group.subgroups) {
    if (subgroup.low == kSeparatorCode || co < subgroup.low || co > subgroup.high) continue;
    if (subgroup.low == subgroup.high) return subgroup.name;
    return format("%s%d", subgroup.name, co - subgroup.low + 1);
  }
  return {};
}

std::string groupName(std::uint8_t cd, std::uint8_t co) {
  if (const ClassicGroup* group = classicGroup(cd)) {
    const std::string subgroup = subgroupName(*group, co);
    if (!subgroup.empty()) return std::string(group->name) + " - " + subgroup;
  }
  return format("cd: %02x - co: %02x", cd, co);
}

}  // namespace tessaly
