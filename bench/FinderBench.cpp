#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "dictionary/FunctionDictionary.h"
#include "dictionary/InterfaceFile.h"
#include "model/FunctionFinder.h"
#include "model/FunctionSearch.h"
#include "model/SegmentSearch.h"

namespace tessaly::bench::finder_rows {
namespace {

constexpr std::size_t kFunctions = 100'000;
constexpr std::size_t kBytesPerFunction = 52;                              // of the file
constexpr std::size_t kSearchFilter = 3;                                   // the first search field's
constexpr const char* kTyped[] = {"wipe1", "wipe16", "wipe168", "mask7"};  // keystrokes in a search field

struct Finding {
  FunctionDictionary dictionary;
  std::unique_ptr<FunctionFinder> finder;
  std::unique_ptr<SegmentSearch> search;
  std::unique_ptr<FunctionSearch> words;
  FunctionSearch::Functions all;
  std::string displayTexts;  // of all functions
};

Finding& finding() {
  static const std::unique_ptr<Finding> kFinding = [] {
    auto made = std::make_unique<Finding>();
    const SiteRoot root = siteWithInterface(kFunctions, kFunctions * kBytesPerFunction);
    const auto report = [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); };
    if (!readInterfaceFile(root, "c:\\ifc.xml", FunctionSource::kOlderFamily, made->dictionary, report))
      std::exit(1);
    made->finder = std::make_unique<FunctionFinder>(made->dictionary);
    made->search = std::make_unique<SegmentSearch>(made->dictionary);
    made->words = std::make_unique<FunctionSearch>(made->dictionary);
    for (std::uint32_t i = 0; i < made->dictionary.functionCount(); ++i) {
      made->all.push_back(i);
      made->displayTexts += made->dictionary.function(i).description() + '\n';
    }
    return made;
  }();
  return *kFinding;
}

void prepare() { static_cast<void>(finding()); }

void barePass(std::string_view text, std::string_view names) {
  std::size_t hits = 0;
  const char* end = names.data() + names.size();
  const char* place = names.data();
  while (const void* hit = memmem(place, static_cast<std::size_t>(end - place), text.data(), text.size())) {
    ++hits;
    place = static_cast<const char*>(hit) + text.size();
  }
  keep(&hits);
}

void barePass(std::string_view text) { barePass(text, finding().dictionary.allNames()); }

void filter(const char* text) {
  FinderFilters filters;
  filters[0] = "no such segment";  // so that nothing is kept from the run before
  keep(&finding().finder->find(filters, false));
  filters[0] = text;
  keep(&finding().finder->find(filters, false));
}

Pair filterPair(const char* name, const char* text) {
  return {.name = name,
          .measured = [text] { filter(text); },
          .limit =
              [text] {
                barePass("no such segment");
                barePass(text);
              },
          .goal = 1.5,
          .prepare = prepare,
          .oneThread = true};
}

void keystroke(const char* text) {
  Finding& here = finding();
  const std::vector<std::string> segments = here.search->find(text);
  FinderFilters filters;
  const int row = SegmentSearch::likeliest(segments, text);
  if (row >= 0) filters[kSearchFilter] = segments[static_cast<std::size_t>(row)];
  keep(&here.finder->find(filters, false));
}

void keystrokes() {
  for (const char* text : kTyped) keystroke(text);
}

void barePasses() {
  for (const char* text : {"Wipe1", "Wipe16", "Wipe168", "Mask7"}) barePass(text);
}

// Keystrokes of who types words of display texts, and the plain passes over those texts.
constexpr const char* kWords[] = {"Wipe", "Wipe 1", "Wipe 16", "Mask 7 W"};

void wordKeystrokes() {
  for (const char* text : kWords) {
    const auto found = finding().words->find(text, finding().all);
    keep(found.data());
  }
}

void displayPasses() {
  for (const char* text : kWords) barePass(text, finding().displayTexts);
}

const bool kRegistered[] = {
    addPair(filterPair("filter 100,000 functions, 20,000 hits", "ME3")),
    addPair(filterPair("filter 100,000 functions, 100 hits", "Wipe160")),
    addPair({.name = "a keystroke in a search field, 100,000 functions",
             .measured = keystrokes,
             .limit = barePasses,
             .goal = 4,
             .prepare = prepare,
             .oneThread = true}),
    addPair({.name = "a keystroke in the field for words, 100,000 functions",
             .measured = wordKeystrokes,
             .limit = displayPasses,
             .goal = 2,
             .prepare = prepare,
             .oneThread = true}),
};

}  // namespace
}  // namespace tessaly::bench::finder_rows
