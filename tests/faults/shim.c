// Loaded ahead of the C library (LD_PRELOAD), this makes one chosen call of a program go wrong. break.py says which one
// and looks at what the program makes of it.
//
//   FAULT_CALL=N        the N-th system call, counted from 1 over the functions below ...
//   FAULT_KIND=NUMBER   ... fails with this errno value,
//             kill      or the process is killed before it,
//             half      or, if it writes, it writes half and then the process is killed,
//             short     or, if it reads or writes, it does so with half the bytes
//   FAULT_ALLOCATION=N  the N-th allocation gives nothing
//   FAULT_LASTING=1     and so do all later ones: all allocations, or all calls that this errno value can come from
//   FAULT_REPORT=FILE   what was counted and which call was struck, see struct Report; the file has its size already
//   FAULT_TRACE=FILE    a line for each call: whether it grows files, takes a descriptor, moves bytes; its name; its
//   path
//
// Without FAULT_CALL and FAULT_ALLOCATION it only counts. What goes to standard output and standard error is not
// counted: a console that breaks loses nothing. Waits are cut to a fiftieth, so that whoever tries again for seconds
// ends soon.
#define _GNU_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <time.h>
#include <unistd.h>

// Lives in a file, so that it can be read after a kill.
struct Report {
    uint32_t calls, allocations, strikes;
    char last[500];    // the latest call, with the path that it works on
    char struck[500];  // the first call that was struck, or the last one ahead of the struck allocation
};

enum Action { GoOn, Fail, Half };  // what a call does after it has been counted

static struct Report unread;
static struct Report* report = &unread;
static long chosenCall, chosenAllocation, trace = -1;
static int chosenError, isLasting;
static enum { Errno, Kill, HalfThenKill, Short } kind;

static void Die(void) {
    syscall(SYS_kill, getpid(), SIGKILL);
}

