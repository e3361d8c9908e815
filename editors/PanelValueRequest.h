#pragma once

#include <atomic>
#include <string>

#include <QObject>

#include "link/PanelClient.h"

namespace tessaly {

// Asks the panel for one current value and tells the first answer, on the GUI thread. A new question,
// cancel() and the end of this object take the question back: no answer to it comes any more.
class PanelValueRequest : public QObject {
  Q_OBJECT

 public:
  explicit PanelValueRequest(PanelClient& client, QObject* parent = nullptr);
  ~PanelValueRequest() override;

  // `name` is the panel's, such as "QMF1.ME1.KEY2.CLIP".
  void ask(const std::string& name);
  void cancel();

 signals:
  void answered(const std::string& text);

 private:
  void arrived(const std::string& name, const ParameterValue& value);
  void tell(int question, const std::string& text);

  PanelClient& client_;
  std::atomic<int> question_{0};  // odd while it is open
};

}  // namespace tessaly
