// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_DOCUMENT_H
#define VELMORA_REPORT_DOCUMENT_H

#include "report/chart.h"

#include <QStringList>
#include <QVector>

#include <variant>

// A report as plain data: what it says, in which order, whatever it is written as.

/// A heading, numbered by the document: of a chapter (level 1) or a section of it (level 2).
struct ReportHeading
{
    QString text;
    int level = 1;
};

/// How much a text is to catch the eye.
enum class Emphasis {
    None,
    Statement, ///< an answer
    Warning    ///< something that speaks against a result
};

struct ReportParagraph
{
    QString text;
    Emphasis emphasis = Emphasis::None;
};

struct ReportList
{
    QStringList texts;
    Emphasis emphasis = Emphasis::None;
};

struct ReportTable
{
    QString caption;
    QStringList headings;
    /// For each column l, where its cells are texts, r, where they are numbers, or c, where they
    /// are codes.
    QByteArray alignment;
    QVector<QStringList> rows; ///< [row][column]
    int leadingColumns = 1;    ///< that tell what a row is, in each part of a wide table
};

using ReportBlock =
    std::variant<ReportHeading, ReportParagraph, ReportList, ReportTable, ReportChart>;

/// A document. What is added is made fit for every writer: letters that documents cannot hold
/// are replaced, long tables are cut, with a sentence that tells so, and wide ones parted.
class ReportDocument
{
public:
    static constexpr int mostRows = 2000;    ///< of a table
    static constexpr int mostColumns = 11;   ///< of each part, or less if its numbers are long
    static constexpr int longestText = 4000; ///< of a paragraph or a cell

    ReportDocument(const QString& titleText, const QStringList& subtitleLines);

    void add(ReportHeading heading);
    void add(ReportParagraph paragraph);
    void add(ReportList list); ///< nothing if it is empty
    void add(ReportTable table);
    void add(ReportChart chart);

    /// A paragraph without emphasis.
    void say(const QString& text) { add(ReportParagraph{text, Emphasis::None}); }

    const QString& title() const { return titleLine; }
    const QStringList& subtitle() const { return subtitleTexts; }
    const QVector<ReportBlock>& blocks() const { return content; }

private:
    static int endOfPart(const ReportTable& table, int firstColumn);
    void addPart(const ReportTable& table, int firstColumn, int endColumn);

    QString titleLine;
    QStringList subtitleTexts;
    QVector<ReportBlock> content;
    int chapter = 0;
    int section = 0;
    int tableNumber = 0;
    int chartNumber = 0;
};

/// The text without letters that no document can hold, such as control characters and halves
/// of pairs, and cut where it is too long. Line breaks become blanks.
QString documentText(const QString& text, int longest = ReportDocument::longestText);

/// Parts of a text between which a line may be broken: a long word behind its marks, so that names
/// of files stay readable, a code behind each so many letters.
QStringList textPieces(const QString& text);
QStringList codePieces(const QString& code);
constexpr int codePieceLetters = 32;

/// A name of any length and script for use within a sentence: cut, and apart from the
/// direction in which the sentence runs.
QString documentName(const QString& name);

#endif
