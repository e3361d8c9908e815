#include <iostream>
#include <string>
#include <vector>

#include "cli/CommandTable.h"
#include "platform/Memory.h"

int main(int count, char** words) {
  tessaly::setUpMemory();
  std::ios::sync_with_stdio(false);
  return tessaly::runCommandLine(std::vector<std::string>(words + (count > 0 ? 1 : 0), words + count),
                                 std::cin, std::cout, std::cerr);
}
