#include "editors/DataUpdate.h"

#include <QCoreApplication>

namespace tessaly {

namespace {
constexpr const char* kNotConnected =
    "Data Update is only possible when you are connected to a Corvane XL Control Panel \n";
}

bool lineLost(const EditorContext& context) { return context.client.state() == kPanelNotConnected; }

void tellLineLost(const EditorContext& context) {
  const QString text = QCoreApplication::translate(
      "DataUpdate",
      "The line to the panel is lost, so that no values come.\nConnect anew, then update again.");
  context.site.messages.show(text.toStdString(), MessageIcon::kExclamation);
}

bool mayAskPanel(const EditorContext& context) {
  if (!context.connected || !context.connected()) {
    context.site.messages.show(kNotConnected, MessageIcon::kExclamation);
    return false;
  }
  if (!lineLost(context)) return true;
  tellLineLost(context);
  return false;
}

}  // namespace tessaly
