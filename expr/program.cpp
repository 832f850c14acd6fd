// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "expr/program.h"

#include "expr/operators.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cstring>
#include <map>
#include <tuple>
#include <vector>

namespace {

/// Individuals evaluated in one pass: their columns stay in the first-level cache.
constexpr int usualChunkSize = 128;
/// Bound on the numbers in all columns together; an expression that needs more columns
/// gets shorter ones.
constexpr int maximalColumnNumbers = 1 << 20;
/// Value vectors never have more slots; a higher one marks a damaged token.
constexpr double maximalSlot = 1e8;

bool isBinary(int code)
{
    return code < OpeningParenthesis;
}

/// A one-operand operator takes the left operand.
double applyOperator(int code, double left, double right)
{
    if (isBinary(code)) {
        return visitBinaryOperator(code, [left, right](auto apply) { return apply(left, right); });
    }
    return visitUnaryOperator(code, [left](auto apply) { return apply(left); });
}

} // namespace

/// Turns the tokens into instructions, as the token walk would execute them.
class Program::Compiler
{
public:
    explicit Compiler(Program& target)
        : program(target)
    {
    }

    void compile(const QVector<parser_token>& tree)
    {
        if (tree.size() < 2) {
            return;
        }
        for (const parser_token& token : tree) {
            if (!add(token)) {
                return;
            }
        }
        if (stack.size() == 1) {
            finish();
        }
    }

private:
    /// A value before the numbers of slots and constants are known.
    struct Reference
    {
        enum Source { Slot, Constant, Result } source;
        int index;
        bool operator<(const Reference& other) const
        {
            return std::tie(source, index) < std::tie(other.source, other.index);
        }
    };
    using Operation = std::tuple<int, Reference, Reference>;

    bool add(const parser_token& token)
    {
        switch (token.type) {
        case parser_token::Number:
        case parser_token::Unresolved:
            push(constant(token.value));
            return true;
        case parser_token::Variable:
            if (!(token.value > -1.0 && token.value < maximalSlot)) {
                return false;
            }
            push(slot(static_cast<int>(token.value)));
            return true;
        case parser_token::Operator:
            return addOperator(token.value);
        default:
            return false;
        }
    }

    bool addOperator(double value)
    {
        const int code = operatorCode(value);
        const bool binary = code >= PowerOperator && code <= MinusOperator;
        const bool unary = code >= OpeningParenthesis && code != ClosingParenthesis;
        if (code != value || !(binary || unary) || stack.size() < (binary ? 2U : 1U)) {
            return false;
        }
        if (code == OpeningParenthesis) {
            return true;
        }
        const Reference right = pop();
        if (binary) {
            const Reference left = pop();
            push(instruction({code, left, right}));
        } else {
            push(instruction({code, right, right}));
        }
        return true;
    }

    void push(Reference reference) { stack.push_back(reference); }

    Reference pop()
    {
        const Reference top = stack.back();
        stack.pop_back();
        return top;
    }

    Reference slot(int number)
    {
        const auto [entry, isNew] = slotIndices.try_emplace(number, program.variableSlots.size());
        if (isNew) {
            program.variableSlots.append(number);
            program.highest = qMax(program.highest, number);
        }
        return {Reference::Slot, entry->second};
    }

    Reference constant(double number)
    {
        // By bits: 0.0 and -0.0 are different constants, NaN is one.
        quint64 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        const auto [entry, isNew] = constantIndices.try_emplace(bits, program.constants.size());
        if (isNew) {
            program.constants.append(number);
        }
        return {Reference::Constant, entry->second};
    }

    Reference instruction(const Operation& operation)
    {
        const auto [entry, isNew] = resultIndices.try_emplace(operation, int(operations.size()));
        if (isNew) {
            operations.push_back(operation);
        }
        return {Reference::Result, entry->second};
    }

    int valueNumber(Reference reference) const
    {
        switch (reference.source) {
        case Reference::Slot:
            return reference.index;
        case Reference::Constant:
            return program.variableSlots.size() + reference.index;
        default:
            return program.firstInstructionValue() + reference.index;
        }
    }

    void finish()
    {
        program.instructions.reserve(int(operations.size()));
        for (const auto& [code, left, right] : operations) {
            program.instructions.append({code, valueNumber(left), valueNumber(right)});
        }
        program.resultValue = valueNumber(stack.front());
    }

