#include "fuzz/soak/MacroText.h"

#include <QString>
#include <QXmlStreamReader>

namespace tessaly {

std::optional<SeenMacro> seeMacro(std::string_view bytes) {
  // Names may be Windows-1252; the bytes are taken one by one, so that none is refused.
  QXmlStreamReader reader(QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size())));
  SeenMacro macro;
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement) continue;
    const auto attribute = [&reader](const char* name) {
      return reader.attributes().value(QLatin1String(name)).toLatin1().toStdString();
    };
    if (reader.name() == QLatin1String("macro")) macro.name = attribute("name");
    if (reader.name() == QLatin1String("cmd")) {
      macro.commands.push_back({attribute("fid"), "", false});
    }
    const bool value = reader.attributes().hasAttribute(QLatin1String("value"));
    if (reader.name() != QLatin1String("param") || macro.commands.empty() || macro.commands.back().valued ||
        !value)
      continue;
    macro.commands.back().value = attribute("value");
    macro.commands.back().valued = true;
  }
  if (reader.hasError()) return std::nullopt;
  return macro;
}

}  // namespace tessaly
