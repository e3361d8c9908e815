#include "widgets/QuietToolkit.h"

#include <QString>

namespace tessaly {

void quietToolkit() {
  static QtMessageHandler others = nullptr;  // the toolkit's own
  // A session without a folder for sockets and the like, and a platform without size hints: neither is
  // missed.
  others = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith(QLatin1String("QStandardPaths: ")) &&
        !text.startsWith(QLatin1String("This plugin does not support ")))
      others(type, context, text);
  });
}

}  // namespace tessaly
