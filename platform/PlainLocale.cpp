#include "platform/PlainLocale.h"

#include <locale.h>

namespace tessaly {

PlainLocale::PlainLocale() {
  static const locale_t plain = ::newlocale(LC_ALL_MASK, "C", nullptr);
  previous_ = ::uselocale(plain);
}

PlainLocale::~PlainLocale() { ::uselocale(static_cast<locale_t>(previous_)); }

}  // namespace tessaly
