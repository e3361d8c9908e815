#include "review/SheetLetters.h"

#include <algorithm>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr double kThousand = 1000;  // widths are thousandths of the size
constexpr char kEllipsis = '\x85';

// The characters of valid UTF-8, one after another.
std::size_t sizeOfCharacter(std::string_view text) {
  std::size_t size = 1;
  while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) ++size;
  return size;
}

char32_t characterOf(std::string_view bytes) {
  if (bytes.size() == 1) return static_cast<unsigned char>(bytes[0]);
  // The first byte loses one bit for each byte of the character and one more.
  char32_t value = static_cast<unsigned char>(bytes[0]) & (0x7FU >> bytes.size());
  for (const char byte : bytes.substr(1)) value = (value << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
  return value;
}

}  // namespace

std::string inSheetLetters(std::string_view bytes) {
  const std::string visible = visibleUtf8(bytes);
  std::string text;
  for (std::string_view rest = visible; !rest.empty();) {
    const std::string_view character = rest.substr(0, sizeOfCharacter(rest));
    const auto letter = exactWindows1252(character);
    text += letter ? *letter : spelledByNumber(characterOf(character));
    rest.remove_prefix(character.size());
  }
  return text;
}

double SheetLetters::width(std::string_view text, PdfFace face, double size) const {
  std::size_t sum = 0;
  for (const char letter : text)
    sum += widths_[static_cast<std::size_t>(face)][static_cast<unsigned char>(letter)];
  return static_cast<double>(sum) * size / kThousand;
}

std::size_t SheetLetters::fitting(std::string_view text, PdfFace face, double size, double width) const {
  const auto room = static_cast<std::size_t>(std::max(0.0, width * kThousand / size));
  std::size_t sum = 0, count = 0;
  for (; count < text.size(); ++count) {
    sum += widths_[static_cast<std::size_t>(face)][static_cast<unsigned char>(text[count])];
    if (sum > room) break;
  }
  return count;
}

std::vector<std::string> SheetLetters::lines(std::string_view text, PdfFace face, double size,
                                             double width) const {
  std::vector<std::string> lines;
  while (true) {
    std::size_t end = fitting(text, face, size, width);
    if (end >= text.size()) break;
    end = std::max<std::size_t>(end, 1);
    std::size_t next = end;
    // A blank may stand just behind what fits.
    if (const std::size_t blank = text.rfind(' ', end); blank != text.npos) {
      const std::size_t word = text.find_last_not_of(' ', blank);
      if (word != text.npos) {
        end = word + 1;
        next = std::min(text.find_first_not_of(' ', blank), text.size());
      }
    }
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(next);
    if (text.empty()) return lines;
  }
  lines.emplace_back(text);
  return lines;
}

std::string SheetLetters::elided(std::string_view text, PdfFace face, double size, double width) const {
  if (fitting(text, face, size, width) >= text.size()) return std::string(text);
  const double ellipsis = this->width({&kEllipsis, 1}, face, size);
  return std::string(text.substr(0, fitting(text, face, size, width - ellipsis))) + kEllipsis;
}

}  // namespace tessaly
