// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_WHOLECHARACTERS_H
#define VELMORA_IO_WHOLECHARACTERS_H

#include <QByteArray>
#include <QFile>

/// An open file for a QTextStream that never gives it a UTF-8 character in two pieces: if such a
/// character is damaged, the QTextStream of Qt 6 loses the byte after it, even a comma. Readers
/// must take some thousand bytes at a time, as a QTextStream does.
class WholeCharacters : public QIODevice
{
public:
    /// Reads from the present position of the file.
    explicit WholeCharacters(QFile& source);

    bool isSequential() const override { return true; }
    bool atEnd() const override { return held.isEmpty() && file.atEnd(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QFile& file;
    QByteArray held; ///< bytes read: the begin of a character, and damaged ones before it
};

#endif
