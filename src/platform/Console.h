// The user at the console: standard output, boxes, questions and keys.
#pragma once

#include <initializer_list>
#include <string_view>

namespace platform {

// Writes `text` on standard output (wherever StartProcess has set it aside) byte for byte and flushes it.
void Print(std::string_view text);
// Writes `text` on standard error byte for byte (no line end is added).
void PrintError(std::string_view text);
// Something odd that no other message reports: a line "lanewright: warning: " and the parts on standard error. Line
// ends in the parts become blanks. Takes no memory, so it can tell of a lack of it.
void Warn(std::initializer_list<std::string_view> parts);
inline void Warn(std::string_view text) {
    Warn({text});
}

// A modal box with an OK button: `text` on standard error, with a line feed if it has none at its end. Waits for Enter
// when standard input and standard error are both a terminal; else it counts as dismissed at once.
void ShowBox(std::string_view text);

// A modal question with Yes and No: `text` and " [y/N] " on standard error. On a terminal the answer is read; otherwise
// it is No, unless the environment variable LANEWRIGHT_ANSWER is "yes".
bool AskYesNo(std::string_view text);

// One key without echo on a terminal; otherwise one byte of standard input, or nothing at its end. A signal that ends
// or stops the process meanwhile finds the terminal as it was.
void WaitForKey();

// For those of this folder only.
namespace host {

// Makes a copy of descriptor 1 that Print writes to, and has descriptor 1 lead to standard error, so that what others
// print in this process does not mix with the program's texts. False when there is no descriptor left.
bool SetOutputAside();
// Has descriptor 1 lead there again, whatever has been done to it; nothing when output was not set aside.
void KeepOutputAside() noexcept;

}  // namespace host

}  // namespace platform
