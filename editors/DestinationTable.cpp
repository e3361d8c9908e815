#include "editors/DestinationTable.h"

#include <algorithm>

#include "platform/Text.h"

namespace tessaly {

namespace {

// In captions and names "#" is the number of the button and "@" that of the mix effect.
struct Rule {
  const char* group;  // buttons of neighbouring rules with one group stand together
  const char* caption;
  const char* name;
  const char* alternative;
  int mixEffects;  // rows ME0 and following that have the button
  int first, last;
  int offset = 0;  // what a caption counts on from the number in the name, as the dictionary's texts do
};

constexpr int kWithMeh = 5;
constexpr int kWithoutMeh = 4;

constexpr Rule kMixEffectRules[] = {
    {"Bus", "Pgm", "PGM.ME@", "", kWithMeh, 1, 1},
    {"Bus", "Pst", "PST.ME@", "", kWithMeh, 1, 1},
    {"Key", "#", "ME@.KEY#.KEY", "", kWithMeh, 1, 4},
    {"Key", "#", "ME@.KEY#.KEY", "", kWithoutMeh, 5, 6},
    {"Key Wipe", "#", "ME@.KEY#.WIPE", "", kWithoutMeh, 1, 4},
    {"Transition", "Transi", "ME@.TRANSI", "", kWithMeh, 1, 1},
    {"Util", "#", "ME@.UTIL#", "", kWithoutMeh, 1, 2},
    {"Wipe", "#", "ME@.WIPE#", "", kWithoutMeh, 1, 2},
    {"iDpm Effect", "#", "ME@.IDPM.CHANNEL#", "ME@.KEY#.IDPM", kWithoutMeh, 1, 4},
    {"eDpm", "Effect", "DpmEffect.ME@", "", kWithoutMeh, 1, 1},
    {"Color Corr.", "YUV", "YUV_CORR.ME@", "", kWithMeh, 1, 1},
    // The fifth mix effect has no RGB correction: the mainframe corrects it in YUV only.
    {"Color Corr.", "RGB", "RGB_CORR.ME@", "", kWithoutMeh, 1, 1},
};

struct Bank {
  Rule rule;
  int perRow;
};

constexpr Bank kBanks[] = {
    {{"Auxbuses", "#", "AUX#", "", 1, 1, 48}, 24},
    {{"Machines Serial", "#", "MACHINE#", "", 1, 1, 4}, 2},
    {{"Machines via LAN", "#", "MACHINE#", "", 1, 5, 36, -4}, 16},
    {{"Ramrecorder Channels", "#", "RAMCHAN#", "RAM#", 1, 1, 6}, 3},
    {{"eDpm Channels", "#", "CHANNEL#.EDPM", "", 1, 1, 4}, 5},
    {{"eDpm Channels", "Master", "EDPM_MASTER", "", 1, 1, 1}, 5},
    {{"Color Generators", "Col #", "BACKGROUND#", "", 1, 1, 3}, 4},
    {{"Color Generators", "Color-Test", "TEST_PATTERN", "", 1, 1, 1}, 4},
};

constexpr InputCorrection kRgbCorrection{"RGB Input Correction", "Select Input for RGB Correction",
                                         "RGB_INP_CORR.INPUT"};
constexpr InputCorrection kYuvCorrection{"YUV Input Correction", "Select Input for YUV Correction",
                                         "YUV_INP_CORR.INPUT"};

std::string filled(const char* pattern, int mixEffect, int number) {
  return replaceAll(replaceAll(pattern, "@", std::to_string(mixEffect)), "#", std::to_string(number));
}

DestinationGroup& groupOf(const Rule& rule, DestinationArea area, std::vector<DestinationGroup>& groups) {
  if (groups.empty() || groups.back().caption != rule.group) groups.push_back({rule.group, area, {}});
  return groups.back();
}

DestinationButton buttonOf(const Rule& rule, int mixEffect, int number, int row, int column) {
  return {filled(rule.caption, mixEffect, number + rule.offset),
          {filled(rule.name, mixEffect, number), filled(rule.alternative, mixEffect, number), {}},
          row,
          column};
}

void addMixEffects(const Rule& rule, std::vector<DestinationGroup>& groups) {
  DestinationGroup& group = groupOf(rule, DestinationArea::kMixEffects, groups);
  const int firstColumn = group.columns();
  for (int mixEffect = 0; mixEffect < rule.mixEffects; ++mixEffect)
    for (int number = rule.first; number <= rule.last; ++number)
      group.buttons.push_back(
          buttonOf(rule, mixEffect, number, mixEffect, firstColumn + number - rule.first));
}

void addBank(const Bank& bank, std::vector<DestinationGroup>& groups) {
  DestinationGroup& group = groupOf(bank.rule, DestinationArea::kBanks, groups);
  for (int number = bank.rule.first; number <= bank.rule.last; ++number) {
    const int place = static_cast<int>(group.buttons.size());
    group.buttons.push_back(buttonOf(bank.rule, 0, number, place / bank.perRow, place % bank.perRow));
  }
}

}  // namespace

bool DestinationNames::owns(std::string_view group) const {
  return !group.empty() && (group == name || group == firstAlternative || group == secondAlternative);
}

int DestinationGroup::columns() const {
  int columns = 0;
  for (const DestinationButton& button : buttons) columns = std::max(columns, button.column + 1);
  return columns;
}

DestinationNames InputCorrection::forInput(std::string_view number) const {
  return {std::string(stem).append(number), {}, {}};
}

const std::vector<std::string>& mixEffectNames() {
  static const std::vector<std::string> names{"PP", "ME1", "ME2", "ME3", "MEh"};
  return names;
}

const std::vector<DestinationGroup>& destinationGroups() {
  static const std::vector<DestinationGroup> groups = [] {
    std::vector<DestinationGroup> made;
    for (const Rule& rule : kMixEffectRules) addMixEffects(rule, made);
    for (const Bank& bank : kBanks) addBank(bank, made);
    return made;
  }();
  return groups;
}

const std::vector<InputCorrection>& inputCorrections() {
  static const std::vector<InputCorrection> corrections{kRgbCorrection, kYuvCorrection};
  return corrections;
}

}  // namespace tessaly
