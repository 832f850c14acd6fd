// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/comparison.h"
#include "bench/inputs.h"
#include "bench/subjects.h"
#include "expr/parser.h"

#include <QRegularExpression>
#include <muParser.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

constexpr int vectorCount = 10000;
/// Individuals of one dose on one of two processors, as simulations evaluate them.
constexpr int smallBlockCount = 50;

using Formula = double (*)(const double*);
using PlainLoop = void (*)(const double* vectors, int slotCount, double* results);
using PlainFunction = double (*)(QVector<double> values);

/// The formula inlined into the loop, so that evaluations overlap.
template <Formula formula>
void evaluateInlined(const double* vectors, int slotCount, double* results)
{
    for (int i = 0; i < vectorCount; ++i) {
        results[i] = formula(vectors);
        vectors += slotCount;
    }
}

/// The formula as a function that takes its vector by value, as evaluate_tree does.
template <Formula formula>
double evaluateByValue(QVector<double> values)
{
    return formula(values.constData());
}

// The expressions by hand. v[2] is the dose; from v[3] on the other names follow in their
// order of appearance.

double emax(const double* v)
{
    const double dose = v[2];
    return v[3] + v[4] * dose / (v[5] + dose);
}

double sigmoidEmax(const double* v)
{
    const double effect = std::pow(v[2], v[5]);
    return v[3] + v[4] * effect / (std::pow(v[6], v[5]) + effect);
}

double etaEmax(const double* v)
{
    const double dose = v[2];
    return v[3] + v[4] + v[5] * std::exp(v[6]) * dose / (v[7] * std::exp(v[8]) + dose);
}

double decay(const double* v)
{
    return v[3] * std::exp(-v[4] * v[2]);
}

double defaultWeight(const double* v)
{
    return -3.0 - v[3] / 2.0;
}

double thirtyOperations(const double* v)
{
    const double dose = v[2];
    const double effect = std::pow(dose, v[9]);
    return v[3] * (1 + v[4] * (v[5] - 70) / 70) * std::exp(-v[6] * dose / (v[7] + dose))
           + v[8] * effect / (std::pow(v[10], v[9]) + effect) * (1 - std::exp(-v[11] * v[12]))
           - v[13] * std::log(1 + v[14] / v[15]) + v[16] * v[17];
}

struct ExpressionCase
{
    const char* text;
    PlainLoop inlined;
    PlainFunction byValue;
};

template <Formula formula>
constexpr ExpressionCase byHand(const char* text)
{
    return {text, evaluateInlined<formula>, evaluateByValue<formula>};
}

/// In an expression with ETAs only these vary between the value vectors, as between simulated
/// individuals. In all others every name varies, as between bootstrap samples and doses.
const ExpressionCase cases[] = {
    byHand<emax>("THETA1+THETA2*DOSE/(THETA3+DOSE)"),
    byHand<sigmoidEmax>("THETA1+THETA2*DOSE^THETA4/(THETA3^THETA4+DOSE^THETA4)"),
    byHand<etaEmax>("THETA1+ETA1+THETA2*exp(ETA2)*DOSE/(THETA3*exp(ETA3)+DOSE)"),
    byHand<decay>("THETA1*exp((0-THETA2)*DOSE)"),
    byHand<defaultWeight>("(0-3-ofv/2)"),
    byHand<thirtyOperations>(
        "THETA1*(1+THETA2*(COL5-70)/70)*exp((0-THETA3)*DOSE/(THETA4+DOSE))"
        "+THETA5*DOSE^THETA6/(THETA7^THETA6+DOSE^THETA6)*(1-exp((0-THETA8)*COL6))"
        "-THETA9*log(1+COL7/THETA10)+COL8*COL9"),
};

double inputFor(const QString& name, InputNumbers& numbers)
{
    if (name.startsWith("ETA")) {
        return numbers.between(-0.5, 0.5);
    }
    if (name.startsWith("THETA")) {
        return numbers.between(0.2, 2.0);
    }
    return numbers.between(1.0, 100.0);
}

/// The same value vectors in the form that each way needs.
class ExpressionInputs
{
public:
    explicit ExpressionInputs(const ExpressionCase& expressionCase);

    // All results, in each of the ways.
    const QVector<double>& inlined();
    const QVector<double>& blockWise();
    const QVector<double>& smallBlocks();
    const QVector<double>& byValue();
    const QVector<double>& vectorByVector();
    const QVector<double>& muParser();

    bool agree();

private:
    void drawValues();
    ValueBlock block(int first, int count) const;

    PlainLoop inlinedLoop;
    PlainFunction function;
    parser expression;
    int slotCount = 0;
    QVector<int> varyingSlots;
    QVector<QVector<double>> vectors; ///< [vector][slot]
    std::vector<double> flat;         ///< the same as one array
    ValueBlock wholeBlock;
    QVector<ValueBlock> blocks;
    mu::Parser otherParser;
    std::vector<double> bound; ///< [slot], read by otherParser
    QVector<double> results;
};

