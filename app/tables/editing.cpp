// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tables/editing.h"

#include "io/largetable.h"

void makeReadOnly(QTableWidget* table)
{
    LargeTable::addedTo(*table).setEditRule([](int /*column*/) { return false; });
}

void letEditOnly(QTableWidget* table, int column)
{
    LargeTable::addedTo(*table).setEditRule([column](int other) { return other == column; });
}
