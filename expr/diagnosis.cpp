// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "expr/diagnosis.h"

#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/spelling.h"

#include <QHash>

#include <algorithm>

namespace {

/// The most findings listed, including the one that says there are more.
constexpr int findingsAtMost = 100;
/// Characters of the expression that a message repeats.
constexpr int charactersAtMost = 40;

bool isSpace(QChar c)
{
    return c.isSpace();
}

QString quoted(const QString& text)
{
    return '"' + (text.size() > charactersAtMost ? text.left(charactersAtMost) + "..." : text)
           + '"';
}

/// True if the value is 0 whatever the operands are, because operands are missing or left over.
/// The tree must not be empty.
bool isAlwaysZero(const QVector<parser_token>& tree)
{
    if (tree.size() < 2) {
        return tree.constFirst().type == parser_token::Unresolved;
    }
    int operands = 0;
    for (const parser_token& token : tree) {
        if (token.type != parser_token::Operator) {
            ++operands;
            continue;
        }
        const bool isBinary = token.value < OpeningParenthesis;
        if (token.value == ClosingParenthesis || operands < (isBinary ? 2 : 1)) {
            return true;
        }
        operands -= isBinary ? 1 : 0;
    }
    return operands != 1;
}

/// Reads an expression from left to right: operands and binary operators take turns. Words are
/// the texts between operators and parentheses.
class Reader
{
public:
    Reader(const QString& expression, const std::function<QString(const QString&)>& fault)
        : text(expression)
        , nameFault(fault)
        , compiled(expression)
    {
        for (const QString& name : qAsConst(compiled.operatorTexts)) {
            if (name.size() > 1) {
                functions.append(name);
            }
        }
    }

    QVector<Diagnosis> read()
    {
        while (at < text.size() && found.size() <= findingsAtMost) {
            const QChar c = text.at(at);
            if (c == '(') {
                readOpening();
            } else if (c == ')') {
                readClosing();
            } else if (isBinaryOperator(c)) {
                readOperator();
            } else {
                readWord();
            }
        }
        if (at == text.size()) {
            readEnd();
        }
        std::stable_sort(found.begin(), found.end(), [](const Diagnosis& a, const Diagnosis& b) {
            return a.position < b.position;
        });
        if (found.size() > findingsAtMost) {
            found.resize(findingsAtMost);
            found.last().message = "there is more from here on: fix what comes before";
        }
        return found;
    }

private:
    void readOpening()
    {
        if (!wantsOperand) {
            addMissingOperator(at);
        }
        open.append(at++);
        wantsOperand = true;
    }

    void readClosing()
    {
        if (wantsOperand) {
            addMissingOperand();
        }
        if (open.isEmpty()) {
            const QString result = outcome();
            add(at, 1,
                "\")\" closes nothing"
                    + (result.isEmpty() ? ", all before it is computed first" : result)
                    + ": remove it");
        } else {
            open.removeLast();
        }
        ++at;
        wantsOperand = false;
    }

    void readOperator()
    {
        const QChar c = text.at(at);
        if (wantsOperand && c == '*' && at > 0 && text.at(at - 1) == '*') {
            add(at - 1, 2, "\"**\" is not an operator" + outcome() + ": write ^ for a power");
        } else if (wantsOperand && (c == '-' || c == '+')) {
            add(at, 1,
                "the sign " + quoted(c) + " has no left operand" + outcome()
                    + (c == '-' ? ": write (0-x)" : ": remove it"));
        } else if (wantsOperand) {
            add(at, 1, quoted(c) + " has no left operand" + outcome() + ": write one or remove it");
        }
        ++at;
        wantsOperand = true;
    }

    void readWord()
    {
        const int start = at;
        at = int(std::find_if(text.begin() + start, text.end(), endsWord) - text.begin());
        const QString word = text.mid(start, at - start);
        if (!wantsOperand && !word.trimmed().isEmpty()) {
            addMissingOperator(start);
        }
        if (at < text.size() && text.at(at) == '(') {
            readCall(start, word);
            open.append(at++);
            wantsOperand = true;
        } else {
            readOperand(start, word);
            wantsOperand = false;
        }
    }

