#pragma once

#include <filesystem>
#include <string>

#include "dictionary/FunctionDictionary.h"
#include "platform/SiteRoot.h"

namespace tessaly::bench {

inline constexpr const char* kApplication = "Bench";
inline constexpr const char* kSmallMacros =
    "c:\\programme\\rv48\\appli\\Bench\\CP1\\macroWP1\\";  // 1,000 of them
inline constexpr const char* kLargeMacros =
    "c:\\programme\\rv48\\appli\\Bench\\CP1\\macroWP2\\";  // macro000.mac
inline constexpr int kMacros = 1000;
inline constexpr int kCommands = 10'000;  // of the large macro

// A macro of `count` commands, each a different function of the dictionary as far as there are enough, with a
// value.
[[nodiscard]] std::string macroOf(const FunctionDictionary& dictionary, int count);

// The sample site with one application more, in the scratch folder; made by the first call.
[[nodiscard]] const SiteRoot& windowSite();

// A site with interface files of 20 MB and 400,000 functions, in halves; made by the first call.
[[nodiscard]] const SiteRoot& largeInterfaceSite();

}  // namespace tessaly::bench
