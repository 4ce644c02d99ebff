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
//               end          the power fails when the process has ended: renamed files whose data or name was not on
//                            the disk are empty or gone
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

// The renamed files, for STORAGE_CUT=end.
static struct {
    char name[400];
    ino_t file, folder;
    int hasData, hasName;  // on the disk
} renamed[8];
static int renamedCount;
static ino_t synced[8];
static int syncedCount;

static ino_t InodeOf(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 ? status.st_ino : 0;
}

static void NoteRenamed(const char* to) {
    if (renamedCount == 8) abort();
    char folder[400];
    snprintf(folder, sizeof folder, "%s", to);
    char* const end = strrchr(folder, '/');
    if (end) *end = '\0';
    const int i = renamedCount++;
    snprintf(renamed[i].name, sizeof renamed[i].name, "%s", to);
    renamed[i].file = InodeOf(to);
    renamed[i].folder = InodeOf(end ? folder : ".");
    for (int k = 0; k < syncedCount; ++k)
        renamed[i].hasData |= synced[k] == renamed[i].file;
}

int fsync(int fd) {
    NEXT(fsync);
    if (fd == dirty) dirty = -1;
    struct stat status;
    if (fstat(fd, &status) == 0) {
        if (syncedCount < 8) synced[syncedCount++] = status.st_ino;
        for (int i = 0; i < renamedCount; ++i)
            renamed[i].hasName |= renamed[i].folder == status.st_ino;
    }
    return next(fd);
}

int syncfs(int fd) {
    NEXT(syncfs);
    for (int i = 0; i < renamedCount; ++i)
        renamed[i].hasData = renamed[i].hasName = 1;
    return next(fd);
}

__attribute__((destructor)) static void End(void) {
    if (strcmp(Setting("STORAGE_CUT", ""), "end")) return;
    for (int i = 0; i < renamedCount; ++i) {
        if (!renamed[i].hasData && truncate(renamed[i].name, 0) != 0) perror(renamed[i].name);
        if (!renamed[i].hasName) unlink(renamed[i].name);
    }
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
    if (result == 0 && !strcmp(Setting("STORAGE_CUT", ""), "end")) NoteRenamed(to);
    if (!strcmp(Setting("STORAGE_CUT", ""), "rename") && strstr(to, ".temp")) Cut();
    return result;
}

// --- Allocations. An address sanitizer has an allocator of its own, which nothing may come before.

#ifndef UNDER_SANITIZERS
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
