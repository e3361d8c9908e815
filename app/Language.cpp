#include "app/Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

// At file scope: the macro does not work inside a namespace.
static void initTranslations() { Q_INIT_RESOURCE(translations); }

namespace tessaly {

namespace {

const QString kEnglish = QStringLiteral("en");
const QString kOwnTexts = QStringLiteral("tessaly_");
const QString kToolkitTexts = QStringLiteral("qtbase_");

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
  for (const QString& tag : desktop) {
    QString language = tag.section(QLatin1Char('-'), 0, 0);
    if (languages().contains(language)) return language;
  }
  return kEnglish;
}

void speak(const QString& language) {
  initTranslations();
  for (QTranslator* former : QCoreApplication::instance()->findChildren<QTranslator*>()) delete former;
  install(kToolkitTexts + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  install(kOwnTexts + language, QStringLiteral(":/i18n"));
}

}  // namespace tessaly
