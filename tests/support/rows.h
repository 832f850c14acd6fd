// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_ROWS_H
#define VELMORA_TESTS_SUPPORT_ROWS_H

#include <QtTest>

/// Makes the columns of a data-driven test from their names. Each call then adds a row, with its
/// name and the values of its columns.
template <typename... Columns>
class Rows
{
public:
    template <typename... Names>
    explicit Rows(Names... names)
    {
        (QTest::addColumn<Columns>(names), ...);
    }
    void operator()(const char* name, const Columns&... cells) const
    {
        (QTest::newRow(name) << ... << cells);
    }
};

#endif
