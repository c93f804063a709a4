// The reader in all its company: alone, with the output into the recording doubles, and against its baselines.
#pragma once

#include <cstdint>
#include <string>

namespace fenmark::bench {

// Full passes over the file; they return something that depends on all of it.
std::uint64_t readIntoNothing(const std::string& path);
std::uint64_t readIntoRecordingHost(const std::string& path); // everything ticked, the log written beside the file
std::uint64_t previewOnly(const std::string& path);

// Prints the comparisons of the reader, with files made in the given folder.
void compareReader(const std::string& folder);

} // namespace fenmark::bench
