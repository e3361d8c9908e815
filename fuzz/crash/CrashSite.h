#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/SiteAccess.h"

namespace tessaly {

// What the worker does, each writing one file of its own, or several as one.
enum class CrashStep { kEdit, kSave, kCopy, kConvert, kDownload, kKeep, kSettings, kSteps, kBatch };

struct CrashStepRow {
  CrashStep step;
  const char* name;
  std::string_view file;  // the site path that it writes
};

inline constexpr std::array kCrashSteps{
    CrashStepRow{CrashStep::kEdit, "value update", "c:\\programme\\RV48\\bin\\MacroFid\\tempA.mac"},
    CrashStepRow{CrashStep::kSave, "save", "c:\\programme\\rv48\\appli\\Show\\CP1\\macroWP1\\macro001.mac"},
    CrashStepRow{CrashStep::kCopy, "disk copy",
                 "c:\\programme\\rv48\\appli\\Show\\CP1\\macroWP2\\macro001.mac"},
    CrashStepRow{CrashStep::kConvert, "key conversion",
                 "c:\\programme\\RV48\\bin\\MacroFid\\tempClassic.mac"},
    CrashStepRow{CrashStep::kDownload, "download", "c:\\programme\\rv48\\appli\\Show\\CP1\\macroWP3\\x.mac"},
    CrashStepRow{CrashStep::kKeep, "history", "history\\lock"},
    CrashStepRow{CrashStep::kSettings, "settings", ""},
    CrashStepRow{CrashStep::kSteps, "steps", "c:\\programme\\RV48\\bin\\MacroFid\\tempB.mac"},
    CrashStepRow{CrashStep::kBatch, "batch",
                 "c:\\programme\\rv48\\appli\\Show\\CP1\\macroWP5\\macro000.mac"}};

// What the steps' working copy is of.
inline constexpr std::string_view kCrashStepsTarget =
    "c:\\programme\\rv48\\appli\\Show\\CP1\\macroWP4\\macro001.mac";

inline constexpr int kCrashCommands = 600;  // in the edited macro
inline constexpr int kCrashKeys = 400;      // commands in the key file
inline constexpr int kCrashDownloads = 6;   // macros on the panel, of very different sizes

// A site and a panel's tree in a folder of their own. Every content that is written carries its generation,
// so that a mixture of two, or a part of one, is seen.
class CrashSite {
 public:
  explicit CrashSite(const std::filesystem::path& folder);

  // What a macro held goes to the history, which is kept small here.
  [[nodiscard]] bool keep(int generation) const;
  // Removes what would make the next step find its folders ready.
  void forgetHistory() const;

  // Writes every file of the site in generation 0, and what is copied, converted and downloaded.
  [[nodiscard]] bool prepare() const;

  // The generation that the file of a step holds; nothing when it is not one whole content.
  [[nodiscard]] std::optional<int> generation(CrashStep step) const;

  // Temporary files in the folder of a step's file, and entries that are neither these nor known.
  struct Strays {
    int temporary = 0;
    int unknown = 0;
  };
  [[nodiscard]] Strays strays(CrashStep step) const;

  [[nodiscard]] const SiteRoot& root() const { return root_; }
  [[nodiscard]] std::filesystem::path panelTree() const { return folder_ / "panel"; }
  [[nodiscard]] static std::string path(CrashStep step);
  [[nodiscard]] static std::string keyPath();

 private:
  std::filesystem::path folder_;
  SiteRoot root_;
};

// The value that every command of a generation has; texts of different generations differ in length, too.
[[nodiscard]] std::string crashValue(int generation);
[[nodiscard]] std::string crashMacro(int generation, int commands);
[[nodiscard]] std::string crashMacroName(int generation);

// Message boxes of an operation that fails are counted by its result.
class CrashMessages : public Messages {
 public:
  void show(const std::string&, MessageIcon) override {}
  bool ask(const std::string&, MessageIcon) override { return false; }
};

}  // namespace tessaly
