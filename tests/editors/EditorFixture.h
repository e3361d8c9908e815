#pragma once

#include "editors/EditorContext.h"
#include "tests/editors/DialogDriver.h"
#include "tests/link/FakeTransport.h"
#include "tests/support/SmallDictionary.h"
#include "tests/support/TestSite.h"

namespace tessaly {

// What an editor dialog needs, with a panel that answers when the test says so.
struct EditorFixture {
  explicit EditorFixture(const FunctionDictionary& functions = smallDictionary()) : dictionary(functions) {}

  const FunctionDictionary& dictionary;
  TestSite site;
  DecodingLists lists{site.root};
  std::vector<PanelSource> sources{{"Camera 1", "INPUT1", {}}, {"Color 1", "INPUT144", {}}};
  FakePanel panel;
  bool connected = false;
  int frameRate = 25;
  BeepCount beeps;
  std::string refusal;  // why the macro behind the dialog takes nothing
  EditorContext context{site.access(), dictionary,
                        lists,         sources,
                        *panel.client, [this] { return connected; },
                        frameRate,     [this] { return refusal; }};
};

}  // namespace tessaly
