#pragma once

#include <string>

namespace tessaly {

// Of one run of the program.
struct Ran {
  int code;
  std::string out, errors;
};

}  // namespace tessaly
