#include "QyLinearAlgebra.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include <algorithm>
#include <cmath>

namespace {
[[noreturn]] void Fail(const char* message) { throw EMathError(QyText(message)); }

void RequireLength(const TQyVector& v, int n) {
  if (int(v.size()) < n) QyRaiseIndexError(n - 1);
}

// |a| with the sign of b (plus for b >= 0).
double SignOf(double a, double b) { return b >= 0 ? std::fabs(a) : -std::fabs(a); }
} // namespace

// ---- band and tridiagonal systems --------------------------------------------------------------

void SolveBandMatrix(int n, TQyBandMatrix& m, TQyVector& v) {
  const int lower = m.Lower, upper = m.Upper;
  if (n < 3 || lower + upper > n) Fail(QyRes::MathNotEnoughPoints);
  if (lower < 0 || upper < 0) Fail(QyRes::MathDimensionNegative);
  if (m.Rows < n) QyRaiseIndexError(n - 1);
  RequireLength(v, n);
  // Factor: each row below the pivot row takes its multiple, kept in place of the eliminated cell.
  constexpr long double Tiny = 0x1p-1074L;
  for (int i = 0; i < n && lower != 0; ++i) {
    const int lcount = std::min(lower + 1, n - i), ucount = std::min(upper + 1, n - i);
    if (!(std::fabs((long double)m(i, lower)) > Tiny)) continue; // a zero pivot is met below
    for (int k = 1; k < lcount; ++k) {
      double& factor = m(i + k, lower - k);
      factor /= m(i, lower);
      for (int j = 1; j < ucount; ++j) m(i + k, lower - k + j) -= factor * m(i, lower + j);
    }
  }
  // Forward and back substitution stay within the n rows.
  for (int i = 0; i < n; ++i)
    for (int k = 1; k < std::min(lower + 1, n - i); ++k) v[i + k] -= m(i + k, lower - k) * v[i];
  for (int i = n - 1; i >= 0; --i) {
    for (int k = 1; k < std::min(upper + 1, n - i); ++k) v[i] -= m(i, lower + k) * v[i + k];
    if (m(i, lower) == 0) throw EZeroDivide(QyText(QyRes::ExprFloatZeroDivide));
    v[i] /= m(i, lower);
  }
}

void SolveTridiagonalEquationSystem(int n, TQyVector& lower, TQyVector& diagonal, TQyVector& right,
                                    TQyVector& upper) {
  if (n < 2) Fail(QyRes::MathTridiagonalTooSmall);
  for (const TQyVector* a : {&lower, &diagonal, &right}) RequireLength(*a, n);
  RequireLength(upper, n - 1);
  constexpr long double Tiny = 0x1p-1071L;
  auto checkPivot = [&](int k) {
    if (std::fabs((long double)diagonal[k]) <= Tiny) Fail(QyRes::MathNotTridiagonal);
  };
  for (int k = 1; k < n; ++k) {
    checkPivot(k - 1);
    lower[k] /= diagonal[k - 1];
    diagonal[k] -= lower[k] * upper[k - 1];
  }
  checkPivot(n - 1);
  for (int k = 1; k < n; ++k) right[k] -= lower[k] * right[k - 1];
  right[n - 1] /= diagonal[n - 1];
  for (int k = n - 2; k >= 0; --k) right[k] = (right[k] - upper[k] * right[k + 1]) / diagonal[k];
}

// ---- singular value decomposition ---------------------------------------------------------------

namespace {
struct TSvd {
  TQyMatrix& a;
  TQyVector& w;
  TQyMatrix& v;
  int m, n;
  TQyVector rv1; // the superdiagonal of the bidiagonal form
  double anorm = 0;

