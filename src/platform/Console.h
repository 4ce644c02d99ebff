// SPDX-License-Identifier: MIT
// Communication with the user: standard output, warnings, boxes, questions and keys.
#pragma once

#include <initializer_list>
#include <string_view>

namespace platform {

// Writes `text` to the program's standard output (see StartProcess), byte for byte and unbuffered.
void Print(std::string_view text);
// Writes `text` to standard error, byte for byte; no line end is added.
void PrintError(std::string_view text);
// Warns of something that no other message reports: writes "lanewright: warning: " and the parts as one line to
// standard error. Line ends in the parts become spaces. Allocates no memory, so it can warn of a lack of it.
void Warn(std::initializer_list<std::string_view> parts);
inline void Warn(std::string_view text) {
    Warn({text});
}

// A modal box with an OK button: writes `text` to standard error, with a line feed if it does not end with one. If
// standard input and standard error are both a terminal it waits for Enter; otherwise it is dismissed at once.
void ShowBox(std::string_view text);

// A modal question: writes `text` and " [y/N] " to standard error. True for Yes. On a terminal the answer is read;
// otherwise it is No, unless the environment variable LANEWRIGHT_ANSWER is "yes".
bool AskYesNo(std::string_view text);

// Waits for one key, without echo, on a terminal; otherwise reads one byte of standard input, if there is one. A signal
// that ends or stops the process meanwhile takes effect after the terminal has been restored.
void WaitForKey();

// For the files of this folder only.
namespace host {

// Redirects descriptor 1 to standard error and keeps a copy of the old one for Print, so that what libraries print does
// not mix with the program's texts. False if no descriptor is left.
bool RedirectOutput();
// Redirects descriptor 1 again, in case a library has changed it. Does nothing if RedirectOutput was not called.
void KeepOutputRedirected() noexcept;

}  // namespace host

}  // namespace platform
