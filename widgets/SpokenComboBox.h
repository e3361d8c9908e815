#pragma once

namespace tessaly {

// From then on a combo box is read out under its label; what is chosen in it is its value. The toolkit would
// give out the value as its name. After the application was made.
void speakComboBoxesByLabels();

}  // namespace tessaly
