// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_PARSER_H
#define VELMORA_EXPR_PARSER_H

#include "expr/parser_token.h"
#include "expr/program.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// Slots of the value vector that every expression has, whether it uses them or not.
enum ReservedSlot { TimeSlot = 0, ConcentrationSlot = 1, DoseSlot = 2, FirstFreeSlot = 3 };

/// An arithmetic expression, compiled once and evaluated many times.
///
/// A value vector holds one number per name in variables: time, concentration, dose, then
/// the expression's other names in order of first appearance. The parser gives no meaning
/// to names; its callers bind them. Text becomes postfix order by the shunting-yard method
/// (Dijkstra 1961), evaluated from left to right.
///
/// Peculiarities: there are no signs ("-x" is 0.0, write "(0-x)"), a lone name gives its
/// slot and not its value ("(DOSE)" gives the dose), blanks belong to names, and malformed
/// text gives 0.0 without an error.
///
/// evaluate_tree may run in several threads on one parser while nothing changes it.
class parser
{
public:
    QString expression;         ///< as the user wrote it
    QStringList variables;      ///< names in value-vector order, by extract_variables
    QVector<parser_token> tree; ///< postfix order, by generate_tree
    QStringList operatorTexts;  ///< in the order in which the text is cut
    QVector<double> operatorCodes;
    QVector<int> operatorPriorities;
    QVector<bool> operatorLeftAssociative;

    parser();
    explicit parser(QString expressionText);

    /// Returns the names of the expression in value-vector order and stores them in variables.
    QStringList extract_variables();

    /// Extracts the variables and compiles the expression. Call it again whenever the
    /// expression has changed.
    void generate_tree();

    /// True if tree belongs to the present text of the expression.
    bool treeIsCurrent() const;

    /// True if a well-formed expression is compiled for value vectors of this length, so that
    /// an evaluation reports nothing.
    bool isCompiledFor(int slotCount) const { return programFits(slotCount); }

    /// The approximate time of an evaluation, in operations of a well-formed expression.
    /// Without a program, as for malformed expressions, it counts as 100 times as slow: the
    /// evaluation walks the tree and may report each time. Needs a current tree.
    int operationCount() const;

    /// The value of the expression for a value vector. 0.0 for malformed expressions and
    /// without a tree; the debug log says why. A variable beyond values counts as 0.0.
    double evaluate_tree(QVector<double> values);

    /// Writes the value of evaluate_tree for every individual of the block.
    void evaluateBlock(const ValueBlock& block, double* results);

    /// Writes the value of evaluate_tree at every value of one slot, [individual][value]. The
    /// block's vectors must have this slot, but not as a varying one.
    void evaluateBlock(const ValueBlock& block, int slot, const QVector<double>& slotValues,
                       double* results);

    /// Returns an evaluator with the results of evaluateBlock, which is faster for many blocks
    /// with these varying slots. None unless the expression is compiled for this many slots.
    std::optional<BlockEvaluator> blockEvaluator(int slotCount,
                                                 const QVector<int>& varyingSlots) const;

    /// The value of evaluate_tree for every value vector.
    QVector<double> evaluateAll(const QVector<QVector<double>>& valueVectors);

private:
    bool programFits(int slotCount) const;
    QVector<parser_token> tokens() const;
    void resolve(QVector<parser_token>& sequence) const;

    Program program;
    QVector<parser_token> programTree; ///< the tree that program was compiled from
    QString treeExpression;            ///< the expression that tree was generated from
};

#endif
