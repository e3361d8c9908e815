#pragma once

#include <memory>
#include <stop_token>

#include <QPainter>

#include "platform/Outcome.h"
#include "review/SheetPages.h"

class QPrinter;

namespace tessaly {

// Draws a page where the painter's coordinates are points and its origin the page's corner. Each text takes
// the width that the layout gave it, whatever face the machine has. Any thread.
void paintSheetPage(QPainter& painter, const SheetPage& page);

// Prints the pages that the printer is set to, each as large as its paper allows. Any thread; the printer is
// used by nobody else meanwhile. kCancelled once `stop` is asked for: nothing is printed then, or a part.
Outcome printSheet(QPrinter& printer, const SheetPages& pages, const std::stop_token& stop);

}  // namespace tessaly
