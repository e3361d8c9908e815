#pragma once

#include <array>
#include <string_view>

#include "link/Pane.h"

namespace tessaly {

// What tells the two panes apart. Everything else about a pane exists once.
struct PaneDescriptor {
  // Numbers by which the controls of the main window are known.
  struct ControlIds {
    Pane pane;
    int harddisk = of(1048, 1061), panel = of(1049, 1062), sourceLabel = of(1058, 1059);
    int addressLabel = of(1050, 1060), address = of(1051, 1066), connectButton = of(1052, 1067);
    int applications = of(1055, 1063), controlPanels = of(1089, 1091), workplaces = of(1090, 1092);
    int macros = of(1056, 1064), commands = of(1057, 1065), createMacro = of(1047, 1068);
    int deleteMacro = of(1071, 1080), renameMacro = of(1072, 1081), copyMacro = of(1053, 1069);
    int newClassic = of(1074, 1083), newCorvane = of(1093, 1095), newMultiple = of(1094, 1096);
    int modifyCommand = of(1075, 1084), deleteCommand = of(1076, 1085), updateData = of(1087, 1088);
    int showDestination = of(1098, 1100), showRaw = of(1099, 1101), useTabs = of(1127, 1128);
    int saveChanges = of(1355, 1357), discardChanges = of(1356, 1358), progress = of(1396, 1397);
    int notice = of(1373, 1374);

    // A control's number in each of the panes.
    [[nodiscard]] constexpr int of(int a, int b) const { return pane == Pane::kA ? a : b; }
  };

  Pane pane;
  char letter;
  const char* title;
  const char* copyText;        // caption of the button that copies from the other pane
  const char* newClassicText;  // pane B's caption names the wrong editor; its users know the button by it
  bool harddiskHiddenAtStart;  // only pane A's radio appears with the end of loading
  ControlIds ids{pane};
};

inline constexpr std::array<PaneDescriptor, kPanes.size()> kPaneDescriptors{{
    {Pane::kA, 'A', "Macro Overview A", "copy from B", "new [classic]", true},
    {Pane::kB, 'B', "Macro Overview B", "copy from A", "new [multiple]", false},
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
