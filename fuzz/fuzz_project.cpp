// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// A project file, read and written again.

#include "fuzz/target.h"
#include "tests/support/projectbytes.h"

#include <QBuffer>

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    const QByteArray file(reinterpret_cast<const char*>(data), int(size));
    ProjectItems items;
    const int complete = readItemCount(file, items);
    require(complete >= 0, "the items are those of the file");

    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    require(writeProject(items, &buffer), "any items can be written");
    require(buffer.data() == ProjectBytes(items).bytes, "the bytes are Qt's own");
    require(readItemCount(buffer.data(), items) == 17, "what was written is read");
    return 0;
}
