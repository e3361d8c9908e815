#pragma once

#include "editors/EditorContext.h"

// What "update data" of the command editors needs beside the values: a panel, and a line to it.
namespace tessaly {

// The panes still take themselves for connected, but the panel has gone: no value comes any more.
[[nodiscard]] bool lineLost(const EditorContext& context);
void tellLineLost(const EditorContext& context);

// Whether the panel can be asked now; false after telling why not.
[[nodiscard]] bool mayAskPanel(const EditorContext& context);

}  // namespace tessaly
