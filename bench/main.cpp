// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/console.h"
#include "bench/processors.h"
#include "bench/report.h"
#include "bench/subjects.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

struct Subject
{
    const char* name;
    void (*registerAll)(Report&);
};

/// In the order of the rows.
constexpr Subject subjects[] = {
    {"expressions", registerExpressions},
    {"probability", registerProbability},
    {"certainty", registerCertainty},
    {"recalculation", registerRecalculation},
    {"growth", registerGrowth},
    {"csv", registerCsv},
    {"folder", registerFolderImport},
    {"project", registerProjectFile},
    {"batch", registerBatch},
    {"editing", registerEditing},
    {"start", registerStart},
    {"pages", registerPages},
};

/// Leaves out the debug messages of the pages.
void showSevere(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

bool isSubject(const QString& name)
{
    return std::any_of(std::begin(subjects), std::end(subjects),
                       [&name](const Subject& subject) { return name == subject.name; });
}

void printHelp()
{
    std::puts(
        "Usage: velmora-bench [--output FILE] [--benchmark_...] [SUBJECT...]\n\n"
        "Benchmarks Velmora against hand-written code and prints the ratios.\n"
        "The exit code is 1 if a row misses its bar.\n\n"
        "  --output FILE    also write the ratios to this file\n"
        "  --benchmark_...  options of the benchmark library, such as --benchmark_filter=REGEX\n"
        "  SUBJECT          measure only this subject, one of:");
    for (const Subject& subject : subjects) {
        std::printf("                     %s\n", subject.name);
    }
}

/// Takes the benchmark library's options out of the arguments.
std::vector<char*> initializeBenchmarks(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    int count = argc;
    benchmark::Initialize(&count, arguments.data(), printHelp);
    arguments.resize(std::size_t(count));
    return arguments;
}

/// One subject after another, each with its own data.
void measure(const QStringList& chosen, Report& report)
{
    Console console;
    for (const Subject& subject : subjects) {
        if (chosen.isEmpty() || chosen.contains(subject.name)) {
            const Processors one(1);
            subject.registerAll(report);
            benchmark::RunSpecifiedBenchmarks(&console);
            benchmark::ClearRegisteredBenchmarks();
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(showSevere);
    // Windows are painted in memory, and no settings of the user are read or changed.
    const QTemporaryDir settings;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    std::vector<char*> remaining = initializeBenchmarks(argc, argv);
    int count = int(remaining.size());
    const QApplication application(count, remaining.data());
    QLocale::setDefault(QLocale::c());

    QCommandLineParser arguments;
    arguments.addOption({"output", QString(), "file"});
    arguments.process(application);
    const QStringList chosen = arguments.positionalArguments();
    if (!std::all_of(chosen.begin(), chosen.end(), isSubject)) {
        printHelp();
        return 2;
    }

    Report report;
    measure(chosen, report);
    report.print();
    const QString output = arguments.value("output");
    if (!output.isEmpty() && !report.write(output.toStdString())) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(output));
        return 2;
    }
    return report.isGood() ? 0 : 1;
}
