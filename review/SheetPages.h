#pragma once

#include <string>
#include <vector>

#include "platform/PdfFile.h"
#include "review/Sheet.h"

namespace tessaly {

// A piece of text on a page; what is printed, written and shown draws the same pieces at the same places.
struct SheetText {
  double x, y;   // of its left end on the base line
  double width;  // that its letters take
  double size;   // of the face
  PdfFace face;
  double gray;       // 0 is black, 1 white
  std::string text;  // Windows-1252
};

struct SheetRule {
  double x, y, length, width, gray;
};

// Lengths are points (1/72 inch) from the upper left corner, y downwards.
struct SheetPage {
  std::vector<SheetText> texts;
  std::vector<SheetRule> rules;
  std::string bookmark;  // of the macro that begins here, else empty; Windows-1252
};

struct SheetPages {
  double width = 0, height = 0;
  std::string title;             // Windows-1252
  std::vector<SheetPage> pages;  // one at the least
};

// kMissing without the library of PDF, whose letters are measured. What Windows-1252 has no letter for is
// spelled by its number, as "[U+0416]". Nothing is cut off: long texts go on in the next line or page.
[[nodiscard]] Expected<SheetPages> layOut(const Sheet& sheet, const SheetOptions& options,
                                          const SheetWords& words);

}  // namespace tessaly
