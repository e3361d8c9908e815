#include "fuzz/Fuzzing.h"
#include "platform/Text.h"
#include "platform/ZipArchive.h"
#include "review/Snapshot.h"

// An archive as it comes, or, when it begins with "L", one with a list of ours and a file: no chance hits
// upon the sums of an archive.
namespace tessaly {
namespace {

constexpr std::chrono::sys_seconds kTime{};

std::string archiveOf(FuzzInput& input) {
  const std::string list(input.text());
  const std::string name(input.text());
  const std::string bytes(input.rest());
  std::vector<ZipFile> files{{"manifest.json", list}};
  if (!name.empty()) files.push_back({name, bytes});
  return packZip(files, kTime).value_or("");
}

void run(std::string_view archive) {
  const auto snapshot = unpackSnapshot(archive);
  if (!snapshot) {
    require(!snapshot.failure().text.empty(), "a refused archive has a reason");
    require(isValidUtf8(snapshot.failure().text), "a reason can be shown");
    return;
  }
  std::size_t held = 0;
  for (const int workplace : snapshot->workplaces) {
    for (const Snapshot::Macro& macro : snapshot->of(workplace)) {
      held += macro.bytes.size();
      require(macro.workplace == workplace, "a workplace has its own macros");
    }
  }
  require(held <= archive.size(), "no archive holds more than its size");
  const auto packed = packSnapshot(*snapshot);
  require(packed.has_value(), "what was read can be packed");
  const auto again = unpackSnapshot(*packed);
  require(again && packSnapshot(*again) == *packed, "the same snapshot is the same archive");
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || *data != 'L') {
    tessaly::run({reinterpret_cast<const char*>(data), size});
    return 0;
  }
  tessaly::FuzzInput input(data + 1, size - 1);
  tessaly::run(tessaly::archiveOf(input));
  return 0;
}
