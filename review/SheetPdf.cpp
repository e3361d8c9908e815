#include "review/SheetFiles.h"

namespace tessaly {

Expected<std::string> sheetPdf(const SheetPages& pages, std::chrono::year_month_day date) {
  PdfFile file(pages.title, date);
  for (const SheetPage& page : pages.pages) {
    file.addPage(pages.width, pages.height);
    if (!page.bookmark.empty()) file.addBookmark(page.bookmark);
    for (const SheetRule& rule : page.rules) file.line(rule.x, rule.y, rule.length, rule.width, rule.gray);
    for (const SheetText& text : page.texts)
      file.text(text.x, text.y, text.face, text.size, text.gray, text.text);
  }
  return file.end();
}

}  // namespace tessaly
