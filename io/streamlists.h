// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_STREAMLISTS_H
#define VELMORA_IO_STREAMLISTS_H

#include <QDataStream>
#include <QVector>

// Lists in streams whose bytes may be damaged. Qt's own lists do not allow that.

/// Writes the count of the elements, then each of them.
template <typename Element>
void writeList(QDataStream& stream, const QVector<Element>& list)
{
    stream << qint32(list.size());
    for (const Element& element : list) {
        stream << element;
    }
}

/// Reads what writeList wrote. A wrong count takes no more memory than the elements that the
/// bytes hold; the status then says that the stream ended.
template <typename Element>
void readList(QDataStream& stream, QVector<Element>& list)
{
    qint32 count = 0;
    stream >> count;
    list.clear();
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        Element element{};
        stream >> element;
        list.append(element);
    }
}

#endif
