#include "platform/PdfLibrary.h"

#include "platform/LoadedLibrary.h"

namespace tessaly {

bool PdfLibrary::load() {
  const LoadedLibrary library(Library::kHaru);
  return library.find("HPDF_New", begin) && library.find("HPDF_Free", free) &&
         library.find("HPDF_GetError", error) && library.find("HPDF_SetCompressionMode", setCompression) &&
         library.find("HPDF_SetPagesConfiguration", setPagesOfNode) &&
         library.find("HPDF_SetCurrentEncoder", setEncoding) && library.find("HPDF_GetEncoder", encoder) &&
         library.find("HPDF_SetInfoAttr", setInfo) && library.find("HPDF_SetInfoDateAttr", setInfoDate) &&
         library.find("HPDF_GetFont", font) && library.find("HPDF_Font_TextWidth", width) &&
         library.find("HPDF_AddPage", addPage) && library.find("HPDF_Page_SetWidth", setPageWidth) &&
         library.find("HPDF_Page_SetHeight", setPageHeight) &&
         library.find("HPDF_Page_BeginText", beginText) && library.find("HPDF_Page_EndText", endText) &&
         library.find("HPDF_Page_SetFontAndSize", setFont) &&
         library.find("HPDF_Page_SetGrayFill", setTextGray) && library.find("HPDF_Page_TextOut", text) &&
         library.find("HPDF_Page_SetGrayStroke", setLineGray) &&
         library.find("HPDF_Page_SetLineWidth", setLineWidth) && library.find("HPDF_Page_MoveTo", moveTo) &&
         library.find("HPDF_Page_LineTo", lineTo) && library.find("HPDF_Page_Stroke", stroke) &&
         library.find("HPDF_CreateOutline", addBookmark) &&
         library.find("HPDF_Outline_SetDestination", setBookmarkPlace) &&
         library.find("HPDF_Page_CreateDestination", placeOnPage) &&
         library.find("HPDF_SaveToStream", save) && library.find("HPDF_GetStreamSize", savedSize) &&
         library.find("HPDF_ReadFromStream", readSaved);
}

const PdfLibrary* PdfLibrary::get() { return loadedFunctions<PdfLibrary>(); }

}  // namespace tessaly