    /// A word before an opening parenthesis.
    void readCall(int start, const QString& word)
    {
        const QString call = word + '(';
        const QString function = functionAtEnd(call);
        if (call == function) {
            return;
        }
        const QString rest = call.left(call.size() - function.size());
        const QString bare = word.trimmed();
        if (bare.isEmpty()) {
            addWhiteSpace(start, word);
        } else if (rest.trimmed().isEmpty()) {
            addWhiteSpace(start, rest);
        } else if (convertsToNumber(word)) {
            addMissingOperator(at);
        } else if (function.isEmpty() || functions.contains(bare + '(')) {
            addNoFunction(start, word);
        } else {
            add(start, call.size(),
                quoted(call) + " is cut into " + quoted(rest) + " and " + quoted(function)
                    + outcome() + ": write an operator between them");
        }
    }

    /// The function at which the call is cut: the whole call or its end; empty if none. "ASin("
    /// is no such function, as "Sin(" cuts it before.
    QString functionAtEnd(const QString& call) const
    {
        const auto end = std::find_if(functions.begin(), functions.end(),
                                      [&call](const QString& name) { return call.endsWith(name); });
        return end == functions.end() ? QString() : *end;
    }

    void addNoFunction(int start, const QString& word)
    {
        const QString call = word.trimmed() + '(';
        const auto known =
            std::find_if(functions.begin(), functions.end(), [&call](const QString& f) {
                return f.compare(call, Qt::CaseInsensitive) == 0;
            });
        const int numberEnd = digitsEnd(text, at + 1);
        const bool holdsNumber =
            numberEnd > at + 1 && numberEnd < text.size() && text.at(numberEnd) == ')';
        const QString begin = quoted(word + '(') + " is not a function" + outcome();
        if (known != functions.end() && functionAtEnd(*known) != *known) {
            add(start, word.size() + 1,
                "the arc function " + quoted(call) + " cannot be used" + outcome()
                    + ": do without it");
        } else if (known != functions.end()) {
            add(start, word.size() + 1, begin + ": write " + *known);
        } else if (call == "ln(") {
            add(start, word.size() + 1, begin + ": write log(");
        } else if (holdsNumber) {
            const QString number = text.mid(at + 1, numberEnd - at - 1);
            add(start, numberEnd + 1 - start,
                begin + ": write " + quoted(word.trimmed() + number) + " for a parameter");
        } else {
            add(start, word.size() + 1, begin + ": write an operator before \"(\"");
        }
    }

    /// A word that is an operand.
    void readOperand(int start, const QString& word)
    {
        const bool isPlain = isPlainNumber(word.trimmed());
        if (convertsToNumber(word)) {
            // White space around a number changes nothing.
            if (!isPlain) {
                add(start, word.size(),
                    quoted(word) + " is read as the number " + QString::number(word.toDouble())
                        + ": write plain digits, or another name");
            }
        } else if (std::any_of(word.begin(), word.end(), isSpace)) {
            addWhiteSpace(start, word);
        } else if (isPlain) {
            add(start, word.size(),
                quoted(word)
                    + " is too large or too small for a number and is read as a name: write "
                      "another number");
        } else if (!std::all_of(word.begin(), word.end(), isPartOfName)) {
            addStrangeCharacter(start, word);
        } else if (endsAtExponent(word) && at < text.size() && digitsEnd(text, at + 1) > at + 1) {
            const int end = digitsEnd(text, at + 1);
            const QString mantissa = word.left(word.size() - 1);
            const QString exponent = text.mid(at + 1, end - at - 1);
            add(start, end - start,
                quoted(text.mid(start, end - start)) + " is cut at its sign into the name "
                    + quoted(word) + " and the number " + exponent + ": write "
                    + (text.at(at) == '-' ? '(' + mantissa + "/1e" + exponent + ')'
                                          : word + exponent));
        } else {
            readName(start, word);
        }
    }

    void readName(int start, const QString& word)
    {
        const int mantissa = mantissaEnd(word);
        if (mantissa > 0 && isLetter(word.at(mantissa))) {
            add(start, word.size(),
                quoted(word) + " is read as one name: write "
                    + quoted(word.left(mantissa) + '*' + word.mid(mantissa)) + " for a product");
        } else if (!isLetter(word.at(0))) {
            add(start, word.size(),
                quoted(word) + " is not a number and is read as a name: write a number");
        } else if (nameFault) {
            if (!nameFaults.contains(word)) {
                nameFaults.insert(word, nameFault(word));
            }
            if (!nameFaults.value(word).isEmpty()) {
                add(start, word.size(), nameFaults.value(word));
            }
        }
        if (word.size() == text.size()) {
            outcome();
            add(start, word.size(),
                "a lone name gives its position, here "
                    + QString::number(compiled.tree.constFirst().value)
                    + ", and not its value: write " + quoted('(' + word + ')'));
        }
    }

