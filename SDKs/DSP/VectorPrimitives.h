// SPDX-License-Identifier: GPL-3.0-or-later
// Block operations on 32-bit floats, under the names that are common in signal processing.
//
// [any thread] None of them but ippsMalloc_32f and ippsFree allocates. With a count of 0 or below nothing
// happens. Sources and destinations may be unaligned; only ippsMove_32f allows them to overlap.
#pragma once

// Copies source[0..count) to destination.
void ippsCopy_32f(const float* source, float* destination, int count);

// Copies source[0..count) to destination; the two may overlap.
void ippsMove_32f(const float* source, float* destination, int count);

// Sets destination[0..count) to 0.
void ippsZero_32f(float* destination, int count);

// A buffer of count floats, aligned to a cache line and not initialised; null for a count of 0 or below and
// for lack of memory. To be freed by ippsFree.
float* ippsMalloc_32f(int count);

// Frees what ippsMalloc_32f gave; null is allowed.
void ippsFree(void* buffer);

// The largest and the smallest value of source[0..count). With a count of 0 or below *result stays as it is.
void ippsMax_32f(const float* source, int count, float* result);
void ippsMin_32f(const float* source, int count, float* result);
