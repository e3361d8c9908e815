#pragma once

#include <array>
#include <string_view>

#include "link/Pane.h"

namespace tessaly {

// What tells the two panes apart. Everything else about a pane exists once.
struct PaneDescriptor {
  // Numbers by which the controls of the main window are known.
  struct ControlIds {
    int harddisk, panel, sourceLabel, addressLabel, address, connectButton;
    int applications, controlPanels, workplaces, macros, commands;
    int createMacro, deleteMacro, renameMacro, copyMacro;
    int newClassic, newCorvane, newMultiple, modifyCommand, deleteCommand, updateData;
    int showDestination, showRaw, useTabs;
    int saveChanges, discardChanges, progress, notice;
  };

  Pane pane;
  char letter;
  const char* title;
  const char* copyText;        // caption of the button that copies from the other pane
  const char* newClassicText;  // pane B's caption names the wrong editor; its users know the button by it
  bool harddiskHiddenAtStart;  // only pane A's radio appears with the end of loading
  ControlIds ids;
};

inline constexpr std::array<PaneDescriptor, kPanes.size()> kPaneDescriptors{{
    {Pane::kA, 'A', "Macro Overview A", "copy from B", "new [classic]", true, {1048, 1049, 1058, 1050, 1051,
                                                                               1052, 1055, 1089, 1090, 1056,
                                                                               1057, 1047, 1071, 1072, 1053,
                                                                               1074, 1093, 1094, 1075, 1076,
                                                                               1087, 1098, 1099, 1127, 1355,
                                                                               1356, 1396, 1373}},
    {Pane::kB, 'B', "Macro Overview B", "copy from A", "new [multiple]", false, {1061, 1062, 1059, 1060, 1066,
                                                                                 1067, 1063, 1091, 1092, 1064,
                                                                                 1065, 1068, 1080, 1081, 1069,
                                                                                 1083, 1095, 1096, 1084, 1085,
                                                                                 1088, 1100, 1101, 1128, 1357,
                                                                                 1358, 1397, 1374}},
}};

[[nodiscard]] constexpr const char* workingCopyPath(Pane pane) {
  return pane == Pane::kA ? "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac"
                          : "c:\\programme\\RV48\\bin\\MacroFid\\tempB.mac";
}
inline constexpr std::string_view kClassicWorkingCopy = "c:\\programme\\RV48\\bin\\MacroFid\\tempClassic.mac";

// Controls outside the panes.
inline constexpr int kCloseId = 2;
inline constexpr int kLoadingNoticeId = 1129;
inline constexpr int kAboutCommandId = 16;  // the low four bits of a command's id do not count

// Window messages; the numbers are the system's own.
inline constexpr int kDictionaryLoadedMessage = 0x401;
inline constexpr int kConnectedMessageA = 0x402;
inline constexpr int kConnectedMessageB = 0x403;

}  // namespace tessaly
