#include "editors/PanelValueRequest.h"

namespace tessaly {

PanelValueRequest::PanelValueRequest(PanelClient& client, QObject* parent)
    : QObject(parent), client_(client) {}

PanelValueRequest::~PanelValueRequest() { client_.unsubscribeOwner(this); }

void PanelValueRequest::ask(const std::string& name) {
  // Asked anew each time: a second subscription beside the first would be answered by an empty value.
  cancel();
  ++question_;
  static_cast<void>(client_.subscribe(name, this, &PanelValueRequest::arrived));
}

void PanelValueRequest::cancel() {
  client_.unsubscribeOwner(this);
  if (question_ % 2 != 0) ++question_;
}

void PanelValueRequest::arrived(const std::string&, const ParameterValue& value) {
  QMetaObject::invokeMethod(
      this, [this, question = question_.load(), text = value.getAsString()] { tell(question, text); },
      Qt::QueuedConnection);
}

void PanelValueRequest::tell(int question, const std::string& text) {
  if (question != question_ || question % 2 == 0) return;
  cancel();
  emit answered(text);
}

}  // namespace tessaly
