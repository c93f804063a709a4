/* Records what a program does to the files of one folder, in order: preloaded by power_loss_test.py.
 *
 * TRACE_FOLDER  calls on files in this folder are recorded; all others pass
 * TRACE_FILE    gets the record. Each entry is a line of text, and for a write the bytes behind it:
 *                 create INODE NAME | write INODE OFFSET SIZE | size INODE SIZE | sync INODE | sync-folder
 *                 rename NAME NAME | link NAME NAME | unlink NAME
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

enum { kMostFiles = 1024 };

static char ofFolder[kMostFiles]; /* by descriptor: 1 a file in it, 2 the folder itself */
static int record = -1;
static const char* folder;
static size_t folderLength;

__attribute__((constructor)) static void begin(void) {
    const char* path = getenv("TRACE_FILE");
    folder = getenv("TRACE_FOLDER");
    folderLength = folder == NULL ? 0 : strlen(folder);
    if (path != NULL && folder != NULL) {
        record = (int)syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    }
}

static int isOurs(const char* path) {
    return record >= 0 && path != NULL && strncmp(path, folder, folderLength) == 0 && path[folderLength] == '/' &&
           strchr(path + folderLength + 1, '/') == NULL;
}

static int isFolder(const char* path) {
    return record >= 0 && path != NULL && strncmp(path, folder, folderLength) == 0 &&
           (path[folderLength] == '\0' || strcmp(path + folderLength, "/") == 0);
}

static int kindOf(int file) {
    return file >= 0 && file < kMostFiles ? ofFolder[file] : 0;
}

static const char* nameOf(const char* path) {
    return path + folderLength + 1;
}

static unsigned long inodeOf(int file) {
    struct stat status;
    return fstat(file, &status) == 0 ? (unsigned long)status.st_ino : 0;
}

/* One entry at once, so that two threads do not mix theirs. */
static void note(const char* line, const void* bytes, size_t size) {
    const int before = errno;
    const struct iovec parts[2] = {{(void*)(size_t)line, strlen(line)}, {(void*)(size_t)bytes, size}};
    (void)!syscall(SYS_writev, record, parts, 2);
    errno = before;
}

static void noteWrite(int file, const void* bytes, size_t size, long offset) {
    char line[128];
    snprintf(line, sizeof line, "write %lu %ld %zu\n", inodeOf(file), offset, size);
    note(line, bytes, size);
}

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

static int opened(int file, const char* path, int wasThere, int flags) {
    if (file < 0 || file >= kMostFiles) {
        return file;
    }
    ofFolder[file] = isOurs(path) ? 1 : isFolder(path) ? 2 : 0;
    if (ofFolder[file] == 1) {
        char line[1024];
        if (!wasThere) {
            snprintf(line, sizeof line, "create %lu %s\n", inodeOf(file), nameOf(path));
            note(line, NULL, 0);
        } else if ((flags & O_TRUNC) != 0) {
            snprintf(line, sizeof line, "size %lu 0\n", inodeOf(file));
            note(line, NULL, 0);
        }
    }
    return file;
}

static int isThere(const char* path) {
    struct stat status;
    return syscall(SYS_newfstatat, AT_FDCWD, path, &status, 0) == 0;
}

#define OPEN(name)                                                                                                     \
    int name(const char* path, int flags, ...) {                                                                       \
        va_list list;                                                                                                  \
        va_start(list, flags);                                                                                         \
        const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(list, mode_t) : 0;                           \
        va_end(list);                                                                                                  \
        const int before = isOurs(path) && isThere(path);                                                              \
        return opened(REAL(name)(path, flags, mode), path, before, flags);                                             \
    }
OPEN(open)
OPEN(open64)

#define FOPEN(name)                                                                                                    \
    FILE* name(const char* path, const char* mode) {                                                                   \
        const int before = isOurs(path) && isThere(path);                                                              \
        FILE* const file = REAL(name)(path, mode);                                                                     \
        if (file != NULL) {                                                                                            \
            opened(fileno(file), path, before, mode[0] == 'w' ? O_TRUNC : 0);                                          \
        }                                                                                                              \
        return file;                                                                                                   \
    }
