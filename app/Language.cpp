#include "app/Language.h"

#include <algorithm>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

// At file scope: the macro does not work inside a namespace.
static void initTranslations() { Q_INIT_RESOURCE(translations); }

namespace tessaly {

namespace {

const QString kEnglish = QStringLiteral("en");
const QString kLanguagePlace = QStringLiteral("language");
const QString kOwnTexts = QStringLiteral("tessaly_");
const QString kToolkitTexts = QStringLiteral("qtbase_");

QString languageOf(const QString& tag) { return tag.section(QLatin1Char('-'), 0, 0); }

void install(const QString& file, const QString& folder) {
  auto* texts = new QTranslator(QCoreApplication::instance());
  if (texts->load(file, folder)) QCoreApplication::installTranslator(texts);
}

}  // namespace

const QStringList& languages() {
  static const QStringList known{QStringLiteral("de"), kEnglish};
  return known;
}

QString languageToSpeak(const std::string& wanted, const QStringList& desktop) {
  if (!wanted.empty()) return QString::fromStdString(wanted);
  for (const QString& tag : desktop)
    if (languages().contains(languageOf(tag))) return languageOf(tag);
  return kEnglish;
}

QString keptLanguage(const Preferences& preferences) {
  return QString::fromLatin1(preferences.place(kLanguagePlace));
}

void keepLanguage(Preferences& preferences, const QString& language) {
  preferences.setPlace(kLanguagePlace, language.toLatin1());
}

void speak(const QString& language, const QStringList& desktop) {
  const auto tag = std::find_if(desktop.begin(), desktop.end(),
                                [&](const QString& spoken) { return languageOf(spoken) == language; });
  QLocale::setDefault(QLocale(tag != desktop.end() ? *tag : language));
  initTranslations();
  for (QTranslator* former : QCoreApplication::instance()->findChildren<QTranslator*>()) delete former;
  install(kToolkitTexts + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  install(kOwnTexts + language, QStringLiteral(":/i18n"));
}

}  // namespace tessaly
