// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_FUZZ_ORDINARYARITHMETIC_H
#define VELMORA_FUZZ_ORDINARYARITHMETIC_H

#include "expr/diagnosis.h"
#include "expr/parser.h"
#include "tests/support/compare.h"
#include "tests/support/logcapture.h"

#include <QHash>
#include <QRegularExpression>

#include <optional>

/// Some value for a name.
inline double valueOf(const QString& name)
{
    return name.isEmpty() ? 0 : (name.at(0).unicode() * 7 + name.size() * 31) % 23 / 4.0 - 1.5;
}

/// Ordinary arithmetic, with signs, blanks and all functions; nothing for other text.
class Ordinary
{
public:
    std::optional<double> value(const QString& expression)
    {
        text = expression;
        const double result = binary("[-+]");
        return ok && match("\\z") ? std::optional<double>(result) : std::nullopt;
    }

private:
    /// True if the pattern comes next; then moves past it.
    bool match(const QString& pattern)
    {
        static QHash<QString, QRegularExpression> known;
        if (!known.contains(pattern)) {
            known.insert(pattern, QRegularExpression("\\G\\s*(" + pattern + ')'));
        }
        const QRegularExpressionMatch found = known.value(pattern).match(text, at);
        at = found.hasMatch() ? found.capturedEnd() : at;
        last = found.captured(1);
        return found.hasMatch();
    }

    double binary(const QString& operators)
    {
        const auto next = [&] { return operators == "[-+]" ? binary("[*/]") : power(); };
        double left = next();
        while (match(operators)) {
            const QChar code = last.at(0);
            const double right = next();
            left = code == '+'   ? left + right
                   : code == '-' ? left - right
                   : code == '*' ? left * right
                                 : left / right;
        }
        return left;
    }

    double power()
    {
        const double base = match("\\+") ? power() : match("-") ? -power() : operand();
        return match("\\^") ? std::pow(base, power()) : base;
    }

    double operand()
    {
        static const QHash<QString, double (*)(double)> functions{
            {"", [](double x) { return x; }},
            {"exp", std::exp},
            {"log", std::log},
            {"Sin", std::sin},
            {"Cos", std::cos},
            {"Tan", std::tan},
            {"Sign", [](double x) { return x < 0 ? -1.0 : 1.0; }},
            {"log10", [](double x) { return std::log(x) / 2.302585092994046; }},
            {"Abs", [](double x) { return x < 0 ? -x : x; }},
            {"Sqrt", [](double x) { return std::pow(x, 0.5); }}};
        if (match("(\\d+\\.?\\d*|\\.\\d+)([eE][-+]?\\d+)?")) {
            return last.toDouble();
        }
        const QString name = match("[A-Za-z_][\\w.]*") ? last : "";
        if (!match("\\(")) {
            ok = ok && !name.isEmpty();
            return valueOf(name);
        }
        const double x = binary("[-+]");
        ok = match("\\)") && ok && functions.contains(name);
        return ok ? functions.value(name)(x) : 0.0;
    }

    QString text;
    QString last;
    int at = 0;
    bool ok = true;
};

/// True if a text without findings is ordinary arithmetic, and one with findings gives 0 if
/// they say so.
inline bool isTrue(const QString& text, const QVector<Diagnosis>& diagnoses)
{
    parser compiled(text);
    compiled.generate_tree();
    QVector<double> values;
    std::transform(compiled.variables.begin(), compiled.variables.end(), std::back_inserter(values),
                   valueOf);
    LogCapture log;
    const double value = compiled.evaluate_tree(values);
    if (!diagnoses.isEmpty()) {
        return value == 0 || !diagnoses.first().message.contains("the result is 0");
    }
    const std::optional<double> expected = Ordinary().value(text);
    return log.messages().isEmpty() && expected && almostEqual(value, *expected, 0);
}

#endif
