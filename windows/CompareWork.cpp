#include "windows/CompareWork.h"

#include <QPromise>

namespace tessaly {

namespace {

CompareWork::Result compare(const std::array<CompareSide, 2>& sides, const FunctionDictionary& dictionary) {
  CompareWork::Result result;
  std::array<std::optional<Macro>, 2> macros;
  for (const Side side : kSides) {
    if (!sides[sideIndex(side)].content) continue;
    auto content = sides[sideIndex(side)].content();
    if (content)
      macros[sideIndex(side)] = *std::move(content);
    else
      result.failures[sideIndex(side)] = content.failure();
  }
  if (macros[0] && macros[1])
    result.diff =
        std::make_shared<const MacroDiff>(*std::move(macros[0]), *std::move(macros[1]), &dictionary);
  return result;
}

}  // namespace

CompareWork::CompareWork(QThreadPool& pool, const FunctionDictionary& dictionary)
    : pool_(pool), dictionary_(dictionary) {
  connect(&watcher_, &QFutureWatcherBase::finished, this, [this] {
    if (!watcher_.isCanceled() && watcher_.future().resultCount() > 0) emit ready(watcher_.result());
  });
}

CompareWork::~CompareWork() { watcher_.future().cancel(); }

void CompareWork::begin(const std::array<CompareSide, 2>& sides) {
  watcher_.future().cancel();
  auto promise = std::make_shared<QPromise<Result>>();
  watcher_.setFuture(promise->future());
  pool_.start([promise, sides, &dictionary = dictionary_] {
    promise->start();
    if (!promise->isCanceled()) promise->addResult(compare(sides, dictionary));
    promise->finish();
  });
}

}  // namespace tessaly
