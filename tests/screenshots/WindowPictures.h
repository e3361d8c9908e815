#pragma once

#include "tests/screenshots/ReviewPictures.h"

namespace tessaly {

// Takes the main window beside a simulated panel: key files, a connected pane, values from the panel, the
// history, and the offer of a start after a crash; with `all`, the windows that look at macros, too. Works on
// a copy of the site.
void takeWindows(const SiteRoot& root, const FunctionDictionary& dictionary, DecodingLists& lists, QSize size,
                 const SavePicture& save, bool all);

}  // namespace tessaly
