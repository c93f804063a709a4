/* Makes one system call, or one allocation, of a program fail: preloaded by test_faults.py.
 *
 * FAULT_FOLDER  calls on files below this folder are counted; all others pass
 * FAULT_AT      which of them fails, counted from 1
 * FAULT_KIND    EIO, ENOSPC or EINTR: the call fails with that error. SHORT: a read or write moves one byte less than it
 *               was asked for (other calls are not counted). ENOMEM: allocations are counted instead, while main runs
 * FAULT_REPORT  file that gets the name of the call that failed
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

enum { kMostFiles = 1024 };

static char ofFolder[kMostFiles]; /* by descriptor */
static atomic_long calls;
static long failAt;
static int failWith; /* errno; 0 for SHORT */
static int isShort;
static int isMemory;
static atomic_int mainRuns;
static const char* folder;
static size_t folderLength;

__attribute__((constructor)) static void readOrders(void) {
    const char* at = getenv("FAULT_AT");
    const char* kind = getenv("FAULT_KIND");
    folder = getenv("FAULT_FOLDER");
    folderLength = folder == NULL ? 0 : strlen(folder);
    failAt = at == NULL ? 0 : atol(at);
    if (kind == NULL || folder == NULL) {
        failAt = 0;
    } else if (strcmp(kind, "SHORT") == 0) {
        isShort = 1;
    } else if (strcmp(kind, "ENOMEM") == 0) {
        isMemory = 1;
    } else {
        failWith = strcmp(kind, "ENOSPC") == 0 ? ENOSPC : strcmp(kind, "EINTR") == 0 ? EINTR : EIO;
    }
}

static void report(const char* name) {
    const char* path = getenv("FAULT_REPORT");
    if (path == NULL) {
        return;
    }
    const int file = (int)syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND, 0600);
    if (file >= 0) {
        (void)!syscall(SYS_write, file, name, strlen(name));
        (void)!syscall(SYS_write, file, "\n", 1);
        syscall(SYS_close, file);
    }
}

static int isOurs(const char* path) {
    return folder != NULL && path != NULL && strncmp(path, folder, folderLength) == 0;
}

static int isOurFile(int file) {
    return file >= 0 && file < kMostFiles && ofFolder[file];
}

static int isTurn(const char* name) {
    if (atomic_fetch_add(&calls, 1) + 1 != failAt) {
        return 0;
    }
    report(name);
    return 1;
}

/* Whether this call fails; errno is set then. */
static int fails(int ours, const char* name) {
    if (!ours || failAt == 0 || isShort || isMemory || !isTurn(name)) {
        return 0;
    }
    errno = failWith;
    return 1;
}

/* The size of a read or write: one byte less if it is its turn. */
static size_t shortened(int ours, size_t size, const char* name) {
    return ours && isShort && failAt != 0 && size > 1 && isTurn(name) ? size - 1 : size;
}

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

static int noted(int file, int ours) {
    if (file >= 0 && file < kMostFiles) {
        ofFolder[file] = (char)ours;
    }
    return file;
}

static mode_t modeOf(int flags, va_list list) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(list, mode_t) : 0;
}

