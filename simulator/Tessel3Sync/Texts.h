#ifndef TESSEL3SYNCSIMULATOR_TEXTS_H
#define TESSEL3SYNCSIMULATOR_TEXTS_H

#include <string>

namespace Tessel3SyncSimulator {

/// A copy of the text that lives as long as the process, one for equal texts: hosts keep what the
/// library hands out. Any thread.
char *lastingText(const std::string &text);

} // namespace Tessel3SyncSimulator

#endif
