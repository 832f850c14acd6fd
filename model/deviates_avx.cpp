// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/deviates_avx.h"

#include <immintrin.h>
#include <sleef.h>

namespace {

constexpr int width = 4;
constexpr int pairsWidth = 2 * width;

__m128 fourNumbers(const int* numbers)
{
    return _mm_castsi128_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(numbers)));
}

/// Deviates from pairs of numbers.
__m256d fourDeviates(const int* numbers)
{
    const __m128 low = fourNumbers(numbers);
    const __m128 high = fourNumbers(numbers + width);
    const __m128i firsts = _mm_castps_si128(_mm_shuffle_ps(low, high, 0x88));
    const __m128i seconds = _mm_castps_si128(_mm_shuffle_ps(low, high, 0xdd));
    const __m256d largest = _mm256_set1_pd(2147483647.0);
    const __m256d first = _mm256_div_pd(_mm256_cvtepi32_pd(firsts), largest);
    const __m256d second = _mm256_div_pd(_mm256_cvtepi32_pd(seconds), largest);
    const __m256d logarithm = Sleef_cinz_logd4_u10avx(first);
    const __m256d radius = _mm256_sqrt_pd(_mm256_mul_pd(_mm256_set1_pd(-2.0), logarithm));
    const __m256d angle = _mm256_mul_pd(_mm256_set1_pd(6.283185307179586), second);
    return _mm256_mul_pd(radius, Sleef_cinz_cosd4_u10avx(angle));
}

} // namespace

void fillNormalDeviatesAvx(const int* numbers, int count, double* deviates)
{
    for (; count >= width; count -= width) {
        _mm256_storeu_pd(deviates, fourDeviates(numbers));
        numbers += pairsWidth;
        deviates += width;
    }
    if (count > 0) {
        int lastNumbers[pairsWidth] = {};
        double last[width];
        for (int i = 0; i < 2 * count; ++i) {
            lastNumbers[i] = numbers[i];
        }
        _mm256_storeu_pd(last, fourDeviates(lastNumbers));
        for (int i = 0; i < count; ++i) {
            deviates[i] = last[i];
        }
    }
}
