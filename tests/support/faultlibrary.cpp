// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The library of faults.h. A call that is not to fail goes to the system itself.

#include "tests/support/faults.h"

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

FaultPlan plan;
bool isArmed = false;
pthread_t armingThread;
int calls = 0;

bool isBelowFolder(const char* path)
{
    const std::size_t length = std::strlen(plan.folder);
    return std::strncmp(path, plan.folder, length) == 0
           && (path[length] == '/' || path[length] == '\0');
}

bool isBelowFolder(int file)
{
    char link[64];
    char path[PATH_MAX] = "";
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    return readlink(link, path, sizeof path - 1) > 0 && isBelowFolder(path);
}

bool isWatched(FaultCall call)
{
    return isArmed && call == plan.call && pthread_equal(pthread_self(), armingThread) != 0;
}

/// Counts a call, and tells whether it is to fail.
bool isFault()
{
    ++calls;
    return calls == plan.number || (plan.isLasting && calls > plan.number);
}

/// The same for a call on a path or a file.
template <typename Place>
bool isFault(FaultCall call, Place place)
{
    return isWatched(call) && isBelowFolder(place) && isFault();
}

/// The result of a call that fails.
int failed()
{
    errno = plan.error;
    return -1;
}

int openAt(int folder, const char* path, int flags, mode_t mode)
{
    return isFault(FaultCall::Open, path) ? failed()
                                          : int(syscall(SYS_openat, folder, path, flags, mode));
}

template <typename Data, typename... Place>
ssize_t transfer(FaultCall call, long number, int file, Data* data, std::size_t size,
                 Place... place)
{
    if (isFault(call, file)) {
        if (plan.error != 0) {
            return failed();
        }
        size = (size + 1) / 2;
    }
    return syscall(number, file, data, size, place...);
}

int renameAt(int from, const char* oldPath, int to, const char* newPath, unsigned flags)
{
    return isFault(FaultCall::Rename, newPath)
               ? failed()
               : int(syscall(SYS_renameat2, from, oldPath, to, newPath, flags));
}

/// The memory, unless it is to be missing.
template <typename Allocate>
void* allocated(std::size_t size, Allocate allocate)
{
    if (isWatched(FaultCall::Allocate) && size >= plan.leastSize && isFault()) {
        errno = ENOMEM;
        return nullptr;
    }
    return allocate();
}

/// Of the optional last argument of open, which may be missing.
#define MODE_BEHIND(last)                                                                          \
    std::va_list rest;                                                                             \
    va_start(rest, last);                                                                          \
    const mode_t mode = va_arg(rest, mode_t);                                                      \
    va_end(rest)

} // namespace

extern "C" {

void armFaults(const FaultPlan* next)
{
    plan = *next;
    calls = 0;
    armingThread = pthread_self();
    isArmed = true;
}

int disarmFaults()
{
    isArmed = false;
    return calls;
}

// The C library's names of parameters are its own.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

int open(const char* path, int flags, ...)
{
    MODE_BEHIND(flags);
    return openAt(AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    MODE_BEHIND(flags);
    return openAt(AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...)
{
    MODE_BEHIND(flags);
    return openAt(folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...)
{
    MODE_BEHIND(flags);
    return openAt(folder, path, flags, mode);
}

int __open_2(const char* path, int flags)
{
    return openAt(AT_FDCWD, path, flags, 0);
}

int __open64_2(const char* path, int flags)
{
    return openAt(AT_FDCWD, path, flags, 0);
}

ssize_t read(int file, void* data, std::size_t size)
{
    return transfer(FaultCall::Read, SYS_read, file, data, size);
}

ssize_t write(int file, const void* data, std::size_t size)
{
    return transfer(FaultCall::Write, SYS_write, file, data, size);
}

ssize_t pread64(int file, void* data, std::size_t size, off64_t place)
{
    return transfer(FaultCall::Read, SYS_pread64, file, data, size, place);
}

ssize_t pwrite64(int file, const void* data, std::size_t size, off64_t place)
{
    return transfer(FaultCall::Write, SYS_pwrite64, file, data, size, place);
}

int fsync(int file)
{
    return isFault(FaultCall::Sync, file) ? failed() : int(syscall(SYS_fsync, file));
}

int fdatasync(int file)
{
    return isFault(FaultCall::Sync, file) ? failed() : int(syscall(SYS_fdatasync, file));
}

int rename(const char* oldPath, const char* newPath) noexcept
{
    return renameAt(AT_FDCWD, oldPath, AT_FDCWD, newPath, 0);
}

int renameat(int from, const char* oldPath, int to, const char* newPath) noexcept
{
    return renameAt(from, oldPath, to, newPath, 0);
}

int renameat2(int from, const char* oldPath, int to, const char* newPath, unsigned flags) noexcept
{
    return renameAt(from, oldPath, to, newPath, flags);
}

int linkat(int from, const char* oldPath, int to, const char* newPath, int flags) noexcept
{
    return isFault(FaultCall::Rename, newPath)
               ? failed()
               : int(syscall(SYS_linkat, from, oldPath, to, newPath, flags));
}

int ftruncate(int file, off_t size) noexcept
{
    return isFault(FaultCall::Truncate, file) ? failed() : int(syscall(SYS_ftruncate, file, size));
}

int ftruncate64(int file, off64_t size) noexcept
{
    return ftruncate(file, size);
}

/// Closes the file even where it fails, as the system does.
int close(int file)
{
    const bool isWritten =
        isWatched(FaultCall::Close) && (fcntl(file, F_GETFL) & O_ACCMODE) != O_RDONLY;
    const bool isToFail = isWritten && isFault(FaultCall::Close, file);
    const int result = int(syscall(SYS_close, file));
    return isToFail ? failed() : result;
}

void* mmap(void* wish, std::size_t size, int rights, int flags, int file, off_t place) noexcept
{
    if (file >= 0 && isFault(FaultCall::Map, file)) {
        failed();
        return MAP_FAILED;
    }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the system gives an address
    return reinterpret_cast<void*>(syscall(SYS_mmap, wish, size, rights, flags, file, place));
}

void* mmap64(void* wish, std::size_t size, int rights, int flags, int file, off64_t place) noexcept
{
    return mmap(wish, size, rights, flags, file, place);
}

// The C library's own names of these.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) noexcept
{
    return allocated(size, [=] { return __libc_malloc(size); });
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return allocated(count * size, [=] { return __libc_calloc(count, size); });
}

void* realloc(void* memory, std::size_t size) noexcept
{
    return allocated(size, [=] { return __libc_realloc(memory, size); });
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return allocated(size, [=] { return __libc_memalign(alignment, size); });
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)

} // extern "C"
