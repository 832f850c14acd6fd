// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/batch.h"
#include "batch/commandline.h"
#include "batch/error.h"
#include "batch/interrupt.h"

#include <QApplication>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {

/// True if the run may write reports. They need fonts and pictures, but no display.
bool mayWriteReports(const QStringList& arguments)
{
    return std::any_of(arguments.begin(), arguments.end(), [](const QString& argument) {
        return argument.startsWith("--report") || argument.startsWith("--settings")
               || argument == "merge";
    });
}

std::unique_ptr<QCoreApplication> makeApplication(const QStringList& arguments, int& argc,
                                                  char** argv)
{
    if (!mayWriteReports(arguments)) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    return std::make_unique<QApplication>(argc, argv);
}

/// Shows only Qt's fatal messages; remarks on what the platform lacks do not matter here.
void showFatalMessages(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "velmora-batch: %s\n", qUtf8Printable(text));
        std::fflush(nullptr);
        _exit(int(ExitCode::Failed));
    }
}

} // namespace

/// velmora-batch [options] PROJECT
int main(int argc, char** argv)
{
    std::setlocale(LC_ALL, ""); // as names are read before the application exists
    qInstallMessageHandler(showFatalMessages);
    watchInterrupts();
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    try {
        const auto application = makeApplication(arguments, argc, argv);
        return int(performTask(readCommandLine(arguments)));
    } catch (const BatchError& error) {
        std::fprintf(stderr, "velmora-batch: %s\n", qUtf8Printable(error.text()));
        return int(error.code());
    } catch (const std::bad_alloc&) {
        std::fputs("velmora-batch: There is not enough memory.\n", stderr);
        return int(ExitCode::Failed);
    }
}
