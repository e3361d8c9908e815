#pragma once

namespace tessaly {

// While it lives, numbers are read and printed by this thread with "." as the decimal point.
class PlainLocale {
 public:
  PlainLocale();
  ~PlainLocale();
  PlainLocale(const PlainLocale&) = delete;
  PlainLocale& operator=(const PlainLocale&) = delete;

 private:
  void* previous_;
};

}  // namespace tessaly
