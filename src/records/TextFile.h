// A file of text with CR LF line ends, built in memory and written in large pieces.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/AtomicFile.h"

class CTextFile {
  public:
    // Begins a file that is going to be `path`. When that fails, all that is put into it goes nowhere.
    explicit CTextFile(const std::string& path);
    CTextFile(const CTextFile&) = delete;
    CTextFile& operator=(const CTextFile&) = delete;

    // Texts go out byte for byte, but a line feed becomes CR LF wherever it stands.
    CTextFile& operator<<(std::string_view text);
    CTextFile& operator<<(char c) { return *this << std::string_view(&c, 1); }
    // Decimal.
    CTextFile& operator<<(std::int64_t number);
    // Six significant digits at most, as "%g" has them.
    CTextFile& operator<<(float number);

    // Writes what is still in memory and gives the file its name; without it there is no file. After an error, the
    // first of all, what stands under that name is as it was.
    platform::Error Commit();

  private:
    // Makes room for `count` more bytes, which is far less than the buffer holds, and gives the place.
    char* Room(std::size_t count);
    void Append(std::string_view bytes);
    void Flush();

    platform::AtomicFile file;
    std::string buffer;
    std::size_t used = 0;
};
