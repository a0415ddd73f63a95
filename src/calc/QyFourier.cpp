#include "QyFourier.h"
#include <cmath>
#include <numbers>

namespace {
inline TComplex operator+(TComplex a, TComplex b) { return {a.Re + b.Re, a.Im + b.Im}; }
inline TComplex operator-(TComplex a, TComplex b) { return {a.Re - b.Re, a.Im - b.Im}; }
inline TComplex operator*(TComplex a, TComplex b) {
  return {a.Re * b.Re - a.Im * b.Im, a.Re * b.Im + a.Im * b.Re};
}

struct TFourierWork {
  TComplexArray Scratch; // half the length for the interleave; a whole odd block for its sum
  TComplexArray Powers;  // w^0 .. w^(n-1) of an odd block
};

// out[k] = sum over j of a[j] w^(j k). The powers come from repeated multiplication up to w^(n-1)
// and are indexed by j k mod n, so their error grows with n, not with n^2.
void DirectSum(TComplex* a, int n, TComplex w, TFourierWork& work) {
  TComplexArray& p = work.Powers;
  p.resize(n);
  p[0] = {1, 0};
  for (int m = 1; m < n; ++m) p[m] = p[m - 1] * w;
  TComplex* out = work.Scratch.data();
  for (int k = 0; k < n; ++k) {
    TComplex sum{};
    for (int j = 0, m = 0; j < n; ++j) {
      sum = sum + a[j] * p[m];
      if ((m += k) >= n) m -= n;
    }
    out[k] = sum;
  }
  std::copy(out, out + n, a);
}

// Decimation in frequency: the sums of the two halves give the even outputs, their twiddled
// differences the odd ones; both halves are transformed with w^2 and then interleaved.
void Fft(TComplex* a, int n, TComplex w, TFourierWork& work) {
  if (n % 2 == 1) {
    if (n > 1) DirectSum(a, n, w, work);
    return;
  }
  const int h = n / 2;
  TComplex wk{1, 0};
  for (int i = 0; i < h; ++i) {
    const TComplex top = a[i] + a[i + h];
    a[i + h] = (a[i] - a[i + h]) * wk;
    a[i] = top;
    wk = wk * w;
  }
  const TComplex w2 = w * w;
  Fft(a, h, w2, work);
  Fft(a + h, h, w2, work);
  // Position h + i is read before step i writes it, so one half of scratch does.
  TComplex* first = work.Scratch.data();
  std::copy(a, a + h, first);
  for (int i = 0; i < h; ++i) {
    const TComplex odd = a[h + i];
    a[2 * i] = first[i];
    a[2 * i + 1] = odd;
  }
}
} // namespace

void DiscreteFourierTransform(TComplexArray& data) {
  const int n = int(data.size());
  if (n < 2) return;
  const long double angle = 2 * std::numbers::pi_v<long double> / n;
  const TComplex w{float(std::cos(angle)), float(std::sin(angle))};
  TFourierWork work;
  work.Scratch.resize(n);
  Fft(data.data(), n, w, work);
}
