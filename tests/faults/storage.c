// SPDX-License-Identifier: MIT
// Loaded before the C library (LD_PRELOAD), this shows a program storage, and memory, that behaves as it rarely does
// here:
//
//   STORAGE_MACHINE=NAME     the program runs on a machine of this name, and all files are on a network file system.
//   There
//                            only files that are open for writing can be locked, names cannot be exchanged, and the
//                            processes of other machines are unknown.
//   STORAGE_CUT=exchange     the power fails as soon as two names have been exchanged: the process is killed, and a
//   file
//                            that got its name with data that was not yet on the disk is empty.
//               rename       the same after the rename that follows
//   STORAGE_LOADING=N        the N-th allocation while a library is loaded fails
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <sys/utsname.h>
#include <unistd.h>

#define NEXT(name)                 \
    static __typeof__(&name) next; \
    if (!next) next = (__typeof__(&name))dlsym(RTLD_NEXT, #name)

static const char* Setting(const char* name, const char* unset) {
    const char* text = getenv(name);
    return text ? text : unset;
}

// --- A network file system

int uname(struct utsname* out) {
    NEXT(uname);
    const int result = next(out);
    const char* name = getenv("STORAGE_MACHINE");
    if (name) snprintf(out->nodename, sizeof out->nodename, "%s", name);
    return result;
}

int kill(pid_t process, int number) {
    NEXT(kill);
    if (number != 0 || !getenv("STORAGE_MACHINE") || process == getpid()) return next(process, number);
    errno = ESRCH;
    return -1;
}

int flock(int fd, int operation) {
    NEXT(flock);
    if (!getenv("STORAGE_MACHINE") || (fcntl(fd, F_GETFL) & O_ACCMODE) != O_RDONLY) return next(fd, operation);
    errno = EBADF;
    return -1;
}

// --- A power cut. Of the files that are written only the last one can be without its data on the disk.

static int dirty = -1;
static char dirtyName[400];

ssize_t pwritev(int fd, const struct iovec* parts, int count, off_t offset) {
    NEXT(pwritev);
    dirty = fd;
    return next(fd, parts, count, offset);
}

int fsync(int fd) {
    NEXT(fsync);
    if (fd == dirty) dirty = -1;
    return next(fd);
}

static void Cut(void) {
    if (dirtyName[0] && truncate(dirtyName, 0) != 0) perror(dirtyName);
    raise(SIGKILL);
}

int renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
    NEXT(renameat2);
    if (getenv("STORAGE_MACHINE") && flags != 0) {
        errno = EINVAL;
        return -1;
    }
    const int result = next(a, from, b, to, flags);
    const char* cut = Setting("STORAGE_CUT", "");
    if (!*cut) return result;
    if (dirty >= 0) snprintf(dirtyName, sizeof dirtyName, "%s", to);
    if (!strcmp(cut, "exchange")) Cut();
    return result;
}

int rename(const char* from, const char* to) {
    NEXT(rename);
    const int result = next(from, to);
    if (!strcmp(Setting("STORAGE_CUT", ""), "rename") && strstr(to, ".temp")) Cut();
    return result;
}

// --- Allocations. An address sanitizer has an allocator of its own, which nothing may come before.

#ifndef NO_ALLOCATIONS
extern void *__libc_malloc(size_t), *__libc_calloc(size_t, size_t), *__libc_realloc(void*, size_t);

static int isLoading;
static long toFail;

static int Fails(void) {
    if (!isLoading || toFail == 0 || --toFail > 0) return 0;
    errno = ENOMEM;
    return 1;
}

void* malloc(size_t size) {
    return Fails() ? NULL : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    return Fails() ? NULL : __libc_calloc(count, size);
}
void* realloc(void* former, size_t size) {
    return Fails() ? NULL : __libc_realloc(former, size);
}

void* dlopen(const char* path, int flags) {
    NEXT(dlopen);
    static int hasBegun;
    if (!hasBegun) toFail = atol(Setting("STORAGE_LOADING", "0"));
    hasBegun = isLoading = 1;
    void* const handle = next(path, flags);
    isLoading = 0;
    return handle;
}
#endif
