#pragma once

#include <cstdio>
#include <fstream>
#include <string>
#include <unistd.h>

namespace tessaly::bench {

// With this option a program of a start rests before it tells: what it held to begin with has been given
// back.
inline constexpr const char* kRest = "--rest";
inline constexpr int kRestMilliseconds = 500;

// Bytes of this process that are in memory and not shared with a file.
inline long privateBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word != "RssAnon:") continue;
    long kilobytes = 0;
    status >> kilobytes;
    return kilobytes * 1024;
  }
  return 0;
}

// Tells the process that started this one that it can be used, what it holds and how many widgets it has, and
// ends it without tidying up.
inline void tellReady(int shownWidgets = 0, int hiddenWidgets = 0) {
  std::printf("ready %ld %d %d\n", privateBytes(), shownWidgets, hiddenWidgets);
  std::fflush(stdout);
  _exit(0);
}

}  // namespace tessaly::bench
