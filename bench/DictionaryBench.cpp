#include <cstdio>
#include <cstdlib>
#include <string>
#include <tinyxml.h>

#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "dictionary/FunctionDictionary.h"
#include "dictionary/InterfaceFile.h"

namespace tessaly::bench::dictionary_rows {
namespace {

constexpr std::size_t kBytesPerFunction = 52;  // of the file

SiteRoot site(std::size_t functions) { return siteWithInterface(functions, functions * kBytesPerFunction); }

void load(std::size_t functions, FunctionDictionary& dictionary) {
  const auto report = [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); };
  const bool read =
      readInterfaceFile(site(functions), "c:\\ifc.xml", FunctionSource::kPanel, dictionary, report);
  if (!read || dictionary.functionCount() != functions) {
    std::fprintf(stderr, "the sample gave %zu of %zu functions\n", dictionary.functionCount(), functions);
    std::exit(1);
  }
  dictionary.finish();
  dictionary.prepareFind();
}

void loadOnce(std::size_t functions) {
  FunctionDictionary dictionary;
  load(functions, dictionary);
}

void bareLoad(std::size_t functions) {
  TiXmlDocument document;
  keep(&document);
  if (!document.LoadFile(site(functions).resolve("c:\\ifc.xml").c_str())) std::exit(1);
}

Pair loading(const char* name, std::size_t functions, double goal) {
  return {.name = name,
          .measured = [functions] { loadOnce(functions); },
          .limit = [functions] { bareLoad(functions); },
          .goal = goal,
          .prepare = [functions] { static_cast<void>(site(functions)); },
          .oneThread = true};
}

// Names hold their own bytes, and so does the limit; the rest is what a function costs besides.
Figures memoryBesideNames() {
  FunctionDictionary dictionary;
  load(100'000, dictionary);
  const std::size_t names = dictionary.allNames().size() - dictionary.functionCount();
  return {static_cast<double>(dictionary.functionBytes()), static_cast<double>(names)};
}

Figures memoryPerFunction() {
  FunctionDictionary dictionary;
  load(100'000, dictionary);
  return {static_cast<double>(dictionary.functionBytes()) / static_cast<double>(dictionary.functionCount()),
          120};
}

const bool kRegistered[] = {
    addPair(loading("load and expand 5 MB, 100,000 functions", 100'000, 1.3)),
    addPair(loading("load and expand 20 MB, 400,000 functions", 400'000, 1.1)),
    addPair({.name = "load and expand, a function at 100,000 beside 10,000",
             .measured = [] { loadOnce(100'000); },
             .limit = [] { loadOnce(10'000); },
             .goal = 1.3,
             .prepare = [] { static_cast<void>(site(10'000)); },
             .measuredItems = 100'000,
             .limitItems = 10'000,
             .oneThread = true}),
    addFigure({.name = "memory of 100,000 functions beside their names",
               .unit = "B",
               .take = memoryBesideNames,
               .goal = 2}),
    addFigure({.name = "memory a function", .unit = "B", .take = memoryPerFunction}),
};

}  // namespace
}  // namespace tessaly::bench::dictionary_rows
