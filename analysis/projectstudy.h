// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_ANALYSIS_PROJECTSTUDY_H
#define VELMORA_ANALYSIS_PROJECTSTUDY_H

#include "analysis/bound.h"
#include "analysis/study.h"
#include "io/projectfile.h"

/// The study after a project file was applied to the one that was open before.
struct ProjectStudy
{
    Study study;
    /// The bounds of the target interval. The text that the program places for a missing bound
    /// stands for its substitute.
    Bound lowerBound;
    Bound upperBound;
};

/// Applies the items of a project file that were read, in the order of the file; what a file that
/// ends early lacks stays as it was. A project does not hold column settings and individuals.
/// Models are numbered. Omega is cut or filled up to a square that holds every ETA of the
/// expression. Never fails: an index without a choice leaves the choice as it was.
ProjectStudy appliedProject(const ProjectStudy& before, const DecodedProject& project);

#endif
