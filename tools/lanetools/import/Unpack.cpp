// SPDX-License-Identifier: MIT
#include "lanetools/import/Unpack.h"

#define ZLIB_CONST  // the input is only read
#include <zlib.h>

#include <algorithm>
#include <new>
#include <string_view>

#include "lanetools/import/AbifDirectory.h"

namespace lanetools {

namespace {

constexpr std::string_view magic = "\x1F\x8B";
constexpr int gzipOnly = 16 + MAX_WBITS;

class CInflater {
  public:
    explicit CInflater(const std::string& packed) {
        stream.next_in = reinterpret_cast<const Bytef*>(packed.data());
        stream.avail_in = static_cast<uInt>(packed.size());
        if (inflateInit2(&stream, gzipOnly) != Z_OK) throw std::bad_alloc();
    }
    ~CInflater() { inflateEnd(&stream); }
    CInflater(const CInflater&) = delete;
    CInflater& operator=(const CInflater&) = delete;

    // Unpacks up to out.size() bytes and returns their number: fewer only at the end.
    std::size_t Read(std::string& out) {
        stream.next_out = reinterpret_cast<Bytef*>(out.data());
        stream.avail_out = static_cast<uInt>(out.size());
        while (stream.avail_out > 0 && !isAtEnd) {
            const int result = inflate(&stream, Z_NO_FLUSH);
            if (result == Z_MEM_ERROR) throw std::bad_alloc();
            if (result == Z_STREAM_END)
                isAtEnd = !StartMember();
            else if (result == Z_BUF_ERROR)
                throw CUnusable("damaged: the compressed file ends too early");
            else if (result != Z_OK)
                throw CUnusable("damaged: it cannot be unpacked");
        }
        return out.size() - stream.avail_out;
    }

  private:
    // False if no other member follows.
    bool StartMember() {
        const std::string_view rest(reinterpret_cast<const char*>(stream.next_in), stream.avail_in);
        return rest.starts_with(magic) && inflateReset(&stream) == Z_OK;
    }

    z_stream stream{};
    bool isAtEnd = false;
};

}  // namespace

bool IsPacked(const std::string& bytes) {
    return bytes.starts_with(magic);
}

std::string Unpack(const std::string& packed, std::size_t limit) {
    CInflater inflater(packed);
    std::string unpacked, part(std::size_t{1} << 16, '\0');
    while (const std::size_t count = inflater.Read(part)) {
        if (count > limit - unpacked.size()) throw CUnusable("too large for a run: it unpacks to more than 64 MiB");
        unpacked.append(part, 0, count);
    }
    return unpacked;
}

}  // namespace lanetools
