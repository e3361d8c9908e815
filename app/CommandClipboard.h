#pragma once

#include <memory>
#include <vector>

#include <QMimeData>

#include "model/CommandFragment.h"
#include "model/Macro.h"

namespace tessaly {

// Commands for the clipboard: as our own type and as plain text, both the same fragment.
[[nodiscard]] std::unique_ptr<QMimeData> mimeData(const CommandFragment& commands);

// Commands under the hand: as our own type only, and made into a fragment when somebody asks for it. A drag
// within one list needs none.
[[nodiscard]] std::unique_ptr<QMimeData> mimeData(Macro macro, std::vector<int> numbers);

// Whether there are commands of our own type, good or not.
[[nodiscard]] bool holdsCommands(const QMimeData& data);

// kNoFragment with the reason when there are none.
[[nodiscard]] Expected<CommandFragment> commandsIn(const QMimeData* data);

}  // namespace tessaly
