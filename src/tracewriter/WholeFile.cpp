#include "tracewriter/WholeFile.h"

#include <cerrno>

using platform::Error;

Error CWholeFile::Open(const std::string& path) {
    if (IsOpen()) return EBUSY;
    if (const Error error = passing.Begin(path)) return error;
    return file.Open(passing.Name(), platform::OpenMode::CreateOrEmpty);
}

Error CWholeFile::Commit(std::span<const std::byte> data) {
    if (!IsOpen()) return EBADF;
    const Error written = file.Write(data);
    const Error closed = file.Close();
    if (!written && !closed) return passing.Finish();
    passing.Discard();
    return written ? written : closed;
}
