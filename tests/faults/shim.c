// SPDX-License-Identifier: MIT
// Loaded before the C library (LD_PRELOAD), this makes one chosen call of a program go wrong. break.py chooses it
// and judges what the program makes of it.
//
//   FAULT_KIND=NUMBER      a system call fails with this errno value
//              kill        the process is killed before the call
//              half        the call writes half of its bytes, then the process is killed
//              short       the call reads or writes half of its bytes
//              memory      an allocation fails
//   FAULT_NUMBER=N         the N-th of the calls that this kind can strike, from 1
//   FAULT_LASTING=CLASS    and all later ones of the class (an index of Report.counts)
//   FAULT_LINKER=1         the calls of the dynamic linker inside dlopen count too
//   FAULT_REPORT=FILE      struct Report; the file has its size already
//
// Without FAULT_NUMBER it only counts. Standard output and standard error are left out: a console that breaks loses
// nothing. Waits are cut to a fiftieth, so that a program that tries again for seconds ends soon. Forked processes
// count with their parent; programs that are started are left alone.
#define _GNU_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <link.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/utsname.h>
#include <time.h>
#include <ucontext.h>
#include <unistd.h>

// A call may need room on the disk, take a descriptor, or move bytes.
enum Class { Calls, Growing, Opening, Moving, Writing, Allocations, Classes };
enum {
    Plain = 1 << Calls,
    Grows = Plain | 1 << Growing,
    Opens = Plain | 1 << Opening,
    Reads = Plain | 1 << Moving,
    Writes = Reads | Grows | 1 << Writing,
    Allocates = 1 << Allocations
};

// Lives in a file, so that it can be read after a kill.
struct Report {
    uint32_t counts[Classes];
    uint32_t strikes;
    char last[500];    // the latest call, with the path that it works on
    char struck[500];  // the first call that was struck, or the last one before the struck allocation
};

enum Action { GoOn, Fail, Half };

static struct Report unread;
static struct Report* report = &unread;
static unsigned long number;
static enum Class chosen;
static int chosenError, isLasting;
static enum { Errno, Kill, HalfThenKill, Short, Memory } kind;

static void Die(void) {
    syscall(SYS_kill, getpid(), SIGKILL);
}

static void WatchLinker(void);

