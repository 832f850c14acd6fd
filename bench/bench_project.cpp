// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/study.h"
#include "bench/studywindow.h"
#include "bench/subjects.h"

#include <QBuffer>
#include <QSaveFile>
#include <QTemporaryDir>

#include <memory>

namespace {

QByteArray read(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "cannot read the project");
    return file.readAll();
}

/// Writes with the given function as the window saves: the whole file, synced to the disk.
template <typename Write>
void save(const QString& path, Write write)
{
    QSaveFile file(path);
    require(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && write(file) && file.commit(),
            "cannot write the project");
}

ProjectItems readItems(const QByteArray& bytes)
{
    return readProject(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size()).items;
}

bool sameResults(const RawResults& first, const RawResults& second)
{
    bool same = first.size() == second.size();
    for (int model = 0; same && model < first.size(); ++model) {
        same = std::equal(first.at(model).begin(), first.at(model).end(), second.at(model).begin(),
                          second.at(model).end(),
                          [](const Table& a, const Table& b) { return sameBits(a, b); });
    }
    return same;
}

/// A project of 194 MB, saved and opened.
class ProjectFile
{
public:
    ProjectFile()
    {
        QBuffer buffer(&bytes);
        require(buffer.open(QIODevice::WriteOnly) && writeProject(study, &buffer),
                "cannot write the project");
    }

    void saveAndLoad() const
    {
        const QString path = folder.filePath("saved");
        save(path, [this](QSaveFile& file) { return writeProject(study, &file); });
        benchmark::DoNotOptimize(readItems(read(path)).rawResults.constData());
    }

    void writeAndRead() const
    {
        const QString path = folder.filePath("raw");
        save(path, [this](QSaveFile& file) { return file.write(bytes) == bytes.size(); });
        benchmark::DoNotOptimize(read(path).constData());
    }

    bool agree() const
    {
        saveAndLoad();
        return read(folder.filePath("saved")) == bytes
               && sameResults(readItems(bytes).rawResults, study.rawResults);
    }

private:
    ProjectItems study = makeStudy({4, 100, 1000}, Variability::None);
    QByteArray bytes;
    QTemporaryDir folder;
};

} // namespace

void registerProjectFile(Report& report)
{
    const auto project = std::make_shared<ProjectFile>();
    Comparison comparison;
    comparison.name = "project_file";
    comparison.bar = 1.4;
    comparison.contests = {{timed([project] { project->saveAndLoad(); }, Clock::Wall),
                            timed([project] { project->writeAndRead(); }, Clock::Wall)}};
    comparison.agree = [project] { return project->agree(); };
    comparison.longestSeconds = 60;
    registerComparison(report, comparison);
}
