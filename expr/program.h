// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_EXPR_PROGRAM_H
#define VELMORA_EXPR_PROGRAM_H

#include "expr/parser_token.h"

#include <QVector>

/// The value vectors of many individuals that differ in a few slots only.
struct ValueBlock
{
    QVector<double> common; ///< [slot]: one value vector; its numbers in varying slots are ignored
    QVector<int> varyingSlots; ///< slots that differ between the individuals, each once
    QVector<double> varying;   ///< [varying slot][individual], column after column
    int count = 0;             ///< number of individuals
};

/// A postfix token sequence compiled for evaluation without strings and allocations.
/// Values are numbered: the slots that the expression reads, its constants, then the
/// result of each instruction. Equal subexpressions are computed once. Every operation
/// equals that of the token walk on the same operands, so results agree in every bit.
class Program
{
public:
    Program() = default;

    /// Compiles a well-formed sequence: at least two tokens, operands for every operator,
    /// one value at the end. Any other gives an invalid program.
    explicit Program(const QVector<parser_token>& tree);

    bool isValid() const { return resultValue >= 0; }

    /// The slots read from a value vector, each once.
    const QVector<int>& slotsRead() const { return variableSlots; }

    /// The highest slot read from a value vector, -1 if none.
    int highestSlot() const { return highest; }

    /// The value of the expression; values must hold highestSlot() + 1 numbers.
    double evaluate(const double* values) const;

private:
    friend class BlockEvaluator;

    struct Instruction
    {
        int code;
        int left;  ///< value number of the left or only operand
        int right; ///< of the right operand; with one operand the same as left
    };

    int firstInstructionValue() const { return variableSlots.size() + constants.size(); }
    void run(double* values) const;

    QVector<int> variableSlots;
    QVector<double> constants;
    QVector<Instruction> instructions;
    int resultValue = -1;
    int highest = -1;

    class Compiler;
};

/// Evaluates a program over the individuals of value blocks with the same varying slots, at one or
/// several values of a slot that all individuals share, such as the dose. It computes what does
/// not vary once per block, and what does not depend on the shared slot once for all its values.
/// It keeps scratch memory, so each thread needs its own.
class BlockEvaluator
{
public:
    /// The program must be valid. The shared slot, if any, must not vary.
    BlockEvaluator(const Program& compiledProgram, const QVector<int>& varyingSlots,
                   int sharedSlot = -1);

    /// Writes one result per individual of the block.
    void evaluate(const ValueBlock& block, double* results);

    /// Writes the results at all values of the shared slot, [individual][value].
    void evaluate(const ValueBlock& block, const QVector<double>& sharedValues, double* results);

private:
    struct VaryingInstruction
    {
        int code;
        int left;   ///< column number, or ~value number of a scalar
        int right;  ///< the same
        int column; ///< of the result
    };

    /// Instructions in the order of execution.
    struct Stage
    {
        QVector<int> scalar; ///< indices into program.instructions
        QVector<VaryingInstruction> varying;
    };

    QVector<bool> dependOnShared() const;
    QVector<int> lastUses(const QVector<bool>& onShared) const;
    void planColumns(const QVector<int>& varyingSlots);
    void readScalars(const ValueBlock& block);
    void runScalars(const Stage& stage);
    void runChunk(const Stage& stage, const ValueBlock& block, int first, int count,
                  double* results);
    const double* operand(int reference, const ValueBlock& block, int first) const;

    Program program;
    int sharedValue;         ///< value number of the shared slot, -1 if it is not read
    Stage once;              ///< what does not depend on the shared slot
    Stage perShared;         ///< what depends on the shared slot
    QVector<int> inputs;     ///< indices into the block's varying slots that are read
    int columnCount = 0;     ///< columns 0 .. inputs.size()-1 are the block's own
    int resultReference = 0; ///< column number, or ~value number of a scalar
    int chunkSize = 0;       ///< individuals per pass
    QVector<double> scalars; ///< [value number]
    QVector<double> columns; ///< [column after the inputs][individual of the chunk]
};

#endif
