#pragma once

#include <mutex>

namespace tessaly {

// Between a thread that writes and somebody who waits for it and may give it up, as on a disk that hangs. A
// file takes its name, or loses it, in one call of the system: none of these begins once the thread is given
// up, so that no file changes behind the back of who has done so, unless such a call was under way. Any
// thread.
class WayBack {
 public:
  // It is the calling thread's as long as this lives.
  class Walk {
   public:
    explicit Walk(WayBack& way);
    ~Walk();
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
  };

  // Lives as long as such a call, on a thread with a way back or without one.
  class Change {
   public:
    // `users`: what is changed is not one of the files that the program keeps for itself.
    explicit Change(bool users);
    ~Change();
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    // False: the call must not be made.
    [[nodiscard]] bool allowed() const { return allowed_; }
    void done() { done_ = true; }

   private:
    WayBack* way_;
    bool users_, allowed_ = true, done_ = false;
  };

  // Nobody asks any more what becomes of what the calling thread does.
  [[nodiscard]] static bool givenUp();

  // What has become of the user's files by then.
  enum class Left { kAsBefore, kUnknown, kChanged };
  [[nodiscard]] Left giveUp();

 private:
  std::mutex mutex_;  // over what follows
  bool givenUp_ = false;
  bool changing_ = false;
  bool changed_ = false;
};

}  // namespace tessaly
