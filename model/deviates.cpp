// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/deviates.h"

#include <cmath>
#include <sleef.h>

#ifdef __x86_64__
#include "model/deviates_avx.h"

#include <emmintrin.h>
#endif

namespace {

constexpr double largestNumber = 2147483647.0;
constexpr double twoPi = 6.283185307179586;

void fillPortably(const int* numbers, int count, double* deviates)
{
    for (int i = 0; i < count; ++i) {
        deviates[i] = normalDeviate(numbers[0], numbers[1]);
        numbers += 2;
    }
}

#ifdef __x86_64__

/// Two deviates at a time, which every processor of this architecture can do.
void fillNormalDeviatesSse2(const int* numbers, int count, double* deviates)
{
    const __m128d largest = _mm_set1_pd(largestNumber);
    int done = 0;
    for (; done + 2 <= count; done += 2) {
        const __m128i pairs =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(numbers + 2 * qptrdiff(done)));
        const __m128i sorted = _mm_shuffle_epi32(pairs, 0xd8); // the first numbers, the second ones
        const __m128d first = _mm_div_pd(_mm_cvtepi32_pd(sorted), largest);
        const __m128d second =
            _mm_div_pd(_mm_cvtepi32_pd(_mm_unpackhi_epi64(sorted, sorted)), largest);
        const __m128d logarithm = Sleef_cinz_logd2_u10sse2(first);
        const __m128d radius = _mm_sqrt_pd(_mm_mul_pd(_mm_set1_pd(-2.0), logarithm));
        const __m128d angle = _mm_mul_pd(_mm_set1_pd(twoPi), second);
        _mm_storeu_pd(deviates + done, _mm_mul_pd(radius, Sleef_cinz_cosd2_u10sse2(angle)));
    }
    fillPortably(numbers + 2 * qptrdiff(done), count - done, deviates + done);
}

#endif

} // namespace

double normalDeviate(int firstNumber, int secondNumber)
{
    const double first = firstNumber / largestNumber;
    const double second = secondNumber / largestNumber;
    const double radius = std::sqrt(-2.0 * Sleef_cinz_logd1_u10purec(first));
    return radius * Sleef_cinz_cosd1_u10purec(twoPi * second);
}

QVector<DeviateForm> deviateForms()
{
    QVector<DeviateForm> forms{{"portable", fillPortably}};
#ifdef __x86_64__
    forms.append({"SSE2", fillNormalDeviatesSse2});
    if (__builtin_cpu_supports("avx")) {
        forms.append({"AVX", fillNormalDeviatesAvx});
    }
    if (__builtin_cpu_supports("avx512f")) {
        forms.append({"AVX-512", fillNormalDeviatesAvx512});
    }
#endif
    return forms;
}

void fillNormalDeviates(const int* numbers, int count, double* deviates)
{
    static const DeviateForm widest = deviateForms().constLast();
    widest.fill(numbers, count, deviates);
}
