// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_BATCH_ERROR_H
#define VELMORA_BATCH_ERROR_H

#include <QString>

#include <exception>

/// How the program ends.
enum class ExitCode {
    Done = 0,
    Failed = 1,  ///< something could not be read, calculated or written
    Usage = 2,   ///< wrong options or settings
    Findings = 3 ///< done with findings, and --strict was given
};

/// Why a run ends early: one line that says what is wrong and what to do. Nothing that looks
/// complete is left behind.
class BatchError : public std::exception
{
public:
    BatchError(ExitCode code, const QString& text)
        : exitCode(code)
        , line(text)
    {
    }

    ExitCode code() const { return exitCode; }
    const QString& text() const { return line; }
    const char* what() const noexcept override { return "the run ended early"; }

private:
    ExitCode exitCode;
    QString line;
};

/// Ends the run because of wrong usage, or because it failed.
[[noreturn]] inline void rejectUsage(const QString& text)
{
    throw BatchError(ExitCode::Usage, text);
}

[[noreturn]] inline void fail(const QString& text)
{
    throw BatchError(ExitCode::Failed, text);
}

#endif
