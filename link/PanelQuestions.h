#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "link/PanelClient.h"

namespace tessaly {

struct PanelAnswer {
  std::string name;
  std::string value;
};

// Asks the panel for the current values of names. One object is one asker: what it asks and takes back
// touches nobody else's questions.
//
// Operations are for the asker's thread, and the answers come on it: what arrives on the library's thread
// waits there, and one hand-over takes all that has come by then, in the order of arrival, of each name the
// latest value. Nothing comes any more once `cancel` or the destructor has returned. Observes the client.
class PanelQuestions {
 public:
  // Runs a step later on the asker's thread. Called on any thread, while this object lives; must not block.
  using Post = std::function<void(std::function<void()> step)>;
  // May cancel, ask and destroy the object.
  using Taker = std::function<void(const std::vector<PanelAnswer>& answers)>;

  PanelQuestions(PanelClient& client, Post post, Taker taker);
  ~PanelQuestions();
  PanelQuestions(const PanelQuestions&) = delete;
  PanelQuestions& operator=(const PanelQuestions&) = delete;

  // Asks for each name once, however often it is given until the next `cancel`, and goes on telling its
  // values. Many are asked in pieces, between which the asker's thread does other things.
  void ask(const std::vector<std::string>& names);
  // Takes every question back.
  void cancel();

  // Names that have not been answered yet.
  [[nodiscard]] std::size_t missing() const { return missing_; }

 private:
  class Inbox;

  void askSome();
  void take(std::vector<PanelAnswer> answers);

  PanelClient& client_;
  Taker taker_;
  std::shared_ptr<Inbox> inbox_;
  std::unordered_map<std::string, bool> answered_;  // every name that was asked for
  std::vector<std::string> unasked_;  // those that the client has still to be given, the next one last
  std::size_t missing_ = 0;
};

}  // namespace tessaly