    Program& program;
    std::vector<Reference> stack;
    std::vector<Operation> operations;
    std::map<int, int> slotIndices;
    std::map<quint64, int> constantIndices;
    std::map<Operation, int> resultIndices;
};

Program::Program(const QVector<parser_token>& tree)
{
    Compiler(*this).compile(tree);
}

double Program::evaluate(const double* values) const
{
    QVarLengthArray<double, 256> numbers(firstInstructionValue() + instructions.size());
    for (int i = 0; i < variableSlots.size(); ++i) {
        numbers[i] = values[variableSlots.at(i)];
    }
    run(numbers.data());
    return numbers.at(resultValue);
}

/// Fills in constants and results after the slots' values.
void Program::run(double* values) const
{
    std::copy(constants.begin(), constants.end(), values + variableSlots.size());
    double* result = values + firstInstructionValue();
    for (const Instruction& instruction : instructions) {
        *result++ =
            applyOperator(instruction.code, values[instruction.left], values[instruction.right]);
    }
}

BlockEvaluator::BlockEvaluator(const Program& compiledProgram, const QVector<int>& varyingSlots,
                               int sharedSlot)
    : program(compiledProgram)
    , sharedValue(program.variableSlots.indexOf(sharedSlot))
    , scalars(program.firstInstructionValue() + program.instructions.size())
{
    std::copy(program.constants.begin(), program.constants.end(),
              scalars.begin() + program.variableSlots.size());
    planColumns(varyingSlots);
    const int ownColumns = columnCount - inputs.size();
    chunkSize = qBound(1, maximalColumnNumbers / qMax(1, ownColumns), usualChunkSize);
    columns.resize(ownColumns * chunkSize);
}

/// For each value, true if it depends on the shared slot.
QVector<bool> BlockEvaluator::dependOnShared() const
{
    QVector<bool> onShared(scalars.size(), false);
    if (sharedValue >= 0) {
        onShared[sharedValue] = true;
        for (int i = 0; i < program.instructions.size(); ++i) {
            const Program::Instruction& instruction = program.instructions.at(i);
            onShared[program.firstInstructionValue() + i] =
                onShared.at(instruction.left) || onShared.at(instruction.right);
        }
    }
    return onShared;
}

/// For each value, the last instruction that reads it. The number of instructions if the value is
/// needed after the last one or, computed once, for several values of the shared slot.
QVector<int> BlockEvaluator::lastUses(const QVector<bool>& onShared) const
{
    QVector<int> lastUse(scalars.size(), -1);
    const int end = program.instructions.size();
    lastUse[program.resultValue] = end;
    for (int i = end - 1; i >= 0; --i) {
        const bool repeats = onShared.at(program.firstInstructionValue() + i);
        for (const int value :
             {program.instructions.at(i).left, program.instructions.at(i).right}) {
            const bool stays = repeats && !onShared.at(value);
            lastUse[value] = qMax(lastUse.at(value), stays ? end : i);
        }
    }
    return lastUse;
}

/// Sorts the instructions into those that are computed once and those that are computed
/// for every individual, and gives the latter columns, each free again after its last use.
void BlockEvaluator::planColumns(const QVector<int>& varyingSlots)
{
    const int firstResult = program.firstInstructionValue();
    const QVector<bool> onShared = dependOnShared();
    QVector<int> lastUse = lastUses(onShared);
    QVector<int> references(scalars.size());
    for (int value = 0; value < references.size(); ++value) {
        references[value] = ~value;
    }
    for (int i = 0; i < varyingSlots.size(); ++i) {
        const int value = program.variableSlots.indexOf(varyingSlots.at(i));
        if (value >= 0) {
            references[value] = columnCount++;
            inputs.append(i);
        }
    }
    QVector<int> freeColumns;
    const auto plan = [&](int i, Stage& stage) {
        const Program::Instruction& instruction = program.instructions.at(i);
        const int left = references.at(instruction.left);
        const int right = references.at(instruction.right);
        if (left < 0 && right < 0) {
            stage.scalar.append(i);
            return;
        }
        // Operands go before the result is placed: it may overwrite them, as each
        // individual's operands are read before its result is written.
        for (const int value : {instruction.left, instruction.right}) {
            if (value >= firstResult && references.at(value) >= 0 && lastUse.at(value) == i) {
                freeColumns.append(references.at(value));
                lastUse[value] = -1;
            }
        }
        const int column = freeColumns.isEmpty() ? columnCount++ : freeColumns.takeLast();
        references[firstResult + i] = column;
        stage.varying.append({instruction.code, left, right, column});
    };
    for (const bool shared : {false, true}) {
        for (int i = 0; i < program.instructions.size(); ++i) {
            if (onShared.at(firstResult + i) == shared) {
                plan(i, shared ? perShared : once);
            }
        }
    }
    resultReference = references.at(program.resultValue);
}

