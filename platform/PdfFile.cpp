#include "platform/PdfFile.h"

#include <algorithm>
#include <new>

#include "platform/PdfLibrary.h"

namespace tessaly {
namespace {

constexpr const char* kEncoding = "WinAnsiEncoding";
constexpr const char* kFaces[kPdfFaces] = {"Helvetica", "Helvetica-Bold"};
constexpr unsigned kPagesOfNode = 1000;  // the library's lists end at 32,767
constexpr const char* kNoLibrary = "the library for PDF (libhpdf) cannot be loaded; is it installed?";

HPDF_REAL real(double value) { return static_cast<HPDF_REAL>(value); }

struct Ends {
  void operator()(void* document) const { PdfLibrary::get()->free(static_cast<HPDF_Doc>(document)); }
};
using Owned = std::unique_ptr<void, Ends>;

}  // namespace

struct PdfFile::Document {
  [[nodiscard]] HPDF_Doc get() const { return static_cast<HPDF_Doc>(owned.get()); }

  const PdfLibrary& library;
  Owned owned;
  HPDF_Font faces[kPdfFaces] = {};
  HPDF_Page page = nullptr;
  double height = 0;
};

const LetterWidths* letterWidths() {
  static const std::unique_ptr<const LetterWidths> measured = []() -> std::unique_ptr<const LetterWidths> {
    const PdfLibrary* library = PdfLibrary::get();
    if (library == nullptr) return nullptr;
    const Owned document(library->begin(nullptr, nullptr));
    if (!document) return nullptr;
    auto widths = std::make_unique<LetterWidths>();
    for (std::size_t face = 0; face < kPdfFaces; ++face) {
      HPDF_Font font = library->font(static_cast<HPDF_Doc>(document.get()), kFaces[face], kEncoding);
      if (font == nullptr) return nullptr;
      for (std::size_t letter = 0; letter < (*widths)[face].size(); ++letter) {
        const auto byte = static_cast<HPDF_BYTE>(letter);
        (*widths)[face][letter] = static_cast<std::uint16_t>(library->width(font, &byte, 1).width);
      }
    }
    return widths;
  }();
  return measured.get();
}

PdfFile::PdfFile(const std::string& title, std::chrono::year_month_day date) {
  const PdfLibrary* library = PdfLibrary::get();
  if (library == nullptr) return;
  // Without a function for errors the library remembers the first one and does nothing more.
  document_ = std::make_unique<Document>(Document{*library, Owned(library->begin(nullptr, nullptr))});
  HPDF_Doc document = document_->get();
  if (document == nullptr) return;
  library->setCompression(document, HPDF_COMP_ALL);
  library->setPagesOfNode(document, kPagesOfNode);
  library->setEncoding(document, kEncoding);
  library->setInfo(document, HPDF_INFO_TITLE, title.c_str());
  library->setInfo(document, HPDF_INFO_CREATOR, "Tessaly");
  HPDF_Date made{};
  made.year = static_cast<int>(date.year());
  made.month = static_cast<int>(static_cast<unsigned>(date.month()));
  made.day = static_cast<int>(static_cast<unsigned>(date.day()));
  made.ind = 'Z';
  library->setInfoDate(document, HPDF_INFO_CREATION_DATE, made);
  for (std::size_t face = 0; face < kPdfFaces; ++face)
    document_->faces[face] = library->font(document, kFaces[face], kEncoding);
}

PdfFile::~PdfFile() = default;
PdfFile::PdfFile(PdfFile&&) noexcept = default;
PdfFile& PdfFile::operator=(PdfFile&&) noexcept = default;

void PdfFile::addPage(double width, double height) {
  if (!document_ || document_->get() == nullptr) return;
  document_->page = document_->library.addPage(document_->get());
  document_->height = height;
  if (document_->page == nullptr) return;
  document_->library.setPageWidth(document_->page, real(width));
  document_->library.setPageHeight(document_->page, real(height));
}

void PdfFile::addBookmark(const std::string& title) {
  if (!document_ || document_->page == nullptr) return;
  const PdfLibrary& library = document_->library;
  HPDF_Outline outline = library.addBookmark(document_->get(), nullptr, title.c_str(),
                                             library.encoder(document_->get(), kEncoding));
  HPDF_Destination place = library.placeOnPage(document_->page);
  if (outline != nullptr && place != nullptr) library.setBookmarkPlace(outline, place);
}

void PdfFile::text(double x, double y, PdfFace face, double size, double gray, const std::string& text) {
  if (!document_ || document_->page == nullptr) return;
  const PdfLibrary& library = document_->library;
  HPDF_Page page = document_->page;
  library.beginText(page);
  library.setTextGray(page, real(gray));
  library.setFont(page, document_->faces[static_cast<std::size_t>(face)], real(size));
  library.text(page, real(x), real(document_->height - y), text.c_str());
  library.endText(page);
}

void PdfFile::line(double x, double y, double length, double width, double gray) {
  if (!document_ || document_->page == nullptr) return;
  const PdfLibrary& library = document_->library;
  HPDF_Page page = document_->page;
  library.setLineGray(page, real(gray));
  library.setLineWidth(page, real(width));
  library.moveTo(page, real(x), real(document_->height - y));
  library.lineTo(page, real(x + length), real(document_->height - y));
  library.stroke(page);
}

Expected<std::string> PdfFile::end() {
  using enum Failure::Kind;
  if (!document_) return Failure{kMissing, kNoLibrary};
  HPDF_Doc document = document_->get();
  if (document == nullptr) return Failure{kNoMemory, "there is not enough memory"};
  const PdfLibrary& library = document_->library;
  library.save(document);
  if (const HPDF_STATUS error = library.error(document); error == HPDF_FAILD_TO_ALLOC_MEM)
    return Failure{kNoMemory, "there is not enough memory"};
  else if (error != HPDF_OK)
    return Failure{kTooLarge, "is too large for a PDF document"};
  std::string bytes(library.savedSize(document), '\0');
  HPDF_UINT32 size = static_cast<HPDF_UINT32>(bytes.size());
  library.readSaved(document, reinterpret_cast<HPDF_BYTE*>(bytes.data()), &size);
  bytes.resize(size);
  document_->owned.reset();
  return bytes;
}

}  // namespace tessaly
