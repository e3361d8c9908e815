#pragma once

#include <filesystem>
#include <functional>
#include <string>

// The table of tessaly-bench. A benchmark file registers its lines at start-up, for instance
//
//   const bool kRegistered = addPair({.name = "load a macro", .measured = loadIt, .limit = bareLoad, .goal
//   = 1.5,
//                                     .prepare = writeTheFile});
//
// and each becomes one line `name  measured  limit  ratio  goal  holds`. Nothing here is thread-safe.
namespace tessaly::bench {

// Two ways over the same data, compared by time. They are run in turns, so that a busy machine slows both
// alike, and the medians are compared. A side that takes less than a millisecond is run several times for one
// sample.
struct Pair {
  std::string name;
  std::function<void()> measured;
  std::function<void()> limit;
  double goal = 1;  // the largest ratio measured / limit that holds
  // Makes the data, before anything is timed; may be empty.
  std::function<void()> prepare = {};
  // Untimed before each run of either side, which is then timed alone; may be empty.
  std::function<void()> reset = {};
  // Times are divided by these, for costs a piece at two sizes.
  double measuredItems = 1;
  double limitItems = 1;
  // Both sides keep to this thread and wait for nobody, so that their instructions can be counted.
  bool oneThread = false;
  double measuredWait = 0;  // seconds in each measured sample that a rule has the user wait; taken off
};

inline constexpr const char* kSeconds = "s";  // the unit that is printed as s, ms, us or ns

struct Figures {
  double measured = 0, limit = 1;
};

// A plain figure beside its limit, such as bytes a function.
struct Figure {
  std::string name;
  std::string unit;  // as printed behind both figures
  std::function<Figures()> take;
  double goal = 1;  // the largest ratio measured / limit that holds
};

// What the present sample did until here is not counted. For a side that has a `reset`.
void timeFromHere();

// The median time of a few runs.
[[nodiscard]] double secondsOf(const std::function<void()>& run);

bool addPair(Pair pair);
bool addFigure(Figure figure);

// True when run with --quick: data may be smaller.
[[nodiscard]] bool quick();

// A folder of this run, removed at its end.
[[nodiscard]] const std::filesystem::path& scratchFolder();

// Keeps the compiler from dropping a result.
void keep(const void* result);

}  // namespace tessaly::bench
