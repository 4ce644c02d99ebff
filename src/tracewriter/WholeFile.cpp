#include "tracewriter/WholeFile.h"

#include <cerrno>

int CWholeFile::Open(const std::string& path) {
    if (IsOpen()) return EBUSY;
    if (const int error = passing.Begin(path); error != 0) return error;
    return file.Open(passing.Name(), platform::OpenMode::CreateOrEmpty);
}

int CWholeFile::Commit(std::span<const std::byte> data) {
    if (!IsOpen()) return EBADF;
    int error = file.Write(data);
    const int closeError = file.Close();
    if (error == 0) error = closeError;
    if (error == 0) return passing.Finish();
    passing.Discard();
    return error;
}
