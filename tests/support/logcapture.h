// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_LOGCAPTURE_H
#define VELMORA_TESTS_SUPPORT_LOGCAPTURE_H

#include <QMutex>
#include <QString>
#include <QVector>

/// Keeps Qt's messages, of all threads, for as long as it lives. One at a time; fatal
/// messages still end the program.
class LogCapture
{
public:
    struct Message
    {
        QtMsgType type;
        QString function; ///< signature of the function that spoke
        QString text;
    };

    LogCapture()
        : previous(qInstallMessageHandler(keep))
    {
        kept.clear();
    }
    ~LogCapture() { qInstallMessageHandler(previous); }

    QVector<Message> messages() const
    {
        const QMutexLocker lock(&mutex);
        return kept;
    }

private:
    static void keep(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        const QMutexLocker lock(&mutex);
        kept.append({type, QString::fromLatin1(context.function), text});
    }

    inline static QMutex mutex;
    inline static QVector<Message> kept;
    QtMessageHandler previous;
};

#endif
