// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/wording.h"

QString counted(qint64 count, const QString& noun)
{
    return QString("%1 %2%3").arg(QString::number(count), noun, count == 1 ? "" : "s");
}

QString rangeText(qint64 lowest, qint64 highest)
{
    return lowest == highest ? QString::number(lowest)
                             : QString("%1 to %2").arg(lowest).arg(highest);
}

QString numberText(double number)
{
    return QString::number(number, 'g', 12);
}

QString shortName(const QString& name)
{
    constexpr int longest = 40;
    return name.size() > longest ? name.left(longest - 3) + "..." : name;
}

QString enumerated(const QStringList& texts, int most)
{
    return texts.mid(0, most).join(", ")
           + (texts.size() > most ? QString(" and %1 more").arg(texts.size() - most) : QString());
}

QStringList unreadFindings(const QStringList& files)
{
    if (files.isEmpty()) {
        return {};
    }
    QStringList names;
    for (const QString& file : files) {
        names.append(shortName(file));
    }
    return {enumerated(names) + " could not be read to "
            + (files.size() == 1 ? "its end" : "their ends")};
}
