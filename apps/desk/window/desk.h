// fenmark-desk as a function: its options, its window, its picture without a display.
#pragma once

namespace fenmark::desk {

// The exit code: 0 done, 1 could not be done, 2 wrong usage.
int runDesk(int argc, char** argv);

// Chinese and Japanese share characters that they write differently: without a Japanese font by name, the toolkit may
// take one of the others.
void useJapaneseFonts();

} // namespace fenmark::desk
