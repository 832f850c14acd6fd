// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_PROJECTSTUDY_H
#define VELMORA_ANALYSIS_PROJECTSTUDY_H

#include "analysis/bound.h"
#include "analysis/study.h"
#include "io/projectfile.h"

/// A study as a project file makes it of the one that was open before.
struct ProjectStudy
{
    Study study;
    /// Of the target interval. The text that the program places where a bound is missing
    /// stands for its substitute.
    Bound lowerBound;
    Bound upperBound;
};

/// Applies the items of a project file that were read, in the order of the file; what a file
/// that ends early lacks stays as it was. Column settings and individuals are no part of a
/// project. Models are numbered. Omega is cut or filled up to a square that holds every ETA of
/// the expression. Never fails: an index that names no choice leaves it as it was.
ProjectStudy appliedProject(const ProjectStudy& before, const DecodedProject& project);

#endif
