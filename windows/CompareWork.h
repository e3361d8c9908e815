#pragma once

#include <array>
#include <memory>
#include <optional>

#include <QFutureWatcher>
#include <QThreadPool>

#include "windows/CompareSide.h"

namespace tessaly {

// Reads two sides and compares them on a thread of the pool, one pair after the other: what comes of a pair
// that is outdated by then is dropped. What is under way in the pool holds on to nothing of this object. GUI
// thread.
class CompareWork : public QObject {
  Q_OBJECT

 public:
  struct Result {
    std::array<std::optional<Failure>, 2> failures;
    std::shared_ptr<const MacroDiff> diff;  // none when a side has no content or could not be read
  };

  // The dictionary outlives the pool.
  CompareWork(QThreadPool& pool, const FunctionDictionary& dictionary);
  ~CompareWork() override;

  void begin(const std::array<CompareSide, 2>& sides);

 signals:
  void ready(const tessaly::CompareWork::Result& result);

 private:
  QThreadPool& pool_;
  const FunctionDictionary& dictionary_;
  QFutureWatcher<Result> watcher_;
};

}  // namespace tessaly
