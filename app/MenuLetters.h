#pragma once

#include <QStringList>

namespace tessaly {

// The letter after "&" of each text becomes one that no text before has: the one that it names where that is
// free, else another one of the text, the first ones of words before the others; none where all are taken.
void separateLetters(QStringList& texts);

}  // namespace tessaly
