#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "classic/DecodingList.h"
#include "dictionary/FunctionDictionary.h"
#include "link/PanelClient.h"
#include "model/FunctionSearch.h"
#include "model/MacroCommand.h"
#include "platform/SiteAccess.h"
#include "values/SourceNames.h"

class QDialog;
class QMenu;

namespace tessaly {

// What the command editors work with. The window owns everything and outlives the dialogs, which are modal
// and run on the GUI thread.
struct EditorContext {
  SiteAccess site;
  const FunctionDictionary& dictionary;
  DecodingLists& decodingLists;
  const std::vector<PanelSource>& inputSources;  // rows of "Select Input"
  PanelClient& client;                           // for "update data"; values come on its thread
  std::function<bool()> connected;               // any pane is connected
  int& frameRate;  // program-wide, 25 or 30; "50Hz" and "60Hz" set it at once, also in a dialog that is
                   // cancelled
  // At every "insert" and "OK": puts what the dialog now holds where it belongs; why it cannot be put there,
  // for the user (the panel may have deleted the macro behind the dialog, the disk may be full); empty when
  // it is in. Unset where whoever opened the dialog takes it once it is accepted.
  std::function<std::string()> take = {};
  // For one dialog after another: the words of all functions are put together when they are first asked for.
  std::shared_ptr<std::optional<FunctionSearch>> words = {};
  // Adds to a menu of a dialog what a command names, each entry looking for where that is used. Unset where
  // nobody can look.
  std::function<void(QMenu& menu, const MacroCommand& command, QDialog& dialog)> addWhereUsed = {};

  // False after telling why; the dialog then stays open with all that was built.
  [[nodiscard]] bool taken() const {
    const std::string reason = take ? take() : std::string();
    if (!reason.empty()) site.messages.show(reason, MessageIcon::kExclamation);
    return reason.empty();
  }
};

}  // namespace tessaly
