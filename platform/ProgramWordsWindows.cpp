#include <cstdio>
#include <fcntl.h>
#include <io.h>

#include "platform/OpenFileWindows.h"
#include "platform/ProgramWords.h"

namespace tessaly {

// `main` gets the words in a code page that does not hold all of them.
std::vector<std::string> programWords(int, char**) {
  int count = 0;
  LPWSTR* const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> words;
  for (int at = 0; wide != nullptr && at < count; ++at) words.push_back(utf8Of(wide[at]));
  ::LocalFree(wide);
  return words;
}

void openStandardStreams() {
  for (std::FILE* const stream : {stdin, stdout, stderr}) ::_setmode(::_fileno(stream), _O_BINARY);
  ::SetConsoleOutputCP(CP_UTF8);
}

}  // namespace tessaly
