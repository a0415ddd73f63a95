#include "QyFourier.h"
#include <cmath>
#include <numbers>

namespace {
inline TComplex operator+(TComplex a, TComplex b) { return {a.Re + b.Re, a.Im + b.Im}; }
inline TComplex operator-(TComplex a, TComplex b) { return {a.Re - b.Re, a.Im - b.Im}; }
inline TComplex operator*(TComplex a, TComplex b) {
  return {a.Re * b.Re - a.Im * b.Im, a.Re * b.Im + a.Im * b.Re};
}
inline TComplex Conj(TComplex a) { return {a.Re, -a.Im}; }

// Odd primes up to this length are summed directly; longer ones go through a convolution.
constexpr int DirectPrimeLimit = 64;

struct TFourierWork {
  TComplexArray Scratch; // as long as the data: interleaving, the outputs of a direct sum
  TComplexArray Powers;  // w^0 .. w^(p-1) of a direct sum or an odd factor p
  TComplexArray Column;  // the p inputs of one odd butterfly
};

void Fft(TComplex* a, int n, TComplex w, TFourierWork& work);

// w^0 .. w^(p-1) by repeated multiplication.
void FillPowers(TComplexArray& p, int n, TComplex w) {
  p.resize(n);
  p[0] = {1, 0};
  for (int m = 1; m < n; ++m) p[m] = p[m - 1] * w;
}

// out[k] = sum over j of a[j] w^(j k). The powers are indexed by j k mod n, so their error grows
// with n, not with n^2.
void DirectSum(TComplex* a, int n, TComplex w, TFourierWork& work) {
  FillPowers(work.Powers, n, w);
  const TComplex* p = work.Powers.data();
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

int SmallestOddFactor(int n) {
  for (int p = 3; p * p <= n; p += 2)
    if (n % p == 0) return p;
  return n;
}

// Outputs p k + r of a block of n = p m: the r-th of p transforms of length m (root w^p) over
// the twiddled sums of the p strided inputs; then interleaved into natural order.
void OddFactorStep(TComplex* a, int n, int p, TComplex w, TFourierWork& work) {
  const int m = n / p;
  TComplex wm{1, 0};
  for (int q = 0; q < m; ++q) wm = wm * w; // the p-th root of unity, w^m
  FillPowers(work.Powers, p, wm);
  work.Column.resize(p);
  TComplex wi{1, 0};
  for (int i = 0; i < m; ++i) {
    for (int q = 0; q < p; ++q) work.Column[q] = a[i + q * m];
    TComplex twiddle{1, 0}; // w^(i r)
    for (int r = 0; r < p; ++r) {
      TComplex sum{};
      for (int q = 0, e = 0; q < p; ++q) {
        sum = sum + work.Column[q] * work.Powers[e];
        if ((e += r) >= p) e -= p;
      }
      a[i + r * m] = sum * twiddle;
      twiddle = twiddle * wi;
    }
    wi = wi * w;
  }
  TComplex wp{1, 0};
  for (int q = 0; q < p; ++q) wp = wp * w;
  for (int r = 0; r < p; ++r) Fft(a + r * m, m, wp, work);
  TComplex* s = work.Scratch.data();
  std::copy(a, a + n, s);
  for (int r = 0; r < p; ++r)
    for (int k = 0; k < m; ++k) a[p * k + r] = s[r * m + k];
}

// A long prime length as a circular convolution of power-of-two length (Bluestein): j k =
// (j^2 + k^2 - (k - j)^2) / 2 with the chirp e^(i pi j^2 / n), whose angle is reduced exactly.
void ChirpTransform(TComplex* a, int n) {
  int len = 1;
  while (len < 2 * n - 1) len *= 2;
  TComplexArray chirp(n), u(len), v(len);
  for (long long j = 0; j < n; ++j) {
    const double angle = std::numbers::pi * double(j * j % (2LL * n)) / n;
    chirp[j] = {std::cos(angle), std::sin(angle)};
  }
  for (int j = 0; j < n; ++j) u[j] = a[j] * chirp[j];
  v[0] = Conj(chirp[0]);
  for (int d = 1; d < n; ++d) v[d] = v[len - d] = Conj(chirp[d]);
  DiscreteFourierTransform(u);
  DiscreteFourierTransform(v);
  for (int i = 0; i < len; ++i) u[i] = Conj(u[i] * v[i]); // the inverse as the conjugate's transform
  DiscreteFourierTransform(u);
  for (int k = 0; k < n; ++k) a[k] = chirp[k] * Conj(u[k]) * TComplex{1.0 / len, 0};
}

void OddBlock(TComplex* a, int n, TComplex w, TFourierWork& work) {
  if (n == 1) return;
  const int p = SmallestOddFactor(n);
  if (p < n) OddFactorStep(a, n, p, w, work);
  else if (n <= DirectPrimeLimit) DirectSum(a, n, w, work);
  else ChirpTransform(a, n);
}

// Decimation in frequency: the sums of the two halves give the even outputs, their twiddled
// differences the odd ones; both halves are transformed with w^2 and then interleaved.
void Fft(TComplex* a, int n, TComplex w, TFourierWork& work) {
  if (n % 2 == 1) {
    OddBlock(a, n, w, work);
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
