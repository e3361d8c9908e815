#include "app/Preferences.h"

namespace tessaly {

namespace {

const QString kName = QStringLiteral("tessaly");
const QString kSiteFolder = QStringLiteral("site/folder");
const QString kPalette = QStringLiteral("view/palette");
const QString kHeadings = QStringLiteral("view/headings");
const QString kDestinationStripes = QStringLiteral("view/destination-stripes");
const QString kPlaces = QStringLiteral("places/");

}  // namespace

Preferences::Preferences() : file_(QSettings::IniFormat, QSettings::UserScope, kName, kName) {}

Preferences::Preferences(const QString& file) : file_(file, QSettings::IniFormat) {}

QString Preferences::siteFolder() const { return file_.value(kSiteFolder).toString(); }

void Preferences::setSiteFolder(const QString& folder) { file_.setValue(kSiteFolder, folder); }

QString Preferences::palette() const { return file_.value(kPalette).toString(); }

void Preferences::setPalette(const QString& name) { file_.setValue(kPalette, name); }

bool Preferences::headings() const { return file_.value(kHeadings, true).toBool(); }

void Preferences::setHeadings(bool on) { file_.setValue(kHeadings, on); }

bool Preferences::destinationStripes() const { return file_.value(kDestinationStripes).toBool(); }

void Preferences::setDestinationStripes(bool on) { file_.setValue(kDestinationStripes, on); }

QByteArray Preferences::place(const QString& name) const { return file_.value(kPlaces + name).toByteArray(); }

void Preferences::setPlace(const QString& name, const QByteArray& state) {
  file_.setValue(kPlaces + name, state);
}

}  // namespace tessaly
