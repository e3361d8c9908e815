#pragma once

#include <QLineEdit>

namespace tessaly {

// The field takes only what the settings file can keep: a character that its code page lacks is refused as it
// is typed, and so is a pasted text that holds one. `QLineEdit::inputRejected` tells.
void keepToSettingsText(QLineEdit& field);

// Why a character was refused, for the strip.
[[nodiscard]] QString settingsTextRefused();

}  // namespace tessaly
