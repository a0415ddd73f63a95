#pragma once
// The discrete Fourier transform of any length: halving while the length is even, then the odd
// factors one by one, each a short direct sum; a long prime length becomes a convolution of
// power-of-two length. Every length costs about N log N.
#include <vector>

struct TComplex {
  double Re = 0, Im = 0;
};
using TComplexArray = std::vector<TComplex>;

// Replaces `data` with its transform X[k] = sum over j of x[j] e^(+2 pi i j k / N), in natural
// order and unscaled. The root of unity is rounded to single precision (that is its definition
// here): an output differs from the exact transform by at most (number of prime factors of N + 1)
// * N * 2^-24.5 times the sum of |x|.
void DiscreteFourierTransform(TComplexArray& data);
