#include <clocale>
#include <cstdlib>
#include <cstring>

#include "platform/PlainLocale.h"

namespace tessaly {

// Nothing is to be done, and nothing put back, where the locale is a plain one: always, but in a program of
// somebody else's making.
PlainLocale::PlainLocale() : previous_(nullptr) {
  const char* const now = std::setlocale(LC_NUMERIC, nullptr);
  if (now == nullptr || std::strcmp(now, "C") == 0) return;
  previous_ = ::_strdup(now);
  ::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
  std::setlocale(LC_NUMERIC, "C");
}

PlainLocale::~PlainLocale() {
  if (previous_ == nullptr) return;
  std::setlocale(LC_NUMERIC, static_cast<const char*>(previous_));
  ::_configthreadlocale(_DISABLE_PER_THREAD_LOCALE);
  std::free(previous_);
}

}  // namespace tessaly