void BlockEvaluator::evaluate(const ValueBlock& block, double* results)
{
    readScalars(block);
    runScalars(once);
    runScalars(perShared);
    if (resultReference < 0) {
        std::fill_n(results, block.count, scalars.at(~resultReference));
        return;
    }
    const bool isShared = !perShared.varying.isEmpty();
    for (int first = 0; first < block.count; first += chunkSize) {
        const int count = qMin(chunkSize, block.count - first);
        runChunk(once, block, first, count, isShared ? nullptr : results + first);
        runChunk(perShared, block, first, count, results + first);
        if (once.varying.isEmpty() && !isShared) {
            std::copy_n(operand(resultReference, block, first), count, results + first);
        }
    }
}

void BlockEvaluator::evaluate(const ValueBlock& block, const QVector<double>& sharedValues,
                              double* results)
{
    readScalars(block);
    runScalars(once);
    const int valueCount = sharedValues.size();
    for (int first = 0; first < block.count; first += chunkSize) {
        const int count = qMin(chunkSize, block.count - first);
        runChunk(once, block, first, count, nullptr);
        for (int i = 0; i < valueCount; ++i) {
            if (sharedValue >= 0) {
                scalars[sharedValue] = sharedValues.at(i);
            }
            runScalars(perShared);
            runChunk(perShared, block, first, count, nullptr);
            const double* value = operand(resultReference, block, first);
            double* result = results + qptrdiff(first) * valueCount + i;
            for (int individual = 0; individual < count; ++individual) {
                *result = *value;
                result += valueCount;
                value += resultReference < 0 ? 0 : 1;
            }
        }
    }
}

void BlockEvaluator::readScalars(const ValueBlock& block)
{
    const double* common = block.common.constData();
    for (int i = 0; i < program.variableSlots.size(); ++i) {
        scalars[i] = common[program.variableSlots.at(i)];
    }
}

void BlockEvaluator::runScalars(const Stage& stage)
{
    double* values = scalars.data();
    for (const int index : stage.scalar) {
        const Program::Instruction& instruction = program.instructions.at(index);
        values[program.firstInstructionValue() + index] =
            applyOperator(instruction.code, values[instruction.left], values[instruction.right]);
    }
}

/// Computes the stage's columns for some individuals. The last one goes to results, if given.
void BlockEvaluator::runChunk(const Stage& stage, const ValueBlock& block, int first, int count,
                              double* results)
{
    for (const VaryingInstruction& instruction : stage.varying) {
        const bool isLast = &instruction == &stage.varying.constLast();
        double* result =
            isLast && results != nullptr
                ? results
                : columns.data() + qptrdiff(instruction.column - inputs.size()) * chunkSize;
        const double* left = operand(instruction.left, block, first);
        const double* right = operand(instruction.right, block, first);
        if (!isBinary(instruction.code)) {
            visitUnaryOperator(instruction.code, [=](auto apply) {
                for (int i = 0; i < count; ++i) {
                    result[i] = apply(left[i]);
                }
            });
            continue;
        }
        visitBinaryOperator(instruction.code, [=](auto apply) {
            if (instruction.left < 0) {
                for (int i = 0; i < count; ++i) {
                    result[i] = apply(*left, right[i]);
                }
            } else if (instruction.right < 0) {
                for (int i = 0; i < count; ++i) {
                    result[i] = apply(left[i], *right);
                }
            } else {
                for (int i = 0; i < count; ++i) {
                    result[i] = apply(left[i], right[i]);
                }
            }
        });
    }
}

const double* BlockEvaluator::operand(int reference, const ValueBlock& block, int first) const
{
    if (reference < 0) {
        return scalars.constData() + ~reference;
    }
    if (reference < inputs.size()) {
        return block.varying.constData() + qptrdiff(inputs.at(reference)) * block.count + first;
    }
    return columns.constData() + qptrdiff(reference - inputs.size()) * chunkSize;
}
