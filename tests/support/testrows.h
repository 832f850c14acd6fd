// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_TESTS_SUPPORT_TESTROWS_H
#define VELMORA_TESTS_SUPPORT_TESTROWS_H

#include <QtTest>

/// Gives the test columns of these names and types, and returns what adds a row: its name and
/// a value for each column.
template <typename... Values, typename... Names>
auto rowsOf(Names... names)
{
    (QTest::addColumn<Values>(names), ...);
    return
        [](const char* name, const Values&... values) { (QTest::newRow(name) << ... << values); };
}

#endif
