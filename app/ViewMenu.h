#pragma once

#include <functional>

#include <QMenuBar>

#include "app/Preferences.h"

namespace tessaly {

// Adds "View": the way to the other pane and the colours of the program, which are kept in the preferences
// where there are any.
void addViewMenu(QMenuBar& bar, Preferences* preferences, const std::function<void()>& switchPane);

}  // namespace tessaly
