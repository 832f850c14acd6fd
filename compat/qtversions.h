// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef VELMORA_COMPAT_QTVERSIONS_H
#define VELMORA_COMPAT_QTVERSIONS_H

#include <QEvent>
#include <QLocale>
#include <QString>
#include <QtGlobal>

#include <memory>
#include <random>

// Qt 5 and Qt 6 do this differently, but Velmora must not. No other file asks for the version.

/// The text as a whole number, as QString::toInt of Qt 5 reads it. That of Qt 6 refuses blanks and
/// signs beyond ASCII, and accepts a text that ends with a null character.
inline int wholeNumber(const QString& text, bool* isNumber)
{
    static const QLocale ungrouped = [] {
        QLocale locale = QLocale::c();
        locale.setNumberOptions(locale.numberOptions() | QLocale::RejectGroupSeparator);
        return locale;
    }();
    return ungrouped.toInt(text, isNumber);
}

/// A number with this many significant digits, or without loss for QLocale::FloatingPointShortest.
/// Qt 6 would then write 3e+05 and 3e-04; this function writes 300000 and 0.0003, as Qt 5 does.
inline QString significantDigits(double number, int digits)
{
    QString text = QString::number(number, 'g', digits);
    const bool isShortest = digits == QLocale::FloatingPointShortest;
    if (isShortest && (text.endsWith("e+05") || text.endsWith("e-04"))) {
        text = QString::number(number, 'f', digits);
    }
    return text;
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

/// True if a QTextStream loses the byte after a damaged character that two of its pieces share.
constexpr bool streamsLoseBytes = false;

/// The text to give to a QTextStream: with Qt 6, half a surrogate pair would not become '?'.
inline const QString& streamedText(const QString& text)
{
    return text;
}

/// A copy of an event of the class Event.
template <typename Event>
std::unique_ptr<QEvent> copyAs(const QEvent& event)
{
    return std::make_unique<Event>(static_cast<const Event&>(event));
}

#else

constexpr bool streamsLoseBytes = true;

inline QString streamedText(const QString& text)
{
    return QString::fromUtf8(text.toUtf8());
}

template <typename Event>
std::unique_ptr<QEvent> copyAs(const QEvent& event)
{
    return std::unique_ptr<QEvent>(event.clone());
}

// The generator of Qt 5: minimal standard (Park & Miller 1988, with the multiplier of 1993), a
// sequence for each thread, which starts as if seeded with 1.

inline std::minstd_rand& minimalStandard()
{
    static thread_local std::minstd_rand generator(1);
    return generator;
}

/// From 1 to 2147483646.
inline int qrand()
{
    return int(minimalStandard()());
}

inline void qsrand(unsigned seed)
{
    minimalStandard().seed(seed);
}

#endif

#endif