    void readEnd()
    {
        if (text.isEmpty()) {
            add(0, 0, "the expression is empty, the result is 0: write one");
        } else if (wantsOperand) {
            addMissingOperand();
        }
        for (int i = 0; i < qMin(open.size(), findingsAtMost + 1); ++i) {
            add(open.at(i), 1,
                "\"(\" is never closed and reaches to the end: write the missing \")\"");
        }
    }

    void add(int position, int length, const QString& message)
    {
        found.append({position, length, message});
    }

    void addMissingOperator(int position)
    {
        add(position, 0, "an operator is missing" + outcome() + ": write * for a product");
    }

    /// A missing operand: a closing parenthesis or the end comes instead.
    void addMissingOperand()
    {
        const QChar before = at > 0 ? text.at(at - 1) : QChar();
        if (before == '(') {
            add(at - 1, at < text.size() ? 2 : 1,
                "there is nothing inside the parentheses" + outcome() + ": write an operand");
        } else if (at > 0) {
            add(at - 1, 1,
                quoted(before) + " has no right operand" + outcome() + ": write one or remove it");
        }
    }

    /// White space in a word that is not a number.
    void addWhiteSpace(int start, const QString& word)
    {
        const auto first = std::find_if(word.begin(), word.end(), isSpace);
        const int position = start + int(first - word.begin());
        const int length = int(std::find_if_not(first, word.end(), isSpace) - first);
        const QString bare = word.trimmed();
        if (!word.contains(' ')) {
            add(position, length,
                "white space other than a blank is read as part of a name: remove it");
        } else if (bare.isEmpty()) {
            add(position, length,
                "a blank counts as an operand that is 0" + outcome() + ": remove it");
        } else if (std::any_of(bare.begin(), bare.end(), isSpace)) {
            add(position, length,
                "a blank inside " + quoted(bare)
                    + " makes it count as 0: write an operator instead");
        } else {
            add(position, length,
                "a blank next to " + quoted(bare) + " makes it count as 0: remove it");
        }
    }

    /// A character that no name has; the parser takes it for part of a name.
    void addStrangeCharacter(int start, const QString& word)
    {
        const auto strange = std::find_if_not(word.begin(), word.end(), isPartOfName);
        const int offset = int(strange - word.begin());
        const int length = strange->isHighSurrogate() && offset + 1 < word.size() ? 2 : 1;
        const QString instead = replacement(*strange);
        QString message;
        if (*strange == '$') {
            message =
                "\"$\" is read as ^, and names next to it count as 0: write the operator meant";
        } else {
            message = quoted(word.mid(offset, length)) + " is read as part of the name "
                      + quoted(word) + ": "
                      + (instead.isEmpty() ? "remove it" : "write " + quoted(instead));
        }
        add(start + offset, length, message);
    }

    /// What is known about the result if operands and operators do not take turns.
    QString outcome()
    {
        if (compiled.tree.isEmpty()) {
            compiled.generate_tree();
            const parser_token& first = compiled.tree.constFirst();
            if (isAlwaysZero(compiled.tree)) {
                certainResult = ", the result is 0";
            } else if (compiled.tree.size() == 1 && first.type == parser_token::Operator) {
                certainResult = ", the result is " + QString::number(first.value);
            }
        }
        return certainResult;
    }

    const QString text;
    const std::function<QString(const QString&)>& nameFault;
    parser compiled; ///< with a tree only if a finding needs it
    QString certainResult;
    QStringList functions;
    QHash<QString, QString> nameFaults; ///< of the names so far
    QVector<Diagnosis> found;
    QVector<int> open; ///< parentheses that are still open
    int at = 0;
    bool wantsOperand = true;
};

} // namespace

QVector<Diagnosis> diagnose(const QString& expression,
                            const std::function<QString(const QString& name)>& nameFault)
{
    return Reader(expression, nameFault).read();
}
