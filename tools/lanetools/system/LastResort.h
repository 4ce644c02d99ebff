// SPDX-License-Identifier: MIT
// How lanetools ends where no exception can reach Main: before main, in a function that must not throw, in a signal
// handler. Nothing here allocates memory.
#pragma once

namespace lanetools {

// From this call on, an exception that nobody handles ends the process with a sentence on standard error and exit code
// 1, without temporary files. Call it before anything else allocates memory.
void PrepareLastResort();

// True if memory was asked for in vain since then, also if the failure was swallowed on its way (as streams do).
bool WasShortOfMemory() noexcept;

// The sentence for a lack of memory.
inline constexpr const char* noMemory = "there is not enough memory";

// Removes the temporary files of this process, writes "lanetools: `sentence`" to standard error if it takes a text at
// once, and ends the process. May be called in a signal handler.
[[noreturn]] void EndAtOnce(const char* sentence, int exitCode) noexcept;

}  // namespace lanetools
