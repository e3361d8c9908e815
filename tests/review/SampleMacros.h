#pragma once

#include <gtest/gtest.h>
#include <string>

#include "classic/DecodingList.h"
#include "tests/support/SmallDictionary.h"

namespace tessaly {

// The sample site's dictionary and lists.
struct SampleMacrosTest : testing::Test {
  static const SiteRoot& root() {
    static const SiteRoot root{sourcePath("site")};
    return root;
  }
  static const FunctionDictionary& dictionary() { return siteDictionary(); }

  DecodingLists lists{root()};
};

inline std::string macroOf(const std::string& commands) {
  return "<macro name=\"M\"><data>" + commands + "</data></macro>";
}
inline std::string command(const std::string& fid, const std::string& parameters = {},
                           const std::string& workplace = "1") {
  return "<cmd fid=\"" + fid + "\" workplace=\"" + workplace + "\" group=\"0\" module=\"0\" widget=\"0\">" +
         parameters + "</cmd>";
}
inline std::string parameter(const std::string& name, const std::string& value) {
  return "<param name=\"" + name + "\" value=\"" + value + "\"/>";
}
inline std::string classic(const std::string& text) {
  return command("QMF1.NCSCOMMAND", parameter("CMD", text));
}

}  // namespace tessaly
