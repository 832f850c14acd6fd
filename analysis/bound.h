// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_BOUND_H
#define VELMORA_ANALYSIS_BOUND_H

#include <QString>

/// The substitute for a bound of the target interval whose text is not a number: a value, and a
/// text. This is intended: the text looks infinite although the value is not.
struct BoundSubstitute
{
    double value;
    const char* text;
};

/// The substitutes for the lower bound, which is excluded, and the upper one, which is included.
constexpr BoundSubstitute lowerSubstitute{-10.0, "-inf"};
constexpr BoundSubstitute upperSubstitute{10.0, "inf"};

/// A bound of the target interval as it is edited.
struct Bound
{
    QString text;
    /// Whether the program put the text there, which then stands for the substitute's value;
    /// the same text typed by the user is infinite.
    bool placed = false;
    double value = 0.0;
};

/// The bound after its text was edited: the number typed, or the substitute, whose text is
/// placed, for any other text. A placed text stays with its value.
Bound editedBound(const Bound& bound, const BoundSubstitute& substitute);

/// The bound with a text from a project file, in which the substitute's text counts as placed and
/// any text that is not a number as not edited yet: it stays and has the substitute's value.
Bound storedBound(const QString& text, const BoundSubstitute& substitute);

#endif
