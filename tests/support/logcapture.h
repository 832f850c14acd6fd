// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_LOGCAPTURE_H
#define VELMORA_TESTS_SUPPORT_LOGCAPTURE_H

#include <QStringList>

/// Keeps Qt's messages of the calling thread while it exists. There may be only one at a time.
/// Fatal messages still end the program.
class LogCapture
{
public:
    LogCapture() { kept.clear(); }
    ~LogCapture() { qInstallMessageHandler(previous); }

    /// Each as "signature of the reporting function: text".
    QStringList messages() const { return kept; }

private:
    static void keep(QtMsgType /*type*/, const QMessageLogContext& context, const QString& text)
    {
        kept.append(context.function + (": " + text));
    }

    inline static QStringList kept;
    QtMessageHandler previous = qInstallMessageHandler(keep);
};

#endif
