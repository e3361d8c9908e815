#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include <QObject>
#include <QTimer>

#include "link/PanelQuestions.h"

namespace tessaly {

// Asks the panel for the current values of many commands. GUI thread. Destroying it takes back every question
// before it returns.
class ParameterUpdate : public QObject {
  Q_OBJECT

 public:
  struct Question {
    std::size_t command;  // what the asker knows it by
    std::string name;     // of the panel's value
  };
  // Told of each answer; false when the command cannot use it and goes on waiting.
  using Taker = std::function<bool(std::size_t command, const std::string& value)>;

  ParameterUpdate(PanelClient& client, Taker taker);

  // Gives up the questions of an earlier start. `alreadyDone` commands more belong to the update and need no
  // answer.
  void start(const std::vector<Question>& questions, int alreadyDone);

  // Until everything is answered or the panel has been silent for a while. Later answers are still taken.
  [[nodiscard]] bool running() const { return running_; }
  [[nodiscard]] int number() const;  // of the command that is waited for, from 1
  [[nodiscard]] int count() const { return count_; }

 signals:
  // Answers were taken, or the update began or ended.
  void changed();

 private:
  void take(const std::vector<PanelAnswer>& answers);
  void end();

  PanelQuestions questions_;
  Taker taker_;
  std::unordered_map<std::string, std::vector<std::size_t>> waitingCommands_;  // by name
  QTimer quiet_;
  bool running_ = false;
  int done_ = 0;
  int count_ = 0;
};

}  // namespace tessaly
