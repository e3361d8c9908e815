#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/Outcome.h"

// Pages of text and lines as a PDF document, in memory. Lengths are points (1/72 inch) from the upper left
// corner of the page; texts are Windows-1252 in the two faces that every reader of PDF has, so nothing is
// embedded. The same calls give the same bytes.
namespace tessaly {

enum class PdfFace : std::uint8_t { kPlain, kBold };
inline constexpr std::size_t kPdfFaces = 2;

// How wide each letter is, in thousandths of the size of its face.
using LetterWidths = std::array<std::array<std::uint16_t, 256>, kPdfFaces>;
// Null while the library cannot be loaded. Any thread.
[[nodiscard]] const LetterWidths* letterWidths();

// One thread. What goes wrong on the way is told by `end`.
class PdfFile {
 public:
  // The title is Windows-1252; the document counts as made at the beginning of the day, UTC.
  PdfFile(const std::string& title, std::chrono::year_month_day date);
  ~PdfFile();
  PdfFile(PdfFile&&) noexcept;
  PdfFile& operator=(PdfFile&&) noexcept;

  void addPage(double width, double height);
  // Leads to the page that was added last.
  void addBookmark(const std::string& title);
  // `y` is the base line; 0 is black, 1 white.
  void text(double x, double y, PdfFace face, double size, double gray, const std::string& text);
  void line(double x, double y, double length, double width, double gray);

  // The document, once. kMissing without the library, kTooLarge, kNoMemory.
  [[nodiscard]] Expected<std::string> end();

 private:
  struct Document;
  std::unique_ptr<Document> document_;  // null without the library
};

}  // namespace tessaly
