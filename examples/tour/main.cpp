// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "examples/tour/studies.h"
#include "examples/tour/tour.h"

#include <QApplication>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>

namespace {

/// Prints warnings, except the platform's remarks on what it lacks, and ends the program with
/// status 1 if a step has failed.
void report(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "The tour stopped: %s\n", qPrintable(text));
        std::_Exit(EXIT_FAILURE);
    }
    const bool onPlatform =
        text.startsWith("This plugin does not support") || text.startsWith("QStandardPaths:");
    if (type != QtDebugMsg && !onPlatform) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

} // namespace

/// velmora-tour [EXAMPLES_FOLDER [OUTPUT_FOLDER]]
int main(int argc, char** argv)
{
    const bool hasDisplay =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!hasDisplay && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qInstallMessageHandler(report);
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString examples = arguments.value(1, "examples");
    const QString outputFolder = arguments.value(2, "build/tour");

    Tour biomarker(outputFolder + "/biomarker");
    playBiomarkerStudy(biomarker, examples + "/biomarker", outputFolder + "/biomarker.velmora");
    Tour simulation(outputFolder + "/simulation");
    playSimulationStudy(simulation, examples + "/simulation", outputFolder + "/simulation.velmora");
    QTextStream(stdout) << "\nPictures and results are in " << outputFolder << '\n';
    return simulation.isWatched() ? QApplication::exec() : EXIT_SUCCESS;
}
