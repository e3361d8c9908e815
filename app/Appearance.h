#pragma once

#include <chrono>

#include <QPalette>
#include <QString>

#include "app/Preferences.h"

namespace tessaly {

enum class PaletteChoice { kDesktop, kLight, kDark };

// By its name in the preferences and on the command line; any other text is the desktop's.
[[nodiscard]] PaletteChoice paletteNamed(const QString& name);
[[nodiscard]] QString paletteName(PaletteChoice choice);

// The program's own colours, which hold a contrast of 4.5 to 1 for all text. Not for kDesktop.
[[nodiscard]] QPalette ownPalette(PaletteChoice choice);

// Colours the whole program, at once. kDesktop leaves style and colours to the desktop, also those that it
// changes to later; what it leaves open is as in the light palette, or the dark one where the toolkit is
// dark.
void applyPalette(PaletteChoice choice);

// What was applied last; kDesktop at the start.
[[nodiscard]] PaletteChoice currentPalette();

inline constexpr int kUsualTextSize = 100;  // per cent of the desktop's
inline constexpr int kTextSizeStep = 10;

// Texts of all windows, at once: per cent of the desktop's size, kept between half and three times of it, and
// of each size that the desktop changes to later.
void applyTextSize(int percent);
// What was applied last; the usual one at the start.
[[nodiscard]] int textSize();
// As the user left it.
void restoreTextSize(const Preferences& preferences);
void keepTextSize(Preferences& preferences);

// Until the window has been painted, for what nobody waits for.
inline constexpr std::chrono::milliseconds kUntilPainted{250};

// Compiled-in resources, the window icon, the number format of the C library, the eye on the desktop. May be
// called again.
void dressToolkit();

}  // namespace tessaly