  // Householder reduction to bidiagonal form, with a scale for each column and row.
  void Bidiagonalize() {
    double g = 0, scale = 0;
    for (int i = 0; i < n; ++i) {
      const int l = i + 1;
      rv1[i] = scale * g;
      g = scale = 0;
      double s = 0;
      for (int k = i; k < m; ++k) scale += std::fabs(a[k][i]);
      if (scale != 0) {
        for (int k = i; k < m; ++k) a[k][i] /= scale, s += a[k][i] * a[k][i];
        const double f = a[i][i];
        g = -SignOf(std::sqrt(s), f);
        const double h = f * g - s;
        a[i][i] = f - g;
        for (int j = l; j < n; ++j) {
          double sum = 0;
          for (int k = i; k < m; ++k) sum += a[k][i] * a[k][j];
          const double fac = sum / h;
          for (int k = i; k < m; ++k) a[k][j] += fac * a[k][i];
        }
        for (int k = i; k < m; ++k) a[k][i] *= scale;
      }
      w[i] = scale * g;
      g = s = scale = 0;
      if (i != n - 1) {
        for (int k = l; k < n; ++k) scale += std::fabs(a[i][k]);
        if (scale != 0) {
          for (int k = l; k < n; ++k) a[i][k] /= scale, s += a[i][k] * a[i][k];
          const double f = a[i][l];
          g = -SignOf(std::sqrt(s), f);
          const double h = f * g - s;
          a[i][l] = f - g;
          for (int k = l; k < n; ++k) rv1[k] = a[i][k] / h;
          for (int j = l; j < m; ++j) {
            double sum = 0;
            for (int k = l; k < n; ++k) sum += a[j][k] * a[i][k];
            for (int k = l; k < n; ++k) a[j][k] += sum * rv1[k];
          }
          for (int k = l; k < n; ++k) a[i][k] *= scale;
        }
      }
      anorm = std::max(anorm, std::fabs(w[i]) + std::fabs(rv1[i]));
    }
  }

  void AccumulateRight() {
    double g = 0;
    for (int i = n - 1, l = n; i >= 0; l = i--) {
      if (i < n - 1) {
        if (g != 0) {
          for (int j = l; j < n; ++j) v[j][i] = (a[i][j] / a[i][l]) / g; // two divisions: no underflow
          for (int j = l; j < n; ++j) {
            double s = 0;
            for (int k = l; k < n; ++k) s += a[i][k] * v[k][j];
            for (int k = l; k < n; ++k) v[k][j] += s * v[k][i];
          }
        }
        for (int j = l; j < n; ++j) v[i][j] = v[j][i] = 0;
      }
      v[i][i] = 1;
      g = rv1[i];
    }
  }

  void AccumulateLeft() {
    for (int i = std::min(m, n) - 1; i >= 0; --i) {
      const int l = i + 1;
      double g = w[i];
      for (int j = l; j < n; ++j) a[i][j] = 0;
      if (g != 0) {
        g = 1 / g;
        for (int j = l; j < n; ++j) {
          double s = 0;
          for (int k = l; k < m; ++k) s += a[k][i] * a[k][j];
          const double f = (s / a[i][i]) * g;
          for (int k = i; k < m; ++k) a[k][j] += f * a[k][i];
        }
        for (int j = i; j < m; ++j) a[j][i] *= g;
      } else {
        for (int j = i; j < m; ++j) a[j][i] = 0;
      }
      a[i][i] += 1;
    }
  }

  // Plane rotation of columns i and j of a matrix with `rows` rows.
  static void Rotate(TQyMatrix& x, int rows, int i, int j, double c, double s) {
    for (int r = 0; r < rows; ++r) {
      const double y = x[r][i], z = x[r][j];
      x[r][i] = y * c + z * s;
      x[r][j] = z * c - y * s;
    }
  }

  bool Negligible(double x) const { return std::fabs(x) + anorm == anorm; }

  // Zeroes rv1[l] when w[l - 1] is negligible.
  void Cancel(int l, int k) {
    const int nm = l - 1;
    double c = 0, s = 1;
    for (int i = l; i <= k; ++i) {
      const double f = s * rv1[i];
      rv1[i] = c * rv1[i];
      if (Negligible(f)) break;
      const double g = w[i];
      const double h = std::hypot(f, g);
      w[i] = h;
      c = g / h, s = -f / h;
      Rotate(a, m, nm, i, c, s);
    }
  }

