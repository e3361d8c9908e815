#pragma once

#include <hpdf.h>

namespace tessaly {

// libharu, loaded by the first sheet (LoadedLibrary.h): nothing else needs it.
struct PdfLibrary {
  // Null while the library cannot be loaded. Any thread.
  [[nodiscard]] static const PdfLibrary* get();

  decltype(&HPDF_New) begin = nullptr;
  decltype(&HPDF_Free) free = nullptr;
  decltype(&HPDF_GetError) error = nullptr;
  decltype(&HPDF_SetCompressionMode) setCompression = nullptr;
  decltype(&HPDF_SetPagesConfiguration) setPagesOfNode = nullptr;
  decltype(&HPDF_SetCurrentEncoder) setEncoding = nullptr;
  decltype(&HPDF_GetEncoder) encoder = nullptr;
  decltype(&HPDF_SetInfoAttr) setInfo = nullptr;
  decltype(&HPDF_SetInfoDateAttr) setInfoDate = nullptr;
  decltype(&HPDF_GetFont) font = nullptr;
  decltype(&HPDF_Font_TextWidth) width = nullptr;
  decltype(&HPDF_AddPage) addPage = nullptr;
  decltype(&HPDF_Page_SetWidth) setPageWidth = nullptr;
  decltype(&HPDF_Page_SetHeight) setPageHeight = nullptr;
  decltype(&HPDF_Page_BeginText) beginText = nullptr;
  decltype(&HPDF_Page_EndText) endText = nullptr;
  decltype(&HPDF_Page_SetFontAndSize) setFont = nullptr;
  decltype(&HPDF_Page_SetGrayFill) setTextGray = nullptr;
  decltype(&HPDF_Page_TextOut) text = nullptr;
  decltype(&HPDF_Page_SetGrayStroke) setLineGray = nullptr;
  decltype(&HPDF_Page_SetLineWidth) setLineWidth = nullptr;
  decltype(&HPDF_Page_MoveTo) moveTo = nullptr;
  decltype(&HPDF_Page_LineTo) lineTo = nullptr;
  decltype(&HPDF_Page_Stroke) stroke = nullptr;
  decltype(&HPDF_CreateOutline) addBookmark = nullptr;
  decltype(&HPDF_Outline_SetDestination) setBookmarkPlace = nullptr;
  decltype(&HPDF_Page_CreateDestination) placeOnPage = nullptr;
  decltype(&HPDF_SaveToStream) save = nullptr;
  decltype(&HPDF_GetStreamSize) savedSize = nullptr;
  decltype(&HPDF_ReadFromStream) readSaved = nullptr;

  // Of loadedFunctions().
  [[nodiscard]] bool load();
};

}  // namespace tessaly
