#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

inline constexpr std::string_view kSettingsFile = "c:\\Programme\\RV48\\bin\\MacroFid\\Settings.dat";
inline constexpr std::string_view kDefaultPath = "c:\\programme\\rv48\\appli\\";
inline constexpr std::string_view kDefaultAddress = "192.168.1.10";
inline constexpr std::int32_t kFrameRate50Hz = 25;  // frames per second
inline constexpr std::int32_t kFrameRate60Hz = 30;

// What the user's choices leave behind (docs/settings-format.md). Texts are bytes (Windows-1252). A plain
// value.
struct Settings {
  std::int32_t format = 1;  // written back as read, never interpreted
  std::int32_t frameRate = kFrameRate50Hz;
  std::string pathA{kDefaultPath}, pathB{kDefaultPath};  // applications folders, as stored
  std::string addressA{kDefaultAddress}, addressB{kDefaultAddress};

  friend bool operator==(const Settings&, const Settings&) = default;
};

// What holds without a settings file.
[[nodiscard]] Settings defaultSettings();

// The defaults with a failure when the file cannot be read; isNothing (SitePlace.h) when there surely is
// none, and else what it holds must not be overwritten. A short or damaged file counts as read: what it does
// not reach keeps its default, and a frame rate that there is not is 25.
Outcome readSettings(const SiteRoot& root, Settings& settings);

// Writes the file whole or leaves the old one. The folder must exist.
Outcome writeSettings(const SiteRoot& root, const Settings& settings);

// True when every character of `utf8` has a place in a text of the file.
[[nodiscard]] bool settingsHold(std::string_view utf8);

// A pane's working path: the stored one with "\" at its end, unless it is empty.
[[nodiscard]] std::string derivedPath(std::string_view stored);

}  // namespace tessaly