__attribute__((constructor)) static void Begin(void) {
    static const char* const words[] = {"", "kill", "half", "short", "memory"};
    static const enum Class classes[] = {Calls, Calls, Writing, Moving, Allocations};
    const char* text = getenv("FAULT_REPORT");
    if (!text) return;
    const long fd = syscall(SYS_openat, AT_FDCWD, text, O_RDWR);
    void* shared = (void*)syscall(SYS_mmap, NULL, sizeof *report, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    syscall(SYS_close, fd);
    if (shared != MAP_FAILED) report = shared;
    memset(report, 0, sizeof *report);
    unsetenv("FAULT_REPORT");
    if (getenv("FAULT_LINKER")) WatchLinker();
    if (!(text = getenv("FAULT_KIND"))) return;
    chosenError = atoi(text);
    for (int i = Kill; i <= Memory; ++i)
        if (!strcmp(text, words[i])) kind = i;
    chosen = classes[kind];
    if ((text = getenv("FAULT_LASTING"))) isLasting = 1, chosen = atoi(text);
    if ((text = getenv("FAULT_NUMBER"))) number = atol(text);
}

static int IsStruck(int classes) {
    for (int i = 0; i < Classes; ++i)
        report->counts[i] += classes >> i & 1;
    if (!number || !(classes >> chosen & 1) || report->counts[chosen] < number) return 0;
    if (!isLasting && report->counts[chosen] > number) return 0;
    if (report->strikes++ == 0) memcpy(report->struck, report->last, sizeof report->struck);
    return 1;
}

// Counts a call, which works on `path` or on `fd`, and decides what becomes of it.
static enum Action Count(const char* name, const char* path, int fd, int classes) {
    const int formerError = errno;
    char target[400] = "", link[40];
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    if (!path && syscall(SYS_readlink, link, target, sizeof target - 1) < 0) target[0] = '\0';
    snprintf(report->last, sizeof report->last, "%s %s", name, path ? path : target);
    errno = formerError;
    if (!IsStruck(classes)) return GoOn;
    if (kind == Kill) Die();
    if (kind != Errno) return Half;
    errno = chosenError;
    return Fail;
}

#define NEXT(name)                 \
    static __typeof__(&name) next; \
    if (!next) next = (__typeof__(&name))dlsym(RTLD_NEXT, #name)

// A function that gives `failure` when it is struck.
#define FUNCTION(type, failure, name, parameters, arguments, path, fd, classes)    \
    type name parameters {                                                         \
        NEXT(name);                                                                \
        return Count(#name, path, fd, classes) == Fail ? failure : next arguments; \
    }
#define ON_PATH(name, parameters, arguments, path, classes) \
    FUNCTION(int, -1, name, parameters, arguments, path, -1, classes)
#define ON_DESCRIPTOR(name, parameters, arguments, classes) \
    FUNCTION(int, -1, name, parameters, arguments, NULL, fd, classes)

ON_PATH(stat, (const char* path, struct stat* out), (path, out), path, Plain)
ON_PATH(lstat, (const char* path, struct stat* out), (path, out), path, Plain)
ON_PATH(fstatat, (int at, const char* path, struct stat* out, int flags), (at, path, out, flags), path, Plain)
ON_PATH(statvfs, (const char* path, struct statvfs* out), (path, out), path, Plain)
ON_PATH(mkdir, (const char* path, mode_t mode), (path, mode), path, Grows)
ON_PATH(unlink, (const char* path), (path), path, Plain)
ON_PATH(unlinkat, (int at, const char* path, int flags), (at, path, flags), path, Plain)
ON_PATH(rename, (const char* from, const char* to), (from, to), to, Grows)
ON_PATH(renameat2, (int a, const char* from, int b, const char* to, unsigned flags), (a, from, b, to, flags), to, Grows)
ON_PATH(link, (const char* from, const char* to), (from, to), to, Grows)
ON_PATH(linkat, (int a, const char* from, int b, const char* to, int flags), (a, from, b, to, flags), to, Grows)
ON_PATH(access, (const char* path, int mode), (path, mode), path, Plain)
ON_PATH(chmod, (const char* path, mode_t mode), (path, mode), path, Plain)
ON_PATH(chdir, (const char* path), (path), path, Plain)
FUNCTION(ssize_t, -1, readlink, (const char* path, char* out, size_t size), (path, out, size), path, -1, Plain)
FUNCTION(ssize_t, -1, readlinkat, (int at, const char* path, char* out, size_t size), (at, path, out, size), path, -1,
         Plain)
FUNCTION(int, -1, uname, (struct utsname * out), (out), NULL, -1, Plain)
FUNCTION(char*, NULL, getcwd, (char* out, size_t size), (out, size), NULL, -1, Plain)
FUNCTION(DIR*, NULL, opendir, (const char* path), (path), path, -1, Opens)
FUNCTION(struct dirent*, NULL, readdir, (DIR * folder), (folder), NULL, dirfd(folder), Plain)

ON_DESCRIPTOR(fstat, (int fd, struct stat* out), (fd, out), Plain)
ON_DESCRIPTOR(fsync, (int fd), (fd), Grows)
ON_DESCRIPTOR(syncfs, (int fd), (fd), Grows)
ON_DESCRIPTOR(ftruncate, (int fd, off_t length), (fd, length), Grows)
ON_DESCRIPTOR(fchmod, (int fd, mode_t mode), (fd, mode), Plain)
ON_DESCRIPTOR(fchown, (int fd, uid_t user, gid_t group), (fd, user, group), Plain)
ON_DESCRIPTOR(fchdir, (int fd), (fd), Plain)
ON_DESCRIPTOR(flock, (int fd, int operation), (fd, operation), Plain)
ON_DESCRIPTOR(dup2, (int fd, int to), (fd, to), Opens)
#ifndef UNDER_SANITIZERS
FUNCTION(int, -1, pipe, (int ends[2]), (ends), "", -1, Opens)
#else
// The sanitizers call it to see whether an object can be read: without it they take every object for a bad one.
int pipe(int ends[2]) {
    NEXT(pipe);
    return next(ends);
}
#endif
FUNCTION(pid_t, -1, fork, (void), (), "", -1, Plain)
FUNCTION(off_t, -1, lseek, (int fd, off_t offset, int whence), (fd, offset, whence), NULL, fd, Plain)

// What cannot be closed is closed all the same.
#define CLOSING(name, type, fd)                                     \
    int name(type handle) {                                         \
        NEXT(name);                                                 \
        const enum Action action = Count(#name, NULL, (fd), Plain); \
        const int error = errno, result = next(handle);             \
        if (action == Fail) errno = error;                          \
        return action == Fail ? -1 : result;                        \
    }
CLOSING(close, int, handle)
CLOSING(closedir, DIR*, dirfd(handle))

// Calls that may have one argument more.
#define TAKE(type, last)            \
    va_list rest;                   \
    va_start(rest, last);           \
    type more = va_arg(rest, type); \
    va_end(rest)

int open(const char* path, int flags, ...) {
    NEXT(open);
    TAKE(mode_t, flags);
    return Count("open", path, -1, flags & O_CREAT ? Opens | Grows : Opens) == Fail ? -1 : next(path, flags, more);
}
int openat(int at, const char* path, int flags, ...) {
    NEXT(openat);
    TAKE(mode_t, flags);
    return Count("openat", path, -1, flags & O_CREAT ? Opens | Grows : Opens) == Fail ? -1
                                                                                      : next(at, path, flags, more);
}
int fcntl(int fd, int command, ...) {
    NEXT(fcntl);
    TAKE(void*, command);
    const int opens = command == F_DUPFD || command == F_DUPFD_CLOEXEC;
    return Count("fcntl", NULL, fd, opens ? Opens : Plain) == Fail ? -1 : next(fd, command, more);
}

// Calls that move `size` bytes or parts.
#define TRANSFER(name, parameters, arguments, classes)                         \
    ssize_t name parameters {                                                  \
        NEXT(name);                                                            \
        if (fd == STDOUT_FILENO || fd == STDERR_FILENO) return next arguments; \
        const enum Action action = Count(#name, NULL, fd, classes);            \
        if (action == Fail) return -1;                                         \
        if (action == Half && size > 1) size /= 2;                             \
        const ssize_t moved = next arguments;                                  \
        if (action == Half && kind == HalfThenKill) Die();                     \
        return moved;                                                          \
    }
TRANSFER(read, (int fd, void* out, size_t size), (fd, out, size), Reads)
TRANSFER(pread, (int fd, void* out, size_t size, off_t offset), (fd, out, size, offset), Reads)
TRANSFER(write, (int fd, const void* data, size_t size), (fd, data, size), Writes)
TRANSFER(writev, (int fd, const struct iovec* parts, int size), (fd, parts, size), Writes)
TRANSFER(pwritev, (int fd, const struct iovec* parts, int size, off_t offset), (fd, parts, size, offset), Writes)

int nanosleep(const struct timespec* wait, struct timespec* left) {
    NEXT(nanosleep);
    const long long nanoseconds = (wait->tv_sec * 1000000000LL + wait->tv_nsec) / 50;
    const struct timespec shorter = {nanoseconds / 1000000000, nanoseconds % 1000000000};
    return next(&shorter, left);
}

// The dynamic linker makes its calls itself, so nothing can come before them. The kernel traps those that come from its
// code, and they are made here instead.
#ifdef __x86_64__
static void MakeTrapped(int signal, siginfo_t* info, void* context) {
    (void)signal;
    greg_t* const at = ((ucontext_t*)context)->uc_mcontext.gregs;
    const long call = info->si_syscall;
    const int isOpen = call == SYS_openat, isRead = call == SYS_read || call == SYS_pread64, formerError = errno;
    const int isPlain =
        call == SYS_mmap || call == SYS_mprotect || call == SYS_fstat || call == SYS_newfstatat || call == SYS_close;
    const int byDescriptor = isRead || call == SYS_close || call == SYS_fstat || call == SYS_newfstatat;
    enum Action action = GoOn;
    if (isOpen || isRead || isPlain)
        action = Count("dlopen",
                       isOpen         ? (const char*)at[REG_RSI]
                       : byDescriptor ? NULL
                                      : "",
                       (int)at[REG_RDI],
                       isOpen   ? Opens
                       : isRead ? Reads
                                : Plain);
    const int error = errno;
    long result = -1;
    if (action == Half) at[REG_RDX] /= 2;
    if (action != Fail || call == SYS_close)  // what cannot be closed is closed all the same
        result = syscall(call, at[REG_RDI], at[REG_RSI], at[REG_RDX], at[REG_R10], at[REG_R8], at[REG_R9]);
    at[REG_RAX] = action == Fail ? -error : result < 0 && result > -4096 ? -errno : result;
    errno = formerError;
}

static int FindLinker(struct dl_phdr_info* object, size_t size, void* range) {
    (void)size;
    if (!strstr(object->dlpi_name, "/ld-linux")) return 0;
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr)* part = &object->dlpi_phdr[i];
        if (part->p_type != PT_LOAD || !(part->p_flags & PF_X)) continue;
        ((uint64_t*)range)[0] = object->dlpi_addr + part->p_vaddr;
        ((uint64_t*)range)[1] = object->dlpi_addr + part->p_vaddr + part->p_memsz;
    }
    return 1;
}

static void WatchLinker(void) {
    uint64_t range[2] = {0, 0};
    const size_t where = offsetof(struct seccomp_data, instruction_pointer);
    dl_iterate_phdr(FindLinker, range);
    struct sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, where + 4),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, range[0] >> 32, 0, 4),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, where),
        BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, (uint32_t)range[0], 0, 2),
        BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, (uint32_t)range[1], 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const struct sock_fprog program = {sizeof filter / sizeof *filter, filter};
    struct sigaction action = {.sa_sigaction = MakeTrapped, .sa_flags = SA_SIGINFO | SA_NODEFER | SA_RESTART};
    sigaction(SIGSYS, &action, NULL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}
#else
static void WatchLinker(void) {}
#endif

// Memory. An address sanitizer has an allocator of its own, which nothing may come before.
#ifndef UNDER_SANITIZERS
extern void *__libc_malloc(size_t), *__libc_calloc(size_t, size_t), *__libc_realloc(void*, size_t);

#define ALLOCATION(name, parameters, arguments)                   \
    void* name parameters {                                       \
        if (!IsStruck(Allocates)) return __libc_##name arguments; \
        errno = ENOMEM;                                           \
        return NULL;                                              \
    }
ALLOCATION(malloc, (size_t size), (size))
ALLOCATION(calloc, (size_t count, size_t size), (count, size))
ALLOCATION(realloc, (void* former, size_t size), (former, size))
#endif
