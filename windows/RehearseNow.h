#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <QObject>
#include <QString>
#include <QTimer>

#include "link/PanelQuestions.h"

namespace tessaly {

inline constexpr std::chrono::milliseconds kPanelPatience{5000};  // until values are told as missing

// What a panel has now of the values that a macro changes. It is asked for all of them as soon as there is a
// panel, and goes on telling what becomes of them. What has not come when the patience is at its end is told
// as missing, and still taken when it comes. When the line is lost nothing is known any more; on another line
// all is asked for anew. GUI thread.
class RehearseNow : public QObject {
  Q_OBJECT

 public:
  enum class State {
    kNoPanel,
    kLost,     // there was one
    kAsking,   // values are waited for
    kMissing,  // some have not come in time
    kThere     // all have
  };

  // `panel` gives the name of the panel whose line stands, or nothing. Observes the client.
  RehearseNow(PanelClient& client, std::function<QString()> panel, std::chrono::milliseconds patience);

  // Whose values are wanted from now on.
  void want(std::vector<std::string> names);
  void askAgain();
  // The connection may have changed.
  void look();

  [[nodiscard]] State state() const { return state_; }
  [[nodiscard]] bool connected() const { return !panel_.isEmpty(); }
  [[nodiscard]] const QString& panel() const { return panel_; }
  // As stored; null for one that is not known.
  [[nodiscard]] const std::string* value(const std::string& name) const;
  [[nodiscard]] const std::unordered_map<std::string, std::string>& values() const { return values_; }
  [[nodiscard]] std::size_t wanted() const { return names_.size(); }
  [[nodiscard]] std::size_t missing() const { return missing_; }

 signals:
  void changed();

 private:
  void take(const std::vector<PanelAnswer>& answers);
  void ask();
  void settle();

  PanelClient& client_;
  std::function<QString()> name_;
  QString panel_;
  unsigned connection_ = 0;
  State state_ = State::kNoPanel;
  std::vector<std::string> names_;
  std::unordered_map<std::string, std::string> values_;
  std::size_t missing_ = 0;
  QTimer patience_;
  PanelQuestions questions_;
};

}  // namespace tessaly
