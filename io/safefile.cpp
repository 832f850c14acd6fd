// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/safefile.h"

#ifdef Q_OS_UNIX

#include <QFile>
#include <QRandomGenerator>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int mostLinks = 40; ///< as many as Linux follows
constexpr int mostNames = 100;
constexpr int hexadecimal = 16;
constexpr mode_t permissionBits = 0777;

/// The result of a call that is repeated whenever a signal interrupts it.
template <typename Call>
auto uninterrupted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// The folder of a path, with its slash; empty for the current folder.
QByteArray folderOf(const QByteArray& path)
{
    return path.left(path.lastIndexOf('/') + 1);
}

/// True if everything is on the disk, as far as the file system reports it.
bool sync(int file)
{
    return uninterrupted([file] { return fsync(file); }) == 0 || errno == EINVAL || errno == ENOSYS
           || errno == ENOTSUP;
}

/// Closes a file. It is closed even if this fails or is interrupted.
bool closed(int& file)
{
    return file == -1 || ::close(std::exchange(file, -1)) == 0 || errno == EINTR;
}

} // namespace

SafeFile::SafeFile(const QString& path)
    : target(QFile::encodeName(path))
{
}

SafeFile::~SafeFile()
{
    giveUp();
}

bool SafeFile::open(OpenMode mode)
{
    Q_ASSERT(!isOpen() && (mode & ReadWrite) == WriteOnly);
    return findTarget() && create() && QIODevice::open(mode | Unbuffered);
}

/// Follows links to the file to write.
bool SafeFile::findTarget()
{
    char link[PATH_MAX];
    for (int links = 0; links < mostLinks; ++links) {
        const ssize_t length = readlink(target.constData(), link, sizeof link);
        if (length < 0) {
            // Not a link, or nothing at all.
            return errno == EINVAL ? isReplaceable()
                                   : (errno == ENOENT && !target.isEmpty()) || fail();
        }
        const QByteArray next(link, int(length));
        target = next.startsWith('/') ? next : folderOf(target) + next;
    }
    return fail(qt_error_string(ELOOP));
}

bool SafeFile::isReplaceable()
{
    struct stat older = {};
    if (stat(target.constData(), &older) != 0) {
        return fail();
    }
    if (!S_ISREG(older.st_mode)) {
        return fail("Not a regular file");
    }
    permissions = int(older.st_mode & permissionBits);
    return access(target.constData(), W_OK) == 0 || fail();
}

bool SafeFile::create()
{
    const QByteArray path = folderOf(target);
    folder = uninterrupted(
        [&] { return ::open(path.isEmpty() ? "." : path.constData(), O_RDONLY | O_CLOEXEC); });
    if (folder == -1 && errno != EACCES) {
        return fail();
    }
    // The name is independent of the older file's name, which may be as long as names can be.
    for (int names = 0; names < mostNames && (names == 0 || errno == EEXIST); ++names) {
        const QByteArray random =
            QByteArray::number(QRandomGenerator::global()->generate(), hexadecimal);
        temporary = path + "velmora-" + random + ".tmp";
        file = uninterrupted([this] {
            return ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                          permissions == -1 ? 0666 : 0600);
        });
        if (file != -1) {
            if (permissions != -1) {
                fchmod(file, mode_t(permissions)); // file systems without permissions refuse it
            }
            return true;
        }
    }
    temporary.clear();
    return fail();
}

bool SafeFile::commit()
{
    if (!isOpen() || hasFailed) {
        return false;
    }
    close();
    if (!sync(file) || !closed(file)
        || uninterrupted([this] { return std::rename(temporary.constData(), target.constData()); })
               != 0) {
        return fail();
    }
    temporary.clear();
    if (folder != -1 && !sync(folder)) {
        return fail();
    }
    giveUp();
    return true;
}

qint64 SafeFile::readData(char* /*data*/, qint64 /*size*/)
{
    return -1;
}

qint64 SafeFile::writeData(const char* data, qint64 size)
{
    for (qint64 left = hasFailed ? 0 : size; left > 0;) {
        const ssize_t written =
            uninterrupted([&] { return ::write(file, data + size - left, std::size_t(left)); });
        if (written < 0) {
            fail();
            break;
        }
        left -= written;
    }
    return hasFailed ? -1 : size;
}

/// Keeps the reason, by default that of the last call. Returns false.
bool SafeFile::fail(const QString& reason)
{
    setErrorString(reason);
    hasFailed = true;
    giveUp();
    return false;
}

/// Leaves nothing behind except a file that was put in its place.
void SafeFile::giveUp()
{
    closed(file);
    closed(folder);
    if (!temporary.isEmpty()) {
        unlink(temporary.constData());
        temporary.clear();
    }
}

#endif
