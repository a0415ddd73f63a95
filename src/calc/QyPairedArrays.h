#pragma once
// Operations on data held as parallel arrays (X with its Y and weights): sorting by X, and the
// distance-weighted moving mean that smooths Y before an interpolation.
#include <vector>

using TDoubleDynArray = std::vector<double>;

// Sorts x[left..right] ascending and carries y (and w) along: a quicksort with the middle element
// as pivot and strict comparisons. It is not stable: equal X values may change their order.
void QuickSortYtoX(int left, int right, double* x, double* y);
void QuickSortYWtoX(int left, int right, double* x, double* y, double* w);

// Replaces each y by the mean of the y within X distance m, weighted by 1 - distance / m (the
// point itself weighs 1). X must be ascending. Nothing happens for at most 2 points or m <= 0.
void Smooth(double m, const TDoubleDynArray& x, TDoubleDynArray& y);
// The same with distances measured between the decimal logarithms of X (X > 0).
void SmoothLog10(double m, const TDoubleDynArray& x, TDoubleDynArray& y);
