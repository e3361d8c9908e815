#pragma once

#include <cstdlib>
#include <memory>
#include <string>

#include "dictionary/FunctionDictionary.h"
#include "dictionary/InterfaceFile.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {

// One function of every parameter kind, increment twins, a panel function, and names that try the rules.
inline void fillSmallDictionary(FunctionDictionary& dictionary) {
  const auto function = [&](const char* name, const char* sid, const char* description) {
    FunctionTemplate definition;
    definition.name = name;
    definition.sid = sid;
    definition.description = description;
    definition.source = FunctionSource::kOlderFamily;
    return definition;
  };
  dictionary.add(EnumFamily{"ME", {{"ME0", "PP"}, {"ME1", "ME 1"}, {"ME4", "ME h"}}});
  dictionary.add(EnumFamily{"MODE", {{"SET", "Set"}, {"INC", "Increment"}}});
  dictionary.add(IndexedFamily{"KEY", "KEY", "Key ", 1, 12, 0});
  dictionary.add(AliasEntry{"CLIP", "Threshold", "THRESHOLD", "level"});

  FunctionTemplate clip = function("$ME.$KEY.CLIP.$MODE", "$ME.$KEY.CLIP", "$ME $KEY Clip $MODE");
  clip.floats = {{"LEVEL", "Level", "", false, FloatUnit::kPercent, 0, 255, 0, 100}};
  dictionary.add(clip);
  FunctionTemplate type = function("$ME.$KEY.TYPE.SET", "$ME.$KEY.TYPE", "$ME $KEY Type");
  type.enums = {{"TYPE", "Type", "", false, {{"LIN", "Linear"}, {"LUM", "Luminance"}}}};
  type.inputs = {{"SOURCE", "Source", "", false}};
  dictionary.add(type);
  FunctionTemplate rate = function("$ME.RATE", "$ME.RATE", "$ME Rate");
  rate.integers = {{"RATE", "Rate: ", "", false, false, -50, 999, -50, 999},
                   {"EASE", "Ease", "", true, true, 0, 255, 0, 100}};
  dictionary.add(rate);
  FunctionTemplate cue = function("MACHINE1.CUE", "", "Machine 1 Cue");
  cue.timecodes = {{"TC", "Timecode", "", true}};
  dictionary.add(cue);
  FunctionTemplate run = function("MACRO.RUN", "MACRO.CURRENT", "Macro Run");
  run.source = FunctionSource::kPanel;
  run.integers = {{"REG", "Macro: ", "", false, false, 0, 999, 0, 999}};
  dictionary.add(run);
  dictionary.add(function("A.B.C.D.E.F.G.H.$MODE.J.K.L", "", "Twelve"));
  FunctionTemplate many = function("MANY", "MANY", "Many parameters");
  for (int i = 0; i < 40; ++i)
    many.integers.push_back({"P" + std::to_string(i), "Parameter", "", true, false, 10, 20, 10, 20});
  dictionary.add(many);
  dictionary.finish();
}

inline const FunctionDictionary& smallDictionary() {
  static const std::unique_ptr<FunctionDictionary> kDictionary = [] {
    auto made = std::make_unique<FunctionDictionary>();
    fillSmallDictionary(*made);
    return made;
  }();
  return *kDictionary;
}

inline const FunctionDictionary& siteDictionary() {
  static const std::unique_ptr<FunctionDictionary> kDictionary = [] {
    auto made = std::make_unique<FunctionDictionary>();
    loadFunctionDictionary(SiteRoot(sourcePath("site")), *made, [](const std::string&) { std::abort(); });
    made->finish();
    return made;
  }();
  return *kDictionary;
}

}  // namespace tessaly
