// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "expr/parser.h"

#include "expr/operators.h"

#include <QDebug>
#include <QHash>

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace {

struct OperatorRow
{
    const char* text;
    int code;
    int priority;
    bool leftAssociative;
};

/// In cutting order. This is intended: "Sin(", "Cos(" and "Tan(" come before their inverses
/// and so cut them apart.
constexpr OperatorRow operatorTable[] = {
    {"^", PowerOperator, 4, false},       {"*", TimesOperator, 3, true},
    {"/", DivideOperator, 3, true},       {"+", PlusOperator, 2, true},
    {"-", MinusOperator, 2, true},        {"exp(", ExpFunction, 100, true},
    {"log(", LogFunction, 100, true},     {"log10(", Log10Function, 100, true},
    {"Abs(", AbsFunction, 100, true},     {"Sign(", SignFunction, 100, true},
    {"Sqrt(", SqrtFunction, 100, true},   {"Sin(", SinFunction, 100, true},
    {"Cos(", CosFunction, 100, true},     {"Tan(", TanFunction, 100, true},
    {"ASin(", ASinFunction, 100, true},   {"ACos(", ACosFunction, 100, true},
    {"ATan(", ATanFunction, 100, true},   {"(", OpeningParenthesis, 100, true},
    {")", ClosingParenthesis, 100, true},
};

/// How much longer the walk over a tree takes than its program: 10 to 20 times, and much more
/// if it reports.
constexpr int walkSlowness = 100;

/// Moves the first alias of the group that is in the list to the front, or puts the
/// group's first alias there.
void reserveSlot(QStringList& names, const QStringList& aliases)
{
    const auto used = std::find_if(aliases.begin(), aliases.end(), [&names](const QString& alias) {
        return names.contains(alias);
    });
    const QString picked = used == aliases.end() ? aliases.first() : *used;
    names.removeAll(picked);
    names.prepend(picked);
}

/// Orders the tokens into postfix. An opening parenthesis and a function stay in the
/// sequence as one-operand operators; a closing one goes, unless it comes first of all
/// operators.
QVector<parser_token> postfixOrder(const QVector<parser_token>& sequence)
{
    QVector<parser_token> output;
    QVector<parser_token> stack;
    output.reserve(sequence.size());
    const auto popToOutput = [&output, &stack] { output.append(stack.takeLast()); };
    for (const parser_token& token : sequence) {
        if (token.type != parser_token::Operator) {
            output.append(token);
        } else if (stack.isEmpty()) {
            stack.append(token);
        } else if (token.value == ClosingParenthesis) {
            while (!stack.isEmpty() && stack.constLast().value < OpeningParenthesis) {
                popToOutput();
            }
            if (!stack.isEmpty()) {
                popToOutput();
            }
        } else {
            while (token.value < OpeningParenthesis && !stack.isEmpty()
                   && stack.constLast().value < OpeningParenthesis
                   && (stack.constLast().priority > token.priority
                       || (stack.constLast().priority == token.priority
                           && stack.constLast().leftAssociative))) {
                popToOutput();
            }
            stack.append(token);
        }
    }
    while (!stack.isEmpty()) {
        popToOutput();
    }
    return output;
}

/// What the evaluation needs of a token. Copying its texts would cost more than the arithmetic.
parser_token withoutTexts(const parser_token& token)
{
    parser_token bare;
    bare.type = token.type;
    bare.value = token.value;
    return bare;
}

/// Evaluates any token sequence, well-formed or not. The operands so far are a stack; each
/// operator takes its operands from the top and leaves its result there.
double walk(const QVector<parser_token>& tree, const QVector<double>& values)
{
    QVector<parser_token> stack;
    for (int next = 0; tree.size() > 1 && next < tree.size(); ++next) {
        parser_token token = withoutTexts(tree.at(next));
        // Without an operator left, the last token is tried as one, and fails.
        const bool isLast = next + 1 == tree.size();
        if (token.type != parser_token::Operator && !isLast) {
            stack.append(token);
            continue;
        }
        const int operands = stack.size();
        if (token.value < OpeningParenthesis || operands < 1) {
            if (operands < 2) {
                return 0.0;
            }
            const parser_token second = stack.takeLast();
            token.operate(stack.takeLast(), second, values);
        } else {
            token.operate(stack.takeLast(), values);
        }
        stack.append(token);
    }
    if (tree.size() == 1) {
        stack = tree;
    }
    const bool hasValue = stack.size() == 1 && stack.constFirst().type != parser_token::Error;
    return hasValue ? stack.constFirst().value : 0.0;
}

/// The bits of a number: they differ for 0.0 and -0.0, and are equal for equal NaNs.
quint64 bitsOf(double number)
{
    quint64 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

/// The value vectors as columns of the slots that differ between them.
ValueBlock gathered(const QVector<QVector<double>>& valueVectors, const QVector<int>& slotsRead)
{
    ValueBlock block;
    block.count = valueVectors.size();
    block.common = valueVectors.constFirst();
    for (const int slot : slotsRead) {
        const double shared = block.common.at(slot);
        const bool isVarying = std::any_of(valueVectors.begin(), valueVectors.end(),
                                           [slot, shared](const QVector<double>& values) {
                                               return bitsOf(values.at(slot)) != bitsOf(shared);
                                           });
        if (isVarying) {
            block.varyingSlots.append(slot);
            for (const QVector<double>& values : valueVectors) {
                block.varying.append(values.at(slot));
            }
        }
    }
    return block;
}

} // namespace

parser::parser()
    : parser(QString())
{
}

parser::parser(QString expressionText)
    : expression(expressionText)
{
    for (const OperatorRow& row : operatorTable) {
        operatorTexts.append(QLatin1String(row.text));
        operatorCodes.append(row.code);
        operatorPriorities.append(row.priority);
        operatorLeftAssociative.append(row.leftAssociative);
    }
}

QStringList parser::extract_variables()
{
    static const QStringList timeAliases{"Time", "TIME", "t", "T", "time"};
    static const QStringList concentrationAliases{
        "C", "c", "Ce", "ce", "CE", "cE", "Cp", "cp", "cP", "CP", "Concentration", "concentration"};
    static const QStringList doseAliases{"DOSE", "dose", "IndepVariable", "Dose"};

    QStringList names = expression.split(' ', Qt::SkipEmptyParts);
    for (const QString& text : qAsConst(operatorTexts)) {
        QStringList pieces;
        for (const QString& name : qAsConst(names)) {
            // Deliberately ignores case, unlike the cutting of the tree's tokens.
            pieces += name.split(text, Qt::SkipEmptyParts, Qt::CaseInsensitive);
        }
        names = pieces;
        // Done early, so that a long expression of few names is cut fast.
        names.removeDuplicates();
    }
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const QString& name) {
                                   bool isNumber = false;
                                   name.toDouble(&isNumber);
                                   return isNumber;
                               }),
                names.end());
    reserveSlot(names, doseAliases);
    reserveSlot(names, concentrationAliases);
    reserveSlot(names, timeAliases);
    names.removeDuplicates();
    variables = names;
    return variables;
}