  // One implicit QR step with the shift from the bottom 2 x 2 minor.
  void QrStep(int l, int k) {
    double x = w[l], y = w[k - 1], z = w[k], g = rv1[k - 1], h = rv1[k];
    double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2 * h * y);
    g = std::hypot(f, 1.0);
    f = ((x - z) * (x + z) + h * ((y / (f + SignOf(g, f))) - h)) / x;
    double c = 1, s = 1;
    for (int j = l; j < k; ++j) {
      const int i = j + 1;
      g = rv1[i], y = w[i];
      h = s * g, g = c * g;
      z = std::hypot(f, h);
      rv1[j] = z;
      c = f / z, s = h / z;
      f = x * c + g * s, g = g * c - x * s;
      h = y * s, y *= c;
      Rotate(v, n, j, i, c, s);
      z = std::hypot(f, h);
      w[j] = z;
      if (z != 0) c = f / z, s = h / z;
      f = c * g + s * y, x = c * y - s * g;
      Rotate(a, m, j, i, c, s);
    }
    rv1[l] = 0, rv1[k] = f, w[k] = x;
  }

  void Diagonalize() {
    for (int k = n - 1; k >= 0; --k) {
      for (int its = 0; its <= 30; ++its) {
        int l = k;
        bool cancel = true;
        for (; l >= 0; --l) {
          if (Negligible(rv1[l])) { cancel = false; break; } // rv1[0] is always 0
          if (Negligible(w[l - 1])) break;
        }
        if (cancel) Cancel(l, k);
        if (l == k) { // converged: make the value non-negative
          if (w[k] < 0) {
            w[k] = -w[k];
            for (int j = 0; j < n; ++j) v[j][k] = -v[j][k];
          }
          break;
        }
        QrStep(l, k);
      }
    }
  }
};
} // namespace

void SingularValueDecomposition(TQyMatrix& a, TQyVector& w, TQyMatrix& v) {
  const int m = int(a.size()), n = m ? int(a[0].size()) : 0;
  if (m < n || std::any_of(a.begin(), a.end(), [n](const TQyVector& r) { return int(r.size()) != n; }))
    Fail(QyRes::SvdWrongMatrix);
  if (int(w.size()) != n) Fail(QyRes::SvdWrongVector);
  if (int(v.size()) != n || std::any_of(v.begin(), v.end(), [n](const TQyVector& r) { return int(r.size()) != n; }))
    Fail(QyRes::SvdWrongOutputMatrix);
  if (n == 0) return;
  TSvd svd{a, w, v, m, n, TQyVector(n)};
  svd.Bidiagonalize();
  svd.AccumulateRight();
  svd.AccumulateLeft();
  svd.Diagonalize();
}

TQyVector SvdBackSubstitution(const TQyMatrix& u, const TQyVector& w, const TQyMatrix& v, const TQyVector& b) {
  const int n = int(w.size()), m = int(u.size());
  TQyVector tmp(n), x(n);
  for (int j = 0; j < n; ++j) {
    if (w[j] == 0) continue;
    double s = 0;
    for (int i = 0; i < m; ++i) s += u[i][j] * b[i];
    tmp[j] = s / w[j];
  }
  for (int j = 0; j < n; ++j)
    for (int k = 0; k < n; ++k) x[j] += v[j][k] * tmp[k];
  return x;
}

TQyMatrix SvdCovariance(const TQyVector& w, const TQyMatrix& v) {
  const int n = int(w.size());
  TQyVector wti(n);
  for (int i = 0; i < n; ++i) wti[i] = w[i] != 0 ? 1 / (w[i] * w[i]) : 0;
  TQyMatrix cov(n, TQyVector(n));
  for (int i = 0; i < n; ++i)
    for (int j = 0; j <= i; ++j) {
      double s = 0;
      for (int k = 0; k < n; ++k) s += v[i][k] * v[j][k] * wti[k];
      cov[i][j] = cov[j][i] = s;
    }
  return cov;
}
