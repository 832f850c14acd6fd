// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/outputfolder.h"

#include "batch/error.h"
#include "batch/interrupt.h"
#include "io/csvexport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr int bytesAtATime = 1 << 20;
/// The files that a killed run leaves behind.
const char unfinishedFiles[] = "velmora-*.tmp";

} // namespace

TableFile::TableFile(const QString& filePath)
    : path(filePath)
    , file(filePath)
{
    // Unbuffered, so that a write to a full disk fails at once.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        check();
        fail(QString("%1 cannot be written.").arg(path));
    }
}

TableFile::TableFile(const QString& filePath, const QStringList& headings)
    : TableFile(filePath)
{
    addLines(commaSeparated({headings}));
}

void TableFile::check() const
{
    const QString error = file.errorString();
    if (!error.isEmpty() && error != "Unknown error") {
        fail(QString("%1 cannot be written: %2.").arg(path, error));
    }
}

void TableFile::flush()
{
    if (file.write(buffer) != buffer.size()) {
        check();
        fail(QString("%1 cannot be written.").arg(path));
    }
    buffer.clear();
}

void TableFile::addLines(const QByteArray& lines)
{
    buffer += lines;
    if (buffer.size() >= bytesAtATime) {
        flush();
    }
}

void TableFile::addRow(const QByteArrayList& fields)
{
    addLines(fields.join(',') + "\r\n");
}

void TableFile::commit()
{
    flush();
    if (!file.commit()) {
        check();
        fail(QString("%1 cannot be written.").arg(path));
    }
}

OutputFolder::OutputFolder(const QString& folderPath, bool resumes)
    : path(folderPath)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isDir()) {
        fail(QString("--output: %1 is not a folder.").arg(path));
    }
    for (QString folder = QDir::cleanPath(path); !QFileInfo::exists(folder);
         folder = QFileInfo(folder).path()) {
        made.append(folder);
    }
    if (!QDir().mkpath(path)) {
        fail(QString("--output: %1 cannot be created; check that its parent folder is writable.")
                 .arg(path));
    }
    if (!QFileInfo(path).isWritable()) {
        fail(QString("--output: %1 is not writable.").arg(path));
    }
    takeForThisRun();
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    if (!resumes && !QDir(path).entryList(all).isEmpty()) {
        ::close(lock);
        fail(
            QString("--output: %1 is not empty; name another folder, or give --resume.").arg(path));
    }
    if (resumes) {
        QFile::remove(pathOf(recordName)); // the results are no longer complete
        for (const QString& name : QDir(path).entryList({unfinishedFiles}, QDir::Files)) {
            QFile::remove(pathOf(name));
        }
    }
}

/// Ends the run if another one writes to the folder. A file system without locks does not
/// prevent that.
void OutputFolder::takeForThisRun()
{
    lock = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (lock != -1 && flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        ::close(lock);
        fail(QString("--output: another run is writing to %1.").arg(path));
    }
}

OutputFolder::~OutputFolder()
{
    if (!isFinished) {
        removeAll();
    }
    ::close(lock);
}

void OutputFolder::removeAll()
{
    files.clear();
    for (const QString& file : qAsConst(placed)) {
        QFile::remove(file);
    }
    for (const QString& folder : qAsConst(made)) {
        QDir().rmdir(folder);
    }
}

TableFile& OutputFolder::addTable(const QString& name, const QStringList& headings)
{
    names.append(name);
    files.push_back(std::make_unique<TableFile>(pathOf(name), headings));
    return *files.back();
}

TableFile& OutputFolder::addFile(const QString& name)
{
    names.append(name);
    files.push_back(std::make_unique<TableFile>(pathOf(name)));
    return *files.back();
}

void OutputFolder::finish(const QByteArray& record)
{
    addFile(recordName).addLines(record);
    for (std::size_t file = 0; file < files.size(); ++file) {
        endIfInterrupted();
        files.at(file)->commit();
        placed.append(pathOf(names.at(int(file))));
    }
    isFinished = true;
}
