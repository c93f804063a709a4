// The locale that the module asks for on its thread: Japanese. Reading and writing of files do not depend on it, since
// their encoding and their number formats are fixed; it is kept for what a host may ask.
#pragma once

namespace fenmark::module {

inline constexpr int kJapaneseLocale = 1041;

void setThreadLocale(int locale);
int threadLocale(); // 0 until one is set

} // namespace fenmark::module