FOPEN(fopen)
FOPEN(fopen64)

int mkostemps(char* path, int suffix, int flags) {
    return opened(REAL(mkostemps)(path, suffix, flags), path, 0, flags);
}

int close(int file) {
    if (kindOf(file) != 0) {
        ofFolder[file] = 0;
    }
    return REAL(close)(file);
}

ssize_t write(int file, const void* from, size_t size) {
    const long at = kindOf(file) == 1 ? (long)lseek(file, 0, SEEK_CUR) : 0;
    const ssize_t done = REAL(write)(file, from, size);
    if (kindOf(file) == 1 && done > 0) {
        noteWrite(file, from, (size_t)done, at);
    }
    return done;
}
ssize_t writev(int file, const struct iovec* parts, int count) {
    long at = kindOf(file) == 1 ? (long)lseek(file, 0, SEEK_CUR) : 0;
    const ssize_t done = REAL(writev)(file, parts, count);
    size_t left = done > 0 ? (size_t)done : 0;
    for (int i = 0; kindOf(file) == 1 && i < count && left > 0; ++i) {
        const size_t size = parts[i].iov_len < left ? parts[i].iov_len : left;
        noteWrite(file, parts[i].iov_base, size, at);
        at += (long)size;
        left -= size;
    }
    return done;
}

#define PWRITE(name, offset)                                                                                           \
    ssize_t name(int file, const void* from, size_t size, offset at) {                                                 \
        const ssize_t done = REAL(name)(file, from, size, at);                                                         \
        if (kindOf(file) == 1 && done > 0) {                                                                           \
            noteWrite(file, from, (size_t)done, (long)at);                                                             \
        }                                                                                                              \
        return done;                                                                                                   \
    }
PWRITE(pwrite, off_t)
PWRITE(pwrite64, off64_t)

#define TRUNCATE(name, offset)                                                                                         \
    int name(int file, offset size) {                                                                                  \
        const int done = REAL(name)(file, size);                                                                       \
        if (kindOf(file) == 1 && done == 0) {                                                                          \
            char line[128];                                                                                            \
            snprintf(line, sizeof line, "size %lu %ld\n", inodeOf(file), (long)size);                                  \
            note(line, NULL, 0);                                                                                       \
        }                                                                                                              \
        return done;                                                                                                   \
    }
TRUNCATE(ftruncate, off_t)
TRUNCATE(ftruncate64, off64_t)

#define SYNC(name)                                                                                                     \
    int name(int file) {                                                                                               \
        const int done = REAL(name)(file);                                                                             \
        if (kindOf(file) != 0 && done == 0) {                                                                          \
            char line[128];                                                                                            \
            snprintf(line, sizeof line, kindOf(file) == 2 ? "sync-folder\n" : "sync %lu\n", inodeOf(file));            \
            note(line, NULL, 0);                                                                                       \
        }                                                                                                              \
        return done;                                                                                                   \
    }
SYNC(fsync)
SYNC(fdatasync)

static int noteNames(int done, const char* what, const char* path, const char* to) {
    if (done == 0 && isOurs(path) && (to == NULL || isOurs(to))) {
        char line[2048];
        snprintf(line, sizeof line, "%s %s%s%s\n", what, nameOf(path), to == NULL ? "" : " ",
                 to == NULL ? "" : nameOf(to));
        note(line, NULL, 0);
    }
    return done;
}

int rename(const char* path, const char* to) {
    return noteNames(REAL(rename)(path, to), "rename", path, to);
}
int renameat2(int at, const char* path, int toAt, const char* to, unsigned flags) {
    return noteNames(REAL(renameat2)(at, path, toAt, to, flags), "rename", path, to);
}
int link(const char* path, const char* to) {
    return noteNames(REAL(link)(path, to), "link", path, to);
}
int unlink(const char* path) {
    return noteNames(REAL(unlink)(path), "unlink", path, NULL);
}
