// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/projectfile.h"

#include "io/filesizelimit.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>

namespace {

constexpr quint32 nullText = 0xffffffffU;
constexpr int bufferSize = 1 << 20;

/// Qt 5 aborts on containers of 2 GiB and more, including their header.
constexpr qint64 largestContainer = std::numeric_limits<int>::max() - 64;

/// Visits the items in the order of the file until a visit returns false, and then returns false.
template <typename Items, typename Visit>
bool visitItems(Items& items, Visit visit)
{
    return visit(items.rawResults) && visit(items.rawResultsHeaders) && visit(items.possibleDoses)
           && visit(items.endPointExpressions) && visit(items.omegas) && visit(items.omegaColumns)
           && visit(items.populationSummary) && visit(items.weightExpressions)
           && visit(items.logScale) && visit(items.averageOrSelection)
           && visit(items.oneOrIndividualOfv) && visit(items.lowerBound) && visit(items.upperBound)
           && visit(items.doseChoice) && visit(items.doseChoiceLabels)
           && visit(items.doseChoiceVector) && visit(items.doseChoiceCash);
}

/// Collects the bytes in a large buffer. Every function returns false once a write has failed.
class Writer
{
public:
    explicit Writer(QIODevice* target)
        : device(target)
        , buffer(bufferSize, Qt::Uninitialized)
    {
    }

    bool flush()
    {
        const char* source = buffer.constData();
        // A full disk takes a part, and gives the error only at the next write.
        for (qint64 left = std::exchange(used, 0); left > 0;) {
            const qint64 written = device->write(source, left);
            if (written <= 0) {
                return false;
            }
            source += written;
            left -= written;
        }
        return true;
    }

    bool write(bool value) { return writeBlock<quint8>(&value, 1); }

    bool write(qint32 value) { return writeBlock<qint32>(&value, 1); }

    bool write(const QString& text)
    {
        const quint32 bytes = text.isNull() ? nullText : quint32(text.size()) * sizeof(QChar);
        return writeBlock<quint32>(&bytes, 1) && writeBlock<quint16>(text.constData(), text.size());
    }

    bool write(const QStringList& list) { return writeElements(list); }

    template <typename Element>
    bool write(const QVector<Element>& list)
    {
        if constexpr (std::is_arithmetic_v<Element>) {
            return write(qint32(list.size())) && writeBlock<Element>(list.constData(), list.size());
        } else {
            return writeElements(list);
        }
    }

private:
    template <typename List>
    bool writeElements(const List& list)
    {
        return write(qint32(list.size()))
               && std::all_of(list.begin(), list.end(),
                              [this](const auto& element) { return this->write(element); });
    }

    /// Writes values of the size of Unit.
    template <typename Unit>
    bool writeBlock(const void* values, int count)
    {
        constexpr int unit = sizeof(Unit);
        const char* source = static_cast<const char*>(values);
        while (count > 0) {
            if (bufferSize - used < unit && !flush()) {
                return false;
            }
            const int part = std::min(count, (bufferSize - used) / unit);
            qToBigEndian<Unit>(source, part, buffer.data() + used);
            used += part * unit;
            source += qptrdiff(part) * unit;
            count -= part;
        }
        return true;
    }

    QIODevice* device;
    QByteArray buffer;
    int used = 0;
};

/// Takes values from memory. A read returns false, and leaves its target in any state, if the
/// remaining bytes cannot hold the value.
class Reader
{
public:
    Reader(const uchar* data, qint64 size)
        : position(data)
        , left(size)
    {
    }

    bool atEnd() const { return left <= 0; }

    bool read(bool& value)
    {
        quint8 byte = 0;
        const bool complete = readBlock<quint8>(&byte, 1);
        value = byte != 0;
        return complete;
    }

    bool read(qint32& value) { return readBlock<qint32>(&value, 1); }

