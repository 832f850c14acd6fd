// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_WHOLECHARACTERS_H
#define VELMORA_IO_WHOLECHARACTERS_H

#include <QByteArray>
#include <QFile>

/// An open file for a QTextStream, which gets no UTF-8 character in two pieces: where such a
/// character is damaged, the QTextStream of Qt 6 loses the byte behind it, be it a comma.
/// It has to be read by some thousand bytes at a time, as a QTextStream does.
class WholeCharacters : public QIODevice
{
public:
    /// Reads on from where the file stands.
    explicit WholeCharacters(QFile& source);

    bool isSequential() const override { return true; }
    bool atEnd() const override { return held.isEmpty() && file.atEnd(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QFile& file;
    QByteArray held; ///< read from the file, the begin of a character and damaged ones before it
};

#endif
