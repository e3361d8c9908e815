#pragma once

#include <functional>

#include "app/MainWindow.h"
#include "tests/support/WindowDriver.h"

namespace tessaly {

using SavePicture = std::function<void(QWidget&, const char*)>;

// Takes the windows that look at macros from above, each with something found in it: of the main window's
// pane A, which shows a faulty macro of the disk, beside pane B on a panel.
void takeReviews(MainWindow& window, const WindowDriver& user, const WindowContext& context,
                 const SavePicture& save);

}  // namespace tessaly
