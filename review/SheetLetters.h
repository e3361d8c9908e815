#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/PdfFile.h"

// Texts in the letters of a sheet, measured and broken into lines.
namespace tessaly {

// UTF-8, or bytes of unknown origin, in Windows-1252. Each character without a letter there, and what would
// hide or turn round others, is spelled by its number.
[[nodiscard]] std::string inSheetLetters(std::string_view bytes);

class SheetLetters {
 public:
  explicit SheetLetters(const LetterWidths& widths) : widths_(widths) {}

  // Points, of a text in Windows-1252.
  [[nodiscard]] double width(std::string_view text, PdfFace face, double size) const;
  // Broken at blanks, which are left out there, and inside of words that are longer than a line; one line at
  // the least, none wider than `width` but for a single letter.
  [[nodiscard]] std::vector<std::string> lines(std::string_view text, PdfFace face, double size,
                                               double width) const;
  // As much of the text as fits in, with "…" behind what is left out.
  [[nodiscard]] std::string elided(std::string_view text, PdfFace face, double size, double width) const;

 private:
  // How many letters fit in.
  [[nodiscard]] std::size_t fitting(std::string_view text, PdfFace face, double size, double width) const;

  const LetterWidths& widths_;
};

}  // namespace tessaly
