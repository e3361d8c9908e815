#pragma once

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "cli/CommandTable.h"
#include "dictionary/InterfaceFile.h"
#include "tests/support/TestSite.h"

namespace tessaly {

// Of one run of the program.
struct Ran {
  int code;
  std::string out, errors;
};

inline Ran ranOver(const TestSite& site, std::vector<std::string> words, const std::string& input = {}) {
  words.insert(words.begin(), {"--root", site.root.path().string()});
  std::istringstream in(input);
  std::ostringstream out, errors;
  const int code = runCommandLine(words, in, out, errors);
  return {code, out.str(), errors.str()};
}

// The functions that the site's two interface files describe.
inline void writeFunctions(const TestSite& site, const std::string& functions) {
  site.write(kPanelInterface, "<mfd>" + functions + "</mfd>");
  site.write(kOlderFamilyInterface, "<mfd/>");
}

// One run after another over a site.
class Runs : public testing::Test {
 protected:
  int run(std::vector<std::string> words, const std::string& input = {}) {
    last = ranOver(site, std::move(words), input);
    return last.code;
  }

  TestSite site;
  Ran last;
};

}  // namespace tessaly
