#pragma once
// The discrete Fourier transform of any length: halving while the length is even (N log N for
// powers of two), a direct sum over the odd blocks that remain.
#include <vector>

struct TComplex {
  double Re = 0, Im = 0;
};
using TComplexArray = std::vector<TComplex>;

// Replaces `data` with its transform X[k] = sum over j of x[j] e^(+2 pi i j k / N), in natural
// order and unscaled. The root of unity is rounded to single precision (that is its definition
// here): output differs from an exact transform by about log2(N) * N * 2^-25 times the sum of |x|.
void DiscreteFourierTransform(TComplexArray& data);
