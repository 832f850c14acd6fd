// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/checkup/textorigins.h"

#include "analysis/checkup/wording.h"

void TextOrigins::typed(int row, const QString& modelName)
{
    if (modelName.isEmpty()) {
        names.remove(row);
    } else {
        names.insert(row, modelName);
    }
}

void TextOrigins::resized(int rowCount)
{
    while (!names.isEmpty() && names.lastKey() >= rowCount) {
        const int last = names.lastKey(); // the map's own key would go while it is compared
        names.remove(last);
    }
}

QStringList TextOrigins::finding(int row, const QString& nameNow) const
{
    const QString name = names.value(row);
    if (name.isEmpty() || nameNow.isEmpty() || name == nameNow) {
        return {};
    }
    return {QString("Typed for %1, now stands at %2.").arg(shortName(name), shortName(nameNow))};
}
