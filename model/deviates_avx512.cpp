// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/deviates_avx.h"

#include <immintrin.h>
#include <sleef.h>

namespace {

constexpr int width = 8;
constexpr int pairsWidth = 2 * width;

/// Deviates from pairs of numbers.
__m512d eightDeviates(const int* numbers)
{
    const __m512i pairs = _mm512_loadu_si512(numbers);
    const __m256i firsts = _mm512_cvtepi64_epi32(pairs);
    const __m256i seconds = _mm512_cvtepi64_epi32(_mm512_srli_epi64(pairs, 32));
    const __m512d largest = _mm512_set1_pd(2147483647.0);
    const __m512d first = _mm512_div_pd(_mm512_cvtepi32_pd(firsts), largest);
    const __m512d second = _mm512_div_pd(_mm512_cvtepi32_pd(seconds), largest);
    const __m512d logarithm = Sleef_cinz_logd8_u10avx512fnofma(first);
    const __m512d radius = _mm512_sqrt_pd(_mm512_mul_pd(_mm512_set1_pd(-2.0), logarithm));
    const __m512d angle = _mm512_mul_pd(_mm512_set1_pd(6.283185307179586), second);
    return _mm512_mul_pd(radius, Sleef_cinz_cosd8_u10avx512fnofma(angle));
}

} // namespace

void fillNormalDeviatesAvx512(const int* numbers, int count, double* deviates)
{
    for (; count >= width; count -= width) {
        _mm512_storeu_pd(deviates, eightDeviates(numbers));
        numbers += pairsWidth;
        deviates += width;
    }
    if (count > 0) {
        int lastNumbers[pairsWidth] = {};
        double last[width];
        for (int i = 0; i < 2 * count; ++i) {
            lastNumbers[i] = numbers[i];
        }
        _mm512_storeu_pd(last, eightDeviates(lastNumbers));
        for (int i = 0; i < count; ++i) {
            deviates[i] = last[i];
        }
    }
}
