// SPDX-License-Identifier: MIT
// Preloaded, this makes the volume of the folder $FREE_AT have $FREE_BYTES bytes left, and any other as many as can be.
#include <stdlib.h>
#include <string.h>
#include <sys/statvfs.h>

int statvfs(const char* path, struct statvfs* out) {
    const char* at = getenv("FREE_AT");
    memset(out, 0, sizeof *out);
    out->f_frsize = 1;
    out->f_bavail = at && !strcmp(path, at) ? strtoull(getenv("FREE_BYTES"), NULL, 10) : ~0ull;
    return 0;
}