    bool read(QString& text)
    {
        quint32 bytes = 0;
        if (!readBlock<quint32>(&bytes, 1)) {
            return false;
        }
        if (bytes == nullText) {
            text = QString();
            return true;
        }
        if (bytes % sizeof(QChar) != 0 || bytes > left || bytes > largestContainer) {
            return false;
        }
        text = QString(int(bytes / sizeof(QChar)), Qt::Uninitialized);
        return readBlock<quint16>(text.data(), text.size());
    }

    bool read(QStringList& list) { return readElements(list); }

    template <typename Element>
    bool read(QVector<Element>& list)
    {
        if constexpr (std::is_arithmetic_v<Element>) {
            int count = 0;
            if (!readCount<Element>(count)) {
                return false;
            }
            list = QVector<Element>(count); // resize would round the capacity up
            return readBlock<Element>(list.data(), count);
        } else {
            return readElements(list);
        }
    }

private:
    /// Reads the count of a list of elements. Elements other than numbers begin with a count or
    /// a length of their own, and may consist of only that.
    template <typename Element>
    bool readCount(int& count)
    {
        constexpr qint64 leastSize =
            std::is_arithmetic_v<Element> ? sizeof(Element) : sizeof(quint32);
        quint32 stored = 0;
        if (!readBlock<quint32>(&stored, 1) || stored > left / leastSize
            || stored > largestContainer / qint64(sizeof(Element))) {
            return false;
        }
        count = int(stored);
        return true;
    }

    template <typename List>
    bool readElements(List& list)
    {
        using Element = typename List::value_type;
        int count = 0;
        if (!readCount<Element>(count)) {
            return false;
        }
        // Reserved, not resized: a wrong count does not touch the memory.
        list.reserve(count);
        for (; count > 0; --count) {
            Element element;
            if (!read(element)) {
                return false;
            }
            list.append(std::move(element));
        }
        return true;
    }

    /// Reads values of the size of Unit.
    template <typename Unit>
    bool readBlock(void* values, int count)
    {
        const qint64 bytes = qint64(sizeof(Unit)) * count;
        if (bytes > left) {
            return false;
        }
        qFromBigEndian<Unit>(position, count, values);
        position += bytes;
        left -= bytes;
        return true;
    }

    const uchar* position;
    qint64 left;
};

} // namespace

bool writeProject(const ProjectItems& items, QIODevice* device)
{
    if (!device->isWritable()) {
        return false;
    }
    const FileSizeSignalIgnored noSignal;
    Writer writer(device);
    if (!visitItems(items, [&writer](const auto& item) { return writer.write(item); })
        || !writer.flush()) {
        return false;
    }
    // Files buffer the last bytes themselves; a full disk shows only when they are flushed.
    auto* const file = qobject_cast<QFileDevice*>(device);
    return file == nullptr || file->flush();
}

DecodedProject readProject(const uchar* data, qint64 size)
{
    DecodedProject project;
    Reader reader(data, size);
    visitItems(project.items, [&project, &reader](auto& item) {
        if (reader.atEnd()) {
            return false;
        }
        if (!reader.read(item)) {
            item = std::decay_t<decltype(item)>();
            project.endsInsideItem = true;
            return false;
        }
        ++project.completeItems;
        return true;
    });
    return project;
}

DecodedProject readProject(QFile& file)
{
    // Read through a copy in memory: a mapped file that another program cuts short would end this
    // one. Mapped only if it is too large for a QByteArray.
    if (file.size() < std::numeric_limits<int>::max() / 2) {
        const QByteArray bytes = file.readAll();
        return readProject(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size());
    }
    const uchar* mapped = file.map(0, file.size());
    return mapped == nullptr ? DecodedProject() : readProject(mapped, file.size());
}

bool startsAsProject(const QByteArray& start, qint64 size)
{
    constexpr int countSize = sizeof(quint32);
    int position = 0;
    for (const qint64 elementSize : {countSize, countSize, countSize, int(sizeof(double))}) {
        if (start.size() - position < countSize) {
            return false;
        }
        const quint32 count = qFromBigEndian<quint32>(start.constData() + position);
        position += countSize;
        if (count > (size - position) / elementSize) {
            return false;
        }
        if (count == 0) {
            return true; // the counts below are those of other items
        }
    }
    return true;
}
