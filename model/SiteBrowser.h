#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ContentCheck.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

// What the lists of a pane show of the applications on disk. A pane's path ends in "\" and holds a folder for
// each application, with a "devices.ini" that names its control panels. Missing files and folders give empty
// lists and are never reported; a folder that cannot be read is a failure. Texts but the names of macros are
// bytes of the disk. A name that is no plain path component names nothing: it is left out, and the folder
// builders give the empty path for it.
namespace tessaly {

inline constexpr int kKeyNumbers = 96;     // 0 to 95
inline constexpr int kDiskWorkplaces = 2;  // of every control panel that has workplaces

// A control panel of an application.
struct PanelEntry {
  std::string text;  // "CP1-Corvane XL -Main desk"
  std::string name;  // the text up to its first "-": what folders are built with
  std::string label;
  bool olderFamily = false;  // of the panel called `name`: its macros are key files
};

// A macro or key file.
struct MacroRow {
  std::string numberText;  // as the file name has it, three characters (key files two), fewer in a short name
  int number = -1;         // 0 to 999 (key files 95), -1 when the text is no such number
  std::string name;        // UTF-8; "???" when it cannot be read
  // Of the file that the number names on the disk, as it was listed; another one with that number, such as
  // "macro007 - Copy.mac", is not what is opened.
  std::optional<ContentCheck> check = {};

  // The name as it is shown: a carriage return of a key file stays in `name` alone.
  [[nodiscard]] std::string shownName() const {
    return name.empty() || name.back() != '\r' ? name : name.substr(0, name.size() - 1);
  }
  [[nodiscard]] std::string text() const { return numberText + " - " + shownName(); }
};

struct MacroListing {
  std::vector<MacroRow> rows;
  std::vector<std::string> reports;  // of files that do not parse; to be shown once the list is complete
};

// Folder with or without "\" at its end.
[[nodiscard]] bool hasDevicesFile(const SiteRoot& root, std::string_view folder);
[[nodiscard]] bool hasPanelApplication(const SiteRoot& root, std::string_view folder);
[[nodiscard]] bool hasContentsFile(const SiteRoot& root, std::string_view folder);

// The text after "Name=" up to the line feed, within the first 254 bytes. False when there is none; `name` is
// then left alone. A carriage return stays in the name.
[[nodiscard]] bool readNameLine(const SiteRoot& root, std::string_view path, std::string& name);

// `text` up to its first "-", which must stand at index 2 or later; else empty.
[[nodiscard]] std::string beforeHyphen(std::string_view text);

[[nodiscard]] Expected<std::vector<std::string>> applications(const SiteRoot& root, std::string_view path);

// Empty also for an application without a devices file.
[[nodiscard]] Expected<std::vector<PanelEntry>> controlPanels(const SiteRoot& root, std::string_view path,
                                                              std::string_view application);

// True for the older family, whose macros are key files.
[[nodiscard]] bool isOlderFamily(const SiteRoot& root, std::string_view path, std::string_view application,
                                 std::string_view panel);

// True when the panel, by its row in the list, has workplaces.
[[nodiscard]] bool hasWorkplaces(std::string_view panelText);

[[nodiscard]] std::string applicationFolder(std::string_view path, std::string_view application);
[[nodiscard]] std::string panelFolder(std::string_view path, std::string_view application,
                                      std::string_view panel);
[[nodiscard]] std::string macroFolder(std::string_view path, std::string_view application,
                                      std::string_view panel, int workplace);
[[nodiscard]] std::string keyFolder(std::string_view path, std::string_view application,
                                    std::string_view panel);

// "macro007.mac" and "key03.upk" in a folder that ends in "\".
[[nodiscard]] std::string macroFile(std::string_view folder, std::string_view numberText);
[[nodiscard]] std::string macroFile(std::string_view folder, int number);
[[nodiscard]] std::string keyFile(std::string_view folder, std::string_view numberText);

[[nodiscard]] Expected<MacroListing> listMacros(const SiteRoot& root, std::string_view folder);
[[nodiscard]] Expected<std::vector<MacroRow>> listKeyFiles(const SiteRoot& root, std::string_view folder);

// 1000 names by macro number; empty where there is no macro. Of two rows with one number the later counts.
[[nodiscard]] std::vector<std::string> macroNames(const std::vector<MacroRow>& rows);

}  // namespace tessaly
