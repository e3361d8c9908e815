#include "platform/ProgramWords.h"

namespace tessaly {

std::vector<std::string> programWords(int count, char** words) { return {words, words + count}; }

void openStandardStreams() {}  // they are like this

}  // namespace tessaly