ExpressionInputs::ExpressionInputs(const ExpressionCase& expressionCase)
    : inlinedLoop(expressionCase.inlined)
    , function(expressionCase.byValue)
    , expression(QString(expressionCase.text))
    , results(vectorCount)
{
    expression.generate_tree();
    slotCount = expression.variables.size();
    drawValues();
    wholeBlock = block(0, vectorCount);
    for (int first = 0; first < vectorCount; first += smallBlockCount) {
        blocks.append(block(first, smallBlockCount));
    }
    bound.resize(std::size_t(slotCount));
    for (int slot = 0; slot < slotCount; ++slot) {
        otherParser.DefineVar(expression.variables.at(slot).toStdString(),
                              &bound[std::size_t(slot)]);
    }
    otherParser.SetExpr(expressionCase.text);
}

void ExpressionInputs::drawValues()
{
    InputNumbers numbers;
    const QStringList etas = expression.variables.filter(QRegularExpression("^ETA"));
    QVector<double> values(slotCount, std::numeric_limits<double>::quiet_NaN());
    for (int slot = DoseSlot; slot < slotCount; ++slot) {
        const QString& name = expression.variables.at(slot);
        values[slot] = inputFor(name, numbers);
        const bool isRead = expression.expression.contains(name);
        if (isRead && (etas.isEmpty() || etas.contains(name))) {
            varyingSlots.append(slot);
        }
    }
    for (int i = 0; i < vectorCount; ++i) {
        for (const int slot : qAsConst(varyingSlots)) {
            values[slot] = inputFor(expression.variables.at(slot), numbers);
        }
        vectors.append(values);
        flat.insert(flat.end(), values.constBegin(), values.constEnd());
    }
}

ValueBlock ExpressionInputs::block(int first, int count) const
{
    ValueBlock result;
    result.common = vectors.at(first);
    result.varyingSlots = varyingSlots;
    result.count = count;
    for (const int slot : varyingSlots) {
        for (int i = first; i < first + count; ++i) {
            result.varying.append(vectors.at(i).at(slot));
        }
    }
    return result;
}

const QVector<double>& ExpressionInputs::inlined()
{
    inlinedLoop(flat.data(), slotCount, results.data());
    return results;
}

const QVector<double>& ExpressionInputs::blockWise()
{
    expression.evaluateBlock(wholeBlock, results.data());
    return results;
}

const QVector<double>& ExpressionInputs::smallBlocks()
{
    double* next = results.data();
    for (const ValueBlock& values : qAsConst(blocks)) {
        expression.evaluateBlock(values, next);
        next += values.count;
    }
    return results;
}

const QVector<double>& ExpressionInputs::byValue()
{
    std::transform(vectors.cbegin(), vectors.cend(), results.begin(), function);
    return results;
}

const QVector<double>& ExpressionInputs::vectorByVector()
{
    std::transform(
        vectors.cbegin(), vectors.cend(), results.begin(),
        [this](const QVector<double>& values) { return expression.evaluate_tree(values); });
    return results;
}

const QVector<double>& ExpressionInputs::muParser()
{
    std::transform(vectors.cbegin(), vectors.cend(), results.begin(),
                   [this](const QVector<double>& values) {
                       std::copy(values.begin(), values.end(), bound.begin());
                       return otherParser.Eval();
                   });
    return results;
}

bool ExpressionInputs::agree()
{
    const QVector<double> expected = inlined();
    return sameBits(blockWise(), expected) && sameBits(smallBlocks(), expected)
           && sameBits(byValue(), expected) && sameBits(vectorByVector(), expected)
           && sameWithin(muParser(), expected, 1e-12);
}

using Way = const QVector<double>& (ExpressionInputs::*)();
using AllInputs = std::vector<std::shared_ptr<ExpressionInputs>>;

/// Compares two ways over all expressions.
Comparison compareWays(const char* name, double bar, const AllInputs& all, Way product,
                       Way baseline)
{
    const auto side = [](const std::shared_ptr<ExpressionInputs>& inputs, Way results) {
        return timed(
            [inputs, results] { benchmark::DoNotOptimize((*inputs.*results)().constData()); });
    };
    Comparison comparison;
    comparison.name = name;
    comparison.bar = bar;
    for (const std::shared_ptr<ExpressionInputs>& inputs : all) {
        comparison.contests.push_back({side(inputs, product), side(inputs, baseline)});
    }
    comparison.agree = [all] {
        return std::all_of(all.begin(), all.end(),
                           [](const auto& inputs) { return inputs->agree(); });
    };
    comparison.unit = benchmark::kMicrosecond;
    return comparison;
}

} // namespace

void registerExpressions(Report& report)
{
    AllInputs all;
    for (const ExpressionCase& expressionCase : cases) {
        all.push_back(std::make_shared<ExpressionInputs>(expressionCase));
    }
    using Inputs = ExpressionInputs;
    registerComparison(report,
                       compareWays("expr_block", 1.5, all, &Inputs::blockWise, &Inputs::inlined));
    registerComparison(
        report, compareWays("expr_single", 2.0, all, &Inputs::vectorByVector, &Inputs::byValue));
    Comparison check =
        compareWays("muParser in expr_block", 4.5, all, &Inputs::muParser, &Inputs::inlined);
    check.kind = Comparison::Kind::LeastCheck;
    registerComparison(report, check);
}
