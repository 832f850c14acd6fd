// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_IO_PROJECTFILE_H
#define VELMORA_IO_PROJECTFILE_H

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

class QFile;
class QIODevice;

// Project files. A file is 17 items one after another, with nothing before, between or
// after them: no magic number, no version.
//
//     item  type                       content
//        1  table of numbers, depth 4  rawResults, [model][dataSet][sample][column]
//        2  table of texts, depth 2    rawResultsHeaders, [model][column]
//        3  text                       doses as typed
//        4  list of texts              endpoint expressions, [model]
//        5  table of numbers, depth 3  omega matrices, [model][row][column]
//        6  table of integers, depth 3 omega column references, same shape as item 5
//        7  integer                    index of the population summary
//        8  list of texts              weight expressions, [model]
//        9  flag                       whether weights are on the log scale
//       10  integer                    0 model averaging, 1 model selection
//       11  integer                    index of the choice of OFV
//       12  text                       lower bound of the target interval as typed
//       13  text                       upper bound of the target interval as typed
//       14  table of numbers, depth 2  doseChoice, [row][column] as displayed
//       15  list of texts              doseChoiceLabels, [column] of item 14
//       16  list of numbers            doseChoiceVector, probability levels in percent
//       17  table of numbers, depth 4  doseChoiceCash, [dataSet][model][sample][dose]
//
// The bytes are those of a QDataStream of version 15 (Qt_5_2). All is big-endian. A list
// is a 32-bit count and its elements, a table is a list of lists. A number is a double, an
// integer has 32 bits and a sign, a flag is a byte. A text is its length in bytes, 32 bits,
// and its UTF-16 units; the length of a null text is 0xffffffff, of an empty one 0.

/// The content of a project file, in the order of the file.
struct ProjectItems
{
    QVector<QVector<QVector<QVector<double>>>> rawResults; ///< [model][dataSet][sample][column]
    QVector<QStringList> rawResultsHeaders;                ///< [model][column]
    QString possibleDoses;                                 ///< as typed
    QStringList endPointExpressions;                       ///< [model], as typed
    QVector<QVector<QVector<double>>> omegas;              ///< [model][row][column]
    QVector<QVector<QVector<int>>> omegaColumns;           ///< same shape as omegas
    qint32 populationSummary = 0;                          ///< index in its combo box
    QStringList weightExpressions;                         ///< [model], as typed
    bool logScale = false;
    qint32 averageOrSelection = 0; ///< 0 model averaging, 1 model selection
    qint32 oneOrIndividualOfv = 0; ///< index in its combo box
    QString lowerBound;            ///< as typed
    QString upperBound;            ///< as typed
    QVector<QVector<double>> doseChoice;
    QStringList doseChoiceLabels;                              ///< [column of doseChoice]
    QVector<double> doseChoiceVector;                          ///< probability levels in percent
    QVector<QVector<QVector<QVector<double>>>> doseChoiceCash; ///< [dataSet][model][sample][dose]
};

/// What was found in a project file.
struct DecodedProject
{
    ProjectItems items;
    int completeItems = 0;       ///< items 1 to completeItems were read, the others are default
    bool endsInsideItem = false; ///< the next item has begun but is cut short or damaged
};

/// Writes the items to the open device and flushes it if it is a file.
/// False if not every byte could be written.
bool writeProject(const ProjectItems& items, QIODevice* device);

/// Reads the items from the content of a project file, which may be cut anywhere: an item
/// that is cut short or damaged counts as absent, and so do all items after it. Bytes after
/// the last item are ignored. Any bytes are safe to read; a list never takes more elements
/// than the remaining bytes can hold, so memory stays within ten times the size.
DecodedProject readProject(const uchar* data, qint64 size);

/// The same for an open file. If it cannot be read, the file has an error.
DecodedProject readProject(QFile& file);

/// True if a file of this size that starts with these bytes can be a project: the counts at the
/// start of item 1 must fit into the size. No text starts like that.
bool startsAsProject(const QByteArray& start, qint64 size);

#endif
