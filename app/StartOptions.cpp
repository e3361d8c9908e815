#include "app/StartOptions.h"

#include <algorithm>

#include <QCommandLineParser>

#include "app/Appearance.h"
#include "app/Language.h"

namespace tessaly {
namespace {

struct OptionRow {
  const char* name;
  const char* value;  // what stands for its value in the help, empty when it takes none
  const char* description;
};

constexpr OptionRow kRoot{"root", "DIR", "the site; else $TESSALY_ROOT, else $XDG_DATA_HOME/tessaly"};
constexpr OptionRow kFtpPortOption{"ftp-port", "PORT", "FTP port of a simulated panel (a panel's own is 21)"};
constexpr OptionRow kDemo{"demo", "", "show a demonstration instead of connecting"};
constexpr OptionRow kVerbose{"verbose", "", "print the panel's values and calls"};
constexpr OptionRow kPalette{"palette", "NAME", "colours: desktop, light or dark; else those chosen last"};
constexpr OptionRow kLanguage{"language", "NAME", "de or en; else the desktop's if there are texts in it"};
constexpr OptionRow kHelp{"help", "", "this text"};
constexpr OptionRow kVersion{"version", "", "the program's version"};
constexpr OptionRow kOptions[] = {kRoot,    kFtpPortOption, kDemo, kVerbose,
                                  kPalette, kLanguage,      kHelp, kVersion};

std::string shape(const OptionRow& option) {
  return "--" + std::string(option.name) + (*option.value ? " " : "") + option.value;
}

// What the toolkit takes out of a command line by itself. Its options have one dash or two, and their values
// stand in the next word, but for the last ones.
constexpr const char* kToolkitValues[] = {"platform",        "platformpluginpath", "platformtheme", "plugin",
                                          "qwindowgeometry", "qwindowtitle",       "qwindowicon",   "session",
                                          "display",         "stylesheet",         "style",         "name"};
constexpr const char* kToolkitFlags[] = {"reverse", "widgetcount", "nograb", "dograb", "sync"};

QStringList withoutToolkitOptions(const QStringList& arguments) {
  QStringList left;
  for (qsizetype at = 0; at < arguments.size(); ++at) {
    const QString& word = arguments[at];
    const QString name = word.mid(word.startsWith(QLatin1String("--")) ? 2 : 1);
    const auto isName = [&](const char* known) { return name == QLatin1String(known); };
    if (at == 0 || !word.startsWith(QLatin1Char('-')) ||
        (std::ranges::none_of(kToolkitFlags, isName) && std::ranges::none_of(kToolkitValues, isName) &&
         !name.startsWith(QLatin1String("style="))))
      left << word;
    else if (std::ranges::any_of(kToolkitValues, isName))
      ++at;
  }
  return left;
}

}  // namespace

std::string startHelp() {
  std::size_t width = 0;
  for (const OptionRow& option : kOptions) width = std::max(width, shape(option).size());
  std::string text =
      "usage: tessaly [OPTION ...]\n\nEdits the macros of a Corvane XL Control Panel in a window.\n\n";
  for (const OptionRow& option : kOptions) {
    std::string left = shape(option);
    left.resize(width + 2, ' ');
    text += "  " + left + option.description + "\n";
  }
  return text + "\nExit code: 0 done, 1 not started (a window has said why), 2 wrong usage.\n";
}

std::optional<StartOptions> readStartOptions(const QStringList& arguments, std::string& reason) {
  QCommandLineParser parser;
  for (const OptionRow& option : kOptions) {
    parser.addOption(
        QCommandLineOption(QString::fromLatin1(option.name), QString(), QString::fromLatin1(option.value)));
  }
  if (!parser.parse(withoutToolkitOptions(arguments))) {
    reason = parser.errorText().toStdString();
    return std::nullopt;
  }
  if (!parser.positionalArguments().isEmpty()) {
    reason = "one word too many: " + parser.positionalArguments().constFirst().toStdString();
    return std::nullopt;
  }
  StartOptions options;
  options.root = parser.value(QLatin1String(kRoot.name)).toStdString();
  options.demo = parser.isSet(QLatin1String(kDemo.name));
  options.verbose = parser.isSet(QLatin1String(kVerbose.name));
  if (parser.isSet(QLatin1String(kFtpPortOption.name))) {
    options.ftpPort = parser.value(QLatin1String(kFtpPortOption.name)).toUShort();
    if (options.ftpPort == 0) {
      reason = "--ftp-port takes a number from 1 to 65535";
      return std::nullopt;
    }
  }
  options.palette = parser.value(QLatin1String(kPalette.name)).toStdString();
  const bool known =
      options.palette.empty() ||
      paletteName(paletteNamed(QString::fromStdString(options.palette))).toStdString() == options.palette;
  if (!known) {
    reason = "--palette takes desktop, light or dark";
    return std::nullopt;
  }
  options.language = parser.value(QLatin1String(kLanguage.name)).toStdString();
  if (parser.isSet(QLatin1String(kLanguage.name)) &&
      !languages().contains(QString::fromStdString(options.language))) {
    reason = "--language takes de or en";
    return std::nullopt;
  }
  return options;
}

}  // namespace tessaly
