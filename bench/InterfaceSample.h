#pragma once

#include <cstddef>
#include <string>

#include "dictionary/FunctionDictionary.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly::bench {

// Functions that one template of the sample gives: 5 mix effects × 5 keys × 2 modes.
inline constexpr std::size_t kFunctionsPerTemplate = 50;

// An interface description file that expands to `functions` functions (a multiple of kFunctionsPerTemplate)
// with names of some 30 bytes, filled with parameters to about `bytes` bytes.
[[nodiscard]] std::string interfaceSample(std::size_t functions, std::size_t bytes);

// A site root in the scratch folder that holds the sample as "c:\ifc.xml"; written by the first call of its
// kind.
[[nodiscard]] SiteRoot siteWithInterface(std::size_t functions, std::size_t bytes);

// Ends the run when a sample could not be made, with the reason where there is one.
void require(bool done);
void require(const Outcome& made);

// The sample's functions, and commands of them.
struct FunctionSample {
  FunctionSample();

  // Of the function at `index`, counted round; the mainframe is 1 to 4.
  [[nodiscard]] std::string command(std::size_t index, int mainframe, int tenths) const;

  SiteRoot root = siteWithInterface(100'000, 5'200'000);
  FunctionDictionary dictionary;
};

}  // namespace tessaly::bench
