#include "review/Saying.h"

namespace tessaly {

// In one pass: a value may hold the mark of another.
std::string inEnglish(const Said& said) {
  const std::string_view sentence = kSayings[static_cast<std::size_t>(said.saying)];
  std::string text;
  for (std::size_t i = 0; i < sentence.size(); ++i) {
    const bool mark = sentence[i] == '%' && i + 1 < sentence.size();
    if (!mark) {
      text += sentence[i];
      continue;
    }
    const auto place = static_cast<std::size_t>(sentence[++i] - '1');
    if (place < said.values.size()) text += said.values[place];
  }
  return text;
}

}  // namespace tessaly
