#pragma once

#include <string>

#include <QString>

#include "model/MacroEdit.h"
#include "model/StepsFile.h"

namespace tessaly {

// What a step is called in the menu and in the list of steps; in the program's language, UTF-8.
[[nodiscard]] std::string stepName(const MacroEdit& edit);
[[nodiscard]] std::string insertStepName(int commands);
[[nodiscard]] std::string cutStepName(int commands);
[[nodiscard]] std::string pasteStepName(int commands);
[[nodiscard]] std::string duplicateStepName(int commands);
[[nodiscard]] std::string updateStepName(int values);
[[nodiscard]] std::string captureStepName(int values);
[[nodiscard]] std::string rewriteStepName();
[[nodiscard]] std::string discardStepName();

// What the strip says of steps that do not, or did not, survive; behind what was done.
[[nodiscard]] QString withTrouble(const QString& text, const StepsTrouble& trouble);

}  // namespace tessaly
