#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "dictionary/FunctionDictionary.h"
#include "platform/SiteRoot.h"

namespace tessaly {

inline constexpr std::string_view kOlderFamilyInterface =
    "c:\\programme\\RV48\\bin\\MacroFid\\TarrowMFDIfc.xml";
inline constexpr std::string_view kPanelInterface = "c:\\programme\\RV48\\bin\\MacroFid\\CorvaneXLPanel.xml";

// Of both files; 0 for one that cannot be looked at.
[[nodiscard]] std::uint64_t interfaceBytes(const SiteRoot& root);

// Reports a problem; called on the reading thread and must not wait for another thread.
using ReportProblem = std::function<void(const std::string& text)>;

// Adds a file's families, aliases and functions to the dictionary. False, with "Cannot parse file: %s"
// reported, for a file that is missing or not well-formed; the dictionary then keeps what it had. A document
// without an "mfd" element adds nothing and is not reported. The format is told in
// docs/interface-description.md.
[[nodiscard]] bool readInterfaceFile(const SiteRoot& root, std::string_view path, FunctionSource source,
                                     FunctionDictionary& dictionary, const ReportProblem& report);

// Both files of the site, the older family's first; a failure of one does not keep the other from being read.
// Functions beyond the dictionary's bounds are reported once, after both.
void loadFunctionDictionary(const SiteRoot& root, FunctionDictionary& dictionary,
                            const ReportProblem& report);

}  // namespace tessaly
