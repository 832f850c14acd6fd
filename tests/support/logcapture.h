// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_LOGCAPTURE_H
#define VELMORA_TESTS_SUPPORT_LOGCAPTURE_H

#include <QStringList>

/// Keeps Qt's messages for as long as it lives. One at a time, and for messages of the
/// calling thread; fatal messages still end the program.
class LogCapture
{
public:
    LogCapture() { kept.clear(); }
    ~LogCapture() { qInstallMessageHandler(previous); }

    /// Each as "signature of the function that spoke: text".
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
