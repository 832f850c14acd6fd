// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The library of faults.h. Calls that are not to fail go to the system.

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

/// Counts a call. Returns true and sets the error if the call is to fail.
bool isFault()
{
    ++calls;
    const bool fails = calls == plan.number || (plan.isLasting && calls > plan.number);
    errno = fails ? plan.error : errno;
    return fails;
}

/// The same for a call on a path or an open file.
template <typename Place>
bool isFault(FaultCall call, Place place)
{
    return isWatched(call) && isBelowFolder(place) && isFault();
}

/// Makes the call on a path or an open file unless it is to fail.
template <typename Place, typename... Arguments>
int called(FaultCall call, Place place, long number, Arguments... arguments)
{
    return isFault(call, place) ? -1 : int(syscall(number, arguments...));
}

template <typename Data>
ssize_t transfer(FaultCall call, long number, int file, Data* data, std::size_t size)
{
    const bool fails = isFault(call, file);
    if (fails && plan.error != 0) {
        return -1;
    }
    return syscall(number, file, data, fails ? (size + 1) / 2 : size);
}

/// True if an allocation of this size is to fail.
bool isMissing(std::size_t size)
{
    return isWatched(FaultCall::Allocate) && size >= plan.leastSize && isFault();
}

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

int open64(const char* path, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t); // any value if it is missing
    va_end(rest);
    return called(FaultCall::Open, path, SYS_openat, AT_FDCWD, path, flags, mode);
}

ssize_t read(int file, void* data, std::size_t size)
{
    return transfer(FaultCall::Read, SYS_read, file, data, size);
}

ssize_t write(int file, const void* data, std::size_t size)
{
    return transfer(FaultCall::Write, SYS_write, file, data, size);
}

int fsync(int file)
{
    return called(FaultCall::Sync, file, SYS_fsync, file);
}

int fdatasync(int file)
{
    return called(FaultCall::Sync, file, SYS_fdatasync, file);
}

int rename(const char* oldPath, const char* newPath) noexcept
{
    return renameat2(AT_FDCWD, oldPath, AT_FDCWD, newPath, 0);
}

int renameat2(int from, const char* oldPath, int to, const char* newPath, unsigned flags) noexcept
{
    return called(FaultCall::Rename, newPath, SYS_renameat2, from, oldPath, to, newPath, flags);
}

int linkat(int from, const char* oldPath, int to, const char* newPath, int flags) noexcept
{
    return called(FaultCall::Rename, newPath, SYS_linkat, from, oldPath, to, newPath, flags);
}

int ftruncate64(int file, off64_t size) noexcept
{
    return called(FaultCall::Truncate, file, SYS_ftruncate, file, size);
}

/// Closes the file even if the call fails, as the system does.
int close(int file)
{
    const bool isWritten =
        isWatched(FaultCall::Close) && (fcntl(file, F_GETFL) & O_ACCMODE) != O_RDONLY;
    const bool fails = isWritten && isFault(FaultCall::Close, file);
    const int result = int(syscall(SYS_close, file));
    errno = fails ? plan.error : errno;
    return fails ? -1 : result;
}

void* mmap64(void* wish, std::size_t size, int rights, int flags, int file, off64_t place) noexcept
{
    if (file >= 0 && isFault(FaultCall::Map, file)) {
        return MAP_FAILED;
    }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the system gives an address
    return reinterpret_cast<void*>(syscall(SYS_mmap, wish, size, rights, flags, file, place));
}

// The same under other names.
decltype(open64) open __attribute__((alias("open64")));
decltype(ftruncate64) ftruncate __attribute__((alias("ftruncate64")));
decltype(mmap64) mmap __attribute__((alias("mmap64")));

// The C library's own names of these.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) noexcept
{
    return isMissing(size) ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return isMissing(count * size) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept
{
    return isMissing(size) ? nullptr : __libc_realloc(memory, size);
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)

} // extern "C"
