// SPDX-License-Identifier: MIT
#include "records/TextFile.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <tuple>

namespace {

constexpr std::size_t bufferSize = std::size_t{256} << 10;
constexpr std::size_t maxNumberLength = 24;  // characters of a 64-bit integer, or of a float with six digits
constexpr int significantDigits = 6;

}  // namespace

CTextFile::CTextFile(const std::string& path) : buffer(bufferSize, '\0') {
    std::ignore = file.Open(path);  // Commit reports the error
}

char* CTextFile::Room(std::size_t count) {
    if (buffer.size() - used < count) Flush();
    return buffer.data() + used;
}

void CTextFile::Append(std::string_view bytes) {
    while (!bytes.empty()) {
        char* const at = Room(1);
        const std::size_t count = std::min(bytes.size(), buffer.size() - used);
        std::memcpy(at, bytes.data(), count);
        used += count;
        bytes.remove_prefix(count);
    }
}

CTextFile& CTextFile::operator<<(std::string_view text) {
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        Append(text.substr(0, end));
        Append("\r\n");
        text.remove_prefix(end + 1);
    }
    Append(text);
    return *this;
}

CTextFile& CTextFile::operator<<(std::int64_t number) {
    char* const at = Room(maxNumberLength);
    used += static_cast<std::size_t>(std::to_chars(at, at + maxNumberLength, number).ptr - at);
    return *this;
}

CTextFile& CTextFile::operator<<(float number) {
    char* const at = Room(maxNumberLength);
    const auto end = std::to_chars(at, at + maxNumberLength, number, std::chars_format::general, significantDigits).ptr;
    used += static_cast<std::size_t>(end - at);
    return *this;
}

void CTextFile::Flush() {
    if (file.IsOpen()) file.Write(std::string_view(buffer).substr(0, used));
    used = 0;
}

platform::Error CTextFile::Commit() {
    Flush();
    return file.Commit();
}