void parser::generate_tree()
{
    extract_variables();
    QVector<parser_token> sequence = tokens();
    resolve(sequence);
    tree = postfixOrder(sequence);
    treeExpression = expression;
    programTree = tree;
    program = Program(tree);
}

bool parser::treeIsCurrent() const
{
    return !tree.isEmpty() && treeExpression == expression;
}

/// Cuts the expression at every operator text.
QVector<parser_token> parser::tokens() const
{
    parser_token whole;
    whole.text = expression;
    // The first cut also classifies the text where there is nothing to cut, and leaves no "$".
    QVector<parser_token> sequence =
        whole.split(operatorTexts.first(), parser_token::Operator, operatorCodes.first());
    for (int row = 1; row < operatorTexts.size(); ++row) {
        const QString& text = operatorTexts.at(row);
        if (!expression.contains(text)) {
            continue;
        }
        QVector<parser_token> cut;
        cut.reserve(sequence.size());
        for (parser_token& token : sequence) {
            // The parenthesis of a function belongs to it.
            if (token.type != parser_token::Operator && token.text.contains(text)) {
                cut += token.split(text, parser_token::Operator, operatorCodes.at(row));
            } else {
                cut.append(std::move(token));
            }
        }
        sequence.swap(cut);
    }
    return sequence;
}

