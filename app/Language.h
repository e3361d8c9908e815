#pragma once

#include <string>

#include <QStringList>

#include "app/Preferences.h"

namespace tessaly {

// The languages that the program's own texts exist in, by their two letters. English is what stands in the
// code. The captions and messages that the system defines are the same in all of them.
[[nodiscard]] const QStringList& languages();

// The wanted language, else the first of the desktop's (tags such as "de-AT", best first) that there is, else
// English.
[[nodiscard]] QString languageToSpeak(const std::string& wanted, const QStringList& desktop);

// From now on texts are asked for in this language, the toolkit's own ones too where they are installed, and
// dates and numbers are written as is usual in it: as in the desktop's country if the desktop (tags as above)
// speaks it too. To be called once, before the first window, by whoever holds the application object.
void speak(const QString& language, const QStringList& desktop = {});

// The language that the user chose; empty for the desktop's.
[[nodiscard]] QString keptLanguage(const Preferences& preferences);
void keepLanguage(Preferences& preferences, const QString& language);

}  // namespace tessaly
