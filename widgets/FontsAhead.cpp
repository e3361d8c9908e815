#include "widgets/FontsAhead.h"

#include <future>

#include <QCoreApplication>

#include "platform/LoadedLibrary.h"
#include "platform/Processors.h"

namespace tessaly {

namespace {

// Never destroyed: the loader may ask while the program ends.
std::shared_future<void>& search() {
  static auto* const running = new std::shared_future<void>;
  return *running;
}

}  // namespace

void findFontsAhead() {
  qAddPostRoutine(awaitFonts);
  try {
    search() = std::async(std::launch::async, [toolkits = processorNow()] {
      leaveProcessor(toolkits);
      int (*findFonts)() = nullptr;
      if (LoadedLibrary(Library::kFonts).find("FcInit", findFonts)) findFonts();
    });
  } catch (const std::system_error&) {
    // No thread to be had: whoever asks first finds them.
  }
}

void awaitFonts() {
  if (search().valid()) search().wait();
}

}  // namespace tessaly