#define OPEN(name)                                                                                                     \
    int name(const char* path, int flags, ...) {                                                                       \
        va_list list;                                                                                                  \
        va_start(list, flags);                                                                                         \
        const mode_t mode = modeOf(flags, list);                                                                       \
        va_end(list);                                                                                                  \
        const int ours = isOurs(path);                                                                                 \
        return fails(ours, #name) ? -1 : noted(REAL(name)(path, flags, mode), ours);                                   \
    }
OPEN(open)
OPEN(open64)

#define OPENAT(name)                                                                                                   \
    int name(int at, const char* path, int flags, ...) {                                                               \
        va_list list;                                                                                                  \
        va_start(list, flags);                                                                                         \
        const mode_t mode = modeOf(flags, list);                                                                       \
        va_end(list);                                                                                                  \
        const int ours = isOurs(path) || isOurFile(at);                                                                \
        return fails(ours, #name) ? -1 : noted(REAL(name)(at, path, flags, mode), ours);                               \
    }
OPENAT(openat)
OPENAT(openat64)

#define FOPEN(name)                                                                                                    \
    FILE* name(const char* path, const char* mode) {                                                                   \
        const int ours = isOurs(path);                                                                                 \
        if (fails(ours, #name)) {                                                                                      \
            return NULL;                                                                                               \
        }                                                                                                              \
        FILE* const file = REAL(name)(path, mode);                                                                     \
        if (file != NULL) {                                                                                            \
            noted(fileno(file), ours);                                                                                 \
        }                                                                                                              \
        return file;                                                                                                   \
    }
FOPEN(fopen)
FOPEN(fopen64)

int close(int file) {
    noted(file, 0);
    return REAL(close)(file);
}

ssize_t read(int file, void* to, size_t size) {
    const int ours = isOurFile(file);
    return fails(ours, "read") ? -1 : REAL(read)(file, to, shortened(ours, size, "read"));
}
ssize_t write(int file, const void* from, size_t size) {
    const int ours = isOurFile(file);
    return fails(ours, "write") ? -1 : REAL(write)(file, from, shortened(ours, size, "write"));
}
ssize_t writev(int file, const struct iovec* parts, int count) {
    return fails(isOurFile(file), "writev") ? -1 : REAL(writev)(file, parts, count);
}
ssize_t pread(int file, void* to, size_t size, off_t at) {
    const int ours = isOurFile(file);
    return fails(ours, "pread") ? -1 : REAL(pread)(file, to, shortened(ours, size, "pread"), at);
}
ssize_t pread64(int file, void* to, size_t size, off64_t at) {
    const int ours = isOurFile(file);
    return fails(ours, "pread64") ? -1 : REAL(pread64)(file, to, shortened(ours, size, "pread64"), at);
}
ssize_t pwrite(int file, const void* from, size_t size, off_t at) {
    const int ours = isOurFile(file);
    return fails(ours, "pwrite") ? -1 : REAL(pwrite)(file, from, shortened(ours, size, "pwrite"), at);
}
ssize_t pwrite64(int file, const void* from, size_t size, off64_t at) {
    const int ours = isOurFile(file);
    return fails(ours, "pwrite64") ? -1 : REAL(pwrite64)(file, from, shortened(ours, size, "pwrite64"), at);
}

#define ON_FILE(name, declared, passed)                                                                                \
    int name declared {                                                                                                \
        return fails(isOurFile(file), #name) ? -1 : REAL(name) passed;                                                 \
    }
#define ON_PATH(name, declared, passed)                                                                                \
    int name declared {                                                                                                \
        return fails(isOurs(path), #name) ? -1 : REAL(name) passed;                                                    \
    }

ON_FILE(fsync, (int file), (file))
ON_FILE(fdatasync, (int file), (file))
ON_FILE(ftruncate, (int file, off_t size), (file, size))
ON_FILE(ftruncate64, (int file, off64_t size), (file, size))
ON_FILE(fchmod, (int file, mode_t mode), (file, mode))
ON_FILE(flock, (int file, int operation), (file, operation))
ON_FILE(fstat, (int file, struct stat* status), (file, status))
ON_FILE(fstat64, (int file, struct stat64* status), (file, status))
ON_PATH(stat, (const char* path, struct stat* status), (path, status))
ON_PATH(stat64, (const char* path, struct stat64* status), (path, status))
ON_PATH(lstat, (const char* path, struct stat* status), (path, status))
ON_PATH(lstat64, (const char* path, struct stat64* status), (path, status))
ON_PATH(access, (const char* path, int mode), (path, mode))
ON_PATH(rename, (const char* path, const char* to), (path, to))
ON_PATH(link, (const char* path, const char* to), (path, to))
ON_PATH(unlink, (const char* path), (path))
ON_PATH(renameat2, (int at, const char* path, int toAt, const char* to, unsigned flags), (at, path, toAt, to, flags))

/* --- memory --- */

extern void* __libc_malloc(size_t size);
extern void* __libc_calloc(size_t count, size_t size);
extern void* __libc_realloc(void* block, size_t size);

static int noMemory(void) {
    if (!isMemory || failAt == 0 || !mainRuns || !isTurn("allocation")) {
        return 0;
    }
    errno = ENOMEM;
    return 1;
}
void* malloc(size_t size) {
    return noMemory() ? NULL : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    return noMemory() ? NULL : __libc_calloc(count, size);
}
void* realloc(void* block, size_t size) {
    return noMemory() ? NULL : __libc_realloc(block, size);
}

/* What is left to the end of the process, such as the counters of a build for coverage, is not the program's. */
static void endMain(void) {
    mainRuns = 0;
}

/* The first call of the program's main. */
typedef void (*Handler)(int);
Handler signal(int number, Handler handler) {
    if (mainRuns == 0 && atexit(endMain) == 0) {
        mainRuns = 1;
    }
    return REAL(signal)(number, handler);
}
