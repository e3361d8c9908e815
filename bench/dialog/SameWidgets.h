#pragma once

#include <QWidget>

namespace tessaly::bench {

// A window of the toolkit's own widgets, as a file of WidgetList.h lists them: as many of each kind, in the
// same parents, in grids of their places, with the same
// texts, but for the title and tool buttons; of the same size.
[[nodiscard]] QWidget* sameWidgets(const char* file);

}  // namespace tessaly::bench