/// Turns names into variables and gives operators their place in the order of precedence.
void parser::resolve(QVector<parser_token>& sequence) const
{
    QHash<QString, int> indices;
    for (int index = variables.size() - 1; index >= 0; --index) {
        indices.insert(variables.at(index), index);
    }
    for (parser_token& token : sequence) {
        const auto name = indices.constFind(token.text);
        if (token.type == parser_token::Unresolved && name != indices.constEnd()) {
            token.type = parser_token::Variable;
            token.value = *name;
            token.label = QString(QChar(*name % 256));
        } else if (token.type == parser_token::Operator) {
            const int row = operatorCodes.indexOf(token.value);
            token.leftAssociative = operatorLeftAssociative.at(row);
            token.priority = operatorPriorities.at(row);
            token.label = operatorTexts.at(row);
        }
    }
}

/// True if the program may replace the walk over the tree: it was compiled from the very data
/// that tree shares (a change would have detached them), and the value vector has every slot,
/// so the walk would have nothing to report.
bool parser::programFits(int slotCount) const
{
    return program.isValid() && tree.constData() == programTree.constData()
           && slotCount > program.highestSlot();
}

int parser::operationCount() const
{
    return qMax(1, tree.size()) * (programFits(variables.size()) ? 1 : walkSlowness);
}

double parser::evaluate_tree(QVector<double> values)
{
    if (tree.isEmpty()) {
        qDebug("the parser tree does not exist");
        return 0.0;
    }
    if (programFits(values.size())) {
        return program.evaluate(values.constData());
    }
    return walk(tree, values);
}

void parser::evaluateBlock(const ValueBlock& block, double* results)
{
    if (programFits(block.common.size())) {
        BlockEvaluator(program, block.varyingSlots).evaluate(block, results);
        return;
    }
    QVector<double> values = block.common;
    for (int individual = 0; individual < block.count; ++individual) {
        for (int i = 0; i < block.varyingSlots.size(); ++i) {
            values[block.varyingSlots.at(i)] = block.varying.at(i * block.count + individual);
        }
        results[individual] = evaluate_tree(values);
    }
}

void parser::evaluateBlock(const ValueBlock& block, int slot, const QVector<double>& slotValues,
                           double* results)
{
    if (programFits(block.common.size())) {
        BlockEvaluator(program, block.varyingSlots, slot).evaluate(block, slotValues, results);
        return;
    }
    ValueBlock atValue = block;
    QVector<double> ofValue(block.count);
    for (int i = 0; i < slotValues.size(); ++i) {
        atValue.common[slot] = slotValues.at(i);
        evaluateBlock(atValue, ofValue.data());
        for (int individual = 0; individual < block.count; ++individual) {
            results[qptrdiff(individual) * slotValues.size() + i] = ofValue.at(individual);
        }
    }
}

std::optional<BlockEvaluator> parser::blockEvaluator(int slotCount,
                                                     const QVector<int>& varyingSlots) const
{
    return programFits(slotCount) ? std::make_optional<BlockEvaluator>(program, varyingSlots)
                                  : std::nullopt;
}

QVector<double> parser::evaluateAll(const QVector<QVector<double>>& valueVectors)
{
    QVector<double> results(valueVectors.size());
    const bool allFit =
        std::all_of(valueVectors.begin(), valueVectors.end(),
                    [this](const QVector<double>& values) { return programFits(values.size()); });
    if (allFit && !valueVectors.isEmpty()) {
        evaluateBlock(gathered(valueVectors, program.slotsRead()), results.data());
    } else {
        std::transform(valueVectors.begin(), valueVectors.end(), results.begin(),
                       [this](const QVector<double>& values) { return evaluate_tree(values); });
    }
    return results;
}
