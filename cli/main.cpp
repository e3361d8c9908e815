#include <iostream>
#include <string>
#include <vector>

#include "cli/CommandTable.h"
#include "platform/Memory.h"
#include "platform/ProgramWords.h"

int main(int count, char** words) {
  tessaly::setUpMemory();
  tessaly::openStandardStreams();
  std::ios::sync_with_stdio(false);
  std::vector<std::string> given = tessaly::programWords(count, words);
  if (!given.empty()) given.erase(given.begin());
  return tessaly::runCommandLine(given, std::cin, std::cout, std::cerr);
}
