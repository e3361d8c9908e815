#pragma once

#include <chrono>

#include "classic/DecodingList.h"
#include "dictionary/FunctionDictionary.h"
#include "link/PanelConnection.h"
#include "link/PanelMacros.h"
#include "platform/SiteAccess.h"

namespace tessaly {

class MacroHistory;
class Preferences;

// What the window works with; owned by the application, which outlives the window.
struct WindowContext {
  SiteAccess site;
  const FunctionDictionary& dictionary;  // read only after the 0x401 message
  DecodingLists& decodingLists;
  PanelClient& client;
  PanelMacros& panelMacros;
  MacroHistory& history;
  bool demo = false;
  Preferences* preferences = nullptr;  // of the user; may be missing
  std::chrono::milliseconds connectTimeOut = kConnectTimeOut;
};

}  // namespace tessaly
