// Block operations on 32-bit floats, under the names that the signal-processing world knows them by.
//
// [any thread] All of them but ippsMalloc_32f and ippsFree allocate nothing. A count of 0 or below does
// nothing. Sources and destinations may be unaligned; only ippsMove_32f allows them to overlap.
#pragma once

// Copies source[0..count) to destination.
void ippsCopy_32f(const float* source, float* destination, int count);

// Copies source[0..count) to destination; the two may overlap.
void ippsMove_32f(const float* source, float* destination, int count);

// Sets destination[0..count) to 0.
void ippsZero_32f(float* destination, int count);

// A buffer of count floats, aligned to a cache line, its content not set; null for a count of 0 or below
// and where there is no memory. To be freed by ippsFree.
float* ippsMalloc_32f(int count);

// Frees what ippsMalloc_32f gave; null is allowed.
void ippsFree(void* buffer);

// The largest and the smallest value of source[0..count); for a count of 0 or below *result stays.
void ippsMax_32f(const float* source, int count, float* result);
void ippsMin_32f(const float* source, int count, float* result);
