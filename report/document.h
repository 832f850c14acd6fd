// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_REPORT_DOCUMENT_H
#define VELMORA_REPORT_DOCUMENT_H

#include "report/chart.h"

#include <QStringList>
#include <QVector>

#include <variant>

// A report as plain data: its content and order, independent of the kind of file.

/// The heading of a chapter (level 1) or of a section (level 2). The document numbers it.
struct ReportHeading
{
    QString text;
    int level = 1;
};

/// How much a text catches the eye.
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
    /// One letter for each column: l for texts, r for numbers, c for codes.
    QByteArray alignment;
    QVector<QStringList> rows; ///< [row][column]
    int leadingColumns = 1;    ///< columns that name the row, repeated in each part of a wide table
};

using ReportBlock =
    std::variant<ReportHeading, ReportParagraph, ReportList, ReportTable, ReportChart>;

/// A document. It prepares what is added for every writer: it replaces letters that documents
/// cannot hold, cuts long tables, with a sentence that says so, and splits wide ones.
class ReportDocument
{
public:
    static constexpr int mostRows = 2000;    ///< of a table
    static constexpr int mostColumns = 11;   ///< of each part; fewer if its numbers are long
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

/// The text without characters that documents cannot hold, such as control characters and halves
/// of surrogate pairs, cut if it is too long. Line breaks become blanks.
QString documentText(const QString& text, int longest = ReportDocument::longestText);

/// Parts of a text between which a line may be broken: a long word after its marks, so that names
/// of files stay readable; a code after every codePieceLetters letters.
QStringList textPieces(const QString& text);
QStringList codePieces(const QString& code);
constexpr int codePieceLetters = 32;

/// A name of any length and script for use in a sentence: cut, and isolated from the writing
/// direction of the sentence.
QString documentName(const QString& name);

#endif
