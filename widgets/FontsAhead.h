#pragma once

namespace tessaly {

// Has the fonts of the system found on a thread of its own, which takes as long as the start of the toolkit:
// to be called before that. Who needs them early finds them by itself. Nothing on a system whose toolkit does
// not ask fontconfig. The toolkit does not end before the search: it frees what has been found.
void findFontsAhead();
// Until the search has ended; on any thread. Before the window is made, for whose texts it would be done
// again.
void awaitFonts();

}  // namespace tessaly
