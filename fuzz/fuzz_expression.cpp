// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// An expression, in the first line of the input, and bytes that make its values.

#include "fuzz/literalvalue.h"
#include "fuzz/ordinaryarithmetic.h"
#include "fuzz/target.h"
#include "tests/support/logcapture.h"

#include <limits>

namespace {

/// Longer ones are compiled and evaluated, but not compared: shortening takes quadratic time.
constexpr int longestCompared = 600;

/// Takes the bytes after the expression, again and again.
class Choices
{
public:
    explicit Choices(const QByteArray& source)
        : bytes(source.isEmpty() ? QByteArray(1, '\x5a') : source)
    {
    }

    int pick(int count) { return byte() % count; }

    double number()
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        static const double special[] = {0.0,   -0.0,   infinity, -infinity, qQNaN(), 1.0,
                                         1e308, -1e308, 5e-324,   1e15,      0.1,     -1.0};
        const int choice = byte();
        return choice < int(std::size(special)) ? special[choice] : (choice - 128) / 8.0;
    }

private:
    int byte() { return uchar(bytes.at(next++ % bytes.size())); }

    QByteArray bytes;
    int next = 0;
};

QVector<double> numbers(Choices& choices, int count)
{
    QVector<double> values(qMax(0, count));
    std::generate(values.begin(), values.end(), [&choices] { return choices.number(); });
    return values;
}

void checkNames(const parser& expression)
{
    const QStringList& names = expression.variables;
    require(names.size() >= FirstFreeSlot, "three slots are reserved");
    require(QStringList(names).removeDuplicates() == 0, "every name has one slot");
    require(parser(expression.expression).extract_variables() == names,
            "extracting and compiling list the same names");
}

void checkDiagnoses(const QString& expression)
{
    const QVector<Diagnosis> diagnoses = diagnose(expression);
    int last = 0;
    for (const Diagnosis& diagnosis : diagnoses) {
        require(diagnosis.position >= last && diagnosis.length >= 0
                    && diagnosis.position + diagnosis.length <= expression.size(),
                "findings are places of the text in their order");
        last = diagnosis.position;
    }
    require(isTrue(expression, diagnoses), "what has no findings is ordinary arithmetic");
}

/// Value vectors one by one: as long as they should be, longer and shorter.
void checkSingleValues(parser& fast, Choices& choices)
{
    parser walking = fast;
    walking.tree.detach(); // no longer the tree that was compiled
    const int slotCount = fast.variables.size();
    QVector<QVector<double>> valueVectors;
    for (const int size : {slotCount, slotCount, slotCount + 3, choices.pick(slotCount + 1), 0}) {
        valueVectors.append(numbers(choices, size));
    }
    QVector<double> expected;
    for (const QVector<double>& values : qAsConst(valueVectors)) {
        QStringList messages[3];
        double results[3];
        const auto run = [&messages, &results](int way, auto evaluate) {
            const LogCapture log;
            results[way] = evaluate();
            messages[way] = log.messages();
        };
        run(0, [&] { return literalValue(fast.tree, values); });
        run(1, [&] { return fast.evaluate_tree(values); });
        run(2, [&] { return walking.evaluate_tree(values); });
        require(sameBits(results[1], results[0]) && sameBits(results[2], results[0]),
                "evaluate_tree gives what the tree says");
        require(messages[1] == messages[0] && messages[2] == messages[0],
                "evaluate_tree reports what the tokens report");
        expected.append(results[0]);
    }
    const LogCapture quiet;
    require(sameBits(fast.evaluateAll(valueVectors), expected),
            "evaluateAll agrees for vectors of any size");
    require(sameBits(fast.evaluateAll(valueVectors.mid(0, 3)), expected.mid(0, 3)),
            "evaluateAll agrees for complete vectors");
}

/// Individuals that differ in some slots, at some doses; more than are evaluated in one pass.
void checkBlocks(parser& fast, Choices& choices)
{
    const LogCapture quiet;
    for (int count : {1 + choices.pick(5), 0, 129 + choices.pick(3)}) {
        const int shortBy = choices.pick(16) == 0 ? 1 : 0;
        ValueBlock block;
        block.common = numbers(choices, fast.variables.size() - shortBy);
        block.count = count;
        for (int slot = 0; slot < block.common.size(); ++slot) {
            if (choices.pick(2) == 0 && slot != DoseSlot) {
                block.varyingSlots.append(slot);
                block.varying += numbers(choices, count);
            }
        }
        const QVector<double> doses = block.common.size() > DoseSlot
                                          ? numbers(choices, 1 + choices.pick(3))
                                          : QVector<double>();
        QVector<double> expected;
        QVector<double> expectedAtDoses;
        const auto append = [&fast](QVector<double>& to, int individual,
                                    const QVector<double>& values) {
            to.append(individual < 8 || individual > 126 ? literalValue(fast.tree, values)
                                                         : fast.evaluate_tree(values));
        };
        for (int individual = 0; individual < count; ++individual) {
            QVector<double> values = block.common;
            for (int i = 0; i < block.varyingSlots.size(); ++i) {
                values[block.varyingSlots.at(i)] = block.varying.at(i * count + individual);
            }
            append(expected, individual, values);
            for (const double dose : doses) {
                values[DoseSlot] = dose;
                append(expectedAtDoses, individual, values);
            }
        }
        QVector<double> results(count);
        fast.evaluateBlock(block, results.data());
        require(sameBits(results, expected), "evaluateBlock agrees for every individual");
        results.resize(expectedAtDoses.size());
        fast.evaluateBlock(block, DoseSlot, doses, results.data());
        require(sameBits(results, expectedAtDoses), "evaluateBlock agrees at every dose");
    }
}

} // namespace

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    const int end = input.contains('\n') ? input.indexOf('\n') : input.size();
    Choices choices(input.mid(end + 1));
    parser expression(QString::fromUtf8(input.left(end)));
    expression.generate_tree();
    checkNames(expression);
    if (expression.tree.isEmpty() || end > longestCompared) {
        diagnose(expression.expression);
        const LogCapture quiet;
        expression.evaluate_tree(numbers(choices, expression.variables.size()));
        return 0;
    }
    checkDiagnoses(expression.expression);
    checkSingleValues(expression, choices);
    checkBlocks(expression, choices);
    return 0;
}
