// SPDX-License-Identifier: MIT
// A text file with CR LF line ends, written in large blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/AtomicFile.h"
#include "platform/Error.h"

class CTextFile {
  public:
    // Begins a file that Commit names `path`. If that fails all output is dropped and Commit returns the error.
    explicit CTextFile(const std::string& path);
    CTextFile(const CTextFile&) = delete;
    CTextFile& operator=(const CTextFile&) = delete;

    // Writes the text byte for byte, except that every line feed becomes CR LF.
    CTextFile& operator<<(std::string_view text);
    CTextFile& operator<<(char c) { return *this << std::string_view(&c, 1); }
    // In decimal.
    CTextFile& operator<<(std::int64_t number);
    // With up to six significant digits, like "%g".
    CTextFile& operator<<(float number);

    // Writes what is still in memory and gives the file its name; without Commit there is no file. Returns the first
    // error of all operations; what had that name before is then unchanged.
    platform::Error Commit();

  private:
    // Makes room for `count` more bytes, far fewer than the buffer's size, and returns the place for them.
    char* Room(std::size_t count);
    void Append(std::string_view bytes);
    void Flush();

    platform::AtomicFile file;
    std::string buffer;
    std::size_t used = 0;
};
