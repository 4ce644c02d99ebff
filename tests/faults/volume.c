// SPDX-License-Identifier: MIT
// Loaded before the C library (LD_PRELOAD), this makes volumes look like poorer ones. VOLUME_LACKS has some of these:
//   flags   renameat2 takes no flags, as on NFS
//   links   a file has only one name, as on FAT
//   sync    the names in a folder cannot be brought to the disk
#define _GNU_SOURCE
#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

static int Lacks(const char* word, int error) {
    const char* words = getenv("VOLUME_LACKS");
    if (!words || !strstr(words, word)) return 0;
    errno = error;
    return -1;
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    if (Lacks("flags", EINVAL)) return -1;
    return (int)syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags);
}

int link(const char* from, const char* to) {
    if (Lacks("links", EPERM)) return -1;
    return (int)syscall(SYS_linkat, -100, from, -100, to, 0);
}

int fsync(int fd) {
    struct stat status;
    if (fstat(fd, &status) == 0 && S_ISDIR(status.st_mode) && Lacks("sync", EIO)) return -1;
    return (int)syscall(SYS_fsync, fd);
}