__attribute__((constructor)) static void Begin(void) {
    const char* text = getenv("FAULT_CALL");
    if (text) chosenCall = atol(text);
    if ((text = getenv("FAULT_ALLOCATION"))) chosenAllocation = atol(text);
    isLasting = getenv("FAULT_LASTING") != NULL;
    if ((text = getenv("FAULT_KIND"))) {
        chosenError = atoi(text);
        kind = !strcmp(text, "kill")    ? Kill
               : !strcmp(text, "half")  ? HalfThenKill
               : !strcmp(text, "short") ? Short
                                        : Errno;
    }
    if ((text = getenv("FAULT_REPORT"))) {
        const long fd = syscall(SYS_openat, AT_FDCWD, text, O_RDWR);
        void* shared = (void*)syscall(SYS_mmap, NULL, sizeof *report, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
        syscall(SYS_close, fd);
        if (shared != MAP_FAILED) report = shared;
    }
    if ((text = getenv("FAULT_TRACE")))
        trace = syscall(SYS_openat, AT_FDCWD, text, O_WRONLY | O_CREAT | O_APPEND, 0666);
    report->calls = report->allocations = 0;
}

// --- Which call is struck

static void Describe(const char* name, const char* path, int fd) {
    char linked[400] = "";
    if (!path && fd >= 0) {
        char link[40];
        snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
        const long length = syscall(SYS_readlink, link, linked, sizeof linked - 1);
        linked[length > 0 ? length : 0] = '\0';
        path = linked;
    }
    snprintf(report->last, sizeof report->last, "%s %s", name, path ? path : "");
}

static void Trace(int grows, int opens, int transfers) {
    char line[sizeof report->last + 8];
    const int size = snprintf(line, sizeof line, "%d%d%d %s\n", grows, opens, transfers, report->last);
    syscall(SYS_write, trace, line, size);
}

// `grows` says that the call may need room on the disk, `opens` that it takes a descriptor.
static int IsStruck(int grows, int opens) {
    if (chosenCall == 0 || report->calls < (uint32_t)chosenCall) return 0;
    if (!isLasting) return report->calls == (uint32_t)chosenCall;
    return chosenError == ENOSPC ? grows : chosenError == EMFILE ? opens : 1;
}

static enum Action Count(const char* name, const char* path, int fd, int grows, int opens, int transfers) {
    ++report->calls;
    const int formerError = errno;
    Describe(name, path, fd);
    if (trace >= 0) Trace(grows, opens, transfers);
    errno = formerError;
    if (!IsStruck(grows, opens)) return GoOn;
    if (report->strikes++ == 0) memcpy(report->struck, report->last, sizeof report->struck);
    if (kind == Kill) Die();
    if (kind == HalfThenKill || kind == Short) return transfers ? Half : GoOn;
    errno = chosenError;
    return Fail;
}

#define NEXT(name)                 \
    static __typeof__(&name) next; \
    if (!next) next = (__typeof__(&name))dlsym(RTLD_NEXT, #name)

// A function that gives `failure` when it is struck.
#define FUNCTION(type, failure, name, parameters, arguments, path, fd, grows, opens)       \
    type name parameters {                                                                 \
        NEXT(name);                                                                        \
        return Count(#name, path, fd, grows, opens, 0) == Fail ? failure : next arguments; \
    }
#define ON_PATH(name, parameters, arguments, path, grows) \
    FUNCTION(int, -1, name, parameters, arguments, path, -1, grows, 0)
#define ON_DESCRIPTOR(name, parameters, arguments, fd, grows) \
    FUNCTION(int, -1, name, parameters, arguments, NULL, fd, grows, 0)

// --- Calls that work on a path

ON_PATH(stat, (const char* path, struct stat* out), (path, out), path, 0)
ON_PATH(lstat, (const char* path, struct stat* out), (path, out), path, 0)
ON_PATH(fstatat, (int at, const char* path, struct stat* out, int flags), (at, path, out, flags), path, 0)
ON_PATH(statvfs, (const char* path, struct statvfs* out), (path, out), path, 0)
ON_PATH(access, (const char* path, int mode), (path, mode), path, 0)
ON_PATH(faccessat, (int at, const char* path, int mode, int flags), (at, path, mode, flags), path, 0)
ON_PATH(mkdir, (const char* path, mode_t mode), (path, mode), path, 1)
ON_PATH(mkdirat, (int at, const char* path, mode_t mode), (at, path, mode), path, 1)
ON_PATH(rmdir, (const char* path), (path), path, 0)
ON_PATH(unlink, (const char* path), (path), path, 0)
ON_PATH(unlinkat, (int at, const char* path, int flags), (at, path, flags), path, 0)
ON_PATH(remove, (const char* path), (path), path, 0)
ON_PATH(rename, (const char* from, const char* to), (from, to), to, 1)
ON_PATH(renameat, (int a, const char* from, int b, const char* to), (a, from, b, to), to, 1)
ON_PATH(renameat2, (int a, const char* from, int b, const char* to, unsigned flags), (a, from, b, to, flags), to, 1)
ON_PATH(link, (const char* from, const char* to), (from, to), to, 1)
ON_PATH(linkat, (int a, const char* from, int b, const char* to, int flags), (a, from, b, to, flags), to, 1)
ON_PATH(symlink, (const char* from, const char* to), (from, to), to, 1)
ON_PATH(chmod, (const char* path, mode_t mode), (path, mode), path, 0)
ON_PATH(chown, (const char* path, uid_t user, gid_t group), (path, user, group), path, 0)
ON_PATH(truncate, (const char* path, off_t length), (path, length), path, 1)
ON_PATH(chdir, (const char* path), (path), path, 0)
FUNCTION(ssize_t, -1, readlink, (const char* path, char* out, size_t size), (path, out, size), path, -1, 0, 0)
FUNCTION(ssize_t, -1, readlinkat, (int at, const char* path, char* out, size_t size), (at, path, out, size), path, -1,
         0, 0)
FUNCTION(char*, NULL, getcwd, (char* out, size_t size), (out, size), NULL, -1, 0, 0)
FUNCTION(DIR*, NULL, opendir, (const char* path), (path), path, -1, 0, 1)
FUNCTION(FILE*, NULL, fopen, (const char* path, const char* mode), (path, mode), path, -1, 0, 1)

// --- Calls that work on a descriptor

ON_DESCRIPTOR(fstat, (int fd, struct stat* out), (fd, out), fd, 0)
ON_DESCRIPTOR(fstatvfs, (int fd, struct statvfs* out), (fd, out), fd, 0)
ON_DESCRIPTOR(fsync, (int fd), (fd), fd, 1)
ON_DESCRIPTOR(fdatasync, (int fd), (fd), fd, 1)
ON_DESCRIPTOR(syncfs, (int fd), (fd), fd, 1)
ON_DESCRIPTOR(ftruncate, (int fd, off_t length), (fd, length), fd, 1)
ON_DESCRIPTOR(fallocate, (int fd, int mode, off_t at, off_t length), (fd, mode, at, length), fd, 1)
ON_DESCRIPTOR(posix_fallocate, (int fd, off_t at, off_t length), (fd, at, length), fd, 1)
ON_DESCRIPTOR(fchmod, (int fd, mode_t mode), (fd, mode), fd, 0)
ON_DESCRIPTOR(fchown, (int fd, uid_t user, gid_t group), (fd, user, group), fd, 0)
ON_DESCRIPTOR(fchdir, (int fd), (fd), fd, 0)
ON_DESCRIPTOR(flock, (int fd, int operation), (fd, operation), fd, 0)
FUNCTION(off_t, -1, lseek, (int fd, off_t offset, int whence), (fd, offset, whence), NULL, fd, 0, 0)
FUNCTION(DIR*, NULL, fdopendir, (int fd), (fd), NULL, fd, 0, 0)
FUNCTION(int, -1, dup, (int fd), (fd), NULL, fd, 0, 1)
FUNCTION(int, -1, dup2, (int fd, int to), (fd, to), NULL, fd, 0, 1)
FUNCTION(int, -1, dup3, (int fd, int to, int flags), (fd, to, flags), NULL, fd, 0, 1)
FUNCTION(struct dirent*, NULL, readdir, (DIR * folder), (folder), NULL, dirfd(folder), 0, 0)
FUNCTION(void*, MAP_FAILED, mmap, (void* at, size_t size, int access, int flags, int fd, off_t offset),
         (at, size, access, flags, fd, offset), NULL, fd, 0, 0)
FUNCTION(ssize_t, -1, copy_file_range, (int from, off_t* a, int to, off_t* b, size_t size, unsigned flags),
         (from, a, to, b, size, flags), NULL, to, 1, 0)
FUNCTION(ssize_t, -1, sendfile, (int to, int from, off_t* offset, size_t size), (to, from, offset, size), NULL, to, 1,
         0)

// A descriptor that cannot be closed is closed all the same.
int close(int fd) {
    NEXT(close);
    const enum Action action = Count("close", NULL, fd, 0, 0, 0);
    const int error = errno, result = next(fd);
    if (action != Fail) return result;
    errno = error;
    return -1;
}

int closedir(DIR* folder) {
    NEXT(closedir);
    const enum Action action = Count("closedir", NULL, dirfd(folder), 0, 0, 0);
    const int error = errno, result = next(folder);
    if (action != Fail) return result;
    errno = error;
    return -1;
}

// --- Calls with an argument that not every call has

#define TAKE_MODE(flags)                   \
    mode_t mode = 0;                       \
    if ((flags) & (O_CREAT | O_TMPFILE)) { \
        va_list rest;                      \
        va_start(rest, flags);             \
        mode = va_arg(rest, mode_t);       \
        va_end(rest);                      \
    }

int open(const char* path, int flags, ...) {
    NEXT(open);
    TAKE_MODE(flags)
    return Count("open", path, -1, (flags & O_CREAT) != 0, 1, 0) == Fail ? -1 : next(path, flags, mode);
}

int openat(int at, const char* path, int flags, ...) {
    NEXT(openat);
    TAKE_MODE(flags)
    return Count("openat", path, -1, (flags & O_CREAT) != 0, 1, 0) == Fail ? -1 : next(at, path, flags, mode);
}

int fcntl(int fd, int command, ...) {
    NEXT(fcntl);
    va_list rest;
    va_start(rest, command);
    void* const argument = va_arg(rest, void*);
    va_end(rest);
    const int opens = command == F_DUPFD || command == F_DUPFD_CLOEXEC;
    return Count("fcntl", NULL, fd, 0, opens, 0) == Fail ? -1 : next(fd, command, argument);
}

// --- Calls that move `size` bytes or parts

#define TRANSFER(name, parameters, arguments, grows)                           \
    ssize_t name parameters {                                                  \
        NEXT(name);                                                            \
        if (fd == STDOUT_FILENO || fd == STDERR_FILENO) return next arguments; \
        const enum Action action = Count(#name, NULL, fd, grows, 0, 1);        \
        if (action == Fail) return -1;                                         \
        if (action == Half && size > 1) size /= 2;                             \
        const ssize_t moved = next arguments;                                  \
        if (action == Half && kind == HalfThenKill) Die();                     \
        return moved;                                                          \
    }

TRANSFER(read, (int fd, void* out, size_t size), (fd, out, size), 0)
TRANSFER(pread, (int fd, void* out, size_t size, off_t offset), (fd, out, size, offset), 0)
TRANSFER(readv, (int fd, const struct iovec* parts, int size), (fd, parts, size), 0)
TRANSFER(write, (int fd, const void* data, size_t size), (fd, data, size), 1)
TRANSFER(pwrite, (int fd, const void* data, size_t size, off_t offset), (fd, data, size, offset), 1)
TRANSFER(pwritev, (int fd, const struct iovec* parts, int size, off_t offset), (fd, parts, size, offset), 1)
TRANSFER(writev, (int fd, const struct iovec* parts, int size), (fd, parts, size), 1)

// --- Waits

static struct timespec Shortened(const struct timespec* wait) {
    const long long nanoseconds = (wait->tv_sec * 1000000000LL + wait->tv_nsec) / 50;
    return (struct timespec){nanoseconds / 1000000000, nanoseconds % 1000000000};
}

int nanosleep(const struct timespec* wait, struct timespec* left) {
    NEXT(nanosleep);
    const struct timespec shorter = Shortened(wait);
    return next(&shorter, left);
}

int clock_nanosleep(clockid_t clock, int flags, const struct timespec* wait, struct timespec* left) {
    NEXT(clock_nanosleep);
    const struct timespec shorter = flags ? *wait : Shortened(wait);
    return next(clock, flags, &shorter, left);
}

// --- Memory. An address sanitizer has an allocator of its own, which nothing may come ahead of.

#ifndef NO_ALLOCATIONS

extern void *__libc_malloc(size_t), *__libc_calloc(size_t, size_t), *__libc_realloc(void*, size_t),
    *__libc_memalign(size_t, size_t);

static int IsRefused(void) {
    ++report->allocations;
    if (chosenAllocation == 0 || report->allocations < (uint32_t)chosenAllocation) return 0;
    if (!isLasting && report->allocations > (uint32_t)chosenAllocation) return 0;
    if (report->strikes++ == 0) memcpy(report->struck, report->last, sizeof report->struck);
    errno = ENOMEM;
    return 1;
}

void* malloc(size_t size) {
    return IsRefused() ? NULL : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    return IsRefused() ? NULL : __libc_calloc(count, size);
}
void* realloc(void* former, size_t size) {
    return IsRefused() ? NULL : __libc_realloc(former, size);
}
void* aligned_alloc(size_t alignment, size_t size) {
    return IsRefused() ? NULL : __libc_memalign(alignment, size);
}
void* memalign(size_t alignment, size_t size) {
    return IsRefused() ? NULL : __libc_memalign(alignment, size);
}
int posix_memalign(void** out, size_t alignment, size_t size) {
    if (IsRefused()) return ENOMEM;
    *out = __libc_memalign(alignment, size);
    return *out ? 0 : ENOMEM;
}

#endif
